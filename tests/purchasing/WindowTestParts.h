// What the purchasing window suites share: letting queued events run, reading a grid column as
// shown, and saving a window as a picture for a look by eye.
#pragma once

#include "grids/GridEX.h"

#include <QCoreApplication>
#include <QDir>
#include <QStringList>
#include <QWidget>

namespace windowtest {

// Lets the queued steps of an edit (the editor's hand-over, then the commit) run.
inline void Settle() {
    for (int i = 0; i < 3; ++i)
        QCoreApplication::processEvents();
}

// The texts of a column, row by row as the grid shows them (group rows included).
inline QStringList Column(const GridEX& grid, const QString& key) {
    QStringList out;
    for (int r = 1; r <= grid.RowCount(); ++r)
        out << grid.CellValue(r, grid.Columns()(key).Index()).toString();
    return out;
}

// With QS_SCREENSHOT_DIR set, the window is saved there as a picture for a look by eye.
inline void Shot(QWidget* w, const QString& name) {
    const QString dir = qEnvironmentVariable("QS_SCREENSHOT_DIR");
    if (dir.isEmpty())
        return;
    QDir().mkpath(dir);
    QCoreApplication::processEvents();
    w->grab().save(dir + QLatin1Char('/') + name + QStringLiteral(".png"));
}

} // namespace windowtest
