#include "foundation/PrinterQt.h"
#include "tests/support/TestSupport.h"

#include <QApplication>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <QTest>

namespace {

QByteArray ReadAll(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

} // namespace

class TestPrinterQt : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { UseTestLocale(); }

    void collectionEndsWithThePdfWriter() {
        InstallQtPrinters();
        const PrinterList& printers = Printers();
        QCOMPARE(printers.size(), size_t(QPrinterInfo::availablePrinters().size() + 1));
        QCOMPARE(printers.back()->DeviceName(), QStringLiteral("Save as PDF"));
        const QString def = QPrinterInfo::defaultPrinterName();
        QCOMPARE(CurrentPrinter().DeviceName(),
                 def.isEmpty() ? printers.front()->DeviceName() : def);
        // A4 on this locale, in twips.
        QCOMPARE(printers.back()->Width(), 11906);
        QCOMPARE(printers.back()->Height(), 16838);
    }

    void metricsFollowTheFont() {
        auto pdf = QtPrinter::PdfWriter();
        pdf->SetFontSize(8);
        const double h8 = pdf->TextHeight();
        const double w = pdf->TextWidth(QStringLiteral("MMMM"));
        // About 8 points a line (160 twips) with some leading.
        QVERIFY2(h8 > 150 && h8 < 260, qPrintable(QString::number(h8)));
        QVERIFY(w > pdf->TextWidth(QStringLiteral("iiii")));
        pdf->SetFontSize(16);
        QVERIFY(pdf->TextHeight() > 1.8 * h8);
    }

    void pdfWriterAsksAtTheFirstDrawing() {
        QTemporaryDir dir;
        const QString file = dir.filePath(QStringLiteral("doc.pdf"));
        auto pdf = QtPrinter::PdfWriter();
        ScriptedBoxes boxes;

        // Cancelled: nothing is written and nothing else is said; the pen still moves.
        boxes.answerFile(QString());
        pdf->TextWidth(QStringLiteral("no question yet"));
        QCOMPARE(boxes.shown().size(), 0);
        pdf->Print(QStringLiteral("lost"));
        pdf->Line(0, 0, 1000, 1000);
        pdf->NewPage();
        pdf->Print(QStringLiteral("lost too"));
        pdf->EndDoc();
        QCOMPARE(boxes.shown().size(), 1);
        QCOMPARE(boxes.shown()[0].kind, ShownBox::File);
        QVERIFY(pdf->OutputFile().isEmpty());

        // Written: two sheets, the second in landscape, with a logo.
        boxes.answerFile(file);
        QImage logo(40, 20, QImage::Format_RGB32);
        logo.fill(Qt::darkBlue);
        const QString logoPath = dir.filePath(QStringLiteral("logo.png"));
        QVERIFY(logo.save(logoPath));
        InstallQtPrinters();
        const Picture pic = LoadPicture(logoPath);
        QCOMPARE(pic.Width, 600.0);
        QCOMPARE(pic.Height, 300.0);
        pdf->SetCurrentX(1440);
        pdf->SetCurrentY(1440);
        pdf->Print(QStringLiteral("Sheet one"));
        pdf->PaintPicture(pic, 1440, 2000);
        pdf->Box(1000, 1000, 5000, 3000);
        pdf->SetOrientation(vbPRORLandscape);
        pdf->NewPage();
        pdf->Print(QStringLiteral("Sheet two"));
        pdf->EndDoc();
        QCOMPARE(boxes.shown().size(), 2);
        QCOMPARE(pdf->OutputFile(), file);
        const QByteArray bytes = ReadAll(file);
        QVERIFY(bytes.startsWith("%PDF"));
        QCOMPARE(bytes.count("/Type /Page\n") + bytes.count("/Type /Page\r") +
                     bytes.count("/Type /Page "),
                 2);
        QVERIFY(bytes.contains("/MediaBox [0 0 595") && bytes.contains("/MediaBox [0 0 842"));
        QVERIFY(boxes.allAnswersUsed());
    }
};

QTEST_MAIN(TestPrinterQt)
#include "test_printerqt.moc"
