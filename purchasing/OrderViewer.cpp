#include "purchasing/OrderViewer.h"

#include "foundation/DbEngine.h"
#include "foundation/Dialect.h"
#include "foundation/Globals.h"
#include "foundation/Helpers.h"
#include "foundation/MsgBox.h"
#include "foundation/Rights.h"
#include "inventory/OnOrder.h"
#include "purchasing/PurchaseBasket.h"
#include "purchasing/PurchaseOrder.h"
#include "purchasing/PurchaseOrderDocument.h"
#include "purchasing/PurchasingCommon.h"

#include <QHash>
#include <QList>
#include <QLocale>

quint8 gOrderViewMode = OrderViewMode::NotCompleted;
QString gRemoteMode;

namespace {

// A flag cell as a number: a tick of the grid is True (-1) or False (0); a value read from the
// table keeps its number.
qint64 FlagValue(const QVariant& v) {
    if (v.typeId() == QMetaType::Bool)
        return v.toBool() ? -1 : 0;
    return qint64(Val(v.toString()));
}

QString Number(const QVariant& v) {
    return QString::number(qint64(Val(v.toString())));
}

void CopyRow(UBArray& rows, int record, int columns, const QVector<QVariant>& values) {
    for (int c = 1; c <= columns; ++c)
        rows(c, record) = values.value(c - 1);
}

// $Total of a row: the quantity and the price as they read on screen.
void WorkOutRowTotal(UBArray& rows, int r) {
    rows(PODetailCol::RowPrice, r) = Format(ParseLocaleNumber(rows(PODetailCol::POQty, r)) *
                                                ParseLocaleNumber(rows(PODetailCol::AtPrice, r)),
                                            kPriceMask);
}

QString YesNoPrompt(const QString& first, const QString& second) {
    return second.isEmpty() ? first : first + QStringLiteral("\n\n") + second;
}

} // namespace

bool RemoteModeNumeric() {
    bool ok = false;
    const QString t = gRemoteMode.trimmed();
    if (t.isEmpty())
        return false;
    t.toDouble(&ok);
    if (!ok)
        QLocale().toDouble(t, &ok);
    return ok;
}

bool RefuseEmptyRemoteSearch(const QString& orderFilter, const QString& supplierFilter) {
    if (!RemoteModeNumeric() || !orderFilter.isEmpty() || !supplierFilter.isEmpty())
        return false;
    MsgBox(QStringLiteral("You must enter at least one character into the search criteria "
                          "otherwise too many results will be returned by the server which would "
                          "take a long time even on a high speed broadband connection.") +
               QStringLiteral("\n\n") +
               QStringLiteral("It is suggested that you enter the order number or at least the "
                              "first character of the order(s) you're looking for. The more "
                              "criteria you enter the faster your result set will be displayed "
                              "by the Server."),
           vbOKOnly, QString());
    return true;
}

QString OrderListStatement(quint8 mode, const QString& orderFilter, const QString& supplierFilter) {
    QString sql =
        QStringLiteral("SELECT ") + QStringLiteral(" tblPOrders.POID,") +
        QStringLiteral(" PONumber,") + QStringLiteral(" PODate,") +
        QStringLiteral(" tblPODetail.POQty,") + QStringLiteral(" tblPODetail.PORecieved,") +
        QStringLiteral(" tblPOrders.POConfirmed,") + QStringLiteral(" tblPODetail.POSchedDate,") +
        QStringLiteral(" tblSupAddresses.CoName,") + QStringLiteral(" tblSupAddresses.AddID") +
        QStringLiteral(" FROM ((tblPOrders") +
        QStringLiteral(" INNER JOIN tblPODetail ON tblPOrders.POID=tblPOdetail.POID)") +
        QStringLiteral(" LEFT JOIN tblSupAddresses ON tblPOrders.POSupID=tblSupAddresses.AddID)") +
        QStringLiteral(" WHERE tblPOrders.POID ") + LikePrefix(orderFilter) +
        QStringLiteral(" AND tblSupAddresses.CoName ") + LikePrefix(supplierFilter);
    if (mode == OrderViewMode::NotCompleted)
        sql += QStringLiteral(" AND POQty <> PORecieved");
    else if (mode == OrderViewMode::Completed)
        sql += QStringLiteral(" AND POQty = PORecieved");
    // The row's own key ends the sort, so that "the first row met" of an order is always the
    // same one.
    sql += QStringLiteral(" ORDER BY CoName, tblPOrders.POID, tblPODetail.RowID");
    return sql;
}

OrderArray LoadOrderList(quint8 mode, const QString& orderFilter, const QString& supplierFilter,
                         bool* stopped) {
    OrderArray load;
    load.rows.Redim(OListCol::Count, 0);
    if (Val(gRemoteMode) > 0 && orderFilter.isEmpty() && supplierFilter.isEmpty()) {
        if (stopped)
            *stopped = true;
        return load;
    }
    if (stopped)
        *stopped = false;
    Database db = DBEngine::OpenDatabase(gDbPath);
    Recordset rs = db.OpenRecordset(OrderListStatement(mode, orderFilter, supplierFilter));
    // The fields in the statement's order.
    enum { fPOID, fPONumber, fPODate, fQty, fRecd, fConfirmed, fSched, fCoName, fAddID };
    const NumberMask idMask(QStringLiteral("0000"));
    UBArray& a = load.rows;
    const QVariant loc = QStringLiteral("xxxx");
    const QVariant stock = QStringLiteral("-Stock-");
    // Orders share their dates: each stored date is read and written for the screen once.
    QHash<QByteArray, QString> dates;
    auto shown = [&dates](const Field& f) -> QString {
        const QByteArrayView stored = f.Utf8();
        auto it = dates.constFind(QByteArray::fromRawData(stored.data(), stored.size()));
        if (it != dates.constEnd())
            return *it;
        return *dates.insert(stored.toByteArray(), ShowDate(f.Value()));
    };
    int r = 0;
    qint64 last = 0;
    for (; !rs.Eof(); rs.MoveNext()) {
        // One line per order: the rows after its first are passed over.
        const qint64 poid = rs.Fields(fPOID).Long();
        if (r > 0 && poid == last)
            continue;
        last = poid;
        a.SetRows(++r);
        a(OListCol::OrID, r) = idMask.Plain(double(poid));
        a(OListCol::OrRef, r) = rs.Fields(fPONumber).Text();
        a(OListCol::Sup, r) = rs.Fields(fCoName).Text();
        a(OListCol::OrDate, r) = shown(rs.Fields(fPODate));
        a(OListCol::Eta, r) = shown(rs.Fields(fSched));
        a(OListCol::Loc, r) = loc;
        a(OListCol::SupID, r) = rs.Fields(fAddID).Long();
        a(OListCol::Chk, r) = rs.Fields(fConfirmed).Double() != 0;
        a(OListCol::NSSup, r) = stock;
    }
    load.rowCount = r;
    return load;
}

void ConfirmOrder(UBArray& rows, int rowCount, int record, const QVector<QVariant>& values) {
    if (rowCount < 1 || record < 1 || record > rows.Rows())
        return;
    CopyRow(rows, record, OListCol::Count, values);
    // PONumberID is a column nothing else writes: the statement runs and changes no order.
    Database db = DBEngine::OpenDatabase(gDbPath);
    db.Execute(QStringLiteral("UPDATE tblPOrders") + QStringLiteral(" SET POConfirmed=") +
               QString::number(FlagValue(rows(OListCol::Chk, record))) +
               QStringLiteral(" WHERE PONumberID=") + Number(rows(OListCol::OrID, record)));
}

OrderArray LoadOrderDetail(qint32 poid) {
    OrderArray load;
    load.rows.Redim(PODetailCol::Count, 0);
    Database db = DBEngine::OpenDatabase(gDbPath);
    Recordset rs = db.OpenRecordset(
        QStringLiteral("SELECT * FROM (tblPOrders") +
        QStringLiteral(" INNER JOIN tblPODetail ON tblPOrders.POID = tblPODetail.POID)") +
        QStringLiteral(" INNER JOIN tblStockItems ON tblPODetail.POStockID=tblStockItems.ItemID") +
        QStringLiteral(" WHERE tblPOrders.POID =") + QString::number(poid) +
        QStringLiteral(" ORDER BY POSchedDate, POStockID"));
    if (rs.Eof()) {
        rs.Close();
        MsgBox(QStringLiteral("This Purchase Order has No Items attached. You may add items now "
                              "if you wish"),
               vbInformation, QStringLiteral("Empty Purchase Order"));
        return load;
    }
    const int fRow = rs.FieldIndex(QStringLiteral("RowID"));
    const int fPNo = rs.FieldIndex(QStringLiteral("MasterPNo"));
    const int fName = rs.FieldIndex(QStringLiteral("ItemName"));
    const int fDesc = rs.FieldIndex(QStringLiteral("ItemDescription"));
    const int fSupPNo = rs.FieldIndex(QStringLiteral("POSupPNo"));
    const int fSched = rs.FieldIndex(QStringLiteral("POSchedDate"));
    const int fConf = rs.FieldIndex(QStringLiteral("RowConfirmed"));
    const int fQty = rs.FieldIndex(QStringLiteral("POQty"));
    const int fRecd = rs.FieldIndex(QStringLiteral("PORecieved"));
    const int fPrice = rs.FieldIndex(QStringLiteral("POPrice"));
    const int fStock = rs.FieldIndex(QStringLiteral("POStockID"));
    const NumberMask qty(kQtyMask);
    const NumberMask price(kPriceMask);
    UBArray& a = load.rows;
    int r = 0;
    for (; !rs.Eof(); rs.MoveNext()) {
        a.SetRows(++r);
        const double ordered = StoredNumber(rs.Fields(fQty));
        const double each = StoredNumber(rs.Fields(fPrice));
        a(PODetailCol::RowID, r) = rs.Fields(fRow).Long();
        a(PODetailCol::PNo, r) = rs.Fields(fPNo).Text();
        a(PODetailCol::PName, r) = rs.Fields(fName).Text();
        a(PODetailCol::Desc, r) = rs.Fields(fDesc).Text();
        a(PODetailCol::SupPNo, r) = rs.Fields(fSupPNo).Text();
        a(PODetailCol::DelDate, r) = ShowDate(ParseDateText(rs.Fields(fSched).Text()));
        a(PODetailCol::Chk, r) = rs.Fields(fConf).Long();
        a(PODetailCol::POQty, r) = qty.Screen(ordered);
        a(PODetailCol::DelQty, r) = qty.Screen(StoredNumber(rs.Fields(fRecd)));
        a(PODetailCol::AtPrice, r) = price.Plain(each);
        a(PODetailCol::RowPrice, r) = price.Plain(ordered * each);
        a(PODetailCol::StockID, r) = rs.Fields(fStock).Long();
    }
    load.rowCount = r;
    return load;
}

void CommitDetailRow(UBArray& rows, int rowCount, int record, const QVector<QVariant>& values) {
    if (rowCount < 1 || record < 1 || record > rows.Rows())
        return;
    CopyRow(rows, record, PODetailCol::Count, values);
    WorkOutRowTotal(rows, record);
}

void CarryDetailEdits(const UBArray& before, int beforeCount, const QList<qint64>& edited,
                      UBArray& after, int afterCount) {
    if (edited.isEmpty())
        return;
    QHash<qint64, int> rowOf;
    for (int r = 1; r <= beforeCount; ++r)
        rowOf.insert(before(PODetailCol::RowID, r).toLongLong(), r);
    for (int r = 1; r <= afterCount; ++r) {
        const qint64 id = after(PODetailCol::RowID, r).toLongLong();
        const int old = rowOf.value(id);
        if (old == 0 || !edited.contains(id))
            continue;
        for (int c : {PODetailCol::DelDate, PODetailCol::Chk, PODetailCol::POQty})
            after(c, r) = before(c, old);
        WorkOutRowTotal(after, r);
    }
}

void SaveOrderRows(const SaveOrderInput& in) {
    const UBArray none;
    const UBArray& rows = in.rows ? *in.rows : none;
    const int count = std::min(in.rowCount, rows.Rows());
    Database db = DBEngine::OpenDatabase(gDbPath);
    // Every row is written, changed or not. Whether a row is still open (ordered differs from
    // received) does not decide anything: the on-order quantity of every row's item is counted
    // again once all rows are written.
    QList<qint32> items;
    items.reserve(count);
    for (int r = 1; r <= count; ++r) {
        db.Execute(QStringLiteral("UPDATE tblPODetail") + QStringLiteral(" SET POSchedDate=") +
                   SqlDateLiteral(ParseDateText(rows(PODetailCol::DelDate, r).toString())) +
                   QStringLiteral(", POQty=") + SqlNumber(rows(PODetailCol::POQty, r), kQtyMask) +
                   QStringLiteral(", POPrice=") +
                   SqlNumber(rows(PODetailCol::AtPrice, r), kPriceMask) +
                   QStringLiteral(", RowConfirmed=") +
                   QString::number(FlagValue(rows(PODetailCol::Chk, r))) +
                   QStringLiteral(" WHERE RowID=") + Number(rows(PODetailCol::RowID, r)));
        items << qint32(Val(rows(PODetailCol::StockID, r).toString()));
    }
    for (qint32 item : items)
        RefreshOnOrderQty(item, &db);
    // The header's flag is written 0 whatever the rows hold.
    db.Execute(QStringLiteral("UPDATE tblPOrders") + QStringLiteral(" SET POComplete=0") +
               QStringLiteral(" WHERE POID=") + Number(in.poidText));
}

ReprintAnswer SaveAndOfferPrint(const SaveOrderInput& in) {
    if (!CheckRight(Right::Purchasing))
        return ReprintAnswer::Refused;
    SaveOrderRows(in);
    return MsgBox(YesNoPrompt(QStringLiteral("If you made any changes they have now been saved to "
                                             "the database"),
                              QStringLiteral("Do you wish to print/reprint the order now?")),
                  vbYesNo + vbQuestion, QStringLiteral("Print order?")) == vbYes
               ? ReprintAnswer::SavedToPrint
               : ReprintAnswer::Saved;
}

void ReprintOrder(qint32 poid) {
    if (PrintPurchaseOrder(poid, true) == kPODocumentPrinted)
        MsgBox(QStringLiteral("Order was spooled. Check your printout and reprint if necessary"),
               vbInformation, QStringLiteral("Printer Status"));
}

OrderArray ShowOrderParts(qint32 supplierId, const QString& filter) {
    const BasketLoad parts = ShowSupplierParts(supplierId, filter);
    OrderArray load;
    load.rowCount = parts.rowCount;
    load.rows.Redim(POPartCol::Count, parts.rowCount);
    for (int r = 1; r <= parts.rowCount; ++r) {
        load.rows(POPartCol::PartID, r) = parts.rows(PartCol::ItemID, r);
        load.rows(POPartCol::PartNo, r) = parts.rows(PartCol::PartNo, r);
        load.rows(POPartCol::PName, r) = parts.rows(PartCol::Name, r);
        load.rows(POPartCol::Cat, r) = parts.rows(PartCol::Category, r);
        load.rows(POPartCol::Desc, r) = parts.rows(PartCol::Description, r);
        load.rows(POPartCol::Price, r) = parts.rows(PartCol::Price, r);
        load.rows(POPartCol::SupPNo, r) = parts.rows(PartCol::SupPNo, r);
    }
    return load;
}

bool AddOrderRow(qint32 itemId, qint32 poid, qint32 supplierId) {
    Database db = DBEngine::OpenDatabase(gDbPath);
    Recordset rs = db.OpenRecordset(
        QStringLiteral("SELECT ItemID, SupplierID, PriceEach,  SupplierPNo FROM tblItemSupplier") +
        QStringLiteral(" WHERE ItemID=") + QString::number(itemId) +
        QStringLiteral(" AND SupplierID=") + QString::number(supplierId));
    if (rs.Eof()) {
        rs.Close();
        MsgBox(QStringLiteral("You can't add this item to the current Order because the item is "
                              "not available from that supplier"),
               vbInformation, QStringLiteral("Incorrect Supplier"));
        return false;
    }
    const double price = StoredNumber(rs.Fields(QStringLiteral("PriceEach")));
    const QString supPNo = rs.Fields(QStringLiteral("SupplierPNo")).Text();
    rs.Close();

    Recordset add = db.OpenRecordset(QStringLiteral("SELECT * from tblPODetail") +
                                     QStringLiteral(" WHERE RowID=0"));
    add.AddNew();
    add.SetField(QStringLiteral("POID"), poid);
    add.SetField(QStringLiteral("POStockID"), itemId);
    add.SetField(QStringLiteral("POSupPNo"), supPNo);
    add.SetField(QStringLiteral("POQty"), 0.0);
    // The price as its mask rounds it, stored as the number (never as the locale's text).
    add.SetField(QStringLiteral("POPrice"), SqlNumber(price, kPriceMask).toDouble());
    add.SetField(QStringLiteral("POSchedDate"), SqlDateOrFar(QString()));
    add.SetField(QStringLiteral("PORecieved"), 0.0);
    add.Update();
    return true;
}

DeleteOutcome DeleteOrderRow(qint32 rowId) {
    if (!CheckRight(Right::Purchasing))
        return DeleteOutcome::Refused;
    if (MsgBox(YesNoPrompt(QStringLiteral("Are you sure you want to delete this Row from the "
                                          "order?"),
                           QStringLiteral("If you select 'Yes' the row will be deleted "
                                          "immediately")),
               vbYesNo + vbQuestion + vbDefaultButton2, QStringLiteral("Delete Row?")) != vbYes)
        return DeleteOutcome::Declined;
    const QString id = QString::number(rowId);
    Database db = DBEngine::OpenDatabase(gDbPath);
    Recordset rs = db.OpenRecordset(QStringLiteral(" SELECT POStockID FROM tblPODetail ") +
                                    QStringLiteral(" WHERE RowID=") + id);
    if (!rs.Eof()) {
        const qint32 item = qint32(rs.Fields(0).Long());
        rs.Close();
        db.Execute(QStringLiteral("DELETE FROM tblPODetail") + QStringLiteral(" WHERE RowID = ") +
                   id);
        RefreshOnOrderQty(item, &db);
    }
    return DeleteOutcome::Deleted;
}

DeleteOutcome DeleteOrder(qint32 poid) {
    if (!CheckRight(Right::Purchasing))
        return DeleteOutcome::Refused;
    if (MsgBox(QStringLiteral("Are you sure you want to delete this PurchaseOrder Entirely?"),
               vbYesNo + vbQuestion + vbDefaultButton2, QStringLiteral("Delete Order?")) != vbYes)
        return DeleteOutcome::Declined;
    const QString id = QString::number(poid);
    Database db = DBEngine::OpenDatabase(gDbPath);
    QList<qint32> items;
    {
        Recordset rs = db.OpenRecordset(QStringLiteral(" SELECT POStockID FROM tblPODetail ") +
                                        QStringLiteral(" WHERE POID=") + id);
        for (; !rs.Eof(); rs.MoveNext())
            items << qint32(rs.Fields(0).Long());
    }
    db.Execute(QStringLiteral("DELETE FROM tblPODetail") + QStringLiteral(" WHERE POID = ") + id);
    for (qint32 item : items)
        RefreshOnOrderQty(item, &db);
    db.Execute(QStringLiteral("DELETE FROM tblPOrders") + QStringLiteral(" WHERE POID = ") + id);
    return DeleteOutcome::Deleted;
}
