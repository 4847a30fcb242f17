// The two panels of document links: the item's "Links" tab (frmDetailLinks) and the business's
// common links (frmGlobalLinks, opened from the tool strip). Each shows the names, every entry
// with its small tick box, and keeps the addresses in a hidden list, row for row; every change
// rebuilds both lists.
#pragma once

#include <QFrame>
#include <QList>
#include <QPair>
#include <QStringList>

class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QVBoxLayout;

class LinksPanel : public QFrame {
    Q_OBJECT
public:
    // Reads the links of an item (0: the common list) into both lists; the owner stays for the
    // panel's later changes.
    void LoadLinks(qint32 linkStockId);
    qint32 LinkStockID() const { return mLinkStockID; }

    // The panel's controls at work.
    void AddClick();    // the add button: the typed address with a description
    void EditClick();   // the edit button: each ticked link in turn
    void RemoveClick(); // the remove button: each ticked link in turn
    void FilesDropped(const QStringList& paths);
    void OpenRow(int row); // a double click on a name

    // The ticked entries as (name, address), in list order.
    QList<QPair<QString, QString>> TickedLinks() const;

protected:
    struct ControlNames {
        const char* panel;
        const char* names;
        const char* addresses;
        const char* addBox;
        const char* add;
        const char* edit;
        const char* remove;
    };
    LinksPanel(const ControlNames& names, const QString& help, QWidget* parent);

    QVBoxLayout* mLayout;
    QListWidget* mNames;
    QListWidget* mAddresses; // never shown
    QLineEdit* mAddBox;
    QPushButton* mAdd;
    QPushButton* mEdit;
    QPushButton* mRemove;
    QLabel* mHelp;
    QLabel* mDropHint;

private:
    qint32 mLinkStockID = 0;
};

// The "Links" tab of the item detail.
class frmDetailLinks : public LinksPanel {
    Q_OBJECT
public:
    explicit frmDetailLinks(QWidget* parent = nullptr);

    QListWidget* lstLinkName;
    QListWidget* lstLinkAddress;
    QLineEdit* txtAddDetailLink;
    QPushButton* cmdAddDetailLink;
    QPushButton* cmdEditDetailLink;
    QPushButton* cmdRemoveDetailLink;
};

// The common links of the business, over the main window's content area.
class frmGlobalLinks : public LinksPanel {
    Q_OBJECT
public:
    explicit frmGlobalLinks(QWidget* parent = nullptr);

    // Reads the common list again.
    void LoadGlobalLinks() { LoadLinks(0); }

    QLabel* lblGlobalLinks; // the heading
    QListWidget* lstGlobalLinkNames;
    QListWidget* lstGlobalLinkAddresses;
    QLineEdit* txtAddGlobalLink;
    QPushButton* cmdAddGlobalLink;
    QPushButton* cmdEditGlobalLink;
    QPushButton* cmdRemoveGlobalLink;
    QPushButton* cmdGlobalLinksClose;

signals:
    void Closed(); // the panel has hidden itself
};
