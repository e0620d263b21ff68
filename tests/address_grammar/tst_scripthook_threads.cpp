// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/labelfixtures.h"
#include "support/logrecorder.h"
#include "support/scripthooktest.h"
#include "support/threads.h"

#include "zelmar_label/address_grammar/scripthook.h"

#include <QCoreApplication>
#include <QProcess>
#include <QtTest>

#include <cstdio>
#include <cstring>

using label::ScriptHook;

namespace {

const char *const s_firstEnginesArgument = "first-engines";

/// Prints the log of hooks that are loaded on all threads at once.
void loadOnAllThreads()
{
    const LogRecorder log;
    Texts faults;
    onAllThreads([&faults](int) {
        ScriptHook hook(s_rule);
        faults.check(hook.load() && hook.bitBase == 8, "not loaded");
    });
    std::puts(qPrintable((log.lines() + faults.texts()).join('\n')));
}

} // namespace

class TestScriptHookThreads : public ScriptHookTest
{
    Q_OBJECT

private Q_SLOTS:
    void firstEnginesOfAProcess();
};

// Only the first engines of a process can get in each other's way, and not in every process.
void TestScriptHookThreads::firstEnginesOfAProcess()
{
    writeScript(s_fileName, "function init() { bitBase = 8; }");
    for (int i = 0; i < 10; ++i) {
        QProcess process;
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(QCoreApplication::applicationFilePath(), {s_firstEnginesArgument});
        QVERIFY2(process.waitForFinished(-1), qPrintable(process.errorString()));
        QCOMPARE(QString::fromUtf8(process.readAll()).trimmed(), QString());
        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(process.exitCode(), 0);
    }
}

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    if (argc > 1 && std::strcmp(argv[1], s_firstEnginesArgument) == 0) {
        loadOnAllThreads();
        return 0;
    }
    TestScriptHookThreads test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_scripthook_threads.moc"
