#include "sales/CustOrder.h"

#include "foundation/Clock.h"
#include "foundation/DbEngine.h"
#include "foundation/Dialect.h"
#include "foundation/Globals.h"
#include "foundation/Helpers.h"
#include "foundation/MsgBox.h"
#include "sales/Invoicing.h"
#include "sales/SalesDefaults.h"

#include <QLocale>
#include <optional>

namespace {
const QString kNumberMask = QStringLiteral("0000");

// Opens gDbPath unless the caller lends its open database.
struct LentDatabase {
    explicit LentDatabase(Database* lent) : db(lent) {
        if (!db) {
            own = DBEngine::OpenDatabase(gDbPath);
            db = &own;
        }
    }
    Database own;
    Database* db;
};

qint32 highestPlusOne(Database* lent, const QString& sql) {
    LentDatabase d(lent);
    Recordset rs = d.db->OpenRecordset(sql);
    if (rs.Eof())
        return 1;
    return qint32(rs.Fields(0).Long() + 1);
}
} // namespace

QString SqlValue(const QString& text) {
    return QString::number(ParseLocaleNumber(text), 'g', 15);
}

QString SqlKey(const QString& cell) {
    return QString::number(qint64(ParseLocaleNumber(cell)));
}

QString PlainNumberText(double value) {
    QLocale loc;
    loc.setNumberOptions(QLocale::OmitGroupSeparator);
    return loc.toString(value, 'g', 15);
}

QString LocationCell(const QString& location) {
    return location.toUpper() == QLatin1String("UNKNOWN") ? QString() : location;
}

int CustOrderSheet::QtyColumn() const {
    return (mode == OrderMode::InvoiceOrder || mode == OrderMode::SavedInvoice)
               ? OrderCol::InvoiceQty
               : OrderCol::OrderQty;
}

// ---------------------------------------------------------------------------------------------
// Boxes

void SetDiscount(CustOrderSheet& sheet, const QString& text) {
    if (sheet.discount == text)
        return;
    sheet.discount = text;
    ApplyDiscountToRows(sheet);
}

void SetDelivery(CustOrderSheet& sheet, const QString& text) {
    if (sheet.delivery == text)
        return;
    sheet.delivery = text;
    RecalcOrderTotals(sheet);
}

void SetVat(CustOrderSheet& sheet, const QString& text) {
    if (sheet.vat == text)
        return;
    sheet.vat = text;
    sheet.text3 = sheet.tax1Rate + QStringLiteral("% ");
}

void LeaveDiscount(CustOrderSheet& sheet) {
    SetDiscount(sheet, PlainNumberText(Val(sheet.discount)));
    ApplyDiscountToRows(sheet);
}

// ---------------------------------------------------------------------------------------------
// The grid

QString OrderColumnCaption(int column) {
    static const char* const captions[OrderCol::Count] = {
        "",     "Item",  "PartNo",     "Description", "Price",   "SellAt", "OrderQty",
        "Done", "To Do", "InvoiceQty", "Total",       "StockID", "RowID",  ""};
    if (column < 0 || column >= OrderCol::Count)
        return QString();
    return QString::fromLatin1(captions[column]);
}

void SetupOrderGrid(CustOrderSheet& sheet) {
    static constexpr std::array<int, OrderCol::Count> widths = {100, 500, 1600, 3200, 800, 800, 800,
                                                                600, 600, 850,  800,  0,   0,   0};
    sheet.rows.clear();
    sheet.editRow = -1;
    sheet.editCol = -1;
    sheet.colWidth = widths;
    SetOrderGridColumns(sheet);
}

void SetOrderGridColumns(CustOrderSheet& sheet) {
    QList<int> hidden;
    switch (sheet.mode) {
    case OrderMode::NewOrder:
        hidden = {OrderCol::Done, OrderCol::ToDo, OrderCol::InvoiceQty};
        break;
    case OrderMode::SavedOrder:
        hidden = {OrderCol::InvoiceQty};
        break;
    case OrderMode::InvoiceOrder:
        hidden = {OrderCol::ToDo};
        break;
    case OrderMode::SavedInvoice:
        hidden = {OrderCol::Done, OrderCol::ToDo};
        break;
    default:
        break;
    }
    for (int c : hidden)
        sheet.colWidth[size_t(c)] = 0;
}

void PaintEditableCells(CustOrderSheet& sheet) {
    const quint16 mask = quint16((1u << OrderCol::SellAt) | (1u << sheet.QtyColumn()));
    for (OrderRow& row : sheet.rows)
        row.editable = mask;
}

bool IsEditorColumn(int column) {
    return column == OrderCol::SellAt || column == OrderCol::OrderQty ||
           column == OrderCol::InvoiceQty;
}

int OrderCellKey(int column, const QString& text, int keyCode) {
    if (keyCode == 8 || keyCode == '-')
        return keyCode;
    return IsEditorColumn(column) ? NumericKey(text, keyCode) : 0;
}

void EditCell(CustOrderSheet& sheet, const QString& text) {
    if (sheet.editRow < 0 || sheet.editRow >= sheet.rows.size() || !IsEditorColumn(sheet.editCol))
        return;
    const double value = ParseLocaleNumber(text);
    sheet.rows[sheet.editRow][sheet.editCol] = sheet.editCol == OrderCol::SellAt
                                                   ? Format(value, kPriceMask)
                                                   : FormatNumber(value, kQtyMask);
    RecalcOrderTotals(sheet);
}

// ---------------------------------------------------------------------------------------------
// The arithmetic. Every figure is read back from the text a box or cell shows, so each step
// works on the rounding the mask made before it.

QString SellAtFromGross(double price, double discount) {
    // The division comes first: it decides the last digit.
    return Format((100 - discount) * (price / 100), kPriceMask);
}

void ApplyDiscountToRows(CustOrderSheet& sheet) {
    if (sheet.rows.isEmpty())
        return;
    const double discount = ParseLocaleNumber(sheet.discount);
    for (OrderRow& row : sheet.rows)
        row[OrderCol::SellAt] = SellAtFromGross(ParseLocaleNumber(row[OrderCol::Price]), discount);
    RecalcOrderTotals(sheet);
}

void RecalcOrderTotals(CustOrderSheet& sheet) {
    if (!sheet.recalcEnabled || sheet.rows.isEmpty())
        return;
    const NumberMask price(kPriceMask);
    const int qc = sheet.QtyColumn();
    double sum = 0;
    for (OrderRow& row : sheet.rows) {
        const double line = ParseLocaleNumber(row[OrderCol::SellAt]) * ParseLocaleNumber(row[qc]);
        row[OrderCol::Total] = price.Plain(line);
        sum += line; // the unrounded products
    }
    sheet.net = price.Plain(sum);
    RecalcTax(sheet);
    sheet.total = Format(ParseLocaleNumber(sheet.net) + ParseLocaleNumber(sheet.vat) +
                             ParseLocaleNumber(sheet.delivery),
                         kMoneyMask);
}

void RecalcTax(CustOrderSheet& sheet) {
    const double delivery = sheet.taxOnDel ? ParseLocaleNumber(sheet.delivery) : 0;
    const double net = ParseLocaleNumber(sheet.net);
    const double rate = ParseLocaleNumber(sheet.tax1Rate);
    SetVat(sheet, Format(((net + delivery) / 100) * rate, kMoneyMask));
}

// ---------------------------------------------------------------------------------------------
// Customers

QStringList LoadCustomerCombo() {
    QStringList entries{QString::fromLatin1(kCreateNewCustomer)};
    Database db = DBEngine::OpenDatabase(gDbPath);
    Recordset rs =
        db.OpenRecordset(QStringLiteral("SELECT AddID, CoName, ShortNm FROM tblCusAddresses "
                                        "ORDER BY CoName"));
    std::optional<qint64> previous;
    for (; !rs.Eof(); rs.MoveNext()) {
        const qint64 id = rs.Fields(0).Long();
        const bool repeat = previous && *previous == id;
        previous = id;
        if (repeat || rs.Fields(2).Text() == QLatin1String("NON"))
            continue;
        entries << rs.Fields(1).Text();
    }
    return entries;
}

bool ShowCustomerDetails(CustOrderSheet& sheet, const QString& name) {
    Database db = DBEngine::OpenDatabase(gDbPath);
    Recordset rs = db.OpenRecordset(QStringLiteral("SELECT * FROM tblCusAddresses WHERE CoName=") +
                                    SqlText(name));
    if (rs.Eof())
        return false;
    sheet.custID = rs.Fields(QStringLiteral("AddID")).Text();
    sheet.custName = rs.Fields(QStringLiteral("CoName")).Text();
    sheet.custAdd1 = rs.Fields(QStringLiteral("Add1")).Text();
    sheet.custAdd2 = rs.Fields(QStringLiteral("Add2")).Text();
    sheet.custAdd3 = rs.Fields(QStringLiteral("Add3")).Text();
    sheet.custAdd4 = rs.Fields(QStringLiteral("Add4")).Text();
    sheet.custPO = rs.Fields(QStringLiteral("PCode")).Text();
    SetDiscount(sheet, PlainNumberText(rs.Fields(QStringLiteral("Discount")).Double()));
    return true;
}

// ---------------------------------------------------------------------------------------------
// Loading

void FormLoadSheet(CustOrderSheet& sheet, quint8 mode, qint32 orderID) {
    sheet.mode = mode;
    sheet.recalcEnabled = true;
    sheet.notes.clear();
    LoadSalesDefaults(sheet);
    sheet.custListText.clear();
    SetupOrderGrid(sheet);

    const QString today = ShowDate(Today());
    switch (mode) {
    case OrderMode::NewOrder:
        sheet.invoiceNo = Format(NextInvoiceNo(), kNumberMask);
        sheet.invoiceDate = today;
        sheet.orDate = today;
        break;
    case OrderMode::SavedOrder:
        LoadSavedOrder(sheet, orderID);
        break;
    case OrderMode::InvoiceOrder:
        LoadSavedOrder(sheet, orderID);
        sheet.invoiceNo = Format(NextInvoiceNo(), kNumberMask);
        sheet.invoiceDate = today;
        break;
    case OrderMode::SavedInvoice:
        LoadSavedInvoice(sheet, gCustInvoiceNo);
        break;
    default:
        break;
    }
}

QString SavedOrderStatement(qint32 orderNo) {
    return QStringLiteral(
               "SELECT *  FROM (((tblCustOrders INNER JOIN tblCustOrderDetail ON "
               "tblCustOrders.CustBasketID = tblCustOrderDetail.CustBasketDetailID) INNER JOIN "
               "tblStockItems ON tblStockItems.ItemID = tblCustOrderDetail.StockID) INNER JOIN "
               "tblCusAddresses ON tblCustOrders.CustID=tblCusAddresses.AddID) WHERE "
               "tblCustOrders.CustBasketID=") +
           QString::number(orderNo) + QStringLiteral(" ORDER BY RowID");
}

void ShowOrderHeader(CustOrderSheet& sheet, const Recordset& rs) {
    const QString coName = rs.Fields(QStringLiteral("CoName")).Text();
    sheet.custListText = coName;
    ShowCustomerDetails(sheet, coName);
    sheet.orDate = ShowDate(rs.Fields(QStringLiteral("CustOrDate")).Value());
    sheet.custOrNo = rs.Fields(QStringLiteral("CustOrRef")).Text();
    SetDiscount(sheet, PlainNumberText(rs.Fields(QStringLiteral("ORDiscount")).Double()));
    sheet.custBasketID =
        Format(double(rs.Fields(QStringLiteral("CustBasketID")).Long()), kNumberMask);
}

bool LoadSavedOrder(CustOrderSheet& sheet, qint32 orderNo) {
    Database db = DBEngine::OpenDatabase(gDbPath);
    Recordset rs = db.OpenRecordset(SavedOrderStatement(orderNo));
    if (rs.Eof()) {
        Recordset head = db.OpenRecordset(
            QStringLiteral("SELECT *  FROM tblCustOrders INNER JOIN tblCusAddresses ON "
                           "tblCustOrders.CustID=tblCusAddresses.AddID WHERE "
                           "tblCustOrders.CustBasketID=") +
            QString::number(orderNo));
        if (head.Eof())
            return false;
        ShowOrderHeader(sheet, head);
        MsgBox(QStringLiteral("This Customer Order appears to be empty. You can add items to it "
                              "now if you wish"),
               vbOKOnly, QString());
        return true;
    }
    ShowOrderHeader(sheet, rs);
    sheet.custShipID = sheet.custBasketID + QLatin1Char('-') +
                       Format(NextDespSeqNo(orderNo, &db), QStringLiteral("000"));

    SetupOrderGrid(sheet);
    const OrderRowReader reader(rs);
    const int fRow = rs.FieldIndex(QStringLiteral("RowID"));
    for (; !rs.Eof(); rs.MoveNext()) {
        OrderRow row = reader.Read(int(sheet.rows.size()) + 1);
        const double shipped = reader.Shipped();
        const double toDo = reader.Ordered() - shipped;
        row[OrderCol::Done] = PlainNumberText(shipped);
        row[OrderCol::ToDo] = PlainNumberText(toDo);
        row[OrderCol::InvoiceQty] = row[OrderCol::ToDo];
        row[OrderCol::Total] = reader.price.Plain(reader.Net() * toDo);
        row[OrderCol::RowID] = rs.Fields(fRow).Text();
        sheet.rows.append(std::move(row));
    }
    PaintEditableCells(sheet);
    RecalcOrderTotals(sheet);
    return true;
}

OrderRowReader::OrderRowReader(const Recordset& rs)
    : price(kPriceMask), qty(kQtyMask), mRs(rs), mPNo(rs.FieldIndex(QStringLiteral("MasterPNo"))),
      mDesc(rs.FieldIndex(QStringLiteral("ItemDescription"))),
      mGros(rs.FieldIndex(QStringLiteral("GrosPrice"))),
      mNet(rs.FieldIndex(QStringLiteral("NetPrice"))),
      mOrdered(rs.FieldIndex(QStringLiteral("OrderedQty"))),
      mShipped(rs.FieldIndex(QStringLiteral("ShippedQty"))),
      mStock(rs.FieldIndex(QStringLiteral("StockID"))),
      mLoc(rs.FieldIndex(QStringLiteral("Location"))) {}

OrderRow OrderRowReader::Read(int number) const {
    OrderRow row;
    row[OrderCol::Item] = QString::number(number);
    row[OrderCol::PartNo] = mRs.Fields(mPNo).Text();
    row[OrderCol::Desc] = mRs.Fields(mDesc).Text();
    row[OrderCol::Price] = price.Plain(mRs.Fields(mGros).Double());
    row[OrderCol::SellAt] = price.Plain(Net());
    row[OrderCol::OrderQty] = qty.Plain(Ordered());
    row[OrderCol::StockID] = mRs.Fields(mStock).Text();
    row[OrderCol::Location] = LocationCell(mRs.Fields(mLoc).Text());
    return row;
}

double OrderRowReader::Net() const {
    return mRs.Fields(mNet).Double();
}
double OrderRowReader::Ordered() const {
    return mRs.Fields(mOrdered).Double();
}
double OrderRowReader::Shipped() const {
    return mRs.Fields(mShipped).Double();
}

QStringList LoadCategoryFilter() {
    QStringList entries{QString()};
    Database db = DBEngine::OpenDatabase(gDbPath);
    Recordset rs = db.OpenRecordset(
        QStringLiteral("SELECT DISTINCT Category FROM tblStockItems ORDER BY Category"));
    for (; !rs.Eof(); rs.MoveNext())
        entries << rs.Fields(0).Text();
    return entries;
}

// ---------------------------------------------------------------------------------------------
// The add-items list

const QList<PartsColumn>& PartsColumns() {
    static const QList<PartsColumn> columns = {
        {QStringLiteral("PartID"), QStringLiteral("PartID"), 700, false},
        {QStringLiteral("PartNo"), QStringLiteral("PartNo"), 1700, false},
        {QStringLiteral("Desc"), QStringLiteral("Description"), 3000, false},
        {QStringLiteral("Cat"), QStringLiteral("Cat"), 800, false},
        {QStringLiteral("RRP"), QStringLiteral("RRP"), 800, true},
        {QStringLiteral("SellAt"), QStringLiteral("SellAt"), 800, true},
        {QStringLiteral("Loc"), QStringLiteral("Loc"), 1000, false},
    };
    return columns;
}

QString PartsStatement(const PartsFilter& filter) {
    QString item = filter.itemFilter;
    QString desc = filter.descFilter;
    item.remove(QLatin1Char('\''));
    desc.remove(QLatin1Char('\''));
    return QStringLiteral("SELECT  tblStockItems.ItemID, Location, MasterPNo, ItemDescription, "
                          "Category, SellAt, AllowDiscount FROM tblStockItems WHERE  "
                          "tblStockItems.MasterPNo ") +
           LikeContains(item) + QStringLiteral(" AND tblStockItems.ItemDescription ") +
           LikeContains(desc) + QStringLiteral(" AND tblStockItems.Category ") +
           LikeContains(filter.category) + QStringLiteral(" ORDER BY MasterPNo");
}

namespace {
// The items of the add-items list as the engine gave them: the texts of all rows in one buffer,
// the numbers as read. A cell is made, its price through its mask, when the grid reads it.
class PartsSource : public UBArray::Source {
public:
    explicit PartsSource(double discount)
        : mRrp(QStringLiteral("#0.00###")), mDiscounted(QStringLiteral("#0.00")),
          mDiscount(discount) {}

    void Add(const Recordset& rs) {
        Item it;
        it.id = rs.Fields(0).Long();
        it.sellAt = rs.Fields(5).Double();
        it.allowDiscount = rs.Fields(6).Long() != 0;
        for (int i = 0; i < 4; ++i) {
            it.at[i] = quint32(mBytes.size());
            mBytes.append(rs.Fields(kTextFields[i]).Utf8());
        }
        it.at[4] = quint32(mBytes.size());
        mItems.push_back(it);
    }
    int Rows() const { return int(mItems.size()); }

    QVariant Cell(int column, int row) const override {
        const Item& it = mItems[size_t(row - 1)];
        switch (column) {
        case 1:
            return QVariant(qlonglong(it.id));
        case 2:
        case 3:
        case 4:
            return text(it, column - 2);
        case 5:
            return mRrp.Plain(it.sellAt);
        case 6:
            return it.allowDiscount ? mDiscounted.Plain((100 - mDiscount) * (it.sellAt / 100))
                                    : mRrp.Plain(it.sellAt);
        case 7:
            return text(it, 3);
        default:
            return QVariant();
        }
    }

private:
    // The fields of PartNo, Desc, Cat and Loc: MasterPNo, ItemDescription, Category, Location.
    static constexpr int kTextFields[4] = {2, 3, 4, 1};
    struct Item {
        qint64 id = 0;
        double sellAt = 0;
        bool allowDiscount = false;
        quint32 at[5] = {};
    };
    QString text(const Item& it, int i) const {
        return QString::fromUtf8(mBytes.constData() + it.at[i], qsizetype(it.at[i + 1] - it.at[i]));
    }

    const NumberMask mRrp;
    const NumberMask mDiscounted;
    const double mDiscount;
    QByteArray mBytes;
    std::vector<Item> mItems;
};
} // namespace

UBArray LoadPartsForOrder(const PartsFilter& filter, const QString& discount) {
    auto source = std::make_shared<PartsSource>(ParseLocaleNumber(discount));
    {
        Database db = DBEngine::OpenDatabase(gDbPath);
        for (Recordset rs = db.OpenRecordset(PartsStatement(filter)); !rs.Eof(); rs.MoveNext())
            source->Add(rs);
    }
    UBArray parts;
    const int rows = source->Rows();
    parts.SetSource(int(PartsColumns().size()), rows, std::move(source));
    return parts;
}

bool AddPartToOrder(CustOrderSheet& sheet, const UBArray& parts, int record) {
    if (parts.Rows() == 0 || record < 1 || record > parts.Rows() ||
        parts(1, record).toLongLong() < 1)
        return false;
    if (sheet.custID.isEmpty()) {
        MsgBox(QStringLiteral(
                   "You must select a customer before adding items to the customer's order"),
               vbInformation, QStringLiteral("Customer?"));
        return false;
    }
    const double price = ParseLocaleNumber(parts(5, record));
    OrderRow row;
    row[OrderCol::Item] = QString::number(sheet.rows.size() + 1);
    row[OrderCol::PartNo] = parts(2, record).toString();
    row[OrderCol::Desc] = parts(3, record).toString();
    row[OrderCol::Price] = Format(price, kPriceMask);
    row[OrderCol::SellAt] = SellAtFromGross(price, ParseLocaleNumber(sheet.discount));
    row[OrderCol::OrderQty] = QStringLiteral("1");
    row[OrderCol::Done] = QStringLiteral("0");
    row[OrderCol::ToDo] = QStringLiteral("1");
    row[OrderCol::InvoiceQty] = QStringLiteral("1");
    row[OrderCol::StockID] = parts(1, record).toString();
    row[OrderCol::Location] = LocationCell(parts(7, record).toString());
    sheet.rows.append(std::move(row));
    RecalcOrderTotals(sheet);
    PaintEditableCells(sheet);
    return true;
}

// ---------------------------------------------------------------------------------------------
// Numbers

qint32 NextCustBasketID(Database* db) {
    return highestPlusOne(db, QStringLiteral("SELECT CustBasketID FROM tblCustOrders ORDER BY "
                                             "CustBasketID DESC") +
                                  FirstRowOnly());
}

qint32 NextInvoiceNo(Database* db) {
    return highestPlusOne(
        db, QStringLiteral("SELECT InvoiceNo FROM tblDespatch ORDER BY InvoiceNo DESC") +
                FirstRowOnly());
}

qint32 NextDespSeqNo(qint32 orderNo, Database* lent) {
    LentDatabase d(lent);
    Recordset rs = d.db->OpenRecordset(
        QStringLiteral("SELECT DespSeqNo FROM tblDespatch  WHERE CustOrderID = ") +
        QString::number(orderNo) + QStringLiteral(" ORDER BY DespSeqNo"));
    if (rs.Eof())
        return 1;
    rs.MoveLast();
    return qint32(rs.Fields(0).Long() + 1);
}

// ---------------------------------------------------------------------------------------------
// Texts

QString CustOrderCaption(quint8 mode) {
    return mode == OrderMode::InvoiceOrder || mode == OrderMode::SavedInvoice
               ? QStringLiteral("Invoice")
               : QStringLiteral("Customer Order");
}

QString CustOrderTip(quint8 mode) {
    switch (mode) {
    case OrderMode::NewOrder:
        return QStringLiteral("Use this window to create a CustomerOrder - More Info >>");
    case OrderMode::SavedOrder:
        return QStringLiteral("View or change a Customer Order which was created and saved "
                              "earlier - More Info >>");
    case OrderMode::InvoiceOrder:
        return QStringLiteral("Create an Invoice for a saved CustomerOrder - More Info >>");
    case OrderMode::SavedInvoice:
        return QStringLiteral(
            "View or change an Invoice that was created and saved earlier - More Info >>");
    default:
        return QString();
    }
}

QString CustOrderInfo(quint8 mode) {
    QStringList p;
    switch (mode) {
    case OrderMode::NewOrder:
        p << QStringLiteral("You can create a Customer Order")
          << QStringLiteral(
                 "First you need to select, edit or create a customer via the menu at the top of "
                 "this window and then click the button below to select/add items to the order "
                 "and then check the 'Sell' price and adjust the OrderQty if required")
          << QStringLiteral("To remove an item again just set the OrderQty to zero and it will "
                            "be ignored when you save or print")
          << QStringLiteral(
                 "When you're finished you can save the order and come back and adjust/invoice "
                 "later (For example the customer might place the order but ask for items to be "
                 "supplied and invoiced later) or you can supply now and complete/invoice the "
                 "order straight away")
          << QStringLiteral("Even when the order is complete you can still come back and add or "
                            "change items if required");
        break;
    case OrderMode::SavedOrder:
        p << QStringLiteral("This is a Customer Order which was created and saved earlier")
          << QStringLiteral("You may edit the 'yellow' fields. For example you may change the "
                            "price of items or change the OrderQty. You may also add new "
                            "item/rows to the order")
          << QStringLiteral(
                 "A column on the order shows the Order Quantity another column shows the "
                 "'Done' Quantity. For example if you've already delivered items to the "
                 "customer then the fields 'Done' and 'To Do' show the quantity already "
                 "supplied and the Quantity which still need to be supplied")
          << QStringLiteral(
                 "You may change the Order Quantity but if any were already supplied to the "
                 "customer then you can't change the Order Quantity to a number that is lower "
                 "than the quantity already supplied to the customer");
        break;
    case OrderMode::InvoiceOrder:
        p << QStringLiteral("This is a Customer Order which was created and saved earlier")
          << QStringLiteral("You may edit the 'yellow' fields. For example you may change the "
                            "price of items or change the InvoiceQty")
          << QStringLiteral(
                 "A column on the order shows the Order Quantity another column shows the "
                 "'Done' Quantity. For example if you've already delivered/Invoiced items to "
                 "the customer then the 'Done' column shows the quantity already supplied and "
                 "invoiced")
          << QStringLiteral("When you first open this window 'InvoiceQty' shows the Quantity "
                            "which still need to be supplied and invoiced")
          << QStringLiteral("You may change InvoiceQty but you can not supply/invoice more than "
                            "were originally ordered by the customer");
        break;
    case OrderMode::SavedInvoice:
        p << QStringLiteral("This is an Invoice that was created and saved earlier")
          << QStringLiteral(
                 "You can edit the 'yellow' fields to change the prices and InvoiceQty but you "
                 "can not increase the quantity if it would increase it above the original "
                 "order quantity")
          << QStringLiteral(
                 "If the customer's order was split into more than one Delivery-Invoice then a "
                 "'Done' column appears which shows the total quantity of items on 'other "
                 "invoices'")
          << QStringLiteral("Please note that if your sales tax rate has changed then this "
                            "invoice shows the rate that was used at the time the invoice was "
                            "originally created.");
        break;
    default:
        break;
    }
    return p.join(QStringLiteral("\n\n"));
}

void ShowCustOrderHelp(const QString& button, quint8 mode) {
    const QString invoiceNumbers = QStringLiteral(
        "Each invoice is automatically given a unique number starting from 0001. If you wish to "
        "change this to start from a higher number then enter it into this box. You can only "
        "enter numbers. Letters and other characters will be ignored");
    if (button == QLatin1String("Command7")) {
        MsgBox(QStringLiteral("Use this button if you wish to Save an 'Order' which can be "
                              "opened, changed and invoiced later"),
               vbOKOnly, QStringLiteral("Help"));
    } else if (button == QLatin1String("Command12")) {
        MsgBox(QStringLiteral("Use this option to complete the customer's order and print the "
                              "invoice now. This will complete and close the customer's "
                              "order\n\nNote:\nThis process will adjust the quantities of "
                              "OnHand inventory. Even when an order is closed you can still open "
                              "it again later and make changes and reprocess if required"),
               vbOKOnly, QStringLiteral("Save and Print the Invoice Now"));
    } else if (button == QLatin1String("Command20")) {
        MsgBox(QStringLiteral("Use this button to Save and Print the delivery and Invoice"));
    } else if (button == QLatin1String("Command18")) {
        MsgBox(QStringLiteral(
            "Each customer Order is automatically given a unique number starting from 0001. If "
            "you wish to change this to start from a higher number then enter it into this box. "
            "You can only enter numbers. Letters and other characters will be ignored"));
    } else if (button == QLatin1String("Command21")) {
        if (mode == OrderMode::NewOrder)
            MsgBox(QStringLiteral(
                       "This is the next available Invoice Number which will be allocated to "
                       "this order ONLY IF you select the option to complete and invoice the "
                       "order. If you just save the order without invoicing then the Invoice "
                       "Number will not be used and a different one may be allocated when you "
                       "invoice later\n\n") +
                   invoiceNumbers);
        else if (mode == OrderMode::InvoiceOrder)
            MsgBox(invoiceNumbers);
    } else if (button == QLatin1String("btnPickHelp")) {
        MsgBox(QStringLiteral(
                   "The Packing Note is identical to the Delivery note except the Packing note "
                   "shows stock locations allowing you to use this as a 'Pick List'. You can "
                   "then send this to the customer with the delivery or print a seperate "
                   "Delivery Note if you don't want your customer to see location data"),
               vbOKOnly, QStringLiteral("Packing Note"));
    }
}
