// What the purchasing procedures and documents share: the masks of quantities and prices, a
// stored number read for a mask, and the printer a document goes to.
#pragma once

#include "foundation/DbEngine.h"
#include "foundation/Helpers.h"
#include "foundation/Printer.h"

#include <QString>

// An ordered, received or wanted quantity, and a price, on screen and in statements.
inline const QString kQtyMask = QStringLiteral("0.0#");
inline const QString kPriceMask = QStringLiteral("0.00###");

// A stored number for a mask. A number the engine holds goes to the mask as it is (the mask
// writes 15 significant digits, which is what ParseLocaleNumber's round trip would keep); text
// through the locale's reading.
inline double StoredNumber(const Field& f) {
    return f.Type() == FieldType::Double || f.Type() == FieldType::Long
               ? f.Double()
               : ParseLocaleNumber(f.Value());
}

// The printer a document goes to: the first of the collection named `deviceName` (a print
// frame's choice), or the current printer when the name is empty or names none.
inline Printer& DocumentPrinter(const QString& deviceName) {
    if (!deviceName.isEmpty())
        SelectPrinter(deviceName);
    return CurrentPrinter();
}

// Sends the document drawn on `p`; false when it was dropped (its PDF file name was cancelled)
// and nothing printed.
inline bool SendDocument(Printer& p) {
    const bool dropped = p.DocumentDropped();
    p.EndDoc();
    return !dropped;
}
