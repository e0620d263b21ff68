// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/labelfixtures.h"
#include "support/logrecorder.h"
#include "support/scripthooktest.h"

#include "zelmar_label/address_grammar/scripthook.h"

#include <QtTest>

using label::ScriptHook;

namespace {

CommunicatorCommand peculiar(const QString &address)
{
    CommunicatorCommand made = command(address, 3, 9);
    made.scanTime = 7;
    made.auxiliaryNumber = -1;
    made.auxiliaryText = QStringLiteral("text");
    made.auxiliaryFlag = true;
    return made;
}

} // namespace

/// Tests the arguments and results of the functions of a script.
class TestScriptHookCalls : public ScriptHookTest
{
    Q_OBJECT

private Q_SLOTS:
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
};

void TestScriptHookCalls::print_data()
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

void TestScriptHookCalls::print()
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

void TestScriptHookCalls::argumentsAsTheScriptSeesThem()
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

void TestScriptHookCalls::numbersAsTheHostTakesThem_data()
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

void TestScriptHookCalls::numbersAsTheHostTakesThem()
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

void TestScriptHookCalls::textsAsTheHostTakesThem_data()
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

void TestScriptHookCalls::textsAsTheHostTakesThem()
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

void TestScriptHookCalls::listsAsTheHostTakesThem_data()
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

void TestScriptHookCalls::listsAsTheHostTakesThem()
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

void TestScriptHookCalls::commandsAreCopiedWithAllFields()
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

void TestScriptHookCalls::missingFunctions_data()
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

void TestScriptHookCalls::missingFunctions()
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

void TestScriptHookCalls::throwingFunctions()
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

void TestScriptHookCalls::aScriptKeepsItsStateBetweenCalls()
{
    writeScript(s_fileName, "var calls = 0; function init() {} function bitoffset(a) { return ++calls; }");
    ScriptHook hook(s_rule);
    QVERIFY(hook.load());
    QCOMPARE(hook.bitoffset("M1"), 1);
    QCOMPARE(hook.bitoffset("M1"), 2);
}

QTEST_GUILESS_MAIN(TestScriptHookCalls)

#include "tst_scripthook_calls.moc"
