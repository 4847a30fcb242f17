// The utilities window: company details, database maintenance, restore, history and statistics,
// CSV import and the users' rights, one tab each.
#pragma once

#include "foundation/UserRights.h"

#include <QDialog>
#include <QList>

class CompanyDetailsPanel;
class GridEX;
class StatisticsPanel;
class QFrame;
class QPushButton;
class QStackedWidget;
class QTabBar;

class frmDBUtils : public QDialog {
    Q_OBJECT
public:
    explicit frmDBUtils(QWidget* parent = nullptr);

    // Tabs of TabStrip1, in order.
    enum Tab { TabHome, TabMaintenance, TabRestore, TabStatistics, TabImport, TabUsers };
    void TabStrip1_Click();

    // The user tab: Command5 reloads the list, Command4 saves it.
    void Command5_Click();
    void Command4_Click();

    QTabBar* TabStrip1;
    QStackedWidget* TabPanels;
    // One frame per tab: fraHome, fraMaintenance, fraRestore, fraStatistics, fraImport, fraUsers.
    QList<QFrame*> TabFrames;

    CompanyDetailsPanel* Home; // the Home tab
    StatisticsPanel* Statistics;

    // The user tab
    GridEX* gdxUList;
    QPushButton* Command4; // save
    QPushButton* Command5; // reload

    // The rows behind gdxUList.
    QList<UserRightsRow> mUData;

private:
    void DefineUserColumns();
};
