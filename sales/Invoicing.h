// Invoicing customer orders and changing saved invoices. An invoice is a despatch: one row of
// tblDespatch with its rows in tblDespDetail. Writing one lowers stock, raises ShippedQty on the
// order rows, writes "SHIP" history and fixes the tax, the delivery charge and the tax rate of
// the moment. Numbers (invoice number, despatch key, order row key) are read and then used with
// no lock: two workstations may arrive at the same number, and nothing stops them.
#pragma once

#include <QString>
#include <QtGlobal>

struct CustOrderSheet;

// The invoice number of an invoice about to be written: the next free number, or the number
// typed into txtInvoiceNo when that is higher. A lower one is replaced and the box rewritten
// through "0000".
qint32 SettleInvoiceNumber(CustOrderSheet& sheet);

// The quantity check of "Save / Print": a row's InvoiceQty may not be above To Do (mode 3) or
// Order less Done (mode 4). Shows one "Can't save" message naming every such row and returns
// false when there is any.
bool ValidateInvoiceQuantities(const CustOrderSheet& sheet);

// Invoices the saved order of the sheet (mode 3) for the InvoiceQty of its rows. The despatch
// header is written on its own, the rows inside one transaction; a row with InvoiceQty of 0 or
// below leaves no trace. False, with a message when the header was not written, when no
// despatch could be written. An engine error escapes: the header stands, the rows are undone.
bool InvoiceSavedOrder(CustOrderSheet& sheet);

// Saves the new order of the sheet (mode 1) and invoices all of it at once: the order header,
// the despatch header, and per row with an OrderQty above 0 the order row (already shipped), its
// despatch row, the stock and the history. Every statement stands on its own; nothing is
// checked. InvoiceQty of every row is set to its OrderQty, for the documents.
void SaveAndInvoiceNewOrder(CustOrderSheet& sheet);

// Fills the sheet (mode 4) from the saved invoice with that number: the customer and the header
// boxes, the invoice's own tax rate when it has one, and a row per despatch row with a quantity
// above 0. An invoice without such rows says so. False when no invoice has the number.
bool LoadSavedInvoice(CustOrderSheet& sheet, qint32 invoiceNo);

// Writes the changes of a saved invoice (mode 4 only; any other mode returns false): the order's
// reference and discount, the invoice's tax, delivery and rate, then per row its price and
// quantity, and where the quantity changed the order row's ShippedQty and the item's stock by
// the difference. One transaction: a failure from the rows on undoes it all and says so (false);
// a failure before the rows escapes.
bool UpdateSavedInvoice(const CustOrderSheet& sheet);

// "Save / Print" (Command19) in modes 3 and 4: the quantity check, the empty invoice, the routine
// of the mode and the processing bar. True when the routine wrote the invoice.
bool SaveInvoiceCommand(CustOrderSheet& sheet);
// "Save the Order Deliver and Invoice Now" (cmdInvoice) in mode 1: an empty order is refused
// with a message, any other is saved and invoiced. True when it was.
bool InvoiceNewOrderCommand(CustOrderSheet& sheet);

// The statements LoadSavedInvoice reads the invoice and its rows with.
QString SavedInvoiceStatement(qint32 invoiceNo);
QString InvoiceRowsStatement(qint64 despID);
