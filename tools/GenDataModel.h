// The generator's model of a business in memory, shared by the stage that builds it
// (GenData.cpp) and the stage that writes it (GenDataWrite.cpp). Not for use elsewhere.
#pragma once

#include "foundation/Clock.h"
#include "tools/GenData.h"

#include <QDate>
#include <QString>
#include <QStringList>
#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

class Database;

namespace gendata {

// ---------------------------------------------------------------- randomness
// mt19937's output sequence is fixed by the C++ standard; the std distributions are not, so the
// mapping from raw numbers to ranges is done here. Each stage draws from its own stream, so a
// change in one stage leaves the rows of the others as they were.
class Rng {
public:
    Rng(quint32 seed, quint32 stream)
        : mGen(std::mt19937::result_type(seed * 2654435761u ^
                                         (stream * 0x9E3779B9u + 0x7F4A7C15u))) {}
    int below(int n) { return n <= 1 ? 0 : int((quint64(mGen()) * quint32(n)) >> 32); }
    int range(int lo, int hi) { return hi <= lo ? lo : lo + below(hi - lo + 1); }
    bool chance(int percent) { return below(100) < percent; }
    template <size_t N> const char* pick(const char* const (&list)[N]) {
        return list[below(int(N))];
    }
    QString digits(int count) {
        QString s;
        for (int i = 0; i < count; ++i)
            s += QChar(u'0' + below(10));
        return s;
    }
    QString letters(int count) {
        QString s;
        for (int i = 0; i < count; ++i)
            s += QChar(u'A' + below(26));
        return s;
    }

private:
    std::mt19937 mGen;
};

enum Stream : quint32 {
    SAddresses = 1,
    SItems,
    SSuppliers,
    SComments,
    SPurchasing,
    SSales,
    SAdjustments,
    SWalk,
    SBasket,
    SLinks,
    SUsedIn,
    SAllocations
};

inline double round2(double v) {
    return std::round(v * 100.0) / 100.0;
}
inline double round5(double v) {
    return std::round(v * 100000.0) / 100000.0;
}

inline QString zeroPad(qint64 v, int width) {
    return QString::number(v).rightJustified(width, QLatin1Char('0'));
}

// ---------------------------------------------------------------- dates
// Day 0 is ten years before the anchor day; texts are kept for every day used.
class Days {
public:
    Days(const QDate& today) : mStart(today.addYears(-10)), mSpan(int(mStart.daysTo(today))) {
        mText.reserve(size_t(mSpan + 121));
        for (int d = 0; d <= mSpan + 120; ++d)
            mText.push_back(mStart.addDays(d).toString(Qt::ISODate));
    }
    int span() const { return mSpan; } // the anchor day
    const QString& text(int day) const { return mText[size_t(std::clamp(day, 0, mSpan + 120))]; }

private:
    QDate mStart;
    int mSpan;
    std::vector<QString> mText;
};

// ---------------------------------------------------------------- the model in memory
struct Address {
    QString coName, add1, add2, add3, add4, pcode, contact, tel, fax, email, shortNm;
    double discount = 0;
};

struct Item {
    QString pno, name, desc, category, location;
    double sellAt = 0, trigger = 0, qty = 0, onOrder = 0;
    int allowDiscount = 0, assy = 0, buyNow = 0;
    int createdDay = 0;
    int primeSupplier = 0; // AddID of the prime supplier, 0 when none
};

struct ItemSupplier {
    int item;
    int supplier; // 0 the no-supplier row
    QString pno;
    double minQty, price;
    int prime;
    bool unsaved; // the row a new item gets before its first save: no price, no quantity
};

struct PurchaseOrder {
    int day;
    int supplier;
    QString ref;
};

struct PORow {
    int poid;
    int item;
    QString supPNo;
    double qty, price;
    int schedDay; // -1: no date
    double received = 0;
};

struct Delivery { // one booking-in of an order, shared by its rows
    QString advice, trn;
    int poid;
};

struct CustOrder {
    int day;
    int customer;
    QString ref;
    double discount;
    int firstRow = 0, rowCount = 0;
};

struct CustRow {
    int order;
    int item;
    double qty, shipped = 0, gross, net;
};

struct Invoice {
    int order, seq, day;
    double delivery = 0, taxRate = 0, tax = 0;
    int firstDetail = 0, detailCount = 0;
};

struct DespRow {
    int row; // index into the customer order rows
    double qty, price;
};

enum HistKind : quint8 { HIssue, HReturn, HAdjPlus, HAdjMinus, HRx, HShip };
const char* const kHistType[] = {"ISSUE", "RETURN", "ADJ(+)", "ADJ(-)", "RX", "SHIP"};

struct Hist {
    int stock;
    int day;
    int seq; // creation order; the opening row of an item sorts first on its day
    quint8 kind;
    int a; // RX: PODetail RowID; SHIP: order; adjustments: text index (-1 opening stock)
    int b; // RX: delivery index; SHIP: despatch sequence; adjustments: reference number or 0
    double qty;
};

class Generator {
public:
    Generator(const GenDataOptions& o)
        : mOpt(o), mScale(ScaleFor(o.items)), mDays(o.today.isValid() ? o.today : Today()) {}

    void build();
    void write(Database& db, GenDataCounts& counts);
    // The text of an adjustment row from its index (-1 the opening stock row).
    QString adjustText(int index) const;

private:
    void stage(const QString& name) {
        if (mOpt.progress)
            mOpt.progress(name);
    }
    Rng rng(Stream s) const { return Rng(mOpt.seed, s); }
    Address makeCompany(Rng& r, const QString& coName, bool withDiscount);
    void buildAddresses();
    void buildItems();
    void buildSuppliers();
    void buildPurchasing();
    void buildSales();
    void buildHistory();
    void buildBasket();
    int createdDay(int itemId) const;
    int maxItemAt(int day) const;
    std::vector<int> sortedDays(Rng& r, int count) const;
    std::vector<int> splitCount(Rng& r, int parts, int total, int lo, int hi) const;

    GenDataOptions mOpt;
    GenDataScale mScale;
    Days mDays;

    std::vector<Address> mSuppliers, mCustomers, mLocations, mMisc;
    std::vector<QString> mCategoryNames, mBins;
    std::vector<Item> mItems; // index = ItemID - 1
    std::vector<ItemSupplier> mItemSuppliers;
    std::vector<std::vector<int>> mSupplierItems; // per AddID: item ids, ascending
    std::vector<QString> mComments;               // per item, empty for none
    std::vector<PurchaseOrder> mOrders;           // index = POID - 1
    std::vector<PORow> mPORows;                   // index = RowID - 1
    std::vector<Delivery> mDeliveries;
    std::vector<CustOrder> mCustOrders; // index = CustBasketID - 1
    std::vector<CustRow> mCustRows;     // index = RowID - 1
    std::vector<Invoice> mInvoices;     // in DespID order once built
    std::vector<DespRow> mDespRows;
    std::vector<Hist> mHistory;
    struct BasketRow {
        int item;
        double reqQty;
        int delDay; // -1 none written, -2 the no-date value
        int orderYN;
    };
    std::vector<BasketRow> mBasket;
    int mSeq = 0;
};

} // namespace gendata
