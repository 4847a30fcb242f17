// A grid held in plain lists, for the listing and export suites.
#pragma once

#include "grids/GridSource.h"

#include <QList>
#include <QStringList>

class MemoryGrid : public GridSource {
public:
    struct Column {
        QString caption;
        int width = 1440;
        bool visible = true;
    };
    QList<Column> columns;
    QList<QStringList> rows; // cell texts by column
    QList<int> groupLevels;  // per row; missing entries are 0
    // A grid that is not fully loaded shows only its first `loadedRows` rows until
    // LoadEntireRecordset is called.
    bool fullyLoaded = true;
    int loadedRows = 0;
    int loadCalls = 0;

    void addColumn(const QString& caption, int width, bool visible = true) {
        columns.append({caption, width, visible});
    }
    void addRow(const QStringList& cells, int groupLevel = 0) {
        rows.append(cells);
        while (groupLevels.size() < rows.size() - 1)
            groupLevels.append(0);
        groupLevels.append(groupLevel);
    }

    int ColumnCount() const override { return int(columns.size()); }
    bool ColumnVisible(int c) const override { return columns.at(c - 1).visible; }
    QString ColumnCaption(int c) const override { return columns.at(c - 1).caption; }
    int ColumnWidth(int c) const override { return columns.at(c - 1).width; }
    int RowCount() const override { return fullyLoaded ? int(rows.size()) : loadedRows; }
    void SetRow(int row) override { mRow = row; }
    QString Value(int c) const override {
        const QStringList& cells = rows.at(mRow - 1);
        return c - 1 < cells.size() ? cells.at(c - 1) : QString();
    }
    int GroupRowLevel(int row) const override {
        return row - 1 < groupLevels.size() ? groupLevels.at(row - 1) : 0;
    }
    bool FullyLoaded() const override { return fullyLoaded; }
    void LoadEntireRecordset() override {
        ++loadCalls;
        fullyLoaded = true;
    }

private:
    int mRow = 0;
};
