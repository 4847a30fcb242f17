#include "foundation/Clock.h"
#include "foundation/Printer.h"
#include "grids/GridModel.h"
#include "grids/GridParts.h"
#include "grids/frmPrintDialog.h"
#include "tests/grids/GridDemo.h"
#include "tests/support/TestSupport.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QDateEdit>
#include <QHeaderView>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <QToolButton>

namespace {

QStringList Column(const GridEX& grid, const QString& key) {
    QStringList out;
    for (int r = 1; r <= grid.RowCount(); ++r)
        out << grid.CellValue(r, grid.Columns()(key).Index()).toString();
    return out;
}

// The grid's rows as their group levels: "G1", "G2" for group rows, "-" for records.
QString Levels(const GridEX& grid) {
    QString out;
    for (int r = 1; r <= grid.RowCount(); ++r)
        out += grid.GroupRowLevel(r) ? QStringLiteral("G%1 ").arg(grid.GroupRowLevel(r))
                                     : QStringLiteral("- ");
    return out.trimmed();
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
void TypeIntoCell(GridEX& grid, int row, const QString& key, const QString& text) {
    QTableView* view = grid.TableView();
    const QModelIndex idx = grid.Model()->index(row - 1, grid.Columns()(key).Index() - 1);
    view->setCurrentIndex(idx);
    view->edit(idx);
    auto* editor = qobject_cast<QLineEdit*>(view->indexWidget(idx));
    QVERIFY(editor);
    editor->clear();
    QTest::keyClicks(editor, text);
    QTest::keyClick(editor, Qt::Key_Return);
    Settle();
}

QVector<QVector<QVariant>> FourRows(const QStringList& parts, const QStringList& suppliers,
                                    const QStringList& qtys, const QStringList& dates = {}) {
    QVector<QVector<QVariant>> rows;
    for (int i = 0; i < parts.size(); ++i)
        rows.append({i + 1, parts[i], suppliers[i], qtys[i], false, dates.value(i), QString()});
    return rows;
}

} // namespace

class TestGrid : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { UseTestLocale(); }

    void freshFillKeepsArrayOrderAndSortsOnlyWhenAsked() {
        GridDemo demo;
        demo.rows =
            FourRows({"B7", "a2", "C1", "b1"}, {"B", "A", "A", "B"}, {"10", "9", "100", "10"});
        demo.Load();
        QCOMPARE(Column(*demo.grid, "PartNo"), QStringList({"B7", "a2", "C1", "b1"}));

        ClickHeader(*demo.grid, "PartNo");
        QCOMPARE(Column(*demo.grid, "PartNo"), QStringList({"a2", "b1", "B7", "C1"}));
        ClickHeader(*demo.grid, "PartNo");
        QCOMPARE(Column(*demo.grid, "PartNo"), QStringList({"C1", "B7", "b1", "a2"}));
        // Quantities are numbers: 9 before 10 before 100.
        ClickHeader(*demo.grid, "Qty");
        QCOMPARE(Column(*demo.grid, "Qty"), QStringList({"9", "10", "10", "100"}));
        // The owner's array is never reordered.
        QCOMPARE(demo.rows[0][1].toString(), QStringLiteral("B7"));
        QCOMPARE(demo.grid->RecordIndex(1), 2);
        // Several keys; equal keys keep the array's order (B7 before b1).
        demo.grid->SortBy({{QStringLiteral("Supplier"), Qt::AscendingOrder},
                           {QStringLiteral("Qty"), Qt::AscendingOrder}});
        QCOMPARE(Column(*demo.grid, "PartNo"), QStringList({"a2", "C1", "B7", "b1"}));

        // A reload shows the array's order again, and reads it afresh; so does a refreshed record.
        demo.rows[0][1] = QStringLiteral("B8");
        demo.grid->SetItemCount(0);
        Settle();
        demo.grid->SetItemCount(4);
        demo.rows[1][1] = QStringLiteral("a3");
        demo.grid->RefreshRecord(2);
        QCOMPARE(Column(*demo.grid, "PartNo"), QStringList({"B8", "a3", "C1", "b1"}));
        // Cards: a caption and value line for each visible column (ID is hidden).
        demo.grid->SetView(GridView::Card);
        QCOMPARE(GridCardDelegate::CardLines(demo.grid, 2).mid(0, 4),
                 QStringList({"Part No: a3", "Supplier: A", "Qty: 9", "Order: False"}));
    }

    void datesSortAsDatesAndComeFromTheCalendar() {
        GridDemo demo;
        demo.rows = FourRows({"A", "B", "C", "D"}, {"S", "S", "S", "S"}, {"1", "1", "1", "1"},
                             {"05/01/2027", "", "23/11/2026", "30/12/2026"});
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
        QVERIFY(editor && editor->calendarPopup());
        QCOMPARE(editor->date(), QDate(2026, 11, 23)); // an empty date starts at today
        editor->setDate(QDate(2027, 2, 14));           // as the calendar sets it
        QTest::keyClick(editor, Qt::Key_Return);
        Settle();
        QCOMPARE(demo.rows[1][5].toString(), ShowDate(QDate(2027, 2, 14)));
    }

    void groupingBuildsGroupRowsWithLevels() {
        GridDemo demo;
        demo.Generate(6, 3); // Supplier A, B, C: two rows each
        QAbstractItemModelTester tester(demo.grid->Model(),
                                        QAbstractItemModelTester::FailureReportingMode::QtTest);
        demo.Load();
        QSignalSpy groups(demo.grid, &GridEX::GroupsChanged);
        demo.grid->AddGroup(QStringLiteral("Supplier"));
        QCOMPARE(groups.count(), 1);
        // New groups start closed.
        QCOMPARE(Levels(*demo.grid), QStringLiteral("G1 G1 G1"));
        demo.grid->SetRow(1);
        QCOMPARE(demo.grid->Value(QStringLiteral("PartNo")).toString(),
                 QStringLiteral("Supplier: Supplier A (2)"));
        QCOMPARE(demo.grid->Value(QStringLiteral("Qty")), QVariant());
        QCOMPARE(demo.grid->RecordIndex(1), 0);
        // A click on the group-by box opens and closes them all.
        auto* box = demo.grid->findChild<QFrame*>(QStringLiteral("gdxDemoGroupBy"));
        QTest::mouseClick(box, Qt::LeftButton);
        QCOMPARE(Levels(*demo.grid), QStringLiteral("G1 - - G1 - - G1 - -"));
        QCOMPARE(Column(*demo.grid, "Supplier").mid(1, 2),
                 QStringList({"Supplier A", "Supplier A"}));
        // Closing one group hides its rows only.
        demo.grid->SetGroupExpanded(4, false);
        QCOMPARE(Levels(*demo.grid), QStringLiteral("G1 - - G1 G1 - -"));
        // The button of a grouped column takes its group away.
        auto* button = box->findChild<QToolButton*>();
        QVERIFY(button->text().startsWith(QStringLiteral("Supplier")));
        button->click();
        QCOMPARE(Levels(*demo.grid), QStringLiteral("- - - - - -"));

        // A second level inside the first.
        demo.grid->AddGroup(QStringLiteral("Supplier"));
        demo.grid->AddGroup(QStringLiteral("Order"));
        demo.grid->ExpandAll();
        QCOMPARE(Levels(*demo.grid).left(12), QStringLiteral("G1 G2 - G2 -"));
        QCOMPARE(demo.grid->RowCount(), 6 + 3 + 6);
        demo.grid->ClearGroups();
        QCOMPARE(Levels(*demo.grid), QStringLiteral("- - - - - -"));
    }

    void sortingKeepsGroupRowsInPlace() {
        GridDemo demo;
        demo.Generate(12, 2);
        demo.Load();
        demo.grid->AddGroup(QStringLiteral("Supplier"), Qt::DescendingOrder);
        demo.grid->ExpandAll();
        for (const Qt::SortOrder order : {Qt::AscendingOrder, Qt::DescendingOrder}) {
            demo.grid->SortBy(QStringLiteral("PartNo"), order);
            QCOMPARE(Levels(*demo.grid), QStringLiteral("G1 - - - - - - G1 - - - - - -"));
            QVERIFY(demo.grid->CellValue(1, 2).toString().startsWith("Supplier: Supplier B"));
            // Inside each group the part numbers follow the sort, under their own group.
            for (int first : {1, 8}) {
                const QStringList parts = Column(*demo.grid, "PartNo").mid(first, 6);
                const QStringList suppliers = Column(*demo.grid, "Supplier").mid(first, 6);
                QCOMPARE(suppliers, QStringList(6, suppliers.value(0)));
                QStringList sorted = parts;
                std::sort(sorted.begin(), sorted.end());
                if (order == Qt::DescendingOrder)
                    std::reverse(sorted.begin(), sorted.end());
                QCOMPARE(parts, sorted);
            }
        }
    }

    void editsReachTheArrayAsTheCommitModeSays() {
        GridDemo demo;
        demo.Generate(5);
        demo.Load();
        QAbstractItemModel* model = demo.grid->Model();
        // Row-change mode: a check box click stays with the row until the row is left.
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
        // Enter submits the row.
        TypeIntoCell(*demo.grid, 2, "Note", QStringLiteral("first"));
        QCOMPARE(demo.rows[1][6].toString(), QStringLiteral("first"));

        // Cell-edit mode on a sorted grid: the whole row goes back to its own record.
        demo.grid->SetCommitMode(GridCommit::OnCellEdit);
        QSignalSpy committed(demo.grid, &GridEX::RowCommitted);
        demo.grid->SortBy(QStringLiteral("ID"), Qt::DescendingOrder); // row 1 shows record 5
        // The column's key filter drops what is not a number; a filter of the owner's applies.
        demo.grid->Columns()("Note").SetKeyFilter(
            [](const QString&, int code) { return code == '\'' ? int('`') : code; });
        TypeIntoCell(*demo.grid, 1, "Qty", QStringLiteral("a1b2.5.x"));
        TypeIntoCell(*demo.grid, 1, "Note", QStringLiteral("it's"));
        QCOMPARE(demo.rows[4][3].toString() + '|' + demo.rows[4][6].toString(), "12.5|it`s");
        QCOMPARE(demo.rows[0][3].toString(), FormatNumber(37.0 / 4, QStringLiteral("0.0#")));
        QCOMPARE(committed.count(), 2);
        QCOMPARE(committed.first().first().toInt(), 5);
        // A check box click commits at once.
        const bool was = demo.rows[3][4].toBool();
        QVERIFY(model->setData(model->index(1, 4), was ? Qt::Unchecked : Qt::Checked,
                               Qt::CheckStateRole));
        Settle();
        QCOMPARE(demo.rows[3][4].toBool(), !was);
        QCOMPARE(committed.count(), 3);

        // A refused commit keeps the array and shows it again.
        demo.grid->SetCommitMode(GridCommit::OnRowChange);
        demo.refuseCommit = true;
        const QVariant before = demo.rows[4][3];
        QVERIFY(model->setData(model->index(0, 3), QStringLiteral("77")));
        QVERIFY(!demo.grid->Update());
        QCOMPARE(demo.rows[4][3], before);
        QCOMPARE(demo.grid->CellValue(1, 4), before);
        // Columns that are not editable, or a grid that allows no edit, take no editor at all.
        QVERIFY(!(model->flags(model->index(0, 1)) & Qt::ItemIsEditable));
        demo.grid->SetAllowEdit(false);
        QVERIFY(!(model->flags(model->index(0, 3)) & Qt::ItemIsEditable));
    }

    // A refused delete keeps the row; a refused new row keeps what was typed in it.
    void deletedAndNewRowsWithCancel() {
        GridDemo demo;
        demo.Generate(4);
        QAbstractItemModelTester tester(demo.grid->Model(),
                                        QAbstractItemModelTester::FailureReportingMode::QtTest);
        demo.Load();
        demo.grid->SetAllowDelete(true);
        demo.refuseDelete = true;
        demo.grid->SortBy(QStringLiteral("ID"), Qt::DescendingOrder);
        demo.grid->SetRow(1);
        QTest::keyClick(demo.grid->TableView(), Qt::Key_Delete);
        QCOMPARE(demo.deleteAsked, QList<int>({4}));
        QCOMPARE(Column(*demo.grid, "ID"), QStringList({"4", "3", "2", "1"}));
        demo.refuseDelete = false;
        demo.grid->SetRow(2); // record 3
        QTest::keyClick(demo.grid->TableView(), Qt::Key_Delete);
        QCOMPARE(demo.rows.size(), 3);
        QCOMPARE(Column(*demo.grid, "ID"), QStringList({"4", "2", "1"}));
        QCOMPARE(demo.grid->RecordIndex(1), 3); // the records under the deleted one moved up
        // Without the delete permission the key does nothing.
        demo.grid->SetAllowDelete(false);
        QTest::keyClick(demo.grid->TableView(), Qt::Key_Delete);
        QCOMPARE(demo.rows.size(), 3);

        demo.grid->ClearSort();
        demo.grid->SetAllowAddNew(true);
        QAbstractItemModel* model = demo.grid->Model();
        QCOMPARE(model->rowCount(), 4);
        // Without a part number the owner refuses: the typed note stays in the new row.
        QVERIFY(model->setData(model->index(3, 6), QStringLiteral("no part")));
        demo.grid->SetRow(4);
        QVERIFY(!demo.grid->Update());
        QCOMPARE(demo.rows.size(), 3);
        QCOMPARE(demo.grid->CellValue(4, 7).toString(), QStringLiteral("no part"));
        QVERIFY(model->setData(model->index(3, 1), QStringLiteral("NEW1")));
        demo.grid->SetRow(1);
        Settle();
        QCOMPARE(demo.rows.size(), 4);
        QCOMPARE(demo.rows[3][1].toString() + '|' + demo.rows[3][6].toString(),
                 QStringLiteral("NEW1|no part"));
        QCOMPARE(demo.grid->CellValue(4, 1).toInt(), 5);  // the id the owner gave
        QCOMPARE(demo.grid->CellValue(5, 2), QVariant()); // a fresh blank row
    }

    void printPanelChoosesPrinterAndPrintsTheGrid() {
        auto laser = std::make_shared<RecordingPrinter>(QStringLiteral("Laser"));
        auto label = std::make_shared<RecordingPrinter>(QStringLiteral("Label"));
        SetPrinters({laser, label});
        SetCurrentPrinter(label);
        SetToday(QDate(2026, 11, 23));
        GridDemo demo;
        demo.Generate(4, 2);
        demo.Load();
        ScriptedBoxes boxes;
        boxes.answerInput(QStringLiteral("Stock by supplier"));
        QTimer::singleShot(0, [] {
            QWidget* panel = QApplication::activeModalWidget();
            QCOMPARE(panel->windowTitle(), QStringLiteral("Select Printer"));
            auto* list = panel->findChild<QListWidget*>(QStringLiteral("lstPrinters"));
            QCOMPARE(list->currentRow(), 1); // the current printer
            QVERIFY(
                panel->findChild<QRadioButton*>(QStringLiteral("optOrientation_0"))->isChecked());
            list->setCurrentRow(0);
            panel->findChild<QRadioButton*>(QStringLiteral("optOrientation_1"))->click();
            panel->findChild<QPushButton*>(QStringLiteral("cmdPrintOK"))->click();
        });
        ShowPrintPanel(nullptr, demo.grid);
        QVERIFY(label->Calls().isEmpty());
        QCOMPARE(laser->Orientation(), int(vbPRORLandscape));
        QCOMPARE(laser->Texts().mid(0, 3),
                 QStringList({"23/11/2026  Stock by supplier", "Page 1", "Part No"}));
        // Cancel prints nothing; with no printer at all Print cannot be pressed.
        QTimer::singleShot(0, [] {
            QApplication::activeModalWidget()
                ->findChild<QPushButton*>(QStringLiteral("cmdPrintCancel"))
                ->click();
        });
        ShowPrintPanel(nullptr, demo.grid);
        QCOMPARE(laser->Documents(), 1);
        SetPrinters({});
        frmPrintDialog none([](int) {});
        QVERIFY(!none.findChild<QPushButton*>(QStringLiteral("cmdPrintOK"))->isEnabled());
    }
};

QTEST_MAIN(TestGrid)
#include "test_grid.moc"
