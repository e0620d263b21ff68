// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/labelfixtures.h"
#include "support/logrecorder.h"

#include "zelmar_label/address_grammar/scripthook.h"

#include <QtTest>

using label::ScriptHook;

/// Tests the reported line of a script's `throw`.
class ScriptHookThrowsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theLineOfAThrow_data();
    void theLineOfAThrow();
    void manyCaughtValues();
};

void ScriptHookThrowsTest::theLineOfAThrow_data()
{
    QTest::addColumn<QString>("script");
    QTest::addColumn<QString>("line");

    QTest::newRow("a text") << "\nthrow 'a';"
                            << "2 : \"a\"";
    QTest::newRow("a value of several lines") << "\nthrow 'a' +\n 'b';"
                                              << "2 : \"ab\"";
    QTest::newRow("carriage returns") << "var a;\r\rthrow 'a' +\r 'b';"
                                      << "3 : \"ab\"";
    QTest::newRow("a finally block runs behind it") << "try { throw 'a'; }\nfinally {\n var z = 1;\n}"
                                                    << "1 : \"a\"";
    QTest::newRow("a finally block that throws nothing of its own")
        << "try {\n throw 'a'; }\nfinally {\n for (var i = 0; i < 3;\n i++) {}\n}"
        << "2 : \"a\"";
    QTest::newRow("a finally block calls a function") << "function f() {\n return 1;\n}\ntry {\n throw 'a';\n}\n"
                                                         "finally { f(); }"
                                                      << "5 : \"a\"";
    QTest::newRow("a finally block catches something else")
        << "try {\n throw 'a' } finally {\n try { throw 'b' }\n catch (e) {}\n}"
        << "2 : \"a\"";
    QTest::newRow("a finally block throws something else") << "try { throw 'a'; }\nfinally {\n throw 'b';\n}"
                                                           << "3 : \"b\"";
    QTest::newRow("two finally blocks") << "try {\n try { throw 1; }\n finally {\n 2; }\n}\nfinally {\n var q;\n}"
                                        << "2 : \"1\"";
    QTest::newRow("a finally block of a function that is called")
        << "function f() {\n try { throw 'a'; }\n finally {\n var z = 1;\n }\n}\nf();"
        << "2 : \"a\"";
    QTest::newRow("caught and thrown again") << "try { throw 'a'; }\ncatch (e) {\n throw e;\n}"
                                             << "3 : \"a\"";
    QTest::newRow("thrown in a function") << "function f() {\n throw 'a';\n}\n\nf();"
                                          << "2 : \"a\"";
    QTest::newRow("a function runs for its value") << "function f() {\n return 4;\n}\nvar g = function() {\n"
                                                      " throw f();\n};\ng();"
                                                   << "5 : \"4\"";
    QTest::newRow("a function runs for its value, several lines on") << "\nthrow (function() {\n return 4;\n})();"
                                                                     << "2 : \"4\"";
    QTest::newRow("thrown while its value is made") << "function f() {\n throw 'a';\n}\nthrow f();"
                                                    << "2 : \"a\"";
    QTest::newRow("thrown in a function that the engine calls") << "[3, 2].sort(function(a, b) {\n throw 'a';\n});"
                                                                << "2 : \"a\"";
    QTest::newRow("thrown in a function that the engine calls, through a finally block")
        << "try {\n [3, 2].sort(function(a, b) {\n throw 'a';\n });\n}\nfinally {\n 1;\n}"
        << "3 : \"a\"";
    QTest::newRow("thrown by a property that is read") << "var o = {\n get a() {\n throw 'a'; }\n};\n\no.a;"
                                                       << "3 : \"a\"";
    QTest::newRow("thrown deep down") << "function f(n) { if (n == 0)\n throw 'a';\n f(n - 1); }\nf(9)"
                                      << "2 : \"a\"";
    QTest::newRow("a value that is no number") << "try { throw NaN; }\nfinally {\n 1;\n}"
                                               << "1 : \"NaN\"";
    QTest::newRow("an error object") << "try { throw new Error('a'); }\nfinally {\n 1;\n}"
                                     << "1 : \"Error: a\"";
    QTest::newRow("an error of the engine") << "try {\n nothing; }\nfinally {\n 1;\n}"
                                            << "2 : \"ReferenceError: Can't find variable: nothing\"";
}

void ScriptHookThrowsTest::theLineOfAThrow()
{
    QFETCH(QString, script);
    QFETCH(QString, line);
    writeScript("throws.js", script);
    const LogRecorder log;
    ScriptHook hook("F>throws.js");
    QVERIFY(!hook.load());
    removeScript("throws.js");
    QCOMPARE(log.lines(), QStringList("uncaught exception at line " + line));
}

void ScriptHookThrowsTest::manyCaughtValues()
{
    writeScript("throws.js", "for (var i = 0; i < 1000; ++i) {\n try { throw i; }\n catch (e) {}\n}\n"
                             "try {\n throw 'last';\n}\nfinally {\n i;\n}");
    const LogRecorder log;
    ScriptHook hook("F>throws.js");
    QVERIFY(!hook.load());
    removeScript("throws.js");
    QCOMPARE(log.lines(), QStringList("uncaught exception at line 6 : \"last\""));
}

QTEST_GUILESS_MAIN(ScriptHookThrowsTest)
#include "tst_scripthook_throws.moc"
