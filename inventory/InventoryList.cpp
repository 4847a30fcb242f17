#include "inventory/InventoryList.h"

#include "foundation/DbEngine.h"
#include "foundation/Dialect.h"
#include "foundation/Globals.h"
#include "foundation/Helpers.h"
#include "inventory/PartNumberOrder.h"

#include <QHash>
#include <QLocale>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>

// ---------------------------------------------------------------------------------------------
// The array

void UBArray::Redim(int columns, int rows) {
    mColumns = qMax(0, columns);
    mRows = qMax(0, rows);
    mSource.reset();
    mHeld.assign(size_t(mRows), QVector<QVariant>(mColumns));
}

void UBArray::SetRows(int rows) {
    mRows = qMax(0, rows);
    mHeld.resize(size_t(mRows));
}

void UBArray::SetSource(int columns, int rows, std::shared_ptr<const Source> source) {
    mColumns = qMax(0, columns);
    mRows = qMax(0, rows);
    mSource = std::move(source);
    mHeld.clear();
    mHeld.resize(size_t(mRows));
}

QVariant& UBArray::operator()(int column, int row) {
    Q_ASSERT(column >= 1 && column <= mColumns && row >= 1 && row <= mRows);
    QVector<QVariant>& held = mHeld[size_t(row - 1)];
    if (held.isEmpty()) {
        held.resize(mColumns);
        if (mSource)
            for (int c = 1; c <= mColumns; ++c)
                held[c - 1] = mSource->Cell(c, row);
    }
    return held[column - 1];
}

QVariant UBArray::operator()(int column, int row) const {
    if (column < 1 || column > mColumns || row < 1 || row > mRows)
        return QVariant();
    const QVector<QVariant>& held = mHeld[size_t(row - 1)];
    if (!held.isEmpty())
        return held[column - 1];
    return mSource ? mSource->Cell(column, row) : QVariant();
}

// ---------------------------------------------------------------------------------------------
// Columns

namespace {
const QString kQtyMask = QStringLiteral("0.0#");
const QString kPriceMask = QStringLiteral("0.00###");
} // namespace

const QList<UBColumn>& UBItemColumns() {
    static const QList<UBColumn> columns = {
        {QStringLiteral("ItemID"), QStringLiteral("ItemID"), 900, false, false, QString()},
        {QStringLiteral("PNo"), QStringLiteral("Part No."), 1800, true, false, QString()},
        {QStringLiteral("Desc"), QStringLiteral("Description"), 2800, true, false, QString()},
        {QStringLiteral("Detail"), QStringLiteral("Detail"), 1500, true, false, QString()},
        {QStringLiteral("Cat"), QStringLiteral("Cat"), 700, true, false, QString()},
        {QStringLiteral("Loc"), QStringLiteral("Loc"), 900, true, false, QString()},
        {QStringLiteral("Qty"), QStringLiteral("Qty"), 800, true, true, kQtyMask},
        {QStringLiteral("Buy"), QStringLiteral("Buy"), 1100, true, true, kPriceMask},
        {QStringLiteral("Sell"), QStringLiteral("Sell"), 1100, true, true, kPriceMask},
        {QStringLiteral("Alloc"), QStringLiteral("Alloc"), 800, false, true, QString()},
        {QStringLiteral("Avail"), QStringLiteral("Avail"), 800, false, true, QString()},
        {QStringLiteral("OnOrder"), QStringLiteral("OnOrder"), 900, true, true, kQtyMask},
        {QStringLiteral("Short"), QStringLiteral("Short"), 800, false, true, QString()},
        {QStringLiteral("Vendor"), QStringLiteral("Vendor"), 1000, true, false, QString()},
        {QStringLiteral("VendorPN"), QStringLiteral("VendorPN"), 1500, true, false, QString()},
        {QStringLiteral("BuyNow"), QStringLiteral("BuyNow"), 700, false, false, QString()},
        {QStringLiteral("MOQ"), QStringLiteral("MOQ"), 700, false, false, kQtyMask},
        {QStringLiteral("Comments"), QStringLiteral("Comments"), 2200, true, false, QString()},
    };
    return columns;
}

int UBItemColumn(const QString& key) {
    const auto& columns = UBItemColumns();
    for (int i = 0; i < columns.size(); ++i)
        if (columns[i].key.compare(key, Qt::CaseInsensitive) == 0)
            return i + 1;
    return 0;
}

const QList<UBColumn>& UBSupplierColumns() {
    static const QList<UBColumn> columns = {
        {QStringLiteral("AddID"), QStringLiteral("ContactID"), 900, false, false, QString()},
        {QStringLiteral("CoName"), QStringLiteral("Company"), 4000, true, false, QString()},
        {QStringLiteral("Code"), QStringLiteral("Code"), 1500, true, false, QString()},
        {QStringLiteral("Items"), QStringLiteral("Items"), 1000, true, true, QString()},
    };
    return columns;
}

const QList<UBColumn>& UBCategoryColumns() {
    static const QList<UBColumn> columns = {
        {QStringLiteral("Cat"), QStringLiteral("Categories"), 3000, true, false, QString()},
        {QStringLiteral("Items"), QStringLiteral("Items"), 1000, true, true, QString()},
    };
    return columns;
}

// ---------------------------------------------------------------------------------------------
// Item-level views

UBViewSpec UBViewFor(quint8 mode, qint32 supplierID, const QString& supplierName,
                     const QString& category) {
    UBViewSpec view;
    const QString rightClick = QStringLiteral("\n\nRIGHT Click any row to see a context menu");
    switch (mode) {
    case UBMode::Assemblies:
        view.heading = QStringLiteral("View Assemblies by Part Number");
        view.setsCategoryFilter = true;
        break;
    case UBMode::BySupplier:
        view.heading = QStringLiteral("View By Supplier - [") + supplierName + QStringLiteral("]");
        view.extraWhere =
            QStringLiteral(" AND tblItemSupplier.SupplierID=") + QString::number(supplierID);
        break;
    case UBMode::ByCategory:
        view.heading = QStringLiteral("View By Category - [") + category + QStringLiteral("]");
        view.setsCategoryFilter = true;
        break;
    case UBMode::AllItems:
        view.heading = QStringLiteral("View All Stock Items");
        break;
    case UBMode::AllocDetail:
        view.heading = QStringLiteral("View Allocated Stock Items / Shortages");
        view.extraWhere =
            QStringLiteral(" AND tblStockItems.AllocQty > 0") +
            QStringLiteral(
                " AND (tblStockItems.Qty - tblStockItems.AllocQty) < tblStockItems.Trigger");
        view.tip =
            QStringLiteral("This grid shows all inventory items where the available quantity "
                           "has fallen below a predefined minimum\n"
                           "Only those items which are required by current and pending "
                           "worksorders are shown");
        break;
    case UBMode::AllocShortages:
        view.heading = QStringLiteral("View Allocated Stock Items / Shortages");
        view.extraWhere = QStringLiteral(" AND tblStockItems.AllocQty > 0") +
                          QStringLiteral(" AND (tblStockItems.Qty - tblStockItems.AllocQty + "
                                         "tblStockItems.OnOrderQty) < tblStockItems.Trigger");
        view.tip = QStringLiteral(
            "This grid shows all inventory items where the available quantity has fallen below a "
            "predefined minimum. Only those items which are required by current and pending "
            "worksorders are shown. This display assumes 'OnOrder' quantities will be available "
            "on time");
        break;
    case UBMode::BelowMinimum:
        view.heading = QStringLiteral("View All Stock Items / Shortages");
        // Two blanks before "<", as the statement has always been written.
        view.extraWhere = QStringLiteral(" AND tblStockItems.Qty  < tblStockItems.Trigger");
        view.tip = QStringLiteral("This grid shows 'all' inventory items where the available "
                                  "quantity has fallen below a predefined minimum");
        break;
    default:
        return view;
    }
    if (view.tip.isEmpty())
        view.tip = view.heading + rightClick;
    view.valid = true;
    return view;
}

namespace {
// The statement of an item-level view up to its order, with `extraColumns` after the comment.
QString itemSelect(const QString& extraColumns, const UBFilters& filters,
                   const QString& extraWhere) {
    return QStringLiteral("SELECT") + QStringLiteral(" tblStockItems.ItemID,") +
           QStringLiteral(" tblStockItems.MasterPNo, tblStockItems.ItemName, "
                          "tblStockItems.ItemDescription,") +
           QStringLiteral(" tblStockItems.Category, tblStockItems.Qty, tblStockItems.AllocQty, "
                          "tblStockItems.SellAt,") +
           QStringLiteral(" tblStockItems.OnOrderQty,") + QStringLiteral(" tblStockItems.BuyNow,") +
           QStringLiteral(" tblStockItems.Location,") +
           QStringLiteral(" tblSupAddresses.ShortNm,") +
           QStringLiteral(" tblItemSupplier.SupplierPNo, tblItemSupplier.PriceEach, "
                          "tblItemSupplier.MinOrQty,") +
           QStringLiteral(" tblItemComments.Comment") + extraColumns + QStringLiteral(" ") +
           QStringLiteral(" FROM ((tblStockItems ") +
           QStringLiteral(
               " LEFT JOIN tblItemSupplier ON tblStockItems.ItemID=tblItemSupplier.ItemID)") +
           QStringLiteral(
               " LEFT JOIN tblSupAddresses ON tblItemSupplier.SupplierID=tblSupAddresses.AddID)") +
           QStringLiteral(
               " LEFT JOIN tblItemComments ON tblStockItems.ItemID=tblItemComments.StockID") +
           QStringLiteral(" WHERE tblStockItems.MasterPNo ") + LikePrefix(filters.partNo) +
           QStringLiteral(" AND tblStockItems.ItemDescription ") + LikePrefix(filters.description) +
           QStringLiteral(" AND tblStockItems.Category ") + LikePrefix(filters.category) +
           extraWhere;
}
} // namespace

QString UBItemStatement(const UBFilters& filters, const QString& extraWhere) {
    return itemSelect(QString(), filters, extraWhere) +
           QStringLiteral(" ORDER BY MasterPNo ASC, PrimeSupplier ASC");
}

QString UBItemFileOrderStatement(const UBFilters& filters, const QString& extraWhere) {
    return itemSelect(QStringLiteral(", tblItemSupplier.PrimeSupplier"), filters, extraWhere) +
           QStringLiteral(" ORDER BY tblStockItems.ItemID");
}

QString UBCommentField(const QString& comment) {
    // A fixed field of 25 characters, cut at the first line break, then trimmed of blanks.
    QString s = comment.left(25);
    for (qsizetype i = 0; i < s.size(); ++i) {
        if (s.at(i) == QLatin1Char('\r') || s.at(i) == QLatin1Char('\n')) {
            s.truncate(i);
            break;
        }
    }
    qsizetype a = 0;
    qsizetype b = s.size();
    while (a < b && s.at(a) == QLatin1Char(' '))
        ++a;
    while (b > a && s.at(b - 1) == QLatin1Char(' '))
        --b;
    return s.mid(a, b - a);
}

namespace {
// The texts of one load in one buffer, each known by where it lies.
class TextStore {
public:
    struct Span {
        quint32 at = 0;
        quint32 size = 0;
    };
    Span Add(QByteArrayView bytes) {
        const Span s{quint32(mBytes.size()), quint32(bytes.size())};
        mBytes.append(bytes);
        return s;
    }
    QString Text(Span s) const { return QString::fromUtf8(mBytes.constData() + s.at, s.size); }

private:
    QByteArray mBytes;
};

// A number column's value; a Null shows empty.
struct Number {
    double value = 0;
    bool null = true;
};
Number readNumber(const Field& f) {
    return f.IsNull() ? Number{} : Number{f.Double(), false};
}

// The columns of tblStockItems, the same on every row of an item.
struct ItemFields {
    qint64 id = 0;
    TextStore::Span pno, desc, name, cat, loc;
    Number qty, sell, onOrder, buyNow;
};
// The columns of a supplier and comment row, and the item it belongs to.
struct RowFields {
    int item = 0;
    TextStore::Span shortNm, supPno, comment;
    Number price, moq;
};

// A comment shows at most 25 characters: the first 100 bytes of its UTF-8 text hold them.
constexpr qsizetype kCommentBytes = 100;

// The rows an item-level view keeps, as the engine gave them; each cell is made as the list
// shows it when it is read.
class ItemListSource : public UBArray::Source {
public:
    ItemListSource() : mQty(kQtyMask), mPrice(kPriceMask) {}

    TextStore texts;
    std::vector<ItemFields> items;
    std::vector<RowFields> rows;
    std::vector<int> kept; // list row - 1 -> index into rows

    QVariant Cell(int column, int row) const override {
        const RowFields& r = rows[size_t(kept[size_t(row - 1)])];
        const ItemFields& it = items[size_t(r.item)];
        switch (column) {
        case 1:
            return QVariant(qlonglong(it.id));
        case 2:
            return texts.Text(it.pno);
        case 3:
            return texts.Text(it.desc);
        case 4:
            return texts.Text(it.name);
        case 5:
            return texts.Text(it.cat);
        case 6:
            return texts.Text(it.loc);
        case 7:
            return masked(it.qty, mQty);
        case 8:
            return masked(r.price, mPrice);
        case 9:
            return masked(it.sell, mPrice);
        case 12:
            return masked(it.onOrder, mQty);
        case 14:
            return texts.Text(r.shortNm);
        case 15:
            return texts.Text(r.supPno);
        case 16:
            return it.buyNow.null ? QString()
                                  : QString::number(qint64(std::floor(it.buyNow.value)));
        case 17:
            return masked(r.moq, mQty);
        case 18:
            return UBCommentField(texts.Text(r.comment));
        default: // Alloc, Avail and Short are always empty
            return QString();
        }
    }

private:
    static QString masked(const Number& n, const NumberMask& format) {
        return n.null ? QString() : format.Screen(n.value);
    }
    NumberMask mQty;
    NumberMask mPrice;
};
} // namespace

UBItemResult LoadUBItems(const UBItemRequest& request) {
    UBItemResult result;
    const UBViewSpec view =
        UBViewFor(request.mode, request.supplierID, request.supplierName, request.category);
    if (!view.valid)
        return result;
    UBFilters filters = request.filters;
    if (view.setsCategoryFilter) {
        filters.category = request.category;
        result.setsCategoryFilter = true;
        result.categoryFilter = request.category;
    }
    result.tip = view.tip;

    // One pass over the rows in the file's order, keeping them as the engine gives them; then
    // the list's order, and the first row of each part number. A supplier's list is found
    // through that supplier's rows instead: the engine sorts those few rows itself, and rows that
    // tie keep the order of the supplier rows, as they always have.
    const bool engineSorts = request.mode == UBMode::BySupplier;
    auto list = std::make_shared<ItemListSource>();
    PartNumberOrder order;
    {
        Database db = DBEngine::OpenDatabase(gDbPath);
        Recordset rs =
            db.OpenRecordset(engineSorts ? UBItemStatement(filters, view.extraWhere)
                                         : UBItemFileOrderStatement(filters, view.extraWhere));
        const int fItemID = rs.FieldIndex(QStringLiteral("ItemID"));
        const int fPNo = rs.FieldIndex(QStringLiteral("MasterPNo"));
        const int fName = rs.FieldIndex(QStringLiteral("ItemName"));
        const int fDesc = rs.FieldIndex(QStringLiteral("ItemDescription"));
        const int fCat = rs.FieldIndex(QStringLiteral("Category"));
        const int fQty = rs.FieldIndex(QStringLiteral("Qty"));
        const int fSell = rs.FieldIndex(QStringLiteral("SellAt"));
        const int fOnOrder = rs.FieldIndex(QStringLiteral("OnOrderQty"));
        const int fBuyNow = rs.FieldIndex(QStringLiteral("BuyNow"));
        const int fLoc = rs.FieldIndex(QStringLiteral("Location"));
        const int fShortNm = rs.FieldIndex(QStringLiteral("ShortNm"));
        const int fSupPNo = rs.FieldIndex(QStringLiteral("SupplierPNo"));
        const int fPrice = rs.FieldIndex(QStringLiteral("PriceEach"));
        const int fMoq = rs.FieldIndex(QStringLiteral("MinOrQty"));
        const int fComment = rs.FieldIndex(QStringLiteral("Comment"));
        const int fPrime = rs.FieldIndex(QStringLiteral("PrimeSupplier"));
        TextStore& texts = list->texts;
        for (; !rs.Eof(); rs.MoveNext()) {
            // The rows of one item come together, one per supplier (and comment).
            const qint64 id = rs.Fields(fItemID).Long();
            if (list->items.empty() || id != list->items.back().id) {
                const Field pno = rs.Fields(fPNo);
                ItemFields it;
                it.id = id;
                it.pno = texts.Add(pno.Utf8());
                it.desc = texts.Add(rs.Fields(fDesc).Utf8());
                it.name = texts.Add(rs.Fields(fName).Utf8());
                it.cat = texts.Add(rs.Fields(fCat).Utf8());
                it.loc = texts.Add(rs.Fields(fLoc).Utf8());
                it.qty = readNumber(rs.Fields(fQty));
                it.sell = readNumber(rs.Fields(fSell));
                it.onOrder = readNumber(rs.Fields(fOnOrder));
                it.buyNow = readNumber(rs.Fields(fBuyNow));
                list->items.push_back(it);
                order.AddItem(pno.Utf8(), pno.IsNull());
            }
            RowFields row;
            row.item = int(list->items.size()) - 1;
            row.shortNm = texts.Add(rs.Fields(fShortNm).Utf8());
            row.supPno = texts.Add(rs.Fields(fSupPNo).Utf8());
            const QByteArrayView comment = rs.Fields(fComment).Utf8();
            row.comment = texts.Add(comment.first(std::min(comment.size(), kCommentBytes)));
            row.price = readNumber(rs.Fields(fPrice));
            row.moq = readNumber(rs.Fields(fMoq));
            list->rows.push_back(row);
            order.AddRow(fPrime < 0 ? PrimeMark{} : PrimeMark::Of(rs.Fields(fPrime)));
        }
    }
    list->kept = engineSorts ? order.FirstRowsAsAdded() : order.FirstRows();
    result.rowCount = int(list->kept.size());
    result.data.SetSource(int(UBItemColumns().size()), result.rowCount, std::move(list));
    result.caption = view.heading + QStringLiteral(" (") + QString::number(result.rowCount) +
                     QStringLiteral(" Items)");
    result.loaded = true;
    return result;
}

// ---------------------------------------------------------------------------------------------
// First stages

UBArray LoadUBSuppliers() {
    Database db = DBEngine::OpenDatabase(gDbPath);
    qint64 total = 0;
    {
        Recordset rs =
            db.OpenRecordset(QStringLiteral("SELECT count(ItemID) as NumItems from tblStockItems"));
        if (!rs.Eof())
            total = rs.Fields(QStringLiteral("NumItems")).Long();
    }
    // Item links per supplier, read in one pass instead of one count per supplier.
    QHash<qint64, qint64> links;
    {
        Recordset rs = db.OpenRecordset(
            QStringLiteral("SELECT SupplierID, count(ItemID) as NumItems FROM tblItemSupplier "
                           "WHERE SupplierID IS NOT NULL GROUP BY SupplierID"));
        for (; !rs.Eof(); rs.MoveNext())
            links.insert(rs.Fields(0).Long(), rs.Fields(1).Long());
    }
    struct Sup {
        QVariant id;
        QString name, code;
        qint64 items;
    };
    QList<Sup> sups;
    {
        Recordset rs =
            db.OpenRecordset(QStringLiteral("SELECT * from tblSupAddresses ORDER BY CoName"));
        const int fId = rs.FieldIndex(QStringLiteral("AddID"));
        const int fName = rs.FieldIndex(QStringLiteral("CoName"));
        const int fCode = rs.FieldIndex(QStringLiteral("ShortNm"));
        for (; !rs.Eof(); rs.MoveNext()) {
            const Field id = rs.Fields(fId);
            const qint64 n = id.IsNull() ? 0 : links.value(id.Long(), 0);
            sups << Sup{id.Value(), rs.Fields(fName).Text(), rs.Fields(fCode).Text(), n};
            total -= n;
        }
    }
    UBArray data(int(UBSupplierColumns().size()), int(sups.size()) + 1);
    data(1, 1) = 0;
    data(2, 1) = QStringLiteral("No Supplier");
    data(3, 1) = QStringLiteral("NONE");
    data(4, 1) = total;
    for (int i = 0; i < sups.size(); ++i) {
        data(1, i + 2) = sups[i].id;
        data(2, i + 2) = sups[i].name;
        data(3, i + 2) = sups[i].code;
        data(4, i + 2) = sups[i].items;
    }
    return data;
}

UBArray LoadUBCategories() {
    Database db = DBEngine::OpenDatabase(gDbPath);
    // Every category with its count in one pass. A missing category counts as the empty one,
    // as the comparison with '' + category would.
    Recordset rs = db.OpenRecordset(
        QStringLiteral("SELECT Category, count(ItemID) as NumItems FROM tblStockItems "
                       "GROUP BY Category ORDER BY Category"));
    struct Cat {
        bool isNull;
        QString name;
        qint64 items;
    };
    QList<Cat> cats;
    qint64 emptyCount = 0;
    for (; !rs.Eof(); rs.MoveNext()) {
        const Field c = rs.Fields(0);
        Cat cat{c.IsNull(), c.Text(), rs.Fields(1).Long()};
        if (!cat.isNull && cat.name.isEmpty())
            emptyCount = cat.items;
        cats << cat;
    }
    UBArray data(int(UBCategoryColumns().size()), int(cats.size()));
    for (int i = 0; i < cats.size(); ++i) {
        data(1, i + 1) = cats[i].name;
        data(2, i + 1) = cats[i].isNull ? emptyCount : cats[i].items;
    }
    return data;
}

// ---------------------------------------------------------------------------------------------
// Comments and edits

QString ItemCommentText(qint32 itemID) {
    Database db = DBEngine::OpenDatabase(gDbPath);
    Recordset rs = db.OpenRecordset(QStringLiteral("SELECT Comment FROM tblItemComments ") +
                                    QStringLiteral(" WHERE StockID = ") + QString::number(itemID));
    if (rs.Eof())
        return QStringLiteral("\nThis item has no comments");
    return rs.Fields(QStringLiteral("Comment")).Text();
}

namespace {
bool isNumberText(const QVariant& v) {
    if (!v.isValid() || v.isNull())
        return true;
    switch (v.typeId()) {
    case QMetaType::Double:
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::UInt:
    case QMetaType::ULongLong:
        return true;
    default:
        break;
    }
    const QString t = v.toString().trimmed();
    if (t.isEmpty())
        return true;
    bool ok = false;
    QLocale::c().toDouble(t, &ok);
    if (!ok)
        QLocale().toDouble(t, &ok);
    return ok;
}
} // namespace

bool UBCopyRowBack(UBArray& data, int record, const QVector<QVariant>& values) {
    if (record < 1 || record > data.Rows())
        return false;
    const auto& columns = UBItemColumns();
    if (data.Columns() == columns.size()) {
        for (int c = 1; c <= qMin(int(values.size()), data.Columns()); ++c) {
            const bool numeric = columns[c - 1].rightAligned || c == 1 ||
                                 columns[c - 1].key == QLatin1String("BuyNow") ||
                                 !columns[c - 1].mask.isEmpty();
            if (numeric && !isNumberText(values[c - 1]))
                return false;
        }
    }
    for (int c = 1; c <= qMin(int(values.size()), data.Columns()); ++c)
        data(c, record) = values[c - 1];
    return true;
}

QString UBEditFailureText() {
    return QStringLiteral("The Database could not be updated. Maybe the data was invalid\n") +
           QStringLiteral("The data must be numerical without any currency symbols and the "
                          "decimal point must be a FullStop. if you're sure the data is correct "
                          "then some unexpected database error occured and the row change could "
                          "not be saved.");
}

QString UBEditFailureTitle() {
    return QStringLiteral("DataAccess error");
}
