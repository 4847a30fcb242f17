#include "reports/frmShowReport.h"

#include "foundation/Clock.h"
#include "foundation/Globals.h"
#include "foundation/MsgBox.h"
#include "grids/GridEX.h"
#include "grids/GridEXSource.h"
#include "grids/frmPrintDialog.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QCoreApplication>
#include <QFrame>
#include <QGridLayout>
#include <QGroupBox>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QStyle>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

QComboBox* picker(QWidget* parent, const char* name) {
    auto* c = new QComboBox(parent);
    c->setObjectName(QLatin1String(name));
    return c;
}

QLineEdit* summaryLine(QWidget* parent, const char* name) {
    auto* t = new QLineEdit(parent);
    t->setObjectName(QLatin1String(name));
    t->setReadOnly(true);
    return t;
}

// The hourglass over the whole program while a report is read.
class WaitCursor {
public:
    WaitCursor() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QGuiApplication::restoreOverrideCursor(); }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;
};

} // namespace

frmShowReport::frmShowReport(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmShowReport"));
    setWindowTitle(QStringLiteral("Reports"));

    buttons = new QToolBar(this);
    buttons->setObjectName(QStringLiteral("buttons"));
    buttons->setMovable(false);
    buttons->setIconSize(QSize(24, 24));
    auto toolButton = [this](int index, QStyle::StandardPixmap icon, const char* text,
                             const char* tip) {
        auto* b = new QToolButton(buttons);
        b->setObjectName(QStringLiteral("buttons_%1").arg(index));
        b->setIcon(style()->standardIcon(icon));
        b->setText(QString::fromLatin1(text));
        b->setToolTip(QString::fromLatin1(tip));
        b->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
        b->setAutoRaise(true);
        b->setMinimumWidth(64);
        b->setFocusPolicy(Qt::NoFocus);
        buttons->addWidget(b);
        connect(b, &QToolButton::clicked, this, [this, index] { buttons_ButtonClick(index); });
        return b;
    };
    buttons_3 = toolButton(3, QStyle::SP_FileDialogDetailedView, "Print", "Print the report");
    buttons_5 = toolButton(5, QStyle::SP_FileDialogContentsView, "Export",
                           "Export the report to a CSV/Excel file");

    Label3 = new QLabel(this);
    Label3->setObjectName(QStringLiteral("Label3"));
    Label3->setWordWrap(true);
    QFont titleFont = Label3->font();
    titleFont.setBold(true);
    titleFont.setPointSizeF(titleFont.pointSizeF() * 1.25);
    Label3->setFont(titleFont);

    auto dateGroup = [this](const char* caption, const char* day, const char* month,
                            const char* year, QComboBox*& d, QComboBox*& m, QComboBox*& y) {
        auto* frame = new QGroupBox(QString::fromLatin1(caption), this);
        d = picker(frame, day);
        m = picker(frame, month);
        y = picker(frame, year);
        auto* row = new QHBoxLayout(frame);
        row->addWidget(d);
        row->addWidget(m, 1);
        row->addWidget(y);
        return frame;
    };
    Frame1 = dateGroup("After", "cboStartDay", "cboStartMonth", "cboStartYear", cboStartDay,
                       cboStartMonth, cboStartYear);
    Frame1->setObjectName(QStringLiteral("Frame1"));
    Frame2 = dateGroup("Before", "cboEndDay", "cboEndMonth", "cboEndYear", cboEndDay, cboEndMonth,
                       cboEndYear);
    Frame2->setObjectName(QStringLiteral("Frame2"));

    Command1 = new QPushButton(QStringLiteral("Run Report"), this);
    Command1->setObjectName(QStringLiteral("Command1"));
    Command11 = new QPushButton(QStringLiteral("Group"), this);
    Command11->setObjectName(QStringLiteral("Command11"));
    Command11->setToolTip(QStringLiteral("Expand or collapse all groups"));
    Command2 = new QPushButton(QStringLiteral("Close"), this);
    Command2->setObjectName(QStringLiteral("Command2"));
    Command2->setAutoDefault(false);
    Command1->setAutoDefault(false);
    Command11->setAutoDefault(false);

    gdxUBView = new GridEX(QStringLiteral("gdxUBView"), this);
    gdxUBView->SetSaveColumnState(false); // report grids keep no stored widths
    gdxUBView->SetAllowEdit(false);
    gdxUBView->SetAlternatingRowColors(true);
    gdxUBView->SetGroupByBoxVisible(false);
    gdxUBView->SetCellReader([this](int record, int column) -> QVariant {
        if (record < 1 || record > mRows.size())
            return QVariant();
        const QStringList& row = mRows.at(record - 1);
        return column >= 1 && column <= row.size() ? QVariant(row.at(column - 1)) : QVariant();
    });

    frmWait = new QFrame(gdxUBView);
    frmWait->setObjectName(QStringLiteral("frmWait"));
    frmWait->setFrameShape(QFrame::Box);
    frmWait->setAutoFillBackground(true);
    frmWait->setStyleSheet(QStringLiteral("#frmWait { background: #fffde8; border: 1px solid "
                                          "#8a8460; border-radius: 4px; }"));
    auto* waitLayout = new QVBoxLayout(frmWait);
    auto* waitLabel = new QLabel(QStringLiteral("Report Running Please wait ...."), frmWait);
    waitLabel->setObjectName(QStringLiteral("lblWait"));
    waitLabel->setAlignment(Qt::AlignCenter);
    waitLayout->addWidget(waitLabel);
    frmWait->resize(260, 60);

    Label2 = new QLabel(this);
    Label2->setObjectName(QStringLiteral("Label2"));
    Label2->setWordWrap(true);
    Text1 = summaryLine(this, "Text1");
    Text2 = summaryLine(this, "Text2");
    Text3 = summaryLine(this, "Text3");
    Text4 = summaryLine(this, "Text4");
    Text5 = summaryLine(this, "Text5");
    Text2->setAlignment(Qt::AlignRight);
    Text3->setAlignment(Qt::AlignRight);

    auto* pickers = new QHBoxLayout;
    pickers->addWidget(Frame1, 1);
    pickers->addWidget(Frame2, 1);
    pickers->addStretch(0);
    auto* actions = new QVBoxLayout;
    actions->addWidget(Command1);
    actions->addWidget(Command11);
    actions->addStretch();
    pickers->addLayout(actions);
    for (QPushButton* b : {Command1, Command11})
        b->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);

    auto* summary = new QGridLayout;
    summary->addWidget(Text1, 0, 0, 1, 2);
    summary->addWidget(Text2, 1, 0);
    summary->addWidget(Text3, 1, 1);
    summary->addWidget(Text4, 2, 0, 1, 2);
    summary->addWidget(Text5, 3, 0, 1, 2);
    summary->setColumnStretch(0, 3);
    summary->setColumnStretch(1, 1);

    auto* bottom = new QHBoxLayout;
    bottom->addWidget(Label2, 1);
    bottom->addWidget(Command2, 0, Qt::AlignBottom);

    auto* layout = new QVBoxLayout(this);
    layout->setMenuBar(buttons);
    layout->addWidget(Label3);
    layout->addLayout(pickers);
    layout->addWidget(gdxUBView, 1);
    layout->addLayout(summary);
    layout->addLayout(bottom);

    // Below 5700 x 9195 twips the window keeps that size.
    setMinimumSize(qRound(5700 * logicalDpiX() / 1440.0), qRound(9195 * logicalDpiY() / 1440.0));
    resize(qMax(minimumWidth(), 900), minimumHeight());

    connect(Command1, &QPushButton::clicked, this, &frmShowReport::Command1_Click);
    connect(Command2, &QPushButton::clicked, this, &QWidget::close);
    connect(Command11, &QPushButton::clicked, this, &frmShowReport::Command11_Click);

    Load();

    const struct {
        QComboBox *day, *month, *year;
    } groups[] = {{cboStartDay, cboStartMonth, cboStartYear}, {cboEndDay, cboEndMonth, cboEndYear}};
    for (const auto& g : groups)
        for (QComboBox* c : {g.day, g.month, g.year})
            connect(c, &QComboBox::currentIndexChanged, this, [this, g] {
                if (!gDateFixing)
                    CheckPickedDate(g.day, g.month, g.year);
            });
}

// ---------------------------------------------------------------------------------------------
// Load

void frmShowReport::Load() {
    frmWait->hide();
    gdxUBView->SetItemCount(0);
    if (gReportType == 0) {
        mUnload = true;
        return;
    }
    gDateFixing = true;
    FillDatePickers();
    Frame1->setTitle(QStringLiteral("Start"));
    Frame2->setTitle(QStringLiteral("End"));

    mLayout = ReportLayoutFor(gReportType);
    Frame1->setVisible(mLayout.startDate);
    Frame2->setVisible(mLayout.endDate);
    Command1->setVisible(mLayout.runButton);
    Command11->setVisible(mLayout.groupButton);
    Label3->setText(mLayout.title);
    gDateFixing = false;
    if (!mLayout.known) {
        MsgBox(QStringLiteral("Unknown ReportType"));
        return;
    }
    mLoadRunPending = mLayout.runsOnLoad;
}

void frmShowReport::FillDatePickers() {
    const QDate today = Today();
    const QLocale locale;
    for (QComboBox* year : {cboStartYear, cboEndYear}) {
        for (int y = today.year(); y >= 1995; --y)
            year->addItem(QString::number(y));
        year->setCurrentIndex(0);
    }
    for (QComboBox* month : {cboStartMonth, cboEndMonth}) {
        for (int m = 1; m <= 12; ++m)
            month->addItem(locale.monthName(m, QLocale::LongFormat));
        month->setCurrentIndex(today.month() - 1);
    }
    for (QComboBox* day : {cboStartDay, cboEndDay})
        for (int d = 1; d <= 31; ++d)
            day->addItem(QStringLiteral("%1").arg(d, 2, 10, QLatin1Char('0')));
    // A dated report opens on the whole of the current month.
    cboStartDay->setCurrentIndex(0);
    cboEndDay->setCurrentIndex(cboEndDay->count() - 1);
    CheckPickedDate(cboStartDay, cboStartMonth, cboStartYear);
    CheckPickedDate(cboEndDay, cboEndMonth, cboEndYear);
}

void frmShowReport::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (mUnload) {
        mUnload = false;
        QTimer::singleShot(0, this, [this] { QDialog::reject(); });
    } else if (mLoadRunPending) {
        mLoadRunPending = false;
        QTimer::singleShot(0, this, &frmShowReport::ShowReport);
    }
}

// ---------------------------------------------------------------------------------------------
// Dates

void frmShowReport::CheckPickedDate(QComboBox* day, QComboBox* month, QComboBox* year) {
    const int settled = SettlePickedDay(year->currentText().toInt(), month->currentIndex() + 1,
                                        day->currentText().toInt());
    if (settled == 0) {
        MsgBox(QStringLiteral("Invalid date selected"), vbInformation);
        return;
    }
    gDateFixing = true;
    day->setCurrentIndex(day->findText(QStringLiteral("%1").arg(settled, 2, 10, QLatin1Char('0'))));
    gDateFixing = false;
}

QDate frmShowReport::PickedDate(const QComboBox* day, const QComboBox* month,
                                const QComboBox* year) const {
    return QDate(year->currentText().toInt(), month->currentIndex() + 1,
                 day->currentText().toInt());
}

QDate frmShowReport::StartDate() const {
    return PickedDate(cboStartDay, cboStartMonth, cboStartYear);
}

QDate frmShowReport::EndDate() const {
    return PickedDate(cboEndDay, cboEndMonth, cboEndYear);
}

// ---------------------------------------------------------------------------------------------
// Running a report

void frmShowReport::Command1_Click() {
    if (mRunning) {
        // A click during a run waits for the run to end.
        mRunAgain = true;
        return;
    }
    const QDate start = StartDate();
    const QDate end = EndDate();
    if (!start.isValid() || !end.isValid() || !(start < end)) {
        MsgBox(QStringLiteral("Start Date must be 'earlier' than End Date"), vbInformation);
        return;
    }
    ShowReport();
}

void frmShowReport::ShowReport() {
    mRunning = true;
    mRows.clear();
    mGroupKey.clear();
    gdxUBView->SetItemCount(0);
    gdxUBView->Columns().Clear();
    for (QLineEdit* t : {Text1, Text2, Text3, Text4, Text5})
        t->clear();
    frmWait->move((gdxUBView->width() - frmWait->width()) / 2,
                  (gdxUBView->height() - frmWait->height()) / 3);
    frmWait->show();
    frmWait->raise();
    ReportResult result;
    {
        WaitCursor hourglass;
        QCoreApplication::processEvents();
        ReportInput input;
        input.reportType = gReportType;
        if (mLayout.startDate)
            input.startDate = StartDate();
        if (mLayout.endDate)
            input.endDate = EndDate();
        input.events = [] { QCoreApplication::processEvents(); };
        // An engine error is not trapped here: it ends in the run-time error box.
        result = RunReport(input);
        if (result.ran)
            ShowResult(result);
    }
    frmWait->hide();
    mRunning = false;
    if (mCloseWhenDone) {
        mCloseWhenDone = false;
        mRunAgain = false;
        close();
    } else if (mRunAgain) {
        mRunAgain = false;
        Command1_Click();
    }
}

void frmShowReport::ShowResult(const ReportResult& result) {
    GridColumns& columns = gdxUBView->Columns();
    for (const ReportColumn& c : result.columns)
        columns.Add(c.key, c.caption)
            .SetWidth(c.widthTwips)
            .SetAlignment((c.rightAligned ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    mRows = result.rows;
    mGroupKey = result.groupKey;
    if (!mGroupKey.isEmpty()) {
        gdxUBView->AddGroup(mGroupKey);
        columns(mGroupKey).SetVisible(false);
        mGroupsCollapsed = false;
    }
    QCoreApplication::processEvents();
    gdxUBView->SetItemCount(int(mRows.size()));
    if (!mGroupKey.isEmpty())
        gdxUBView->ExpandAll();

    QLineEdit* lines[] = {Text1, Text2, Text3, Text4, Text5};
    for (int i = 0; i < 5; ++i)
        lines[i]->setText(result.summary.text[size_t(i)]);
    if (!result.summary.label2.isEmpty())
        Label2->setText(result.summary.label2);
}

void frmShowReport::Command11_Click() {
    mGroupsCollapsed = !mGroupsCollapsed;
    if (mGroupsCollapsed)
        gdxUBView->CollapseAll();
    else
        gdxUBView->ExpandAll();
}

// ---------------------------------------------------------------------------------------------
// Printing and export

void frmShowReport::buttons_ButtonClick(int index) {
    if (mRunning)
        return;
    switch (index) {
    case 3:
        ShowPrintPanel(this, [this](int choice) { PrintReport(choice); });
        break;
    case 5:
        ExportReport();
        break;
    default:
        MsgBox(QStringLiteral("An unknown button(index) was selected. Nothing was done"));
        break;
    }
}

void frmShowReport::WithGroupColumnShown(const std::function<void()>& action) {
    GridColumn* group = mGroupKey.isEmpty() ? nullptr : gdxUBView->Columns().Find(mGroupKey);
    // The grouping column is hidden on screen and shown for the listing or the file alone,
    // however the call ends.
    struct Shown {
        GridColumn* column;
        explicit Shown(GridColumn* c) : column(c) {
            if (column)
                column->SetVisible(true);
        }
        ~Shown() {
            if (column)
                column->SetVisible(false);
        }
        Shown(const Shown&) = delete;
        Shown& operator=(const Shown&) = delete;
    } shown(group);
    action();
}

void frmShowReport::PrintReport(int orientationChoice) {
    WithGroupColumnShown([&] { PrintGrid(*gdxUBView, orientationChoice); });
}

void frmShowReport::ExportReport() {
    WithGroupColumnShown([&] { ExportGridCsv(*gdxUBView); });
}

// ---------------------------------------------------------------------------------------------
// Closing

void frmShowReport::reject() {
    if (mRunning) {
        // The window closes once the report has been read.
        mCloseWhenDone = true;
        return;
    }
    QDialog::reject();
}

void frmShowReport::closeEvent(QCloseEvent* event) {
    if (mRunning) {
        mCloseWhenDone = true;
        event->ignore();
        return;
    }
    QDialog::closeEvent(event);
}
