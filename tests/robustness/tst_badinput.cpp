// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/address_grammar/commandformatter.h"
#include "zelmar_label/address_grammar/multiplerule.h"
#include "zelmar_label/label_store/dynamiclabelcreators.h"
#include "zelmar_label/label_table/dynamiclabelcreatorinterface.h"
#include "zelmar_label/label_table/labelloader.h"

#include "support/labelfixtures.h"
#include "support/logrecorder.h"

#include <QtTest>

#include <limits>

/// Whatever stands in a column or an argument: nothing throws, hangs or reads out of bounds. Worth most under the
/// address and undefined-behaviour sanitizers.
class TestBadInput : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void textsInColumns_data();
    void textsInColumns();
    void textsAsAddresses_data();
    void textsAsAddresses();
    void textsForCreators_data();
    void textsForCreators();
    void brokenPatterns_data();
    void brokenPatterns();
    void groupNumbers_data();
    void groupNumbers();
    void radices_data();
    void radices();
    void limits_data();
    void limits();
    void numbersBeyondInt_data();
    void numbersBeyondInt();
    void foreignDigits_data();
    void foreignDigits();
    void counts_data();
    void counts();
    void longRunsEndAtTheLimits();
    void rowTypes_data();
    void rowTypes();
    void dataSizes_data();
    void dataSizes();
    void lengths_data();
    void lengths();
    void blocks_data();
    void blocks();
    void wrongTypeIndexes_data();
    void wrongTypeIndexes();
    void extremeCarries();
    void extremeRegisterNumbers();
    void stationNumbers_data();
    void stationNumbers();
};

namespace {

constexpr int lowest = std::numeric_limits<int>::min();
constexpr int highest = std::numeric_limits<int>::max();

struct NamedText
{
    const char *name;
    QString text;
};

QList<NamedText> badTexts()
{
    constexpr int many = 100000;
    return {{"a null text", QString()},
            {"an empty text", QStringLiteral("")},
            {"a blank", QStringLiteral(" ")},
            {"100,000 letters", QString(many, QLatin1Char('D'))},
            {"100,000 digits", QString(many, QLatin1Char('9'))},
            {"a symbol with 100,000 digits", QLatin1Char('D') + QString(many, QLatin1Char('1'))},
            {"100,000 dashes", QString(many, QLatin1Char('-'))},
            {"100,000 dots", QString(many, QLatin1Char('.'))},
            {"100,000 percent signs", QString(many, QLatin1Char('%'))},
            {"100,000 alternatives", QString(many, QLatin1Char('|'))},
            {"100,000 open classes", QString(many, QLatin1Char('['))},
            {"100,000 backslashes", QString(many, QLatin1Char('\\'))},
            {"a NUL character", QString(QChar())},
            {"a NUL character in a number", QStringLiteral("D1") + QChar() + QLatin1Char('0')},
            {"a high surrogate alone", QStringLiteral("D") + QChar(0xd800)},
            {"a low surrogate in front", QChar(0xdc00) + QStringLiteral("D1")},
            {"a character that is none", QString(QChar(0xffff))},
            {"Arabic-Indic digits", QString::fromUtf8("D\xd9\xa1\xd9\xa2")},
            {"fullwidth digits", QString::fromUtf8("D\xef\xbc\x91\xef\xbc\x92")},
            {"place markers", QStringLiteral("%1 %2 %99 %L1")},
            {"a path upwards", QStringLiteral("F>../../../../etc/passwd")},
            {"a folder as a script", QStringLiteral("F>.")},
            {"a newline", QStringLiteral("D1\n")},
            {"a compound rule of endless words", QString(many, QLatin1Char('a')) + QLatin1String("-f:r")},
            {"endless words in the wrong order", QString(many, QLatin1Char('a')) + QLatin1String(":r-")},
            {"a number with a sign", QStringLiteral("-5")}};
}

/// Asks a row everything about an address, and checks what holds for any text.
void askEverything(const label::CommandFormatter &row, const QString &address)
{
    QVERIFY(row.matchedLength(address) <= address.size());
    QCOMPARE(row.hadStationID(address), address.contains(QLatin1Char('-')));
    QVERIFY(!row.removeStationID(address).contains(QLatin1Char('-')));
    QVERIFY(row.getRangeString(address).size() <= address.size());
    QVERIFY(row.getEditorUsedRangeString(address).size() <= address.size());
    row.isAddressValid(address);
    row.isAddressDataTypeMatch(address, CommunicatorCommand::Bit);
    row.isDeviceAddressValid(address);
    row.canBeCompleted(address);
    row.getAddresRangePart(address);
    row.getbitOffset(address);
    row.convertedRegisterCommandSymbol();
    row.convertedRagisterCommandRange(address);
    row.stringWithDigits(address);
    // An expression takes milliseconds for a long text.
    const bool isLong = address.size() > 1000;
    const QList<int> types = isLong ? QList<int>{3} : QList<int>{0, 3, highest};
    for (const int type : types) {
        for (const quint64 length : {quint64(1), std::numeric_limits<quint64>::max()}) {
            const CommunicatorCommand asked = command(address, type, length);
            row.autoCompleteCommand(asked);
            row.convertToRegisterAddress(asked);
            QVERIFY(row.makeContinueCommand(asked, 3).size() <= 3);
            QVERIFY(row.makeContinueCommand(asked, -1).size() <= 1);
            QVERIFY(row.makeContinueCommandwithCap(asked, 3, highest, true).size() <= 3);
            QVERIFY(row.makeContinueCommandwithCap(asked, 3, lowest, false).size() <= 3);
            QVERIFY(row.makeBitContinueCommand(asked, 3, highest, false).size() <= 3);
            QVERIFY(row.makeBitContinueCommand(asked, lowest, 1, true).isEmpty());
        }
    }
}

const QStringList &plainAddresses()
{
    static const QStringList texts = {QString(), QStringLiteral("D100"), QStringLiteral("3-D100.5"),
                                      QStringLiteral("%1D"), QStringLiteral("-")};
    return texts;
}

} // namespace

void TestBadInput::textsInColumns_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("text");

    const char *const columns[] = {"the pattern", "the description", "the symbol",      "the start",
                                   "the end",     "the rule",        "the catch table", "the continue rule"};
    const QList<NamedText> texts = badTexts();
    for (int column = 0; column < 8; ++column) {
        for (const NamedText &bad : texts)
            QTest::addRow("%s as %s", bad.name, columns[column]) << column << bad.text;
    }
}

void TestBadInput::textsInColumns()
{
    QFETCH(int, column);
    QFETCH(QString, text);

    // To compile a long expression takes seconds under a sanitizer: one row has to do.
    const LogRecorder log;
    const QList<int> types = column == 0 ? QList<int>{2} : QList<int>{0, 2};
    for (const int type : types) {
        Row row;
        row.type = type;
        row.multipleRule = type == 0 ? QStringLiteral("dot-f:r") : QString();
        QString *const texts[] = {&row.pattern, &row.description,  &row.prefixSymbol, &row.start,
                                  &row.end,     &row.multipleRule, &row.catchTable,   &row.continueRule};
        *texts[column] = text;
        const label::CommandFormatter formatter = row.formatter();
        QCOMPARE(formatter.pattern(), row.pattern);
        QCOMPARE(formatter.formatString(), row.description);
        QCOMPARE(formatter.prefixSymbol(), row.prefixSymbol);
        QCOMPARE(formatter.ruleText(), row.multipleRule);
        QCOMPARE(formatter.catchTable(), row.catchTable);
        QCOMPARE(formatter.continueRule(), row.continueRule);
        for (const QString &address : plainAddresses())
            askEverything(formatter, address);
    }
}

void TestBadInput::textsAsAddresses_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("rule");
    QTest::addColumn<QString>("address");

    const QList<NamedText> texts = badTexts();
    for (const NamedText &bad : texts) {
        QTest::addRow("%s at a register row", bad.name) << "(D)(\\d+)" << 2 << "" << bad.text;
        QTest::addRow("%s at an aligned row", bad.name) << "(D)(\\d+)" << 2 << "m16" << bad.text;
        QTest::addRow("%s at a bit row with a dot", bad.name) << "(D)(.*)" << 0 << "dot-f:r" << bad.text;
        QTest::addRow("%s at a bit row with two bit digits", bad.name)
            << "(D)(.*)" << 0 << "last2-fam3:rfam3" << bad.text;
        QTest::addRow("%s at a bit row of one part", bad.name) << "(D)(.*)" << 0 << "union-dec:rm16_D" << bad.text;
        QTest::addRow("%s at a bit row without a rule", bad.name) << "(D)(.*)" << 0 << "" << bad.text;
    }
}

void TestBadInput::textsAsAddresses()
{
    QFETCH(QString, pattern);
    QFETCH(int, type);
    QFETCH(QString, rule);
    QFETCH(QString, address);

    const LogRecorder log;
    Row row;
    row.pattern = pattern;
    row.type = type;
    row.multipleRule = rule;
    askEverything(row.formatter(), address);

    label::CommandInformationTalbe table;
    table.addCommandFormatter(row.formatter());
    table.addCommandFormatter(Row().formatter());
    label::LabelLoader label(table);
    QString prefix;
    QString range;
    int index = 0;
    QCOMPARE(label.addressValidation(address, -1) >= 0, label.parseAddress(address, prefix, range));
    QVERIFY(label.getAllMatchedIndex(address, -1).size() <= 2);
    QVERIFY(label.getAllMatchedSymbol(address, -1).isEmpty());
    label.getCatchTableName(address, -1);
    for (const int dataType : {0, 2}) {
        const CommunicatorCommand asked = command(address, dataType);
        const CommunicatorCommand converted = label.convertBitCommandToRegisterCommand(asked, index);
        QVERIFY(dataType == 0 || converted.address == QLatin1String("S>NULL"));
        for (const int typeIndex : {0, 1}) {
            QVERIFY(label.calculateOffsetByte(typeIndex, asked, asked) <= 0);
            label.isCommandInBlockRange(typeIndex, asked, asked);
            label.normalizeCommand(typeIndex, asked);
        }
    }
}

void TestBadInput::textsForCreators_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("basePattern");

    const QList<NamedText> texts = badTexts();
    for (const NamedText &bad : texts)
        QTest::addRow("%s belongs to no family", bad.name) << bad.text << QString();
    const QString zeros(100000, QLatin1Char('0'));
    QTest::newRow("a block number of 100,000 zeros is 0") << QString("DB" + zeros + ".DBW1") << QString();
    QTest::newRow("100,000 zeros before a block number") << QString("DB" + zeros + "7.DBW1") << "DB_DBW";
    QTest::newRow("a byte number of 100,000 digits") << QString("DB1.DBW" + zeros) << "DB_DBW";
    QTest::newRow("a file number of 100,000 digits") << QString("N9" + zeros + ":1") << QString();
    QTest::newRow("a module number of 100,000 digits") << QString("U" + zeros + "\\G1") << "MOD_ACCESS_DEV";
    QTest::newRow("a parameter number of 100,000 digits") << QString("INT8:1" + zeros + ":1") << QString();
    QTest::newRow("a type in lower case finds no template") << "int8:1:2"
                                                            << "int8_NO_IDX";
    QTest::newRow("a family behind a station") << "3-DB1.DBW1" << QString();
}

void TestBadInput::textsForCreators()
{
    QFETCH(QString, address);
    QFETCH(QString, basePattern);

    label::DefaultCreator none;
    label::IsoOnTcpCerator blocks;
    label::DF1Creator files;
    label::Fx5uEthCreator modules;
    label::LustBusCreator parameters;
    QString found;
    for (label::DynamicLabelCreatorInterface *creator :
         std::initializer_list<label::DynamicLabelCreatorInterface *>{&none, &blocks, &files, &modules, &parameters}) {
        label::DynamicLabelItem item;
        if (creator->create(address, item))
            found += item.basePattern;
    }
    QCOMPARE(found, basePattern);
}

void TestBadInput::brokenPatterns_data()
{
    QTest::addColumn<QString>("pattern");

    for (const char *pattern :
         {"",   "(",   ")",  "[",   "(D",         "(D)(\\d", "[z",  "D{",  "D{3", "D{2,1}", "*",  "+",  "?",
          "(?", "(?<", "\\", "D\\", "(D)(\\d+))", "{1}",     "D**", "(?:", "(?=", "\\x",    "[]", "[^]"})
        QTest::addRow("the pattern \"%s\"", pattern) << pattern;
    QTest::newRow("1,000 open groups") << QString(1000, QLatin1Char('('));
    QTest::newRow("1,000 groups in each other") << QString(QString(1000, '(') + QString(1000, ')'));
    QTest::newRow("100,000 groups in each other") << QString(QString(100000, '(') + QString(100000, ')'));
}

void TestBadInput::brokenPatterns()
{
    QFETCH(QString, pattern);

    Row row;
    row.pattern = pattern;
    LogRecorder log;
    const label::CommandFormatter formatter = row.formatter();
    log.take();
    QVERIFY(!formatter.isAddressValid(QStringLiteral("D100")));
    QVERIFY(!formatter.isAddressValid(QStringLiteral("3-D100")));
    QVERIFY(!formatter.isAddressDataTypeMatch(QStringLiteral("D100"), CommunicatorCommand::Word));
    QVERIFY(formatter.matchedLength(QStringLiteral("D100")) < 4);
    const CommunicatorCommand asked = command(QStringLiteral("3-D100"), 3);
    QCOMPARE(addresses(formatter.makeContinueCommand(asked, 5)), QStringList(QStringLiteral("3-D100")));
    QCOMPARE(addresses(formatter.autoCompleteCommand(asked)), QStringList(QStringLiteral("3-D100")));
    QCOMPARE(log.take(), QStringList());
}

void TestBadInput::groupNumbers_data()
{
    QTest::addColumn<int>("group");
    QTest::addColumn<QString>("range");
    QTest::addColumn<int>("number");

    QTest::newRow("the whole match, which is no number") << 0 << "D100" << -1;
    QTest::newRow("the symbol, which is no number") << 1 << "D" << -1;
    QTest::newRow("the digits") << 2 << "100" << 100;
    QTest::newRow("one group too many") << 3 << "" << -1;
    QTest::newRow("far too many") << 1000000 << "" << -1;
    QTest::newRow("the highest number") << highest << "" << -1;
    QTest::newRow("a negative group") << -1 << "" << -1;
    QTest::newRow("the lowest number") << lowest << "" << -1;
}

void TestBadInput::groupNumbers()
{
    QFETCH(int, group);
    QFETCH(QString, range);
    QFETCH(int, number);

    Row row;
    row.addressGroupIndex = group;
    const LogRecorder log;
    const label::CommandFormatter formatter = row.formatter();
    QCOMPARE(formatter.getRangeString(QStringLiteral("D100")), range);
    QCOMPARE(formatter.getAddresRangePart(QStringLiteral("D100")), number);
    QVERIFY(formatter.isAddressValid(QStringLiteral("D100")));
    QCOMPARE(formatter.isAddressDataTypeMatch(QStringLiteral("D100"), CommunicatorCommand::Word), number == 100);
    for (const QString &address : plainAddresses())
        askEverything(formatter, address);
}

void TestBadInput::radices_data()
{
    QTest::addColumn<int>("radix");
    QTest::addColumn<int>("number");
    QTest::addColumn<bool>("isValid");
    QTest::addColumn<QString>("printed");

    QTest::newRow("36 is the highest") << 36 << 1296 << true << "Dv";
    QTest::newRow("0 reads by the text's own front") << 0 << 100 << true << "D31";
    for (const int radix : {1, 37, -5, -1, lowest, highest})
        QTest::addRow("%d reads nothing and prints in decimal", radix) << radix << -1 << false << "D31";
}

void TestBadInput::radices()
{
    QFETCH(int, radix);
    QFETCH(int, number);
    QFETCH(bool, isValid);
    QFETCH(QString, printed);

    Row row;
    row.base = radix;
    LogRecorder log;
    const label::CommandFormatter formatter = row.formatter();
    log.take();
    QCOMPARE(formatter.getAddresRangePart(QStringLiteral("D100")), number);
    // A number that cannot be read does not speak against the address.
    QVERIFY(formatter.isAddressValid(QStringLiteral("D100")));
    QCOMPARE(log.take(), QStringList());
    QCOMPARE(formatter.isRangeValid(number), isValid);
    const QStringList complaint = {QStringLiteral("isRangeValid CommandFormatter isRangeValid data error")};
    QCOMPARE(log.take(), isValid ? QStringList() : complaint);
    QCOMPARE(formatter.makeBlockCommand(-1, 31, 1).address, printed);
    for (const QString &address : plainAddresses())
        askEverything(formatter, address);
}

void TestBadInput::limits_data()
{
    QTest::addColumn<QString>("start");
    QTest::addColumn<QString>("end");
    QTest::addColumn<bool>("isReadable");
    QTest::addColumn<bool>("isValid");

    QTest::newRow("ordinary limits") << "0"
                                     << "9999" << true << true;
    QTest::newRow("an end before the start") << "200"
                                             << "50" << true << false;
    QTest::newRow("the whole of int") << "-2147483648"
                                      << "2147483647" << true << true;
    QTest::newRow("an end beyond int") << "0"
                                       << "2147483648" << false << false;
    QTest::newRow("a start before int") << "-2147483649"
                                        << "9999" << false << false;
    QTest::newRow("no start") << ""
                              << "9999" << false << false;
    QTest::newRow("null limits") << QString() << QString() << false << false;
    QTest::newRow("letters") << "0"
                             << "FFF" << false << false;
    QTest::newRow("blanks around") << " 0 "
                                   << " 9999 " << true << true;
    QTest::newRow("a fraction") << "0"
                                << "99.5" << false << false;
    QTest::newRow("100,000 digits") << "0" << QString(100000, QLatin1Char('9')) << false << false;
    QTest::newRow("Arabic-Indic digits") << "0" << QString::fromUtf8("\xd9\xa9\xd9\xa9\xd9\xa9") << false << false;
    QTest::newRow("a NUL character behind the digits")
        << "0" << QString(QStringLiteral("9999") + QChar()) << false << false;
}

void TestBadInput::limits()
{
    QFETCH(QString, start);
    QFETCH(QString, end);
    QFETCH(bool, isReadable);
    QFETCH(bool, isValid);

    Row row;
    row.start = start;
    row.end = end;
    LogRecorder log;
    const label::CommandFormatter formatter = row.formatter();
    log.take();
    const QStringList complaint = {QStringLiteral("isRangeValid CommandFormatter isRangeValid data error")};
    QCOMPARE(formatter.isRangeValid(100), isValid);
    QCOMPARE(log.take(), isReadable ? QStringList() : complaint);
    QCOMPARE(formatter.isAddressValid(QStringLiteral("D100")), isValid);
    QCOMPARE(log.take(), isReadable ? QStringList() : complaint);
    // Each pass of a run complains.
    QCOMPARE(formatter.makeContinueCommand(command(QStringLiteral("D100"), 2), 3).size(), isValid ? 3 : 0);
    QCOMPARE(log.take(), isReadable ? QStringList() : complaint + complaint + complaint);
}

void TestBadInput::numbersBeyondInt_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<int>("number");
    QTest::addColumn<bool>("isValid");
    QTest::addColumn<QStringList>("run");

    QTest::newRow("the highest number") << "D2147483647" << highest << true << QStringList{"D2147483647"};
    QTest::newRow("one more is no number, and the match is enough")
        << "D2147483648" << -1 << true << QStringList{"D0", "D1"};
    QTest::newRow("100,000 digits") << QString("D" + QString(100000, '9')) << -1 << true << QStringList{"D0", "D1"};
    QTest::newRow("100,000 zeros are the number 0")
        << QString("D" + QString(100000, '0')) << 0 << true << QStringList{"D0", "D1", "D2"};
}

void TestBadInput::numbersBeyondInt()
{
    QFETCH(QString, address);
    QFETCH(int, number);
    QFETCH(bool, isValid);
    QFETCH(QStringList, run);

    Row row;
    row.end = QStringLiteral("2147483647");
    const LogRecorder log;
    const label::CommandFormatter formatter = row.formatter();
    QCOMPARE(formatter.getAddresRangePart(address), number);
    QCOMPARE(formatter.isAddressValid(address), isValid);
    // The run goes on from the number, -1 included, and passes over numbers beyond the limits.
    QCOMPARE(addresses(formatter.makeContinueCommand(command(address, 2), 3)), run);
}

void TestBadInput::foreignDigits_data()
{
    QTest::addColumn<QString>("address");

    QTest::newRow("Arabic-Indic digits") << QString::fromUtf8("D\xd9\xa1\xd9\xa2");
    QTest::newRow("fullwidth digits") << QString::fromUtf8("D\xef\xbc\x91\xef\xbc\x92");
    QTest::newRow("Devanagari digits") << QString::fromUtf8("D\xe0\xa5\xa7\xe0\xa5\xa8");
}

void TestBadInput::foreignDigits()
{
    QFETCH(QString, address);

    // The pattern takes any digit, the conversion only those of the device.
    const LogRecorder log;
    const label::CommandFormatter formatter = Row().formatter();
    QCOMPARE(formatter.matchedLength(address), 3);
    QCOMPARE(formatter.getAddresRangePart(address), -1);
    QVERIFY(formatter.isAddressValid(address));
    QVERIFY(!formatter.isAddressDataTypeMatch(address, CommunicatorCommand::Word));
}

void TestBadInput::counts_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("step");
    QTest::addColumn<QStringList>("words");
    QTest::addColumn<QStringList>("bits");

    QTest::newRow("none") << 0 << 1 << QStringList() << QStringList();
    QTest::newRow("a negative count") << -1 << 1 << QStringList() << QStringList();
    QTest::newRow("the lowest count") << lowest << 1 << QStringList() << QStringList();
    QTest::newRow("one at the widest step") << 1 << highest << QStringList{"D100"} << QStringList{"D100.5"};
    QTest::newRow("one at the widest step downwards") << 1 << lowest << QStringList{"D100"} << QStringList{"D100.5"};
    QTest::newRow("no step repeats the address")
        << 2 << 0 << QStringList{"D100", "D100"} << QStringList{"D100.5", "D100.5"};
}

void TestBadInput::counts()
{
    QFETCH(int, count);
    QFETCH(int, step);
    QFETCH(QStringList, words);
    QFETCH(QStringList, bits);

    const LogRecorder log;
    Row bitRow;
    bitRow.pattern = QStringLiteral("(D)(\\d+\\.[0-9a-f])");
    bitRow.type = 0;
    bitRow.multipleRule = QStringLiteral("dot-f:r");
    for (const bool checkRange : {true, false}) {
        QCOMPARE(addresses(Row().formatter().makeContinueCommandwithCap(command("D100", 2), count, step, checkRange)),
                 words);
        QCOMPARE(addresses(bitRow.formatter().makeBitContinueCommand(command("D100.5", 0), count, step, checkRange)),
                 bits);
    }
}

void TestBadInput::longRunsEndAtTheLimits()
{
    const LogRecorder log;
    const label::CommandFormatter row = Row().formatter();
    const CommunicatorCommand word = command(QStringLiteral("D9998"), 2);
    const QStringList upwards = {QStringLiteral("D9998"), QStringLiteral("D9999")};
    QCOMPARE(addresses(row.makeContinueCommand(word, highest)), upwards);
    QCOMPARE(addresses(row.makeContinueCommandwithCap(word, highest, 1, true)), upwards);
    const QStringList downwards = {QStringLiteral("D1"), QStringLiteral("D0")};
    QCOMPARE(addresses(row.makeContinueCommandwithCap(command(QStringLiteral("D1"), 2), highest, -1, true)), downwards);

    Row onePart;
    onePart.type = 0;
    onePart.multipleRule = QStringLiteral("union-dec:r");
    QCOMPARE(
        addresses(onePart.formatter().makeBitContinueCommand(command(QStringLiteral("D9998"), 0), highest, 1, true)),
        upwards);

    CommunicatorCommand text = command(QStringLiteral("D9998"), 5, 4000000000u);
    QCOMPARE(addresses(row.autoCompleteCommand(text)), upwards);
}

void TestBadInput::rowTypes_data()
{
    QTest::addColumn<int>("type");

    for (const int type : {-1, 6, 9, 1000000, lowest, highest})
        QTest::addRow("a row of type %d is a register row", type) << type;
}

void TestBadInput::rowTypes()
{
    QFETCH(int, type);

    Row row;
    row.type = type;
    const LogRecorder log;
    const label::CommandFormatter formatter = row.formatter();
    QVERIFY(formatter.isAddressDataTypeMatch(QStringLiteral("D100"), CommunicatorCommand::Word));
    QVERIFY(!formatter.isAddressDataTypeMatch(QStringLiteral("D100"), CommunicatorCommand::Bit));
    const QList<CommunicatorCommand> run = formatter.makeContinueCommand(command(QStringLiteral("D100"), 3), 2);
    QCOMPARE(addresses(run), (QStringList{QStringLiteral("D100"), QStringLiteral("D101")}));
    QCOMPARE(int(run.first().dataType), type);
    for (const int commandType : {lowest, -1, 1, highest})
        QCOMPARE(formatter.makeContinueCommand(command(QStringLiteral("D100"), commandType), 4).size(), 4);
}

void TestBadInput::dataSizes_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<QString>("rule");
    QTest::addColumn<QStringList>("pieces");

    const QStringList alone = {QStringLiteral("D32")};
    QTest::newRow("units of no bytes give no pieces") << 0 << "" << QStringList();
    QTest::newRow("aligned units of no bytes give no pieces") << 0 << "m16" << QStringList();
    QTest::newRow("a negative size is a huge one") << -1 << "" << alone;
    QTest::newRow("a negative size on an aligned row") << -1 << "m16" << alone;
    QTest::newRow("the highest size") << highest << "m16" << alone;
    QTest::newRow("the lowest size") << lowest << "m16" << alone;
    QTest::newRow("a unit that is wide enough") << 4 << "m16" << alone;
    QTest::newRow("two units") << 2 << "m16" << QStringList{QStringLiteral("D32"), QStringLiteral("D48")};
}

void TestBadInput::dataSizes()
{
    QFETCH(int, size);
    QFETCH(QString, rule);
    QFETCH(QStringList, pieces);

    Row row;
    row.dataSize = size;
    row.multipleRule = rule;
    const LogRecorder log;
    const label::CommandFormatter formatter = row.formatter();
    QCOMPARE(addresses(formatter.autoCompleteCommand(command(QStringLiteral("D32"), 3))), pieces);
    for (const QString &address : plainAddresses())
        askEverything(formatter, address);

    label::CommandInformationTalbe table;
    table.addCommandFormatter(formatter);
    label::LabelLoader label(table);
    label.makeBlockCommandWithoutSizeLimit(-1, 0, highest, highest);
    label.makeBlockCommandWithoutSizeLimit(-1, 0, lowest, lowest);
    QCOMPARE(label.calculateOffsetByte(0, command("D32", 2), command("D32", 2)), size == -1 ? -1 : 0);
    QCOMPARE(label.datasize(0), size);
}

void TestBadInput::lengths_data()
{
    QTest::addColumn<quint64>("length");
    QTest::addColumn<int>("pieces");

    QTest::newRow("none") << quint64(0) << 1;
    QTest::newRow("the limits end it") << quint64(1000000) << 10;
    QTest::newRow("the last count that is an int") << quint64(4294967292u) << 10;
    QTest::newRow("a count beyond int is none") << quint64(4294967295u) << 0;
    QTest::newRow("the highest length") << std::numeric_limits<quint64>::max() << 0;
}

void TestBadInput::lengths()
{
    QFETCH(quint64, length);
    QFETCH(int, pieces);

    const LogRecorder log;
    const label::CommandFormatter row = Row().formatter();
    QCOMPARE(row.autoCompleteCommand(command(QStringLiteral("D9990"), 5, length)).size(), pieces);
}

void TestBadInput::blocks_data()
{
    QTest::addColumn<int>("blocksize");
    QTest::addColumn<int>("dataSize");
    QTest::addColumn<QString>("rule");
    QTest::addColumn<int>("length");
    QTest::addColumn<QStringList>("blocks");

    QTest::newRow("a block of no units") << 0 << 2 << "" << 100 << QStringList();
    QTest::newRow("a negative block") << -1 << 2 << "" << 100 << QStringList();
    QTest::newRow("the lowest block") << lowest << 2 << "" << 100 << QStringList();
    QTest::newRow("aligned units of no bytes") << 64 << 0 << "m16" << 100 << QStringList();
    QTest::newRow("the highest block holds the longest run")
        << highest << 2 << "" << highest << QStringList{"D16 2 2147483647"};
    QTest::newRow("the highest block on an aligned row")
        << highest << 2 << "m16" << highest << QStringList{"D16 2 134217728"};
    QTest::newRow("the highest block of the widest units")
        << highest << highest << "m16" << 100 << QStringList{"D16 2 1"};
    QTest::newRow("a run of no length") << 64 << 2 << "" << 0 << QStringList();
    QTest::newRow("a run of negative length") << 64 << 2 << "" << lowest << QStringList();
    QTest::newRow("blocks of half the numbers")
        << 1073741824 << 2 << "" << highest << QStringList{"D16 2 1073741824", "D1073741840 2 1073741823"};
}

void TestBadInput::blocks()
{
    QFETCH(int, blocksize);
    QFETCH(int, dataSize);
    QFETCH(QString, rule);
    QFETCH(int, length);
    QFETCH(QStringList, blocks);

    Row row;
    row.blocksize = blocksize;
    row.dataSize = dataSize;
    row.multipleRule = rule;
    const LogRecorder log;
    label::CommandInformationTalbe table;
    table.addCommandFormatter(row.formatter());
    QCOMPARE(shortForms(table.makeBlockCommand(-1, 0, 16, length)), blocks);
    for (const int start : {lowest, -1, highest})
        QCOMPARE(table.makeBlockCommand(lowest, 0, start, length).size(), blocks.size());
}

void TestBadInput::wrongTypeIndexes_data()
{
    QTest::addColumn<int>("rows");
    QTest::addColumn<int>("index");

    for (const int index : {-1, 2, 1000000, lowest, highest})
        QTest::addRow("row %d of two", index) << 2 << index;
    for (const int index : {-1, 0, 1000000, lowest, highest})
        QTest::addRow("row %d of an empty table", index) << 0 << index;
}

void TestBadInput::wrongTypeIndexes()
{
    QFETCH(int, rows);
    QFETCH(int, index);

    LogRecorder log;
    label::CommandInformationTalbe table;
    for (int i = 0; i < rows; ++i)
        table.addCommandFormatter(Row().formatter());
    label::LabelLoader label(table);
    const CommunicatorCommand asked = command(QStringLiteral("D100"), 2);
    const QString number = QString::number(index);
    const auto line = [&number](const char *text) {
        return QStringList{QLatin1String(text) + QLatin1Char(' ') + number};
    };
    log.take();

    QCOMPARE(label.base(index), 10);
    QCOMPARE(label.getPrefixSymbolByTypeID(index), QString());
    QCOMPARE(label.getEditUsedPrifixSymbolByTypeId(index), QString());
    QCOMPARE(label.getFormatString(index), QString());
    QCOMPARE(label.needOptimize(index), true);
    QCOMPARE(label.isTypeNeedAlignmentByte(index), false);
    QCOMPARE(label.alignmentSize(index), 1);
    QCOMPARE(label.deviceTypesTable().isSemenseSepcialType(index), false);
    QVERIFY(!label.deviceTypesTable().formatterAt(index));
    QCOMPARE(label.deviceTypesTable().getFormatterAtIndex(index).pattern(), QString());
    QCOMPARE(log.take(), QStringList());

    QCOMPARE(label.datatype(index), -1);
    QCOMPARE(log.take(), line("CommandInformationTalbe::datatype wrong type_index "));
    QCOMPARE(label.blocksize(index), -1);
    QCOMPARE(log.take(), line("CommandInformationTalbe::blocksize wrong type_index "));
    QCOMPARE(label.datasize(index), -1);
    QCOMPARE(log.take(), line("CommandInformationTalbe:: datasize  wrong type_index "));
    QCOMPARE(label.addressRange(index, asked.address), -1);
    QCOMPARE(log.take(), line("CommandInformationTalbe:: addressRange  wrong type_index "));
    QCOMPARE(label.bitOffset(index, asked.address), -1);
    QCOMPARE(log.take(), line("CommandInformationTalbe::bitOffset wrong type_index "));
    QCOMPARE(label.canConvertToRegisterCommand(index), false);
    QCOMPARE(log.take(), line("CommandInformationTalbe::canConvertRegisterCommand wrong type_index "));
    QCOMPARE(label.isMustContinue(index), false);
    QCOMPARE(log.take(), line("CommandInformationTalbe::continueRule wrong type_index "));
    QVERIFY(label.normalizeCommand(index, asked).isEmpty());
    QCOMPARE(log.take(), line("CommandInformationTalbe::autoCompleteCommand wrong type_index "));
    QVERIFY(label.makeContinueCommand(index, asked, 3).isEmpty());
    QCOMPARE(log.take(), line("CommandInformationTalbe::makeContinueCommand wrong type_index "));
    QVERIFY(label.makeContinueCommandwithCap(index, asked, 3, 1, true).isEmpty());
    QCOMPARE(log.take(), line("CommandInformationTalbe::makeContinueCommand wrong type_index "));
    QVERIFY(label.makeBlockCommand(-1, index, 0, 10).isEmpty());
    QCOMPARE(log.take().last(), line("CommandInformationTalbe::makeBlockCommand wrong type_index ").first());
    QCOMPARE(label.makeBlockCommandWithoutSizeLimit(-1, index, 0, 10).address, QStringLiteral("S>NULL"));
    QCOMPARE(log.take(), line("CommandInformationTalbe::makeBlockCommand wrong type_index "));
    QCOMPARE(label.calculateOffsetByte(index, asked, asked), -1);
    QCOMPARE(log.take(), line("CommandInformationTalbe:: datasize  wrong type_index "));
    QCOMPARE(label.isCommandInBlockRange(index, asked, asked), false);
    QCOMPARE(log.take(), line("CommandInformationTalbe:: addressRange  wrong type_index "));

    // A row that the conversion is handed is only written to.
    int row = index;
    QCOMPARE(label.convertBitCommandToRegisterCommand(asked, row).address, QStringLiteral("S>NULL"));
    QCOMPARE(row, index);

    // Lookups take any filter but -1 and 0 for register rows, and lists by type give what has exactly that type.
    QCOMPARE(label.addressValidation(asked.address, index), rows > 0 && index != 0 ? 0 : -1);
    QCOMPARE(label.getAllMatchedIndex(asked.address, index).size(), index != 0 ? rows : 0);
    QCOMPARE(label.getAllMatchedSymbol(QStringLiteral("D"), index).size(), index != 0 ? rows : 0);
    QCOMPARE(label.getCatchTableName(asked.address, index), QString());
    const auto type = static_cast<label::Type>(index);
    QCOMPARE(label.prefixSymbolsByType(type).size(), index == 2 ? rows : 0);
    QCOMPARE(label.commandFormatsByType(type).size(), index == 2 ? rows : 0);
    QCOMPARE(label.countType(index), rows);
    QCOMPARE(label.countBitTypes(), rows);
    QCOMPARE(label.countRegisterTypes(), rows);
}

void TestBadInput::extremeCarries()
{
    const LogRecorder log;
    for (const char *rule : {"dot-dec:r", "dot-31:r", "dot-f:r", "last2-hex:r", "union-oct:r", ""}) {
        Row row;
        row.type = 0;
        row.multipleRule = QLatin1String(rule);
        const label::CommandFormatter formatter = row.formatter();
        for (const int radix : {10, 16, 8, 2, 36, 32, 0, 1, 37, -1, lowest, highest}) {
            for (const int bit : {0, -1, 31, lowest, highest}) {
                int word = highest;
                int carried = bit;
                formatter.bitOffsetCarry(word, carried, radix);
                QVERIFY(bit != 0 || (word == highest && carried == 0));
            }
        }
    }
    Row row;
    row.type = 0;
    row.multipleRule = QStringLiteral("dot-dec:r");
    int word = highest;
    int bit = 17;
    row.formatter().bitOffsetCarry(word, bit, 10);
    QCOMPARE(word, lowest);
    QCOMPARE(bit, 1);
}

void TestBadInput::extremeRegisterNumbers()
{
    const LogRecorder log;
    for (const char *rule : {"union-dec:rm8", "union-dec:rm8a1", "union-dec:rm16", "union-dec:rm16a1"}) {
        Row row;
        row.pattern = QStringLiteral("(D)(.*)");
        row.type = 0;
        row.multipleRule = QLatin1String(rule);
        const label::CommandFormatter formatter = row.formatter();
        for (const int number : {lowest, -1, 0, highest}) {
            const QString address = QLatin1Char('D') + QString::number(number);
            bool isNumber = false;
            formatter.convertedRagisterCommandRange(address).toInt(&isNumber);
            QVERIFY(isNumber);
            QVERIFY(qAbs(formatter.getbitOffset(address)) < 16);
        }
    }
    Row row;
    row.pattern = QStringLiteral("(D)(.*)");
    row.multipleRule = QStringLiteral("union-dec:rm16");
    row.type = 0;
    QCOMPARE(row.formatter().convertedRagisterCommandRange(QStringLiteral("D2147483647")),
             QStringLiteral("2147483632"));
    QCOMPARE(row.formatter().convertedRagisterCommandRange(QStringLiteral("D-2147483648")),
             QStringLiteral("-2147483648"));
}

void TestBadInput::stationNumbers_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("next");

    QTest::newRow("a station that is no number is 0") << "x-D100"
                                                      << "0-D101";
    QTest::newRow("no station before the dash is 0") << "-D100"
                                                     << "0-D101";
    QTest::newRow("a station beyond int is 0") << "99999999999-D100"
                                               << "0-D101";
    QTest::newRow("a station of 100,000 digits is 0") << QString(QString(100000, '7') + "-D100") << "0-D101";
    QTest::newRow("what stands behind a second dash is dropped") << "7-D100-5"
                                                                 << "7-D101";
    QTest::newRow("a NUL character in the station")
        << QString(QStringLiteral("3") + QChar() + QStringLiteral("-D100")) << "0-D101";
}

void TestBadInput::stationNumbers()
{
    QFETCH(QString, address);
    QFETCH(QString, next);

    const LogRecorder log;
    const label::CommandFormatter row = Row().formatter();
    QVERIFY(row.isAddressValid(address));
    QCOMPARE(row.matchedLength(address), address.size());
    QCOMPARE(row.makeContinueCommand(command(address, 2), 2).value(1).address, next);
    for (const int station : {0, -2, lowest, highest})
        QCOMPARE(row.addStationID(station, command(address, 2)).address, QString(QString::number(station) + "-D100"));
}

QTEST_GUILESS_MAIN(TestBadInput)
#include "tst_badinput.moc"
