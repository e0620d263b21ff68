// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/labelfixtures.h"
#include "support/logrecorder.h"
#include "support/toolprocess.h"
#include "tools/driver-files/driversamples.h"
#include "zelmar_label/address_grammar/multiplerule.h"
#include "zelmar_label/address_grammar/scripthook.h"
#include "zelmar_label/label_store/labelstore.h"
#include "zelmar_label/label_table/labelloader.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QMap>
#include <QRegExp>
#include <QRegularExpression>
#include <QSet>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTemporaryDir>
#include <QTest>

using namespace label;

namespace {

constexpr int anyRow = -1;
constexpr int bitRow = 0;
constexpr int registerRow = 2;

const QString connection = QStringLiteral("shipped drivers");

struct DeviceRow
{
    QString pattern;
    int type;
    int group;
    QString description;
    QString symbol;
    QString start;
    QString end;
    int dataSize;
    QString rule;
    int base;
    int blocksize;
    QString continueRule;

    bool isBit() const { return type == CommunicatorCommand::Bit; }
    bool isScripted() const { return rule.startsWith(QLatin1String("F>")); }
    bool isTemplate() const { return QRegExp(pattern).captureCount() == 0; }
};

struct ShippedDriver
{
    QString name;
    QString stem;
    int blockSize = 0;
    int bitBlockSize = 0;
    QList<DeviceRow> rows;
    QList<DriverSample> samples;
};

/// What is wrong, one line each, so that one run tells all of it.
class Complaints
{
public:
    void add(const QString &where, const QString &what) { m_lines.append(where + QLatin1String(": ") + what); }
    void expect(bool holds, const QString &where, const QString &what)
    {
        if (!holds)
            add(where, what);
    }
    template<typename T>
    void expectEqual(const T &seen, const T &wanted, const QString &where, const char *what)
    {
        if (seen != wanted)
            add(where, QStringLiteral("%1 is '%2', not '%3'").arg(QLatin1String(what)).arg(seen).arg(wanted));
    }
    bool isEmpty() const { return m_lines.isEmpty(); }
    QByteArray text() const
    {
        return '\n' + m_lines.mid(0, 40).join(QLatin1Char('\n')).toUtf8() + '\n' + QByteArray::number(m_lines.size()) +
               " complaints";
    }

private:
    QStringList m_lines;
};

#define VERIFY_NONE(complaints) QVERIFY2((complaints).isEmpty(), (complaints).text().constData())

QString runtimeFolder()
{
    return QStringLiteral(ZELMAR_LABEL_DRIVERS_RUNTIME);
}

QString sourceFolder()
{
    return QStringLiteral(ZELMAR_LABEL_DRIVERS_SOURCE);
}

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

void copyAfresh(const QString &from, const QString &to)
{
    QFile::remove(to);
    if (!QFile::copy(from, to))
        qFatal("cannot copy %s to %s", qPrintable(from), qPrintable(to));
}

/// Labels look beside the application.
void bringDriversHere()
{
    copyAfresh(runtimeFolder() + QLatin1String("/database/drivers"), driverDatabasePath());
    QDir here(QCoreApplication::applicationDirPath());
    here.mkpath(QStringLiteral("scripts"));
    const QDir scripts(runtimeFolder() + QLatin1String("/scripts"));
    const QStringList names = scripts.entryList(QDir::Files);
    for (const QString &name : names)
        copyAfresh(scripts.filePath(name), here.filePath(QLatin1String("scripts/") + name));
}

QList<DeviceRow> readRows(const QSqlDatabase &db, const QString &table)
{
    QList<DeviceRow> rows;
    QSqlQuery query(db);
    if (!query.exec(QStringLiteral("SELECT * FROM ") + table))
        qFatal("%s", qPrintable(query.lastError().text()));
    while (query.next()) {
        const QSqlRecord record = query.record();
        const auto text = [&record](const char *column) { return record.value(QLatin1String(column)).toString(); };
        const auto number = [&record](const char *column) { return record.value(QLatin1String(column)).toInt(); };
        rows.append({text("pattern"), number("type"), number("address_group_index"), text("description"),
                     text("prefix_symbol"), text("start"), text("end"), number("data_size"), text("multiple_rule"),
                     number("base"), number("blocksize"), text("continue")});
    }
    return rows;
}

QList<DriverSample> readSamples(const QString &stem)
{
    QList<DriverFileError> errors;
    const QList<DriverSample> samples =
        readDriverSamples(sourceFolder() + QLatin1String("/samples/") + stem + QLatin1String(".tsv"), errors);
    if (!errors.isEmpty())
        qFatal("%s", qPrintable(errors.first().toString()));
    return samples;
}

QString whereIs(const DriverSample &sample)
{
    return QStringLiteral("%1:%2 %3").arg(sample.file).arg(sample.line).arg(sample.address);
}

QList<ShippedDriver> readDrivers()
{
    QList<ShippedDriver> drivers;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection);
        db.setDatabaseName(runtimeFolder() + QLatin1String("/database/drivers"));
        db.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
        QSqlQuery query(db);
        if (!db.open() || !query.exec(QStringLiteral("SELECT name, general_table, device_table FROM table_index")))
            qFatal("%s", qPrintable(db.lastError().text()));
        while (query.next()) {
            ShippedDriver driver;
            driver.name = query.value(0).toString();
            driver.stem = query.value(2).toString().section(QLatin1String("_types"), 0, 0);
            QSqlQuery limits(db);
            if (!limits.exec(QStringLiteral("SELECT block_size, bit_block_size FROM ") + query.value(1).toString()) ||
                !limits.next())
                qFatal("no limits of %s", qPrintable(driver.name));
            driver.blockSize = limits.value(0).toInt();
            driver.bitBlockSize = limits.value(1).toInt();
            driver.rows = readRows(db, query.value(2).toString());
            driver.samples = readSamples(driver.stem);
            drivers.append(driver);
        }
    }
    QSqlDatabase::removeDatabase(connection);
    return drivers;
}

/// The names of the patterns that the creator of a driver asks for.
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

LabelLoader *labelOf(const QString &driver)
{
    QString error;
    LabelInterface *made = createLabel(driver, error);
    if (!made)
        qFatal("%s: %s", qPrintable(driver), qPrintable(error));
    return static_cast<LabelLoader *>(made);
}

/// Bits and registers may be written alike: a timer's contact and its value are both T0, and the data type says which.
int filterOf(int rowType)
{
    return rowType == CommunicatorCommand::Bit ? bitRow : registerRow;
}

/// Descriptions of the rows that accept an address as a bit or as a register; rows of one family share theirs.
QStringList acceptingRows(const LabelLoader &label, const QString &address, int filter)
{
    QSet<QString> descriptions;
    const CommandInformationTalbe &table = label.deviceTypesTable();
    for (int i = 0; i < table.countFormatters(); ++i) {
        if (filterOf(table.formatterAt(i)->type()) == filter && table.formatterAt(i)->isAddressValid(address))
            descriptions.insert(table.formatterAt(i)->formatString());
    }
    return descriptions.values();
}

/// Where an address has a second way to begin (I1: for I:), an editor that shows symbol and range shows the same item.
void checkSymbol(LabelLoader &label, int index, const DriverSample &sample, Complaints &complaints)
{
    const CommandFormatter row = label.deviceTypesTable().getFormatterAtIndex(index);
    if (sample.address.startsWith(sample.symbol, Qt::CaseInsensitive))
        return;
    const QString where = whereIs(sample);
    const QString shown = sample.symbol + row.getRangeString(sample.address);
    const int found = label.addressValidation(shown, filterOf(row.type()));
    // Coils in digits show the symbol of the coils that are written 0x.
    if (row.ruleText() != QLatin1String("F>modbus_coil_digits.js"))
        complaints.expectEqual(found, index, where, "row of the address that is shown");
    complaints.expectEqual(label.addressRange(found, shown), sample.number, where,
                           "number of the address that is shown");
    complaints.expectEqual(label.bitOffset(found, shown), sample.bit, where, "bit of the address that is shown");
}

void checkSample(LabelLoader &label, const DriverSample &sample, Complaints &complaints)
{
    const QList<SampleFault> faults = sampleFaults(label, sample);
    for (const SampleFault &fault : faults)
        complaints.add(whereIs(sample), fault.text);
    const int index = label.addressValidation(sample.address, sample.filter);
    if (index < 0)
        return;
    const CommandFormatter row = label.deviceTypesTable().getFormatterAtIndex(index);
    checkSymbol(label, index, sample, complaints);
    complaints.expectEqual(acceptingRows(label, sample.address, filterOf(row.type())).join(QLatin1String(" | ")),
                           row.formatString(), whereIs(sample), "rows that accept it");
}

QString firstLineWith(const QString &text, const QString &part)
{
    const QStringList lines = text.split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        if (line.contains(part))
            return line;
    }
    return QString();
}

} // namespace

class ShippedDrivers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void databaseHoldsExactlyTheDrivers();
    void rowsAreSound_data() { driverRows(); }
    void rowsAreSound();
    void rulesAreSound_data() { driverRows(); }
    void rulesAreSound();
    void limitsAreReached_data() { driverRows(); }
    void limitsAreReached();
    void familiesAreWhole_data() { driverRows(); }
    void familiesAreWhole();
    void samplesHold_data() { driverRows(); }
    void samplesHold();
    void samplesCoverEveryRow_data() { driverRows(); }
    void samplesCoverEveryRow();
    void scriptsRun_data();
    void scriptsRun();
    void scriptsConvert_data();
    void scriptsConvert();
    void scriptsBearAnyText_data();
    void scriptsBearAnyText();
    void compileRefuses_data();
    void compileRefuses();
    void compileMakesDatabase();
    void compileKeepsOldDatabaseOnError();

private:
    void driverRows() const;
    const ShippedDriver &driver() const;

    QList<ShippedDriver> m_drivers;
};

void ShippedDrivers::initTestCase()
{
    bringDriversHere();
    m_drivers = readDrivers();
}

void ShippedDrivers::driverRows() const
{
    QTest::addColumn<int>("place");
    for (int i = 0; i < m_drivers.size(); ++i)
        QTest::newRow(qPrintable(m_drivers.at(i).name)) << i;
}

const ShippedDriver &ShippedDrivers::driver() const
{
    QFETCH(int, place);
    return m_drivers.at(place);
}

void ShippedDrivers::databaseHoldsExactlyTheDrivers()
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

void ShippedDrivers::rowsAreSound()
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

void ShippedDrivers::rulesAreSound()
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
        // It is the bit that a run holds against the limits.
        const int lastBit = rule.bitRadix() == 32 ? 31 : 15;
        complaints.expect(row.start == QLatin1String("0") && row.end.toInt(nullptr, row.base) >= lastBit,
                          row.description, QStringLiteral("limits that leave out bits"));
    }
    VERIFY_NONE(complaints);
}

void ShippedDrivers::limitsAreReached()
{
    const ShippedDriver &tested = driver();
    LabelLoader &label = *labelOf(tested.name);
    Complaints complaints;
    for (int i = 0; i < tested.rows.size(); ++i) {
        const DeviceRow &row = tested.rows.at(i);
        const MultipleRule rule(row.rule);
        // Symbol and number of what a script reads need not be an address; its samples reach the limits.
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

void ShippedDrivers::familiesAreWhole()
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

void ShippedDrivers::samplesHold()
{
    const LogRecorder silence;
    const ShippedDriver &tested = driver();
    LabelLoader &label = *labelOf(tested.name);
    Complaints complaints;
    QVERIFY(!tested.samples.isEmpty());
    for (const DriverSample &sample : tested.samples)
        checkSample(label, sample, complaints);
    VERIFY_NONE(complaints);
}

void ShippedDrivers::samplesCoverEveryRow()
{
    const LogRecorder silence;
    const ShippedDriver &tested = driver();
    LabelLoader &label = *labelOf(tested.name);
    // Rows made for a family keep the description of their pattern.
    QMap<QString, QSet<int>> numbers;
    for (const DriverSample &sample : tested.samples) {
        if (sample.isAccepted)
            numbers[label.getFormatString(label.addressValidation(sample.address, sample.filter))].insert(
                sample.number);
    }
    Complaints complaints;
    for (const DeviceRow &row : tested.rows) {
        const QSet<int> seen = numbers.value(row.description);
        complaints.expect(seen.contains(row.end.toInt(nullptr, row.base)), row.description,
                          QStringLiteral("no sample of the last number"));
        // The pattern of these rows begins above the row's limit, which bits need to be 0.
        const bool isFloorInPattern = row.isBit() && tested.name.startsWith(QLatin1String("Modbus"));
        complaints.expect(isFloorInPattern || seen.contains(row.start.toInt(nullptr, row.base)), row.description,
                          QStringLiteral("no sample of the first number"));
    }
    VERIFY_NONE(complaints);
}

void ShippedDrivers::scriptsRun_data()
{
    QTest::addColumn<QString>("driverName");
    QTest::addColumn<QString>("address");
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("step");
    QTest::addColumn<QString>("run");

    const QString ml = QStringLiteral("MicroLogix Ethernet");
    const QString plc5 = QStringLiteral("PLC5 DF1 CRC");
    const QString modbus = QStringLiteral("Modbus TCP");
    const QString fp = QStringLiteral("FP Serial");
    const QString ads = QStringLiteral("ADS Index");
    const QString fam3 = QStringLiteral("FAM3 Ethernet");
    const QString fins = QStringLiteral("OMRON FINS");
    const auto add = [](const char *name, const QString &driverName, const char *address, int count, int step,
                        const char *run) {
        QTest::newRow(name) << driverName << QString(QLatin1String(address)) << count << step
                            << QString(QLatin1String(run));
    };
    add("named bits go from element to element", ml, "T4:0/DN", 3, 1, "T4:0/DN T4:1/DN T4:2/DN");
    add("named bits keep their station", ml, "2-C5:7/CU", 2, 1, "2-C5:7/CU 2-C5:8/CU");
    add("named bits of a family keep their file", ml, "R6:3/FD", 2, 1, "R6:3/FD R6:4/FD");
    add("named bits honour the step", ml, "T4:0/EN", 3, 5, "T4:0/EN T4:5/EN T4:10/EN");
    add("named bits go down", ml, "T4:2/EN", 5, -1, "T4:2/EN T4:1/EN T4:0/EN");
    add("named bits with a step of 0 repeat", ml, "T4:2/EN", 2, 0, "T4:2/EN T4:2/EN");
    add("named bits stop at the last element of a MicroLogix", ml, "T4:254/TT", 5, 1, "T4:254/TT T4:255/TT");
    add("named bits go on to the last element of a PLC-5", plc5, "T4:254/TT", 3, 1, "T4:254/TT T4:255/TT T4:256/TT");
    add("named bits stop at the last element of a PLC-5", plc5, "T4:999/TT", 3, 1, "T4:999/TT");
    add("named bits lose leading zeros", ml, "T4:007/TT", 2, 1, "T4:7/TT T4:8/TT");
    add("no named bits for a count of 0", ml, "T4:0/DN", 0, 1, "");
    add("no named bits for a negative count", ml, "T4:0/DN", -3, 1, "");
    add("octal bits carry at 16", plc5, "I:017/16", 3, 1, "I:017/16 I:017/17 I:020/00");
    add("octal bits carry over several words", plc5, "O:077/17", 2, 33, "O:077/17 O:102/00");
    add("octal bits keep their station", plc5, "3-O:007/17", 2, 1, "3-O:007/17 3-O:010/00");
    add("octal bits stay as narrow as they are", plc5, "I:0/0", 2, 1, "I:0/0 I:0/1");
    add("octal bits go down", plc5, "I:1/0", 3, -1, "I:1/0 I:0/17 I:0/16");
    add("octal bits stop at the last word", plc5, "I:277/17", 3, 1, "I:277/17");
    add("octal bits stop at the first bit", plc5, "I:000/01", 5, -1, "I:000/01 I:000/00");
    add("no octal bits for a negative count", plc5, "I:000/00", -1, 1, "");
    add("terminals go on in the next slot", fam3, "X00263", 4, 1, "X00263 X00264 X00301 X00302");
    add("terminals go on in the next unit", fam3, "Y01664", 2, 1, "Y01664 Y10101");
    add("terminals go down", fam3, "X10101", 2, -1, "X10101 X01664");
    add("terminals honour the step", fam3, "X00201", 3, 64, "X00201 X00301 X00401");
    add("terminals with a step of 0 repeat", fam3, "X00201", 2, 0, "X00201 X00201");
    add("terminals keep their station and letter", fam3, "2-x00216", 2, 1, "2-x00216 2-x00217");
    add("terminals stay as narrow as they are", fam3, "X964", 2, 1, "X964 X1001");
    add("terminals stop at the last slot", fam3, "Y71663", 5, 1, "Y71663 Y71664");
    add("terminals stop behind the processor", fam3, "X00202", 5, -1, "X00202 X00201");
    add("no terminals for a count of 0", fam3, "X00201", 0, 1, "");
    add("no terminals for a negative count", fam3, "X00201", -1, 1, "");
    add("bits of banks carry at 16", fins, "EA_100.14", 3, 1, "EA_100.14 EA_100.15 EA_101.00");
    add("bits of banks carry over several words", fins, "E0_0.15", 2, 33, "E0_0.15 E0_3.00");
    add("bits of banks keep their station", fins, "3-E18_7.15", 2, 1, "3-E18_7.15 3-E18_8.00");
    add("bits of banks are as wide as they are", fins, "e0c_00099.9", 2, 1, "e0c_00099.9 e0c_00099.10");
    add("bits of banks go down", fins, "E1_1.00", 3, -1, "E1_1.00 E1_0.15 E1_0.14");
    add("bits of banks stop at the last word", fins, "E1_32767.15", 3, 1, "E1_32767.15");
    add("bits of banks stop at the first one", fins, "E1_0.01", 5, -1, "E1_0.01 E1_0.00");
    add("no bits of banks for a negative count", fins, "E1_0.00", -1, 1, "");
    add("coils keep five digits", modbus, "00009", 2, 1, "00009 00010");
    add("coils keep six digits", modbus, "009999", 2, 1, "009999 010000");
    add("coils keep their station", modbus, "7-00001", 3, 8, "7-00001 7-00009 7-00017");
    add("coils of five digits stop where the digits end", modbus, "09999", 2, 1, "09999");
    add("coils of six digits stop at the last coil", modbus, "065536", 2, 1, "065536");
    add("coils stop at the first one", modbus, "00002", 5, -1, "00002 00001");
    add("no coils for a count of 0", modbus, "00001", 0, 1, "");
    add("named bits behind a point keep it", ml, "T4:0.DN", 3, 1, "T4:0.DN T4:1.DN T4:2.DN");
    add("binary bits count through their file", ml, "B3/15", 3, 1, "B3/15 B3/16 B3/17");
    add("binary bits keep their station", ml, "2-B10/00031", 2, 1, "2-B10/31 2-B10/32");
    add("binary bits honour the step", ml, "B3/0", 3, 16, "B3/0 B3/16 B3/32");
    add("binary bits stop at the last word of a MicroLogix", ml, "B3/4095", 3, 1, "B3/4095");
    add("binary bits go on to the last word of a PLC-5", plc5, "B3/4095", 2, 1, "B3/4095 B3/4096");
    add("binary bits stop at the last word of a PLC-5", plc5, "B255/15998", 5, 1, "B255/15998 B255/15999");
    add("binary bits stop at the first one", ml, "B3/1", 5, -1, "B3/1 B3/0");
    add("no binary bits for a count of 0", ml, "B3/1", 0, 1, "");
    add("named bits of a family keep their file behind a point", ml, "T10:5.DN", 2, 1, "T10:5.DN T10:6.DN");
    add("octal bits keep the number of their file", plc5, "I1:017/17", 2, 1, "I1:017/17 I1:020/00");
    add("relays carry after the hexadecimal digit", fp, "X9E", 3, 1, "X9E X9F X100");
    add("relays of word 0 have no word", fp, "YE", 3, 1, "YE YF Y10");
    add("relays keep their station", fp, "2-RF", 2, 1, "2-RF 2-R10");
    add("relays honour the step", fp, "Y0", 3, 16, "Y0 Y10 Y20");
    add("relays go down", fp, "R11", 3, -1, "R11 R10 RF");
    add("relays with a step of 0 repeat", fp, "R11", 2, 0, "R11 R11");
    add("relays stop at the last word", fp, "L639E", 5, 1, "L639E L639F");
    add("relays stop at the first word", fp, "X1", 5, -1, "X1 X0");
    add("relays do not go on among the special ones", fp, "R886F", 3, 224, "R886F");
    add("special relays do not go on among the others", fp, "R9001", 3, -1, "R9001 R9000");
    add("special relays stop at the last word", fp, "R911F", 3, 1, "R911F");
    add("relays lose leading zeros and keep their letter", fp, "r001e", 2, 1, "r1E r1F");
    add("no relays for a count of 0", fp, "X0", 0, 1, "");
    add("no relays for a negative count", fp, "X0", -1, 1, "");
    add("bits of bytes carry at 8", ads, "0x4020:0x1F.6", 3, 1, "0x4020:0x1f.6 0x4020:0x1f.7 0x4020:0x20.0");
    add("bits of bytes keep decimal offsets", ads, "16416:9.7", 2, 1, "16416:9.7 16416:10.0");
    add("bits of bytes go down", ads, "0x4020:0x1.1", 3, -2, "0x4020:0x1.1 0x4020:0x0.7 0x4020:0x0.5");
    add("bits of bytes stop at the first one", ads, "0xF030:0.1", 5, -1, "0xF030:0.1 0xF030:0.0");
    add("bits of bytes stop at the last one", ads, "0x4040:268435455.7", 3, 1, "0x4040:268435455.7");
    add("bit offsets count on", ads, "3-0x4021:0xE", 3, 1, "3-0x4021:0xe 3-0x4021:0xf 3-0x4021:0x10");
    add("bit offsets honour the step", ads, "0xF021:131", 2, 8, "0xF021:131 0xF021:139");
    add("bit offsets stop at the last one", ads, "16417:2147483646", 3, 1, "16417:2147483646 16417:2147483647");
    add("bit offsets stop at the first one", ads, "0X4021:0X1", 3, -1, "0X4021:0X1 0X4021:0X0");
    add("no bits of bytes for a count of 0", ads, "0x4020:0x0.0", 0, 1, "");
}

void ShippedDrivers::scriptsRun()
{
    QFETCH(QString, driverName);
    QFETCH(QString, address);
    QFETCH(int, count);
    QFETCH(int, step);
    QFETCH(QString, run);
    LabelLoader &label = *labelOf(driverName);
    const int index = label.addressValidation(address, bitRow);
    QVERIFY(index >= 0);
    const CommandFormatter *row = label.deviceTypesTable().formatterAt(index);
    const QList<CommunicatorCommand> made =
        row->makeBitContinueCommand(command(address, CommunicatorCommand::Bit), count, step, true);
    QCOMPARE(addresses(made).join(QLatin1Char(' ')), run);
}

void ShippedDrivers::scriptsConvert_data()
{
    QTest::addColumn<QString>("driverName");
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("registerAddress");
    QTest::addColumn<int>("registerType");

    const QString ml = QStringLiteral("MicroLogix DF1 RS232");
    const QString plc5 = QStringLiteral("PLC5 DF1 CRC");
    const QString fp = QStringLiteral("FP Serial");
    const QString ads = QStringLiteral("ADS Index");
    const QString fam3 = QStringLiteral("FAM3 Ethernet");
    const QString fins = QStringLiteral("OMRON FINS");
    const int byte = CommunicatorCommand::Byte;
    const int word = CommunicatorCommand::Word;
    const auto add = [](const char *name, const QString &driverName, const char *address, const char *registerAddress,
                        int registerType) {
        QTest::newRow(name) << driverName << QString(QLatin1String(address)) << QString(QLatin1String(registerAddress))
                            << registerType;
    };
    add("a named bit lies in the first word", ml, "T4:3/DN", "T4:3", word);
    add("a named bit behind a point lies in the first word", ml, "T4:3.DN", "T4:3", word);
    add("a binary bit lies in a sixteenth of its place", ml, "B3/17", "B3:1", word);
    add("a binary bit of a family lies in its file", plc5, "B10/15999", "B10:999", word);
    add("the word of a binary bit keeps the station", ml, "2-B3/4095", "2-B3:255", word);
    add("a named bit of a family lies in its file", ml, "T10:5.DN", "T10:5", word);
    add("the word of a named bit keeps the station", ml, "2-T4:3/DN", "2-T4:3", word);
    add("the word of an octal bit keeps its zeros", plc5, "I:017/05", "I:017", word);
    add("the word of an octal bit keeps the station", plc5, "2-O:1/5", "2-O:1", word);
    add("the word of an octal bit keeps the number of its file", plc5, "O0:1/5", "O0:1", word);
    add("a relay without a word lies in word 0", fp, "X5", "WX0", word);
    add("the word of a relay is in upper case", fp, "r1f", "WR1", word);
    add("the word of a special relay keeps the station", fp, "2-R901C", "2-WR901", word);
    add("a terminal lies in the word of its sixteen", fam3, "X00264", "X00249", word);
    add("the first terminal lies in the first word", fam3, "Y10101", "Y10101", word);
    add("the word of a terminal keeps its zeros and the station", fam3, "2-X00218", "2-X00217", word);
    add("a bit of a bank lies in a word of the bank", fins, "EA_100.05", "EA_100", word);
    add("the word of a bit of a bank keeps the station", fins, "2-e18_0032767.15", "2-e18_0032767", word);
    add("a bit of a byte lies in it", ads, "0x4020:0x10.3", "0x4020:0x10", byte);
    add("a bit offset lies in the group of the bytes", ads, "0x4021:0x83", "0x4020:0x10", byte);
    add("the byte of a decimal bit offset is decimal", ads, "16417:131", "16416:16", byte);
    add("the byte of a bit offset keeps the station", ads, "3-0xf021:0x9", "3-0xF020:0x1", byte);
}

void ShippedDrivers::scriptsConvert()
{
    QFETCH(QString, driverName);
    QFETCH(QString, address);
    QFETCH(QString, registerAddress);
    QFETCH(int, registerType);
    int index = -1;
    LabelLoader &label = *labelOf(driverName);
    const CommunicatorCommand made =
        label.convertBitCommandToRegisterCommand(command(address, CommunicatorCommand::Bit), index);
    QCOMPARE(made.address, registerAddress);
    QCOMPARE(label.datatype(index), registerType);
}

void ShippedDrivers::scriptsBearAnyText_data()
{
    QTest::addColumn<QString>("fileName");
    const QStringList names = QDir(runtimeFolder() + QLatin1String("/scripts")).entryList(QDir::Files);
    for (const QString &name : names)
        QTest::newRow(qPrintable(name)) << name;
}

void ShippedDrivers::scriptsBearAnyText()
{
    QFETCH(QString, fileName);
    ScriptHook script(QLatin1String("F>") + fileName);
    QVERIFY(script.load());
    for (const char *text : {"",
                             "-",
                             "--",
                             "x",
                             "T4:/DN",
                             "T4:0/",
                             "T4:0/constructor",
                             "T4:0/toString",
                             "I:/0",
                             "O:9/0",
                             "0",
                             "000000000000000001",
                             "2-",
                             "S>NULL",
                             "XG",
                             "R-1",
                             ":",
                             "0x:0x.0",
                             "0x4020:",
                             "0x4020:0x.0",
                             "0x4020:.0",
                             "0x4022:0x0",
                             "1F:0.0",
                             "B3/",
                             "E_0.0",
                             "E19_0.0",
                             "E0_0.16",
                             "B/1"}) {
        const QString address = QLatin1String(text);
        QCOMPARE(script.getAddressRange(address), -1);
        QCOMPARE(script.bitoffset(address), -1);
        QCOMPARE(script.convertToRegisterAddress(address), QString());
        QCOMPARE(script.makeBitContinueCommand(command(address, CommunicatorCommand::Bit), 3, 1).size(), 0);
    }
}

void ShippedDrivers::compileRefuses_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("message");

    const QString head = QStringLiteral("driver\tD\nblock_size\t1\nbit_block_size\t1\n");
    const QString header = QStringLiteral("pattern\ttype\taddress_group_index\tdescription\tprefix_symbol\tstart\tend\t"
                                          "data_size\tmultiple_rule\tcatch_table\tbase\tblocksize\tcontinue\n");
    const QString row = QStringLiteral("(D)(\\d)\t2\t2\tD: it's one\tD\t0\t9\t2\t\t\t10\t1\tN\n");
    const auto add = [](const char *name, const QString &text, const char *message) {
        QTest::newRow(name) << text << QString(QLatin1String(message));
    };
    const auto changed = [&row](const char *before, const char *after) {
        QString other = row;
        return other.replace(QLatin1String(before), QLatin1String(after));
    };
    add("a row with a column too few", head + header + changed("\tN\n", "\n"), ":5: error: 12 columns");
    add("a row with a column too many", head + header + changed("\tN\n", "\tN\t\n"), ":5: error: 14 columns");
    add("an unknown column", head + QString(header).replace(QLatin1String("start"), QLatin1String("begin")) + row,
        ":4: error: unknown header 'begin'");
    add("a missing column", head + QString(header).remove(QLatin1String("\tcontinue")) + row,
        ":4: error: header 'continue' is missing");
    add("a column that stands twice",
        head + QString(header).replace(QLatin1String("start"), QLatin1String("end")) + row,
        ":4: error: header 'end' appears twice");
    add("an unknown setting", QStringLiteral("speed\t5\n") + head + header + row, ":1: error: unknown header 'speed'");
    add("a missing setting", QStringLiteral("driver\tD\nblock_size\t1\n") + header + row,
        ":3: error: 'bit_block_size' must be before the header");
    add("a setting that is no number", QString(head).replace(QLatin1String("\t1"), QLatin1String("\tx")) + header + row,
        ":2: error: 'block_size' is not a number: 'x'");
    add("a driver without a name", QString(head).replace(QLatin1String("\tD"), QLatin1String("\t")) + header + row,
        ":1: error: 'driver' is empty");
    add("the driver name of another file",
        QString(head).replace(QLatin1String("\tD"), QLatin1String("\tGood")) + header + row,
        ":1: error: driver 'Good' is already in ");
    add("an empty pattern", head + header + changed("(D)(\\d)", ""), ":5: error: 'pattern' is empty");
    add("an empty end", head + header + changed("\t9\t", "\t\t"), ":5: error: 'end' is empty");
    add("a block size of 0", head + header + changed("\t1\tN", "\t0\tN"), ":5: error: 'blocksize' is 0");
    add("a base of 2", head + header + changed("\t10\t", "\t2\t"), ":5: error: 'base' is not 8, 10 or 16: '2'");
    add("a type of 9", head + header + changed("\\d)\t2", "\\d)\t9"), ":5: error: 'type' is not 0 to 5: '9'");
    add("a continue rule of neither kind", head + header + changed("\tN", "\tno"),
        ":5: error: 'continue' is neither Y nor N: 'no'");
    add("a pattern that stands twice", head + header + row + changed("one", "two"),
        ":6: error: the pattern is already used in line 5");
    add("a description that stands twice", head + header + row + changed("(D)", "(E)"),
        ":6: error: the description is already used in line 5");
    add("a carriage return", head + header + changed("\n", "\r\n"), ":5: error: carriage return");
    add("no header", head, ":3: error: no header line");
    add("no rows", head + header, ":4: error: no rows");
    add("an empty file", QString(), ":1: error: empty file");
    add("an error behind comments and blank lines",
        QStringLiteral("# one\n\n") + head + QStringLiteral("# two\n") + header + changed("\t9\t", "\t\t"),
        ":8: error: 'end' is empty");
}

namespace {

void writeText(const QString &path, const QString &text)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0)
        qFatal("cannot write %s", qPrintable(path));
}

QString goodDriver()
{
    return QStringLiteral(
        "# from nowhere\n"
        "driver\tGood\nblock_size\t7\nbit_block_size\t8\n"
        "end\tstart\tpattern\ttype\taddress_group_index\tdescription\tprefix_symbol\tdata_size\tmultiple_rule\t"
        "catch_table\tbase\tblocksize\tcontinue\n"
        "0FF\t007\t(H)(0*[0-9A-Fa-f]{1,3})\t2\t2\tH: it's hexadecimal; it's kept\tH\t2\t\t\t16\t5\tY\n");
}

struct Compiled
{
    int exitCode;
    QString messages;
};

Compiled compile(const QString &database, const QStringList &files)
{
    const Result result = runProcess(QStringLiteral(ZELMAR_LABEL_COMPILE_DRIVERS), QStringList{database} + files);
    return {result.code, result.err};
}

} // namespace

void ShippedDrivers::compileRefuses()
{
    QFETCH(QString, text);
    QFETCH(QString, message);
    QTemporaryDir folder;
    const QString good = folder.filePath(QStringLiteral("good.tsv"));
    const QString bad = folder.filePath(QStringLiteral("bad.tsv"));
    const QString database = folder.filePath(QStringLiteral("out/drivers"));
    writeText(good, goodDriver());
    writeText(bad, text);

    const Compiled seen = compile(database, {good, bad});

    QVERIFY(seen.exitCode != 0);
    QVERIFY2(!firstLineWith(seen.messages, bad + message).isEmpty(), qPrintable(seen.messages));
    QVERIFY(QDir(folder.filePath(QStringLiteral("out")))
                .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot)
                .isEmpty());
}

void ShippedDrivers::compileMakesDatabase()
{
    QTemporaryDir folder;
    const QString good = folder.filePath(QStringLiteral("good.tsv"));
    const QString database = folder.filePath(QStringLiteral("a new folder/drivers"));
    writeText(good, goodDriver());

    const Compiled seen = compile(database, {good});

    QCOMPARE(seen.messages, QString());
    QCOMPARE(seen.exitCode, 0);
    QList<DeviceRow> rows;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection);
        db.setDatabaseName(database);
        QVERIFY(db.open());
        rows = readRows(db, QStringLiteral("good_types"));
        QSqlQuery query(db);
        QVERIFY(query.exec(QStringLiteral("SELECT * FROM good_general")) && query.next());
        QCOMPARE(query.value(QStringLiteral("block_size")).toInt(), 7);
        QCOMPARE(query.value(QStringLiteral("bit_block_size")).toInt(), 8);
    }
    QSqlDatabase::removeDatabase(connection);
    QCOMPARE(rows.size(), 1);
    QCOMPARE(rows.first().pattern, QStringLiteral("(H)(0*[0-9A-Fa-f]{1,3})"));
    QCOMPARE(rows.first().description, QStringLiteral("H: it's hexadecimal; it's kept"));
    QCOMPARE(rows.first().start, QStringLiteral("007"));
    QCOMPARE(rows.first().end, QStringLiteral("0FF"));
    QCOMPARE(rows.first().base, 16);
    QCOMPARE(rows.first().blocksize, 5);
    QCOMPARE(rows.first().continueRule, QStringLiteral("Y"));
}

void ShippedDrivers::compileKeepsOldDatabaseOnError()
{
    QTemporaryDir folder;
    const QString good = folder.filePath(QStringLiteral("good.tsv"));
    const QString database = folder.filePath(QStringLiteral("drivers"));
    writeText(good, goodDriver());
    QCOMPARE(compile(database, {good}).exitCode, 0);
    QFile before(database);
    QVERIFY(before.open(QIODevice::ReadOnly));
    const QByteArray old = before.readAll();

    writeText(good, goodDriver() + QLatin1String("one\ttwo\n"));
    QVERIFY(compile(database, {good}).exitCode != 0);

    QFile after(database);
    QVERIFY(after.open(QIODevice::ReadOnly));
    QCOMPARE(after.readAll(), old);
    QVERIFY(!old.isEmpty());
}

QTEST_GUILESS_MAIN(ShippedDrivers)
#include "tst_shippeddrivers.moc"
