// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/labelfixtures.h"
#include "support/logrecorder.h"

#include "zelmar_label/label_table/dynamiclabelcreatorinterface.h"
#include "zelmar_label/label_table/labelloader.h"

#include <QtTest>

#include <memory>

using label::CommandInformationTalbe;
using label::DynamicLabelCreatorInterface;
using label::DynamicLabelItem;
using label::LabelInterface;
using label::LabelLoader;

namespace {

Row row(const char *pattern, int type, const char *symbol, const char *rule = "", int dataSize = 2)
{
    Row made;
    made.pattern = QLatin1String(pattern);
    made.type = type;
    made.prefixSymbol = QLatin1String(symbol);
    made.multipleRule = QLatin1String(rule);
    made.dataSize = dataSize;
    return made;
}

CommandInformationTalbe tableOf(const QList<Row> &rows)
{
    CommandInformationTalbe table;
    for (const Row &one : rows)
        table.addCommandFormatter(one.formatter());
    return table;
}

const QString nullKey = QStringLiteral("S>NULL_3_1");
const QString notABitLine =
    QStringLiteral("CommandInformationTalbe::convertBitCommandToRegisterCommand -- Argument cmd is not bit type");

/// Describes every address that is not empty and has no station by the same base pattern, and records its calls.
class RegisterCreator : public DynamicLabelCreatorInterface
{
public:
    RegisterCreator(QStringList &asked, const QString &basePattern)
        : m_asked(&asked)
        , m_basePattern(&basePattern)
    {
    }

    bool create(const QString &address, DynamicLabelItem &item) override
    {
        m_asked->append(address);
        const int digits = address.indexOf(QLatin1Char('_')) + 1;
        if (digits < 1 || address.contains(QLatin1Char('-')))
            return false;
        item.basePattern = *m_basePattern;
        item.prefixSymbol = address.left(digits);
        item.pattern = QLatin1Char('(') + item.prefixSymbol + QLatin1String(")(\\d+)");
        return true;
    }

private:
    QStringList *m_asked;
    const QString *m_basePattern;
};

enum ConversionRow { BitRow, TemplateRow, NarrowBitRow, NarrowRow, RelayRow, WordRow, ConversionRowCount };

QList<Row> conversionRows()
{
    return {
        row("(A_)(\\d+\\.[0-9a-f])", 0, "A_", "dot-f:r"), row("REGISTER", 2, "any"),
        row("(N_)(\\d+\\.\\d+)", 0, "N_", "dot-31:r"),    row("(N_)(\\d+)", 1, "N_", "", 1),
        row("(M)(\\d+)", 0, "M", "union-dec:rm16_D"),     row("(D)(\\d+)", 2, "D"),
    };
}

enum DistanceRow {
    Words,
    SecondWords,
    BitsInWords,
    SpecialRow,
    DoubleWords,
    PlainBits,
    BitsInBytes,
    WithoutSize,
    HexadecimalWords,
    SplitBits,
    DistanceRowCount
};

QList<Row> distanceRows()
{
    Row hexadecimal = row("(W)([0-9a-f]+)", 2, "W");
    hexadecimal.base = 16;
    hexadecimal.end = QStringLiteral("FFFF");
    return {
        row("(D)(\\d+|x)", 2, "D"),
        row("(D)(\\d+)", 3, "D", "", 4),
        row("(M)(\\d+)", 2, "M", "m16"),
        row("(S)(\\d+)", 2, "S", "semens1"),
        row("(E)(\\d+)", 3, "E", "", 4),
        row("(K)(\\d+)", 0, "K"),
        row("(V)(\\d+)", 1, "V", "m8", 1),
        row("(Z)(\\d+)", 2, "Z", "", -1),
        hexadecimal,
        row("(B)(\\d+\\.[0-9a-f])", 0, "B", "dot-f:r"),
    };
}

} // namespace

class LabelLoaderCommandsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void aKnownRegisterNeverReachesTheCreator();
    void anUnknownRegisterGetsARow();
    void aRegisterOfTheNewRowNeedsNoOtherRow();
    void aConvertedCommandKeepsNothingOfTheBitCommand();
    void withoutACreatorAnUnknownRegisterFails();
    void aStationKeepsTheCreatorFromHelping();
    void aFamilyWithoutATemplateAddsNoRow();
    void aTemplateOfBitsAddsARowThatDoesNotHelp();
    void failuresBeforeTheRegisterAskTheCreatorForNothing_data();
    void failuresBeforeTheRegisterAskTheCreatorForNothing();
    void aRegisterThatIsTooNarrowGetsARowThatDoesNotHelp();

    void mustContinue_data();
    void mustContinue();
    void mustContinueOfAWrongIndex();

    void inBlock_data();
    void inBlock();
    void blockLengthsAreCutTo32Bits_data();
    void blockLengthsAreCutTo32Bits();
    void theLengthOfTheCommandPlaysNoPart();
    void inBlockOfAWrongIndex();
    void stationsAreComparedBeforeTheIndex();

    void offset_data();
    void offset();
    void offsetBackwards_data();
    void offsetBackwards();
    void offsetOfAWrongIndex();

private:
    QStringList m_asked;
    QString m_basePattern;
    std::unique_ptr<LabelLoader> m_converter;
    std::unique_ptr<LabelLoader> m_distances;
};

void LabelLoaderCommandsTest::init()
{
    m_asked.clear();
    m_basePattern = QStringLiteral("REGISTER");
    m_converter = std::make_unique<LabelLoader>(tableOf(conversionRows()), new RegisterCreator(m_asked, m_basePattern));
    m_distances = std::make_unique<LabelLoader>(tableOf(distanceRows()));
    QCOMPARE(m_converter->countBitTypes(), int(ConversionRowCount));
    QCOMPARE(m_distances->countBitTypes(), int(DistanceRowCount));
}

void LabelLoaderCommandsTest::cleanup()
{
    m_converter.reset();
    m_distances.reset();
}

void LabelLoaderCommandsTest::aKnownRegisterNeverReachesTheCreator()
{
    int typeIndex = 77;
    const LogRecorder log;
    QCOMPARE(
        m_converter->convertBitCommandToRegisterCommand(command(QStringLiteral("3-M37"), 0), typeIndex).stringKey(),
        QStringLiteral("3-D32_2_1"));
    QCOMPARE(typeIndex, int(WordRow));
    QCOMPARE(m_asked, QStringList());
    QCOMPARE(m_converter->countBitTypes(), int(ConversionRowCount));
    QCOMPARE(log.lines(), QStringList());
}

void LabelLoaderCommandsTest::anUnknownRegisterGetsARow()
{
    int typeIndex = 77;
    const LogRecorder log;
    const CommunicatorCommand made =
        m_converter->convertBitCommandToRegisterCommand(command(QStringLiteral("A_12.f"), 0), typeIndex);
    QCOMPARE(made.stringKey(), QStringLiteral("A_12_2_1"));
    QCOMPARE(typeIndex, 6);
    QCOMPARE(m_asked, QStringList{"A_12"});
    QCOMPARE(m_converter->countBitTypes(), 7);
    QCOMPARE(m_converter->getPrefixSymbolByTypeID(6), QStringLiteral("A_"));
    QCOMPARE(m_converter->getEditUsedPrifixSymbolByTypeId(6), QStringLiteral("any"));
    QCOMPARE(m_converter->deviceTypesTable().getFormatterAtIndex(6).pattern(), QStringLiteral("(A_)(\\d+)"));
    QCOMPARE(log.lines(), QStringList{"convertBitCommandToRegisterCommand \"ERROR: A_12 cant not match any type. \""});
}

void LabelLoaderCommandsTest::aRegisterOfTheNewRowNeedsNoOtherRow()
{
    int typeIndex = 77;
    m_converter->convertBitCommandToRegisterCommand(command(QStringLiteral("A_12.f"), 0), typeIndex);
    typeIndex = 77;
    QCOMPARE(
        m_converter->convertBitCommandToRegisterCommand(command(QStringLiteral("A_13.0"), 0), typeIndex).stringKey(),
        QStringLiteral("A_13_2_1"));
    QCOMPARE(typeIndex, 6);
    QCOMPARE(m_converter->countBitTypes(), 7);
    QCOMPARE(
        m_converter->convertBitCommandToRegisterCommand(command(QStringLiteral("9-A_13.0"), 0), typeIndex).stringKey(),
        QStringLiteral("9-A_13_2_1"));
    QCOMPARE(m_asked, QStringList{"A_12"});
}

void LabelLoaderCommandsTest::aConvertedCommandKeepsNothingOfTheBitCommand()
{
    CommunicatorCommand bit = command(QStringLiteral("A_12.f"), 0, 9);
    bit.scanTime = 50;
    bit.auxiliaryNumber = 4;
    bit.auxiliaryText = QStringLiteral("text");
    bit.auxiliaryFlag = true;
    int typeIndex = 77;
    const CommunicatorCommand made = m_converter->convertBitCommandToRegisterCommand(bit, typeIndex);
    QCOMPARE(made.stringKey(), QStringLiteral("A_12_2_1"));
    QCOMPARE(made.scanTime, 1);
    QCOMPARE(made.auxiliaryNumber, 0);
    QCOMPARE(made.auxiliaryText, QString());
    QCOMPARE(made.auxiliaryFlag, false);
}

void LabelLoaderCommandsTest::withoutACreatorAnUnknownRegisterFails()
{
    LabelLoader loader(tableOf(conversionRows()));
    int typeIndex = 77;
    QCOMPARE(loader.convertBitCommandToRegisterCommand(command(QStringLiteral("A_12.f"), 0), typeIndex).stringKey(),
             nullKey);
    QCOMPARE(typeIndex, -1);
    QCOMPARE(loader.countBitTypes(), int(ConversionRowCount));
}

void LabelLoaderCommandsTest::aStationKeepsTheCreatorFromHelping()
{
    int typeIndex = 77;
    QCOMPARE(
        m_converter->convertBitCommandToRegisterCommand(command(QStringLiteral("2-A_12.f"), 0), typeIndex).stringKey(),
        nullKey);
    QCOMPARE(typeIndex, -1);
    QCOMPARE(m_asked, QStringList{"2-A_12"});
    QCOMPARE(m_converter->countBitTypes(), int(ConversionRowCount));
}

void LabelLoaderCommandsTest::aFamilyWithoutATemplateAddsNoRow()
{
    m_basePattern = QStringLiteral("nothing");
    int typeIndex = 77;
    const LogRecorder log;
    QCOMPARE(
        m_converter->convertBitCommandToRegisterCommand(command(QStringLiteral("A_12.f"), 0), typeIndex).stringKey(),
        nullKey);
    QCOMPARE(typeIndex, -1);
    QCOMPARE(m_asked, QStringList{"A_12"});
    QCOMPARE(m_converter->countBitTypes(), int(ConversionRowCount));
    QCOMPARE(log.lines(), QStringList{"convertBitCommandToRegisterCommand \"ERROR: A_12 cant not match any type. \""});
}

void LabelLoaderCommandsTest::aTemplateOfBitsAddsARowThatDoesNotHelp()
{
    m_basePattern = QStringLiteral("(M)(\\d+)");
    int typeIndex = 77;
    const LogRecorder log;
    QCOMPARE(
        m_converter->convertBitCommandToRegisterCommand(command(QStringLiteral("A_12.f"), 0), typeIndex).stringKey(),
        nullKey);
    QCOMPARE(typeIndex, -1);
    QCOMPARE(m_asked, QStringList{"A_12"});
    QCOMPARE(m_converter->countBitTypes(), 7);
    const QString line = QStringLiteral("convertBitCommandToRegisterCommand \"ERROR: A_12 cant not match any type. \"");
    QCOMPARE(log.lines(), (QStringList{line, line}));
}

void LabelLoaderCommandsTest::failuresBeforeTheRegisterAskTheCreatorForNothing_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<int>("dataType");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("a word command") << "A_12" << 2 << QStringList{notABitLine};
    QTest::newRow("a bit address of no row")
        << "X_12.f" << 0 << QStringList{"\"No match address (X_12.f) in specific type (0)\""};
}

void LabelLoaderCommandsTest::failuresBeforeTheRegisterAskTheCreatorForNothing()
{
    QFETCH(QString, address);
    QFETCH(int, dataType);
    QFETCH(QStringList, lines);
    int typeIndex = 77;
    const LogRecorder log;
    QCOMPARE(m_converter->convertBitCommandToRegisterCommand(command(address, dataType), typeIndex).stringKey(),
             nullKey);
    QCOMPARE(typeIndex, 77);
    QCOMPARE(m_asked, QStringList{QString()});
    QCOMPARE(m_converter->countBitTypes(), int(ConversionRowCount));
    QCOMPARE(log.lines(), lines);
}

void LabelLoaderCommandsTest::aRegisterThatIsTooNarrowGetsARowThatDoesNotHelp()
{
    int typeIndex = 77;
    const LogRecorder log;
    QCOMPARE(
        m_converter->convertBitCommandToRegisterCommand(command(QStringLiteral("N_5.9"), 0), typeIndex).stringKey(),
        nullKey);
    QCOMPARE(typeIndex, int(NarrowRow));
    QCOMPARE(m_asked, QStringList{"N_5"});
    QCOMPARE(m_converter->countBitTypes(), 7);
    const QString line = QStringLiteral("convertBitCommandToRegisterCommand \"ERROR: [N_5.9] bit offset(9) is bigger "
                                        "than converted command [N_5] datasize(8).\"");
    QCOMPARE(log.lines(), (QStringList{line, line}));
}

void LabelLoaderCommandsTest::mustContinue_data()
{
    QTest::addColumn<QString>("rule");
    QTest::addColumn<bool>("must");
    QTest::newRow("y") << "y" << true;
    QTest::newRow("Y") << "Y" << true;
    QTest::newRow("yes") << "yes" << true;
    QTest::newRow("YES") << "YES" << true;
    QTest::newRow("mixed case") << "yEs" << true;
    QTest::newRow("N") << "N" << false;
    QTest::newRow("no") << "no" << false;
    QTest::newRow("an empty rule") << "" << false;
    QTest::newRow("a blank in front") << " y" << false;
    QTest::newRow("a blank behind") << "yes " << false;
    QTest::newRow("only half of a yes") << "ye" << false;
    QTest::newRow("another affirmation") << "true" << false;
    QTest::newRow("a number") << "1" << false;
}

void LabelLoaderCommandsTest::mustContinue()
{
    QFETCH(QString, rule);
    QFETCH(bool, must);
    Row one;
    one.continueRule = rule;
    LabelLoader loader(tableOf({one}));
    QCOMPARE(loader.isMustContinue(0), must);
}

void LabelLoaderCommandsTest::mustContinueOfAWrongIndex()
{
    const LogRecorder log;
    QCOMPARE(m_distances->isMustContinue(-1), false);
    QCOMPARE(log.lines(), QStringList{"CommandInformationTalbe::continueRule wrong type_index  -1"});
}

void LabelLoaderCommandsTest::inBlock_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("block");
    QTest::addColumn<int>("blockType");
    QTest::addColumn<int>("blockLength");
    QTest::addColumn<bool>("inside");

    QTest::newRow("the first unit") << int(Words) << "D100"
                                    << "D100" << 2 << 10 << true;
    QTest::newRow("the last unit") << int(Words) << "D109"
                                   << "D100" << 2 << 10 << true;
    QTest::newRow("one unit before") << int(Words) << "D99"
                                     << "D100" << 2 << 10 << false;
    QTest::newRow("one unit behind") << int(Words) << "D110"
                                     << "D100" << 2 << 10 << false;
    QTest::newRow("a block of one unit") << int(Words) << "D100"
                                         << "D100" << 2 << 1 << true;
    QTest::newRow("a block of no unit") << int(Words) << "D100"
                                        << "D100" << 2 << 0 << false;
    QTest::newRow("the same station") << int(Words) << "3-D105"
                                      << "3-D100" << 2 << 10 << true;
    QTest::newRow("different stations") << int(Words) << "3-D100"
                                        << "4-D100" << 2 << 10 << false;
    QTest::newRow("a station for the command only") << int(Words) << "3-D100"
                                                    << "D100" << 2 << 10 << false;
    QTest::newRow("a station for the block only") << int(Words) << "D100"
                                                  << "0-D100" << 2 << 10 << false;
    QTest::newRow("an empty station is station 0") << int(Words) << "-D100"
                                                   << "0-D100" << 2 << 10 << true;
    QTest::newRow("station 03 is station 3") << int(Words) << "03-D100"
                                             << "3-D100" << 2 << 10 << true;
    QTest::newRow("leading zeros") << int(Words) << "D0105"
                                   << "D0100" << 2 << 10 << true;
    QTest::newRow("a block over the limits of the row") << int(Words) << "D9999"
                                                        << "D9990" << 2 << 100 << true;
    QTest::newRow("a command beyond the limits of the row") << int(Words) << "D10001"
                                                            << "D9990" << 2 << 100 << true;
    QTest::newRow("a command that only contains an address of the row") << int(Words) << "xD105y"
                                                                        << "D100" << 2 << 10 << true;

    QTest::newRow("a command of no row") << int(Words) << "X100"
                                         << "D100" << 2 << 10 << false;
    QTest::newRow("a command without a number") << int(Words) << "Dx"
                                                << "D100" << 2 << 10 << false;
    QTest::newRow("a block of no row") << int(Words) << "D100"
                                       << "X100" << 2 << 10 << false;
    QTest::newRow("a block of another row") << int(Words) << "D100"
                                            << "E100" << 3 << 10 << false;
    QTest::newRow("a block without a number") << int(Words) << "D100"
                                              << "Dx" << 2 << 10 << false;
    QTest::newRow("a block beyond the limits of the row") << int(Words) << "D10001"
                                                          << "D10000" << 2 << 10 << false;
    QTest::newRow("a block under another register type") << int(Words) << "D100"
                                                         << "D100" << 5 << 10 << true;
    QTest::newRow("a block under any type") << int(Words) << "D100"
                                            << "D100" << -1 << 10 << true;
    QTest::newRow("a block under the bit type") << int(Words) << "D100"
                                                << "D100" << 0 << 10 << false;
    QTest::newRow("a block that an earlier row accepts") << int(SecondWords) << "D100"
                                                         << "D100" << 3 << 10 << false;

    QTest::newRow("bits: the first byte") << int(BitsInWords) << "M16"
                                          << "M16" << 2 << 4 << true;
    QTest::newRow("bits: within the last byte") << int(BitsInWords) << "M79"
                                                << "M16" << 2 << 4 << true;
    QTest::newRow("bits: the first bit behind") << int(BitsInWords) << "M80"
                                                << "M16" << 2 << 4 << false;
    QTest::newRow("bits: the last bit before") << int(BitsInWords) << "M15"
                                               << "M16" << 2 << 4 << false;
    QTest::newRow("bits in bytes: the last bit") << int(BitsInBytes) << "V15"
                                                 << "V8" << 1 << 1 << true;
    QTest::newRow("bits in bytes: one bit behind") << int(BitsInBytes) << "V16"
                                                   << "V8" << 1 << 1 << false;
    QTest::newRow("another radix") << int(HexadecimalWords) << "W10f"
                                   << "W100" << 2 << 16 << true;
    QTest::newRow("another radix, one behind") << int(HexadecimalWords) << "W110"
                                               << "W100" << 2 << 16 << false;
    QTest::newRow("bits of words: the word counts") << int(SplitBits) << "B105.f"
                                                    << "B100.0" << 0 << 6 << true;
    QTest::newRow("bits of words: the word behind") << int(SplitBits) << "B106.0"
                                                    << "B100.0" << 0 << 6 << false;
    QTest::newRow("bits without a rule have no number") << int(PlainBits) << "K1"
                                                        << "K1" << 0 << 5 << false;
}

void LabelLoaderCommandsTest::inBlock()
{
    QFETCH(int, index);
    QFETCH(QString, address);
    QFETCH(QString, block);
    QFETCH(int, blockType);
    QFETCH(int, blockLength);
    QFETCH(bool, inside);
    const LogRecorder log;
    QCOMPARE(
        m_distances->isCommandInBlockRange(index, command(address, 2), command(block, blockType, quint64(blockLength))),
        inside);
    QCOMPARE(log.lines(), QStringList());
}

void LabelLoaderCommandsTest::blockLengthsAreCutTo32Bits_data()
{
    QTest::addColumn<quint64>("length");
    QTest::addColumn<bool>("inside");
    QTest::newRow("2^32 is no length") << Q_UINT64_C(0x100000000) << false;
    QTest::newRow("2^32 and five is five, which is too short") << Q_UINT64_C(0x100000005) << false;
    QTest::newRow("2^32 and six is six") << Q_UINT64_C(0x100000006) << true;
    QTest::newRow("2^32 less one is a negative length") << Q_UINT64_C(0xffffffff) << false;
    QTest::newRow("the longest positive length") << Q_UINT64_C(0x7fffffff) << true;
}

void LabelLoaderCommandsTest::blockLengthsAreCutTo32Bits()
{
    QFETCH(quint64, length);
    QFETCH(bool, inside);
    QCOMPARE(m_distances->isCommandInBlockRange(Words, command(QStringLiteral("D5"), 2),
                                                command(QStringLiteral("D0"), 2, length)),
             inside);
}

void LabelLoaderCommandsTest::theLengthOfTheCommandPlaysNoPart()
{
    const CommunicatorCommand block = command(QStringLiteral("D100"), 2, 10);
    QVERIFY(m_distances->isCommandInBlockRange(Words, command(QStringLiteral("D109"), 2, 50), block));
    QVERIFY(m_distances->isCommandInBlockRange(Words, command(QStringLiteral("D100"), 0, 0), block));
    QVERIFY(!m_distances->isCommandInBlockRange(Words, command(QStringLiteral("D99"), 2, 50), block));
}

void LabelLoaderCommandsTest::inBlockOfAWrongIndex()
{
    const LogRecorder log;
    const CommunicatorCommand word = command(QStringLiteral("D100"), 2);
    QVERIFY(!m_distances->isCommandInBlockRange(DistanceRowCount, word, word));
    QVERIFY(!m_distances->isCommandInBlockRange(-1, word, word));
    QCOMPARE(log.lines(), (QStringList{"CommandInformationTalbe:: addressRange  wrong type_index  10",
                                       "CommandInformationTalbe:: addressRange  wrong type_index  -1"}));
}

void LabelLoaderCommandsTest::stationsAreComparedBeforeTheIndex()
{
    const LogRecorder log;
    QVERIFY(!m_distances->isCommandInBlockRange(-1, command(QStringLiteral("1-D100"), 2),
                                                command(QStringLiteral("2-D100"), 2)));
    QCOMPARE(log.lines(), QStringList());
}

void LabelLoaderCommandsTest::offset_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("base");
    QTest::addColumn<QString>("address");
    QTest::addColumn<int>("bytes");
    QTest::newRow("equal commands") << int(Words) << "D100"
                                    << "D100" << 0;
    QTest::newRow("words") << int(Words) << "D100"
                           << "D105" << 10;
    QTest::newRow("double words") << int(DoubleWords) << "E100"
                                  << "E105" << 20;
    QTest::newRow("another radix") << int(HexadecimalWords) << "Wff"
                                   << "W101" << 4;
    QTest::newRow("stations are not compared") << int(Words) << "1-D100"
                                               << "2-D105" << 10;
    QTest::newRow("the special rule counts numbers") << int(SpecialRow) << "S100"
                                                     << "S105" << 5;
    QTest::newRow("bits: whole bytes") << int(BitsInWords) << "M0"
                                       << "M24" << 3;
    QTest::newRow("bits: a begun byte does not count") << int(BitsInWords) << "M0"
                                                       << "M7" << 0;
    QTest::newRow("bits: rounded down") << int(BitsInWords) << "M3"
                                        << "M18" << 1;
    QTest::newRow("bits of words: the words count") << int(SplitBits) << "B1.f"
                                                    << "B3.0" << 4;
    QTest::newRow("the limits are not looked at") << int(Words) << "D9999"
                                                  << "D20000" << 20002;
    QTest::newRow("no number in the base") << int(Words) << "X1"
                                           << "D5" << -1;
    QTest::newRow("no number in the command") << int(Words) << "D5"
                                              << "X1" << -1;
    QTest::newRow("bits without a rule have no number") << int(PlainBits) << "K1"
                                                        << "K2" << -1;
    QTest::newRow("a row of size -1") << int(WithoutSize) << "Z1"
                                      << "Z2" << -1;
}

void LabelLoaderCommandsTest::offset()
{
    QFETCH(int, index);
    QFETCH(QString, base);
    QFETCH(QString, address);
    QFETCH(int, bytes);
    const LogRecorder log;
    QCOMPARE(m_distances->calculateOffsetByte(index, command(base, 2), command(address, 2)), bytes);
    QCOMPARE(log.lines(), QStringList());
}

void LabelLoaderCommandsTest::offsetBackwards_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("base");
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("line");
    QTest::newRow("words") << int(Words) << "D105"
                           << "D100"
                           << "LabelLoader:: calculateOffsetByte \"D100\" range is less then \"D105\"";
    QTest::newRow("bits, though in the same byte")
        << int(BitsInWords) << "M1"
        << "M0"
        << "LabelLoader:: calculateOffsetByte \"M0\" range is less then \"M1\"";
    QTest::newRow("the special rule") << int(SpecialRow) << "S1"
                                      << "S0"
                                      << "LabelLoader:: calculateOffsetByte \"S0\" range is less then \"S1\"";
    QTest::newRow("the message tells stations")
        << int(Words) << "1-D105"
        << "2-D100"
        << "LabelLoader:: calculateOffsetByte \"2-D100\" range is less then \"1-D105\"";
}

void LabelLoaderCommandsTest::offsetBackwards()
{
    QFETCH(int, index);
    QFETCH(QString, base);
    QFETCH(QString, address);
    QFETCH(QString, line);
    const LogRecorder log;
    QCOMPARE(m_distances->calculateOffsetByte(index, command(base, 2), command(address, 2)), -1);
    QCOMPARE(log.lines(), QStringList{line});
}

void LabelLoaderCommandsTest::offsetOfAWrongIndex()
{
    const LogRecorder log;
    const CommunicatorCommand word = command(QStringLiteral("D100"), 2);
    QCOMPARE(m_distances->calculateOffsetByte(DistanceRowCount, word, word), -1);
    QCOMPARE(log.lines(), QStringList{"CommandInformationTalbe:: datasize  wrong type_index  10"});
}

QTEST_GUILESS_MAIN(LabelLoaderCommandsTest)

#include "tst_labelloader_commands.moc"
