#include "sales/CustOrderSave.h"

#include "foundation/Clock.h"
#include "foundation/DbEngine.h"
#include "foundation/Dialect.h"
#include "foundation/Globals.h"
#include "foundation/Helpers.h"
#include "foundation/MsgBox.h"
#include "sales/CustOrder.h"

qint32 SettleOrderNumber(CustOrderSheet& sheet) {
    const double typed = Val(sheet.custBasketID);
    if (sheet.mode != OrderMode::NewOrder)
        return qint32(typed);
    const qint32 next = NextCustBasketID();
    // A typed number may move the sequence up, never back over numbers in use.
    if (typed > next)
        return qint32(typed);
    sheet.custBasketID = Format(next, QStringLiteral("0000"));
    return next;
}

QString OrderHeaderUpdate(const CustOrderSheet& sheet, qint32 orderNo) {
    return QStringLiteral("UPDATE tblCustOrders SET  CustOrRef=") + SqlText(sheet.custOrNo) +
           QStringLiteral(", ORDiscount=") + SqlValue(sheet.discount) +
           QStringLiteral(" WHERE CustBasketID = ") + QString::number(orderNo);
}

QString OrderHeaderInsert(const CustOrderSheet& sheet, qint32 orderNo) {
    return QStringLiteral("INSERT INTO tblCustOrders  (CustBasketID, CustID, SalesRef, "
                          "CustOrRef, CustOrDate, ORDiscount) VALUES  (") +
           QString::number(orderNo) + QLatin1Char(',') + sheet.custID + QStringLiteral(",'',") +
           SqlText(sheet.custOrNo) + QLatin1Char(',') + SqlDateLiteral(Today()) + QLatin1Char(',') +
           SqlValue(sheet.discount) + QLatin1Char(')');
}

QString OrderRowInsert(const OrderRow& row, qint32 orderNo, const QString& shipped) {
    return QStringLiteral("INSERT INTO tblCustOrderDetail  ( CustBasketDetailID, StockID, "
                          "OrderedQty, GrosPrice, NetPrice, ShippedQty) VALUES  (") +
           QString::number(orderNo) + QLatin1Char(',') + row[OrderCol::StockID] + QLatin1Char(',') +
           SqlNumber(row[OrderCol::OrderQty], kQtyMask) + QLatin1Char(',') +
           SqlNumber(row[OrderCol::Price], kPriceMask) + QLatin1Char(',') +
           SqlNumber(row[OrderCol::SellAt], kPriceMask) + QLatin1Char(',') + shipped +
           QStringLiteral(");");
}

void WriteCustomerOrder(const CustOrderSheet& sheet, qint32 orderNo) {
    Database db = DBEngine::OpenDatabase(gDbPath);
    // Update first: a save never changes the customer or the date of an order that exists.
    db.Execute(OrderHeaderUpdate(sheet, orderNo));
    if (db.RecordsAffected() == 0)
        db.Execute(OrderHeaderInsert(sheet, orderNo));

    for (const OrderRow& row : sheet.rows) {
        const double qty = ParseLocaleNumber(row[OrderCol::OrderQty]);
        const QString key = SqlKey(row[OrderCol::RowID]);
        if (qty > 0) {
            if (key.toLongLong() > 0) {
                // The gross price stays as it was first saved.
                db.Execute(QStringLiteral("UPDATE tblCustOrderDetail SET  OrderedQty = ") +
                           SqlNumber(qty, kQtyMask) + QStringLiteral(", NetPrice = ") +
                           SqlNumber(row[OrderCol::SellAt], kPriceMask) +
                           QStringLiteral(" WHERE RowID = ") + key);
            } else {
                db.Execute(OrderRowInsert(row, orderNo, QStringLiteral("0")));
            }
        } else {
            // A quantity of 0 removes the row; a row never saved has key 0 and touches nothing.
            db.Execute(QStringLiteral("DELETE FROM tblCustOrderDetail  WHERE RowID = ") + key);
        }
    }
}

qint32 SaveCustomerOrder(CustOrderSheet& sheet) {
    const qint32 n = SettleOrderNumber(sheet);
    WriteCustomerOrder(sheet, n);
    return n;
}

bool ValidateOrderQuantities(const CustOrderSheet& sheet) {
    QString reasons;
    for (const OrderRow& row : sheet.rows) {
        const double qty = ParseLocaleNumber(row[OrderCol::OrderQty]);
        const double done = ParseLocaleNumber(row[OrderCol::Done]);
        const QString line = QStringLiteral("\nThe Qty in Row ") + row[OrderCol::Item];
        if (qty < done)
            reasons += line + QStringLiteral(" is below the Qty already supplied to the customer");
        else if (qty < 0)
            reasons += line + QStringLiteral(" is below zero");
    }
    if (reasons.isEmpty())
        return true;
    MsgBox(QStringLiteral("The order could not be saved because of the reasons listed below") +
               reasons,
           vbOKOnly | vbInformation, QStringLiteral("Can't save"));
    return false;
}

bool SaveOrderCommand(CustOrderSheet& sheet) {
    if (sheet.rows.isEmpty()) {
        MsgBox(QStringLiteral("Can't save an empty order"), vbOKOnly | vbInformation,
               QStringLiteral("Order has no items"));
        return false;
    }
    if (sheet.mode == OrderMode::SavedOrder) {
        if (!ValidateOrderQuantities(sheet))
            return false;
    } else if (sheet.mode != OrderMode::NewOrder) {
        return false;
    }
    SaveCustomerOrder(sheet);
    return true;
}
