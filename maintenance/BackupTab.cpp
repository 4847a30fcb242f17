#include "maintenance/BackupTab.h"

#include "maintenance/FileLists.h"
#include "maintenance/Maintenance.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

BackupTab::BackupTab(QFrame* frame, const QString& name, const QString& labelName,
                     const QString& barName, int barMinimum, int barMaximum)
    : QWidget(frame) {
    setObjectName(name);
    auto* frameLay = new QVBoxLayout(frame);
    frameLay->setContentsMargins(0, 0, 0, 0);
    frameLay->addWidget(this);
    mLabel = new QLabel(this);
    mLabel->setObjectName(labelName);
    mBar = new QProgressBar(this);
    mBar->setObjectName(barName);
    mBar->setRange(barMinimum, barMaximum);
    mBar->setValue(barMinimum);
}

BackupTab::~BackupTab() = default;

QLineEdit* BackupTab::MakePicker(QWidget* parent, int index, const QString& caption,
                                 const QString& captionName, const QString& boxName) {
    auto* box = new QLineEdit(parent);
    box->setObjectName(boxName);
    auto* label = new QLabel(caption, parent);
    label->setObjectName(captionName);
    mPicker = std::make_unique<BackupPicker>(parent, index, label, box);
    mPicker->SetEnabled(false);
    return box;
}

QPushButton* BackupTab::AddButton(const QString& text, const QString& name) {
    auto* button = new QPushButton(text, this);
    button->setObjectName(name);
    button->setAutoDefault(false);
    mButtons << button;
    return button;
}

void BackupTab::LayOut(QLayout* body) {
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(mBar, 1);
    for (QPushButton* b : mButtons)
        bottom->addWidget(b);
    auto* lay = new QVBoxLayout(this);
    lay->addLayout(body, 1);
    lay->addWidget(mLabel);
    lay->addLayout(bottom);
}

RunDisplay BackupTab::Display() const {
    QLabel* label = mLabel;
    QProgressBar* bar = mBar;
    return {[label](const QString& text) { label->setText(text); },
            [bar](int minimum, int maximum) { bar->setRange(minimum, maximum); },
            [bar](int value) { bar->setValue(value); },
            {}};
}
