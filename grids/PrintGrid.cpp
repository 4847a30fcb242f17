#include "grids/PrintGrid.h"

#include "foundation/Clock.h"
#include "foundation/Helpers.h"
#include "foundation/MsgBox.h"
#include "foundation/Printer.h"

#include <QLocale>
#include <algorithm>
#include <cmath>
#include <vector>

long gPrintMaxY = 0;

namespace {

// Twips a character of the listing is taken to need.
constexpr double kTwipsPerChar = 120;

// A whole number as VB's conversions give it: halves go to the even neighbour.
long RoundHalfEven(double v) {
    double whole = std::floor(v);
    const double fraction = v - whole;
    if (fraction > 0.5 || (fraction == 0.5 && std::fmod(whole, 2.0) != 0))
        whole += 1;
    return long(whole);
}

bool IsBreak(QChar c) {
    return c == QLatin1Char('-') || c == QLatin1Char('/') || c == QLatin1Char(',') ||
           c == QLatin1Char(' ');
}

// The run of one listing: the column marks, the heading and the sheet count.
class Listing {
public:
    Listing(GridSource& grid, Printer& printer) : mGrid(grid), mPrinter(printer) {}
    bool Run(int orientationChoice);

private:
    int CharsOfColumn(int column) const {
        return int(RoundHalfEven(double(mPos[column] - mPos[column - 1]) / kTwipsPerChar));
    }
    void RuleAcross() {
        mPrinter.Line(double(mPos.front()), mPrinter.CurrentY(), double(mPos.back()),
                      mPrinter.CurrentY());
    }
    void PageHeader();

    GridSource& mGrid;
    Printer& mPrinter;
    std::vector<long> mPos; // left margin, then the right edge of each column
    QString mHeading;
    int mPage = 0;
    long mWorkY = 0;
};

bool Listing::Run(int orientationChoice) {
    const int wanted = orientationChoice == 0 ? vbPRORPortrait : vbPRORLandscape;
    gPrintMaxY = 0;

    // The margin is taken from the sheet as it stands, before any change of orientation.
    const int columns = mGrid.ColumnCount();
    mPos.assign(size_t(columns) + 1, 0);
    mPos[0] = RoundHalfEven(mPrinter.Width() * 0.1);
    long totalWidth = 0;
    for (int i = 1; i <= columns; ++i) {
        if (mGrid.ColumnVisible(i)) {
            mPos[size_t(i)] = mPos[size_t(i) - 1] + mGrid.ColumnWidth(i);
            totalWidth += mGrid.ColumnWidth(i);
        } else {
            mPos[size_t(i)] = mPos[size_t(i) - 1];
        }
    }

    // Columns are never scaled: a listing wider than the sheet runs off its right edge.
    if (totalWidth < mPrinter.Width() - mPos[0]) {
        mPrinter.SetOrientation(wanted);
    } else if (wanted == vbPRORPortrait) {
        switch (MsgBox(QStringLiteral("The document width is too wide for Portrait. Do you wish "
                                      "to use Landscape?"),
                       vbYesNoCancel + vbInformation, QStringLiteral("Print"))) {
        case vbYes:
            mPrinter.SetOrientation(vbPRORLandscape);
            break;
        case vbNo:
            mPrinter.SetOrientation(vbPRORPortrait);
            break;
        default:
            return false;
        }
    } else {
        mPrinter.SetOrientation(vbPRORLandscape);
    }

    mPrinter.SetFontName(QStringLiteral("Arial"));
    mPrinter.SetFontSize(8);

    const QString heading = InputBox(
        QStringLiteral("You may enter a Document Heading if you wish\n\nThe document heading "
                       "appears at the top of each sheet and is intended to describe the "
                       "document and its contents"),
        QStringLiteral("Heading"));
    // A single character counts as no heading.
    if (heading.size() > 1)
        mHeading = heading;

    PageHeader();
    mWorkY = RoundHalfEven(mPrinter.CurrentY());

    const int rows = mGrid.RowCount();
    for (int r = 1; r <= rows; ++r) {
        mGrid.SetRow(r);
        for (int i = 1; i <= columns; ++i) {
            if (!mGrid.ColumnVisible(i))
                continue;
            mPrinter.SetCurrentY(double(mWorkY));
            mPrinter.SetCurrentX(double(mPos[size_t(i) - 1]));
            PrintCellWrapped(mGrid.Value(i), CharsOfColumn(i), mPrinter.CurrentX(),
                             mPrinter.CurrentY());
        }
        mWorkY = gPrintMaxY;
        mPrinter.Line(double(mPos.front()), double(mWorkY), double(mPos.back()), double(mWorkY));
        // A new sheet only after a whole row, below the 80% line.
        if (mPrinter.CurrentY() > mPrinter.Height() * 0.8) {
            mPrinter.NewPage();
            PageHeader();
        }
    }
    mPrinter.EndDoc();
    return true;
}

void Listing::PageHeader() {
    ++mPage;
    mPrinter.SetCurrentX(double(mPos.front()));
    mPrinter.SetCurrentY(mPrinter.Height() * 0.07);
    mPrinter.PrintSameLine(QLocale().toString(Today(), DateDisplayFormat()) + QStringLiteral("  ") +
                           mHeading);
    mPrinter.SetCurrentX(mPrinter.Width() * 0.9);
    mPrinter.Print(QStringLiteral("Page ") + QString::number(mPage));
    RuleAcross();
    mPrinter.Print();

    gPrintMaxY = 0;
    const double captionY = mPrinter.CurrentY();
    for (int i = 1; i <= mGrid.ColumnCount(); ++i) {
        if (!mGrid.ColumnVisible(i))
            continue;
        mPrinter.SetCurrentY(captionY);
        mPrinter.SetCurrentX(double(mPos[size_t(i) - 1]));
        // A caption is cut to its column, never wrapped.
        mPrinter.PrintSameLine(mGrid.ColumnCaption(i).left(std::max(0, CharsOfColumn(i))));
    }
    RuleAcross();
    mPrinter.Print();
    RuleAcross();
    mPrinter.Print();
    mWorkY = RoundHalfEven(mPrinter.CurrentY());
}

} // namespace

bool PrintGrid(GridSource& grid, int orientationChoice) {
    Listing listing(grid, CurrentPrinter());
    return listing.Run(orientationChoice);
}

void PrintCellWrapped(const QString& text, int maxChars, double x, double y) {
    Printer& printer = CurrentPrinter();
    printer.SetCurrentY(y);
    const qsizetype n = text.size();
    qsizetype p = 1; // position of the next character, from 1
    if (n == 0) {
        printer.SetCurrentX(x);
        printer.Print(QString());
    } else {
        do {
            // The rest is taken one character short of all that remains.
            qsizetype chunk;
            if (n - p <= maxChars) {
                chunk = n - p + 1;
            } else {
                qsizetype breakAt = 0;
                for (int k = 1; k <= maxChars - 1; ++k)
                    if (IsBreak(text.at(p + k - 1)))
                        breakAt = k;
                // Without a break the chunk runs to one past maxChars; the break character
                // stays at the end of its line.
                if (breakAt == 0)
                    breakAt = std::max(1, maxChars);
                chunk = breakAt + 1;
            }
            printer.SetCurrentX(x);
            printer.Print(text.mid(p - 1, chunk));
            p += chunk;
            // When exactly one character is left it is not printed.
        } while (p < n);
    }
    const long reached = RoundHalfEven(printer.CurrentY());
    if (printer.CurrentY() > gPrintMaxY)
        gPrintMaxY = reached;
}
