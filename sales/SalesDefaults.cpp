#include "sales/SalesDefaults.h"

#include "foundation/DbEngine.h"
#include "foundation/Dialect.h"
#include "foundation/Globals.h"
#include "foundation/Helpers.h"
#include "foundation/MsgBox.h"
#include "foundation/Rights.h"
#include "sales/CustOrder.h"

namespace {
enum class ParaRead { Row, NoRow, Failed };

// Hands the row of a parameter to `fill`. An engine error (no table, a locked file) is passed
// over and said in the result.
template <typename Fill> ParaRead readParameters(const QString& paraName, Fill fill) {
    try {
        Database db = DBEngine::OpenDatabase(gDbPath);
        Recordset rs = db.OpenRecordset(
            QStringLiteral("SELECT * FROM tblParameters WHERE ParaName=") + SqlText(paraName));
        if (rs.Eof())
            return ParaRead::NoRow;
        fill(rs);
        return ParaRead::Row;
    } catch (const DbError&) {
        return ParaRead::Failed;
    }
}

// Delete and insert: the row is replaced, each statement on its own.
void replaceParameters(const QString& paraName, const QStringList& fields) {
    Database db = DBEngine::OpenDatabase(gDbPath);
    db.Execute(QStringLiteral("DELETE FROM tblParameters WHERE ParaName=") + SqlText(paraName));
    QString values = SqlText(paraName);
    for (int i = 0; i < 10; ++i)
        values += QLatin1Char(',') + SqlText(fields.value(i));
    db.Execute(QStringLiteral("INSERT INTO tblParameters (ParaName, f1, f2, f3, f4, f5, f6, f7, "
                              "f8, f9, f10) VALUES (") +
               values + QLatin1Char(')'));
}
} // namespace

void LoadSalesDefaults(CustOrderSheet& sheet) {
    LoadShippingPars(sheet);
    LoadTaxRates(sheet);
    LoadInvTerms(sheet);
}

void LoadShippingPars(CustOrderSheet& sheet) {
    readParameters(QStringLiteral("ShippingPars"), [&sheet](const Recordset& rs) {
        sheet.shipChgsName = rs.Fields(QStringLiteral("f1")).Text();
        sheet.deliveryText = sheet.shipChgsName + QStringLiteral("  ");
        sheet.deliveryCost =
            Format(ParseLocaleNumber(rs.Fields(QStringLiteral("f2")).Text()), kMoneyMask);
        SetDelivery(sheet, sheet.deliveryCost);
        // The tick starts on: only "N" takes it off.
        if (rs.Fields(QStringLiteral("f3")).Text() == QLatin1String("N"))
            sheet.taxOnDel = false;
    });
}

void LoadTaxRates(CustOrderSheet& sheet) {
    const ParaRead read = readParameters(QStringLiteral("TaxRates"), [&](const Recordset& rs) {
        sheet.tax1Rate =
            Format(ParseLocaleNumber(rs.Fields(QStringLiteral("f1")).Text()), kQtyMask);
        sheet.text3 = sheet.tax1Rate + QStringLiteral("% ");
        const QString name = rs.Fields(QStringLiteral("f4")).Text();
        if (!name.trimmed().isEmpty()) {
            sheet.tax1Name = name;
            sheet.vatText = name + QStringLiteral("  ");
        }
    });
    // No row: no tax is charged until one is set. A failing query leaves the boxes alone.
    if (read == ParaRead::NoRow)
        sheet.tax1Rate = QStringLiteral("0");
}

void LoadInvTerms(CustOrderSheet& sheet) {
    Database db = DBEngine::OpenDatabase(gDbPath);
    Recordset rs = db.OpenRecordset(
        QStringLiteral("SELECT f1 FROM tblParameters WHERE ParaName = 'InvTerms'"));
    if (!rs.Eof())
        sheet.notes = rs.Fields(0).Text();
}

void SaveSalesTaxDefaults(CustOrderSheet& sheet) {
    sheet.vatText = sheet.tax1Name;
    sheet.text3 = sheet.tax1Rate + QStringLiteral("% ");
    RecalcTax(sheet);
    if (MsgBox(QStringLiteral("Save this tax name/description and rate (percentage) as your "
                              "Sales Tax default?"),
               vbYesNo | vbQuestion, QStringLiteral("Save")) != vbYes)
        return;
    replaceParameters(QStringLiteral("TaxRates"),
                      {sheet.tax1Rate, QString(), QString(), sheet.tax1Name});
}

bool SaveDeliveryDefaults(CustOrderSheet& sheet) {
    if (!CheckRight(Right::Sales))
        return false;
    if (MsgBox(QStringLiteral("Save these settings as your delivery/shipping defaults?"),
               vbYesNo | vbQuestion, QStringLiteral("Save")) != vbYes)
        return false;
    sheet.deliveryText = sheet.shipChgsName;
    SetDelivery(sheet, sheet.deliveryCost);
    replaceParameters(QStringLiteral("ShippingPars"),
                      {sheet.shipChgsName,
                       Format(ParseLocaleNumber(sheet.deliveryCost), kPriceMask),
                       sheet.taxOnDel ? QStringLiteral("Y") : QStringLiteral("N")});
    return true;
}

void SaveNotesDefault(const QString& notes) {
    if (MsgBox(
            QStringLiteral("Do you want to save the 'Notes' text as your order/invoice default ?"),
            vbYesNo, QString()) != vbYes)
        return;
    Database db = DBEngine::OpenDatabase(gDbPath);
    db.Execute(QStringLiteral("UPDATE tblParameters SET  f1 = ") + SqlText(notes) +
               QStringLiteral(" WHERE ParaName = 'InvTerms'"));
    if (db.RecordsAffected() == 0)
        db.Execute(QStringLiteral("INSERT INTO tblParameters (ParaName, f1) VALUES ('InvTerms',") +
                   SqlText(notes) + QLatin1Char(')'));
}
