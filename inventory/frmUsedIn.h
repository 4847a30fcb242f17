// The "Used in" sub-panel of the item detail: the grid gdxUsedIn over the assemblies that use the
// item, read when the tab is chosen.
#pragma once

#include "inventory/UsedIn.h"

#include <QFrame>

class GridEX;

class frmUsedIn : public QFrame {
    Q_OBJECT
public:
    explicit frmUsedIn(QWidget* parent = nullptr); // objectName "frmUsedIn"

    // Reads the assemblies that use the item; the grid takes its columns from the statement's
    // fields and the stored widths. An item used nowhere leaves the grid empty.
    void LoadUsedIn(qint32 itemId);

    GridEX* gdxUsedIn;

private:
    void DefineColumns();
    UsedInData mData;
};
