#include "inventory/StockMovements.h"

#include "foundation/Clock.h"
#include "foundation/DbEngine.h"
#include "foundation/Dialect.h"
#include "foundation/Globals.h"
#include "foundation/Helpers.h"
#include "foundation/MsgBox.h"

namespace {

const QString kQtyMask = QStringLiteral("0.0#");

QString Id(qint32 itemId) {
    return QString::number(itemId);
}

} // namespace

QString HistTypeOf(AdjustmentKind kind) {
    switch (kind) {
    case AdjustmentKind::Issue:
        return QStringLiteral("ISSUE");
    case AdjustmentKind::Return:
        return QStringLiteral("RETURN");
    case AdjustmentKind::AdjustPlus:
        return QStringLiteral("ADJ(+)");
    case AdjustmentKind::AdjustMinus:
        return QStringLiteral("ADJ(-)");
    case AdjustmentKind::None:
        break;
    }
    return QString();
}

QString AdjustedQtyCell(const QString& oldCell, double qty) {
    return FormatNumber(ParseLocaleNumber(oldCell) + qty, kQtyMask);
}

StockAdjustmentResult PostStockAdjustment(const StockAdjustment& in) {
    StockAdjustmentResult result;
    if (in.kind == AdjustmentKind::None) {
        MsgBox(QStringLiteral("You need to select an option button"), vbInformation,
               QStringLiteral("No option selected"));
        return result;
    }
    const double typed = ParseLocaleNumber(in.qtyText);
    const bool out = in.kind == AdjustmentKind::Issue || in.kind == AdjustmentKind::AdjustMinus;
    const double n = out ? -typed : typed;
    const QString type = HistTypeOf(in.kind);
    if (in.itemId == 0)
        return result;

    Database db = DBEngine::OpenDatabase(gDbPath);
    // The two statements stand alone: the stock first, then its history row. An issue beyond the
    // stock simply drives Qty below zero.
    db.Execute(QStringLiteral("UPDATE tblStockItems ") + QStringLiteral(" SET QTY = QTY + ") +
               SqlNumber(n, kQtyMask) + QStringLiteral(" WHERE ItemID=") + Id(in.itemId));
    db.Execute(
        QStringLiteral("INSERT INTO tblItemHistory ") +
        QStringLiteral(" (StockID, HistDate, HistType, HistID, HistRef, HistQty, HistText)") +
        QStringLiteral(" VALUES ") + QStringLiteral(" (") + Id(in.itemId) + QStringLiteral(",") +
        SqlDateLiteral(Today()) + QStringLiteral(",'") + type + QStringLiteral("',0,") +
        SqlText(in.ref) + QStringLiteral(",") + QString::number(n, 'g', 15) + QStringLiteral(",") +
        SqlText(in.text) + QStringLiteral(");"));
    db.Close();

    result.posted = true;
    result.qty = n;
    result.histType = type;
    result.qtyCell = AdjustedQtyCell(in.qtyCell, n);
    ShowProcessingBar();
    return result;
}

void ShowAdjustmentHelp() {
    MsgBox(QStringLiteral("This option simply enters the correct transaction/memo into the "
                          "database history") +
               QStringLiteral("\n\n") +
               QStringLiteral("If goods are being taken or returned then you'd select the "
                              "issue/return options and enter the person's name if required. "
                              "If the stock count is found to be wrong, for example after a "
                              "stock check, then select Adjust (+) or Adjust (-), enter a "
                              "reference and say who authorised the change."),
           vbInformation, QStringLiteral("Inventory Adjustments"));
}

// --- history grid ---

QStringList HistoryColumnKeys() {
    return {QStringLiteral("EDate"), QStringLiteral("ETyp"), QStringLiteral("EQty"),
            QStringLiteral("ERef"),  QStringLiteral("TRN"),  QStringLiteral("EText")};
}

QStringList HistoryColumnCaptions() {
    return {QStringLiteral("Date"),     QStringLiteral("Type"), QStringLiteral("Qty"),
            QStringLiteral("EventRef"), QStringLiteral("TRN"),  QStringLiteral("EventText")};
}

QString HistoryTypeShown(const QString& histType) {
    if (histType == QLatin1String("ADJ(+)"))
        return QStringLiteral("Adjust(+)");
    if (histType == QLatin1String("ADJ(-)"))
        return QStringLiteral("Adjust(-)");
    if (histType == QLatin1String("RX"))
        return QStringLiteral("Received");
    if (histType == QLatin1String("SHIP"))
        return QStringLiteral("Shipped");
    return histType; // "ISSUE", "RETURN" and unknown kinds as stored
}

QString HistoryTextShown(const QString& histType, const QString& histText) {
    if (histType == QLatin1String("ADJ(+)") || histType == QLatin1String("ADJ(-)"))
        return QStringLiteral("Ref: ") + histText;
    if (histType == QLatin1String("RX"))
        return QStringLiteral("Order Ref: ") + histText;
    if (histType == QLatin1String("SHIP"))
        return QStringLiteral("Shipping Ref: ") + histText;
    return histText;
}

QList<QStringList> LoadItemHistory(qint32 itemId) {
    QList<QStringList> rows;
    Database db = DBEngine::OpenDatabase(gDbPath);
    Recordset rs = db.OpenRecordset(QStringLiteral("SELECT * FROM tblItemHistory") +
                                    QStringLiteral(" WHERE StockID=") + Id(itemId));
    while (!rs.Eof()) {
        const QString type = rs.Fields(QStringLiteral("HistType")).Text();
        QStringList row;
        row << ShowDate(rs.Fields(QStringLiteral("HistDate")).Value()) // blank outside 2001-2039
            << HistoryTypeShown(type)
            << FormatNumber(rs.Fields(QStringLiteral("HistQty")).Value(), kQtyMask)
            << rs.Fields(QStringLiteral("HistRef")).Text()
            << rs.Fields(QStringLiteral("HistTRN")).Text()
            << HistoryTextShown(type, rs.Fields(QStringLiteral("HistText")).Text());
        rows.append(row);
        rs.MoveNext();
    }
    return rows;
}

// --- pending order panel ---

QStringList PendingPurchaseCaptions() {
    return {QStringLiteral("POrderNo"), QStringLiteral("ETA"), QStringLiteral("Qty")};
}

QStringList OpenSalesCaptions() {
    return {QStringLiteral("SOrderNo"), QStringLiteral("Customer"), QStringLiteral("Qty")};
}

StockQtyInfo LoadStockQtyInfo(qint32 itemId) {
    StockQtyInfo info;
    Database db = DBEngine::OpenDatabase(gDbPath);
    // The update is the test: a basket row is touched only when the item is flagged, and it
    // writes back the value FromID always holds.
    db.Execute(QStringLiteral("UPDATE tblBaskets SET FromID = 0 WHERE StockID=") + Id(itemId));
    info.flagged = db.RecordsAffected() > 0;

    Recordset po = db.OpenRecordset(
        QStringLiteral("SELECT POID, POSchedDate, POQty, PORecieved FROM tblPODetail ") +
        QStringLiteral(" WHERE POStockID = ") + Id(itemId) +
        QStringLiteral(" AND POQty<>PORecieved") + QStringLiteral(" ORDER BY POID"));
    while (!po.Eof()) {
        const double open = ParseLocaleNumber(po.Fields(QStringLiteral("POQty")).Value()) -
                            ParseLocaleNumber(po.Fields(QStringLiteral("PORecieved")).Value());
        info.onOrder.append(
            {Format(po.Fields(QStringLiteral("POID")).Double(), QStringLiteral("0000")),
             ShowDate(po.Fields(QStringLiteral("POSchedDate")).Value()),
             FormatNumber(open, kQtyMask)});
        po.MoveNext();
    }
    po.Close();

    // Open customer order rows: ordered and shipped differ, as in the list of pending orders.
    Recordset so = db.OpenRecordset(
        QStringLiteral("SELECT tblCustOrders.CustBasketID, tblCusAddresses.CoName,") +
        QStringLiteral(" tblCustOrderDetail.OrderedQty, tblCustOrderDetail.ShippedQty") +
        QStringLiteral(" FROM (tblCustOrderDetail INNER JOIN tblCustOrders") +
        QStringLiteral(" ON tblCustOrderDetail.CustBasketDetailID = tblCustOrders.CustBasketID)") +
        QStringLiteral(
            " LEFT JOIN tblCusAddresses ON tblCustOrders.CustID = tblCusAddresses.AddID") +
        QStringLiteral(" WHERE tblCustOrderDetail.StockID = ") + Id(itemId) +
        QStringLiteral(" AND tblCustOrderDetail.OrderedQty <> tblCustOrderDetail.ShippedQty") +
        QStringLiteral(" ORDER BY tblCustOrders.CustBasketID"));
    while (!so.Eof()) {
        const double open = ParseLocaleNumber(so.Fields(QStringLiteral("OrderedQty")).Value()) -
                            ParseLocaleNumber(so.Fields(QStringLiteral("ShippedQty")).Value());
        info.allocated.append(
            {Format(so.Fields(QStringLiteral("CustBasketID")).Double(), QStringLiteral("0000")),
             so.Fields(QStringLiteral("CoName")).Text(), FormatNumber(open, kQtyMask)});
        so.MoveNext();
    }
    return info;
}

BasketChange ApplyPurchasingFlag(qint32 itemId, bool sendToPO) {
    if (!gCanInventory)
        return BasketChange::None;
    Database db = DBEngine::OpenDatabase(gDbPath);
    Recordset rs = db.OpenRecordset(QStringLiteral("SELECT StockID FROM tblBaskets") +
                                    QStringLiteral(" WHERE StockID = ") + Id(itemId));
    const bool flagged = !rs.Eof();
    rs.Close();
    if (sendToPO && !flagged) {
        db.Execute(QStringLiteral("INSERT INTO tblBaskets ") +
                   QStringLiteral(" ( StockID, ReqQty, OrderYN)") + QStringLiteral(" VALUES ") +
                   QStringLiteral(" (") + Id(itemId) + QStringLiteral(",0,1);"));
        return BasketChange::Flagged;
    }
    if (!sendToPO && flagged) {
        if (MsgBox(QStringLiteral("This item is flagged for purchasing. Do you wish to un-flag "
                                  "this item?"),
                   vbYesNo, QStringLiteral("Purchasing")) == vbYes) {
            db.Execute(QStringLiteral("DELETE FROM tblBaskets ") +
                       QStringLiteral(" WHERE StockID=") + Id(itemId));
            return BasketChange::Unflagged;
        }
    }
    return BasketChange::None;
}
