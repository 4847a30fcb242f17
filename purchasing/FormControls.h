// Makers of the named controls the purchasing windows are built from.
#pragma once

#include <QLineEdit>
#include <QPushButton>

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
