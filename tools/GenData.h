// The data generator: writes a business database of the current structure, filled with
// realistic rows at a chosen scale, for benchmarks, demos and tests.
//
// Every count follows from the number of items, in the proportions of the reference scale
// (100,000 items, 500 suppliers, 2,000 customers, 20,000 purchase orders with 100,000 rows,
// 1,000,000 history rows, 30,000 customer orders, 20,000 document links, 50,000 parts-list rows).
// The same items, seed and anchor date always give the same rows.
#pragma once

#include <QDate>
#include <QString>
#include <functional>

struct GenDataOptions {
    int items = 100000;
    quint32 seed = 1;
    // The last day of the ten years the dates spread over; invalid means Today().
    QDate today;
    // Told the name of each stage as it starts; may be empty.
    std::function<void(const QString&)> progress;
};

// The counts a scale aims at. Orders and rows are exact; invoices follow from the orders.
struct GenDataScale {
    int items = 0;
    int suppliers = 0; // real suppliers, besides "No Supplier" and the non-stock supplier
    int customers = 0;
    int locations = 0; // tblLocAddresses rows
    int miscContacts = 0;
    int categories = 0;
    int purchaseOrders = 0;
    int purchaseOrderRows = 0;
    int historyRows = 0;
    int customerOrders = 0;
    int basketRows = 0;
    int links = 0;
    int usedInRows = 0;     // parts-list rows: components of the assemblies
    int allocationRows = 0; // tblAllocDetail: works-order allocations of earlier versions
};
GenDataScale ScaleFor(int items);

// What was written, table by table.
struct GenDataCounts {
    qint64 items = 0;
    qint64 itemSuppliers = 0;
    qint64 comments = 0;
    qint64 suppliers = 0; // every tblSupAddresses row
    qint64 customers = 0;
    qint64 locations = 0;
    qint64 miscContacts = 0;
    qint64 basketRows = 0;
    qint64 purchaseOrders = 0;
    qint64 purchaseOrderRows = 0;
    qint64 customerOrders = 0;
    qint64 customerOrderRows = 0;
    qint64 invoices = 0;
    qint64 invoiceRows = 0;
    qint64 historyRows = 0;
    qint64 links = 0;
    qint64 usedInRows = 0;
    qint64 allocationRows = 0;
};

// Makes the three data files in `folder` (refusing when any exists) and fills dbqst.dqx.
// Returns false with a reason on failure; the files made so far are left as they are.
bool GenerateData(const QString& folder, const GenDataOptions& options,
                  GenDataCounts* counts = nullptr, QString* error = nullptr);
