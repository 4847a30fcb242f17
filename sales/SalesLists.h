// The two sales lists of the main window: the customer orders, pending or completed, and the
// invoices. Each comes with the columns the list grid is rebuilt with.
#pragma once

#include "inventory/InventoryList.h"

#include <QList>
#include <QString>

struct SalesListColumn {
    QString key;
    QString caption;
    int widthTwips;
    bool checkBox;
};

struct SalesList {
    QList<SalesListColumn> columns;
    UBArray data; // one row per line of the list, one column per entry of `columns`
};

// The orders with any row still to supply (pending) or any row supplied in full (not pending),
// by order number. The test is made row by row: an order with both kinds of row is in both lists,
// an order without rows in neither.
QString CustomerOrdersStatement(bool pending);
SalesList ListCustomerOrders(bool pending);

// Every invoice, by invoice number.
QString InvoicesStatement();
SalesList ListInvoices();
