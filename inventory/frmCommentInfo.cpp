#include "inventory/frmCommentInfo.h"

#include "inventory/InventoryList.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

frmCommentInfo::frmCommentInfo(QWidget* parent) : QFrame(parent) {
    setObjectName(QStringLiteral("frmCommentInfo"));
    setFrameShape(QFrame::Box);
    setAutoFillBackground(true);
    setStyleSheet(QStringLiteral("#frmCommentInfo { background: #fffde8; border: 1px solid #8a8460;"
                                 " border-radius: 4px; }"));
    auto* lay = new QVBoxLayout(this);
    lblCommentTitle = new QLabel(this);
    lblCommentTitle->setObjectName(QStringLiteral("lblCommentTitle"));
    QFont f = lblCommentTitle->font();
    f.setBold(true);
    lblCommentTitle->setFont(f);
    lay->addWidget(lblCommentTitle);
    txtCommentView = new QPlainTextEdit(this);
    txtCommentView->setObjectName(QStringLiteral("txtCommentView"));
    txtCommentView->setReadOnly(true);
    lay->addWidget(txtCommentView, 1);
    auto* bottom = new QHBoxLayout;
    lblCommentReadOnly =
        new QLabel(QStringLiteral("Read Only - To edit comments, click the 'Detail' tab"), this);
    lblCommentReadOnly->setObjectName(QStringLiteral("lblCommentReadOnly"));
    bottom->addWidget(lblCommentReadOnly, 1);
    cmdCommentInfoClose = new QPushButton(QStringLiteral("Close"), this);
    cmdCommentInfoClose->setObjectName(QStringLiteral("cmdCommentInfoClose"));
    bottom->addWidget(cmdCommentInfoClose);
    lay->addLayout(bottom);
    connect(cmdCommentInfoClose, &QPushButton::clicked, this, &QWidget::hide);
    resize(420, 240);
    hide();
}

void frmCommentInfo::ShowFor(qint32 itemID, const QString& partNo) {
    lblCommentTitle->setText(QStringLiteral("Comments: ") + partNo);
    txtCommentView->setPlainText(ItemCommentText(itemID));
    if (QWidget* host = parentWidget()) {
        const QSize s(qMin(420, host->width()), qMin(240, host->height()));
        setGeometry(
            QRect(QPoint((host->width() - s.width()) / 2, (host->height() - s.height()) / 2), s));
    }
    show();
    raise();
}
