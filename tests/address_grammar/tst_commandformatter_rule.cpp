// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/labelfixtures.h"
#include "support/logrecorder.h"
#include "zelmar_label/address_grammar/commandformatter.h"

#include <QCoreApplication>
#include <QDir>
#include <QTest>

#include <limits>
#include <memory>

using label::CommandFormatter;

namespace {

CommandFormatter formatterWithRule(const QString &rule, int type = 2)
{
    Row row;
    row.multipleRule = rule;
    row.type = type;
    return row.formatter();
}

} // namespace

class TestCommandFormatterRule : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init() { m_log = std::make_unique<LogRecorder>(); }
    void cleanup() { m_log.reset(); }

    void bareNumbers_data();
    void bareNumbers();
    void bareNumbersDoNotLookAtTheRule();
    void validateMultiple_data();
    void validateMultiple();
    void registerRowsObeyTheirAlignmentAndBitRowsDoNot();
    void answers_data();
    void answers();
    void bitbase_data();
    void bitbase();
    void stringWithDigits_data();
    void stringWithDigits();
    void continueRule_data();
    void continueRule();
    void specialType_data();
    void specialType();
    void bitOffsets_data();
    void bitOffsets();
    void severalAlignments_data();
    void severalAlignments();
    void bitOffsetOfARuleWithoutRadixIsLogged_data();
    void bitOffsetOfARuleWithoutRadixIsLogged();
    void theNumberOfABitRow_data();
    void theNumberOfABitRow();
    void answersAreSilent();

private:
    std::unique_ptr<LogRecorder> m_log;
};

// These rows have no script, whatever file their rule text would name.
void TestCommandFormatterRule::initTestCase()
{
    QDir(QCoreApplication::applicationDirPath() + QLatin1String("/scripts")).removeRecursively();
}

void TestCommandFormatterRule::bareNumbers_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<bool>("of8");
    QTest::addColumn<bool>("of8Plus1");
    QTest::addColumn<bool>("of16");
    QTest::addColumn<bool>("of16Plus1");
    QTest::addColumn<bool>("of64Plus1");

    QTest::newRow("0") << 0 << true << false << true << false << false;
    QTest::newRow("1") << 1 << false << true << false << true << true;
    QTest::newRow("2") << 2 << false << false << false << false << false;
    QTest::newRow("7") << 7 << false << false << false << false << false;
    QTest::newRow("8") << 8 << true << false << false << false << false;
    QTest::newRow("9") << 9 << false << true << false << false << false;
    QTest::newRow("15") << 15 << false << false << false << false << false;
    QTest::newRow("16") << 16 << true << false << true << false << false;
    QTest::newRow("17") << 17 << false << true << false << true << false;
    QTest::newRow("24") << 24 << true << false << false << false << false;
    QTest::newRow("33") << 33 << false << true << false << true << false;
    QTest::newRow("64") << 64 << true << false << true << false << false;
    QTest::newRow("65") << 65 << false << true << false << true << true;
    QTest::newRow("129") << 129 << false << true << false << true << true;
    QTest::newRow("-1") << -1 << false << false << false << false << false;
    QTest::newRow("-7, by its low bits") << -7 << false << true << false << false << false;
    QTest::newRow("-8, by its low bits") << -8 << true << false << false << false << false;
    QTest::newRow("-15, by its low bits") << -15 << false << true << false << true << false;
    QTest::newRow("-16, by its low bits") << -16 << true << false << true << false << false;
    QTest::newRow("-63, by its low bits") << -63 << false << true << false << true << true;
    QTest::newRow("the greatest number") << 2147483647 << false << false << false << false << false;
    QTest::newRow("the least number") << std::numeric_limits<int>::min() << true << false << true << false << false;
}

void TestCommandFormatterRule::bareNumbers()
{
    QFETCH(int, value);
    const CommandFormatter formatter;
    QTEST(formatter.M8(value), "of8");
    QTEST(formatter.M8add1(value), "of8Plus1");
    QTEST(formatter.M16(value), "of16");
    QTEST(formatter.M16add1(value), "of16Plus1");
    QTEST(formatter.M64add1(value), "of64Plus1");
}

void TestCommandFormatterRule::bareNumbersDoNotLookAtTheRule()
{
    for (const QString &rule : {QStringLiteral("m8"), QStringLiteral("m64a1"), QStringLiteral("dot-f:rm16a1")}) {
        const CommandFormatter formatter = formatterWithRule(rule);
        QVERIFY(formatter.M8(24));
        QVERIFY(!formatter.M8(1));
        QVERIFY(formatter.M8add1(9));
        QVERIFY(!formatter.M8add1(8));
        QVERIFY(formatter.M16(32));
        QVERIFY(!formatter.M16(8));
        QVERIFY(formatter.M16add1(33));
        QVERIFY(!formatter.M16add1(9));
        QVERIFY(formatter.M64add1(129));
        QVERIFY(!formatter.M64add1(33));
    }
}

void TestCommandFormatterRule::validateMultiple_data()
{
    QTest::addColumn<QString>("rule");
    QTest::addColumn<int>("value");
    QTest::addColumn<bool>("isValid");

    QTest::newRow("no rule takes any number") << "" << 13 << true;
    QTest::newRow("no rule takes negative numbers") << "" << -13 << true;
    QTest::newRow("an unknown text takes any number") << "m32" << 13 << true;
    QTest::newRow("a rule without alignment takes any number") << "dot-f:r" << 13 << true;
    QTest::newRow("m8 takes 8") << "m8" << 8 << true;
    QTest::newRow("m8 takes -8") << "m8" << -8 << true;
    QTest::newRow("m8 takes 0") << "m8" << 0 << true;
    QTest::newRow("m8 refuses 12") << "m8" << 12 << false;
    QTest::newRow("m8 refuses 9") << "m8" << 9 << false;
    QTest::newRow("m8a1 takes 9") << "m8a1" << 9 << true;
    QTest::newRow("m8a1 refuses 8") << "m8a1" << 8 << false;
    QTest::newRow("m8a1 in capitals takes 9") << "M8A1" << 9 << true;
    QTest::newRow("m8a1 in capitals refuses 8") << "M8A1" << 8 << false;
    QTest::newRow("m8add1 takes 17") << "m8add1" << 17 << true;
    QTest::newRow("m8add1 refuses 16") << "m8add1" << 16 << false;
    QTest::newRow("m16 takes 32") << "m16" << 32 << true;
    QTest::newRow("m16 refuses 24") << "m16" << 24 << false;
    QTest::newRow("m16a1 takes 33") << "m16a1" << 33 << true;
    QTest::newRow("m16a1 refuses 25") << "m16a1" << 25 << false;
    QTest::newRow("m16add1 takes 17") << "m16add1" << 17 << true;
    QTest::newRow("m16add1 refuses 16") << "m16add1" << 16 << false;
    QTest::newRow("m64a1 takes 1") << "m64a1" << 1 << true;
    QTest::newRow("m64a1 takes 65") << "m64a1" << 65 << true;
    QTest::newRow("m64a1 takes 129") << "m64a1" << 129 << true;
    QTest::newRow("m64a1 refuses 64") << "m64a1" << 64 << false;
    QTest::newRow("m64a1 refuses 33") << "m64a1" << 33 << false;
    QTest::newRow("m64add1 takes 65") << "m64add1" << 65 << true;
    QTest::newRow("m64add1 refuses 17") << "m64add1" << 17 << false;
    QTest::newRow("tail :rm8 takes 8") << "dot-f:rm8" << 8 << true;
    QTest::newRow("tail :rm8 refuses 9") << "dot-f:rm8" << 9 << false;
    QTest::newRow("tail :rm8a1 takes 9") << "dot-f:rm8a1" << 9 << true;
    QTest::newRow("tail :rm8a1 refuses 8") << "dot-f:rm8a1" << 8 << false;
    QTest::newRow("tail :rm16 takes 16") << "union-dec:rm16_D" << 16 << true;
    QTest::newRow("tail :rm16 refuses 8") << "union-dec:rm16_D" << 8 << false;
    QTest::newRow("tail :rm16a1x takes 17") << "dot-f:rm16a1x" << 17 << true;
    QTest::newRow("tail :rm16a1x refuses 16") << "dot-f:rm16a1x" << 16 << false;
    QTest::newRow("tail :rm64a1 takes 65") << "dot-f:rm64a1" << 65 << true;
    QTest::newRow("tail :rm64a1 refuses 17") << "dot-f:rm64a1" << 17 << false;
    QTest::newRow("of 8 plus 1 and 16 the former decides, taking 9") << "dot-f:rm16rm8a1" << 9 << true;
    QTest::newRow("of 8 plus 1 and 16 the former decides, refusing 16") << "dot-f:rm16rm8a1" << 16 << false;
    QTest::newRow("of 16 plus 1 and 64 plus 1 the latter decides") << "dot-f:rm64a1rm16a1" << 17 << false;
    QTest::newRow("a keyword in front of the shape aligns nothing") << "m8 dot-f:r" << 12 << true;
    QTest::newRow("a tail inside a plain text aligns nothing") << "x dot-f:rm8" << 12 << true;
}

void TestCommandFormatterRule::validateMultiple()
{
    QFETCH(QString, rule);
    QFETCH(int, value);
    QTEST(formatterWithRule(rule).validateMultiple(value), "isValid");
    QTEST(formatterWithRule(rule, 0).validateMultiple(value), "isValid");
}

void TestCommandFormatterRule::registerRowsObeyTheirAlignmentAndBitRowsDoNot()
{
    QVERIFY(!formatterWithRule(QStringLiteral("m8")).isRangeValid(12));
    QVERIFY(formatterWithRule(QStringLiteral("m8")).isRangeValid(16));
    QVERIFY(formatterWithRule(QStringLiteral("m8"), 0).isRangeValid(12));
}

void TestCommandFormatterRule::answers_data()
{
    QTest::addColumn<QString>("rule");
    QTest::addColumn<bool>("needOptimize");
    QTest::addColumn<int>("aligmentSize");
    QTest::addColumn<bool>("countsBits");
    QTest::addColumn<bool>("canConvert");

    QTest::newRow("an empty text") << "" << true << 1 << false << true;
    QTest::newRow("N") << "N" << false << 1 << false << true;
    QTest::newRow("n") << "n" << false << 1 << false << true;
    QTest::newRow("any text that begins with n") << "nothing" << false << 1 << false << true;
    QTest::newRow("any text that begins with N") << "No" << false << 1 << false << true;
    QTest::newRow("m8") << "m8" << true << 8 << true << true;
    QTest::newRow("m8a1") << "m8a1" << true << 8 << true << true;
    QTest::newRow("m8a1 in capitals") << "M8A1" << true << 8 << true << true;
    QTest::newRow("m8add1") << "m8add1" << true << 8 << true << true;
    QTest::newRow("m16") << "m16" << true << 16 << true << true;
    QTest::newRow("m16a1") << "m16a1" << true << 16 << true << true;
    QTest::newRow("m16add1") << "m16add1" << true << 16 << true << true;
    QTest::newRow("m64a1") << "m64a1" << true << 1 << false << true;
    QTest::newRow("m64add1") << "m64add1" << true << 1 << false << true;
    QTest::newRow("semens1") << "semens1" << true << 1 << false << true;
    QTest::newRow("a script that is not there") << "F>missing.js" << true << 1 << false << true;
    QTest::newRow("a compound text that converts") << "dot-f:r" << false << 1 << false << true;
    QTest::newRow("a compound text that is optimised") << "dot-f:n" << true << 1 << false << false;
    QTest::newRow("a compound text with a bare colon") << "dot-f:" << false << 1 << false << false;
    QTest::newRow("a compound text with another tail") << "slash-dec:x" << false << 1 << false << false;
    QTest::newRow("a compound text of 8") << "dot-f:rm8" << false << 8 << true << true;
    QTest::newRow("a compound text of 8 plus 1") << "union-oct:rm8a1_D" << false << 8 << true << true;
    QTest::newRow("a compound text of 16") << "union-dec:rm16_D" << false << 16 << true << true;
    QTest::newRow("a compound text of 16 plus 1") << "dot-f:rm16a1x" << false << 16 << true << true;
    QTest::newRow("a compound text of 64 plus 1") << "dot-f:rm64a1" << false << 1 << false << true;
    QTest::newRow("a compound text that is optimised and aligned") << "dot-f:nrm16" << true << 16 << true << false;
    QTest::newRow("a compound text in capitals") << "UNION-DEC:RM16_D" << false << 16 << true << true;
    QTest::newRow("8 and 16 in one tail") << "dot-f:rm16rm8" << false << 8 << true << true;
    QTest::newRow("16 and 8 plus 1 in one tail") << "dot-f:rm16rm8a1" << false << 8 << true << true;
    QTest::newRow("a compound text that begins with n") << "nosep-dec:r" << false << 1 << false << true;
    QTest::newRow("a nearly compound text") << "dot-f" << true << 1 << false << true;
    QTest::newRow("a nearly compound text that begins with n") << "nosep-dec" << false << 1 << false << true;
    QTest::newRow("the shape inside a plain text") << "m8 dot-f:r" << true << 1 << false << true;
    QTest::newRow("the shape inside a plain text does not convert") << "m8 dot-f:n" << true << 1 << false << false;
    QTest::newRow("the shape inside a plain text does not align") << "x dot-f:rm8" << true << 1 << false << true;
}

void TestCommandFormatterRule::answers()
{
    QFETCH(QString, rule);
    for (int type : {0, 2}) {
        const CommandFormatter formatter = formatterWithRule(rule, type);
        QTEST(formatter.needOptimize(), "needOptimize");
        QTEST(formatter.aligmentSize(), "aligmentSize");
        QTEST(formatter.isTypeRangeNeedAlignmentByte(), "countsBits");
        QTEST(formatter.canConvertRegisterCommand(), "canConvert");
    }
}

void TestCommandFormatterRule::bitbase_data()
{
    QTest::addColumn<QString>("rule");
    QTest::addColumn<int>("radix");

    QTest::newRow("an empty text") << "" << 16;
    QTest::newRow("a plain keyword") << "m8" << 16;
    QTest::newRow("a nearly compound text") << "dot-oct" << 16;
    QTest::newRow("f on a split rule") << "dot-f:r" << 16;
    QTest::newRow("hex on a split rule") << "slash-hex:r" << 16;
    QTest::newRow("dec on a split rule") << "slash-dec:n" << 10;
    QTest::newRow("15 on a split rule") << "dot-15:r" << 10;
    QTest::newRow("31 on a split rule is a mark") << "dot-31:r" << 32;
    QTest::newRow("oct on a split rule") << "dot-oct:r" << 8;
    QTest::newRow("fam3 has none") << "last2-fam3:rfam3" << -1;
    QTest::newRow("an unknown word has none") << "dot-bin:r" << -1;
    QTest::newRow("hex on a one-part rule") << "union-hex:rm16" << 16;
    QTest::newRow("dec on a one-part rule") << "nosep-dec:rm16" << 10;
    QTest::newRow("oct on a one-part rule") << "union-oct:rm8" << 8;
    QTest::newRow("f on a one-part rule has none") << "union-f:r" << -1;
    QTest::newRow("15 on a one-part rule has none") << "union-15:r" << -1;
    QTest::newRow("31 on a one-part rule has none") << "nosep-31:r" << -1;
    QTest::newRow("31 on an unknown separator is a mark") << "colon-31:r" << 32;
    QTest::newRow("words in capitals") << "DOT-OCT:R" << 8;
    QTest::newRow("the shape inside a plain text") << "m8 dot-oct:r" << 8;
}

void TestCommandFormatterRule::bitbase()
{
    QFETCH(QString, rule);
    QTEST(formatterWithRule(rule, 0).bitbase(), "radix");
    QTEST(formatterWithRule(rule, 2).bitbase(), "radix");
}

void TestCommandFormatterRule::stringWithDigits_data()
{
    QTest::addColumn<QString>("rule");
    QTest::addColumn<QString>("digits");
    QTest::addColumn<QString>("padded");

    QTest::newRow("one digit under last2") << "last2-dec:r"
                                           << "5"
                                           << "05";
    QTest::newRow("two digits under last2") << "last2-dec:r"
                                            << "15"
                                            << "15";
    QTest::newRow("three digits under last2 are not shortened") << "last2-dec:r"
                                                                << "123"
                                                                << "123";
    QTest::newRow("nothing under last2") << "last2-dec:r"
                                         << ""
                                         << "00";
    QTest::newRow("one digit under another rule") << "last1-dec:r"
                                                  << "5"
                                                  << "5";
    QTest::newRow("three digits under another rule") << "dot-dec:r"
                                                     << "123"
                                                     << "123";
    QTest::newRow("nothing under another rule") << "dot-dec:r"
                                                << ""
                                                << "0";
    QTest::newRow("one digit under no rule") << ""
                                             << "5"
                                             << "5";
    QTest::newRow("a letter under last2") << "last2-f:r"
                                          << "f"
                                          << "0f";
    QTest::newRow("last2 in capitals") << "LAST2-DEC:R"
                                       << "5"
                                       << "05";
    QTest::newRow("last2 anywhere in a plain text") << "not last2 at all"
                                                    << "5"
                                                    << "05";
    QTest::newRow("last2 in a tail") << "dot-f:r_last2"
                                     << "5"
                                     << "05";
}

void TestCommandFormatterRule::stringWithDigits()
{
    QFETCH(QString, rule);
    QFETCH(QString, digits);
    QTEST(formatterWithRule(rule).stringWithDigits(digits), "padded");
}

void TestCommandFormatterRule::continueRule_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("no") << "N";
    QTest::newRow("yes") << "yes";
    QTest::newRow("case is kept") << "yEs";
    QTest::newRow("an empty text") << "";
    QTest::newRow("any text") << " anything m8 ";
}

void TestCommandFormatterRule::continueRule()
{
    QFETCH(QString, text);
    Row row;
    row.continueRule = text;
    row.multipleRule = QStringLiteral("dot-f:r");
    QCOMPARE(row.formatter().continueRule(), text);
    row.multipleRule = QStringLiteral("F>missing.js");
    QCOMPARE(row.formatter().continueRule(), text);
}

void TestCommandFormatterRule::specialType_data()
{
    QTest::addColumn<QString>("rule");
    QTest::addColumn<bool>("isSpecial");
    QTest::newRow("the keyword") << "semens1" << true;
    QTest::newRow("the keyword in mixed case") << "SemenS1" << true;
    QTest::newRow("more behind the keyword") << "semens1a" << false;
    QTest::newRow("the keyword in a tail") << "dot-f:semens1" << false;
    QTest::newRow("an empty text") << "" << false;
}

void TestCommandFormatterRule::specialType()
{
    QFETCH(QString, rule);
    QTEST(formatterWithRule(rule).isSemenseSepcialType(), "isSpecial");
}

void TestCommandFormatterRule::bitOffsets_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("rule");
    QTest::addColumn<QString>("address");
    QTest::addColumn<int>("bit");

    QTest::newRow("dot in radix 16") << "(D)(\\d+\\.[0-9a-f])"
                                     << "dot-f:r"
                                     << "D100.c" << 12;
    QTest::newRow("slash in radix 10") << "(B3:)(\\d+/\\d+)"
                                       << "slash-dec:r"
                                       << "B3:7/15" << 15;
    QTest::newRow("an accessor in lower case") << "(T4:)(\\d+\\.acc/\\d+)"
                                               << "dotaccslash-dec:r"
                                               << "T4:7.acc/9" << 9;
    QTest::newRow("the last two digits, counted from 1") << "(I)(\\d{5})"
                                                         << "last2-fam3:rfam3"
                                                         << "I00105" << 4;
    QTest::newRow("one plain number modulo 16") << "(M)(\\d+)"
                                                << "union-dec:rm16_D"
                                                << "M37" << 5;
    QTest::newRow("one plain number modulo 16, counted from 1") << "(M)(\\d+)"
                                                                << "union-dec:rm16a1_D"
                                                                << "M37" << 4;
    QTest::newRow("one plain number in radix 8") << "(X)([0-7]+)"
                                                 << "union-oct:rm8"
                                                 << "X17" << 7;
    QTest::newRow("two alignments, of which the first counts") << "(M)(\\d+)"
                                                               << "union-dec:rm8rm8a1"
                                                               << "M37" << 5;
    QTest::newRow("two alignments in the other order") << "(M)(\\d+)"
                                                       << "union-dec:rm8a1rm8"
                                                       << "M37" << 5;
    QTest::newRow("alignments of two widths") << "(M)(\\d+)"
                                              << "union-dec:rm16rm8a1"
                                              << "M37" << 4;
    QTest::newRow("a word that no radix reads") << "(D)(\\d+\\.\\d)"
                                                << "dot-bin:r"
                                                << "D100.1" << -1;
}

void TestCommandFormatterRule::bitOffsets()
{
    QFETCH(QString, pattern);
    QFETCH(QString, rule);
    QFETCH(QString, address);
    Row row;
    row.pattern = pattern;
    row.type = 0;
    row.multipleRule = rule;
    const CommandFormatter formatter = row.formatter();
    m_log->take();
    QTEST(formatter.getbitOffset(address), "bit");
    QCOMPARE(m_log->lines(), QStringList());
}

void TestCommandFormatterRule::severalAlignments_data()
{
    QTest::addColumn<QString>("tail");
    QTest::addColumn<int>("size");
    QTest::addColumn<QList<int>>("valid");
    QTest::newRow("of 8, and plus 1") << ":rm8rm8a1" << 8 << QList<int>{0, 8, 16, 32, 64};
    QTest::newRow("of 16, and of 8 plus 1") << ":rm16rm8a1" << 8 << QList<int>{1, 9, 17, 33, 65};
    QTest::newRow("of 16, and of 16 plus 1") << ":rm16rm16a1" << 16 << QList<int>{0, 16, 32, 64};
    QTest::newRow("of 64 plus 1, and of 16") << ":rm64a1rm16" << 16 << QList<int>{0, 16, 32, 64};
    QTest::newRow("of 64 plus 1, and of 16 plus 1") << ":rm64a1rm16a1" << 1 << QList<int>{1, 65};
}

/// All answers come from the first kind in their order, wherever it is in the tail.
void TestCommandFormatterRule::severalAlignments()
{
    QFETCH(QString, tail);
    QFETCH(int, size);
    QFETCH(QList<int>, valid);
    const CommandFormatter formatter = formatterWithRule("dot-f" + tail);
    QCOMPARE(formatter.aligmentSize(), size);
    QCOMPARE(formatter.isTypeRangeNeedAlignmentByte(), size > 1);
    for (const int value : {0, 1, 8, 9, 16, 17, 32, 33, 64, 65})
        QCOMPARE(formatter.validateMultiple(value), valid.contains(value));
}

void TestCommandFormatterRule::bitOffsetOfARuleWithoutRadixIsLogged_data()
{
    QTest::addColumn<QString>("rule");
    QTest::newRow("an empty rule") << "";
    QTest::newRow("a plain keyword") << "m16";
    QTest::newRow("a one-part rule with a split radix") << "union-f:rm16";
    QTest::newRow("an unknown separator") << "colon-dec:rm16";
}

void TestCommandFormatterRule::bitOffsetOfARuleWithoutRadixIsLogged()
{
    QFETCH(QString, rule);
    const CommandFormatter formatter = formatterWithRule(rule, 0);
    m_log->take();
    QCOMPARE(formatter.getbitOffset(QStringLiteral("D37")), -1);
    QCOMPARE(m_log->lines(), QStringList{QStringLiteral("onePartBitOffset base error  \"37\"")});
}

void TestCommandFormatterRule::theNumberOfABitRow_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("rule");
    QTest::addColumn<QString>("address");
    QTest::addColumn<int>("number");

    QTest::newRow("a split rule reads the word") << "(D)(\\d+\\.\\d)"
                                                 << "dot-f:r"
                                                 << "D100.5" << 100;
    QTest::newRow("leading zeros of the word do not matter") << "(D)(\\d+\\.\\d)"
                                                             << "dot-f:r"
                                                             << "D0100.5" << 100;
    QTest::newRow("last1") << "(M)(\\d+)"
                           << "last1-f:r"
                           << "M127" << 12;
    QTest::newRow("last2") << "(M)(\\d+)"
                           << "last2-dec:r"
                           << "M1207" << 12;
    QTest::newRow("last2 of a group") << "(I)(\\d{5})"
                                      << "last2-fam3:rfam3"
                                      << "I00105" << 101;
    QTest::newRow("a one-part rule reads it all") << "(M)(\\d+)"
                                                  << "union-dec:rm16"
                                                  << "M37" << 37;
    QTest::newRow("a plain rule has no number") << "(M)(\\d+)"
                                                << "m16"
                                                << "M37" << -1;
    QTest::newRow("an unknown separator has no number") << "(M)(\\d+)"
                                                        << "colon-dec:r"
                                                        << "M37" << -1;
    QTest::newRow("an accessor in capitals still has a word") << "(T)(\\d+\\.PRE/\\d+)"
                                                              << "dotpreslash-dec:r"
                                                              << "T7.PRE/1" << 7;
}

void TestCommandFormatterRule::theNumberOfABitRow()
{
    QFETCH(QString, pattern);
    QFETCH(QString, rule);
    QFETCH(QString, address);
    Row row;
    row.pattern = pattern;
    row.type = 0;
    row.multipleRule = rule;
    QTEST(row.formatter().getAddresRangePart(address), "number");
}

void TestCommandFormatterRule::answersAreSilent()
{
    const CommandFormatter formatter = formatterWithRule(QStringLiteral("unknown-words:here"), 0);
    m_log->take();
    formatter.validateMultiple(5);
    formatter.needOptimize();
    formatter.aligmentSize();
    formatter.isTypeRangeNeedAlignmentByte();
    formatter.bitbase();
    formatter.canConvertRegisterCommand();
    formatter.isSemenseSepcialType();
    formatter.continueRule();
    formatter.stringWithDigits(QStringLiteral("5"));
    QCOMPARE(m_log->lines(), QStringList());
}

QTEST_GUILESS_MAIN(TestCommandFormatterRule)

#include "tst_commandformatter_rule.moc"
