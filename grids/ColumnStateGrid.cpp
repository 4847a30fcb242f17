// The window half of the stored column widths: applying them to a GridEX.
#include "grids/ColumnState.h"
#include "grids/GridEX.h"

#include <QCoreApplication>

void LoadColumnState(GridEX& grid) {
    for (const auto& [key, width] : ReadColumnState(grid.objectName())) {
        // A stored column the grid no longer has is passed over without a word.
        if (GridColumn* col = grid.Columns().Find(key))
            col->SetWidth(width);
    }
}

void ReloadGrid(GridEX& grid, int itemCount) {
    grid.SetItemCount(0);
    QCoreApplication::processEvents();
    LoadColumnState(grid);
    grid.SetItemCount(itemCount);
}
