// The main window with its panels put together: the list, the item detail with its history,
// adjustment, "Used in" and "Links" panels, the common links, the contact list, and print and
// export on whichever grid is on show.
#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "grids/GridEX.h"
#include "inventory/FormMain.h"
#include "inventory/ItemHistoryPanel.h"
#include "inventory/Links.h"
#include "inventory/LinksPanel.h"
#include "inventory/frmInvAdjustments.h"
#include "inventory/frmUsedIn.h"
#include "tests/inventory/InventoryFixture.h"
#include "tests/support/TestSupport.h"

#include <QApplication>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QMimeData>
#include <QPushButton>
#include <QRadioButton>
#include <QTabBar>
#include <QTest>
#include <QToolButton>

namespace {

// Exports the grid on show through the tool strip into `path`; the lines of the file written.
QStringList exportShown(FormMain& w, const QString& path) {
    ScriptedBoxes boxes;
    boxes.answerFile(path);
    boxes.answer(vbOK);
    w.buttons_ButtonClick(5);
    if (boxes.shown().last().title != QLatin1String("Saved"))
        return {};
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return {};
    return QString::fromLocal8Bit(f.readAll()).split(QStringLiteral("\r\n"));
}

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

class TestMainWindow : public QObject {
    Q_OBJECT
private slots:
    void init() {
        mData = std::make_unique<TestData>();
        QVERIFY(mData->ok());
        FillInventoryFixture();
        mWin = std::make_unique<FormMain>();
        mWin->Form_Load();
        mWin->show();
    }
    void cleanup() {
        mWin.reset();
        mData.reset();
    }

    void listDetailAdjustmentAndExport() {
        FormMain& w = *mWin;
        w.ButtonBar1_ButtonClick(QStringLiteral("Inventory"), QStringLiteral("UB_All"));
        QVERIFY(w.mUBRowCount > 0);
        w.gdxUBView->SetRow(1);
        QCOMPARE(gCurrentItemID, 1);
        const int qtyCol = UBItemColumn(QStringLiteral("Qty"));
        const int sellCol = UBItemColumn(QStringLiteral("Sell"));

        // Export writes the list on show.
        const QStringList lines = exportShown(w, mData->path(QStringLiteral("list.csv")));
        QVERIFY(lines.value(0).startsWith(QStringLiteral("Part No.,")));
        QCOMPARE(lines.value(1), QString());
        QVERIFY(lines.value(2).startsWith(QStringLiteral("A100,")));
        QCOMPARE(lines.size(), 2 + w.mUBRowCount + 1); // the last line break ends the file

        // The Detail tab shows the selected item; a save repaints its list row only.
        w.TabStrip2->setCurrentIndex(1);
        QCOMPARE(w.frmItemDetail->txtPNo->text(), QStringLiteral("A100"));
        QVERIFY(w.buttons[4]->isVisibleTo(&w));
        w.frmItemDetail->txtSellPrice->setText(QStringLiteral("0.25"));
        {
            ScriptedBoxes boxes;
            w.buttons_ButtonClick(4);
            QCOMPARE(boxes.processingBars(), 1);
        }
        QCOMPARE(SqlFirst("SELECT SellAt FROM tblStockItems WHERE ItemID = 1"),
                 QStringLiteral("0.25"));
        QCOMPARE(w.mUBData(sellCol, 1).toString(), QStringLiteral("0.25"));

        // An issue from the Adjustments tab moves the list row, the detail box and the history.
        w.frmItemDetail->TabStrip1->setCurrentIndex(5);
        w.frmItemDetail->TabStrip1_Click(5);
        auto* adj = w.findChild<frmInvAdjustments*>(QStringLiteral("frmInvAdjustments"));
        QVERIFY(adj);
        adj->findChild<QRadioButton*>(QStringLiteral("optAdjustments_0"))->setChecked(true);
        adj->findChild<QLineEdit*>(QStringLiteral("txtAdjustmentQty"))
            ->setText(QStringLiteral("3"));
        {
            ScriptedBoxes boxes;
            adj->findChild<QPushButton*>(QStringLiteral("btnInvAdjustOK"))->click();
        }
        QCOMPARE(SqlFirst("SELECT Qty FROM tblStockItems WHERE ItemID = 1"), QStringLiteral("7"));
        QCOMPARE(w.mUBData(qtyCol, 1).toString(), QStringLiteral("7"));
        QCOMPARE(w.frmItemDetail->txtItemQty->text(), QStringLiteral("7"));
        QCOMPARE(w.HistoryPanel->gdxItemHistory->ItemCount(), 1);

        // A save after the adjustment keeps the adjusted quantity.
        {
            ScriptedBoxes boxes;
            w.buttons_ButtonClick(4);
        }
        QCOMPARE(SqlFirst("SELECT Qty FROM tblStockItems WHERE ItemID = 1"), QStringLiteral("7"));

        // With the history on show, export writes the history.
        w.frmItemDetail->TabStrip1->setCurrentIndex(4);
        w.frmItemDetail->TabStrip1_Click(4);
        const QStringList hist = exportShown(w, mData->path(QStringLiteral("history.csv")));
        QCOMPARE(hist.value(0), QStringLiteral("Date,Type,Qty,EventRef,TRN,EventText,"));
        QVERIFY(hist.value(2).contains(QStringLiteral(",ISSUE,-3,")));

        // The contact list takes over print and export.
        w.ButtonBar1_ButtonClick(QStringLiteral("Addresses"), QStringLiteral("Suppliers"));
        const QString sup = exportShown(w, mData->path("sup.csv")).join(QLatin1Char('\n'));
        QVERIFY(sup.contains(QStringLiteral("Bolt Brothers")) && !sup.contains("A100"));
    }

    void usedInTabListsAndExports() {
        FormMain& w = *mWin;
        // A100 (item 1) sits on two boards; a third parts list names a board that is gone.
        ExecSql("INSERT INTO tblUsedIn VALUES (9, 1, 2, 'R1,R2'), (10, 1, 0.25, 'R7'), "
                "(77, 1, 3, 'gone')");
        detailOf(w, 1, 2);
        auto* panel = w.findChild<frmUsedIn*>(QStringLiteral("frmUsedIn"));
        QVERIFY(panel && panel->isVisible());
        GridEX* grid = panel->gdxUsedIn;
        QCOMPARE(grid->ItemCount(), 2);
        QCOMPARE(grid->Columns()(4).Caption(), QStringLiteral("Description"));
        QCOMPARE(w.mCurrentGrid, 4);

        const QStringList lines = exportShown(w, mData->path(QStringLiteral("usedin.csv")));
        QCOMPARE(lines.value(0),
                 QStringLiteral("QtyPer,MasterPNo,ItemName,Description,Ref/Position,"));
        QCOMPARE(lines.mid(2, 2),
                 QStringList({"2,H800,,Main board,R1.R2,", "0.25,H900,,Sub board,R7,"}));
        QCOMPARE(lines.size(), 5);

        // A parts list written by another workstation shows when the tab is chosen again;
        // another item shows its own.
        ExecSql("INSERT INTO tblUsedIn VALUES (9, 1, 1, 'R9')");
        w.frmItemDetail->TabStrip1->setCurrentIndex(0);
        w.frmItemDetail->TabStrip1->setCurrentIndex(2);
        QCOMPARE(grid->ItemCount(), 3);
        detailOf(w, 2, 2);
        QCOMPARE(grid->ItemCount(), 0);
    }

    void itemLinksThroughTheControls() {
        FormMain& w = *mWin;
        ExecSql("INSERT INTO tblHyperLinks VALUES (3, '/docs/c300.pdf', 'Data sheet'), "
                "(4, '/docs/d400.pdf', 'Diode sheet')");
        QList<QUrl> opened;
        const LinkOpener previous = InstallLinkOpener([&opened](const QUrl& url) {
            opened << url;
            return false;
        });
        detailOf(w, 3, 6);
        auto* links = w.findChild<frmDetailLinks*>(QStringLiteral("frmDetailLinks"));
        QVERIFY(links && links->isVisible());
        auto* names = links->findChild<QListWidget*>(QStringLiteral("lstLinkName"));
        auto* addresses = links->findChild<QListWidget*>(QStringLiteral("lstLinkAddress"));
        QVERIFY(names && addresses && !addresses->isVisible());
        QCOMPARE(texts(names), QStringList({"Data sheet"}));

        ScriptedBoxes boxes;
        // A typed address with a description.
        QTest::keyClicks(links->findChild<QLineEdit*>(QStringLiteral("txtAddDetailLink")),
                         QStringLiteral("https://example.com/c300"));
        boxes.answerInput(QStringLiteral("Maker page"));
        links->findChild<QPushButton*>(QStringLiteral("cmdAddDetailLink"))->click();
        QCOMPARE(texts(names), QStringList({"Data sheet", "Maker page"}));
        QCOMPARE(texts(addresses), QStringList({"/docs/c300.pdf", "https://example.com/c300"}));

        // Two files dropped on the list, after the question.
        const QString pdf = mData->path(QStringLiteral("wiring sheet.pdf"));
        const QString drawing = mData->path(QStringLiteral("outline.dxf"));
        boxes.answer(vbYes);
        dropFiles(names, {pdf, drawing});
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
        FormMain& w = *mWin;
        ExecSql("INSERT INTO tblHyperLinks VALUES (0, 'https://example.com/terms', 'Terms'), "
                "(0, '/share/prices.xls', 'Price list'), (1, '/docs/a100.pdf', 'A100 sheet')");
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

private:
    std::unique_ptr<TestData> mData;
    std::unique_ptr<FormMain> mWin;
};

QTEST_MAIN(TestMainWindow)
#include "test_mainwindow.moc"
