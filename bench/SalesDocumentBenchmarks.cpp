// The sales documents: a 50-row invoice laid out on the recording printer and written through
// "Save as PDF". The only statement the document runs is the read of the shared logo setting; the
// plain side is that statement on the settings file.
#include "bench/Benchmarks.h"

#include "foundation/Globals.h"
#include "foundation/MsgBox.h"
#include "foundation/Printer.h"
#include "foundation/PrinterQt.h"
#include "sales/SalesDocuments.h"

#include <QDir>
#include <memory>

namespace {

// Answers one copy, and the PDF writer's file name with a file in the temporary folder.
class OneCopy : public BoxBackend {
public:
    int msgBox(const QString&, int, const QString&) override { return vbOK; }
    std::optional<QString> inputBox(const QString&, const QString&, const QString&) override {
        return QStringLiteral("1");
    }
    QString fileDialog(const FileDialogRequest&) override {
        return QDir::temp().filePath(QStringLiteral("qstk3-bench-invoice.pdf"));
    }
};

// Installs OneCopy for one call.
class OneCopyScope {
public:
    OneCopyScope() : mPrevious(CurrentBoxBackend()) { InstallBoxBackend(&mBoxes); }
    ~OneCopyScope() { InstallBoxBackend(mPrevious); }
    OneCopyScope(const OneCopyScope&) = delete;
    OneCopyScope& operator=(const OneCopyScope&) = delete;

private:
    OneCopy mBoxes;
    BoxBackend* mPrevious;
};

// An invoice of 50 rows as the window holds it while invoicing.
std::shared_ptr<const CustOrderSheet> BenchInvoice() {
    auto s = std::make_shared<CustOrderSheet>();
    s->mode = OrderMode::InvoiceOrder;
    s->custName = QStringLiteral("Bench Customer Ltd");
    s->custAdd1 = QStringLiteral("1 High Street");
    s->custAdd2 = QStringLiteral("Lower Town");
    s->custPO = QStringLiteral("AB1 2CD");
    s->custBasketID = QStringLiteral("0012");
    s->custOrNo = QStringLiteral("PO-7781");
    s->invoiceNo = QStringLiteral("0031");
    s->invoiceDate = QStringLiteral("01/05/2026");
    s->custShipID = QStringLiteral("0012-002");
    for (int i = 1; i <= 50; ++i) {
        OrderRow r;
        r[OrderCol::PartNo] = QStringLiteral("RES-%1K-0805").arg(i);
        r[OrderCol::Desc] = QStringLiteral("Resistor %1k 0.125W 1% thick film").arg(i);
        r[OrderCol::SellAt] = QStringLiteral("1.125");
        r[OrderCol::OrderQty] = QString::number(i % 5 + 2);
        r[OrderCol::InvoiceQty] = QString::number(i % 5 + 1);
        r[OrderCol::Total] = QStringLiteral("%1").arg(1.125 * (i % 5 + 1));
        r[OrderCol::Location] = QStringLiteral("Shelf %1").arg(i % 9);
        s->rows << r;
    }
    s->notes = QStringLiteral("Payment due within 30 days.\nThank you for your order");
    return s;
}

const QStringList kCompany{"Bench Parts Ltd", "Unit 4",  "Mill Lane",     "Northtown",
                           "Westshire",       "NT1 1AA", "United Kingdom"};

} // namespace

static void AddSalesDocumentBenchmarks(BenchRegistry& registry, const BenchContext&) {
    const auto sheet = BenchInvoice();
    const auto logoSetting = [] {
        static const QStringList sql{
            QStringLiteral("SELECT * FROM tblDefaults WHERE PcName='GLOBAL_ALL_PC' AND "
                           "AppName='") +
            AppName() + QStringLiteral("' AND ParaName='Image_1'")};
        RunBareStatements(gUserCfgPath, sql);
    };

    registry.addPlain(
        QStringLiteral("sales.document.invoice.50rows"),
        [sheet] {
            auto printer = UseRecordingPrinter();
            const OneCopyScope boxes;
            Consume(PrintSalesDocument(QStringLiteral("Invoice"), *sheet, {kCompany, QString()})
                        .copies +
                    printer->Calls().size());
        },
        logoSetting);

    registry.addPlain(
        QStringLiteral("sales.document.invoice.50rows.pdf"),
        [sheet] {
            // Made at the first run, once the application exists.
            static const std::shared_ptr<QtPrinter> pdf = QtPrinter::PdfWriter();
            SetPrinters({pdf});
            SetCurrentPrinter(pdf);
            const OneCopyScope boxes;
            Consume(
                PrintSalesDocument(QStringLiteral("Invoice"), *sheet, {kCompany, SaveAsPdfName()})
                    .copies);
        },
        logoSetting, true);
}

static const BenchSet salesDocumentSet("salesdocuments", AddSalesDocumentBenchmarks);
