// The "Used in" and "Links" tabs of the item detail and the common links of the tool strip, in
// the assembled main window, driven through their controls.
#include "foundation/Globals.h"
#include "grids/GridEX.h"
#include "inventory/FormMain.h"
#include "inventory/Links.h"
#include "inventory/LinksPanel.h"
#include "inventory/frmUsedIn.h"
#include "tests/inventory/InventoryFixture.h"
#include "tests/support/TestSupport.h"

#include <QApplication>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QMimeData>
#include <QPushButton>
#include <QTabBar>
#include <QTest>

namespace {

QStringList texts(const QListWidget* list) {
    QStringList out;
    for (int i = 0; i < list->count(); ++i)
        out << list->item(i)->text();
    return out;
}

void tick(QListWidget* list, int row) {
    list->item(row)->setCheckState(Qt::Checked);
}

// Files dragged from a file manager onto a list, as the window system delivers them.
void dropFiles(QListWidget* list, const QStringList& paths) {
    auto* mime = new QMimeData;
    QList<QUrl> urls;
    for (const QString& p : paths)
        urls << QUrl::fromLocalFile(p);
    mime->setUrls(urls);
    const QPoint at = list->viewport()->rect().center();
    QDragEnterEvent enter(at, Qt::CopyAction, mime, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(list->viewport(), &enter);
    QVERIFY(enter.isAccepted());
    QDropEvent drop(QPointF(at), Qt::CopyAction, mime, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(list->viewport(), &drop);
    QVERIFY(drop.isAccepted());
    QCoreApplication::processEvents(); // the drop is handled once the drag is over
    delete mime;
}

void detailOf(FormMain& w, int itemId, int subTab) {
    w.ButtonBar1_ButtonClick(QStringLiteral("Inventory"), QStringLiteral("UB_All"));
    gCurrentItemID = itemId;
    w.TabStrip2->setCurrentIndex(1);
    w.frmItemDetail->TabStrip1->setCurrentIndex(subTab);
}

} // namespace

class TestLinksPanels : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { UseTestLocale(); }

    void usedInTabListsAndExports() {
        TestData data;
        FillInventoryFixture();
        // A100 (item 1) sits on two boards; a third parts list names a board that is gone.
        ExecSql("INSERT INTO tblUsedIn VALUES (9, 1, 2, 'R1,R2')");
        ExecSql("INSERT INTO tblUsedIn VALUES (10, 1, 0.25, 'R7')");
        ExecSql("INSERT INTO tblUsedIn VALUES (77, 1, 3, 'gone')");
        FormMain w;
        w.Form_Load();
        w.show();
        detailOf(w, 1, 2);
        auto* panel = w.findChild<frmUsedIn*>(QStringLiteral("frmUsedIn"));
        QVERIFY(panel && panel->isVisible());
        GridEX* grid = panel->gdxUsedIn;
        QCOMPARE(grid->ItemCount(), 2);
        QCOMPARE(grid->Columns()(4).Caption(), QStringLiteral("Description"));
        QCOMPARE(w.mCurrentGrid, 4);

        const QString csv = data.path(QStringLiteral("usedin.csv"));
        {
            ScriptedBoxes boxes;
            boxes.answerFile(csv);
            boxes.answer(vbOK);
            w.buttons_ButtonClick(5);
            QCOMPARE(boxes.shown().last().title, QStringLiteral("Saved"));
        }
        QFile file(csv);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QStringList lines = QString::fromLocal8Bit(file.readAll()).split("\r\n");
        QCOMPARE(lines.value(0),
                 QStringLiteral("QtyPer,MasterPNo,ItemName,Description,Ref/Position,"));
        QCOMPARE(lines.mid(2, 2),
                 QStringList({"2,H800,,Main board,R1.R2,", "0.25,H900,,Sub board,R7,"}));
        QCOMPARE(lines.size(), 5);
        // Back on the comments, export has no grid to work on: no file is asked for.
        w.frmItemDetail->TabStrip1->setCurrentIndex(0);
        {
            ScriptedBoxes boxes;
            w.buttons_ButtonClick(5);
            QCOMPARE(boxes.shown().size(), 0);
        }

        // A parts list written by another workstation shows when the tab is chosen again;
        // another item shows its own.
        ExecSql("INSERT INTO tblUsedIn VALUES (9, 1, 1, 'R9')");
        w.frmItemDetail->TabStrip1->setCurrentIndex(2);
        QCOMPARE(grid->ItemCount(), 3);
        detailOf(w, 2, 2);
        QCOMPARE(grid->ItemCount(), 0);
    }

    void itemLinksThroughTheControls() {
        TestData data;
        FillInventoryFixture();
        ExecSql("INSERT INTO tblHyperLinks VALUES (3, '/docs/c300.pdf', 'Data sheet')");
        ExecSql("INSERT INTO tblHyperLinks VALUES (4, '/docs/d400.pdf', 'Diode sheet')");
        QList<QUrl> opened;
        const LinkOpener previous = InstallLinkOpener([&opened](const QUrl& url) {
            opened << url;
            return false;
        });
        FormMain w;
        w.Form_Load();
        w.show();
        detailOf(w, 3, 6);
        auto* links = w.findChild<frmDetailLinks*>(QStringLiteral("frmDetailLinks"));
        QVERIFY(links && links->isVisible());
        auto* names = links->findChild<QListWidget*>(QStringLiteral("lstLinkName"));
        auto* addresses = links->findChild<QListWidget*>(QStringLiteral("lstLinkAddress"));
        QVERIFY(names && addresses && !addresses->isVisible());
        QCOMPARE(texts(names), QStringList({"Data sheet"}));
        QCOMPARE(names->item(0)->flags() & Qt::ItemIsUserCheckable, Qt::ItemIsUserCheckable);

        ScriptedBoxes boxes;
        // A typed address with a description.
        QTest::keyClicks(links->findChild<QLineEdit*>(QStringLiteral("txtAddDetailLink")),
                         QStringLiteral("https://example.com/c300"));
        boxes.answerInput(QStringLiteral("Maker page"));
        links->findChild<QPushButton*>(QStringLiteral("cmdAddDetailLink"))->click();
        QCOMPARE(texts(names), QStringList({"Data sheet", "Maker page"}));
        QCOMPARE(texts(addresses), QStringList({"/docs/c300.pdf", "https://example.com/c300"}));

        // Two files dropped on the list, after the question.
        const QString pdf = data.path(QStringLiteral("wiring sheet.pdf"));
        const QString drawing = data.path(QStringLiteral("outline.dxf"));
        boxes.answer(vbYes);
        dropFiles(names, {pdf, drawing});
        QCOMPARE(boxes.shown().last().title, QStringLiteral("More than one file"));
        QCOMPARE(texts(names),
                 QStringList({"Data sheet", "Maker page", "wiring sheet.pdf", "outline.dxf"}));
        QCOMPARE(texts(addresses).mid(2), QStringList({pdf, drawing}));

        // A double click opens the hidden address of its row; the missing file says nothing.
        boxes.clear();
        const QPoint on = names->visualItemRect(names->item(2)).center();
        QTest::mouseClick(names->viewport(), Qt::LeftButton, {}, on);
        QTest::mouseDClick(names->viewport(), Qt::LeftButton, {}, on);
        QCOMPARE(opened, QList<QUrl>({QUrl::fromLocalFile(pdf)}));
        QCOMPARE(boxes.shown().size(), 0);

        // Rename the dropped file, then remove the two ticked entries in turn.
        tick(names, 2);
        boxes.answerInput(QStringLiteral("Wiring guide"));
        links->findChild<QPushButton*>(QStringLiteral("cmdEditDetailLink"))->click();
        QCOMPARE(texts(names).value(2), QStringLiteral("Wiring guide"));
        QCOMPARE(names->item(2)->checkState(), Qt::Unchecked); // the lists were rebuilt
        tick(names, 0);
        tick(names, 3);
        links->findChild<QPushButton*>(QStringLiteral("cmdRemoveDetailLink"))->click();
        QCOMPARE(texts(names), QStringList({"Maker page", "Wiring guide"}));
        QCOMPARE(texts(addresses), QStringList({"https://example.com/c300", pdf}));
        QVERIFY(boxes.allAnswersUsed());
        // The other item's link was never touched.
        QCOMPARE(SqlFirst("SELECT count(*) FROM tblHyperLinks WHERE LinkStockID = 4"),
                 QStringLiteral("1"));
        InstallLinkOpener(previous);
    }

    void commonLinksFromTheToolStrip() {
        TestData data;
        FillInventoryFixture();
        ExecSql("INSERT INTO tblHyperLinks VALUES (0, 'https://example.com/terms', 'Terms')");
        ExecSql("INSERT INTO tblHyperLinks VALUES (0, '/share/prices.xls', 'Price list')");
        ExecSql("INSERT INTO tblHyperLinks VALUES (1, '/docs/a100.pdf', 'A100 sheet')");
        FormMain w;
        w.Form_Load();
        w.show();
        w.ButtonBar1_ButtonClick(QStringLiteral("Inventory"), QStringLiteral("UB_All"));
        QCOMPARE(w.mCurrentGrid, 1);
        auto* panel = w.findChild<frmGlobalLinks*>(QStringLiteral("frmGlobalLinks"));
        QVERIFY(panel && !panel->isVisible());
        w.buttons_ButtonClick(6);
        QVERIFY(panel->isVisible());
        auto* names = panel->findChild<QListWidget*>(QStringLiteral("lstGlobalLinkNames"));
        QCOMPARE(texts(names), QStringList({"Price list", "Terms"}));
        // No grid on show: print and export do nothing.
        QCOMPARE(w.mCurrentGrid, 0);

        ScriptedBoxes boxes;
        boxes.answerInput(QStringLiteral("Carrier tracking"));
        panel->findChild<QLineEdit*>(QStringLiteral("txtAddGlobalLink"))
            ->setText(QStringLiteral("https://example.com/track"));
        panel->findChild<QPushButton*>(QStringLiteral("cmdAddGlobalLink"))->click();
        QCOMPARE(texts(names), QStringList({"Carrier tracking", "Price list", "Terms"}));
        QCOMPARE(panel->findChild<QLineEdit*>(QStringLiteral("txtAddGlobalLink"))->text(),
                 QString());

        // Without the right the ticked entry stays, and the guard speaks once.
        tick(names, 1);
        tick(names, 2);
        gCanLinks = false;
        boxes.answer(vbOK);
        panel->findChild<QPushButton*>(QStringLiteral("cmdRemoveGlobalLink"))->click();
        gCanLinks = true;
        QCOMPARE(boxes.shown().size(), 2);
        QCOMPARE(boxes.shown().last().title, QStringLiteral("Access Restricted"));
        QCOMPARE(SqlFirst("SELECT count(*) FROM tblHyperLinks"), QStringLiteral("4"));

        // Another workstation's link shows at the next opening; Close gives the list back.
        ExecSql("INSERT INTO tblHyperLinks VALUES (0, '/share/manual.pdf', 'Assembly manual')");
        w.buttons_ButtonClick(6);
        QCOMPARE(texts(names).first(), QStringLiteral("Assembly manual"));
        panel->findChild<QPushButton*>(QStringLiteral("cmdGlobalLinksClose"))->click();
        QVERIFY(!panel->isVisible());
        QCOMPARE(w.mCurrentGrid, 1);
    }
};

QTEST_MAIN(TestLinksPanels)
#include "test_links_panels.moc"
