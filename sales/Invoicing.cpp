#include "sales/Invoicing.h"

#include "foundation/Clock.h"
#include "foundation/DbEngine.h"
#include "foundation/Dialect.h"
#include "foundation/Globals.h"
#include "foundation/Helpers.h"
#include "foundation/MsgBox.h"
#include "sales/CustOrder.h"
#include "sales/CustOrderSave.h"

namespace {
bool isInvoiceMode(quint8 mode) {
    return mode == OrderMode::InvoiceOrder || mode == OrderMode::SavedInvoice;
}

QString despatchInsert(const CustOrderSheet& sheet, qint32 orderNo, qint32 seqNo,
                       qint32 invoiceNo) {
    const QString today = SqlDateLiteral(Today());
    // Tax and delivery go in as the boxes show them, rounded to two places.
    return QStringLiteral("INSERT INTO tblDespatch (CustOrderID, DespSeqNo, DespNoteText, "
                          "DespFreeText, DespDate, Invoiced, TotalTax, Delivery, InvoiceNo, "
                          "TaxRate ) VALUES  (") +
           QString::number(orderNo) + QLatin1Char(',') + QString::number(seqNo) +
           QStringLiteral(",'POS','',") + today + QLatin1Char(',') + today + QLatin1Char(',') +
           SqlNumber(sheet.vat, kMoneyMask) + QLatin1Char(',') +
           SqlNumber(sheet.delivery, kMoneyMask) + QLatin1Char(',') + QString::number(invoiceNo) +
           QLatin1Char(',') + SqlValue(sheet.tax1Rate) + QLatin1Char(')');
}

// The newest despatch key, 0 when there is none (keys start at 1). Another workstation's despatch
// written in the meantime is newer: its key is the one read.
qint64 newestDespID(Database& db) {
    Recordset rs = db.OpenRecordset(
        QStringLiteral("SELECT DespID FROM tblDespatch ORDER BY DespID Desc") + FirstRowOnly());
    return rs.Eof() ? 0 : rs.Fields(0).Long();
}

// What one invoiced row writes after its order row: the despatch row, the stock taken out and
// the "SHIP" history row. `qty` and `sell` are SQL text.
void writeDespatchRow(Database& db, qint64 despID, const QString& qty, const QString& stock,
                      const QString& rowKey, const QString& sell, const QString& shipRef) {
    db.Execute(QStringLiteral("INSERT INTO tblDespDetail  ( DespID, DespQty, DespStockID, "
                              "OrderDetailRowID, SellAtPrice ) VALUES  (") +
               QString::number(despID) + QLatin1Char(',') + qty + QLatin1Char(',') + stock +
               QLatin1Char(',') + rowKey + QLatin1Char(',') + sell + QLatin1Char(')'));
    db.Execute(QStringLiteral("UPDATE tblStockItems SET Qty = Qty - ") + qty +
               QStringLiteral(" WHERE ItemID = ") + stock);
    db.Execute(QStringLiteral("INSERT INTO tblItemHistory (    StockID,             HistDate,    "
                              "           HistType,  HistID, HistRef,              HistQty,     "
                              "HistText) VALUES (") +
               stock + QLatin1Char(',') + SqlDateLiteral(Today()) + QStringLiteral(",'SHIP',0,") +
               SqlText(shipRef) + QLatin1Char(',') + qty + QStringLiteral(",'POS');"));
}
} // namespace

qint32 SettleInvoiceNumber(CustOrderSheet& sheet) {
    const qint32 next = NextInvoiceNo();
    const double typed = Val(sheet.invoiceNo);
    // A typed number may move the sequence up, never back over numbers in use.
    if (typed > next)
        return qint32(typed);
    sheet.invoiceNo = Format(next, QStringLiteral("0000"));
    return next;
}

bool ValidateInvoiceQuantities(const CustOrderSheet& sheet) {
    QString lines;
    for (const OrderRow& row : sheet.rows) {
        const double most = sheet.mode == OrderMode::SavedInvoice
                                ? ParseLocaleNumber(row[OrderCol::OrderQty]) -
                                      ParseLocaleNumber(row[OrderCol::Done])
                                : ParseLocaleNumber(row[OrderCol::ToDo]);
        if (ParseLocaleNumber(row[OrderCol::InvoiceQty]) > most)
            lines += QStringLiteral("\nThe maximum Invoice Qty of row ") + row[OrderCol::Item] +
                     QStringLiteral(" is ") + PlainNumberText(most);
    }
    if (lines.isEmpty())
        return true;
    MsgBox(QStringLiteral("The invoice could not be saved. Total Invoice quantities, including "
                          "any from previous invoices, would exceed the original Order Qty\n\n") +
               lines,
           vbOKOnly | vbExclamation, QStringLiteral("Can't save"));
    return false;
}

bool InvoiceSavedOrder(CustOrderSheet& sheet) {
    const qint32 invoiceNo = SettleInvoiceNumber(sheet);
    const qint32 orderNo = qint32(Val(sheet.custBasketID));
    // The delivery reference ends in the sequence; an empty box gives 1.
    const qint32 seqNo = qint32(Val((QStringLiteral("001") + sheet.custShipID).right(3)));

    Database db = DBEngine::OpenDatabase(gDbPath);
    db.Execute(despatchInsert(sheet, orderNo, seqNo, invoiceNo));
    if (db.RecordsAffected() != 1) {
        MsgBox(QStringLiteral("An unexpected error occured - The new record could not be created"),
               vbOKOnly, QString());
        return false;
    }
    const qint64 despID = newestDespID(db);
    if (despID == 0)
        return false;

    // The header stands on its own; the rows go in together or not at all.
    db.BeginTrans();
    for (const OrderRow& row : sheet.rows) {
        const double inv = ParseLocaleNumber(row[OrderCol::InvoiceQty]);
        if (!(inv > 0))
            continue;
        const QString qty = SqlNumber(inv, kQtyMask);
        const QString key = SqlKey(row[OrderCol::RowID]);
        db.Execute(QStringLiteral("UPDATE tblCustOrderDetail SET ShippedQty = ShippedQty + ") +
                   qty + QStringLiteral(" WHERE RowID = ") + key);
        writeDespatchRow(db, despID, qty, SqlKey(row[OrderCol::StockID]), key,
                         SqlNumber(row[OrderCol::SellAt], kPriceMask), sheet.custShipID);
    }
    db.CommitTrans();
    return true;
}

void SaveAndInvoiceNewOrder(CustOrderSheet& sheet) {
    const qint32 orderNo = SettleOrderNumber(sheet);
    sheet.custShipID = sheet.custBasketID + QStringLiteral("-001");
    const qint32 invoiceNo = SettleInvoiceNumber(sheet);

    Database db = DBEngine::OpenDatabase(gDbPath);
    db.Execute(OrderHeaderInsert(sheet, orderNo));
    db.Execute(despatchInsert(sheet, orderNo, 1, invoiceNo));
    qint64 despID = 0;
    if (db.RecordsAffected() == 1)
        despID = newestDespID(db);

    const QString order = QString::number(orderNo);
    qint64 rowKey = 0; // the newest row of the order; kept from the row before when none is read
    for (OrderRow& row : sheet.rows) {
        // The documents print what was invoiced: all of it.
        row[OrderCol::InvoiceQty] = row[OrderCol::OrderQty];
        const double q = ParseLocaleNumber(row[OrderCol::OrderQty]);
        if (!(q > 0))
            continue;
        const QString qty = SqlNumber(q, kQtyMask);
        db.Execute(OrderRowInsert(row, orderNo, qty));
        if (db.RecordsAffected() == 1) {
            Recordset rs = db.OpenRecordset(
                QStringLiteral(
                    "SELECT RowID FROM tblCustOrderDetail  WHERE CustBasketDetailID = ") +
                order + QStringLiteral(" ORDER BY RowID Desc") + FirstRowOnly());
            if (!rs.Eof())
                rowKey = rs.Fields(0).Long();
        }
        writeDespatchRow(db, despID, qty, SqlKey(row[OrderCol::StockID]), QString::number(rowKey),
                         SqlNumber(row[OrderCol::SellAt], kPriceMask), sheet.custShipID);
    }
}

QString SavedInvoiceStatement(qint32 invoiceNo) {
    return QStringLiteral("SELECT *  FROM (tblDespatch INNER JOIN tblCustOrders ON "
                          "tblDespatch.CustOrderID = tblCustOrders.CustBasketID) INNER JOIN "
                          "tblCusAddresses ON tblCustOrders.CustID=tblCusAddresses.AddID WHERE "
                          "InvoiceNo=") +
           QString::number(invoiceNo);
}

QString InvoiceRowsStatement(qint64 despID) {
    // Rows of one despatch share its key: the row order breaks the tie, so that the rows come
    // back in the order they were written.
    return QStringLiteral("SELECT *  FROM (tblDespDetail INNER JOIN tblStockItems ON "
                          "tblDespDetail.DespStockID = tblStockItems.ItemID) INNER JOIN "
                          "tblCustOrderDetail ON tblDespDetail.OrderDetailRowID = "
                          "tblCustOrderDetail.RowID WHERE DespID = ") +
           QString::number(despID) +
           QStringLiteral(" AND DespQty > 0 ORDER BY DespID, tblDespDetail.rowid");
}

bool LoadSavedInvoice(CustOrderSheet& sheet, qint32 invoiceNo) {
    Database db = DBEngine::OpenDatabase(gDbPath);
    Recordset head = db.OpenRecordset(SavedInvoiceStatement(invoiceNo));
    if (head.Eof())
        return false;
    const qint64 despID = head.Fields(QStringLiteral("DespID")).Long();
    // The boxes come before the rows, so that the order's discount reprices nothing.
    ShowOrderHeader(sheet, head);
    sheet.custShipID =
        sheet.custBasketID + QLatin1Char('-') +
        Format(double(head.Fields(QStringLiteral("DespSeqNo")).Long()), QStringLiteral("000"));
    sheet.invoiceNo =
        Format(double(head.Fields(QStringLiteral("InvoiceNo")).Long()), QStringLiteral("0000"));
    sheet.invoiceDate = ShowDate(head.Fields(QStringLiteral("Invoiced")).Value());
    sheet.invoiceDate = ShowDate(head.Fields(QStringLiteral("DespDate")).Value());
    SetDelivery(sheet, Format(head.Fields(QStringLiteral("Delivery")).Double(), kMoneyMask));
    SetVat(sheet, Format(head.Fields(QStringLiteral("TotalTax")).Double(), kMoneyMask));
    // Older invoices have no rate of their own: the current default stays.
    const Field rate = head.Fields(QStringLiteral("TaxRate"));
    if (!rate.IsNull()) {
        sheet.tax1Rate = Format(rate.Double(), kQtyMask);
        sheet.text3 = sheet.tax1Rate + QStringLiteral("% ");
    }
    head.Close();

    Recordset rs = db.OpenRecordset(InvoiceRowsStatement(despID));
    if (rs.Eof())
        MsgBox(QStringLiteral("This invoice doesn't seem to have any item/rows - It's empty"),
               vbInformation, QString());
    SetupOrderGrid(sheet);
    const OrderRowReader reader(rs);
    const int fSell = rs.FieldIndex(QStringLiteral("SellAtPrice"));
    const int fDesp = rs.FieldIndex(QStringLiteral("DespQty"));
    const int fRow = rs.FieldIndex(QStringLiteral("OrderDetailRowID"));
    for (; !rs.Eof(); rs.MoveNext()) {
        OrderRow row = reader.Read(int(sheet.rows.size()) + 1);
        // Rows written before invoices kept their own price show the order's.
        const double sell = rs.Fields(fSell).IsNull() ? reader.Net() : rs.Fields(fSell).Double();
        const double desp = rs.Fields(fDesp).Double();
        const double others = reader.Shipped() - desp;
        row[OrderCol::SellAt] = reader.price.Plain(sell);
        row[OrderCol::Done] = reader.qty.Plain(others);
        row[OrderCol::ToDo] = reader.qty.Plain(desp); // the quantity as saved
        row[OrderCol::InvoiceQty] = row[OrderCol::ToDo];
        row[OrderCol::Total] = reader.price.Plain(desp * sell);
        row[OrderCol::RowID] = rs.Fields(fRow).Text();
        sheet.rows.append(std::move(row));
        // Done shows once a row has a quantity on other invoices.
        if (others > 0)
            sheet.colWidth[size_t(OrderCol::Done)] = 600;
    }
    if (!sheet.rows.isEmpty()) {
        PaintEditableCells(sheet);
        // The tax is worked out afresh from the stored rate and today's tax-on-delivery tick.
        RecalcOrderTotals(sheet);
    }
    return true;
}

bool UpdateSavedInvoice(const CustOrderSheet& sheet) {
    if (sheet.mode != OrderMode::SavedInvoice)
        return false;
    const QString invoice = QString::number(qint64(Val(sheet.invoiceNo)));
    Database db = DBEngine::OpenDatabase(gDbPath);
    db.BeginTrans();
    db.Execute(OrderHeaderUpdate(sheet, qint32(Val(sheet.custBasketID))));
    db.Execute(QStringLiteral("UPDATE tblDespatch SET  TotalTax = ") + SqlValue(sheet.vat) +
               QStringLiteral(", Delivery = ") + SqlValue(sheet.delivery) +
               QStringLiteral(", TaxRate = ") + SqlValue(sheet.tax1Rate) +
               QStringLiteral(" WHERE InvoiceNo = ") + invoice);
    try {
        for (const OrderRow& row : sheet.rows) {
            const QString key = SqlKey(row[OrderCol::RowID]);
            const double oldQty = ParseLocaleNumber(row[OrderCol::ToDo]);
            const double newQty = ParseLocaleNumber(row[OrderCol::InvoiceQty]);
            // The despatch key is matched against the invoice number. The two agree on invoices
            // whose number was taken from their key, and wherever the two sequences run level;
            // elsewhere the despatch row keeps its price and quantity while the order row and
            // the stock below still move.
            db.Execute(QStringLiteral("UPDATE tblDespDetail SET SellAtPrice = ") +
                       SqlNumber(row[OrderCol::SellAt], kPriceMask) +
                       QStringLiteral(", DespQty = ") + SqlNumber(newQty, kQtyMask) +
                       QStringLiteral(" WHERE DespID = ") + invoice +
                       QStringLiteral(" AND OrderDetailRowID = ") + key);
            if (oldQty != newQty) {
                db.Execute(QStringLiteral("UPDATE tblCustOrderDetail SET ShippedQty = ShippedQty "
                                          "+ ") +
                           SqlNumber(newQty - oldQty, kQtyMask) +
                           QStringLiteral(" WHERE rowID = ") + key);
                db.Execute(QStringLiteral("UPDATE tblStockItems SET Qty = Qty + ") +
                           SqlNumber(oldQty - newQty, kQtyMask) +
                           QStringLiteral(" WHERE ItemID = ") + SqlKey(row[OrderCol::StockID]));
            }
        }
        db.CommitTrans();
    } catch (const DbError& e) {
        db.Rollback();
        MsgBox(QStringLiteral("The invoice could not be saved to the database. The error "
                              "message/text from the Windows database driver is shown below\n\n") +
                   QString::number(e.Number()) + QLatin1Char(' ') + e.Description() +
                   QStringLiteral("\n\nNothing was done - You can try to save the invoice again"),
               vbOKOnly | vbExclamation, QString());
        return false;
    }
    return true;
}

bool SaveInvoiceCommand(CustOrderSheet& sheet) {
    if (!isInvoiceMode(sheet.mode))
        return false;
    if (!ValidateInvoiceQuantities(sheet))
        return false;
    if (sheet.rows.isEmpty()) {
        MsgBox(QStringLiteral("Can't process an empty Invoice"), vbOKOnly | vbInformation,
               QStringLiteral("Order has no items"));
        return false;
    }
    const bool saved = sheet.mode == OrderMode::InvoiceOrder ? InvoiceSavedOrder(sheet)
                                                             : UpdateSavedInvoice(sheet);
    ShowProcessingBar();
    return saved;
}

bool InvoiceNewOrderCommand(CustOrderSheet& sheet) {
    if (sheet.mode != OrderMode::NewOrder)
        return false;
    if (sheet.rows.isEmpty()) {
        MsgBox(QStringLiteral("Can't process an empty invoice"), vbOKOnly | vbInformation,
               QStringLiteral("Order has no items"));
        return false;
    }
    SaveAndInvoiceNewOrder(sheet);
    return true;
}
