#include "inventory/PartNumberOrder.h"

#include "foundation/DbEngine.h"

#include <algorithm>
#include <cstring>

bool FirstRowPerPartNumber::Take(QByteArrayView partNoUtf8) {
    if (mAny && QByteArrayView(mLast) == partNoUtf8)
        return false;
    mAny = true;
    mLast.resize(partNoUtf8.size()); // keeps the buffer of the last one
    if (!partNoUtf8.isEmpty())
        std::memcpy(mLast.data(), partNoUtf8.data(), size_t(partNoUtf8.size()));
    return true;
}

PrimeMark PrimeMark::Of(const Field& field) {
    PrimeMark m;
    switch (field.Type()) {
    case FieldType::Null:
        break;
    case FieldType::Long:
    case FieldType::Double:
        m.kind = Number;
        m.number = field.Double();
        break;
    default:
        m.kind = Text;
        m.text = field.Utf8().toByteArray();
        break;
    }
    return m;
}

void PartNumberOrder::Reserve(qsizetype items, qsizetype rows) {
    mItems.reserve(size_t(items));
    mRows.reserve(size_t(rows));
}

void PartNumberOrder::AddItem(QByteArrayView partNoUtf8, bool isNull) {
    const auto at = quint32(mPlain.size());
    mPlain.append(partNoUtf8);
    mFolded.append(partNoUtf8);
    // The part-number column compares without case: only A to Z are folded.
    for (char* c = mFolded.data() + at; c != mFolded.data() + mFolded.size(); ++c)
        if (*c >= 'A' && *c <= 'Z')
            *c = char(*c - 'A' + 'a');
    mItems.push_back({at, quint32(partNoUtf8.size()), isNull, int(mRows.size())});
}

void PartNumberOrder::AddRow(PrimeMark prime) {
    Row r{int(mItems.size()) - 1, prime.kind, prime.number, -1};
    if (prime.kind == PrimeMark::Text) {
        r.text = int(mPrimeTexts.size());
        mPrimeTexts.push_back(std::move(prime.text));
    }
    mRows.push_back(r);
}

QByteArrayView PartNumberOrder::plain(const Item& it) const {
    return QByteArrayView(mPlain.constData() + it.at, it.size);
}

QByteArrayView PartNumberOrder::folded(const Item& it) const {
    return QByteArrayView(mFolded.constData() + it.at, it.size);
}

namespace {
// Bytes compared unsigned, a shorter text first when it is the start of the longer.
int compareBytes(QByteArrayView a, QByteArrayView b) {
    const qsizetype n = std::min(a.size(), b.size());
    const int c = n ? std::memcmp(a.data(), b.data(), size_t(n)) : 0;
    if (c != 0)
        return c;
    return a.size() < b.size() ? -1 : (a.size() > b.size() ? 1 : 0);
}
} // namespace

bool PartNumberOrder::itemLess(int a, int b) const {
    const Item& x = mItems[size_t(a)];
    const Item& y = mItems[size_t(b)];
    if (x.isNull != y.isNull)
        return x.isNull;
    const int c = compareBytes(folded(x), folded(y));
    return c != 0 ? c < 0 : a < b;
}

bool PartNumberOrder::sameKey(int a, int b) const {
    const Item& x = mItems[size_t(a)];
    const Item& y = mItems[size_t(b)];
    return x.isNull == y.isNull && folded(x) == folded(y);
}

bool PartNumberOrder::primeLess(int a, int b) const {
    const Row& x = mRows[size_t(a)];
    const Row& y = mRows[size_t(b)];
    if (x.kind != y.kind)
        return x.kind < y.kind;
    if (x.kind == PrimeMark::Number)
        return x.number < y.number;
    if (x.kind == PrimeMark::Text)
        return compareBytes(mPrimeTexts[size_t(x.text)], mPrimeTexts[size_t(y.text)]) < 0;
    return false;
}

int PartNumberOrder::endRow(int item) const {
    return size_t(item) + 1 < mItems.size() ? mItems[size_t(item) + 1].firstRow : int(mRows.size());
}

std::vector<int> PartNumberOrder::FirstRows() const {
    // Each item sorts by its first sixteen folded bytes as two numbers (a missing part number
    // below every text), and by the rest of its bytes only where those are equal.
    struct Key {
        quint64 head[2];
        bool isNull;
        int item;
    };
    std::vector<Key> keys(mItems.size());
    for (size_t i = 0; i < mItems.size(); ++i) {
        const QByteArrayView f = folded(mItems[i]);
        Key& k = keys[i];
        for (int w = 0; w < 2; ++w) {
            quint64 part = 0;
            for (qsizetype b = w * 8; b < w * 8 + 8; ++b)
                part = (part << 8) | (b < f.size() ? quint8(f[b]) : 0u);
            k.head[w] = part;
        }
        k.isNull = mItems[i].isNull;
        k.item = int(i);
    }
    std::sort(keys.begin(), keys.end(), [this](const Key& a, const Key& b) {
        if (a.isNull != b.isNull)
            return a.isNull;
        if (a.head[0] != b.head[0])
            return a.head[0] < b.head[0];
        if (a.head[1] != b.head[1])
            return a.head[1] < b.head[1];
        return itemLess(a.item, b.item);
    });
    std::vector<int> items(keys.size());
    for (size_t i = 0; i < keys.size(); ++i)
        items[i] = keys[i].item;

    FirstRowPerPartNumber walk;
    std::vector<int> taken;
    taken.reserve(mItems.size());
    std::vector<int> group;
    for (size_t i = 0; i < items.size();) {
        size_t j = i + 1;
        while (j < items.size() && sameKey(items[i], items[j]))
            ++j;
        if (j == i + 1) {
            // One item: its rows share its part number, so only its first row in order counts.
            const int item = items[i];
            int best = -1;
            for (int r = mItems[size_t(item)].firstRow; r < endRow(item); ++r)
                if (best < 0 || primeLess(r, best))
                    best = r;
            if (best >= 0 && walk.Take(plain(mItems[size_t(item)])))
                taken.push_back(best);
        } else {
            // Items whose part numbers differ only in case, or not at all: their rows interleave
            // by prime mark, and each change of the text takes a row.
            group.clear();
            for (size_t k = i; k < j; ++k)
                for (int r = mItems[size_t(items[k])].firstRow; r < endRow(items[k]); ++r)
                    group.push_back(r);
            std::stable_sort(group.begin(), group.end(),
                             [this](int a, int b) { return primeLess(a, b); });
            for (int r : group)
                if (walk.Take(plain(mItems[size_t(mRows[size_t(r)].item)])))
                    taken.push_back(r);
        }
        i = j;
    }
    return taken;
}

std::vector<int> PartNumberOrder::FirstRowsAsAdded() const {
    FirstRowPerPartNumber walk;
    std::vector<int> taken;
    for (int r = 0; r < int(mRows.size()); ++r)
        if (walk.Take(plain(mItems[size_t(mRows[size_t(r)].item)])))
            taken.push_back(r);
    return taken;
}
