#include "foundation/Clock.h"
#include "foundation/PrinterQt.h"
#include "grids/GridEX.h"
#include "grids/GridEXSource.h"
#include "grids/frmPrintDialog.h"
#include "tests/support/TestSupport.h"

#include <QApplication>
#include <QFile>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

namespace {

// A grid widget over a small array, grouped by supplier.
class StockGridWindow {
public:
    StockGridWindow() : grid(QStringLiteral("gdxUBView")) {
        grid.SetSaveColumnState(false);
        data = {{"A-100", "Acme", "Hex bolt M6, zinc plated", "1,200.00"},
                {"A-200", "Acme", "Washer/spacer 6mm", "0.05"},
                {"B-300", "Brix", "Long description that wraps over more lines in its column",
                 "17.50"}};
        grid.SetCellReader([this](int record, int column) -> QVariant {
            return data.value(record - 1).value(column - 1);
        });
        GridColumns& c = grid.Columns();
        c.Add(QStringLiteral("PartNo"), QStringLiteral("Part No")).SetWidth(1440);
        c.Add(QStringLiteral("Supplier"), QStringLiteral("Supplier")).SetWidth(1800);
        c.Add(QStringLiteral("Description"), QStringLiteral("Description")).SetWidth(3000);
        c.Add(QStringLiteral("Price"), QStringLiteral("Price")).SetWidth(1200);
        grid.SetItemCount(int(data.size()));
    }
    GridEX grid;
    QList<QStringList> data;
};

QByteArray ReadAll(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

} // namespace

class TestPrintPanel : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() {
        UseTestLocale();
        SetToday(QDate(2026, 11, 23));
    }

    void panelChoosesPrinterAndOrientation() {
        auto laser = std::make_shared<RecordingPrinter>(QStringLiteral("Laser"));
        auto label = std::make_shared<RecordingPrinter>(QStringLiteral("Label"));
        SetPrinters({laser, label});
        SetCurrentPrinter(label);
        QList<int> choices;
        frmPrintDialog panel([&](int choice) { choices << choice; });
        QCOMPARE(panel.windowTitle(), QStringLiteral("Select Printer"));
        auto* list = panel.findChild<QListWidget*>(QStringLiteral("lstPrinters"));
        QVERIFY(list);
        QCOMPARE(list->count(), 2);
        QCOMPARE(list->item(0)->text(), QStringLiteral("Laser"));
        QCOMPARE(list->currentRow(), 1);
        auto* portrait = panel.findChild<QRadioButton*>(QStringLiteral("optOrientation_0"));
        auto* landscape = panel.findChild<QRadioButton*>(QStringLiteral("optOrientation_1"));
        QCOMPARE(portrait->text(), QStringLiteral("Portrait"));
        QCOMPARE(landscape->text(), QStringLiteral("Landscape"));
        QVERIFY(portrait->isChecked());

        list->setCurrentRow(0);
        QCOMPARE(&CurrentPrinter(), laser.get());
        landscape->click();
        panel.show();
        auto* ok = panel.findChild<QPushButton*>(QStringLiteral("cmdPrintOK"));
        QCOMPARE(ok->text(), QStringLiteral("Print"));
        ok->click();
        QCOMPARE(choices, QList<int>{1});
        QVERIFY(!panel.isVisible());
        QCOMPARE(panel.result(), int(QDialog::Accepted));

        frmPrintDialog again([&](int choice) { choices << choice; });
        auto* cancel = again.findChild<QPushButton*>(QStringLiteral("cmdPrintCancel"));
        QCOMPARE(cancel->text(), QStringLiteral("Cancel"));
        cancel->click();
        QCOMPARE(choices.size(), 1);

        SetPrinters({});
        frmPrintDialog none([](int) {});
        QVERIFY(!none.findChild<QPushButton*>(QStringLiteral("cmdPrintOK"))->isEnabled());
    }

    void printPanelPrintsTheGrid() {
        auto rec = UseRecordingPrinter();
        StockGridWindow w;
        w.grid.AddGroup(QStringLiteral("Supplier"));
        w.grid.ExpandAll();
        QCOMPARE(w.grid.RowCount(), 5);
        ScriptedBoxes boxes;
        boxes.answerInput(QStringLiteral("Stock by supplier"));
        QTimer::singleShot(0, [] {
            QWidget* modal = QApplication::activeModalWidget();
            QVERIFY(modal);
            modal->findChild<QPushButton*>(QStringLiteral("cmdPrintOK"))->click();
        });
        ShowPrintPanel(nullptr, &w.grid);
        const QStringList texts = rec->Texts();
        QCOMPARE(texts.value(0), QStringLiteral("23/11/2026  Stock by supplier"));
        QVERIFY(texts.contains(QStringLiteral("Hex bolt M6, zinc plated")));
        const qsizetype wrapped = texts.indexOf(QStringLiteral("Long description that "));
        QVERIFY(wrapped > 0);
        QCOMPARE(texts.mid(wrapped + 1, 2),
                 (QStringList{"wraps over more lines in ", "its column"}));
        int groupRows = 0;
        for (const QString& t : texts)
            groupRows += t.startsWith(QStringLiteral("Supplier: "));
        QCOMPARE(groupRows, 2);
        QCOMPARE(rec->Documents(), 1);
    }

    void exportThroughTheGridWidget() {
        QTemporaryDir dir;
        const QString file = dir.filePath(QStringLiteral("grid.csv"));
        StockGridWindow w;
        w.grid.Columns()(QStringLiteral("Supplier")).SetVisible(false);
        w.grid.AddGroup(QStringLiteral("Supplier"), Qt::DescendingOrder);
        w.grid.ExpandAll();
        ScriptedBoxes boxes;
        boxes.answer(vbOK);
        QVERIFY(WriteGridCsv(w.grid, file));
        QCOMPARE(ReadAll(file),
                 QByteArray("Part No,Description,Price,\r\n\r\n"
                            "B-300,Long description that wraps over more lines in its column,"
                            "17.50,\r\n"
                            "A-100,Hex bolt M6. zinc plated,1.200.00,\r\n"
                            "A-200,Washer/spacer 6mm,0.05,\r\n"));
    }

    // Writes a listing through the PDF writer. With QS_LISTING_PDF set, the file is kept there.
    void listingToPdf() {
        QTemporaryDir dir;
        const QString keep = qEnvironmentVariable("QS_LISTING_PDF");
        const QString file = keep.isEmpty() ? dir.filePath(QStringLiteral("listing.pdf")) : keep;
        QFile::remove(file);
        auto pdf = QtPrinter::PdfWriter();
        SetPrinters({pdf});
        StockGridWindow w;
        for (int i = 1; i <= 70; ++i)
            w.data.append({QStringLiteral("C-%1").arg(i, 3, 10, QLatin1Char('0')),
                           QStringLiteral("Cobalt"),
                           QStringLiteral("Item number %1 of the long list").arg(i),
                           QStringLiteral("%1.25").arg(i)});
        w.grid.SetItemCount(0);
        w.grid.SetItemCount(int(w.data.size()));
        w.grid.AddGroup(QStringLiteral("Supplier"));
        w.grid.ExpandAll();
        ScriptedBoxes boxes;
        boxes.answerInput(QStringLiteral("Stock listing"));
        boxes.answerFile(file);
        QVERIFY(PrintGrid(w.grid, 0));
        // The file is asked for after the heading, when drawing starts.
        QCOMPARE(boxes.shown().size(), 2);
        QCOMPARE(boxes.shown()[0].kind, ShownBox::Input);
        QCOMPARE(boxes.shown()[1].kind, ShownBox::File);
        const QByteArray bytes = ReadAll(file);
        QVERIFY(bytes.startsWith("%PDF"));
        QVERIFY(bytes.size() > 2000);
    }
};

QTEST_MAIN(TestPrintPanel)
#include "test_printpanel.moc"
