// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/shippeddriverstest.h"
#include "support/shippedfiles.h"
#include "zelmar_label/address_grammar/multiplerule.h"
#include "zelmar_label/label_table/labelloader.h"

#include <QDir>
#include <QFile>
#include <QHash>
#include <QRegExp>
#include <QRegularExpression>
#include <QTest>

using namespace label;
using namespace shipped;

namespace {

/// The "driver" setting of a driver file.
QString nameInFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    const QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
    const QStringList settings = lines.filter(QRegularExpression(QStringLiteral("^driver\t")));
    return settings.value(0).section(QLatin1Char('\t'), 1);
}

/// The names of the patterns that a driver's creator needs.
QStringList familiesOf(const QString &driver)
{
    const QStringList dataBlocks = {QStringLiteral("DB_DBX"), QStringLiteral("DB_DBX_BYTE"), QStringLiteral("DB_DBB"),
                                    QStringLiteral("DB_DBD"), QStringLiteral("DB_DBW")};
    QStringList dataFiles;
    for (const char *name : {"BINARY",      "COUNTER",    "FLOAT",       "NUMBER",     "TIMER",      "BINARY_BIT",
                             "COUNTER_BIT", "NUMBER_BIT", "TIMER_BIT",   "TIMER_EN",   "TIMER_TT",   "TIMER_DN",
                             "TIMER_ACC",   "TIMER_PRE",  "COUNTER_CU",  "COUNTER_CD", "COUNTER_DN", "COUNTER_OV",
                             "COUNTER_UA",  "COUNTER_UN", "COUNTER_ACC", "COUNTER_PRE"})
        dataFiles.append(QLatin1String(name));
    QStringList parameters;
    for (const char *name : {"USIGN32_NO_IDX_BIT", "USIGN16_NO_IDX_BIT", "USIGN8_NO_IDX_BIT", "STRING_NO",
                             "FLOAT32_NO_IDX", "INT32Q16_NO_IDX", "INT32_NO_IDX", "USIGN32_NO_IDX", "FIXPT16_NO_IDX",
                             "INT16_NO_IDX", "USIGN16_NO_IDX", "INT8_NO_IDX", "USIGN8_NO_IDX"})
        parameters.append(QLatin1String(name));
    const QHash<QString, QStringList> families = {
        {QStringLiteral("ISO on TCP"), dataBlocks},
        {QStringLiteral("Simatic S7-300 MPI"), dataBlocks},
        {QStringLiteral("MicroLogix DF1 RS232"), dataFiles},
        {QStringLiteral("MicroLogix Ethernet"), dataFiles},
        {QStringLiteral("PLC5 DF1 CRC"), dataFiles},
        {QStringLiteral("LustBus ServoC/CDE Series"), parameters},
        {QStringLiteral("FX5U Ethernet"), {QStringLiteral("MOD_ACCESS_DEV")}},
    };
    return families.value(driver);
}

} // namespace

class ShippedDriversRows : public ShippedDriversTest
{
    Q_OBJECT

private Q_SLOTS:
    void databaseHoldsExactlyTheDrivers();
    void rowsAreSound_data() { driverRows(); }
    void rowsAreSound();
    void rulesAreSound_data() { driverRows(); }
    void rulesAreSound();
    void limitsAreReached_data() { driverRows(); }
    void limitsAreReached();
    void familiesAreWhole_data() { driverRows(); }
    void familiesAreWhole();
};

void ShippedDriversRows::databaseHoldsExactlyTheDrivers()
{
    QStringList names;
    for (const ShippedDriver &one : qAsConst(m_drivers))
        names.append(one.name);
    names.sort();
    QStringList wanted;
    const QDir folder(sourceFolder());
    const QStringList files = folder.entryList({QStringLiteral("*.tsv")}, QDir::Files);
    for (const QString &file : files)
        wanted.append(nameInFile(folder.filePath(file)));
    wanted.sort();
    QCOMPARE(names, wanted);
    // Projects use these names.
    const QStringList promised = {QStringLiteral("ADS Index"),           QStringLiteral("FAM3 Ethernet"),
                                  QStringLiteral("FP Serial"),           QStringLiteral("FX3U Serial"),
                                  QStringLiteral("FX5U Ethernet"),       QStringLiteral("ISO on TCP"),
                                  QStringLiteral("KV Ethernet"),         QStringLiteral("LustBus ServoC/CDE Series"),
                                  QStringLiteral("MELSEC Q Ethernet"),   QStringLiteral("MicroLogix DF1 RS232"),
                                  QStringLiteral("MicroLogix Ethernet"), QStringLiteral("Modbus RTU"),
                                  QStringLiteral("Modbus TCP"),          QStringLiteral("OMRON FINS"),
                                  QStringLiteral("PLC5 DF1 CRC"),        QStringLiteral("S7 200 PPI"),
                                  QStringLiteral("Simatic S7-300 MPI")};
    for (const QString &name : promised)
        QVERIFY2(names.contains(name), qPrintable(name));
}

void ShippedDriversRows::rowsAreSound()
{
    const ShippedDriver &tested = driver();
    Complaints complaints;
    QVERIFY(tested.blockSize > 0);
    QVERIFY(tested.bitBlockSize > 0);
    QVERIFY(!tested.rows.isEmpty());
    QCOMPARE(labelOf(tested.name)->getBlockCommandMaxSize(), tested.blockSize);
    QCOMPARE(labelOf(tested.name)->getBitCommandMaxSize(), tested.bitBlockSize);
    for (const DeviceRow &row : tested.rows) {
        const QRegExp pattern(row.pattern);
        complaints.expect(pattern.isValid(), row.description, QStringLiteral("invalid pattern"));
        // The creators' patterns have the number in group 2.
        complaints.expect(row.group >= 1 && row.group <= (row.isTemplate() ? 2 : pattern.captureCount()),
                          row.description, QStringLiteral("no such group"));
        bool isStart = false;
        bool isEnd = false;
        const int start = row.start.toInt(&isStart, row.base);
        const int end = row.end.toInt(&isEnd, row.base);
        complaints.expect(isStart && isEnd && 0 <= start && start <= end, row.description,
                          QStringLiteral("limits %1 to %2").arg(row.start, row.end));
        const int most = row.isBit() ? tested.bitBlockSize : tested.blockSize;
        complaints.expect(row.blocksize >= 1 && row.blocksize <= most, row.description,
                          QStringLiteral("block size %1").arg(row.blocksize));
        complaints.expect(row.dataSize >= 1, row.description, QStringLiteral("data size"));
        complaints.expect(row.isTemplate() || !row.pattern.contains(QRegExp(QStringLiteral("[d\\]]\\+"))),
                          row.description, QStringLiteral("digits without a bound: numbers that overflow would pass"));
    }
    VERIFY_NONE(complaints);
}

void ShippedDriversRows::rulesAreSound()
{
    const QDir scripts(QCoreApplication::applicationDirPath() + QLatin1String("/scripts"));
    const QRegExp compound(QStringLiteral("(\\w+)-(\\w+)(:\\w*)"));
    Complaints complaints;
    for (const DeviceRow &row : driver().rows) {
        const QString fileName = row.rule.mid(2);
        const bool namesFile = !fileName.isEmpty() && scripts.exists(fileName);
        complaints.expectEqual(namesFile, row.isScripted(), row.description, "whether the rule names a script");
        if (!row.isBit() || row.isScripted())
            continue;
        complaints.expect(compound.exactMatch(row.rule), row.description,
                          QStringLiteral("a bit row without a compound rule has no number"));
        const MultipleRule rule(row.rule);
        complaints.expect(rule.isSplit() || rule.isOnePart(), row.description, QStringLiteral("unknown separator"));
        if (!rule.isSplit())
            continue;
        // A run tests the bit against the limits.
        const int lastBit = rule.bitRadix() == 32 ? 31 : 15;
        complaints.expect(row.start == QLatin1String("0") && row.end.toInt(nullptr, row.base) >= lastBit,
                          row.description, QStringLiteral("limits that leave out bits"));
    }
    VERIFY_NONE(complaints);
}

void ShippedDriversRows::limitsAreReached()
{
    const ShippedDriver &tested = driver();
    LabelLoader &label = *labelOf(tested.name);
    Complaints complaints;
    for (int i = 0; i < tested.rows.size(); ++i) {
        const DeviceRow &row = tested.rows.at(i);
        const MultipleRule rule(row.rule);
        // Symbol and number of a script's row may be no address; its samples reach the limits.
        if (row.isTemplate() || row.isScripted())
            continue;
        const int start = row.start.toInt(nullptr, row.base);
        const int end = row.end.toInt(nullptr, row.base);
        if (row.isBit() && rule.isSplit()) {
            const QString symbol = label.deviceTypesTable().formatterAt(i)->convertedRegisterCommandSymbol();
            const QString address = symbol + QString::number(end, row.base);
            const int found = label.addressValidation(address, registerRow);
            complaints.expectEqual(label.addressRange(found, address), end, row.description,
                                   "register of the last bit");
            continue;
        }
        const int filter = filterOf(row.type);
        for (const int number : {start, end}) {
            const QString address = row.symbol + QString::number(number, row.base);
            const int found = label.addressValidation(address, filter);
            complaints.expectEqual(label.addressRange(found, address), number, row.description, "number at a limit");
            const bool isWholeAddress = row.pattern.endsWith(QLatin1Char(')'));
            if (isWholeAddress)
                complaints.expectEqual(found, i, row.description, "row at a limit");
        }
        const CommandFormatter *formatter = label.deviceTypesTable().formatterAt(i);
        for (const int number : {start - 1, end + 1}) {
            const QString address = row.symbol + QString::number(number, row.base);
            complaints.expect(number < 0 || !formatter->isAddressValid(address), row.description,
                              address + QLatin1String(" is accepted"));
        }
    }
    VERIFY_NONE(complaints);
}

void ShippedDriversRows::familiesAreWhole()
{
    const ShippedDriver &tested = driver();
    QStringList found;
    for (const DeviceRow &row : tested.rows) {
        if (row.isTemplate())
            found.append(row.pattern);
    }
    QStringList wanted = familiesOf(tested.name);
    found.sort();
    wanted.sort();
    QCOMPARE(found, wanted);
}

QTEST_GUILESS_MAIN(ShippedDriversRows)

#include "tst_shippeddrivers_rows.moc"
