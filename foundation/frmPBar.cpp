#include "foundation/frmPBar.h"

#include "foundation/Helpers.h"

#include <QCoreApplication>
#include <QLabel>
#include <QProgressBar>
#include <QVBoxLayout>

frmPBar::frmPBar(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmPBar"));
    setWindowTitle(QStringLiteral("Processing - please wait"));
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    auto* lay = new QVBoxLayout(this);
    Label1 = new QLabel(QStringLiteral("Processing - please wait"), this);
    Label1->setObjectName(QStringLiteral("Label1"));
    ProgressBar1 = new QProgressBar(this);
    ProgressBar1->setObjectName(QStringLiteral("ProgressBar1"));
    ProgressBar1->setRange(1, 2000);
    ProgressBar1->setTextVisible(false);
    lay->addWidget(Label1);
    lay->addWidget(ProgressBar1);
    resize(360, 90);
}

int frmPBar::exec() {
    setModal(true);
    show();
    const int max = ProgressBar1->maximum();
    for (int i = ProgressBar1->minimum(); i <= max; i += 20) {
        ProgressBar1->setValue(i);
        if (i >= max - 500 && i < max - 480)
            Pause(100); // a short hold before the end
        QCoreApplication::processEvents();
    }
    ProgressBar1->setValue(max);
    Label1->setText(QStringLiteral("Done"));
    QCoreApplication::processEvents();
    Pause(500);
    hide();
    return QDialog::Accepted;
}
