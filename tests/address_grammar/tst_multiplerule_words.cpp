// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/address_grammar/multiplerule.h"

#include <QTest>

using label::MultipleRule;

/// Tests the parsing of a rule text.
class TestMultipleRuleWords : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void withoutTextThereIsNoRule();
    void copyingKeepsEverything();
    void words_data();
    void words();
    void separator_data();
    void separator();
    void bitRadix_data();
    void bitRadix();
    void minimumBitDigits_data();
    void minimumBitDigits();
    void specialType_data();
    void specialType();
};

void TestMultipleRuleWords::withoutTextThereIsNoRule()
{
    const MultipleRule rule;
    QVERIFY(rule.text.isEmpty());
    QVERIFY(rule.separatorWord.isEmpty());
    QVERIFY(rule.bitRadixWord.isEmpty());
    QVERIFY(rule.registerTail.isEmpty());
    QVERIFY(!rule.isSplit());
    QVERIFY(!rule.isOnePart());
    QCOMPARE(rule.bitRadix(), -1);
    QVERIFY(rule.splitString().isEmpty());
    QVERIFY(rule.rebuildSeparator().isEmpty());
    QVERIFY(rule.wordPart(QStringLiteral("10.3")).isEmpty());
    QCOMPARE(rule.bitOffset(QStringLiteral("10.3")), -1);
    QCOMPARE(rule.registerSymbol(QStringLiteral("D")), QStringLiteral("D"));
    QVERIFY(rule.isAligned(13));
    QCOMPARE(rule.aligmentSize(), 1);
    QVERIFY(!rule.countsBits());
    QVERIFY(rule.needOptimize());
    QVERIFY(!rule.canConvertToRegister());
    QVERIFY(!rule.isSemenseSepcialType());
}

void TestMultipleRuleWords::copyingKeepsEverything()
{
    const MultipleRule original(QStringLiteral("Last2-Fam3:rfam3_W"));
    const MultipleRule constructed(original);
    MultipleRule assigned(QStringLiteral("m8"));
    assigned = original;
    for (const MultipleRule &copy : {constructed, assigned}) {
        QCOMPARE(copy.text, QStringLiteral("Last2-Fam3:rfam3_W"));
        QCOMPARE(copy.separatorWord, QStringLiteral("Last2"));
        QCOMPARE(copy.bitRadixWord, QStringLiteral("Fam3"));
        QCOMPARE(copy.registerTail, QStringLiteral(":rfam3_W"));
        QVERIFY(copy.isSplit());
        QCOMPARE(copy.wordPart(QStringLiteral("00105")), QStringLiteral("00101"));
        QCOMPARE(copy.bitOffset(QStringLiteral("00105")), 4);
        QCOMPARE(copy.registerSymbol(QStringLiteral("D")), QStringLiteral("W"));
        QVERIFY(copy.canConvertToRegister());
        QVERIFY(copy.isAligned(12));
    }
}

void TestMultipleRuleWords::words_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("separatorWord");
    QTest::addColumn<QString>("bitRadixWord");
    QTest::addColumn<QString>("registerTail");

    QTest::newRow("a compound text") << "dot-f:r"
                                     << "dot"
                                     << "f"
                                     << ":r";
    QTest::newRow("a compound text that does not convert") << "slash-dec:n"
                                                           << "slash"
                                                           << "dec"
                                                           << ":n";
    QTest::newRow("a tail of several words") << "last2-fam3:rfam3"
                                             << "last2"
                                             << "fam3"
                                             << ":rfam3";
    QTest::newRow("a tail with a symbol") << "union-oct:rm8a1_D"
                                          << "union"
                                          << "oct"
                                          << ":rm8a1_D";
    QTest::newRow("the tail may be a colon alone") << "dot-oct:"
                                                   << "dot"
                                                   << "oct"
                                                   << ":";
    QTest::newRow("case is kept") << "Dot-OCT:Rm8_d"
                                  << "Dot"
                                  << "OCT"
                                  << ":Rm8_d";
    QTest::newRow("words of underscores and digits") << "_1-2_:3"
                                                     << "_1"
                                                     << "2_"
                                                     << ":3";
    QTest::newRow("the shape in the middle is found") << "m8 dot-oct:r"
                                                      << "dot"
                                                      << "oct"
                                                      << ":r";
    QTest::newRow("the shape at the front is found") << "slash-hex:n and more"
                                                     << "slash"
                                                     << "hex"
                                                     << ":n";
    QTest::newRow("a tail ends at its first other character") << "dot-oct:rm8-x"
                                                              << "dot"
                                                              << "oct"
                                                              << ":rm8";
    QTest::newRow("a second tail is not read") << "dot-oct:r:n"
                                               << "dot"
                                               << "oct"
                                               << ":r";
    QTest::newRow("of two shapes the first counts") << "slash-dec:n dot-oct:r"
                                                    << "slash"
                                                    << "dec"
                                                    << ":n";
    QTest::newRow("of three words the last two count") << "a-slash-dec:n"
                                                       << "slash"
                                                       << "dec"
                                                       << ":n";
    QTest::newRow("the shape in a script's file name is found") << "F>slash-dec:n"
                                                                << "slash"
                                                                << "dec"
                                                                << ":n";
    QTest::newRow("an empty text") << ""
                                   << "."
                                   << "f"
                                   << ":r";
    QTest::newRow("a plain keyword") << "m8"
                                     << "."
                                     << "f"
                                     << ":r";
    QTest::newRow("a script") << "F>plc.js"
                              << "."
                              << "f"
                              << ":r";
    QTest::newRow("no colon") << "dot-oct"
                              << "."
                              << "f"
                              << ":r";
    QTest::newRow("no dash") << "dot:n"
                             << "."
                             << "f"
                             << ":r";
    QTest::newRow("no separator word") << "-oct:n"
                                       << "."
                                       << "f"
                                       << ":r";
    QTest::newRow("no radix word") << "dot-:n"
                                   << "."
                                   << "f"
                                   << ":r";
    QTest::newRow("a blank inside the shape") << "dot- oct:n"
                                              << "."
                                              << "f"
                                              << ":r";
}

void TestMultipleRuleWords::words()
{
    QFETCH(QString, text);
    const MultipleRule rule(text);
    QCOMPARE(rule.text, text);
    QTEST(rule.separatorWord, "separatorWord");
    QTEST(rule.bitRadixWord, "bitRadixWord");
    QTEST(rule.registerTail, "registerTail");
}

void TestMultipleRuleWords::separator_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isSplit");
    QTest::addColumn<bool>("isOnePart");
    QTest::addColumn<QString>("rebuildSeparator");

    QTest::newRow("dot") << "dot-f:r" << true << false << ".";
    QTest::newRow("slash") << "slash-f:r" << true << false << "/";
    QTest::newRow("dotpreslash") << "dotpreslash-f:r" << true << false << ".pre/";
    QTest::newRow("dotaccslash") << "dotaccslash-f:r" << true << false << ".acc/";
    QTest::newRow("dotposslash") << "dotposslash-f:r" << true << false << ".pos/";
    QTest::newRow("dotlenslash") << "dotlenslash-f:r" << true << false << ".len/";
    QTest::newRow("last1 rebuilds without separator") << "last1-f:r" << true << false << "";
    QTest::newRow("last2 rebuilds without separator") << "last2-f:r" << true << false << "";
    QTest::newRow("union") << "union-dec:r" << false << true << "";
    QTest::newRow("nosep") << "nosep-dec:r" << false << true << "";
    QTest::newRow("dot in capitals") << "DOT-f:r" << true << false << ".";
    QTest::newRow("slash in mixed case") << "SlaSh-f:r" << true << false << "/";
    QTest::newRow("dotpreslash in mixed case separates in lower case") << "DotPreSlash-f:r" << true << false << ".pre/";
    QTest::newRow("last1 in capitals") << "LAST1-f:r" << true << false << "";
    QTest::newRow("last2 in capitals") << "LAST2-f:r" << true << false << "";
    QTest::newRow("union in capitals") << "UNION-dec:r" << false << true << "";
    QTest::newRow("nosep in mixed case") << "NoSep-dec:r" << false << true << "";
    QTest::newRow("an unknown word stands for itself") << "colon-f:r" << false << false << "colon";
    QTest::newRow("an unknown word is lowered") << "CoLoN-f:r" << false << false << "colon";
    QTest::newRow("last3 is no known word") << "last3-f:r" << false << false << "last3";
    QTest::newRow("a known word with more behind it is unknown") << "dots-f:r" << false << false << "dots";
    QTest::newRow("a plain rule has a dot that does not split") << "" << false << false << ".";
    QTest::newRow("a plain keyword has a dot that does not split") << "m8" << false << false << ".";
    QTest::newRow("a nearly compound text has a dot that does not split") << "slash-f" << false << false << ".";
    QTest::newRow("the shape inside a plain text splits") << "m8 slash-f:r" << true << false << "/";
}

void TestMultipleRuleWords::separator()
{
    QFETCH(QString, text);
    const MultipleRule rule(text);
    QTEST(rule.isSplit(), "isSplit");
    QTEST(rule.isOnePart(), "isOnePart");
    QTEST(rule.rebuildSeparator(), "rebuildSeparator");
    const bool takesLastCharacters = rule.isSplit() && rule.rebuildSeparator().isEmpty();
    if (!takesLastCharacters && !rule.isOnePart())
        QTEST(rule.splitString(), "rebuildSeparator");
}

void TestMultipleRuleWords::bitRadix_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("radix");

    QTest::newRow("f on a split rule") << "dot-f:r" << 16;
    QTest::newRow("hex on a split rule") << "dot-hex:r" << 16;
    QTest::newRow("dec on a split rule") << "dot-dec:r" << 10;
    QTest::newRow("15 on a split rule") << "dot-15:r" << 10;
    QTest::newRow("31 on a split rule is the mark 32") << "dot-31:r" << 32;
    QTest::newRow("oct on a split rule") << "dot-oct:r" << 8;
    QTest::newRow("fam3 on a split rule has no radix") << "last2-fam3:r" << -1;
    QTest::newRow("an unknown word on a split rule") << "dot-bin:r" << -1;
    QTest::newRow("a number on a split rule") << "dot-16:r" << -1;
    QTest::newRow("f on a rule of the last character") << "last1-f:r" << 16;
    QTest::newRow("oct on a rule of the last two characters") << "last2-oct:r" << 8;

    QTest::newRow("f on a one-part rule has no radix") << "union-f:r" << -1;
    QTest::newRow("hex on a one-part rule") << "union-hex:r" << 16;
    QTest::newRow("dec on a one-part rule") << "union-dec:r" << 10;
    QTest::newRow("15 on a one-part rule has no radix") << "union-15:r" << -1;
    QTest::newRow("31 on a one-part rule has no radix") << "union-31:r" << -1;
    QTest::newRow("oct on a one-part rule") << "union-oct:r" << 8;
    QTest::newRow("fam3 on a one-part rule has no radix") << "union-fam3:r" << -1;
    QTest::newRow("an unknown word on a one-part rule") << "union-bin:r" << -1;
    QTest::newRow("hex on the other one-part word") << "nosep-hex:r" << 16;
    QTest::newRow("f on the other one-part word has no radix") << "nosep-f:r" << -1;

    QTest::newRow("f on an unknown separator") << "colon-f:r" << 16;
    QTest::newRow("hex on an unknown separator") << "colon-hex:r" << 16;
    QTest::newRow("dec on an unknown separator") << "colon-dec:r" << 10;
    QTest::newRow("15 on an unknown separator") << "colon-15:r" << 10;
    QTest::newRow("31 on an unknown separator") << "colon-31:r" << 32;
    QTest::newRow("oct on an unknown separator") << "colon-oct:r" << 8;
    QTest::newRow("fam3 on an unknown separator") << "colon-fam3:r" << -1;
    QTest::newRow("an unknown word on an unknown separator") << "colon-bin:r" << -1;

    QTest::newRow("F in capitals") << "dot-F:r" << 16;
    QTest::newRow("dec in mixed case") << "dot-Dec:r" << 10;
    QTest::newRow("oct in capitals on a one-part rule in capitals") << "UNION-OCT:R" << 8;
    QTest::newRow("f in capitals on a one-part rule in capitals") << "UNION-F:R" << -1;
    QTest::newRow("an empty text reads as f") << "" << 16;
    QTest::newRow("a plain keyword reads as f") << "m16" << 16;
    QTest::newRow("a nearly compound text reads as f") << "dot-oct" << 16;
    QTest::newRow("the shape inside a plain text tells the radix") << "m8 dot-oct:r" << 8;
}

void TestMultipleRuleWords::bitRadix()
{
    QFETCH(QString, text);
    QTEST(MultipleRule(text).bitRadix(), "radix");
}

void TestMultipleRuleWords::minimumBitDigits_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("digits");

    QTest::newRow("an empty text") << "" << 1;
    QTest::newRow("dot") << "dot-f:r" << 1;
    QTest::newRow("last1") << "last1-f:r" << 1;
    QTest::newRow("last2") << "last2-f:r" << 2;
    QTest::newRow("last2 in capitals") << "LAST2-F:R" << 2;
    QTest::newRow("last2 as a plain text") << "last2" << 2;
    QTest::newRow("last2 inside another word") << "dot-xlast2y:r" << 2;
    QTest::newRow("last2 in the tail") << "dot-f:r_last2" << 2;
    QTest::newRow("last2 in a script's file name") << "F>last2.js" << 2;
    QTest::newRow("last 2 with a blank") << "last 2" << 1;
}

void TestMultipleRuleWords::minimumBitDigits()
{
    QFETCH(QString, text);
    QTEST(MultipleRule(text).minimumBitDigits(), "digits");
}

void TestMultipleRuleWords::specialType_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isSpecial");

    QTest::newRow("the keyword") << "semens1" << true;
    QTest::newRow("the keyword in capitals") << "SEMENS1" << true;
    QTest::newRow("the keyword in mixed case") << "Semens1" << true;
    QTest::newRow("more behind the keyword") << "semens12" << false;
    QTest::newRow("a blank behind the keyword") << "semens1 " << false;
    QTest::newRow("less than the keyword") << "semens" << false;
    QTest::newRow("the keyword in a compound text") << "dot-f:semens1" << false;
    QTest::newRow("an empty text") << "" << false;
}

void TestMultipleRuleWords::specialType()
{
    QFETCH(QString, text);
    QTEST(MultipleRule(text).isSemenseSepcialType(), "isSpecial");
}

QTEST_APPLESS_MAIN(TestMultipleRuleWords)

#include "tst_multiplerule_words.moc"
