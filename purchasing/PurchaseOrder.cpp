#include "purchasing/PurchaseOrder.h"

#include "foundation/Clock.h"
#include "foundation/DbEngine.h"
#include "foundation/Dialect.h"
#include "foundation/Globals.h"
#include "foundation/Helpers.h"
#include "foundation/MsgBox.h"
#include "foundation/Rights.h"
#include "inventory/OnOrder.h"
#include "purchasing/PurchaseBasket.h"
#include "purchasing/PurchasingCommon.h"

qint32 LastPOID(Database* db) {
    Database own;
    if (db == nullptr || !db->IsOpen()) {
        own = DBEngine::OpenDatabase(gDbPath);
        db = &own;
    }
    Recordset rs = db->OpenRecordset(
        QStringLiteral("SELECT POID FROM tblPOrders ORDER BY POID DESC") + FirstRowOnly());
    return rs.Eof() ? 0 : qint32(rs.Fields(0).Long());
}

qint32 NextPOID(const QString& typedPOID) {
    const qint32 next = LastPOID() + 1;
    const double typed = Val(typedPOID);
    return typed > next ? qint32(typed) : next;
}

QString POIDText(qint32 poid) {
    return Format(poid, QStringLiteral("0000"));
}

OrderNowResult PlacePurchaseOrder(const OrderNowInput& in) {
    OrderNowResult res;
    res.poidText = in.poidText;
    if (!CheckRight(Right::Purchasing))
        return res;

    const UBArray none;
    const UBArray& rows = in.rows ? *in.rows : none;
    // The array as the window holds it is searched; the row count is checked after, so that an
    // array left from another supplier is never ordered.
    QList<int> ticked;
    for (int r = 1; r <= rows.Rows(); ++r)
        if (BasketTicked(rows(BasketCol::Ticked, r)))
            ticked << r;
    if (ticked.isEmpty()) {
        MsgBox(QStringLiteral("The order would be empty so nothing was done"), vbExclamation,
               QStringLiteral("No items selected"));
        return res;
    }
    for (int r : ticked) {
        if (Val(BasketCellText(rows(BasketCol::ReqQty, r))) < 1) {
            MsgBox(QStringLiteral("At least one selected row has a zero order quantity") +
                       QStringLiteral("\n\n") +
                       QStringLiteral("Either unselect the row or enter an order quantity"),
                   vbExclamation, QString());
            return res;
        }
    }
    if (in.rowCount < 1) {
        MsgBox(QStringLiteral("Nothing listed"), vbExclamation, QStringLiteral("Nothing Done"));
        return res;
    }
    if (!in.supplierChosen) {
        MsgBox(QStringLiteral("No Supplier selected. Order Not processed"), vbExclamation,
               QStringLiteral("Nothing Done"));
        return res;
    }
    const qint32 number = NextPOID(in.poidText);
    res.poidText = POIDText(number);

    // The header, the read-back of its number and the rows with their on-order quantities go in
    // one transaction: it holds the write lock from its start, so another workstation's order
    // waits, and its header then fails on the number instead of taking these rows.
    const qint32 supplier = in.supplierIDs.value(in.supplierIndex);
    qint32 poid = 0;
    try {
        Database db = DBEngine::OpenDatabase(gDbPath);
        db.BeginTrans();
        try {
            db.Execute(QStringLiteral("INSERT INTO tblPOrders") +
                       QStringLiteral("(POID, PONumber, PODate, POSupID, POLocID, POComplete, "
                                      "POConfirmed)") +
                       QStringLiteral(" VALUES ") + QStringLiteral("(") + QString::number(number) +
                       QStringLiteral(",") + SqlText(in.reference) + QStringLiteral(",") +
                       SqlDateLiteral(Today()) + QStringLiteral(",") + QString::number(supplier) +
                       QStringLiteral(",0,0,0)"));
            poid = LastPOID(&db);
            for (int r : ticked) {
                const qint32 item = qint32(Val(rows(BasketCol::ItemID, r).toString()));
                db.Execute(
                    QStringLiteral("INSERT INTO tblPODetail") +
                    QStringLiteral("(POStockID, POID, POSupPNo, POQty, POPrice, POSchedDate, "
                                   "PORecieved, RowConfirmed, RowComments, GRN_PONo)") +
                    QStringLiteral(" VALUES ") + QStringLiteral("(") + QString::number(item) +
                    QStringLiteral(",") + QString::number(poid) + QStringLiteral(",") +
                    SqlText(rows(BasketCol::SupPNo, r).toString()) + QStringLiteral(",") +
                    SqlNumber(rows(BasketCol::ReqQty, r), kQtyMask) + QStringLiteral(",") +
                    SqlNumber(rows(BasketCol::Price, r), kPriceMask) + QStringLiteral(",") +
                    SqlDateLiteral(ParseDateText(rows(BasketCol::DelDate, r).toString())) +
                    QStringLiteral(",0,0,'','')"));
                RefreshOnOrderQty(item, &db);
            }
            db.CommitTrans();
        } catch (const DbError&) {
            db.Rollback();
            throw;
        }
    } catch (const DbError&) {
        MsgBox(QStringLiteral("There was a error while saving the purchase order details."),
               vbCritical, QStringLiteral("DB Write Error"));
        res.outcome = OrderNowResult::WriteFailed;
        return res;
    }
    res.outcome = OrderNowResult::Placed;
    res.poid = poid;
    res.poidText = POIDText(poid);

    // Only once the order is whole do its rows leave the basket.
    try {
        Database db = DBEngine::OpenDatabase(gDbPath);
        db.BeginTrans();
        try {
            for (int r : ticked)
                db.Execute(QStringLiteral("DELETE FROM tblBaskets") +
                           QStringLiteral(" WHERE RowID=") +
                           QString::number(qint64(Val(rows(BasketCol::RowID, r).toString()))));
            db.CommitTrans();
        } catch (const DbError&) {
            db.Rollback();
            throw;
        }
        res.basketCleared = true;
    } catch (const DbError&) {
        MsgBox(QStringLiteral("The Order details were saved but some data could not be removed "
                              "from the Basket. You may need to remove this manually"),
               vbExclamation, QStringLiteral("DB Error"));
    }

    res.print = MsgBox(QStringLiteral("Do you want to print the order Now?"), vbYesNo + vbQuestion,
                       QStringLiteral("Print Order?")) == vbYes;
    return res;
}
