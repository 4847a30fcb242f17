#include "foundation/Printer.h"
#include "tests/support/TestSupport.h"

#include <QTest>

// Each character is FontSize x 12 twips wide and a line FontSize x 24 twips high on the
// recording printer: at 10 points, 120 and 240.
class TestPrinter : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { UseTestLocale(); }

    void printMovesAsVbDoes() {
        RecordingPrinter p;
        p.SetFontSize(10);
        QCOMPARE(p.TextWidth(QStringLiteral("ab\r\nabcdef")), 720.0);
        QCOMPARE(p.TextHeight(QStringLiteral("ab\r\nabcdef")), 480.0);
        p.SetCurrentX(1000);
        p.SetCurrentY(2000);
        p.PrintSameLine(QStringLiteral("abc"));
        QCOMPARE(p.CurrentX(), 1360.0);
        QCOMPARE(p.CurrentY(), 2000.0);
        p.PrintSameLine(QStringLiteral("de"));
        p.Print(QStringLiteral("f"));
        QCOMPARE(p.CurrentX(), 0.0);
        QCOMPARE(p.CurrentY(), 2240.0);
        p.Print();
        QCOMPARE(p.CurrentY(), 2480.0);
        p.SetCurrentX(500);
        // The second line of a text starts at the left edge.
        p.Print(QStringLiteral("one\ntwo"));
        QCOMPARE(p.CurrentY(), 2960.0);
        QCOMPARE(PlacedTexts(p), QStringList({"abc@1000,2000", "de@1360,2000", "f@1600,2000",
                                              "one@500,2480", "two@0,2720"}));
    }

    void fontAndSheetKeptWithEachCall() {
        RecordingPrinter p;
        p.SetFontName(QStringLiteral("Times New Roman"));
        p.SetFontSize(14);
        p.SetFontBold(true);
        p.Print(QStringLiteral("Title"));
        p.SetFontBold(false);
        p.SetFontItalic(true);
        p.SetFontSize(8);
        p.NewPage();
        QCOMPARE(p.CurrentY(), 0.0);
        p.Print(QStringLiteral("small"));
        p.EndDoc();

        const QList<PrintCall> texts = p.Calls(PrintCall::Text);
        QCOMPARE(texts[0].fontName, QStringLiteral("Times New Roman"));
        QCOMPARE(texts[0].fontSize, 14.0);
        QVERIFY(texts[0].bold && !texts[0].italic);
        QCOMPARE(texts[0].page, 1);
        QCOMPARE(texts[1].fontSize, 8.0);
        QVERIFY(!texts[1].bold && texts[1].italic);
        QCOMPARE(texts[1].page, 2);
        QCOMPARE(p.Documents(), 1);
        // The next document starts again on sheet 1.
        p.Print(QStringLiteral("again"));
        QCOMPARE(p.Calls(PrintCall::Text).last().page, 1);
    }

    void linesPicturesPaperAndPrinters() {
        RecordingPrinter p;
        p.Line(100, 200, 3000, 200);
        QCOMPARE(p.CurrentX(), 3000.0);
        p.Box(500, 600, 4000, 5000);
        QCOMPARE(p.CurrentY(), 5000.0);
        // With no loader nothing loads, and an invalid picture paints nothing.
        p.PaintPicture(LoadPicture(QStringLiteral("/nowhere/logo.png")), 0, 0);
        QCOMPARE(p.Calls().size(), 2);
        const Picture logo{QStringLiteral("logo.png"), 1500, 750};
        p.PaintPicture(logo, 600, 350);
        p.PaintPicture(logo, 600, 350, 700, 350);
        const QList<PrintCall> pics = p.Calls(PrintCall::Picture);
        QCOMPARE(pics[0].x2, 2100.0);
        QCOMPARE(pics[0].y2, 1100.0);
        QCOMPARE(pics[1].x2, 1300.0);

        RecordingPrinter paper;
        QCOMPARE(paper.Width(), 11906);
        paper.SetOrientation(vbPRORLandscape);
        QCOMPARE(paper.Width(), 16838);
        QCOMPARE(paper.Height(), 11906);
        paper.EndDoc(); // an end with nothing drawn sends nothing
        QCOMPARE(paper.Documents(), 0);

        auto laser = std::make_shared<RecordingPrinter>(QStringLiteral("Laser"));
        auto label = std::make_shared<RecordingPrinter>(QStringLiteral("Label"));
        auto laser2 = std::make_shared<RecordingPrinter>(QStringLiteral("Laser"));
        SetPrinters({laser, label, laser2});
        QCOMPARE(&CurrentPrinter(), laser.get());
        QVERIFY(SelectPrinter(QStringLiteral("Label")));
        QCOMPARE(&CurrentPrinter(), label.get());
        // The first printer of that name wins; names compare exactly.
        QVERIFY(SelectPrinter(QStringLiteral("Laser")));
        QCOMPARE(&CurrentPrinter(), laser.get());
        QVERIFY(!SelectPrinter(QStringLiteral("laser")));
        // The current printer stays when it is still listed, else the first takes over.
        SetPrinters({label, laser});
        QCOMPARE(&CurrentPrinter(), laser.get());
        SetPrinters({label});
        QCOMPARE(&CurrentPrinter(), label.get());
    }

    void printWrappedBreaksAtBlanks() {
        auto p = UseRecordingPrinter();
        p->SetFontSize(10);
        PrintWrapped(QStringLiteral("The quick brown fox jumps"), 10, 720, 1000);
        QCOMPARE(PlacedTexts(*p),
                 QStringList({"The quick@720,1000", "brown fox@720,1240", "jumps@720,1480"}));
        QCOMPARE(p->CurrentY(), 1720.0);
        QCOMPARE(p->CurrentX(), 0.0);

        p->Clear();
        // A word longer than the width is cut; a line break always starts a line; a line of
        // exactly the width stays whole.
        PrintWrapped(QStringLiteral("ABCDEFGHIJKL xy\r\nabcde fghij"), 5, 0, 0);
        QCOMPARE(p->Texts(), (QStringList{"ABCDE", "FGHIJ", "KL xy", "abcde", "fghij"}));

        p->Clear();
        PrintWrapped(QString(), 5, 100, 400);
        QVERIFY(p->Texts().isEmpty());
        QCOMPARE(p->CurrentY(), 640.0);
    }
};

QTEST_GUILESS_MAIN(TestPrinter)
#include "test_printer.moc"
