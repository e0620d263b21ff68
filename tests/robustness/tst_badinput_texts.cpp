// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/address_grammar/commandformatter.h"
#include "zelmar_label/label_store/dynamiclabelcreators.h"
#include "zelmar_label/label_table/dynamiclabelcreatorinterface.h"
#include "zelmar_label/label_table/labelloader.h"

#include "support/badinput.h"
#include "support/labelfixtures.h"
#include "support/logrecorder.h"

#include <QtTest>

namespace {

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

} // namespace

/// Tests any text in a column or an argument: nothing throws, hangs or reads out of bounds. Most useful with the
/// address and undefined-behaviour sanitizers.
class TestBadTexts : public QObject
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
    void foreignDigits_data();
    void foreignDigits();
};

void TestBadTexts::textsInColumns_data()
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

void TestBadTexts::textsInColumns()
{
    QFETCH(int, column);
    QFETCH(QString, text);

    // Compiling a long expression takes seconds with a sanitizer: one row is enough.
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

void TestBadTexts::textsAsAddresses_data()
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

void TestBadTexts::textsAsAddresses()
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

void TestBadTexts::textsForCreators_data()
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

void TestBadTexts::textsForCreators()
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

void TestBadTexts::brokenPatterns_data()
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

void TestBadTexts::brokenPatterns()
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

void TestBadTexts::foreignDigits_data()
{
    QTest::addColumn<QString>("address");

    QTest::newRow("Arabic-Indic digits") << QString::fromUtf8("D\xd9\xa1\xd9\xa2");
    QTest::newRow("fullwidth digits") << QString::fromUtf8("D\xef\xbc\x91\xef\xbc\x92");
    QTest::newRow("Devanagari digits") << QString::fromUtf8("D\xe0\xa5\xa7\xe0\xa5\xa8");
}

void TestBadTexts::foreignDigits()
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

QTEST_GUILESS_MAIN(TestBadTexts)

#include "tst_badinput_texts.moc"
