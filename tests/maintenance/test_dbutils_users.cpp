#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "grids/GridEX.h"
#include "maintenance/frmDBUtils.h"
#include "tests/support/TestSupport.h"

#include <QAbstractItemModel>
#include <QPushButton>
#include <QTabBar>
#include <QTest>

namespace {
Database rights() {
    return DBEngine::OpenDatabase(QString(), false, false, RightsConnectString());
}
QStringList storedRows() {
    Database db = rights();
    Recordset rs = db.OpenRecordset("SELECT * FROM tblRights ORDER BY UserName");
    QStringList out;
    for (; !rs.Eof(); rs.MoveNext()) {
        QString s = rs.Fields("UserName").Text() + ":";
        for (int i = 2; i <= 8; ++i)
            s += QString::number(rs.Fields(QString("Pm%1").arg(i)).Long());
        out << s;
    }
    return out;
}
void setCell(GridEX* g, int row, int column, const QVariant& v) {
    QAbstractItemModel* m = g->Model();
    const QModelIndex i = m->index(row - 1, column - 1);
    if (column == 1)
        QVERIFY(m->setData(i, v, Qt::EditRole));
    else
        QVERIFY(m->setData(i, v.toBool() ? Qt::Checked : Qt::Unchecked, Qt::CheckStateRole));
}
} // namespace

class TestDBUtilsUsers : public QObject {
    Q_OBJECT
private slots:
    void userTabLoadsEditsAndSaves() {
        TestData data;
        gWinUser = QStringLiteral("clerk");
        {
            Database db = rights();
            db.Execute("INSERT INTO tblRights VALUES ('clerk', 0, 0, 1, 1, 1, 1, 1)");
            db.Execute("INSERT INTO tblRights VALUES ('buyer', 1, 1, 0, 0, 0, 1, 1)");
            db.Execute("INSERT INTO tblRights VALUES ('temp', 1, 1, 1, 1, 1, 1, 1)");
        }
        frmDBUtils dlg;
        dlg.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dlg));
        auto* tabs = dlg.findChild<QTabBar*>("TabStrip1");
        tabs->setCurrentIndex(frmDBUtils::TabUsers);
        auto* grid = dlg.findChild<GridEX*>("gdxUList");
        QVERIFY(grid);
        QCOMPARE(grid->ItemCount(), 3);
        QStringList keys;
        for (int c = 1; c <= grid->Columns().Count(); ++c)
            keys << grid->Columns()(c).Key() + "=" + grid->Columns()(c).Caption();
        QCOMPARE(keys, QStringList({"User=User", "Inven=Inventory", "Sales=Sales",
                                    "Purchasing=Purchasing", "Contacts=Contacts", "HLinks=HLinks",
                                    "Utils=Utils", "UAdmin=UAdmin"}));
        QCOMPARE(grid->CellValue(1, 1).toString(), QStringLiteral("buyer"));
        QCOMPARE(grid->Model()->index(0, 1).data(Qt::CheckStateRole).toInt(), int(Qt::Unchecked));
        QCOMPARE(grid->Model()->index(0, 3).data(Qt::CheckStateRole).toInt(), int(Qt::Checked));

        // Give the buyer UAdmin (and so Utils), drop temp, add a new user.
        setCell(grid, 1, 8, true);
        QVERIFY(grid->Update());
        grid->SetRow(3);
        QVERIFY(grid->Delete());
        QCOMPARE(grid->ItemCount(), 2);
        setCell(grid, 3, 1, QStringLiteral("new"));
        setCell(grid, 3, 2, true);
        QVERIFY(grid->Update());
        QCOMPARE(grid->ItemCount(), 3);

        ScriptedBoxes boxes;
        dlg.findChild<QPushButton*>("Command4")->click();
        QCOMPARE(boxes.processingBars(), 1);
        QCOMPARE(storedRows(), QStringList({"buyer:1100000", "clerk:0011100", "new:0111111"}));
        // Reloaded after the save.
        QCOMPARE(grid->ItemCount(), 3);
        QCOMPARE(grid->CellValue(3, 1).toString(), QStringLiteral("new"));
        QCOMPARE(grid->Model()->index(0, 6).data(Qt::CheckStateRole).toInt(), int(Qt::Checked));
    }
};

QTEST_MAIN(TestDBUtilsUsers)
#include "test_dbutils_users.moc"
