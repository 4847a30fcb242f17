#include "purchasing/ItemPOrders.h"

#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "foundation/Helpers.h"
#include "purchasing/PurchasingCommon.h"

const QList<ItemPOColumn>& ItemPOColumns() {
    static const QList<ItemPOColumn> columns = {
        {QStringLiteral("OrID"), QStringLiteral("OrderID"), 900, false},
        {QStringLiteral("OrDate"), QStringLiteral("OrderDate"), 1200, false},
        {QStringLiteral("Sup"), QStringLiteral("Supplier"), 2400, false},
        {QStringLiteral("POQty"), QStringLiteral("Ordered"), 900, true},
        {QStringLiteral("DelQty"), QStringLiteral("Rec'vd"), 900, true},
        {QStringLiteral("DelDate"), QStringLiteral("DelDate"), 1200, false},
        {QStringLiteral("AtPrice"), QStringLiteral("$Each"), 1000, true},
        {QStringLiteral("Confirmed"), QStringLiteral("Confirmed"), 1000, false},
        {QStringLiteral("Comments"), QStringLiteral("Comments"), 3000, false},
    };
    return columns;
}

QString ItemPOrdersStatement(qint32 itemId) {
    // Left joins: a row whose order header or supplier has gone still lists.
    return QStringLiteral("SELECT tblPODetail.POID, PODate, CoName, POQty, PORecieved, "
                          "POSchedDate, POPrice, RowConfirmed, RowComments FROM (tblPODetail") +
           QStringLiteral(" LEFT JOIN tblPOrders ON tblPODetail.POID=tblPOrders.POID)") +
           QStringLiteral(
               " LEFT JOIN tblSupAddresses ON tblPOrders.POSupID=tblSupAddresses.AddID") +
           QStringLiteral(" WHERE tblPODetail.POStockID=") + QString::number(itemId) +
           QStringLiteral(" ORDER BY PODate DESC, tblPODetail.POID DESC, tblPODetail.RowID");
}

ItemPOrders LoadItemPOrders(qint32 itemId) {
    ItemPOrders load;
    load.rows.Redim(ItemPOCol::Count, 0);
    Database db = DBEngine::OpenDatabase(gDbPath);
    Recordset rs = db.OpenRecordset(ItemPOrdersStatement(itemId));
    const NumberMask id(QStringLiteral("0000"));
    const NumberMask qty(kQtyMask);
    const NumberMask price(kPriceMask);
    UBArray& a = load.rows;
    int r = 0;
    for (; !rs.Eof(); rs.MoveNext()) {
        a.SetRows(++r);
        a(ItemPOCol::OrID, r) = id.Plain(double(rs.Fields(0).Long()));
        a(ItemPOCol::OrDate, r) = ShowDate(rs.Fields(1).Value());
        a(ItemPOCol::Sup, r) = rs.Fields(2).Text();
        a(ItemPOCol::POQty, r) = qty.Screen(ParseLocaleNumber(rs.Fields(3).Value()));
        a(ItemPOCol::DelQty, r) = qty.Screen(ParseLocaleNumber(rs.Fields(4).Value()));
        a(ItemPOCol::DelDate, r) = ShowDate(rs.Fields(5).Value());
        a(ItemPOCol::AtPrice, r) = price.Plain(ParseLocaleNumber(rs.Fields(6).Value()));
        a(ItemPOCol::Confirmed, r) =
            rs.Fields(7).Double() != 0 ? QStringLiteral("Yes") : QStringLiteral("No");
        a(ItemPOCol::Comments, r) = rs.Fields(8).Text();
    }
    load.rowCount = r;
    return load;
}
