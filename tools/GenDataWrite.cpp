// Writing the generated model: every table through the engine, many rows per statement.
#include "foundation/DbEngine.h"
#include "foundation/Dialect.h"
#include "tools/GenDataModel.h"

#include <QVariantList>

namespace gendata {
namespace {

// ---------------------------------------------------------------- multi-row inserts
// Rows go through Database::Execute as bound values, many rows per statement.
class BulkInsert {
public:
    BulkInsert(Database& db, const QString& table, const QStringList& columns)
        : mDb(db), mWidth(int(columns.size())) {
        mHead = QStringLiteral("INSERT INTO ") + table + QStringLiteral(" (") +
                columns.join(QStringLiteral(", ")) + QStringLiteral(") VALUES ");
        mRowsPerStatement = std::clamp(6000 / mWidth, 1, 50);
        QString marks = QStringLiteral("(");
        for (int i = 0; i < mWidth; ++i)
            marks += i ? QStringLiteral(",?") : QStringLiteral("?");
        marks += QLatin1Char(')');
        mRowMarks = marks;
        mFullSql = statementFor(mRowsPerStatement);
        mValues.reserve(mRowsPerStatement * mWidth);
    }

    void add(std::initializer_list<QVariant> row) {
        Q_ASSERT(int(row.size()) == mWidth);
        for (const QVariant& v : row)
            mValues.append(v);
        ++mRows;
        ++mTotal;
        if (mRows == mRowsPerStatement)
            flush();
    }
    // Writes what is pending; call once the last row has been added.
    void finish() { flush(); }
    qint64 total() const { return mTotal; }

private:
    QString statementFor(int rows) const {
        QString sql = mHead;
        sql.reserve(mHead.size() + rows * (mRowMarks.size() + 1));
        for (int i = 0; i < rows; ++i) {
            if (i)
                sql += QLatin1Char(',');
            sql += mRowMarks;
        }
        return sql;
    }
    void flush() {
        if (mRows == 0)
            return;
        mDb.Execute(mRows == mRowsPerStatement ? mFullSql : statementFor(mRows), mValues);
        mValues.clear();
        mRows = 0;
    }

    Database& mDb;
    int mWidth;
    int mRowsPerStatement = 1;
    QString mHead, mRowMarks, mFullSql;
    QVariantList mValues;
    int mRows = 0;
    qint64 mTotal = 0;
};

const QVariant kNull;

} // namespace

void Generator::write(Database& db, GenDataCounts& counts) {
    const QString far = NoDateText();
    stage(QStringLiteral("writing"));

    auto writeAddresses = [&db](const QString& table, const std::vector<Address>& rows,
                                bool discount) {
        QStringList cols = {
            QStringLiteral("CoName"),   QStringLiteral("Add1"),   QStringLiteral("Add2"),
            QStringLiteral("Add3"),     QStringLiteral("Add4"),   QStringLiteral("PCode"),
            QStringLiteral("Contact1"), QStringLiteral("Tel1"),   QStringLiteral("Fax1"),
            QStringLiteral("EMail"),    QStringLiteral("ShortNm")};
        if (discount)
            cols << QStringLiteral("Discount");
        BulkInsert ins(db, table, cols);
        for (const Address& a : rows) {
            if (discount)
                ins.add({a.coName, a.add1, a.add2, a.add3, a.add4, a.pcode, a.contact, a.tel, a.fax,
                         a.email, a.shortNm, a.discount});
            else
                ins.add({a.coName, a.add1, a.add2, a.add3, a.add4, a.pcode, a.contact, a.tel, a.fax,
                         a.email, a.shortNm});
        }
        ins.finish();
        return ins.total();
    };
    counts.suppliers = 1 + writeAddresses(QStringLiteral("tblSupAddresses"), mSuppliers, false);
    counts.customers = writeAddresses(QStringLiteral("tblCusAddresses"), mCustomers, true);
    counts.locations = writeAddresses(QStringLiteral("tblLocAddresses"), mLocations, false);
    counts.miscContacts = writeAddresses(QStringLiteral("tblMisAddresses"), mMisc, false);

    {
        BulkInsert ins(
            db, QStringLiteral("tblStockItems"),
            {QStringLiteral("ItemID"), QStringLiteral("MasterPNo"), QStringLiteral("ItemName"),
             QStringLiteral("ItemDescription"), QStringLiteral("Category"), QStringLiteral("Assy"),
             QStringLiteral("Location"), QStringLiteral("Qty"), QStringLiteral("Trigger"),
             QStringLiteral("SellAt"), QStringLiteral("AllowDiscount"), QStringLiteral("AllocQty"),
             QStringLiteral("OnOrderQty"), QStringLiteral("BuyNow")});
        for (size_t i = 0; i < mItems.size(); ++i) {
            const Item& it = mItems[i];
            ins.add({qint64(i + 1), it.pno, it.name, it.desc, it.category, it.assy, it.location,
                     it.qty, it.trigger, it.sellAt, it.allowDiscount, 0.0, it.onOrder, it.buyNow});
        }
        ins.finish();
        counts.items = ins.total();
    }
    {
        BulkInsert ins(db, QStringLiteral("tblItemSupplier"),
                       {QStringLiteral("ItemID"), QStringLiteral("SupplierID"),
                        QStringLiteral("SupplierPNo"), QStringLiteral("MinOrQty"),
                        QStringLiteral("PriceEach"), QStringLiteral("PrimeSupplier")});
        for (const ItemSupplier& s : mItemSuppliers) {
            if (s.unsaved)
                ins.add({s.item, 0, QString(), kNull, kNull, 0});
            else
                ins.add({s.item, s.supplier, s.pno, s.minQty, s.price, s.prime});
        }
        ins.finish();
        counts.itemSuppliers = ins.total();
    }
    {
        BulkInsert ins(db, QStringLiteral("tblItemComments"),
                       {QStringLiteral("StockID"), QStringLiteral("Comment")});
        for (size_t i = 0; i < mComments.size(); ++i)
            if (!mComments[i].isEmpty())
                ins.add({qint64(i + 1), mComments[i]});
        ins.finish();
        counts.comments = ins.total();
    }
    {
        BulkInsert ins(db, QStringLiteral("tblBaskets"),
                       {QStringLiteral("StockID"), QStringLiteral("ReqQty"),
                        QStringLiteral("DelDate"), QStringLiteral("OrderYN"),
                        QStringLiteral("FromID")});
        for (const BasketRow& b : mBasket) {
            const QVariant del = b.delDay == -1   ? kNull
                                 : b.delDay == -2 ? QVariant(far)
                                                  : QVariant(mDays.text(b.delDay));
            ins.add({b.item, b.reqQty, del, b.orderYN, 0});
        }
        ins.finish();
        counts.basketRows = ins.total();
    }
    {
        BulkInsert ins(db, QStringLiteral("tblPOrders"),
                       {QStringLiteral("POID"), QStringLiteral("PONumber"),
                        QStringLiteral("PODate"), QStringLiteral("POSupID"),
                        QStringLiteral("POLocID"), QStringLiteral("POComplete"),
                        QStringLiteral("POConfirmed")});
        for (size_t i = 0; i < mOrders.size(); ++i) {
            const PurchaseOrder& po = mOrders[i];
            ins.add({qint64(i + 1), po.ref, mDays.text(po.day), po.supplier, 0, 0, 0});
        }
        ins.finish();
        counts.purchaseOrders = ins.total();
    }
    {
        BulkInsert ins(db, QStringLiteral("tblPODetail"),
                       {QStringLiteral("RowID"), QStringLiteral("POStockID"),
                        QStringLiteral("POID"), QStringLiteral("POSupPNo"), QStringLiteral("POQty"),
                        QStringLiteral("POPrice"), QStringLiteral("POSchedDate"),
                        QStringLiteral("PORecieved"), QStringLiteral("RowConfirmed"),
                        QStringLiteral("RowComments"), QStringLiteral("GRN_PONo")});
        for (size_t i = 0; i < mPORows.size(); ++i) {
            const PORow& row = mPORows[i];
            ins.add({qint64(i + 1), row.item, row.poid, row.supPNo, row.qty, row.price,
                     row.schedDay < 0 ? far : mDays.text(row.schedDay), row.received, 0, QString(),
                     QString()});
        }
        ins.finish();
        counts.purchaseOrderRows = ins.total();
    }
    {
        BulkInsert ins(db, QStringLiteral("tblCustOrders"),
                       {QStringLiteral("CustBasketID"), QStringLiteral("CustID"),
                        QStringLiteral("SalesRef"), QStringLiteral("CustOrRef"),
                        QStringLiteral("CustOrDate"), QStringLiteral("ORDiscount")});
        for (size_t i = 0; i < mCustOrders.size(); ++i) {
            const CustOrder& co = mCustOrders[i];
            ins.add(
                {qint64(i + 1), co.customer, QString(), co.ref, mDays.text(co.day), co.discount});
        }
        ins.finish();
        counts.customerOrders = ins.total();
    }
    {
        BulkInsert ins(db, QStringLiteral("tblCustOrderDetail"),
                       {QStringLiteral("RowID"), QStringLiteral("CustBasketDetailID"),
                        QStringLiteral("StockID"), QStringLiteral("OrderedQty"),
                        QStringLiteral("GrosPrice"), QStringLiteral("NetPrice"),
                        QStringLiteral("ShippedQty")});
        for (size_t i = 0; i < mCustRows.size(); ++i) {
            const CustRow& row = mCustRows[i];
            ins.add({qint64(i + 1), row.order, row.item, row.qty, row.gross, row.net, row.shipped});
        }
        ins.finish();
        counts.customerOrderRows = ins.total();
    }
    {
        BulkInsert head(
            db, QStringLiteral("tblDespatch"),
            {QStringLiteral("DespID"), QStringLiteral("CustOrderID"), QStringLiteral("DespSeqNo"),
             QStringLiteral("DespNoteText"), QStringLiteral("DespFreeText"),
             QStringLiteral("DespDate"), QStringLiteral("Invoiced"), QStringLiteral("TotalTax"),
             QStringLiteral("Delivery"), QStringLiteral("InvoiceNo"), QStringLiteral("TaxRate")});
        BulkInsert rows(db, QStringLiteral("tblDespDetail"),
                        {QStringLiteral("DespID"), QStringLiteral("DespQty"),
                         QStringLiteral("DespStockID"), QStringLiteral("OrderDetailRowID"),
                         QStringLiteral("SellAtPrice")});
        for (size_t i = 0; i < mInvoices.size(); ++i) {
            const Invoice& inv = mInvoices[i];
            const qint64 despId = qint64(i + 1);
            // The firm started its invoice numbers at 1001.
            head.add({despId, inv.order, inv.seq, QStringLiteral("POS"), QString(),
                      mDays.text(inv.day), mDays.text(inv.day), inv.tax, inv.delivery,
                      despId + 1000, inv.taxRate});
            for (int k = 0; k < inv.detailCount; ++k) {
                const DespRow& dr = mDespRows[size_t(inv.firstDetail + k)];
                rows.add(
                    {despId, dr.qty, mCustRows[size_t(dr.row)].item, qint64(dr.row + 1), dr.price});
            }
        }
        head.finish();
        rows.finish();
        counts.invoices = head.total();
        counts.invoiceRows = rows.total();
    }
    {
        // One column list for every kind: the columns a writer does not name stay Null.
        BulkInsert ins(
            db, QStringLiteral("tblItemHistory"),
            {QStringLiteral("StockID"), QStringLiteral("HistDate"), QStringLiteral("HistType"),
             QStringLiteral("HistID"), QStringLiteral("HistID2"), QStringLiteral("HistRef"),
             QStringLiteral("HistTRN"), QStringLiteral("HistQty"), QStringLiteral("HistText")});
        std::vector<QString> types;
        for (const char* t : kHistType)
            types.push_back(QLatin1String(t));
        std::vector<QString> texts; // adjustment texts by index + 1, made once each
        auto textOf = [this, &texts](int index) -> const QString& {
            const size_t k = size_t(index + 1);
            if (k >= texts.size())
                texts.resize(k + 1);
            if (texts[k].isNull())
                texts[k] = adjustText(index);
            return texts[k];
        };
        const QString pos = QStringLiteral("POS");
        const QString poPrefix = QStringLiteral("Purchase Order: ");
        for (const Hist& h : mHistory) {
            const QString& type = types[h.kind];
            const QString& date = mDays.text(h.day);
            if (h.kind == HRx) {
                const Delivery& d = mDeliveries[size_t(h.b)];
                ins.add({h.stock, date, type, kNull, double(h.a), d.advice, d.trn, h.qty,
                         poPrefix + mOrders[size_t(d.poid - 1)].ref});
            } else if (h.kind == HShip) {
                ins.add({h.stock, date, type, 0, kNull,
                         zeroPad(h.a, 4) + QLatin1Char('-') + zeroPad(h.b, 3), kNull, h.qty, pos});
            } else {
                ins.add({h.stock, date, type, 0, kNull,
                         h.b ? QStringLiteral("J") + QString::number(h.b) : QString(), kNull, h.qty,
                         textOf(h.a)});
            }
        }
        ins.finish();
        counts.historyRows = ins.total();
    }
    {
        Rng r = rng(SLinks);
        BulkInsert ins(db, QStringLiteral("tblHyperLinks"),
                       {QStringLiteral("LinkStockID"), QStringLiteral("LinkAddress"),
                        QStringLiteral("LinkName")});
        // The common links of the business: documents and sites everyone uses.
        static const char* const kCommon[][2] = {
            {"Terms and conditions", "https://www.example.com/terms-"},
            {"Price list", "\\\\fileserver\\office\\pricelist-"},
            {"Carriage rates", "https://www.example.com/carriage-"},
            {"Quality manual", "\\\\fileserver\\office\\quality-manual-"},
            {"Supplier catalogue", "https://www.example.com/catalogue-"},
            {"Returns form", "\\\\fileserver\\office\\returns-form-"}};
        for (int k = 0; k < mScale.links; ++k) {
            if (r.chance(10)) {
                const auto& c = kCommon[r.below(6)];
                ins.add({0, QLatin1String(c[1]) + r.digits(3), QLatin1String(c[0])});
                continue;
            }
            const int id = r.range(1, mScale.items);
            const Item& it = mItems[size_t(id - 1)];
            if (r.chance(60))
                ins.add({id,
                         QStringLiteral("\\\\fileserver\\datasheets\\") + it.pno +
                             QStringLiteral(".pdf"),
                         QStringLiteral("Data sheet")});
            else
                ins.add({id, QStringLiteral("https://www.example.com/parts/") + it.pno,
                         QStringLiteral("Manufacturer page")});
        }
        ins.finish();
        counts.links = ins.total();
    }
    {
        // Parts lists: components on the assemblies' boards. A fifth of the rows use a small
        // pool of common parts, so that some components are used in many assemblies.
        Rng r = rng(SUsedIn);
        std::vector<int> assemblies, parts;
        for (int i = 0; i < int(mItems.size()); ++i)
            (mItems[size_t(i)].assy ? assemblies : parts).push_back(i + 1);
        BulkInsert ins(db, QStringLiteral("tblUsedIn"),
                       {QStringLiteral("ParentID"), QStringLiteral("ChildID"),
                        QStringLiteral("QtyPer"), QStringLiteral("BoardPos")});
        const int common = std::min<int>(100, int(parts.size()));
        static const double kQtyPer[] = {1, 1, 1, 1, 2, 2, 4, 0.5, 10};
        for (int k = 0; k < mScale.usedInRows && !assemblies.empty() && !parts.empty(); ++k) {
            const int parent = assemblies[size_t(r.below(int(assemblies.size())))];
            const int child = r.chance(20) ? parts[size_t(r.below(common))]
                                           : parts[size_t(r.below(int(parts.size())))];
            const QString& pno = mItems[size_t(child - 1)].pno;
            const QString pos = pno.isEmpty() ? QStringLiteral("X") : pno.left(1);
            ins.add({parent, child, kQtyPer[r.below(9)], pos + QString::number(r.range(1, 120))});
        }
        ins.finish();
        counts.usedInRows = ins.total();
    }
    {
        // Allocations to works orders, left by earlier versions: nothing writes them now and the
        // items' AllocQty stays 0 until a re-sync counts them. Some quantities carry fractions,
        // some rows name items that no longer exist.
        Rng r = rng(SAllocations);
        BulkInsert ins(db, QStringLiteral("tblAllocDetail"),
                       {QStringLiteral("AllocType"), QStringLiteral("AllocID"),
                        QStringLiteral("StockID"), QStringLiteral("AllocQty")});
        const int orders = std::max(1, mScale.allocationRows / 5);
        for (int k = 0; k < mScale.allocationRows; ++k) {
            const int item =
                r.chance(2) ? mScale.items + r.range(1, 1000) : r.range(1, mScale.items);
            const double qty = r.chance(25) ? r.range(1, 400) / 4.0 : double(r.range(1, 50));
            ins.add({QStringLiteral("WO"), r.range(1, orders), item, qty});
        }
        ins.finish();
        counts.allocationRows = ins.total();
    }

    db.Execute(QStringLiteral("INSERT INTO tblHome (CoName, Add1, Add2, Add3, Add4, Add5, Add6, "
                              "Tel1, Fax1) VALUES (?,?,?,?,?,?,?,?,?)"),
               {QStringLiteral("Harrowgate Parts Ltd"), QStringLiteral("Unit 7"),
                QStringLiteral("Kestrel Business Park"), QStringLiteral("Telford"),
                QStringLiteral("Shropshire"), QStringLiteral("TF3 4QX"), QString(),
                QStringLiteral("01632 960123"), QStringLiteral("01632 960124")});
    db.Execute(
        QStringLiteral("INSERT INTO tblParameters (ParaName, f1, f2, f3, f4, f5, f6, f7, "
                       "f8, f9, f10) VALUES ('TaxRates','20','','','VAT','','','','','','')"));
    db.Execute(QStringLiteral("INSERT INTO tblParameters (ParaName, f1, f2, f3, f4, f5, f6, f7, "
                              "f8, f9, f10) VALUES ('ShippingPars','Carriage','8.5','Y','','','',"
                              "'','','','')"));
    db.Execute(QStringLiteral("INSERT INTO tblParameters (ParaName, f1) VALUES ('InvTerms', ?)"),
               {QStringLiteral("Payment due 30 days from the date of invoice.\nGoods remain the "
                               "property of the seller until paid for in full.")});
}

} // namespace gendata
