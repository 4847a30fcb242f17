#include "foundation/PrinterQt.h"

#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "foundation/MsgBox.h"

#include <QFontMetricsF>
#include <QImage>
#include <QImageReader>
#include <QLocale>
#include <QPainter>
#include <QPrinter>

namespace {

constexpr double kTwipsPerInch = 1440;
constexpr double kTwipsPerScreenPixel = 15;
// VB's run-time error of a failing printer.
constexpr int kPrinterError = 482;

QPageSize LocalPaper() {
    return QLocale().measurementSystem() == QLocale::ImperialUSSystem ? QPageSize(QPageSize::Letter)
                                                                      : QPageSize(QPageSize::A4);
}

QSizeF PaperTwips(const QPageSize& page) {
    return page.size(QPageSize::Millimeter) * (kTwipsPerInch / 25.4);
}

Picture ReadPicture(const QString& path) {
    QImageReader reader(path);
    QSize size = reader.size();
    if (!size.isValid()) {
        const QImage image = reader.read();
        if (image.isNull())
            return Picture{path};
        size = image.size();
    }
    return Picture{path, size.width() * kTwipsPerScreenPixel, size.height() * kTwipsPerScreenPixel};
}

} // namespace

QString SaveAsPdfName() {
    return QStringLiteral("Save as PDF");
}

QtPrinter::QtPrinter(const QString& deviceName, const QPageSize& pageSize, bool pdf)
    : Printer(deviceName, PaperTwips(pageSize).width(), PaperTwips(pageSize).height()), mPdf(pdf),
      mPageSize(pageSize) {}

QtPrinter::QtPrinter(const QPrinterInfo& info)
    : QtPrinter(info.printerName(),
                info.defaultPageSize().isValid() ? info.defaultPageSize() : LocalPaper(), false) {
    mPrinter = std::make_unique<QPrinter>(info, QPrinter::HighResolution);
}

std::shared_ptr<QtPrinter> QtPrinter::PdfWriter() {
    std::shared_ptr<QtPrinter> p(new QtPrinter(SaveAsPdfName(), LocalPaper(), true));
    p->mPrinter = std::make_unique<QPrinter>(QPrinter::HighResolution);
    p->mPrinter->setOutputFormat(QPrinter::PdfFormat);
    return p;
}

QtPrinter::~QtPrinter() {
    if (mPainter && mPainter->isActive())
        mPainter->end();
}

void QtPrinter::Fail() {
    throw DbError(kPrinterError, QStringLiteral("Printer error"));
}

QFont QtPrinter::CurrentFont() const {
    QFont font(FontName());
    font.setPointSizeF(FontSize() > 0 ? FontSize() : 1);
    font.setBold(FontBold());
    font.setItalic(FontItalic());
    return font;
}

double QtPrinter::DevicePerTwip() const {
    return mPrinter->resolution() / kTwipsPerInch;
}

double QtPrinter::MeasureWidth(const QString& line) const {
    const QFontMetricsF fm(CurrentFont(), mPrinter.get());
    return fm.horizontalAdvance(line) / DevicePerTwip();
}

double QtPrinter::LineHeight() const {
    const QFontMetricsF fm(CurrentFont(), mPrinter.get());
    return fm.lineSpacing() / DevicePerTwip();
}

void QtPrinter::ApplyOrientation() {
    mSheetOrientation = Orientation();
    mPrinter->setPageOrientation(mSheetOrientation == vbPRORLandscape ? QPageLayout::Landscape
                                                                      : QPageLayout::Portrait);
}

bool QtPrinter::BeginDocument() {
    if (mPdf) {
        FileDialogRequest request;
        request.save = true;
        request.title = SaveAsPdfName();
        request.filter = QStringLiteral("PDF (*.pdf)|*.pdf");
        request.defaultExt = QStringLiteral(".pdf");
        request.fileName = mOutputFile;
        const QString file = ChooseFile(request);
        if (file.trimmed().isEmpty())
            return false;
        mPrinter->setOutputFileName(file);
        mOutputFile = file;
    }
    mPrinter->setFullPage(true);
    mPrinter->setPageSize(mPageSize);
    ApplyOrientation();
    mPrinter->setCopyCount(Copies());
    mPrinter->setDocName(AppName());
    mPainter = std::make_unique<QPainter>();
    if (!mPainter->begin(mPrinter.get())) {
        mPainter.reset();
        Fail();
    }
    return true;
}

void QtPrinter::DrawText(double x, double y, const QString& line) {
    const QFont font = CurrentFont();
    mPainter->setFont(font);
    const QFontMetricsF fm(font, mPrinter.get());
    const double k = DevicePerTwip();
    mPainter->setPen(Qt::black);
    mPainter->drawText(QPointF(x * k, y * k + fm.ascent()), line);
}

void QtPrinter::DrawLine(double x1, double y1, double x2, double y2, bool box) {
    const double k = DevicePerTwip();
    QPen pen(Qt::black);
    pen.setWidthF(mPrinter->resolution() / 200.0);
    mPainter->setPen(pen);
    mPainter->setBrush(Qt::NoBrush);
    if (box)
        mPainter->drawRect(QRectF(QPointF(x1 * k, y1 * k), QPointF(x2 * k, y2 * k)).normalized());
    else
        mPainter->drawLine(QPointF(x1 * k, y1 * k), QPointF(x2 * k, y2 * k));
}

void QtPrinter::DrawPicture(const Picture& picture, double x, double y, double width,
                            double height) {
    const QImage image(picture.Path);
    if (image.isNull())
        return;
    const double k = DevicePerTwip();
    mPainter->drawImage(QRectF(x * k, y * k, width * k, height * k), image);
}

void QtPrinter::StartNewPage() {
    if (Orientation() != mSheetOrientation)
        ApplyOrientation();
    if (!mPrinter->newPage())
        Fail();
}

void QtPrinter::EndDocument() {
    if (mPainter) {
        mPainter->end();
        mPainter.reset();
    }
}

void InstallQtPrinters() {
    PrinterList list;
    std::shared_ptr<Printer> current;
    const QString defaultName = QPrinterInfo::defaultPrinterName();
    for (const QPrinterInfo& info : QPrinterInfo::availablePrinters()) {
        auto printer = std::make_shared<QtPrinter>(info);
        if (!current && info.printerName() == defaultName)
            current = printer;
        list.push_back(std::move(printer));
    }
    list.push_back(QtPrinter::PdfWriter());
    SetPrinters(list);
    SetCurrentPrinter(current ? current : list.front());
    InstallPictureLoader(ReadPicture);
}
