// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/labelfixtures.h"
#include "support/logrecorder.h"
#include "zelmar_label/address_grammar/commandformatter.h"

#include <QTest>

#include <memory>

using label::CommandFormatter;

namespace {

const char *const constructionLine = "------------------------------------------    commandformatter";

Row patternRow(const QString &pattern)
{
    Row row;
    row.pattern = pattern;
    return row;
}

/// A row with a different value in each column.
Row distinctRow()
{
    Row row;
    row.pattern = QStringLiteral("(X)([0-7]+)(Y)");
    row.type = 4;
    row.addressGroupIndex = 2;
    row.description = QStringLiteral("X: relay");
    row.prefixSymbol = QStringLiteral("XS");
    row.start = QStringLiteral("10");
    row.end = QStringLiteral("777");
    row.dataSize = 6;
    row.multipleRule = QStringLiteral("m8");
    row.catchTable = QStringLiteral("table of X");
    row.base = 8;
    row.blocksize = 33;
    row.continueRule = QStringLiteral("Yes");
    return row;
}

/// The bit row of a data block: the word before the dot in radix 10, the bit after it in radix 8.
Row dataBlockBitRow()
{
    Row row;
    row.pattern = QStringLiteral("(DB12\\.DBX)(\\d+\\.[0-7])");
    row.type = 0;
    row.prefixSymbol = QStringLiteral("DB12.DBX");
    row.end = QStringLiteral("65535");
    row.multipleRule = QStringLiteral("dot-oct:r");
    return row;
}

CommunicatorCommand filledCommand(const QString &address)
{
    CommunicatorCommand filled;
    filled.address = address;
    filled.scanTime = 7;
    filled.dataType = CommunicatorCommand::Text;
    filled.length = 20;
    filled.auxiliaryNumber = -1;
    filled.auxiliaryText = QStringLiteral("text");
    filled.auxiliaryFlag = true;
    return filled;
}

} // namespace

class TestCommandFormatter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_log = std::make_unique<LogRecorder>(); }
    void cleanup() { m_log.reset(); }

    void anEmptyFormatHasDefaults();
    void anEmptyFormatRejectsAddresses();
    void theConstructorStoresTheColumns();
    void numbersAreStoredUnchanged();
    void everyRowWritesOneLine();
    void whatIsNotARowWritesNoLine();
    void setters();
    void aNewPatternReplacesTheOld();
    void thePrefixSymbolDoesNotCutAddresses();
    void theEditorsSymbolGoesFirst();
    void copyingKeepsEverything_data();
    void copyingKeepsEverything();
    void copiesAreIndependent();
    void copyingReplacesTheOldRow();
    void copiedToItselfItStaysAsItIs();
    void hadStation_data();
    void hadStation();
    void withoutStation_data();
    void withoutStation();
    void removingAStationKeepsFourFields_data();
    void removingAStationKeepsFourFields();
    void withStation_data();
    void withStation();
    void addingAStationKeepsFourFields();
    void addingNoStationKeepsAllFields();
    void matchedLength_data();
    void matchedLength();
    void matchingWithStation_data();
    void matchingWithStation();
    void badPatternsRejectInSilence_data();
    void badPatternsRejectInSilence();
    void aTemplateMatchesOnceItHasItsPattern();
    void partsOfABitAddress();
    void partsOfARegisterAddress();
    void followingAddresses_data();
    void followingAddresses();
    void questionsDoNotDisturbEachOther();

private:
    std::unique_ptr<LogRecorder> m_log;
};

void TestCommandFormatter::anEmptyFormatHasDefaults()
{
    const CommandFormatter formatter;
    QCOMPARE(formatter.pattern(), QString());
    QCOMPARE(formatter.type(), 0);
    QCOMPARE(formatter.datasize(), 0ULL);
    QCOMPARE(formatter.base(), 0);
    QCOMPARE(formatter.blocksize(), 0);
    QVERIFY(formatter.formatString().isEmpty());
    QVERIFY(formatter.prefixSymbol().isEmpty());
    QVERIFY(formatter.getEditorUsedPrefixsymbol().isEmpty());
    QVERIFY(formatter.catchTable().isEmpty());
    QVERIFY(formatter.start().isEmpty());
    QVERIFY(formatter.end().isEmpty());
    QVERIFY(formatter.ruleText().isEmpty());
    QCOMPARE(formatter.continueRule(), QStringLiteral("N"));
    QCOMPARE(formatter.bitbase(), -1);
    QCOMPARE(formatter.aligmentSize(), 1);
    QVERIFY(formatter.needOptimize());
    QVERIFY(!formatter.canConvertRegisterCommand());
    QVERIFY(!formatter.isTypeRangeNeedAlignmentByte());
    QVERIFY(!formatter.isSemenseSepcialType());
    QVERIFY(formatter.validateMultiple(13));
}

void TestCommandFormatter::anEmptyFormatRejectsAddresses()
{
    const CommandFormatter formatter;
    QCOMPARE(formatter.matchedLength(QStringLiteral("D100")), 0);
    QVERIFY(!formatter.isAddressValid(QStringLiteral("D100")));
    QVERIFY(!formatter.isAddressDataTypeMatch(QStringLiteral("D100"), CommunicatorCommand::Word));
    QVERIFY(!formatter.isAddressDataTypeMatch(QStringLiteral("D100"), CommunicatorCommand::Bit));
    QCOMPARE(formatter.getAddresRangePart(QStringLiteral("D100")), -1);
    QCOMPARE(m_log->lines(), QStringList());
}

void TestCommandFormatter::theConstructorStoresTheColumns()
{
    const CommandFormatter formatter = distinctRow().formatter();
    QCOMPARE(formatter.pattern(), QStringLiteral("(X)([0-7]+)(Y)"));
    QCOMPARE(formatter.type(), 4);
    QCOMPARE(formatter.getRangeString(QStringLiteral("X17Y")), QStringLiteral("17"));
    QCOMPARE(formatter.formatString(), QStringLiteral("X: relay"));
    QCOMPARE(formatter.prefixSymbol(), QStringLiteral("XS"));
    QCOMPARE(formatter.getEditorUsedPrefixsymbol(), QStringLiteral("XS"));
    QCOMPARE(formatter.start(), QStringLiteral("10"));
    QCOMPARE(formatter.end(), QStringLiteral("777"));
    QCOMPARE(formatter.datasize(), 6ULL);
    QCOMPARE(formatter.ruleText(), QStringLiteral("m8"));
    QCOMPARE(formatter.catchTable(), QStringLiteral("table of X"));
    QCOMPARE(formatter.base(), 8);
    QCOMPARE(formatter.blocksize(), 33);
    QCOMPARE(formatter.continueRule(), QStringLiteral("Yes"));
}

void TestCommandFormatter::numbersAreStoredUnchanged()
{
    const CommandFormatter formatter(QStringLiteral("(D)(\\d+)"), -3, 2, QString(), QString(), QString(), QString(),
                                     18446744073709551615ULL, QString(), QString(), -10, -5, QString());
    QCOMPARE(formatter.type(), -3);
    QCOMPARE(formatter.datasize(), 18446744073709551615ULL);
    QCOMPARE(formatter.base(), -10);
    QCOMPARE(formatter.blocksize(), -5);
    QCOMPARE(formatter.continueRule(), QString());
}

void TestCommandFormatter::everyRowWritesOneLine()
{
    distinctRow().formatter();
    QCOMPARE(m_log->take(), QStringList{constructionLine});
    patternRow(QStringLiteral("(D")).formatter();
    patternRow(QString()).formatter();
    QCOMPARE(m_log->take(), (QStringList{constructionLine, constructionLine}));
}

void TestCommandFormatter::whatIsNotARowWritesNoLine()
{
    const CommandFormatter row = distinctRow().formatter();
    m_log->take();
    const CommandFormatter empty;
    const CommandFormatter constructed(row);
    CommandFormatter assigned;
    assigned = row;
    CommandFormatter copied;
    copied.copy(row);
    copied.setPattern(QStringLiteral("(Z)(\\d+)"));
    QCOMPARE(m_log->lines(), QStringList());
}

void TestCommandFormatter::setters()
{
    CommandFormatter formatter = distinctRow().formatter();
    formatter.setPattern(QStringLiteral("(Z)(\\d+)"));
    QCOMPARE(formatter.pattern(), QStringLiteral("(Z)(\\d+)"));
    formatter.setPrefixSymbol(QStringLiteral("Z"));
    QCOMPARE(formatter.prefixSymbol(), QStringLiteral("Z"));
    formatter.setPattern(QString());
    QCOMPARE(formatter.pattern(), QString());
    formatter.setPrefixSymbol(QString());
    QCOMPARE(formatter.prefixSymbol(), QString());
    QCOMPARE(formatter.formatString(), QStringLiteral("X: relay"));
}

void TestCommandFormatter::aNewPatternReplacesTheOld()
{
    CommandFormatter formatter = Row().formatter();
    QVERIFY(formatter.isAddressValid(QStringLiteral("D100")));
    formatter.setPattern(QStringLiteral("(Zr)(\\d+)"));
    QVERIFY(formatter.isAddressValid(QStringLiteral("Zr100")));
    QVERIFY(!formatter.isAddressValid(QStringLiteral("D100")));
    QVERIFY2(!formatter.isAddressValid(QStringLiteral("ZR100")), "case counts");
    QCOMPARE(formatter.matchedLength(QStringLiteral("Zr100")), 5);
    QCOMPARE(formatter.matchedLength(QStringLiteral("D100")), 0);
    QCOMPARE(formatter.getAddresRangePart(QStringLiteral("Zr100")), 100);
    formatter.setPattern(QStringLiteral("(D"));
    QVERIFY(!formatter.isAddressValid(QStringLiteral("Zr100")));
    QVERIFY(!formatter.isAddressValid(QStringLiteral("D")));
    formatter.setPattern(QStringLiteral("(D)(\\d+)"));
    QVERIFY(formatter.isAddressValid(QStringLiteral("D100")));
}

void TestCommandFormatter::thePrefixSymbolDoesNotCutAddresses()
{
    CommandFormatter formatter = Row().formatter();
    formatter.setPrefixSymbol(QStringLiteral("quite another"));
    QVERIFY(formatter.isAddressValid(QStringLiteral("D100")));
    QCOMPARE(formatter.getRangeString(QStringLiteral("D100")), QStringLiteral("100"));
    QCOMPARE(addresses(formatter.makeContinueCommand(command(QStringLiteral("D100"), 2), 2)),
             (QStringList{QStringLiteral("D100"), QStringLiteral("D101")}));
}

void TestCommandFormatter::theEditorsSymbolGoesFirst()
{
    CommandFormatter formatter = distinctRow().formatter();
    QCOMPARE(formatter.getEditorUsedPrefixsymbol(), QStringLiteral("XS"));
    formatter.setEditorPrefixSymbol(QStringLiteral("Relay X"));
    QCOMPARE(formatter.getEditorUsedPrefixsymbol(), QStringLiteral("Relay X"));
    QCOMPARE(formatter.prefixSymbol(), QStringLiteral("XS"));
    formatter.setPrefixSymbol(QStringLiteral("other"));
    QCOMPARE(formatter.getEditorUsedPrefixsymbol(), QStringLiteral("Relay X"));
    formatter.setEditorPrefixSymbol(QString());
    QCOMPARE(formatter.getEditorUsedPrefixsymbol(), QStringLiteral("other"));
}

void TestCommandFormatter::copyingKeepsEverything_data()
{
    QTest::addColumn<QString>("way");
    QTest::newRow("by the copy constructor") << "constructor";
    QTest::newRow("by assignment") << "assignment";
    QTest::newRow("by copy") << "copy";
}

void TestCommandFormatter::copyingKeepsEverything()
{
    QFETCH(QString, way);
    CommandFormatter original = distinctRow().formatter();
    original.setEditorPrefixSymbol(QStringLiteral("Relay X"));
    CommandFormatter made = way == QLatin1String("constructor") ? CommandFormatter(original) : CommandFormatter();
    if (way == QLatin1String("assignment")) {
        CommandFormatter &result = made = original;
        QCOMPARE(&result, &made);
    } else if (way == QLatin1String("copy")) {
        made.copy(original);
    }
    QCOMPARE(made.pattern(), QStringLiteral("(X)([0-7]+)(Y)"));
    QCOMPARE(made.type(), 4);
    QCOMPARE(made.getRangeString(QStringLiteral("X20Y")), QStringLiteral("20"));
    QCOMPARE(made.formatString(), QStringLiteral("X: relay"));
    QCOMPARE(made.prefixSymbol(), QStringLiteral("XS"));
    QCOMPARE(made.getEditorUsedPrefixsymbol(), QStringLiteral("Relay X"));
    QCOMPARE(made.start(), QStringLiteral("10"));
    QCOMPARE(made.end(), QStringLiteral("777"));
    QCOMPARE(made.datasize(), 6ULL);
    QCOMPARE(made.ruleText(), QStringLiteral("m8"));
    QCOMPARE(made.catchTable(), QStringLiteral("table of X"));
    QCOMPARE(made.base(), 8);
    QCOMPARE(made.blocksize(), 33);
    QCOMPARE(made.continueRule(), QStringLiteral("Yes"));
    QCOMPARE(made.aligmentSize(), 8);
    QVERIFY(made.isAddressValid(QStringLiteral("X770Y")));
    QVERIFY2(!made.isAddressValid(QStringLiteral("X771Y")), "the rule came along");
    QVERIFY2(!made.isAddressValid(QStringLiteral("X0Y")), "the first number came along");
    QVERIFY2(!made.isAddressValid(QStringLiteral("X1000Y")), "the last number came along");
}

void TestCommandFormatter::copiesAreIndependent()
{
    CommandFormatter original = Row().formatter();
    CommandFormatter made(original);
    made.setPattern(QStringLiteral("(W)(\\d+)"));
    made.setPrefixSymbol(QStringLiteral("W"));
    made.setEditorPrefixSymbol(QStringLiteral("Link"));
    QCOMPARE(original.pattern(), QStringLiteral("(D)(\\d+)"));
    QCOMPARE(original.getEditorUsedPrefixsymbol(), QStringLiteral("D"));
    QVERIFY(original.isAddressValid(QStringLiteral("D1")));
    QVERIFY(!original.isAddressValid(QStringLiteral("W1")));
    QVERIFY(made.isAddressValid(QStringLiteral("W1")));
    original.setPattern(QStringLiteral("(Z)(\\d+)"));
    QVERIFY(made.isAddressValid(QStringLiteral("W1")));
}

void TestCommandFormatter::copyingReplacesTheOldRow()
{
    CommandFormatter formatter = distinctRow().formatter();
    formatter.setEditorPrefixSymbol(QStringLiteral("Relay X"));
    formatter.copy(Row().formatter());
    QCOMPARE(formatter.pattern(), QStringLiteral("(D)(\\d+)"));
    QCOMPARE(formatter.getEditorUsedPrefixsymbol(), QStringLiteral("D"));
    QVERIFY(formatter.isAddressValid(QStringLiteral("D9999")));
    QVERIFY(!formatter.isAddressValid(QStringLiteral("X20Y")));
    QCOMPARE(formatter.aligmentSize(), 1);
    formatter = CommandFormatter();
    QCOMPARE(formatter.pattern(), QString());
    QCOMPARE(formatter.continueRule(), QStringLiteral("N"));
    QVERIFY(!formatter.isAddressValid(QStringLiteral("D9999")));
}

void TestCommandFormatter::copiedToItselfItStaysAsItIs()
{
    CommandFormatter formatter = distinctRow().formatter();
    formatter.setEditorPrefixSymbol(QStringLiteral("Relay X"));
    formatter.copy(formatter);
    const CommandFormatter &same = formatter;
    formatter = same;
    QCOMPARE(formatter.pattern(), QStringLiteral("(X)([0-7]+)(Y)"));
    QCOMPARE(formatter.getEditorUsedPrefixsymbol(), QStringLiteral("Relay X"));
    QCOMPARE(formatter.aligmentSize(), 8);
    QVERIFY(formatter.isAddressValid(QStringLiteral("X20Y")));
}

void TestCommandFormatter::hadStation_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<bool>("had");

    QTest::newRow("no dash") << "D100" << false;
    QTest::newRow("an empty address") << "" << false;
    QTest::newRow("a station") << "3-D100" << true;
    QTest::newRow("an empty station") << "-D100" << true;
    QTest::newRow("a station that is a word") << "abc-D100" << true;
    QTest::newRow("two dashes") << "1-D2-3" << true;
    QTest::newRow("a dash at the end") << "D100-" << true;
    QTest::newRow("a lone dash") << "-" << true;
    QTest::newRow("the null address") << "S>NULL" << false;
}

void TestCommandFormatter::hadStation()
{
    QFETCH(QString, address);
    const CommandFormatter formatter = Row().formatter();
    QTEST(formatter.hadStationID(address), "had");
    QTEST(formatter.hadStationID(command(address, 2)), "had");
}

void TestCommandFormatter::withoutStation_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("deviceAddress");

    QTest::newRow("no dash leaves the address") << "D100"
                                                << "D100";
    QTest::newRow("an empty address") << ""
                                      << "";
    QTest::newRow("a station goes") << "3-D100"
                                    << "D100";
    QTest::newRow("an empty station goes") << "-D100"
                                           << "D100";
    QTest::newRow("text behind a second dash goes") << "1-D2-3"
                                                    << "D2";
    QTest::newRow("text behind a third dash goes") << "1-D2-3-4"
                                                   << "D2";
    QTest::newRow("a dash at the end leaves nothing") << "D100-"
                                                      << "";
    QTest::newRow("a lone dash leaves nothing") << "-"
                                                << "";
    QTest::newRow("two dashes in front leave nothing") << "--D100"
                                                       << "";
    QTest::newRow("an address of another row") << "4-W1F"
                                               << "W1F";
}

void TestCommandFormatter::withoutStation()
{
    QFETCH(QString, address);
    const CommandFormatter formatter = Row().formatter();
    QTEST(formatter.removeStationID(address), "deviceAddress");
    QTEST(formatter.removeStationID(command(address, 2)).address, "deviceAddress");
}

void TestCommandFormatter::removingAStationKeepsFourFields_data()
{
    QTest::addColumn<QString>("address");
    QTest::newRow("from an address with a station") << "3-D100";
    QTest::newRow("from an address without a station") << "D100";
}

void TestCommandFormatter::removingAStationKeepsFourFields()
{
    QFETCH(QString, address);
    const CommunicatorCommand original = filledCommand(address);
    const CommunicatorCommand removed = CommandFormatter().removeStationID(original);
    QCOMPARE(removed.address, QStringLiteral("D100"));
    QCOMPARE(removed.scanTime, 7);
    QCOMPARE(removed.dataType, CommunicatorCommand::Text);
    QCOMPARE(removed.length, Q_UINT64_C(20));
    QCOMPARE(removed.auxiliaryNumber, -1);
    QVERIFY(removed.auxiliaryText.isEmpty());
    QVERIFY(!removed.auxiliaryFlag);
    QCOMPARE(original.address, address);
    QCOMPARE(original.auxiliaryText, QStringLiteral("text"));
}

void TestCommandFormatter::withStation_data()
{
    QTest::addColumn<int>("station");
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("newAddress");

    QTest::newRow("a first station") << 3 << "D100"
                                     << "3-D100";
    QTest::newRow("station 0 is a station") << 0 << "D100"
                                            << "0-D100";
    QTest::newRow("a station of several digits") << 247 << "D100"
                                                 << "247-D100";
    QTest::newRow("an old station is replaced") << 3 << "7-D100"
                                                << "3-D100";
    QTest::newRow("an old station of the same number") << 3 << "3-D100"
                                                       << "3-D100";
    QTest::newRow("an empty old station is replaced") << 3 << "-D100"
                                                      << "3-D100";
    QTest::newRow("text behind a second dash goes") << 3 << "1-D2-3"
                                                    << "3-D2";
    QTest::newRow("-1 adds nothing") << -1 << "D100"
                                     << "D100";
    QTest::newRow("-1 leaves an old station") << -1 << "7-D100"
                                              << "7-D100";
    QTest::newRow("-1 leaves text behind a second dash") << -1 << "1-D2-3"
                                                         << "1-D2-3";
    QTest::newRow("-2 counts as a station") << -2 << "D100"
                                            << "-2-D100";
    QTest::newRow("-2 replaces a station") << -2 << "7-D100"
                                           << "-2-D100";
    QTest::newRow("the greatest station") << 2147483647 << "D100"
                                          << "2147483647-D100";
    QTest::newRow("an empty address") << 3 << ""
                                      << "3-";
    QTest::newRow("a place marker in the address stays text") << 3 << "D%1"
                                                              << "3-D%1";
}

void TestCommandFormatter::withStation()
{
    QFETCH(int, station);
    QFETCH(QString, address);
    QTEST(Row().formatter().addStationID(station, command(address, 2)).address, "newAddress");
}

void TestCommandFormatter::addingAStationKeepsFourFields()
{
    const CommunicatorCommand made = CommandFormatter().addStationID(3, filledCommand(QStringLiteral("7-D100")));
    QCOMPARE(made.address, QStringLiteral("3-D100"));
    QCOMPARE(made.scanTime, 7);
    QCOMPARE(made.dataType, CommunicatorCommand::Text);
    QCOMPARE(made.length, Q_UINT64_C(20));
    QCOMPARE(made.auxiliaryNumber, -1);
    QVERIFY(made.auxiliaryText.isEmpty());
    QVERIFY(!made.auxiliaryFlag);
}

void TestCommandFormatter::addingNoStationKeepsAllFields()
{
    const CommunicatorCommand made = CommandFormatter().addStationID(-1, filledCommand(QStringLiteral("7-D100")));
    QCOMPARE(made.address, QStringLiteral("7-D100"));
    QCOMPARE(made.scanTime, 7);
    QCOMPARE(made.dataType, CommunicatorCommand::Text);
    QCOMPARE(made.length, Q_UINT64_C(20));
    QCOMPARE(made.auxiliaryNumber, -1);
    QCOMPARE(made.auxiliaryText, QStringLiteral("text"));
    QVERIFY(made.auxiliaryFlag);
}

void TestCommandFormatter::matchedLength_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("address");
    QTest::addColumn<int>("length");

    const QString registerPattern = QStringLiteral("(D)(\\d+)");
    const QString bitPattern = QStringLiteral("(DB12\\.DBX)(\\d+\\.[0-7])");
    QTest::newRow("a match has the length of the address") << registerPattern << "D100" << 4;
    QTest::newRow("with a station it is 2 more") << registerPattern << "3-D100" << 6;
    QTest::newRow("with a station of three digits it is 4 more") << registerPattern << "247-D100" << 8;
    QTest::newRow("with an empty station it is 1 more") << registerPattern << "-D100" << 5;
    QTest::newRow("text behind a second dash counts in a match") << registerPattern << "3-D100-99" << 9;
    QTest::newRow("a symbol alone could be completed") << registerPattern << "D" << 1;
    QTest::newRow("a symbol behind a station counts without it") << registerPattern << "3-D" << 1;
    QTest::newRow("a wrong character ends what could be completed") << registerPattern << "D10A" << 3;
    QTest::newRow("a station does not count without a match") << registerPattern << "3-D10A" << 3;
    QTest::newRow("a blank behind spoils the match") << registerPattern << "D100 " << 4;
    QTest::newRow("another symbol") << registerPattern << "X1" << 0;
    QTest::newRow("another symbol behind a station") << registerPattern << "3-X1" << 0;
    QTest::newRow("the wrong case") << registerPattern << "d100" << 0;
    QTest::newRow("an empty address could be completed") << registerPattern << "" << 0;
    QTest::newRow("a station alone") << registerPattern << "3-" << 0;
    QTest::newRow("limits do not matter") << registerPattern << "D123456" << 7;
    QTest::newRow("a bit address") << bitPattern << "DB12.DBX10.3" << 12;
    QTest::newRow("a bit address at a station") << bitPattern << "4-DB12.DBX10.3" << 14;
    QTest::newRow("a word without its bit") << bitPattern << "DB12.DBX10" << 10;
    QTest::newRow("a bit that the row does not have") << bitPattern << "DB12.DBX10.8" << 11;
    QTest::newRow("half a prefix") << bitPattern << "DB12" << 4;
    QTest::newRow("the dot of a prefix is no wildcard") << bitPattern << "DB12xDBX10.3" << 4;
    QTest::newRow("no pattern") << ""
                                << "D100" << 0;
    QTest::newRow("no pattern and no address") << ""
                                               << "" << 0;
    QTest::newRow("an invalid pattern") << "(D"
                                        << "D100" << 0;
    QTest::newRow("an invalid pattern spelled out") << "(D"
                                                    << "(D" << 0;
}

void TestCommandFormatter::matchedLength()
{
    QFETCH(QString, pattern);
    QFETCH(QString, address);
    QTEST(patternRow(pattern).formatter().matchedLength(address), "length");
}

void TestCommandFormatter::matchingWithStation_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<bool>("isValid");

    QTest::newRow("a device address") << "D100" << true;
    QTest::newRow("at a station") << "3-D100" << true;
    QTest::newRow("at an empty station") << "-D100" << true;
    QTest::newRow("text behind a second dash never reaches the pattern") << "3-D100-x" << true;
    QTest::newRow("another symbol at a station") << "3-X100" << false;
    QTest::newRow("something in front") << "xD100" << false;
    QTest::newRow("something behind") << "D100x" << false;
    QTest::newRow("the wrong case") << "d100" << false;
}

void TestCommandFormatter::matchingWithStation()
{
    QFETCH(QString, address);
    QTEST(Row().formatter().isAddressValid(address), "isValid");
}

void TestCommandFormatter::badPatternsRejectInSilence_data()
{
    QTest::addColumn<QString>("pattern");

    QTest::newRow("an empty pattern") << "";
    QTest::newRow("an open group") << "(D)(\\d+";
    QTest::newRow("an open class") << "(D)([0-9+)";
    QTest::newRow("a repetition of nothing") << "*D(\\d+)";
    QTest::newRow("a group that is closed only") << "D)(\\d+)";
}

void TestCommandFormatter::badPatternsRejectInSilence()
{
    QFETCH(QString, pattern);
    const CommandFormatter formatter = patternRow(pattern).formatter();
    QCOMPARE(m_log->take(), QStringList{constructionLine});
    QCOMPARE(formatter.pattern(), pattern);
    for (const QString &address :
         {QStringLiteral("D100"), QStringLiteral("3-D100"), QStringLiteral("D"), QStringLiteral("100")}) {
        QVERIFY2(!formatter.isAddressValid(address), qPrintable(address));
        QVERIFY2(!formatter.isAddressDataTypeMatch(address, CommunicatorCommand::Word), qPrintable(address));
        QVERIFY2(formatter.matchedLength(address) < address.size(), qPrintable(address));
        QCOMPARE(formatter.getRangeString(address), QString());
        QCOMPARE(formatter.getAddresRangePart(address), -1);
    }
    QCOMPARE(m_log->lines(), QStringList());
}

void TestCommandFormatter::aTemplateMatchesOnceItHasItsPattern()
{
    const CommandFormatter family = patternRow(QStringLiteral("family DB")).formatter();
    QVERIFY(!family.isAddressValid(QStringLiteral("DB5.DBW20")));
    CommandFormatter member(family);
    member.setPattern(QStringLiteral("(DB5\\.DBW)(\\d+)"));
    member.setPrefixSymbol(QStringLiteral("DB5.DBW"));
    member.setEditorPrefixSymbol(QStringLiteral("DB5"));
    QVERIFY(member.isAddressValid(QStringLiteral("DB5.DBW20")));
    QCOMPARE(member.getAddresRangePart(QStringLiteral("DB5.DBW20")), 20);
    QCOMPARE(member.getEditorUsedPrefixsymbol(), QStringLiteral("DB5"));
    QVERIFY(!family.isAddressValid(QStringLiteral("DB5.DBW20")));
}

void TestCommandFormatter::partsOfABitAddress()
{
    const CommandFormatter formatter = dataBlockBitRow().formatter();
    const QString address = QStringLiteral("DB12.DBX10.3");
    QVERIFY(formatter.isAddressValid(address));
    QCOMPARE(formatter.getRangeString(address), QStringLiteral("10.3"));
    QCOMPARE(formatter.getAddresRangePart(address), 10);
    QCOMPARE(formatter.getbitOffset(address), 3);
    QCOMPARE(formatter.bitbase(), 8);
    QCOMPARE(formatter.base(), 10);
    QVERIFY(formatter.isAddressValid(QStringLiteral("4-DB12.DBX10.3")));
    QVERIFY(!formatter.isAddressValid(QStringLiteral("DB12.DBX10.8")));
    QVERIFY(!formatter.isAddressValid(QStringLiteral("DB13.DBX10.3")));
}

void TestCommandFormatter::partsOfARegisterAddress()
{
    const CommandFormatter formatter = Row().formatter();
    QCOMPARE(formatter.getRangeString(QStringLiteral("D100")), QStringLiteral("100"));
    QCOMPARE(formatter.getAddresRangePart(QStringLiteral("D100")), 100);
    QCOMPARE(formatter.getbitOffset(QStringLiteral("D100")), -1);
}

void TestCommandFormatter::followingAddresses_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<int>("base");
    QTest::addColumn<int>("dataSize");
    QTest::addColumn<QString>("rule");
    QTest::addColumn<QString>("first");
    QTest::addColumn<QStringList>("run");

    QTest::newRow("radix 10") << "(D)(\\d+)" << 10 << 2 << ""
                              << "D100" << QStringList{"D100", "D101", "D102"};
    QTest::newRow("radix 8 steps over 8 and 9") << "(X)([0-7]+)" << 8 << 2 << ""
                                                << "X16" << QStringList{"X16", "X17", "X20"};
    QTest::newRow("radix 16 writes small letters") << "(W)([0-9A-Fa-f]+)" << 16 << 2 << ""
                                                   << "W9" << QStringList{"W9", "Wa", "Wb"};
    QTest::newRow("leading zeros do not survive") << "(D)(\\d+)" << 10 << 2 << ""
                                                  << "D0100" << QStringList{"D100", "D101", "D102"};
    QTest::newRow("leading zeros and capitals of radix 16 do not survive")
        << "(H)([0-9A-Fa-f]+)" << 16 << 2 << ""
        << "H00FF" << QStringList{"Hff", "H100", "H101"};
    QTest::newRow("a suffix is taken over") << "(D)(\\d+)(:U)" << 10 << 2 << ""
                                            << "D7:U" << QStringList{"D7:U", "D8:U", "D9:U"};
    QTest::newRow("a prefix is taken from the address, in its own case") << "([Dd])(\\d+)" << 10 << 2 << ""
                                                                         << "d7" << QStringList{"d7", "d8", "d9"};
    QTest::newRow("the station is kept") << "(D)(\\d+)" << 10 << 2 << ""
                                         << "4-D7" << QStringList{"4-D7", "4-D8", "4-D9"};
    QTest::newRow("without alignment the unit's size does not matter") << "(D)(\\d+)" << 10 << 8 << ""
                                                                       << "D7" << QStringList{"D7", "D8", "D9"};
    QTest::newRow("aligned numbers count bits: 2 bytes span 16") << "(M)(\\d+)" << 10 << 2 << "m16"
                                                                 << "M16" << QStringList{"M16", "M32", "M48"};
    QTest::newRow("aligned numbers count bits: 1 byte spans 8") << "(M)(\\d+)" << 10 << 1 << "m8a1"
                                                                << "M1" << QStringList{"M1", "M9", "M17"};
    QTest::newRow("aligned numbers in radix 8") << "(M)([0-7]+)" << 8 << 2 << "m16"
                                                << "M20" << QStringList{"M20", "M40", "M60"};
}

void TestCommandFormatter::followingAddresses()
{
    QFETCH(QString, pattern);
    QFETCH(int, base);
    QFETCH(int, dataSize);
    QFETCH(QString, rule);
    QFETCH(QString, first);
    Row row = patternRow(pattern);
    row.base = base;
    row.dataSize = dataSize;
    row.multipleRule = rule;
    row.end = QStringLiteral("7777");
    QTEST(addresses(row.formatter().makeContinueCommand(command(first, 2), 3)), "run");
}

// The pattern keeps its last match; no answer may depend on it.
void TestCommandFormatter::questionsDoNotDisturbEachOther()
{
    const CommandFormatter formatter = dataBlockBitRow().formatter();
    const QString address = QStringLiteral("DB12.DBX10.3");
    const QString other = QStringLiteral("DB12.DBX9999.7");
    for (int round = 0; round < 2; ++round) {
        QCOMPARE(formatter.matchedLength(QStringLiteral("nothing")), 0);
        QCOMPARE(formatter.getRangeString(address), QStringLiteral("10.3"));
        QCOMPARE(formatter.getAddresRangePart(other), 9999);
        QCOMPARE(formatter.getbitOffset(address), 3);
        QVERIFY(formatter.isAddressValid(other));
        QCOMPARE(formatter.getAddresRangePart(address), 10);
        QCOMPARE(formatter.getRangeString(QStringLiteral("nothing")), QString());
        QCOMPARE(formatter.getbitOffset(other), 7);
        const CommandFormatter made(formatter);
        QCOMPARE(made.getRangeString(address), QStringLiteral("10.3"));
    }
}

QTEST_GUILESS_MAIN(TestCommandFormatter)

#include "tst_commandformatter.moc"
