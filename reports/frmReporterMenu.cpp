#include "reports/frmReporterMenu.h"

#include "foundation/Globals.h"
#include "foundation/MsgBox.h"
#include "reports/Reports.h"
#include "reports/frmShowReport.h"

#include <QFrame>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

struct MenuEntry {
    int type;
    const char* caption;
};
struct MenuFrame {
    int group;
    const char* name;
    const char* caption;
    QList<MenuEntry> entries;
};

const QList<MenuFrame>& MenuFrames() {
    static const QList<MenuFrame> frames = {
        {1,
         "fraUnused",
         "Identify Unused or Obsolete inventory",
         {{4, "Parts not used in given period"}}},
        {1,
         "fraOnHand",
         "OnHand Inventory",
         {{11, "Complete Inventory - Valuation (By PartNo)"},
          {12, "Complete Inventory - Valuation (By Category)"},
          {13, "Values per Category (Summary)"}}},
        {2,
         "fraSupplier",
         "Supplier Performance",
         {{6, "Current Orders/Deliveries past due"},
          {7, "All Late Deliveries in given period"},
          {8, "Supplier Performance Summary"}}},
        {4, "fraSpending", "Spending", {{5, "Orders/Reciepts in given period"}}},
    };
    return frames;
}

} // namespace

frmReporterMenu::frmReporterMenu(int group, QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmReporterMenu"));
    setWindowTitle(QStringLiteral("Reports"));
    auto* layout = new QVBoxLayout(this);

    bool known = false;
    for (const MenuFrame& f : MenuFrames()) {
        if (f.group != group)
            continue;
        known = true;
        auto* frame = new QGroupBox(QString::fromLatin1(f.caption), this);
        frame->setObjectName(QLatin1String(f.name));
        auto* entries = new QVBoxLayout(frame);
        for (const MenuEntry& e : f.entries) {
            auto* b = new QPushButton(QString::fromLatin1(e.caption), frame);
            b->setObjectName(QStringLiteral("cmdRep_%1").arg(e.type));
            b->setAutoDefault(false);
            entries->addWidget(b);
            cmdRep.insert(e.type, b);
            const int type = e.type;
            connect(b, &QPushButton::clicked, this, [this, type] { cmdRep_Click(type); });
        }
        layout->addWidget(frame);
    }

    frmWait = new QFrame(this);
    frmWait->setObjectName(QStringLiteral("frmWait"));
    frmWait->setFrameShape(QFrame::StyledPanel);
    auto* waitLayout = new QVBoxLayout(frmWait);
    lblWait = new QLabel(frmWait);
    lblWait->setObjectName(QStringLiteral("lblWait"));
    lblWait->setAlignment(Qt::AlignCenter);
    lblWait->setWordWrap(true);
    waitLayout->addWidget(lblWait);
    layout->addWidget(frmWait);
    layout->addStretch();
    setMinimumWidth(360);

    if (known) {
        lblWait->setText(QStringLiteral("Report running, please wait ...."));
        frmWait->hide();
    } else {
        lblWait->setText(QStringLiteral("No reports are available for this unknown option"));
        MsgBox(QStringLiteral("Unknown button/option was selected."));
    }
}

void frmReporterMenu::cmdRep_Click(int reportType) {
    if (gReportBusy)
        return;
    gReportBusy = true;
    gReportType = reportType;
    frmWait->show();
    {
        frmShowReport report(this);
        report.exec();
    }
    frmWait->hide();
    gReportBusy = false;
}
