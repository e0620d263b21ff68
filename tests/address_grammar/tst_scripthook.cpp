// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/labelfixtures.h"
#include "support/logrecorder.h"

#include "zelmar_label/address_grammar/scripthook.h"

#include <QtTest>

#include <cstring>
#include <thread>
#include <vector>

using label::ScriptHook;

namespace {

const QString s_fileName = QStringLiteral("script.js");
const QString s_rule = QStringLiteral("F>script.js");
const QString s_foreverRule = QStringLiteral("F>forever.js");
const char *const s_foreverArgument = "run-forever";

QString scriptsFolder()
{
    return QCoreApplication::applicationDirPath() + QLatin1String("/scripts");
}

QString scriptPath(const QString &fileName = s_fileName)
{
    return scriptsFolder() + QLatin1Char('/') + fileName;
}

void writeBytes(const QByteArray &bytes)
{
    writeScript(s_fileName, QString());
    QFile file(scriptPath());
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    QCOMPARE(file.write(bytes), qint64(bytes.size()));
}

QString failure(const QString &function, const QString &path = scriptPath())
{
    return QStringLiteral("script %1 function call fail \"%2\"").arg(function, path);
}

CommunicatorCommand peculiar(const QString &address)
{
    CommunicatorCommand made = command(address, 3, 9);
    made.scanTime = 7;
    made.auxiliaryNumber = -1;
    made.auxiliaryText = QStringLiteral("text");
    made.auxiliaryFlag = true;
    return made;
}

QString announced(const ScriptHook &hook)
{
    return QStringLiteral("%1 %2 %3 %4 %5 %6")
        .arg(hook.bitBase)
        .arg(hook.needOptimize)
        .arg(hook.needAligment)
        .arg(hook.aligmentSize)
        .arg(hook.canConvertToRegister)
        .arg(hook.addressStartPos);
}

const QString s_defaults = QStringLiteral("10 0 0 1 0 0");

} // namespace

class TestScriptHook : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanupTestCase();

    void aDefaultHookHasNoScript();
    void pathComesFromTheRuleText_data();
    void pathComesFromTheRuleText();
    void folderIsMade();
    void folderThatCannotBeMade();
    void existenceIsAskedOfTheFileSystem();
    void buildingDoesNotLoad();

    void loading_data();
    void loading();
    void aFolderInPlaceOfTheFileIsEmpty();
    void fileEncodings_data();
    void fileEncodings();
    void exceptionLine_data();
    void exceptionLine();
    void announcedValues_data();
    void announcedValues();
    void defaultsAreVisibleToTheScript();
    void announcedValuesAreReadOnce();
    void resetPutsDefaultsBack();
    void loadingAgain();
    void loadingAgainAfterTheFileIsGone();
    void loadingAgainAfterTheFileWasEmptied();
    void loadingAgainOffersPrintAnew();

    void print_data();
    void print();
    void argumentsAsTheScriptSeesThem();
    void numbersAsTheHostTakesThem_data();
    void numbersAsTheHostTakesThem();
    void textsAsTheHostTakesThem_data();
    void textsAsTheHostTakesThem();
    void listsAsTheHostTakesThem_data();
    void listsAsTheHostTakesThem();
    void commandsAreCopiedWithAllFields();
    void missingFunctions_data();
    void missingFunctions();
    void throwingFunctions();
    void aScriptKeepsItsStateBetweenCalls();

    void copyLoadsAnew();
    void copyStartsTheScriptAfresh();
    void copyOfAChangedFile();
    void copyAfterTheFileIsGone();
    void copyOfAnUnloadedHookStaysUnloaded();
    void copyOfAScriptThatThrowsReportsAgain();
    void assignmentReplacesTheScript();
    void selfAssignment();
    void enginesAreMadeForLoadedScriptsOnly();

    void endlessScriptsAreStopped();
};

void TestScriptHook::init()
{
    QFile::remove(scriptsFolder());
    QDir(scriptsFolder()).removeRecursively();
}

void TestScriptHook::cleanupTestCase()
{
    init();
}

void TestScriptHook::aDefaultHookHasNoScript()
{
    const int engines = ScriptHook::enginesMade();
    const LogRecorder log;
    ScriptHook hook;
    QVERIFY(!hook.loaded);
    QCOMPARE(hook.path, QString());
    QVERIFY(!hook.exists());
    QCOMPARE(announced(hook), s_defaults);
    QVERIFY(!hook.load());
    QVERIFY(!hook.loaded);
    QCOMPARE(hook.getAddressRange("D1"), -1);
    QCOMPARE(hook.bitoffset("D1"), -1);
    QCOMPARE(hook.convertToRegisterAddress("D1"), QString());
    QCOMPARE(hook.makeBitContinueCommand(command("D1", 0), 3, 1).size(), 0);
    QCOMPARE(log.lines(), QStringList());
    QCOMPARE(ScriptHook::enginesMade(), engines);
}

void TestScriptHook::pathComesFromTheRuleText_data()
{
    QTest::addColumn<QString>("rule");
    QTest::addColumn<QString>("path");

    QTest::newRow("no text") << ""
                             << "not exist";
    QTest::newRow("one character") << "F"
                                   << "not exist";
    QTest::newRow("the mark alone") << "F>"
                                    << "not exist";
    QTest::newRow("a keyword of two characters") << "m8"
                                                 << "not exist";
    QTest::newRow("a file name behind the mark") << "F>maker.js" << scriptPath("maker.js");
    QTest::newRow("the mark is skipped, not tested") << "xymaker.js" << scriptPath("maker.js");
    QTest::newRow("a longer keyword names a file too") << "m8a1" << scriptPath("a1");
    QTest::newRow("a compound rule names a file too") << "dot-f:r" << scriptPath("t-f:r");
    QTest::newRow("blanks belong to the name") << "F> my file" << scriptPath(" my file");
    QTest::newRow("a folder in the name") << "F>sub/maker.js" << scriptPath("sub/maker.js");
}

void TestScriptHook::pathComesFromTheRuleText()
{
    QFETCH(QString, rule);
    QFETCH(QString, path);
    const ScriptHook hook(rule);
    QCOMPARE(hook.path, path);
    QVERIFY(!hook.loaded);
    QVERIFY(!hook.exists());
    QCOMPARE(announced(hook), s_defaults);
}

void TestScriptHook::folderIsMade()
{
    QVERIFY(!QFileInfo::exists(scriptsFolder()));
    const ScriptHook withoutRule;
    QVERIFY(!QFileInfo::exists(scriptsFolder()));
    const ScriptHook hook((QString()));
    QVERIFY(QFileInfo(scriptsFolder()).isDir());
    QVERIFY(!hook.exists());
}

void TestScriptHook::folderThatCannotBeMade()
{
    QFile inTheWay(scriptsFolder());
    QVERIFY(inTheWay.open(QIODevice::WriteOnly));
    inTheWay.close();
    ScriptHook hook(s_rule);
    QCOMPARE(hook.path, QCoreApplication::applicationDirPath() + "/script.js");
    QVERIFY(!hook.exists());
    QVERIFY(!hook.load());
    QVERIFY(inTheWay.remove());
}

void TestScriptHook::existenceIsAskedOfTheFileSystem()
{
    const ScriptHook hook(s_rule);
    QVERIFY(!hook.exists());
    writeScript(s_fileName, "function init() {}");
    QVERIFY(hook.exists());
    QVERIFY(!hook.loaded);
    removeScript(s_fileName);
    QVERIFY(!hook.exists());
}

void TestScriptHook::buildingDoesNotLoad()
{
    writeScript(s_fileName, "bitBase = 2; function init() {} function getAddressRange(a) { return 5; }");
    const int engines = ScriptHook::enginesMade();
    const LogRecorder log;
    const ScriptHook hook(s_rule);
    QVERIFY(hook.exists());
    QVERIFY(!hook.loaded);
    QCOMPARE(announced(hook), s_defaults);
    QCOMPARE(hook.getAddressRange("D1"), -1);
    QCOMPARE(ScriptHook::enginesMade(), engines);
    QCOMPARE(log.lines(), QStringList());
}

void TestScriptHook::loading_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("result");
    QTest::addColumn<bool>("loaded");
    QTest::addColumn<int>("bitBase");
    QTest::addColumn<QStringList>("lines");

    const QStringList silent;
    const QStringList noInit{failure("init")};
    QTest::newRow("a good script") << "function init() { bitBase = 8; }" << true << true << 8 << silent;
    QTest::newRow("init that returns false") << "function init() { return false; }" << true << true << 10 << silent;
    QTest::newRow("init as a variable") << "var init = function() { bitBase = 2; };" << true << true << 2 << silent;
    QTest::newRow("init gets no arguments")
        << "function init() { bitBase = arguments.length; }" << true << true << 0 << silent;
    QTest::newRow("init that throws has been called all the same")
        << "function init() { bitBase = 8; throw new Error('boom'); }" << true << true << 8 << silent;
    QTest::newRow("no init") << "bitBase = 8;" << false << false << 10 << noInit;
    QTest::newRow("init in capitals is none") << "function Init() { bitBase = 8; }" << false << false << 10 << noInit;
    QTest::newRow("init that is no function") << "var init = 8;" << false << false << 10 << noInit;
    QTest::newRow("an empty file") << "" << false << false << 10 << noInit;
    QTest::newRow("a blank file") << " \n" << false << false << 10 << noInit;
    QTest::newRow("a comment alone") << "// init\n" << false << false << 10 << noInit;
    QTest::newRow("an error at top level leaves it loaded, without init")
        << "function init() { bitBase = 8; }\nbitBase = 2;\nthrow new Error('boom');\n"
        << false << true << 10 << QStringList{"uncaught exception at line 3 : \"Error: boom\""};
    QTest::newRow("a syntax error leaves it loaded, too")
        << "function init() {}\nfunction (\n"
        << false << true << 10 << QStringList{"uncaught exception at line 2 : \"SyntaxError: Parse error\""};
}

void TestScriptHook::loading()
{
    QFETCH(QString, text);
    QFETCH(bool, result);
    QFETCH(bool, loaded);
    QFETCH(int, bitBase);
    QFETCH(QStringList, lines);
    writeScript(s_fileName, text);
    const LogRecorder log;
    ScriptHook hook(s_rule);
    QCOMPARE(hook.load(), result);
    QCOMPARE(hook.loaded, loaded);
    QCOMPARE(hook.bitBase, bitBase);
    QVERIFY(hook.exists());
    QCOMPARE(log.lines(), lines);
}

void TestScriptHook::aFolderInPlaceOfTheFileIsEmpty()
{
    QVERIFY(QDir().mkpath(scriptPath()));
    const LogRecorder log;
    ScriptHook hook(s_rule);
    QVERIFY(hook.exists());
    QVERIFY(!hook.load());
    QVERIFY(!hook.loaded);
    QCOMPARE(log.lines(), QStringList(failure("init")));
    QCOMPARE(hook.getAddressRange("D1"), -1);
    QCOMPARE(log.lines(), QStringList(failure("init")));
}

void TestScriptHook::fileEncodings_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");

    const QByteArray plain = "function init() {}\nfunction convertToRegisterAddress(a) { return 'R' + a; }\n";
    QByteArray windows = plain;
    windows.replace("\n", "\r\n");
    QByteArray old = plain;
    old.replace('\n', '\r');
    QByteArray wide("\xff\xfe", 2);
    for (const char one : plain) {
        wide.append(one);
        wide.append('\0');
    }
    QTest::newRow("line feeds") << plain << "RD1";
    QTest::newRow("carriage returns and line feeds") << windows << "RD1";
    QTest::newRow("carriage returns") << old << "RD1";
    QTest::newRow("no end of the last line") << plain.trimmed() << "RD1";
    QTest::newRow("a byte order mark in UTF-8") << QByteArray("\xef\xbb\xbf") + plain << "RD1";
    QTest::newRow("UTF-16 with its byte order mark") << wide << "RD1";
    QTest::newRow("letters beyond ASCII behind a byte order mark")
        << QByteArray("\xef\xbb\xbf"
                      "function init() {} function convertToRegisterAddress(a) { return '\xc3\x84' + a; }")
        << QString::fromUtf8("\xc3\x84"
                             "D1");
}

void TestScriptHook::fileEncodings()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, text);
    writeBytes(bytes);
    const LogRecorder log;
    ScriptHook hook(s_rule);
    QVERIFY(hook.load());
    QCOMPARE(hook.convertToRegisterAddress("D1"), text);
    QCOMPARE(log.lines(), QStringList());
}

void TestScriptHook::exceptionLine_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("line");

    QTest::newRow("the first line") << QByteArray("nothing;") << "1 : \"ReferenceError: Can't find variable: nothing\"";
    QTest::newRow("carriage returns and line feeds are one line end")
        << QByteArray("var a;\r\nvar b;\r\nthrow new Error('boom');\r\n") << "3 : \"Error: boom\"";
    QTest::newRow("thrown in a function called at top level")
        << QByteArray("function f() {\n throw new Error('deep');\n}\n\nf();") << "2 : \"Error: deep\"";
    QTest::newRow("a text thrown") << QByteArray("var a;\n\nthrow 'late';") << "3 : \"late\"";
    QTest::newRow("a number thrown") << QByteArray("\nthrow 42;") << "2 : \"42\"";
}

void TestScriptHook::exceptionLine()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, line);
    writeBytes(bytes);
    const LogRecorder log;
    ScriptHook hook(s_rule);
    QVERIFY(!hook.load());
    QVERIFY(hook.loaded);
    QCOMPARE(log.lines(), QStringList("uncaught exception at line " + line));
}

void TestScriptHook::announcedValues_data()
{
    QTest::addColumn<QString>("body");
    QTest::addColumn<QString>("values");

    QTest::newRow("nothing set") << ""
                                 << "10 0 0 1 0 0";
    QTest::newRow("all set")
        << "bitBase = 16; needOptimize = true; needAligment = true; aligmentSize = 8; canConvertToRegister = true;"
           "addressStartPos = 1;"
        << "16 1 1 8 1 1";
    QTest::newRow("texts of numbers") << "bitBase = '8'; aligmentSize = '0x10'; addressStartPos = ' 3 ';"
                                      << "8 0 0 16 0 3";
    QTest::newRow("texts that are no numbers") << "bitBase = 'eight'; aligmentSize = {};"
                                               << "0 0 0 0 0 0";
    QTest::newRow("numbers lose their fraction") << "bitBase = 8.9; aligmentSize = 2.1; addressStartPos = -1.9;"
                                                 << "8 0 0 2 0 -1";
    QTest::newRow("numbers lose what is beyond 32 bits") << "bitBase = 4294967304; addressStartPos = 2147483648;"
                                                         << "8 0 0 1 0 -2147483648";
    QTest::newRow("what counts as true") << "needOptimize = 1; needAligment = 'false'; canConvertToRegister = {};"
                                         << "10 1 1 1 1 0";
    QTest::newRow("what counts as false")
        << "needOptimize = 0; needAligment = ''; canConvertToRegister = null; bitBase = null; aligmentSize = undefined;"
        << "0 0 0 0 0 0";
    QTest::newRow("names are case-sensitive") << "bitbase = 2; NeedOptimize = true;"
                                              << "10 0 0 1 0 0";
    QTest::newRow("the spelled-right names do not count") << "needAlignment = true; alignmentSize = 8;"
                                                          << "10 0 0 1 0 0";
    QTest::newRow("variables of the function do not count") << "var bitBase = 2;"
                                                            << "10 0 0 1 0 0";
    QTest::newRow("a size of 0") << "needAligment = true; aligmentSize = 0;"
                                 << "10 0 1 0 0 0";
}

void TestScriptHook::announcedValues()
{
    QFETCH(QString, body);
    QFETCH(QString, values);
    writeScript(s_fileName, "function init() { " + body + " }");
    ScriptHook hook(s_rule);
    QVERIFY(hook.load());
    QCOMPARE(announced(hook), values);
}

void TestScriptHook::defaultsAreVisibleToTheScript()
{
    writeScript(s_fileName,
                "print(bitBase, needOptimize, needAligment, aligmentSize, canConvertToRegister, addressStartPos);"
                "print(typeof bitBase, typeof needOptimize);"
                "bitBase = 4; function init() { print(bitBase); needOptimize = true; }");
    const LogRecorder log;
    ScriptHook hook(s_rule);
    QVERIFY(hook.load());
    QCOMPARE(log.lines(), QStringList({"Script debug: \"10 false false 1 false 0\"", "Script debug: \"number boolean\"",
                                       "Script debug: \"4\""}));
    QCOMPARE(announced(hook), QString("4 1 0 1 0 0"));
}

void TestScriptHook::announcedValuesAreReadOnce()
{
    writeScript(s_fileName, "function init() {} function bitoffset(a) { bitBase = 2; return bitBase; }");
    ScriptHook hook(s_rule);
    QVERIFY(hook.load());
    QCOMPARE(hook.bitoffset("M1"), 2);
    QCOMPARE(hook.bitBase, 10);
}

void TestScriptHook::resetPutsDefaultsBack()
{
    writeScript(s_fileName,
                "function init() { bitBase = 16; needOptimize = true; needAligment = true; aligmentSize = 8;"
                "canConvertToRegister = true; addressStartPos = 1; } function bitoffset(a) { return bitBase; }");
    ScriptHook hook(s_rule);
    QVERIFY(hook.load());
    hook.reset();
    QCOMPARE(announced(hook), s_defaults);
    QVERIFY(hook.loaded);
    QCOMPARE(hook.bitoffset("M1"), 16);
}

void TestScriptHook::loadingAgain()
{
    writeScript(s_fileName, "function init() { bitBase = 8; aligmentSize = 4; }");
    ScriptHook hook(s_rule);
    QVERIFY(hook.load());
    writeScript(s_fileName, "var seen = bitBase; function init() { aligmentSize = seen; }");
    QVERIFY(hook.load());
    QCOMPARE(announced(hook), QString("8 0 0 8 0 0"));
    hook.reset();
    QVERIFY(hook.load());
    QCOMPARE(announced(hook), QString("10 0 0 10 0 0"));
}

void TestScriptHook::loadingAgainAfterTheFileIsGone()
{
    writeScript(s_fileName, "function init() { bitBase = 8; } function bitoffset(a) { return 3; }");
    ScriptHook hook(s_rule);
    QVERIFY(hook.load());
    removeScript(s_fileName);
    QVERIFY(hook.loaded);
    QCOMPARE(hook.bitoffset("M1"), 3);
    const LogRecorder log;
    QVERIFY(!hook.load());
    QVERIFY(!hook.loaded);
    QCOMPARE(hook.bitBase, 8);
    QCOMPARE(hook.bitoffset("M1"), -1);
    QCOMPARE(log.lines(), QStringList());
}

void TestScriptHook::loadingAgainAfterTheFileWasEmptied()
{
    writeScript(s_fileName, "function init() { bitBase = 8; } function bitoffset(a) { return 3; }");
    ScriptHook hook(s_rule);
    QVERIFY(hook.load());
    writeScript(s_fileName, "");
    const LogRecorder log;
    // The engine still has what the full file defined, so its init can be called.
    QVERIFY(hook.load());
    QVERIFY(hook.loaded);
    QCOMPARE(hook.bitoffset("M1"), 3);
    QCOMPARE(log.lines(), QStringList());
}

void TestScriptHook::loadingAgainOffersPrintAnew()
{
    writeScript(s_fileName, "print('loading'); print = function() {}; function init() {}");
    const LogRecorder log;
    ScriptHook hook(s_rule);
    QVERIFY(hook.load());
    QVERIFY(hook.load());
    QCOMPARE(log.lines(), QStringList({"Script debug: \"loading\"", "Script debug: \"loading\""}));
}

void TestScriptHook::print_data()
{
    QTest::addColumn<QString>("call");
    QTest::addColumn<QStringList>("lines");

    QTest::newRow("no argument") << "print()" << QStringList{"Script debug: \"\""};
    QTest::newRow("one argument") << "print('one')" << QStringList{"Script debug: \"one\""};
    QTest::newRow("three arguments") << "print('one', 'two', 'three')"
                                     << QStringList{"Script debug: \"one two three\""};
    QTest::newRow("an empty text among others") << "print('', 'two', '')" << QStringList{"Script debug: \" two \""};
    QTest::newRow("numbers and truth") << "print(1, 2.5, true)" << QStringList{"Script debug: \"1 2.5 true\""};
    QTest::newRow("no values") << "print(undefined, null)" << QStringList{"Script debug: \"undefined null\""};
    QTest::newRow("a list") << "print([1, [2, 3]], {})" << QStringList{"Script debug: \"1,2,3 [object Object]\""};
    QTest::newRow("a text of its own") << "print({ toString: function() { return 'mine'; } })"
                                       << QStringList{"Script debug: \"mine\""};
    QTest::newRow("the result is undefined")
        << "print(print('inner'))" << QStringList{"Script debug: \"inner\"", "Script debug: \"undefined\""};
}

void TestScriptHook::print()
{
    QFETCH(QString, call);
    QFETCH(QStringList, lines);
    writeScript(s_fileName, "function init() {} function bitoffset(a) { " + call + "; return 1; }");
    ScriptHook hook(s_rule);
    QVERIFY(hook.load());
    const LogRecorder log;
    QCOMPARE(hook.bitoffset("M1"), 1);
    QCOMPARE(log.lines(), lines);
}

void TestScriptHook::argumentsAsTheScriptSeesThem()
{
    writeScript(s_fileName, "var world = this;"
                            "function init() {}"
                            "function tell(name, self, all) {"
                            "    var seen = [name, self === world, all.length];"
                            "    for (var i = 0; i < all.length; ++i) { seen.push(typeof all[i]); seen.push(all[i]); }"
                            "    return seen;"
                            "}"
                            "function getAddressRange() { print(tell('range', this, arguments).join()); }"
                            "function bitoffset() { print(tell('bit', this, arguments).join()); }"
                            "function convertToRegisterAddress() { return tell('register', this, arguments).join(); }"
                            "function makeBitContinueCommand() { return tell('bits', this, arguments); }");
    ScriptHook hook(s_rule);
    QVERIFY(hook.load());
    const LogRecorder log;
    hook.getAddressRange("D100");
    hook.bitoffset("M1.5");
    QCOMPARE(log.lines(),
             QStringList({"Script debug: \"range,true,1,string,D100\"", "Script debug: \"bit,true,1,string,M1.5\""}));
    QCOMPARE(hook.convertToRegisterAddress("3-M1.5"), QString("register,true,1,string,3-M1.5"));
    QCOMPARE(addresses(hook.makeBitContinueCommand(command("3-M1.5", 0), -4, 0)),
             QStringList({"bits", "true", "3", "string", "3-M1.5", "number", "-4", "number", "0"}));
    QCOMPARE(hook.convertToRegisterAddress(""), QString("register,true,1,string,"));
}

void TestScriptHook::numbersAsTheHostTakesThem_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<int>("number");

    QTest::newRow("a number") << "5" << 5;
    QTest::newRow("a number below 0") << "-7" << -7;
    QTest::newRow("a fraction") << "3.9" << 3;
    QTest::newRow("a fraction below 0") << "-3.9" << -3;
    QTest::newRow("beyond 31 bits") << "2147483648" << -2147483647 - 1;
    QTest::newRow("beyond 32 bits") << "4294967301" << 5;
    QTest::newRow("not a number") << "NaN" << 0;
    QTest::newRow("infinity") << "Infinity" << 0;
    QTest::newRow("the text of a number") << "'12'" << 12;
    QTest::newRow("the text of a hexadecimal number") << "'0x1f'" << 31;
    QTest::newRow("a text") << "'D12'" << 0;
    QTest::newRow("true") << "true" << 1;
    QTest::newRow("null") << "null" << 0;
    QTest::newRow("undefined") << "undefined" << 0;
    QTest::newRow("an object") << "{ a: 1 }" << 0;
    QTest::newRow("an object with a value of its own") << "{ valueOf: function() { return 9; } }" << 9;
    QTest::newRow("a list of one number") << "[6]" << 6;
}

void TestScriptHook::numbersAsTheHostTakesThem()
{
    QFETCH(QString, value);
    QFETCH(int, number);
    writeScript(s_fileName, "function init() {}"
                            "function getAddressRange(a) { var value = " +
                                value +
                                "; return value; }"
                                "function bitoffset(a) { return getAddressRange(a); }");
    ScriptHook hook(s_rule);
    QVERIFY(hook.load());
    const LogRecorder log;
    QCOMPARE(hook.getAddressRange("D1"), number);
    QCOMPARE(hook.bitoffset("D1"), number);
    QCOMPARE(log.lines(), QStringList());
}

void TestScriptHook::textsAsTheHostTakesThem_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("text");

    QTest::newRow("a text") << "'D1'"
                            << "D1";
    QTest::newRow("an empty text") << "''"
                                   << "";
    QTest::newRow("a number") << "12.5"
                              << "12.5";
    QTest::newRow("true") << "true"
                          << "true";
    QTest::newRow("null") << "null"
                          << "null";
    QTest::newRow("undefined") << "undefined"
                               << "undefined";
    QTest::newRow("a list") << "['a', 'b']"
                            << "a,b";
    QTest::newRow("an object") << "{ a: 1 }"
                               << "[object Object]";
}

void TestScriptHook::textsAsTheHostTakesThem()
{
    QFETCH(QString, value);
    QFETCH(QString, text);
    writeScript(s_fileName,
                "function init() {} function convertToRegisterAddress(a) { var value = " + value + "; return value; }");
    ScriptHook hook(s_rule);
    QVERIFY(hook.load());
    const LogRecorder log;
    QCOMPARE(hook.convertToRegisterAddress("D1"), text);
    QCOMPARE(log.lines(), QStringList());
}

void TestScriptHook::listsAsTheHostTakesThem_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QStringList>("texts");

    QTest::newRow("texts") << "['a', 'b']" << QStringList{"a", "b"};
    QTest::newRow("fewer than asked for") << "['a']" << QStringList{"a"};
    QTest::newRow("more than asked for") << "['a', 'b', 'c', 'd']" << QStringList{"a", "b", "c", "d"};
    QTest::newRow("twice the same") << "['a', 'a']" << QStringList{"a", "a"};
    QTest::newRow("numbers and others") << "[1, 2.5, true, [3, 4]]" << QStringList{"1", "2.5", "true", "3,4"};
    QTest::newRow("an empty list") << "[]" << QStringList();
    QTest::newRow("a text is no list") << "'abc'" << QStringList();
    QTest::newRow("a number is no list") << "7" << QStringList();
    QTest::newRow("an object with a length is no list") << "{ length: 1, 0: 'a' }" << QStringList();
    QTest::newRow("null") << "null" << QStringList();
    QTest::newRow("undefined") << "undefined" << QStringList();
}

void TestScriptHook::listsAsTheHostTakesThem()
{
    QFETCH(QString, value);
    QFETCH(QStringList, texts);
    writeScript(s_fileName, "function init() {}"
                            "function makeBitContinueCommand(a, c, s) { var value = " +
                                value + "; return value; }");
    ScriptHook hook(s_rule);
    QVERIFY(hook.load());
    const LogRecorder log;
    QCOMPARE(addresses(hook.makeBitContinueCommand(command("D1", 0), 2, 1)), texts);
    QCOMPARE(log.lines(), QStringList());
}

void TestScriptHook::commandsAreCopiedWithAllFields()
{
    writeScript(s_fileName, "function init() {} function makeBitContinueCommand(a, c, s) { return [a, '9-' + a]; }");
    ScriptHook hook(s_rule);
    QVERIFY(hook.load());
    const auto run = hook.makeBitContinueCommand(peculiar("2-D5"), 1, 1);
    QCOMPARE(addresses(run), QStringList({"2-D5", "9-2-D5"}));
    for (const CommunicatorCommand &one : run) {
        QCOMPARE(one.dataType, CommunicatorCommand::DoubleWord);
        QCOMPARE(one.length, Q_UINT64_C(9));
        QCOMPARE(one.scanTime, 7);
        QCOMPARE(one.auxiliaryNumber, -1);
        QCOMPARE(one.auxiliaryText, QString("text"));
        QVERIFY(one.auxiliaryFlag);
    }
}

void TestScriptHook::missingFunctions_data()
{
    QTest::addColumn<QString>("missing");
    QTest::addColumn<QString>("instead");
    QTest::addColumn<QString>("line");

    const QStringList functions{"getAddressRange", "bitoffset", "convertToRegisterAddress"};
    for (const QString &function : functions) {
        QTest::newRow(qPrintable("no " + function)) << function << "" << failure(function, "2-D1");
        QTest::newRow(qPrintable(function + " is no function"))
            << function << "var " + function + " = 5;" << failure(function, "2-D1");
    }
    const QString run = "script makeBitContinueCommand function call fail \"2-D1_3_9\" 4 5";
    QTest::newRow("no makeBitContinueCommand") << "makeBitContinueCommand"
                                               << "" << run;
    QTest::newRow("makeBitContinueCommand is no function") << "makeBitContinueCommand"
                                                           << "var makeBitContinueCommand = 'text';" << run;
    QTest::newRow("bitoffset in the case of its caller")
        << "bitoffset"
        << "function bitOffset(a) { return 2; }" << failure("bitoffset", "2-D1");
}

void TestScriptHook::missingFunctions()
{
    QFETCH(QString, missing);
    QFETCH(QString, instead);
    QFETCH(QString, line);
    const QMap<QString, QString> functions{
        {"getAddressRange", "function getAddressRange(a) { return 1; }"},
        {"bitoffset", "function bitoffset(a) { return 2; }"},
        {"convertToRegisterAddress", "function convertToRegisterAddress(a) { return 'R'; }"},
        {"makeBitContinueCommand", "function makeBitContinueCommand(a, c, s) { return ['B']; }"}};
    QString text = "function init() {}" + instead;
    for (auto function = functions.begin(); function != functions.end(); ++function)
        text += function.key() == missing ? QString() : function.value();
    writeScript(s_fileName, text);
    ScriptHook hook(s_rule);
    QVERIFY(hook.load());
    const LogRecorder log;
    QCOMPARE(hook.getAddressRange("2-D1"), missing == "getAddressRange" ? -1 : 1);
    QCOMPARE(hook.bitoffset("2-D1"), missing == "bitoffset" ? -1 : 2);
    QCOMPARE(hook.convertToRegisterAddress("2-D1"), missing == "convertToRegisterAddress" ? "" : "R");
    QCOMPARE(addresses(hook.makeBitContinueCommand(peculiar("2-D1"), 4, 5)),
             missing == "makeBitContinueCommand" ? QStringList() : QStringList("B"));
    QCOMPARE(log.lines(), QStringList(line));
}

void TestScriptHook::throwingFunctions()
{
    writeScript(s_fileName, "function init() {}"
                            "function getAddressRange(a) { if (a == 'good') return 1; throw new Error('range'); }"
                            "function bitoffset(a) { if (a == 'good') return 2; throw 5; }"
                            "function convertToRegisterAddress(a) { if (a == 'good') return 'R'; nothing; }"
                            "function makeBitContinueCommand(a, c, s) { if (a == 'good') return ['B']; throw a; }");
    ScriptHook hook(s_rule);
    QVERIFY(hook.load());
    const LogRecorder log;
    for (int round = 0; round < 2; ++round) {
        QCOMPARE(hook.getAddressRange("bad"), 0);
        QCOMPARE(hook.getAddressRange("good"), 1);
        QCOMPARE(hook.bitoffset("bad"), 5);
        QCOMPARE(hook.bitoffset("good"), 2);
        QCOMPARE(hook.convertToRegisterAddress("bad"), QString("ReferenceError: Can't find variable: nothing"));
        QCOMPARE(hook.convertToRegisterAddress("good"), QString("R"));
        QCOMPARE(hook.makeBitContinueCommand(command("bad", 0), 1, 1).size(), 0);
        QCOMPARE(addresses(hook.makeBitContinueCommand(command("good", 0), 1, 1)), QStringList("B"));
    }
    QVERIFY(hook.loaded);
    QCOMPARE(log.lines(), QStringList());
}

void TestScriptHook::aScriptKeepsItsStateBetweenCalls()
{
    writeScript(s_fileName, "var calls = 0; function init() {} function bitoffset(a) { return ++calls; }");
    ScriptHook hook(s_rule);
    QVERIFY(hook.load());
    QCOMPARE(hook.bitoffset("M1"), 1);
    QCOMPARE(hook.bitoffset("M1"), 2);
}

void TestScriptHook::copyLoadsAnew()
{
    writeScript(s_fileName, "print('evaluated'); function init() { print('init'); bitBase = 8; }");
    ScriptHook source(s_rule);
    QVERIFY(source.load());
    source.bitBase = 99;
    source.aligmentSize = 99;
    const int engines = ScriptHook::enginesMade();
    const LogRecorder log;
    const ScriptHook copied(source);
    QCOMPARE(log.lines(), QStringList({"Script debug: \"evaluated\"", "Script debug: \"init\""}));
    QCOMPARE(ScriptHook::enginesMade(), engines + 1);
    QVERIFY(copied.loaded);
    QCOMPARE(copied.path, scriptPath());
    QCOMPARE(announced(copied), QString("8 0 0 1 0 0"));
}

void TestScriptHook::copyStartsTheScriptAfresh()
{
    writeScript(s_fileName, "var calls = 0; function init() {} function bitoffset(a) { return ++calls; }");
    ScriptHook source(s_rule);
    QVERIFY(source.load());
    QCOMPARE(source.bitoffset("M1"), 1);
    const ScriptHook copied(source);
    QCOMPARE(copied.bitoffset("M1"), 1);
    QCOMPARE(copied.bitoffset("M1"), 2);
    QCOMPARE(source.bitoffset("M1"), 2);
}

void TestScriptHook::copyOfAChangedFile()
{
    writeScript(s_fileName, "function init() { bitBase = 8; } function bitoffset(a) { return 1; }");
    ScriptHook source(s_rule);
    QVERIFY(source.load());
    writeScript(s_fileName, "function init() { aligmentSize = 4; } function bitoffset(a) { return 2; }");
    const ScriptHook copied(source);
    QCOMPARE(copied.bitoffset("M1"), 2);
    QCOMPARE(announced(copied), QString("10 0 0 4 0 0"));
    QCOMPARE(source.bitoffset("M1"), 1);
    QCOMPARE(announced(source), QString("8 0 0 1 0 0"));
}

void TestScriptHook::copyAfterTheFileIsGone()
{
    writeScript(s_fileName, "function init() { bitBase = 8; } function bitoffset(a) { return 1; }");
    ScriptHook source(s_rule);
    QVERIFY(source.load());
    removeScript(s_fileName);
    const LogRecorder log;
    const ScriptHook copied(source);
    QVERIFY(!copied.loaded);
    QCOMPARE(copied.path, scriptPath());
    QCOMPARE(announced(copied), s_defaults);
    QCOMPARE(copied.bitoffset("M1"), -1);
    QVERIFY(source.loaded);
    QCOMPARE(source.bitoffset("M1"), 1);
    QCOMPARE(log.lines(), QStringList());
}

void TestScriptHook::copyOfAnUnloadedHookStaysUnloaded()
{
    ScriptHook source(s_rule);
    QVERIFY(!source.load());
    writeScript(s_fileName, "function init() { bitBase = 8; }");
    const int engines = ScriptHook::enginesMade();
    const ScriptHook copied(source);
    QVERIFY(!copied.loaded);
    QVERIFY(copied.exists());
    QCOMPARE(announced(copied), s_defaults);
    QCOMPARE(ScriptHook::enginesMade(), engines);
}

void TestScriptHook::copyOfAScriptThatThrowsReportsAgain()
{
    writeScript(s_fileName, "function bitoffset(a) { return 3; }\nthrow new Error('boom');");
    ScriptHook source(s_rule);
    QVERIFY(!source.load());
    const LogRecorder log;
    const ScriptHook copied(source);
    QVERIFY(copied.loaded);
    QCOMPARE(copied.bitoffset("M1"), 3);
    QCOMPARE(log.lines(), QStringList("uncaught exception at line 2 : \"Error: boom\""));
}

void TestScriptHook::assignmentReplacesTheScript()
{
    writeScript("one.js", "function init() { bitBase = 8; } function bitoffset(a) { return 1; }");
    writeScript("two.js", "function init() { aligmentSize = 4; } function bitoffset(a) { return 2; }");
    ScriptHook one("F>one.js");
    ScriptHook two("F>two.js");
    QVERIFY(one.load() && two.load());
    one = two;
    QCOMPARE(one.path, scriptPath("two.js"));
    QCOMPARE(one.bitoffset("M1"), 2);
    QCOMPARE(announced(one), QString("10 0 0 4 0 0"));
    one = ScriptHook();
    QVERIFY(!one.loaded);
    QCOMPARE(one.path, QString());
    QCOMPARE(announced(one), s_defaults);
    QCOMPARE(one.bitoffset("M1"), -1);
    QCOMPARE(two.bitoffset("M1"), 2);
}

void TestScriptHook::selfAssignment()
{
    writeScript(s_fileName, "function init() { bitBase = 8; } function bitoffset(a) { return 1; }");
    ScriptHook hook(s_rule);
    QVERIFY(hook.load());
    const ScriptHook &same = hook;
    hook = same;
    QVERIFY(hook.loaded);
    QCOMPARE(hook.bitBase, 8);
    QCOMPARE(hook.bitoffset("M1"), 1);
}

void TestScriptHook::enginesAreMadeForLoadedScriptsOnly()
{
    writeScript(s_fileName, "function init() {}");
    writeScript("empty.js", "");
    const int made = ScriptHook::enginesMade();
    const int alive = ScriptHook::enginesAlive();
    {
        std::vector<ScriptHook> unscripted(20, ScriptHook("dot-f:r"));
        ScriptHook empty("F>empty.js");
        ScriptHook missing("F>missing.js");
        QVERIFY(!empty.load() && !missing.load());
        QCOMPARE(ScriptHook::enginesMade(), made);
        QCOMPARE(ScriptHook::enginesAlive(), alive);

        ScriptHook scripted(s_rule);
        QVERIFY(scripted.load());
        QCOMPARE(ScriptHook::enginesMade(), made + 1);
        const ScriptHook copied = scripted;
        QCOMPARE(ScriptHook::enginesMade(), made + 2);
        QCOMPARE(ScriptHook::enginesAlive(), alive + 2);
        unscripted.front() = scripted;
        QCOMPARE(ScriptHook::enginesMade(), made + 3);
        QCOMPARE(ScriptHook::enginesAlive(), alive + 3);
        unscripted.front() = empty;
        QCOMPARE(ScriptHook::enginesAlive(), alive + 2);
    }
    QCOMPARE(ScriptHook::enginesMade(), made + 3);
    QCOMPARE(ScriptHook::enginesAlive(), alive);
}

// All at once, since each takes the whole deadline.
void TestScriptHook::endlessScriptsAreStopped()
{
    const QString body = " { var i = 0; while (true) { i = i + 1; } }";
    const QString good = "function init() { bitBase = 8; } function bitoffset(a) { return 4; }";
    writeScript("function.js", good + "function getAddressRange(a)" + body);
    writeScript("caught.js",
                good + "function getAddressRange(a) { for (;;) { try" + body + " catch (e) { i = 2; } } }");
    writeScript("toplevel.js", good + body);
    writeScript("init.js", "function bitoffset(a) { return 4; } function init()" + body);
    writeScript("conversion.js",
                good + "function convertToRegisterAddress(a) { return { toString: function()" + body + " }; }");
    writeScript("forever.js", good + "function getAddressRange(a) { while (true) {} }");

    QProcess forever;
    forever.start(QCoreApplication::applicationFilePath(), {s_foreverArgument});
    QVERIFY(forever.waitForStarted());

    struct Outcome
    {
        bool loadResult = false;
        bool loaded = false;
        int number = 0;
        QString text;
        int bitBase = 0;
        int bitAfterwards = 0;
        qint64 milliseconds = 0;
    };
    const QStringList names{"function", "caught", "toplevel", "init", "conversion"};
    std::vector<Outcome> outcomes(static_cast<size_t>(names.size()));
    const int alive = ScriptHook::enginesAlive();
    const LogRecorder log;
    std::vector<std::thread> threads;
    for (int i = 0; i < names.size(); ++i) {
        threads.emplace_back([&outcome = outcomes[static_cast<size_t>(i)], name = names.at(i)] {
            QElapsedTimer timer;
            timer.start();
            ScriptHook hook("F>" + name + ".js");
            outcome.loadResult = hook.load();
            outcome.loaded = hook.loaded;
            outcome.bitBase = hook.bitBase;
            if (name == "function" || name == "caught")
                outcome.number = hook.getAddressRange(name);
            if (name == "conversion")
                outcome.text = hook.convertToRegisterAddress(name);
            outcome.milliseconds = timer.elapsed();
            outcome.bitAfterwards = hook.bitoffset("M1");
        });
    }
    for (std::thread &thread : threads)
        thread.join();

    for (const Outcome &outcome : outcomes) {
        QVERIFY2(outcome.milliseconds >= ScriptHook::deadlineSeconds * 1000,
                 qPrintable(QString::number(outcome.milliseconds)));
        QVERIFY2(outcome.milliseconds < 3 * ScriptHook::deadlineSeconds * 1000,
                 qPrintable(QString::number(outcome.milliseconds)));
    }
    for (const size_t i : {0U, 1U}) {
        QVERIFY(outcomes[i].loadResult);
        QCOMPARE(outcomes[i].bitBase, 8);
        QCOMPARE(outcomes[i].number, -1);
        QCOMPARE(outcomes[i].bitAfterwards, 4);
    }
    QVERIFY(!outcomes[2].loadResult);
    QVERIFY(outcomes[2].loaded);
    QCOMPARE(outcomes[2].bitBase, 10);
    QCOMPARE(outcomes[2].bitAfterwards, 4);
    QVERIFY(!outcomes[3].loadResult);
    QVERIFY(!outcomes[3].loaded);
    QCOMPARE(outcomes[3].bitBase, 10);
    QCOMPARE(outcomes[3].bitAfterwards, -1);
    QVERIFY(outcomes[4].loadResult);
    QCOMPARE(outcomes[4].bitAfterwards, 4);
    QCOMPARE(outcomes[4].text, QString());

    QStringList lines = log.lines();
    lines.sort();
    QStringList expected{failure("getAddressRange", "caught"), failure("getAddressRange", "function"),
                         failure("convertToRegisterAddress", "conversion"), failure("init", scriptPath("init.js")),
                         "script stopped after 10 seconds"};
    expected.sort();
    QCOMPARE(lines, expected);
    QCOMPARE(ScriptHook::enginesAlive(), alive);

    const bool foreverEnded = forever.waitForFinished(2000);
    forever.kill();
    forever.waitForFinished();
    QEXPECT_FAIL("", "a loop without a statement in it is not seen by the watcher", Continue);
    QVERIFY(foreverEnded && forever.exitCode() == 0);
}

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    if (argc > 1 && std::strcmp(argv[1], s_foreverArgument) == 0) {
        ScriptHook hook(s_foreverRule);
        return hook.load() && hook.getAddressRange("D1") == -1 ? 0 : 1;
    }
    TestScriptHook test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_scripthook.moc"
