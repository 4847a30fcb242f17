// Stock movements of one item: the adjustment procedure, the rows of its history grid, the
// pending purchase and sales figures of the quantity panel, and the flag that sends the item to
// purchasing.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

// The four adjustments, in the order of the option buttons optAdjustments_0 .. _3.
enum class AdjustmentKind { None = -1, Issue = 0, Return = 1, AdjustPlus = 2, AdjustMinus = 3 };

// What the adjustment panel holds when OK is pressed.
struct StockAdjustment {
    AdjustmentKind kind = AdjustmentKind::None;
    QString qtyText;   // txtAdjustmentQty
    QString ref;       // txtAdjustmentNo
    QString text;      // txtAdjustmentText
    qint32 itemId = 0; // ItemID of the selected row of the inventory list
    QString qtyCell;   // the Qty cell of that row as shown
};

struct StockAdjustmentResult {
    bool posted = false; // the stock and its history row were written
    double qty = 0;      // the signed quantity added to Qty
    QString histType;    // "ISSUE", "RETURN", "ADJ(+)" or "ADJ(-)"
    QString qtyCell;     // what the Qty cell of the list row shows now
};

// "ISSUE", "RETURN", "ADJ(+)", "ADJ(-)"; "" for None.
QString HistTypeOf(AdjustmentKind kind);

// The OK button of the adjustment panel. With no option chosen it says so and posts nothing; an
// ItemID of 0 posts nothing silently. Otherwise Qty moves by the signed quantity, a history row
// is written (two statements, no transaction) and the processing bar shows; the panel then
// closes. Engine errors are not trapped.
StockAdjustmentResult PostStockAdjustment(const StockAdjustment& in);

// The Qty cell of a list row after adding `qty` to what it shows.
QString AdjustedQtyCell(const QString& oldCell, double qty);

// The help button of the adjustment panel.
void ShowAdjustmentHelp();

// --- history grid ---

// Columns of the history grid, in order: key and caption.
enum HistoryColumn {
    HistDateCol = 0,
    HistTypeCol,
    HistQtyCol,
    HistRefCol,
    HistTrnCol,
    HistTextCol
};
QStringList HistoryColumnKeys();     // EDate, ETyp, EQty, ERef, TRN, EText
QStringList HistoryColumnCaptions(); // Date, Type, Qty, EventRef, TRN, EventText

// The type and text a history row shows for what is stored.
QString HistoryTypeShown(const QString& histType);
QString HistoryTextShown(const QString& histType, const QString& histText);

// The history rows of an item as the grid shows them, one text per column, in the order the
// engine returns them.
QList<QStringList> LoadItemHistory(qint32 itemId);

// --- pending order panel ---

QStringList PendingPurchaseCaptions(); // POrderNo, ETA, Qty
QStringList OpenSalesCaptions();       // SOrderNo, Customer, Qty

struct StockQtyInfo {
    bool flagged = false;         // the item has a basket row
    QList<QStringList> onOrder;   // open purchase order rows, by order number
    QList<QStringList> allocated; // open customer order rows, by order number
};

// Opening the panel: the basket test (an update that doubles as the test), the open purchase
// rows and the open customer order rows of the item.
StockQtyInfo LoadStockQtyInfo(qint32 itemId);

enum class BasketChange { None, Flagged, Unflagged };

// The OK button of the panel: flags the item (one basket row) when `sendToPO` is ticked and it
// is not flagged; asks before un-flagging when the tick is off and it is flagged. Without the
// inventory right nothing is changed.
BasketChange ApplyPurchasingFlag(qint32 itemId, bool sendToPO);
