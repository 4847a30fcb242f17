// The purchase order document, drawn on the printer by fractions of the paper.
#pragma once

#include <QString>
#include <QtGlobal>

// The device name chosen in a print frame for purchase orders (trimmed); the document goes to the
// first printer of the collection with this name, or to the current printer when none has it.
extern QString gPOPrinterName;

// What PrintPurchaseOrder returns.
enum : int {
    kPODocumentPrinted = 0, // the document went to the printer
    kPODocumentNothing = 1, // the order has no rows: "Nothing to print" was shown
    kPODocumentDropped = 2, // the PDF file name was cancelled: nothing printed, nothing said
};

// Prints order `POID`: company and supplier blocks, one block of three lines per row (by part
// number and schedule date), continuation sheets with a short header once a block ends past 85%
// of the paper, and the foot with the page count and the order value. With `AskDate` on and an
// order dated before today, asks whether to print today's date instead (the stored date stays).
// Every question comes before the first drawing.
int PrintPurchaseOrder(qint32 POID, bool AskDate);
