// The four reports on purchase orders: the orders placed in a period (type 5), the order lines
// overdue today (6), the late deliveries of a period line by line (7) and the same per supplier
// (8).
//
// A receipt is an "RX" row of the item history; it names its order line in HistID2 (the line's
// RowID), and a receipt is late when its HistDate lies after the line's POSchedDate. Receipts
// booked before HistID2 was written carry none and are never counted as late.
#pragma once

#include "reports/Reports.h"

// The statements, as the reports run them.
QString OrdersInPeriodStatement(const QDate& start, const QDate& end);
QString OverdueLinesStatement(const QDate& today);
QString LateDeliveriesStatement(const QDate& start, const QDate& end);
QString LateDeliveriesBySupplierStatement(const QDate& start, const QDate& end);

// Type 5: one row per order line of the orders dated strictly between the two dates. An order is
// counted each time the buyer's reference changes from one line to the next, starting from an
// empty one.
ReportResult OrdersInPeriodReport(const ReportInput& input);
// Type 6: the lines whose received quantity differs from the ordered one and whose delivery date
// lies before today (Today()), each valued at what remains to come.
ReportResult OverdueLinesReport(const ReportInput& input);
// Type 7: one row per late receipt in the period, valued against the line's whole quantity.
ReportResult LateDeliveriesReport(const ReportInput& input);
// Type 8: the late receipts of the period summed per supplier, with their number.
ReportResult LateDeliveriesBySupplierReport(const ReportInput& input);
