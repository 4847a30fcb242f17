#include "reports/Reports.h"

#include "foundation/Helpers.h"
#include "reports/InventoryReports.h"
#include "reports/PurchasingReports.h"

bool gReportBusy = false;
bool gDateFixing = false;

namespace {

ReportLayout layout(const char* title, bool start, bool end, bool onLoad) {
    ReportLayout l;
    l.known = true;
    l.title = QString::fromLatin1(title);
    l.startDate = start;
    l.endDate = end;
    l.runButton = start || end;
    l.runsOnLoad = onLoad;
    return l;
}

} // namespace

ReportLayout ReportLayoutFor(int reportType) {
    switch (reportType) {
    case 4:
        return layout("Parts not used in given period", true, true, false);
    case 5:
        return layout("Purchase Orders in given period", true, true, false);
    case 6:
        return layout("Overdue Deliveries", false, false, true);
    case 7:
        return layout("Supplier - Late Deliveries in given period - Detail", true, true, false);
    case 8:
        return layout("Supplier - Late Deliveries in given period - Summary", true, true, false);
    case 11:
        return layout("All Inventory By Part Number", false, false, true);
    case 12: {
        ReportLayout l =
            layout("All Inventory By Category - Click the 'group' button to expand/collapse", false,
                   false, true);
        l.groupButton = true;
        return l;
    }
    case 13:
        return layout("Value, at cost, by category", false, false, true);
    // Types no menu entry reaches: the window keeps their titles and runs nothing for them.
    case 1:
        return layout("Parts used in given period", true, true, false);
    case 2:
        return layout("Production Schedule - WorksOrders which should be issued before 'End' "
                      "date.",
                      false, true, false);
    case 3:
        return layout("Production Schedule - All Works Orders", false, false, false);
    case 9:
    case 10:
        return layout("", false, false, false);
    default:
        return ReportLayout();
    }
}

ReportResult RunReport(const ReportInput& input) {
    switch (input.reportType) {
    case 4:
        return IdleStockReport(input);
    case 5:
        return OrdersInPeriodReport(input);
    case 6:
        return OverdueLinesReport(input);
    case 7:
        return LateDeliveriesReport(input);
    case 8:
        return LateDeliveriesBySupplierReport(input);
    case 11:
        return InventoryValuationReport(input, false);
    case 12:
        return InventoryValuationReport(input, true);
    case 13:
        return CategoryValueReport(input);
    default:
        return ReportResult();
    }
}

ReportColumn TextColumn(const char* key, const char* caption, int widthTwips) {
    return {QString::fromLatin1(key), QString::fromLatin1(caption), false, widthTwips};
}

ReportColumn FigureColumn(const char* key, const char* caption, int widthTwips) {
    return {QString::fromLatin1(key), QString::fromLatin1(caption), true, widthTwips};
}

void WriteSummary(ReportResult& r, const QString& count, const QString& totalCaption, double total,
                  const QString& text4, const QString& text5) {
    r.summary.text = {count, totalCaption, Format(total, QStringLiteral("#,##0.00")), text4, text5};
}

ReportEvents::ReportEvents(const std::function<void()>& events) : mEvents(events) {
    mClock.start();
}

void ReportEvents::Check() {
    if (mClock.elapsed() < 50)
        return;
    mEvents();
    mClock.restart();
}

int SettlePickedDay(int year, int month, int day) {
    while (!QDate(year, month, day).isValid()) {
        --day;
        if (day < 28)
            return 0;
    }
    return day;
}
