// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/address_grammar/commandformatter.h"
#include "zelmar_label/label_table/commandinformationtalbe.h"

#include "support/logrecorder.h"
#include "support/randomcases.h"
#include "support/referencegrammar.h"

#include <QtTest>

/// Compares the library with the plain reference: the same answers, and the same log lines in the same order.
class TestDifferential : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void randomRows_data();
    void randomRows();
    void randomTables_data();
    void randomTables();
    void shippedDriversAgree();
    void throwingScripts_data();
    void throwingScripts();
};

namespace {

QString textOf(int value)
{
    return QString::number(value);
}

QString textOf(const QString &text)
{
    return QLatin1Char('|') + text + QLatin1Char('|');
}

QString textOf(const CommunicatorCommand &command)
{
    return QStringLiteral("%1 %2 %3 %4 %5 ")
               .arg(command.scanTime)
               .arg(int(command.dataType))
               .arg(command.length)
               .arg(command.auxiliaryNumber)
               .arg(int(command.auxiliaryFlag)) +
           textOf(command.auxiliaryText) + textOf(command.address);
}

template<typename Element>
QString textOf(const QList<Element> &list)
{
    QStringList texts;
    for (const Element &element : list)
        texts.append(textOf(element));
    return texts.join(QLatin1Char('\n'));
}

/// Calls both sides and keeps the first difference.
class Comparison
{
public:
    template<typename Library, typename Reference>
    void ask(const char *question, const QString &about, Library library, Reference reference)
    {
        if (!m_difference.isEmpty())
            return;
        ++m_questions;
        m_log.take();
        const QString answer = textOf(library());
        const QStringList lines = m_log.take();
        const QString expected = textOf(reference());
        const QStringList expectedLines = m_log.take();
        m_answers += answer != textOf(-1) && !answer.isEmpty() && answer != textOf(0);
        if (answer != expected || lines != expectedLines) {
            m_difference = QLatin1String(question) + QLatin1String(" of |") + about + QLatin1String("|: ") + answer +
                           QLatin1String(" instead of ") + expected + QLatin1String(", log ") +
                           lines.join(QLatin1String("; ")) + QLatin1String(" instead of ") +
                           expectedLines.join(QLatin1String("; "));
        }
    }

    QStringList takeLog() { return m_log.take(); }
    QString difference() const { return m_difference; }
    int questions() const { return m_questions; }
    /// Number of answers other than "no".
    int answers() const { return m_answers; }

private:
    LogRecorder m_log;
    QString m_difference;
    int m_questions = 0;
    int m_answers = 0;
};

CommunicatorCommand randomCommand(Random &random, const QString &address)
{
    static const QList<int> types = {0, 0, 1, 2, 2, 3, 4, 5, 9, 6};
    static const QList<int> lengths = {1, 1, 1, 0, 2, 5, 16, 200};
    CommunicatorCommand made = command(address, random.pick(types), static_cast<quint64>(random.pick(lengths)));
    made.scanTime = random.below(5);
    made.auxiliaryNumber = random.below(3);
    made.auxiliaryText = QStringLiteral("kept");
    made.auxiliaryFlag = true;
    return made;
}

void askAboutAddress(Comparison &both, const label::CommandFormatter &row, const reference::Format &plain,
                     const QString &address)
{
    both.ask(
        "matchedLength", address, [&] { return row.matchedLength(address); },
        [&] { return plain.matchedLength(address); });
    both.ask(
        "isAddressValid", address, [&] { return int(row.isAddressValid(address)); },
        [&] { return int(plain.isAddressValid(address)); });
    both.ask(
        "getRangeString", address, [&] { return row.getRangeString(address); },
        [&] { return plain.getRangeString(address); });
    both.ask(
        "getAddresRangePart", address, [&] { return row.getAddresRangePart(address); },
        [&] { return plain.getAddresRangePart(address); });
    both.ask(
        "getbitOffset", address, [&] { return row.getbitOffset(address); },
        [&] { return plain.getbitOffset(address); });
    for (const int type : {0, 2}) {
        both.ask(
            "isAddressDataTypeMatch", address,
            [&] { return int(row.isAddressDataTypeMatch(address, static_cast<CommunicatorCommand::DataType>(type))); },
            [&] { return int(plain.isAddressDataTypeMatch(address, type)); });
    }
    const int body = plain.matchedLength(address.section(QLatin1Char('-'), -1));
    both.ask(
        "canBeCompleted", address, [&] { return int(row.canBeCompleted(address.section(QLatin1Char('-'), -1))); },
        [&] { return int(body >= address.section(QLatin1Char('-'), -1).size()); });
}

void askForCommands(Comparison &both, Random &random, const label::CommandFormatter &row,
                    const reference::Format &plain, const QString &address)
{
    static const QList<int> counts = {0, 1, 2, 3, 7, 20, -1};
    static const QList<int> steps = {1, 1, 0, -1, 2, 3, 5, 16, 100, -7, 1000};
    const CommunicatorCommand command = randomCommand(random, address);
    const int count = random.pick(counts);
    const int step = random.pick(steps);
    const bool checkRange = random.chance(60);
    both.ask(
        "autoCompleteCommand", address, [&] { return row.autoCompleteCommand(command); },
        [&] { return plain.autoCompleteCommand(command); });
    both.ask(
        "autoCompleteStringCommand", address, [&] { return row.autoCompleteStringCommand(command); },
        [&] { return plain.autoCompleteStringCommand(command); });
    both.ask(
        "makeContinueCommand", address, [&] { return row.makeContinueCommand(command, count); },
        [&] { return plain.makeContinueCommand(command, count); });
    both.ask(
        "makeContinueCommandwithCap", address,
        [&] { return row.makeContinueCommandwithCap(command, count, step, checkRange); },
        [&] { return plain.makeContinueCommandwithCap(command, count, step, checkRange); });
    both.ask(
        "makeBitContinueCommand", address, [&] { return row.makeBitContinueCommand(command, count, step, checkRange); },
        [&] { return plain.makeBitContinueCommand(command, count, step, checkRange); });
    both.ask(
        "convertToRegisterAddress", address, [&] { return row.convertToRegisterAddress(command); },
        [&] { return plain.convertToRegisterAddress(command); });
}

void askAboutNumber(Comparison &both, const label::CommandFormatter &row, const reference::Format &plain, int number,
                    int bit, int radix)
{
    const QString about = QString::number(number);
    both.ask(
        "isRangeValid", about, [&] { return int(row.isRangeValid(number)); },
        [&] { return int(plain.isRangeValid(number)); });
    both.ask(
        "validateMultiple", about, [&] { return int(row.validateMultiple(number)); },
        [&] { return int(plain.validateMultiple(number)); });
    both.ask(
        "makeBlockCommand", about, [&] { return row.makeBlockCommand(bit, number, bit); },
        [&] { return plain.makeBlockCommand(bit, number, bit); });
    const auto carried = [&](const auto &side) {
        int word = number;
        int carriedBit = bit;
        side.bitOffsetCarry(word, carriedBit, radix);
        return QList<int>{word, carriedBit};
    };
    both.ask(
        "bitOffsetCarry", about, [&] { return carried(row); }, [&] { return carried(plain); });
}

void askAboutConstants(Comparison &both, const label::CommandFormatter &row, const reference::Format &plain)
{
    const auto constants = [](const auto &side) {
        return QList<int>{side.needOptimize(), side.aligmentSize(), side.isTypeRangeNeedAlignmentByte(), side.bitbase(),
                          side.canConvertRegisterCommand()};
    };
    both.ask(
        "the constants", QString(), [&] { return constants(row); }, [&] { return constants(plain); });
}

void askAboutTable(Comparison &both, Random &random, const label::CommandInformationTalbe &table,
                   const reference::Table &plain, const QString &address)
{
    for (const int filter : {-1, 0, 2}) {
        const QString about = address + QLatin1String(" filter ") + QString::number(filter);
        both.ask(
            "getFirstMatchedAddressIndex", about, [&] { return table.getFirstMatchedAddressIndex(address, filter); },
            [&] { return plain.getFirstMatchedAddressIndex(address, filter); });
        both.ask(
            "getAllPartialMatchedAddressIndex", about,
            [&] { return table.getAllPartialMatchedAddressIndex(address, filter); },
            [&] { return plain.getAllPartialMatchedAddressIndex(address, filter); });
    }
    const CommunicatorCommand bit = command(address, random.chance(90) ? 0 : 2);
    const auto converted = [&bit](const auto &side) {
        int row = -7;
        QString text;
        const CommunicatorCommand made = side.convertBitCommandToRegisterCommand(bit, row, text);
        return textOf(made) + QString::number(row) + text;
    };
    both.ask(
        "convertBitCommandToRegisterCommand", address, [&] { return converted(table); },
        [&] { return converted(plain); });
    const int row = random.below(plain.rows.size());
    const int start = random.below(2000);
    const int length = random.below(3000) - 10;
    both.ask(
        "makeBlockCommand", QString::number(row), [&] { return table.makeBlockCommand(-1, row, start, length); },
        [&] { return plain.makeBlockCommand(-1, row, start, length); });
}

QString failureOf(const Comparison &both, quint32 seed, const QString &rows)
{
    return QStringLiteral("seed ") + QString::number(seed) + QStringLiteral(": ") + both.difference() +
           QStringLiteral("\nin ") + rows;
}

} // namespace

void TestDifferential::initTestCase()
{
    writeRandomScripts();
    copyShippedScripts();
}

void TestDifferential::randomRows_data()
{
    QTest::addColumn<quint32>("seed");

    QTest::newRow("rows of seed 1") << 1u;
    QTest::newRow("rows of seed 4711") << 4711u;
    QTest::newRow("rows of seed 20240607") << 20240607u;
}

void TestDifferential::randomRows()
{
    QFETCH(quint32, seed);

    Random random(seed);
    Comparison both;
    for (int i = 0; i < 700; ++i) {
        const RowCase made = randomRow(random);
        both.takeLog();
        const label::CommandFormatter row = made.row.formatter();
        const QStringList lines = both.takeLog();
        const reference::Format plain(made.row);
        QCOMPARE(lines, both.takeLog());
        askAboutConstants(both, row, plain);
        for (int left = 12; left > 0; --left) {
            const QString address = left > 9 ? made.sample : mutated(random, made.sample);
            askAboutAddress(both, row, plain, address);
            askForCommands(both, random, row, plain, address);
        }
        for (int left = 6; left > 0; --left) {
            const int number =
                random.chance(80) ? random.below(10200) - 100 : random.pick(QList<int>{INT_MAX, INT_MIN});
            const QList<int> radices = {10, 16, 8, 32, -1, plain.bitbase()};
            askAboutNumber(both, row, plain, number, random.below(300) - 20, random.pick(radices));
        }
        QVERIFY2(both.difference().isEmpty(), qPrintable(failureOf(both, seed, described(made.row))));
    }
    QVERIFY2(both.answers() * 3 > both.questions(),
             qPrintable(QStringLiteral("only %1 of %2").arg(both.answers()).arg(both.questions())));
}

void TestDifferential::randomTables_data()
{
    QTest::addColumn<quint32>("seed");

    QTest::newRow("tables of seed 2") << 2u;
    QTest::newRow("tables of seed 815") << 815u;
}

void TestDifferential::randomTables()
{
    QFETCH(quint32, seed);

    Random random(seed);
    Comparison both;
    for (int i = 0; i < 120; ++i) {
        label::CommandInformationTalbe table;
        reference::Table plain;
        QStringList rows;
        QStringList samples;
        for (int left = 1 + random.below(12); left > 0; --left) {
            const RowCase made = randomRow(random);
            table.addCommandFormatter(made.row.formatter());
            plain.rows.append(reference::Format(made.row));
            rows.append(described(made.row));
            samples.append(made.sample);
        }
        for (int left = 20; left > 0; --left)
            askAboutTable(both, random, table, plain, mutated(random, random.pick(samples)));
        QVERIFY2(both.difference().isEmpty(), qPrintable(failureOf(both, seed, rows.join(QLatin1Char('\n')))));
    }
    QVERIFY2(both.answers() * 3 > both.questions(),
             qPrintable(QStringLiteral("only %1 of %2").arg(both.answers()).arg(both.questions())));
}

void TestDifferential::shippedDriversAgree()
{
    const QList<ShippedDriver> drivers = shippedDrivers();
    if (drivers.isEmpty())
        QSKIP("no drivers in the source tree");
    constexpr quint32 seed = 3;
    Random random(seed);
    Comparison both;
    for (const ShippedDriver &driver : drivers) {
        label::CommandInformationTalbe table;
        reference::Table plain;
        for (const Row &row : driver.rows) {
            table.addCommandFormatter(row.formatter());
            plain.rows.append(reference::Format(row));
        }
        for (const Row &row : driver.rows)
            QVERIFY2(row.addressGroupIndex > 0 && row.base > 0, qPrintable(driver.name + described(row)));
        QStringList addresses = driver.addresses;
        for (const Row &row : driver.rows)
            addresses.append(row.prefixSymbol + QString::number(random.below(300)));
        for (int left = 50; left > 0; --left) {
            const QString sample = random.pick(addresses);
            const QString address = random.chance(60) ? sample : mutated(random, sample);
            askAboutTable(both, random, table, plain, address);
            const int index = table.getFirstMatchedAddressIndex(address, -1);
            if (index < 0)
                continue;
            askAboutAddress(both, *table.formatterAt(index), plain.rows.at(index), address);
            askForCommands(both, random, *table.formatterAt(index), plain.rows.at(index), address);
        }
        QVERIFY2(both.difference().isEmpty(), qPrintable(failureOf(both, seed, driver.name)));
    }
    qInfo("%d questions, %d of them answered", both.questions(), both.answers());
}

void TestDifferential::throwingScripts_data()
{
    QTest::addColumn<QString>("script");
    QTest::addColumn<int>("line");

    QTest::newRow("an error is thrown") << "\n\nthrow new Error('no');" << 3;
    QTest::newRow("a name is not known") << "var a = 1;\nnosuch();" << 2;
    QTest::newRow("the text is no script") << "var a = ;" << 1;
    QTest::newRow("a bare text is thrown") << "\nthrow 'no';" << 2;
    QTest::newRow("a number is thrown in a function") << "\nfunction f() {\nthrow 5; }\nf();" << 3;
}

void TestDifferential::throwingScripts()
{
    QFETCH(QString, script);
    QFETCH(int, line);

    writeScript(QStringLiteral("thrower.js"), script);
    Row row;
    row.multipleRule = QStringLiteral("F>thrower.js");
    LogRecorder log;
    const reference::Format plain(row);
    const QStringList expected = log.take();
    const label::CommandFormatter formatter = row.formatter();
    const QStringList lines = log.take();
    removeScript(QStringLiteral("thrower.js"));
    QCOMPARE(expected.size(), 2);
    const QString front = QStringLiteral("uncaught exception at line %1 : ").arg(line);
    QVERIFY2(expected.at(1).startsWith(front), qPrintable(expected.at(1)));
    QCOMPARE(lines, expected);
}

QTEST_GUILESS_MAIN(TestDifferential)
#include "tst_differential.moc"
