// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/label_table/addressdiagnosis.h"

#include "support/labelfixtures.h"
#include "support/logrecorder.h"
#include "zelmar_label/label_table/commandinformationtalbe.h"

#include <QTest>

using label::AddressDiagnosis;
using Kind = label::AddressDiagnosis::Kind;

Q_DECLARE_METATYPE(label::AddressDiagnosis::Kind)

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

/// 0 D, 1 D bits, 2 X, 3 M8, 4 K, 5 P, 6 W, 7 B, 8 broken limits, 9 and 10 data block families, 11 SM, 12 without form.
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
    void emptyTable();
    void acceptedExactlyWhenARowAccepts_data();
    void acceptedExactlyWhenARowAccepts();
    void knownMemberOfAFamilyChangesNothing();
    void limitOfAFamilyMember();
    void values();
    void neverChangesTheTable();
    void example_data();
    void example();
    void formatName_data();
    void formatName();
    void familyTemplate_data();
    void familyTemplate();
    void dataTypeWord_data();
    void dataTypeWord();
    void radixRemark();
};

void TestAddressDiagnosis::diagnosis_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<int>("type");
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("position");
    QTest::addColumn<QString>("sentence");

    const auto add = [](const char *name, const char *address, int type, Kind kind, int row, int position,
                        const char *sentence) {
        QTest::newRow(name) << QString::fromUtf8(address) << type << kind << row << position
                            << QString::fromUtf8(sentence);
    };
    add("accepted, no sentence", "D100", any, Kind::Accepted, 0, -1, "");
    add("accepted with a station", "3-D100", any, Kind::Accepted, 0, -1, "");
    add("accepted as a bit", "D100.A", bits, Kind::Accepted, 1, -1, "");
    add("a register where a bit is asked for", "D100", bits, Kind::WrongType, 0, -1, "D100 is a word, not a bit");
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
    add("a symbol is begun and left", "SX5", any, Kind::UnknownFront, -1, 1, "no format begins with \"SX\"");
    add("lower case where capitals are accepted", "d100", any, Kind::UnknownFront, -1, 0,
        "no format begins with \"d\"; write D100");
    add("a blank in front", " D100", any, Kind::UnknownFront, -1, 0, "no format begins with \" \"; write D100");
    add("a blank behind", "D100 ", any, Kind::UnexpectedCharacter, 0, 4,
        "D expects a digit or the end of the address at position 5, not \" \"; write D100");
    add("a character beyond ASCII", "\xc3\xa4", any, Kind::UnknownFront, -1, 0, "no format begins with \"\xc3\xa4\"");

    add("the symbol alone", "D", any, Kind::Incomplete, 0, 1,
        "D expects a digit at position 2, where the address ends");
    add("half a symbol", "S", any, Kind::Incomplete, 11, 1, "SM expects \"M\" at position 2, where the address ends");
    add("a separator without a bit", "D100.", any, Kind::Incomplete, 1, 5,
        "Dn.b expects a hexadecimal digit at position 6, where the address ends");
    add("a letter among digits", "D10x", any, Kind::UnexpectedCharacter, 0, 3,
        "D expects a digit or the end of the address at position 4, not \"x\"");
    add("a letter in place of the number", "Dx", any, Kind::UnexpectedCharacter, 0, 1,
        "D expects a digit at position 2, not \"x\"");
    add("a bit that is no hexadecimal digit", "D100.G", any, Kind::UnexpectedCharacter, 1, 5,
        "Dn.b expects a hexadecimal digit at position 6, not \"G\"");
    add("a digit that the radix does not have", "X18", any, Kind::UnexpectedCharacter, 2, 2,
        "X expects a digit from 0 to 7 or the end of the address at position 3, not \"8\"");
    add("a text behind the bit", "D1.AB", any, Kind::UnexpectedCharacter, 1, 4,
        "Dn.b expects the end of the address at position 5, not \"B\"");
    add("lower-case hexadecimal where the pattern has capitals only", "W1f", any, Kind::UnexpectedCharacter, 6, 2,
        "W expects a hexadecimal digit or the end of the address at position 3, not \"f\"; write W1F");

    add("one above the last", "D8000", any, Kind::AboveLast, 0, -1, "number 8000 is above D's last, 7999");
    add("more digits than the pattern has", "D10000", any, Kind::AboveLast, 0, -1,
        "number 10000 is above D's last, 7999");
    add("more digits than the pattern has, in a word with a bit", "D10000.5", any, Kind::AboveLast, 1, -1,
        "number 10000 is above Dn.b's last, 7999");
    add("a number that no int can hold", "D99999999999", any, Kind::NumberTooLong, 0, -1,
        "number 99999999999 is too long; D's last is 7999");
    add("leading zeros beyond the pattern are no large number", "D00007", any, Kind::UnexpectedCharacter, 0, 5,
        "D expects the end of the address at position 6, not \"7\"");
    add("a bit whose word is above the last", "D8000.0", any, Kind::AboveLast, 1, -1,
        "number 8000 is above Dn.b's last, 7999");
    add("octal, in the row's writing", "X2000", any, Kind::AboveLast, 2, -1,
        "number 2000 is above X's last, 1777 (octal)");
    add("hexadecimal, in the row's writing", "W1000", any, Kind::AboveLast, 6, -1,
        "number 1000 is above W's last, FFF (hexadecimal)");
    add("hexadecimal, below the first", "WF", any, Kind::BelowFirst, 6, -1,
        "number F is below W's first, 10 (hexadecimal)");
    add("one below the first", "P0", any, Kind::BelowFirst, 5, -1, "number 0 is below P's first, 1");
    add("not a multiple, two good ones near", "M33", any, Kind::NotAligned, 3, -1,
        "number 33 is not a multiple of 16; 32 and 48 are");
    add("not a multiple, the one above beyond the last", "M99", any, Kind::NotAligned, 3, -1,
        "number 99 is not a multiple of 16; 96 is");
    add("not a multiple, the one below beneath the first", "M17", any, Kind::NotAligned, 3, -1,
        "number 17 is not a multiple of 16; 16 and 32 are");
    add("not a multiple in octal", "K12", any, Kind::NotAligned, 4, -1,
        "number 12 is not a multiple of 20 (octal); 0 and 20 are");
    add("not a multiple plus 1", "P16", any, Kind::NotAligned, 5, -1,
        "number 16 is not a multiple of 16 plus 1; 1 and 17 are");
    add("misaligned and above the last: the last is what matters", "M113", any, Kind::AboveLast, 3, -1,
        "number 113 is above M's last, 100");
    add("limits that are no numbers", "L5", any, Kind::LimitsUnreadable, 8, -1,
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
    const LogRecorder log;
    const AddressDiagnosis found = label::diagnoseAddress(deviceTable(), address, type);
    QCOMPARE(label::diagnosisSentence(found), sentence);
    QCOMPARE(found.kind, kind);
    QCOMPARE(found.row, row);
    QCOMPARE(found.position, position);
    QCOMPARE(found.type, type);
}

void TestAddressDiagnosis::emptyTable()
{
    const label::CommandInformationTalbe table;
    QCOMPARE(label::diagnosisSentence(label::diagnoseAddress(table, QStringLiteral("D1"), any)),
             QStringLiteral("no format begins with \"D\""));
    QCOMPARE(label::diagnoseAddress(table, QString(), any).kind, Kind::Empty);
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
        QVERIFY2((found.kind == Kind::Accepted) == (index >= 0), qPrintable(address));
        QVERIFY2(label::diagnosisSentence(found).isEmpty() == (index >= 0), qPrintable(address));
        if (index >= 0) {
            QCOMPARE(found.row, index);
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
    QCOMPARE(found.row, 13);
    QCOMPARE(label::diagnosisSentence(found), QStringLiteral("number 65535 is above DB12.DBW's last, 65534"));
}

void TestAddressDiagnosis::values()
{
    const LogRecorder log;
    const AddressDiagnosis aligned = label::diagnoseAddress(deviceTable(), QStringLiteral("7-M33"), registers);
    QCOMPARE(aligned.address, QStringLiteral("M33"));
    QCOMPARE(aligned.format, QStringLiteral("M"));
    QCOMPARE(aligned.number, QStringLiteral("33"));
    QCOMPARE(aligned.limit, QStringLiteral("16"));
    QCOMPARE(aligned.nearest, QStringList({QStringLiteral("32"), QStringLiteral("48")}));
    const AddressDiagnosis text = label::diagnoseAddress(deviceTable(), QStringLiteral("d7"), any);
    QCOMPARE(text.suggestion, QStringLiteral("D7"));
}

void TestAddressDiagnosis::neverChangesTheTable()
{
    const LogRecorder log;
    const label::CommandInformationTalbe table = deviceTable();
    label::diagnoseAddress(table, QStringLiteral("DB12.DBW4"), any);
    QCOMPARE(table.countFormatters(), 13);
}

void TestAddressDiagnosis::example_data()
{
    QTest::addColumn<QString>("description");
    QTest::addColumn<QString>("example");
    QTest::newRow("behind e.g.") << "D: register, e.g. D100"
                                 << "D100";
    QTest::newRow("a full stop does not belong to it") << "D: register, e.g. D100."
                                                       << "D100";
    QTest::newRow("nor does a bracket") << "D (e.g. D100)"
                                        << "D100";
    QTest::newRow("up to the next blank") << "D, e.g. D100 or D200"
                                          << "D100";
    QTest::newRow("none: symbol and first number") << "data register"
                                                   << "D5";
    QTest::newRow("no description") << ""
                                    << "D5";
}

void TestAddressDiagnosis::example()
{
    QFETCH(QString, description);
    const LogRecorder log;
    Row made;
    made.description = description;
    made.start = QStringLiteral("5");
    QTEST(label::exampleAddress(made.formatter()), "example");
}

void TestAddressDiagnosis::formatName_data()
{
    QTest::addColumn<QString>("description");
    QTest::addColumn<QString>("symbol");
    QTest::addColumn<QString>("editorSymbol");
    QTest::addColumn<QString>("name");
    QTest::newRow("the form of the description") << "Dn.b: bit"
                                                 << "D"
                                                 << ""
                                                 << "Dn.b";
    QTest::newRow("no form: the symbol") << "bit of a register"
                                         << "D"
                                         << ""
                                         << "D";
    QTest::newRow("words before the colon are no form") << "bit of D: bit"
                                                        << "D"
                                                        << ""
                                                        << "D";
    QTest::newRow("a member of a family: its own symbol") << "DBn.DBWb: word"
                                                          << "DB1.DBW"
                                                          << "DB"
                                                          << "DB1.DBW";
    QTest::newRow("a member without a symbol: the form") << "Cf:n/DN: bit"
                                                         << ""
                                                         << "C"
                                                         << "Cf:n/DN";
    QTest::newRow("neither form nor symbol") << ""
                                             << ""
                                             << ""
                                             << "the format";
}

void TestAddressDiagnosis::formatName()
{
    QFETCH(QString, description);
    QFETCH(QString, symbol);
    QFETCH(QString, editorSymbol);
    const LogRecorder log;
    Row made;
    made.description = description;
    made.prefixSymbol = symbol;
    label::CommandFormatter formatter = made.formatter();
    formatter.setEditorPrefixSymbol(editorSymbol);
    QTEST(label::formatName(formatter), "name");
}

void TestAddressDiagnosis::familyTemplate_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<bool>("isTemplate");
    QTest::newRow("a plain name") << "DB_DBX" << true;
    QTest::newRow("a name with digits") << "INT32Q16_NO_IDX" << true;
    QTest::newRow("an expression") << "(D)(\\d+)" << false;
    QTest::newRow("no pattern") << "" << false;
}

void TestAddressDiagnosis::familyTemplate()
{
    QFETCH(QString, pattern);
    const LogRecorder log;
    Row made;
    made.pattern = pattern;
    QTEST(label::isFamilyTemplate(made.formatter()), "isTemplate");
}

void TestAddressDiagnosis::dataTypeWord_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("word");
    QTest::newRow("0") << 0 << "bit";
    QTest::newRow("1") << 1 << "byte";
    QTest::newRow("2") << 2 << "word";
    QTest::newRow("3") << 3 << "double word";
    QTest::newRow("4") << 4 << "quad word";
    QTest::newRow("5") << 5 << "text";
    QTest::newRow("no name") << 7 << "type 7";
    QTest::newRow("negative") << -1 << "type -1";
}

void TestAddressDiagnosis::dataTypeWord()
{
    QFETCH(int, type);
    QTEST(label::dataTypeWord(type), "word");
}

void TestAddressDiagnosis::radixRemark()
{
    QCOMPARE(label::radixRemark(10), QString());
    QCOMPARE(label::radixRemark(8), QStringLiteral(" (octal)"));
    QCOMPARE(label::radixRemark(16), QStringLiteral(" (hexadecimal)"));
    QCOMPARE(label::radixRemark(2), QStringLiteral(" (radix 2)"));
}

QTEST_GUILESS_MAIN(TestAddressDiagnosis)

#include "tst_addressdiagnosis.moc"
