#include "inventory/ItemDetail.h"

#include "foundation/DbEngine.h"
#include "foundation/Dialect.h"
#include "foundation/Globals.h"
#include "foundation/Helpers.h"
#include "foundation/MsgBox.h"
#include "foundation/Rights.h"
#include "inventory/InventoryList.h"

namespace {
const QString kQtyMask = QStringLiteral("0.0#");
const QString kPriceMask = QStringLiteral("0.00###");

QString id(qint32 itemId) {
    return QString::number(itemId);
}
} // namespace

std::optional<ItemDetailData> LoadItemDetail(qint32 itemId) {
    Database db = DBEngine::OpenDatabase(gDbPath);
    Recordset rs = db.OpenRecordset(QStringLiteral("SELECT * from tblStockItems") +
                                    QStringLiteral(" WHERE tblStockItems.ItemID=") + id(itemId));
    if (rs.Eof())
        return std::nullopt;

    ItemDetailData d;
    d.itemId = itemId;
    ItemDetailFields& f = d.fields;
    auto text = [&rs](const char* name) { return rs.Fields(QString::fromLatin1(name)).Text(); };
    f.pno = text("MasterPNo");
    f.detail = text("ItemName");
    f.description = text("ItemDescription");
    f.category = text("Category");
    f.location = text("Location");
    if (f.location.isEmpty())
        f.location = QStringLiteral("Unknown");
    f.qty = FormatNumber(rs.Fields(QStringLiteral("Qty")).Value(), kQtyMask);
    f.minQty = FormatNumber(rs.Fields(QStringLiteral("Trigger")).Value(), kQtyMask);
    if (ParseLocaleNumber(f.minQty) < 0)
        f.minQty.clear();
    f.sellPrice = FormatNumber(rs.Fields(QStringLiteral("SellAt")).Value(), kPriceMask);
    f.allowDiscount = rs.Fields(QStringLiteral("AllowDiscount")).Long() != 0;
    // The assembly box follows the category, not the stored flag.
    f.isAssy = f.category == QLatin1String("AS");
    d.catNo = f.category;
    rs.Close();

    ItemSuppliers sup = LoadItemSuppliers(db, itemId);
    d.suppliers = sup.rows;
    f.buyPrice = sup.buyPrice;

    Recordset com = db.OpenRecordset(
        QStringLiteral("SELECT * FROM tblItemComments WHERE StockID=") + id(itemId));
    for (; !com.Eof(); com.MoveNext())
        f.comments = com.Fields(QStringLiteral("Comment")).Text();
    return d;
}

QStringList LoadCategoryList() {
    const QString as = QStringLiteral("AS");
    QStringList out{as};
    Database db = DBEngine::OpenDatabase(gDbPath);
    Recordset rs = db.OpenRecordset(
        QStringLiteral("SELECT DISTINCT Category FROM tblStockItems ORDER BY Category"));
    for (; !rs.Eof(); rs.MoveNext()) {
        const QString c = rs.Fields(0).Text();
        if (!c.isEmpty() && c.compare(as, Qt::CaseInsensitive) != 0)
            out << c;
    }
    return out;
}

QString ItemDetailHelpTip() {
    return QStringLiteral("View/Edit an item's details. Click the [Save] button at the bottom to "
                          "save any changes\n\n<< Click the [List] tab on the left to return to "
                          "the inventory list");
}

// ---------------------------------------------------------------- new item

qint32 CreateNewItem(ItemDetailFields& f) {
    if (!CheckRight(Right::Inventory))
        return 0;
    const QString pno = ApostropheOut(f.pno.trimmed());
    if (pno.isEmpty() || f.description.trimmed().isEmpty()) {
        MsgBox(QStringLiteral("The new record can not be created unless you enter at least a "
                              "PartNumber and Description text"));
        return 0;
    }
    if (f.category.trimmed().isEmpty())
        f.category = QStringLiteral("NEW");
    if (f.location.trimmed().isEmpty())
        f.location = QStringLiteral("UNKNOWN");
    if (f.qty.trimmed().isEmpty())
        f.qty = QStringLiteral("0");
    if (f.sellPrice.trimmed().isEmpty())
        f.sellPrice = QStringLiteral("0");
    f.sellPrice = FormatNumber(f.sellPrice, kPriceMask);

    try {
        Database db = DBEngine::OpenDatabase(gDbPath);
        {
            Recordset dup = db.OpenRecordset(
                QStringLiteral("SELECT * FROM tblStockItems WHERE MasterPNo=?"), {pno});
            if (!dup.Eof()) {
                MsgBox(QStringLiteral("An item already exists with part number: ") + pno,
                       vbInformation);
                return 0;
            }
        }
        qint32 newId = 1;
        {
            Recordset top = db.OpenRecordset(
                QStringLiteral("SELECT ItemID  FROM tblStockItems ORDER by ItemID DESC") +
                FirstRowOnly());
            if (!top.Eof())
                newId = qint32(top.Fields(0).Long()) + 1;
        }
        // The price text is read with the decimal point whatever the locale wrote.
        const QString sell = SqlNumber(ParseLocaleNumber(f.sellPrice), kPriceMask);
        db.Execute(QStringLiteral("INSERT INTO tblStockItems ") +
                       QStringLiteral("(ItemID, MasterPNo, ItemName, ItemDescription, Category, "
                                      "Location, Qty, Trigger, SellAt, AllocQty, OnOrderQty, "
                                      "BuyNow) VALUES ") +
                       QStringLiteral("(") + id(newId) + QStringLiteral(",?,?,?,?,?,") +
                       SqlNumber(f.qty, kQtyMask) + QStringLiteral(",") +
                       SqlNumber(f.minQty, kQtyMask) + QStringLiteral(",") + sell +
                       QStringLiteral(",0,0,0);"),
                   {pno, ApostropheOut(f.detail), ApostropheOut(f.description),
                    ApostropheOut(f.category), ApostropheOut(f.location)});
        db.Execute(QStringLiteral("INSERT INTO tblItemSupplier ") +
                   QStringLiteral("(ItemID,SupplierID, SupplierPNo, PrimeSupplier) VALUES ") +
                   QStringLiteral("(") + id(newId) + QStringLiteral(", 0,'', 0);"));
        gCurrentItemID = newId;
        return newId;
    } catch (const DbError&) {
        MsgBox(QStringLiteral("The new record could not be created. There may be an error in the "
                              "database or the required records may be locked by another process "
                              "or user. You can try again if you wish"));
        return 0;
    }
}

// ---------------------------------------------------------------- save

QList<QPair<QString, QString>> ItemListRow::ByKey() const {
    return {{QStringLiteral("Qty"), Qty},           {QStringLiteral("Loc"), Loc},
            {QStringLiteral("Desc"), Desc},         {QStringLiteral("PNo"), PNo},
            {QStringLiteral("Detail"), Detail},     {QStringLiteral("Cat"), Cat},
            {QStringLiteral("Comments"), Comments}, {QStringLiteral("Vendor"), Vendor},
            {QStringLiteral("VendorPN"), VendorPN}, {QStringLiteral("Buy"), Buy},
            {QStringLiteral("Sell"), Sell},         {QStringLiteral("MOQ"), MOQ}};
}

QString SaveFailureTitle(SaveFailure step) {
    switch (step) {
    case SaveFailure::Error2:
        return QStringLiteral("Error2");
    case SaveFailure::Error3:
        return QStringLiteral("Error3");
    case SaveFailure::Error4:
        return QStringLiteral("Error4");
    case SaveFailure::Error9:
        return QStringLiteral("Error9");
    case SaveFailure::Error10:
        return QStringLiteral("Error10");
    case SaveFailure::None:
        break;
    }
    return QString();
}

QString SaveFailureMessage(SaveFailure step) {
    const QString notCommitted =
        QStringLiteral(". The whole transaction was not commited, you can try again");
    switch (step) {
    case SaveFailure::Error2:
        return QStringLiteral("Error saving to table: Assemblies") + notCommitted;
    case SaveFailure::Error3:
        return QStringLiteral("Error saving to table: ItemComments") + notCommitted;
    case SaveFailure::Error4:
        return QStringLiteral("Error saving to table: ItemSupplier") + notCommitted;
    case SaveFailure::Error9:
        return QStringLiteral("An error occured while commiting changes to the database. The "
                              "system will try to undo the operation so you can try again");
    case SaveFailure::Error10:
        return QStringLiteral("The base stock record was not saved. If you have altered the "
                              "PartNumber then the part number may already exist") +
               notCommitted;
    case SaveFailure::None:
        break;
    }
    return QString();
}

namespace {

// Raised inside the save to leave for a failure step.
struct SaveFailed {
    SaveFailure step;
};

ItemListRow listRowAfterSave(const ItemDetailFields& f, const QString& location,
                             const ItemSupplierRow* prime, const QString& noSupplierPrice) {
    ItemListRow r;
    r.Qty = FormatNumber(f.qty, kQtyMask);
    r.Loc = location;
    r.Desc = ApostropheOut(f.description);
    r.PNo = ApostropheOut(f.pno.trimmed());
    r.Detail = ApostropheOut(f.detail);
    r.Cat = ApostropheOut(f.category.trimmed());
    r.Comments = UBCommentField(ApostropheOut(f.comments));
    r.Sell = FormatNumber(f.sellPrice, kPriceMask);
    if (prime) {
        r.Vendor = prime->Code;
        r.VendorPN = prime->SupPNo;
        r.Buy = FormatNumber(prime->SupPrice, kPriceMask);
        r.MOQ = FormatNumber(prime->SupOrQty, kQtyMask);
    } else {
        r.Buy = FormatNumber(noSupplierPrice, kPriceMask);
        r.MOQ = FormatNumber(0.0, kQtyMask);
    }
    return r;
}

} // namespace

ItemSaveResult SaveItemDetail(const ItemSaveInput& in, const std::function<void(int)>& progress) {
    auto bar = [&progress](int v) {
        if (progress)
            progress(v);
    };
    ItemSaveResult result;
    result.suppliers = in.suppliers;
    const ItemDetailFields& f = in.fields;
    const QString pno = ApostropheOut(f.pno.trimmed());
    const QString cat = ApostropheOut(f.category.trimmed());
    if (pno.isEmpty()) {
        MsgBox(QStringLiteral("MasterPartNumber is missing. can't save"));
        return result;
    }
    if (cat.isEmpty()) {
        MsgBox(QStringLiteral("Category is missing. can't save"));
        return result;
    }
    const QString assy = f.isAssy ? QStringLiteral("-1") : QStringLiteral("0");
    // The box is read trimmed; the statement stores the location with one trailing blank.
    const QString location = ApostropheOut(f.location.trimmed());
    const QString itemId = id(in.itemId);

    bar(1);
    Database db = DBEngine::OpenDatabase(gDbPath);
    db.BeginTrans();
    SaveFailure trap = SaveFailure::Error2;
    try {
        db.Execute(QStringLiteral("UPDATE tblStockItems") + QStringLiteral(" SET ") +
                       QStringLiteral(" MasterPNo =?,") + QStringLiteral(" ItemName = ?,") +
                       QStringLiteral(" ItemDescription=?,") + QStringLiteral(" Category=?,") +
                       QStringLiteral(" Assy=") + assy + QStringLiteral(",") +
                       QStringLiteral(" Location=?,") + QStringLiteral(" Trigger=") +
                       SqlNumber(f.minQty, kQtyMask) + QStringLiteral(",") +
                       QStringLiteral(" SellAt=") + SqlNumber(f.sellPrice, kPriceMask) +
                       QStringLiteral(",") + QStringLiteral(" AllowDiscount=") +
                       (f.allowDiscount ? QStringLiteral("1") : QStringLiteral("0")) +
                       QStringLiteral(",") + QStringLiteral(" Qty=") + SqlNumber(f.qty, kQtyMask) +
                       QStringLiteral(" WHERE ItemID=") + itemId,
                   {pno, ApostropheOut(f.detail), ApostropheOut(f.description), cat,
                    location + QStringLiteral(" ")});
        if (db.RecordsAffected() == 0)
            throw SaveFailed{SaveFailure::Error10};

        bar(4);
        trap = SaveFailure::Error3;
        // The comment step runs without a trap of its own: an engine error here is not caught.
        trap = SaveFailure::None;
        const QString comment = ApostropheOut(f.comments);
        if (comment.trimmed().isEmpty()) {
            db.Execute(QStringLiteral("DELETE FROM tblItemComments ") +
                       QStringLiteral(" WHERE StockID=") + itemId);
        } else {
            db.Execute(QStringLiteral("UPDATE tblItemComments ") +
                           QStringLiteral(" SET Comment=?") + QStringLiteral(" WHERE StockID=") +
                           itemId,
                       {comment});
            if (db.RecordsAffected() == 0)
                db.Execute(QStringLiteral("INSERT INTO tblItemComments ") +
                               QStringLiteral("(StockID, Comment)") + QStringLiteral(" VALUES ") +
                               QStringLiteral("(") + itemId + QStringLiteral(",?);"),
                           {comment});
        }

        bar(6);
        trap = SaveFailure::Error4;
        const int prime = ApplyPrimeRule(result.suppliers);
        db.Execute(QStringLiteral("DELETE FROM tblItemSupplier") +
                   QStringLiteral(" WHERE ItemID=") + itemId);
        const QString columns = QStringLiteral("INSERT INTO tblItemSupplier ") +
                                QStringLiteral("(ItemID,SupplierID,SupplierPNo,MinOrQty,PriceEach,"
                                               "PrimeSupplier)") +
                                QStringLiteral(" VALUES ");
        if (result.suppliers.isEmpty()) {
            db.Execute(columns + QStringLiteral("(") + itemId + QStringLiteral(",0") +
                       QStringLiteral(",''") + QStringLiteral(",0") + QStringLiteral(",") +
                       SqlNumber(f.buyPrice, kPriceMask) + QStringLiteral(",1 );"));
        } else {
            for (int i = 0; i < result.suppliers.size(); ++i) {
                const ItemSupplierRow& r = result.suppliers.at(i);
                db.Execute(columns + QStringLiteral("(") + itemId + QStringLiteral(",") +
                               QString::number(r.SupID) + QStringLiteral(",?,") +
                               SqlNumber(r.SupOrQty, kQtyMask) + QStringLiteral(",") +
                               SqlNumber(r.SupPrice, kPriceMask) + QStringLiteral(",") +
                               (i == prime ? QStringLiteral("1") : QStringLiteral("0")) +
                               QStringLiteral(");"),
                           {ApostropheOut(r.SupPNo)});
            }
        }

        bar(9);
        trap = SaveFailure::Error9;
        db.CommitTrans();
        trap = SaveFailure::None;
        result.saved = true;
        result.listRow = listRowAfterSave(
            f, location, prime >= 0 ? &result.suppliers.at(prime) : nullptr, f.buyPrice);
        return result;
    } catch (const SaveFailed& failed) {
        result.failure = failed.step;
    } catch (const DbError&) {
        if (trap == SaveFailure::None)
            throw;
        result.failure = trap;
    }
    MsgBox(SaveFailureMessage(result.failure), vbOKOnly, SaveFailureTitle(result.failure));
    db.Rollback();
    result.suppliers = in.suppliers;
    return result;
}

// ---------------------------------------------------------------- delete

bool DeleteCurrentItem(qint32 itemId) {
    const QString title = QStringLiteral("Delete Item");
    if (MsgBox(QStringLiteral("Are you sure that you want to DELETE the current part COMPLETELY?"),
               vbYesNo, title) != vbYes)
        return false;
    Database db = DBEngine::OpenDatabase(gDbPath);
    const QString itemIdText = id(itemId);
    {
        Recordset po =
            db.OpenRecordset(QStringLiteral("SELECT POStockID FROM tblPODetail") +
                             QStringLiteral(" WHERE POStockID =") + itemIdText + FirstRowOnly());
        if (!po.Eof()) {
            MsgBox(QStringLiteral("The item is in Purchase order or purchasing history so can not "
                                  "be deleted at the moment."),
                   vbOKOnly, QStringLiteral("Can't delete"));
            return false;
        }
    }
    {
        Recordset used =
            db.OpenRecordset(QStringLiteral("SELECT ParentID, ChildID FROM tblUsedIn") +
                             QStringLiteral(" WHERE ParentID =") + itemIdText +
                             QStringLiteral(" OR ChildID=") + itemIdText);
        if (!used.Eof()) {
            used.Close();
            if (MsgBox(QStringLiteral("The Item relates to one or more PartsLists. If you continue "
                                      "then the item will be removed from any Parts Lists. If it "
                                      "is a top level assembly then the whole parts list will be "
                                      "deleted. Do you wish to continue and delete the item?"),
                       vbYesNo, title) != vbYes)
                return false;
        }
    }
    try {
        db.BeginTrans();
        db.Execute(QStringLiteral("DELETE FROM tblUsedIn") + QStringLiteral(" WHERE ParentID =") +
                   itemIdText + QStringLiteral(" OR ChildID=") + itemIdText);
        db.Execute(QStringLiteral("DELETE FROM tblItemComments") +
                   QStringLiteral(" WHERE StockID =") + itemIdText);
        db.Execute(QStringLiteral("DELETE FROM tblItemHistory") +
                   QStringLiteral(" WHERE StockID =") + itemIdText);
        db.Execute(QStringLiteral("DELETE FROM tblItemSupplier") +
                   QStringLiteral(" WHERE ItemID =") + itemIdText);
        db.Execute(QStringLiteral("DELETE FROM tblStockItems") + QStringLiteral(" WHERE ItemID =") +
                   itemIdText);
        db.CommitTrans();
        return true;
    } catch (const DbError&) {
        db.Rollback();
        MsgBox(QStringLiteral("Some data could not be deleted so nothing was done. It may be that "
                              "one of the records is faulty or locked by another process or user. "
                              "You can try again if you wish"));
        return false;
    }
}
