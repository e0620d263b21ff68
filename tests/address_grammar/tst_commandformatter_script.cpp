// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/labelfixtures.h"
#include "support/logrecorder.h"

#include "zelmar_label/address_grammar/scripthook.h"

#include <QtTest>

using label::CommandFormatter;
using label::ScriptHook;

namespace {

const QString s_fileName = QStringLiteral("row.js");
const QString s_rule = QStringLiteral("F>row.js");
const QString s_constructed = QStringLiteral("------------------------------------------    commandformatter");

/// Every function reports its call; the announced values differ from those of the rule text "F>row.js".
const QString s_functions =
    QStringLiteral("function getAddressRange(a) { print('range', a); return 41; }"
                   "function bitoffset(a) { print('bit', a); return 6; }"
                   "function convertToRegisterAddress(a) { print('register', a); return 'R' + a; }"
                   "function makeBitContinueCommand(a, c, s) { print('bits', a, c, s); return [a, 'next']; }");
const QString s_init = QStringLiteral("function init() { bitBase = 8; needOptimize = false; needAligment = true;"
                                      "aligmentSize = 8; addressStartPos = 1; canConvertToRegister = false; }");

Row bitRow(const QString &rule = s_rule)
{
    Row row;
    row.pattern = QStringLiteral("(M)(\\d+\\.[0-7])");
    row.type = 0;
    row.prefixSymbol = QStringLiteral("M");
    row.multipleRule = rule;
    return row;
}

Row registerRow(const QString &rule = s_rule)
{
    Row row;
    row.multipleRule = rule;
    return row;
}

/// The constants: bitbase, needOptimize, aligmentSize, isTypeRangeNeedAlignmentByte, canConvertRegisterCommand and
/// validateMultiple of 8 and of 9.
QString constants(const CommandFormatter &formatter)
{
    return QStringLiteral("%1 %2 %3 %4 %5 %6 %7")
        .arg(formatter.bitbase())
        .arg(formatter.needOptimize())
        .arg(formatter.aligmentSize())
        .arg(formatter.isTypeRangeNeedAlignmentByte())
        .arg(formatter.canConvertRegisterCommand())
        .arg(formatter.validateMultiple(8))
        .arg(formatter.validateMultiple(9));
}

const QString s_constantsOfTheRule = QStringLiteral("16 1 1 0 1 1 1");
const QString s_constantsByDefault = QStringLiteral("10 0 1 0 0 1 1");
const QString s_constantsOfTheScript = QStringLiteral("8 0 8 1 0 0 1");

/// Number, bit, register address and bit run of an address, which the script or the rule parses.
QString parsed(const CommandFormatter &formatter)
{
    const CommunicatorCommand bit = command("M12.3", 0);
    return QStringLiteral("%1 %2 %3 %4")
        .arg(formatter.getAddresRangePart("M12.3"))
        .arg(formatter.getbitOffset("M12.3"))
        .arg(formatter.convertToRegisterAddress(bit),
             addresses(formatter.makeBitContinueCommand(bit, 2, 1, false)).join(','));
}

const QString s_parsedByTheScript = QStringLiteral("41 6 RM12.3 M12.3,next");

} // namespace

class TestCommandFormatterScript : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanupTestCase();

    void statesOfAScriptRow_data();
    void statesOfAScriptRow();
    void aFileWithoutInitLeavesTheRuleToParse();
    void aMissingFileLeavesTheRuleToParse();
    void aScriptThatThrowsParsesWithWhatItHas();
    void aFolderInPlaceOfTheFile();
    void constructionReportsInOrder();
    void theNameIsCutFromAnyRule();
    void compoundRulesCanNameAFileToo();

    void fileMadeAfterConstruction();
    void fileRemovedAfterConstruction();
    void copyAfterTheFileIsGone();
    void copyOfARowBuiltBeforeItsFile();
    void copiesHaveScriptsOfTheirOwn();
    void aCopyOntoItself();
    void assignmentBetweenScriptAndRule();
    void settersDoNotLoad();
    void enginesAreMadeForLoadedScriptsOnly();

    void numberIsAskedWithoutThePattern();
    void bitIsAskedBehindThePatternOnBitRowsOnly();
    void registerAddressIsAskedWithTheStation();
    void bitRunsAreAskedWithTheStation();
    void bitRunsOfContinuations();
    void whatTheScriptIsNotAskedFor();
    void validityUsesTheScriptsNumber_data();
    void validityUsesTheScriptsNumber();
    void alignmentOfTheScript_data();
    void alignmentOfTheScript();
    void registerRunsUseNumberAndAlignment();
    void missingFunctionsFail();
    void wrongResults_data();
    void wrongResults();
};

void TestCommandFormatterScript::init()
{
    QDir(scriptsFolder()).removeRecursively();
}

void TestCommandFormatterScript::cleanupTestCase()
{
    init();
}

void TestCommandFormatterScript::statesOfAScriptRow_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("constantAnswers");
    QTest::addColumn<bool>("isParsedByScript");
    QTest::addColumn<QStringList>("lines");

    const QString path = scriptsFolder() + "/row.js";
    const QString noInit = "script init function call fail \"" + path + "\"";
    QTest::newRow("good") << s_functions + s_init << s_constantsOfTheScript << true << QStringList(s_constructed);
    QTest::newRow("init sets nothing") << s_functions + "function init() {}" << s_constantsByDefault << true
                                       << QStringList(s_constructed);
    QTest::newRow("init throws behind its settings") << s_functions + "function init() { bitBase = 8; throw 1; }"
                                                     << "8 0 1 0 0 1 1" << true << QStringList(s_constructed);
    QTest::newRow("init missing") << s_functions + "bitBase = 8;" << s_constantsByDefault << false
                                  << QStringList{s_constructed, noInit};
    QTest::newRow("empty") << "" << s_constantsByDefault << false << QStringList{s_constructed, noInit};
    QTest::newRow("throws behind its functions")
        << s_functions + s_init + "\nbitBase = 8; throw new Error('late');" << s_constantsByDefault << true
        << QStringList{s_constructed, "uncaught exception at line 2 : \"Error: late\""};
}

void TestCommandFormatterScript::statesOfAScriptRow()
{
    QFETCH(QString, text);
    QFETCH(QString, constantAnswers);
    QFETCH(bool, isParsedByScript);
    QFETCH(QStringList, lines);
    writeScript(s_fileName, text);
    LogRecorder log;
    const CommandFormatter formatter = bitRow().formatter();
    QCOMPARE(log.take(), lines);
    QCOMPARE(constants(formatter), constantAnswers);
    QCOMPARE(parsed(formatter) == s_parsedByTheScript, isParsedByScript);
    const CommandFormatter copied = formatter;
    QCOMPARE(constants(copied), constantAnswers);
    QCOMPARE(parsed(copied) == s_parsedByTheScript, isParsedByScript);
}

void TestCommandFormatterScript::aFileWithoutInitLeavesTheRuleToParse()
{
    writeScript(s_fileName, s_functions);
    const CommandFormatter formatter = bitRow().formatter();
    LogRecorder log;
    QCOMPARE(formatter.getAddresRangePart("M12.3"), -1);
    QCOMPARE(log.take(), QStringList());
    QCOMPARE(formatter.getbitOffset("M12.3"), -1);
    QCOMPARE(log.take(), QStringList("onePartBitOffset base error  \"12.3\""));
    QCOMPARE(formatter.convertToRegisterAddress(command("2-M12.3", 0)), QString("2-M"));
    QCOMPARE(log.take(),
             QStringList("convertedRegisterTypeCommandRange Convert range string to number fail \"M12.3\""));
    // The radix of the bit is the script's default of 10: its file exists.
    QCOMPARE(addresses(formatter.makeBitContinueCommand(command("M12.3", 0), 3, 1, false)),
             QStringList({"M-1.-1", "M-1.0", "M-1.1"}));
    QVERIFY(formatter.isAddressValid("M99999.3"));
}

void TestCommandFormatterScript::aMissingFileLeavesTheRuleToParse()
{
    LogRecorder log;
    const CommandFormatter bits = bitRow().formatter();
    const CommandFormatter words = registerRow().formatter();
    QCOMPARE(log.take(), QStringList({s_constructed, s_constructed}));
    QCOMPARE(constants(bits), s_constantsOfTheRule);
    QCOMPARE(bits.getAddresRangePart("M12.3"), -1);
    QCOMPARE(log.take(), QStringList());
    QCOMPARE(bits.getbitOffset("M12.3"), -1);
    QCOMPARE(log.take(), QStringList("onePartBitOffset base error  \"12.3\""));
    QCOMPARE(words.getAddresRangePart("D100"), 100);
    QCOMPARE(addresses(words.makeContinueCommand(command("D100", 2), 2)), QStringList({"D100", "D101"}));
}

void TestCommandFormatterScript::aScriptThatThrowsParsesWithWhatItHas()
{
    writeScript(s_fileName,
                "throw 1; function bitoffset(a) { return 6; } var getAddressRange = function() { return 4; };");
    const CommandFormatter formatter = bitRow().formatter();
    LogRecorder log;
    QCOMPARE(formatter.getbitOffset("M12.3"), 6);
    QCOMPARE(log.take(), QStringList());
    QCOMPARE(formatter.getAddresRangePart("M12.3"), -1);
    QCOMPARE(log.take(), QStringList("script getAddressRange function call fail \"M12.3\""));
    QCOMPARE(constants(formatter), s_constantsByDefault);
}

void TestCommandFormatterScript::aFolderInPlaceOfTheFile()
{
    QVERIFY(QDir().mkpath(scriptsFolder() + "/row.js"));
    LogRecorder log;
    const CommandFormatter formatter = registerRow().formatter();
    QCOMPARE(log.take(),
             QStringList({s_constructed, "script init function call fail \"" + scriptsFolder() + "/row.js\""}));
    QCOMPARE(constants(formatter), s_constantsByDefault);
    QCOMPARE(formatter.getAddresRangePart("D100"), 100);
    const CommandFormatter copied = formatter;
    QCOMPARE(log.take(), QStringList());
}

void TestCommandFormatterScript::constructionReportsInOrder()
{
    writeScript(s_fileName, "print('evaluated'); function init() { print('init'); }");
    LogRecorder log;
    const CommandFormatter formatter = registerRow().formatter();
    QCOMPARE(log.take(), QStringList({s_constructed, "Script debug: \"evaluated\"", "Script debug: \"init\""}));
    const CommandFormatter copied(formatter);
    QCOMPARE(log.take(), QStringList({"Script debug: \"evaluated\"", "Script debug: \"init\""}));
    CommandFormatter assigned;
    assigned = formatter;
    QCOMPARE(log.take(), QStringList({"Script debug: \"evaluated\"", "Script debug: \"init\""}));
    CommandFormatter taken;
    taken.copy(formatter);
    QCOMPARE(log.take(), QStringList({"Script debug: \"evaluated\"", "Script debug: \"init\""}));
}

void TestCommandFormatterScript::theNameIsCutFromAnyRule()
{
    const CommandFormatter before = registerRow("m8a1").formatter();
    QCOMPARE(before.aligmentSize(), 8);
    QVERIFY(!before.validateMultiple(8));
    writeScript("a1", "function init() { aligmentSize = 4; } function getAddressRange(a) { return 77; }");
    const CommandFormatter scripted = registerRow("m8a1").formatter();
    QCOMPARE(scripted.aligmentSize(), 4);
    QVERIFY(scripted.validateMultiple(8));
    QCOMPARE(scripted.getAddresRangePart("D1"), 77);
    const CommandFormatter otherMark = registerRow("xxa1").formatter();
    QCOMPARE(otherMark.getAddresRangePart("D1"), 77);
    // Two characters name no file, and neither does a folder's own name.
    const CommandFormatter twoCharacters = registerRow("m8").formatter();
    QCOMPARE(twoCharacters.aligmentSize(), 8);
    QCOMPARE(twoCharacters.getAddresRangePart("D1"), 1);
    const CommandFormatter markAlone = registerRow("F>").formatter();
    QCOMPARE(markAlone.getAddresRangePart("D1"), 1);
    QCOMPARE(constants(markAlone), s_constantsOfTheRule);
}

void TestCommandFormatterScript::compoundRulesCanNameAFileToo()
{
    writeScript("t-f:rm8_D", s_init);
    const CommandFormatter formatter = bitRow("dot-f:rm8_D").formatter();
    QCOMPARE(constants(formatter), s_constantsOfTheScript);
    QCOMPARE(formatter.convertedRegisterCommandSymbol(), QString("D"));
    QCOMPARE(formatter.convertedRagisterCommandRange("M012.3"), QString("012"));
    LogRecorder log;
    QCOMPARE(formatter.getbitOffset("M12.3"), -1);
    QCOMPARE(log.take(), QStringList("script bitoffset function call fail \"M12.3\""));
}

void TestCommandFormatterScript::fileMadeAfterConstruction()
{
    const CommandFormatter bits = bitRow().formatter();
    const CommandFormatter words = registerRow().formatter();
    const CommandFormatter split = bitRow("dot-oct:n").formatter();
    QCOMPARE(constants(bits), s_constantsOfTheRule);
    QCOMPARE(constants(split), QString("8 1 1 0 0 1 1"));
    LogRecorder log;
    writeScript(s_fileName, s_functions + s_init);
    writeScript("t-oct:n", s_functions + s_init);
    QCOMPARE(constants(bits), s_constantsByDefault);
    QCOMPARE(constants(words), s_constantsByDefault);
    QCOMPARE(constants(split), s_constantsByDefault);
    QCOMPARE(words.getAddresRangePart("D100"), 100);
    QCOMPARE(bits.getAddresRangePart("M12.3"), -1);
    QCOMPARE(split.getAddresRangePart("M12.3"), 12);
    QCOMPARE(split.getbitOffset("M12.3"), 3);
    QCOMPARE(split.convertToRegisterAddress(command("M12.3", 0)), QString("M12"));
    QCOMPARE(log.lines(), QStringList());
    removeScript(s_fileName);
    QCOMPARE(constants(bits), s_constantsOfTheRule);
}

void TestCommandFormatterScript::fileRemovedAfterConstruction()
{
    writeScript(s_fileName, s_functions + s_init);
    const CommandFormatter formatter = bitRow().formatter();
    QCOMPARE(constants(formatter), s_constantsOfTheScript);
    removeScript(s_fileName);
    QCOMPARE(constants(formatter), s_constantsOfTheRule);
    QCOMPARE(parsed(formatter), s_parsedByTheScript);
    writeScript(s_fileName, "");
    QCOMPARE(constants(formatter), s_constantsOfTheScript);
    QCOMPARE(parsed(formatter), s_parsedByTheScript);
}

void TestCommandFormatterScript::copyAfterTheFileIsGone()
{
    writeScript(s_fileName, s_functions + s_init);
    const CommandFormatter formatter = registerRow().formatter();
    removeScript(s_fileName);
    LogRecorder log;
    const CommandFormatter copied = formatter;
    QCOMPARE(log.take(), QStringList());
    QCOMPARE(copied.getAddresRangePart("D100"), 100);
    QCOMPARE(constants(copied), s_constantsOfTheRule);
    QCOMPARE(formatter.getAddresRangePart("D100"), 41);
    // What comes back is not loaded by the copy, nor by a copy of it.
    writeScript(s_fileName, s_functions + s_init);
    const CommandFormatter copiedAgain = copied;
    QCOMPARE(copied.getAddresRangePart("D100"), 100);
    QCOMPARE(copiedAgain.getAddresRangePart("D100"), 100);
    QCOMPARE(constants(copiedAgain), s_constantsByDefault);
}

void TestCommandFormatterScript::copyOfARowBuiltBeforeItsFile()
{
    const CommandFormatter formatter = registerRow().formatter();
    writeScript(s_fileName, s_functions + s_init);
    const CommandFormatter copied = formatter;
    QCOMPARE(copied.getAddresRangePart("D100"), 100);
    QCOMPARE(constants(copied), s_constantsByDefault);
    const CommandFormatter built = registerRow().formatter();
    QCOMPARE(built.getAddresRangePart("D100"), 41);
    QCOMPARE(constants(built), s_constantsOfTheScript);
}

void TestCommandFormatterScript::copiesHaveScriptsOfTheirOwn()
{
    writeScript(s_fileName, "var calls = 0; function init() {} function getAddressRange(a) { return ++calls; }");
    const CommandFormatter formatter = registerRow().formatter();
    QCOMPARE(formatter.getAddresRangePart("D1"), 1);
    QCOMPARE(formatter.getAddresRangePart("D1"), 2);
    const QList<CommandFormatter> table{formatter, formatter};
    QCOMPARE(table.at(0).getAddresRangePart("D1"), 1);
    QCOMPARE(table.at(1).getAddresRangePart("D1"), 1);
    QCOMPARE(table.at(1).getAddresRangePart("D1"), 2);
    QCOMPARE(formatter.getAddresRangePart("D1"), 3);
}

/// Like any copy: it reads and evaluates the script, and the script's state is lost.
void TestCommandFormatterScript::aCopyOntoItself()
{
    writeScript(s_fileName, "var calls = 0; function init() { print('init'); bitBase = 7; }"
                            "function getAddressRange(a) { return ++calls; }");
    CommandFormatter formatter = registerRow().formatter();
    const CommandFormatter &itself = formatter;
    QCOMPARE(formatter.getAddresRangePart("D1"), 1);
    LogRecorder log;
    formatter.copy(itself);
    QCOMPARE(log.take(), QStringList("Script debug: \"init\""));
    QCOMPARE(formatter.getAddresRangePart("D1"), 1);
    formatter = itself;
    QCOMPARE(log.take(), QStringList("Script debug: \"init\""));
    QCOMPARE(formatter.getAddresRangePart("D1"), 1);
    QCOMPARE(formatter.bitbase(), 7);
    QCOMPARE(formatter.pattern(), registerRow().pattern);

    writeScript(s_fileName, s_functions + s_init);
    formatter = itself;
    QCOMPARE(formatter.getAddresRangePart("D1"), 41);
    removeScript(s_fileName);
    formatter = itself;
    QCOMPARE(formatter.getAddresRangePart("D1"), 1);
    QCOMPARE(constants(formatter), s_constantsOfTheRule);
}

void TestCommandFormatterScript::assignmentBetweenScriptAndRule()
{
    writeScript(s_fileName, s_functions + s_init);
    const CommandFormatter scripted = registerRow().formatter();
    const CommandFormatter ruled = registerRow("m16").formatter();
    CommandFormatter formatter = ruled;
    formatter = scripted;
    QCOMPARE(formatter.getAddresRangePart("D100"), 41);
    QCOMPARE(constants(formatter), s_constantsOfTheScript);
    formatter = ruled;
    QCOMPARE(formatter.getAddresRangePart("D100"), 100);
    QCOMPARE(formatter.aligmentSize(), 16);
    formatter.copy(scripted);
    QCOMPARE(formatter.getAddresRangePart("D100"), 41);
    formatter = CommandFormatter();
    QCOMPARE(formatter.getAddresRangePart("D100"), -1);
}

void TestCommandFormatterScript::settersDoNotLoad()
{
    writeScript(s_fileName, "print('evaluated'); function init() {}");
    CommandFormatter formatter = registerRow().formatter();
    const LogRecorder log;
    formatter.setPattern("(W)(\\d+)");
    formatter.setPrefixSymbol("W");
    formatter.setEditorPrefixSymbol("shown");
    QCOMPARE(log.lines(), QStringList());
}

void TestCommandFormatterScript::enginesAreMadeForLoadedScriptsOnly()
{
    const int made = ScriptHook::enginesMade();
    const int alive = ScriptHook::enginesAlive();
    {
        QList<CommandFormatter> table;
        for (const char *rule : {"", "m8", "m8a1", "dot-f:r", "union-oct:rm8a1_D", "F>row.js"})
            table.append(registerRow(rule).formatter());
        const QList<CommandFormatter> copied(table.begin(), table.end());
        QCOMPARE(ScriptHook::enginesMade(), made);

        writeScript(s_fileName, s_init);
        const CommandFormatter scripted = registerRow().formatter();
        QCOMPARE(ScriptHook::enginesMade(), made + 1);
        const CommandFormatter another = scripted;
        QCOMPARE(ScriptHook::enginesMade(), made + 2);
        QCOMPARE(ScriptHook::enginesAlive(), alive + 2);
    }
    QCOMPARE(ScriptHook::enginesAlive(), alive);
}

void TestCommandFormatterScript::numberIsAskedWithoutThePattern()
{
    writeScript(s_fileName, s_functions + s_init);
    const CommandFormatter formatter = registerRow().formatter();
    const LogRecorder log;
    QCOMPARE(formatter.getAddresRangePart("D100"), 41);
    QCOMPARE(formatter.getAddresRangePart("nonsense"), 41);
    QCOMPARE(formatter.getAddresRangePart(""), 41);
    QCOMPARE(log.lines(), QStringList({"Script debug: \"range D100\"", "Script debug: \"range nonsense\"",
                                       "Script debug: \"range \""}));
}

void TestCommandFormatterScript::bitIsAskedBehindThePatternOnBitRowsOnly()
{
    writeScript(s_fileName, s_functions + s_init);
    const CommandFormatter bits = bitRow().formatter();
    const CommandFormatter words = registerRow().formatter();
    LogRecorder log;
    QCOMPARE(bits.getbitOffset("M12.3"), 6);
    QCOMPARE(log.take(), QStringList("Script debug: \"bit M12.3\""));
    QCOMPARE(bits.getbitOffset("xM12.3x"), 6);
    QCOMPARE(log.take(), QStringList("Script debug: \"bit xM12.3x\""));
    QCOMPARE(bits.getbitOffset("D100"), -1);
    QCOMPARE(words.getbitOffset("D100"), -1);
    QCOMPARE(log.take(), QStringList());
}

void TestCommandFormatterScript::registerAddressIsAskedWithTheStation()
{
    writeScript(s_fileName, s_functions + s_init);
    const CommandFormatter formatter = bitRow().formatter();
    const LogRecorder log;
    QCOMPARE(formatter.convertToRegisterAddress(command("03-M12.3", 0)), QString("R03-M12.3"));
    QCOMPARE(formatter.convertToRegisterAddress(command("nonsense", 0)), QString("Rnonsense"));
    QCOMPARE(log.lines(), QStringList({"Script debug: \"register 03-M12.3\"", "Script debug: \"register nonsense\""}));
}

void TestCommandFormatterScript::bitRunsAreAskedWithTheStation()
{
    writeScript(s_fileName, s_functions + s_init);
    const CommandFormatter formatter = bitRow().formatter();
    CommunicatorCommand model = command("3-M12.3", 2, 9);
    model.scanTime = 7;
    model.auxiliaryText = "text";
    const LogRecorder log;
    for (const bool checkRange : {true, false}) {
        const auto run = formatter.makeBitContinueCommand(model, 5, -2, checkRange);
        QCOMPARE(shortForms(run), QStringList({"3-M12.3 2 9", "next 2 9"}));
        QCOMPARE(run.last().scanTime, 7);
        QCOMPARE(run.last().auxiliaryText, QString("text"));
    }
    QCOMPARE(log.lines(), QStringList({"Script debug: \"bits 3-M12.3 5 -2\"", "Script debug: \"bits 3-M12.3 5 -2\""}));
}

void TestCommandFormatterScript::bitRunsOfContinuations()
{
    writeScript(s_fileName, s_functions + s_init);
    const CommandFormatter formatter = bitRow().formatter();
    const LogRecorder log;
    QCOMPARE(addresses(formatter.makeContinueCommand(command("M12.3", 0), 4)), QStringList({"M12.3", "next"}));
    QCOMPARE(addresses(formatter.makeContinueCommandwithCap(command("M12.3", 0), 4, 6, true)),
             QStringList({"M12.3", "next"}));
    QCOMPARE(addresses(formatter.makeContinueCommand(command("X1", 0), 0)), QStringList({"X1", "next"}));
    QCOMPARE(log.lines(), QStringList({"Script debug: \"bits M12.3 4 1\"", "Script debug: \"bits M12.3 4 6\"",
                                       "Script debug: \"bits X1 0 1\""}));
}

void TestCommandFormatterScript::whatTheScriptIsNotAskedFor()
{
    writeScript(s_fileName, s_functions + s_init);
    const CommandFormatter formatter = bitRow().formatter();
    LogRecorder log;
    QCOMPARE(formatter.matchedLength("3-M12.3"), 7);
    QCOMPARE(formatter.getRangeString("M12.3"), QString("12.3"));
    QCOMPARE(formatter.getEditorUsedRangeString("M12.3"), QString("12.3"));
    QVERIFY(formatter.isRangeValid(9999));
    QVERIFY(!formatter.isRangeValid(10000));
    QVERIFY(!formatter.isAddressValid("D1"));
    QVERIFY(!formatter.isAddressDataTypeMatch("D1", CommunicatorCommand::Bit));
    QVERIFY(!formatter.isSemenseSepcialType());
    QCOMPARE(formatter.continueRule(), QString("N"));
    QCOMPARE(formatter.stringWithDigits("5"), QString("5"));
    QCOMPARE(formatter.makeBlockCommand(2, 100, 8).address, QString("2-M100"));
    QCOMPARE(shortForms(formatter.autoCompleteCommand(command("D1", 3))), QStringList("D1 3 1"));
    QCOMPARE(shortForms(formatter.makeContinueCommand(command("D1", 3), 2)), QStringList("D1 3 1"));
    QCOMPARE(formatter.convertedRegisterCommandSymbol(), QString("M"));
    QCOMPARE(log.take(), QStringList());
    QCOMPARE(formatter.convertedRagisterCommandRange("M12.3"), QString());
    QCOMPARE(log.take(),
             QStringList("convertedRegisterTypeCommandRange Convert range string to number fail \"M12.3\""));
    int word = 5;
    int bit = 9;
    formatter.bitOffsetCarry(word, bit, formatter.bitbase());
    QCOMPARE(word, 6);
    QCOMPARE(bit, 1);
    QList<CommunicatorCommand> made;
    formatter.makeOnePartBitCommands(made, "M", 7, true, -1);
    formatter.makeTwoPartBitCommands(made, "M", 7, 1, 8, ".", true, -1);
    QCOMPARE(addresses(made), QStringList({"M7", "M7.1"}));
    QCOMPARE(log.take(), QStringList());
}

void TestCommandFormatterScript::validityUsesTheScriptsNumber_data()
{
    QTest::addColumn<QString>("result");
    QTest::addColumn<QString>("address");
    QTest::addColumn<bool>("isValid");
    QTest::addColumn<bool>("isMatch");

    QTest::newRow("a number within the limits") << "return 9999;"
                                                << "M1.1" << true << true;
    QTest::newRow("a number beyond the limits") << "return 10000;"
                                                << "M1.1" << false << false;
    QTest::newRow("no number: the match is enough for validity") << "return -1;"
                                                                 << "M1.1" << true << false;
    QTest::newRow("a number below 0 other than -1") << "return -2;"
                                                    << "M1.1" << false << false;
    QTest::newRow("a good number for another row's address") << "return 5;"
                                                             << "D1" << false << false;
    QTest::newRow("a station is taken off, but not for the type") << "return a == 'M1.1' ? 5 : 10000;"
                                                                  << "3-M1.1" << true << false;
    QTest::newRow("an exception counts as 0") << "throw new Error('boom');"
                                              << "M1.1" << true << true;
    QTest::newRow("nothing counts as 0") << ""
                                         << "M1.1" << true << true;
}

void TestCommandFormatterScript::validityUsesTheScriptsNumber()
{
    QFETCH(QString, result);
    QFETCH(QString, address);
    QFETCH(bool, isValid);
    QFETCH(bool, isMatch);
    writeScript(s_fileName, "function init() {} function getAddressRange(a) { " + result + " }");
    const CommandFormatter formatter = bitRow().formatter();
    QCOMPARE(formatter.isAddressValid(address), isValid);
    QCOMPARE(formatter.isAddressDataTypeMatch(address, CommunicatorCommand::Bit), isMatch);
    QVERIFY(!formatter.isAddressDataTypeMatch(address, CommunicatorCommand::Word));
}

void TestCommandFormatterScript::alignmentOfTheScript_data()
{
    QTest::addColumn<QString>("settings");
    QTest::addColumn<int>("value");
    QTest::addColumn<bool>("isAligned");
    QTest::addColumn<bool>("isValidOnABitRow");

    const QString from1 = "needAligment = true; aligmentSize = 8; addressStartPos = 1;";
    QTest::newRow("the origin itself") << from1 << 1 << true << true;
    QTest::newRow("one size behind the origin") << from1 << 9 << true << true;
    QTest::newRow("a multiple of the size") << from1 << 8 << false << true;
    QTest::newRow("one size in front of the origin") << from1 << -7 << true << false;
    QTest::newRow("beyond the limits") << from1 << 10001 << true << false;
    QTest::newRow("a size of 5 from 0") << "needAligment = true; aligmentSize = 5;" << 15 << true << true;
    QTest::newRow("no multiple of 5") << "needAligment = true; aligmentSize = 5;" << 16 << false << true;
    QTest::newRow("a size below 0") << "needAligment = true; aligmentSize = -5;" << 15 << true << true;
    QTest::newRow("a size of 1") << "needAligment = true;" << 7 << true << true;
    QTest::newRow("a size of 0 aligns nothing") << "needAligment = true; aligmentSize = 0;" << 0 << false << true;
    QTest::newRow("a size without need") << "aligmentSize = 8;" << 7 << true << true;
}

void TestCommandFormatterScript::alignmentOfTheScript()
{
    QFETCH(QString, settings);
    QFETCH(int, value);
    QFETCH(bool, isAligned);
    QFETCH(bool, isValidOnABitRow);
    writeScript(s_fileName, "function init() { " + settings + " }");
    const CommandFormatter words = registerRow().formatter();
    const CommandFormatter bits = bitRow().formatter();
    QCOMPARE(words.validateMultiple(value), isAligned);
    QCOMPARE(bits.validateMultiple(value), isAligned);
    QCOMPARE(bits.isRangeValid(value), isValidOnABitRow);
    QCOMPARE(words.isRangeValid(value), isAligned && isValidOnABitRow);
}

void TestCommandFormatterScript::registerRunsUseNumberAndAlignment()
{
    writeScript(s_fileName, "function init() { needAligment = true; aligmentSize = 16; addressStartPos = 1; }"
                            "function getAddressRange(a) { return 17; }");
    const CommandFormatter formatter = registerRow().formatter();
    const LogRecorder log;
    QCOMPARE(shortForms(formatter.autoCompleteCommand(command("2-D5", 3))), QStringList({"2-D17 2 1", "2-D33 2 1"}));
    QCOMPARE(shortForms(formatter.makeContinueCommand(command("D5", 3), 2)), QStringList({"D17 3 1", "D49 3 1"}));
    QCOMPARE(shortForms(formatter.makeContinueCommandwithCap(command("D5", 2), 2, 2, true)),
             QStringList({"D17 2 1", "D49 2 1"}));
    QCOMPARE(shortForms(formatter.makeContinueCommandwithCap(command("D5", 2), 2, 2, false)),
             QStringList({"D17 2 1", "D19 2 1"}));
    QVERIFY(formatter.isAddressValid("D5"));
    QCOMPARE(log.lines(), QStringList());
    removeScript(s_fileName);
    // The loaded script still gives the number, but the rule the step.
    QCOMPARE(shortForms(formatter.makeContinueCommand(command("D5", 2), 2)), QStringList({"D17 2 1", "D18 2 1"}));
}

void TestCommandFormatterScript::missingFunctionsFail()
{
    writeScript(s_fileName, "function init() {} function getAddressRange(a) { return 12; }");
    const CommandFormatter formatter = bitRow().formatter();
    LogRecorder log;
    QCOMPARE(formatter.getAddresRangePart("M12.3"), 12);
    QCOMPARE(formatter.getbitOffset("M12.3"), -1);
    QCOMPARE(formatter.convertToRegisterAddress(command("2-M12.3", 0)), QString());
    QCOMPARE(formatter.makeBitContinueCommand(command("2-M12.3", 0, 6), 4, 5, true).size(), 0);
    QCOMPARE(log.take(), QStringList({"script bitoffset function call fail \"M12.3\"",
                                      "script convertToRegisterAddress function call fail \"2-M12.3\"",
                                      "script makeBitContinueCommand function call fail \"2-M12.3_0_6\" 4 5"}));
    writeScript(s_fileName, "function init() {}");
    const CommandFormatter bare = registerRow().formatter();
    log.take();
    QCOMPARE(bare.getAddresRangePart("D1"), -1);
    QVERIFY(bare.isAddressValid("D10000"));
    QCOMPARE(log.take(), QStringList({"script getAddressRange function call fail \"D1\"",
                                      "script getAddressRange function call fail \"D10000\""}));
}

void TestCommandFormatterScript::wrongResults_data()
{
    QTest::addColumn<QString>("result");
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("registerAddress");
    QTest::addColumn<QStringList>("run");

    QTest::newRow("a text of digits") << "return '12';" << 12 << "12" << QStringList();
    QTest::newRow("a text") << "return 'D12';" << 0 << "D12" << QStringList();
    QTest::newRow("a list") << "return ['12'];" << 12 << "12" << QStringList("12");
    QTest::newRow("nothing") << "" << 0 << "undefined" << QStringList();
    QTest::newRow("null") << "return null;" << 0 << "null" << QStringList();
    QTest::newRow("a truth value") << "return 1 > 2;" << 0 << "false" << QStringList();
    QTest::newRow("an error") << "throw new Error('boom');" << 0 << "Error: boom" << QStringList();
}

void TestCommandFormatterScript::wrongResults()
{
    QFETCH(QString, result);
    QFETCH(int, number);
    QFETCH(QString, registerAddress);
    QFETCH(QStringList, run);
    QString text = "function init() {}";
    for (const char *name : {"getAddressRange", "bitoffset", "convertToRegisterAddress", "makeBitContinueCommand"})
        text += QStringLiteral("function %1() { %2 }").arg(name, result);
    writeScript(s_fileName, text);
    const CommandFormatter formatter = bitRow().formatter();
    const LogRecorder log;
    QCOMPARE(formatter.getAddresRangePart("M1.1"), number);
    QCOMPARE(formatter.getbitOffset("M1.1"), number);
    QCOMPARE(formatter.convertToRegisterAddress(command("M1.1", 0)), registerAddress);
    QCOMPARE(addresses(formatter.makeBitContinueCommand(command("M1.1", 0), 2, 1, true)), run);
    QCOMPARE(log.lines(), QStringList());
}

QTEST_GUILESS_MAIN(TestCommandFormatterScript)
#include "tst_commandformatter_script.moc"
