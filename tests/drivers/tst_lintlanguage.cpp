// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "lintfixtures.h"
#include "support/labelfixtures.h"
#include "support/logrecorder.h"
#include "tools/driver-files/digittexts.h"
#include "tools/driver-files/lintcontext.h"
#include "tools/driver-files/lintlanguage.h"

#include "zelmar_label/address_grammar/automaton_p.h"
#include "zelmar_label/address_grammar/radixnumber_p.h"

#include <QTest>

#include <limits>

using namespace label;

namespace {

/// The columns on which it depends whether a row accepts a text. The number is group 2.
struct Columns
{
    const char *pattern;
    int type;
    const char *start;
    const char *end;
    const char *rule;
    int base;
};

LintRow rowOf(const Columns &columns)
{
    LintRow row;
    row.formatter =
        CommandFormatter(QString::fromLatin1(columns.pattern), columns.type, 2, QStringLiteral("row"),
                         QStringLiteral("D"), QString::fromLatin1(columns.start), QString::fromLatin1(columns.end), 2,
                         QString::fromLatin1(columns.rule), QString(), columns.base, 64, QStringLiteral("N"));
    row.group = 2;
    row.first = row.formatter.firstNumber();
    row.last = row.formatter.lastNumber();
    return row;
}

const Columns registers[] = {
    {"(D)(\\d{1,3})", 2, "0", "999", "", 10},
    {"(D)(\\d{1,3})", 2, "5", "110", "", 10},
    {"(D)(0*\\d{1,2})", 2, "1", "11", "", 10},
    {"(D)(\\d+)", 2, "-5", "10", "n", 10},
    {"(D)(\\d+)", 2, "9", "5", "", 10},
    {"(D)(\\d+)", 2, "none", "5", "", 10},
    {"(D)(\\d+)", 2, "0", "111", "m8", 10},
    {"(D)(\\d+)", 2, "0", "111", "m16", 10},
    {"(D)(\\d+)", 2, "1", "111", "m8a1", 10},
    {"(D)(\\d+)", 2, "1", "1111", "m64a1", 10},
    {"(D)(\\d+)", 2, "0", "11", "m8", 8},
    {"(D)(\\d+)", 2, "1", "111", "m16a1", 16},
    {"(D)([01A]+)", 2, "0", "1A", "", 16},
    {"(D)([01A]+)", 2, "0", "19", "", 10},
    {"(D)([019.]+)", 2, "0", "19", "", 10},
    {"(D1?)(\\d)", 2, "0", "8", "", 10},
    {"(D)(\\d|1\\d)?", 2, "3", "10", "", 10},
    {"(D)(?!1)(\\d{1,3})", 2, "0", "99", "", 10},
    {"(D)((?!19)\\d{1,3})", 2, "0", "99", "", 10},
    {"(D)(\\d*)9", 2, "0", "10", "", 10},
};

const Columns bits[] = {
    {"(D)(\\d{1,3})", 0, "0", "99", "union-dec:n", 10},
    {"(D)(\\d{1,3})", 0, "0", "111", "union-dec:rm16", 10},
    {"(D)(\\d{1,4})", 0, "0", "10", "last1-dec:r", 10},
    {"(D)(\\d{1,4})", 0, "1", "9", "last2-dec:r", 10},
    {"(D)(\\d{1,4})", 0, "1", "101", "last2-fam3:rfam3", 10},
    {"(D)(\\d{1,4})", 0, "901", "1001", "last2-fam3:rfam3", 10},
    {"(D)(\\d{1,2}\\.\\d)", 0, "0", "11", "dot-dec:r", 10},
    {"(D)(\\d{1,2}[./]\\d)", 0, "0", "1", "dot-dec:r", 10},
    {"(D)(\\d{1,2}[./]\\d)", 0, "0", "11", "slash-oct:r", 8},
    {"(D)(\\d{1,2}(?:/\\d)?)", 0, "1", "10", "slash-dec:r", 10},
    {"(D)([01A]+)", 0, "0", "1A", "union-hex:n", 16},
    {"(D)(\\d{1,3})", 0, "0", "9", "m8", 10},
    {"(D)(\\d{1,3})", 0, "0", "9", "colon-dec:r", 10},
};

/// Texts that begin with "D" and go on with up to three of these characters, and long numbers.
QStringList candidates()
{
    QStringList texts = {QStringLiteral("D")};
    constexpr int mostFurther = 3;
    for (int first = 0, size = 0; size < mostFurther; ++size) {
        const int end = texts.size();
        for (; first < end; ++first) {
            for (const char character : {'0', '1', '9', 'A', '.', '/'})
                texts.append(texts.at(first) + QLatin1Char(character));
        }
    }
    for (const char *number : {"2147483647", "2147483648", "00000000001", "214748364700", "777777777777"})
        texts.append(QLatin1Char('D') + QLatin1String(number));
    return texts;
}

QStringList acceptedBy(const LintRow &row, const QStringList &texts)
{
    QStringList accepted;
    for (const QString &text : texts) {
        if (row.formatter.isDeviceAddressValid(text))
            accepted.append(text);
    }
    return accepted;
}

Automaton automatonOf(PatternExpressions &expressions, Expression expression)
{
    const std::optional<Automaton> automaton = Automaton::of(expressions, {expression});
    if (!automaton)
        qFatal("too many states");
    return *automaton;
}

bool accepts(const Automaton &automaton, const QString &text)
{
    return automaton.accepted(automaton.walk(Automaton::start, text)) != 0;
}

} // namespace

class LintLanguage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { bringScriptsHere(); }
    void digitsAreNumbersUpToALimit_data();
    void digitsAreNumbersUpToALimit();
    void remaindersDecide_data();
    void remaindersDecide();
    void unreadableTextsAreNoNumbers();
    void inclusionAgreesWithTheRows_data();
    void inclusionAgreesWithTheRows();
    void severalRowsCoverOne();
    void shippedRowsAreKnownExactly();
};

void LintLanguage::digitsAreNumbersUpToALimit_data()
{
    QTest::addColumn<int>("radix");
    QTest::addColumn<int>("limit");
    for (const int radix : {2, 8, 10, 16, 36}) {
        for (const int limit : {-1, 0, 1, 7, 8, 10, 99, 110, 255, 4095, std::numeric_limits<int>::max()})
            QTest::addRow("up to %d in radix %d", limit, radix) << radix << limit;
    }
}

void LintLanguage::digitsAreNumbersUpToALimit()
{
    QFETCH(int, radix);
    QFETCH(int, limit);
    PatternExpressions expressions;
    const Automaton automaton = automatonOf(expressions, DigitTexts(expressions, radix).upTo(limit));
    for (int number = 0; number < 5000; ++number) {
        const QString text = numberText(number, radix);
        for (const QString &form : {text, text.toUpper(), QLatin1String("000") + text})
            QVERIFY2(accepts(automaton, form) == (number <= limit), qPrintable(form));
    }
    const QString greatest = numberText(std::numeric_limits<int>::max(), radix);
    QCOMPARE(accepts(automaton, greatest), limit == std::numeric_limits<int>::max());
    QVERIFY(!accepts(automaton, greatest + QLatin1Char('0')));
    QVERIFY(!accepts(automaton, QString()));
}

void LintLanguage::remaindersDecide_data()
{
    QTest::addColumn<int>("radix");
    for (int radix = 2; radix <= 36; radix += 2)
        QTest::addRow("radix %d", radix) << radix;
}

void LintLanguage::remaindersDecide()
{
    QFETCH(int, radix);
    PatternExpressions expressions;
    DigitTexts digits(expressions, radix);
    const auto isWanted = [](int remainder) { return remainder % 16 == 1 || remainder == 40; };
    const Automaton automaton = automatonOf(expressions, digits.withRemainder(isWanted));
    for (int number = 0; number < 5000; ++number) {
        const QString text = numberText(number, radix);
        QVERIFY2(accepts(automaton, text) == isWanted(number % 64), qPrintable(text));
        QVERIFY2(accepts(automaton, QLatin1String("00") + text) == isWanted(number % 64), qPrintable(text));
    }
}

void LintLanguage::unreadableTextsAreNoNumbers()
{
    for (const int radix : {8, 10, 16}) {
        PatternExpressions expressions;
        const Automaton automaton = automatonOf(expressions, DigitTexts(expressions, radix).unreadable(CharacterSet()));
        int unreadable = 0;
        for (uint unit = 0; unit <= CharacterSet::lastUnit; ++unit) {
            for (const QString &text : {QString(QChar(unit)), QLatin1Char('1') + QString(QChar(unit)),
                                        QString(QChar(unit)) + QLatin1Char('1'),
                                        QLatin1Char('0') + QString(QChar(unit)) + QLatin1Char('1')}) {
                if (!accepts(automaton, text))
                    continue;
                ++unreadable;
                QVERIFY2(!readNumber(text, radix), qPrintable(text));
            }
        }
        QVERIFY(unreadable > 1000);
    }
}

void LintLanguage::inclusionAgreesWithTheRows_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("place");
    const auto add = [](const auto &rows, int kind) {
        int place = 0;
        for (const Columns &row : rows) {
            QTest::addRow("%s, %s to %s, %s, radix %d", row.pattern, row.start, row.end, row.rule, row.base)
                << kind << place;
            ++place;
        }
    };
    add(registers, 0);
    add(bits, 1);
}

void LintLanguage::inclusionAgreesWithTheRows()
{
    QFETCH(int, kind);
    QFETCH(int, place);
    const LogRecorder silence;
    std::vector<Columns> others(std::begin(registers), std::end(registers));
    if (kind == 1)
        others.assign(std::begin(bits), std::end(bits));
    const LintRow row = rowOf(others.at(static_cast<std::size_t>(place)));
    const QStringList own = acceptedBy(row, candidates());
    QVERIFY(!own.isEmpty());

    QVERIFY(!textOutside(row, {&row}));
    // A part of the pairs: in a debug build a pair takes a tenth of a second.
    constexpr std::size_t step = 4;
    for (std::size_t index = static_cast<std::size_t>(place) % step; index < others.size(); index += step) {
        const Columns &columns = others.at(index);
        const LintRow other = rowOf(columns);
        const std::optional<QString> outside = textOutside(row, {&other});
        const QStringList shared = acceptedBy(other, own);
        if (outside)
            QVERIFY2(row.formatter.isDeviceAddressValid(*outside) && !other.formatter.isDeviceAddressValid(*outside),
                     qPrintable(*outside + QLatin1String(" of ") + QLatin1String(columns.pattern)));
        else
            QVERIFY2(shared == own, columns.pattern);
        const QStringList told = sharedTexts(row, other, 20);
        QVERIFY2(told.isEmpty() ? shared.isEmpty() : acceptedBy(other, acceptedBy(row, told)) == told,
                 qPrintable(told.join(QLatin1Char(' '))));
    }
}

void LintLanguage::severalRowsCoverOne()
{
    const LogRecorder silence;
    const LintRow row = rowOf({"(D)(\\d{1,4})", 2, "0", "9999", "", 10});
    const LintRow lower = rowOf({"(D)(\\d+)", 2, "0", "4999", "", 10});
    const LintRow upper = rowOf({"(D)(\\d+)", 2, "5000", "9999", "", 10});
    const LintRow gap = rowOf({"(D)(\\d+)", 2, "5001", "9999", "", 10});

    QVERIFY(!textOutside(row, {&lower, &upper}));
    QCOMPARE(textOutside(row, {&lower, &gap}), std::optional<QString>(QStringLiteral("D5000")));
    QVERIFY(textOutside(row, {&lower}));
    QCOMPARE(textOutside(row, {}), std::optional<QString>(QStringLiteral("D0")));
}

void LintLanguage::shippedRowsAreKnownExactly()
{
    const LogRecorder silence;
    int count = 0;
    for (const QString &file : shippedDriverFiles()) {
        QList<DriverFileError> errors;
        const DriverText driver = readDriverFile(file, errors);
        QList<LintFinding> findings;
        LintReport report(driver, findings);
        const LintContext context(driver, {}, report);
        QVERIFY2(context.isRead(), qPrintable(file));
        for (const LintRow &row : context.rows) {
            std::vector<const LintRow *> earlier;
            for (const LintRow &other : context.rows) {
                if (other.index < row.index && other.isBit() == row.isBit() && sharesTexts(row, other))
                    earlier.push_back(&other);
            }
            if (earlier.empty())
                continue;
            const std::optional<QString> outside = textOutside(row, earlier);
            QVERIFY2(outside, qPrintable(row.formatter.pattern()));
            if (row.isTemplate || row.isScripted)
                continue;
            ++count;
            QVERIFY2(row.formatter.isDeviceAddressValid(*outside),
                     qPrintable(row.formatter.pattern() + QLatin1Char(' ') + *outside));
            const bool isTaken = std::any_of(earlier.begin(), earlier.end(), [&](const LintRow *other) {
                return !other->isScripted && other->formatter.isDeviceAddressValid(*outside);
            });
            QVERIFY2(!isTaken, qPrintable(row.formatter.pattern() + QLatin1Char(' ') + *outside));
        }
    }
    QVERIFY(count > 0);
}

QTEST_GUILESS_MAIN(LintLanguage)
#include "tst_lintlanguage.moc"
