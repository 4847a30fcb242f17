// A grid printed as a plain ruled listing on the current printer: the visible columns at their
// on-screen widths, 8 point Arial, a heading line with the date, the user's heading and the page
// number on every sheet, and cell text wrapped inside its column.
#pragma once

#include "grids/GridSource.h"

#include <QString>

// The lowest CurrentY reached so far on the sheet's current band of rows.
extern long gPrintMaxY;

// orientationChoice: 0 Portrait, 1 Landscape (the print panel's option). A listing too wide for
// Portrait asks whether to use Landscape; Cancel there returns false with nothing printed.
// Otherwise asks for the heading, prints every row as the grid stands and ends the document.
bool PrintGrid(GridSource& grid, int orientationChoice);

// Prints one cell at (x, y), each line ending the printed line, broken after a "-", "/", "," or
// blank so that a line holds at most maxChars + 1 characters. Raises gPrintMaxY to the CurrentY
// reached.
void PrintCellWrapped(const QString& text, int maxChars, double x, double y);
