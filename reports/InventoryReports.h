// The four reports that value stock at cost: idle stock over a period (type 4), the whole stock by
// part (11) or grouped by category (12), and the value per category (13).
//
// Costing: an item's rows come one per supplier, ordered by part number and PrimeSupplier, and
// the first row of each part number is taken (FirstRowPerPartNumber), so an item counts once at the
// PriceEach of its row with the lowest flag; without a supplier row it costs 0. A row's value is
// PriceEach x Qty. A negative Qty shows an empty Qty cell, keeps its negative value in the row and
// adds nothing to the total: totals take only rows whose Qty is above 0.
#pragma once

#include "reports/Reports.h"

// The statements, as the reports run them.
QString IdleStockStatement(const QDate& start, const QDate& end);
QString InventoryValuationStatement();
QString CategoryValueStatement();

// Type 4: the items with no history row of any kind strictly between the two dates.
ReportResult IdleStockReport(const ReportInput& input);
// Types 11 and 12: every item by part number; grouped, the grid groups its rows on Category.
ReportResult InventoryValuationReport(const ReportInput& input, bool groupByCategory);
// Type 13: one row per category with the value of its stock.
ReportResult CategoryValueReport(const ReportInput& input);
