#include "maintenance/ImportCsv.h"

#include "foundation/Dialect.h"
#include "foundation/Globals.h"
#include "foundation/Helpers.h"
#include "foundation/MsgBox.h"
#include "maintenance/FlexCells.h"

#include <QFile>
#include <QStringDecoder>
#include <QThread>
#include <cmath>

namespace {

const QString kDoneOk = QStringLiteral("DONE_OK");
const QString kUpdated = QStringLiteral("UPDATED");
const QString kFailed = QStringLiteral("FAILED");
const QString kRowSavepoint = QStringLiteral("csvrow");
const QString kQtyMask = QStringLiteral("0.0#");
const QString kPriceMask = QStringLiteral("0.00###");

// Windows-1252 from 0x80 to 0x9F; the other bytes are their Latin-1 characters.
constexpr char16_t kCp1252High[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

QString fromCp1252(const QByteArray& bytes) {
    QString out(bytes.size(), Qt::Uninitialized);
    QChar* p = out.data();
    for (const char ch : bytes) {
        const auto b = static_cast<unsigned char>(ch);
        *p++ = (b >= 0x80 && b < 0xA0) ? QChar(kCp1252High[b - 0x80]) : QChar(b);
    }
    return out;
}

} // namespace

// ---------------------------------------------------------------- reading the file

QString DecodeCsvText(const QByteArray& bytes) {
    // The decoder drops a leading byte order mark.
    QStringDecoder utf8(QStringDecoder::Utf8);
    QString text = utf8.decode(bytes);
    if (!utf8.hasError())
        return text;
    return fromCp1252(bytes);
}

QStringList SplitCsvLine(const QString& input) {
    const QString line = input + QLatin1Char(',');
    const QChar quote = QLatin1Char('"');
    const QChar comma = QLatin1Char(',');
    const qsizetype n = line.size();
    // Where each piece ends (at its separator).
    QList<qsizetype> separators;
    if (line.contains(quote)) {
        bool inQuote = false;
        for (qsizetype i = 0; i < n; ++i) {
            const QChar c = line.at(i);
            // One chain: a quote that closes a stretch does not open another one.
            if (inQuote && c == quote && i + 1 < n && line.at(i + 1) == comma)
                inQuote = false;
            else if (!inQuote && c == quote)
                inQuote = true;
            else if (c == comma && !inQuote)
                separators << i;
        }
    } else {
        for (qsizetype i = 0; i < n; ++i)
            if (line.at(i) == comma)
                separators << i;
    }
    // The pieces are numbered from 0 and the last one (after the last separator) is never shown,
    // so the highest piece number is the count of separators. Below 1 the line is left out.
    QStringList cells;
    cells.reserve(separators.size());
    qsizetype start = 0;
    for (const qsizetype end : separators) {
        QString piece = line.mid(start, end - start);
        if (piece.size() >= 2 && piece.startsWith(quote) && piece.endsWith(quote))
            piece = piece.mid(1, piece.size() - 2);
        if (piece.contains(quote))
            piece.replace(QStringLiteral("\"\""), QStringLiteral("\""));
        cells << piece;
        start = end + 1;
    }
    return cells;
}

bool ReadCsv(const QString& fileName, FlexCells& fg1) {
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QString text = DecodeCsvText(file.readAll());
    file.close();

    fg1.BeginUpdate();
    // A new file starts from an empty grid of two rows and two columns, so that no cell of an
    // earlier file (or its status) is left beside the new rows.
    fg1.SetRows(0);
    fg1.SetCols(2);
    fg1.SetRows(2);
    int r = 1;
    const qsizetype n = text.size();
    qsizetype i = 0;
    while (i < n) {
        qsizetype end = i;
        while (end < n && text.at(end) != QLatin1Char('\r') && text.at(end) != QLatin1Char('\n'))
            ++end;
        const QStringList cells = SplitCsvLine(text.mid(i, end - i));
        if (end < n && text.at(end) == QLatin1Char('\r') && end + 1 < n &&
            text.at(end + 1) == QLatin1Char('\n'))
            ++end;
        i = end + 1;

        const int highest = int(cells.size());
        if (highest < 1)
            continue;
        if (fg1.Cols() <= highest)
            fg1.SetCols(highest + 2);
        fg1.SetRows(r + 1);
        for (int c = 1; c <= highest; ++c)
            fg1.SetTextMatrix(r, c, cells.at(c - 1));
        ++r;
    }
    for (int c = 1; c < fg1.Cols(); ++c)
        fg1.SetTextMatrix(0, c, QString::number(c));
    fg1.EndUpdate();
    return true;
}

// ---------------------------------------------------------------- column choices

int ImportColumnChoice::Column() const {
    return int(std::lround(Val(text.mid(6))));
}

QStringList ImportComboEntries(int cols, int ignoreBlanks) {
    QStringList entries;
    if (ignoreBlanks > 0)
        entries << QStringLiteral("Ignore") + QString(ignoreBlanks, QLatin1Char(' '));
    for (int c = 1; c < cols; ++c)
        entries << QStringLiteral("Column ") + QString::number(c);
    return entries;
}

// ---------------------------------------------------------------- one run

CsvImportRun::CsvImportRun(Database& database, FlexCells& grid, const ImportCsvInput& in)
    : db(database), fg1(grid), input(in) {}

bool CsvImportRun::EnsureBatch() {
    if (mBatchOpen && db.InTransaction())
        return true;
    if (mBatchOpen) // the engine rolled the batch back after an error: its rows are lost
        CommitBatch();
    try {
        db.BeginTrans();
    } catch (const DbError&) {
        return false;
    }
    mBatchOpen = true;
    mBatchTimer.start();
    return true;
}

bool CsvImportRun::BatchDue() const {
    return mBatchOpen && mBatchTimer.elapsed() >= input.batchMs;
}

void CsvImportRun::Record(int row, const QString& status) {
    mPending.push_back({row, status});
}

void CsvImportRun::write(const Pending& p, bool committed) {
    const bool ok = committed && p.status != kFailed;
    fg1.SetTextMatrix(p.row, 0, ok ? p.status : kFailed);
    if (ok)
        ++imported;
    else
        ++ignored;
}

void CsvImportRun::CommitBatch() {
    bool committed = true;
    if (mBatchOpen) {
        mBatchOpen = false;
        committed = db.InTransaction();
        try {
            if (committed)
                db.CommitTrans();
        } catch (const DbError&) {
            db.Rollback();
            committed = false;
        }
    }
    for (const Pending& p : mPending)
        write(p, committed);
    mPending.clear();
}

// ---------------------------------------------------------------- one row

bool ImportCsvRow(CsvImportRun& run, int row) {
    const ImportCsvInput& in = run.input;
    const FlexCells& fg1 = run.fg1;
    const auto cell = [&](const ImportColumnChoice& choice) {
        return fg1.TextMatrix(row, choice.Column());
    };
    const auto text = [&](const ImportColumnChoice& choice, const QString& none) {
        return choice.Made() ? cell(choice).remove(QLatin1Char('\'')) : none;
    };
    const auto number = [&](const ImportColumnChoice& choice, const QString& mask) {
        return choice.Made() ? FormatNumber(cell(choice), mask) : QStringLiteral("0");
    };

    const QString pno = cell(in.Combo1).trimmed().remove(QLatin1Char('\''));
    if (pno.isEmpty() || pno == kDoneOk) {
        run.Record(row, kFailed);
        return false;
    }
    const QString description = text(in.Combo2, QString());
    const QString quantity = number(in.Combo3, kQtyMask);
    const QString location = text(in.Combo4, QStringLiteral("UNKNOWN"));
    const QString buyPrice = number(in.Combo9, kPriceMask);
    const QString category = text(in.Combo10, QStringLiteral("NEW")).toUpper();
    const QString sellPrice = number(in.Combo11, kPriceMask);
    const QString detail = text(in.Combo12, QString()).toUpper();

    if (!run.EnsureBatch()) {
        run.Record(row, kFailed);
        return false;
    }
    Database& db = run.db;
    Recordset match =
        db.OpenRecordset(QStringLiteral("SELECT * FROM tblStockItems WHERE MasterPNo=?"), {pno});
    if (match.Eof()) {
        match.Close();
        qint64 itemId = 1;
        {
            Recordset top = db.OpenRecordset(
                QStringLiteral("SELECT ItemID FROM tblStockItems ORDER by ItemID DESC") +
                FirstRowOnly());
            if (!top.Eof())
                itemId = top.Fields(0).Long() + 1;
        }
        const QString id = QString::number(itemId);
        bool open = false;
        try {
            db.Savepoint(kRowSavepoint);
            open = true;
            qint64 count = 0;
            db.Execute(QStringLiteral("INSERT INTO tblStockItems (ItemID, MasterPNo, ItemName, "
                                      "ItemDescription, Category, Location, Qty, AllocQty, "
                                      "OnOrderQty, Trigger, BuyNow, SellAt, AllowDiscount) "
                                      "VALUES (") +
                           id + QStringLiteral(",?,?,?,?,?,") + SqlNumber(quantity, kQtyMask) +
                           QStringLiteral(",0,0,0,0,") + SqlNumber(sellPrice, kPriceMask) +
                           QStringLiteral(",0);"),
                       {pno, detail, description, category, location});
            count += db.RecordsAffected();
            db.Execute(QStringLiteral("INSERT INTO tblItemSupplier (ItemID,SupplierID, "
                                      "SupplierPNo, PrimeSupplier, PriceEach) VALUES (") +
                       id + QStringLiteral(", 0,'', 0,") + SqlNumber(buyPrice, kPriceMask) +
                       QStringLiteral(" );"));
            count += db.RecordsAffected();
            if (count == 2) {
                db.ReleaseSavepoint(kRowSavepoint);
                run.Record(row, kDoneOk);
                return true;
            }
            db.RollbackToSavepoint(kRowSavepoint);
        } catch (const DbError&) {
            if (open)
                db.RollbackToSavepoint(kRowSavepoint);
        }
        run.Record(row, kFailed);
        return false;
    }
    if (!in.Check2) { // a duplicate
        run.Record(row, kFailed);
        return false;
    }

    // The update path: only the chosen fields; the quantity change makes no history row. Its
    // errors are not trapped here; the row is undone alone before they travel on.
    const qint64 itemId = match.Fields(QStringLiteral("ItemID")).Long();
    db.Savepoint(kRowSavepoint);
    try {
        match.Edit();
        if (in.Combo2.Made())
            match.SetField(QStringLiteral("ItemDescription"), description);
        if (in.Combo12.Made())
            match.SetField(QStringLiteral("ItemName"), detail.left(49));
        if (in.Combo10.Made())
            match.SetField(QStringLiteral("Category"), category);
        if (in.Combo4.Made())
            match.SetField(QStringLiteral("Location"), location);
        if (in.Combo3.Made())
            match.SetField(QStringLiteral("Qty"), ParseLocaleNumber(quantity));
        if (in.Combo11.Made())
            match.SetField(QStringLiteral("SellAt"), ParseLocaleNumber(sellPrice));
        match.Update();
        match.Close();
        if (in.Combo9.Made())
            db.Execute(QStringLiteral("UPDATE tblItemSupplier SET PriceEach = ") +
                       SqlNumber(buyPrice, kPriceMask) + QStringLiteral(" WHERE ItemID = ") +
                       QString::number(itemId) + QStringLiteral(" AND SupplierID = 0"));
        db.ReleaseSavepoint(kRowSavepoint);
    } catch (...) {
        db.RollbackToSavepoint(kRowSavepoint);
        throw;
    }
    run.Record(row, kUpdated);
    return true;
}

// ---------------------------------------------------------------- the run

ImportCsvResult ImportCsv(const ImportCsvInput& input, FlexCells& fg1,
                          const ImportCsvProgress& progress) {
    ImportCsvResult result;
    if (input.Combo1.text == input.Combo2.text) {
        MsgBox(QStringLiteral("The Description and Part number columns can not be the same"));
        return result;
    }
    if (input.Combo3.text == input.Combo1.text || input.Combo4.text == input.Combo1.text) {
        MsgBox(QStringLiteral(
            "Each column must be unique. Two fields can not import the same column data"));
        return result;
    }
    result.ran = true;
    const int rows = fg1.Rows();
    if (progress.start)
        progress.start(rows);

    Database db = DBEngine::OpenDatabase(gDbPath);
    CsvImportRun run(db, fg1, input);
    // After each commit the lock is left free for a moment, so that another workstation waiting
    // for it gets in instead of timing out.
    const int yieldMs = qBound(0, input.batchMs / 5, 10);
    for (int row = input.Check1 ? 2 : 1; row < rows; ++row) {
        try {
            ImportCsvRow(run, row);
        } catch (...) {
            run.CommitBatch();
            throw;
        }
        if (run.BatchDue() || row == rows - 1) {
            run.CommitBatch();
            if (progress.step)
                progress.step(row);
            if (yieldMs > 0 && row < rows - 1)
                QThread::msleep(yieldMs);
        }
    }
    run.CommitBatch();
    if (progress.finish)
        progress.finish();
    db.Close();
    result.imported = run.imported;
    result.ignored = run.ignored;
    MsgBox(QString::number(result.imported) +
           QStringLiteral(" records were imported successfully\n\n") +
           QString::number(result.ignored) +
           QStringLiteral(" duplicate or invalid records were ignored\n\nThe data grid now shows "
                          "the status of each record"));
    return result;
}

// ---------------------------------------------------------------- texts

QString ImportCsvGridReadyText() {
    return QStringLiteral(
        "Your CSV data has been imported into this data grid\n\nYou now need you to identify the "
        "Part Number, Description, Quantity and any other fields you require\n\nEach column in "
        "this datagrid has a number which you select\n\n(or ignore) from the relevant boxes below");
}

QString ImportCsvOverwriteHelp() {
    return QStringLiteral(
        "If you select this option the import procedure will import NEW Inventory items which "
        "don't exist in your database AND will also update/overwrite details which do already "
        "exist in your database\n\nFor example, you may have exported your inventory to a CSV "
        "file and used MS Excel to update all the 'Sell At' prices or maybe you've done a recent "
        "quantity check on all your inventory\n\nThis option can be used to quickly update "
        "quantities and prices by importing those values from a CSV file\n\nCurrently only the "
        "OnHand quantity and 'Sell' prices can be updated via this option. Vendor/Buy prices can "
        "not be updated\n\nBefore doing any bulk import/update you will of course make sure "
        "you've taken a backup of your current data..");
}

QString ImportCsvTopRowHelp() {
    return QStringLiteral(
        "A CSV file often has column titles/labels in the first row of the file. The import "
        "procedure would usually import that row and create a new item in your inventory\n\nYou "
        "can make the import procedure ignore the first row of the CSV file.\n\nIf you're not "
        "sure then don't select this option and the first row will be imported. You can always "
        "delete the unwanted row later");
}
