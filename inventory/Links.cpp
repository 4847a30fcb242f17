#include "inventory/Links.h"

#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "foundation/Helpers.h"
#include "foundation/MsgBox.h"
#include "foundation/Rights.h"

#include <algorithm>

namespace {

LinkOpener& Opener() {
    static LinkOpener opener;
    return opener;
}

QString InsertStatement(qint32 linkStockId) {
    return QStringLiteral("INSERT INTO tblHyperLinks ") +
           QStringLiteral(" ( LinkStockID, LinkAddress, LinkName)") + QStringLiteral(" VALUES ") +
           QStringLiteral(" (") + QString::number(linkStockId) + QStringLiteral(",?,?);");
}

// Address and name go in as the text rules leave them: apostrophes become back-quotes.
void InsertLink(Database& db, qint32 linkStockId, const QString& address, const QString& name) {
    db.Execute(InsertStatement(linkStockId), {ApostropheOut(address), ApostropheOut(name)});
}

} // namespace

QString LinksStatement(qint32 linkStockId) {
    if (linkStockId == 0)
        return QStringLiteral(
            "SELECT * FROM tblHyperLinks WHERE LinkStockID = 0 ORDER BY LinkName");
    return QStringLiteral("SELECT * FROM tblHyperLinks WHERE LinkStockID = ") +
           QString::number(linkStockId);
}

LinkList LoadLinks(qint32 linkStockId) {
    LinkList list;
    Database db = DBEngine::OpenDatabase(gDbPath);
    Recordset rs = db.OpenRecordset(LinksStatement(linkStockId));
    for (; !rs.Eof(); rs.MoveNext()) {
        list.names << rs.Fields(QStringLiteral("LinkName")).Text();
        list.addresses << rs.Fields(QStringLiteral("LinkAddress")).Text();
    }
    return list;
}

bool AddLink(qint32 linkStockId, const QString& address) {
    if (!CheckRight(Right::Links))
        return false;
    if (address.trimmed().isEmpty()) {
        MsgBox(QStringLiteral("Type or paste the file, address or URL into the box first, then "
                              "click Add."),
               vbInformation, QStringLiteral("File/Address/URL"));
        return false;
    }
    const QString name = InputBox(
        QStringLiteral("The file or address is shown below. If you want you can replace it with "
                       "a more meaningfull description before accepting it"),
        QStringLiteral("File/Address/URL"), address);
    if (name.isEmpty())
        return false;
    Database db = DBEngine::OpenDatabase(gDbPath);
    InsertLink(db, linkStockId, address, name);
    return true;
}

QString LinkNameOfPath(const QString& path) {
    const qsizetype cut =
        std::max({path.lastIndexOf(QLatin1Char('/')), path.lastIndexOf(QLatin1Char('\\')),
                  path.lastIndexOf(QLatin1Char(':'))});
    return cut < 0 ? path : path.mid(cut + 1);
}

int AddDroppedFiles(qint32 linkStockId, const QStringList& paths) {
    if (paths.isEmpty() || !CheckRight(Right::Links))
        return 0;
    if (paths.size() > 1 &&
        MsgBox(QStringLiteral("You drag/dropped more than one file. Do you wish to continue?"),
               vbYesNo | vbQuestion, QStringLiteral("More than one file")) != vbYes)
        return 0;
    Database db = DBEngine::OpenDatabase(gDbPath);
    int written = 0;
    for (const QString& path : paths) {
        const QString address = ApostropheOut(path);
        // A path that ends in a separator (a folder) would leave no name: it keeps its path.
        QString name = LinkNameOfPath(address);
        if (name.isEmpty())
            name = address;
        InsertLink(db, linkStockId, address, name);
        ++written;
    }
    return written;
}

bool EditLinkName(qint32 linkStockId, const QString& name, const QString& address) {
    if (!CheckRight(Right::Links))
        return false;
    QString newName = InputBox(
        QStringLiteral("This process doesn't change the actual link/target/address. It just "
                       "allows you to edit or create a more meaningful description"),
        QStringLiteral("Edit Link Description"), name);
    if (newName.isEmpty()) {
        MsgBox(QStringLiteral("All links require a description. If no description is given then "
                              "the actual link/address will be displayed"),
               vbOKOnly, QStringLiteral("Link Description"));
        newName = address;
    }
    Database db = DBEngine::OpenDatabase(gDbPath);
    db.Execute(QStringLiteral("UPDATE tblHyperLinks SET LinkName=?") +
                   QStringLiteral(" WHERE LinkStockID=") + QString::number(linkStockId) +
                   QStringLiteral(" AND LinkAddress=?") + QStringLiteral(" AND LinkName=?"),
               {ApostropheOut(newName), address, name});
    return true;
}

bool RemoveLink(qint32 linkStockId, const QString& name, const QString& address) {
    if (!CheckRight(Right::Links))
        return false;
    Database db = DBEngine::OpenDatabase(gDbPath);
    db.Execute(QStringLiteral("DELETE FROM tblHyperlinks WHERE LinkStockID=") +
                   QString::number(linkStockId) +
                   QStringLiteral(" AND LinkAddress =? AND LinkName =?"),
               {address, name});
    return true;
}

void OpenLink(const QString& address) {
    if (Opener())
        Opener()(QUrl::fromUserInput(address));
}

LinkOpener InstallLinkOpener(LinkOpener opener) {
    LinkOpener previous = std::move(Opener());
    Opener() = std::move(opener);
    return previous;
}

bool HasLinkOpener() {
    return bool(Opener());
}

namespace {
const char* const kHelpStart = "Use this area to create links to other documents.";
const char* const kHelpEnd = "You can can edit or remove links by clicking inside the small "
                             "checkbox to the left of each link";
const char* const kHelpHow =
    "Type or paste a file path, a web address or a URL into the box under the list and click "
    "[Add], or drag files from your file manager onto the list. Double click a link to open it "
    "with the program your computer uses for that kind of document. The documents are not copied "
    "or changed: only the place where they are is remembered.";
} // namespace

QString DetailLinksHelpText() {
    return QLatin1String(kHelpStart) +
           QStringLiteral(" The links on this tab belong to the item on show: data sheets, "
                          "drawings, pictures, the maker's web page. ") +
           QLatin1String(kHelpHow) + QStringLiteral("\n\n") + QLatin1String(kHelpEnd);
}

QString GlobalLinksHelpText() {
    return QLatin1String(kHelpStart) +
           QStringLiteral(" These links belong to the business as a whole, whatever item is on "
                          "show: price lists, terms, catalogues, the web sites you use often. ") +
           QLatin1String(kHelpHow) + QStringLiteral("\n\n") + QLatin1String(kHelpEnd);
}

QString LinksDropHint() {
    return QStringLiteral("<< Drag/Drop documents, images, datasheets etc. into this list area to "
                          "create links to 'local' documents on your computer or network");
}
