#include "foundation/Globals.h"
#include "maintenance/FlexGrid.h"
#include "maintenance/ImportCsv.h"
#include "maintenance/ImportCsvPanel.h"
#include "maintenance/frmDBUtils.h"
#include "tests/maintenance/ImportCsvFixture.h"
#include "tests/support/TestSupport.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTabBar>
#include <QTest>

namespace {
QStringList entries(const QComboBox* box) {
    QStringList out;
    for (int i = 0; i < box->count(); ++i)
        out << box->itemText(i);
    return out;
}
} // namespace

class TestImportCsvPanel : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { UseTestLocale(); }

    void browseChooseImportAndClose() {
        TestData data;
        frmDBUtils dlg;
        dlg.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dlg));
        auto* tabs = dlg.findChild<QTabBar*>(QStringLiteral("TabStrip1"));
        QCOMPARE(tabs->tabText(frmDBUtils::TabImport), QStringLiteral("Import (csv)"));
        tabs->setCurrentIndex(frmDBUtils::TabImport);
        auto* panel = dlg.findChild<ImportCsvPanel*>();
        QVERIFY(panel);
        QVERIFY(panel->isVisible());
        auto* fg1 = dlg.findChild<FlexGrid*>(QStringLiteral("fg1"));
        auto* frame5 = dlg.findChild<QGroupBox*>(QStringLiteral("Frame5"));
        auto* pb2 = dlg.findChild<QProgressBar*>(QStringLiteral("pb2"));
        QVERIFY(fg1 && frame5 && pb2);
        QCOMPARE(fg1->Rows(), 2);
        QCOMPARE(fg1->Cols(), 2);
        QVERIFY(!frame5->isVisible());
        QVERIFY(!pb2->isVisible());

        // A cancelled file choice reads nothing.
        ScriptedBoxes boxes;
        boxes.answerFile(QString());
        dlg.findChild<QPushButton*>(QStringLiteral("cmdBrowse"))->click();
        QVERIFY(!frame5->isVisible());
        QCOMPARE(dlg.findChild<QLineEdit*>(QStringLiteral("txtSourceName"))->text(), QString());

        const QString file = WriteFile(data.path(QStringLiteral("stock.csv")), "PNo,Desc,Qty,Sell\n"
                                                                               "K1,Knob,4,1.5\n"
                                                                               "K2,Key,,\n"
                                                                               ",none,1,1\n");
        boxes.answerFile(file);
        dlg.findChild<QPushButton*>(QStringLiteral("cmdBrowse"))->click();
        QCOMPARE(dlg.findChild<QLineEdit*>(QStringLiteral("txtSourceName"))->text(), file);
        QVERIFY(frame5->isVisible());
        QCOMPARE(dlg.findChild<QLabel*>(QStringLiteral("Label15"))->text(),
                 ImportCsvGridReadyText());
        QCOMPARE(fg1->Rows(), 5);
        QCOMPARE(fg1->Cols(), 6);
        QCOMPARE(fg1->model()->index(2, 1).data().toString(), QStringLiteral("K1"));
        // Row 0 and column 0 are the fixed headings.
        QCOMPARE(fg1->model()->headerData(4, Qt::Horizontal).toString(), QStringLiteral("4"));
        QVERIFY(fg1->isRowHidden(0));
        QVERIFY(fg1->isColumnHidden(0));

        const QStringList columns{"Column 1", "Column 2", "Column 3", "Column 4", "Column 5"};
        QComboBox* combo[13] = {};
        for (int i : {1, 2, 3, 4, 9, 10, 11, 12}) {
            combo[i] = dlg.findChild<QComboBox*>(QStringLiteral("Combo%1").arg(i));
            QVERIFY(combo[i]);
            QCOMPARE(combo[i]->currentIndex(), -1); // no choice until one is made
            QCOMPARE(combo[i]->currentText(), QString());
            QStringList want = columns;
            if (i == 3 || i == 4)
                want.prepend(QStringLiteral("Ignore    "));
            else if (i >= 9)
                want.prepend(QStringLiteral("Ignore     "));
            QCOMPARE(entries(combo[i]), want);
        }

        // Help on the two options.
        boxes.answer(vbOK);
        dlg.findChild<QLabel*>(QStringLiteral("Label17"))->linkActivated(QStringLiteral("help"));
        boxes.answer(vbOK);
        dlg.findChild<QLabel*>(QStringLiteral("Label18"))->linkActivated(QStringLiteral("help"));
        QCOMPARE(boxes.prompts(), QStringList({ImportCsvOverwriteHelp(), ImportCsvTopRowHelp()}));
        QVERIFY(boxes.prompts()[0].startsWith("If you select this option the import procedure"));

        // Nothing chosen: the first check stops the run.
        boxes.clear();
        boxes.answer(vbOK);
        dlg.findChild<QPushButton*>(QStringLiteral("Command6"))->click();
        QCOMPARE(boxes.prompts(),
                 QStringList({"The Description and Part number columns can not be the same"}));

        combo[1]->setCurrentIndex(0);  // Column 1
        combo[2]->setCurrentIndex(1);  // Column 2
        combo[3]->setCurrentIndex(3);  // Column 3
        combo[11]->setCurrentIndex(4); // Column 4
        dlg.findChild<QCheckBox*>(QStringLiteral("Check1"))->setChecked(true);
        boxes.clear();
        boxes.answer(vbOK);
        dlg.findChild<QPushButton*>(QStringLiteral("Command6"))->click();
        QCOMPARE(boxes.prompts(),
                 QStringList({"2 records were imported successfully\n\n1 duplicate or invalid "
                              "records were ignored\n\nThe data grid now shows the status of each "
                              "record"}));
        QVERIFY(!pb2->isVisible());
        QCOMPARE(pb2->maximum(), 5);
        QStringList status;
        for (int r = 1; r < fg1->Rows(); ++r)
            status << fg1->model()->index(r, 0).data().toString();
        QCOMPARE(status, QStringList({"", "DONE_OK", "DONE_OK", "FAILED"}));
        QCOMPARE(fg1->model()->headerData(2, Qt::Vertical).toString(), QStringLiteral("DONE_OK"));
        QCOMPARE(SqlFirst("SELECT Qty || '/' || SellAt || '/' || ItemDescription FROM "
                          "tblStockItems WHERE MasterPNo = 'K1'"),
                 QStringLiteral("4.0/1.5/Knob"));

        // Close empties the grid back to two by two and shows the first tab.
        dlg.findChild<QPushButton*>(QStringLiteral("Command8"))->click();
        QCOMPARE(fg1->Rows(), 2);
        QCOMPARE(fg1->Cols(), 2);
        QCOMPARE(fg1->TextMatrix(1, 1), QString());
        QCOMPARE(fg1->TextMatrix(1, 0), QString());
        QCOMPARE(tabs->currentIndex(), int(frmDBUtils::TabHome));
        QVERIFY(boxes.allAnswersUsed());
    }
};

QTEST_MAIN(TestImportCsvPanel)
#include "test_importcsv_panel.moc"
