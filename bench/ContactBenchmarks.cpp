// The contact lists: every supplier and every customer, as the list shows them unfiltered.
#include "bench/Benchmarks.h"

#include "contacts/Contacts.h"
#include "foundation/Dialect.h"

static void AddContactBenchmarks(BenchRegistry& registry, const BenchContext&) {
    const struct {
        const char* name;
        quint8 kind;
    } lists[] = {{"contacts.list.suppliers", ContactKind::Suppliers},
                 {"contacts.list.customers", ContactKind::Customers}};
    for (const auto& l : lists) {
        const quint8 kind = l.kind;
        const QString table = ContactListTable(kind);
        registry.add(QString::fromLatin1(l.name),
                     [kind] {
                         ContactListData list;
                         list.mContactKind = kind;
                         LoadContactList(list, QString());
                         Consume(list.mContactCount());
                     },
                     {QStringLiteral("SELECT * from ") + table + QStringLiteral(" WHERE ") + table +
                      QStringLiteral(".CoName ") + LikePrefix(QString()) +
                      QStringLiteral(" ORDER BY CoName")});
    }
}

static const BenchSet contactsSet("contacts", AddContactBenchmarks);
