// The printer on Qt: the machine's printers and the "Save as PDF" writer.
#pragma once

#include "foundation/Printer.h"

#include <QPageSize>
#include <QPrinterInfo>
#include <memory>

class QFont;
class QPainter;
class QPrinter;

// The device name of the PDF writer, the last entry of Printers().
QString SaveAsPdfName();

class QtPrinter final : public Printer {
public:
    // One of the machine's printers, on its default paper.
    explicit QtPrinter(const QPrinterInfo& info);
    // The PDF writer: it asks for the file name when a document starts; a cancelled question
    // drops the document without a word.
    static std::shared_ptr<QtPrinter> PdfWriter();
    ~QtPrinter() override;

    bool IsPdfWriter() const { return mPdf; }
    // The file the PDF writer wrote last; empty before its first document.
    const QString& OutputFile() const { return mOutputFile; }

protected:
    double MeasureWidth(const QString& line) const override;
    double LineHeight() const override;
    bool BeginDocument() override;
    void DrawText(double x, double y, const QString& line) override;
    void DrawLine(double x1, double y1, double x2, double y2, bool box) override;
    void DrawPicture(const Picture& picture, double x, double y, double width,
                     double height) override;
    void StartNewPage() override;
    void EndDocument() override;

private:
    QtPrinter(const QString& deviceName, const QPageSize& pageSize, bool pdf);
    QFont CurrentFont() const;
    double DevicePerTwip() const;
    void ApplyOrientation();
    [[noreturn]] static void Fail();

    bool mPdf;
    QPageSize mPageSize;
    std::unique_ptr<QPrinter> mPrinter;
    std::unique_ptr<QPainter> mPainter;
    QString mOutputFile;
    int mSheetOrientation = vbPRORPortrait;
};

// Fills Printers() with the machine's printers in the system's order and then "Save as PDF",
// makes the system's default printer current (the first printer, or the PDF writer, when there is
// no default), and installs the picture loader of LoadPicture.
void InstallQtPrinters();
