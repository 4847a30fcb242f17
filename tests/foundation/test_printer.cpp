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
        QCOMPARE(p.TextWidth(QStringLiteral("abcd")), 480.0);
        QCOMPARE(p.TextHeight(QStringLiteral("abcd")), 240.0);
        QCOMPARE(p.TextHeight(), 240.0);
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
        p.Print(QStringLiteral("one\ntwo"));
        QCOMPARE(p.CurrentY(), 2960.0);

        const QList<PrintCall> texts = p.Calls(PrintCall::Text);
        QCOMPARE(p.Texts(), (QStringList{"abc", "de", "f", "one", "two"}));
        QCOMPARE(texts[0].x, 1000.0);
        QCOMPARE(texts[1].x, 1360.0);
        QCOMPARE(texts[2].x, 1600.0);
        QCOMPARE(texts[2].y, 2000.0);
        // The second line of a text starts at the left edge.
        QCOMPARE(texts[3].x, 500.0);
        QCOMPARE(texts[4].x, 0.0);
        QCOMPARE(texts[4].y, 2720.0);
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
        QCOMPARE(p.Calls(PrintCall::NewPage).size(), 1);
        QCOMPARE(p.Documents(), 1);
        // The next document starts again on sheet 1.
        p.Print(QStringLiteral("again"));
        QCOMPARE(p.Calls(PrintCall::Text).last().page, 1);
    }

    void linesBoxesPicturesAndPaper() {
        RecordingPrinter p;
        p.Line(100, 200, 3000, 200);
        QCOMPARE(p.CurrentX(), 3000.0);
        QCOMPARE(p.CurrentY(), 200.0);
        p.Box(500, 600, 4000, 5000);
        QCOMPARE(p.CurrentX(), 4000.0);
        QCOMPARE(p.CurrentY(), 5000.0);
        QCOMPARE(p.Calls(PrintCall::Box).first().y2, 5000.0);
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
        // An end with nothing drawn sends nothing.
        paper.EndDoc();
        QCOMPARE(paper.Documents(), 0);
    }

    void collectionAndCurrentPrinter() {
        auto laser = std::make_shared<RecordingPrinter>(QStringLiteral("Laser"));
        auto label = std::make_shared<RecordingPrinter>(QStringLiteral("Label"));
        auto laser2 = std::make_shared<RecordingPrinter>(QStringLiteral("Laser"));
        SetPrinters({laser, label, laser2});
        QCOMPARE(&CurrentPrinter(), laser.get());
        QVERIFY(SelectPrinter(QStringLiteral("Label")));
        QCOMPARE(&CurrentPrinter(), label.get());
        // The first printer of that name wins.
        QVERIFY(SelectPrinter(QStringLiteral("Laser")));
        QCOMPARE(&CurrentPrinter(), laser.get());
        QVERIFY(!SelectPrinter(QStringLiteral("laser")));
        QCOMPARE(&CurrentPrinter(), laser.get());
        // The current printer stays when it is still listed, else the first takes over.
        SetPrinters({label, laser});
        QCOMPARE(&CurrentPrinter(), laser.get());
        SetPrinters({label});
        QCOMPARE(&CurrentPrinter(), label.get());
        auto rec = UseRecordingPrinter(QStringLiteral("Rec"));
        QCOMPARE(Printers().size(), size_t(1));
        QCOMPARE(CurrentPrinter().DeviceName(), QStringLiteral("Rec"));
    }

    void printWrappedBreaksAtBlanks() {
        auto p = UseRecordingPrinter();
        p->SetFontSize(10);
        PrintWrapped(QStringLiteral("The quick brown fox jumps"), 10, 720, 1000);
        QCOMPARE(p->Texts(), (QStringList{"The quick", "brown fox", "jumps"}));
        const QList<PrintCall> t = p->Calls(PrintCall::Text);
        QCOMPARE(t[0].x, 720.0);
        QCOMPARE(t[0].y, 1000.0);
        QCOMPARE(t[2].x, 720.0);
        QCOMPARE(t[2].y, 1480.0);
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
