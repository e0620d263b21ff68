// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "lintfixtures.h"
#include "support/labelfixtures.h"
#include "support/logrecorder.h"

#include "zelmar_label/address_grammar/multiplerule.h"

#include <QFile>
#include <QRegExp>
#include <QTest>

#include <functional>
#include <optional>

namespace {

/// A driver to break, and its scripts.
struct Subject
{
    DriverText driver;
    QList<DriverSample> samples;
    QString script;

    QString field(int row, const char *column) const
    {
        return driver.field(driver.rows.at(row), QLatin1String(column));
    }
    void set(int row, const char *column, const QString &text) { setField(driver, row, QLatin1String(column), text); }
};

bool isTemplate(const Subject &subject, int row)
{
    return QRegExp(subject.field(row, "pattern")).captureCount() == 0;
}

bool isBit(const Subject &subject, int row)
{
    return subject.field(row, "type") == QLatin1String("0");
}

bool isScripted(const Subject &subject, int row)
{
    return subject.field(row, "multiple_rule").startsWith(QLatin1String("F>"));
}

label::MultipleRule ruleOf(const Subject &subject, int row)
{
    return label::MultipleRule(subject.field(row, "multiple_rule"));
}

bool isAnyRow(const Subject &, int)
{
    return true;
}

bool isFixedRow(const Subject &subject, int row)
{
    return !isTemplate(subject, row);
}

bool hasExample(const Subject &subject, int row)
{
    return isFixedRow(subject, row) && subject.field(row, "description").contains(QLatin1String("e.g. "));
}

/// The number's group is the last one, with nothing after it.
bool endsInItsGroup(const Subject &subject, int row)
{
    const QString pattern = subject.field(row, "pattern");
    return isFixedRow(subject, row) && pattern.endsWith(QLatin1Char(')')) &&
           subject.field(row, "address_group_index").toInt() == QRegExp(pattern).captureCount() &&
           pattern.lastIndexOf(QLatin1String("(?:")) < pattern.lastIndexOf(QLatin1String(")("));
}

/// The number may have any leading zeros.
bool hasPlainDigits(const Subject &subject, int row)
{
    return isFixedRow(subject, row) && !isScripted(subject, row) &&
           subject.field(row, "pattern").contains(QLatin1String("(0*\\d"));
}

bool isRuledBit(const Subject &subject, int row)
{
    return isBit(subject, row) && !isScripted(subject, row);
}

bool isFixedSplitBit(const Subject &subject, int row)
{
    const label::MultipleRule rule = ruleOf(subject, row);
    return isRuledBit(subject, row) && isFixedRow(subject, row) && rule.isSplit() &&
           rule.text.startsWith(QLatin1String("dot-"));
}

bool isConvertingBit(const Subject &subject, int row)
{
    return isRuledBit(subject, row) && isFixedRow(subject, row) && ruleOf(subject, row).canConvertToRegister();
}

bool isRuledRegister(const Subject &subject, int row)
{
    return !isBit(subject, row) && !isScripted(subject, row);
}

bool hasLongRule(const Subject &subject, int row)
{
    return !isScripted(subject, row) && subject.field(row, "multiple_rule").size() > 2;
}

/// More than one number, which no script reads.
bool hasNumbersForTwo(const Subject &subject, int row)
{
    return isFixedRow(subject, row) && !isScripted(subject, row) &&
           subject.field(row, "start") != subject.field(row, "end");
}

bool isFixedBitOrScript(const Subject &subject, int row)
{
    return isFixedRow(subject, row) && isBit(subject, row);
}

void useScript(Subject &subject, int row, const QString &text)
{
    subject.script = QStringLiteral("mutant.js");
    writeScript(subject.script, text);
    subject.set(row, "multiple_rule", QStringLiteral("F>mutant.js"));
}

QString workingScript()
{
    return QStringLiteral("function init() { canConvertToRegister = false; }\n"
                          "function getAddressRange(address) { return 0; }\n"
                          "function bitoffset(address) { return 0; }\n"
                          "function convertToRegisterAddress(address) { return ''; }\n"
                          "function makeBitContinueCommand(address, count, step) { return [address]; }\n");
}

/// A way to break a driver, and the expected finding.
struct Mutation
{
    const char *name;
    const char *id;
    const char *column;
    bool (*applies)(const Subject &, int);
    /// Returns the row of the finding, from 1; 0 for the whole driver.
    std::function<int(Subject &, int)> breakRow;
    bool needsSamples = false;
    /// Another form of the previous fault, tested on one driver only.
    bool isVariant = false;
};

std::function<int(Subject &, int)> setting(const char *column, const char *text)
{
    return [column, text](Subject &subject, int row) {
        subject.set(row, column, QString(QLatin1String(text)));
        return row + 1;
    };
}

int crossLimits(Subject &subject, int row)
{
    const int base = subject.field(row, "base").toInt();
    const QString end = subject.field(row, "end");
    subject.set(row, "start", QString::number(end.toInt(nullptr, base) + 1, base));
    return row + 1;
}

int contradictAlignment(Subject &subject, int row)
{
    const int start = subject.field(row, "start").toInt(nullptr, subject.field(row, "base").toInt());
    subject.set(row, "multiple_rule", start % 16 == 0 ? QStringLiteral("m16a1") : QStringLiteral("m16"));
    return row + 1;
}

int misfitRadix(Subject &subject, int row)
{
    QString rule = subject.field(row, "multiple_rule");
    rule.replace(QRegExp(QStringLiteral("-\\w+:")),
                 rule.contains(QLatin1String("-oct:")) ? QStringLiteral("-dec:") : QStringLiteral("-oct:"));
    subject.set(row, "multiple_rule", rule);
    return row + 1;
}

/// A row before this one with the same addresses, but another pattern text.
int shadow(Subject &subject, int row)
{
    subject.driver.rows.insert(row, subject.driver.rows.at(row));
    subject.set(row, "pattern", QStringLiteral("(?:%1)").arg(subject.field(row, "pattern")));
    subject.set(row, "description", QStringLiteral("greedy"));
    return row + 2;
}

/// Two rows before this one, each with half of its numbers.
int shadowByTwo(Subject &subject, int row)
{
    const int base = subject.field(row, "base").toInt();
    const int first = subject.field(row, "start").toInt(nullptr, base);
    const int last = subject.field(row, "end").toInt(nullptr, base);
    const int middle = first + (last - first) / 2;
    const QString pattern = subject.field(row, "pattern");
    subject.driver.rows.insert(row, subject.driver.rows.at(row));
    subject.set(row, "pattern", QStringLiteral("(?:%1)").arg(pattern));
    subject.set(row, "description", QStringLiteral("greedy below"));
    subject.set(row, "end", QString::number(middle, base));
    subject.driver.rows.insert(row + 1, subject.driver.rows.at(row + 1));
    subject.set(row + 1, "pattern", QStringLiteral("(?:(?:%1))").arg(pattern));
    subject.set(row + 1, "description", QStringLiteral("greedy above"));
    subject.set(row + 1, "start", QString::number(middle + 1, base));
    return row + 3;
}

int convertToNowhere(Subject &subject, int row)
{
    const QString rule = subject.field(row, "multiple_rule").section(QLatin1Char('_'), 0, 0);
    subject.set(row, "multiple_rule", rule + QLatin1String("_NOWHERE"));
    return row + 1;
}

int removeRow(Subject &subject, int row)
{
    subject.driver.rows.removeAt(row);
    return 0;
}

int removeColumn(Subject &subject, int)
{
    const int place = subject.driver.columns.indexOf(QStringLiteral("data_size"));
    subject.driver.columns.removeAt(place);
    for (DriverRow &row : subject.driver.rows)
        row.fields.removeAt(place);
    return 0;
}

int breakTableName(Subject &subject, int)
{
    subject.driver.generalTable = QStringLiteral("general");
    subject.driver.deviceTable = QStringLiteral("types-of-it");
    return 0;
}

int nameScriptByAccident(Subject &subject, int row)
{
    subject.script = subject.field(row, "multiple_rule").mid(2);
    writeScript(subject.script, workingScript());
    return row + 1;
}

int throwInScript(Subject &subject, int row)
{
    useScript(subject, row, QStringLiteral("var one = 1;\nthrow new Error('out of order');\n"));
    return row + 1;
}

int throwInFunction(Subject &subject, int row)
{
    useScript(subject, row, workingScript() + QLatin1String("function bitoffset(address) { return nothing.at(0); }\n"));
    return row + 1;
}

int lackFunction(Subject &subject, int row)
{
    useScript(subject, row, workingScript().remove(QRegExp(QStringLiteral("function bitoffset[^\n]*\n"))));
    return row + 1;
}

int alignToNothing(Subject &subject, int row)
{
    useScript(subject, row,
              workingScript() + QLatin1String("function init() { needAligment = true; aligmentSize = 0; }\n"));
    return row + 1;
}

int answerWrongly(Subject &subject, int row)
{
    const QString start = subject.field(row, "start");
    const int first = start.toInt(nullptr, subject.field(row, "base").toInt());
    useScript(subject, row,
              workingScript() + QStringLiteral("function getAddressRange(address) { return %1; }\n").arg(first));
    return row + 1;
}

QList<Mutation> mutations()
{
    return {
        {"a pattern that does not compile", "pattern-invalid", "pattern", isFixedRow,
         [](Subject &subject, int row) {
             subject.set(row, "pattern", subject.field(row, "pattern") + QLatin1String("(?:"));
             return row + 1;
         }},
        {"a group that is not there", "group-missing", "address_group_index", isAnyRow,
         setting("address_group_index", "7")},
        {"group 0", "group-missing", "address_group_index", isAnyRow, setting("address_group_index", "0"), false, true},
        {"an optional group", "group-optional", "pattern", endsInItsGroup,
         [](Subject &subject, int row) {
             subject.set(row, "pattern", subject.field(row, "pattern") + QLatin1Char('?'));
             return row + 1;
         }},
        {"a pattern with leading zeros alone", "run-refused", "pattern", hasPlainDigits,
         [](Subject &subject, int row) {
             QString pattern = subject.field(row, "pattern");
             subject.set(row, "description", QStringLiteral("nothing but zeros in front"));
             subject.set(row, "pattern", pattern.replace(QLatin1String("(0*\\d"), QLatin1String("(00*\\d")));
             return row + 1;
         }},
        {"a pattern that refuses its example", "example-refused", "pattern", hasExample,
         [](Subject &subject, int row) {
             subject.set(row, "pattern", QLatin1Char('!') + subject.field(row, "pattern"));
             return row + 1;
         }},
        {"a start that is no number", "limit-not-number", "start", isAnyRow, setting("start", "first")},
        {"an end that is no number", "limit-not-number", "end", isAnyRow, setting("end", "9g")},
        {"an end that is too large", "limit-not-number", "end", isAnyRow, setting("end", "77777777777777"), false,
         true},
        {"a start above the end", "limits-crossed", "start", isAnyRow, crossLimits},
        {"a plain rule on a bit row", "bit-rule-plain", "multiple_rule", isRuledBit, setting("multiple_rule", "m8")},
        {"no rule on a bit row", "bit-rule-plain", "multiple_rule", isRuledBit, setting("multiple_rule", ""), false,
         true},
        {"an unknown separator", "rule-word", "multiple_rule", isRuledBit, setting("multiple_rule", "colon-dec:r")},
        {"an unknown radix", "rule-word", "multiple_rule", isRuledBit, setting("multiple_rule", "dot-roman:r"), false,
         true},
        {"an unknown tail", "rule-word", "multiple_rule", isRuledBit, setting("multiple_rule", "dot-dec:x"), false,
         true},
        {"an unknown plain word", "rule-word", "multiple_rule", isRuledRegister, setting("multiple_rule", "m12")},
        {"a bit radix that does not fit", "bit-radix", "multiple_rule", isFixedSplitBit, misfitRadix},
        {"a block size of 0", "block-size", "blocksize", isAnyRow, setting("blocksize", "0")},
        {"a block size below 0", "block-size", "blocksize", isAnyRow, setting("blocksize", "-3"), false, true},
        {"a unit without bytes", "data-size", "data_size", isAnyRow, setting("data_size", "0")},
        {"an alignment that the start misses", "alignment-start", "start", isRuledRegister, contradictAlignment},
        {"a row behind one that takes its addresses", "row-shadowed", "pattern", isFixedRow, shadow},
        {"a row behind two that take its addresses", "row-shadowed", "pattern", hasNumbersForTwo, shadowByTwo},
        {"a register that has no row", "register-missing", "multiple_rule", isConvertingBit, convertToNowhere},
        {"a family without its row", "family-missing", "pattern", isTemplate, removeRow},
        {"an unclear continue rule", "continue", "continue", isAnyRow, setting("continue", "maybe")},
        {"a script that is not there", "script-missing", "multiple_rule", isAnyRow,
         setting("multiple_rule", "F>nowhere.js")},
        {"a rule that names a script by accident", "script-accident", "multiple_rule", hasLongRule,
         nameScriptByAccident},
        {"a script that throws", "script-fails", "multiple_rule", isFixedBitOrScript, throwInScript},
        {"a script with a function that throws", "script-fails", "multiple_rule", isFixedBitOrScript, throwInFunction},
        {"a script without a function", "script-function", "multiple_rule", isFixedBitOrScript, lackFunction},
        {"a script that aligns to nothing", "script-alignment", "multiple_rule", isFixedBitOrScript, alignToNothing},
        {"a script with wrong answers", "script-answer", "multiple_rule", isFixedBitOrScript, answerWrongly, true},
        {"a table name that breaks a statement", "table-name", "device_table", isAnyRow, breakTableName},
        {"a missing column", "missing-column", "data_size", isAnyRow, removeColumn},
        {"a number column without a number", "bad-value", "type", isAnyRow, setting("type", "word")},
        {"an empty field", "bad-value", "description", isAnyRow, setting("description", ""), false, true},
        {"an unknown type", "type", "type", isAnyRow, setting("type", "9")},
        {"an unknown base", "base", "base", isAnyRow, setting("base", "2"), false, true},
    };
}

/// One of the rows that can be broken this way, by the seed.
std::optional<int> rowFor(const Subject &subject, const Mutation &mutation, int seed)
{
    QList<int> rows;
    for (int i = 0; i < subject.driver.rows.size(); ++i) {
        if (mutation.applies(subject, i))
            rows.append(i);
    }
    return rows.isEmpty() ? std::nullopt : std::optional<int>(rows.at(seed % rows.size()));
}

} // namespace

class LintMutations : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void shippedDriversAreClean();
    void faultIsFound_data();
    void faultIsFound();
    void everyFaultIsTriedOnSomeDriver();
    void guideTellsOfEveryFault();
    void doubledNameIsFound_data() { drivers(); }
    void doubledNameIsFound();
    void wrongSampleIsFound_data() { drivers(); }
    void wrongSampleIsFound();

private:
    void drivers() const;

    QList<Subject> m_subjects;
};

void LintMutations::initTestCase()
{
    bringScriptsHere();
    const QStringList files = shippedDriverFiles();
    for (const QString &file : files) {
        QList<DriverFileError> errors;
        Subject subject;
        subject.driver = readDriverFile(file, errors);
        subject.samples = readDriverSamples(
            QString(file).replace(QLatin1String("/drivers/"), QLatin1String("/drivers/samples/")), errors);
        QVERIFY2(errors.isEmpty(), qPrintable(errors.value(0).toString()));
        m_subjects.append(subject);
    }
    QVERIFY(m_subjects.size() >= 17);
}

void LintMutations::drivers() const
{
    QTest::addColumn<int>("place");
    for (int i = 0; i < m_subjects.size(); ++i)
        QTest::newRow(qPrintable(m_subjects.at(i).driver.name)) << i;
}

void LintMutations::shippedDriversAreClean()
{
    const LogRecorder silence;
    DriverLinter linter;
    for (const QString &file : shippedDriverFiles())
        linter.addFile(file);

    const QList<LintFinding> findings = linter.findings();

    QVERIFY2(!hasErrors(findings), told(findings).constData());
    QCOMPARE(linter.drivers().size(), m_subjects.size());
    QVERIFY(linter.countSamples() > 10000);
}

void LintMutations::faultIsFound_data()
{
    QTest::addColumn<int>("place");
    QTest::addColumn<int>("way");
    const QList<Mutation> ways = mutations();
    for (int place = 0; place < m_subjects.size(); ++place) {
        for (int way = 0; way < ways.size(); ++way) {
            const bool isWanted = !ways.at(way).isVariant || place == way % m_subjects.size();
            if (isWanted && rowFor(m_subjects.at(place), ways.at(way), 0))
                QTest::addRow("%s: %s", qPrintable(m_subjects.at(place).driver.name), ways.at(way).name)
                    << place << way;
        }
    }
}

void LintMutations::faultIsFound()
{
    QFETCH(int, place);
    QFETCH(int, way);
    const Mutation mutation = mutations().at(way);
    Subject subject = m_subjects.at(place);
    const int row = mutation.breakRow(subject, *rowFor(subject, mutation, 31 * place + 7 * way));
    QList<LintFinding> findings;
    {
        const LogRecorder silence;
        DriverLinter linter;
        linter.add(subject.driver, mutation.needsSamples ? subject.samples : QList<DriverSample>());
        findings = linter.findings();
    }
    if (!subject.script.isEmpty())
        removeScript(subject.script);

    const LintFinding *const found =
        findingOf(findings, QLatin1String(mutation.id), row, QLatin1String(mutation.column));

    QVERIFY2(found, told(findings).constData());
    QVERIFY(found->isError());
    QVERIFY(!found->what.isEmpty() && !found->advice.isEmpty());
    QCOMPARE(found->driver, subject.driver.name);
    if (row > 0) {
        QCOMPARE(found->pattern, subject.field(row - 1, "pattern"));
        QCOMPARE(found->description, subject.field(row - 1, "description"));
    }
}

void LintMutations::everyFaultIsTriedOnSomeDriver()
{
    const QList<Mutation> ways = mutations();
    for (const Mutation &mutation : ways) {
        const bool isTried = std::any_of(m_subjects.begin(), m_subjects.end(),
                                         [&mutation](const Subject &subject) { return rowFor(subject, mutation, 0); });
        QVERIFY2(isTried, mutation.name);
    }
}

void LintMutations::guideTellsOfEveryFault()
{
    QFile guide(QStringLiteral(ZELMAR_LABEL_DRIVERS_SOURCE) + QLatin1String("/../docs/driver-authors-guide.md"));
    QVERIFY(guide.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(guide.readAll());
    const QList<Mutation> ways = mutations();
    for (const Mutation &mutation : ways)
        QVERIFY2(text.contains(QStringLiteral("`%1`").arg(QLatin1String(mutation.id))), mutation.id);
}

void LintMutations::doubledNameIsFound()
{
    QFETCH(int, place);
    const LogRecorder silence;
    const Subject &subject = m_subjects.at(place);
    DriverText other = subject.driver;
    other.stem = QStringLiteral("other");
    DriverLinter linter;
    linter.add(subject.driver);
    linter.add(other);

    const QList<LintFinding> findings = linter.findings();

    QVERIFY2(findingOf(findings, QStringLiteral("doubled-driver"), 0, QStringLiteral("driver")),
             told(findings).constData());
}

void LintMutations::wrongSampleIsFound()
{
    QFETCH(int, place);
    const LogRecorder silence;
    Subject subject = m_subjects.at(place);
    const auto accepted = std::find_if(subject.samples.begin(), subject.samples.end(),
                                       [](const DriverSample &sample) { return sample.isAccepted; });
    const int line = accepted->line;
    accepted->address = QLatin1Char('!') + accepted->address;
    const auto refused = std::find_if(subject.samples.begin(), subject.samples.end(),
                                      [](const DriverSample &sample) { return !sample.isAccepted; });
    const int otherLine = refused->line;
    refused->address = std::find_if(accepted + 1, subject.samples.end(), [](const DriverSample &sample) {
                           return sample.isAccepted;
                       })->address;
    refused->filter = -1;
    DriverLinter linter;
    linter.add(subject.driver, subject.samples);

    const QList<LintFinding> findings = linter.findings();

    const auto isAt = [&findings](int wanted, const char *id) {
        return std::any_of(findings.begin(), findings.end(), [wanted, id](const LintFinding &finding) {
            return finding.line == wanted && finding.id == QLatin1String(id) && finding.row > 0;
        });
    };
    QVERIFY2(isAt(line, "sample-refused"), told(findings).constData());
    QVERIFY2(isAt(otherLine, "sample-accepted"), told(findings).constData());
}

QTEST_GUILESS_MAIN(LintMutations)
#include "tst_lintmutations.moc"
