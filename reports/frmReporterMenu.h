// The report menu: the reports of one group of the main window's "Reports" bar, each entry
// opening the report window on its report type.
#pragma once

#include <QDialog>
#include <QMap>

class QFrame;
class QGroupBox;
class QLabel;
class QPushButton;

class frmReporterMenu : public QDialog {
    Q_OBJECT

public:
    // group: 1 inventory, 2 supplier performance, 4 spending; any other is an unknown option.
    explicit frmReporterMenu(int group, QWidget* parent = nullptr);

    // An entry: does nothing while a report is open; otherwise opens the report window on the
    // type, modally, and waits for it to close.
    void cmdRep_Click(int reportType);

    // The entries, by report type (cmdRep_<type>).
    QMap<int, QPushButton*> cmdRep;
    QFrame* frmWait;
    QLabel* lblWait;
};
