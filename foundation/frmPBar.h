// The processing bar: runs to its end, reads "Done", waits half a second and closes.
#pragma once

#include <QDialog>

class QLabel;
class QProgressBar;

class frmPBar : public QDialog {
    Q_OBJECT
public:
    explicit frmPBar(QWidget* parent = nullptr);
    int exec() override;

    QProgressBar* ProgressBar1;
    QLabel* Label1;
};
