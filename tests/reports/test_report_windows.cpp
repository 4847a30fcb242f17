// The report menu and the report window, driven through their controls.
#include "foundation/Clock.h"
#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "foundation/Printer.h"
#include "grids/GridEX.h"
#include "grids/frmPrintDialog.h"
#include "inventory/FormMain.h"
#include "reports/Reports.h"
#include "reports/frmReporterMenu.h"
#include "reports/frmShowReport.h"
#include "tests/reports/ReportFixture.h"
#include "tests/support/TestSupport.h"

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
#include <QTest>
#include <QTimer>
#include <QToolButton>

using namespace reporttest;

namespace {

QStringList SummaryLines(const frmShowReport& w) {
    return {w.Text1->text(), w.Text2->text(), w.Text3->text(), w.Text4->text(), w.Text5->text()};
}

QStringList ReadLines(const QString& path) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return {};
    return QString::fromLocal8Bit(f.readAll()).split(QStringLiteral("\r\n"));
}

int ColStatRows() {
    Database db = DBEngine::OpenDatabase(gUserCfgPath);
    return int(db.OpenRecordset(QStringLiteral("SELECT count(*) FROM ColStat")).Fields(0).Long());
}

void SelectText(QComboBox* combo, const QString& text) {
    const int i = combo->findText(text);
    QVERIFY2(i >= 0, qPrintable(text));
    combo->setCurrentIndex(i);
}

// Acts on a window once it is up, looking for it every few milliseconds while the test waits in
// a modal call. Stops looking when it goes out of scope.
template <class W> class WhenUp {
public:
    WhenUp(std::function<W*()> find, std::function<void(W*)> act) {
        QObject::connect(&mTimer, &QTimer::timeout, [this, find, act] {
            if (W* w = find()) {
                mTimer.stop();
                mSeen = true;
                act(w);
            }
        });
        mTimer.start(10);
    }
    bool Seen() const { return mSeen; }

private:
    QTimer mTimer;
    bool mSeen = false;
};

// Runs `check` on the modal window of class W, then closes it.
template <class W> std::unique_ptr<WhenUp<W>> WhenModal(std::function<void(W*)> check) {
    return std::make_unique<WhenUp<W>>(
        [] { return qobject_cast<W*>(QApplication::activeModalWidget()); },
        [check](W* w) {
            check(w);
            w->close();
        });
}

// Three categories of stock for the grouped report.
void GroupedStock() {
    Item(1, "B-1", "BOLT", 10, "Hex bolt");
    Supplier(1, 1, 2, 0);
    Item(2, "B-2", "BOLT", 1, "Cap screw");
    Supplier(2, 1, 1.5, 0);
    Item(3, "N-1", "NUT", 4, "Nut, M6");
    Supplier(3, 1, 0.25, 0);
    Item(4, "W-1", "WASHER", 100, "Washer");
    Supplier(4, 1, 0.05, 0);
}

} // namespace

class TestReportWindows : public QObject {
    Q_OBJECT
private slots:
    void init() {
        UseTestLocale();
        gReportBusy = false;
        gDateFixing = false;
    }
    void cleanup() { SetToday(QDate()); }

    void datedReportOpensOnTheCurrentMonth() {
        TestData data;
        ScriptedBoxes boxes;
        gReportType = 4;
        SetToday(QDate(2024, 4, 15)); // a month of 30 days
        frmShowReport w;
        QCOMPARE(w.Frame1->title(), QStringLiteral("Start"));
        QCOMPARE(w.Frame2->title(), QStringLiteral("End"));
        QCOMPARE(w.Label3->text(), QStringLiteral("Parts not used in given period"));
        QCOMPARE(w.cboStartYear->count(), 30);
        QCOMPARE(w.cboStartYear->itemText(0), QStringLiteral("2024"));
        QCOMPARE(w.cboEndYear->itemText(29), QStringLiteral("1995"));
        QCOMPARE(w.cboStartMonth->currentText(), QStringLiteral("April"));
        QCOMPARE(w.cboEndDay->count(), 31);
        QCOMPARE(w.cboStartDay->currentText(), QStringLiteral("01"));
        QCOMPARE(w.cboEndDay->currentText(), QStringLiteral("30"));
        QCOMPARE(w.StartDate(), QDate(2024, 4, 1));
        QCOMPARE(w.EndDate(), QDate(2024, 4, 30));
        QVERIFY(!gDateFixing);

        // Picking 31 falls back to the month's last day; a month change checks again.
        SelectText(w.cboEndMonth, QStringLiteral("March"));
        SelectText(w.cboEndDay, QStringLiteral("31"));
        QCOMPARE(w.EndDate(), QDate(2024, 3, 31));
        SelectText(w.cboEndMonth, QStringLiteral("February"));
        QCOMPARE(w.cboEndDay->currentText(), QStringLiteral("29"));
        SelectText(w.cboEndYear, QStringLiteral("2023"));
        QCOMPARE(w.EndDate(), QDate(2023, 2, 28));
        QVERIFY(boxes.shown().isEmpty());
        // With no month chosen no day makes a date: the box, and the day stays.
        boxes.answer(vbOK);
        w.cboEndMonth->setCurrentIndex(-1);
        QCOMPARE(boxes.prompts(), QStringList({"Invalid date selected"}));
        QCOMPARE(boxes.shown().last().flags, int(vbInformation));
        QCOMPARE(w.cboEndDay->currentText(), QStringLiteral("28"));
        QVERIFY(!gDateFixing);

        for (const auto& [today, last] : {std::pair{QDate(2024, 2, 10), QDate(2024, 2, 29)},
                                          std::pair{QDate(2023, 2, 10), QDate(2023, 2, 28)}}) {
            SetToday(today);
            frmShowReport leap;
            QCOMPARE(leap.StartDate(), QDate(today.year(), 2, 1));
            QCOMPARE(leap.EndDate(), last);
        }
    }

    void idleReportRunsOnlyForAPeriodInOrder() {
        TestData data;
        Item(1, "P-1", "A", 2, "Spring", "Bin 1");
        Supplier(1, 1, 1.25, 0);
        History(1, "2024-04-01"); // on the start date
        Item(2, "P-2", "A", 3);
        History(2, "2024-04-10");
        Item(3, "P-3", "A", 1234.5);
        Supplier(3, 1, 1, 0);
        gReportType = 4;
        SetToday(QDate(2024, 4, 15));
        frmShowReport w;
        w.show();
        QVERIFY(w.Frame1->isVisible() && w.Frame2->isVisible() && w.Command1->isVisible());
        QVERIFY(!w.Command11->isVisible());

        ScriptedBoxes boxes;
        // Start and end on the same date: the message and no report.
        SelectText(w.cboStartDay, QStringLiteral("30"));
        boxes.answer(vbOK);
        QTest::mouseClick(w.Command1, Qt::LeftButton);
        QCOMPARE(boxes.prompts(), QStringList({"Start Date must be 'earlier' than End Date"}));
        QCOMPARE(boxes.shown().last().flags, int(vbInformation));
        QCOMPARE(w.gdxUBView->ItemCount(), 0);
        QCOMPARE(w.gdxUBView->Columns().Count(), 0);

        SelectText(w.cboStartDay, QStringLiteral("01"));
        QTest::mouseClick(w.Command1, Qt::LeftButton);
        QVERIFY(!w.Running());
        QCOMPARE(w.gdxUBView->Columns().Count(), 7);
        QCOMPARE(w.gdxUBView->ItemCount(), 2);
        QCOMPARE(w.gdxUBView->CellValue(1, 2).toString(), QStringLiteral("P-1"));
        QCOMPARE(w.gdxUBView->CellValue(1, 7).toString(), QStringLiteral("2.50"));
        QCOMPARE(w.gdxUBView->CellValue(2, 5).toString(), QStringLiteral("1234.5"));
        QVERIFY(w.gdxUBView->Columns()("Qty").Alignment() & Qt::AlignRight);
        QCOMPARE(SummaryLines(w),
                 QStringList({"Number of records = 2",
                              "Total value (at cost) of Idle Inventory = ", "1,237.00", "",
                              "Total does not include items where OnHand Qty is less than zero"}));
        QVERIFY(!w.frmWait->isVisible());
    }

    void groupedReportFoldsPrintsAndExportsWithItsCategory() {
        TestData data;
        GroupedStock();
        auto printer = std::make_shared<RecordingPrinter>();
        SetPrinters({printer});
        gReportType = 12;
        frmShowReport w;
        w.show();
        QTRY_COMPARE(w.gdxUBView->ItemCount(), 4);
        GridEX& grid = *w.gdxUBView;
        QVERIFY(w.Command11->isVisible() && !w.Command1->isVisible());
        QVERIFY(!w.Frame1->isVisible() && !w.Frame2->isVisible());
        QVERIFY(!grid.Columns()("Category").Visible());
        QCOMPARE(grid.Columns()("Cat").Caption(), QStringLiteral("Cat"));
        QCOMPARE(grid.RowCount(), 7); // three groups, open
        QCOMPARE(grid.GroupRowLevel(1), 1);
        QCOMPARE(w.Text3->text(), QStringLiteral("27.50"));

        QTest::mouseClick(w.Command11, Qt::LeftButton);
        QCOMPARE(grid.RowCount(), 3);
        QTest::mouseClick(w.Command11, Qt::LeftButton);
        QCOMPARE(grid.RowCount(), 7);

        // A resize is not remembered: the main list's stored widths stay untouched.
        grid.TableView()->horizontalHeader()->resizeSection(grid.Columns()("Desc").Index() - 1,
                                                            300);
        QCOMPARE(ColStatRows(), 0);

        // Export: the category is written, the group rows are not.
        const QString csv = data.path(QStringLiteral("report.csv"));
        {
            ScriptedBoxes boxes;
            boxes.answerFile(csv);
            boxes.answer(vbOK);
            QTest::mouseClick(w.buttons_5, Qt::LeftButton);
            QCOMPARE(boxes.shown().last().title, QStringLiteral("Saved"));
        }
        const QStringList lines = ReadLines(csv);
        QCOMPARE(lines.value(0), QStringLiteral("Cat,Part No.,Description,Category,Location ,Qty ,"
                                                "Cost (x1) ,Value (at Cost) ,"));
        QCOMPARE(lines.value(1), QString());
        QCOMPARE(lines.mid(2, 4), QStringList({"BOLT,B-1,Hex bolt,BOLT,A1,10.0,2.00,20.00,",
                                               "BOLT,B-2,Cap screw,BOLT,A1,1.0,1.50,1.50,",
                                               "NUT,N-1,Nut. M6,NUT,A1,4.0,0.25,1.00,",
                                               "WASHER,W-1,Washer,WASHER,A1,100.0,0.05,5.00,"}));
        QCOMPARE(lines.size(), 7);
        QVERIFY(!grid.Columns()("Category").Visible());

        // A file that cannot be written: the box, and the column hidden again.
        {
            ScriptedBoxes boxes;
            boxes.answerFile(data.path(QStringLiteral("no/such/folder/report.csv")));
            boxes.answer(vbOK);
            w.buttons_ButtonClick(5);
            QCOMPARE(boxes.shown().last().title, QStringLiteral("File Error"));
        }
        QVERIFY(!grid.Columns()("Category").Visible());

        // Printing through the panel in Portrait: with the description widened above, the
        // listing and its category no longer fit, and Cancel at that question prints nothing.
        {
            ScriptedBoxes boxes;
            boxes.answer(vbCancel);
            WhenUp<frmPrintDialog> panel(
                [&] { return w.findChild<frmPrintDialog*>(QStringLiteral("frmPrintDialog")); },
                [](frmPrintDialog* p) {
                    p->optOrientation_0->setChecked(true);
                    QTest::mouseClick(p->cmdPrintOK, Qt::LeftButton);
                });
            QTest::mouseClick(w.buttons_3, Qt::LeftButton);
            QVERIFY(panel.Seen());
            QCOMPARE(boxes.prompts(), QStringList({"The document width is too wide for Portrait. "
                                                   "Do you wish to use Landscape?"}));
        }
        QCOMPARE(printer->Documents(), 0);
        QVERIFY(!grid.Columns()("Category").Visible());

        // In Landscape the listing prints, group rows and category included.
        {
            ScriptedBoxes boxes;
            boxes.cancelInput(); // no heading
            w.PrintReport(1);
        }
        QCOMPARE(printer->Documents(), 1);
        const QStringList printed = printer->Texts();
        QVERIFY(printed.contains(QStringLiteral("Category")));
        QVERIFY(printed.contains(QStringLiteral("WASHER")));
        QVERIFY(printed.contains(QStringLiteral("20.00")));
        QVERIFY(!grid.Columns()("Category").Visible());
    }

    void reportsWithoutDatesRunAsTheyOpen() {
        TestData data;
        GroupedStock();
        gReportType = 13;
        frmShowReport w;
        w.show();
        QTRY_COMPARE(w.gdxUBView->ItemCount(), 3);
        QCOMPARE(w.gdxUBView->CellValue(1, 2).toString(), QStringLiteral("21.50"));
        QCOMPARE(w.Text1->text(), QStringLiteral("Number of Categories = 3"));
        QCOMPARE(w.Text3->text(), QStringLiteral("27.50"));
        QVERIFY(!w.Command1->isVisible() && !w.Command11->isVisible());

        gReportType = 11;
        frmShowReport byPart;
        byPart.show();
        QTRY_COMPARE(byPart.gdxUBView->ItemCount(), 4);
        QCOMPARE(byPart.gdxUBView->RowCount(), 4); // no groups, the category shown
        QVERIFY(byPart.gdxUBView->Columns()("Category").Visible());
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
            w.show();
            if (w.Command1->isVisible())
                QTest::mouseClick(w.Command1, Qt::LeftButton);
            QCOMPARE(w.gdxUBView->Columns().Count(), 0);
        }
        QVERIFY(boxes.shown().isEmpty());

        // No type: the window closes as it opens.
        gReportType = 0;
        frmShowReport none;
        bool forced = false;
        QTimer::singleShot(2000, &none, [&] { // a window that stayed open fails below
            forced = true;
            none.close();
        });
        QCOMPARE(none.exec(), int(QDialog::Rejected));
        QVERIFY(!forced);

        gReportType = 4;
        frmShowReport w;
        boxes.answer(vbOK);
        w.buttons_ButtonClick(4);
        QCOMPARE(boxes.prompts(),
                 QStringList({"An unknown button(index) was selected. Nothing was done"}));
    }

    void closeAndRunWaitForTheRunningReport() {
        TestData data;
        Item(1, "P-1", "A", 1);
        gReportType = 4;
        SetToday(QDate(2024, 4, 15));
        frmShowReport w;
        w.show();

        // A close asked for while the report is read waits for the end of the run.
        bool waitShown = false;
        bool stayedOpen = false;
        QTimer::singleShot(0, &w, [&] {
            waitShown = w.frmWait->isVisible() && w.Running();
            w.close();
            stayedOpen = w.isVisible();
        });
        w.Command1_Click();
        QVERIFY(waitShown);
        QVERIFY(stayedOpen);
        QVERIFY(!w.isVisible());
        QCOMPARE(w.gdxUBView->ItemCount(), 1);

        // A second run asked for meanwhile starts when the first has ended: here its dates are
        // out of order, so it stops at the date check.
        w.show();
        ScriptedBoxes boxes;
        boxes.answer(vbOK);
        QTimer::singleShot(0, &w, [&] {
            SelectText(w.cboStartDay, QStringLiteral("30"));
            QTest::mouseClick(w.Command1, Qt::LeftButton);
            QVERIFY(boxes.shown().isEmpty());
        });
        w.Command1_Click();
        QCOMPARE(boxes.prompts(), QStringList({"Start Date must be 'earlier' than End Date"}));
        QCOMPARE(w.gdxUBView->ItemCount(), 1);
    }

    void menuOffersTheReportsOfItsGroup() {
        TestData data;
        const QList<QPair<int, QList<int>>> groups = {
            {1, {4, 11, 12, 13}}, {2, {6, 7, 8}}, {4, {5}}};
        for (const auto& [group, types] : groups) {
            frmReporterMenu menu(group);
            QCOMPARE(menu.cmdRep.keys(), types);
            for (int type : types)
                QVERIFY(menu.findChild<QPushButton*>(QStringLiteral("cmdRep_%1").arg(type)));
            QVERIFY(!menu.frmWait->isVisibleTo(&menu));
        }

        {
            ScriptedBoxes boxes;
            boxes.answer(vbOK);
            frmReporterMenu unknown(3);
            QCOMPARE(boxes.prompts(), QStringList({"Unknown button/option was selected."}));
            QVERIFY(unknown.cmdRep.isEmpty());
            QCOMPARE(unknown.lblWait->text(),
                     QStringLiteral("No reports are available for this unknown option"));
            QVERIFY(unknown.frmWait->isVisibleTo(&unknown));
        }

        // An entry opens the report window; while it is open a click does nothing.
        frmReporterMenu menu(1);
        menu.show();
        bool busy = false;
        bool waitShown = false;
        int typeAfterSecondClick = 0;
        QString title;
        auto watch = WhenModal<frmShowReport>([&](frmShowReport* report) {
            busy = gReportBusy;
            title = report->Label3->text();
            waitShown = menu.frmWait->isVisible() &&
                        menu.lblWait->text() == QStringLiteral("Report running, please wait ....");
            menu.cmdRep_Click(13); // ignored: no second window, the type stays
            typeAfterSecondClick = gReportType;
        });
        QTest::mouseClick(menu.cmdRep[4], Qt::LeftButton);
        QVERIFY(watch->Seen());
        QVERIFY(busy);
        QVERIFY(waitShown);
        QCOMPARE(typeAfterSecondClick, 4);
        QCOMPARE(title, QStringLiteral("Parts not used in given period"));
        QVERIFY(!gReportBusy);
        QVERIFY(!menu.frmWait->isVisible());

        // Closed, the menu opens the next one.
        watch = WhenModal<frmShowReport>(
            [&](frmShowReport* report) { title = report->Label3->text(); });
        QTest::mouseClick(menu.cmdRep[13], Qt::LeftButton);
        QVERIFY(watch->Seen());
        QCOMPARE(title, QStringLiteral("Value, at cost, by category"));
    }

    void mainWindowOpensTheMenu() {
        TestData data;
        FormMain w;
        w.Form_Load();
        w.show();
        QStringList entries;
        auto watch = WhenModal<frmReporterMenu>([&](frmReporterMenu* menu) {
            for (QPushButton* b : menu->cmdRep)
                entries << b->objectName();
        });
        w.ButtonBar1_ButtonClick(QStringLiteral("Reports"), QStringLiteral("REP2"));
        QVERIFY(watch->Seen());
        QCOMPARE(entries, QStringList({"cmdRep_6", "cmdRep_7", "cmdRep_8"}));
    }
};

QTEST_MAIN(TestReportWindows)
#include "test_report_windows.moc"
