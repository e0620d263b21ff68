// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/labelfixtures.h"
#include "support/logrecorder.h"

#include "zelmar_label/label_table/commandinformationtalbe.h"

#include <QtTest>

#include <algorithm>
#include <climits>
#include <functional>

using label::CommandFormatter;
using label::CommandInformationTalbe;

using Question = std::function<QVariant(const CommandInformationTalbe &, int)>;
using Texts = QStringList (CommandInformationTalbe::*)() const;
Q_DECLARE_METATYPE(Question)
Q_DECLARE_METATYPE(Texts)

namespace {

const QString limitsLine = QStringLiteral("isRangeValid CommandFormatter isRangeValid data error");

Row row(const char *pattern, int type, const char *symbol, const char *description, const char *rule = "")
{
    Row made;
    made.pattern = QLatin1String(pattern);
    made.type = type;
    made.prefixSymbol = QLatin1String(symbol);
    made.description = QLatin1String(description);
    made.multipleRule = QLatin1String(rule);
    return made;
}

/// Rows of every class, with addresses that several of them accept.
QList<Row> deviceRows()
{
    Row relay = row("(M)(\\d+)", 0, "M", "M: relay", "union-dec:rm16_D");
    relay.end = QStringLiteral("999");
    relay.catchTable = QStringLiteral("relays");
    relay.dataSize = 1;
    relay.blocksize = 128;
    relay.continueRule = QStringLiteral("Y");
    Row word = row("(D)(\\d+)", 2, "D", "D: word");
    word.catchTable = QStringLiteral("words");
    Row doubleWord = row("(D)(\\d+)", 3, "D", "D: double word", "m16");
    doubleWord.end = QStringLiteral("19999");
    doubleWord.catchTable = QStringLiteral("doubles");
    doubleWord.dataSize = 4;
    Row text = row("(T)(\\d+)", 5, "T", "T: text", "SEMENS1");
    text.dataSize = 1;
    text.blocksize = 0;
    Row hexadecimal = row("(W)([0-9a-f]+)", 2, "W", "W: link word", "n");
    hexadecimal.base = 16;
    hexadecimal.end = QStringLiteral("FFFF");
    Row bitOfWord = row("(D)(\\d+\\.[0-9a-f])", 0, "D", "D: bit of a word", "dot-f:n");
    bitOfWord.catchTable = QStringLiteral("bits");
    const Row family = row("DB_DBX", 0, "DB", "DB: bit", "dot-oct:r");
    Row odd = row("(Q)(\\d+)", -7, "Q", "Q: odd type");
    odd.catchTable = QStringLiteral("odd");
    return {relay, word, doubleWord, text, hexadecimal, bitOfWord, family, odd};
}

CommandInformationTalbe tableOf(const QList<Row> &rows)
{
    CommandInformationTalbe table;
    for (const Row &one : rows)
        table.addCommandFormatter(one.formatter());
    return table;
}

QStringList sorted(QStringList texts)
{
    std::sort(texts.begin(), texts.end());
    return texts;
}

template<typename Result>
Question question(Result (CommandInformationTalbe::*ask)(int) const)
{
    return [ask](const CommandInformationTalbe &table, int index) { return QVariant::fromValue((table.*ask)(index)); };
}

Question numberIn(const QString &address)
{
    return [address](const CommandInformationTalbe &table, int index) { return table.addressRange(index, address); };
}

Question bitIn(const QString &address)
{
    return [address](const CommandInformationTalbe &table, int index) { return table.bitOffset(index, address); };
}

} // namespace

class CommandInformationTalbeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();

    void anEmptyTableFindsNothing();
    void anEmptyTableHasNoTexts_data();
    void anEmptyTableHasNoTexts();
    void rowsAreNumberedInTheOrderOfAdding();
    void aTableKeepsCopies();
    void copiesOfATableAreIndependent();

    void firstMatch_data();
    void firstMatch();
    void aRowOfTheOtherClassStillReportsItsLimits();
    void rowsBehindTheFirstMatchAreNotAsked();
    void partialMatches_data();
    void partialMatches();
    void partialMatchesDoNotLookAtLimits();
    void symbolMatches_data();
    void symbolMatches();
    void catchTables_data();
    void catchTables();
    void patternText_data();
    void patternText();
    void thePatternTextOfTheFirstOfEqualRowsCounts();
    void rowsComeOutAsCopies();
    void aRowOutsideTheTableIsAnEmptyFormatter_data();
    void aRowOutsideTheTableIsAnEmptyFormatter();

    void texts_data();
    void texts();
    void textsByType_data();
    void textsByType();
    void symbolsWithoutRepeats_data();
    void symbolsWithoutRepeats();

    void questions_data();
    void questions();
    void wrongIndex_data();
    void wrongIndex();

private:
    CommandInformationTalbe m_table;
};

void CommandInformationTalbeTest::initTestCase()
{
    m_table = tableOf(deviceRows());
}

void CommandInformationTalbeTest::anEmptyTableFindsNothing()
{
    const CommandInformationTalbe table;
    const LogRecorder log;
    QCOMPARE(table.getFirstMatchedAddressIndex(QStringLiteral("D1"), -1), -1);
    QCOMPARE(table.getFirstMatchedAddressIndex(QString(), -1), -1);
    QCOMPARE(table.getFormatterIndexByPattern(QStringLiteral("(D)(\\d+)")), -1);
    QCOMPARE(table.getFormatterIndexByPattern(QString()), -1);
    QCOMPARE(table.getAllPartialMatchedAddressIndex(QStringLiteral("D1"), -1), QList<int>());
    QCOMPARE(table.getAllMatchedSymbo(QStringLiteral("D"), -1), QList<int>());
    QCOMPARE(table.getCatchTableName(QStringLiteral("D1"), -1), QString());
    QCOMPARE(table.getFormatterAtIndex(0).pattern(), QString());
    QCOMPARE(table.getFormatterAtIndex(0).continueRule(), QStringLiteral("N"));
    QCOMPARE(log.lines(), QStringList());
}

void CommandInformationTalbeTest::anEmptyTableHasNoTexts_data()
{
    QTest::addColumn<Texts>("list");
    QTest::newRow("format strings") << &CommandInformationTalbe::formatStrings;
    QTest::newRow("symbols") << &CommandInformationTalbe::prefixSymbols;
    QTest::newRow("format strings of bit rows") << &CommandInformationTalbe::bitCommandFormats;
    QTest::newRow("format strings of register rows") << &CommandInformationTalbe::registerCommandFormats;
    QTest::newRow("format strings of reserved rows") << &CommandInformationTalbe::reserveCommandFormats;
    QTest::newRow("symbols of bit rows") << &CommandInformationTalbe::bitPrefixSymbols;
    QTest::newRow("symbols of register rows") << &CommandInformationTalbe::registerPrefixSymbols;
    QTest::newRow("symbols of reserved rows") << &CommandInformationTalbe::reservePrefixSymbols;
}

void CommandInformationTalbeTest::anEmptyTableHasNoTexts()
{
    QFETCH(Texts, list);
    const CommandInformationTalbe table;
    QCOMPARE((table.*list)(), QStringList());
    QCOMPARE(table.formatStringsByType(label::WordType), QStringList());
    QCOMPARE(table.prefixSymbolsByType(label::WordType), QStringList());
}

void CommandInformationTalbeTest::rowsAreNumberedInTheOrderOfAdding()
{
    CommandInformationTalbe table;
    table.addCommandFormatter(row("(X)(\\d+)", 0, "X", "").formatter());
    QCOMPARE(table.getFormatterIndexByPattern(QStringLiteral("(X)(\\d+)")), 0);
    table.addCommandFormatter(row("(A)(\\d+)", 2, "A", "").formatter());
    QCOMPARE(table.getFormatterIndexByPattern(QStringLiteral("(A)(\\d+)")), 1);
    QCOMPARE(table.getFormatterIndexByPattern(QStringLiteral("(X)(\\d+)")), 0);
    table.addCommandFormatter(row("(X)(\\d+)", 2, "X", "").formatter());
    QCOMPARE(table.getFormatterIndexByPattern(QStringLiteral("(X)(\\d+)")), 0);
    QCOMPARE(table.datatype(2), 2);
    QCOMPARE(table.countFormatters(), 3);
}

void CommandInformationTalbeTest::aTableKeepsCopies()
{
    CommandFormatter added = row("(A)(\\d+)", 2, "A", "A: word").formatter();
    CommandInformationTalbe table;
    table.addCommandFormatter(added);
    added.setPattern(QStringLiteral("(B)(\\d+)"));
    added.setPrefixSymbol(QStringLiteral("B"));
    QCOMPARE(table.getPrefixSymbolByTypeID(0), QStringLiteral("A"));
    QCOMPARE(table.getFirstMatchedAddressIndex(QStringLiteral("A1"), -1), 0);
    QCOMPARE(table.getFirstMatchedAddressIndex(QStringLiteral("B1"), -1), -1);
}

void CommandInformationTalbeTest::copiesOfATableAreIndependent()
{
    const Row word = row("(A)(\\d+)", 2, "A", "A: word");
    CommandInformationTalbe table = tableOf({word});
    CommandInformationTalbe copy = table;
    copy.addCommandFormatter(row("(B)(\\d+)", 2, "B", "B: word").formatter());
    QCOMPARE(table.prefixSymbols(), QStringList{"A"});
    QCOMPARE(copy.prefixSymbols(), (QStringList{"A", "B"}));
    table.addCommandFormatter(row("(C)(\\d+)", 2, "C", "C: word").formatter());
    QCOMPARE(table.prefixSymbols(), (QStringList{"A", "C"}));
    QCOMPARE(copy.prefixSymbols(), (QStringList{"A", "B"}));
}

void CommandInformationTalbeTest::firstMatch_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<int>("filter");
    QTest::addColumn<int>("index");
    QTest::newRow("the lower index of two rows that accept") << "D100" << -1 << 1;
    QTest::newRow("within the limits of the higher index, against its alignment") << "D15000" << -1 << -1;
    QTest::newRow("the higher index where only its limits allow") << "D16000" << -1 << 2;
    QTest::newRow("beyond the limits of all rows") << "D20000" << -1 << -1;
    QTest::newRow("the last number of the lower index") << "D9999" << -1 << 1;
    QTest::newRow("a bit row, any type asked for") << "M5" << -1 << 0;
    QTest::newRow("a bit row, a bit asked for") << "M5" << 0 << 0;
    QTest::newRow("a bit row, a register asked for") << "M5" << 2 << -1;
    QTest::newRow("a register row, a bit asked for") << "D100" << 0 << -1;
    QTest::newRow("a bit of a word, a bit asked for") << "D100.f" << 0 << 5;
    QTest::newRow("a bit of a word, a register asked for") << "D100.f" << 2 << -1;
    QTest::newRow("a word row, a byte asked for: widths are not compared") << "D100" << 1 << 1;
    QTest::newRow("a word row, a double word asked for: still the first") << "D100" << 3 << 1;
    QTest::newRow("a reserved row, a word asked for") << "T7" << 2 << 3;
    QTest::newRow("a reserved row, reserved asked for") << "T7" << 5 << 3;
    QTest::newRow("a word row, reserved asked for") << "D100" << 5 << 1;
    QTest::newRow("another negative number asks for registers, register row") << "D100" << -2 << 1;
    QTest::newRow("another negative number asks for registers, bit row") << "M5" << -2 << -1;
    QTest::newRow("a row of an odd type is a register row") << "Q1" << 4 << 7;
    QTest::newRow("a row of an odd type is no bit row") << "Q1" << 0 << -1;
    QTest::newRow("a station in front") << "3-D100" << -1 << 1;
    QTest::newRow("an empty station in front") << "-D100" << -1 << 1;
    QTest::newRow("a second dash: the rest is dropped") << "3-D100-9" << -1 << 1;
    QTest::newRow("the device address stands in the second part") << "D100-3" << -1 << -1;
    QTest::newRow("a station alone") << "3-" << -1 << -1;
    QTest::newRow("the empty address") << "" << -1 << -1;
    QTest::newRow("digits of another radix") << "W1f" << -1 << 4;
    QTest::newRow("digits in the wrong case for the pattern") << "W1F" << -1 << -1;
    QTest::newRow("a symbol in the wrong case") << "d100" << -1 << -1;
    QTest::newRow("text behind the address") << "D100x" << -1 << -1;
    QTest::newRow("text in front of the address") << "xD100" << -1 << -1;
    QTest::newRow("a blank behind the address") << "D100 " << -1 << -1;
    QTest::newRow("a family's template does not accept the family's addresses") << "DB12.DBX3.7" << -1 << -1;
    QTest::newRow("leading zeros") << "D0100" << -1 << 1;
}

void CommandInformationTalbeTest::firstMatch()
{
    QFETCH(QString, address);
    QFETCH(int, filter);
    QFETCH(int, index);
    const LogRecorder log;
    QCOMPARE(m_table.getFirstMatchedAddressIndex(address, filter), index);
    QCOMPARE(log.lines(), QStringList());
}

void CommandInformationTalbeTest::aRowOfTheOtherClassStillReportsItsLimits()
{
    Row unlimited = row("(A)(\\d+)", 2, "A", "");
    unlimited.start.clear();
    const CommandInformationTalbe table = tableOf({unlimited, row("(A)(\\d+)", 0, "A", "", "union-dec:r")});
    const LogRecorder log;
    QCOMPARE(table.getFirstMatchedAddressIndex(QStringLiteral("A1"), 0), 1);
    QCOMPARE(log.lines(), QStringList{limitsLine});
}

void CommandInformationTalbeTest::rowsBehindTheFirstMatchAreNotAsked()
{
    Row unlimited = row("(A)(\\d+)", 2, "A", "");
    unlimited.start.clear();
    const CommandInformationTalbe table = tableOf({row("(A)(\\d+)", 2, "A", ""), unlimited});
    const LogRecorder log;
    QCOMPARE(table.getFirstMatchedAddressIndex(QStringLiteral("A1"), -1), 0);
    QCOMPARE(log.lines(), QStringList());
}

void CommandInformationTalbeTest::partialMatches_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<int>("filter");
    QTest::addColumn<QList<int>>("indexes");
    QTest::newRow("whole for two rows and the beginning for a third") << "D100" << -1 << QList<int>{1, 2, 5};
    QTest::newRow("bits only") << "D100" << 0 << QList<int>{5};
    QTest::newRow("registers only") << "D100" << 2 << QList<int>{1, 2};
    QTest::newRow("registers only, asked for by an odd number") << "D100" << -7 << QList<int>{1, 2};
    QTest::newRow("a symbol is the beginning of its addresses and of a template")
        << "D" << -1 << QList<int>{1, 2, 5, 6};
    QTest::newRow("the beginning of one row only") << "D100." << -1 << QList<int>{5};
    QTest::newRow("a whole address of one row only") << "D100.f" << -1 << QList<int>{5};
    QTest::newRow("one that cannot be completed any more") << "D100.g" << -1 << QList<int>();
    QTest::newRow("text behind a whole address") << "D100x" << -1 << QList<int>();
    QTest::newRow("the beginning of a template's own text") << "DB" << -1 << QList<int>{6};
    QTest::newRow("a station in front") << "3-D100" << -1 << QList<int>{1, 2, 5};
    QTest::newRow("a station in front of a beginning") << "3-M" << -1 << QList<int>{0};
    QTest::newRow("a long station in front of a beginning") << "12345-D100." << -1 << QList<int>{5};
    QTest::newRow("a long station does not help a text that fits no row") << "12345-D100x" << -1 << QList<int>();
    QTest::newRow("a second dash: the rest is dropped") << "3-D100-x" << -1 << QList<int>{1, 2, 5};
    QTest::newRow("the device address stands in the second part") << "D1-2" << -1 << QList<int>();
    QTest::newRow("a station alone can become any address") << "3-" << -1 << QList<int>{0, 1, 2, 3, 4, 5, 6, 7};
    QTest::newRow("no text can become any address") << "" << -1 << QList<int>{0, 1, 2, 3, 4, 5, 6, 7};
    QTest::newRow("no text can become any bit address") << "" << 0 << QList<int>{0, 5, 6};
    QTest::newRow("no row begins so") << "Z" << -1 << QList<int>();
    QTest::newRow("a symbol in the wrong case") << "m" << -1 << QList<int>();
}

void CommandInformationTalbeTest::partialMatches()
{
    QFETCH(QString, address);
    QFETCH(int, filter);
    QFETCH(QList<int>, indexes);
    const LogRecorder log;
    QCOMPARE(m_table.getAllPartialMatchedAddressIndex(address, filter), indexes);
    QCOMPARE(log.lines(), QStringList());
}

void CommandInformationTalbeTest::partialMatchesDoNotLookAtLimits()
{
    Row unlimited = row("(A)(\\d+)", 2, "A", "");
    unlimited.start.clear();
    const CommandInformationTalbe table = tableOf({unlimited, row("(A)(\\d+)", 2, "A", "")});
    const LogRecorder log;
    QCOMPARE(table.getAllPartialMatchedAddressIndex(QStringLiteral("A99999"), -1), (QList<int>{0, 1}));
    QCOMPARE(log.lines(), QStringList());
}

void CommandInformationTalbeTest::symbolMatches_data()
{
    QTest::addColumn<QString>("symbol");
    QTest::addColumn<int>("filter");
    QTest::addColumn<QList<int>>("indexes");
    QTest::newRow("every row with the symbol") << "D" << -1 << QList<int>{1, 2, 5};
    QTest::newRow("bit rows only") << "D" << 0 << QList<int>{5};
    QTest::newRow("register rows only, whatever their width") << "D" << 2 << QList<int>{1, 2};
    QTest::newRow("register rows for a reserved type") << "D" << 5 << QList<int>{1, 2};
    QTest::newRow("the symbol of a template") << "DB" << -1 << QList<int>{6};
    QTest::newRow("a symbol in the wrong case") << "d" << -1 << QList<int>();
    QTest::newRow("an address is no symbol") << "D100" << -1 << QList<int>();
    QTest::newRow("no symbol") << "" << -1 << QList<int>();
    QTest::newRow("a symbol of the other class only") << "M" << 1 << QList<int>();
}

void CommandInformationTalbeTest::symbolMatches()
{
    QFETCH(QString, symbol);
    QFETCH(int, filter);
    QFETCH(QList<int>, indexes);
    QCOMPARE(m_table.getAllMatchedSymbo(symbol, filter), indexes);
}

void CommandInformationTalbeTest::catchTables_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<int>("filter");
    QTest::addColumn<QString>("name");
    QTest::newRow("of the first of two rows") << "D100" << -1 << "words";
    QTest::newRow("of the second where only it accepts") << "D16000" << -1 << "doubles";
    QTest::newRow("of a bit row") << "D100.3" << 0 << "bits";
    QTest::newRow("of a row without a text") << "T1" << -1 << "";
    QTest::newRow("of a row of the other class") << "D100" << 0 << "";
    QTest::newRow("of no row") << "Z1" << -1 << "";
    QTest::newRow("with a station in front") << "7-M3" << -1 << "relays";
}

void CommandInformationTalbeTest::catchTables()
{
    QFETCH(QString, address);
    QFETCH(int, filter);
    QFETCH(QString, name);
    QCOMPARE(m_table.getCatchTableName(address, filter), name);
}

void CommandInformationTalbeTest::patternText_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<int>("index");
    QTest::newRow("of two rows, the first") << "(D)(\\d+)" << 1;
    QTest::newRow("of a template") << "DB_DBX" << 6;
    QTest::newRow("in another case") << "db_dbx" << -1;
    QTest::newRow("the beginning of a text") << "DB_DB" << -1;
    QTest::newRow("an address that the pattern matches") << "D100" << -1;
    QTest::newRow("a symbol") << "D" << -1;
    QTest::newRow("no text") << "" << -1;
}

void CommandInformationTalbeTest::patternText()
{
    QFETCH(QString, pattern);
    QFETCH(int, index);
    QCOMPARE(m_table.getFormatterIndexByPattern(pattern), index);
}

void CommandInformationTalbeTest::thePatternTextOfTheFirstOfEqualRowsCounts()
{
    const CommandInformationTalbe table =
        tableOf({row("(A)(\\d+)", 2, "A", ""), row("DB_DBW", 2, "first", ""), row("DB_DBW", 0, "second", "")});
    QCOMPARE(table.getFormatterIndexByPattern(QStringLiteral("DB_DBW")), 1);
}

void CommandInformationTalbeTest::rowsComeOutAsCopies()
{
    CommandFormatter copy = m_table.getFormatterAtIndex(4);
    QCOMPARE(copy.pattern(), QStringLiteral("(W)([0-9a-f]+)"));
    QCOMPARE(copy.type(), 2);
    QCOMPARE(copy.base(), 16);
    QCOMPARE(copy.prefixSymbol(), QStringLiteral("W"));
    QCOMPARE(copy.formatString(), QStringLiteral("W: link word"));
    QVERIFY(copy.isAddressValid(QStringLiteral("Wffff")));
    copy.setPattern(QStringLiteral("(Y)(\\d+)"));
    copy.setPrefixSymbol(QStringLiteral("Y"));
    QCOMPARE(m_table.getFormatterIndexByPattern(QStringLiteral("(Y)(\\d+)")), -1);
    QCOMPARE(m_table.getPrefixSymbolByTypeID(4), QStringLiteral("W"));
}

void CommandInformationTalbeTest::aRowOutsideTheTableIsAnEmptyFormatter_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("-1") << -1;
    QTest::newRow("one behind the last row") << 8;
    QTest::newRow("the largest number") << INT_MAX;
    QTest::newRow("the smallest number") << INT_MIN;
}

void CommandInformationTalbeTest::aRowOutsideTheTableIsAnEmptyFormatter()
{
    QFETCH(int, index);
    const LogRecorder log;
    const CommandFormatter formatter = m_table.getFormatterAtIndex(index);
    QCOMPARE(formatter.pattern(), QString());
    QCOMPARE(formatter.type(), 0);
    QCOMPARE(formatter.datasize(), 0ULL);
    QCOMPARE(formatter.base(), 0);
    QCOMPARE(formatter.blocksize(), 0);
    QCOMPARE(formatter.continueRule(), QStringLiteral("N"));
    QCOMPARE(formatter.formatString(), QString());
    QCOMPARE(formatter.prefixSymbol(), QString());
    QCOMPARE(log.lines(), QStringList());
}

void CommandInformationTalbeTest::texts_data()
{
    QTest::addColumn<Texts>("list");
    QTest::addColumn<QStringList>("texts");
    QTest::newRow("format strings of all rows")
        << &CommandInformationTalbe::formatStrings
        << QStringList{"M: relay",     "D: word",          "D: double word", "T: text",
                       "W: link word", "D: bit of a word", "DB: bit",        "Q: odd type"};
    QTest::newRow("symbols of all rows, repeated")
        << &CommandInformationTalbe::prefixSymbols << QStringList{"M", "D", "D", "T", "W", "D", "DB", "Q"};
    QTest::newRow("format strings of bit rows")
        << &CommandInformationTalbe::bitCommandFormats << QStringList{"M: relay", "D: bit of a word", "DB: bit"};
    QTest::newRow("format strings of register rows, reserved ones included")
        << &CommandInformationTalbe::registerCommandFormats
        << QStringList{"D: word", "D: double word", "T: text", "W: link word", "Q: odd type"};
    QTest::newRow("format strings of reserved rows")
        << &CommandInformationTalbe::reserveCommandFormats << QStringList{"T: text"};
}

void CommandInformationTalbeTest::texts()
{
    QFETCH(Texts, list);
    QFETCH(QStringList, texts);
    QCOMPARE((m_table.*list)(), texts);
}

void CommandInformationTalbeTest::textsByType_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QStringList>("formats");
    QTest::addColumn<QStringList>("symbols");
    QTest::newRow("bit") << 0 << QStringList{"M: relay", "D: bit of a word", "DB: bit"} << QStringList{"M", "D", "DB"};
    QTest::newRow("word") << 2 << QStringList{"D: word", "W: link word"} << QStringList{"D", "W"};
    QTest::newRow("double word") << 3 << QStringList{"D: double word"} << QStringList{"D"};
    QTest::newRow("text") << 5 << QStringList{"T: text"} << QStringList{"T"};
    QTest::newRow("a type of no row") << 1 << QStringList() << QStringList();
    QTest::newRow("-1 is no wildcard here") << -1 << QStringList() << QStringList();
}

void CommandInformationTalbeTest::textsByType()
{
    QFETCH(int, type);
    QFETCH(QStringList, formats);
    QFETCH(QStringList, symbols);
    QCOMPARE(m_table.formatStringsByType(static_cast<label::Type>(type)), formats);
    QCOMPARE(m_table.prefixSymbolsByType(static_cast<label::Type>(type)), symbols);
}

void CommandInformationTalbeTest::symbolsWithoutRepeats_data()
{
    QTest::addColumn<Texts>("list");
    QTest::addColumn<QStringList>("sortedSymbols");
    QTest::newRow("bit rows") << &CommandInformationTalbe::bitPrefixSymbols << QStringList{"", "D", "M"};
    QTest::newRow("register rows, reserved ones included")
        << &CommandInformationTalbe::registerPrefixSymbols << QStringList{"D", "T", "W", "d"};
    QTest::newRow("reserved rows") << &CommandInformationTalbe::reservePrefixSymbols << QStringList{"T"};
}

void CommandInformationTalbeTest::symbolsWithoutRepeats()
{
    QFETCH(Texts, list);
    QFETCH(QStringList, sortedSymbols);
    const CommandInformationTalbe table =
        tableOf({row("(M)(\\d+)", 0, "M", "1"), row("(M)(\\d+x)", 0, "M", "2"), row("(D)(\\d+y)", 0, "D", "3"),
                 row("(E)(\\d+)", 0, "", "4"), row("(D)(\\d+)", 2, "D", "5"), row("(D)(\\d+)", 3, "D", "6"),
                 row("(d)(\\d+)", 2, "d", "7"), row("(W)(\\d+)", 1, "W", "8"), row("(T)(\\d+)", 5, "T", "9"),
                 row("(T)(\\d+s)", 5, "T", "10")});
    QCOMPARE(sorted((table.*list)()), sortedSymbols);
}

void CommandInformationTalbeTest::questions_data()
{
    using Table = CommandInformationTalbe;
    QTest::addColumn<Question>("ask");
    QTest::addColumn<int>("index");
    QTest::addColumn<QVariant>("answer");
    QTest::newRow("type of a bit row") << question(&Table::datatype) << 0 << QVariant(0);
    QTest::newRow("type of a word row") << question(&Table::datatype) << 1 << QVariant(2);
    QTest::newRow("type of a text row") << question(&Table::datatype) << 3 << QVariant(5);
    QTest::newRow("type outside the numbering") << question(&Table::datatype) << 7 << QVariant(-7);
    QTest::newRow("block size") << question(&Table::blocksize) << 0 << QVariant(128);
    QTest::newRow("block size 0") << question(&Table::blocksize) << 3 << QVariant(0);
    QTest::newRow("data size of a word") << question(&Table::datasize) << 1 << QVariant(2);
    QTest::newRow("data size of a double word") << question(&Table::datasize) << 2 << QVariant(4);
    QTest::newRow("number in an address") << numberIn(QStringLiteral("D100")) << 1 << QVariant(100);
    QTest::newRow("number in radix 16") << numberIn(QStringLiteral("W1f")) << 4 << QVariant(31);
    QTest::newRow("number in front of a bit") << numberIn(QStringLiteral("D100.f")) << 5 << QVariant(100);
    QTest::newRow("number in another row's address") << numberIn(QStringLiteral("M100")) << 1 << QVariant(-1);
    QTest::newRow("number beyond the limits") << numberIn(QStringLiteral("D99999")) << 1 << QVariant(99999);
    QTest::newRow("number in a longer text") << numberIn(QStringLiteral("xD7y")) << 1 << QVariant(7);
    QTest::newRow("bit in an address") << bitIn(QStringLiteral("D100.f")) << 5 << QVariant(15);
    QTest::newRow("bit in an aligned group") << bitIn(QStringLiteral("M37")) << 0 << QVariant(5);
    QTest::newRow("bit of a register row") << bitIn(QStringLiteral("D100")) << 1 << QVariant(-1);
    QTest::newRow("bit in another row's address") << bitIn(QStringLiteral("M37")) << 5 << QVariant(-1);
    QTest::newRow("a row that converts") << question(&Table::canConvertRegisterCommand) << 0 << QVariant(true);
    QTest::newRow("a row that does not convert") << question(&Table::canConvertRegisterCommand) << 5 << QVariant(false);
    QTest::newRow("a row without a rule converts")
        << question(&Table::canConvertRegisterCommand) << 1 << QVariant(true);
    QTest::newRow("continue rule") << question(&Table::continueRule) << 0 << QVariant(QStringLiteral("Y"));
    QTest::newRow("continue rule N") << question(&Table::continueRule) << 1 << QVariant(QStringLiteral("N"));
    QTest::newRow("radix 10") << question(&Table::base) << 1 << QVariant(10);
    QTest::newRow("radix 16") << question(&Table::base) << 4 << QVariant(16);
    QTest::newRow("format string") << question(&Table::formatstring) << 2 << QVariant(QStringLiteral("D: double word"));
    QTest::newRow("symbol") << question(&Table::getPrefixSymbolByTypeID) << 6 << QVariant(QStringLiteral("DB"));
    QTest::newRow("a row without a rule is optimised") << question(&Table::needOptimize) << 1 << QVariant(true);
    QTest::newRow("a row with the rule n is not optimised") << question(&Table::needOptimize) << 4 << QVariant(false);
    QTest::newRow("a bit row with the tail n is optimised") << question(&Table::needOptimize) << 5 << QVariant(true);
    QTest::newRow("numbers that count bits") << question(&Table::isTypeNeedAlignmentByte) << 2 << QVariant(true);
    QTest::newRow("numbers that count units") << question(&Table::isTypeNeedAlignmentByte) << 1 << QVariant(false);
    QTest::newRow("an aligned group") << question(&Table::alignmentSize) << 2 << QVariant(16);
    QTest::newRow("no aligned group") << question(&Table::alignmentSize) << 1 << QVariant(1);
    QTest::newRow("the special rule, in capitals") << question(&Table::isSemenseSepcialType) << 3 << QVariant(true);
    QTest::newRow("not the special rule") << question(&Table::isSemenseSepcialType) << 2 << QVariant(false);
}

void CommandInformationTalbeTest::questions()
{
    QFETCH(Question, ask);
    QFETCH(int, index);
    QFETCH(QVariant, answer);
    const LogRecorder log;
    QCOMPARE(ask(m_table, index), answer);
    QCOMPARE(log.lines(), QStringList());
}

void CommandInformationTalbeTest::wrongIndex_data()
{
    using Table = CommandInformationTalbe;
    QTest::addColumn<Question>("ask");
    QTest::addColumn<QVariant>("answer");
    QTest::addColumn<QString>("line");
    QTest::newRow("type") << question(&Table::datatype) << QVariant(-1)
                          << "CommandInformationTalbe::datatype wrong type_index  %1";
    QTest::newRow("block size") << question(&Table::blocksize) << QVariant(-1)
                                << "CommandInformationTalbe::blocksize wrong type_index  %1";
    QTest::newRow("data size") << question(&Table::datasize) << QVariant(-1)
                               << "CommandInformationTalbe:: datasize  wrong type_index  %1";
    QTest::newRow("number") << numberIn(QStringLiteral("D100")) << QVariant(-1)
                            << "CommandInformationTalbe:: addressRange  wrong type_index  %1";
    QTest::newRow("bit offset") << bitIn(QStringLiteral("D100.f")) << QVariant(-1)
                                << "CommandInformationTalbe::bitOffset wrong type_index  %1";
    QTest::newRow("conversion") << question(&Table::canConvertRegisterCommand) << QVariant(false)
                                << "CommandInformationTalbe::canConvertRegisterCommand wrong type_index  %1";
    QTest::newRow("continue rule") << question(&Table::continueRule) << QVariant(QStringLiteral("N"))
                                   << "CommandInformationTalbe::continueRule wrong type_index  %1";
    QTest::newRow("radix, in silence") << question(&Table::base) << QVariant(10) << "";
    QTest::newRow("format string, in silence") << question(&Table::formatstring) << QVariant(QString()) << "";
    QTest::newRow("symbol, in silence") << question(&Table::getPrefixSymbolByTypeID) << QVariant(QString()) << "";
    QTest::newRow("optimising as without a rule") << question(&Table::needOptimize) << QVariant(true) << "";
    QTest::newRow("counting bits as without a rule")
        << question(&Table::isTypeNeedAlignmentByte) << QVariant(false) << "";
    QTest::newRow("alignment as without a rule") << question(&Table::alignmentSize) << QVariant(1) << "";
    QTest::newRow("special rule as without a rule") << question(&Table::isSemenseSepcialType) << QVariant(false) << "";
}

void CommandInformationTalbeTest::wrongIndex()
{
    QFETCH(Question, ask);
    QFETCH(QVariant, answer);
    QFETCH(QString, line);
    for (const int index : {-1, 8, INT_MAX, INT_MIN}) {
        const LogRecorder log;
        QCOMPARE(ask(m_table, index), answer);
        QCOMPARE(log.lines(), line.isEmpty() ? QStringList() : QStringList{line.arg(index)});
    }
}

QTEST_GUILESS_MAIN(CommandInformationTalbeTest)

#include "tst_commandinformationtalbe.moc"
