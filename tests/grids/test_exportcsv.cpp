#include "grids/ExportGridCsv.h"
#include "tests/grids/MemoryGrid.h"
#include "tests/support/TestSupport.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

namespace {

const QString kSavedTail = QStringLiteral(
    "\n\nCSV files are compatible with Microsoft Excel and many other programs. You can open the "
    "file using MS Excel. However, if you use Excel to create and add formulas then you should "
    "save the file afterwards as an XLS filetype to keep your formulas intact.");
const QString kFileError = QStringLiteral(
    "There was an error. The file could not be created/saved. If the file already exists it may "
    "be open by you or another user");

QByteArray ReadAll(const QString& path) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return "<missing>";
    return f.readAll();
}

// Scripted boxes that also keep the file requests made.
class FileBoxes : public ScriptedBoxes {
public:
    QList<FileDialogRequest> requests;
    QString fileDialog(const FileDialogRequest& request) override {
        requests.append(request);
        return ScriptedBoxes::fileDialog(request);
    }
};

// Grouped by supplier: two group rows, three detail rows, a hidden column in the middle.
MemoryGrid GroupedGrid() {
    MemoryGrid g;
    g.addColumn(QStringLiteral("Part No"), 1440);
    g.addColumn(QStringLiteral("ItemID"), 0, false);
    g.addColumn(QStringLiteral("Description"), 2400);
    g.addColumn(QStringLiteral("Price"), 900);
    g.addRow({"Supplier: Acme, Ltd", "", "", ""}, 1);
    g.addRow({"A-1", "17", "Bolt, M6", "1,200.00"});
    g.addRow({"A-2", "18", "Say \"hi\"", "3.50"});
    g.addRow({"Supplier: Brix", "", "", ""}, 1);
    g.addRow({"B-1", "19", "", "0"});
    return g;
}

} // namespace

class TestExportCsv : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { UseTestLocale(); }

    void groupedGridBytes() {
        QTemporaryDir dir;
        const QString file = dir.filePath(QStringLiteral("stock.csv"));
        MemoryGrid g = GroupedGrid();
        ScriptedBoxes boxes;
        boxes.answer(vbOK);
        QVERIFY(WriteGridCsv(g, file));
        QCOMPARE(ReadAll(file), QByteArray("Part No,Description,Price,\r\n"
                                           "\r\n"
                                           "A-1,Bolt. M6,1.200.00,\r\n"
                                           "A-2,Say \"hi\",3.50,\r\n"
                                           "B-1,,0,\r\n"));
        QCOMPARE(boxes.shown().size(), 1);
        QCOMPARE(boxes.shown()[0].title, QStringLiteral("Saved"));
        QCOMPARE(boxes.shown()[0].flags, vbOKOnly + vbInformation);
        QCOMPARE(boxes.shown()[0].prompt,
                 QStringLiteral("The file was saved with the name '") + file + kSavedTail);
    }

    void emptyGridsAndGridsWithoutVisibleColumns() {
        QTemporaryDir dir;
        const QString file = dir.filePath(QStringLiteral("empty.csv"));
        MemoryGrid g = GroupedGrid();
        g.rows.clear();
        g.groupLevels.clear();
        ScriptedBoxes boxes;
        boxes.answer(vbOK);
        QVERIFY(WriteGridCsv(g, file));
        QCOMPARE(ReadAll(file), QByteArray("Part No,Description,Price,\r\n\r\n"));
        QCOMPARE(boxes.shown()[0].title, QStringLiteral("Saved"));

        // No visible column: an empty line per detail row, none for the group rows.
        MemoryGrid hidden = GroupedGrid();
        for (MemoryGrid::Column& c : hidden.columns)
            c.visible = false;
        boxes.answer(vbOK);
        QVERIFY(WriteGridCsv(hidden, file));
        QCOMPARE(ReadAll(file), QByteArray("\r\n\r\n\r\n\r\n\r\n"));
    }

    void loadsEveryRowFirst() {
        QTemporaryDir dir;
        const QString file = dir.filePath(QStringLiteral("all.csv"));
        MemoryGrid g = GroupedGrid();
        g.fullyLoaded = false;
        g.loadedRows = 2;
        ScriptedBoxes boxes;
        boxes.answer(vbOK);
        QVERIFY(WriteGridCsv(g, file));
        QCOMPARE(g.loadCalls, 1);
        QCOMPARE(ReadAll(file).count("\r\n"), 5);
    }

    void unwritableTargets() {
        QTemporaryDir dir;
        MemoryGrid g = GroupedGrid();
        ScriptedBoxes boxes;
        boxes.answer(vbOK);
        QVERIFY(!WriteGridCsv(g, dir.filePath(QStringLiteral("missing/folder/x.csv"))));
        boxes.answer(vbOK);
        QVERIFY(!WriteGridCsv(g, dir.path()));
        QCOMPARE(boxes.shown().size(), 2);
        for (const ShownBox& b : boxes.shown()) {
            QCOMPARE(b.title, QStringLiteral("File Error"));
            QCOMPARE(b.prompt, kFileError);
        }
        QVERIFY(!QFileInfo::exists(dir.filePath(QStringLiteral("missing"))));
    }

    void saveDialogKeepsTheLastName() {
        QTemporaryDir dir;
        const QString file = dir.filePath(QStringLiteral("kept.csv"));
        SetExportFileName(QString());
        MemoryGrid g = GroupedGrid();
        FileBoxes boxes;

        // Cancelled with no name ever chosen: nothing written, nothing said.
        boxes.answerFile(QString());
        ExportGridCsv(g);
        QCOMPARE(boxes.shown().size(), 1);
        QCOMPARE(boxes.requests[0].filter, QStringLiteral("csv (*.csv)|*.csv"));
        QCOMPARE(boxes.requests[0].defaultExt, QStringLiteral(".csv"));
        QVERIFY(boxes.requests[0].save);

        boxes.answerFile(file);
        boxes.answer(vbOK);
        ExportGridCsv(g);
        QVERIFY(ReadAll(file).contains("A-1,Bolt. M6"));

        // Cancelled after an export: the same file is written again.
        g.rows[1][0] = QStringLiteral("Z-9");
        boxes.answerFile(QString());
        boxes.answer(vbOK);
        ExportGridCsv(g);
        QCOMPARE(boxes.requests[2].fileName, file);
        QVERIFY(ReadAll(file).contains("Z-9,Bolt. M6"));
        QCOMPARE(boxes.prompts().size(), 2);
        QCOMPARE(ExportFileName(), file);
        QVERIFY(boxes.allAnswersUsed());
    }
};

QTEST_GUILESS_MAIN(TestExportCsv)
#include "test_exportcsv.moc"
