// The "Home" tab of the utilities window: the firm's name and address as the printed documents
// show them, and the path of an optional logo picture.
#pragma once

#include <QList>
#include <QWidget>

class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;

class CompanyDetailsPanel : public QWidget {
    Q_OBJECT
public:
    // Fills the boxes from the stored details.
    explicit CompanyDetailsPanel(QWidget* parent = nullptr);

    void ShowCompanyDetails();
    void cmdSaveCompanyDetails_Click();
    void Command3_Click(); // browse for the logo
    void Command1_Click(); // help

    QLineEdit* txtCoName;
    QList<QLineEdit*> txtCoAddress; // txtCoAddress_0 .. _7: Add1..Add6, Tel1, Fax1
    QLineEdit* txtLogoFile;
    QPushButton* cmdSaveCompanyDetails;
    QPushButton* Command3;
    QPushButton* Command1;
    QLabel* picTestPic;       // hidden: a picked file is loaded here to test it
    QProgressBar* pbHomeSave; // shown for a moment after a save
};
