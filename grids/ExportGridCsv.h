// A grid written to a comma-separated file as the user sees it: visible columns in their order,
// rows in the grid's order, group header rows left out. No quoting: a "," inside a value is
// written as ".".
#pragma once

#include "grids/GridSource.h"

#include <QString>

// Asks for the file (the last name chosen is offered again, and a cancelled dialog writes to it
// again) and writes the grid to it. Nothing happens when no name was ever chosen.
void ExportGridCsv(GridSource& grid);
// Writes the file, replacing any, and reports with the "Saved" box, or with the "File Error" box
// when the file cannot be written. true when saved.
bool WriteGridCsv(GridSource& grid, const QString& fileName);

// The name the save dialog offers (the last one chosen in this run).
QString ExportFileName();
void SetExportFileName(const QString& fileName);
