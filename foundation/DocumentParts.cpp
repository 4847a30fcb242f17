#include "foundation/DocumentParts.h"

#include "foundation/MsgBox.h"
#include "foundation/Settings.h"
#include "foundation/Startup.h"

PrinterOffer OfferPrinters(const QString& wanted) {
    PrinterOffer offer;
    const PrinterList& printers = Printers();
    for (const std::shared_ptr<Printer>& p : printers)
        offer.names << p->DeviceName();
    if (offer.names.isEmpty())
        return offer;
    if (!wanted.isEmpty())
        offer.selected = int(offer.names.indexOf(wanted));
    if (offer.selected < 0)
        offer.selected = int(offer.names.indexOf(CurrentPrinter().DeviceName()));
    if (offer.selected < 0)
        offer.selected = 0;
    return offer;
}

void ShowNoPrinterMessage() {
    MsgBox(QStringLiteral("The system doesn't seem to have any available printer. Print options "
                          "will be disabled until a printer is installed"),
           vbInformation);
}

QStringList DocumentCompanyBlock() {
    const HomeDetails home = LoadHomeDetails();
    QStringList lines{home.coName};
    for (int i = 0; i < 6; ++i)
        lines << home.addressLines.value(i);
    lines << QStringLiteral("Tel: ") + home.addressLines.value(6) + QStringLiteral(" Fax: ") +
                 home.addressLines.value(7);
    return lines;
}

void PrintAt(Printer& printer, double x, const QString& text) {
    printer.SetCurrentX(x);
    printer.PrintSameLine(text);
}

void PrintLineAt(Printer& printer, double x, const QString& text) {
    printer.SetCurrentX(x);
    printer.Print(text);
}

Picture LoadSharedLogo() {
    const QString path = ReadSharedLogoPath();
    if (path.isEmpty())
        return Picture{};
    return LoadPicture(path);
}
