// The inventory list of the main window: the statement of each view mode, the walk that keeps the
// first row of each part number, the first-stage lists of suppliers and categories, and the
// array the list grid reads its rows from. No widgets here: the main window gathers its filter
// boxes into a request, calls these procedures and shows what comes back.
#pragma once

#include <QList>
#include <QString>
#include <QVariant>
#include <QVector>
#include <QtGlobal>
#include <memory>
#include <vector>

// View modes of the list (mUBViewMode).
namespace UBMode {
constexpr quint8 AllItems = 0;
constexpr quint8 BySupplier = 2;
constexpr quint8 ByCategory = 3;
constexpr quint8 Assemblies = 4;
constexpr quint8 AllocDetail = 5;
constexpr quint8 AllocShortages = 6;
constexpr quint8 BelowMinimum = 7;
} // namespace UBMode

// A two-dimensional array of values, column by row, both counted from 1, as the list keeps its
// rows. Reading outside the array gives an empty value.
//
// An array may take its rows from a source: the rows of a long list are then held as the engine
// gave them and each cell is made (text, number through its mask) when it is read. A row is
// made and held in full the first time it is written to.
class UBArray {
public:
    class Source {
    public:
        virtual ~Source() = default;
        virtual QVariant Cell(int column, int row) const = 0;
    };

    UBArray() = default;
    UBArray(int columns, int rows) { Redim(columns, rows); }
    // Every cell empty.
    void Redim(int columns, int rows);
    // Keeps the first `rows` rows; rows added at the end are empty.
    void SetRows(int rows);
    // Every cell as the source gives it.
    void SetSource(int columns, int rows, std::shared_ptr<const Source> source);
    int Columns() const { return mColumns; }
    int Rows() const { return mRows; }
    QVariant& operator()(int column, int row);
    QVariant operator()(int column, int row) const;

private:
    int mColumns = 0;
    int mRows = 0;
    std::vector<QVector<QVariant>> mHeld; // per row; empty while the row is the source's
    std::shared_ptr<const Source> mSource;
};

// One column of a list: key, caption, width in twips, shown or hidden, right aligned or not,
// and the number mask its values are written with ("" for text).
struct UBColumn {
    QString key;
    QString caption;
    int widthTwips;
    bool shown;
    bool rightAligned;
    QString mask;
};

// The 18 item-level columns in array order (ItemID at 1 .. Comments at 18).
const QList<UBColumn>& UBItemColumns();
// Position (from 1) of an item-level column by key; 0 for an unknown key.
int UBItemColumn(const QString& key);
// The first-stage columns: AddID, CoName, Code, Items / Cat, Items.
const QList<UBColumn>& UBSupplierColumns();
const QList<UBColumn>& UBCategoryColumns();
// An array with fewer columns than this is a first-stage list.
constexpr int UBFirstStageColumnLimit = 5;

// What a view mode shows: heading, the text added to the WHERE clause, the tip, and whether the
// category filter box takes the chosen category. `valid` is false for a mode that has no view.
struct UBViewSpec {
    bool valid = false;
    QString heading;
    QString extraWhere;
    QString tip;
    bool setsCategoryFilter = false;
};
UBViewSpec UBViewFor(quint8 mode, qint32 supplierID, const QString& supplierName,
                     const QString& category);

// The three filter boxes: prefix matches, always present, so an empty box matches everything.
struct UBFilters {
    QString partNo;
    QString description;
    QString category;
};

// The one statement of an item-level view, with the order of the list: by part number, then
// prime mark. The list holds the first row of each part number of this statement's walk.
QString UBItemStatement(const UBFilters& filters, const QString& extraWhere);
// The statement LoadUBItems runs for every view but By Supplier (which runs UBItemStatement):
// the same rows and the supplier row's PrimeSupplier, in the file's order (by ItemID). The list's
// order is then made by PartNumberOrder, which gives the rows of UBItemStatement in its order
// without the engine's sort.
QString UBItemFileOrderStatement(const UBFilters& filters, const QString& extraWhere);

struct UBItemRequest {
    quint8 mode = UBMode::AllItems;
    qint32 supplierID = 0; // mode 2
    QString supplierName;  // mode 2
    QString category;      // modes 3 and 4
    UBFilters filters;     // as typed; modes 3 and 4 replace the category
};

struct UBItemResult {
    bool loaded = false; // false: the mode has no view and nothing changes
    QString caption;     // heading + " (n Items)"
    QString tip;         // for the help tip panel
    bool setsCategoryFilter = false;
    QString categoryFilter; // the text for the category box when setsCategoryFilter
    UBArray data;           // 18 columns, rowCount rows
    int rowCount = 0;
};

// Runs an item-level view on gDbPath: one statement, one pass, the rows put in the list's
// order and the first row of each part number kept. Engine errors are not trapped.
UBItemResult LoadUBItems(const UBItemRequest& request);

// The list field of a comment: the first 25 characters, cut at the first line break, trimmed.
QString UBCommentField(const QString& comment);

// First stage by supplier: row 1 "No Supplier" (AddID 0, code "NONE") with the items left over
// once every supplier's count is taken from the total; then each supplier by company name with
// the number of its item links. Columns AddID, CoName, Code, Items.
UBArray LoadUBSuppliers();
// First stage by category: each category with its number of items. Columns Cat, Items. No rows
// when the stock table has no category at all.
UBArray LoadUBCategories();

// The text of the comment panel for an item: its comment, or a line break and
// "This item has no comments".
QString ItemCommentText(qint32 itemID);

// Copies an edited row back into the array (values by column position from 1). Number columns
// must hold a number written with "." and no currency symbol, or be empty; otherwise nothing
// is copied and the result is false.
bool UBCopyRowBack(UBArray& data, int record, const QVector<QVariant>& values);
// The message and title shown when an edited row cannot be taken back.
QString UBEditFailureText();
QString UBEditFailureTitle();
