// The "Statistics" tab of the utilities window: the size of the business file, the rows of the
// History table, and the purge of old history, which only ever says that nothing needs deleting.
#pragma once

#include <QWidget>

class QCalendarWidget;
class QLineEdit;
class QProgressBar;
class QPushButton;

class StatisticsPanel : public QWidget {
    Q_OBJECT
public:
    // Reads the size of the file, once: a compaction in the same window does not change it.
    explicit StatisticsPanel(QWidget* parent = nullptr);

    // Each time the tab is selected: the purge date back to 2005-01-01 and the count read again.
    void TabSelected();
    void cal1_SelectionChanged();
    void Command2_Click();

    QLineEdit* txtSizeOfDB;
    QLineEdit* txtNumRecords;
    QCalendarWidget* cal1;
    QLineEdit* txtPurgeDate;
    QPushButton* Command2;
    QProgressBar* ProgressBar1; // nothing moves it
};
