// The four documents of the customer order window: order copy, invoice, delivery note and packing
// note. Each is drawn from what the window shows (the order sheet) and never from the tables; the
// only thing read is the shared logo setting. Every position is a fraction of the paper.
#pragma once

#include "sales/CustOrder.h"

#include <QString>
#include <QStringList>

// The arguments of the printing panel's buttons.
namespace SalesDocumentKind {
inline const char* const Order = "Order";       // order copy: prices, OrderQty, totals
inline const char* const Invoice = "Invoice";   // ordered and invoiced quantities, prices, totals
inline const char* const Delivery = "Delivery"; // ordered and delivered quantities only
inline const char* const PickList = "PickList"; // the delivery note with stock locations
} // namespace SalesDocumentKind

// What the document needs besides the sheet: the company block as the main window loaded it
// (txtCoName, then the address lines Add1 to Add6, without telephone and fax) and the device name
// chosen on the panel (mSelectedPrinter; empty or unknown leaves the current printer).
struct SalesDocumentSource {
    QStringList company;
    QString printerName;
};

struct SalesDocumentResult {
    int copies = 0;   // copies sent to the printer
    QString logoPath; // the logo file painted on them; empty when none was
};

// Asks how many copies, then prints each copy as a job of its own on the chosen printer, at font
// size 10 with Copies 1 (both given back after each copy): the header with the logo, the company
// block, the address and the right-hand block of the kind, the table with one three-line block
// per row whose quantity is above 0, continuation sheets once a row ends at 80% of the page, and
// the notes and totals at the foot of the last sheet. A wrong answer to the question is told and
// nothing prints. A cancelled PDF file name prints nothing, says nothing and stops the copies.
// Printer errors reach the caller, except on the two texts that open a continuation sheet.
SalesDocumentResult PrintSalesDocument(const QString& kind, const CustOrderSheet& sheet,
                                       const SalesDocumentSource& source);

// The copies question of every document: the number of copies (1 to 100, a fraction cut), or 0
// when the answer was empty, cancelled or refused with its message.
int AskSalesDocumentCopies();
