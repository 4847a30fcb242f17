#include "purchasing/GrnDocument.h"

#include "foundation/Helpers.h"
#include "foundation/Printer.h"
#include "purchasing/PurchasingCommon.h"

#include <QList>
#include <algorithm>
#include <cmath>

namespace {

const QString kHeaderFont = QStringLiteral("Arial");
const QString kBodyFont = QStringLiteral("Times New Roman");
constexpr double kFontSize = 12;
constexpr double kSmallestFit = 8; // a long value shrinks down to this size before it is cut

// The marks of the sheet, in whole twips.
struct Marks {
    explicit Marks(const Printer& p) {
        const double w = p.Width();
        const double h = p.Height();
        bodyEnd = qRound(0.8 * h);
        colItem = qRound(0.03 * w);
        colPart = qRound(0.08 * w);
        colDesc = qRound(0.275 * w);
        colMid = qRound(0.55 * w);
        colOrder = qRound(0.65 * w);
        colRx = qRound(0.75 * w);
        colNonConf = qRound(0.85 * w);
        rightEdge = qRound(0.9 * w);
        inset = qRound(0.007 * bodyEnd);
        top = qRound(0.05 * bodyEnd);
        bottom = qRound(0.82 * h);
    }
    int bodyEnd, colItem, colPart, colDesc, colMid, colOrder, colRx, colNonConf, rightEdge, inset,
        top, bottom;
};

// One row of the note.
struct NoteRow {
    QString partNo, name, ordered, received;
    bool booked = false;
};

class Note {
public:
    Note(Printer& p, const GrnInput& in, int sheets) : p(p), m(p), in(in), sheets(sheets) {
        // Line heights of the two faces at the note's size, for the fixed layout of the sheet.
        p.SetFontSize(kFontSize);
        p.SetFontName(kHeaderFont);
        headLine = p.TextHeight();
        p.SetFontName(kBodyFont);
        bodyLine = p.TextHeight();
        const double line = std::max(headLine, bodyLine);
        rule1 = m.top + 2 * m.inset + 3 * headLine;
        rule2 = rule1 + 2 * m.inset + 5 * line;
        rule3 = rule2 + 2 * m.inset + 2 * line;
        pitch = std::floor((m.bottom - rule3) / kGrnRowsPerSheet);
    }

    void StartSheet(int sheet) {
        p.SetFontName(kHeaderFont);
        p.SetFontBold(false);
        p.SetFontItalic(false);
        p.SetFontSize(10);
        p.SetFontSize(kFontSize);

        // The frame, the header lines and the ruled lines of the rows.
        p.Box(m.colItem, m.top, m.rightEdge, m.bottom);
        for (double y : {rule1, rule2, rule3})
            p.Line(m.colItem, y, m.rightEdge, y);
        for (int i = 1; i < kGrnRowsPerSheet; ++i)
            p.Line(m.colItem, RowTop(i), m.rightEdge, RowTop(i));

        const QString sheetText = QStringLiteral("Sheet:    ") + QString::number(sheet) +
                                  QStringLiteral("  of  ") + QString::number(sheets);
        const double y0 = m.top + m.inset;
        At(m.rightEdge - m.inset - p.TextWidth(sheetText), y0, sheetText);
        p.SetFontBold(true);
        const QString title = QStringLiteral("GOODS RECEIVED NOTE");
        At((m.colItem + m.rightEdge) / 2.0 - p.TextWidth(title) / 2, y0 + headLine, title);
        p.SetFontBold(false);
        const QString number = QStringLiteral("No. ") + in.grnNo;
        At(m.rightEdge - m.inset - p.TextWidth(number), y0 + 2 * headLine, number);

        // The receipt: labels with their values, then the order.
        p.SetFontName(kBodyFont);
        p.SetFontSize(kFontSize);
        const QStringList labels = {QStringLiteral("Date of receipt:"), QStringLiteral("Supplier:"),
                                    QStringLiteral("Supplier's advice note No:")};
        const QStringList values = {in.grnDate, in.supplier, in.adviceNo};
        double labelWidth = 0;
        for (const QString& l : labels)
            labelWidth = std::max(labelWidth, p.TextWidth(l));
        const double valueX = m.colItem + m.inset + labelWidth + 2 * m.inset;
        const double y1 = rule1 + m.inset;
        for (int i = 0; i < labels.size(); ++i) {
            At(m.colItem + m.inset, y1 + i * bodyLine, labels.at(i));
            Fit(valueX, y1 + i * bodyLine, values.at(i), m.rightEdge - m.inset);
        }
        Fit(m.colItem + m.inset, y1 + 3 * bodyLine, QStringLiteral("Our Order ID: ") + in.poid,
            m.rightEdge - m.inset);
        Fit(m.colItem + m.inset, y1 + 4 * bodyLine, QStringLiteral("Our Order Ref: ") + in.poNo,
            m.rightEdge - m.inset);

        // Column heads on two lines.
        const double h1 = rule2 + m.inset;
        const double h2 = h1 + bodyLine;
        At(m.colItem + m.inset, h1, QStringLiteral("Item"));
        At(m.colItem + m.inset, h2, QStringLiteral(" No."));
        At(m.colPart + m.inset, h1, QStringLiteral("Part No."));
        At(m.colDesc + m.inset, h1, QStringLiteral("Description"));
        At(m.colOrder + m.inset, h1, QStringLiteral(" Order"));
        At(m.colOrder + m.inset, h2, QStringLiteral("  Qty"));
        At(m.colRx + m.inset, h1, QStringLiteral("   Qty"));
        At(m.colRx + m.inset, h2, QStringLiteral("Received"));

        // Vertical rules at the column marks, from the heads to the foot of the grid.
        for (int x : {m.colPart, m.colDesc, m.colOrder, m.colRx, m.colNonConf})
            p.Line(x, rule2, x, m.bottom);
        line = 0;
    }

    void PrintRow(int number, const NoteRow& r) {
        const double y = RowTop(line) + (pitch - bodyLine) / 2;
        Fit(m.colItem + m.inset, y, QString::number(number), m.colPart - m.inset);
        Fit(m.colPart + m.inset, y, r.partNo, m.colDesc - m.inset);
        Fit(m.colDesc + m.inset, y, r.name, m.colOrder - m.inset);
        Fit(m.colOrder + m.inset, y, r.ordered, m.colRx - m.inset);
        Fit(m.colRx + m.inset, y, r.received, m.colNonConf - m.inset);
        if (!r.booked)
            At(m.colNonConf + m.inset, y, QStringLiteral("X"));
        ++line;
    }

    // A double rule under the last row printed, closing the note.
    void FootRule() {
        const double y = RowTop(line);
        p.Line(m.colItem, y - m.inset / 2.0, m.rightEdge, y - m.inset / 2.0);
        p.Line(m.colItem, y, m.rightEdge, y);
    }

private:
    double RowTop(int i) const { return rule3 + i * pitch; }

    void At(double x, double y, const QString& text) {
        p.SetCurrentX(x);
        p.SetCurrentY(y);
        p.PrintSameLine(text);
    }

    // A value that is too wide for its column shrinks, and past the smallest size is cut, so
    // that it never runs over the next rule.
    void Fit(double x, double y, const QString& text, double limit) {
        const double size = p.FontSize();
        const double room = limit - x;
        QString shown = text;
        while (p.TextWidth(shown) > room && p.FontSize() > kSmallestFit)
            p.SetFontSize(p.FontSize() - 1);
        while (!shown.isEmpty() && p.TextWidth(shown) > room)
            shown.chop(1);
        // A shrunk value stays centred on the line.
        At(x, y + (bodyLine - p.TextHeight()) / 2, shown);
        p.SetFontSize(size);
    }

    Printer& p;
    const Marks m;
    const GrnInput& in;
    const int sheets;
    double headLine = 0, bodyLine = 0, rule1 = 0, rule2 = 0, rule3 = 0, pitch = 0;
    int line = 0; // rows printed on the sheet
};

// A row is printed when "Advised" or "Received" holds a quantity.
bool HoldsQuantity(const QVariant& cell) {
    return ParseLocaleNumber(cell) != 0;
}

} // namespace

bool PrintGoodsReceivedNote(const GrnInput& in) {
    Printer& p = DocumentPrinter(in.printerName);

    GoodsInArray none;
    const GoodsInArray& grid = in.rows ? *in.rows : none;
    const UBArray& rows = grid.rows;

    int received = 0;
    QList<NoteRow> printed;
    for (int r = 1; r <= grid.rowCount; ++r) {
        if (Val(rows(GinCol::RXd, r).toString()) > 0)
            ++received;
        if (!HoldsQuantity(rows(GinCol::AdvQty, r)) && !HoldsQuantity(rows(GinCol::RXd, r)))
            continue;
        NoteRow n;
        n.partNo = rows(GinCol::PNo, r).toString();
        // The name, although the head reads "Description".
        n.name = rows(GinCol::PName, r).toString();
        n.ordered = rows(GinCol::OQty, r).toString();
        n.received = rows(GinCol::RXd, r).toString();
        n.booked = rows(GinCol::NConf, r).toString().trimmed() == QLatin1String("Yes");
        printed << n;
    }
    // The count takes the rows received by Val: a reversal (a negative quantity) prints but
    // adds no sheet.
    const int sheets = received / kGrnRowsPerSheet + (received % kGrnRowsPerSheet ? 1 : 0);

    // The printer keeps its font between documents: the note leaves it as it found it.
    const QString fontName = p.FontName();
    const double fontSize = p.FontSize();
    const bool bold = p.FontBold();
    const bool italic = p.FontItalic();

    Note note(p, in, sheets);
    int sheet = 0;
    if (printed.isEmpty())
        note.StartSheet(++sheet);
    for (int i = 0; i < printed.size(); ++i) {
        if (i % kGrnRowsPerSheet == 0) {
            if (i > 0)
                p.NewPage();
            note.StartSheet(++sheet);
        }
        note.PrintRow(i + 1, printed.at(i));
    }
    note.FootRule();
    const bool sent = SendDocument(p);

    p.SetFontName(fontName);
    p.SetFontSize(fontSize);
    p.SetFontBold(bold);
    p.SetFontItalic(italic);
    return sent;
}
