// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/labelfixtures.h"
#include "support/logrecorder.h"
#include "support/scripthooktest.h"

#include "zelmar_label/address_grammar/scripthook.h"

#include <QtTest>

#include <vector>

using label::ScriptHook;

class TestScriptHookCopies : public ScriptHookTest
{
    Q_OBJECT

private Q_SLOTS:
    void copyLoadsAnew();
    void copyStartsTheScriptAfresh();
    void copyOfAChangedFile();
    void copyAfterTheFileIsGone();
    void copyOfAnUnloadedHookStaysUnloaded();
    void copyOfAScriptThatThrowsReportsAgain();
    void assignmentReplacesTheScript();
    void selfAssignment();
    void enginesAreMadeForLoadedScriptsOnly();
};

void TestScriptHookCopies::copyLoadsAnew()
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

void TestScriptHookCopies::copyStartsTheScriptAfresh()
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

void TestScriptHookCopies::copyOfAChangedFile()
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

void TestScriptHookCopies::copyAfterTheFileIsGone()
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

void TestScriptHookCopies::copyOfAnUnloadedHookStaysUnloaded()
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

void TestScriptHookCopies::copyOfAScriptThatThrowsReportsAgain()
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

void TestScriptHookCopies::assignmentReplacesTheScript()
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

void TestScriptHookCopies::selfAssignment()
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

void TestScriptHookCopies::enginesAreMadeForLoadedScriptsOnly()
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

QTEST_GUILESS_MAIN(TestScriptHookCopies)

#include "tst_scripthook_copies.moc"
