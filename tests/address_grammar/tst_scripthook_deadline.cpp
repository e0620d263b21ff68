// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/labelfixtures.h"
#include "support/logrecorder.h"
#include "support/scripthooktest.h"

#include "zelmar_label/address_grammar/scripthook.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QtTest>

#include <cstring>
#include <ctime>
#include <thread>
#include <vector>

using label::ScriptHook;

namespace {

/// What the thread has used of a processor.
qint64 processorMilliseconds()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return qint64(time.tv_sec) * 1000 + time.tv_nsec / 1000000;
}

const QString s_foreverRule = QStringLiteral("F>forever.js");
const char *const s_foreverArgument = "run-forever";

} // namespace

class TestScriptHookDeadline : public ScriptHookTest
{
    Q_OBJECT

private Q_SLOTS:
    void endlessScriptsAreStopped();
};

// All at once, since each takes the whole deadline.
void TestScriptHookDeadline::endlessScriptsAreStopped()
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
        qint64 processorMilliseconds = 0;
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
            outcome.processorMilliseconds = processorMilliseconds();
            outcome.bitAfterwards = hook.bitoffset("M1");
        });
    }
    for (std::thread &thread : threads)
        thread.join();

    for (const Outcome &outcome : outcomes) {
        QVERIFY2(outcome.milliseconds >= ScriptHook::deadlineSeconds * 1000,
                 qPrintable(QString::number(outcome.milliseconds)));
        // Not by the clock, since other programs may keep the processors busy.
        QVERIFY2(outcome.processorMilliseconds < 3 * ScriptHook::deadlineSeconds * 1000,
                 qPrintable(QString::number(outcome.processorMilliseconds)));
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
    // Joined, so that a failure shows every line.
    QCOMPARE(lines.join('\n'), expected.join('\n'));
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
    TestScriptHookDeadline test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_scripthook_deadline.moc"
