#include "foundation/Printer.h"

#include <QRegularExpression>
#include <algorithm>
#include <cmath>

namespace {

PictureLoader& Loader() {
    static PictureLoader loader;
    return loader;
}

QStringList SplitLines(const QString& text) {
    static const QRegularExpression breaks(QStringLiteral("\r\n|\n|\r"));
    return text.split(breaks);
}

struct PrinterRegistry {
    PrinterList printers;
    std::shared_ptr<Printer> current;
};

PrinterRegistry& Registry() {
    static PrinterRegistry registry;
    return registry;
}

} // namespace

Picture LoadPicture(const QString& path) {
    if (!Loader())
        return Picture{path};
    return Loader()(path);
}

void InstallPictureLoader(PictureLoader loader) {
    Loader() = std::move(loader);
}

// --- Printer ---

Printer::Printer(QString deviceName, double paperWidth, double paperHeight)
    : mDeviceName(std::move(deviceName)), mPaperWidth(paperWidth), mPaperHeight(paperHeight) {}

Printer::~Printer() = default;

void Printer::SetPaperSize(double paperWidth, double paperHeight) {
    mPaperWidth = paperWidth;
    mPaperHeight = paperHeight;
}

int Printer::Width() const {
    return int(std::lround(mOrientation == vbPRORLandscape ? mPaperHeight : mPaperWidth));
}

int Printer::Height() const {
    return int(std::lround(mOrientation == vbPRORLandscape ? mPaperWidth : mPaperHeight));
}

void Printer::SetOrientation(int orientation) {
    mOrientation = orientation == vbPRORLandscape ? vbPRORLandscape : vbPRORPortrait;
}

double Printer::TextWidth(const QString& text) const {
    double widest = 0;
    for (const QString& line : SplitLines(text))
        widest = std::max(widest, MeasureWidth(line));
    return widest;
}

double Printer::TextHeight(const QString& text) const {
    return LineHeight() * double(SplitLines(text).size());
}

bool Printer::Drawing() {
    if (mDoc == Doc::Idle) {
        mPage = 1;
        mDoc = BeginDocument() ? Doc::Open : Doc::Dropped;
    }
    return mDoc == Doc::Open;
}

void Printer::PrintText(const QString& text, bool endLine) {
    const bool draw = Drawing();
    const QStringList lines = SplitLines(text);
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const QString& line = lines.at(i);
        if (draw && !line.isEmpty())
            DrawText(mX, mY, line);
        if (i + 1 < lines.size() || endLine) {
            mX = 0;
            mY += LineHeight();
        } else {
            mX += MeasureWidth(line);
        }
    }
}

void Printer::Print(const QString& text) {
    PrintText(text, true);
}

void Printer::PrintSameLine(const QString& text) {
    PrintText(text, false);
}

void Printer::Line(double x1, double y1, double x2, double y2) {
    if (Drawing())
        DrawLine(x1, y1, x2, y2, false);
    mX = x2;
    mY = y2;
}

void Printer::Box(double x1, double y1, double x2, double y2) {
    if (Drawing())
        DrawLine(x1, y1, x2, y2, true);
    mX = x2;
    mY = y2;
}

void Printer::PaintPicture(const Picture& picture, double x, double y, double width,
                           double height) {
    if (!picture.IsValid())
        return;
    if (Drawing())
        DrawPicture(picture, x, y, width < 0 ? picture.Width : width,
                    height < 0 ? picture.Height : height);
}

void Printer::NewPage() {
    if (Drawing())
        StartNewPage();
    ++mPage;
    mX = 0;
    mY = 0;
}

void Printer::EndDoc() {
    if (mDoc == Doc::Open)
        EndDocument();
    mDoc = Doc::Idle;
    mPage = 1;
    mX = 0;
    mY = 0;
}

// --- RecordingPrinter ---

RecordingPrinter::RecordingPrinter(const QString& deviceName, double paperWidth, double paperHeight)
    : Printer(deviceName, paperWidth, paperHeight) {}

QList<PrintCall> RecordingPrinter::Calls(PrintCall::Kind kind) const {
    QList<PrintCall> out;
    for (const PrintCall& c : mCalls)
        if (c.kind == kind)
            out.append(c);
    return out;
}

QStringList RecordingPrinter::Texts() const {
    QStringList out;
    for (const PrintCall& c : mCalls)
        if (c.kind == PrintCall::Text)
            out.append(c.text);
    return out;
}

void RecordingPrinter::Clear() {
    mCalls.clear();
    mDocuments = 0;
}

double RecordingPrinter::MeasureWidth(const QString& line) const {
    return double(line.size()) * FontSize() * CharWidthPerPoint;
}

double RecordingPrinter::LineHeight() const {
    return FontSize() * LineHeightPerPoint;
}

PrintCall RecordingPrinter::Call(PrintCall::Kind kind) const {
    PrintCall c;
    c.kind = kind;
    c.fontName = FontName();
    c.fontSize = FontSize();
    c.bold = FontBold();
    c.italic = FontItalic();
    c.page = Page();
    c.orientation = Orientation();
    return c;
}

void RecordingPrinter::DrawText(double x, double y, const QString& line) {
    PrintCall c = Call(PrintCall::Text);
    c.x = x;
    c.y = y;
    c.x2 = x + MeasureWidth(line);
    c.y2 = y + LineHeight();
    c.text = line;
    mCalls.append(c);
}

void RecordingPrinter::DrawLine(double x1, double y1, double x2, double y2, bool box) {
    PrintCall c = Call(box ? PrintCall::Box : PrintCall::Line);
    c.x = x1;
    c.y = y1;
    c.x2 = x2;
    c.y2 = y2;
    mCalls.append(c);
}

void RecordingPrinter::DrawPicture(const ::Picture& picture, double x, double y, double width,
                                   double height) {
    PrintCall c = Call(PrintCall::Picture);
    c.x = x;
    c.y = y;
    c.x2 = x + width;
    c.y2 = y + height;
    c.text = picture.Path;
    mCalls.append(c);
}

void RecordingPrinter::StartNewPage() {
    mCalls.append(Call(PrintCall::NewPage));
}

void RecordingPrinter::EndDocument() {
    mCalls.append(Call(PrintCall::EndDoc));
    ++mDocuments;
}

// --- the collection and the current printer ---

const PrinterList& Printers() {
    return Registry().printers;
}

void SetPrinters(PrinterList printers) {
    PrinterRegistry& r = Registry();
    r.printers = std::move(printers);
    if (std::find(r.printers.begin(), r.printers.end(), r.current) == r.printers.end())
        r.current = r.printers.empty() ? nullptr : r.printers.front();
}

std::shared_ptr<Printer> CurrentPrinterHandle() {
    PrinterRegistry& r = Registry();
    if (!r.current)
        r.current = std::make_shared<RecordingPrinter>(QStringLiteral("No Printer"));
    return r.current;
}

Printer& CurrentPrinter() {
    return *CurrentPrinterHandle();
}

void SetCurrentPrinter(std::shared_ptr<Printer> printer) {
    Registry().current = std::move(printer);
}

bool SelectPrinter(const QString& deviceName) {
    for (const std::shared_ptr<Printer>& p : Registry().printers) {
        if (p->DeviceName() == deviceName) {
            Registry().current = p;
            return true;
        }
    }
    return false;
}

std::shared_ptr<RecordingPrinter> UseRecordingPrinter(const QString& deviceName) {
    auto printer = std::make_shared<RecordingPrinter>(deviceName);
    SetPrinters({printer});
    SetCurrentPrinter(printer);
    return printer;
}

// --- PrintWrapped ---

void PrintWrapped(Printer& printer, const QString& text, int widthChars, double left, double top) {
    const int width = std::max(1, widthChars);
    printer.SetCurrentY(top);
    for (const QString& paragraph : SplitLines(text)) {
        QString rest = paragraph;
        do {
            QString line;
            if (rest.size() <= width) {
                line = rest;
                rest.clear();
            } else {
                const qsizetype blank = rest.lastIndexOf(QLatin1Char(' '), width);
                const qsizetype cut = blank > 0 ? blank : width;
                line = rest.left(cut);
                rest = rest.mid(cut);
                while (line.endsWith(QLatin1Char(' ')))
                    line.chop(1);
                while (rest.startsWith(QLatin1Char(' ')))
                    rest.remove(0, 1);
            }
            printer.SetCurrentX(left);
            printer.Print(line);
        } while (!rest.isEmpty());
    }
}

void PrintWrapped(const QString& text, int widthChars, double left, double top) {
    PrintWrapped(CurrentPrinter(), text, widthChars, left, top);
}
