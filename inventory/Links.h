// Document links: files, folders and addresses remembered against an item (its "Links" tab) or
// against the business as a whole (the common list, LinkStockID 0). The documents themselves are
// never copied or changed; the desktop opens them.
//
// A link row has no key: a link is found again by its owner, address and name together, so two
// equal links change and go together. Every change stands alone (no transaction) and the caller
// reloads its lists after each one. Adding, editing, removing and dropping need the links right.
#pragma once

#include <QString>
#include <QStringList>
#include <QUrl>

#include <functional>

// The two lists of a panel, row for row: the names shown and the hidden addresses.
struct LinkList {
    QStringList names;
    QStringList addresses;
};

// The statement of a list: the common list (id 0) ordered by name, an item's links in the order
// they were stored.
QString LinksStatement(qint32 linkStockId);
LinkList LoadLinks(qint32 linkStockId);

// The add button: asks for a description of the typed address (the box starts at the address)
// and inserts the link. An empty reply adds nothing. False when nothing was written.
bool AddLink(qint32 linkStockId, const QString& address);

// Files dropped on a list, as local paths: several files are added only when the user agrees;
// each is named by what follows the last "/", "\" or ":" of its path. Returns the rows written;
// an engine error part way keeps the rows written before it.
int AddDroppedFiles(qint32 linkStockId, const QStringList& paths);
// The name a dropped file gets: the text after the last "/", "\" or ":", or the whole path.
QString LinkNameOfPath(const QString& path);

// The edit button, for one ticked link: asks for a new description; an empty reply (or a
// cancelled box) is told that the address will stand for the name. False only when refused for
// want of the right, which ends the round of ticked links.
bool EditLinkName(qint32 linkStockId, const QString& name, const QString& address);
// The remove button, for one ticked link. False only when refused for want of the right.
bool RemoveLink(qint32 linkStockId, const QString& name, const QString& address);

// Opening a link (a double click): the address goes to the installed opener as a URL made from
// user input. A failure shows nothing; nothing happens while no opener is installed.
using LinkOpener = std::function<bool(const QUrl&)>;
void OpenLink(const QString& address);
// Installs the opener (the window layer installs the desktop's); returns the one it replaces.
LinkOpener InstallLinkOpener(LinkOpener opener);
bool HasLinkOpener();

// The fixed texts of the panels.
QString DetailLinksHelpText();
QString GlobalLinksHelpText();
QString LinksDropHint();
