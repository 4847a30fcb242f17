#include "maintenance/frmDBUtils.h"

#include "foundation/MsgBox.h"
#include "grids/GridEX.h"
#include "maintenance/CompanyDetailsPanel.h"
#include "maintenance/ImportCsvPanel.h"
#include "maintenance/MaintenancePanel.h"
#include "maintenance/RestorePanel.h"
#include "maintenance/StatisticsPanel.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStackedWidget>
#include <QTabBar>
#include <QVBoxLayout>

frmDBUtils::frmDBUtils(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmDBUtils"));
    setWindowTitle(QStringLiteral("Utilities"));
    resize(760, 520);
    auto* lay = new QVBoxLayout(this);
    TabStrip1 = new QTabBar(this);
    TabStrip1->setObjectName(QStringLiteral("TabStrip1"));
    TabPanels = new QStackedWidget(this);
    TabPanels->setObjectName(QStringLiteral("TabPanels"));
    const struct {
        const char* caption;
        const char* frame;
    } tabs[] = {
        {"Home", "fraHome"},           {"Database Maintenance", "fraMaintenance"},
        {"Restore", "fraRestore"},     {"Statistics", "fraStatistics"},
        {"Import (csv)", "fraImport"}, {"Users", "fraUsers"},
    };
    for (const auto& t : tabs) {
        TabStrip1->addTab(QString::fromLatin1(t.caption));
        auto* f = new QFrame(TabPanels);
        f->setObjectName(QString::fromLatin1(t.frame));
        TabPanels->addWidget(f);
        TabFrames << f;
    }
    lay->addWidget(TabStrip1);
    lay->addWidget(TabPanels, 1);

    Home = new CompanyDetailsPanel(TabFrames[TabHome]);
    (new QVBoxLayout(TabFrames[TabHome]))->addWidget(Home);
    Statistics = new StatisticsPanel(TabFrames[TabStatistics]);
    (new QVBoxLayout(TabFrames[TabStatistics]))->addWidget(Statistics);
    // The import tab.
    auto* importPanel = new ImportCsvPanel(TabFrames[TabImport]);
    (new QVBoxLayout(TabFrames[TabImport]))->addWidget(importPanel);
    connect(importPanel, &ImportCsvPanel::Closed, this, [this] { TabStrip1->setCurrentIndex(0); });
    new MaintenancePanel(TabFrames[TabMaintenance]);
    new RestorePanel(TabFrames[TabRestore]);

    // The user tab.
    QFrame* users = TabFrames[TabUsers];
    auto* ul = new QVBoxLayout(users);
    auto* note = new QLabel(
        QStringLiteral("Tick the areas each user may change. Add a user in the last row; select "
                       "a row and press Delete to remove a user."),
        users);
    note->setWordWrap(true);
    ul->addWidget(note);
    gdxUList = new GridEX(QStringLiteral("gdxUList"), users);
    gdxUList->SetAllowEdit(true);
    gdxUList->SetAllowAddNew(true);
    gdxUList->SetAllowDelete(true);
    gdxUList->SetAlternatingRowColors(true);
    gdxUList->SetGroupByBoxVisible(false);
    gdxUList->SetCellReader([this](int record, int column) -> QVariant {
        if (record < 1 || record > mUData.size())
            return QVariant();
        const UserRightsRow& r = mUData[record - 1];
        if (column == 1)
            return r.userName;
        if (column >= 2 && column <= 8)
            return r.granted[size_t(column - 2)];
        return QVariant();
    });
    auto copyRow = [](const GridRowValues& values, UserRightsRow& r) {
        r.userName = values(1).toString();
        for (int c = 2; c <= 8 && c <= values.Count(); ++c) {
            const QVariant& v = values(c);
            r.granted[size_t(c - 2)] = v.typeId() == QMetaType::Bool ? v.toBool() : v.toInt() != 0;
        }
    };
    gdxUList->SetRowCommitHandler([this, copyRow](int record, GridRowValues& values, bool&) {
        if (record >= 1 && record <= mUData.size())
            copyRow(values, mUData[record - 1]);
    });
    gdxUList->SetNewRowHandler([this, copyRow](GridRowValues& values, bool&) {
        UserRightsRow r;
        r.granted.fill(false);
        copyRow(values, r);
        mUData << r;
    });
    gdxUList->SetDeleteHandler([this](int record, bool&) {
        if (record >= 1 && record <= mUData.size())
            mUData.removeAt(record - 1);
    });
    ul->addWidget(gdxUList, 1);
    auto* row = new QHBoxLayout;
    row->addStretch(1);
    Command5 = new QPushButton(QStringLiteral("Refresh"), users);
    Command5->setObjectName(QStringLiteral("Command5"));
    Command4 = new QPushButton(QStringLiteral("Save"), users);
    Command4->setObjectName(QStringLiteral("Command4"));
    row->addWidget(Command5);
    row->addWidget(Command4);
    ul->addLayout(row);
    connect(Command4, &QPushButton::clicked, this, [this] { Command4_Click(); });
    connect(Command5, &QPushButton::clicked, this, [this] { Command5_Click(); });

    connect(TabStrip1, &QTabBar::currentChanged, this, [this] { TabStrip1_Click(); });
}

void frmDBUtils::TabStrip1_Click() {
    const int tab = TabStrip1->currentIndex();
    TabPanels->setCurrentIndex(tab);
    if (tab == TabStatistics)
        Statistics->TabSelected();
    if (tab == TabUsers)
        Command5_Click();
}

void frmDBUtils::DefineUserColumns() {
    GridColumns& cols = gdxUList->Columns();
    cols.Clear();
    cols.Add(QStringLiteral("User"), QStringLiteral("User")).SetWidth(2400).SetEditable(true);
    for (const UserRightColumn& c : UserRightColumns())
        cols.Add(QLatin1String(c.key), QLatin1String(c.caption))
            .SetWidth(1000)
            .SetKind(GridColumnKind::CheckBox)
            .SetAlignment(Qt::AlignCenter)
            .SetEditable(true);
}

void frmDBUtils::Command5_Click() {
    DefineUserColumns();
    QList<UserRightsRow> rows = LoadUserRights();
    gdxUList->SetItemCount(0);
    mUData = std::move(rows);
    gdxUList->SetItemCount(int(mUData.size()));
}

void frmDBUtils::Command4_Click() {
    gdxUList->Update(); // an edit still open in the grid counts
    SaveUserRights(mUData);
    ShowProcessingBar();
    Command5_Click();
}
