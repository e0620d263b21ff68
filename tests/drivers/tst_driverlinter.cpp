// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "lintfixtures.h"
#include "support/labelfixtures.h"
#include "support/logrecorder.h"

#include <QFile>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

namespace {

constexpr int noLine = 0;

/// A driver without a fault: D, and the bits of D.
DriverText goodDriver()
{
    DriverText driver;
    driver.source = QStringLiteral("good.tsv");
    driver.stem = QStringLiteral("good");
    driver.name = QStringLiteral("Good");
    driver.nameLine = 1;
    driver.headerLine = 4;
    driver.blockSize = QStringLiteral("64");
    driver.bitBlockSize = QStringLiteral("256");
    driver.columns = driverColumns();
    const QStringList rows = {QStringLiteral("(D)(0*\\d{1,4}\\.(?:1[0-5]|0?\\d))|0|2|Dn.b: bit of a register, e.g. "
                                             "D7.5|D|0|9999|2|dot-dec:r||10|256|N"),
                              QStringLiteral("(D)(0*\\d{1,4})|2|2|D: register, e.g. D7|D|0|9999|2|||10|64|N"),
                              QStringLiteral("(M)(0*\\d{1,4})|0|2|M: relay, e.g. M7|M|0|9999|1|union-dec:n||10|256|N")};
    for (const QString &text : rows) {
        DriverRow row;
        row.line = 5 + driver.rows.size();
        row.fields = text.split(QLatin1Char('|'));
        // The separator is also in a pattern.
        if (row.fields.size() > 13)
            row.fields = QStringList{row.fields.at(0) + QLatin1Char('|') + row.fields.at(1)} + row.fields.mid(2);
        driver.rows.append(row);
    }
    return driver;
}

DriverSample accepted(const QString &address, const QString &symbol, int number, int bit, int step, const QString &next,
                      const QString &registerAddress = QString())
{
    DriverSample sample;
    sample.file = QStringLiteral("samples/good.tsv");
    sample.line = 3;
    sample.isAccepted = true;
    sample.address = address;
    sample.symbol = symbol;
    sample.number = number;
    sample.bit = bit;
    sample.step = step;
    sample.next = next;
    sample.registerAddress = registerAddress;
    return sample;
}

QList<DriverSample> goodSamples()
{
    DriverSample refused;
    refused.address = QStringLiteral("D10000");
    return {
        accepted(QStringLiteral("D0.15"), QStringLiteral("D"), 0, 15, 0, QStringLiteral("D1.0"), QStringLiteral("D0")),
        accepted(QStringLiteral("D9999"), QStringLiteral("D"), 9999, -1, 2, QString()),
        accepted(QStringLiteral("M7"), QStringLiteral("M"), 7, 0, 0, QStringLiteral("M8")), refused};
}

QList<LintFinding> lint(const DriverText &driver, const QList<DriverSample> &samples = {})
{
    const LogRecorder silence;
    DriverLinter linter;
    linter.add(driver, samples);
    return linter.findings();
}

QStringList ids(const QList<LintFinding> &findings)
{
    QStringList found;
    for (const LintFinding &finding : findings)
        found.append(QStringLiteral("%1:%2").arg(finding.row).arg(finding.id));
    return found;
}

/// A change of a field, and the findings of it, in order: "row:id".
struct Change
{
    const char *name;
    int row;
    const char *column;
    const char *text;
    const char *found;
};

const Change changes[] = {
    {"an end that the digits do not reach", 2, "end", "10000", "3:limit-unreached"},
    {"a start that the pattern leaves out", 2, "pattern", "(M)(0*[1-9]\\d{0,3})", "3:limit-unreached"},
    {"an end in front of the last bit", 0, "end", "7", "1:bits-cut"},
    {"a start behind the first bit", 0, "start", "1", "1:bits-cut"},
    {"digits without a bound", 1, "pattern", "(D)(\\d+)", "2:digits-unbounded"},
    {"a block larger than a read", 1, "blocksize", "65", "2:block-above-limit"},
    {"a block of bits larger than a read", 0, "blocksize", "257", "1:block-above-limit"},
    {"a pattern without numbers of the range", 1, "pattern", "(D)(7\\d{4})", "1:register-missing 2:example-refused"},
    {"a plain name where no family is", 1, "pattern", "REGISTER", "1:register-missing 2:family-unknown"},
    {"a description that stands twice", 1, "description", "M: relay, e.g. M7",
     "2:example-refused 3:doubled-description"},
    {"a group inside an alternative", 2, "pattern", "(M)(?:X|(0*\\d{1,4}))", "3:group-optional"},
    {"a group that may be repeated not at all", 2, "pattern", "(M)(0*\\d{1,4}){0,1}", "3:group-optional"},
    {"a part beside the group may be left out", 2, "pattern", "(M?M)(0*\\d{1,4})", ""},
    {"a hexadecimal bit behind a decimal rule", 0, "pattern", "(D)(0*\\d{1,4}\\.[0-9A-F])", "1:bit-radix"},
    {"a bit beyond the word", 0, "pattern", "(D)(0*\\d{1,4}\\.\\d{1,2})", "1:bit-radix"},
    {"fewer bits than the rule steps to", 0, "pattern", "(D)(0*\\d{1,4}\\.[0-7])", "1:bit-radix"},
    {"bits of double words", 0, "multiple_rule", "dot-31:r", "1:bit-radix"},
    {"bits to 15 by another word", 0, "multiple_rule", "dot-15:r", ""},
    {"a register of another symbol", 0, "multiple_rule", "dot-dec:r_M", "1:register-missing"},
    {"a one-part bit whose register has no number", 2, "multiple_rule", "union-dec:r", "3:rule-word"},
    {"a unit that is too small for the bits", 1, "data_size", "1", "1:register-narrow"},
    {"a continue rule in words", 1, "continue", "yes", "2:continue"},
    {"a rule for wide text", 1, "multiple_rule", "n", ""},
    {"an end that is above any number", 2, "end", "2147483648", "3:limit-not-number"},
    {"octal limits in decimal", 2, "base", "8", "3:limit-not-number"},
    {"an end in upper case hexadecimal digits", 2, "base", "16", ""},
    {"an aligned row", 1, "multiple_rule", "m16", "1:register-missing 2:example-refused"},
    {"a description without an example", 1, "description", "D: register", ""},
    {"an example that is none", 1, "description", "D: register, e.g. of a robot", ""},
    {"no symbol", 2, "prefix_symbol", "", ""},
};

} // namespace

class TestDriverLinter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { bringScriptsHere(); }
    void goodDriverHasNoFindings();
    void changeIsFound_data();
    void changeIsFound();
    void settingIsFound_data();
    void settingIsFound();
    void wrongSampleIsFound_data();
    void wrongSampleIsFound();
    void rowWithoutSampleIsAWarning();
    void bitAndRegisterMayBeWrittenAlike();
    void readOfWordsHoldsTwiceAsManyBytes_data();
    void readOfWordsHoldsTwiceAsManyBytes();
    void fixedWidthIsFound_data();
    void fixedWidthIsFound();
    void upperCaseAloneIsFound();
    void doubledPatternIsFound();
    void doubledTablesAreFound();
    void shadowedRowShowsAnAddress();
    void orderIsFound_data();
    void orderIsFound();
    void overlapShowsAnAddressAndBothRows();
    void findingTellsItsPlace();
    void fileIsReadWithItsSamples_data();
    void fileIsReadWithItsSamples();
    void badFileIsNotExamined();
    void badSampleFileIsTold();
    void databaseIsRead();
    void foreignDatabaseIsJudged_data();
    void foreignDatabaseIsJudged();
};

void TestDriverLinter::goodDriverHasNoFindings()
{
    const QList<LintFinding> findings = lint(goodDriver(), goodSamples());
    QVERIFY2(findings.isEmpty(), told(findings).constData());
    QVERIFY(!hasErrors(findings));
}

void TestDriverLinter::changeIsFound_data()
{
    QTest::addColumn<int>("place");
    int place = 0;
    for (const Change &change : changes)
        QTest::newRow(change.name) << place++;
}

void TestDriverLinter::changeIsFound()
{
    QFETCH(int, place);
    const Change &change = changes[place];
    DriverText driver = goodDriver();
    setField(driver, change.row, QLatin1String(change.column), QString(QLatin1String(change.text)));
    const QList<LintFinding> findings = lint(driver);
    QVERIFY2(ids(findings).join(QLatin1Char(' ')) == QLatin1String(change.found), told(findings).constData());
}

void TestDriverLinter::settingIsFound_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("blockSize");
    QTest::addColumn<QString>("found");
    QTest::newRow("no name") << QString() << QStringLiteral("64") << QStringLiteral("0:bad-value");
    QTest::newRow("an apostrophe in the name")
        << QStringLiteral("Joe's") << QStringLiteral("64") << QStringLiteral("0:driver-name");
    QTest::newRow("blocks of nothing") << QStringLiteral("D") << QStringLiteral("0")
                                       << QStringLiteral("0:driver-limit");
    QTest::newRow("no block size") << QStringLiteral("D") << QString() << QStringLiteral("0:bad-value");
    QTest::newRow("a block size in words")
        << QStringLiteral("D") << QStringLiteral("many") << QStringLiteral("0:bad-value");
}

void TestDriverLinter::settingIsFound()
{
    QFETCH(QString, name);
    QFETCH(QString, blockSize);
    QFETCH(QString, found);
    DriverText driver = goodDriver();
    driver.name = name;
    driver.blockSize = blockSize;
    const QList<LintFinding> findings = lint(driver);
    QVERIFY2(ids(findings).join(QLatin1Char(' ')) == found, told(findings).constData());
}

void TestDriverLinter::wrongSampleIsFound_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("found");
    QTest::addColumn<QString>("column");
    QTest::newRow("an address that is refused") << 0 << QStringLiteral("1:sample-refused") << QStringLiteral("pattern");
    QTest::newRow("an address that is accepted")
        << 1 << QStringLiteral("1:sample-accepted") << QStringLiteral("pattern");
    QTest::newRow("another symbol") << 2 << QStringLiteral("1:sample-symbol") << QStringLiteral("prefix_symbol");
    QTest::newRow("another number") << 3 << QStringLiteral("1:sample-number") << QStringLiteral("address_group_index");
    QTest::newRow("another bit") << 4 << QStringLiteral("1:sample-bit") << QStringLiteral("multiple_rule");
    QTest::newRow("another neighbour") << 5 << QStringLiteral("1:sample-next") << QStringLiteral("multiple_rule");
    QTest::newRow("another register") << 6 << QStringLiteral("1:sample-register") << QStringLiteral("multiple_rule");
    QTest::newRow("no neighbour") << 7 << QStringLiteral("1:sample-next") << QStringLiteral("multiple_rule");
}

void TestDriverLinter::wrongSampleIsFound()
{
    QFETCH(int, kind);
    QFETCH(QString, found);
    QFETCH(QString, column);
    QList<DriverSample> samples = goodSamples();
    DriverSample sample = samples.first();
    switch (kind) {
    case 0:
        sample.address = QStringLiteral("D0.16");
        break;
    case 1:
        sample.isAccepted = false;
        break;
    case 2:
        sample.symbol = QStringLiteral("E");
        break;
    case 3:
        sample.number = 1;
        break;
    case 4:
        sample.bit = 14;
        break;
    case 5:
        sample.next = QStringLiteral("D0.16");
        break;
    case 6:
        sample.registerAddress = QStringLiteral("D1");
        break;
    default:
        sample.next.clear();
        break;
    }
    samples.append(sample);
    const QList<LintFinding> findings = lint(goodDriver(), samples);
    QVERIFY2(ids(findings).join(QLatin1Char(' ')) == found, told(findings).constData());
    QCOMPARE(findings.first().column, column);
    QCOMPARE(findings.first().source, QStringLiteral("samples/good.tsv"));
    QCOMPARE(findings.first().line, 3);
    QVERIFY(findings.first().isError());
}

void TestDriverLinter::rowWithoutSampleIsAWarning()
{
    const QList<LintFinding> findings = lint(goodDriver(), goodSamples().mid(1));
    QCOMPARE(ids(findings), QStringList(QStringLiteral("1:no-sample")));
    QVERIFY(!findings.first().isError());
    QVERIFY(!hasErrors(findings));
}

void TestDriverLinter::bitAndRegisterMayBeWrittenAlike()
{
    DriverText driver = goodDriver();
    DriverRow row = driver.rows.at(2);
    driver.rows.append(row);
    setField(driver, 3, QStringLiteral("type"), QStringLiteral("2"));
    setField(driver, 3, QStringLiteral("multiple_rule"), QString());
    setField(driver, 3, QStringLiteral("blocksize"), QStringLiteral("64"));
    setField(driver, 3, QStringLiteral("description"), QStringLiteral("M: value"));
    const QList<LintFinding> findings = lint(driver);
    QVERIFY2(findings.isEmpty(), told(findings).constData());
}

void TestDriverLinter::readOfWordsHoldsTwiceAsManyBytes_data()
{
    QTest::addColumn<QString>("blocksize");
    QTest::addColumn<QStringList>("found");
    QTest::newRow("as many bytes as words hold") << QStringLiteral("128") << QStringList();
    QTest::newRow("one more") << QStringLiteral("129") << QStringList{QStringLiteral("4:block-above-limit")};
}

void TestDriverLinter::readOfWordsHoldsTwiceAsManyBytes()
{
    QFETCH(QString, blocksize);
    QFETCH(QStringList, found);
    DriverText driver = goodDriver();
    driver.rows.append(driver.rows.at(1));
    const QList<QPair<const char *, QString>> fields = {{"pattern", QStringLiteral("(B)(0*\\d{1,4})")},
                                                        {"type", QStringLiteral("1")},
                                                        {"description", QStringLiteral("B: byte, e.g. B7")},
                                                        {"prefix_symbol", QStringLiteral("B")},
                                                        {"data_size", QStringLiteral("1")},
                                                        {"blocksize", blocksize}};
    for (const auto &field : fields)
        setField(driver, 3, QLatin1String(field.first), field.second);
    const QList<LintFinding> findings = lint(driver);
    QVERIFY2(ids(findings) == found, told(findings).constData());
}

void TestDriverLinter::fixedWidthIsFound_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("description");
    QTest::addColumn<QString>("written");
    QTest::newRow("of a register's number") << 1 << QStringLiteral("(D)(\\d{4})") << QStringLiteral("D: e.g. D0007")
                                            << QStringLiteral("runs and blocks write D0007 as D7, ");
    QTest::newRow("of a bit's number") << 2 << QStringLiteral("(M)(\\d{4})") << QStringLiteral("M: e.g. M0007")
                                       << QStringLiteral("runs and blocks write M0007 as M7, ");
    QTest::newRow("of a bit's word") << 0 << QStringLiteral("(D)(\\d{4}\\.(?:1[0-5]|0?\\d))")
                                     << QStringLiteral("Dn.b: e.g. D0007.5")
                                     << QStringLiteral("runs and blocks write D0007.5 as D7.5, ");
    QTest::newRow("of a bit") << 0 << QStringLiteral("(D)(0*\\d{1,4}\\.(?:1[0-5]|0\\d))")
                              << QStringLiteral("Dn.b: e.g. D7.05")
                              << QStringLiteral("runs and blocks write D7.05 as D7.5, ");
}

void TestDriverLinter::fixedWidthIsFound()
{
    QFETCH(int, row);
    QFETCH(QString, pattern);
    QFETCH(QString, description);
    QFETCH(QString, written);
    DriverText driver = goodDriver();
    setField(driver, row, QStringLiteral("pattern"), pattern);
    setField(driver, row, QStringLiteral("description"), description);
    const QList<LintFinding> findings = lint(driver);
    const LintFinding *const found =
        findingOf(findings, QStringLiteral("run-refused"), row + 1, QStringLiteral("pattern"));
    QVERIFY2(found, told(findings).constData());
    QVERIFY2(found->what.startsWith(written), qPrintable(found->what));
    QVERIFY(found->isError());
}

void TestDriverLinter::upperCaseAloneIsFound()
{
    DriverText driver = goodDriver();
    setField(driver, 2, QStringLiteral("pattern"), QStringLiteral("(M)(0*[0-9A-F]{1,4})"));
    setField(driver, 2, QStringLiteral("description"), QStringLiteral("M: relay, e.g. M1F"));
    setField(driver, 2, QStringLiteral("multiple_rule"), QStringLiteral("union-hex:n"));
    setField(driver, 2, QStringLiteral("base"), QStringLiteral("16"));
    const QList<LintFinding> findings = lint(driver);
    QVERIFY2(ids(findings) == QStringList(QStringLiteral("3:run-refused")), told(findings).constData());
    QCOMPARE(findings.first().what,
             QStringLiteral("runs and blocks write M1F as M1f, which the row does not accept as the same address"));
    QCOMPARE(findings.first().column, QStringLiteral("pattern"));
    QVERIFY(findings.first().isError());

    setField(driver, 2, QStringLiteral("pattern"), QStringLiteral("(M)(0*[0-9A-Fa-f]{1,4})"));
    QVERIFY2(lint(driver).isEmpty(), told(lint(driver)).constData());
}

void TestDriverLinter::doubledPatternIsFound()
{
    DriverText driver = goodDriver();
    driver.rows.append(driver.rows.at(2));
    setField(driver, 3, QStringLiteral("description"), QStringLiteral("M: again"));
    const QList<LintFinding> findings = lint(driver);
    QCOMPARE(ids(findings), QStringList(QStringLiteral("4:doubled-pattern")));
    QCOMPARE(findings.first().what, QStringLiteral("the pattern is already used in line 7"));
}

void TestDriverLinter::doubledTablesAreFound()
{
    const LogRecorder silence;
    DriverText other = goodDriver();
    other.name = QStringLiteral("Other");
    DriverLinter linter;
    linter.add(goodDriver());
    linter.add(other);
    QCOMPARE(ids(linter.findings()), QStringList(QStringLiteral("0:doubled-table")));
}

void TestDriverLinter::shadowedRowShowsAnAddress()
{
    DriverText driver = goodDriver();
    driver.rows.append(driver.rows.at(1));
    setField(driver, 3, QStringLiteral("pattern"), QStringLiteral("(D)(0*[1-9]\\d{0,3})"));
    setField(driver, 3, QStringLiteral("description"), QStringLiteral("D: again"));
    setField(driver, 3, QStringLiteral("start"), QStringLiteral("1"));
    const QList<LintFinding> findings = lint(driver);
    QCOMPARE(ids(findings), QStringList(QStringLiteral("4:row-shadowed")));
    QRegExp expected(QStringLiteral("the row is never used: D \\(line 6\\) accepts D\\d+ and all its other addresses"));
    QVERIFY2(expected.exactMatch(findings.first().what), qPrintable(findings.first().what));
}

namespace {

/// A register row of the symbol R.
struct RegisterRow
{
    const char *pattern;
    const char *start;
    const char *end;
    const char *rule = "";
    const char *base = "10";
    const char *type = "2";
};

const RegisterRow fewDigits = {"(R)(0*\\d{1,2})", "0", "99"};
const RegisterRow noZeros = {"(R)([1-9]\\d{0,3}|0)", "0", "9999"};
const RegisterRow wideNoZeros = {"(R)([1-9]\\d{0,3}|0)", "0", "9999", "", "10", "3"};

DriverText driverWith(const QList<RegisterRow> &rows)
{
    DriverText driver = goodDriver();
    for (const RegisterRow &row : rows) {
        DriverRow added = driver.rows.at(1);
        added.line = 5 + driver.rows.size();
        driver.rows.append(added);
        const int index = driver.rows.size() - 1;
        setField(driver, index, QStringLiteral("pattern"), QString::fromLatin1(row.pattern));
        setField(driver, index, QStringLiteral("type"), QString::fromLatin1(row.type));
        setField(driver, index, QStringLiteral("data_size"),
                 QLatin1String(row.type) == QLatin1String("3") ? QStringLiteral("4") : QStringLiteral("2"));
        setField(driver, index, QStringLiteral("description"), QStringLiteral("R%1: register").arg(index));
        setField(driver, index, QStringLiteral("prefix_symbol"), QStringLiteral("R"));
        setField(driver, index, QStringLiteral("start"), QString::fromLatin1(row.start));
        setField(driver, index, QStringLiteral("end"), QString::fromLatin1(row.end));
        setField(driver, index, QStringLiteral("multiple_rule"), QString::fromLatin1(row.rule));
        setField(driver, index, QStringLiteral("base"), QString::fromLatin1(row.base));
    }
    return driver;
}

} // namespace

Q_DECLARE_METATYPE(RegisterRow)

void TestDriverLinter::orderIsFound_data()
{
    QTest::addColumn<QList<RegisterRow>>("rows");
    QTest::addColumn<QString>("found");
    const RegisterRow plain = {"(R)(0*\\d{1,4})", "0", "9999"};
    const RegisterRow lower = {"(R)(0*\\d{1,5})", "0", "4999"};
    const auto add = [](const char *name, const QList<RegisterRow> &rows, const char *found) {
        QTest::newRow(name) << rows << QString::fromLatin1(found);
    };
    add("two rows take all addresses", {lower, {"(R)(0*\\d{1,6})", "5000", "9999"}, plain}, "6:row-shadowed");
    add("two rows leave one number", {lower, {"(R)(0*\\d{1,6})", "5001", "9999"}, plain}, "");
    add("a pattern leaves one text", {{"(R)(?!1234$)(0*\\d{1,5})", "0", "9999"}, plain}, "");
    add("a pattern leaves one text that the limits refuse",
        {{"(R)(?!1234$)(0*\\d{1,5})", "0", "1000"}, {"(R)(0*\\d{1,4})", "0", "1000"}}, "5:row-shadowed");
    add("a pattern has several places for the number", {{"(R0*)(\\d{1,5})", "0", "9999"}, plain}, "");
    add("a multiple of 16 is one of 8",
        {{"(R)(0*\\d{1,5})", "0", "9999", "m8"}, {"(R)(0*\\d{1,4})", "0", "9984", "m16"}}, "5:row-shadowed");
    add("a multiple of 8 need not be one of 16",
        {{"(R)(0*\\d{1,5})", "0", "9999", "m16"}, {"(R)(0*\\d{1,4})", "0", "9992", "m8"}}, "");
    add("the same limit in another radix",
        {{"(R)(0*[0-9A-Fa-f]{1,5})", "0", "9999", "", "16"}, {"(R)(0*\\d{1,4})", "0", "9999"}}, "5:row-shadowed");
    add("the same number in another radix",
        {{"(R)(0*[0-9A-Fa-f]{1,5})", "0", "270f", "", "16"}, {"(R)(0*\\d{1,4})", "0", "9999"}}, "");
    add("two forms of one register", {fewDigits, noZeros}, "");
    add("two forms of two registers", {fewDigits, wideNoZeros}, "5:row-overlaps");
    add("two forms of two registers without a common number",
        {fewDigits, {"(R)([1-9]\\d{0,3}|0)", "100", "9999", "", "10", "3"}}, "");
    add("two forms of which the limits make one a part of the other",
        {fewDigits, {"(R)([1-9]\\d{0,3}|0)", "10", "99", "", "10", "3"}}, "5:row-shadowed");
    add("a special register in front of the others",
        {{"(R)(0*\\d{1,4})", "100", "199", "", "10", "3"}, {"(R)(0*\\d{1,5})", "0", "9999"}}, "");
    add("a pattern without automaton", {{"\\b(R)(0*\\d{1,5})", "0", "9999"}, plain}, "");
    add("an overlap that an earlier row takes", {{"(R)(0*\\d{1,3})", "0", "99", "", "10", "3"}, fewDigits, wideNoZeros},
        "5:row-shadowed");
}

void TestDriverLinter::orderIsFound()
{
    QFETCH(QList<RegisterRow>, rows);
    QFETCH(QString, found);
    const QList<LintFinding> findings = lint(driverWith(rows));
    QVERIFY2(ids(findings).join(QLatin1Char(' ')) == found, told(findings).constData());
}

void TestDriverLinter::overlapShowsAnAddressAndBothRows()
{
    const QList<LintFinding> findings = lint(driverWith({fewDigits, wideNoZeros}));
    QCOMPARE(ids(findings), QStringList(QStringLiteral("5:row-overlaps")));
    QVERIFY(!findings.first().isError());
    QCOMPARE(findings.first().line, 9);
    QCOMPARE(findings.first().column, QStringLiteral("pattern"));
    QCOMPARE(findings.first().what,
             QStringLiteral("R3 (line 8) and R4 (line 9) both accept R0 and read it differently; "
                            "R3 (line 8) comes first and takes it"));
}

void TestDriverLinter::findingTellsItsPlace()
{
    DriverText driver = goodDriver();
    setField(driver, 1, QStringLiteral("blocksize"), QStringLiteral("0"));
    QCOMPARE(lint(driver).first().toString(),
             QStringLiteral("good.tsv:6: error: 'blocksize' is 0: at least one unit must fit into a block; give the "
                            "most units of one block, at least 1; with less no block can be read [block-size]"));
    for (DriverRow &row : driver.rows)
        row.line = noLine;
    driver.nameLine = noLine;
    driver.source = QStringLiteral("drivers.db");
    const QString text = lint(driver).first().toString();
    QVERIFY2(text.startsWith(QLatin1String("drivers.db: driver 'Good', row 2 '(D)(0*\\d{1,4})': error: 'blocksize'")),
             qPrintable(text));
    driver.bitBlockSize = QStringLiteral("0");
    QVERIFY2(lint(driver).first().toString().startsWith(QLatin1String("drivers.db: driver 'Good': error: ")),
             qPrintable(lint(driver).first().toString()));
}

namespace {

void writeFile(const QString &path, const QByteArray &text)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        qFatal("cannot write %s", qPrintable(path));
}

QByteArray sampleText()
{
    return "verdict\taddress\tfilter\tsymbol\tnumber\tbit\tstep\tnext\tregister\n"
           "# and a comment\n"
           "accept\tD0.15\tbit\tD\t0\t15\tbit\tD1.0\tD0\n"
           "accept\tD1\tregister\tD\t1\t-1\tdword\tD3\t-\n"
           "accept\tM1\tany\tM\t1\t0\tbit\tM2\t-\n"
           "refuse\tX1\tany\t-\t-\t-\t-\t-\t-\n";
}

} // namespace

void TestDriverLinter::fileIsReadWithItsSamples_data()
{
    QTest::addColumn<QString>("samples");
    QTest::addColumn<QString>("sampleFolder");
    QTest::addColumn<int>("count");
    QTest::newRow("no samples") << QStringLiteral("else/other.tsv") << QString() << 0;
    QTest::newRow("samples in their folder") << QStringLiteral("samples/good.tsv") << QString() << 4;
    QTest::newRow("samples beside the file") << QStringLiteral("good.samples.tsv") << QString() << 4;
    QTest::newRow("samples in a folder that is named")
        << QStringLiteral("else/good.tsv") << QStringLiteral("else") << 4;
}

void TestDriverLinter::fileIsReadWithItsSamples()
{
    QFETCH(QString, samples);
    QFETCH(QString, sampleFolder);
    QFETCH(int, count);
    const LogRecorder silence;
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("good.tsv"));
    writeFile(path, driverFileText(goodDriver()));
    writeFile(folder.filePath(samples), sampleText());
    DriverLinter linter;

    linter.addFile(path, sampleFolder.isEmpty() ? QString() : folder.filePath(sampleFolder));

    const QList<LintFinding> findings = linter.findings();
    QVERIFY2(findings.isEmpty(), told(findings).constData());
    QCOMPARE(linter.countSamples(), count);
    QCOMPARE(linter.drivers().size(), 1);
}

void TestDriverLinter::badFileIsNotExamined()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("bad.tsv"));
    DriverText driver = goodDriver();
    setField(driver, 0, QStringLiteral("end"), QString());
    setField(driver, 1, QStringLiteral("start"), QStringLiteral("10000"));
    writeFile(path, driverFileText(driver));
    DriverLinter linter;
    linter.addFile(path);
    const QList<LintFinding> findings = linter.findings();
    QCOMPARE(ids(findings), QStringList(QStringLiteral("0:form")));
    QVERIFY2(findings.first().toString().startsWith(path + QLatin1String(":5: error: 'end' is empty")),
             qPrintable(findings.first().toString()));
    QVERIFY(linter.drivers().isEmpty());
}

void TestDriverLinter::badSampleFileIsTold()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("good.tsv"));
    const QString samples = folder.filePath(QStringLiteral("samples/good.tsv"));
    writeFile(path, driverFileText(goodDriver()));
    writeFile(samples, sampleText() + "perhaps\tD1\tany\t-\t-\t-\t-\t-\t-\n"
                                      "accept\tD1\tall\tD\tx\ty\tweek\tD2\t-\n"
                                      "refuse\tD1\n");
    DriverLinter linter;
    linter.addFile(path);
    QStringList texts;
    const QList<LintFinding> findings = linter.findings();
    for (const LintFinding &finding : findings) {
        QCOMPARE(finding.source, samples);
        QVERIFY(finding.isError());
        texts.append(QStringLiteral("%1: %2").arg(finding.line).arg(finding.what));
    }
    QCOMPARE(texts, QStringList({QStringLiteral("7: the verdict 'perhaps' is neither accept nor refuse"),
                                 QStringLiteral("8: the filter 'all' is not one of any, bit, register"),
                                 QStringLiteral("8: the number 'x' is not valid"),
                                 QStringLiteral("8: the bit 'y' is not a number"),
                                 QStringLiteral("8: the step 'week' is not one of bit, byte, word, dword, qword, text"),
                                 QStringLiteral("9: 2 columns, but a sample has 9")}));
}

void TestDriverLinter::databaseIsRead()
{
    const LogRecorder silence;
    const QTemporaryDir folder;
    const QString database = folder.filePath(QStringLiteral("drivers"));
    DriverText other = goodDriver();
    other.name = QStringLiteral("Other");
    other.stem = QStringLiteral("other");
    setField(other, 1, QStringLiteral("end"), QStringLiteral("none"));
    QString error;
    QVERIFY(writeDriverDatabase(database, {goodDriver(), other}, error));
    writeFile(folder.filePath(QStringLiteral("samples/good.tsv")), sampleText());

    DriverLinter all;
    QVERIFY(all.addDatabase(database, {}, error, folder.filePath(QStringLiteral("samples"))));
    QCOMPARE(all.countSamples(), 4);
    const QList<LintFinding> findings = all.findings();
    QVERIFY2(findingOf(findings, QStringLiteral("limit-not-number"), 2, QStringLiteral("end")),
             told(findings).constData());
    QCOMPARE(findings.first().driver, QStringLiteral("Other"));

    DriverLinter good;
    QVERIFY(good.addDatabase(database, {QStringLiteral("Good")}, error));
    QVERIFY(good.findings().isEmpty());

    DriverLinter none;
    QVERIFY(!none.addDatabase(database, {QStringLiteral("Best")}, error));
    QCOMPARE(error, QStringLiteral("there is no driver \"Best\" in ") + database);
    QVERIFY(!none.addDatabase(folder.filePath(QStringLiteral("gone")), {}, error));
}

void TestDriverLinter::foreignDatabaseIsJudged_data()
{
    QTest::addColumn<QString>("statement");
    QTest::addColumn<QString>("found");
    QTest::newRow("as it was made") << QStringLiteral("SELECT 1") << QString();
    QTest::newRow("a device table that is not there")
        << QStringLiteral("DROP TABLE good_types") << QStringLiteral("0:table-missing");
    QTest::newRow("a general table that is not there")
        << QStringLiteral("DROP TABLE good_general") << QStringLiteral("0:bad-value 0:bad-value");
    QTest::newRow("a name that is a word of SQL")
        << QStringLiteral("UPDATE table_index SET device_table = 'select'") << QStringLiteral("0:table-name");
    QTest::newRow("a table without rows") << QStringLiteral("DELETE FROM good_types") << QStringLiteral("0:no-rows");
    QTest::newRow("a second entry of the driver")
        << QStringLiteral("INSERT INTO table_index SELECT * FROM table_index") << QStringLiteral("0:doubled-driver");
    QTest::newRow("a driver that has been switched back")
        << QStringLiteral("INSERT INTO table_index VALUES ('Back', '', '')") << QString();
    QTest::newRow("a continue rule in words") << QStringLiteral("UPDATE good_types SET continue = 'Yes'") << QString();
    QTest::newRow("no continue column") << QStringLiteral(
                                               "ALTER TABLE good_types RENAME COLUMN \"continue\" TO further")
                                        << QString();
    QTest::newRow("a field without a value") << QStringLiteral("UPDATE good_types SET \"end\" = NULL WHERE type = 2")
                                             << QStringLiteral("1:register-missing 2:bad-value");
    QTest::newRow("a column without a reader")
        << QStringLiteral("ALTER TABLE good_types ADD COLUMN colour TEXT") << QString();
}

void TestDriverLinter::foreignDatabaseIsJudged()
{
    QFETCH(QString, statement);
    QFETCH(QString, found);
    const LogRecorder silence;
    const QTemporaryDir folder;
    const QString database = folder.filePath(QStringLiteral("theirs"));
    QString error;
    QVERIFY(writeDriverDatabase(database, {goodDriver()}, error));
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("theirs"));
        db.setDatabaseName(database);
        QVERIFY(db.open());
        QSqlQuery query(db);
        QVERIFY2(query.exec(statement), qPrintable(query.lastError().text()));
    }
    QSqlDatabase::removeDatabase(QStringLiteral("theirs"));
    DriverLinter linter;
    QVERIFY(linter.addDatabase(database, {}, error));
    const QList<LintFinding> findings = linter.findings();
    QVERIFY2(ids(findings).join(QLatin1Char(' ')) == found, told(findings).constData());
}

QTEST_GUILESS_MAIN(TestDriverLinter)
#include "tst_driverlinter.moc"
