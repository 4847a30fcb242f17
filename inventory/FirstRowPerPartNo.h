// The rule by which the inventory list and the stock reports take one row per part number.
//
// Their statements order the rows by part number, an item bringing one row per supplier with the
// lowest PrimeSupplier flag first. A row is taken only when its part number, as text, differs
// from the one taken last: an item counts once, at its first row, and two items that share a part
// number count as one. The first row of a walk is always taken.
#pragma once

#include <QString>

class FirstRowPerPartNo {
public:
    // True when the row with this part number is to be taken; it then becomes the last taken.
    bool Take(const QString& partNo) {
        if (mAny && partNo == mLast)
            return false;
        mLast = partNo;
        mAny = true;
        return true;
    }

private:
    QString mLast;
    bool mAny = false;
};
