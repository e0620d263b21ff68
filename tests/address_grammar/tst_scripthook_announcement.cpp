// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/labelfixtures.h"
#include "support/logrecorder.h"
#include "support/scripthooktest.h"

#include "zelmar_label/address_grammar/scripthook.h"

#include <QtTest>

using label::ScriptHook;

/// Tests the values that a script announces when it is loaded, and loaded again.
class TestScriptHookAnnouncement : public ScriptHookTest
{
    Q_OBJECT

private Q_SLOTS:
    void announcedValues_data();
    void announcedValues();
    void defaultsAreVisibleToTheScript();
    void announcedValuesAreReadOnce();
    void resetPutsDefaultsBack();
    void loadingAgain();
    void loadingAgainAfterTheFileIsGone();
    void loadingAgainAfterTheFileWasEmptied();
    void loadingAgainOffersPrintAnew();
};

void TestScriptHookAnnouncement::announcedValues_data()
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

void TestScriptHookAnnouncement::announcedValues()
{
    QFETCH(QString, body);
    QFETCH(QString, values);
    writeScript(s_fileName, "function init() { " + body + " }");
    ScriptHook hook(s_rule);
    QVERIFY(hook.load());
    QCOMPARE(announced(hook), values);
}

void TestScriptHookAnnouncement::defaultsAreVisibleToTheScript()
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

void TestScriptHookAnnouncement::announcedValuesAreReadOnce()
{
    writeScript(s_fileName, "function init() {} function bitoffset(a) { bitBase = 2; return bitBase; }");
    ScriptHook hook(s_rule);
    QVERIFY(hook.load());
    QCOMPARE(hook.bitoffset("M1"), 2);
    QCOMPARE(hook.bitBase, 10);
}

void TestScriptHookAnnouncement::resetPutsDefaultsBack()
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

void TestScriptHookAnnouncement::loadingAgain()
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

void TestScriptHookAnnouncement::loadingAgainAfterTheFileIsGone()
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

void TestScriptHookAnnouncement::loadingAgainAfterTheFileWasEmptied()
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

void TestScriptHookAnnouncement::loadingAgainOffersPrintAnew()
{
    writeScript(s_fileName, "print('loading'); print = function() {}; function init() {}");
    const LogRecorder log;
    ScriptHook hook(s_rule);
    QVERIFY(hook.load());
    QVERIFY(hook.load());
    QCOMPARE(log.lines(), QStringList({"Script debug: \"loading\"", "Script debug: \"loading\""}));
}

QTEST_GUILESS_MAIN(TestScriptHookAnnouncement)

#include "tst_scripthook_announcement.moc"
