#include "inventory/LinksPanel.h"

#include "foundation/TextBoxRules.h"
#include "inventory/Links.h"

#include <QDesktopServices>
#include <QDir>
#include <QDragEnterEvent>
#include <QDragMoveEvent>
#include <QDropEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMimeData>
#include <QPushButton>
#include <QVBoxLayout>

#include <functional>

namespace {

// The local files of a drop, as the system writes paths; a folder is a path like any other.
QStringList LocalFiles(const QMimeData* mime) {
    QStringList paths;
    if (!mime || !mime->hasUrls())
        return paths;
    for (const QUrl& url : mime->urls())
        if (url.isLocalFile())
            paths << QDir::toNativeSeparators(url.toLocalFile());
    return paths;
}

// The name list: accepts files dragged onto it and hands them on once the drop is over, so that
// the questions of the drop are not asked inside the drag.
class DropList : public QListWidget {
public:
    explicit DropList(QWidget* parent) : QListWidget(parent) {
        setAcceptDrops(true);
        setDragDropMode(QAbstractItemView::DropOnly);
        setDropIndicatorShown(false);
    }
    std::function<void(const QStringList&)> onDrop;

protected:
    void dragEnterEvent(QDragEnterEvent* e) override { acceptFiles(e); }
    void dragMoveEvent(QDragMoveEvent* e) override { acceptFiles(e); }
    void dropEvent(QDropEvent* e) override {
        const QStringList paths = LocalFiles(e->mimeData());
        if (paths.isEmpty()) {
            e->ignore();
            return;
        }
        e->acceptProposedAction();
        QMetaObject::invokeMethod(
            this,
            [this, paths] {
                if (onDrop)
                    onDrop(paths);
            },
            Qt::QueuedConnection);
    }

private:
    void acceptFiles(QDropEvent* e) {
        if (LocalFiles(e->mimeData()).isEmpty())
            e->ignore();
        else
            e->acceptProposedAction();
    }
};

QPushButton* button(const char* name, const QString& text, QWidget* parent) {
    auto* b = new QPushButton(text, parent);
    b->setObjectName(QLatin1String(name));
    return b;
}

} // namespace

LinksPanel::LinksPanel(const ControlNames& names, const QString& help, QWidget* parent)
    : QFrame(parent) {
    setObjectName(QLatin1String(names.panel));
    if (!HasLinkOpener())
        InstallLinkOpener([](const QUrl& url) { return QDesktopServices::openUrl(url); });

    mLayout = new QVBoxLayout(this);
    mHelp = new QLabel(help, this);
    mHelp->setObjectName(QLatin1String(names.panel) + QStringLiteral("Help"));
    mHelp->setWordWrap(true);
    mLayout->addWidget(mHelp);

    auto* listRow = new QHBoxLayout;
    auto* list = new DropList(this);
    list->onDrop = [this](const QStringList& paths) { FilesDropped(paths); };
    mNames = list;
    mNames->setObjectName(QLatin1String(names.names));
    mNames->setSelectionMode(QAbstractItemView::SingleSelection);
    listRow->addWidget(mNames, 1);
    mDropHint = new QLabel(LinksDropHint(), this);
    mDropHint->setObjectName(QLatin1String(names.panel) + QStringLiteral("DropHint"));
    mDropHint->setWordWrap(true);
    mDropHint->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    mDropHint->setFixedWidth(220);
    listRow->addWidget(mDropHint);
    mLayout->addLayout(listRow, 1);

    mAddresses = new QListWidget(this);
    mAddresses->setObjectName(QLatin1String(names.addresses));
    mAddresses->hide();

    auto* addRow = new QHBoxLayout;
    mAddBox = new QLineEdit(this);
    mAddBox->setObjectName(QLatin1String(names.addBox));
    mAddBox->setPlaceholderText(QStringLiteral("File, address or URL"));
    AttachTextRules(mAddBox);
    addRow->addWidget(mAddBox, 1);
    mAdd = button(names.add, QStringLiteral("Add"), this);
    addRow->addWidget(mAdd);
    addRow->addSpacing(mDropHint->width() - mAdd->sizeHint().width());
    mLayout->addLayout(addRow);

    auto* changeRow = new QHBoxLayout;
    mEdit = button(names.edit, QStringLiteral("Edit Description"), this);
    mRemove = button(names.remove, QStringLiteral("Remove"), this);
    mEdit->setToolTip(QStringLiteral("Edit the description of each ticked link"));
    mRemove->setToolTip(QStringLiteral("Remove each ticked link"));
    changeRow->addWidget(mEdit);
    changeRow->addWidget(mRemove);
    changeRow->addStretch(1);
    mLayout->addLayout(changeRow);

    connect(mAdd, &QPushButton::clicked, this, [this] { AddClick(); });
    connect(mAddBox, &QLineEdit::returnPressed, this, [this] { AddClick(); });
    connect(mEdit, &QPushButton::clicked, this, [this] { EditClick(); });
    connect(mRemove, &QPushButton::clicked, this, [this] { RemoveClick(); });
    connect(mNames, &QListWidget::itemDoubleClicked, this,
            [this](QListWidgetItem* item) { OpenRow(mNames->row(item)); });
}

void LinksPanel::LoadLinks(qint32 linkStockId) {
    mLinkStockID = linkStockId;
    const LinkList links = ::LoadLinks(linkStockId);
    mNames->clear();
    mAddresses->clear();
    for (qsizetype i = 0; i < links.names.size(); ++i) {
        auto* item = new QListWidgetItem(links.names[i]);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        item->setCheckState(Qt::Unchecked);
        item->setToolTip(links.addresses[i]);
        mNames->addItem(item);
        mAddresses->addItem(links.addresses[i]);
    }
}

QList<QPair<QString, QString>> LinksPanel::TickedLinks() const {
    QList<QPair<QString, QString>> ticked;
    for (int i = 0; i < mNames->count() && i < mAddresses->count(); ++i)
        if (mNames->item(i)->checkState() == Qt::Checked)
            ticked.append({mNames->item(i)->text(), mAddresses->item(i)->text()});
    return ticked;
}

void LinksPanel::AddClick() {
    if (!AddLink(mLinkStockID, mAddBox->text()))
        return;
    mAddBox->clear();
    LoadLinks(mLinkStockID);
}

void LinksPanel::EditClick() {
    for (const auto& [name, address] : TickedLinks()) {
        if (!EditLinkName(mLinkStockID, name, address))
            return;
        LoadLinks(mLinkStockID);
    }
}

void LinksPanel::RemoveClick() {
    for (const auto& [name, address] : TickedLinks()) {
        if (!RemoveLink(mLinkStockID, name, address))
            return;
        LoadLinks(mLinkStockID);
    }
}

void LinksPanel::FilesDropped(const QStringList& paths) {
    if (AddDroppedFiles(mLinkStockID, paths) > 0)
        LoadLinks(mLinkStockID);
}

void LinksPanel::OpenRow(int row) {
    if (row >= 0 && row < mAddresses->count())
        OpenLink(mAddresses->item(row)->text());
}

// ---------------------------------------------------------------------------------------------

frmDetailLinks::frmDetailLinks(QWidget* parent)
    : LinksPanel({"frmDetailLinks", "lstLinkName", "lstLinkAddress", "txtAddDetailLink",
                  "cmdAddDetailLink", "cmdEditDetailLink", "cmdRemoveDetailLink"},
                 DetailLinksHelpText(), parent) {
    lstLinkName = mNames;
    lstLinkAddress = mAddresses;
    txtAddDetailLink = mAddBox;
    cmdAddDetailLink = mAdd;
    cmdEditDetailLink = mEdit;
    cmdRemoveDetailLink = mRemove;
}

frmGlobalLinks::frmGlobalLinks(QWidget* parent)
    : LinksPanel({"frmGlobalLinks", "lstGlobalLinkNames", "lstGlobalLinkAddresses",
                  "txtAddGlobalLink", "cmdAddGlobalLink", "cmdEditGlobalLink",
                  "cmdRemoveGlobalLink"},
                 GlobalLinksHelpText(), parent) {
    lstGlobalLinkNames = mNames;
    lstGlobalLinkAddresses = mAddresses;
    txtAddGlobalLink = mAddBox;
    cmdAddGlobalLink = mAdd;
    cmdEditGlobalLink = mEdit;
    cmdRemoveGlobalLink = mRemove;

    lblGlobalLinks = new QLabel(QStringLiteral("Links, URLs and Shortcuts"), this);
    lblGlobalLinks->setObjectName(QStringLiteral("lblGlobalLinks"));
    QFont f = lblGlobalLinks->font();
    f.setBold(true);
    f.setPointSizeF(f.pointSizeF() * 1.2);
    lblGlobalLinks->setFont(f);
    mLayout->insertWidget(0, lblGlobalLinks);

    cmdGlobalLinksClose = new QPushButton(QStringLiteral("Close"), this);
    cmdGlobalLinksClose->setObjectName(QStringLiteral("cmdGlobalLinksClose"));
    // The last row holds the edit and remove buttons; Close goes to its right end.
    if (auto* row = qobject_cast<QHBoxLayout*>(mLayout->itemAt(mLayout->count() - 1)->layout()))
        row->addWidget(cmdGlobalLinksClose);
    connect(cmdGlobalLinksClose, &QPushButton::clicked, this, [this] {
        hide();
        emit Closed();
    });
}
