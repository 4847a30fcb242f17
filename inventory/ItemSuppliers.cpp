#include "inventory/ItemSuppliers.h"

#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "foundation/Helpers.h"
#include "foundation/MsgBox.h"
#include "foundation/Rights.h"

namespace {
const QString kQtyMask = QStringLiteral("0.0#");
const QString kPriceMask = QStringLiteral("0.00###");
} // namespace

QStringList SupplierColumnKeys() {
    return {QStringLiteral("SupName"),  QStringLiteral("SupPNo"),   QStringLiteral("SupOrQty"),
            QStringLiteral("SupPrice"), QStringLiteral("SupPrime"), QStringLiteral("SupID"),
            QStringLiteral("Code")};
}

QStringList SupplierColumnCaptions() {
    return {QStringLiteral("Vendor"), QStringLiteral("VendorPNo"), QStringLiteral("MinOrQty"),
            QStringLiteral("@Price"), QStringLiteral("Prime"),     QStringLiteral("SupID"),
            QStringLiteral("Code")};
}

ItemSuppliers LoadItemSuppliers(Database& db, qint32 itemId) {
    ItemSuppliers out;
    Recordset rs = db.OpenRecordset(
        QStringLiteral("SELECT  ") + QStringLiteral(" CoName,") + QStringLiteral(" SupplierPNo,") +
        QStringLiteral(" MinOrQty,") + QStringLiteral(" PriceEach,") +
        QStringLiteral(" PrimeSupplier,") + QStringLiteral(" ShortNm,") +
        QStringLiteral(" SupplierID") + QStringLiteral(" FROM tblItemSupplier") +
        QStringLiteral(" LEFT JOIN tblSupAddresses ON "
                       "tblItemSupplier.SupplierID=tblSupAddresses.AddID") +
        QStringLiteral(" WHERE tblItemSupplier.ItemID=") + QString::number(itemId) +
        QStringLiteral(" ORDER BY tblItemSupplier.PrimeSupplier"));
    for (; !rs.Eof(); rs.MoveNext()) {
        ItemSupplierRow row;
        row.SupName = rs.Fields(QStringLiteral("CoName")).Text();
        row.SupPNo = rs.Fields(QStringLiteral("SupplierPNo")).Text();
        row.SupOrQty = FormatNumber(rs.Fields(QStringLiteral("MinOrQty")).Value(), kQtyMask);
        row.SupPrice = FormatNumber(rs.Fields(QStringLiteral("PriceEach")).Value(), kPriceMask);
        row.SupPrime = rs.Fields(QStringLiteral("PrimeSupplier")).Long() == 1;
        row.SupID = qint32(rs.Fields(QStringLiteral("SupplierID")).Long());
        row.Code = rs.Fields(QStringLiteral("ShortNm")).Text();
        if (row.SupPrime)
            out.buyPrice = row.SupPrice;
        out.rows.append(row);
    }
    return out;
}

QList<SupplierChoice> LoadSupplierChoices() {
    QList<SupplierChoice> out;
    Database db = DBEngine::OpenDatabase(gDbPath);
    Recordset rs =
        db.OpenRecordset(QStringLiteral("SELECT AddID, CoName, ShortNm from "
                                        "tblSupAddresses") +
                         QStringLiteral(" WHERE AddID > 0") + QStringLiteral(" ORDER BY CoName"));
    for (; !rs.Eof(); rs.MoveNext())
        out.append({qint32(rs.Fields(QStringLiteral("AddID")).Long()),
                    rs.Fields(QStringLiteral("CoName")).Text(),
                    rs.Fields(QStringLiteral("ShortNm")).Text()});
    return out;
}

bool CanAddSupplier(const QVector<ItemSupplierRow>& rows, qint32 addId) {
    for (const ItemSupplierRow& r : rows)
        if (r.SupID == addId)
            return false;
    return true;
}

bool AddSupplierRow(QVector<ItemSupplierRow>& rows, qint32 addId) {
    if (!CheckRight(Right::Inventory))
        return false;
    Database db = DBEngine::OpenDatabase(gDbPath);
    Recordset rs = db.OpenRecordset(QStringLiteral("SELECT * FROM tblSupAddresses") +
                                    QStringLiteral(" WHERE AddID = ") + QString::number(addId));
    if (rs.Eof())
        return false;
    // The placeholder of an item without a real supplier is taken over, not kept beside it.
    if (!(rows.size() == 1 && rows.first().SupID == 0))
        rows.append(ItemSupplierRow());
    ItemSupplierRow& row = rows.last();
    row = ItemSupplierRow();
    row.SupName = rs.Fields(QStringLiteral("CoName")).Text();
    row.SupID = qint32(rs.Fields(QStringLiteral("AddID")).Long());
    row.Code = rs.Fields(QStringLiteral("ShortNm")).Text();
    return true;
}

bool CanRemoveSupplier(const QVector<ItemSupplierRow>& rows) {
    return rows.size() >= 2;
}

bool MayRemoveSupplier() {
    return CheckRight(Right::Inventory);
}

void RemoveSupplierRow(QVector<ItemSupplierRow>& rows, int index) {
    if (index >= 0 && index < rows.size())
        rows.remove(index);
}

QString SupplierRemovedNotice() {
    return QStringLiteral(
        "Changes you make are only saved to the database when you click the main 'save' button");
}

QString SupplierAddressText(qint32 supId) {
    Database db = DBEngine::OpenDatabase(gDbPath);
    Recordset rs = db.OpenRecordset(QStringLiteral(" SELECT * FROM tblSupAddresses ") +
                                    QStringLiteral(" WHERE AddID=") + QString::number(supId));
    if (rs.Eof())
        return QString();
    auto f = [&rs](const char* name) { return rs.Fields(QString::fromLatin1(name)).Text(); };
    const QStringList lines = {f("CoName"),
                               f("Add1"),
                               f("Add2"),
                               f("Add3"),
                               f("Add4"),
                               f("PCode"),
                               f("Contact1"),
                               QStringLiteral("Tel: ") + f("Tel1"),
                               QStringLiteral("Fax: ") + f("Fax1"),
                               f("EMail")};
    return lines.join(QLatin1Char('\n'));
}

int ApplyPrimeRule(QVector<ItemSupplierRow>& rows) {
    int prime = -1;
    for (int i = 0; i < rows.size(); ++i) {
        if (!rows[i].SupPrime)
            continue;
        if (prime < 0)
            prime = i;
        else
            rows[i].SupPrime = false;
    }
    if (prime < 0 && !rows.isEmpty()) {
        prime = 0;
        rows[0].SupPrime = true;
    }
    return prime;
}
