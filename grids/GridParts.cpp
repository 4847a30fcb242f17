#include "grids/GridParts.h"

#include "foundation/Clock.h"
#include "foundation/Helpers.h"
#include "grids/GridModel.h"

#include <QApplication>
#include <QDateEdit>
#include <QDrag>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPainter>
#include <QToolButton>

namespace {

int EditorColumn(const QObject* editor) {
    return editor->property("gridColumn").toInt();
}

} // namespace

// ---------------------------------------------------------------------------------------------
// GridDelegate

GridDelegate::GridDelegate(GridEX* grid, QObject* parent)
    : QStyledItemDelegate(parent), mGrid(grid) {}

QWidget* GridDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&,
                                    const QModelIndex& index) const {
    const GridColumn& col = mGrid->Columns()(index.column() + 1);
    QWidget* editor;
    if (col.Kind() == GridColumnKind::Date) {
        auto* date = new QDateEdit(parent);
        date->setCalendarPopup(true);
        date->setDisplayFormat(DateDisplayFormat());
        editor = date;
    } else {
        auto* line = new QLineEdit(parent);
        line->setFrame(false);
        editor = line;
    }
    editor->setProperty("gridColumn", index.column() + 1);
    return editor;
}

void GridDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
    const QVariant value = index.data(Qt::EditRole);
    if (auto* date = qobject_cast<QDateEdit*>(editor)) {
        QDate d = value.typeId() == QMetaType::QDate ? value.toDate()
                                                     : ParseDateText(value.toString().trimmed());
        date->setDate(d.isValid() ? d : Today());
    } else if (auto* line = qobject_cast<QLineEdit*>(editor)) {
        line->setText(index.data(Qt::DisplayRole).toString());
    }
}

void GridDelegate::setModelData(QWidget* editor, QAbstractItemModel* model,
                                const QModelIndex& index) const {
    if (auto* date = qobject_cast<QDateEdit*>(editor))
        model->setData(index, ShowDate(date->date()), Qt::EditRole);
    else if (auto* line = qobject_cast<QLineEdit*>(editor))
        model->setData(index, line->text(), Qt::EditRole);
}

bool GridDelegate::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        auto* key = static_cast<QKeyEvent*>(event);
        const int k = key->key();
        const bool passes = k == Qt::Key_Tab || k == Qt::Key_Backtab || k == Qt::Key_Return ||
                            k == Qt::Key_Enter || k == Qt::Key_Escape;
        if (qobject_cast<QDateEdit*>(watched)) {
            // A date comes only from the calendar: typing and stepping are dropped.
            if (!passes && k != Qt::Key_F4 &&
                !(k == Qt::Key_Down && key->modifiers() & Qt::AltModifier))
                return true;
        } else if (auto* line = qobject_cast<QLineEdit*>(watched); line && !passes) {
            const int column = EditorColumn(watched);
            if (column >= 1 && column <= mGrid->Columns().Count()) {
                const GridKeyFilter& filter = mGrid->Columns()(column).KeyFilter();
                int code = 0;
                if (k == Qt::Key_Backspace)
                    code = 8;
                else if (!key->text().isEmpty() && key->text().at(0).isPrint())
                    code = key->text().at(0).unicode();
                if (filter && code) {
                    const int accepted = filter(line->text(), code);
                    if (accepted == 0)
                        return true;
                    if (accepted != code) {
                        if (accepted == 8)
                            line->backspace();
                        else
                            line->insert(QString(QChar(accepted)));
                        return true;
                    }
                }
            }
        }
    }
    return QStyledItemDelegate::eventFilter(watched, event);
}

void GridDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
    const int level = index.data(GridModel::GroupLevelRole).toInt();
    if (level <= 0) {
        QStyledItemDelegate::paint(painter, option, index);
        return;
    }
    QStyleOptionViewItem opt(option);
    initStyleOption(&opt, index);
    const bool selected = option.state & QStyle::State_Selected;
    painter->save();
    painter->fillRect(option.rect, selected ? option.palette.highlight() : opt.backgroundBrush);
    const int indent = (level - 1) * 16 + 4;
    QStyleOption arrow;
    arrow.rect = QRect(option.rect.left() + indent, option.rect.top(), 12, option.rect.height());
    arrow.palette = option.palette;
    arrow.state = QStyle::State_Enabled;
    const bool open = index.data(GridModel::GroupExpandedRole).toBool();
    const QWidget* w = option.widget;
    QStyle* style = w ? w->style() : QApplication::style();
    style->drawPrimitive(open ? QStyle::PE_IndicatorArrowDown : QStyle::PE_IndicatorArrowRight,
                         &arrow, painter, w);
    painter->setFont(opt.font);
    painter->setPen(selected ? option.palette.highlightedText().color()
                             : option.palette.text().color());
    const QRect textRect = option.rect.adjusted(indent + 16, 0, -2, 0);
    painter->drawText(
        textRect, Qt::AlignVCenter | Qt::AlignLeft,
        QFontMetrics(opt.font).elidedText(opt.text, Qt::ElideRight, textRect.width()));
    painter->restore();
}

// ---------------------------------------------------------------------------------------------
// GridCardDelegate

GridCardDelegate::GridCardDelegate(GridEX* grid, QObject* parent)
    : QStyledItemDelegate(parent), mGrid(grid) {}

QStringList GridCardDelegate::CardLines(const GridEX* grid, int row) {
    QStringList lines;
    const GridColumns& cols = grid->Columns();
    const QAbstractItemModel* model = grid->Model();
    if (grid->GroupRowLevel(row) > 0) {
        const int first = static_cast<const GridModel*>(model)->FirstVisibleColumn();
        lines << grid->CellValue(row, first + 1).toString();
        return lines;
    }
    for (int c = 1; c <= cols.Count(); ++c) {
        const GridColumn& col = cols(c);
        if (!col.Visible())
            continue;
        const QModelIndex idx = model->index(row - 1, c - 1);
        QString text;
        if (col.Kind() == GridColumnKind::CheckBox)
            text = idx.data(Qt::CheckStateRole).toInt() == Qt::Checked ? QStringLiteral("True")
                                                                       : QStringLiteral("False");
        else
            text = idx.data(Qt::DisplayRole).toString();
        lines << col.Caption() + QStringLiteral(": ") + text;
    }
    return lines;
}

void GridCardDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                             const QModelIndex& index) const {
    const QStringList lines = CardLines(mGrid, index.row() + 1);
    const bool selected = option.state & QStyle::State_Selected;
    painter->save();
    const QRect card = option.rect.adjusted(2, 2, -2, -2);
    painter->fillRect(card, selected ? option.palette.highlight() : option.palette.base());
    painter->setPen(option.palette.mid().color());
    painter->drawRect(card.adjusted(0, 0, -1, -1));
    painter->setPen(selected ? option.palette.highlightedText().color()
                             : option.palette.text().color());
    const QFontMetrics fm(option.font);
    int y = card.top() + 4;
    for (int i = 0; i < lines.size(); ++i) {
        QFont f = option.font;
        f.setBold(i == 0);
        painter->setFont(f);
        const QRect line(card.left() + 6, y, card.width() - 12, fm.height());
        painter->drawText(line, Qt::AlignLeft | Qt::AlignVCenter,
                          fm.elidedText(lines[i], Qt::ElideRight, line.width()));
        y += fm.height();
    }
    painter->restore();
}

QSize GridCardDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const {
    int visible = 0;
    for (int c = 1; c <= mGrid->Columns().Count(); ++c)
        if (mGrid->Columns()(c).Visible())
            ++visible;
    const QFontMetrics fm(option.font);
    return QSize(260, std::max(visible, 1) * fm.height() + 12);
}

// ---------------------------------------------------------------------------------------------
// GridGroupByBox

GridGroupByBox::GridGroupByBox(GridEX* grid) : QFrame(grid), mGrid(grid) {
    setObjectName(grid->objectName() + QStringLiteral("GroupBy"));
    setFrameShape(QFrame::StyledPanel);
    setAcceptDrops(true);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(4, 2, 4, 2);
    mButtons = new QHBoxLayout;
    layout->addLayout(mButtons);
    mLabel = new QLabel(this);
    layout->addWidget(mLabel, 1);
}

void GridGroupByBox::Show(const QString& text, const QList<GridSortKey>& groups) {
    while (QLayoutItem* item = mButtons->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    for (const GridSortKey& g : groups) {
        const GridColumn* col = mGrid->Columns().Find(g.Key);
        auto* button = new QToolButton(this);
        button->setText((col ? col->Caption() : g.Key) + QStringLiteral(" \u00d7"));
        button->setAutoRaise(true);
        const QString key = g.Key;
        connect(button, &QToolButton::clicked, mGrid,
                [grid = mGrid, key] { grid->RemoveGroup(key); });
        mButtons->addWidget(button);
    }
    mLabel->setText(text);
}

void GridGroupByBox::dragEnterEvent(QDragEnterEvent* event) {
    if (event->mimeData()->hasFormat(QString::fromLatin1(kGridColumnMime)))
        event->acceptProposedAction();
}

void GridGroupByBox::dropEvent(QDropEvent* event) {
    const QByteArray key = event->mimeData()->data(QString::fromLatin1(kGridColumnMime));
    if (key.isEmpty())
        return;
    event->acceptProposedAction();
    mGrid->AddGroup(QString::fromUtf8(key));
}

void GridGroupByBox::mouseReleaseEvent(QMouseEvent* event) {
    QFrame::mouseReleaseEvent(event);
    if (mGrid->Groups().isEmpty())
        return;
    mOpen = !mOpen;
    if (mOpen)
        mGrid->ExpandAll();
    else
        mGrid->CollapseAll();
}

// ---------------------------------------------------------------------------------------------

void GridEX::StartColumnDrag(QWidget* source, const QString& key) {
    auto* drag = new QDrag(source);
    auto* mime = new QMimeData;
    mime->setData(QString::fromLatin1(kGridColumnMime), key.toUtf8());
    drag->setMimeData(mime);
    drag->exec(Qt::MoveAction | Qt::CopyAction);
}
