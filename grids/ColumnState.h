// Stored column widths of the list grids: table ColStat of usercfg.dqx, one row per workstation
// (gPcName), program (AppName()), grid name and column key, width in twips. Neither call ever
// shows a message: a missing, locked or read-only file leaves the grid as its layout made it and
// the resize is simply not remembered.
#pragma once

#include <QList>
#include <QPair>
#include <QString>

class GridEX;

// Core part: the stored widths of one grid on this workstation, as (column key, twips) in the
// order the table gives them; empty on any failure.
QList<QPair<QString, int>> ReadColumnState(const QString& gridName);

// Stores one width: update first, insert when no row was changed. Silent on every failure.
void SaveColumnState(const QString& gridName, const QString& colName, int newWidth);

// Window part (grids library): applies the stored widths to the grid named by its objectName,
// passing over stored keys the grid does not have. Call once the columns exist.
void LoadColumnState(GridEX& grid);
// Fills a grid anew from its owner's array: the item count goes to 0, the window repaints, the
// stored widths apply, and the grid takes the new count and reads the rows it shows.
void ReloadGrid(GridEX& grid, int itemCount);
