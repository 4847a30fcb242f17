// The goods received note: ruled sheets of 13 lines drawn from what the goods-in window holds
// after booking in. It reads nothing from the database.
#pragma once

#include "purchasing/GoodsIn.h"

#include <QString>

struct GrnInput {
    QString grnNo;                      // txtGRNno
    QString grnDate;                    // txtGRNDate
    QString supplier;                   // txtSupplier
    QString adviceNo;                   // txtAdviceNo
    QString poid;                       // txtPOID
    QString poNo;                       // txtPONo
    const GoodsInArray* rows = nullptr; // GridRows
    // GrnPrinterName: the note goes to the first printer with this name, or to the current
    // printer when none has it.
    QString printerName;
};

// The rows per sheet of the note.
constexpr int kGrnRowsPerSheet = 13;

// Prints the note: each row with a quantity in "Advised" or "Received", with its running number,
// part number, name, ordered and received quantities, and a cross on a row that was not booked.
// Returns false when the document was dropped (the PDF file name was cancelled).
bool PrintGoodsReceivedNote(const GrnInput& in);
