// The reports of the report window: what the window shows for each report type, the one shape
// every report procedure returns (columns, rows, summary), the dispatch by type, and the date
// rules of the pickers. No widgets here: the window gathers its dates into a ReportInput, calls
// RunReport and shows what comes back.
#pragma once

#include "foundation/DbEngine.h"
#include "foundation/Globals.h"

#include <QDate>
#include <QElapsedTimer>
#include <QList>
#include <QString>
#include <QStringList>

#include <array>
#include <functional>

// The chosen report (gReportType lives with the other process-wide globals).
// True from a click on a menu entry until the report window has closed; a click meanwhile does
// nothing.
extern bool gReportBusy;
// True while the report window loads and while it corrects a picked date: changes of the date
// combos are not acted on meanwhile.
extern bool gDateFixing;

// What the report window shows for a report type.
struct ReportLayout {
    bool known = false; // false: the window says "Unknown ReportType"
    QString title;      // Label3
    bool startDate = false;
    bool endDate = false;
    bool runButton = false;   // Command1 runs the report
    bool runsOnLoad = false;  // the report runs as the window opens
    bool groupButton = false; // Command11 folds the groups
};
ReportLayout ReportLayoutFor(int reportType);

// One grid column of a report.
struct ReportColumn {
    QString key;
    QString caption;
    bool rightAligned = false;
    int widthTwips = 1440;
};

// The lines under the grid: Text1 to Text5, and the note of Label2 where a report has one.
struct ReportSummary {
    std::array<QString, 5> text;
    QString label2;
};

struct ReportResult {
    bool ran = false; // false: the type runs no report and the window is left as it is
    QList<ReportColumn> columns;
    // The rows taken, each with one text per column, in column order.
    QList<QStringList> rows;
    // The column the grid groups its rows on, hidden while grouped ("" for none).
    QString groupKey;
    ReportSummary summary;
};

struct ReportInput {
    int reportType = 0;
    QDate startDate; // dated reports: the period lies strictly between the two dates
    QDate endDate;
    // Lets window events run; a walk calls it about every 50 ms. May be empty.
    std::function<void()> events;
};

// Runs the report of input.reportType on gDbPath: one statement, one walk. Types without a report
// give a result with ran false. Engine errors are not trapped.
ReportResult RunReport(const ReportInput& input);

// Calls the events function of a walk about every 50 ms, checking the clock every few rows.
class ReportEvents {
public:
    explicit ReportEvents(const std::function<void()>& events);
    void Row() {
        if (mEvents && (++mRows & 63) == 0)
            Check();
    }

private:
    void Check();
    const std::function<void()>& mEvents;
    QElapsedTimer mClock;
    unsigned mRows = 0;
};

// The pieces the report procedures are built from.
// A column of text, left-aligned, and a column of figures, right-aligned.
ReportColumn TextColumn(const char* key, const char* caption, int widthTwips);
ReportColumn FigureColumn(const char* key, const char* caption, int widthTwips);

// Text1 a count; Text2 a total's caption with the total in Text3 ("#,##0.00"); Text4 and Text5
// as given.
void WriteSummary(ReportResult& r, const QString& count, const QString& totalCaption, double total,
                  const QString& text4 = QString(), const QString& text5 = QString());

// Runs one statement on its own connection: `setup` gets the record set before the first row
// (to find its fields), `row` gets each row, and window events run meanwhile. The connection is
// gone when the walk returns, so no lock outlives it.
template <typename SetupFn, typename RowFn>
void WalkReport(const QString& statement, const ReportInput& input, SetupFn setup, RowFn row) {
    Database db = DBEngine::OpenDatabase(gDbPath);
    Recordset rs = db.OpenRecordset(statement);
    setup(rs);
    ReportEvents events(input.events);
    for (; !rs.Eof(); rs.MoveNext()) {
        events.Row();
        row(rs);
    }
    rs.Close();
    db.Close();
}

// The date pickers.
// The day a picked date settles on: a day the month lacks falls back a day at a time while it is
// still 28 or above. 0 when no real date is reached ("Invalid date selected").
int SettlePickedDay(int year, int month, int day);
