// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/label_table/addressdiagnosis.h"

#include "support/forwardinglabel.h"
#include "support/labelfixtures.h"
#include "support/logrecorder.h"
#include "zelmar_label/label_store/dynamiclabelcreators.h"
#include "zelmar_label/label_table/labelloader.h"

#include <QCoreApplication>
#include <QTest>
#include <QTranslator>

#include <memory>

using label::AddressDiagnosis;
using label::LabelLoader;
using Kind = label::AddressDiagnosis::Kind;
using Slip = label::AddressDiagnosis::Slip;

Q_DECLARE_METATYPE(label::AddressDiagnosis::Kind)

namespace {

constexpr int any = -1;
constexpr int bits = 0;
constexpr int registers = 2;

Row row(const char *pattern, int type, const char *description, const char *symbol, const char *start, const char *end,
        const char *rule = "")
{
    Row made;
    made.pattern = QLatin1String(pattern);
    made.type = type;
    made.description = QLatin1String(description);
    made.prefixSymbol = QLatin1String(symbol);
    made.start = QLatin1String(start);
    made.end = QLatin1String(end);
    made.multipleRule = QLatin1String(rule);
    return made;
}

/// A loader does not run its creator's destructor, so the test owns it.
template<typename Creator>
class LentCreator final : public label::FamilyCreator
{
public:
    explicit LentCreator(Creator &creator)
        : FamilyCreator(creator.family())
        , m_creator(creator)
    {
    }
    bool create(const QString &address, label::DynamicLabelItem &item) override
    {
        return m_creator.create(address, item);
    }
    bool foresee(const QString &address, label::DynamicLabelItem &item) const override
    {
        return m_creator.foresee(address, item);
    }
    bool isAtRest() const override { return m_creator.isAtRest(); }

private:
    Creator &m_creator;
};

template<typename Creator>
std::shared_ptr<LabelLoader> labelWith(const label::CommandInformationTalbe &table)
{
    struct Holder
    {
        explicit Holder(const label::CommandInformationTalbe &rows)
            : label(rows, new LentCreator<Creator>(creator))
        {
        }
        Creator creator;
        LabelLoader label;
    };
    const auto holder = std::make_shared<Holder>(table);
    return std::shared_ptr<LabelLoader>(holder, &holder->label);
}

/// 0 MB, 1 M, 2 to 4 families of data blocks.
std::shared_ptr<LabelLoader> blockLabel()
{
    label::CommandInformationTalbe table;
    for (const Row &one :
         {row("(MB)(\\d{1,5})", 1, "MB: memory byte, e.g. MB10", "MB", "0", "999"),
          row("(M)(\\d{1,5}\\.[0-7])", 0, "Mn.b: memory bit, e.g. M10.7", "M", "0", "999", "dot-oct:r_MB"),
          row("DB_DBX", 0, "DBn.DBXb.x: data block bit, e.g. DB1.DBX3.7", "DB", "0", "65535", "dot-oct:r"),
          row("DB_DBX_BYTE", 1, "DBn.DBXb: byte of bits, e.g. DB1.DBX3", "DB", "0", "65535"),
          row("DB_DBW", 2, "DBn.DBWb: data block word, e.g. DB1.DBW4", "DB", "0", "65534")})
        table.addCommandFormatter(one.formatter());
    return labelWith<label::IsoOnTcpCerator>(table);
}

/// 0 N7, 1 to 5 families of data files.
std::shared_ptr<LabelLoader> fileLabel()
{
    label::CommandInformationTalbe table;
    for (const Row &one :
         {row("(N7:)(\\d+)", 2, "N7:n: integer, e.g. N7:5", "N7:", "0", "255"),
          row("NUMBER", 2, "Nf:n: integer, e.g. N10:5", "N", "0", "255"),
          row("NUMBER_BIT", 0, "Nf:n/b: bit of an integer, e.g. N10:5/3", "N", "0", "255", "slash-dec:r"),
          row("TIMER_DN", 0, "Tf:n/DN: done bit, e.g. T10:5/DN", "T", "0", "255"),
          row("COUNTER_DN", 0, "Cf:n/DN: done bit, e.g. C10:5/DN", "C", "0", "255")})
        table.addCommandFormatter(one.formatter());
    return labelWith<label::DF1Creator>(table);
}

/// Marks translated texts, to find a sentence that is not translated, or twice.
class MarkingTranslator : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *text, const char *, int) const override
    {
        return qstrcmp(context, "AddressDiagnosis") == 0 ? QLatin1Char('<') + QString::fromUtf8(text) + QLatin1Char('>')
                                                         : QString();
    }
};

} // namespace

class TestLabelDiagnosis : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void blocks_data();
    void blocks();
    void files_data();
    void files();
    void valuesOfAFamily();
    void valuesWithAStation();
    void askingAgainGivesTheSame();
    void creatorKeepsWhatItKnew();
    void foreignLabel_data();
    void foreignLabel();
    void foreignLabelIsNotAskedToGrow();
    void everySentenceIsTranslated_data();
    void everySentenceIsTranslated();

private:
    static void addColumns();
    static void verify(LabelLoader &label);
};

void TestLabelDiagnosis::addColumns()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<int>("type");
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("sentence");
    QTest::addColumn<QString>("suggestions");
}

/// The diagnosis of an address; tests that it agrees with the label.
void TestLabelDiagnosis::verify(LabelLoader &label)
{
    QFETCH(QString, address);
    QFETCH(int, type);
    QFETCH(Kind, kind);
    QFETCH(int, row);
    QFETCH(QString, sentence);
    QFETCH(QString, suggestions);
    const int rows = label.countType(0);
    LogRecorder log;
    const AddressDiagnosis found = label::diagnoseAddress(label, address, type);
    QCOMPARE(log.take(), QStringList());
    QCOMPARE(label::diagnosisSentence(found), sentence);
    QCOMPARE(found.suggestions.join(QLatin1Char(' ')), suggestions);
    QCOMPARE(found.kind(), kind);
    QCOMPARE(found.row.index, row);
    QCOMPARE(label.countType(0), rows);
    QCOMPARE(found.isAccepted(), label.addressValidation(address, type) >= 0);
}

void TestLabelDiagnosis::blocks_data()
{
    addColumns();
    const auto add = [](const char *name, const char *address, int type, Kind kind, int row, const char *sentence,
                        const char *suggestions = "") {
        QTest::newRow(name) << QString::fromUtf8(address) << type << kind << row << QString::fromUtf8(sentence)
                            << QString::fromUtf8(suggestions);
    };
    add("a new block is accepted", "DB12.DBW4", any, Kind::Accepted, 4, "");
    add("a new block's bit is accepted", "DB12.DBX3.7", bits, Kind::Accepted, 2, "");
    add("beyond the last of a new block", "DB12.DBW65535", any, Kind::AboveLast, 4,
        "number 65535 is above DB12.DBW's last, 65534, yet labels take it unchecked", "DB12.DBW65534");
    add("too long a number in a new block", "DB12.DBW99999999999", any, Kind::NumberTooLong, 4,
        "number 99999999999 is too long; DB12.DBW's last is 65534, yet labels take it unchecked", "DB12.DBW65534");
    add("a new block of the other type", "DB12.DBW4", bits, Kind::WrongType, 4,
        "DB12.DBW4 is a word, not a bit, yet labels take it unchecked", "DB12.DBX4.0");
    add("a new block's bit as register", "DB12.DBX3.7", registers, Kind::WrongType, 2,
        "DB12.DBX3.7 is a bit, not a register, yet labels take it unchecked", "DB12.DBX3");
    add("a block with a station that is new", "3-DB12.DBW4", any, Kind::StationBeforeFamily, 4,
        "DB12.DBW is new, and is recognised only without a station in front", "DB12.DBW4");
    add("a family's own name", "DB_DBW", any, Kind::FamilyName, 4,
        "\"DB_DBW\" is the name of a family of formats and no address; the family is DBn.DBWb: data block word, e.g. "
        "DB1.DBW4",
        "DB1.DBW0");
    add("a block number above the last", "DB5000.DBW4", any, Kind::FamilyNumber, 4,
        "DB number 5000 is too high; the last is 2047", "DB2047.DBW4");
    add("a block number below the first", "DB0.DBW4", any, Kind::FamilyNumber, 4,
        "DB number 0 is too low; the first is 1", "DB1.DBW4");
    add("a bit beyond the byte of a block", "DB12.DBX3.8", any, Kind::BitBeyondWord, 2,
        "bit 8 is beyond the last bit of DBn.DBXb.x, 7", "DB12.DBX3.7");
    add("a bit of a block's word", "DB12.DBW4.1", any, Kind::UnknownFamilyMember, 2,
        "no format of the DB family takes \"DB12.DBW4.1\"; one is DBn.DBXb.x: data block bit, e.g. DB1.DBX3.7",
        "DB12.DBX4.1 DB12.DBW4");
    add("a block in lower case", "db12.dbw4", any, Kind::UnknownFamilyMember, 4,
        "\"d\" at position 1 should be \"D\": letter case counts", "DB12.DBW4");
    add("a block without its point", "DB12DBW4", any, Kind::UnknownFamilyMember, 4, "\".\" is missing at position 5",
        "DB12.DBW4");
    add("a block with a comma", "DB12,DBW4", any, Kind::UnknownFamilyMember, 4, "\",\" at position 5 should be \".\"",
        "DB12.DBW4");
    add("a block with a blank", "DB12.DBW 4", any, Kind::UnknownFamilyMember, 4, "there is a blank at position 9",
        "DB12.DBW4");
    add("a letter O in a block's number", "DB1O.DBW4", any, Kind::UnknownFamilyMember, 4,
        "the letter \"O\" at position 4 should be the digit 0", "DB10.DBW4");
    add("a letter l in a block's number", "DBl2.DBW4", any, Kind::UnknownFamilyMember, 4,
        "the letter \"l\" at position 3 should be the digit 1", "DB12.DBW4");
    add("a letter I for a block's whole number", "DBI.DBW4", any, Kind::UnknownFamilyMember, 4,
        "the letter \"I\" at position 3 should be the digit 1", "DB1.DBW4");
    add("a wide digit in a block's number", "DB\xef\xbc\x91.DBW0", any, Kind::UnknownFamilyMember, 4,
        "\"\xef\xbc\x91\" at position 3 only looks like \"1\"", "DB1.DBW0");
    add("a front that only families have", "DX1", any, Kind::UnknownFront, -1, "no format begins with \"DX\"");
    add("a block's word without its letter B", "DB12.DW4", any, Kind::UnknownFamilyMember, 4,
        "no format of the DB family takes \"DB12.DW4\"; one is DBn.DBWb: data block word, e.g. DB1.DBW4", "DB12.DBW4");
    add("a block that ends too soon", "DB12.DBW", registers, Kind::UnknownFamilyMember, 4,
        "no format of the DB family takes \"DB12.DBW\"; one is DBn.DBWb: data block word, e.g. DB1.DBW4", "DB12.DBW0");
    add("a family's symbol turned round", "BD12.DBW4", any, Kind::UnknownFront, -1, "no format begins with \"B\"",
        "DB12.DBW4");

    add("a station that is no number is taken", "x-MB10", any, Kind::Accepted, 0, "");
    add("of a refused address, the number is what counts", "x-MB1000", any, Kind::AboveLast, 0,
        "number 1000 is above MB's last, 999", "x-MB999");
    add("a dash within the address", "MB-10", any, Kind::StationNotNumber, -1,
        "the station \"MB\" is no decimal number", "MB10");
    add("a dash in front", "-Q5", any, Kind::StationNotNumber, -1, "the station number in front of \"-\" is missing");
    add("a dash alone", "-", any, Kind::StationNotNumber, -1, "the station number in front of \"-\" is missing");
    add("a station and nothing else", "3-", any, Kind::Empty, -1, "the address is empty");
    add("a station stays in front of what is suggested", "3-mb10", any, Kind::UnknownFront, -1,
        "\"m\" at position 1 should be \"M\": letter case counts", "3-MB10");
    add("a bit's register at its station", "3-M10.7", registers, Kind::WrongType, 1, "M10.7 is a bit, not a register",
        "3-MB10");
}

void TestLabelDiagnosis::blocks()
{
    verify(*blockLabel());
}

void TestLabelDiagnosis::files_data()
{
    addColumns();
    const auto add = [](const char *name, const char *address, Kind kind, int row, const char *sentence,
                        const char *suggestions = "") {
        QTest::newRow(name) << QString::fromUtf8(address) << any << kind << row << QString::fromUtf8(sentence)
                            << QString::fromUtf8(suggestions);
    };
    add("a new file is accepted", "N9:5", Kind::Accepted, 1, "");
    add("a file number with a zero in front", "N07:5", Kind::UnknownFamilyMember, 1,
        "no format of the N family takes \"N07:5\"; one is Nf:n: integer, e.g. N10:5", "N7:5");
    add("a file number below the first", "N8:5", Kind::FamilyNumber, 1, "N number 8 is too low; the first is 9",
        "N9:5");
    add("a file number above the last", "N256:1", Kind::FamilyNumber, 1, "N number 256 is too high; the last is 255",
        "N255:1");
    add("a bit beyond the word of a file", "N9:5/16", Kind::BitBeyondWord, 2,
        "bit 16 is beyond the last bit of Nf:n/b, 15", "N9:5/15");
    add("a point for the colon", "N9.5", Kind::UnknownFamilyMember, 1, "\".\" at position 3 should be \":\"", "N9:5");
    add("the file of a fixed row", "N7:256", Kind::AboveLast, 0, "number 256 is above N7:n's last, 255", "N7:255");
}

void TestLabelDiagnosis::files()
{
    verify(*fileLabel());
}

void TestLabelDiagnosis::valuesOfAFamily()
{
    const LogRecorder log;
    const auto label = blockLabel();
    const AddressDiagnosis found = label::diagnoseAddress(*label, QStringLiteral("DB12.DBW65535"), any);
    QVERIFY(found.isUnchecked);
    QCOMPARE(found.row.format, QStringLiteral("DB12.DBW"));
    QCOMPARE(found.row.first, QStringLiteral("0"));
    QCOMPARE(found.row.last, QStringLiteral("65534"));
    const auto above = std::get<AddressDiagnosis::AboveLast>(found.reason);
    QCOMPARE(above.number, QStringLiteral("65535"));
    QCOMPARE(above.last, QStringLiteral("65534"));
    QCOMPARE(above.position, 8);
    const AddressDiagnosis block = label::diagnoseAddress(*label, QStringLiteral("DB5000.DBW4"), any);
    QVERIFY(!block.isUnchecked);
    const auto number = std::get<AddressDiagnosis::FamilyNumber>(block.reason);
    QCOMPARE(number.number, QStringLiteral("5000"));
    QCOMPARE(number.limit, QStringLiteral("2047"));
    QCOMPARE(number.position, 2);
    QVERIFY(number.isTooHigh);
    QCOMPARE(label::diagnoseAddress(*label, QStringLiteral("DB12.DBX3.8"), any).position(), 10);
}

void TestLabelDiagnosis::valuesWithAStation()
{
    const LogRecorder log;
    const AddressDiagnosis found = label::diagnoseAddress(*blockLabel(), QStringLiteral("12-MB1x"), any);
    QCOMPARE(found.station, QStringLiteral("12"));
    QCOMPARE(found.address, QStringLiteral("MB1x"));
    QCOMPARE(found.position(), 3);
    QCOMPARE(found.positionInText(), 6);
    const AddressDiagnosis plain = label::diagnoseAddress(*blockLabel(), QStringLiteral("MB1x"), any);
    QVERIFY(plain.station.isNull());
    QCOMPARE(plain.positionInText(), 3);
    const AddressDiagnosis accepted = label::diagnoseAddress(*blockLabel(), QStringLiteral("12-MB1"), any);
    QCOMPARE(accepted.positionInText(), -1);
}

void TestLabelDiagnosis::askingAgainGivesTheSame()
{
    const LogRecorder log;
    const auto label = blockLabel();
    const QString beyond = QStringLiteral("DB12.DBW65535");
    const QString before = label::diagnosisSentence(label::diagnoseAddress(*label, beyond, any));
    // The family's row is added, and accepts only numbers within its limits.
    QCOMPARE(label->addressValidation(beyond, any), 5);
    QCOMPARE(label::diagnosisSentence(label::diagnoseAddress(*label, beyond, any)), before);
    QCOMPARE(label->addressValidation(beyond, any), 6);
    QCOMPARE(label::diagnoseAddress(*label, QStringLiteral("DB12.DBW5"), any).row.index, 5);
}

void TestLabelDiagnosis::creatorKeepsWhatItKnew()
{
    const LogRecorder log;
    const auto asked = fileLabel();
    const auto silent = fileLabel();
    const auto prefixOfCounter = [](LabelLoader &label, const char *address) {
        return label.getPrefixSymbolByTypeID(label.addressValidation(QLatin1String(address), any));
    };
    // A counter's row gets the prefix of the last timer address.
    label::diagnoseAddress(*asked, QStringLiteral("T11:1/DN"), any);
    QCOMPARE(prefixOfCounter(*asked, "C9:1/DN"), prefixOfCounter(*silent, "C9:1/DN"));
    asked->addressValidation(QStringLiteral("T12:1/DN"), any);
    silent->addressValidation(QStringLiteral("T12:1/DN"), any);
    for (const char *address : {"T13:1/DN", "N9:1", "C12:1/DN", "T13:1/DX", ""})
        label::diagnoseAddress(*asked, QLatin1String(address), any);
    QCOMPARE(prefixOfCounter(*asked, "C10:1/DN"), QStringLiteral("T12:"));
    QCOMPARE(prefixOfCounter(*silent, "C10:1/DN"), QStringLiteral("T12:"));
}

void TestLabelDiagnosis::foreignLabel_data()
{
    addColumns();
    const auto add = [](const char *name, const char *address, int type, Kind kind, int row, const char *sentence,
                        const char *suggestions = "") {
        QTest::newRow(name) << QString::fromUtf8(address) << type << kind << row << QString::fromUtf8(sentence)
                            << QString::fromUtf8(suggestions);
    };
    add("accepted", "MB10", any, Kind::Accepted, 0, "");
    add("accepted with a station", "3-MB10", registers, Kind::Accepted, 0, "");
    add("accepted as a bit", "M10.7", bits, Kind::Accepted, 1, "");
    add("a register as bit", "MB10", bits, Kind::WrongType, 0, "MB10 is a byte, not a bit");
    add("a bit as register", "M10.7", registers, Kind::WrongType, 1, "M10.7 is a bit, not a register");
    add("empty", "", any, Kind::Empty, -1, "the address is empty");
    add("a wrong station", "x-Q9", any, Kind::StationNotNumber, -1, "the station \"x\" is no decimal number");
    add("an unknown front", "Q9", any, Kind::UnknownFront, -1, "no format begins with \"Q\"");
    add("a number that is refused", "MB1000", any, Kind::NumberRefused, 0, "MB has no number 1000");
    add("an end too soon", "M10.", any, Kind::Incomplete, 1, "Mn.b is longer; the address ends at position 5");
    add("a wrong character", "M10.x", any, Kind::UnexpectedCharacter, 1, "Mn.b has no \"x\" at position 5");
    add("lower case", "3-mb10", any, Kind::UnknownFront, -1, "no format begins with \"m\"");
    add("a text behind it", "MB10x", any, Kind::UnexpectedCharacter, 0, "MB has no \"x\" at position 5");
}

void TestLabelDiagnosis::foreignLabel()
{
    QFETCH(QString, address);
    QFETCH(int, type);
    QFETCH(Kind, kind);
    QFETCH(int, row);
    QFETCH(QString, sentence);
    QFETCH(QString, suggestions);
    LogRecorder log;
    const auto known = blockLabel();
    log.take();
    ForwardingLabel foreign(*known);
    const AddressDiagnosis found = label::diagnoseAddress(foreign, address, type);
    QCOMPARE(label::diagnosisSentence(found), sentence);
    QCOMPARE(found.kind(), kind);
    QCOMPARE(found.row.index, row);
    QCOMPARE(found.suggestions.join(QLatin1Char(' ')), suggestions);
    QCOMPARE(log.lines(), QStringList());
}

void TestLabelDiagnosis::foreignLabelIsNotAskedToGrow()
{
    const LogRecorder log;
    const auto known = blockLabel();
    ForwardingLabel foreign(*known);
    label::diagnoseAddress(foreign, QStringLiteral("DB12.DBW4"), any);
    QCOMPARE(foreign.validations, 0);
    QCOMPARE(known->countType(0), 5);
}

void TestLabelDiagnosis::everySentenceIsTranslated_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("sentence");
    QTest::newRow("a plain sentence") << "" << any << "<the address is empty>";
    QTest::newRow("a limit") << "MB1000" << any << "<number 1000 is above MB's last, 999>";
    QTest::newRow("a list of characters") << "M10." << any
                                          << "<Mn.b expects <a digit from 0 to 7> at position 5, where the address "
                                             "ends>";
    QTest::newRow("alternatives") << "MB1x" << any
                                  << "<MB expects <<a digit> or <the end of the address>> at position 4, not \"x\">";
    QTest::newRow("a slip") << "mb1" << any << "<\"m\" at position 1 should be \"M\": letter case counts>";
    QTest::newRow("unchecked") << "DB1.DBW65535" << any
                               << "<<number 65535 is above DB1.DBW's last, 65534>, yet labels take it unchecked>";
    QTest::newRow("a type") << "MB1" << bits << "<MB1 is a byte, not a bit>";
    QTest::newRow("a front of a type") << "Q" << bits << "<no bit format begins with \"Q\">";
}

void TestLabelDiagnosis::everySentenceIsTranslated()
{
    QFETCH(QString, address);
    QFETCH(int, type);
    QFETCH(QString, sentence);
    const LogRecorder log;
    // Made before the translator exists: the value itself has no language.
    const AddressDiagnosis found = label::diagnoseAddress(*blockLabel(), address, type);
    MarkingTranslator translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    const QString translated = label::diagnosisSentence(found);
    QCoreApplication::removeTranslator(&translator);
    QCOMPARE(translated, sentence);
}

QTEST_GUILESS_MAIN(TestLabelDiagnosis)

#include "tst_labeldiagnosis.moc"
