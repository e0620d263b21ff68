// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/logrecorder.h"
#include "zelmar_label/address_grammar/multiplerule.h"

#include <QTest>

using label::MultipleRule;

class TestMultipleRule : public QObject
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
    void wordAndBitPart_data();
    void wordAndBitPart();
    void bitOffset_data();
    void bitOffset();
    void onePartBitOffset_data();
    void onePartBitOffset();
    void onePartBitOffsetWithoutRadix_data();
    void onePartBitOffsetWithoutRadix();
    void registerSymbol_data();
    void registerSymbol();
    void alignment_data();
    void alignment();
    void contrivedTails_data();
    void contrivedTails();
    void optimisingAndConverting_data();
    void optimisingAndConverting();
    void minimumBitDigits_data();
    void minimumBitDigits();
    void specialType_data();
    void specialType();
};

void TestMultipleRule::withoutTextThereIsNoRule()
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

void TestMultipleRule::copyingKeepsEverything()
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

void TestMultipleRule::words_data()
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

void TestMultipleRule::words()
{
    QFETCH(QString, text);
    const MultipleRule rule(text);
    QCOMPARE(rule.text, text);
    QTEST(rule.separatorWord, "separatorWord");
    QTEST(rule.bitRadixWord, "bitRadixWord");
    QTEST(rule.registerTail, "registerTail");
}

void TestMultipleRule::separator_data()
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

void TestMultipleRule::separator()
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

void TestMultipleRule::bitRadix_data()
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

void TestMultipleRule::bitRadix()
{
    QFETCH(QString, text);
    QTEST(MultipleRule(text).bitRadix(), "radix");
}

void TestMultipleRule::wordAndBitPart_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("range");
    QTest::addColumn<QString>("word");
    QTest::addColumn<QString>("bit");

    QTest::newRow("dot") << "dot-f:r"
                         << "10.3"
                         << "10"
                         << "3";
    QTest::newRow("slash") << "slash-dec:r"
                           << "10/15"
                           << "10"
                           << "15";
    QTest::newRow("dotpreslash") << "dotpreslash-dec:r"
                                 << "4:7.pre/12"
                                 << "4:7"
                                 << "12";
    QTest::newRow("dotaccslash") << "dotaccslash-dec:r"
                                 << "4:7.acc/1"
                                 << "4:7"
                                 << "1";
    QTest::newRow("dotposslash") << "dotposslash-dec:r"
                                 << "6:0.pos/0"
                                 << "6:0"
                                 << "0";
    QTest::newRow("dotlenslash") << "dotlenslash-dec:r"
                                 << "6:0.len/9"
                                 << "6:0"
                                 << "9";
    QTest::newRow("leading zeros stay in both parts") << "dot-f:r"
                                                      << "0010.03"
                                                      << "0010"
                                                      << "03";
    QTest::newRow("no separator leaves it all to the word") << "dot-f:r"
                                                            << "10"
                                                            << "10"
                                                            << "";
    QTest::newRow("an empty range string") << "dot-f:r"
                                           << ""
                                           << ""
                                           << "";
    QTest::newRow("nothing in front of the separator") << "dot-f:r"
                                                       << ".3"
                                                       << ""
                                                       << "3";
    QTest::newRow("nothing behind the separator") << "dot-f:r"
                                                  << "10."
                                                  << "10"
                                                  << "";
    QTest::newRow("of three parts the second is the bit") << "dot-f:r"
                                                          << "10.3.7"
                                                          << "10"
                                                          << "3";
    QTest::newRow("two separators in a row leave no bit") << "dot-f:r"
                                                          << "10..7"
                                                          << "10"
                                                          << "";
    QTest::newRow("a dot is no slash") << "slash-f:r"
                                       << "10.3"
                                       << "10.3"
                                       << "";
    QTest::newRow("letters of the word are lowered, those of the bit are not") << "dot-f:r"
                                                                               << "1F.A"
                                                                               << "1f"
                                                                               << "A";
    QTest::newRow("a separator in capitals gives a word but no bit") << "dotpreslash-dec:r"
                                                                     << "T1.PRE/5"
                                                                     << "t1"
                                                                     << "";
    QTest::newRow("a separator in mixed case gives a word but no bit") << "dotaccslash-dec:r"
                                                                       << "1.Acc/5"
                                                                       << "1"
                                                                       << "";
    QTest::newRow("the wrong accessor does not separate") << "dotpreslash-dec:r"
                                                          << "1.acc/5"
                                                          << "1.acc/5"
                                                          << "";

    QTest::newRow("last1") << "last1-f:r"
                           << "100A"
                           << "100"
                           << "A";
    QTest::newRow("last1 keeps the case of the word") << "last1-f:r"
                                                      << "FFA"
                                                      << "FF"
                                                      << "A";
    QTest::newRow("last1 on one character") << "last1-f:r"
                                            << "7"
                                            << ""
                                            << "7";
    QTest::newRow("last1 on nothing") << "last1-f:r"
                                      << ""
                                      << ""
                                      << "";
    QTest::newRow("last2") << "last2-dec:r"
                           << "10015"
                           << "100"
                           << "15";
    QTest::newRow("last2 keeps the case of the word") << "last2-dec:r"
                                                      << "AB15"
                                                      << "AB"
                                                      << "15";
    QTest::newRow("last2 on two characters") << "last2-dec:r"
                                             << "15"
                                             << ""
                                             << "15";
    QTest::newRow("last2 on one character") << "last2-dec:r"
                                            << "5"
                                            << ""
                                            << "5";
    QTest::newRow("last2 with the tail :rfam3 names the first bit of the group") << "last2-fam3:rfam3"
                                                                                 << "00105"
                                                                                 << "00101"
                                                                                 << "05";
    QTest::newRow("last2 with a tail that begins with :rfam3") << "last2-fam3:rfam3_X"
                                                               << "00105"
                                                               << "00101"
                                                               << "05";
    QTest::newRow("last2 with the tail in capitals") << "last2-fam3:RFAM3"
                                                     << "00105"
                                                     << "00101"
                                                     << "05";
    QTest::newRow("last2 with fam3 elsewhere in the tail") << "last2-fam3:nrfam3"
                                                           << "00105"
                                                           << "001"
                                                           << "05";
    QTest::newRow("last2 with the word fam3 alone") << "last2-fam3:r"
                                                    << "00105"
                                                    << "001"
                                                    << "05";
    QTest::newRow("last1 with the tail :rfam3 appends nothing") << "last1-fam3:rfam3"
                                                                << "00105"
                                                                << "0010"
                                                                << "5";
    QTest::newRow("dot with the tail :rfam3 appends nothing") << "dot-fam3:rfam3"
                                                              << "10.5"
                                                              << "10"
                                                              << "5";

    QTest::newRow("dot in capitals") << "DOT-F:R"
                                     << "10.3"
                                     << "10"
                                     << "3";
    QTest::newRow("last2 in capitals") << "LAST2-DEC:R"
                                       << "10015"
                                       << "100"
                                       << "15";
    QTest::newRow("the shape inside a plain text") << "m8 dot-f:r"
                                                   << "10.3"
                                                   << "10"
                                                   << "3";
}

void TestMultipleRule::wordAndBitPart()
{
    QFETCH(QString, text);
    QFETCH(QString, range);
    const MultipleRule rule(text);
    QVERIFY(rule.isSplit());
    QTEST(rule.wordPart(range), "word");
    QTEST(rule.bitPart(range), "bit");
}

void TestMultipleRule::bitOffset_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("range");
    QTest::addColumn<int>("bit");

    QTest::newRow("f reads radix 16") << "dot-f:r"
                                      << "10.a" << 10;
    QTest::newRow("f reads capitals") << "dot-f:r"
                                      << "10.F" << 15;
    QTest::newRow("f reads two digits") << "dot-f:r"
                                        << "10.10" << 16;
    QTest::newRow("hex reads radix 16") << "dot-hex:r"
                                        << "10.b" << 11;
    QTest::newRow("15 reads radix 10") << "dot-15:r"
                                       << "10.15" << 15;
    QTest::newRow("15 does not limit") << "dot-15:r"
                                       << "10.16" << 16;
    QTest::newRow("15 reads no letters") << "dot-15:r"
                                         << "10.a" << -1;
    QTest::newRow("31 reads radix 10") << "dot-31:r"
                                       << "10.31" << 31;
    QTest::newRow("31 reads no letters") << "dot-31:r"
                                         << "10.1a" << -1;
    QTest::newRow("dec reads radix 10") << "slash-dec:r"
                                        << "10/12" << 12;
    QTest::newRow("oct reads radix 8") << "dot-oct:r"
                                       << "10.17" << 15;
    QTest::newRow("oct reads no 8") << "dot-oct:r"
                                    << "10.8" << -1;
    QTest::newRow("fam3 counts from 1") << "last2-fam3:rfam3"
                                        << "00105" << 4;
    QTest::newRow("fam3 has 0 for its first bit") << "last2-fam3:rfam3"
                                                  << "00101" << 0;
    QTest::newRow("fam3 reads radix 10") << "last2-fam3:rfam3"
                                         << "00116" << 15;
    QTest::newRow("fam3 of bit 0 is -1") << "last2-fam3:rfam3"
                                         << "00100" << -1;
    QTest::newRow("fam3 of a letter") << "last2-fam3:rfam3"
                                      << "0010a" << -1;
    QTest::newRow("an unknown word reads nothing") << "dot-bin:r"
                                                   << "10.1" << -1;
    QTest::newRow("no bit part") << "dot-f:r"
                                 << "10" << -1;
    QTest::newRow("an empty bit part") << "dot-f:r"
                                       << "10." << -1;
    QTest::newRow("a bit part that is no number") << "dot-dec:r"
                                                  << "10.x" << -1;
    QTest::newRow("an empty range string") << "dot-f:r"
                                           << "" << -1;
    QTest::newRow("a separator in capitals hides the bit") << "dotpreslash-dec:r"
                                                           << "1.PRE/5" << -1;
    QTest::newRow("the same separator in lower case") << "dotpreslash-dec:r"
                                                      << "1.pre/5" << 5;
    QTest::newRow("last1 in radix 16") << "last1-f:r"
                                       << "100c" << 12;
    QTest::newRow("last2 in radix 10") << "last2-dec:r"
                                       << "10009" << 9;
    QTest::newRow("last2 on one character") << "last2-dec:r"
                                            << "9" << 9;
    QTest::newRow("radix words in capitals") << "DOT-OCT:R"
                                             << "10.17" << 15;
    QTest::newRow("fam3 in capitals") << "LAST2-FAM3:RFAM3"
                                      << "00105" << 4;
}

void TestMultipleRule::bitOffset()
{
    QFETCH(QString, text);
    QFETCH(QString, range);
    LogRecorder log;
    QTEST(MultipleRule(text).bitOffset(range), "bit");
    QCOMPARE(log.lines(), QStringList());
}

void TestMultipleRule::onePartBitOffset_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("range");
    QTest::addColumn<int>("bit");

    QTest::newRow("dec modulo 16") << "union-dec:rm16_D"
                                   << "37" << 5;
    QTest::newRow("dec on the border of a group") << "union-dec:rm16_D"
                                                  << "16" << 0;
    QTest::newRow("dec modulo 16, counted from 1") << "union-dec:rm16a1_D"
                                                   << "37" << 4;
    QTest::newRow("the first of a group counted from 1") << "union-dec:rm16a1_D"
                                                         << "17" << 0;
    QTest::newRow("the last of a group counted from 1") << "union-dec:rm16a1_D"
                                                        << "32" << 15;
    QTest::newRow("dec modulo 8") << "nosep-dec:rm8"
                                  << "13" << 5;
    QTest::newRow("dec modulo 8, counted from 1") << "nosep-dec:rm8a1"
                                                  << "13" << 4;
    QTest::newRow("oct modulo 8") << "union-oct:rm8"
                                  << "17" << 7;
    QTest::newRow("oct modulo 16") << "union-oct:rm16"
                                   << "17" << 15;
    QTest::newRow("oct modulo 16 into the second group") << "union-oct:rm16"
                                                         << "21" << 1;
    QTest::newRow("hex modulo 16") << "union-hex:rm16"
                                   << "1f" << 15;
    QTest::newRow("hex reads capitals") << "union-hex:rm16"
                                        << "1F" << 15;
    QTest::newRow("without alignment the bit is 0") << "union-dec:r"
                                                    << "37" << 0;
    QTest::newRow("multiple of 64 plus 1 has modulus 1") << "union-dec:rm64a1"
                                                         << "37" << 0;
    QTest::newRow("an alignment inside a plain text does not count") << "x union-dec:rm16"
                                                                     << "37" << 0;
    QTest::newRow("words in capitals") << "UNION-DEC:RM16A1_D"
                                       << "37" << 4;
    QTest::newRow("a negative number has a negative remainder") << "union-dec:rm16"
                                                                << "-3" << -3;
    QTest::newRow("a number of 0 counted from 1 has a negative remainder") << "union-dec:rm8a1"
                                                                           << "0" << -1;
    QTest::newRow("a number that is none") << "union-dec:rm16"
                                           << "3x" << -1;
    QTest::newRow("a digit beyond the radix") << "union-oct:rm8"
                                              << "18" << -1;
    QTest::newRow("an empty range string") << "union-dec:rm16"
                                           << "" << -1;
    QTest::newRow("a number beyond 32 bits") << "union-dec:rm16"
                                             << "4294967297" << -1;
}

void TestMultipleRule::onePartBitOffset()
{
    QFETCH(QString, text);
    QFETCH(QString, range);
    LogRecorder log;
    QTEST(MultipleRule(text).onePartBitOffset(range), "bit");
    QCOMPARE(log.lines(), QStringList());
}

void TestMultipleRule::onePartBitOffsetWithoutRadix_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("range");
    QTest::addColumn<QString>("line");

    QTest::newRow("f is no one-part radix") << "union-f:rm16"
                                            << "37"
                                            << "onePartBitOffset base error  \"37\"";
    QTest::newRow("15 is no one-part radix") << "union-15:rm16"
                                             << "37"
                                             << "onePartBitOffset base error  \"37\"";
    QTest::newRow("31 is no one-part radix") << "nosep-31:rm16"
                                             << "37"
                                             << "onePartBitOffset base error  \"37\"";
    QTest::newRow("fam3 is no one-part radix") << "union-fam3:rm16"
                                               << "37"
                                               << "onePartBitOffset base error  \"37\"";
    QTest::newRow("an unknown word") << "union-bin:rm16"
                                     << "37"
                                     << "onePartBitOffset base error  \"37\"";
    QTest::newRow("a plain rule") << "m16"
                                  << "37"
                                  << "onePartBitOffset base error  \"37\"";
    QTest::newRow("an empty rule") << ""
                                   << "10.3"
                                   << "onePartBitOffset base error  \"10.3\"";
    QTest::newRow("an unknown separator with a good radix") << "colon-dec:rm16"
                                                            << "37"
                                                            << "onePartBitOffset base error  \"37\"";
    QTest::newRow("an empty range string is told too") << "m16"
                                                       << ""
                                                       << "onePartBitOffset base error  \"\"";
}

void TestMultipleRule::onePartBitOffsetWithoutRadix()
{
    QFETCH(QString, text);
    QFETCH(QString, range);
    QFETCH(QString, line);
    LogRecorder log;
    QCOMPARE(MultipleRule(text).onePartBitOffset(range), -1);
    QCOMPARE(log.lines(), QStringList{line});
}

void TestMultipleRule::registerSymbol_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("symbol");

    QTest::newRow("a symbol behind an alignment") << "union-dec:rm16_D"
                                                  << "D";
    QTest::newRow("a symbol keeps its case") << "union-oct:rm8a1_Dx"
                                             << "Dx";
    QTest::newRow("a symbol behind a plain r") << "dot-f:r_W"
                                               << "W";
    QTest::newRow("a symbol behind a bare colon") << "dot-f:_W"
                                                  << "W";
    QTest::newRow("no symbol gives the default") << "dot-f:r"
                                                 << "default";
    QTest::newRow("of three parts the second is the symbol") << "dot-f:r_W_X"
                                                             << "W";
    QTest::newRow("an underscore at the end names an empty symbol") << "dot-f:r_"
                                                                    << "";
    QTest::newRow("two underscores name an empty symbol") << "dot-f:r__W"
                                                          << "";
    QTest::newRow("underscores of the other words name nothing") << "a_b-c_d:r"
                                                                 << "default";
    QTest::newRow("a plain rule gives the default") << "m8_D"
                                                    << "default";
    QTest::newRow("an empty rule gives the default") << ""
                                                     << "default";
    QTest::newRow("the shape inside a plain text names the symbol") << "m8 dot-f:r_W"
                                                                    << "W";
}

void TestMultipleRule::registerSymbol()
{
    QFETCH(QString, text);
    QTEST(MultipleRule(text).registerSymbol(QStringLiteral("default")), "symbol");
}

void TestMultipleRule::alignment_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QList<int>>("aligned");
    QTest::addColumn<QList<int>>("others");
    QTest::addColumn<int>("size");
    QTest::addColumn<bool>("countsBits");

    const QList<int> of8 = {0, 8, 16, 24, 64, -8};
    const QList<int> notOf8 = {1, 4, 7, 9, 12, 65, -1, -7};
    const QList<int> of8Plus1 = {1, 9, 17, 65, -7};
    const QList<int> notOf8Plus1 = {0, 2, 8, 10, 16, 64, -1, -8};
    const QList<int> of16 = {0, 16, 32, 64, -16};
    const QList<int> notOf16 = {1, 8, 15, 17, 24, 65, -1, -8};
    const QList<int> of16Plus1 = {1, 17, 33, 65, -15};
    const QList<int> notOf16Plus1 = {0, 2, 9, 16, 18, 25, 64, -1, -7};
    const QList<int> of64Plus1 = {1, 65, 129, -63};
    const QList<int> notOf64Plus1 = {0, 2, 9, 17, 33, 64, 66, -1, -15};
    const QList<int> any = {0, 1, 2, 3, 5, 7, 8, 9, 16, 17, 64, 65, -1, -3, -8};
    const QList<int> none;

    QTest::newRow("m8") << "m8" << of8 << notOf8 << 8 << true;
    QTest::newRow("m8 in capitals") << "M8" << of8 << notOf8 << 8 << true;
    QTest::newRow("m8a1") << "m8a1" << of8Plus1 << notOf8Plus1 << 8 << true;
    QTest::newRow("m8a1 in capitals") << "M8A1" << of8Plus1 << notOf8Plus1 << 8 << true;
    QTest::newRow("m8add1") << "m8add1" << of8Plus1 << notOf8Plus1 << 8 << true;
    QTest::newRow("m8add1 in mixed case") << "M8Add1" << of8Plus1 << notOf8Plus1 << 8 << true;
    QTest::newRow("m16") << "m16" << of16 << notOf16 << 16 << true;
    QTest::newRow("m16 in capitals") << "M16" << of16 << notOf16 << 16 << true;
    QTest::newRow("m64a1 has size 1 and counts no bits") << "m64a1" << of64Plus1 << notOf64Plus1 << 1 << false;
    QTest::newRow("m64add1") << "m64add1" << of64Plus1 << notOf64Plus1 << 1 << false;
    QTest::newRow("m64add1 in capitals") << "M64ADD1" << of64Plus1 << notOf64Plus1 << 1 << false;
    QTest::newRow("m16a1") << "m16a1" << of16Plus1 << notOf16Plus1 << 16 << true;
    QTest::newRow("m16add1") << "m16add1" << of16Plus1 << notOf16Plus1 << 16 << true;
    QTest::newRow("m16add1 in mixed case") << "m16ADD1" << of16Plus1 << notOf16Plus1 << 16 << true;

    QTest::newRow("an empty text aligns nothing") << "" << any << none << 1 << false;
    QTest::newRow("a plain keyword has to be the whole text") << "m8x" << any << none << 1 << false;
    QTest::newRow("a blank behind a plain keyword spoils it") << "m8 " << any << none << 1 << false;
    QTest::newRow("m64 is no keyword") << "m64" << any << none << 1 << false;
    QTest::newRow("m32 is no keyword") << "m32" << any << none << 1 << false;
    QTest::newRow("the tail test is no plain keyword") << "rm8" << any << none << 1 << false;
    QTest::newRow("a script's file name is no keyword") << "F>m8" << any << none << 1 << false;
    QTest::newRow("a plain text with the shape inside") << "m8 dot-f:r" << any << none << 1 << false;
    QTest::newRow("an aligned tail inside a plain text") << "x dot-f:rm8" << any << none << 1 << false;
    QTest::newRow("a nearly compound text") << "dot-f" << any << none << 1 << false;

    QTest::newRow("tail :rm8") << "dot-f:rm8" << of8 << notOf8 << 8 << true;
    QTest::newRow("tail :rm8 in capitals") << "DOT-F:RM8" << of8 << notOf8 << 8 << true;
    QTest::newRow("tail :rm8 with a symbol") << "dot-f:rm8_D" << of8 << notOf8 << 8 << true;
    QTest::newRow("tail :rm8 with a letter other than a behind it") << "dot-f:rm8b" << of8 << notOf8 << 8 << true;
    QTest::newRow("tail :rm80 holds rm8") << "dot-f:rm80" << of8 << notOf8 << 8 << true;
    QTest::newRow("rm8 anywhere in the tail") << "dot-f:nrm8" << of8 << notOf8 << 8 << true;
    QTest::newRow("tail :rm8a1") << "dot-f:rm8a1" << of8Plus1 << notOf8Plus1 << 8 << true;
    QTest::newRow("tail :rm8a1 in capitals") << "dot-f:RM8A1" << of8Plus1 << notOf8Plus1 << 8 << true;
    QTest::newRow("tail :rm8a1 with a symbol") << "union-oct:rm8a1_D" << of8Plus1 << notOf8Plus1 << 8 << true;
    QTest::newRow("tail :rm8a1 with more behind it") << "dot-f:rm8a1x" << of8Plus1 << notOf8Plus1 << 8 << true;
    QTest::newRow("rm8a1 anywhere in the tail") << "dot-f:xrm8a1" << of8Plus1 << notOf8Plus1 << 8 << true;
    QTest::newRow("tail :rm16") << "dot-f:rm16" << of16 << notOf16 << 16 << true;
    QTest::newRow("tail :rm16 with a symbol") << "union-dec:rm16_D" << of16 << notOf16 << 16 << true;
    QTest::newRow("rm16 anywhere in the tail") << "dot-f:nrm16" << of16 << notOf16 << 16 << true;
    QTest::newRow("tail :rm16a1") << "dot-f:rm16a1" << of16Plus1 << notOf16Plus1 << 16 << true;
    QTest::newRow("tail :rm16a1 with more behind it") << "dot-f:rm16a1x" << of16Plus1 << notOf16Plus1 << 16 << true;
    QTest::newRow("tail :rm16a1 in mixed case") << "dot-f:Rm16A1" << of16Plus1 << notOf16Plus1 << 16 << true;
    QTest::newRow("tail :rm64a1 has size 1 and counts no bits")
        << "dot-f:rm64a1" << of64Plus1 << notOf64Plus1 << 1 << false;
    QTest::newRow("tail :rm64a1 in capitals with more behind it")
        << "dot-f:RM64A1_D" << of64Plus1 << notOf64Plus1 << 1 << false;
    QTest::newRow("rm64a1 counts at the front of the tail only") << "dot-f:xrm64a1" << any << none << 1 << false;
    QTest::newRow("rm64 is no test") << "dot-f:rm64" << any << none << 1 << false;
    QTest::newRow("rm8a is neither kind") << "dot-f:rm8a" << any << none << 1 << false;
    QTest::newRow("rm8a2 is neither kind") << "dot-f:rm8a2" << any << none << 1 << false;
    QTest::newRow("rm8add1 is neither kind in a tail") << "dot-f:rm8add1" << any << none << 1 << false;
    QTest::newRow("rm16a is neither kind") << "dot-f:rm16a" << any << none << 1 << false;
    QTest::newRow("the plain keyword is no tail") << "dot-f:m8" << any << none << 1 << false;
    QTest::newRow("a tail that is just a colon") << "dot-f:" << any << none << 1 << false;
    QTest::newRow("a tail that only converts") << "dot-f:r" << any << none << 1 << false;
    QTest::newRow("keywords of the other words do not count") << "rm8-rm16:r" << any << none << 1 << false;
}

void TestMultipleRule::alignment()
{
    QFETCH(QString, text);
    QFETCH(QList<int>, aligned);
    QFETCH(QList<int>, others);
    const MultipleRule rule(text);
    for (int value : aligned)
        QVERIFY2(rule.isAligned(value), QByteArray::number(value).constData());
    for (int value : others)
        QVERIFY2(!rule.isAligned(value), QByteArray::number(value).constData());
    QCOMPARE(rule.hasAlignment(), !others.isEmpty());
    QTEST(rule.aligmentSize(), "size");
    QTEST(rule.countsBits(), "countsBits");
}

void TestMultipleRule::contrivedTails_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QList<int>>("aligned");
    QTest::addColumn<QList<int>>("others");

    QTest::newRow("8 goes before 8 plus 1") << "dot-f:rm8a1rm8" << QList<int>{0, 8} << QList<int>{1, 9};
    QTest::newRow("8 goes before 16") << "dot-f:rm16rm8" << QList<int>{8, 16} << QList<int>{1, 4};
    QTest::newRow("8 goes before 64 plus 1") << "dot-f:rm64a1rm8" << QList<int>{8, 64} << QList<int>{1, 65};
    QTest::newRow("8 goes before 16 plus 1") << "dot-f:rm16a1rm8" << QList<int>{8, 16} << QList<int>{1, 17};
    QTest::newRow("8 plus 1 goes before 16") << "dot-f:rm16rm8a1" << QList<int>{1, 9} << QList<int>{0, 16};
    QTest::newRow("8 plus 1 goes before 64 plus 1") << "dot-f:rm64a1rm8a1" << QList<int>{1, 9} << QList<int>{0, 64};
    QTest::newRow("8 plus 1 goes before 16 plus 1") << "dot-f:rm16a1rm8a1" << QList<int>{9, 17} << QList<int>{0, 16};
    QTest::newRow("16 goes before 64 plus 1") << "dot-f:rm64a1rm16" << QList<int>{0, 16} << QList<int>{1, 65};
    QTest::newRow("16 goes before 16 plus 1") << "dot-f:rm16a1rm16" << QList<int>{0, 16} << QList<int>{1, 17};
    QTest::newRow("64 plus 1 goes before 16 plus 1") << "dot-f:rm64a1rm16a1" << QList<int>{1, 65} << QList<int>{17, 33};
    QTest::newRow("8 goes before all others")
        << "dot-f:rm64a1rm16a1rm16rm8a1rm8" << QList<int>{0, 8} << QList<int>{1, 9, 17, 65};
}

void TestMultipleRule::contrivedTails()
{
    QFETCH(QString, text);
    QFETCH(QList<int>, aligned);
    QFETCH(QList<int>, others);
    const MultipleRule rule(text);
    for (int value : aligned)
        QVERIFY2(rule.isAligned(value), QByteArray::number(value).constData());
    for (int value : others)
        QVERIFY2(!rule.isAligned(value), QByteArray::number(value).constData());
}

void TestMultipleRule::optimisingAndConverting_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("needOptimize");
    QTest::addColumn<bool>("canConvert");

    QTest::newRow("an empty text") << "" << true << true;
    QTest::newRow("n") << "n" << false << true;
    QTest::newRow("N") << "N" << false << true;
    QTest::newRow("any plain text that begins with n") << "nothing" << false << true;
    QTest::newRow("any plain text that begins with N") << "Nmore" << false << true;
    QTest::newRow("a plain keyword") << "m8" << true << true;
    QTest::newRow("an n in the middle of a plain text") << "m8n" << true << true;
    QTest::newRow("a blank in front of the n") << " n" << true << true;
    QTest::newRow("a script") << "F>n.js" << true << true;
    QTest::newRow("a nearly compound text that begins with n") << "nosep-dec" << false << true;
    QTest::newRow("a compound text that converts") << "dot-f:r" << false << true;
    QTest::newRow("a compound text that converts, in capitals") << "DOT-F:R" << false << true;
    QTest::newRow("a compound text that is optimised") << "dot-f:n" << true << false;
    QTest::newRow("a compound text that is optimised, in capitals") << "DOT-F:N" << true << false;
    QTest::newRow("a compound text that is optimised by more than n") << "dot-f:nrm8" << true << false;
    QTest::newRow("a compound text that converts with alignment") << "dot-f:rm16_D" << false << true;
    QTest::newRow("a compound text with a bare colon") << "dot-f:" << false << false;
    QTest::newRow("a compound text with another tail") << "dot-f:xr" << false << false;
    QTest::newRow("a compound text with n later in the tail") << "dot-f:rn" << false << true;
    QTest::newRow("a compound text that begins with n") << "nosep-dec:r" << false << true;
    QTest::newRow("a compound text that begins with n and is optimised") << "nosep-dec:n" << true << false;
    QTest::newRow("a plain text whose inner tail says n") << "x dot-f:n" << true << false;
    QTest::newRow("a plain text whose inner tail says r") << "x dot-f:r" << true << true;
    QTest::newRow("a plain text that begins with n with the shape inside") << "n dot-f:n" << false << false;
}

void TestMultipleRule::optimisingAndConverting()
{
    QFETCH(QString, text);
    const MultipleRule rule(text);
    QTEST(rule.needOptimize(), "needOptimize");
    QTEST(rule.canConvertToRegister(), "canConvert");
}

void TestMultipleRule::minimumBitDigits_data()
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

void TestMultipleRule::minimumBitDigits()
{
    QFETCH(QString, text);
    QTEST(MultipleRule(text).minimumBitDigits(), "digits");
}

void TestMultipleRule::specialType_data()
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

void TestMultipleRule::specialType()
{
    QFETCH(QString, text);
    QTEST(MultipleRule(text).isSemenseSepcialType(), "isSpecial");
}

QTEST_APPLESS_MAIN(TestMultipleRule)

#include "tst_multiplerule.moc"
