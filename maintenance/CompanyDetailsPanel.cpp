#include "maintenance/CompanyDetailsPanel.h"

#include "foundation/Helpers.h"
#include "foundation/MsgBox.h"
#include "foundation/TextBoxRules.h"
#include "maintenance/CompanyDetails.h"

#include <QByteArrayList>
#include <QFileInfo>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QImageReader>
#include <QLabel>
#include <QLineEdit>
#include <QPixmap>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
QLineEdit* makeBox(QWidget* parent, const QString& name) {
    auto* box = new QLineEdit(parent);
    box->setObjectName(name);
    AttachTextRules(box);
    return box;
}

// A file is taken as a logo only when its content reads as one of the pictures the documents
// draw, whatever its name says.
bool LoadsAsPicture(const QString& file, QPixmap& picture) {
    QImageReader reader(file);
    reader.setDecideFormatFromContent(true);
    static const QByteArrayList accepted = {"jpeg", "jpg", "bmp", "gif", "png"};
    if (!accepted.contains(reader.format().toLower()))
        return false;
    const QImage image = reader.read();
    if (image.isNull())
        return false;
    picture = QPixmap::fromImage(image);
    return true;
}
} // namespace

CompanyDetailsPanel::CompanyDetailsPanel(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("CompanyDetailsPanel"));
    auto* lay = new QVBoxLayout(this);

    auto* grid = new QGridLayout;
    int row = 0;
    txtCoName = makeBox(this, QStringLiteral("txtCoName"));
    grid->addWidget(new QLabel(QStringLiteral("Company Name"), this), row, 0);
    grid->addWidget(txtCoName, row++, 1, 1, 2);
    for (int i = 0; i < 8; ++i) {
        QLineEdit* box = makeBox(this, QStringLiteral("txtCoAddress_%1").arg(i));
        txtCoAddress << box;
        QString caption;
        if (i == 0)
            caption = QStringLiteral("Address");
        else if (i == 6)
            caption = QStringLiteral("Telephone");
        else if (i == 7)
            caption = QStringLiteral("Fax");
        if (!caption.isEmpty())
            grid->addWidget(new QLabel(caption, this), row, 0);
        grid->addWidget(box, row++, 1, 1, 2);
    }
    txtLogoFile = makeBox(this, QStringLiteral("txtLogoFile"));
    Command3 = new QPushButton(QStringLiteral("Browse..."), this);
    Command3->setObjectName(QStringLiteral("Command3"));
    grid->addWidget(new QLabel(QStringLiteral("Logo File"), this), row, 0);
    grid->addWidget(txtLogoFile, row, 1);
    grid->addWidget(Command3, row++, 2);
    grid->setColumnStretch(1, 1);
    lay->addLayout(grid);

    picTestPic = new QLabel(this);
    picTestPic->setObjectName(QStringLiteral("picTestPic"));
    picTestPic->hide();

    pbHomeSave = new QProgressBar(this);
    pbHomeSave->setObjectName(QStringLiteral("pbHomeSave"));
    pbHomeSave->setRange(0, 100);
    pbHomeSave->setValue(0);
    // The bar keeps its room while hidden, so that the buttons do not move when it shows.
    QSizePolicy keep = pbHomeSave->sizePolicy();
    keep.setRetainSizeWhenHidden(true);
    pbHomeSave->setSizePolicy(keep);
    pbHomeSave->hide();
    lay->addWidget(pbHomeSave);
    lay->addStretch(1);

    auto* buttons = new QHBoxLayout;
    Command1 = new QPushButton(QStringLiteral("Help"), this);
    Command1->setObjectName(QStringLiteral("Command1"));
    cmdSaveCompanyDetails = new QPushButton(QStringLiteral("Click OK to save changes"), this);
    cmdSaveCompanyDetails->setObjectName(QStringLiteral("cmdSaveCompanyDetails"));
    buttons->addWidget(Command1);
    buttons->addStretch(1);
    buttons->addWidget(cmdSaveCompanyDetails);
    lay->addLayout(buttons);

    connect(cmdSaveCompanyDetails, &QPushButton::clicked, this,
            [this] { cmdSaveCompanyDetails_Click(); });
    connect(Command3, &QPushButton::clicked, this, [this] { Command3_Click(); });
    connect(Command1, &QPushButton::clicked, this, [this] { Command1_Click(); });

    ShowCompanyDetails();
}

void CompanyDetailsPanel::ShowCompanyDetails() {
    const CompanyDetails d = LoadCompanyDetails();
    txtCoName->setText(d.home.coName);
    for (int i = 0; i < txtCoAddress.size(); ++i)
        txtCoAddress[i]->setText(d.home.addressLines.value(i));
    txtLogoFile->setText(d.logoFile);
}

void CompanyDetailsPanel::cmdSaveCompanyDetails_Click() {
    CompanyDetails d;
    d.home.coName = txtCoName->text();
    for (QLineEdit* box : txtCoAddress)
        d.home.addressLines << box->text();
    d.logoFile = txtLogoFile->text();
    SaveCompanyDetails(d);

    pbHomeSave->setValue(0);
    pbHomeSave->show();
    for (int value : {50, 100}) {
        pbHomeSave->setValue(value);
        Pause(250);
    }
    pbHomeSave->hide();
}

void CompanyDetailsPanel::Command3_Click() {
    FileDialogRequest request;
    request.filter =
        QStringLiteral("Pictures (*.jpg;*.bmp;*.gif)|*.jpg;*.bmp;*.gif|Other(*.*)|*.*");
    if (!txtLogoFile->text().isEmpty())
        request.initialDir = QFileInfo(txtLogoFile->text()).absolutePath();
    const QString file = ChooseFile(request);
    if (file.isEmpty())
        return; // cancelled: the box keeps its path
    QPixmap picture;
    if (LoadsAsPicture(file, picture)) {
        picTestPic->setPixmap(picture);
        txtLogoFile->setText(file);
    } else {
        MsgBox(QStringLiteral("The selected file does not appear to be a valid image. You should "
                              "select a valid image/picture file such as BMP, JPG or GIF etc"),
               vbExclamation, QStringLiteral("Invalid Image"));
    }
}

void CompanyDetailsPanel::Command1_Click() {
    MsgBox(QStringLiteral("This is not an online registration, it's just the name and address "
                          "details that will appear on your printed documents such as Vendor "
                          "purchase Orders and Shipping documents") +
               QStringLiteral("\n\n") +
               QStringLiteral("The logo/Graphic is not required but if you want a graphic or "
                              "corporate logo to appear on vendor purchase orders, invoices etc. "
                              "then you can select that file here. The size of the image should "
                              "not be wider than, say, 300 pixels. The height can be anything you "
                              "wish but around 200 pixels or less would be recommended"),
           vbInformation);
}
