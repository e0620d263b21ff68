// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/labelfixtures.h"
#include "support/logrecorder.h"

#include "zelmar_label/label_table/dynamiclabelcreatorinterface.h"
#include "zelmar_label/label_table/labelloader.h"

#include <QtTest>

#include <algorithm>
#include <cstring>
#include <type_traits>

using label::CommandInformationTalbe;
using label::DynamicLabelCreatorInterface;
using label::DynamicLabelItem;
using label::LabelInterface;
using label::LabelLoader;

static_assert(!std::has_virtual_destructor_v<LabelInterface>, "a label is released without running its destructor");
static_assert(sizeof(LabelInterface) == sizeof(void *), "the interface has no data");

namespace {

Row row(const char *pattern, int type, const char *symbol, const char *description, const char *rule = "")
{
    Row made;
    made.pattern = QLatin1String(pattern);
    made.type = type;
    made.prefixSymbol = QLatin1String(symbol);
    made.description = QLatin1String(description);
    made.multipleRule = QLatin1String(rule);
    return made;
}

CommandInformationTalbe tableOf(const QList<Row> &rows)
{
    CommandInformationTalbe table;
    for (const Row &one : rows)
        table.addCommandFormatter(one.formatter());
    return table;
}

QList<Row> deviceRows()
{
    Row relay = row("(M)(\\d+)", 0, "M", "M: relay", "union-dec:rm16_D");
    relay.catchTable = QStringLiteral("relays");
    relay.blocksize = 128;
    relay.continueRule = QStringLiteral("yes");
    Row word = row("(D)(\\d+)", 2, "D", "D: word");
    Row bit = row("(D)(\\d+\\.[0-9a-f])", 0, "D", "D: bit of a word", "dot-f:n");
    Row text = row("(T)(\\d+)", 5, "T", "T: text");
    text.dataSize = 1;
    Row aligned = row("(W)([0-9a-f]+)", 3, "W", "W: aligned", "m16");
    aligned.base = 16;
    aligned.end = QStringLiteral("FFFF");
    aligned.dataSize = 4;
    Row family = row("BLOCK_WORD", 2, "BLK", "BLK: word of a block");
    family.end = QStringLiteral("99");
    return {relay, word, bit, text, aligned, family};
}

enum DeviceRow { RelayRow, WordRow, BitRow, TextRow, AlignedRow, FamilyRow, DeviceRowCount };

/// The calls of a creator, and its answers; it outlives the creator.
struct Asked
{
    QStringList addresses;
    QList<bool> emptyItems;
    QString basePattern = QStringLiteral("BLOCK_WORD");
};

/// Accepts the words of blocks, BLK1:0 and so on.
class BlockCreator : public DynamicLabelCreatorInterface
{
public:
    explicit BlockCreator(Asked &asked)
        : m_asked(&asked)
    {
    }

    bool create(const QString &address, DynamicLabelItem &item) override
    {
        m_asked->addresses.append(address);
        m_asked->emptyItems.append(item.basePattern.isEmpty() && item.pattern.isEmpty() && item.prefixSymbol.isEmpty());
        const int colon = address.indexOf(QLatin1Char(':'));
        if (!address.startsWith(QLatin1String("BLK")) || colon < 0)
            return false;
        item.basePattern = m_asked->basePattern;
        item.prefixSymbol = address.left(colon + 1);
        item.pattern = QLatin1Char('(') + item.prefixSymbol + QLatin1String(")(\\d+)");
        return true;
    }

private:
    Asked *m_asked;
};

QStringList sorted(QStringList texts)
{
    std::sort(texts.begin(), texts.end());
    return texts;
}

#if defined(__x86_64__) && defined(__GNUC__)
/// Slot of a virtual operation, by the common C++ ABI of this processor.
template<typename Operation>
int slotOf(Operation operation)
{
    static_assert(sizeof(operation) >= sizeof(std::ptrdiff_t));
    std::ptrdiff_t entry = 0;
    std::memcpy(&entry, &operation, sizeof(entry));
    return static_cast<int>((entry - 1) / std::ptrdiff_t(sizeof(void *)));
}

template<typename... Operations>
QList<int> slotsOf(Operations... operations)
{
    return {slotOf(operations)...};
}
#endif

} // namespace

class LabelLoaderTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void operationsStandInTheirSlots();
    void aNewLoaderIsEmpty();
    void aLoaderOfATableHasNoLimits();
    void limitsAreTakenAsTheyAre_data();
    void limitsAreTakenAsTheyAre();
    void aLoaderKeepsItsOwnRows();
    void theTableCanBeReplaced();
    void theCreatorCanBeReplaced();

    void counts();
    void questionsToARow();
    void wrongIndex_data();
    void wrongIndex();
    void lookups();
    void lists();
    void commands();

    void parsing_data();
    void parsing();
    void parsingLeavesTheTextsOfAnUnknownAddress_data();
    void parsingLeavesTheTextsOfAnUnknownAddress();

    void validation_data();
    void validation();
    void aKnownAddressNeverReachesTheCreator();
    void withoutACreatorAnUnknownAddressStaysUnknown();
    void aRefusedAddressAddsNoRow();
    void aFamilyWithoutATemplateAddsNoRow();
    void aNewRowIsTheTemplateWithAnotherPrefix();
    void theSameAddressAddsNoSecondRow();
    void aNumberBeyondTheLimitsOfTheFamilyAddsARowEachTime();
    void theNewRowIsAddedWhateverItsType();
    void aCreatorGetsTheAddressAsItCame();
    void parsingKnowsADynamicAddressOnlyAfterValidation();
    void lookingForRowsAddsNone();
    void symbolOfTheEditor_data();
    void symbolOfTheEditor();

private:
    LabelLoader *m_loader = nullptr;
    LabelInterface *m_label = nullptr;
    Asked m_asked;
};

void LabelLoaderTest::init()
{
    m_asked = Asked();
    m_loader = new LabelLoader(tableOf(deviceRows()), new BlockCreator(m_asked));
    m_loader->setMaxBlockSize(120);
    m_loader->setMaxBitBlockSize(960);
    m_label = m_loader;
}

void LabelLoaderTest::cleanup()
{
    delete m_loader;
    m_loader = nullptr;
    m_label = nullptr;
}

void LabelLoaderTest::operationsStandInTheirSlots()
{
#if defined(__x86_64__) && defined(__GNUC__)
    using L = LabelInterface;
    const QList<int> found = slotsOf(
        &L::countBitTypes, &L::countRegisterTypes, &L::base, &L::datatype, &L::datasize, &L::addressRange,
        &L::parseAddress, &L::addressValidation, &L::getAllMatchedIndex, &L::getAllMatchedSymbol,
        &L::getPrefixSymbolByTypeID, &L::getEditUsedPrifixSymbolByTypeId, &L::getFormatString, &L::getCatchTableName,
        &L::getBlockCommandMaxSize, &L::getBitCommandMaxSize, &L::isMustContinue, &L::alignmentSize, &L::bitOffset,
        &L::canConvertToRegisterCommand, &L::convertBitCommandToRegisterCommand, &L::isCommandInBlockRange,
        &L::calculateOffsetByte, &L::prefixSymbolsByType, &L::commandFormatsByType, &L::registerCommandFormats,
        &L::bitCommandFormats, &L::reservCommandFormats, &L::registerPrefixSymbols, &L::bitPrefixSymbols,
        &L::reservPrefixSymbols, &L::prefixSymbols, &L::normalizeCommand, &L::makeContinueCommand,
        &L::makeContinueCommandwithCap, &L::makeBlockCommandWithoutSizeLimit, &L::makeBlockCommand, &L::needOptimize,
        &L::isTypeNeedAlignmentByte, &L::blocksize);
    QCOMPARE(found.size(), 40);
    for (int slot = 0; slot < found.size(); ++slot)
        QCOMPARE(found.at(slot), slot);
#else
    QSKIP("slots are told apart on one ABI only");
#endif
}

void LabelLoaderTest::aNewLoaderIsEmpty()
{
    LabelLoader loader;
    LabelInterface &label = loader;
    QCOMPARE(label.countBitTypes(), 0);
    QCOMPARE(label.countRegisterTypes(), 0);
    QCOMPARE(loader.countType(0), 0);
    QCOMPARE(loader.countReservTypes(), 0);
    QCOMPARE(label.getBlockCommandMaxSize(), 0);
    QCOMPARE(label.getBitCommandMaxSize(), 0);
    QCOMPARE(label.addressValidation(QStringLiteral("D1"), -1), -1);
    QCOMPARE(label.getAllMatchedIndex(QStringLiteral("D1"), -1), QList<int>());
    QCOMPARE(label.prefixSymbols(), QStringList());
}

void LabelLoaderTest::aLoaderOfATableHasNoLimits()
{
    LabelLoader loader(tableOf(deviceRows()));
    QCOMPARE(loader.countBitTypes(), int(DeviceRowCount));
    QCOMPARE(loader.getBlockCommandMaxSize(), 0);
    QCOMPARE(loader.getBitCommandMaxSize(), 0);
}

void LabelLoaderTest::limitsAreTakenAsTheyAre_data()
{
    QTest::addColumn<int>("block");
    QTest::addColumn<int>("bitBlock");
    QTest::newRow("usual limits") << 64 << 512;
    QTest::newRow("none") << 0 << 0;
    QTest::newRow("negative limits") << -1 << -2;
}

void LabelLoaderTest::limitsAreTakenAsTheyAre()
{
    QFETCH(int, block);
    QFETCH(int, bitBlock);
    m_loader->setMaxBlockSize(block);
    m_loader->setMaxBitBlockSize(bitBlock);
    QCOMPARE(m_label->getBlockCommandMaxSize(), block);
    QCOMPARE(m_label->getBitCommandMaxSize(), bitBlock);
}

void LabelLoaderTest::aLoaderKeepsItsOwnRows()
{
    CommandInformationTalbe table = tableOf({row("(A)(\\d+)", 2, "A", "")});
    LabelLoader first(table, new BlockCreator(m_asked));
    LabelLoader second(table);
    table.addCommandFormatter(row("BLOCK_WORD", 2, "BLK", "").formatter());
    QCOMPARE(first.countBitTypes(), 1);
    first.setDeviceTypesTable(table);
    QCOMPARE(first.addressValidation(QStringLiteral("BLK1:0"), -1), 2);
    QCOMPARE(table.countFormatters(), 2);
    QCOMPARE(second.countBitTypes(), 1);
}

void LabelLoaderTest::theTableCanBeReplaced()
{
    m_loader->setDeviceTypesTable(tableOf({row("(A)(\\d+)", 2, "A", "")}));
    QCOMPARE(m_label->prefixSymbols(), QStringList{"A"});
    QCOMPARE(m_label->addressValidation(QStringLiteral("A1"), -1), 0);
    QCOMPARE(m_label->addressValidation(QStringLiteral("D1"), -1), -1);
    m_loader->setDeviceTypesTable(CommandInformationTalbe());
    QCOMPARE(m_label->countBitTypes(), 0);
}

void LabelLoaderTest::theCreatorCanBeReplaced()
{
    m_loader->setCreator(nullptr);
    QCOMPARE(m_label->addressValidation(QStringLiteral("BLK1:0"), -1), -1);
    QCOMPARE(m_asked.addresses, QStringList());
    m_loader->setCreator(new BlockCreator(m_asked));
    QCOMPARE(m_label->addressValidation(QStringLiteral("BLK1:0"), -1), int(DeviceRowCount));
    QCOMPARE(m_asked.addresses, QStringList{"BLK1:0"});
}

void LabelLoaderTest::counts()
{
    QCOMPARE(m_label->countBitTypes(), 6);
    QCOMPARE(m_label->countRegisterTypes(), 6);
    for (const int type : {7, 0, -1, 5})
        QCOMPARE(m_loader->countType(type), 6);
    QCOMPARE(m_loader->countReservTypes(), 0);
}

void LabelLoaderTest::questionsToARow()
{
    const LogRecorder log;
    QCOMPARE(m_label->base(WordRow), 10);
    QCOMPARE(m_label->base(AlignedRow), 16);
    QCOMPARE(m_label->datatype(RelayRow), 0);
    QCOMPARE(m_label->datatype(TextRow), 5);
    QCOMPARE(m_label->datasize(WordRow), 2);
    QCOMPARE(m_label->datasize(AlignedRow), 4);
    QCOMPARE(m_label->addressRange(WordRow, QStringLiteral("D100")), 100);
    QCOMPARE(m_label->addressRange(AlignedRow, QStringLiteral("W1f")), 31);
    QCOMPARE(m_label->addressRange(WordRow, QStringLiteral("X")), -1);
    QCOMPARE(m_label->getPrefixSymbolByTypeID(FamilyRow), QStringLiteral("BLK"));
    QCOMPARE(m_label->getFormatString(TextRow), QStringLiteral("T: text"));
    QCOMPARE(m_label->isMustContinue(RelayRow), true);
    QCOMPARE(m_label->isMustContinue(WordRow), false);
    QCOMPARE(m_label->alignmentSize(AlignedRow), 16);
    QCOMPARE(m_label->alignmentSize(WordRow), 1);
    QCOMPARE(m_label->bitOffset(BitRow, QStringLiteral("D100.f")), 15);
    QCOMPARE(m_label->bitOffset(WordRow, QStringLiteral("D100")), -1);
    QCOMPARE(m_label->canConvertToRegisterCommand(RelayRow), true);
    QCOMPARE(m_label->canConvertToRegisterCommand(BitRow), false);
    QCOMPARE(m_label->needOptimize(WordRow), true);
    QCOMPARE(m_label->needOptimize(RelayRow), false);
    QCOMPARE(m_label->isTypeNeedAlignmentByte(AlignedRow), true);
    QCOMPARE(m_label->isTypeNeedAlignmentByte(WordRow), false);
    QCOMPARE(m_label->blocksize(RelayRow), 128);
    QCOMPARE(m_label->blocksize(WordRow), 64);
    QCOMPARE(m_label->getBlockCommandMaxSize(), 120);
    QCOMPARE(m_label->getBitCommandMaxSize(), 960);
    QCOMPARE(log.lines(), QStringList());
}

void LabelLoaderTest::wrongIndex_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("-1") << -1;
    QTest::newRow("one behind the last row") << int(DeviceRowCount);
}

void LabelLoaderTest::wrongIndex()
{
    QFETCH(int, index);
    const auto line = [index](const char *text) {
        return QStringList{QLatin1String("CommandInformationTalbe::") + QLatin1String(text) +
                           QStringLiteral(" wrong type_index  %1").arg(index)};
    };
    const CommunicatorCommand word = command(QStringLiteral("D1"), 2);
    LogRecorder log;
    QCOMPARE(m_label->base(index), 10);
    QCOMPARE(m_label->getPrefixSymbolByTypeID(index), QString());
    QCOMPARE(m_label->getEditUsedPrifixSymbolByTypeId(index), QString());
    QCOMPARE(m_label->getFormatString(index), QString());
    QCOMPARE(log.take(), QStringList());
    QCOMPARE(m_label->datatype(index), -1);
    QCOMPARE(log.take(), line("datatype"));
    QCOMPARE(m_label->datasize(index), -1);
    QCOMPARE(log.take(), line(" datasize "));
    QCOMPARE(m_label->addressRange(index, word.address), -1);
    QCOMPARE(log.take(), line(" addressRange "));
    QCOMPARE(m_label->isMustContinue(index), false);
    QCOMPARE(log.take(), line("continueRule"));
    QCOMPARE(m_label->bitOffset(index, word.address), -1);
    QCOMPARE(log.take(), line("bitOffset"));
    QCOMPARE(m_label->canConvertToRegisterCommand(index), false);
    QCOMPARE(log.take(), line("canConvertRegisterCommand"));
    QCOMPARE(m_label->blocksize(index), -1);
    QCOMPARE(log.take(), line("blocksize"));
    QVERIFY(m_label->normalizeCommand(index, word).isEmpty());
    QCOMPARE(log.take(), line("autoCompleteCommand"));
    QVERIFY(m_label->makeContinueCommand(index, word, 2).isEmpty());
    QCOMPARE(log.take(), line("makeContinueCommand"));
    QVERIFY(m_label->makeContinueCommandwithCap(index, word, 2, 1, true).isEmpty());
    QCOMPARE(log.take(), line("makeContinueCommand"));
    QCOMPARE(m_label->makeBlockCommandWithoutSizeLimit(-1, index, 0, 1).stringKey(), QStringLiteral("S>NULL_3_1"));
    QCOMPARE(log.take(), line("makeBlockCommand"));
    QVERIFY(m_label->makeBlockCommand(-1, index, 0, 1).isEmpty());
    QCOMPARE(log.take(), line(" datasize ") + line("blocksize") + line("makeBlockCommand"));
}

void LabelLoaderTest::lookups()
{
    QCOMPARE(m_label->getAllMatchedIndex(QStringLiteral("D100"), -1), (QList<int>{WordRow, BitRow}));
    QCOMPARE(m_label->getAllMatchedIndex(QStringLiteral("D100"), 0), QList<int>{BitRow});
    QCOMPARE(m_label->getAllMatchedIndex(QStringLiteral("3-D100."), -1), QList<int>{BitRow});
    QCOMPARE(m_label->getAllMatchedSymbol(QStringLiteral("D"), -1), (QList<int>{WordRow, BitRow}));
    QCOMPARE(m_label->getAllMatchedSymbol(QStringLiteral("D"), 3), QList<int>{WordRow});
    QCOMPARE(m_label->getCatchTableName(QStringLiteral("M1"), -1), QStringLiteral("relays"));
    QCOMPARE(m_label->getCatchTableName(QStringLiteral("M1"), 2), QString());
}

void LabelLoaderTest::lists()
{
    QCOMPARE(m_label->prefixSymbolsByType(label::BitType), (QStringList{"M", "D"}));
    QCOMPARE(m_label->prefixSymbolsByType(label::WordType), (QStringList{"D", "BLK"}));
    QCOMPARE(m_label->commandFormatsByType(label::WordType), (QStringList{"D: word", "BLK: word of a block"}));
    QCOMPARE(m_label->commandFormatsByType(label::ByteType), QStringList());
    QCOMPARE(m_label->registerCommandFormats(),
             (QStringList{"D: word", "T: text", "W: aligned", "BLK: word of a block"}));
    QCOMPARE(m_label->bitCommandFormats(), (QStringList{"M: relay", "D: bit of a word"}));
    QCOMPARE(m_label->reservCommandFormats(), QStringList{"T: text"});
    QCOMPARE(sorted(m_label->registerPrefixSymbols()), (QStringList{"BLK", "D", "T", "W"}));
    QCOMPARE(sorted(m_label->bitPrefixSymbols()), (QStringList{"D", "M"}));
    QCOMPARE(m_label->reservPrefixSymbols(), QStringList{"T"});
    QCOMPARE(m_label->prefixSymbols(), (QStringList{"M", "D", "D", "T", "W", "BLK"}));
}

void LabelLoaderTest::commands()
{
    const CommunicatorCommand wide = command(QStringLiteral("2-D100"), 3);
    QCOMPARE(shortForms(m_label->normalizeCommand(WordRow, wide)), (QStringList{"2-D100 2 1", "2-D101 2 1"}));
    QCOMPARE(shortForms(m_label->makeContinueCommand(WordRow, wide, 2)), (QStringList{"2-D100 3 1", "2-D102 3 1"}));
    QCOMPARE(shortForms(m_label->makeContinueCommandwithCap(WordRow, wide, 2, 5, true)),
             (QStringList{"2-D100 2 1", "2-D105 2 1"}));
    QCOMPARE(
        shortForms(m_label->makeContinueCommandwithCap(AlignedRow, command(QStringLiteral("W10"), 3), 2, 1, false)),
        (QStringList{"W10 3 1", "W11 3 1"}));
    QCOMPARE(shortForms({m_label->makeBlockCommandWithoutSizeLimit(7, WordRow, 100, 200)}),
             QStringList{"7-D100 2 200"});
    QCOMPARE(shortForms(m_label->makeBlockCommand(7, WordRow, 100, 65)), (QStringList{"7-D100 2 64", "7-D164 2 1"}));
    int typeIndex = -1;
    QCOMPARE(m_label->convertBitCommandToRegisterCommand(command(QStringLiteral("M37"), 0), typeIndex).stringKey(),
             QStringLiteral("D32_2_1"));
    QCOMPARE(typeIndex, int(WordRow));
    QVERIFY(
        m_label->isCommandInBlockRange(WordRow, command(QStringLiteral("D5"), 2), command(QStringLiteral("D5"), 2)));
    QVERIFY(
        !m_label->isCommandInBlockRange(WordRow, command(QStringLiteral("D6"), 2), command(QStringLiteral("D5"), 2)));
    QCOMPARE(m_label->calculateOffsetByte(WordRow, command(QStringLiteral("D5"), 2), command(QStringLiteral("D8"), 2)),
             6);
}

void LabelLoaderTest::parsing_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("symbol");
    QTest::addColumn<QString>("number");
    QTest::newRow("a word") << "D0100"
                            << "D"
                            << "0100";
    QTest::newRow("a bit of a word") << "D100.f"
                                     << "D"
                                     << "100.f";
    QTest::newRow("a relay") << "M5"
                             << "M"
                             << "5";
    QTest::newRow("a station in front") << "3-D100"
                                        << "D"
                                        << "100";
    QTest::newRow("another radix") << "W10"
                                   << "W"
                                   << "10";
}

void LabelLoaderTest::parsing()
{
    QFETCH(QString, address);
    QFETCH(QString, symbol);
    QFETCH(QString, number);
    QString prefix = QStringLiteral("before");
    QString range = QStringLiteral("before");
    QVERIFY(m_label->parseAddress(address, prefix, range));
    QCOMPARE(prefix, symbol);
    QCOMPARE(range, number);
    QCOMPARE(m_asked.addresses, QStringList());
}

void LabelLoaderTest::parsingLeavesTheTextsOfAnUnknownAddress_data()
{
    QTest::addColumn<QString>("address");
    QTest::newRow("no row's address") << "X1";
    QTest::newRow("beyond the limits") << "D10000";
    QTest::newRow("only the beginning of an address") << "D";
    QTest::newRow("the empty address") << "";
    QTest::newRow("an address that only the creator knows") << "BLK1:0";
}

void LabelLoaderTest::parsingLeavesTheTextsOfAnUnknownAddress()
{
    QFETCH(QString, address);
    QString prefix = QStringLiteral("before");
    QString range = QStringLiteral("behind");
    QVERIFY(!m_label->parseAddress(address, prefix, range));
    QCOMPARE(prefix, QStringLiteral("before"));
    QCOMPARE(range, QStringLiteral("behind"));
    QCOMPARE(m_asked.addresses, QStringList());
    QCOMPARE(m_label->countBitTypes(), int(DeviceRowCount));
}

void LabelLoaderTest::validation_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<int>("filter");
    QTest::addColumn<int>("index");
    QTest::newRow("any row") << "D100" << -1 << int(WordRow);
    QTest::newRow("a register for a double word") << "D100" << 3 << int(WordRow);
    QTest::newRow("a word where a bit is asked for") << "D100" << 0 << -1;
    QTest::newRow("a bit") << "D100.3" << 0 << int(BitRow);
    QTest::newRow("a station") << "3-D100.3" << -1 << int(BitRow);
    QTest::newRow("beyond the limits") << "D10000" << -1 << -1;
    QTest::newRow("against the alignment") << "W11" << -1 << -1;
    QTest::newRow("the empty address") << "" << -1 << -1;
}

void LabelLoaderTest::validation()
{
    QFETCH(QString, address);
    QFETCH(int, filter);
    QFETCH(int, index);
    QCOMPARE(m_label->addressValidation(address, filter), index);
    QCOMPARE(m_label->countBitTypes(), int(DeviceRowCount));
}

void LabelLoaderTest::aKnownAddressNeverReachesTheCreator()
{
    QCOMPARE(m_label->addressValidation(QStringLiteral("D100"), -1), int(WordRow));
    QCOMPARE(m_asked.addresses, QStringList());
    QCOMPARE(m_label->addressValidation(QStringLiteral("X100"), -1), -1);
    QCOMPARE(m_asked.addresses, QStringList{"X100"});
}

void LabelLoaderTest::withoutACreatorAnUnknownAddressStaysUnknown()
{
    LabelLoader loader(tableOf(deviceRows()));
    QCOMPARE(loader.addressValidation(QStringLiteral("BLK1:0"), -1), -1);
    QCOMPARE(loader.countBitTypes(), int(DeviceRowCount));
    LabelLoader withNull(tableOf(deviceRows()), nullptr);
    QCOMPARE(withNull.addressValidation(QStringLiteral("BLK1:0"), -1), -1);
    QCOMPARE(withNull.countBitTypes(), int(DeviceRowCount));
}

void LabelLoaderTest::aRefusedAddressAddsNoRow()
{
    const LogRecorder log;
    QCOMPARE(m_label->addressValidation(QStringLiteral("X1"), -1), -1);
    QCOMPARE(m_label->countBitTypes(), int(DeviceRowCount));
    QCOMPARE(log.lines(), QStringList());
}

void LabelLoaderTest::aFamilyWithoutATemplateAddsNoRow()
{
    m_asked.basePattern = QStringLiteral("block_word");
    const LogRecorder log;
    QCOMPARE(m_label->addressValidation(QStringLiteral("BLK1:0"), -1), -1);
    QCOMPARE(m_asked.addresses, QStringList{"BLK1:0"});
    QCOMPARE(m_label->countBitTypes(), int(DeviceRowCount));
    QCOMPARE(log.lines(), QStringList());
}

void LabelLoaderTest::aNewRowIsTheTemplateWithAnotherPrefix()
{
    const LogRecorder log;
    const int index = m_label->addressValidation(QStringLiteral("BLK1:7"), -1);
    QCOMPARE(index, 6);
    QCOMPARE(m_label->countBitTypes(), 7);
    QCOMPARE(m_asked.emptyItems, QList<bool>{true});
    QCOMPARE(m_loader->deviceTypesTable().getFormatterAtIndex(index).pattern(), QStringLiteral("(BLK1:)(\\d+)"));
    QCOMPARE(m_label->getPrefixSymbolByTypeID(index), QStringLiteral("BLK1:"));
    QCOMPARE(m_label->getEditUsedPrifixSymbolByTypeId(index), QStringLiteral("BLK"));
    QCOMPARE(m_label->getFormatString(index), QStringLiteral("BLK: word of a block"));
    QCOMPARE(m_label->datatype(index), 2);
    QCOMPARE(m_label->datasize(index), 2);
    QCOMPARE(m_label->blocksize(index), 64);
    QCOMPARE(m_label->addressRange(index, QStringLiteral("BLK1:7")), 7);
    QCOMPARE(m_loader->deviceTypesTable().getFormatterAtIndex(FamilyRow).pattern(), QStringLiteral("BLOCK_WORD"));
    QCOMPARE(m_label->getPrefixSymbolByTypeID(FamilyRow), QStringLiteral("BLK"));
    QVERIFY2(!log.lines().contains(rowLine), "a row is copied, not built");
}

void LabelLoaderTest::theSameAddressAddsNoSecondRow()
{
    QCOMPARE(m_label->addressValidation(QStringLiteral("BLK1:7"), -1), 6);
    QCOMPARE(m_label->addressValidation(QStringLiteral("BLK1:7"), -1), 6);
    QCOMPARE(m_label->addressValidation(QStringLiteral("BLK1:99"), 2), 6);
    QCOMPARE(m_label->addressValidation(QStringLiteral("5-BLK1:8"), -1), 6);
    QCOMPARE(m_asked.addresses, QStringList{"BLK1:7"});
    QCOMPARE(m_label->addressValidation(QStringLiteral("BLK2:7"), -1), 7);
    QCOMPARE(m_label->countBitTypes(), 8);
}

void LabelLoaderTest::aNumberBeyondTheLimitsOfTheFamilyAddsARowEachTime()
{
    QCOMPARE(m_label->addressValidation(QStringLiteral("BLK1:100"), -1), 6);
    QCOMPARE(m_label->addressValidation(QStringLiteral("BLK1:100"), -1), 7);
    QCOMPARE(m_label->countBitTypes(), 8);
}

void LabelLoaderTest::theNewRowIsAddedWhateverItsType()
{
    QCOMPARE(m_label->addressValidation(QStringLiteral("BLK1:7"), 0), 6);
    QCOMPARE(m_label->datatype(6), 2);
    QCOMPARE(m_label->addressValidation(QStringLiteral("BLK1:7"), 0), 7);
    QCOMPARE(m_label->addressValidation(QStringLiteral("BLK1:7"), 2), 6);
    QCOMPARE(m_label->countBitTypes(), 8);
}

void LabelLoaderTest::aCreatorGetsTheAddressAsItCame()
{
    QCOMPARE(m_label->addressValidation(QStringLiteral("4-BLK1:7"), -1), -1);
    QCOMPARE(m_asked.addresses, QStringList{"4-BLK1:7"});
    QCOMPARE(m_label->countBitTypes(), int(DeviceRowCount));
}

void LabelLoaderTest::parsingKnowsADynamicAddressOnlyAfterValidation()
{
    QString prefix;
    QString range;
    QVERIFY(!m_label->parseAddress(QStringLiteral("BLK12:7"), prefix, range));
    QCOMPARE(m_label->addressValidation(QStringLiteral("BLK12:7"), -1), 6);
    QVERIFY(m_label->parseAddress(QStringLiteral("BLK12:7"), prefix, range));
    QCOMPARE(prefix, QStringLiteral("BLK"));
    QCOMPARE(range, QStringLiteral("12:7"));
}

void LabelLoaderTest::lookingForRowsAddsNone()
{
    QCOMPARE(m_label->getAllMatchedIndex(QStringLiteral("BLK1:7"), -1), QList<int>());
    QCOMPARE(m_label->getAllMatchedSymbol(QStringLiteral("BLK1:"), -1), QList<int>());
    QCOMPARE(m_label->getCatchTableName(QStringLiteral("BLK1:7"), -1), QString());
    QCOMPARE(m_asked.addresses, QStringList());
    QCOMPARE(m_label->countBitTypes(), int(DeviceRowCount));
    m_label->addressValidation(QStringLiteral("BLK1:7"), -1);
    QCOMPARE(m_label->getAllMatchedIndex(QStringLiteral("BLK1:7"), -1), QList<int>{6});
    QCOMPARE(m_label->getAllMatchedSymbol(QStringLiteral("BLK1:"), -1), QList<int>{6});
}

void LabelLoaderTest::symbolOfTheEditor_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("symbol");
    QTest::newRow("a row of the table shows its own") << int(WordRow) << "D";
    QTest::newRow("a template shows its own") << int(FamilyRow) << "BLK";
    QTest::newRow("a dynamic row shows its template's") << 6 << "BLK";
    QTest::newRow("-1") << -1 << "";
    QTest::newRow("one behind the last row") << 7 << "";
}

void LabelLoaderTest::symbolOfTheEditor()
{
    QFETCH(int, index);
    QFETCH(QString, symbol);
    QCOMPARE(m_label->addressValidation(QStringLiteral("BLK1:7"), -1), 6);
    const LogRecorder log;
    QCOMPARE(m_label->getEditUsedPrifixSymbolByTypeId(index), symbol);
    QCOMPARE(log.lines(), QStringList());
}

QTEST_GUILESS_MAIN(LabelLoaderTest)

#include "tst_labelloader.moc"
