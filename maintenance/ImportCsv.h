// Importing stock items from a comma-separated file: the file is read into a preview grid, the
// user says which grid column feeds which item field, and each grid row then creates a stock
// item, or updates the existing one, with its status written into column 0 of the grid.
#pragma once

#include "foundation/DbEngine.h"

#include <QElapsedTimer>
#include <QString>
#include <QStringList>
#include <functional>
#include <vector>

class FlexCells;

// Reads a file into an emptied grid, one line per row from row 1, and numbers the columns in
// row 0.
// A comma separates cells outside a quoted stretch; a quoted stretch ends only at a quote that a
// comma follows. A line without any separator is left out; an empty line gives an empty row.
// The grid grows to the widest line plus one empty column. Lines end at CR LF, LF or CR; the
// text is UTF-8 when it reads as such, otherwise Windows-1252. False when the file cannot be read
// (the grid is then unchanged).
bool ReadCsv(const QString& fileName, FlexCells& fg1);

// The cells one line gives, from column 1 on: quotes around a cell removed, doubled quotes made
// single. Empty when the line is left out.
QStringList SplitCsvLine(const QString& line);
// The text of a file: UTF-8 when it reads as such (a leading byte order mark dropped), otherwise
// Windows-1252.
QString DecodeCsvText(const QByteArray& bytes);

// One column choice box: its ListIndex and its text. The choice counts as made from ListIndex 1
// on; the column number is the text from its seventh character read as a number.
struct ImportColumnChoice {
    int listIndex = -1;
    QString text;
    bool Made() const { return listIndex >= 1; }
    int Column() const;
};

// The entries of the choice boxes for a grid of `cols` columns: `ignoreBlanks` is the number of
// blanks after "Ignore" on the first entry, 0 for a box without one.
QStringList ImportComboEntries(int cols, int ignoreBlanks);

struct ImportCsvInput {
    ImportColumnChoice Combo1;  // part number, MasterPNo
    ImportColumnChoice Combo2;  // description, ItemDescription
    ImportColumnChoice Combo3;  // quantity, Qty
    ImportColumnChoice Combo4;  // location, Location
    ImportColumnChoice Combo9;  // buy price, PriceEach of the no-supplier row
    ImportColumnChoice Combo10; // category, Category
    ImportColumnChoice Combo11; // sell price, SellAt
    ImportColumnChoice Combo12; // detail, ItemName
    bool Check1 = false;        // leave out the top row
    bool Check2 = false;        // update items that exist
    // Rows are written in batches: one transaction holds the write lock for about this long, then
    // commits and lets window events run.
    int batchMs = 250;
};

// What the window does while the import runs: show the bar with its maximum, move it to a row
// (window events run here, between batches), hide it.
struct ImportCsvProgress {
    std::function<void(int maximum)> start;
    std::function<void(int row)> step;
    std::function<void()> finish;
};

struct ImportCsvResult {
    bool ran = false; // false when a check stopped it
    int imported = 0;
    int ignored = 0;
};

// The state of one import run: the open file, the batch in progress and the statuses waiting
// for its commit.
class CsvImportRun {
public:
    CsvImportRun(Database& db, FlexCells& fg1, const ImportCsvInput& input);

    Database& db;
    FlexCells& fg1;
    const ImportCsvInput& input;

    // Starts a batch unless one is open. False when the write lock could not be had.
    bool EnsureBatch();
    bool BatchDue() const;
    // Commits the batch and writes the statuses waiting for it: after a failed commit every row
    // of the batch is "FAILED". Rows with no batch open are written at once.
    void CommitBatch();
    // The outcome of one row: "DONE_OK" and "UPDATED" count as imported once committed.
    void Record(int row, const QString& status);

    int imported = 0;
    int ignored = 0;

private:
    struct Pending {
        int row;
        QString status;
    };
    void write(const Pending& p, bool committed);
    std::vector<Pending> mPending;
    bool mBatchOpen = false;
    QElapsedTimer mBatchTimer;
};

// One grid row: checks the part number, reads the fields, then creates the item with its
// no-supplier row (under a savepoint of its own), or updates the existing item when Check2 is
// set. Records "DONE_OK", "UPDATED" or "FAILED" and returns true for the first two. An engine
// error outside the new-item path is not trapped.
bool ImportCsvRow(CsvImportRun& run, int row);

// The Import button: the checks, then every row from row 1 (row 2 with Check1), then the box with
// both counts. An engine error that is not trapped leaves with the rows before it committed.
ImportCsvResult ImportCsv(const ImportCsvInput& input, FlexCells& fg1,
                          const ImportCsvProgress& progress = {});

// The texts the tab shows.
QString ImportCsvGridReadyText(); // Label15 after a file was read
QString ImportCsvOverwriteHelp(); // Label17
QString ImportCsvTopRowHelp();    // Label18
