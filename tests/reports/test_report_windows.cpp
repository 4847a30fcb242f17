// The report menu and the report window, driven through their controls.
#include "foundation/Printer.h"
#include "grids/GridEX.h"
#include "grids/frmPrintDialog.h"
#include "reports/frmReporterMenu.h"
#include "reports/frmShowReport.h"
#include "tests/reports/ReportFixture.h"

#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>
#include <QTimer>
#include <QToolButton>

using namespace reporttest;

namespace {

void SelectText(QComboBox* combo, const QString& text) {
    const int i = combo->findText(text);
    QVERIFY2(i >= 0, qPrintable(text));
    combo->setCurrentIndex(i);
}

// Runs `act` on the modal window of class W as soon as the test waits in it, then closes it.
// Returns whether it was found.
template <class W> std::shared_ptr<bool> OnModal(std::function<void(W*)> act) {
    auto seen = std::make_shared<bool>(false);
    QTimer::singleShot(0, [act, seen] {
        if (auto* w = qobject_cast<W*>(QApplication::activeModalWidget())) {
            *seen = true;
            act(w);
            w->close();
        }
    });
    return seen;
}

} // namespace

class TestReportWindows : public QObject {
    Q_OBJECT
private slots:
    void init() {
        UseTestLocale();
        gReportBusy = false;
        gDateFixing = false;
        gCanPurchasing = true;
    }
    void cleanup() { SetToday(QDate()); }

    void datedReportPicksAPeriodAndRunsOnlyInOrder() {
        TestData data;
        gReportType = 4;
        // The opening period is the month of today: a leap February, then a month of 30 days.
        for (const QDate& last : {QDate(2024, 2, 29), QDate(2023, 2, 28)}) {
            SetToday(last.addDays(-5));
            frmShowReport leap;
            QCOMPARE(QPair(leap.StartDate(), leap.EndDate()),
                     QPair(QDate(last.year(), 2, 1), last));
        }
        Item(1, "P-1", "A", 1000, {{1, 1.2345, 0}});
        Item(2, "P-2", "A", 3);
        History(2, "2024-04-10");
        SetToday(QDate(2024, 4, 15));
        frmShowReport w;
        w.show();
        QVERIFY(w.Frame1->isVisible() && w.Frame2->isVisible() && !w.Command11->isVisible());
        QCOMPARE(QPair(w.StartDate(), w.EndDate()), QPair(QDate(2024, 4, 1), QDate(2024, 4, 30)));

        // Picking 31 falls back to the month's last day; a month change checks again.
        ScriptedBoxes boxes;
        SelectText(w.cboEndMonth, QStringLiteral("March"));
        SelectText(w.cboEndDay, QStringLiteral("31"));
        QCOMPARE(w.EndDate(), QDate(2024, 3, 31));
        SelectText(w.cboEndMonth, QStringLiteral("February"));
        SelectText(w.cboEndYear, QStringLiteral("2023"));
        QCOMPARE(w.EndDate(), QDate(2023, 2, 28));
        // With no month chosen no day makes a date: the box, and the day stays.
        boxes.answer(vbOK);
        w.cboEndMonth->setCurrentIndex(-1);
        QCOMPARE(boxes.prompts(), QStringList({"Invalid date selected"}));
        QCOMPARE(w.cboEndDay->currentText(), QStringLiteral("28"));

        // Start and end on the same date: the message and no report.
        SelectText(w.cboEndMonth, QStringLiteral("April"));
        SelectText(w.cboEndYear, QStringLiteral("2024"));
        SelectText(w.cboEndDay, QStringLiteral("01"));
        boxes.clear();
        boxes.answer(vbOK);
        QTest::mouseClick(w.Command1, Qt::LeftButton);
        QCOMPARE(boxes.prompts(), QStringList({"Start Date must be 'earlier' than End Date"}));
        QCOMPARE(w.gdxUBView->Columns().Count(), 0);

        SelectText(w.cboEndDay, QStringLiteral("30"));
        QTest::mouseClick(w.Command1, Qt::LeftButton);
        QCOMPARE(w.gdxUBView->ItemCount(), 1);
        QCOMPARE(w.gdxUBView->CellValue(1, 7).toString() + '|' + w.Text1->text() + '|' +
                     w.Text3->text(),
                 "1234.50|Number of records = 1|1,234.50");

        // A close asked for while the report is read waits for the end of the run.
        bool waitShown = false, stayedOpen = false;
        QTimer::singleShot(0, &w, [&] {
            waitShown = w.frmWait->isVisible() && w.Running();
            w.close();
            stayedOpen = w.isVisible();
        });
        w.Command1_Click();
        QVERIFY(waitShown && stayedOpen);
        QVERIFY(!w.isVisible());
    }

    void groupedReportFoldsPrintsAndExportsWithItsCategory() {
        TestData data;
        Item(1, "B-1", "BOLT", 10, {{1, 2, 0}}, "Hex bolt");
        Item(2, "N-1", "NUT", 4, {{1, 0.25, 0}}, "Nut, M6");
        auto printer = std::make_shared<RecordingPrinter>();
        SetPrinters({printer});
        gReportType = 12;
        frmShowReport w;
        w.show();
        GridEX& grid = *w.gdxUBView;
        QTRY_COMPARE(grid.ItemCount(), 2);
        QVERIFY(w.Command11->isVisible() && !w.Command1->isVisible() && !w.Frame1->isVisible());
        QVERIFY(!grid.Columns()("Category").Visible());
        QCOMPARE(grid.RowCount(), 4);                   // two groups, open
        QTest::mouseClick(w.Command11, Qt::LeftButton); // the first click folds them
        QCOMPARE(grid.RowCount(), 2);
        QTest::mouseClick(w.Command11, Qt::LeftButton);

        // A resize is not remembered: the main list's stored widths stay untouched.
        grid.TableView()->horizontalHeader()->resizeSection(grid.Columns()("Desc").Index() - 1,
                                                            300);
        Database cfg = DBEngine::OpenDatabase(gUserCfgPath);
        QCOMPARE(cfg.OpenRecordset("SELECT count(*) FROM ColStat").Fields(0).Long(), 0);

        // Export: the category is written, the group rows are not.
        const QString csv = data.path(QStringLiteral("report.csv"));
        ScriptedBoxes boxes;
        boxes.answerFile(csv);
        boxes.answer(vbOK);
        QTest::mouseClick(w.buttons_5, Qt::LeftButton);
        QFile f(csv);
        QVERIFY(f.open(QIODevice::ReadOnly));
        QCOMPARE(QString::fromLocal8Bit(f.readAll()).split(QStringLiteral("\r\n")),
                 QStringList({"Cat,Part No.,Description,Category,Location ,Qty ,Cost (x1) ,Value "
                              "(at Cost) ,",
                              "", "BOLT,B-1,Hex bolt,BOLT,A1,10.0,2.00,20.00,",
                              "NUT,N-1,Nut. M6,NUT,A1,4.0,0.25,1.00,", ""}));
        QVERIFY(!grid.Columns()("Category").Visible());
        // A file that cannot be written: the box, and the column hidden again.
        boxes.answerFile(data.path(QStringLiteral("no/such/folder/report.csv")));
        boxes.answer(vbOK);
        w.buttons_ButtonClick(5);
        QCOMPARE(boxes.shown().last().title, QStringLiteral("File Error"));
        QVERIFY(!grid.Columns()("Category").Visible());

        // Printing through the panel in Portrait: with the description widened above, the
        // listing and its category no longer fit, and Cancel at that question prints nothing.
        boxes.clear();
        boxes.answer(vbCancel);
        auto panel = OnModal<frmPrintDialog>([](frmPrintDialog* p) {
            p->optOrientation_0->setChecked(true);
            QTest::mouseClick(p->cmdPrintOK, Qt::LeftButton);
        });
        QTest::mouseClick(w.buttons_3, Qt::LeftButton);
        QVERIFY(*panel);
        QCOMPARE(boxes.prompts(), QStringList({"The document width is too wide for Portrait. "
                                               "Do you wish to use Landscape?"}));
        QCOMPARE(printer->Documents(), 0);
        QVERIFY(!grid.Columns()("Category").Visible());
    }

    void unknownAndSilentTypes() {
        TestData data;
        ScriptedBoxes boxes;
        gReportType = 99;
        boxes.answer(vbOK);
        {
            frmShowReport w;
            QCOMPARE(boxes.prompts(), QStringList({"Unknown ReportType"}));
        }
        boxes.clear();
        // Types no menu reaches run nothing and say nothing.
        for (int type : {1, 2, 3, 9, 10}) {
            gReportType = type;
            frmShowReport w;
            w.Command1_Click();
            QCOMPARE(w.gdxUBView->Columns().Count(), 0);
        }
        QVERIFY(boxes.shown().isEmpty());

        gReportType = 4;
        frmShowReport w;
        boxes.answer(vbOK);
        w.buttons_ButtonClick(4);
        QCOMPARE(boxes.prompts(),
                 QStringList({"An unknown button(index) was selected. Nothing was done"}));
    }

    void menuOffersTheReportsOfItsGroup() {
        TestData data;
        const QList<QPair<int, QList<int>>> groups = {
            {1, {4, 11, 12, 13}}, {2, {6, 7, 8}}, {4, {5}}};
        for (const auto& [group, types] : groups) {
            frmReporterMenu menu(group);
            QCOMPARE(menu.cmdRep.keys(), types);
        }
        {
            ScriptedBoxes boxes;
            boxes.answer(vbOK);
            frmReporterMenu unknown(3);
            QCOMPARE(boxes.prompts(), QStringList({"Unknown button/option was selected."}));
            QCOMPARE(unknown.lblWait->text(),
                     QStringLiteral("No reports are available for this unknown option"));
        }

        // An entry opens the report window; while it is open a click does nothing.
        frmReporterMenu menu(1);
        menu.show();
        bool busy = false;
        int typeAfterSecondClick = 0;
        QString title;
        auto watch = OnModal<frmShowReport>([&](frmShowReport* report) {
            busy = gReportBusy && menu.frmWait->isVisible() &&
                   menu.lblWait->text() == QStringLiteral("Report running, please wait ....");
            title = report->Label3->text();
            menu.cmdRep_Click(13); // ignored: no second window, the type stays
            typeAfterSecondClick = gReportType;
        });
        QTest::mouseClick(menu.cmdRep[4], Qt::LeftButton);
        QVERIFY(*watch && busy);
        QCOMPARE(typeAfterSecondClick, 4);
        QCOMPARE(title, QStringLiteral("Parts not used in given period"));
        QVERIFY(!gReportBusy && !menu.frmWait->isVisible());
    }
};

QTEST_MAIN(TestReportWindows)
#include "test_report_windows.moc"
