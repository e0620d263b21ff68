// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/labelfixtures.h"
#include "support/logrecorder.h"
#include "support/scripthooktest.h"

#include "zelmar_label/address_grammar/scripthook.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QtTest>

using label::ScriptHook;

namespace {

void writeBytes(const QByteArray &bytes)
{
    writeScript(s_fileName, QString());
    QFile file(scriptPath());
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    QCOMPARE(file.write(bytes), qint64(bytes.size()));
}

} // namespace

/// Tests how a hook finds and loads its file.
class TestScriptHookFile : public ScriptHookTest
{
    Q_OBJECT

private Q_SLOTS:
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
};

void TestScriptHookFile::aDefaultHookHasNoScript()
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

void TestScriptHookFile::pathComesFromTheRuleText_data()
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

void TestScriptHookFile::pathComesFromTheRuleText()
{
    QFETCH(QString, rule);
    QFETCH(QString, path);
    const ScriptHook hook(rule);
    QCOMPARE(hook.path, path);
    QVERIFY(!hook.loaded);
    QVERIFY(!hook.exists());
    QCOMPARE(announced(hook), s_defaults);
}

void TestScriptHookFile::folderIsMade()
{
    QVERIFY(!QFileInfo::exists(scriptsFolder()));
    const ScriptHook withoutRule;
    QVERIFY(!QFileInfo::exists(scriptsFolder()));
    const ScriptHook hook((QString()));
    QVERIFY(QFileInfo(scriptsFolder()).isDir());
    QVERIFY(!hook.exists());
}

void TestScriptHookFile::folderThatCannotBeMade()
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

void TestScriptHookFile::existenceIsAskedOfTheFileSystem()
{
    const ScriptHook hook(s_rule);
    QVERIFY(!hook.exists());
    writeScript(s_fileName, "function init() {}");
    QVERIFY(hook.exists());
    QVERIFY(!hook.loaded);
    removeScript(s_fileName);
    QVERIFY(!hook.exists());
}

void TestScriptHookFile::buildingDoesNotLoad()
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

void TestScriptHookFile::loading_data()
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

void TestScriptHookFile::loading()
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

void TestScriptHookFile::aFolderInPlaceOfTheFileIsEmpty()
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

void TestScriptHookFile::fileEncodings_data()
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

void TestScriptHookFile::fileEncodings()
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

void TestScriptHookFile::exceptionLine_data()
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

void TestScriptHookFile::exceptionLine()
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

QTEST_GUILESS_MAIN(TestScriptHookFile)

#include "tst_scripthook_file.moc"
