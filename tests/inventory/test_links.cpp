// Where-used and document links, without windows: the rows each load gives, what every change
// writes, the questions asked on the way, and the refusals without the links right.
#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "inventory/Links.h"
#include "inventory/UsedIn.h"
#include "tests/support/TestSupport.h"

#include <QTest>

namespace {

// Every link as "owner|address|name", in stored order.
QStringList allLinks() {
    return SqlRows("SELECT LinkStockID, LinkAddress, LinkName FROM tblHyperLinks ORDER BY rowid");
}

void link(int owner, const QString& address, const QString& name) {
    ExecSql("INSERT INTO tblHyperLinks VALUES (?, ?, ?)", {owner, address, name});
}

const QString kAddPrompt =
    QStringLiteral("The file or address is shown below. If you want you can replace it with a "
                   "more meaningfull description before accepting it");
const QString kNoDescription =
    QStringLiteral("All links require a description. If no description is given then the actual "
                   "link/address will be displayed");

} // namespace

class TestLinks : public QObject {
    Q_OBJECT
    std::unique_ptr<TestData> mData;
private slots:
    void initTestCase() { UseTestLocale(); }
    void init() {
        mData = std::make_unique<TestData>();
        gCanLinks = true;
    }

    void usedInListsTheAssembliesOfAnItem() {
        ExecSql("INSERT INTO tblStockItems (ItemID, MasterPNo, ItemName, ItemDescription, "
                "Category, Assy) VALUES (1, 'R-10K', '10k', 'Resistor', 'RES', 0), (2, 'AS-100', "
                "'Issue 3', 'Main board', 'AS', -1), (3, 'AS-200', NULL, 'Power unit', 'AS', -1)");
        // A parts list whose assembly was deleted by other means, and one of another component.
        ExecSql("INSERT INTO tblUsedIn VALUES (2, 1, 4, 'R1,R2,R5,R9'), (3, 1, 0.5, NULL), "
                "(99, 1, 7, 'gone'), (2, 3, 1, 'PSU')");

        QCOMPARE(LoadUsedIn(1).rows,
                 QList<QStringList>({{"4", "AS-100", "Issue 3", "Main board", "R1,R2,R5,R9"},
                                     {"0.5", "AS-200", "", "Power unit", ""}}));

        // The quantity is a plain number in the locale's own writing.
        LocaleScope german(QLocale(QLocale::German, QLocale::Germany));
        QCOMPARE(LoadUsedIn(1).rows[1][0], "0,5");
    }

    void addAsksForADescription() {
        ScriptedBoxes boxes;
        boxes.answerInput(QStringLiteral("Data sheet"));
        QVERIFY(AddLink(5, QStringLiteral("/srv/docs/r10k.pdf")));
        QCOMPARE(boxes.shown().size(), 1);
        QCOMPARE(boxes.shown()[0].kind, ShownBox::Input);
        QCOMPARE(boxes.shown()[0].title, "File/Address/URL");
        QCOMPARE(boxes.shown()[0].prompt, kAddPrompt);

        // Accepting the proposed text names the link by its address.
        boxes.answerInput(QStringLiteral("https://example.com"));
        QVERIFY(AddLink(0, QStringLiteral("https://example.com")));
        // An empty reply (or a cancelled box) adds nothing.
        boxes.answerInput(QString());
        QVERIFY(!AddLink(5, QStringLiteral("/srv/docs/lost.pdf")));
        boxes.cancelInput();
        QVERIFY(!AddLink(5, QStringLiteral("/srv/docs/lost.pdf")));
        // The reply's apostrophe would break the statement: it becomes a back-quote.
        boxes.answerInput(QStringLiteral("Maker's page"));
        QVERIFY(AddLink(5, QStringLiteral("https://example.com/maker")));
        // Nothing typed: told so, and no question.
        boxes.answer(vbOK);
        QVERIFY(!AddLink(5, QStringLiteral("  ")));
        QCOMPARE(boxes.shown().last().kind, ShownBox::Message);
        QVERIFY(boxes.allAnswersUsed());

        QCOMPARE(allLinks(), QStringList({"5|/srv/docs/r10k.pdf|Data sheet",
                                          "0|https://example.com|https://example.com",
                                          "5|https://example.com/maker|Maker`s page"}));
    }

    void editWithAndWithoutADescription() {
        link(5, "/srv/a.pdf", "Old");
        link(5, "/srv/b.pdf", "Keep");
        link(6, "/srv/a.pdf", "Old"); // the same link of another item
        ScriptedBoxes boxes;
        boxes.answerInput(QStringLiteral("Fitter's guide"));
        QVERIFY(EditLinkName(5, QStringLiteral("Old"), QStringLiteral("/srv/a.pdf")));
        QCOMPARE(boxes.shown()[0].title, "Edit Link Description");
        QCOMPARE(boxes.shown()[0].prompt,
                 "This process doesn't change the actual link/target/address. It "
                 "just allows you to edit or create a more meaningful description");
        QCOMPARE(allLinks(), QStringList({"5|/srv/a.pdf|Fitter`s guide", "5|/srv/b.pdf|Keep",
                                          "6|/srv/a.pdf|Old"}));

        // An empty reply is told that the address stands for the name; a cancel counts as empty.
        boxes.clear();
        boxes.answerInput(QString());
        boxes.answer(vbOK);
        QVERIFY(EditLinkName(5, QStringLiteral("Keep"), QStringLiteral("/srv/b.pdf")));
        QCOMPARE(boxes.shown().size(), 2);
        QCOMPARE(boxes.shown()[1].prompt, kNoDescription);
        QCOMPARE(boxes.shown()[1].title, "Link Description");
        boxes.cancelInput();
        boxes.answer(vbOK);
        QVERIFY(EditLinkName(6, QStringLiteral("OLD"), QStringLiteral("/SRV/A.PDF")));
        QCOMPARE(allLinks(), QStringList({"5|/srv/a.pdf|Fitter`s guide", "5|/srv/b.pdf|/srv/b.pdf",
                                          "6|/srv/a.pdf|/SRV/A.PDF"}));
        QVERIFY(boxes.allAnswersUsed());
    }

    void removeTakesEqualLinksTogether() {
        link(5, "/srv/a.pdf", "Sheet");
        link(5, "/srv/a.pdf", "Sheet");
        link(5, "/SRV/A.pdf", "SHEET"); // equal but for case
        link(5, "/srv/a.pdf", "Other name");
        link(6, "/srv/a.pdf", "Sheet");
        ScriptedBoxes boxes;
        QVERIFY(RemoveLink(5, QStringLiteral("Sheet"), QStringLiteral("/srv/a.pdf")));
        QCOMPARE(boxes.shown().size(), 0);
        QCOMPARE(allLinks(), QStringList({"5|/srv/a.pdf|Other name", "6|/srv/a.pdf|Sheet"}));
    }

    void droppedFilesAreNamedByTheirFiles() {
        for (const auto& [path, name] : {std::pair{"C:\\Docs\\Sheets\\r10k.pdf", "r10k.pdf"},
                                         {"/home/ann/Drawings", "Drawings"},
                                         {"D:plan.dwg", "plan.dwg"},
                                         {"notes.txt", "notes.txt"}})
            QCOMPARE(LinkNameOfPath(QLatin1String(path)), QLatin1String(name));

        ScriptedBoxes boxes;
        const QStringList two = {QStringLiteral("/data/sheets/a.pdf"),
                                 QStringLiteral("/data/O'Brien/quote.doc")};
        boxes.answer(vbNo);
        QCOMPARE(AddDroppedFiles(5, two), 0);
        QCOMPARE(boxes.shown()[0].prompt,
                 "You drag/dropped more than one file. Do you wish to continue?");
        QCOMPARE(boxes.shown()[0].title, "More than one file");
        QCOMPARE(boxes.shown()[0].flags & 7, int(vbYesNo));
        QVERIFY(allLinks().isEmpty());

        boxes.answer(vbYes);
        QCOMPARE(AddDroppedFiles(5, two), 2);
        // One file: no question.
        QCOMPARE(AddDroppedFiles(0, {QStringLiteral("/data/catalogue.pdf")}), 1);
        QCOMPARE(boxes.shown().size(), 2);
        QCOMPARE(allLinks(),
                 QStringList({"5|/data/sheets/a.pdf|a.pdf", "5|/data/O`Brien/quote.doc|quote.doc",
                              "0|/data/catalogue.pdf|catalogue.pdf"}));

        // An engine failure part way keeps the files written before it.
        ExecSql("CREATE TRIGGER failB BEFORE INSERT ON tblHyperLinks WHEN NEW.LinkName = 'b.txt' "
                "BEGIN SELECT RAISE(ABORT, 'locked'); END");
        boxes.answer(vbYes);
        QVERIFY_THROWS_EXCEPTION(
            DbError, AddDroppedFiles(7, {QStringLiteral("/x/a.txt"), QStringLiteral("/x/b.txt"),
                                         QStringLiteral("/x/c.txt")}));
        QCOMPARE(LoadLinks(7).names, QStringList({"a.txt"}));
    }

    void everyChangeIsRefusedWithoutTheRight() {
        link(5, "/srv/a.pdf", "Sheet");
        const QStringList before = allLinks();
        gCanLinks = false;
        ScriptedBoxes boxes;
        for (int i = 0; i < 4; ++i)
            boxes.answer(vbOK);
        QVERIFY(!AddLink(5, QStringLiteral("/srv/new.pdf")));
        QCOMPARE(AddDroppedFiles(5, {QStringLiteral("/a.pdf"), QStringLiteral("/b.pdf")}), 0);
        QVERIFY(!EditLinkName(5, QStringLiteral("Sheet"), QStringLiteral("/srv/a.pdf")));
        QVERIFY(!RemoveLink(5, QStringLiteral("Sheet"), QStringLiteral("/srv/a.pdf")));
        QCOMPARE(boxes.shown().size(), 4);
        for (const ShownBox& b : boxes.shown()) {
            QCOMPARE(b.kind, ShownBox::Message);
            QCOMPARE(b.prompt, "You do not have permission to add or make changes to HyperLinks");
            QCOMPARE(b.title, "Access Restricted");
        }
        QCOMPARE(allLinks(), before);
        // Loading and opening stay open to everyone.
        QCOMPARE(LoadLinks(5).names, QStringList({"Sheet"}));
    }
};

QTEST_GUILESS_MAIN(TestLinks)
#include "test_links.moc"
