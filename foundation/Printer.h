// The printer as the documents and listings draw on it: VB's positional model in twips.
//
// A procedure sets CurrentX/CurrentY and the font, then prints text, draws lines and boxes and
// paints pictures; NewPage starts the next sheet and EndDoc sends the document. The first drawing
// call starts the document. Positions are twips (1440 to the inch) from the top left corner of
// the paper; Width and Height are the paper's, in the orientation in force.
//
// Printer is abstract: the window layer puts the machine's printers and a PDF writer behind it
// (foundation/PrinterQt.h); RecordingPrinter keeps every call for tests. Procedures draw on
// CurrentPrinter(), VB's `Printer`, chosen from Printers() by device name.
#pragma once

#include <QList>
#include <QString>
#include <functional>
#include <memory>
#include <vector>

// Orientation values (VB's vbPRORPortrait, vbPRORLandscape).
enum : int { vbPRORPortrait = 1, vbPRORLandscape = 2 };

// A picture file as LoadPicture gives it: its path and its size in twips. Invalid (zero size)
// when the file could not be read as a picture.
struct Picture {
    QString Path;
    double Width = 0;
    double Height = 0;
    bool IsValid() const { return Width > 0 && Height > 0; }
};

// Reads a picture file through the installed loader. Without a window layer no loader is
// installed and every picture is invalid, so a logo is skipped.
Picture LoadPicture(const QString& path);
using PictureLoader = std::function<Picture(const QString& path)>;
// An empty function restores the default (nothing loads).
void InstallPictureLoader(PictureLoader loader);

class Printer {
public:
    virtual ~Printer();
    Printer(const Printer&) = delete;
    Printer& operator=(const Printer&) = delete;

    const QString& DeviceName() const { return mDeviceName; }

    // The paper in the orientation in force, in twips.
    int Width() const;
    int Height() const;

    double CurrentX() const { return mX; }
    double CurrentY() const { return mY; }
    void SetCurrentX(double x) { mX = x; }
    void SetCurrentY(double y) { mY = y; }

    const QString& FontName() const { return mFontName; }
    void SetFontName(const QString& name) { mFontName = name; }
    double FontSize() const { return mFontSize; }
    void SetFontSize(double points) { mFontSize = points; }
    bool FontBold() const { return mBold; }
    void SetFontBold(bool on) { mBold = on; }
    bool FontItalic() const { return mItalic; }
    void SetFontItalic(bool on) { mItalic = on; }

    // vbPRORPortrait or vbPRORLandscape. Kept by the printer from one document to the next; a
    // change during a document takes effect from the next sheet.
    int Orientation() const { return mOrientation; }
    void SetOrientation(int orientation);
    int Copies() const { return mCopies; }
    void SetCopies(int copies) { mCopies = copies < 1 ? 1 : copies; }

    // The sheet being drawn, from 1.
    int Page() const { return mPage; }

    // Size of a text in the current font. A text with line breaks is as wide as its widest line
    // and as high as all its lines; the empty text is one line high.
    double TextWidth(const QString& text) const;
    double TextHeight(const QString& text = QString()) const;

    // Prints at CurrentX/CurrentY and ends the line: CurrentY moves down one text height and
    // CurrentX returns to 0 (VB's `Printer.Print text`). With no text it prints an empty line.
    void Print(const QString& text = QString());
    // Prints and stays on the line: CurrentX advances by the text's width, CurrentY stays
    // (VB's `Printer.Print text;`).
    void PrintSameLine(const QString& text);
    // A line from (x1, y1) to (x2, y2); CurrentX/CurrentY are left at (x2, y2).
    void Line(double x1, double y1, double x2, double y2);
    // The outline of the box with corners (x1, y1) and (x2, y2); CurrentX/CurrentY are left at
    // (x2, y2) (VB's `Line (x1, y1)-(x2, y2), , B`).
    void Box(double x1, double y1, double x2, double y2);
    // Paints a picture with its top left corner at (x, y), in its own size or in the size given.
    // An invalid picture paints nothing.
    void PaintPicture(const Picture& picture, double x, double y, double width = -1,
                      double height = -1);
    // Ends the sheet; the next drawing goes to a new one at the top left.
    void NewPage();
    // Ends the document and sends it. Nothing happens when no drawing was made.
    void EndDoc();
    // True while the document under way is being dropped: its start was refused (the PDF writer's
    // file name was cancelled), so nothing of it will print.
    bool DocumentDropped() const { return mDoc == Doc::Dropped; }

protected:
    // paperWidth and paperHeight: the paper in portrait, in twips.
    Printer(QString deviceName, double paperWidth, double paperHeight);
    void SetPaperSize(double paperWidth, double paperHeight);

    // The back end's part. Widths and heights in twips for the current font; text is one line.
    virtual double MeasureWidth(const QString& line) const = 0;
    virtual double LineHeight() const = 0;
    // The first drawing call of a document. false drops the whole document silently.
    virtual bool BeginDocument() = 0;
    virtual void DrawText(double x, double y, const QString& line) = 0;
    virtual void DrawLine(double x1, double y1, double x2, double y2, bool box) = 0;
    virtual void DrawPicture(const Picture& picture, double x, double y, double width,
                             double height) = 0;
    virtual void StartNewPage() = 0;
    virtual void EndDocument() = 0;

private:
    enum class Doc { Idle, Open, Dropped };
    // Starts the document when none is under way; false when drawing must be skipped.
    bool Drawing();
    void PrintText(const QString& text, bool endLine);

    QString mDeviceName;
    double mPaperWidth;
    double mPaperHeight;
    double mX = 0;
    double mY = 0;
    QString mFontName = QStringLiteral("Arial");
    double mFontSize = 10;
    bool mBold = false;
    bool mItalic = false;
    int mOrientation = vbPRORPortrait;
    int mCopies = 1;
    int mPage = 1;
    Doc mDoc = Doc::Idle;
};

// One call kept by the recording printer, with the font and sheet in force when it was made.
struct PrintCall {
    enum Kind { Text, Line, Box, Picture, NewPage, EndDoc };
    Kind kind = Text;
    double x = 0; // text: where it starts; line, box, picture: first corner
    double y = 0;
    double x2 = 0; // line, box, picture: second corner
    double y2 = 0;
    QString text; // the text printed, or the picture's path
    QString fontName;
    double fontSize = 0;
    bool bold = false;
    bool italic = false;
    int page = 0;        // sheet within the document, from 1
    int orientation = 0; // in force at the call
};

// Keeps every call instead of printing. Text is measured by a fixed metric, so that the recorded
// positions are exact: each character is FontSize x 12 twips wide and a line is FontSize x 24
// twips high, whatever the face and style.
class RecordingPrinter : public Printer {
public:
    static constexpr double CharWidthPerPoint = 12;
    static constexpr double LineHeightPerPoint = 24;

    // A4 by default.
    explicit RecordingPrinter(const QString& deviceName = QStringLiteral("Recording Printer"),
                              double paperWidth = 11906, double paperHeight = 16838);

    const QList<PrintCall>& Calls() const { return mCalls; }
    // The calls of one kind, in order.
    QList<PrintCall> Calls(PrintCall::Kind kind) const;
    // The printed texts, in order.
    QStringList Texts() const;
    // Documents sent with EndDoc.
    int Documents() const { return mDocuments; }
    void Clear();

protected:
    double MeasureWidth(const QString& line) const override;
    double LineHeight() const override;
    bool BeginDocument() override { return true; }
    void DrawText(double x, double y, const QString& line) override;
    void DrawLine(double x1, double y1, double x2, double y2, bool box) override;
    void DrawPicture(const ::Picture& picture, double x, double y, double width,
                     double height) override;
    void StartNewPage() override;
    void EndDocument() override;

private:
    PrintCall Call(PrintCall::Kind kind) const;
    QList<PrintCall> mCalls;
    int mDocuments = 0;
};

// The printers procedures may choose from, in the system's order (the window layer adds the
// machine's printers and "Save as PDF"; tests install recording printers).
using PrinterList = std::vector<std::shared_ptr<Printer>>;
const PrinterList& Printers();
// Replaces the collection. The current printer stays when it is in the new list; otherwise the
// first printer of the list becomes current.
void SetPrinters(PrinterList printers);

// The printer procedures draw on (VB's `Printer`). With nothing installed it is a recording
// printer that nobody reads.
Printer& CurrentPrinter();
std::shared_ptr<Printer> CurrentPrinterHandle();
void SetCurrentPrinter(std::shared_ptr<Printer> printer);
// Makes the first printer of the collection whose DeviceName equals `deviceName` current.
// false, with the current printer unchanged, when none does.
bool SelectPrinter(const QString& deviceName);

// Installs one recording printer as the whole collection and as the current printer.
std::shared_ptr<RecordingPrinter>
UseRecordingPrinter(const QString& deviceName = QStringLiteral("Recording Printer"));

// Prints a text with its first line at (left, top), each line starting at `left`, broken so that
// no line holds more than `widthChars` characters: a line breaks after its last blank within the
// width, a word longer than the width is cut at the width, and each line break of the text starts
// a new line. Blanks at a break are dropped. An empty text prints one empty line. CurrentX is 0
// and CurrentY is under the last line afterwards.
void PrintWrapped(Printer& printer, const QString& text, int widthChars, double left, double top);
void PrintWrapped(const QString& text, int widthChars, double left, double top);
