// The contact entry window: creates a customer, vendor or miscellaneous address, or shows and
// changes one. Opened modally with gContactType and gContactID set by the caller.
#pragma once

#include <QDialog>

class QComboBox;
class QFrame;
class QLabel;
class QLineEdit;
class QPushButton;
class QWidget;
struct ContactEntry;

class frmEditContact : public QDialog {
    Q_OBJECT
public:
    explicit frmEditContact(QWidget* parent = nullptr);
    ~frmEditContact() override;

    // Opens the window modally for gContactType and gContactID; the dialog's result.
    static int ShowModal(QWidget* parent = nullptr);

    void Form_Load();
    void LoadContact();
    void Combo1_Click();
    void Command1_Click();
    void Command2_Click();
    void hlpDiscount_Click();

    QComboBox* Combo1 = nullptr;
    QFrame* Frame2 = nullptr; // covers the address fields until a type is chosen
    QLineEdit* txtCoName = nullptr;
    QLineEdit* txtAdd1 = nullptr;
    QLineEdit* txtAdd2 = nullptr;
    QLineEdit* txtAdd3 = nullptr;
    QLineEdit* txtAdd4 = nullptr;
    QLineEdit* txtPCode = nullptr;
    QLineEdit* txtContact1 = nullptr;
    QLineEdit* txtTel1 = nullptr;
    QLineEdit* txtFax1 = nullptr;
    QLineEdit* txtEMail = nullptr;
    QLineEdit* txtShortNm = nullptr;
    QLineEdit* txtDiscount = nullptr;
    QLabel* lblDiscount = nullptr;
    QPushButton* hlpDiscount = nullptr;
    QPushButton* Command1 = nullptr; // Save
    QPushButton* Command2 = nullptr; // help on the code

public slots:
    void done(int result) override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void PlaceFrame2();
    ContactEntry Gather() const;
    void ShowEntry(const ContactEntry& entry);

    QWidget* mFields = nullptr; // the address fields that Frame2 covers
};

// The "New" key of the Addresses group: the contacts guard, then a new contact of a type the
// user picks. True when the window was opened.
bool OpenNewContactEntry(QWidget* parent = nullptr);
