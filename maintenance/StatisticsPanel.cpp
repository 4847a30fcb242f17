#include "maintenance/StatisticsPanel.h"

#include "foundation/Globals.h"
#include "foundation/Helpers.h"
#include "foundation/MsgBox.h"
#include "maintenance/DatabaseStatistics.h"

#include <QCalendarWidget>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
QLineEdit* makeFigure(QWidget* parent, const QString& name, const QString& text) {
    auto* box = new QLineEdit(text, parent);
    box->setObjectName(name);
    box->setReadOnly(true);
    box->setMaximumWidth(180);
    return box;
}
} // namespace

StatisticsPanel::StatisticsPanel(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("StatisticsPanel"));
    auto* lay = new QVBoxLayout(this);

    auto* figures = new QGridLayout;
    txtSizeOfDB = makeFigure(this, QStringLiteral("txtSizeOfDB"), QStringLiteral("< 1MByte"));
    txtNumRecords = makeFigure(this, QStringLiteral("txtNumRecords"), QString());
    figures->addWidget(new QLabel(QStringLiteral("Size of database"), this), 0, 0);
    figures->addWidget(txtSizeOfDB, 0, 1);
    figures->addWidget(new QLabel(QStringLiteral("Total Records"), this), 1, 0);
    figures->addWidget(txtNumRecords, 1, 1);
    figures->setColumnStretch(2, 1);
    lay->addLayout(figures);

    auto* purge = new QGroupBox(this);
    auto* pl = new QGridLayout(purge);
    cal1 = new QCalendarWidget(purge);
    cal1->setObjectName(QStringLiteral("cal1"));
    cal1->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    txtPurgeDate = makeFigure(purge, QStringLiteral("txtPurgeDate"), QString());
    Command2 = new QPushButton(QStringLiteral("Purge"), purge);
    Command2->setObjectName(QStringLiteral("Command2"));
    auto* note = new QLabel(QStringLiteral("Purge history prior to selected date."), purge);
    ProgressBar1 = new QProgressBar(purge);
    ProgressBar1->setObjectName(QStringLiteral("ProgressBar1"));
    ProgressBar1->setRange(0, 100);
    ProgressBar1->setValue(0);
    pl->addWidget(cal1, 0, 0, 4, 1);
    pl->addWidget(note, 0, 1);
    pl->addWidget(txtPurgeDate, 1, 1);
    pl->addWidget(Command2, 2, 1, Qt::AlignLeft | Qt::AlignTop);
    pl->addWidget(ProgressBar1, 4, 0, 1, 2);
    pl->setColumnStretch(1, 1);
    lay->addWidget(purge);
    lay->addStretch(1);

    connect(cal1, &QCalendarWidget::selectionChanged, this, [this] { cal1_SelectionChanged(); });
    connect(Command2, &QPushButton::clicked, this, [this] { Command2_Click(); });

    txtSizeOfDB->setText(DatabaseSizeText(gDbPath));
}

void StatisticsPanel::TabSelected() {
    cal1->setSelectedDate(QDate(2005, 1, 1));
    cal1_SelectionChanged();
    txtNumRecords->setText(QString::number(CountHistoryRecords()));
}

void StatisticsPanel::cal1_SelectionChanged() {
    txtPurgeDate->setText(ShowDate(cal1->selectedDate()));
}

void StatisticsPanel::Command2_Click() {
    MsgBox(PurgeHistoryMessage(), vbInformation);
}
