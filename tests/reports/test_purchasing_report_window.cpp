// The purchasing reports in the report window: the overdue lines at once on opening, the late
// deliveries of a picked period with their note, printed and exported.
#include "foundation/Clock.h"
#include "foundation/Globals.h"
#include "foundation/Printer.h"
#include "grids/GridEX.h"
#include "reports/Reports.h"
#include "reports/frmShowReport.h"
#include "tests/reports/PurchasingReportFixture.h"
#include "tests/support/TestSupport.h"

#include <QComboBox>
#include <QFile>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QToolButton>

using orderbook::BookIn;
using orderbook::PlaceOrder;

namespace {

void SelectText(QComboBox* combo, const QString& text) {
    const int i = combo->findText(text);
    QVERIFY2(i >= 0, qPrintable(text));
    combo->setCurrentIndex(i);
}

// March 2024 in the pickers: from the 1st to the 31st.
void PickMarch(frmShowReport& w) {
    SelectText(w.cboStartYear, QStringLiteral("2024"));
    SelectText(w.cboStartMonth, QStringLiteral("March"));
    SelectText(w.cboStartDay, QStringLiteral("01"));
    SelectText(w.cboEndYear, QStringLiteral("2024"));
    SelectText(w.cboEndMonth, QStringLiteral("March"));
    SelectText(w.cboEndDay, QStringLiteral("31"));
}

QStringList GridRow(const GridEX& grid, int record) {
    QStringList cells;
    for (int c = 1; c <= grid.Columns().Count(); ++c)
        cells << grid.CellValue(record, c).toString();
    return cells;
}

// Two suppliers; an order of each, due early in March and delivered late in part, and a line
// still open.
void LateOrders(ScriptedBoxes& boxes) {
    fixture::Supplier(1, QStringLiteral("Acme Components"), QStringLiteral("ACM"));
    fixture::Supplier(2, QStringLiteral("Bolt Supplies"), QStringLiteral("BLT"));
    fixture::Item(10, QStringLiteral("RES-10K"));
    fixture::Item(11, QStringLiteral("CAP-1U"));
    for (int item : {10, 11})
        for (int supplier : {1, 2})
            fixture::Link(item, supplier, QStringLiteral("1"), QStringLiteral("S-%1").arg(item));
    const QList<int> acme =
        PlaceOrder(QDate(2024, 2, 20), 1, QStringLiteral("PO-7"),
                   {{10, 10, 12.5, QDate(2024, 3, 4)}, {11, 3, 2, QDate(2024, 3, 25)}}, boxes);
    const QList<int> bolt = PlaceOrder(QDate(2024, 2, 21), 2, QStringLiteral("PO-8"),
                                       {{11, 2000, 1000, QDate(2024, 3, 1)}}, boxes);
    BookIn(acme.value(0), 4, QDate(2024, 3, 6));
    BookIn(acme.value(0), 6, QDate(2024, 3, 8));
    BookIn(bolt.value(0), 1000, QDate(2024, 3, 2));
}

} // namespace

class TestPurchasingReportWindow : public QObject {
    Q_OBJECT
private slots:
    void init() {
        UseTestLocale();
        gReportBusy = false;
        gDateFixing = false;
        gCanPurchasing = true;
    }
    void cleanup() { SetToday(QDate()); }

    void overdueLinesShowAsTheWindowOpens() {
        TestData data;
        ScriptedBoxes boxes;
        LateOrders(boxes);
        boxes.clear();
        SetToday(QDate(2024, 3, 26));
        gReportType = 6;
        frmShowReport w;
        w.show();
        QCOMPARE(w.Label3->text(), QStringLiteral("Overdue Deliveries"));
        QVERIFY(!w.Frame1->isVisible() && !w.Frame2->isVisible() && !w.Command1->isVisible());
        QTRY_COMPARE(w.gdxUBView->ItemCount(), 2);
        const GridEX& grid = *w.gdxUBView;
        QCOMPARE(grid.Columns()("DueDate").Caption(), QStringLiteral("Due Date"));
        QCOMPARE(GridRow(grid, 1), QStringList({"PO-7", "ACM", "20/02/2024", "25/03/2024", "CAP-1U",
                                                "Value 11", "Item 11", "2.00", "3.0", "0.0"}));
        QCOMPARE(GridRow(grid, 2).mid(0, 4),
                 QStringList({"PO-8", "BLT", "21/02/2024", "01/03/2024"}));
        QCOMPARE(w.Text1->text(), QStringLiteral("Number of Item/rows = 2"));
        QCOMPARE(w.Text2->text(), QStringLiteral("Total Value/cost of Overdue items = "));
        QCOMPARE(w.Text3->text(), QStringLiteral("1,000,006.00"));
        QVERIFY(boxes.shown().isEmpty()); // the report says nothing
    }

    void lateDeliveriesOfAPeriodPrintAndExport() {
        TestData data;
        ScriptedBoxes boxes;
        LateOrders(boxes);
        auto printer = std::make_shared<RecordingPrinter>();
        SetPrinters({printer});
        SetToday(QDate(2024, 4, 15));
        gReportType = 7;
        frmShowReport w;
        w.show();
        QCOMPARE(w.Label3->text(),
                 QStringLiteral("Supplier - Late Deliveries in given period - Detail"));
        QCOMPARE(w.gdxUBView->ItemCount(), 0); // nothing before the button
        PickMarch(w);
        QTest::mouseClick(w.Command1, Qt::LeftButton);
        QTRY_COMPARE(w.gdxUBView->ItemCount(), 3);
        const GridEX& grid = *w.gdxUBView;
        QCOMPARE(grid.Columns()("PO Qty").Caption(), QStringLiteral("Ordered "));
        QCOMPARE(GridRow(grid, 3),
                 QStringList({"PO-8", "BLT", "21/02/2024", "01/03/2024", "02/03/2024", "CAP-1U",
                              "Value 11", "Item 11", "1000.00", "2000.0", "1000.0"}));
        QCOMPARE(w.Text1->text(), QStringLiteral("Number of Item/rows = 3"));
        // 75 + 50 for the two parts against the whole line of 10, 1,000,000 for the half.
        QCOMPARE(w.Text3->text(), QStringLiteral("1,000,125.00"));
        QCOMPARE(w.Label2->text(),
                 QStringLiteral("NOTE:-\nThis report can only identify late deliveries received "
                                "AFTER your installation/upgrade to Planlet version 2.5 (or "
                                "above)"));

        // Exported with the captions, the key with a blank included.
        const QString csv = data.path(QStringLiteral("late.csv"));
        boxes.answerFile(csv);
        boxes.answer(vbOK);
        QTest::mouseClick(w.buttons_5, Qt::LeftButton);
        QFile f(csv);
        QVERIFY(f.open(QIODevice::ReadOnly));
        const QStringList lines = QString::fromLocal8Bit(f.readAll()).split(QStringLiteral("\r\n"));
        QCOMPARE(lines.value(0), QStringLiteral("PONumber,Supplier,Ordered,Scheduled,Delivered,"
                                                "PartNo,Name,Desc,Cost (x1) ,Ordered ,Received ,"));
        QVERIFY2(lines.contains(QStringLiteral("PO-7,ACM,20/02/2024,04/03/2024,06/03/2024,"
                                               "RES-10K,Value 10,Item 10,12.50,10.0,4.0,")),
                 qPrintable(lines.join(QLatin1Char('\n'))));

        // Printed across a landscape sheet, every late receipt on it.
        boxes.cancelInput(); // no heading
        w.PrintReport(1);
        QCOMPARE(printer->Documents(), 1);
        const QStringList printed = printer->Texts();
        for (const char* text :
             {"Scheduled", "Delivered", "06/03/2024", "08/03/2024", "02/03/2024", "2000.0"})
            QVERIFY2(printed.contains(QLatin1String(text)), text);
    }
};

QTEST_MAIN(TestPurchasingReportWindow)
#include "test_purchasing_report_window.moc"
