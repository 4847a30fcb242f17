#include "tools/GenData.h"

#include "foundation/DbEngine.h"
#include "foundation/Schema.h"
#include "tools/GenDataModel.h"

#include <QDir>
#include <climits>

namespace gendata {
namespace {

// ---------------------------------------------------------------- word lists
// None of the texts holds an apostrophe: the system never stores one.
const char* const kCompanyFirst[] = {
    "Northfield", "Ashdown",  "Brookside",  "Castlegate", "Denholm",   "Elmstead", "Fairway",
    "Granite",    "Harbour",  "Ironbridge", "Juniper",    "Kestrel",   "Lakeside", "Meridian",
    "Newbury",    "Oakridge", "Pennine",    "Quayside",   "Riverside", "Summit",   "Thornbury",
    "Upland",     "Valley",   "Westgate",   "Yardley",    "Zenith",    "Atlas",    "Beacon",
    "Crown",      "Delta",    "Eagle",      "Falcon",     "Globe",     "Horizon",  "Imperial",
    "Jubilee",    "Kingsway", "Lion",       "Monarch",    "Nova",      "Orchard",  "Phoenix"};
const char* const kCompanySecond[] = {
    "Components", "Electronics", "Engineering",  "Supplies",    "Fasteners", "Hydraulics",
    "Industrial", "Trading",     "Distribution", "Technical",   "Controls",  "Plastics",
    "Metals",     "Tools",       "Systems",      "Instruments", "Bearings",  "Cables",
    "Packaging",  "Services",    "Automation",   "Fluid Power", "Motors",    "Wholesale"};
const char* const kCompanySuffix[] = {"Ltd",    "Ltd",   "Limited", "plc",
                                      "and Co", "Group", "Ltd",     "UK Ltd"};
const char* const kStreets[] = {
    "High Street",    "Station Road",    "Mill Lane",  "Church Road",   "Park Avenue",
    "Victoria Road",  "Kings Road",      "Queens Way", "Bridge Street", "Market Place",
    "Enterprise Way", "Riverside Drive", "Canal Side", "Foundry Lane",  "Forge Way"};
const char* const kEstates[] = {"Industrial Estate", "Business Park",   "Trading Estate",
                                "Enterprise Park",   "Technology Park", ""};
const char* const kTowns[] = {"Leeds",   "Bristol", "Derby",    "Norwich", "Preston",  "Reading",
                              "Swindon", "Luton",   "Exeter",   "Chester", "Durham",   "Lincoln",
                              "Bolton",  "Crewe",   "Telford",  "Wigan",   "Stafford", "Ipswich",
                              "Bath",    "Hull",    "Coventry", "Walsall", "Redditch", "Barnsley"};
const char* const kCounties[] = {
    "West Yorkshire", "Avon",          "Derbyshire",     "Norfolk",   "Lancashire", "Berkshire",
    "Wiltshire",      "Bedfordshire",  "Devon",          "Cheshire",  "Shropshire", "Staffordshire",
    "Suffolk",        "West Midlands", "Worcestershire", "Humberside"};
const char* const kFirstNames[] = {"John",  "Sarah",  "David",  "Karen",  "Peter",   "Helen",
                                   "Mark",  "Julie",  "Paul",   "Susan",  "Steve",   "Alison",
                                   "Chris", "Emma",   "Graham", "Lucy",   "Michael", "Claire",
                                   "Ian",   "Joanne", "Tony",   "Rachel", "Gary",    "Nicola"};
const char* const kSurnames[] = {"Smith",   "Jones",  "Taylor",   "Brown",  "Williams", "Wilson",
                                 "Johnson", "Davies", "Robinson", "Wright", "Thompson", "Evans",
                                 "Walker",  "White",  "Roberts",  "Green",  "Hall",     "Wood",
                                 "Jackson", "Clarke", "Hughes",   "Turner", "Hill",     "Moore"};
const char* const kAdjustTexts[] = {"Stock check",        "Workshop",           "Damaged in store",
                                    "Returned from site", "Sample to customer", "Found in stores",
                                    "Scrapped",           "Production",         "Maintenance",
                                    "Quality hold",       "Miscount corrected", "Rework"};
const char* const kCommentLines[] = {"Check stock before quoting",
                                     "Supplier lead time 6 weeks",
                                     "Do not reorder - obsolete, use the replacement",
                                     "For repairs only",
                                     "Keep away from damp",
                                     "Static sensitive - handle with care",
                                     "Price rises every January",
                                     "Minimum order value applies",
                                     "Fragile, store on the lower shelf",
                                     "Part of the service kit",
                                     "Shelf life 12 months from delivery",
                                     "Inspect on receipt",
                                     "Customer specific item",
                                     "Drawing on file",
                                     "Alternative part accepted by engineering"};

struct CategoryDef {
    const char* name;
    const char* prefix;
    const char* noun;
    const char* kinds[3];
    const char* unit;
};
const CategoryDef kCategories[] = {
    {"RESISTOR", "RES", "Resistor", {"metal film", "carbon film", "thick film SMD"}, "R"},
    {"CAPACITOR", "CAP", "Capacitor", {"ceramic", "electrolytic", "polyester film"}, "uF"},
    {"CONNECTOR", "CON", "Connector", {"header", "crimp housing", "D-type"}, "way"},
    {"CABLE", "CAB", "Cable", {"multicore", "screened", "ribbon"}, "core"},
    {"FUSE", "FUS", "Fuse", {"quick blow", "anti-surge", "resettable"}, "A"},
    {"RELAY", "REL", "Relay", {"power", "signal", "solid state"}, "V"},
    {"SWITCH", "SWI", "Switch", {"toggle", "push button", "rocker"}, "A"},
    {"DIODE", "DIO", "Diode", {"rectifier", "schottky", "zener"}, "A"},
    {"TRANSISTOR", "TRN", "Transistor", {"NPN", "PNP", "MOSFET"}, "V"},
    {"IC", "ICS", "Integrated circuit", {"logic", "op-amp", "regulator"}, "pin"},
    {"LED", "LED", "LED", {"indicator", "high brightness", "panel mount"}, "mm"},
    {"SENSOR", "SEN", "Sensor", {"proximity", "temperature", "pressure"}, "V"},
    {"MOTOR", "MOT", "Motor", {"DC geared", "stepper", "AC induction"}, "W"},
    {"BEARING", "BRG", "Bearing", {"deep groove", "needle roller", "thrust"}, "mm"},
    {"BOLT", "BLT", "Bolt", {"hex head", "cap head", "coach"}, "mm"},
    {"NUT", "NUT", "Nut", {"hex", "nyloc", "wing"}, "mm"},
    {"WASHER", "WSH", "Washer", {"plain", "spring", "shakeproof"}, "mm"},
    {"SCREW", "SCR", "Screw", {"pan head", "countersunk", "self tapping"}, "mm"},
    {"SPRING", "SPR", "Spring", {"compression", "extension", "torsion"}, "mm"},
    {"SEAL", "SEA", "Seal", {"O-ring", "lip", "rotary shaft"}, "mm"},
    {"GASKET", "GSK", "Gasket", {"fibre", "rubber", "copper"}, "mm"},
    {"FILTER", "FIL", "Filter", {"air", "oil", "inline"}, "micron"},
    {"VALVE", "VLV", "Valve", {"ball", "check", "solenoid"}, "bar"},
    {"PUMP", "PMP", "Pump", {"diaphragm", "gear", "centrifugal"}, "l/min"},
    {"HOSE", "HOS", "Hose", {"reinforced", "PVC", "silicone"}, "mm"},
    {"FITTING", "FIT", "Fitting", {"elbow", "tee", "straight"}, "mm"},
    {"BRACKET", "BRK", "Bracket", {"angle", "mounting", "support"}, "mm"},
    {"ENCLOSURE", "ENC", "Enclosure", {"ABS", "die-cast", "steel"}, "mm"},
    {"LABEL", "LAB", "Label", {"warning", "rating plate", "cable marker"}, "mm"},
    {"TOOL", "TOL", "Tool", {"crimp", "hand", "insertion"}, "mm"},
    {"ADHESIVE", "ADH", "Adhesive", {"epoxy", "cyanoacrylate", "threadlock"}, "ml"},
    {"LUBRICANT", "LUB", "Lubricant", {"grease", "oil", "dry film"}, "ml"},
    {"PCB", "PCB", "Printed circuit board", {"single sided", "double sided", "multilayer"}, "mm"},
    {"TRANSFORMER", "TFM", "Transformer", {"toroidal", "encapsulated", "isolating"}, "VA"},
    {"INDUCTOR", "IND", "Inductor", {"power", "RF", "common mode"}, "uH"},
    {"CRYSTAL", "XTL", "Crystal", {"quartz", "oscillator", "resonator"}, "MHz"},
    {"BATTERY", "BAT", "Battery", {"lithium", "alkaline", "NiMH"}, "mAh"},
    {"LAMP", "LMP", "Lamp", {"halogen", "neon", "filament"}, "W"},
    {"PACKAGING", "PKG", "Packaging", {"carton", "bag", "foam insert"}, "mm"},
    {"HEATSINK", "HSK", "Heatsink", {"extruded", "clip-on", "finned"}, "mm"},
};
constexpr int kCategoryDefs = int(sizeof(kCategories) / sizeof(kCategories[0]));
const double kPreferred[] = {1, 1.2, 1.5, 1.8, 2.2, 2.7, 3.3, 3.9, 4.7, 5.6, 6.8, 8.2};

} // namespace

// Items 1 to 30% exist from the first day; the rest arrive evenly over the first six years.
int Generator::createdDay(int itemId) const {
    const int n = mScale.items;
    const int base = std::max(1, n * 3 / 10);
    const int grow = std::max(1, mDays.span() * 6 / 10);
    if (itemId <= base || n <= base)
        return 0;
    const qint64 num = qint64(itemId - base) * grow;
    return int((num + (n - base) - 1) / (n - base));
}

int Generator::maxItemAt(int day) const {
    const int n = mScale.items;
    const int base = std::max(1, n * 3 / 10);
    const int grow = std::max(1, mDays.span() * 6 / 10);
    if (n <= base)
        return n;
    return int(std::min<qint64>(n, base + qint64(std::max(day, 0)) * (n - base) / grow));
}

std::vector<int> Generator::sortedDays(Rng& r, int count) const {
    std::vector<int> days(size_t(std::max(count, 0)));
    for (int& d : days)
        d = r.range(0, mDays.span());
    std::sort(days.begin(), days.end());
    return days;
}

// `parts` counts between lo and hi that add up to `total` (as near as the bounds allow).
std::vector<int> Generator::splitCount(Rng& r, int parts, int total, int lo, int hi) const {
    std::vector<int> c(size_t(std::max(parts, 0)));
    if (parts <= 0)
        return c;
    qint64 sum = 0;
    for (int& x : c) {
        x = r.range(lo, hi);
        sum += x;
    }
    int guard = 0;
    while (sum != total && guard++ < 50 * parts + 1000) {
        int& x = c[size_t(r.below(parts))];
        if (sum > total && x > lo) {
            --x;
            --sum;
        } else if (sum < total && x < hi) {
            ++x;
            ++sum;
        }
    }
    return c;
}

Address Generator::makeCompany(Rng& r, const QString& coName, bool withDiscount) {
    Address a;
    a.coName = coName;
    // One draw per statement: the order of draws must not depend on the compiler.
    const int number = r.range(1, 250);
    a.add1 = QString::number(number) + QLatin1Char(' ') + QLatin1String(r.pick(kStreets));
    a.add2 = QLatin1String(r.pick(kEstates));
    a.add3 = QLatin1String(r.pick(kTowns));
    a.add4 = QLatin1String(r.pick(kCounties));
    a.pcode = r.letters(2);
    a.pcode += QString::number(r.range(1, 29)) + QLatin1Char(' ');
    a.pcode += QString::number(r.range(1, 9));
    a.pcode += r.letters(2);
    a.contact = QLatin1String(r.pick(kFirstNames)) + QLatin1Char(' ');
    a.contact += QLatin1String(r.pick(kSurnames));
    a.tel = QStringLiteral("01632 ") + r.digits(6);
    a.fax = r.chance(60) ? QStringLiteral("01632 ") + r.digits(6) : QString();
    const QString domain = coName.section(QLatin1Char(' '), 0, 0).toLower();
    a.email = r.chance(85) ? QStringLiteral("sales@") + domain + QStringLiteral(".example.com")
                           : QString();
    const QString first = coName.section(QLatin1Char(' '), 0, 0).toUpper().left(3);
    const QString second = coName.section(QLatin1Char(' '), 1, 1).toUpper().left(1);
    a.shortNm = first + second;
    if (withDiscount) {
        const double discounts[] = {2.5, 5, 7.5, 10, 12.5, 15};
        a.discount = r.chance(50) ? 0 : discounts[r.below(6)];
    }
    return a;
}

void Generator::buildAddresses() {
    Rng r = rng(SAddresses);
    auto companyName = [&r]() {
        QString s = QLatin1String(r.pick(kCompanyFirst)) + QLatin1Char(' ');
        s += QLatin1String(r.pick(kCompanySecond));
        const QString suffix = QLatin1String(r.pick(kCompanySuffix));
        return suffix.isEmpty() ? s : s + QLatin1Char(' ') + suffix;
    };
    for (int i = 0; i < mScale.suppliers; ++i)
        mSuppliers.push_back(makeCompany(r, companyName(), false));
    // The non-stock supplier: orders on it carry no stock items.
    Address non = makeCompany(r, QStringLiteral("Non-Stock Purchases"), false);
    non.shortNm = QStringLiteral("NON");
    mSuppliers.push_back(non);
    for (int i = 0; i < mScale.customers; ++i)
        mCustomers.push_back(makeCompany(r, companyName(), true));
    const char* const places[] = {"Main Stores",       "Goods Inwards", "Despatch Bay",
                                  "Workshop",          "Site Office",   "Unit 4 Warehouse",
                                  "Field Service Van", "Returns Cage",  "Assembly Line",
                                  "Quarantine Store"};
    for (int i = 0; i < mScale.locations; ++i) {
        QString name = QLatin1String(places[i % 10]);
        if (i >= 10)
            name += QLatin1Char(' ') + QString::number(i / 10 + 1);
        Address a = makeCompany(r, name, false);
        a.shortNm = QStringLiteral("L") + zeroPad(i + 1, 2);
        mLocations.push_back(a);
    }
    const char* const kinds[] = {"Carriers", "Bank",     "Accountants", "Insurance", "Couriers",
                                 "Cleaning", "Security", "Recruitment", "Printing",  "Waste"};
    for (int i = 0; i < mScale.miscContacts; ++i) {
        const QString name =
            QLatin1String(r.pick(kCompanyFirst)) + QLatin1Char(' ') + QLatin1String(kinds[i % 10]);
        mMisc.push_back(makeCompany(r, name, false));
    }
}

void Generator::buildItems() {
    Rng r = rng(SItems);
    for (int i = 0; i < mScale.categories; ++i) {
        QString name = QLatin1String(kCategories[i % kCategoryDefs].name);
        if (i >= kCategoryDefs)
            name += QLatin1Char(' ') + QString::number(i / kCategoryDefs + 1);
        mCategoryNames.push_back(name);
    }
    const int bins = std::max(5, mScale.items / 500);
    for (int i = 0; i < bins; ++i)
        mBins.push_back(QChar(u'A' + i % 26) + zeroPad(i / 26 + 1, 2) + QLatin1Char('-') +
                        QString::number(i % 5 + 1));

    // Part numbers: category prefix and a number scattered over the range but unique per item.
    const qint64 modulus = mScale.items < 1000000 ? 1000000 : 10000000;
    mItems.resize(size_t(mScale.items));
    for (int id = 1; id <= mScale.items; ++id) {
        Item& it = mItems[size_t(id - 1)];
        it.createdDay = createdDay(id);
        const int roll = r.below(1000);
        const int cat = r.below(mScale.categories);
        const CategoryDef& def = kCategories[cat % kCategoryDefs];
        const QString number =
            zeroPad((qint64(id) * 7331 + 104729) % modulus, modulus == 1000000 ? 6 : 7);
        const double mantissa = kPreferred[r.below(12)];
        const double value = mantissa * std::pow(10.0, r.below(4));
        QString valueText = QString::number(value, 'g', 4) + QLatin1String(def.unit);
        if (roll < 12) { // assemblies
            it.category = QStringLiteral("AS");
            it.assy = -1;
            it.pno = QStringLiteral("AS-") + number;
            it.desc = QStringLiteral("Assembly ") + QString::fromLatin1(def.noun).toLower() +
                      QStringLiteral(" unit");
            it.name = QStringLiteral("Issue ") + QString::number(r.range(1, 9));
        } else {
            it.category = roll < 25 ? QStringLiteral("NEW") : mCategoryNames[size_t(cat)];
            it.pno = QLatin1String(def.prefix) + QLatin1Char('-') + number;
            if (r.chance(10))
                it.pno += QChar(u'A' + r.below(6));
            it.desc =
                QLatin1String(def.noun) + QLatin1Char(' ') + QLatin1String(def.kinds[r.below(3)]);
            if (r.chance(40))
                it.desc += QLatin1Char(' ') + valueText;
            it.name = r.chance(12) ? QString() : valueText;
        }
        // An item saved from the detail panel keeps the blank its statement writes behind the
        // location; one that was only created or imported has none.
        QString loc = r.chance(3) ? QStringLiteral("UNKNOWN") : mBins[size_t(r.below(bins))];
        if (r.chance(70))
            loc += QLatin1Char(' ');
        it.location = loc;
        it.allowDiscount = r.chance(70) ? 1 : 0;
    }
}

void Generator::buildSuppliers() {
    Rng r = rng(SSuppliers);
    const int realSuppliers = mScale.suppliers;
    mSupplierItems.assign(size_t(realSuppliers + 2), {});
    const double minQtys[] = {0, 1, 1, 1, 5, 10, 25, 50, 100};
    for (int id = 1; id <= mScale.items; ++id) {
        Item& it = mItems[size_t(id - 1)];
        // The buy price: from a fraction of a penny to some hundreds.
        const int mills = r.range(10, 9999);
        const double price = round5(mills / 1000.0 * std::pow(10.0, r.below(4)));
        const int markup = r.range(130, 250);
        it.sellAt = r.chance(5) ? 0 : round2(price * markup / 100.0);
        if (realSuppliers == 0 || r.chance(8)) {
            // No real supplier: the no-supplier row. An item never saved since its creation
            // has the bare row of the creation statement.
            const bool unsaved = r.chance(20);
            mItemSuppliers.push_back(
                {id, 0, QString(), 0, unsaved ? 0 : price, unsaved ? 0 : 1, unsaved});
            continue;
        }
        const int count = std::min(realSuppliers, r.chance(50) ? 1 : r.chance(60) ? 2 : 3);
        int chosen[3] = {0, 0, 0};
        for (int k = 0; k < count; ++k) {
            int s;
            do {
                s = r.range(1, realSuppliers);
            } while (std::find(chosen, chosen + k, s) != chosen + k);
            chosen[k] = s;
        }
        // Rows are written in the order of the supplier grid, which lists the prime row last.
        for (int k = 0; k < count; ++k) {
            const bool prime = k == count - 1;
            QString pno;
            if (!r.chance(10)) {
                pno = r.letters(2) + QLatin1Char('-');
                pno += r.digits(5);
            }
            const double p = prime ? price : round5(price * r.range(90, 125) / 100.0);
            mItemSuppliers.push_back(
                {id, chosen[k], pno, minQtys[r.below(9)], p, prime ? 1 : 0, false});
            mSupplierItems[size_t(chosen[k])].push_back(int(mItemSuppliers.size() - 1));
            if (prime)
                it.primeSupplier = chosen[k];
        }
    }

    Rng c = rng(SComments);
    mComments.assign(size_t(mScale.items), QString());
    for (int id = 1; id <= mScale.items; ++id) {
        if (!c.chance(25))
            continue;
        const int lines = c.chance(33) ? c.range(2, 4) : 1;
        QStringList parts;
        for (int k = 0; k < lines; ++k) {
            QString line = QLatin1String(c.pick(kCommentLines));
            if (c.chance(20))
                line +=
                    QStringLiteral(" (") + QLatin1String(c.pick(kFirstNames)) + QLatin1Char(')');
            parts << line;
        }
        mComments[size_t(id - 1)] = parts.join(QLatin1Char('\n'));
    }
}

void Generator::buildPurchasing() {
    Rng r = rng(SPurchasing);
    const std::vector<int> days = sortedDays(r, mScale.purchaseOrders);
    const std::vector<int> rowCounts =
        splitCount(r, mScale.purchaseOrders, mScale.purchaseOrderRows, 1, 9);
    const double qtys[] = {1, 2, 5, 10, 10, 20, 25, 50, 100, 200, 500};
    int grn = 1000;
    mOrders.reserve(days.size());
    mPORows.reserve(size_t(mScale.purchaseOrderRows));
    for (size_t o = 0; o < days.size(); ++o) {
        const int poid = int(o) + 1;
        const int day = days[o];
        // The supplier: one of the suppliers of an item that exists by then.
        const int avail = maxItemAt(day);
        int supplier = 0;
        for (int tries = 0; tries < 20 && supplier == 0; ++tries)
            supplier = mItems[size_t(r.below(avail))].primeSupplier;
        if (supplier == 0)
            for (int s = 1; s <= mScale.suppliers && supplier == 0; ++s)
                if (!mSupplierItems[size_t(s)].empty())
                    supplier = s;
        const QString ref =
            r.chance(10) ? QString() : QStringLiteral("P") + zeroPad(r.range(1, 99999), 5);
        mOrders.push_back({day, supplier, ref});

        // The supplier's items that exist by then (the list is in item order).
        const std::vector<int>& offer = mSupplierItems[size_t(supplier)];
        const auto end = std::upper_bound(offer.begin(), offer.end(), avail, [this](int v, int x) {
            return v < mItemSuppliers[size_t(x)].item;
        });
        const int offered = int(end - offer.begin());

        const int age = mDays.span() - day;
        int dFirst = std::min(mDays.span(), day + r.range(2, 35));
        int dSecond = std::min(mDays.span(), dFirst + r.range(5, 40));
        int firstDelivery = -1, secondDelivery = -1;
        auto delivery = [&](int& slot) {
            if (slot < 0) {
                const QString advice =
                    r.chance(75) ? QStringLiteral("DN") + QString::number(r.range(10000, 999999))
                                 : QString();
                const QString trn =
                    r.chance(85) ? QStringLiteral("GRN") + QString::number(++grn) : QString();
                mDeliveries.push_back({advice, trn, poid});
                slot = int(mDeliveries.size()) - 1;
            }
            return slot;
        };

        for (int k = 0; k < rowCounts[o]; ++k) {
            PORow row;
            row.poid = poid;
            int supRow = -1;
            if (offered > 0) {
                supRow = offer[size_t(r.below(offered))];
                const ItemSupplier& s = mItemSuppliers[size_t(supRow)];
                row.item = s.item;
                row.supPNo = s.pno;
                row.price = r.chance(70) ? s.price : round5(s.price * r.range(85, 100) / 100.0);
                row.qty = std::max(qtys[r.below(11)], s.minQty);
            } else {
                row.item = r.range(1, avail);
                row.price = round5(r.range(10, 99999) / 1000.0);
                row.qty = qtys[r.below(11)];
            }
            if (r.chance(4))
                row.qty += 0.5;
            row.schedDay = r.chance(8) ? -1 : day + r.range(3, 42);
            const int rowId = int(mPORows.size()) + 1;

            // How much has arrived depends on the order's age.
            const int roll = r.below(100);
            enum { None, Full, Split, Partial, Over } state;
            if (age > 90)
                state = roll < 79   ? Full
                        : roll < 93 ? Split
                        : roll < 97 ? Partial
                        : roll < 99 ? None
                                    : Over;
            else if (age > 30)
                state = roll < 50 ? Full : roll < 60 ? Split : roll < 80 ? Partial : None;
            else
                state = roll < 12 ? Full : roll < 15 ? Split : roll < 25 ? Partial : None;
            if ((state == Split || state == Partial) && row.qty < 2)
                state = Full;
            double first = 0, second = 0;
            switch (state) {
            case None:
                break;
            case Full:
                first = row.qty;
                break;
            case Over:
                first = row.qty + r.range(1, 5);
                break;
            case Split:
                first = std::floor(row.qty * r.range(20, 80) / 100.0);
                second = row.qty - first;
                break;
            case Partial:
                first = std::max(1.0, std::floor(row.qty * r.range(10, 90) / 100.0));
                break;
            }
            if (first > 0) {
                mHistory.push_back(
                    {row.item, dFirst, mSeq++, HRx, rowId, delivery(firstDelivery), first});
                row.received += first;
            }
            if (second > 0) {
                mHistory.push_back(
                    {row.item, dSecond, mSeq++, HRx, rowId, delivery(secondDelivery), second});
                row.received += second;
            }
            mPORows.push_back(row);
        }
    }
    for (const PORow& row : mPORows)
        if (row.qty != row.received)
            mItems[size_t(row.item - 1)].onOrder += row.qty - row.received;
    for (Item& it : mItems)
        it.onOrder = round2(it.onOrder);
}

void Generator::buildSales() {
    Rng r = rng(SSales);
    const std::vector<int> days = sortedDays(r, mScale.customerOrders);
    const std::vector<int> rowCounts =
        splitCount(r, mScale.customerOrders, mScale.customerOrders * 3, 1, 5);
    const int taxChangeDay = mDays.span() * 15 / 100;
    const double deliveries[] = {12.0, 15.5, 25.0};
    std::vector<Invoice> invoices;
    std::vector<std::vector<DespRow>> invoiceRows;

    for (size_t o = 0; o < days.size(); ++o) {
        const int orderId = int(o) + 1;
        CustOrder co;
        co.day = days[o];
        co.customer = mCustomers.empty() ? 0 : r.range(1, int(mCustomers.size()));
        co.ref = r.chance(30) ? QString() : QStringLiteral("PO") + r.digits(5);
        co.discount = co.customer ? mCustomers[size_t(co.customer - 1)].discount : 0;
        co.firstRow = int(mCustRows.size());
        co.rowCount = rowCounts[o];
        const int avail = maxItemAt(co.day);
        for (int k = 0; k < co.rowCount; ++k) {
            CustRow row;
            row.order = orderId;
            row.item = r.range(1, avail);
            const Item& it = mItems[size_t(row.item - 1)];
            row.qty = r.range(1, 20);
            if (r.chance(5))
                row.qty += 0.5;
            row.gross = it.sellAt;
            row.net = it.allowDiscount && co.discount > 0
                          ? round5(it.sellAt * (100.0 - co.discount) / 100.0)
                          : it.sellAt;
            mCustRows.push_back(row);
        }
        mCustOrders.push_back(co);

        // How the order was invoiced: at once at the counter, in one part, in two, or not yet.
        const int age = mDays.span() - co.day;
        const int roll = r.below(100);
        enum { NotYet, AtCounter, OnePart, TwoParts, PartOnly } plan;
        if (age > 30)
            plan = roll < 3    ? NotYet
                   : roll < 20 ? AtCounter
                   : roll < 83 ? OnePart
                   : roll < 95 ? TwoParts
                               : PartOnly;
        else
            plan = roll < 40 ? NotYet : roll < 55 ? AtCounter : roll < 85 ? OnePart : PartOnly;
        if (plan == NotYet)
            continue;
        std::vector<double> firstQty(size_t(co.rowCount)), secondQty(size_t(co.rowCount), 0);
        for (int k = 0; k < co.rowCount; ++k) {
            const double q = mCustRows[size_t(co.firstRow + k)].qty;
            firstQty[size_t(k)] = (plan == TwoParts || plan == PartOnly)
                                      ? std::floor(q * r.range(20, 80) / 100.0)
                                      : q;
            if (plan == TwoParts)
                secondQty[size_t(k)] = q - firstQty[size_t(k)];
        }
        if (std::all_of(firstQty.begin(), firstQty.end(), [](double q) { return q <= 0; })) {
            firstQty[0] = 1;
            if (plan == TwoParts)
                secondQty[0] = mCustRows[size_t(co.firstRow)].qty - 1;
        }
        const int firstDay =
            plan == AtCounter ? co.day : std::min(mDays.span(), co.day + r.range(0, 14));
        const int secondDay = std::min(mDays.span(), firstDay + r.range(3, 30));
        for (int part = 0; part < (plan == TwoParts ? 2 : 1); ++part) {
            Invoice inv;
            inv.order = orderId;
            inv.seq = part + 1;
            inv.day = part ? secondDay : firstDay;
            const int d = r.below(100);
            inv.delivery = d < 75 ? 8.5 : d < 90 ? 0 : deliveries[r.below(3)];
            inv.taxRate = inv.day < taxChangeDay ? 17.5 : 20;
            std::vector<DespRow> rows;
            double goods = 0;
            for (int k = 0; k < co.rowCount; ++k) {
                const double q = part ? secondQty[size_t(k)] : firstQty[size_t(k)];
                if (q <= 0)
                    continue;
                CustRow& cr = mCustRows[size_t(co.firstRow + k)];
                const double price =
                    r.chance(5) ? round5(cr.net * r.range(90, 100) / 100.0) : cr.net;
                rows.push_back({co.firstRow + k, q, price});
                cr.shipped += q;
                goods += round2(q * price);
            }
            inv.tax = round2((goods + inv.delivery) * inv.taxRate / 100.0);
            invoices.push_back(inv);
            invoiceRows.push_back(std::move(rows));
        }
    }

    // Despatch keys and invoice numbers follow the order in which the invoices were made.
    std::vector<int> order(invoices.size());
    for (size_t i = 0; i < order.size(); ++i)
        order[i] = int(i);
    std::stable_sort(order.begin(), order.end(), [&invoices](int a, int b) {
        return invoices[size_t(a)].day < invoices[size_t(b)].day;
    });
    for (int idx : order) {
        Invoice inv = invoices[size_t(idx)];
        inv.firstDetail = int(mDespRows.size());
        inv.detailCount = int(invoiceRows[size_t(idx)].size());
        for (const DespRow& dr : invoiceRows[size_t(idx)]) {
            mDespRows.push_back(dr);
            mHistory.push_back({mCustRows[size_t(dr.row)].item, inv.day, mSeq++, HShip, inv.order,
                                inv.seq, dr.qty});
        }
        mInvoices.push_back(inv);
    }
}

void Generator::buildHistory() {
    Rng r = rng(SAdjustments);
    const int n = mScale.items;
    // Every item starts with an opening adjustment; the rest of the rows are spread over items.
    const qint64 have = qint64(mHistory.size());
    const qint64 adjustments = std::max<qint64>(0, mScale.historyRows - have);
    const qint64 openings = std::min<qint64>(n, adjustments);
    mHistory.reserve(size_t(have + adjustments));
    for (int id = 1; id <= openings; ++id)
        mHistory.push_back(
            {id, mItems[size_t(id - 1)].createdDay, INT_MIN + id, HAdjPlus, -1, 0, 0});
    for (qint64 k = openings; k < adjustments; ++k) {
        const int id = r.range(1, n);
        const int from = mItems[size_t(id - 1)].createdDay;
        const int roll = r.below(100);
        const HistKind kind = roll < 55   ? HIssue
                              : roll < 65 ? HReturn
                              : roll < 85 ? HAdjPlus
                                          : HAdjMinus;
        const int text = r.below(int(sizeof(kAdjustTexts) / sizeof(kAdjustTexts[0])) +
                                 int(sizeof(kFirstNames) / sizeof(kFirstNames[0])));
        const int ref = r.chance(40) ? r.range(1000, 99999) : 0;
        mHistory.push_back({id, r.range(from, mDays.span()), mSeq++, quint8(kind), text, ref, 0});
    }

    // Walk each item's rows in date order: quantities of the adjustments follow the stock they
    // meet, and the item's Qty is where the walk ends.
    std::vector<double> received(size_t(n), 0), shipped(size_t(n), 0);
    for (const Hist& h : mHistory) {
        if (h.kind == HRx)
            received[size_t(h.stock - 1)] += h.qty;
        else if (h.kind == HShip)
            shipped[size_t(h.stock - 1)] += h.qty;
    }
    std::vector<int> idx(mHistory.size());
    for (size_t i = 0; i < idx.size(); ++i)
        idx[i] = int(i);
    std::sort(idx.begin(), idx.end(), [this](int x, int y) {
        const Hist& a = mHistory[size_t(x)];
        const Hist& b = mHistory[size_t(y)];
        if (a.stock != b.stock)
            return a.stock < b.stock;
        if (a.day != b.day)
            return a.day < b.day;
        return a.seq < b.seq;
    });
    Rng w = rng(SWalk);
    int current = 0;
    double balance = 0;
    auto close = [this, &current, &balance]() {
        if (current > 0)
            mItems[size_t(current - 1)].qty = balance;
    };
    for (int i : idx) {
        Hist& h = mHistory[size_t(i)];
        if (h.stock != current) {
            close();
            current = h.stock;
            balance = 0;
        }
        switch (h.kind) {
        case HRx:
            balance += h.qty;
            break;
        case HShip: // the invoice writes the shipped quantity as it is: positive
            balance -= h.qty;
            break;
        case HAdjPlus:
            if (h.a < 0) {
                const double short_ = shipped[size_t(h.stock - 1)] - received[size_t(h.stock - 1)];
                h.qty = w.range(1, 100) + std::max(0.0, std::ceil(short_));
            } else {
                h.qty = w.range(1, 20);
            }
            balance += h.qty;
            break;
        case HReturn:
            h.qty = w.range(1, 5);
            balance += h.qty;
            break;
        case HIssue:
        case HAdjMinus: {
            const double want = h.kind == HIssue ? w.range(1, 10) : w.range(1, 5);
            if (balance < 1) { // nothing to take: the row records stock coming back instead
                h.kind = h.kind == HIssue ? HReturn : HAdjPlus;
                h.qty = w.range(1, 5);
                balance += h.qty;
            } else {
                h.qty = -std::min(want, std::floor(balance));
                balance += h.qty;
            }
            break;
        }
        }
    }
    close();

    // Minimum quantities: none on many items, above the stock on some (the shortage views).
    for (Item& it : mItems) {
        const int roll = w.below(100);
        if (roll < 40)
            it.trigger = 0;
        else if (roll < 55)
            it.trigger = std::max(0.0, std::floor(it.qty)) + w.range(1, 20);
        else
            it.trigger = w.range(1, std::max(1, int(it.qty / 2)));
    }

    // Rows go in as the events happened.
    std::sort(mHistory.begin(), mHistory.end(), [](const Hist& a, const Hist& b) {
        if (a.day != b.day)
            return a.day < b.day;
        return a.seq < b.seq;
    });
}

void Generator::buildBasket() {
    Rng r = rng(SBasket);
    std::vector<char> used(size_t(mScale.items) + 1, 0);
    for (int k = 0; k < mScale.basketRows; ++k) {
        int id = 0;
        for (int tries = 0; tries < 50; ++tries) {
            const int c = r.range(1, mScale.items);
            if (!used[size_t(c)] && mItems[size_t(c - 1)].primeSupplier) {
                id = c;
                break;
            }
        }
        if (id == 0)
            continue;
        used[size_t(id)] = 1;
        BasketRow b{id, 0, -1, 1};
        if (r.chance(50)) { // edited in the basket since it was flagged
            b.reqQty = r.range(1, 100);
            b.delDay = r.chance(30) ? -2 : mDays.span() + r.range(7, 60);
            b.orderYN = r.chance(80) ? -1 : 0;
        } else if (r.chance(50)) { // flagged from the supplier part list
            mItems[size_t(id - 1)].buyNow = 1;
        }
        mBasket.push_back(b);
    }
    for (Item& it : mItems)
        if (r.chance(1) && r.chance(30))
            it.buyNow = 1;
}

void Generator::build() {
    stage(QStringLiteral("addresses"));
    buildAddresses();
    stage(QStringLiteral("items"));
    buildItems();
    buildSuppliers();
    stage(QStringLiteral("purchasing"));
    buildPurchasing();
    stage(QStringLiteral("sales"));
    buildSales();
    stage(QStringLiteral("history"));
    buildHistory();
    buildBasket();
}

QString Generator::adjustText(int index) const {
    const int texts = int(sizeof(kAdjustTexts) / sizeof(kAdjustTexts[0]));
    if (index < 0)
        return QStringLiteral("Opening stock");
    if (index < texts)
        return QLatin1String(kAdjustTexts[index]);
    return QLatin1String(kFirstNames[index - texts]);
}

} // namespace gendata

GenDataScale ScaleFor(int items) {
    GenDataScale s;
    const int n = std::max(items, 1);
    auto part = [n](qint64 per100k, int least) {
        return std::max(least, int(qint64(n) * per100k / 100000));
    };
    s.items = n;
    s.suppliers = part(500, 3);
    s.customers = part(2000, 3);
    s.locations = part(10, 2);
    s.miscContacts = part(20, 2);
    s.categories = part(100, 5);
    s.purchaseOrders = part(20000, 1);
    s.purchaseOrderRows = std::max(s.purchaseOrders, part(100000, 1));
    s.historyRows = part(1000000, 10);
    s.customerOrders = part(30000, 1);
    s.basketRows = part(1000, 1);
    s.links = part(20000, 1);
    s.usedInRows = part(50000, 1);
    s.allocationRows = part(5000, 1);
    return s;
}

bool GenerateData(const QString& folder, const GenDataOptions& options, GenDataCounts* counts,
                  QString* error) {
    if (options.items < 1) {
        if (error)
            *error = QStringLiteral("The number of items must be at least 1.");
        return false;
    }
    if (!CreateDataFiles(folder, error))
        return false;
    try {
        gendata::Generator gen(options);
        gen.build();

        Database db = DBEngine::OpenDatabase(QDir(folder).filePath(QStringLiteral("dbqst.dqx")));
        // A new file and one writer: keep pages in memory, and build the indexes once the rows
        // are in rather than row by row.
        db.Execute(QStringLiteral("PRAGMA synchronous=OFF"));
        db.Execute(QStringLiteral("PRAGMA cache_size=-262144"));
        db.Execute(QStringLiteral("PRAGMA temp_store=MEMORY"));
        QStringList indexSql;
        {
            QStringList names;
            Recordset rs = db.OpenRecordset(QStringLiteral(
                "SELECT name, sql FROM sqlite_master WHERE type='index' AND sql IS NOT NULL "
                "ORDER BY name"));
            for (; !rs.Eof(); rs.MoveNext()) {
                names << rs.Fields(0).Text();
                indexSql << rs.Fields(1).Text();
            }
            rs.Close();
            for (const QString& name : names)
                db.Execute(QStringLiteral("DROP INDEX ") + name);
        }
        db.BeginTrans();
        GenDataCounts written;
        gen.write(db, written);
        if (options.progress)
            options.progress(QStringLiteral("indexes"));
        for (const QString& sql : indexSql)
            db.Execute(sql);
        db.CommitTrans();
        if (counts)
            *counts = written;
    } catch (const DbError& e) {
        if (error)
            *error = QStringLiteral("Error %1: %2").arg(e.Number()).arg(e.Description());
        return false;
    }
    return true;
}
