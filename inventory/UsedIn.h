// Where an item is used: the assemblies whose parts lists (tblUsedIn) name it as a component.
// The program reads parts lists and removes them with an item; it never creates them.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

struct UsedInData {
    QStringList keys;        // the statement's field names, in order: the grid's column keys
    QList<QStringList> rows; // one text per field; QtyPer as a plain number
};

// The assemblies that use an item, joined to their stock rows: a parts-list row whose parent
// no longer exists is not listed.
QString UsedInStatement(qint32 itemId);
// The caption of a field's column: the field's own name, except ItemDescription "Description"
// and BoardPos "Ref/Position".
QString UsedInCaption(const QString& field);
// Runs the statement for the item and reads every row.
UsedInData LoadUsedIn(qint32 itemId);
