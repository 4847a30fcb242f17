#include "foundation/Clock.h"
#include "grids/GridModel.h"
#include "grids/GridParts.h"
#include "tests/grids/GridDemo.h"
#include "tests/support/TestSupport.h"

#include <QAbstractItemModelTester>
#include <QDateEdit>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QSignalSpy>
#include <QTableView>
#include <QTest>
#include <QToolButton>

namespace {

QStringList Column(const GridEX& grid, const QString& key) {
    QStringList out;
    for (int r = 1; r <= grid.RowCount(); ++r)
        out << grid.CellValue(r, grid.Columns()(key).Index()).toString();
    return out;
}

// Lets the view finish its editor and the grid its queued commit.
void Settle() {
    for (int i = 0; i < 4; ++i)
        QCoreApplication::processEvents();
}

void ClickHeader(GridEX& grid, const QString& key) {
    QHeaderView* hh = grid.TableView()->horizontalHeader();
    const int logical = grid.Columns()(key).Index() - 1;
    const QPoint at(hh->sectionViewportPosition(logical) + hh->sectionSize(logical) / 2,
                    hh->height() / 2);
    QTest::mouseClick(hh->viewport(), Qt::LeftButton, {}, at);
}

// Opens the editor of a cell, types into it and confirms with Enter.
void TypeIntoCell(GridEX& grid, int row, const QString& key, const QString& text,
                  bool clear = true) {
    QTableView* view = grid.TableView();
    const QModelIndex idx = grid.Model()->index(row - 1, grid.Columns()(key).Index() - 1);
    view->setCurrentIndex(idx);
    view->edit(idx);
    auto* editor = qobject_cast<QLineEdit*>(view->indexWidget(idx));
    QVERIFY(editor);
    if (clear)
        editor->clear();
    QTest::keyClicks(editor, text);
    QTest::keyClick(editor, Qt::Key_Return);
    Settle();
}

} // namespace

class TestGrid : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { UseTestLocale(); }

    void modelPassesTheTesterThroughEveryChange() {
        GridDemo demo;
        demo.Generate(40, 4);
        demo.grid->SetAllowAddNew(true);
        QAbstractItemModelTester tester(demo.grid->Model(),
                                        QAbstractItemModelTester::FailureReportingMode::QtTest);
        demo.Load();
        demo.grid->SortBy(QStringLiteral("PartNo"), Qt::DescendingOrder);
        demo.grid->AddGroup(QStringLiteral("Supplier"));
        demo.grid->ExpandAll();
        demo.grid->SetGroupExpanded(1, false);
        demo.grid->CollapseAll();
        demo.grid->ClearGroups();
        demo.grid->SetRow(3);
        demo.grid->Model()->setData(demo.grid->Model()->index(2, 3), QStringLiteral("9"));
        QVERIFY(demo.grid->Update());
        demo.grid->SetAllowDelete(true);
        demo.grid->SetRow(2);
        QVERIFY(demo.grid->Delete());
        demo.grid->SetAllowAddNew(false);
        demo.grid->SetItemCount(0);
        demo.grid->SetItemCount(int(demo.rows.size()));
        QCOMPARE(demo.grid->RowCount(), 39);
    }

    void namesAndColumnsAsWindowsUseThem() {
        GridDemo demo(QStringLiteral("gdxUBView"));
        demo.Generate(3);
        demo.Load();
        QCOMPARE(demo.findChild<GridEX*>(QStringLiteral("gdxUBView")), demo.grid);
        QVERIFY(demo.findChild<QTableView*>(QStringLiteral("gdxUBView")));
        const GridColumns& cols = demo.grid->Columns();
        QCOMPARE(cols.Count(), 7);
        QCOMPARE(cols(2).Caption(), QStringLiteral("Part No"));
        QCOMPARE(cols(QStringLiteral("partno")).Width(), 1500);
        QVERIFY(!cols(1).Visible());
        QVERIFY(demo.grid->TableView()->isColumnHidden(0));
        QVERIFY(cols.Find(QStringLiteral("Nothing")) == nullptr);
        // 1500 twips are 100 pixels at 96 dpi.
        QCOMPARE(demo.grid->TableView()->horizontalHeader()->sectionSize(1),
                 demo.grid->TwipsToPixels(1500));
        demo.grid->SetRow(2);
        QCOMPARE(demo.grid->Row(), 2);
        QCOMPARE(demo.grid->Value(2), demo.rows[1][1]);
        QCOMPARE(demo.grid->Value(QStringLiteral("Supplier")), demo.rows[1][2]);
        QCOMPARE(demo.grid->RecordIndex(2), 2);
        QCOMPARE(demo.grid->GroupRowLevel(2), 0);
        QVERIFY(demo.grid->FullyLoaded());
    }

    void freshFillKeepsArrayOrderAndHeaderClicksToggle() {
        GridDemo demo;
        demo.rows = {{1, "B7", "S", "10", false, "", ""},
                     {2, "a2", "S", "9", false, "", ""},
                     {3, "C1", "S", "100", false, "", ""},
                     {4, "b1", "S", "9.5", false, "", ""}};
        demo.Load();
        QCOMPARE(Column(*demo.grid, "PartNo"), QStringList({"B7", "a2", "C1", "b1"}));
        QCOMPARE(demo.grid->TableView()->horizontalHeader()->sortIndicatorSection(), -1);

        ClickHeader(*demo.grid, "PartNo");
        QCOMPARE(Column(*demo.grid, "PartNo"), QStringList({"a2", "b1", "B7", "C1"}));
        ClickHeader(*demo.grid, "PartNo");
        QCOMPARE(Column(*demo.grid, "PartNo"), QStringList({"C1", "B7", "b1", "a2"}));
        ClickHeader(*demo.grid, "PartNo");
        QCOMPARE(Column(*demo.grid, "PartNo"), QStringList({"a2", "b1", "B7", "C1"}));
        // Quantities are numbers: 9 before 9.5 before 10 before 100.
        ClickHeader(*demo.grid, "Qty");
        QCOMPARE(Column(*demo.grid, "Qty"), QStringList({"9", "9.5", "10", "100"}));
        // The owner's array is never reordered.
        QCOMPARE(demo.rows[0][1].toString(), QStringLiteral("B7"));
        QCOMPARE(demo.grid->RecordIndex(1), 2);

        // A reload shows the array's order again.
        demo.grid->SetItemCount(0);
        Settle();
        demo.grid->SetItemCount(4);
        QCOMPARE(Column(*demo.grid, "PartNo"), QStringList({"B7", "a2", "C1", "b1"}));
    }

    void sortingWithSeveralKeysIsStable() {
        GridDemo demo;
        demo.rows = {{1, "X", "B", "2", false, "", ""},
                     {2, "Y", "A", "2", false, "", ""},
                     {3, "Z", "B", "1", false, "", ""},
                     {4, "W", "A", "2", false, "", ""}};
        demo.Load();
        demo.grid->SortBy({{QStringLiteral("Supplier"), Qt::AscendingOrder},
                           {QStringLiteral("Qty"), Qt::AscendingOrder}});
        // Equal keys keep the array's order (Y before W).
        QCOMPARE(Column(*demo.grid, "PartNo"), QStringList({"Y", "W", "Z", "X"}));
    }

    void datesSortAsDatesAndComeFromTheCalendar() {
        GridDemo demo;
        demo.rows = {{1, "A", "S", "1", false, "05/01/2027", ""},
                     {2, "B", "S", "1", false, "", ""},
                     {3, "C", "S", "1", false, "23/11/2026", ""},
                     {4, "D", "S", "1", false, "30/12/2026", ""}};
        demo.Load();
        demo.grid->SortBy(QStringLiteral("DelDate"));
        QCOMPARE(Column(*demo.grid, "PartNo"), QStringList({"B", "C", "D", "A"}));

        demo.grid->ClearSort();
        SetToday(QDate(2026, 11, 23));
        demo.grid->SetCommitMode(GridCommit::OnCellEdit);
        QTableView* view = demo.grid->TableView();
        const QModelIndex idx = demo.grid->Model()->index(1, 5);
        view->setCurrentIndex(idx);
        view->edit(idx);
        auto* editor = qobject_cast<QDateEdit*>(view->indexWidget(idx));
        QVERIFY(editor);
        QVERIFY(editor->calendarPopup());
        QCOMPARE(editor->date(), QDate(2026, 11, 23)); // an empty date starts at today
        QTest::keyClicks(editor, QStringLiteral("1999"));
        QTest::keyClick(editor, Qt::Key_Up);
        QCOMPARE(editor->date(), QDate(2026, 11, 23)); // typing is dropped
        editor->setDate(QDate(2027, 2, 14));           // as the calendar sets it
        QTest::keyClick(editor, Qt::Key_Return);
        Settle();
        QCOMPARE(demo.rows[1][5].toString(), ShowDate(QDate(2027, 2, 14)));
    }

    void groupByBoxTextButtonsAndClick() {
        GridDemo demo;
        demo.Generate(6, 2);
        demo.Load();
        QLabel* label = demo.grid->findChild<QLabel*>();
        QVERIFY(label);
        QCOMPARE(label->text(),
                 QStringLiteral("Drag a column header here to group by that column"));
        demo.grid->SetGroupByBoxText(QStringLiteral("Drag a column header here to group by that "
                                                    "column. Click to open/close the groups"));
        QCOMPARE(label->text(), demo.grid->GroupByBoxText());

        demo.grid->AddGroup(QStringLiteral("Supplier"));
        QCOMPARE(demo.grid->RowCount(), 2);
        auto* box = demo.grid->findChild<QFrame*>(QStringLiteral("gdxDemoGroupBy"));
        QVERIFY(box);
        QTest::mouseClick(box, Qt::LeftButton);
        QCOMPARE(demo.grid->RowCount(), 8);
        QTest::mouseClick(box, Qt::LeftButton);
        QCOMPARE(demo.grid->RowCount(), 2);
        // The button of a grouped column takes the group away.
        auto* button = box->findChild<QToolButton*>();
        QVERIFY(button);
        QVERIFY(button->text().startsWith(QStringLiteral("Supplier")));
        button->click();
        QVERIFY(demo.grid->Groups().isEmpty());
        QCOMPARE(demo.grid->RowCount(), 6);
        demo.grid->SetGroupByBoxVisible(false);
        QVERIFY(!demo.grid->GroupByBoxVisible());
    }

    void groupingBuildsGroupRowsWithLevels() {
        GridDemo demo;
        demo.Generate(30, 3); // Supplier A, B, C: ten rows each
        demo.Load();
        QSignalSpy groups(demo.grid, &GridEX::GroupsChanged);
        demo.grid->AddGroup(QStringLiteral("Supplier"));
        QCOMPARE(groups.count(), 1);
        // New groups start closed: three group rows.
        QCOMPARE(demo.grid->RowCount(), 3);
        for (int r = 1; r <= 3; ++r)
            QCOMPARE(demo.grid->GroupRowLevel(r), 1);
        demo.grid->SetRow(1);
        QCOMPARE(demo.grid->Value(QStringLiteral("PartNo")).toString(),
                 QStringLiteral("Supplier: Supplier A (10)"));
        QCOMPARE(demo.grid->Value(QStringLiteral("Qty")), QVariant());
        QCOMPARE(demo.grid->RecordIndex(1), 0);

        demo.grid->ExpandAll();
        QCOMPARE(demo.grid->RowCount(), 33);
        QCOMPARE(demo.grid->GroupRowLevel(1), 1);
        QCOMPARE(demo.grid->GroupRowLevel(12), 1);
        for (int r = 2; r <= 11; ++r) {
            QCOMPARE(demo.grid->GroupRowLevel(r), 0);
            QCOMPARE(demo.grid->CellValue(r, 3).toString(), QStringLiteral("Supplier A"));
        }

        // Closing one group hides its ten rows only; a click on a group row opens it again.
        demo.grid->SetGroupExpanded(12, false);
        QCOMPARE(demo.grid->RowCount(), 23);
        QVERIFY(!demo.grid->GroupExpanded(12));
        QTableView* view = demo.grid->TableView();
        view->resize(800, 600);
        const QRect cell = view->visualRect(demo.grid->Model()->index(11, 1));
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, cell.center());
        QCOMPARE(demo.grid->RowCount(), 33);

        // A second level inside the first.
        demo.grid->AddGroup(QStringLiteral("Order"));
        demo.grid->ExpandAll();
        QCOMPARE(demo.grid->GroupRowLevel(1), 1);
        QCOMPARE(demo.grid->GroupRowLevel(2), 2);
        QCOMPARE(demo.grid->GroupRowLevel(3), 0);
        int level2 = 0;
        for (int r = 1; r <= demo.grid->RowCount(); ++r)
            level2 += demo.grid->GroupRowLevel(r) == 2;
        QCOMPARE(level2, 6);
        QCOMPARE(demo.grid->RowCount(), 30 + 3 + 6);

        demo.grid->CollapseAll();
        QCOMPARE(demo.grid->RowCount(), 3);
        demo.grid->ClearGroups();
        QCOMPARE(demo.grid->RowCount(), 30);
        QCOMPARE(demo.grid->GroupRowLevel(1), 0);
    }

    void sortingKeepsGroupRowsInPlace() {
        GridDemo demo;
        demo.Generate(12, 2);
        demo.Load();
        demo.grid->AddGroup(QStringLiteral("Supplier"), Qt::DescendingOrder);
        demo.grid->ExpandAll();
        auto groupRows = [&] {
            QList<QPair<int, QString>> out;
            for (int r = 1; r <= demo.grid->RowCount(); ++r)
                if (demo.grid->GroupRowLevel(r) > 0)
                    out << qMakePair(r, demo.grid->CellValue(r, 2).toString());
            return out;
        };
        const auto before = groupRows();
        QCOMPARE(before.size(), 2);
        QVERIFY(before[0].second.startsWith(QStringLiteral("Supplier: Supplier B")));
        for (const Qt::SortOrder order : {Qt::AscendingOrder, Qt::DescendingOrder}) {
            demo.grid->SortBy(QStringLiteral("PartNo"), order);
            QCOMPARE(groupRows(), before);
            // Inside each group the part numbers follow the sort.
            for (const auto& g : before) {
                QStringList parts;
                for (int r = g.first + 1;
                     r <= demo.grid->RowCount() && demo.grid->GroupRowLevel(r) == 0; ++r) {
                    QCOMPARE(demo.grid->CellValue(r, 3).toString(),
                             g.second.mid(10, 10)); // "Supplier X"
                    parts << demo.grid->CellValue(r, 2).toString();
                }
                QCOMPARE(parts.size(), 6);
                QStringList sorted = parts;
                std::sort(sorted.begin(), sorted.end());
                if (order == Qt::DescendingOrder)
                    std::reverse(sorted.begin(), sorted.end());
                QCOMPARE(parts, sorted);
            }
        }
    }

    void cellEditCommitsTheWholeRowBackToTheArray() {
        GridDemo demo;
        demo.Generate(5);
        demo.Load();
        demo.grid->SetCommitMode(GridCommit::OnCellEdit);
        QSignalSpy committed(demo.grid, &GridEX::RowCommitted);
        demo.grid->SortBy(QStringLiteral("ID"), Qt::DescendingOrder); // row 1 shows record 5
        TypeIntoCell(*demo.grid, 1, "Qty", QStringLiteral("12.5"));
        QCOMPARE(demo.rows[4][3].toString(), QStringLiteral("12.5"));
        QCOMPARE(demo.rows[0][3].toString(), FormatNumber(37.0 / 4, QStringLiteral("0.0#")));
        QCOMPARE(committed.count(), 1);
        QCOMPARE(committed.first().first().toInt(), 5);
        QCOMPARE(demo.grid->CellValue(1, 4).toString(), QStringLiteral("12.5"));

        // A check box click commits at once.
        QAbstractItemModel* model = demo.grid->Model();
        const QModelIndex check = model->index(1, demo.grid->Columns()("Order").Index() - 1);
        QVERIFY(model->flags(check) & Qt::ItemIsUserCheckable);
        const bool was = demo.rows[3][4].toBool();
        QVERIFY(model->setData(check, was ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole));
        Settle();
        QCOMPARE(demo.rows[3][4].toBool(), !was);
        QCOMPARE(committed.count(), 2);
    }

    void rowChangeModeWaitsForTheRowToBeLeft() {
        GridDemo demo;
        demo.Generate(5);
        demo.Load();
        demo.grid->SetRow(2);
        TypeIntoCell(*demo.grid, 2, "Note", QStringLiteral("first"));
        TypeIntoCell(*demo.grid, 2, "Qty", QStringLiteral("3"));
        // Enter submits the row.
        QCOMPARE(demo.rows[1][6].toString(), QStringLiteral("first"));
        QCOMPARE(demo.rows[1][3].toString(), QStringLiteral("3"));

        // A check box click stays with the row until the row is left.
        QAbstractItemModel* model = demo.grid->Model();
        demo.grid->SetRow(3);
        QVERIFY(model->setData(model->index(2, 6), QStringLiteral("pending")));
        QVERIFY(model->setData(model->index(2, 4), Qt::Checked, Qt::CheckStateRole));
        Settle();
        QCOMPARE(demo.rows[2][6].toString(), QString());
        QVERIFY(demo.grid->HasPendingEdit());
        QCOMPARE(demo.grid->CellValue(3, 7).toString(), QStringLiteral("pending"));
        demo.grid->SetRow(4);
        Settle();
        QCOMPARE(demo.rows[2][6].toString(), QStringLiteral("pending"));
        QCOMPARE(demo.rows[2][4].toBool(), true);
        QVERIFY(!demo.grid->HasPendingEdit());
    }

    void cancelledCommitKeepsTheArrayAndShowsItAgain() {
        GridDemo demo;
        demo.Generate(3);
        demo.Load();
        demo.refuseCommit = true;
        const QVariant before = demo.rows[0][3];
        QAbstractItemModel* model = demo.grid->Model();
        QVERIFY(model->setData(model->index(0, 3), QStringLiteral("77")));
        QCOMPARE(demo.grid->CellValue(1, 4).toString(), QStringLiteral("77"));
        QVERIFY(!demo.grid->Update());
        QCOMPARE(demo.commits, 1);
        QCOMPARE(demo.rows[0][3], before);
        QCOMPARE(demo.grid->CellValue(1, 4), before);
    }

    void keyFiltersOfTheColumnsApply() {
        GridDemo demo;
        demo.Generate(2);
        demo.Load();
        demo.grid->Columns()("Note").SetKeyFilter(
            [](const QString&, int code) { return code == '\'' ? int('`') : code; });
        demo.grid->SetCommitMode(GridCommit::OnCellEdit);
        TypeIntoCell(*demo.grid, 1, "Qty", QStringLiteral("a1b2.5.x"));
        QCOMPARE(demo.rows[0][3].toString(), QStringLiteral("12.5"));
        TypeIntoCell(*demo.grid, 1, "Note", QStringLiteral("it's"));
        QCOMPARE(demo.rows[0][6].toString(), QStringLiteral("it`s"));
        // Columns that are not editable take no editor at all.
        QVERIFY(!(demo.grid->Model()->flags(demo.grid->Model()->index(0, 1)) & Qt::ItemIsEditable));
        demo.grid->SetAllowEdit(false);
        QVERIFY(!(demo.grid->Model()->flags(demo.grid->Model()->index(0, 3)) & Qt::ItemIsEditable));
    }

    void deleteWithCancelKeepsTheRow() {
        GridDemo demo;
        demo.Generate(4);
        demo.Load();
        demo.grid->SetAllowDelete(true);
        demo.refuseDelete = true;
        demo.grid->SortBy(QStringLiteral("ID"), Qt::DescendingOrder);
        demo.grid->SetRow(1);
        QTest::keyClick(demo.grid->TableView(), Qt::Key_Delete);
        QCOMPARE(demo.deleteAsked, QList<int>({4}));
        QCOMPARE(demo.grid->RowCount(), 4);
        QCOMPARE(demo.grid->ItemCount(), 4);
        QCOMPARE(demo.rows.size(), 4);
        QCOMPARE(demo.grid->CellValue(1, 1).toInt(), 4);

        demo.refuseDelete = false;
        demo.grid->SetRow(2); // record 3
        QTest::keyClick(demo.grid->TableView(), Qt::Key_Delete);
        QCOMPARE(demo.rows.size(), 3);
        QCOMPARE(demo.grid->RowCount(), 3);
        QStringList ids;
        for (int r = 1; r <= 3; ++r)
            ids << demo.grid->CellValue(r, 1).toString();
        QCOMPARE(ids, QStringList({"4", "2", "1"}));
        QCOMPARE(demo.grid->RecordIndex(1), 3); // the records under the deleted one moved up

        // Without the delete permission the key does nothing.
        demo.grid->SetAllowDelete(false);
        QTest::keyClick(demo.grid->TableView(), Qt::Key_Delete);
        QCOMPARE(demo.rows.size(), 3);
    }

    void newRowIsAddedOrKeptWhenCancelled() {
        GridDemo demo;
        demo.Generate(2);
        demo.Load();
        demo.grid->SetAllowAddNew(true);
        QAbstractItemModel* model = demo.grid->Model();
        QCOMPARE(model->rowCount(), 3);
        QCOMPARE(demo.grid->RowCount(), 2);
        // Without a part number the owner refuses: the typed note stays in the new row.
        QVERIFY(model->setData(model->index(2, 6), QStringLiteral("no part")));
        demo.grid->SetRow(3);
        QVERIFY(!demo.grid->Update());
        QCOMPARE(demo.rows.size(), 2);
        QCOMPARE(demo.grid->CellValue(3, 7).toString(), QStringLiteral("no part"));
        QVERIFY(model->setData(model->index(2, 1), QStringLiteral("NEW1")));
        demo.grid->SetRow(1);
        Settle();
        QCOMPARE(demo.rows.size(), 3);
        QCOMPARE(demo.rows[2][1].toString(), QStringLiteral("NEW1"));
        QCOMPARE(demo.rows[2][6].toString(), QStringLiteral("no part"));
        QCOMPARE(demo.grid->ItemCount(), 3);
        QCOMPARE(demo.grid->RowCount(), 3);
        QCOMPARE(demo.grid->CellValue(3, 1).toInt(), 3);  // the id the owner gave
        QCOMPARE(demo.grid->CellValue(4, 2), QVariant()); // a fresh blank row
    }

    void itemCountCycleRereadsTheArray() {
        GridDemo demo;
        demo.Generate(3);
        demo.Load();
        QCOMPARE(demo.grid->CellValue(1, 2), demo.rows[0][1]);
        demo.rows[0][1] = QStringLiteral("CHANGED");
        QVERIFY(demo.grid->CellValue(1, 2).toString() != QStringLiteral("CHANGED"));
        demo.grid->SetItemCount(0);
        QCOMPARE(demo.grid->RowCount(), 0);
        Settle();
        demo.grid->SetItemCount(3);
        QCOMPARE(demo.grid->CellValue(1, 2).toString(), QStringLiteral("CHANGED"));
        demo.rows[1][1] = QStringLiteral("AGAIN");
        demo.grid->RefreshRecord(2);
        QCOMPARE(demo.grid->CellValue(2, 2).toString(), QStringLiteral("AGAIN"));
    }

    void cardViewShowsCaptionAndValueLines() {
        GridDemo demo;
        demo.Generate(2);
        demo.Load();
        demo.grid->SetView(GridView::Card);
        QCOMPARE(demo.grid->View(), GridView::Card);
        QVERIFY(demo.grid->CardView()->isVisibleTo(demo.grid));
        const QStringList lines = GridCardDelegate::CardLines(demo.grid, 2);
        QCOMPARE(lines.size(), 6); // ID is hidden
        QCOMPARE(lines[0], QStringLiteral("Part No: ") + demo.rows[1][1].toString());
        QCOMPARE(lines[1], QStringLiteral("Supplier: ") + demo.rows[1][2].toString());
        QCOMPARE(lines[3], QStringLiteral("Order: True"));
        QCOMPARE(GridCardDelegate::CardLines(demo.grid, 1)[3], QStringLiteral("Order: False"));
        demo.grid->SetView(GridView::Table);
        QVERIFY(demo.grid->TableView()->isVisibleTo(demo.grid));
    }

    void headerClickReachesTheWindowBeforeTheMouseUp() {
        GridDemo demo;
        demo.Generate(3);
        demo.Load();
        demo.show();
        QStringList order;
        connect(demo.grid, &GridEX::HeaderClicked, this,
                [&](const QString& key) { order << QStringLiteral("header ") + key; });
        connect(demo.grid, &GridEX::MouseUp, this, [&](Qt::MouseButton, int, int y) {
            order << (y < demo.grid->HeaderBottomTwips() ? QStringLiteral("up in header")
                                                         : QStringLiteral("up below"));
        });
        ClickHeader(*demo.grid, "Supplier");
        QCOMPARE(order, QStringList({"header Supplier", "up in header"}));
        order.clear();
        QTableView* view = demo.grid->TableView();
        const QRect cell = view->visualRect(demo.grid->Model()->index(1, 1));
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, cell.center());
        QCOMPARE(order, QStringList({"up below"}));
        const QPoint inGrid = view->viewport()->mapTo(demo.grid, cell.center());
        QCOMPARE(demo.grid->RowAt(inGrid), 2);
    }

    void hundredThousandRowsReadOnlyWhatIsNeeded() {
        GridDemo demo;
        demo.Generate(100000, 20);
        demo.show();
        QElapsedTimer t;
        t.start();
        demo.Load();
        Settle();
        // Filling reads the rows on screen only.
        QVERIFY2(demo.reads < 2000, qPrintable(QString::number(demo.reads)));
        const qint64 afterFill = demo.reads;

        // Sorting reads the sort column once per record; toggling reads nothing more.
        demo.grid->SortBy(QStringLiteral("PartNo"));
        Settle();
        QVERIFY2(demo.reads - afterFill <= 100000 + 2000,
                 qPrintable(QString::number(demo.reads - afterFill)));
        QCOMPARE(demo.grid->CellValue(1, 2).toString(), QStringLiteral("P000001"));
        const qint64 afterSort = demo.reads;
        ClickHeader(*demo.grid, "PartNo");
        Settle();
        QCOMPARE(demo.grid->CellValue(1, 2).toString(), QStringLiteral("P100000"));
        ClickHeader(*demo.grid, "PartNo");
        QCOMPARE(demo.grid->CellValue(1, 2).toString(), QStringLiteral("P000001"));
        QVERIFY2(demo.reads - afterSort < 2000,
                 qPrintable(QString::number(demo.reads - afterSort)));

        // Grouping reads its column once; scrolling to the end reads one screen.
        const qint64 beforeGroup = demo.reads;
        demo.grid->AddGroup(QStringLiteral("Supplier"));
        demo.grid->ExpandAll();
        QCOMPARE(demo.grid->RowCount(), 100020);
        demo.grid->TableView()->scrollToBottom();
        Settle();
        QVERIFY2(demo.reads - beforeGroup <= 100000 + 4000,
                 qPrintable(QString::number(demo.reads - beforeGroup)));
        QVERIFY2(t.elapsed() < 20000, qPrintable(QString::number(t.elapsed())));
    }
};

QTEST_MAIN(TestGrid)
#include "test_grid.moc"
