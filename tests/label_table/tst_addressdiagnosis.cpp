// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/label_table/addressdiagnosis.h"

#include "support/labelfixtures.h"
#include "support/logrecorder.h"
#include "zelmar_label/label_table/commandinformationtalbe.h"

#include <QTest>

using label::AddressDiagnosis;
using Kind = label::AddressDiagnosis::Kind;
using Slip = label::AddressDiagnosis::Slip;

Q_DECLARE_METATYPE(label::AddressDiagnosis::Kind)
Q_DECLARE_METATYPE(label::AddressDiagnosis::Slip)

namespace {

constexpr int any = -1;
constexpr int bits = 0;
constexpr int registers = 2;

Row row(const char *pattern, int type, const char *description, const char *symbol, const char *start, const char *end,
        const char *rule = "", int base = 10)
{
    Row made;
    made.pattern = QLatin1String(pattern);
    made.type = type;
    made.description = QLatin1String(description);
    made.prefixSymbol = QLatin1String(symbol);
    made.start = QLatin1String(start);
    made.end = QLatin1String(end);
    made.multipleRule = QLatin1String(rule);
    made.base = base;
    return made;
}

/// 0 D, 1 D bits, 2 X, 3 M8, 4 K, 5 P, 6 W, 7 B, 8 broken limits, 9 and 10 data block families, 11 SM, 12 without form,
/// 13 V of a few digits, 14 even numbers.
label::CommandInformationTalbe deviceTable()
{
    LogRecorder log;
    label::CommandInformationTalbe table;
    const QList<Row> rows = {
        row("(D)(\\d{1,4})", 2, "D: data register, D0-D7999, e.g. D100", "D", "0", "7999"),
        row("(D)(\\d{1,4}\\.[0-9A-Fa-f])", 0, "Dn.b: bit of a data register, e.g. D100.A", "D", "0", "7999", "dot-f:r"),
        row("(X)([0-7]+)", 0, "X: input (octal), e.g. X17", "X", "0", "1777", "union-oct:rm16", 8),
        row("(M)(\\d+)", 2, "M: sixteen bits, e.g. M16", "M", "16", "100", "m16"),
        row("(K)([0-7]+)", 2, "K: sixteen inputs (octal)", "K", "0", "1760", "m16", 8),
        row("(P)(\\d+)", 2, "P: groups that begin at 1", "P", "1", "1000", "m16a1"),
        row("(W)([0-9A-F]+)", 2, "W: link register (hexadecimal)", "W", "10", "FFF", "", 16),
        row("(B)(\\d+)", 4, "B: quad word", "B", "0", "9"),
        row("(L)(\\d+)", 2, "L: limits that are none", "L", "", "x9"),
        row("DB_DBW", 2, "DBn.DBWb: data block word, e.g. DB1.DBW4", "DB", "0", "65534"),
        row("DB_DBX", 0, "DBn.DBXb.x: data block bit, e.g. DB1.DBX3.7", "DB", "0", "65535", "dot-oct:r"),
        row("(SM)(\\d+)", 0, "SM: special relay", "SM", "0", "99", "union-dec:n"),
        row("(ZR)(\\d+)", 2, "extension file register", "ZR", "0", "99"),
        row("(V)([1-5])", 2, "V: register, V1-V5", "V", "1", "5"),
        row("(EV)(\\d?[02468])", 2, "EV: even registers", "EV", "0", "98"),
    };
    for (const Row &one : rows)
        table.addCommandFormatter(one.formatter());
    return table;
}

} // namespace

class TestAddressDiagnosis : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void diagnosis_data();
    void diagnosis();
    void slips_data();
    void slips();
    void takenUnchecked_data();
    void takenUnchecked();
    void emptyTable();
    void acceptedExactlyWhenARowAccepts_data();
    void acceptedExactlyWhenARowAccepts();
    void knownMemberOfAFamilyChangesNothing();
    void limitOfAFamilyMember();
    void values();
    void neverChangesTheTable();
};

void TestAddressDiagnosis::diagnosis_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<int>("type");
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("position");
    QTest::addColumn<QString>("sentence");
    QTest::addColumn<QString>("suggestions");

    const auto add = [](const char *name, const char *address, int type, Kind kind, int row, int position,
                        const char *sentence, const char *suggestions = "") {
        QTest::newRow(name) << QString::fromUtf8(address) << type << kind << row << position
                            << QString::fromUtf8(sentence) << QString::fromUtf8(suggestions);
    };
    add("accepted, no sentence", "D100", any, Kind::Accepted, 0, -1, "");
    add("accepted with a station", "3-D100", any, Kind::Accepted, 0, -1, "");
    add("accepted as a bit", "D100.A", bits, Kind::Accepted, 1, -1, "");
    add("a register where a bit is asked for", "D100", bits, Kind::WrongType, 0, -1, "D100 is a word, not a bit",
        "D100.0");
    add("a quad word where a bit is asked for", "B9", bits, Kind::WrongType, 7, -1, "B9 is a quad word, not a bit");
    add("a bit where a register is asked for", "X17", registers, Kind::WrongType, 2, -1,
        "X17 is a bit, not a register");
    add("a station is left out of the sentence", "3-X17", registers, Kind::WrongType, 2, -1,
        "X17 is a bit, not a register");
    add("empty", "", any, Kind::Empty, -1, -1, "the address is empty");
    add("a station and nothing behind it", "3-", any, Kind::Empty, -1, -1, "the address is empty");

    add("no format begins so", "Q9", any, Kind::UnknownFront, -1, 0, "no format begins with \"Q\"");
    add("no bit format begins so", "W9", bits, Kind::UnknownFront, -1, 0, "no bit format begins with \"W\"");
    add("no register format begins so", "X8", registers, Kind::UnknownFront, -1, 0,
        "no register format begins with \"X\"");
    add("a symbol is begun and left", "SX5", any, Kind::UnknownFront, -1, 1, "no format begins with \"SX\"", "X5 SM5");
    add("lower case where capitals are accepted", "d100", any, Kind::UnknownFront, -1, 0,
        "\"d\" at position 1 should be \"D\": letter case counts", "D100");
    add("a blank in front", " D100", any, Kind::UnknownFront, -1, 0, "there is a blank at position 1", "D100");
    add("a blank behind", "D100 ", any, Kind::UnexpectedCharacter, 0, 4, "there is a blank at position 5", "D100");
    add("a character beyond ASCII", "\xc3\xa4", any, Kind::UnknownFront, -1, 0, "no format begins with \"\xc3\xa4\"");

    add("the symbol alone", "D", any, Kind::Incomplete, 0, 1, "D expects a digit at position 2, where the address ends",
        "D0 D0.0");
    add("half a symbol", "S", any, Kind::Incomplete, 11, 1, "SM expects \"M\" at position 2, where the address ends",
        "SM0");
    add("a digit below those that can be", "V0", any, Kind::UnexpectedCharacter, 13, 1,
        "V expects a digit from 1 to 5 at position 2, not \"0\"", "V1 EV0");
    add("a digit above those that can be", "V7", any, Kind::UnexpectedCharacter, 13, 1,
        "V expects a digit from 1 to 5 at position 2, not \"7\"", "V5");
    add("an odd number where numbers are even", "EV7", any, Kind::Incomplete, 14, 3,
        "EV expects \"0\", \"2\", \"4\", \"6\" or \"8\" at position 4, where the address ends", "EV6 EV70");
    add("a word is no digit that looks like one", "SMIT", any, Kind::UnexpectedCharacter, 11, 2,
        "SM expects a digit at position 3, not \"I\"", "SM0");
    add("a separator without a bit", "D100.", any, Kind::Incomplete, 1, 5,
        "Dn.b expects a hexadecimal digit at position 6, where the address ends", "D100.0 D100");
    add("a letter among digits", "D10x", any, Kind::UnexpectedCharacter, 0, 3,
        "D expects a digit or the end of the address at position 4, not \"x\"", "D10");
    add("a letter in place of the number", "Dx", any, Kind::UnexpectedCharacter, 0, 1,
        "D expects a digit at position 2, not \"x\"", "D0");
    add("two numbers are never drawn together", "D10;25", any, Kind::UnexpectedCharacter, 0, 3,
        "D expects a digit or the end of the address at position 4, not \";\"", "D10 D10.2");
    add("a digit that the radix does not have, in an aligned number", "K18", any, Kind::UnexpectedCharacter, 4, 2,
        "8 at position 3 is no octal digit; the numbers of K are octal", "K0 K20");
    add("a bit that is no hexadecimal digit", "D100.G", any, Kind::UnexpectedCharacter, 1, 5,
        "Dn.b expects a hexadecimal digit at position 6, not \"G\"", "D100.0 D100");
    add("a digit that the radix does not have", "X18", any, Kind::UnexpectedCharacter, 2, 2,
        "8 at position 3 is no octal digit; the numbers of X are octal", "X17 X20");
    add("a bit of two digits where there is one", "D1.AB", any, Kind::BitBeyondWord, 1, 3,
        "bit AB is beyond the last bit of Dn.b, F", "D1.F");
    add("lower-case hexadecimal where the pattern has capitals only", "W1f", any, Kind::UnexpectedCharacter, 6, 2,
        "\"f\" at position 3 should be \"F\": letter case counts", "W1F");

    add("one above the last", "D8000", any, Kind::AboveLast, 0, 1, "number 8000 is above D's last, 7999", "D7999");
    add("more digits than the pattern has", "D10000", any, Kind::AboveLast, 0, 1,
        "number 10000 is above D's last, 7999", "D7999");
    add("more digits than the pattern has, in a word with a bit", "D10000.5", any, Kind::AboveLast, 1, 1,
        "number 10000 is above Dn.b's last, 7999", "D7999.5");
    add("a number that no int can hold", "D99999999999", any, Kind::NumberTooLong, 0, 1,
        "number 99999999999 is too long; D's last is 7999", "D7999");
    add("leading zeros beyond the pattern are no large number", "D00007", any, Kind::UnexpectedCharacter, 0, 5,
        "D expects the end of the address at position 6, not \"7\"", "D0007 D0000.7");
    add("a bit whose word is above the last", "D8000.0", any, Kind::AboveLast, 1, 1,
        "number 8000 is above Dn.b's last, 7999", "D7999.0");
    add("octal, in the row's writing", "X2000", any, Kind::AboveLast, 2, 1,
        "number 2000 is above X's last, 1777 (octal)", "X1777");
    add("hexadecimal, in the row's writing", "W1000", any, Kind::AboveLast, 6, 1,
        "number 1000 is above W's last, FFF (hexadecimal)", "WFFF");
    add("hexadecimal, below the first", "WF", any, Kind::BelowFirst, 6, 1,
        "number F is below W's first, 10 (hexadecimal)", "W10");
    add("one below the first", "P0", any, Kind::BelowFirst, 5, 1, "number 0 is below P's first, 1", "P1");
    add("not a multiple, two good ones near", "M33", any, Kind::NotAligned, 3, 1,
        "number 33 is not a multiple of 16; 32 and 48 are", "M32 M48");
    add("not a multiple, the one above beyond the last", "M99", any, Kind::NotAligned, 3, 1,
        "number 99 is not a multiple of 16; 96 is", "M96");
    add("not a multiple, the one below beneath the first", "M17", any, Kind::NotAligned, 3, 1,
        "number 17 is not a multiple of 16; 16 and 32 are", "M16 M32");
    add("not a multiple in octal", "K12", any, Kind::NotAligned, 4, 1,
        "number 12 is not a multiple of 20 (octal); 0 and 20 are", "K20 K0");
    add("not a multiple plus 1", "P16", any, Kind::NotAligned, 5, 1,
        "number 16 is not a multiple of 16 plus 1; 1 and 17 are", "P17 P1");
    add("misaligned and above the last: the last is what matters", "M113", any, Kind::AboveLast, 3, 1,
        "number 113 is above M's last, 100", "M96");
    add("limits that are no numbers", "L5", any, Kind::LimitsUnreadable, 8, 1,
        "the limits of L in the driver database, \"\" and \"x9\", are no numbers of its radix");

    add("a family that has no such member", "DB5000.DBW4", any, Kind::UnknownFamilyMember, 9, -1,
        "no format of the DB family takes \"DB5000.DBW4\"; one is DBn.DBWb: data block word, e.g. DB1.DBW4");
    add("of several families the one that is most alike", "DB12.DBX3.8", any, Kind::UnknownFamilyMember, 10, -1,
        "no format of the DB family takes \"DB12.DBX3.8\"; one is DBn.DBXb.x: data block bit, e.g. DB1.DBX3.7");
    add("a family in lower case", "db1.dbw4", any, Kind::UnknownFamilyMember, 9, -1,
        "no format of the DB family takes \"db1.dbw4\"; one is DBn.DBWb: data block word, e.g. DB1.DBW4");
    add("families of the wrong type are not offered", "DB5000.DBW4", bits, Kind::UnknownFamilyMember, 10, -1,
        "no format of the DB family takes \"DB5000.DBW4\"; one is DBn.DBXb.x: data block bit, e.g. DB1.DBX3.7");
}

void TestAddressDiagnosis::diagnosis()
{
    QFETCH(QString, address);
    QFETCH(int, type);
    QFETCH(Kind, kind);
    QFETCH(int, row);
    QFETCH(int, position);
    QFETCH(QString, sentence);
    QFETCH(QString, suggestions);
    const LogRecorder log;
    const AddressDiagnosis found = label::diagnoseAddress(deviceTable(), address, type);
    QCOMPARE(label::diagnosisSentence(found), sentence);
    QCOMPARE(found.kind(), kind);
    QCOMPARE(found.row.index, row);
    QCOMPARE(found.position(), position);
    QCOMPARE(found.type, type);
    QCOMPARE(found.suggestions.join(QLatin1Char(' ')), suggestions);
}

/// 0 D, 1 D bits, 2 X, 3 timer bits, 4 a number of any length, 5 and 6 one symbol of two ranges, 7 SM, 8 last two
/// digits.
label::CommandInformationTalbe slipTable()
{
    LogRecorder log;
    label::CommandInformationTalbe table;
    const QList<Row> rows = {
        row("(D)(\\d{1,4})", 2, "D: data register, e.g. D100", "D", "0", "7999"),
        row("(D)(\\d{1,4}\\.[0-9A-F])", 0, "Dn.b: bit of a data register, e.g. D100.A", "D", "0", "7999", "dot-f:r"),
        row("(X)([0-7]+)", 0, "X: input (octal), e.g. X17", "X", "0", "1777", "union-oct:n", 8),
        row("(T4:)(\\d{1,3}/(?:EN|DN))", 0, "T4:n/DN: timer bit, e.g. T4:0/DN", "T4:", "0", "99", "slash-dec:n"),
        row("(R)(\\d+)", 2, "R: file register, e.g. R1", "R", "0", "100"),
        row("(SD)(\\d+)", 2, "SD: special register, e.g. SD1", "SD", "0", "99"),
        row("(SD)(\\d+)", 2, "SD: special register, e.g. SD200", "SD", "200", "299"),
        row("(SM)(\\d+)", 0, "SM: special relay, e.g. SM400", "SM", "0", "999", "union-dec:n"),
        row("(CH)(\\d{0,3}(?:0\\d|1[0-5]))", 0, "CH: channel bit, e.g. CH1015", "CH", "0", "99", "last2-dec:n"),
    };
    for (const Row &one : rows)
        table.addCommandFormatter(one.formatter());
    return table;
}

void TestAddressDiagnosis::slips_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<Slip>("slip");
    QTest::addColumn<int>("position");
    QTest::addColumn<QString>("sentence");
    QTest::addColumn<QString>("suggestions");

    const auto add = [](const char *name, const char *address, Kind kind, Slip slip, int position, const char *sentence,
                        const char *suggestions = "") {
        QTest::newRow(name) << QString::fromUtf8(address) << kind << slip << position << QString::fromUtf8(sentence)
                            << QString::fromUtf8(suggestions);
    };
    constexpr Kind character = Kind::UnexpectedCharacter;
    add("the letter O for a digit", "DO100", character, Slip::LetterForDigit, 1,
        "the letter \"O\" at position 2 should be the digit 0", "D0100");
    add("the letter o for digits", "D1oo", character, Slip::LetterForDigit, 2,
        "the letter \"o\" at position 3 should be the digit 0", "D100");
    add("the letter l for a digit", "Dl0", character, Slip::LetterForDigit, 1,
        "the letter \"l\" at position 2 should be the digit 1", "D10");
    add("the letter I for a digit", "XI7", character, Slip::LetterForDigit, 1,
        "the letter \"I\" at position 2 should be the digit 1", "X17");
    add("lower case in the middle", "Sm400", Kind::UnknownFront, Slip::LetterCase, 1,
        "\"m\" at position 2 should be \"M\": letter case counts", "SM400");
    add("lower case throughout", "t4:0/dn", Kind::UnknownFront, Slip::LetterCase, 0,
        "\"t\" at position 1 should be \"T\": letter case counts", "T4:0/DN");
    add("a blank in the middle", "D 100", character, Slip::Blank, 1, "there is a blank at position 2", "D100");
    add("a blank before the bit", "D100 .A", character, Slip::Blank, 4, "there is a blank at position 5", "D100.A");
    add("a comma for the point", "D100,A", character, Slip::WrongSeparator, 4, "\",\" at position 5 should be \".\"",
        "D100.A");
    add("a slash for the point", "D100/A", character, Slip::WrongSeparator, 4, "\"/\" at position 5 should be \".\"",
        "D100.A");
    add("a point for the slash", "T4:5.DN", character, Slip::WrongSeparator, 4, "\".\" at position 5 should be \"/\"",
        "T4:5/DN");
    add("no separator before the bit", "D100A", character, Slip::MissingSeparator, 4, "\".\" is missing at position 5",
        "D100.A D100");
    add("no separator before a word", "T4:5DN", character, Slip::MissingSeparator, 4, "\"/\" is missing at position 5",
        "T4:5/DN");
    add("a wide digit", "X\xef\xbc\x95", character, Slip::NotAscii, 1,
        "\"\xef\xbc\x95\" at position 2 only looks like \"5\"", "X5");
    add("a wide letter",
        "\xef\xbc\xa4"
        "100",
        Kind::UnknownFront, Slip::NotAscii, 0, "\"\xef\xbc\xa4\" at position 1 only looks like \"D\"", "D100");
    add("an octal digit that is none", "X90", character, Slip::DigitOutsideRadix, 1,
        "9 at position 2 is no octal digit; the numbers of X are octal", "X77 X100");
    add("another word behind the slash", "T4:5/DM", character, Slip::None, 6,
        "T4:n/DN expects \"N\" at position 7, not \"M\"", "T4:5/DN");
    add("symbol letters turned round", "MS400", Kind::UnknownFront, Slip::None, 0, "no format begins with \"M\"",
        "SM400");
    add("a doubled symbol letter", "SMM400", character, Slip::None, 2, "SM expects a digit at position 3, not \"M\"",
        "SM400");
    add("a wrong symbol letter", "SN400", Kind::UnknownFront, Slip::None, 1, "no format begins with \"SN\"", "SM400");
    add("a symbol letter too few", "C1015", Kind::UnknownFront, Slip::None, 1, "no format begins with \"C1\"",
        "CH1015");
    add("a bit beyond the word", "D100.16", Kind::BitBeyondWord, Slip::None, 5,
        "bit 16 is beyond the last bit of Dn.b, F", "D100.F");
    add("the last two digits beyond the word", "CH1016", Kind::BitBeyondWord, Slip::None, 4,
        "bit 16 is beyond the last bit of CH, 15", "CH1015");
    add("a bit of a register without bits", "R5.1", Kind::NoBits, Slip::None, 2,
        "the bits of R cannot be addressed; the address ends before position 3", "R5");
    add("a bit of a bit", "X5.1", Kind::NoBits, Slip::None, 2, "X5 is a bit itself; the address ends before position 3",
        "X5");
    add("of two ranges the nearer one, below", "SD110", Kind::AboveLast, Slip::None, 2,
        "number 110 is above SD's last, 99", "SD99");
    add("of two ranges the nearer one, above", "SD195", Kind::BelowFirst, Slip::None, 2,
        "number 195 is below SD's first, 200", "SD200");
    add("a text of any length is no slip", QByteArray(5000, 'D').constData(), character, Slip::None, 1,
        "D expects a digit at position 2, not \"D\"");
}

void TestAddressDiagnosis::slips()
{
    QFETCH(QString, address);
    QFETCH(Slip, slip);
    LogRecorder log;
    const label::CommandInformationTalbe table = slipTable();
    log.take();
    const AddressDiagnosis found = label::diagnoseAddress(table, address, any);
    QCOMPARE(log.take(), QStringList());
    QTEST(label::diagnosisSentence(found), "sentence");
    QTEST(found.suggestions.join(QLatin1Char(' ')), "suggestions");
    QTEST(found.kind(), "kind");
    const AddressDiagnosis::TypingError *const error = found.typingError();
    QVERIFY((error ? error->slip : Slip::None) == slip);
    QTEST(found.position(), "position");
    QVERIFY(!found.isAccepted());
}

void TestAddressDiagnosis::takenUnchecked_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("sentence");
    QTest::addColumn<QString>("suggestion");
    QTest::newRow("a number that no int can hold")
        << "R99999999999"
        << "number 99999999999 is too long; R's last is 100, yet labels take it unchecked"
        << "R100";
    QTest::newRow("a wide digit") << QString::fromUtf8("D\xef\xbc\x95")
                                  << QString::fromUtf8("\"\xef\xbc\x95\" at position 2 only looks like \"5\", yet "
                                                       "labels take it unchecked")
                                  << "D5";
}

void TestAddressDiagnosis::takenUnchecked()
{
    QFETCH(QString, address);
    LogRecorder log;
    const label::CommandInformationTalbe table = slipTable();
    const AddressDiagnosis found = label::diagnoseAddress(table, address, any);
    QVERIFY(table.getFirstMatchedAddressIndex(address, any) >= 0);
    QVERIFY(found.isAccepted());
    QVERIFY(found.isUnchecked);
    QVERIFY(found.kind() != Kind::Accepted);
    QTEST(label::diagnosisSentence(found), "sentence");
    QTEST(found.suggestions.join(QLatin1Char(' ')), "suggestion");
}

void TestAddressDiagnosis::emptyTable()
{
    const label::CommandInformationTalbe table;
    QCOMPARE(label::diagnosisSentence(label::diagnoseAddress(table, QStringLiteral("D1"), any)),
             QStringLiteral("no format begins with \"D\""));
    QCOMPARE(label::diagnoseAddress(table, QString(), any).kind(), Kind::Empty);
}

void TestAddressDiagnosis::acceptedExactlyWhenARowAccepts_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("any row") << any;
    QTest::newRow("bit rows") << bits;
    QTest::newRow("register rows") << registers;
}

void TestAddressDiagnosis::acceptedExactlyWhenARowAccepts()
{
    QFETCH(int, type);
    const LogRecorder log;
    const label::CommandInformationTalbe table = deviceTable();
    const QString alphabet = QStringLiteral("DXMKW0179AFf.-_ ");
    int accepted = 0;
    quint32 state = 4711;
    for (int round = 0; round < 4000; ++round) {
        QString address;
        state = state * 1664525u + 1013904223u;
        const int size = static_cast<int>(state >> 24) % 7;
        for (int index = 0; index < size; ++index) {
            state = state * 1664525u + 1013904223u;
            address.append(alphabet.at(static_cast<int>((state >> 16) % static_cast<quint32>(alphabet.size()))));
        }
        const int index = table.getFirstMatchedAddressIndex(address, type);
        const AddressDiagnosis found = label::diagnoseAddress(table, address, type);
        QVERIFY2((found.kind() == Kind::Accepted) == (index >= 0), qPrintable(address));
        QVERIFY2(label::diagnosisSentence(found).isEmpty() == (index >= 0), qPrintable(address));
        if (index >= 0) {
            QCOMPARE(found.row.index, index);
            ++accepted;
        }
    }
    QVERIFY(accepted > 10);
}

void TestAddressDiagnosis::knownMemberOfAFamilyChangesNothing()
{
    const LogRecorder log;
    label::CommandInformationTalbe table = deviceTable();
    Row member = row("(DB12\\.DBW)(\\d+)", 2, "DBn.DBWb: data block word, e.g. DB1.DBW4", "DB12.DBW", "0", "65534");
    label::CommandFormatter formatter = member.formatter();
    formatter.setEditorPrefixSymbol(QStringLiteral("DB"));
    table.addCommandFormatter(formatter);
    QCOMPARE(label::diagnosisSentence(label::diagnoseAddress(table, QStringLiteral("DB12.DBX3.8"), any)),
             QStringLiteral("no format of the DB family takes \"DB12.DBX3.8\"; one is DBn.DBXb.x: data block bit, e.g. "
                            "DB1.DBX3.7"));
}

void TestAddressDiagnosis::limitOfAFamilyMember()
{
    const LogRecorder log;
    label::CommandInformationTalbe table = deviceTable();
    label::CommandFormatter formatter = table.getFormatterAtIndex(9);
    formatter.setEditorPrefixSymbol(QStringLiteral("DB"));
    formatter.setPattern(QStringLiteral("(DB12\\.DBW)(\\d+)"));
    formatter.setPrefixSymbol(QStringLiteral("DB12.DBW"));
    table.addCommandFormatter(formatter);
    const AddressDiagnosis found = label::diagnoseAddress(table, QStringLiteral("DB12.DBW65535"), any);
    QCOMPARE(found.row.index, 15);
    QCOMPARE(label::diagnosisSentence(found), QStringLiteral("number 65535 is above DB12.DBW's last, 65534"));
}

void TestAddressDiagnosis::values()
{
    const LogRecorder log;
    const AddressDiagnosis aligned = label::diagnoseAddress(deviceTable(), QStringLiteral("7-M33"), registers);
    QCOMPARE(aligned.address, QStringLiteral("M33"));
    QCOMPARE(aligned.row.format, QStringLiteral("M"));
    const auto fault = std::get<AddressDiagnosis::NotAligned>(aligned.reason);
    QCOMPARE(fault.number, QStringLiteral("33"));
    QCOMPARE(fault.group, QStringLiteral("16"));
    QCOMPARE(fault.remainder, QString());
    QCOMPARE(fault.nearest, QStringList({QStringLiteral("32"), QStringLiteral("48")}));
    const AddressDiagnosis text = label::diagnoseAddress(deviceTable(), QStringLiteral("d7"), any);
    QCOMPARE(text.suggestions, QStringList({QStringLiteral("D7")}));
}

void TestAddressDiagnosis::neverChangesTheTable()
{
    const LogRecorder log;
    const label::CommandInformationTalbe table = deviceTable();
    label::diagnoseAddress(table, QStringLiteral("DB12.DBW4"), any);
    QCOMPARE(table.countFormatters(), 15);
}

QTEST_GUILESS_MAIN(TestAddressDiagnosis)

#include "tst_addressdiagnosis.moc"
