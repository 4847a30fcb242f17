// Saving the order sheet of a new order (mode 1) or a saved order (mode 2) into tblCustOrders and
// tblCustOrderDetail. Each statement stands on its own: there is no transaction, and an engine
// error leaves what was written before it.
#pragma once

#include <QtGlobal>

class QString;
struct CustOrderSheet;
struct OrderRow;

// The order number of a save. A new order takes the next free number, or the number typed into
// txtCustBasketID when that is higher; a lower one is replaced and the box rewritten through
// "0000". A saved order keeps its number.
qint32 SettleOrderNumber(CustOrderSheet& sheet);
// Writes the sheet as order N: the header (update, then insert when no header has the number),
// then each row in order: a quantity above 0 updates the row by its key or inserts a new one, a
// quantity of 0 or below deletes the row by its key.
void WriteCustomerOrder(const CustOrderSheet& sheet, qint32 orderNo);
// The statements of a save: the header update (reference and discount), the header insert (with
// today as the order date) and the insert of a row, whose ShippedQty is `shipped` as SQL text.
QString OrderHeaderUpdate(const CustOrderSheet& sheet, qint32 orderNo);
QString OrderHeaderInsert(const CustOrderSheet& sheet, qint32 orderNo);
QString OrderRowInsert(const OrderRow& row, qint32 orderNo, const QString& shipped);
// SettleOrderNumber and WriteCustomerOrder; returns the order number.
qint32 SaveCustomerOrder(CustOrderSheet& sheet);

// The checks of a saved order before it is saved: per row, an order quantity below the quantity
// already supplied, or else below zero. Shows one "Can't save" message listing them and returns
// false when there is any.
bool ValidateOrderQuantities(const CustOrderSheet& sheet);

// The save of the "Save and Print [Invoice Later]" button in modes 1 and 2: an empty order is
// refused with a message, a saved order is checked first. True when the order was saved.
bool SaveOrderCommand(CustOrderSheet& sheet);
