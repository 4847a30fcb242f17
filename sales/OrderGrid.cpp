#include "sales/OrderGrid.h"

#include "foundation/TextBoxRules.h"
#include "sales/CustOrder.h"

#include <QEvent>
#include <QFocusEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScrollBar>
#include <QTableWidget>
#include <QWheelEvent>

namespace {
const QColor kYellow(0xFF, 0xFF, 0xC0); // the back colour of an editable cell
constexpr int kYellowRole = Qt::UserRole + 1;

void makeFlat(QTableWidget* t) {
    QFont f = t->font();
    f.setPointSizeF(7.5);
    t->setFont(f);
    // The columns keep their widths: a figure too long for its cell shows "..." rather than
    // losing its first digits.
    t->setTextElideMode(Qt::ElideRight);
    t->setStyleSheet(QStringLiteral("QTableWidget::item { padding: 0px 1px; }"));
    t->horizontalHeader()->hide();
    t->verticalHeader()->hide();
    t->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    t->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    t->setEditTriggers(QAbstractItemView::NoEditTriggers);
    t->setFrameShape(QFrame::NoFrame);
    t->setWordWrap(false);
    t->verticalHeader()->setMinimumSectionSize(1);
    t->horizontalHeader()->setMinimumSectionSize(0);
    t->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
}

bool rightAligned(int column) {
    return column >= OrderCol::Price && column <= OrderCol::Total;
}
} // namespace

OrderGrid::OrderGrid(CustOrderSheet& sheet, QWidget* parent) : QFrame(parent), mSheet(sheet) {
    setObjectName(QStringLiteral("frmOrderRows"));
    setFrameShape(QFrame::StyledPanel);
    setMinimumHeight(Px(kFrameTwips));
    setMaximumHeight(Px(kFrameTwips));

    fgSOrder = new QTableWidget(0, OrderCol::Count, this);
    fgSOrder->setObjectName(QStringLiteral("fgSOrder"));
    makeFlat(fgSOrder);
    QStringList captions;
    for (int c = 0; c < OrderCol::Count; ++c)
        captions << OrderColumnCaption(c);
    fgSOrder->setHorizontalHeaderLabels(captions);
    fgSOrder->setSelectionMode(QAbstractItemView::SingleSelection);
    fgSOrder->setSelectionBehavior(QAbstractItemView::SelectItems);
    fgSOrder->verticalHeader()->setDefaultSectionSize(Px(kRowTwips));
    fgSOrder->viewport()->installEventFilter(this);
    connect(fgSOrder, &QTableWidget::cellClicked, this,
            [this](int row, int column) { fgSOrder_Click(row, column); });

    fgHeader = new QTableWidget(1, OrderCol::HeaderCount, this);
    fgHeader->setObjectName(QStringLiteral("fgHeader"));
    makeFlat(fgHeader);
    fgHeader->setSelectionMode(QAbstractItemView::NoSelection);
    fgHeader->setTextElideMode(Qt::ElideNone);
    fgHeader->setFocusPolicy(Qt::NoFocus);
    fgHeader->verticalHeader()->setDefaultSectionSize(Px(kHeaderTwips));
    for (int c = 0; c < OrderCol::HeaderCount; ++c) {
        auto* item = new QTableWidgetItem(OrderColumnCaption(c));
        item->setBackground(palette().button());
        item->setTextAlignment(Qt::AlignVCenter |
                               (rightAligned(c) ? Qt::AlignRight : Qt::AlignLeft));
        fgHeader->setItem(0, c, item);
    }

    fgedit = new QLineEdit(this);
    fgedit->setObjectName(QStringLiteral("fgedit"));
    fgedit->setFrame(false);
    fgedit->setFont(fgSOrder->font());
    fgedit->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    fgedit->setStyleSheet(QStringLiteral("QLineEdit { background: #ffffc0; border: 1px solid "
                                         "#7f7f7f; }"));
    fgedit->hide();
    AttachKeyRule(fgedit, [this](const QString& text, int keyCode) {
        return OrderCellKey(fgSOrder->currentColumn(), text, keyCode);
    });
    fgedit->installEventFilter(this);
    connect(fgedit, &QLineEdit::textChanged, this,
            [this](const QString& text) { fgedit_Change(text); });

    vs1 = new QScrollBar(Qt::Vertical, this);
    vs1->setObjectName(QStringLiteral("vs1"));
    vs1->setRange(0, 0);
    vs1->setPageStep(1);
    connect(vs1, &QScrollBar::valueChanged, this, [this](int value) { vs1_Change(value); });
}

int OrderGrid::Px(int twips) const {
    return qRound(twips * logicalDpiY() / 1440.0);
}

int OrderGrid::Twips(int px) const {
    return qRound(px * 1440.0 / logicalDpiY());
}

void OrderGrid::ShowRows() {
    mShowing = true;
    for (int c = 0; c < OrderCol::Count; ++c) {
        const int w = Px(mSheet.colWidth[size_t(c)]);
        fgSOrder->setColumnHidden(c, w == 0);
        if (w > 0)
            fgSOrder->setColumnWidth(c, w);
        if (c < OrderCol::HeaderCount) {
            fgHeader->setColumnHidden(c, w == 0);
            if (w > 0)
                fgHeader->setColumnWidth(c, w);
        }
    }
    const int n = int(mSheet.rows.size());
    if (fgSOrder->rowCount() != n)
        fgSOrder->setRowCount(n);
    for (int r = 0; r < n; ++r) {
        const OrderRow& row = mSheet.rows[r];
        for (int c = 0; c < OrderCol::Count; ++c) {
            QTableWidgetItem* item = fgSOrder->item(r, c);
            if (!item) {
                item = new QTableWidgetItem;
                item->setTextAlignment(Qt::AlignVCenter |
                                       (rightAligned(c) ? Qt::AlignRight : Qt::AlignLeft));
                item->setData(kYellowRole, false);
                fgSOrder->setItem(r, c, item);
            }
            if (item->text() != row[c])
                item->setText(row[c]);
            const bool yellow = row.IsEditable(c);
            if (item->data(kYellowRole).toBool() != yellow) {
                item->setData(kYellowRole, yellow);
                item->setBackground(yellow ? QBrush(kYellow) : QBrush());
            }
        }
    }
    vs1->setMaximum(n);
    PlaceGrid();
    mShowing = false;
}

void OrderGrid::PlaceGrid() {
    const int bar = vs1->sizeHint().width();
    const int inner = contentsRect().width() - bar;
    const QPoint origin = contentsRect().topLeft();
    const int rowPx = Px(kRowTwips);
    const int n = fgSOrder->rowCount();
    const int top = n > 0 ? qBound(0, vs1->value(), n - 1) : 0;
    fgHeader->setGeometry(origin.x(), origin.y(), inner, Px(kHeaderTwips));
    // The grid is as tall as its rows; vs1 moves it so that its row `top` comes under the
    // captions.
    fgSOrder->setGeometry(origin.x(), origin.y() + Px(kHeaderTwips) - top * rowPx, inner,
                          n * rowPx);
    vs1->setGeometry(origin.x() + inner, origin.y(), bar, contentsRect().height());
    fgHeader->raise();
    if (fgedit->isVisible())
        fgedit->raise();
}

void OrderGrid::resizeEvent(QResizeEvent* event) {
    QFrame::resizeEvent(event);
    PlaceGrid();
}

void OrderGrid::fgSOrder_Click(int row, int column) {
    if (mSheet.rows.isEmpty())
        return;
    fgedit->hide();
    if (row >= 0 && row < mSheet.rows.size() && mSheet.rows[row].IsEditable(column)) {
        fgedit->show();
        PlaceCellEditor();
    }
}

void OrderGrid::PlaceCellEditor() {
    const int row = fgSOrder->currentRow();
    const int column = fgSOrder->currentColumn();
    if (!IsEditorColumn(column) || row < 0 || row >= mSheet.rows.size()) {
        fgedit->hide();
        return;
    }
    mSheet.recalcEnabled = false;
    fgedit->show();
    fgedit->setGeometry(fgSOrder->x() + fgSOrder->columnViewportPosition(column),
                        fgSOrder->y() + fgSOrder->rowViewportPosition(row),
                        fgSOrder->columnWidth(column), fgSOrder->rowHeight(row));
    fgedit->raise();
    mSheet.editRow = row;
    mSheet.editCol = column;
    // The copy counts as a change: the cell takes fgedit's rule ("2.0" reads "2"), but the
    // totals wait, since recalculation is off.
    fgedit->setText(mSheet.rows[row][column]);
    fgedit->setFocus(Qt::OtherFocusReason);
    SelectEditText();
    mSheet.recalcEnabled = true;
}

void OrderGrid::SelectEditText() {
    fgedit->end(false);
    fgedit->home(true);
}

void OrderGrid::fgedit_Change(const QString& text) {
    if (mSheet.editRow < 0)
        return;
    EditCell(mSheet, text);
    emit SheetEdited();
}

void OrderGrid::fgedit_KeyDown(int key) {
    const int row = fgSOrder->currentRow();
    const int topTwips = Twips(fgedit->y());
    if (key == Qt::Key_Up) {
        if (row <= 0 || topTwips < kEditTopMinTwips)
            return;
        fgSOrder->setCurrentCell(row - 1, fgSOrder->currentColumn());
    } else {
        if (row >= fgSOrder->rowCount() - 1 || topTwips > kEditTopMaxTwips)
            return;
        fgSOrder->setCurrentCell(row + 1, fgSOrder->currentColumn());
    }
    PlaceCellEditor();
    SelectEditText();
}

void OrderGrid::vs1_Change(int) {
    const int row = fgSOrder->currentRow();
    const int column = fgSOrder->currentColumn();
    // fgedit stays where it was: it would lie over another row once the grid moves.
    fgedit->hide();
    PlaceGrid();
    if (row >= 0)
        fgSOrder->setCurrentCell(row, column);
}

bool OrderGrid::eventFilter(QObject* watched, QEvent* event) {
    if (watched == fgedit) {
        switch (event->type()) {
        case QEvent::KeyPress: {
            const int key = static_cast<QKeyEvent*>(event)->key();
            if (key == Qt::Key_Up || key == Qt::Key_Down) {
                fgedit_KeyDown(key);
                return true;
            }
            break;
        }
        case QEvent::FocusIn:
            SelectEditText();
            break;
        case QEvent::FocusOut: {
            const Qt::FocusReason why = static_cast<QFocusEvent*>(event)->reason();
            if (why == Qt::ActiveWindowFocusReason || why == Qt::PopupFocusReason)
                break;
            fgedit->hide();
            if (fgedit->text().contains(QLatin1Char('\''))) {
                QString plain = fgedit->text();
                plain.remove(QLatin1Char('\''));
                fgedit->setText(plain);
            }
            break;
        }
        default:
            break;
        }
    } else if (watched == fgSOrder->viewport() && event->type() == QEvent::Wheel) {
        const int steps = static_cast<QWheelEvent*>(event)->angleDelta().y() / 120;
        if (steps != 0)
            vs1->setValue(vs1->value() - steps);
        return true;
    }
    return QFrame::eventFilter(watched, event);
}
