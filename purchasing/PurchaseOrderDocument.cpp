#include "purchasing/PurchaseOrderDocument.h"

#include "foundation/Clock.h"
#include "foundation/DbEngine.h"
#include "foundation/DocumentParts.h"
#include "foundation/Globals.h"
#include "foundation/Helpers.h"
#include "foundation/MsgBox.h"
#include "foundation/Printer.h"
#include "purchasing/PurchaseOrder.h"
#include "purchasing/PurchasingCommon.h"

#include <QList>
#include <algorithm>

QString gPOPrinterName;

namespace {

// One order row as the document prints it.
struct DocRow {
    QString partNo;
    QString description;
    QString supPNo;
    double price = 0;
    double qty = 0;
    QString schedDate;
};

// The marks of the page, in whole twips.
struct Marks {
    explicit Marks(const Printer& p) {
        const double w = p.Width();
        const double h = p.Height();
        topY = qRound(0.05 * h);
        colItem = qRound(0.05 * w);
        colPart = qRound(0.1 * w);
        colFoot = qRound(0.15 * w);
        colMid = qRound(0.38 * w);
        colCost = qRound(0.5 * w);
        colRight = qRound(0.55 * w);
        colQty = qRound(0.625 * w);
        colPage = qRound(0.8 * w);
        colTotal = qRound(0.83 * w);
        ruleEnd = qRound(0.9 * w);
        lineGap = qRound(h / 250.0);
        pageLimit = qRound(0.85 * h);
    }
    int topY, colItem, colPart, colFoot, colMid, colCost, colRight, colQty, colPage, colTotal,
        ruleEnd, lineGap, pageLimit;
};

// Drawing helpers on the positional model.
class Sheet {
public:
    Sheet(Printer& p, const Marks& m) : p(p), m(m) {}
    // Text at x on the current line; the line goes on.
    void At(double x, const QString& text) { PrintAt(p, x, text); }
    // Text at x, ending the line.
    void Line(double x, const QString& text) { PrintLineAt(p, x, text); }
    void EndLine() { p.Print(); }
    // A rule from ColItem to RuleEnd under the current line, and a gap under it.
    void Rule() {
        const double y = p.CurrentY() + m.lineGap;
        p.Line(m.colItem, y, m.ruleEnd, y);
        p.SetCurrentY(y + m.lineGap);
        p.SetCurrentX(0);
    }

    Printer& p;
    const Marks& m;
};

} // namespace

int PrintPurchaseOrder(qint32 POID, bool AskDate) {
    Printer& p = DocumentPrinter(gPOPrinterName);
    const QString id = QString::number(POID);

    // --- the data, and every question, before anything is drawn
    const QStringList company = DocumentCompanyBlock();
    QString poNumber, dateText;
    QStringList supplier;
    QList<DocRow> rows;
    {
        Database db = DBEngine::OpenDatabase(gDbPath);
        Recordset h = db.OpenRecordset(
            QStringLiteral("SELECT * FROM tblPOrders") +
            QStringLiteral(
                " INNER JOIN tblSupAddresses ON tblPOrders.POSupID=tblSupAddresses.AddID") +
            QStringLiteral(" WHERE POID=") + id);
        if (!h.Eof()) {
            poNumber = h.Fields(QStringLiteral("PONumber")).Text();
            dateText = ShowDate(h.Fields(QStringLiteral("PODate")).Value());
            supplier << h.Fields(QStringLiteral("CoName")).Text()
                     << h.Fields(QStringLiteral("Add1")).Text()
                     << h.Fields(QStringLiteral("Add2")).Text()
                     << h.Fields(QStringLiteral("Add3")).Text()
                     << h.Fields(QStringLiteral("Add4")).Text()
                     << h.Fields(QStringLiteral("PCode")).Text()
                     << QStringLiteral("Tel: ") + h.Fields(QStringLiteral("tel1")).Text() +
                            QStringLiteral(" Fax: ") + h.Fields(QStringLiteral("fax1")).Text()
                     << h.Fields(QStringLiteral("Contact1")).Text();
        }
        h.Close();
        const QString today = ShowDate(Today());
        if (dateText.isEmpty())
            dateText = today;
        if (AskDate && dateText != today) {
            if (MsgBox(QStringLiteral("The purchase order was first created on ") + dateText +
                           QStringLiteral("\n") +
                           QStringLiteral("Do you want to re-print with today's date instead ?"),
                       vbYesNo + vbQuestion, QStringLiteral("Use Today's date?")) == vbYes)
                dateText = today;
        }

        Recordset rs =
            db.OpenRecordset(QStringLiteral("SELECT * FROM tblPODetail") +
                             QStringLiteral(" INNER JOIN tblStockItems ON tblPODetail.POStockID = "
                                            "tblStockItems.ItemID") +
                             QStringLiteral(" WHERE tblPODetail.POID=") + id +
                             QStringLiteral(" ORDER BY MasterPNo, POSchedDate"));
        while (!rs.Eof()) {
            DocRow r;
            r.partNo = rs.Fields(QStringLiteral("MasterPNo")).Text();
            r.description = rs.Fields(QStringLiteral("ItemDescription")).Text();
            r.supPNo = rs.Fields(QStringLiteral("POSupPNo")).Text();
            r.price = ParseLocaleNumber(rs.Fields(QStringLiteral("POPrice")).Value());
            r.qty = ParseLocaleNumber(rs.Fields(QStringLiteral("POQty")).Value());
            r.schedDate = ShowDate(rs.Fields(QStringLiteral("POSchedDate")).Value());
            rows << r;
            rs.MoveNext();
        }
    }
    if (rows.isEmpty()) {
        MsgBox(QStringLiteral("There are no items connected with this order"), vbCritical,
               QStringLiteral("Nothing to print"));
        return kPODocumentNothing;
    }
    while (supplier.size() < 8)
        supplier << QString();

    const Marks m(p);
    Sheet s(p, m);
    const QString orderNo = POIDText(POID);

    // --- first page
    p.SetFontSize(10);
    p.SetCurrentY(m.topY);
    p.SetCurrentX(m.colPart);
    const Picture logo = LoadSharedLogo();
    if (logo.IsValid()) {
        // Above the company name, 350 twips high in its own proportions.
        const double height = 350;
        const double width = logo.Width * height / logo.Height;
        p.PaintPicture(logo, m.colItem, std::max(0.0, m.topY - height - m.lineGap), width, height);
    }
    p.SetFontSize(16);
    p.SetFontBold(true);
    s.Line(m.colItem, company.value(0));
    p.SetCurrentX(m.colPart);

    p.SetCurrentY(m.topY);
    s.Line(m.colRight, QStringLiteral("Purchase Order"));
    p.SetFontSize(14);
    s.Line(m.colRight, orderNo + QStringLiteral(" / ") + poNumber);
    s.Line(m.colRight, QStringLiteral("Date ") + dateText);

    s.Rule();
    p.SetFontSize(14);
    p.SetFontItalic(true);
    p.SetFontBold(true);
    const double blockTop = p.CurrentY();
    s.Line(m.colPart, QStringLiteral("To:"));
    for (const QString& line : supplier)
        s.Line(m.colPart, line);
    const double leftEnd = p.CurrentY();
    p.SetCurrentY(blockTop);
    s.Line(m.colRight, QStringLiteral("Ship To:"));
    for (const QString& line : company)
        s.Line(m.colRight, line);
    p.SetCurrentY(std::max(leftEnd, p.CurrentY()));

    for (int i = 0; i < 3; ++i)
        s.EndLine();
    p.SetFontSize(8);
    p.SetFontItalic(false);
    s.Rule();
    s.At(m.colItem, QStringLiteral("Item"));
    s.At(m.colPart, QStringLiteral("P/N"));
    s.At(m.colCost, QStringLiteral("Cost"));
    s.At(m.colQty, QStringLiteral("Order Qty"));
    s.At(m.colTotal, QStringLiteral("Total"));
    s.EndLine();
    s.At(m.colPart, QStringLiteral("Description"));
    s.At(m.colCost, QStringLiteral("Schedule"));
    s.EndLine();
    s.Rule();
    p.SetFontBold(false);

    // --- one block per row
    double orderTotal = 0;
    int page = 1;
    for (int i = 0; i < rows.size(); ++i) {
        const DocRow& r = rows.at(i);
        const double total = r.price * r.qty;
        const double y = p.CurrentY();
        p.SetFontSize(8);
        s.At(m.colItem, QString::number(i + 1));
        // The part number stands out a size larger than the rest of the block.
        p.SetFontSize(10);
        const double firstHeight = p.TextHeight();
        s.At(m.colPart, r.partNo);
        p.SetFontSize(8);
        s.At(m.colCost, Format(r.price, kPriceMask));
        s.At(m.colQty, FormatNumber(r.qty, kQtyMask));
        s.At(m.colTotal, Format(total, kPriceMask));

        p.SetCurrentY(y + firstHeight + m.lineGap);
        s.At(m.colPart, r.description);
        p.SetCurrentY(p.CurrentY() + p.TextHeight() + m.lineGap);
        if (!r.supPNo.isEmpty())
            s.At(m.colPart, QStringLiteral("Vendor  P/N ") + r.supPNo);
        s.At(m.colCost, r.schedDate);
        s.EndLine();
        s.Rule();
        orderTotal += total;

        if (p.CurrentY() > m.pageLimit && i + 1 < rows.size()) {
            s.EndLine();
            s.EndLine();
            const QString next = QStringLiteral("Continued on Page ") + QString::number(page + 1);
            s.Line(m.ruleEnd - p.TextWidth(next), next);
            p.NewPage();
            ++page;
            p.SetFontBold(false);
            p.SetCurrentY(m.topY);
            s.At(m.colItem, QStringLiteral("To:"));
            s.At(m.colPart, supplier.value(0));
            s.At(m.colPage, orderNo);
            s.EndLine();
            s.At(m.colItem, QStringLiteral("From"));
            s.At(m.colPart, company.value(0));
            s.At(m.colPage, QStringLiteral("Page: ") + QString::number(page));
            s.EndLine();
            s.Rule();
        }
    }

    // --- foot
    p.SetFontBold(true);
    s.EndLine();
    s.At(m.colTotal, Format(orderTotal, kPriceMask));
    s.At(m.colFoot, QStringLiteral("End of Purchase Order. Number of pages: ") +
                        QString::number(page) + QStringLiteral("      Total Order Value:"));
    s.EndLine();
    return SendDocument(p) ? kPODocumentPrinted : kPODocumentDropped;
}
