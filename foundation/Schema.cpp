#include "foundation/Schema.h"

#include "foundation/DbEngine.h"

#include <QDir>
#include <QFileInfo>

// Column types of the engine:
//   Long -> INTEGER, Double -> REAL, Text -> TEXT COLLATE NOCASE, DateTime -> TEXT (ISO dates),
//   Counter -> INTEGER PRIMARY KEY AUTOINCREMENT; keys the program assigns -> INTEGER PRIMARY KEY.
// Flags are numbers and default to 0, so a row that never sets one reads 0.

QString CurrentDbVersion() {
    return QStringLiteral("32A");
}
QString RightsPassword() {
    return QStringLiteral("rivulet582");
}

namespace {
const char* kAddressColumns =
    "AddID INTEGER PRIMARY KEY AUTOINCREMENT, CoName TEXT COLLATE NOCASE, "
    "Add1 TEXT COLLATE NOCASE, Add2 TEXT COLLATE NOCASE, Add3 TEXT COLLATE NOCASE, "
    "Add4 TEXT COLLATE NOCASE, PCode TEXT COLLATE NOCASE, Contact1 TEXT COLLATE NOCASE, "
    "Tel1 TEXT COLLATE NOCASE, Fax1 TEXT COLLATE NOCASE, EMail TEXT COLLATE NOCASE, "
    "ShortNm TEXT COLLATE NOCASE";
}

QStringList BusinessSchema() {
    const QString addr = QString::fromLatin1(kAddressColumns);
    return {
        // Inventory
        QStringLiteral(
            "CREATE TABLE tblStockItems (ItemID INTEGER PRIMARY KEY, MasterPNo TEXT COLLATE "
            "NOCASE, "
            "ItemName TEXT COLLATE NOCASE, ItemDescription TEXT COLLATE NOCASE, "
            "Category TEXT COLLATE NOCASE, Assy INTEGER DEFAULT 0, Location TEXT COLLATE NOCASE, "
            "Qty REAL, Trigger REAL, SellAt REAL, AllowDiscount INTEGER DEFAULT 0, AllocQty REAL, "
            "OnOrderQty REAL, BuyNow INTEGER DEFAULT 0, UOM1 TEXT(25) COLLATE NOCASE, "
            "UOM2 TEXT(25) COLLATE NOCASE, UOM3 TEXT(25) COLLATE NOCASE)"),
        QStringLiteral("CREATE TABLE tblItemSupplier (ItemID INTEGER, SupplierID INTEGER, "
                       "SupplierPNo TEXT COLLATE NOCASE, MinOrQty REAL, PriceEach REAL, "
                       "PrimeSupplier INTEGER DEFAULT 0)"),
        QStringLiteral(
            "CREATE TABLE tblItemComments (StockID INTEGER, Comment TEXT COLLATE NOCASE)"),
        QStringLiteral("CREATE TABLE tblItemHistory (StockID INTEGER, HistDate TEXT, "
                       "HistType TEXT COLLATE NOCASE, HistID INTEGER, HistID2 REAL, "
                       "HistRef TEXT COLLATE NOCASE, HistTRN TEXT COLLATE NOCASE, HistQty REAL, "
                       "HistText TEXT COLLATE NOCASE)"),
        QStringLiteral("CREATE TABLE tblHyperLinks (LinkStockID INTEGER, "
                       "LinkAddress TEXT COLLATE NOCASE, LinkName TEXT COLLATE NOCASE)"),
        QStringLiteral("CREATE TABLE tblUsedIn (ParentID INTEGER, ChildID INTEGER, QtyPer REAL, "
                       "BoardPos TEXT COLLATE NOCASE)"),
        QStringLiteral("CREATE TABLE tblAllocDetail (AllocType TEXT COLLATE NOCASE, "
                       "AllocID INTEGER, StockID INTEGER, AllocQty REAL)"),
        QStringLiteral("CREATE TABLE tblWorksOrders (WOID INTEGER PRIMARY KEY AUTOINCREMENT, "
                       "WOQty REAL)"),
        // Purchasing
        QStringLiteral("CREATE TABLE tblBaskets (RowID INTEGER PRIMARY KEY AUTOINCREMENT, "
                       "StockID INTEGER, ReqQty REAL, DelDate TEXT, OrderYN INTEGER DEFAULT 0, "
                       "FromID INTEGER DEFAULT 0)"),
        // PONumberID is named only by the order list's confirm statement; it is kept so that
        // statement runs (and matches nothing) instead of failing.
        QStringLiteral("CREATE TABLE tblPOrders (POID INTEGER PRIMARY KEY, "
                       "PONumber TEXT COLLATE NOCASE, PODate TEXT, POSupID INTEGER, "
                       "POLocID INTEGER DEFAULT 0, POComplete INTEGER DEFAULT 0, "
                       "POConfirmed INTEGER DEFAULT 0, PONumberID INTEGER)"),
        QStringLiteral("CREATE TABLE tblPODetail (RowID INTEGER PRIMARY KEY AUTOINCREMENT, "
                       "POID INTEGER, POStockID INTEGER, POSupPNo TEXT COLLATE NOCASE, "
                       "POQty REAL, POPrice REAL, POSchedDate TEXT, PORecieved REAL, "
                       "RowConfirmed INTEGER DEFAULT 0, RowComments TEXT COLLATE NOCASE, "
                       "GRN_PONo TEXT COLLATE NOCASE)"),
        // Sales
        QStringLiteral("CREATE TABLE tblCustOrders (CustBasketID INTEGER PRIMARY KEY, "
                       "CustID INTEGER, SalesRef TEXT COLLATE NOCASE, "
                       "CustOrRef TEXT COLLATE NOCASE, CustOrDate TEXT, ORDiscount REAL, "
                       "ORDone INTEGER DEFAULT 0)"),
        QStringLiteral("CREATE TABLE tblCustOrderDetail (RowID INTEGER PRIMARY KEY AUTOINCREMENT, "
                       "CustBasketDetailID INTEGER, StockID INTEGER, OrderedQty REAL, "
                       "ShippedQty REAL, GrosPrice REAL, NetPrice REAL)"),
        QStringLiteral("CREATE TABLE tblDespatch (DespID INTEGER PRIMARY KEY AUTOINCREMENT, "
                       "CustOrderID INTEGER, DespSeqNo INTEGER, DespNoteText TEXT COLLATE NOCASE, "
                       "DespFreeText TEXT COLLATE NOCASE, DespDate TEXT, Invoiced TEXT, "
                       "TotalTax REAL, Delivery REAL, InvoiceNo INTEGER, TaxRate REAL)"),
        QStringLiteral("CREATE TABLE tblDespDetail (DespID INTEGER, DespQty REAL, "
                       "DespStockID INTEGER, OrderDetailRowID INTEGER, SellAtPrice REAL)"),
        // Addresses
        QStringLiteral("CREATE TABLE tblSupAddresses (") + addr + QStringLiteral(")"),
        QStringLiteral("CREATE TABLE tblCusAddresses (") + addr +
            QStringLiteral(", Discount REAL)"),
        QStringLiteral("CREATE TABLE tblLocAddresses (") + addr + QStringLiteral(")"),
        QStringLiteral("CREATE TABLE tblMisAddresses (") + addr + QStringLiteral(")"),
        // Business and configuration
        QStringLiteral("CREATE TABLE tblHome (CoName TEXT COLLATE NOCASE, "
                       "Add1 TEXT COLLATE NOCASE, Add2 TEXT COLLATE NOCASE, "
                       "Add3 TEXT COLLATE NOCASE, Add4 TEXT COLLATE NOCASE, "
                       "Add5 TEXT COLLATE NOCASE, Add6 TEXT COLLATE NOCASE, "
                       "Tel1 TEXT COLLATE NOCASE, Fax1 TEXT COLLATE NOCASE)"),
        QStringLiteral("CREATE TABLE tblParameters (ParaName TEXT COLLATE NOCASE, "
                       "f1 TEXT COLLATE NOCASE, f2 TEXT COLLATE NOCASE, f3 TEXT COLLATE NOCASE, "
                       "f4 TEXT COLLATE NOCASE, f5 TEXT COLLATE NOCASE, f6 TEXT COLLATE NOCASE, "
                       "f7 TEXT COLLATE NOCASE, f8 TEXT COLLATE NOCASE, f9 TEXT COLLATE NOCASE, "
                       "f10 TEXT COLLATE NOCASE)"),
        QStringLiteral("CREATE TABLE dbStatus (DB_Ver TEXT COLLATE NOCASE)"),
        QStringLiteral("CREATE TABLE History (StockID INTEGER, HistDate TEXT, "
                       "HistType TEXT COLLATE NOCASE, HistQty REAL)"),
    };
}

QStringList BusinessIndexes() {
    return {
        QStringLiteral("CREATE INDEX IF NOT EXISTS ixStockMasterPNo ON tblStockItems (MasterPNo)"),
        QStringLiteral("CREATE INDEX IF NOT EXISTS ixStockCategory ON tblStockItems (Category)"),
        QStringLiteral("CREATE INDEX IF NOT EXISTS ixItemSupItem ON tblItemSupplier (ItemID)"),
        QStringLiteral(
            "CREATE INDEX IF NOT EXISTS ixItemSupSupplier ON tblItemSupplier (SupplierID)"),
        // One item's row of one supplier (the no-supplier row above all, which every item may
        // have): without it the engine may look such a row up by SupplierID alone.
        QStringLiteral("CREATE INDEX IF NOT EXISTS ixItemSupItemSupplier ON tblItemSupplier "
                       "(ItemID, SupplierID)"),
        QStringLiteral("CREATE INDEX IF NOT EXISTS ixCommentStock ON tblItemComments (StockID)"),
        QStringLiteral("CREATE INDEX IF NOT EXISTS ixHistStock ON tblItemHistory (StockID)"),
        QStringLiteral("CREATE INDEX IF NOT EXISTS ixHistID2 ON tblItemHistory (HistID2)"),
        // The stock reports: an item's history in a period, an item's supplier prices in flag
        // order, and the items by category and part number.
        QStringLiteral(
            "CREATE INDEX IF NOT EXISTS ixHistStockDate ON tblItemHistory (StockID, HistDate)"),
        QStringLiteral("CREATE INDEX IF NOT EXISTS ixItemSupItemPrice "
                       "ON tblItemSupplier (ItemID, PrimeSupplier, PriceEach)"),
        QStringLiteral(
            "CREATE INDEX IF NOT EXISTS ixStockCatPNo ON tblStockItems (Category, MasterPNo)"),
        QStringLiteral("CREATE INDEX IF NOT EXISTS ixLinksStock ON tblHyperLinks (LinkStockID)"),
        QStringLiteral("CREATE INDEX IF NOT EXISTS ixUsedInParent ON tblUsedIn (ParentID)"),
        QStringLiteral("CREATE INDEX IF NOT EXISTS ixUsedInChild ON tblUsedIn (ChildID)"),
        QStringLiteral("CREATE INDEX IF NOT EXISTS ixAllocStock ON tblAllocDetail (StockID)"),
        QStringLiteral("CREATE INDEX IF NOT EXISTS ixBasketStock ON tblBaskets (StockID)"),
        QStringLiteral("CREATE INDEX IF NOT EXISTS ixPOrdersSup ON tblPOrders (POSupID)"),
        QStringLiteral("CREATE INDEX IF NOT EXISTS ixPODetailPOID ON tblPODetail (POID)"),
        QStringLiteral("CREATE INDEX IF NOT EXISTS ixPODetailStock ON tblPODetail (POStockID)"),
        QStringLiteral("CREATE INDEX IF NOT EXISTS ixCustOrdersCust ON tblCustOrders (CustID)"),
        QStringLiteral("CREATE INDEX IF NOT EXISTS ixCustDetailOrder "
                       "ON tblCustOrderDetail (CustBasketDetailID)"),
        QStringLiteral(
            "CREATE INDEX IF NOT EXISTS ixCustDetailStock ON tblCustOrderDetail (StockID)"),
        QStringLiteral("CREATE INDEX IF NOT EXISTS ixDespOrder ON tblDespatch (CustOrderID)"),
        QStringLiteral("CREATE INDEX IF NOT EXISTS ixDespInvoice ON tblDespatch (InvoiceNo)"),
        QStringLiteral("CREATE INDEX IF NOT EXISTS ixDespDetailDesp ON tblDespDetail (DespID)"),
        QStringLiteral("CREATE INDEX IF NOT EXISTS ixDespDetailRow "
                       "ON tblDespDetail (OrderDetailRowID)"),
        QStringLiteral(
            "CREATE INDEX IF NOT EXISTS ixDespDetailStock ON tblDespDetail (DespStockID)"),
        QStringLiteral("CREATE INDEX IF NOT EXISTS ixParameters ON tblParameters (ParaName)"),
    };
}

QStringList UserCfgSchema() {
    return {
        QStringLiteral("CREATE TABLE tblDefaults (PcName TEXT COLLATE NOCASE, "
                       "AppName TEXT COLLATE NOCASE, ParaName TEXT COLLATE NOCASE, "
                       "ParaVal_1 TEXT(250) COLLATE NOCASE, ParaVal_2 TEXT(250) COLLATE NOCASE)"),
        QStringLiteral("CREATE TABLE ColStat (PcName TEXT COLLATE NOCASE, "
                       "AppName TEXT COLLATE NOCASE, GridName TEXT COLLATE NOCASE, "
                       "ColName TEXT COLLATE NOCASE, ColWidth INTEGER)"),
        QStringLiteral("CREATE INDEX ixDefaults ON tblDefaults (PcName, AppName, ParaName)"),
        QStringLiteral("CREATE INDEX ixColStat ON ColStat (PcName, AppName, GridName)"),
    };
}

QStringList RightsSchema() {
    return {QStringLiteral("CREATE TABLE tblRights (UserName TEXT COLLATE NOCASE, Pm2 INTEGER, "
                           "Pm3 INTEGER, Pm4 INTEGER, Pm5 INTEGER, Pm6 INTEGER, Pm7 INTEGER, "
                           "Pm8 INTEGER)")};
}

namespace {
void writeFile(const QString& path, const QStringList& statements) {
    Database db = DBEngine::CreateDatabase(path);
    db.BeginTrans();
    for (const QString& sql : statements)
        db.Execute(sql);
    db.CommitTrans();
}
} // namespace

bool CreateDataFiles(const QString& folder, QString* error) {
    const QDir dir(folder);
    const QStringList names = {QStringLiteral("dbqst.dqx"), QStringLiteral("usercfg.dqx"),
                               QStringLiteral("up.dqx")};
    for (const QString& n : names) {
        if (QFileInfo::exists(dir.filePath(n))) {
            if (error)
                *error = QStringLiteral("%1 exists already; nothing was written.")
                             .arg(QDir::toNativeSeparators(dir.filePath(n)));
            return false;
        }
    }
    if (!dir.exists() && !QDir().mkpath(folder)) {
        if (error)
            *error = QStringLiteral("Cannot create the folder %1.").arg(folder);
        return false;
    }
    try {
        QStringList business = BusinessSchema() + BusinessIndexes();
        business << QStringLiteral("INSERT INTO tblSupAddresses (AddID, CoName, ShortNm) "
                                   "VALUES (0, 'No Supplier', '')")
                 << QStringLiteral("INSERT INTO dbStatus (DB_Ver) VALUES ('") + CurrentDbVersion() +
                        QStringLiteral("')");
        writeFile(dir.filePath(names[0]), business);
        writeFile(dir.filePath(names[1]), UserCfgSchema());
        writeFile(dir.filePath(names[2]), RightsSchema());
        Database rights = DBEngine::OpenDatabase(dir.filePath(names[2]));
        DBEngine::SetDatabasePassword(rights, RightsPassword());
    } catch (const DbError& e) {
        if (error)
            *error = e.Description();
        return false;
    }
    return true;
}
