// What the backup, compact and restore tests share: a recording display, file contents and
// page counts, and items with stock figures.
#pragma once

#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "maintenance/Maintenance.h"

#include <QCryptographicHash>
#include <QDir>
#include <QList>
#include <QStringList>

// Records what a run shows and how long it would have waited, waiting for nothing.
struct RecordedRun {
    QStringList labels;
    QList<int> progress;
    QList<int> pauses;
    QList<QPair<int, int>> ranges;
    RunDisplay display() {
        RunDisplay d;
        d.label = [this](const QString& t) { labels << t; };
        d.progress = [this](int v) { progress << v; };
        d.pause = [this](int ms) { pauses << ms; };
        d.range = [this](int lo, int hi) { ranges << qMakePair(lo, hi); };
        return d;
    }
};

// Every row of every table of a file, in row order.
inline QByteArray Contents(const QString& path) {
    Database db = DBEngine::OpenDatabase(path);
    QStringList tables;
    {
        Recordset rs = db.OpenRecordset(QStringLiteral(
            "SELECT name FROM sqlite_master WHERE type='table' AND name NOT LIKE 'sqlite%' "
            "ORDER BY name"));
        for (; !rs.Eof(); rs.MoveNext())
            tables << rs.Fields(0).Text();
    }
    QCryptographicHash hash(QCryptographicHash::Sha256);
    for (const QString& t : tables) {
        hash.addData(t.toUtf8());
        Recordset rs = db.OpenRecordset(QStringLiteral("SELECT * FROM ") + t +
                                        QStringLiteral(" ORDER BY rowid"));
        for (; !rs.Eof(); rs.MoveNext())
            for (int i = 0; i < rs.FieldCount(); ++i)
                hash.addData((rs.Fields(i).Text() + QLatin1Char('|')).toUtf8());
    }
    return hash.result();
}

inline qint64 Pragma(const QString& path, const QString& name) {
    Database db = DBEngine::OpenDatabase(path);
    Recordset rs = db.OpenRecordset(QStringLiteral("PRAGMA ") + name);
    return rs.Fields(0).Long();
}

// Working files of maintenance runs left in the data folder.
inline QStringList LeftoverWorkFiles() {
    QStringList out;
    for (const QString& n : QDir(gAppPath).entryList(QDir::Files))
        if (n.endsWith(QLatin1String(".tmp")) || n.endsWith(QLatin1String("-journal")) ||
            n.endsWith(QLatin1String("-new")))
            out << n;
    return out;
}

// `count` items with long descriptions, then every other one deleted, so that the file holds
// free pages.
inline void FillWithGaps(int count) {
    Database db = DBEngine::OpenDatabase(gDbPath);
    db.BeginTrans();
    for (int i = 1; i <= count; ++i)
        db.Execute(QStringLiteral("INSERT INTO tblStockItems (ItemID, MasterPNo, ItemDescription, "
                                  "Qty, AllocQty, OnOrderQty) VALUES (?, ?, ?, ?, 0, 0)"),
                   {i, QStringLiteral("P%1").arg(i), QString(400, QLatin1Char('x')), i * 1.5});
    db.CommitTrans();
    db.Execute(QStringLiteral("DELETE FROM tblStockItems WHERE ItemID % 2 = 0"));
}
