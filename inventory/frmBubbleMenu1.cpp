#include "inventory/frmBubbleMenu1.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

frmBubbleMenu1::frmBubbleMenu1(QWidget* parent) : QFrame(parent) {
    setObjectName(QStringLiteral("frmBubbleMenu1"));
    setFrameShape(QFrame::Box);
    setAutoFillBackground(true);
    setStyleSheet(QStringLiteral("#frmBubbleMenu1 { background: #fffde8; border: 1px solid #8a8460;"
                                 " border-radius: 4px; }"
                                 "#frmBubbleMenu1 QLabel { padding: 3px 6px; }"
                                 "#frmBubbleMenu1 QLabel:hover { background: #dfe8f6; }"));
    auto* lay = new QVBoxLayout(this);
    lay->setContentsMargins(4, 4, 4, 4);
    lay->setSpacing(0);
    auto* top = new QHBoxLayout;
    top->addStretch(1);
    cmdBubbleMenu1Close = new QPushButton(this);
    cmdBubbleMenu1Close->setObjectName(QStringLiteral("cmdBubbleMenu1Close"));
    cmdBubbleMenu1Close->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
    cmdBubbleMenu1Close->setFlat(true);
    cmdBubbleMenu1Close->setFixedSize(18, 18);
    cmdBubbleMenu1Close->setToolTip(QStringLiteral("Close"));
    top->addWidget(cmdBubbleMenu1Close);
    lay->addLayout(top);

    const QStringList captions = {
        QStringLiteral("View/Edit Item Detail"),
        QStringLiteral("View/Edit Assembly's Parts List"),
        QStringLiteral("View any Pending Order Information"),
        QStringLiteral("View Comments"),
        QStringLiteral("Inventory +/--  (adjustments)"),
    };
    lblBubbleMenu1.resize(captions.size() + 1);
    for (int i = 1; i <= captions.size(); ++i) {
        auto* l = new QLabel(captions[i - 1], this);
        l->setObjectName(QStringLiteral("lblBubbleMenu1_%1").arg(i));
        l->setCursor(Qt::PointingHandCursor);
        l->installEventFilter(this);
        lay->addWidget(l);
        lblBubbleMenu1[i] = l;
    }
    connect(cmdBubbleMenu1Close, &QPushButton::clicked, this, &QWidget::hide);
    hide();
}

void frmBubbleMenu1::ShowAt(const QPoint& at) {
    adjustSize();
    QWidget* host = parentWidget();
    QPoint p = at + QPoint(4, 4);
    if (host) {
        p.setX(qBound(0, p.x(), qMax(0, host->width() - width())));
        p.setY(qBound(0, p.y(), qMax(0, host->height() - height())));
    }
    move(p);
    show();
    raise();
}

bool frmBubbleMenu1::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonRelease &&
        static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) {
        const int index = lblBubbleMenu1.indexOf(qobject_cast<QLabel*>(watched));
        if (index > 0) {
            hide();
            emit Chosen(index);
            return true;
        }
    }
    return QFrame::eventFilter(watched, event);
}
