// A small window with one GridEX over a generated array, in the way the product's windows use the
// grid: the array is the working copy, the grid reads it cell by cell and hands edited rows back.
#pragma once

#include "foundation/Helpers.h"
#include "grids/ColumnState.h"
#include "grids/GridEX.h"

#include <QCoreApplication>
#include <QVBoxLayout>
#include <QVector>
#include <QWidget>

// Array columns: 1 ID, 2 PartNo, 3 Supplier, 4 Qty (text "0.0#"), 5 Order (bool), 6 DelDate
// (ShowDate text), 7 Note. The grid shows them in the same order.
class GridDemo : public QWidget {
public:
    explicit GridDemo(const QString& gridName = QStringLiteral("gdxDemo")) {
        setObjectName(QStringLiteral("frmGridDemo"));
        auto* layout = new QVBoxLayout(this);
        grid = new GridEX(gridName, this);
        layout->addWidget(grid);
        grid->SetCellReader([this](int record, int column) {
            if (record < 1 || record > rows.size())
                return QVariant();
            return rows[record - 1].value(column - 1);
        });
        grid->SetRowCommitHandler([this](int record, GridRowValues& values, bool& cancel) {
            ++commits;
            if (refuseCommit) {
                cancel = true;
                return;
            }
            for (int c = 1; c <= values.Count() && c <= rows[record - 1].size(); ++c)
                rows[record - 1][c - 1] = values(c);
        });
        grid->SetNewRowHandler([this](GridRowValues& values, bool& cancel) {
            if (values(QStringLiteral("PartNo")).toString().trimmed().isEmpty()) {
                cancel = true;
                return;
            }
            QVector<QVariant> row = values.Values();
            row[0] = nextId++;
            rows.append(row);
        });
        grid->SetDeleteHandler([this](int record, bool& cancel) {
            deleteAsked << record;
            if (refuseDelete) {
                cancel = true;
                return;
            }
            rows.removeAt(record - 1);
        });
        resize(900, 500);
    }

    // Rows with a part number, one of `suppliers` suppliers, a quantity and every second ticked.
    void Generate(int count, int suppliers = 5) {
        rows.clear();
        rows.reserve(count);
        for (int i = 1; i <= count; ++i) {
            const int scrambled = int((qint64(i) * 7919) % count) + 1;
            rows.append({i, QStringLiteral("P%1").arg(scrambled, 6, 10, QLatin1Char('0')),
                         QStringLiteral("Supplier %1").arg(QChar('A' + (i % suppliers))),
                         FormatNumber(double((i * 37) % 1000) / 4, QStringLiteral("0.0#")),
                         i % 2 == 0, QString(), QString()});
        }
        nextId = count + 1;
    }

    void DefineColumns() {
        GridColumns& cols = grid->Columns();
        cols.Clear();
        cols.Add(QStringLiteral("ID"), QStringLiteral("ID")).SetVisible(false);
        cols.Add(QStringLiteral("PartNo"), QStringLiteral("Part No")).SetWidth(1500);
        cols.Add(QStringLiteral("Supplier"), QStringLiteral("Supplier")).SetWidth(1800);
        cols.Add(QStringLiteral("Qty"), QStringLiteral("Qty"))
            .SetAlignment(Qt::AlignRight | Qt::AlignVCenter)
            .SetEditable(true)
            .SetKeyFilter(NumericKey);
        cols.Add(QStringLiteral("Order"), QStringLiteral("Order"))
            .SetKind(GridColumnKind::CheckBox)
            .SetEditable(true);
        cols.Add(QStringLiteral("DelDate"), QStringLiteral("Delivery"))
            .SetKind(GridColumnKind::Date)
            .SetEditable(true);
        cols.Add(QStringLiteral("Note"), QStringLiteral("Note")).SetEditable(true);
    }

    // The load of a window: columns, stored widths, then the item count cycle.
    void Load() {
        DefineColumns();
        LoadColumnState(*grid);
        grid->SetItemCount(0);
        QCoreApplication::processEvents();
        grid->SetItemCount(int(rows.size()));
    }

    GridEX* grid;
    QVector<QVector<QVariant>> rows;
    int nextId = 1;
    int commits = 0;
    bool refuseCommit = false;
    bool refuseDelete = false;
    QList<int> deleteAsked;
};
