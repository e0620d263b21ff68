// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/labelfixtures.h"
#include "support/logrecorder.h"

#include "zelmar_label/label_store/dynamiclabelcreators.h"
#include "zelmar_label/label_table/labelloader.h"

#include <QtTest>

#include <memory>
#include <vector>

using label::AddressVerdict;
using label::LabelLoader;

namespace {

Row row(const char *pattern, int type, const char *symbol, const char *last, const char *rule = "", int base = 10)
{
    Row made;
    made.pattern = QLatin1String(pattern);
    made.type = type;
    made.prefixSymbol = QLatin1String(symbol);
    made.end = QLatin1String(last);
    made.multipleRule = QLatin1String(rule);
    made.base = base;
    return made;
}

/// Registers, bits with a separator, in last digits and in one number, an alignment, a pattern with a place that is not
/// fixed, one that only the expression matches, and the templates of two families.
std::unique_ptr<LabelLoader> device(const QString &driver = QStringLiteral("ISO on TCP"))
{
    label::CommandInformationTalbe table;
    for (const Row &one : {row("([Dd])(0*\\d{1,4})", 2, "D", "7999"),
                           row("([Dd])(0*\\d{1,4}\\.[0-9A-Fa-f])", 0, "D", "7999", "dot-hex:r_D"),
                           row("([Ww])(0*[0-9A-Fa-f]{1,4})", 2, "W", "1fff", "", 16),
                           row("([Mm])(0*\\d{1,4})", 0, "M", "7679", "union-dec:rm16_K4M"),
                           row("([Kk]4[Mm])(0*\\d{1,4})", 2, "K4M", "7664", "m16"),
                           row("([Rr])(\\d{1,4}(?:0\\d|1[0-5]))", 0, "R", "9999", "last2-dec:r_R"),
                           row("([Tt][Nn]?)(0*\\d{1,3})", 2, "TN", "255"), row("(S|SM)(M?\\d+)", 2, "S", "99"),
                           row("(Q\\b)(\\d+)|(QB)(\\d+)", 2, "QB", "99"), row("(L)(\\d{4})", 2, "L", "99"),
                           row("DB_DBW", 2, "DB", "65534"), row("DB_DBX", 0, "DB", "65535", "dot-oct:r_DB")})
        table.addCommandFormatter(one.formatter());
    return std::make_unique<LabelLoader>(table, label::createDynamicLabelCreator(driver));
}

QString written(const AddressVerdict &verdict)
{
    return QStringLiteral("row %1 station %2 number %3 bit %4 range %5+%6%7%8")
        .arg(verdict.row)
        .arg(verdict.station)
        .arg(verdict.number)
        .arg(verdict.bit)
        .arg(verdict.rangeStart)
        .arg(verdict.rangeSize)
        .arg(verdict.isAccepted ? QStringLiteral(" accepted") : QString(),
             verdict.isNewMember ? QStringLiteral(" new") : QString());
}

} // namespace

class TestAddressJudging : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void verdicts_data();
    void verdicts();
    void aListIsJudgedLikeItsAddresses();
    void judgingAddsNoRows();
    void aKnownMemberIsJudgedByItsRow();
    void canonicalForms_data();
    void canonicalForms();
    void equalAddressesHaveEqualForms();
};

void TestAddressJudging::verdicts_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("verdict");

    const auto refused = QStringLiteral("row -1 station -1 number -1 bit -1 range -1+0");
    QTest::newRow("register") << "D100" << -1 << "row 0 station -1 number 100 bit -1 range 1+3 accepted";
    QTest::newRow("zeros") << "d0100" << -1 << "row 0 station -1 number 100 bit -1 range 1+4 accepted";
    QTest::newRow("station") << "3-D100" << -1 << "row 0 station 3 number 100 bit -1 range 3+3 accepted";
    QTest::newRow("no station number") << "x-D1" << -1 << "row 0 station 0 number 1 bit -1 range 3+1 accepted";
    QTest::newRow("beyond the limits") << "D8000" << -1 << refused;
    QTest::newRow("refused with a station") << "3-D8000" << -1 << "row -1 station 3 number -1 bit -1 range -1+0";
    QTest::newRow("bit") << "D100.f" << -1 << "row 1 station -1 number 100 bit 15 range 1+5 accepted";
    QTest::newRow("bit where registers are wanted") << "D100.f" << 2 << refused;
    QTest::newRow("register where bits are wanted") << "D100" << 0 << refused;
    QTest::newRow("hexadecimal") << "W1fF" << -1 << "row 2 station -1 number 511 bit -1 range 1+3 accepted";
    QTest::newRow("bit in one number") << "M33" << -1 << "row 3 station -1 number 33 bit 1 range 1+2 accepted";
    QTest::newRow("aligned") << "K4M32" << -1 << "row 4 station -1 number 32 bit -1 range 3+2 accepted";
    QTest::newRow("not aligned") << "K4M33" << -1 << refused;
    QTest::newRow("last digits") << "R1215" << -1 << "row 5 station -1 number 12 bit 15 range 1+4 accepted";
    QTest::newRow("short symbol") << "T7" << -1 << "row 6 station -1 number 7 bit -1 range 1+1 accepted";
    QTest::newRow("long symbol") << "tn7" << -1 << "row 6 station -1 number 7 bit -1 range 2+1 accepted";
    QTest::newRow("longest group") << "SM12" << -1 << "row 7 station -1 number 12 bit -1 range 2+2 accepted";
    QTest::newRow("shorter group") << "S12" << -1 << "row 7 station -1 number 12 bit -1 range 1+2 accepted";
    QTest::newRow("by the expression") << "QB12" << -1 << "row 8 station -1 number -1 bit -1 range -1+0 accepted";
    QTest::newRow("a template's name") << "DB_DBW" << -1 << "row 10 station -1 number -1 bit -1 range -1+0 accepted";
    QTest::newRow("new member") << "DB7.DBW4" << -1 << "row 10 station -1 number 4 bit -1 range 7+1 accepted new";
    QTest::newRow("new bit") << "DB7.DBX4.6" << 0 << "row 11 station -1 number 4 bit 6 range 7+3 accepted new";
    QTest::newRow("new member of the other type")
        << "DB7.DBW4" << 0 << "row 10 station -1 number 4 bit -1 range 7+1 new";
    QTest::newRow("new member beyond its limits")
        << "DB7.DBW70000" << -1 << "row 10 station -1 number 70000 bit -1 range 7+5 new";
    QTest::newRow("no member") << "DB2048.DBW4" << -1 << refused;
    QTest::newRow("new member with a station") << "3-DB7.DBW4" << -1 << "row -1 station 3 number -1 bit -1 range -1+0";
    QTest::newRow("empty") << "" << -1 << refused;
    QTest::newRow("other digits") << QString::fromUtf8("D\u0661") << -1
                                  << "row 0 station -1 number -1 bit -1 range 1+1 accepted";
}

void TestAddressJudging::verdicts()
{
    QFETCH(QString, address);
    QFETCH(int, type);
    const LogRecorder log;
    const auto loader = device();
    const AddressVerdict verdict = loader->judge(address, type);
    QTEST(written(verdict), "verdict");
    if (verdict.isNewMember)
        return;
    const int accepted = loader->addressValidation(address, type);
    QCOMPARE(verdict.row, accepted);
    if (accepted < 0)
        return;
    const QString deviceAddress = address.section(QLatin1Char('-'), -1);
    QCOMPARE(loader->addressRange(accepted, deviceAddress), verdict.number);
    QCOMPARE(loader->bitOffset(accepted, deviceAddress), verdict.bit);
}

void TestAddressJudging::aListIsJudgedLikeItsAddresses()
{
    const LogRecorder log;
    const auto loader = device();
    const QStringList addresses = {QStringLiteral("D1"), QStringLiteral("D8000"), QStringLiteral("3-M17"),
                                   QStringLiteral("DB1.DBW0"), QString()};
    std::vector<AddressVerdict> verdicts(static_cast<std::size_t>(addresses.size()));
    loader->judge(addresses, -1, verdicts.data());
    for (int index = 0; index < addresses.size(); ++index)
        QCOMPARE(written(verdicts[static_cast<std::size_t>(index)]), written(loader->judge(addresses.at(index), -1)));
}

void TestAddressJudging::judgingAddsNoRows()
{
    const LogRecorder log;
    const auto loader = device();
    const int rows = loader->countBitTypes();
    QVERIFY(loader->judge(QStringLiteral("DB1.DBW0")).isNewMember);
    QVERIFY(!loader->canonicalAddress(QStringLiteral("DB1.DBW00")).isEmpty());
    QCOMPARE(loader->countBitTypes(), rows);
}

void TestAddressJudging::aKnownMemberIsJudgedByItsRow()
{
    const LogRecorder log;
    const auto loader = device();
    const QString address = QStringLiteral("DB1.DBW12");
    const int row = loader->addressValidation(address, 2);
    QCOMPARE(written(loader->judge(address)),
             QStringLiteral("row %1 station -1 number 12 bit -1 range 7+2 accepted").arg(row));
    // A wrong type adds the row again; the first one stays the answer.
    QCOMPARE(loader->addressValidation(address, 0), row + 1);
    QCOMPARE(loader->addressValidation(address, 0), row + 2);
    QCOMPARE(loader->judge(address).row, row);
    QCOMPARE(loader->getAllMatchedIndex(address, -1), (QList<int>{row, row + 1, row + 2}));
    QCOMPARE(loader->getAllMatchedIndex(QStringLiteral("DB1"), -1), (QList<int>{row, row + 1, row + 2}));
}

void TestAddressJudging::canonicalForms_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("form");

    QTest::newRow("as it is") << "D100"
                              << "D100";
    QTest::newRow("letter and zeros") << "d0100"
                                      << "D100";
    QTest::newRow("zero") << "d000"
                          << "D0";
    QTest::newRow("station") << "03-d0100"
                             << "3-D100";
    QTest::newRow("bit") << "d007.F"
                         << "D7.f";
    QTest::newRow("hexadecimal") << "w00FF"
                                 << "Wff";
    QTest::newRow("one number") << "m016"
                                << "M16";
    QTest::newRow("last digits") << "r1201"
                                 << "R1201";
    QTest::newRow("other symbol") << "t07"
                                  << "TN7";
    QTest::newRow("needed zeros") << "L0007"
                                  << "L0007";
    QTest::newRow("new member") << "DB7.DBW004"
                                << "DB7.DBW4";
    QTest::newRow("template") << "DB_DBW"
                              << "DB_DBW";
    QTest::newRow("refused") << "D8000"
                             << "";
    QTest::newRow("unknown") << "Foo"
                             << "";
}

void TestAddressJudging::canonicalForms()
{
    QFETCH(QString, address);
    const LogRecorder log;
    const auto loader = device();
    const QString form = loader->canonicalAddress(address);
    QTEST(form, "form");
    if (form.isEmpty())
        return;
    const AddressVerdict before = loader->judge(address);
    const AddressVerdict after = loader->judge(form);
    QCOMPARE(after.row, before.row);
    QCOMPARE(after.station, before.station);
    QCOMPARE(after.number, before.number);
    QCOMPARE(after.bit, before.bit);
    QCOMPARE(loader->canonicalAddress(form), form);
}

void TestAddressJudging::equalAddressesHaveEqualForms()
{
    const LogRecorder log;
    const auto loader = device();
    for (const char *const front : {"T", "t", "TN", "Tn", "tN", "tn"}) {
        for (const char *const number : {"7", "07", "007", "0000007"})
            QCOMPARE(loader->canonicalAddress(QLatin1String(front) + QLatin1String(number)), QStringLiteral("TN7"));
    }
}

QTEST_GUILESS_MAIN(TestAddressJudging)

#include "tst_addressjudging.moc"
