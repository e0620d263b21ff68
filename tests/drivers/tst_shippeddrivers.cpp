// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/labelfixtures.h"
#include "support/logrecorder.h"
#include "zelmar_label/address_grammar/multiplerule.h"
#include "zelmar_label/address_grammar/scripthook.h"
#include "zelmar_label/label_store/labelstore.h"
#include "zelmar_label/label_table/labelloader.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QMap>
#include <QProcess>
#include <QRegExp>
#include <QSet>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTemporaryDir>
#include <QTest>
#include <QTextStream>

using namespace label;

namespace {

constexpr int anyRow = -1;
constexpr int bitRow = 0;
constexpr int registerRow = 2;

const QString absent = QStringLiteral("-");
const QString connection = QStringLiteral("shipped drivers");

const QStringList sampleColumns = {QStringLiteral("verdict"), QStringLiteral("address"), QStringLiteral("filter"),
                                   QStringLiteral("symbol"),  QStringLiteral("number"),  QStringLiteral("bit"),
                                   QStringLiteral("step"),    QStringLiteral("next"),    QStringLiteral("register")};

const QHash<QString, int> filters = {
    {QStringLiteral("any"), anyRow}, {QStringLiteral("bit"), bitRow}, {QStringLiteral("register"), registerRow}};

const QHash<QString, int> stepTypes = {{QStringLiteral("bit"), CommunicatorCommand::Bit},
                                       {QStringLiteral("byte"), CommunicatorCommand::Byte},
                                       {QStringLiteral("word"), CommunicatorCommand::Word},
                                       {QStringLiteral("dword"), CommunicatorCommand::DoubleWord},
                                       {QStringLiteral("qword"), CommunicatorCommand::QuadWord},
                                       {QStringLiteral("text"), CommunicatorCommand::Text}};

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

struct Sample
{
    QString where;
    bool isAccepted = false;
    QString address;
    int filter = anyRow;
    QString symbol;
    int number = -1;
    int bit = -1;
    int step = CommunicatorCommand::Bit;
    QString next;
    QString registerAddress;
};

struct ShippedDriver
{
    QString name;
    QString stem;
    int blockSize = 0;
    int bitBlockSize = 0;
    QList<DeviceRow> rows;
    QList<Sample> samples;
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

Sample readSample(const QStringList &fields, const QString &where)
{
    Sample sample;
    sample.where = where + QLatin1Char(' ') + fields.at(1);
    sample.isAccepted = fields.at(0) == QLatin1String("accept");
    sample.address = fields.at(1);
    if (!filters.contains(fields.at(2)))
        qFatal("%s: no such filter", qPrintable(where));
    sample.filter = filters.value(fields.at(2));
    if (!sample.isAccepted)
        return sample;
    bool isNumber = false;
    bool isBit = false;
    sample.symbol = fields.at(3) == absent ? QString() : fields.at(3);
    sample.number = fields.at(4).toInt(&isNumber);
    sample.bit = fields.at(5).toInt(&isBit);
    sample.step = stepTypes.value(fields.at(6), -1);
    sample.next = fields.at(7);
    sample.registerAddress = fields.at(8);
    if (!isNumber || !isBit || sample.step < 0)
        qFatal("%s: number, bit or step cannot be read", qPrintable(where));
    return sample;
}

QList<Sample> readSamples(const QString &stem)
{
    QFile file(sourceFolder() + QLatin1String("/samples/") + stem + QLatin1String(".tsv"));
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        qFatal("cannot read %s", qPrintable(file.fileName()));
    QList<Sample> samples;
    bool hasHeader = false;
    QTextStream stream(&file);
    for (int line = 1; !stream.atEnd(); ++line) {
        const QString text = stream.readLine();
        if (text.startsWith(QLatin1Char('#')))
            continue;
        const QStringList fields = text.split(QLatin1Char('\t'));
        const QString where = QStringLiteral("samples/%1.tsv:%2").arg(stem).arg(line);
        if (!hasHeader && fields != sampleColumns)
            qFatal("%s: not the header", qPrintable(where));
        if (fields.size() != sampleColumns.size())
            qFatal("%s: %d columns", qPrintable(where), fields.size());
        if (hasHeader && fields.at(0) != QLatin1String("accept") && fields.at(0) != QLatin1String("refuse"))
            qFatal("%s: no such verdict", qPrintable(where));
        if (hasHeader)
            samples.append(readSample(fields, where));
        hasHeader = true;
    }
    return samples;
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
        {QStringLiteral("Modbus TCP"), {}},
    };
    if (!families.contains(driver))
        qFatal("unexpected driver %s", qPrintable(driver));
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

QString blockAddress(LabelLoader &label, int index, int number)
{
    const QList<CommunicatorCommand> blocks = label.makeBlockCommand(-1, index, number, 1);
    return blocks.size() == 1 ? blocks.first().address : QString();
}

/// Descriptions of the rows that accept an address; rows of one family share theirs.
QStringList acceptingRows(const LabelLoader &label, const QString &address)
{
    QSet<QString> descriptions;
    const CommandInformationTalbe &table = label.deviceTypesTable();
    for (int i = 0; i < table.countFormatters(); ++i) {
        if (table.formatterAt(i)->isAddressValid(address))
            descriptions.insert(table.formatterAt(i)->formatString());
    }
    return descriptions.values();
}

void checkNeighbour(LabelLoader &label, int index, const Sample &sample, int end, Complaints &complaints)
{
    const QList<CommunicatorCommand> run = label.makeContinueCommand(index, command(sample.address, sample.step), 2);
    if (sample.next == absent) {
        complaints.expectEqual(int(run.size()), 1, sample.where, "length of a run at the end");
        return;
    }
    if (run.size() != 2) {
        complaints.add(sample.where, QStringLiteral("no next address"));
        return;
    }
    complaints.expectEqual(run.at(1).address, sample.next, sample.where, "next address");
    complaints.expectEqual(int(run.at(1).dataType), sample.step, sample.where, "type of the next command");
    // Runs of bits that are written as word and bit are not held against the end of the row.
    if (sample.step != CommunicatorCommand::Bit || sample.number < end)
        complaints.expectEqual(label.addressValidation(sample.next, sample.filter), index, sample.where,
                               "row of the next address");
}

void checkRegister(LabelLoader &label, int index, const Sample &sample, Complaints &complaints)
{
    complaints.expectEqual(label.canConvertToRegisterCommand(index), sample.registerAddress != absent, sample.where,
                           "whether the row converts");
    if (!label.canConvertToRegisterCommand(index))
        return;
    int registerIndex = -1;
    const CommunicatorCommand found =
        label.convertBitCommandToRegisterCommand(command(sample.address, CommunicatorCommand::Bit), registerIndex);
    complaints.expectEqual(found.address, sample.registerAddress, sample.where, "register");
    complaints.expect(label.datatype(registerIndex) > 0, sample.where, QStringLiteral("the register has no row"));
    complaints.expect(sample.bit < label.datasize(registerIndex) * 8, sample.where,
                      QStringLiteral("the bit lies beyond the register"));
}

/// A block command names its item by symbol and number alone.
void checkBlock(LabelLoader &label, int index, const Sample &sample, Complaints &complaints)
{
    const CommandFormatter row = label.deviceTypesTable().getFormatterAtIndex(index);
    const bool isOnePart = row.ruleText().startsWith(QLatin1String("union-"));
    if (row.type() == CommunicatorCommand::Bit && !isOnePart)
        return;
    const QString address = blockAddress(label, index, sample.number);
    const int found = label.addressValidation(address, anyRow);
    if (sample.address.endsWith(row.getRangeString(sample.address)))
        complaints.expectEqual(found, index, sample.where, "row of the block address");
    complaints.expectEqual(label.addressRange(found, address), sample.number, sample.where,
                           "number of the block address");
}

void checkAccepted(LabelLoader &label, const Sample &sample, int index, Complaints &complaints)
{
    const CommandFormatter row = label.deviceTypesTable().getFormatterAtIndex(index);
    complaints.expectEqual(label.getEditUsedPrifixSymbolByTypeId(index), sample.symbol, sample.where, "symbol");
    complaints.expectEqual(label.addressRange(index, sample.address), sample.number, sample.where, "number");
    complaints.expectEqual(label.bitOffset(index, sample.address), sample.bit, sample.where, "bit");
    // Coils in digits show the symbol of the coils that are written 0x.
    if (row.ruleText() != QLatin1String("F>modbus_coil_digits.js"))
        complaints.expect(sample.address.startsWith(sample.symbol, Qt::CaseInsensitive), sample.where,
                          QStringLiteral("does not begin with its symbol"));
    complaints.expectEqual(acceptingRows(label, sample.address).join(QLatin1String(" | ")), row.formatString(),
                           sample.where, "rows that accept it");
    checkNeighbour(label, index, sample, row.end().toInt(nullptr, row.base()), complaints);
    checkBlock(label, index, sample, complaints);
    if (row.type() == CommunicatorCommand::Bit)
        checkRegister(label, index, sample, complaints);
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
    const QStringList wanted = {QStringLiteral("FX5U Ethernet"),
                                QStringLiteral("ISO on TCP"),
                                QStringLiteral("LustBus ServoC/CDE Series"),
                                QStringLiteral("MicroLogix DF1 RS232"),
                                QStringLiteral("MicroLogix Ethernet"),
                                QStringLiteral("Modbus TCP"),
                                QStringLiteral("PLC5 DF1 CRC"),
                                QStringLiteral("Simatic S7-300 MPI")};
    QCOMPARE(names, wanted);
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
        if (row.isTemplate())
            continue;
        const int start = row.start.toInt(nullptr, row.base);
        const int end = row.end.toInt(nullptr, row.base);
        if (row.isBit() && rule.isSplit() && !row.isScripted()) {
            const QString symbol = label.deviceTypesTable().formatterAt(i)->convertedRegisterCommandSymbol();
            const QString address = symbol + QString::number(end, row.base);
            const int found = label.addressValidation(address, registerRow);
            complaints.expectEqual(label.addressRange(found, address), end, row.description,
                                   "register of the last bit");
            continue;
        }
        for (const int number : {start, end}) {
            const QString address = row.symbol + QString::number(number, row.base);
            const int found = label.addressValidation(address, anyRow);
            complaints.expectEqual(label.addressRange(found, address), number, row.description, "number at a limit");
            const bool isWholeAddress = row.pattern.endsWith(QLatin1Char(')')) && !row.isScripted();
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
    for (const Sample &sample : tested.samples) {
        const int index = label.addressValidation(sample.address, sample.filter);
        if (!sample.isAccepted)
            complaints.expect(index == -1, sample.where,
                              QLatin1String("is accepted by ") + label.getFormatString(index));
        else if (index == -1)
            complaints.add(sample.where, QStringLiteral("is refused"));
        else
            checkAccepted(label, sample, index, complaints);
    }
    VERIFY_NONE(complaints);
}

void ShippedDrivers::samplesCoverEveryRow()
{
    const LogRecorder silence;
    const ShippedDriver &tested = driver();
    LabelLoader &label = *labelOf(tested.name);
    // Rows made for a family keep the description of their pattern.
    QMap<QString, QSet<int>> numbers;
    for (const Sample &sample : tested.samples) {
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
        const bool isFloorInPattern = row.isBit() && tested.name == QLatin1String("Modbus TCP");
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
    add("coils keep five digits", modbus, "00009", 2, 1, "00009 00010");
    add("coils keep six digits", modbus, "009999", 2, 1, "009999 010000");
    add("coils keep their station", modbus, "7-00001", 3, 8, "7-00001 7-00009 7-00017");
    add("coils of five digits stop where the digits end", modbus, "09999", 2, 1, "09999");
    add("coils of six digits stop at the last coil", modbus, "065536", 2, 1, "065536");
    add("coils stop at the first one", modbus, "00002", 5, -1, "00002 00001");
    add("no coils for a count of 0", modbus, "00001", 0, 1, "");
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

    const QString ml = QStringLiteral("MicroLogix DF1 RS232");
    const QString plc5 = QStringLiteral("PLC5 DF1 CRC");
    QTest::newRow("a named bit lies in the first word") << ml << "T4:3/DN"
                                                        << "T4:3";
    QTest::newRow("the word of a named bit keeps the station") << ml << "2-T4:3/DN"
                                                               << "2-T4:3";
    QTest::newRow("the word of an octal bit keeps its zeros") << plc5 << "I:017/05"
                                                              << "I:017";
    QTest::newRow("the word of an octal bit keeps the station") << plc5 << "2-O:1/5"
                                                                << "2-O:1";
}

void ShippedDrivers::scriptsConvert()
{
    QFETCH(QString, driverName);
    QFETCH(QString, address);
    QFETCH(QString, registerAddress);
    int index = -1;
    LabelLoader &label = *labelOf(driverName);
    const CommunicatorCommand made =
        label.convertBitCommandToRegisterCommand(command(address, CommunicatorCommand::Bit), index);
    QCOMPARE(made.address, registerAddress);
    QCOMPARE(label.datatype(index), int(CommunicatorCommand::Word));
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
    for (const char *text : {"", "-", "--", "x", "T4:/DN", "T4:0/", "T4:0/constructor", "T4:0/toString", "I:/0",
                             "O:9/0", "0", "000000000000000001", "2-", "S>NULL"}) {
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
        ":4: error: header 'end' stands twice");
    add("an unknown setting", QStringLiteral("speed\t5\n") + head + header + row, ":1: error: unknown header 'speed'");
    add("a missing setting", QStringLiteral("driver\tD\nblock_size\t1\n") + header + row,
        ":3: error: 'bit_block_size' has to stand before the header");
    add("a setting that is no number", QString(head).replace(QLatin1String("\t1"), QLatin1String("\tx")) + header + row,
        ":2: error: 'block_size' is no number: 'x'");
    add("a driver without a name", QString(head).replace(QLatin1String("\tD"), QLatin1String("\t")) + header + row,
        ":1: error: 'driver' is empty");
    add("the driver name of another file",
        QString(head).replace(QLatin1String("\tD"), QLatin1String("\tGood")) + header + row,
        ":1: error: driver 'Good' stands already in ");
    add("an empty pattern", head + header + changed("(D)(\\d)", ""), ":5: error: 'pattern' is empty");
    add("an empty end", head + header + changed("\t9\t", "\t\t"), ":5: error: 'end' is empty");
    add("a block size of 0", head + header + changed("\t1\tN", "\t0\tN"), ":5: error: 'blocksize' is 0");
    add("a base of 2", head + header + changed("\t10\t", "\t2\t"), ":5: error: 'base' is not 8, 10 or 16: '2'");
    add("a type of 9", head + header + changed("\\d)\t2", "\\d)\t9"), ":5: error: 'type' is not 0 to 5: '9'");
    add("a continue rule of neither kind", head + header + changed("\tN", "\tno"),
        ":5: error: 'continue' is neither Y nor N: 'no'");
    add("a pattern that stands twice", head + header + row + changed("one", "two"),
        ":6: error: the pattern stands already in line 5");
    add("a description that stands twice", head + header + row + changed("(D)", "(E)"),
        ":6: error: the description stands already in line 5");
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
        "0FF\t007\t(H)([0-9A-F]+)\t2\t2\tH: it's hexadecimal; it's kept\tH\t2\t\t\t16\t5\tY\n");
}

struct Compiled
{
    int exitCode;
    QString messages;
};

Compiled compile(const QString &database, const QStringList &files)
{
    QProcess process;
    process.start(QStringLiteral("bash"), QStringList{sourceFolder() + QLatin1String("/compile.sh"), database} + files);
    if (!process.waitForFinished())
        qFatal("bash does not run");
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardError())};
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
    QCOMPARE(rows.first().pattern, QStringLiteral("(H)([0-9A-F]+)"));
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
