// Makers of the named controls the purchasing windows are built from, and what their grids read.
#pragma once

#include "inventory/InventoryList.h" // UBArray

#include <QLineEdit>
#include <QPushButton>
#include <QVariant>

// A button with its objectName; Enter in a box or a grid cell of the window never presses it.
inline QPushButton* NamedButton(const QString& name, const QString& caption, QWidget* parent) {
    auto* b = new QPushButton(caption, parent);
    b->setObjectName(name);
    b->setAutoDefault(false);
    return b;
}

// A text box with its objectName.
inline QLineEdit* NamedBox(const QString& name, QWidget* parent) {
    auto* e = new QLineEdit(parent);
    e->setObjectName(name);
    return e;
}

// A cell of one of a window's working arrays, empty outside the rows in use.
inline QVariant ArrayCell(const UBArray& rows, int count, int record, int column) {
    if (count < 1 || record < 1 || record > count)
        return {};
    return rows(column, record);
}
