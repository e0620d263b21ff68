// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/logrecorder.h"
#include "zelmar_label/address_grammar/multiplerule.h"

#include <QTest>

using label::MultipleRule;

/// Tests which part of a range is the bit, and its number.
class TestMultipleRuleBits : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void wordAndBitPart_data();
    void wordAndBitPart();
    void bitOffset_data();
    void bitOffset();
    void onePartBitOffset_data();
    void onePartBitOffset();
    void onePartBitOffsetWithoutRadix_data();
    void onePartBitOffsetWithoutRadix();
};

void TestMultipleRuleBits::wordAndBitPart_data()
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

void TestMultipleRuleBits::wordAndBitPart()
{
    QFETCH(QString, text);
    QFETCH(QString, range);
    const MultipleRule rule(text);
    QVERIFY(rule.isSplit());
    QTEST(rule.wordPart(range), "word");
    QTEST(rule.bitPart(range), "bit");
}

void TestMultipleRuleBits::bitOffset_data()
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

void TestMultipleRuleBits::bitOffset()
{
    QFETCH(QString, text);
    QFETCH(QString, range);
    LogRecorder log;
    QTEST(MultipleRule(text).bitOffset(range), "bit");
    QCOMPARE(log.lines(), QStringList());
}

void TestMultipleRuleBits::onePartBitOffset_data()
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

void TestMultipleRuleBits::onePartBitOffset()
{
    QFETCH(QString, text);
    QFETCH(QString, range);
    LogRecorder log;
    QTEST(MultipleRule(text).onePartBitOffset(range), "bit");
    QCOMPARE(log.lines(), QStringList());
}

void TestMultipleRuleBits::onePartBitOffsetWithoutRadix_data()
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

void TestMultipleRuleBits::onePartBitOffsetWithoutRadix()
{
    QFETCH(QString, text);
    QFETCH(QString, range);
    QFETCH(QString, line);
    LogRecorder log;
    QCOMPARE(MultipleRule(text).onePartBitOffset(range), -1);
    QCOMPARE(log.lines(), QStringList{line});
}

QTEST_APPLESS_MAIN(TestMultipleRuleBits)

#include "tst_multiplerule_bits.moc"
