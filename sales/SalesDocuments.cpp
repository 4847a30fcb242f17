#include "sales/SalesDocuments.h"

#include "foundation/DbEngine.h"
#include "foundation/DocumentParts.h"
#include "foundation/Helpers.h"
#include "foundation/MsgBox.h"
#include "foundation/Printer.h"

#include <QFileInfo>
#include <QLocale>
#include <QRegularExpression>
#include <algorithm>
#include <cmath>

namespace {

// Whether a typed answer reads as a number, in the user's locale or with a decimal point.
bool ReadNumber(const QString& answer, double& value) {
    const QString text = answer.trimmed();
    bool ok = false;
    value = QLocale().toDouble(text, &ok);
    if (!ok)
        value = QLocale::c().toDouble(text, &ok);
    return ok && std::isfinite(value);
}

// The marks of the page, worked out once per copy and cut to whole twips.
struct Marks {
    explicit Marks(const Printer& p) : W(p.Width()), H(p.Height()) {
        const auto at = [this](double fraction) { return std::trunc(fraction * W); };
        xBoxLeft = at(0.05);
        xNotes = at(0.07);
        xText = at(0.12);
        xCustBoxRight = at(0.48);
        xOrdered = at(0.50);
        xQty = at(0.62);
        xPrice = at(0.72);
        xRight = at(0.85);
        xBoxRight = at(0.90);
    }
    double W, H;
    double xBoxLeft, xNotes, xText, xCustBoxRight, xOrdered, xQty, xPrice, xRight, xBoxRight;
};

class SalesDocument {
public:
    SalesDocument(Printer& printer, const QString& kind, bool pickList, const CustOrderSheet& sheet,
                  const QStringList& company)
        : p(printer), m(printer), mSheet(sheet), mCompany(company), mPickList(pickList),
          mOrder(kind == QLatin1String(SalesDocumentKind::Order)),
          mInvoice(kind == QLatin1String(SalesDocumentKind::Invoice)),
          mDelivery(kind == QLatin1String(SalesDocumentKind::Delivery)),
          mQtyMask(QStringLiteral("0.0#")), mPriceMask(QStringLiteral("0.00###")) {}

    // Draws the whole copy and ends the job. False when the job was dropped (the PDF file name
    // was cancelled).
    bool Print() {
        PrintHeader();
        PrintTableHeading();
        const int qtyColumn = mOrder ? OrderCol::OrderQty : OrderCol::InvoiceQty;
        for (const OrderRow& row : mSheet.rows) {
            const double qty = ParseLocaleNumber(row[qtyColumn]);
            if (qty <= 0)
                continue;
            PrintRow(row, qty);
            if (p.CurrentY() >= 0.80 * m.H)
                PrintContinuation();
        }
        return PrintFooter();
    }

    const QString& LogoPath() const { return mLogoPath; }

private:
    void At(double x, const QString& text) { PrintAt(p, x, text); }
    void LineAt(double x, const QString& text) { PrintLineAt(p, x, text); }
    // Text ending on the mark; the line goes on.
    void RightOn(double mark, const QString& text) { At(mark - p.TextWidth(text), text); }
    void EndLines(int count) {
        for (int i = 0; i < count; ++i)
            p.Print();
    }
    void Down(double by) { p.SetCurrentY(p.CurrentY() + by); }
    // The rule across the table at the current line.
    void Rule() {
        const double y = p.CurrentY();
        p.Line(m.xBoxLeft, y, m.xBoxRight, y);
    }
    // A box whose top is the current line; the line stays where it was.
    void BoxFromHere(double x1, double x2, double y2) {
        const double y = p.CurrentY();
        p.Box(x1, y, x2, y2);
        p.SetCurrentY(y);
    }

    void PrintHeader() {
        // Half a line, measured on an empty line.
        const double top = p.CurrentY();
        p.Print();
        mHalf = (p.CurrentY() - top) / 2;
        p.SetCurrentY(top);

        double logoBottom = 0;
        const Picture logo = LoadSharedLogo();
        if (logo.IsValid() && QFileInfo::exists(logo.Path)) {
            p.PaintPicture(logo, m.xBoxLeft, 350);
            Down(logo.Height);
            logoBottom = p.CurrentY();
            mLogoPath = logo.Path;
        }
        p.SetCurrentY(top);
        EndLines(3);
        for (const QString& line : mCompany) {
            RightOn(m.xRight, line);
            p.Print();
        }
        // The address goes under the logo or a tenth down the page, even where the company
        // block reaches further.
        p.SetCurrentY(m.H / 10 < logoBottom ? logoBottom : m.H / 10);

        EndLines(3);
        const double toLine = p.CurrentY();
        LineAt(m.xText, mInvoice ? QStringLiteral("Invoice To:") : QStringLiteral("Delivery To:"));
        BoxFromHere(m.xBoxLeft, m.xCustBoxRight, p.CurrentY() + 18 * mHalf);
        Down(mHalf);
        for (const QString* text : {&mSheet.custName, &mSheet.custAdd1, &mSheet.custAdd2,
                                    &mSheet.custAdd3, &mSheet.custAdd4, &mSheet.custPO})
            LineAt(m.xText, *text);
        EndLines(3);
        const double headerEnd = p.CurrentY();

        p.SetCurrentY(toLine);
        p.Print();
        const double labelX = m.xQty - p.TextWidth(QStringLiteral("XXXX"));
        const auto pair = [&](const QString& label, const QString& value) {
            At(labelX, label);
            RightOn(m.xRight, value);
            EndLines(2);
        };
        if (mOrder) {
            pair(QStringLiteral("Order ID #"), mSheet.custBasketID);
        } else if (mInvoice) {
            pair(QStringLiteral("Invoice #"), mSheet.invoiceNo);
            pair(QStringLiteral("Delivery #"), mSheet.custShipID);
        } else {
            pair(QStringLiteral("Delivery #"), mSheet.custShipID);
            pair(QStringLiteral("Invoice #"), mSheet.invoiceNo);
        }
        if (!mSheet.custOrNo.isEmpty())
            pair(QStringLiteral("Customer's PO"), mSheet.custOrNo);
        if (mOrder)
            pair(QStringLiteral("Order Date:"), mSheet.orDate);
        else if (mInvoice)
            pair(QStringLiteral("Invoice Date:"), mSheet.invoiceDate);
        else
            pair(QStringLiteral("Date:"), mSheet.invoiceDate);
        pair(QStringLiteral("Page# "), QString::number(mPage));

        p.SetCurrentY(headerEnd);
    }

    void PrintTableHeading() {
        BoxFromHere(m.xBoxLeft, m.xBoxRight, 0.82 * m.H);
        Down(mHalf);
        const double first = p.CurrentY();
        LineAt(m.xText, QStringLiteral("Description"));
        LineAt(m.xText, QStringLiteral("Part No."));
        p.SetCurrentY(first);
        if (!mOrder)
            RightOn(m.xOrdered, QStringLiteral("Ordered"));
        if (!mDelivery)
            RightOn(m.xPrice, QStringLiteral("Price"));
        const QString qtyCaption = mInvoice ? QStringLiteral("Invoiced") : QStringLiteral("Qty");
        if (mDelivery) {
            RightOn(m.xRight, qtyCaption);
            if (mPickList)
                At(m.xQty, QStringLiteral("Location"));
        } else {
            RightOn(m.xQty, qtyCaption);
        }
        if (!mDelivery)
            RightOn(m.xRight, QStringLiteral("Total"));
        p.Print();
        EndLines(2);
        Down(mHalf);
        Rule();
        p.Print();
    }

    void PrintRow(const OrderRow& row, double qty) {
        LineAt(m.xText, row[OrderCol::Desc]);
        At(m.xText, row[OrderCol::PartNo]);
        if (!mOrder)
            RightOn(m.xOrdered, mQtyMask.Plain(ParseLocaleNumber(row[OrderCol::OrderQty])));
        RightOn(mDelivery ? m.xRight : m.xQty, mQtyMask.Plain(qty));
        if (mPickList)
            At(m.xQty, row[OrderCol::Location]);
        if (!mDelivery) {
            RightOn(m.xPrice, mPriceMask.Plain(ParseLocaleNumber(row[OrderCol::SellAt])));
            RightOn(m.xRight, mPriceMask.Plain(ParseLocaleNumber(row[OrderCol::Total])));
        }
        p.Print();
        p.Print();
    }

    void PrintContinuation() {
        Rule();
        LineAt(m.xText, QStringLiteral("End of Page# ") + QString::number(mPage) +
                            QStringLiteral("  - See Continuation Sheet"));
        // The whole copy stays one job: the next sheet is a new page of it.
        p.NewPage();
        ++mPage;
        p.SetCurrentY(0.10 * m.H);
        p.SetCurrentX(m.xText);
        // The continuation sheet is printed even when these two texts fail.
        try {
            p.PrintSameLine(QStringLiteral("Continuation Sheet "));
        } catch (const DbError&) {
        }
        p.SetCurrentX(m.xRight);
        try {
            p.Print(QStringLiteral("Page# ") + QString::number(mPage));
        } catch (const DbError&) {
        }
        p.SetCurrentX(m.xText);
        Rule();
        PrintTableHeading();
        EndLines(2);
    }

    bool PrintFooter() {
        EndLines(2);
        const double notesTop = 0.83 * m.H;
        const double boxBottom = 0.95 * m.H;
        p.SetCurrentY(notesTop);
        LineAt(m.xNotes, QStringLiteral("Notes"));
        const double notesLine = p.CurrentY();
        EndLines(5);
        p.Box(m.xBoxLeft, notesTop, m.xQty - p.TextWidth(QStringLiteral("XXX")), boxBottom);
        if (!mDelivery)
            p.Box(m.xQty - p.TextWidth(QStringLiteral("XX")), notesTop, m.xBoxRight, boxBottom);
        p.SetCurrentY(notesLine);
        p.Print();
        if (!mSheet.notes.isEmpty()) {
            static const QRegularExpression breaks(QStringLiteral("\r\n|\n"));
            QStringList lines = mSheet.notes.split(breaks);
            if (lines.size() > 1 && lines.last().isEmpty())
                lines.removeLast(); // the break after the last line
            for (const QString& line : lines)
                LineAt(m.xNotes, line);
        }

        // The totals; a delivery note makes the same moves without printing them.
        p.SetCurrentY(0.84 * m.H);
        const auto total = [&](const QString* label, const QString& value) {
            if (!mDelivery) {
                if (label)
                    At(m.xQty, *label);
                RightOn(m.xRight, value);
            }
            p.Print();
        };
        total(nullptr, mSheet.net);
        p.Print();
        total(&mSheet.deliveryText, mSheet.delivery);
        p.Print();
        total(&mSheet.vatText, mSheet.vat);
        Down(mHalf);
        if (!mDelivery)
            p.Line(m.xQty, p.CurrentY(), m.xRight, p.CurrentY());
        Down(mHalf);
        total(&mSheet.totalText, mSheet.total);

        const bool dropped = p.DocumentDropped();
        p.EndDoc();
        return !dropped;
    }

    Printer& p;
    const Marks m;
    const CustOrderSheet& mSheet;
    const QStringList& mCompany;
    const bool mPickList;
    const bool mOrder;
    const bool mInvoice;
    const bool mDelivery;
    const NumberMask mQtyMask;
    const NumberMask mPriceMask;
    double mHalf = 0;
    int mPage = 1;
    QString mLogoPath;
};

// Gives the printer its copies and font size back however the copy ends.
class KeepPrinterSettings {
public:
    explicit KeepPrinterSettings(Printer& p) : p(p), mCopies(p.Copies()), mFontSize(p.FontSize()) {}
    ~KeepPrinterSettings() {
        p.SetCopies(mCopies);
        p.SetFontSize(mFontSize);
    }
    KeepPrinterSettings(const KeepPrinterSettings&) = delete;
    KeepPrinterSettings& operator=(const KeepPrinterSettings&) = delete;

private:
    Printer& p;
    int mCopies;
    double mFontSize;
};

} // namespace

int AskSalesDocumentCopies() {
    const QString answer = InputBox(QStringLiteral("Print Invoice. How many copies?"),
                                    QStringLiteral("Invoice"), QStringLiteral("1"));
    if (answer.isEmpty())
        return 0;
    double number = 0;
    if (!ReadNumber(answer, number)) {
        MsgBox(QStringLiteral("Input was invalid. Number of copies must be numerical."),
               vbInformation, QStringLiteral("Stopped"));
        return 0;
    }
    if (number > 100) {
        MsgBox(QStringLiteral("The maximum number of copies has been exceeded. Try a smaller "
                              "quantity. If you really need that many then print a number of "
                              "smaller batches (less than 100). But, go on, admit it, you're just "
                              "messing aren't you. You don't really want ") +
                   answer +
                   QStringLiteral(" copies do you? No, didn't think so. Click OK to cancel and "
                                  "then enter a more sensible qty."),
               vbInformation, QStringLiteral("How many? You're joking..... aren't you?"));
        return 0;
    }
    if (number < 1) {
        MsgBox(QStringLiteral("The number of copies is zero"), vbOKOnly, QString());
        return 0;
    }
    return int(std::trunc(number));
}

SalesDocumentResult PrintSalesDocument(const QString& kindArgument, const CustOrderSheet& sheet,
                                       const SalesDocumentSource& source) {
    // The packing note is the delivery note with one more column.
    const bool pickList = kindArgument == QLatin1String(SalesDocumentKind::PickList);
    const QString kind = pickList ? QString::fromLatin1(SalesDocumentKind::Delivery) : kindArgument;

    SalesDocumentResult result;
    const int copies = AskSalesDocumentCopies();
    for (int copy = 0; copy < copies; ++copy) {
        SelectPrinter(source.printerName);
        Printer& printer = CurrentPrinter();
        const KeepPrinterSettings kept(printer);
        printer.SetCopies(1);
        printer.SetFontSize(10);
        SalesDocument document(printer, kind, pickList, sheet, source.company);
        if (!document.Print())
            break; // the PDF file name was cancelled: no more copies either
        ++result.copies;
        result.logoPath = document.LogoPath();
    }
    return result;
}
