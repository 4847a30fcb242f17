// Pieces that the printed documents share: the printer to offer in a print frame, the company
// block and the logo.
#pragma once

#include "foundation/Printer.h"

#include <QString>
#include <QStringList>

// The printers of the collection as a print frame lists them, and the entry to select: the
// printer named `wanted` when it is listed, otherwise the current printer, otherwise the first.
// `selected` is -1 when there is no printer at all.
struct PrinterOffer {
    QStringList names;
    int selected = -1;
};
PrinterOffer OfferPrinters(const QString& wanted = QString());

// "The system doesn't seem to have any available printer. ...", for information.
void ShowNoPrinterMessage();

// The company block of tblHome for a document: CoName, Add1 to Add6 and one line
// "Tel: <Tel1> Fax: <Fax1>"; eight lines, empty ones included. Empty lines when the table is
// empty.
QStringList DocumentCompanyBlock();

// Text starting at x on the current line; the line goes on (CurrentX moves past it).
void PrintAt(Printer& printer, double x, const QString& text);
// Text starting at x, ending the line (CurrentX back to 0, CurrentY one line down).
void PrintLineAt(Printer& printer, double x, const QString& text);

// The logo every workstation shares, loaded; invalid when no logo is set or the file can't be read
// as a picture (a document then goes without it, saying nothing).
Picture LoadSharedLogo();
