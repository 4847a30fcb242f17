#include "foundation/Clock.h"
#include "foundation/Dialect.h"
#include "foundation/Globals.h"
#include "foundation/Helpers.h"
#include "tests/support/TestSupport.h"

#include <QTest>

class TestHelpers : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { UseTestLocale(); }

    void parseLocaleNumber() {
        QCOMPARE(gDecimalSep, QLatin1Char('.'));
        QCOMPARE(ParseLocaleNumber(QStringLiteral("1,234.50")), 1234.5);
        QCOMPARE(ParseLocaleNumber(QStringLiteral("")), 0.0);
        QCOMPARE(ParseLocaleNumber(QStringLiteral("abc")), 0.0);
        QCOMPARE(ParseLocaleNumber(QStringLiteral(" -7.25 ")), -7.25);
        QCOMPARE(ParseLocaleNumber(QVariant()), 0.0);
        QCOMPARE(ParseLocaleNumber(QVariant(3.5)), 3.5);
        LocaleScope de(QLocale(QLocale::German, QLocale::Germany));
        QCOMPARE(gDecimalSep, QLatin1Char(','));
        QCOMPARE(ParseLocaleNumber(QStringLiteral("1.234,50")), 1234.5);
        // On a comma locale every "." is taken for a group separator.
        QCOMPARE(ParseLocaleNumber(QStringLiteral("12.5")), 125.0);
    }

    void masksOnPointLocale() {
        QCOMPARE(FormatNumber(2.0, QStringLiteral("0.00###")), QStringLiteral("2"));
        QCOMPARE(FormatNumber(5.0, QStringLiteral("0.0#")), QStringLiteral("5"));
        QCOMPARE(FormatNumber(5.5, QStringLiteral("0.0#")), QStringLiteral("5.5"));
        QCOMPARE(FormatNumber(2.345, QStringLiteral("0.0#")), QStringLiteral("2.35"));
        QCOMPARE(FormatNumber(2.675, QStringLiteral("0.00")), QStringLiteral("2.68"));
        QCOMPARE(FormatNumber(-1.005, QStringLiteral("0.00")), QStringLiteral("-1.01"));
        QCOMPARE(FormatNumber(0.004, QStringLiteral("0.0#")), QStringLiteral("0"));
        QCOMPARE(FormatNumber(-0.004, QStringLiteral("0.00")), QStringLiteral("0"));
        QCOMPARE(FormatNumber(9.995, QStringLiteral("0.00")), QStringLiteral("10"));
        QCOMPARE(FormatNumber(0.123456, QStringLiteral("#0.00###")), QStringLiteral("0.12346"));
        QCOMPARE(FormatNumber(3.14159, QStringLiteral("#0.0#")), QStringLiteral("3.14"));
        QCOMPARE(FormatNumber(1.100001, QStringLiteral("0.00###")), QStringLiteral("1.10"));
        QCOMPARE(FormatNumber(1234.5, QStringLiteral("#,##0.00")), QStringLiteral("1,234.50"));
        QCOMPARE(FormatNumber(1234.0, QStringLiteral("#,##0.00")), QStringLiteral("1,234"));
        QCOMPARE(FormatNumber(1234567.891, QStringLiteral("#,###,##0.00")),
                 QStringLiteral("1,234,567.89"));
        QCOMPARE(FormatNumber(1234.56789, QStringLiteral("#,##0.00###")),
                 QStringLiteral("1,234.56789"));
        QCOMPARE(FormatNumber(QStringLiteral("1,234.5"), QStringLiteral("0.00")),
                 QStringLiteral("1234.50"));
        QCOMPARE(Format(12, QStringLiteral("0000")), QStringLiteral("0012"));
        QCOMPARE(FormatNumber(12.0, QStringLiteral("0000")), QStringLiteral("0012"));
        QCOMPARE(Format(5, QStringLiteral("000")), QStringLiteral("005"));
        QCOMPARE(Format(7, QStringLiteral("00")), QStringLiteral("07"));
        QCOMPARE(Format(2.5, QStringLiteral("00")), QStringLiteral("03"));
        QCOMPARE(Format(5, QStringLiteral("0.0#")), QStringLiteral("5.0"));
        QCOMPARE(Format(1e-7, QStringLiteral("0.00")), QStringLiteral("0.00"));
        QCOMPARE(Format(123456789012.5, QStringLiteral("0")), QStringLiteral("123456789013"));
    }

    void masksOnCommaLocale() {
        LocaleScope de(QLocale(QLocale::German, QLocale::Germany));
        QCOMPARE(FormatNumber(1234.5, QStringLiteral("#,##0.00")), QStringLiteral("1.234,50"));
        QCOMPARE(FormatNumber(2.345, QStringLiteral("0.0#")), QStringLiteral("2,35"));
        QCOMPARE(FormatNumber(QStringLiteral("1.234,5"), QStringLiteral("0.00###")),
                 QStringLiteral("1234,50"));
        // Statements always carry "." and no grouping, whatever the locale.
        QCOMPARE(SqlNumber(1234.5, QStringLiteral("0.00")), QStringLiteral("1234.50"));
        QCOMPARE(SqlNumber(QStringLiteral("1.234,5"), QStringLiteral("0.00###")),
                 QStringLiteral("1234.50"));
        QCOMPARE(SqlNumber(QStringLiteral("0,125"), QStringLiteral("0.00")),
                 QStringLiteral("0.13"));
        QCOMPARE(SqlNumber(QStringLiteral("2"), QStringLiteral("0.0#")), QStringLiteral("2"));
        QCOMPARE(SqlNumber(1234.5, QStringLiteral("#,##0.00")), QStringLiteral("1234.50"));
    }

    void sqlNumberOnPointLocale() {
        QCOMPARE(SqlNumber(2.0, QStringLiteral("0.00")), QStringLiteral("2"));
        QCOMPARE(SqlNumber(0.125, QStringLiteral("0.00")), QStringLiteral("0.13"));
        QCOMPARE(SqlNumber(QStringLiteral(""), QStringLiteral("0.0#")), QStringLiteral("0"));
        QCOMPARE(SqlNumber(QStringLiteral("x"), QStringLiteral("0.0#")), QStringLiteral("0"));
    }

    void dates() {
        QCOMPARE(SqlDate(QDate(2024, 5, 1)), QStringLiteral("2024-05-01"));
        QCOMPARE(SqlDateLiteral(QDate(2024, 5, 1)), QStringLiteral("'2024-05-01'"));
        QCOMPARE(SqlDateLiteral(QDate()), QStringLiteral("'2040-01-01'"));
        QCOMPARE(ShowDate(QVariant(QStringLiteral("2039-12-31"))), QStringLiteral("31/12/2039"));
        QCOMPARE(ShowDate(QVariant(QStringLiteral("2001-01-01"))), QStringLiteral("01/01/2001"));
        QCOMPARE(ShowDate(QVariant(QStringLiteral("2000-06-01"))), QString());
        QCOMPARE(ShowDate(QVariant(QStringLiteral("2040-01-01"))), QString());
        QCOMPARE(ShowDate(QVariant(QStringLiteral("not a date"))), QString());
        QCOMPARE(ShowDate(QVariant()), QString());
        QCOMPARE(SqlDateOrFar(QStringLiteral("01/05/2024")), QStringLiteral("2024-05-01"));
        QCOMPARE(SqlDateOrFar(QStringLiteral("2024-5-1")), QStringLiteral("2024-05-01"));
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
        QCOMPARE(NumericKey(QStringLiteral("12"), '5'), int('5'));
        QCOMPARE(NumericKey(QStringLiteral("12"), '.'), int('.'));
        QCOMPARE(NumericKey(QStringLiteral("1.2"), '.'), 0);
        QCOMPARE(NumericKey(QStringLiteral("1.2"), 8), 8);
        QCOMPARE(NumericKey(QString(), 'a'), 0);
        QCOMPARE(NumericKey(QString(), '-'), 0);
        QCOMPARE(NumericKey(QString(), ','), 0);
        {
            LocaleScope de(QLocale(QLocale::German, QLocale::Germany));
            QCOMPARE(NumericKey(QStringLiteral("1"), ','), int(','));
            QCOMPARE(NumericKey(QStringLiteral("1,5"), ','), 0);
            QCOMPARE(NumericKey(QStringLiteral("1"), '.'), 0);
        }
        QCOMPARE(AlphaNumericKey('a', true), int('A'));
        QCOMPARE(AlphaNumericKey('a', false), int('a'));
        QCOMPARE(AlphaNumericKey('Z', false), int('Z'));
        QCOMPARE(AlphaNumericKey('7', true), int('7'));
        QCOMPARE(AlphaNumericKey('-', true), 0);
        QCOMPARE(AlphaNumericKey(' ', true), 0);
        QCOMPARE(AlphaNumericKey(8, true), 8);
    }

    void val() {
        QCOMPARE(Val(QStringLiteral("12abc")), 12.0);
        QCOMPARE(Val(QStringLiteral(" 1 2 3")), 123.0);
        QCOMPARE(Val(QStringLiteral("-3.5e2x")), -350.0);
        QCOMPARE(Val(QStringLiteral("1.2.3")), 1.2);
        QCOMPARE(Val(QStringLiteral("2e")), 2.0);
        QCOMPARE(Val(QStringLiteral("abc")), 0.0);
        QCOMPARE(Val(QString()), 0.0);
        QCOMPARE(Val(QStringLiteral("0007")), 7.0);
    }

    void likeEscapes() {
        QCOMPARE(LikePrefix(QStringLiteral("a%b_c\\")),
                 QStringLiteral("LIKE 'a\\%b\\_c\\\\%' ESCAPE '\\'"));
        QCOMPARE(LikeContains(QStringLiteral("x'y")), QStringLiteral("LIKE '%x`y%' ESCAPE '\\'"));
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
