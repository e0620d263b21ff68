// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/toolprocess.h"
#include "tools/driver-files/driverfile.h"

#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

namespace {

QByteArray driverText(const char *name, const char *blocksize)
{
    return QByteArray("driver\t") + name +
           "\nblock_size\t64\nbit_block_size\t256\n"
           "pattern\ttype\taddress_group_index\tdescription\tprefix_symbol\tstart\tend\tdata_size\tmultiple_rule\t"
           "catch_table\tbase\tblocksize\tcontinue\n"
           "(D)(0*\\d{1,4})\t2\t2\tD: register, e.g. D7\tD\t0\t9999\t2\t\t\t10\t" +
           blocksize + "\tN\n";
}

QByteArray sampleText(const char *next)
{
    return QByteArray("verdict\taddress\tfilter\tsymbol\tnumber\tbit\tstep\tnext\tregister\n"
                      "accept\tD0\tany\tD\t0\t-1\tword\t") +
           next + "\t-\n";
}

} // namespace

class LintCommand : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void shippedDriversAreClean();
    void driversAreChosenByName();
    void goodFileIsClean();
    void errorIsAParagraph();
    void warningLeavesExitCode();
    void samplesAreChecked();
    void samplesMayLieElsewhere();
    void databaseIsLinted();
    void jsonIsOneObjectALine();
    void countsTellOfEachDriver();
    void countsAsJson();
    void usageErrors_data();
    void usageErrors();
    void unreadable_data();
    void unreadable();

private:
    Result lint(const QStringList &arguments) const
    {
        return runProcess(m_tool, QStringList{QStringLiteral("lint")} + arguments);
    }
    QString file(const QString &name, const QByteArray &text) const
    {
        const QString path = m_folder->filePath(name);
        QDir().mkpath(QFileInfo(path).path());
        writeFile(path, text);
        return path;
    }

    const QString m_tool = QStringLiteral(ZELMAR_LABEL_TOOL);
    std::unique_ptr<QTemporaryDir> m_folder;
};

void LintCommand::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
}

void LintCommand::shippedDriversAreClean()
{
    const Result result = lint({});
    QCOMPARE(result.err, QString());
    QVERIFY2(result.code == 0, qPrintable(result.out));
    QVERIFY2(result.out.endsWith(QLatin1String(" 0 samples: 0 errors, 0 warnings\n")), qPrintable(result.out));
}

void LintCommand::driversAreChosenByName()
{
    const Result result = lint({QStringLiteral("Modbus TCP"), QStringLiteral("ISO on TCP")});
    QCOMPARE(result.code, 0);
    QVERIFY2(result.out.startsWith(QLatin1String("2 drivers, ")), qPrintable(result.out));
}

void LintCommand::goodFileIsClean()
{
    const Result result = lint({file(QStringLiteral("good.tsv"), driverText("Good", "64"))});
    QCOMPARE(result.out, QStringLiteral("1 driver, 1 row, 0 samples: 0 errors, 0 warnings\n"));
    QCOMPARE(result.err, QString());
    QCOMPARE(result.code, 0);
}

void LintCommand::errorIsAParagraph()
{
    const QString path = file(QStringLiteral("bad.tsv"), driverText("Bad", "0"));
    const Result result = lint({path});
    QCOMPARE(result.out, path + QStringLiteral(":5: error: 'blocksize' is 0: at least one unit must fit into a block "
                                               "[block-size]\n"
                                               "    driver  Bad\n"
                                               "    row     1: (D)(0*\\d{1,4})  D: register, e.g. D7\n"
                                               "    column  blocksize\n"
                                               "    do      give the most units of one block, at least 1; with less no "
                                               "block can be read\n"
                                               "\n"
                                               "1 driver, 1 row, 0 samples: 1 error, 0 warnings\n"));
    QCOMPARE(result.code, 1);
}

void LintCommand::warningLeavesExitCode()
{
    const Result result = lint({file(QStringLiteral("large.tsv"), driverText("Large", "65"))});
    QVERIFY2(result.out.contains(QLatin1String(":5: warning: 'blocksize' 65 is more than one read")),
             qPrintable(result.out));
    QVERIFY2(result.out.endsWith(QLatin1String("1 driver, 1 row, 0 samples: 0 errors, 1 warning\n")),
             qPrintable(result.out));
    QCOMPARE(result.code, 0);
}

void LintCommand::samplesAreChecked()
{
    const QString path = file(QStringLiteral("good.tsv"), driverText("Good", "64"));
    const QString samples = file(QStringLiteral("samples/good.tsv"), sampleText("D2"));
    const Result result = lint({path});
    QVERIFY2(result.out.startsWith(samples + QLatin1String(":2: error: the next address of D0 is D1, not D2 "
                                                           "as in its sample [sample-next]\n")),
             qPrintable(result.out));
    QCOMPARE(result.code, 1);
}

void LintCommand::samplesMayLieElsewhere()
{
    const QString path = file(QStringLiteral("good.tsv"), driverText("Good", "64"));
    file(QStringLiteral("mine/good.tsv"), sampleText("D1"));
    const Result result = lint({QStringLiteral("--samples"), m_folder->filePath(QStringLiteral("mine")), path});
    QCOMPARE(result.out, QStringLiteral("1 driver, 1 row, 1 sample: 0 errors, 0 warnings\n"));
    QCOMPARE(result.code, 0);
}

void LintCommand::databaseIsLinted()
{
    const QString database = m_folder->filePath(QStringLiteral("theirs"));
    QList<DriverFileError> errors;
    QString error;
    const QList<DriverText> drivers = {
        readDriverFile(file(QStringLiteral("good.tsv"), driverText("Good", "64")), errors),
        readDriverFile(file(QStringLiteral("bad.tsv"), driverText("Bad", "0")), errors)};
    QVERIFY(errors.isEmpty() && writeDriverDatabase(database, drivers, error));

    const Result byFile = lint({database});
    QVERIFY2(byFile.out.startsWith(database + QLatin1String(": error: 'blocksize' is 0")), qPrintable(byFile.out));
    QVERIFY(byFile.out.contains(QLatin1String("\n    driver  Bad\n    row     1: ")));
    QCOMPARE(byFile.code, 1);
    QCOMPARE(lint({QStringLiteral("--database"), database}).out, byFile.out);
    QCOMPARE(lint({QStringLiteral("--database"), database, QStringLiteral("Good")}).code, 0);
    QCOMPARE(lint({QStringLiteral("--database"), database, QStringLiteral("Bad")}).code, 1);
}

void LintCommand::jsonIsOneObjectALine()
{
    const QString path = file(QStringLiteral("bad.tsv"), driverText("Bad", "0"));
    const Result result = lint({QStringLiteral("--json"), path});
    QCOMPARE(result.code, 1);
    QCOMPARE(result.out.count(QLatin1Char('\n')), 1);
    const QJsonObject object = QJsonDocument::fromJson(result.out.toUtf8()).object();
    QCOMPARE(object.value(QStringLiteral("severity")).toString(), QStringLiteral("error"));
    QCOMPARE(object.value(QStringLiteral("id")).toString(), QStringLiteral("block-size"));
    QCOMPARE(object.value(QStringLiteral("driver")).toString(), QStringLiteral("Bad"));
    QCOMPARE(object.value(QStringLiteral("file")).toString(), path);
    QCOMPARE(object.value(QStringLiteral("line")).toInt(), 5);
    QCOMPARE(object.value(QStringLiteral("row")).toInt(), 1);
    QCOMPARE(object.value(QStringLiteral("column")).toString(), QStringLiteral("blocksize"));
    QCOMPARE(object.value(QStringLiteral("pattern")).toString(), QStringLiteral("(D)(0*\\d{1,4})"));
    QVERIFY(!object.value(QStringLiteral("what")).toString().isEmpty());
    QVERIFY(!object.value(QStringLiteral("advice")).toString().isEmpty());
}

void LintCommand::countsTellOfEachDriver()
{
    const QString good = file(QStringLiteral("good.tsv"), driverText("Good", "64"));
    file(QStringLiteral("good.samples.tsv"), sampleText("D1"));
    const QString bad = file(QStringLiteral("bad.tsv"), driverText("Bad one", "0"));
    const QString large = file(QStringLiteral("large.tsv"), driverText("Large", "65"));
    const Result result = lint({QStringLiteral("--counts"), good, bad, large});
    QVERIFY2(result.out.endsWith(QLatin1String("\n"
                                               "driver   rows  samples  errors  warnings\n"
                                               "Good     1     1        0       0\n"
                                               "Bad one  1     0        1       0\n"
                                               "Large    1     0        0       1\n"
                                               "3 drivers, 3 rows, 1 sample: 1 error, 1 warning\n")),
             qPrintable(result.out));
    QCOMPARE(result.code, 1);
}

void LintCommand::countsAsJson()
{
    const QString good = file(QStringLiteral("good.tsv"), driverText("Good", "64"));
    file(QStringLiteral("good.samples.tsv"), sampleText("D1"));
    const Result result = lint({QStringLiteral("--counts"), QStringLiteral("--json"), good});
    QCOMPARE(result.out,
             QStringLiteral("{\"driver\":\"Good\",\"rows\":1,\"samples\":1,\"errors\":0,\"warnings\":0}\n"));
    QCOMPARE(result.code, 0);
}

void LintCommand::usageErrors_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("an unknown option") << QStringList{QStringLiteral("--strict")};
    QTest::newRow("an option without its value") << QStringList{QStringLiteral("--samples")};
}

void LintCommand::usageErrors()
{
    QFETCH(QStringList, arguments);
    const Result result = lint(arguments);
    QCOMPARE(result.code, 2);
    QVERIFY2(result.err.contains(QLatin1String("Usage: zelmar-label lint")), qPrintable(result.err));
    QCOMPARE(result.out, QString());
}

void LintCommand::unreadable_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("reason");
    QTest::newRow("a driver file that is not there")
        << QStringList{QStringLiteral("/nowhere/gone.tsv")}
        << QStringLiteral(
               "zelmar-label: the driver file /nowhere/gone.tsv cannot be read: No such file or directory\n");
    QTest::newRow("a database that is not there")
        << QStringList{QStringLiteral("--database"), QStringLiteral("/nowhere/gone")}
        << QStringLiteral("zelmar-label: there is no file /nowhere/gone\n");
    QTest::newRow("a driver that is not there")
        << QStringList{QStringLiteral("No Such PLC")}
        << QStringLiteral("zelmar-label: there is no driver \"No Such PLC\" in ");
    QTest::newRow("a folder") << QStringList{QStringLiteral("/usr/")}
                              << QStringLiteral("zelmar-label: /usr is a folder; name its driver files, /usr/*.tsv\n");
    QTest::newRow("a folder of samples that is not there")
        << QStringList{QStringLiteral("--samples"), QStringLiteral("/nowhere")}
        << QStringLiteral("zelmar-label: there is no folder /nowhere\n");
}

void LintCommand::unreadable()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, reason);
    const Result result = lint(arguments);
    QCOMPARE(result.code, 3);
    QVERIFY2(result.err.startsWith(reason), qPrintable(result.err));
    QCOMPARE(result.out, QString());
}

QTEST_GUILESS_MAIN(LintCommand)
#include "tst_lint.moc"
