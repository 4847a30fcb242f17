// The customer order window's working copy (the order sheet) and the procedures that fill it and
// work out its figures. No widgets here: the window shows the sheet, writes what the user types
// back into it and calls these procedures; saving, invoicing and the documents read it too.
#pragma once

#include "foundation/Helpers.h"
#include "inventory/InventoryList.h"

#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVector>
#include <array>

class Database;
class Recordset;

// The masks of the sheet's figures: quantities, prices, and tax, delivery and totals.
inline const QString kQtyMask = QStringLiteral("0.0#");
inline const QString kPriceMask = QStringLiteral("0.00###");
inline const QString kMoneyMask = QStringLiteral("0.00");

// A number typed into a box as a statement takes it: its plain value with a "." point.
QString SqlValue(const QString& text);
// A key cell (StockID, RowID) as a statement takes it: its whole number, 0 when empty.
QString SqlKey(const QString& cell);

// A number as the window shows a plain Double: up to 15 significant digits, the locale's decimal
// point, no grouping (10 - 3.3 reads "6.7").
QString PlainNumberText(double value);
// The hidden location cell of a row: the item's location, blank where it reads "UNKNOWN" in any
// mix of case.
QString LocationCell(const QString& location);

// The columns of the order grid fgSOrder (fgHeader has the first 13).
namespace OrderCol {
constexpr int Margin = 0;
constexpr int Item = 1;       // row number from 1
constexpr int PartNo = 2;     // MasterPNo
constexpr int Desc = 3;       // ItemDescription
constexpr int Price = 4;      // gross price, "0.00###"
constexpr int SellAt = 5;     // net price, "0.00###"
constexpr int OrderQty = 6;   // "0.0#"
constexpr int Done = 7;       // already supplied
constexpr int ToDo = 8;       // still to supply
constexpr int InvoiceQty = 9; // on this invoice, "0.0#"
constexpr int Total = 10;     // line total, "0.00###"
constexpr int StockID = 11;   // ItemID
constexpr int RowID = 12;     // tblCustOrderDetail.RowID, empty on a new row
constexpr int Location = 13;  // blank where it reads "UNKNOWN"
constexpr int Count = 14;
constexpr int HeaderCount = 13;
} // namespace OrderCol

// The modes of the window (gCustOrderMode).
namespace OrderMode {
constexpr quint8 NewOrder = 1;
constexpr quint8 SavedOrder = 2;
constexpr quint8 InvoiceOrder = 3;
constexpr quint8 SavedInvoice = 4;
} // namespace OrderMode

// One row of the order grid: its cells as text, and the cells painted as editable (yellow).
struct OrderRow {
    std::array<QString, OrderCol::Count> cells;
    quint16 editable = 0; // bit c set: column c is painted yellow

    QString& operator[](int column) { return cells[size_t(column)]; }
    const QString& operator[](int column) const { return cells[size_t(column)]; }
    bool IsEditable(int column) const { return (editable >> column) & 1; }
};

// Everything the window holds: the customer, the header boxes, the rows, the totals, the two
// default panels and the notes, as the text each control shows.
struct CustOrderSheet {
    quint8 mode = OrderMode::NewOrder;
    bool recalcEnabled = true; // mRecalcEnabled: RecalcOrderTotals does nothing while false

    // Customer
    QString custListText; // the text of cboCustlist ("" when nothing is selected)
    QString custID;       // txtCustID, the AddID; empty until a customer is shown
    QString custName, custAdd1, custAdd2, custAdd3, custAdd4, custPO;

    // Header
    QString custBasketID; // txtCustBasketID "Our Order ID"
    QString custOrNo;     // txtCustOrNo "Customer's Order / Ref"
    QString orDate;       // txtOrDate
    QString discount;     // txtDiscount
    QString invoiceNo;    // txtInvoiceNo
    QString invoiceDate;  // txtInvoiceDate
    QString custShipID;   // txtCustShipID "Delivery", order number "-" sequence

    // Rows, the widths of the grid's columns (twips; 0 hides a column) and the cell fgedit edits
    QVector<OrderRow> rows;
    std::array<int, OrderCol::Count> colWidth{};
    int editRow = -1;
    int editCol = -1;

    // Totals and their labels
    QString net = QStringLiteral("0.00");
    QString delivery = QStringLiteral("0.00");
    QString vat = QStringLiteral("0.00");
    QString total = QStringLiteral("0.00");
    QString deliveryText = QStringLiteral("Delivery   ");
    QString vatText = QStringLiteral("Sales Tax (VAT)   ");
    QString totalText = QStringLiteral("Total   ");
    QString text3 = QStringLiteral("0% "); // Text3: the rate and "% "

    // frmSalesTax
    QString tax1Name = QStringLiteral("Sales Tax (VAT)");
    QString tax1Rate = QStringLiteral("0");
    // frmEditDelCharges
    QString shipChgsName = QStringLiteral("Delivery");
    QString deliveryCost = QStringLiteral("0.00");
    bool taxOnDel = true; // chkTaxOnDel starts ticked

    QString notes; // txtNotes

    // The quantity column the totals and the documents read: OrderQty in modes 1 and 2,
    // InvoiceQty in modes 3 and 4.
    int QtyColumn() const;
};

// --- the window's boxes, changed as a user or the code changes them ---
// Each runs what a change of the box runs, and only when the text really changes.
void SetDiscount(CustOrderSheet& sheet, const QString& text); // reprices every row
void SetDelivery(CustOrderSheet& sheet, const QString& text); // recalculates the totals
void SetVat(CustOrderSheet& sheet, const QString& text);      // rewrites Text3
// Leaving txtDiscount: the box becomes its own numeric value ("5x" reads "5", "" reads "0") and
// every row is repriced, typed prices included.
void LeaveDiscount(CustOrderSheet& sheet);

// --- the grid ---
// Clears the rows and gives every column its width, then hides the columns of the mode.
void SetupOrderGrid(CustOrderSheet& sheet);
// Widths to 0 for the columns the mode does not show.
void SetOrderGridColumns(CustOrderSheet& sheet);
// Marks SellAt and the mode's quantity column editable in every row.
void PaintEditableCells(CustOrderSheet& sheet);
// The caption of a column of fgHeader and fgSOrder ("" for the margin and the location).
QString OrderColumnCaption(int column);
// A change of fgedit: its text goes at once into the cell it edits (editRow, editCol), SellAt
// through "0.00###", a quantity as FormatNumber "0.0#" writes it; the totals follow.
void EditCell(CustOrderSheet& sheet, const QString& text);
// Whether fgedit may edit a column (SellAt, OrderQty, InvoiceQty).
bool IsEditorColumn(int column);
// fgedit's key rule: backspace and "-" pass; in an editor column NumericKey decides; other keys
// are dropped.
int OrderCellKey(int column, const QString& text, int keyCode);

// --- the arithmetic ---
// SellAt from the gross price and the discount: (100 - D) x (Price / 100), through "0.00###".
QString SellAtFromGross(double price, double discount);
void ApplyDiscountToRows(CustOrderSheet& sheet);
void RecalcOrderTotals(CustOrderSheet& sheet);
void RecalcTax(CustOrderSheet& sheet);

// --- customers ---
inline const char* const kCreateNewCustomer = "Create NEW Customer";
// The entries of cboCustlist: "Create NEW Customer", then each customer's CoName, leaving out
// "NON" rows and a row whose AddID repeats the one before.
QStringList LoadCustomerCombo();
// Fills the customer boxes and the discount from the customer of that name. False when no
// customer has the name (the boxes keep what they hold).
bool ShowCustomerDetails(CustOrderSheet& sheet, const QString& name);

// --- loading ---
// Form_Load's own steps on the sheet: the defaults, an empty grid for the mode, and the data of
// the mode (the numbers and dates of a new order, the saved order `orderID`, or in mode 4 the
// saved invoice gCustInvoiceNo).
void FormLoadSheet(CustOrderSheet& sheet, quint8 mode, qint32 orderID);
// Fills the sheet from the saved order N: the header boxes and a row per order row. An order
// without rows fills the boxes and says so; an unknown number leaves the sheet as it is.
// False when no order has the number.
bool LoadSavedOrder(CustOrderSheet& sheet, qint32 orderNo);
// The boxes an order's header fills from a record of tblCustOrders joined with tblCusAddresses:
// customer, date, reference, discount and number. The customer's own discount comes first and
// the order's replaces it, both before any row exists, so that no saved price is repriced.
void ShowOrderHeader(CustOrderSheet& sheet, const Recordset& rs);
// Reads grid rows from records of order rows joined with their items (tblCustOrderDetail with
// tblStockItems), the columns looked up once for the walk.
class OrderRowReader {
public:
    explicit OrderRowReader(const Recordset& rs);
    // A row numbered `number` from the current record: part, description, gross and net price
    // through "0.00###", order quantity through "0.0#", stock and location. Done, To Do,
    // InvoiceQty, Total and the row key are the caller's.
    OrderRow Read(int number) const;
    double Net() const;
    double Ordered() const;
    double Shipped() const;

    const NumberMask price; // "0.00###"
    const NumberMask qty;   // "0.0#"

private:
    const Recordset& mRs;
    int mPNo, mDesc, mGros, mNet, mOrdered, mShipped, mStock, mLoc;
};
// The statement LoadSavedOrder reads the order's rows with.
QString SavedOrderStatement(qint32 orderNo);
// The entries of cboCatFilter: one blank entry, then every category.
QStringList LoadCategoryFilter();

// --- the add-items list ---
struct PartsFilter {
    QString itemFilter; // txtItemFilter
    QString descFilter; // txtDescFilter
    QString category;   // cboCatFilter
};
// The 7 columns of mParts: PartID, PartNo, Desc, Cat, RRP, SellAt, Loc.
struct PartsColumn {
    QString key;
    QString caption;
    int widthTwips;
    bool rightAligned;
};
const QList<PartsColumn>& PartsColumns();
QString PartsStatement(const PartsFilter& filter);
// mParts: the items the filters contain, by part number, one row per item and the 7 columns
// above; SellAt is discounted by `discount` where the item allows discount. The rows are held as
// the engine gave them and each cell is made when it is read.
UBArray LoadPartsForOrder(const PartsFilter& filter, const QString& discount);
// Appends row `record` of mParts to the order. Says "Customer?" and adds nothing when no
// customer is shown. True when a row was added.
bool AddPartToOrder(CustOrderSheet& sheet, const UBArray& parts, int record);

// --- numbers ---
// Each uses the caller's open database when given one, otherwise opens its own.
qint32 NextCustBasketID(Database* db = nullptr);
qint32 NextInvoiceNo(Database* db = nullptr);
qint32 NextDespSeqNo(qint32 orderNo, Database* db = nullptr);

// --- texts ---
QString CustOrderCaption(quint8 mode);
QString CustOrderTip(quint8 mode);
QString CustOrderInfo(quint8 mode);
// The help buttons: Command7, Command12, Command18, Command20, Command21 and btnPickHelp. Shows
// the button's message; Command21 says nothing in modes 2 and 4.
void ShowCustOrderHelp(const QString& button, quint8 mode);
