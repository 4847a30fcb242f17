#include "purchasing/GoodsIn.h"

#include "foundation/Clock.h"
#include "foundation/DbEngine.h"
#include "foundation/Dialect.h"
#include "foundation/Globals.h"
#include "foundation/Helpers.h"
#include "foundation/MsgBox.h"
#include "foundation/Rights.h"
#include "inventory/OnOrder.h"
#include "purchasing/PurchasingCommon.h"

#include <QList>
#include <QPair>

namespace {

QString Text(const UBArray& a, int column, int row) {
    return a(column, row).toString();
}

// A date of the list as day/month/year: "00", "00" and the plain year joined by "/"; anything
// that is not a date as it stands.
QString DayMonthYear(const QVariant& value) {
    const QDate d =
        value.typeId() == QMetaType::QDate ? value.toDate() : ParseDateText(value.toString());
    if (!d.isValid())
        return value.toString();
    return QStringLiteral("%1/%2/%3")
        .arg(d.day(), 2, 10, QLatin1Char('0'))
        .arg(d.month(), 2, 10, QLatin1Char('0'))
        .arg(d.year());
}

// A stored date as ShowDate shows it, kept as the date itself so that the list need not read it
// back from text: a date from 2001 to 2039, else empty.
QVariant ShownDate(const Field& f) {
    const QDate d = ParseDateText(f.Text());
    if (!d.isValid() || d.year() <= 2000 || d.year() >= 2040)
        return QString();
    return d;
}

// Appends an empty row to a working array and returns its number.
int AddRow(GoodsInArray& a) {
    a.rows.SetRows(++a.rowCount);
    return a.rowCount;
}

} // namespace

GoodsInArray LoadOutstandingOrders() {
    Database db = DBEngine::OpenDatabase(gDbPath);
    Recordset rs = db.OpenRecordset(
        QStringLiteral("SELECT ") + QStringLiteral(" DISTINCT tblPOrders.POID,") +
        QStringLiteral(" tblPOrders.PONumber,") + QStringLiteral(" tblSupAddresses.CoName,") +
        QStringLiteral(" PODate,") + QStringLiteral(" tblSupAddresses.AddID") +
        QStringLiteral(" FROM ((tblPOrders") +
        QStringLiteral(" INNER JOIN tblPODetail ON tblPOrders.POID=tblPODetail.POID)") +
        QStringLiteral(" LEFT JOIN tblSupAddresses ON tblPOrders.POSupID=tblSupAddresses.AddID)") +
        QStringLiteral(" WHERE tblPODetail.POQty <> tblPODetail.PORecieved") +
        QStringLiteral(" ORDER BY tblSupAddresses.CoName, tblPOrders.POID"));
    GoodsInArray out;
    out.rows.Redim(GinListCol::Count, 0);
    while (!rs.Eof()) {
        const int r = AddRow(out);
        UBArray& row = out.rows;
        row(GinListCol::POID, r) = rs.Fields(0).Long();
        row(GinListCol::GRNNo, r) = QString();
        row(GinListCol::GRNDate, r) = QString();
        row(GinListCol::PONo, r) = rs.Fields(1).Text();
        row(GinListCol::PODate, r) = ShownDate(rs.Fields(3));
        row(GinListCol::SupName, r) = rs.Fields(2).Text();
        row(GinListCol::Loc, r) = QString();
        row(GinListCol::NSSup, r) = QString();
        // The "no supplier" rule reads a column that was set empty just above, so its text never
        // shows; the rule stays as it always was.
        if (!row(GinListCol::SupName, r).toString().isEmpty() &&
            !row(GinListCol::NSSup, r).toString().isEmpty())
            row(GinListCol::NSSup, r) = QStringLiteral("Includes NonStockItems");
        rs.MoveNext();
    }
    return out;
}

OrderListShown ShowOrderList(const GoodsInArray& orderList) {
    OrderListShown shown;
    const UBArray& from = orderList.rows;
    QList<int> kept;
    for (int r = 1; r <= orderList.rowCount; ++r)
        if (!Text(from, GinListCol::POID, r).isEmpty())
            kept << r;
    shown.list.rowCount = int(kept.size());
    shown.list.rows.Redim(GinListCol::Count, shown.list.rowCount);
    UBArray& to = shown.list.rows;
    for (int i = 0; i < kept.size(); ++i) {
        const int r = kept.at(i);
        for (int c = 1; c <= GinListCol::Count; ++c) {
            const QVariant v = from(c, r);
            if (c == GinListCol::POID)
                to(c, i + 1) =
                    QStringLiteral("%1").arg(qint64(Val(v.toString())), 4, 10, QLatin1Char('0'));
            else if (c == GinListCol::GRNDate || c == GinListCol::PODate)
                to(c, i + 1) = DayMonthYear(v);
            else
                to(c, i + 1) = v;
        }
        if (!Text(from, GinListCol::NSSup, r).isEmpty())
            shown.showNonStock = true;
    }
    return shown;
}

GoodsInArray LoadOrderRows(qint32 poid, bool showCompleted) {
    Database db = DBEngine::OpenDatabase(gDbPath);
    QString sql = QStringLiteral("SELECT * FROM ((tblPOrders") +
                  QStringLiteral(" INNER JOIN tblPODetail ON tblPOrders.POID = tblPODetail.POID)") +
                  QStringLiteral(" INNER JOIN tblStockItems ON "
                                 "tblPODetail.POStockID=tblStockItems.ItemID)") +
                  QStringLiteral(" WHERE tblPOrders.POID =") + QString::number(poid);
    if (!showCompleted)
        sql += QStringLiteral(" AND POQty<>PORecieved");
    // Rows keep their order in the array, so that a row's number (and the error number of a
    // failed booking) is always the same.
    sql += QStringLiteral(" ORDER BY tblPODetail.RowID");
    Recordset rs = db.OpenRecordset(sql);
    const NumberMask qty(kQtyMask);
    const NumberMask price(kPriceMask);
    GoodsInArray out;
    out.rows.Redim(GinCol::Count, 0);
    while (!rs.Eof()) {
        const double ordered = ParseLocaleNumber(rs.Fields(QStringLiteral("POQty")).Value());
        const double received = ParseLocaleNumber(rs.Fields(QStringLiteral("PORecieved")).Value());
        const int r = AddRow(out);
        UBArray& row = out.rows;
        row(GinCol::RowID, r) = rs.Fields(QStringLiteral("RowID")).Text();
        row(GinCol::PNo, r) = rs.Fields(QStringLiteral("MasterPNo")).Text();
        row(GinCol::PName, r) = rs.Fields(QStringLiteral("ItemName")).Text();
        row(GinCol::Desc, r) = rs.Fields(QStringLiteral("ItemDescription")).Text();
        row(GinCol::SupPNo, r) = rs.Fields(QStringLiteral("POSupPNo")).Text();
        row(GinCol::DelDate, r) = ShowDate(rs.Fields(QStringLiteral("POSchedDate")).Value());
        row(GinCol::AtPrice, r) =
            price.Plain(ParseLocaleNumber(rs.Fields(QStringLiteral("POPrice")).Value()));
        row(GinCol::OQty, r) = qty.Screen(ordered);
        row(GinCol::PQty, r) = qty.Screen(ordered - received);
        row(GinCol::AdvQty, r) = QString();
        row(GinCol::RXd, r) = QString();
        row(GinCol::StockID, r) = rs.Fields(QStringLiteral("POStockID")).Text();
        row(GinCol::NConf, r) = QString();
        rs.MoveNext();
    }
    return out;
}

QString ReceivedQtyText(const QVariant& typed) {
    return FormatNumber(typed, kQtyMask);
}

int ReceivedQtyKey(const QString& text, int keyCode) {
    if (keyCode == '-')
        return text.contains(QLatin1Char('-')) ? 0 : keyCode;
    return NumericKey(text, keyCode);
}

bool CommitGoodsInRow(GoodsInArray& rows, int record, const QVector<QVariant>& values) {
    if (record < 1 || record > rows.rowCount)
        return false;
    if (rows.rows(GinCol::NConf, record).toString() == QLatin1String("Yes"))
        return false;
    for (int c = 1; c <= GinCol::Count && c <= values.size(); ++c)
        rows.rows(c, record) =
            c == GinCol::RXd ? QVariant(ReceivedQtyText(values.at(c - 1))) : values.at(c - 1);
    return true;
}

int BookInGoods(BookInInput& in) {
    GoodsInArray none;
    GoodsInArray& grid = in.rows ? *in.rows : none;
    if (grid.rowCount < 1)
        return kBookInDone;
    UBArray& rows = grid.rows;
    const UBArray& held = rows;

    int step = 1;
    int rowBase = 0;
    // Rows this run marked as booked, with what NConf held before.
    QList<QPair<int, QVariant>> marked;
    Database db;
    try {
        db = DBEngine::OpenDatabase(gDbPath);
        step = 2;

        // The checks read the figures as they were loaded and typed.
        step = 3;
        bool anyReceived = false, anyOutstanding = false, anyOver = false;
        for (int r = 1; r <= grid.rowCount; ++r) {
            const double rx = ParseLocaleNumber(held(GinCol::RXd, r));
            const double outstanding = ParseLocaleNumber(held(GinCol::PQty, r));
            if (rx != 0)
                anyReceived = true;
            if (outstanding > 0)
                anyOutstanding = true;
            if (outstanding < rx)
                anyOver = true;
        }
        step = 5;
        if (!anyReceived) {
            MsgBox(QStringLiteral("There are no received quantities to process. The procedure was "
                                  "cancelled"),
                   vbInformation, QStringLiteral("Nothing to do"));
            return kBookInNothingDone;
        }
        if (!anyOutstanding) {
            step = 4;
            if (MsgBox(QStringLiteral("This Order seems to be completed already and has nothing "
                                      "outstanding") +
                           QStringLiteral("\n") +
                           QStringLiteral("Are you sure that you want to continue and receive "
                                          "more items?"),
                       vbYesNo + vbQuestion, QString()) != vbYes)
                return kBookInNothingDone;
        } else if (anyOver) {
            step = 4;
            if (MsgBox(QStringLiteral("There is at least one row where the Received Qty exceeds "
                                      "the OutStanding Qty.") +
                           QStringLiteral("\n") +
                           QStringLiteral("Are you sure that you want to continue?"),
                       vbYesNo + vbQuestion, QStringLiteral("Check Quantities")) != vbYes)
                return kBookInNothingDone;
        }
        step = 5;

        // One transaction for the whole booking, holding the write lock from its start: another
        // workstation booking at the same moment waits for it, and adds its quantities after.
        db.BeginTrans();
        const QString today = SqlDateLiteral(Today());
        const QString histText = QStringLiteral("Purchase Order: ") + in.poNo;
        for (int r = 1; r <= grid.rowCount; ++r) {
            rowBase = r * 1000;
            const QString typed = held(GinCol::RXd, r).toString();
            const double rx = ParseLocaleNumber(typed);
            // A booked row is passed over only when nothing is typed in it: a quantity still
            // standing in a booked row is booked again.
            if (!(held(GinCol::NConf, r).toString().trimmed() != QLatin1String("Yes") ||
                  !typed.trimmed().isEmpty()))
                continue;
            if (rx == 0)
                continue;
            const QString stockId =
                QString::number(qint64(Val(held(GinCol::StockID, r).toString())));
            const QString qty = SqlNumber(typed, kQtyMask);

            step = 13;
            db.Execute(QStringLiteral("UPDATE tblStockItems") + QStringLiteral(" SET Qty=Qty + ") +
                       qty + QStringLiteral(" WHERE ItemID=") + stockId);
            // An item deleted since the load: no history, and the order row stays as it was.
            if (db.RecordsAffected() >= 1) {
                const QString rowId =
                    QString::number(qint64(Val(held(GinCol::RowID, r).toString())));
                step = 14;
                db.Execute(QStringLiteral("INSERT INTO tblItemHistory ") +
                               QStringLiteral("(StockID, HistDate, HistType, HistID2, HistRef, "
                                              "HistTRN, HistQty, HistText) VALUES ") +
                               QStringLiteral("(") + stockId + QStringLiteral(",") + today +
                               QStringLiteral(", 'RX', ") + rowId + QStringLiteral(", ?, ?, ") +
                               qty + QStringLiteral(", ?)"),
                           {in.adviceNo, in.grnNo, histText});
                step = 21;
                db.Execute(QStringLiteral("UPDATE tblPODetail") +
                           QStringLiteral(" SET PORecieved=PORecieved+") + SqlNumber(rx, kQtyMask) +
                           QStringLiteral(" WHERE RowID=") + rowId);
                if (db.RecordsAffected() >= 1) {
                    step = 22;
                    marked.append({r, held(GinCol::NConf, r)});
                    rows(GinCol::NConf, r) = QStringLiteral("Yes");
                }
            }
            RefreshOnOrderQty(qint32(stockId.toLongLong()), &db);
        }
        step = 6;
        db.CommitTrans();
        step = 12;
        return kBookInDone;
    } catch (const DbError&) {
        try {
            if (db.IsOpen())
                db.Rollback();
            for (const auto& [r, before] : marked)
                rows(GinCol::NConf, r) = before;
            MsgBox(QStringLiteral("An error occured. The error Number is DQ-Gi-") +
                       QString::number(step + rowBase) + QStringLiteral("\n\n") +
                       QStringLiteral("The transaction was not committed. You can try again"),
                   vbInformation, QStringLiteral("Error"));
            return kBookInNothingDone;
        } catch (...) {
            return kBookInFailed;
        }
    }
}

int BookIn(BookInInput& in) {
    if (!CheckRight(Right::Purchasing))
        return kBookInStopped;
    if (in.grnNo.isEmpty() &&
        MsgBox(QStringLiteral("Do you wish to continue without a transaction reference number?"),
               vbYesNo + vbQuestion, QStringLiteral("TRN?")) != vbYes)
        return kBookInStopped;
    const int status = BookInGoods(in);
    if (status == kBookInNothingDone)
        MsgBox(QStringLiteral("Nothing was done."), vbInformation, QStringLiteral("Nothing done"));
    else if (status != kBookInDone)
        MsgBox(QStringLiteral("An unknown error occured"), vbOKOnly,
               QStringLiteral("Unknown error"));
    return status;
}
