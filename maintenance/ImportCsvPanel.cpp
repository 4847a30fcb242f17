#include "maintenance/ImportCsvPanel.h"

#include "foundation/MsgBox.h"
#include "maintenance/FlexCells.h"
#include "maintenance/FlexGrid.h"
#include "maintenance/ImportCsv.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QGridLayout>
#include <QGroupBox>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
QLabel* helpLabel(const QString& name, QWidget* parent) {
    auto* label = new QLabel(QStringLiteral("<a href=\"help\">?</a>"), parent);
    label->setObjectName(name);
    label->setToolTip(QStringLiteral("Help"));
    label->setTextInteractionFlags(Qt::LinksAccessibleByMouse);
    label->setCursor(Qt::PointingHandCursor);
    return label;
}
} // namespace

ImportCsvPanel::ImportCsvPanel(QWidget* parent) : QFrame(parent) {
    setObjectName(QStringLiteral("ImportCsvPanel"));

    auto* fileLabel = new QLabel(QStringLiteral("CSV file"), this);
    txtSourceName = new QLineEdit(this);
    txtSourceName->setObjectName(QStringLiteral("txtSourceName"));
    txtSourceName->setReadOnly(true);
    fileLabel->setBuddy(txtSourceName);
    cmdBrowse = new QPushButton(QStringLiteral("Browse"), this);
    cmdBrowse->setObjectName(QStringLiteral("cmdBrowse"));
    auto* fileRow = new QHBoxLayout;
    fileRow->addWidget(fileLabel);
    fileRow->addWidget(txtSourceName, 1);
    fileRow->addWidget(cmdBrowse);

    fg1 = new FlexGrid(QStringLiteral("fg1"), this);
    Label15 = new QLabel(this);
    Label15->setObjectName(QStringLiteral("Label15"));
    Label15->setWordWrap(true);
    Label15->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    Label15->setFixedWidth(200);
    auto* gridRow = new QHBoxLayout;
    gridRow->addWidget(fg1, 1);
    gridRow->addWidget(Label15);

    Frame5 = new QGroupBox(QStringLiteral("Columns to import"), this);
    Frame5->setObjectName(QStringLiteral("Frame5"));
    auto* boxes = new QGridLayout;
    const auto combo = [this, boxes](const QString& name, const QString& caption, int row,
                                     int col) {
        auto* box = new QComboBox(Frame5);
        box->setObjectName(name);
        box->setMinimumContentsLength(8);
        box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        auto* label = new QLabel(caption, Frame5);
        label->setBuddy(box);
        boxes->addWidget(label, row, col * 2);
        boxes->addWidget(box, row, col * 2 + 1);
        return box;
    };
    Combo1 = combo(QStringLiteral("Combo1"), QStringLiteral("Part No."), 0, 0);
    Combo2 = combo(QStringLiteral("Combo2"), QStringLiteral("Description"), 0, 1);
    Combo3 = combo(QStringLiteral("Combo3"), QStringLiteral("Quantity"), 0, 2);
    Combo4 = combo(QStringLiteral("Combo4"), QStringLiteral("Location"), 0, 3);
    Combo9 = combo(QStringLiteral("Combo9"), QStringLiteral("Buy Price"), 1, 0);
    Combo10 = combo(QStringLiteral("Combo10"), QStringLiteral("Category"), 1, 1);
    Combo11 = combo(QStringLiteral("Combo11"), QStringLiteral("Sell Price"), 1, 2);
    Combo12 = combo(QStringLiteral("Combo12"), QStringLiteral("Detail"), 1, 3);
    for (int c = 1; c < 8; c += 2)
        boxes->setColumnStretch(c, 1);

    Check1 = new QCheckBox(QStringLiteral("Don't import top row (eg column Headers)"), Frame5);
    Check1->setObjectName(QStringLiteral("Check1"));
    Check2 = new QCheckBox(
        QStringLiteral("If already exists then overwrite (Description, Category, Location, Cost)"),
        Frame5);
    Check2->setObjectName(QStringLiteral("Check2"));
    Label17 = helpLabel(QStringLiteral("Label17"), Frame5);
    Label18 = helpLabel(QStringLiteral("Label18"), Frame5);
    Command6 = new QPushButton(QStringLiteral("Import"), Frame5);
    Command6->setObjectName(QStringLiteral("Command6"));
    // Each option with its help label right after it.
    auto* options = new QVBoxLayout;
    for (const auto& [check, help] : {std::pair{Check1, Label18}, std::pair{Check2, Label17}}) {
        auto* line = new QHBoxLayout;
        line->addWidget(check);
        line->addWidget(help);
        line->addStretch(1);
        options->addLayout(line);
    }
    auto* checks = new QHBoxLayout;
    checks->addLayout(options, 1);
    checks->addWidget(Command6, 0, Qt::AlignRight | Qt::AlignVCenter);
    auto* frameLay = new QVBoxLayout(Frame5);
    frameLay->addLayout(boxes);
    frameLay->addLayout(checks);
    Frame5->setVisible(false);

    pb2 = new QProgressBar(this);
    pb2->setObjectName(QStringLiteral("pb2"));
    pb2->setVisible(false);
    Command8 = new QPushButton(QStringLiteral("Close"), this);
    Command8->setObjectName(QStringLiteral("Command8"));
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(pb2, 1);
    bottom->addStretch();
    bottom->addWidget(Command8);

    auto* lay = new QVBoxLayout(this);
    lay->setContentsMargins(0, 0, 0, 0);
    lay->addLayout(fileRow);
    lay->addLayout(gridRow, 1);
    lay->addWidget(Frame5);
    lay->addLayout(bottom);

    connect(cmdBrowse, &QPushButton::clicked, this, [this] { cmdBrowse_Click(); });
    connect(Command6, &QPushButton::clicked, this, [this] { Command6_Click(); });
    connect(Command8, &QPushButton::clicked, this, [this] { Command8_Click(); });
    connect(Label17, &QLabel::linkActivated, this, [this] { Label17_Click(); });
    connect(Label18, &QLabel::linkActivated, this, [this] { Label18_Click(); });
}

void ImportCsvPanel::cmdBrowse_Click() {
    FileDialogRequest request;
    request.title = QStringLiteral("Open");
    request.filter = QStringLiteral("CSV files (*.csv)|*.csv|All files (*.*)|*.*");
    const QString fileName = ChooseFile(request);
    if (fileName.trimmed().isEmpty())
        return;
    txtSourceName->setText(fileName);
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    const bool read = ReadCsv(fileName, fg1->Cells());
    QGuiApplication::restoreOverrideCursor();
    if (!read) {
        MsgBox(QStringLiteral("The file could not be opened: ") + fileName, vbExclamation);
        return;
    }
    fillCombos();
    Label15->setText(ImportCsvGridReadyText());
    Frame5->setVisible(true);
}

void ImportCsvPanel::fillCombos() {
    const int cols = fg1->Cols();
    const struct {
        QComboBox* box;
        int ignoreBlanks;
    } boxes[] = {{Combo1, 0}, {Combo2, 0},  {Combo3, 4},  {Combo4, 4},
                 {Combo9, 5}, {Combo10, 5}, {Combo11, 5}, {Combo12, 5}};
    for (const auto& b : boxes) {
        b.box->clear();
        b.box->addItems(ImportComboEntries(cols, b.ignoreBlanks));
        b.box->setCurrentIndex(-1); // no choice until the user makes one
    }
}

ImportColumnChoice ImportCsvPanel::choiceOf(const QComboBox* box) {
    return ImportColumnChoice{box->currentIndex(), box->currentText()};
}

void ImportCsvPanel::setRunning(bool running) {
    cmdBrowse->setEnabled(!running);
    Frame5->setEnabled(!running);
    Command8->setEnabled(!running);
}

void ImportCsvPanel::Command6_Click() {
    ImportCsvInput in;
    in.Combo1 = choiceOf(Combo1);
    in.Combo2 = choiceOf(Combo2);
    in.Combo3 = choiceOf(Combo3);
    in.Combo4 = choiceOf(Combo4);
    in.Combo9 = choiceOf(Combo9);
    in.Combo10 = choiceOf(Combo10);
    in.Combo11 = choiceOf(Combo11);
    in.Combo12 = choiceOf(Combo12);
    in.Check1 = Check1->isChecked();
    in.Check2 = Check2->isChecked();
    ImportCsvProgress progress;
    progress.start = [this](int maximum) {
        pb2->setRange(0, maximum);
        pb2->setValue(0);
        pb2->setVisible(true);
        setRunning(true);
    };
    progress.step = [this](int row) {
        pb2->setValue(row);
        QCoreApplication::processEvents();
    };
    progress.finish = [this] {
        pb2->setVisible(false);
        setRunning(false);
    };
    ImportCsv(in, fg1->Cells(), progress);
}

void ImportCsvPanel::Command8_Click() {
    FlexCells& cells = fg1->Cells();
    cells.Clear();
    cells.SetRows(2);
    cells.SetCols(2);
    emit Closed();
}

void ImportCsvPanel::Label17_Click() {
    MsgBox(ImportCsvOverwriteHelp());
}

void ImportCsvPanel::Label18_Click() {
    MsgBox(ImportCsvTopRowHelp());
}
