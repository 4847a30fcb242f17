#include "purchasing/PurchaseBasket.h"

#include "foundation/DbEngine.h"
#include "foundation/Dialect.h"
#include "foundation/Globals.h"
#include "foundation/Helpers.h"
#include "foundation/MsgBox.h"
#include "foundation/Rights.h"
#include "purchasing/PurchasingCommon.h"

#include <QLocale>

qint32 gBasketSupplierID = 0;
bool gNonStockSupplier = false;

bool BasketTicked(const QVariant& v) {
    if (v.typeId() == QMetaType::Bool)
        return v.toBool();
    const QString t = v.toString().trimmed();
    return t.compare(QLatin1String("True"), Qt::CaseInsensitive) == 0 || Val(t) != 0;
}

QString BasketCellText(const QVariant& v) {
    if (v.typeId() == QMetaType::Double)
        return QLocale().toString(v.toDouble(), 'g', 15);
    return v.toString();
}

SupplierList LoadSupplierList() {
    SupplierList list;
    Database db = DBEngine::OpenDatabase(gDbPath);
    Recordset rs =
        db.OpenRecordset(QStringLiteral("SELECT AddID, CoName, ShortNm FROM tblSupAddresses "
                                        "ORDER BY CoName"));
    if (rs.Eof()) {
        MsgBox(QStringLiteral("There are no supplier records in the database. You won't be able "
                              "to use the purchasing module until you have entered supplier "
                              "details and have also associated inventory items with those "
                              "suppliers"),
               vbExclamation, QStringLiteral("Empty Supplier's List"));
        return list;
    }
    bool anyAdded = false;
    qint32 lastAdded = 0;
    while (!rs.Eof()) {
        const qint32 id = qint32(rs.Fields(QStringLiteral("AddID")).Long());
        // "NON" is the address book's non-stock supplier.
        if (rs.Fields(QStringLiteral("ShortNm")).Text() != QLatin1String("NON") &&
            !(anyAdded && id == lastAdded)) {
            list.ids << id;
            list.names << rs.Fields(QStringLiteral("CoName")).Text();
            lastAdded = id;
            anyAdded = true;
        }
        rs.MoveNext();
    }
    return list;
}

BasketLoad LoadBasket(qint32 supplierId) {
    BasketLoad load;
    Database db = DBEngine::OpenDatabase(gDbPath);
    Recordset rs = db.OpenRecordset(
        QStringLiteral("SELECT ") + QStringLiteral(" MasterPNo,") + QStringLiteral(" ItemName,") +
        QStringLiteral(" ItemDescription,") + QStringLiteral(" ReqQty,") +
        QStringLiteral(" MinORQty,") + QStringLiteral(" DelDate,") +
        QStringLiteral(" tblBaskets.RowID,") + QStringLiteral(" tblStockItems.ItemID,") +
        QStringLiteral(" tblItemSupplier.PriceEach,") + QStringLiteral(" OrderYN,") +
        QStringLiteral(" SupplierPNo") + QStringLiteral(" FROM ((tblBaskets") +
        QStringLiteral(" INNER JOIN tblStockItems ON tblStockItems.ItemID = tblBaskets.StockID)") +
        QStringLiteral(
            " INNER JOIN tblItemSupplier ON tblStockItems.ItemID=tblItemSupplier.ItemID)") +
        QStringLiteral(" WHERE tblItemSupplier.SupplierID=") + QString::number(supplierId) +
        QStringLiteral(" AND tblItemSupplier.ItemID=tblBaskets.StockID") +
        QStringLiteral(" ORDER BY RowID"));
    // The rows are taken in one pass, the array growing with them, rather than counted first.
    const NumberMask qty(kQtyMask);
    const NumberMask price(QStringLiteral("#0.00###"));
    const int fPNo = rs.FieldIndex(QStringLiteral("MasterPNo"));
    const int fName = rs.FieldIndex(QStringLiteral("ItemName"));
    const int fDesc = rs.FieldIndex(QStringLiteral("ItemDescription"));
    const int fReq = rs.FieldIndex(QStringLiteral("ReqQty"));
    const int fMin = rs.FieldIndex(QStringLiteral("MinORQty"));
    const int fDate = rs.FieldIndex(QStringLiteral("DelDate"));
    const int fRow = rs.FieldIndex(QStringLiteral("RowID"));
    const int fItem = rs.FieldIndex(QStringLiteral("ItemID"));
    const int fPrice = rs.FieldIndex(QStringLiteral("PriceEach"));
    const int fTick = rs.FieldIndex(QStringLiteral("OrderYN"));
    const int fSupPNo = rs.FieldIndex(QStringLiteral("SupplierPNo"));
    UBArray& a = load.rows;
    a.Redim(BasketCol::Count, 0);
    for (int r = 1; !rs.Eof(); ++r, rs.MoveNext()) {
        a.SetRows(r);
        load.rowCount = r;
        QString partNo = rs.Fields(fPNo).Text();
        if (partNo.startsWith(QLatin1String("**")))
            partNo = partNo.mid(2);
        a(BasketCol::PartNo, r) = partNo;
        a(BasketCol::Name, r) = rs.Fields(fName).Text();
        a(BasketCol::Description, r) = rs.Fields(fDesc).Text();
        a(BasketCol::ReqQty, r) = qty.Screen(StoredNumber(rs.Fields(fReq)));
        a(BasketCol::MinQty, r) = qty.Screen(StoredNumber(rs.Fields(fMin)));
        a(BasketCol::DelDate, r) = ShowDate(rs.Fields(fDate).Value());
        // Any stored value other than 0 reads as ticked, a Null included.
        const Field tick = rs.Fields(fTick);
        a(BasketCol::Ticked, r) = tick.IsNull() || tick.Double() != 0;
        a(BasketCol::RowID, r) = rs.Fields(fRow).Long();
        a(BasketCol::ItemID, r) = rs.Fields(fItem).Long();
        a(BasketCol::Price, r) = price.Plain(StoredNumber(rs.Fields(fPrice)));
        a(BasketCol::SupPNo, r) = rs.Fields(fSupPNo).Text();
    }
    return load;
}

std::optional<BasketLoad> RefreshCurrentBasket(int selectedIndex,
                                               const QList<qint32>& supplierIDs) {
    if (selectedIndex < 0) {
        MsgBox(QStringLiteral("Can't complete the requested operation. The supplier has been "
                              "deselected"),
               vbOKOnly, QString());
        return std::nullopt;
    }
    gBasketSupplierID = supplierIDs.value(selectedIndex);
    return LoadBasket(gBasketSupplierID);
}

BasketCommit CommitBasketRow(UBArray& rows, int rowCount, int record,
                             const QVector<QVariant>& values) {
    const QVariant rowId = values.value(BasketCol::RowID - 1);
    if (BasketTicked(values.value(BasketCol::Remove - 1))) {
        Database db = DBEngine::OpenDatabase(gDbPath);
        db.Execute(QStringLiteral("DELETE FROM tblBaskets WHERE RowID=") +
                   QString::number(qint64(Val(rowId.toString()))));
        return BasketCommit::Removed;
    }
    if (rowCount < 1 || record < 1 || record > rows.Rows())
        return BasketCommit::NoRows;
    for (int c = 1; c <= BasketCol::Count; ++c)
        rows(c, record) = values.value(c - 1);
    rows(BasketCol::ReqQty, record) = Val(BasketCellText(values.value(BasketCol::ReqQty - 1)));
    rows(BasketCol::Ticked, record) = BasketTicked(values.value(BasketCol::Ticked - 1));

    Database db = DBEngine::OpenDatabase(gDbPath);
    db.Execute(QStringLiteral("UPDATE tblBaskets SET ") + QStringLiteral(" ReqQty = ") +
               SqlNumber(rows(BasketCol::ReqQty, record), kQtyMask) + QStringLiteral(",") +
               QStringLiteral(" Deldate=") +
               SqlDateLiteral(ParseDateText(rows(BasketCol::DelDate, record).toString())) +
               QStringLiteral(",") + QStringLiteral(" OrderYN=") +
               (rows(BasketCol::Ticked, record).toBool() ? SqlTrue() : SqlFalse()) +
               QStringLiteral(" WHERE RowID=") + QString::number(qint64(Val(rowId.toString()))));
    return BasketCommit::Written;
}

QString RecalcOrderValue(const UBArray& rows, int rowCount) {
    double total = 0;
    for (int r = 1; r <= rowCount; ++r) {
        if (BasketTicked(rows(BasketCol::Ticked, r)))
            total += ParseLocaleNumber(rows(BasketCol::ReqQty, r)) *
                     ParseLocaleNumber(rows(BasketCol::Price, r));
    }
    return Format(total, kPriceMask);
}

bool MayShowSupplierParts() {
    if (!CheckRight(Right::Purchasing))
        return false;
    if (gNonStockSupplier) {
        MsgBox(QStringLiteral("You can't order stock Items for NonStock Supplier"), vbExclamation,
               QStringLiteral("Supplier"));
        return false;
    }
    return true;
}

BasketLoad ShowSupplierParts(qint32 supplierId, const QString& filter) {
    BasketLoad load;
    Database db = DBEngine::OpenDatabase(gDbPath);
    Recordset rs = db.OpenRecordset(
        QStringLiteral("SELECT ") + QStringLiteral(" tblStockItems.ItemID,") +
        QStringLiteral(" MasterPNo,") + QStringLiteral(" ItemName,") +
        QStringLiteral(" Category,") + QStringLiteral(" ItemDescription,") +
        QStringLiteral(" PriceEach,") + QStringLiteral(" MinOrQty,") +
        QStringLiteral(" SupplierPNo") + QStringLiteral(" FROM tblItemSupplier") +
        QStringLiteral(
            " INNER JOIN tblStockItems ON tblItemSupplier.ItemID = tblStockItems.ItemID") +
        QStringLiteral(" WHERE SupplierID =") + QString::number(supplierId) +
        QStringLiteral(" AND tblStockItems.MasterPNo ") + LikePrefix(filter) +
        QStringLiteral(" ORDER BY MasterPNo"));
    const NumberMask qty(kQtyMask);
    const NumberMask price(kPriceMask);
    UBArray& a = load.rows;
    a.Redim(PartCol::Count, 0);
    int r = 0;
    while (!rs.Eof()) {
        a.SetRows(++r);
        a(PartCol::ItemID, r) = rs.Fields(0).Long();
        a(PartCol::PartNo, r) = rs.Fields(1).Text();
        a(PartCol::Name, r) = rs.Fields(2).Text();
        a(PartCol::Category, r) = rs.Fields(3).Text();
        a(PartCol::Description, r) = rs.Fields(4).Text();
        a(PartCol::Price, r) = price.Plain(StoredNumber(rs.Fields(5)));
        a(PartCol::MinQty, r) = qty.Screen(StoredNumber(rs.Fields(6)));
        a(PartCol::SupPNo, r) = rs.Fields(7).Text();
        rs.MoveNext();
    }
    load.rowCount = r;
    return load;
}

void AddPartToBasket(qint32 itemId) {
    const QString id = QString::number(itemId);
    Database db = DBEngine::OpenDatabase(gDbPath);
    db.Execute(QStringLiteral("UPDATE tblStockitems SET BuyNow=1 WHERE ItemID=") + id);
    db.Execute(QStringLiteral("INSERT INTO tblBaskets ") +
               QStringLiteral(" ( StockID, ReqQty, OrderYN)") + QStringLiteral(" VALUES ") +
               QStringLiteral(" (") + id + QStringLiteral(",0,1);"));
}

void ShowOrderNumberHelp() {
    MsgBox(QStringLiteral("Quillstock maintains its own unique numerical purchase order ID number "
                          "which is incremented automatically with each new purchase order. If "
                          "you wish you can add your own purchase order reference number or text "
                          "into the box provided which will also appear on your printed purchase "
                          "orders"),
           vbInformation, QString());
}
