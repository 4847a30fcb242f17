#include "foundation/Clock.h"
#include "foundation/Dialect.h"
#include "foundation/Globals.h"
#include "foundation/Helpers.h"
#include "tests/support/TestSupport.h"

#include <QTest>

namespace {

// A number, a mask and the text it must give.
struct Masked {
    double value;
    const char* mask;
    const char* text;
};

void expectFormatted(const QList<Masked>& cases, QString (*format)(double, const QString&)) {
    for (const Masked& c : cases)
        QCOMPARE(format(c.value, QString::fromLatin1(c.mask)), QString::fromUtf8(c.text));
}

QString formatNumber(double v, const QString& mask) {
    return FormatNumber(v, mask);
}
QString sqlNumber(double v, const QString& mask) {
    return SqlNumber(v, mask);
}

} // namespace

class TestHelpers : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { UseTestLocale(); }

    void parseLocaleNumber() {
        QCOMPARE(gDecimalSep, QLatin1Char('.'));
        QCOMPARE(ParseLocaleNumber(QStringLiteral("1,234.50")), 1234.5);
        QCOMPARE(ParseLocaleNumber(QStringLiteral("abc")), 0.0);
        QCOMPARE(ParseLocaleNumber(QStringLiteral(" -7.25 ")), -7.25);
        QCOMPARE(ParseLocaleNumber(QVariant()), 0.0);
        LocaleScope de(QLocale(QLocale::German, QLocale::Germany));
        QCOMPARE(gDecimalSep, QLatin1Char(','));
        QCOMPARE(ParseLocaleNumber(QStringLiteral("1.234,50")), 1234.5);
        // On a comma locale every "." is taken for a group separator.
        QCOMPARE(ParseLocaleNumber(QStringLiteral("12.5")), 125.0);
    }

    // Halves round away from zero; a whole result drops its decimals on screen.
    void masksOnPointLocale() {
        expectFormatted({{2.0, "0.00###", "2"},
                         {5.5, "0.0#", "5.5"},
                         {2.345, "0.0#", "2.35"},
                         {2.675, "0.00", "2.68"},
                         {-1.005, "0.00", "-1.01"},
                         {0.004, "0.0#", "0"},
                         {-0.004, "0.00", "0"},
                         {9.995, "0.00", "10"},
                         {0.123456, "#0.00###", "0.12346"},
                         {3.14159, "#0.0#", "3.14"},
                         {1.100001, "0.00###", "1.10"},
                         {1234.5, "#,##0.00", "1,234.50"},
                         {1234.0, "#,##0.00", "1,234"},
                         {1234567.891, "#,###,##0.00", "1,234,567.89"},
                         {1234.56789, "#,##0.00###", "1,234.56789"},
                         {12.0, "0000", "0012"}},
                        formatNumber);
        expectFormatted({{2.0, "0.00", "2"}, {0.125, "0.00", "0.13"}}, sqlNumber);
        QCOMPARE(FormatNumber(QStringLiteral("1,234.5"), QStringLiteral("0.00")),
                 QStringLiteral("1234.50"));
        QCOMPARE(SqlNumber(QStringLiteral("x"), QStringLiteral("0.0#")), QStringLiteral("0"));
        // Format keeps the mask's decimals on whole numbers.
        QCOMPARE(Format(5, QStringLiteral("000")), QStringLiteral("005"));
        QCOMPARE(Format(2.5, QStringLiteral("00")), QStringLiteral("03"));
        QCOMPARE(Format(5, QStringLiteral("0.0#")), QStringLiteral("5.0"));
        QCOMPARE(Format(1e-7, QStringLiteral("0.00")), QStringLiteral("0.00"));
        QCOMPARE(Format(123456789012.5, QStringLiteral("0")), QStringLiteral("123456789013"));
    }

    void masksOnCommaLocale() {
        LocaleScope de(QLocale(QLocale::German, QLocale::Germany));
        expectFormatted({{1234.5, "#,##0.00", "1.234,50"}, {2.345, "0.0#", "2,35"}}, formatNumber);
        QCOMPARE(FormatNumber(QStringLiteral("1.234,5"), QStringLiteral("0.00###")),
                 QStringLiteral("1234,50"));
        // Statements always carry "." and no grouping, whatever the locale.
        expectFormatted({{1234.5, "#,##0.00", "1234.50"}}, sqlNumber);
        QCOMPARE(SqlNumber(QStringLiteral("1.234,5"), QStringLiteral("0.00###")),
                 QStringLiteral("1234.50"));
        QCOMPARE(SqlNumber(QStringLiteral("0,125"), QStringLiteral("0.00")),
                 QStringLiteral("0.13"));
    }

    void dates() {
        QCOMPARE(SqlDate(QDate(2024, 5, 1)), QStringLiteral("2024-05-01"));
        QCOMPARE(SqlDateLiteral(QDate()), QStringLiteral("'2040-01-01'"));
        // Only dates after 2000 and before 2040 are shown.
        QCOMPARE(ShowDate(QVariant(QStringLiteral("2039-12-31"))), QStringLiteral("31/12/2039"));
        QCOMPARE(ShowDate(QVariant(QStringLiteral("2001-01-01"))), QStringLiteral("01/01/2001"));
        QCOMPARE(ShowDate(QVariant(QStringLiteral("2000-06-01"))), QString());
        QCOMPARE(ShowDate(QVariant(QStringLiteral("2040-01-01"))), QString());
        QCOMPARE(ShowDate(QVariant(QStringLiteral("not a date"))), QString());
        QCOMPARE(SqlDateOrFar(QStringLiteral("01/05/2024")), QStringLiteral("2024-05-01"));
        QCOMPARE(SqlDateOrFar(QStringLiteral("")), QStringLiteral("2040-01-01"));
        QCOMPARE(SqlDateOrFar(QStringLiteral("31/02/2024")), QStringLiteral("2040-01-01"));
        SetToday(QDate(2030, 2, 3));
        QCOMPARE(Today(), QDate(2030, 2, 3));
        SetToday(QDate());
        QCOMPARE(Today(), QDate::currentDate());
    }

    void textAndKeys() {
        QCOMPARE(ApostropheOut(QStringLiteral("O'Brien's")), QStringLiteral("O`Brien`s"));
        QCOMPARE(SqlText(QStringLiteral("it's")), QStringLiteral("'it`s'"));
        QCOMPARE(NumericKey(QStringLiteral("12"), '.'), int('.'));
        QCOMPARE(NumericKey(QStringLiteral("1.2"), '.'), 0);
        QCOMPARE(NumericKey(QStringLiteral("1.2"), 8), 8);
        QCOMPARE(NumericKey(QString(), 'a'), 0);
        QCOMPARE(NumericKey(QString(), '-'), 0);
        {
            LocaleScope de(QLocale(QLocale::German, QLocale::Germany));
            QCOMPARE(NumericKey(QStringLiteral("1"), ','), int(','));
            QCOMPARE(NumericKey(QStringLiteral("1,5"), ','), 0);
            QCOMPARE(NumericKey(QStringLiteral("1"), '.'), 0);
        }
        QCOMPARE(AlphaNumericKey('a', true), int('A'));
        QCOMPARE(AlphaNumericKey('a', false), int('a'));
        QCOMPARE(AlphaNumericKey('7', true), int('7'));
        QCOMPARE(AlphaNumericKey('-', true), 0);
        QCOMPARE(AlphaNumericKey(' ', true), 0);
        QCOMPARE(AlphaNumericKey(8, true), 8);
        QCOMPARE(LikePrefix(QStringLiteral("a%b_c\\")),
                 QStringLiteral("LIKE 'a\\%b\\_c\\\\%' ESCAPE '\\'"));
        QCOMPARE(LikeContains(QStringLiteral("x'y")), QStringLiteral("LIKE '%x`y%' ESCAPE '\\'"));
    }

    void val() {
        QCOMPARE(Val(QStringLiteral("12abc")), 12.0);
        QCOMPARE(Val(QStringLiteral(" 1 2 3")), 123.0);
        QCOMPARE(Val(QStringLiteral("-3.5e2x")), -350.0);
        QCOMPARE(Val(QStringLiteral("1.2.3")), 1.2);
        QCOMPARE(Val(QStringLiteral("2e")), 2.0);
        QCOMPARE(Val(QStringLiteral("abc")), 0.0);
    }

    void pauseAcrossMidnight() {
        // A clock that moves 100 ms per reading, starting just before midnight.
        int t = 86'400'000 - 200;
        int readings = 0;
        SetTimeOfDaySource([&] {
            ++readings;
            const int now = t;
            t = (t + 100) % 86'400'000;
            return now;
        });
        Pause(500);
        SetTimeOfDaySource({});
        // Ends, but late: the wait started over at midnight (2 readings before it, 6 after).
        QVERIFY(readings >= 8);
        QVERIFY(readings < 20);
    }
};

QTEST_GUILESS_MAIN(TestHelpers)
#include "test_helpers.moc"
