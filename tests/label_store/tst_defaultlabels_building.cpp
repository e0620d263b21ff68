// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/defaultlabelstest.h"
#include "support/logrecorder.h"

#include "zelmar_label/label_store/labelstore.h"

#include <QDir>
#include <QFileInfo>
#include <QtTest>

using label::LabelInterface;

class DefaultLabelsBuildingTest : public DefaultLabelsTest
{
    Q_OBJECT

private Q_SLOTS:
    void aLabelHasTheRowsAndLimitsOfItsDriver();
    void everyColumnReachesItsPlace();
    void buildingWritesOneLineForEachRow();
    void driversInOneFileAreKeptApart();
    void rowsKeepTheirOrder();
    void aDriverListedTwice();

    void aSecondCallGivesTheSameLabelWithoutTheFile();
    void namesAreCaseSensitive();

    void aFreedLabelIsBuiltAnewFromTheFile();
    void freeingAnUnknownDriverChangesNothing();

    void freeingAllLabelsKeepsTheirPointers();
};

void DefaultLabelsBuildingTest::aLabelHasTheRowsAndLimitsOfItsDriver()
{
    Driver one = driver(QStringLiteral("A"), {Row(), row("(M)(\\d+)", 0, "M", "union-dec:rm16_D")});
    one.blockSize = 120;
    one.bitBlockSize = 960;
    writeDatabase({one});
    LabelInterface *made = build(QStringLiteral("A"));
    QVERIFY(made);
    QCOMPARE(m_error, untouched);
    QCOMPARE(made->getBlockCommandMaxSize(), 120);
    QCOMPARE(made->getBitCommandMaxSize(), 960);
    QCOMPARE(made->countBitTypes(), 2);
    QCOMPARE(made->prefixSymbols(), (QStringList{"D", "M"}));
}

void DefaultLabelsBuildingTest::everyColumnReachesItsPlace()
{
    Row word;
    word.pattern = QStringLiteral("(W)([0-9a-f]+)(x)");
    word.type = 3;
    word.addressGroupIndex = 2;
    word.description = QStringLiteral("W: word; Größe 4");
    word.prefixSymbol = QStringLiteral("Wort");
    word.start = QStringLiteral("10");
    word.end = QStringLiteral("1F");
    word.dataSize = 4;
    word.multipleRule = QStringLiteral("m8");
    word.catchTable = QStringLiteral("words");
    word.base = 16;
    word.blocksize = 17;
    word.continueRule = QStringLiteral("yes");
    writeDatabase({driver(QStringLiteral("A"), {word})});
    LabelInterface *made = build(QStringLiteral("A"));
    QVERIFY(made);
    QCOMPARE(loader(made)->deviceTypesTable().getFormatterIndexByPattern(QStringLiteral("(W)([0-9a-f]+)(x)")), 0);
    QCOMPARE(made->datatype(0), 3);
    QCOMPARE(made->addressRange(0, QStringLiteral("W1ax")), 26);
    QCOMPARE(made->getFormatString(0), QStringLiteral("W: word; Größe 4"));
    QCOMPARE(made->getPrefixSymbolByTypeID(0), QStringLiteral("Wort"));
    QCOMPARE(made->getEditUsedPrifixSymbolByTypeId(0), QStringLiteral("Wort"));
    QCOMPARE(made->addressValidation(QStringLiteral("W10x"), -1), 0);
    QCOMPARE(made->addressValidation(QStringLiteral("W18x"), -1), 0);
    QCOMPARE(made->addressValidation(QStringLiteral("W11x"), -1), -1);
    QCOMPARE(made->addressValidation(QStringLiteral("W8x"), -1), -1);
    QCOMPARE(made->addressValidation(QStringLiteral("W20x"), -1), -1);
    QCOMPARE(made->datasize(0), 4);
    QCOMPARE(made->alignmentSize(0), 8);
    QCOMPARE(made->getCatchTableName(QStringLiteral("W10x"), -1), QStringLiteral("words"));
    QCOMPARE(made->base(0), 16);
    QCOMPARE(made->blocksize(0), 17);
    QCOMPARE(made->isMustContinue(0), true);
}

void DefaultLabelsBuildingTest::buildingWritesOneLineForEachRow()
{
    writeDatabase({driver(QStringLiteral("A"), {Row(), Row(), Row()}), driver(QStringLiteral("B"), {Row()}, "b")});
    const LogRecorder log;
    QVERIFY(build(QStringLiteral("A")));
    QCOMPARE(log.lines(), (QStringList{rowLine, rowLine, rowLine}));
}

void DefaultLabelsBuildingTest::driversInOneFileAreKeptApart()
{
    Driver second = driver(QStringLiteral("B"), {row("(R)(\\d+)", 2, "R"), row("(S)(\\d+)", 2, "S")}, "b");
    second.blockSize = 7;
    second.bitBlockSize = 8;
    writeDatabase({driver(QStringLiteral("A"), {Row()}), second});
    LabelInterface *first = build(QStringLiteral("A"));
    LabelInterface *other = build(QStringLiteral("B"));
    QVERIFY(first && other && first != other);
    QCOMPARE(first->prefixSymbols(), QStringList{"D"});
    QCOMPARE(first->getBlockCommandMaxSize(), 100);
    QCOMPARE(first->getBitCommandMaxSize(), 200);
    QCOMPARE(other->prefixSymbols(), (QStringList{"R", "S"}));
    QCOMPARE(other->getBlockCommandMaxSize(), 7);
    QCOMPARE(other->getBitCommandMaxSize(), 8);
}

void DefaultLabelsBuildingTest::rowsKeepTheirOrder()
{
    Row wide = row("(D)(\\d+)", 3, "Z wide");
    wide.end = QStringLiteral("20000");
    writeDatabase({driver(QStringLiteral("A"), {wide, row("(D)(\\d+)", 2, "A narrow"), row("(B)(\\d+)", 2, "B")}),
                   driver(QStringLiteral("B"), {row("(D)(\\d+)", 2, "A narrow"), wide}, "b")});
    LabelInterface *made = build(QStringLiteral("A"));
    QVERIFY(made);
    QCOMPARE(made->prefixSymbols(), (QStringList{"Z wide", "A narrow", "B"}));
    QCOMPARE(made->addressValidation(QStringLiteral("D5"), -1), 0);
    QCOMPARE(made->datatype(0), 3);
    QCOMPARE(made->addressValidation(QStringLiteral("B5"), -1), 2);
    LabelInterface *other = build(QStringLiteral("B"));
    QVERIFY(other);
    QCOMPARE(other->addressValidation(QStringLiteral("D5"), -1), 0);
    QCOMPARE(other->datatype(0), 2);
    QCOMPARE(other->addressValidation(QStringLiteral("D20000"), -1), 1);
}

void DefaultLabelsBuildingTest::aDriverListedTwice()
{
    Driver later = driver(QStringLiteral("A"), {row("(R)(\\d+)", 2, "R")}, "b");
    later.blockSize = 7;
    writeDatabase({driver(QStringLiteral("A"), {Row(), Row()}), later});
    LabelInterface *made = build(QStringLiteral("A"));
    QVERIFY(made);
    QCOMPARE(made->prefixSymbols(), QStringList{"R"});
    QCOMPARE(made->getBlockCommandMaxSize(), 7);
}

void DefaultLabelsBuildingTest::aSecondCallGivesTheSameLabelWithoutTheFile()
{
    writeDatabase({driver(QStringLiteral("A"), {Row()})});
    LabelInterface *made = build(QStringLiteral("A"));
    QVERIFY(made);
    QVERIFY(QDir(databaseFolder()).removeRecursively());
    const LogRecorder log;
    QCOMPARE(build(QStringLiteral("A")), made);
    QCOMPARE(m_error, untouched);
    QVERIFY(!isConnectionOpen());
    QVERIFY(!QFileInfo::exists(databaseFolder()));
    QVERIFY(!QFileInfo::exists(fileBesideTheProgram("drivers")));
    QCOMPARE(log.lines(), QStringList());
}

void DefaultLabelsBuildingTest::namesAreCaseSensitive()
{
    writeDatabase({driver(QStringLiteral("Driver"), {Row()}),
                   driver(QStringLiteral("DRIVER"), {row("(R)(\\d+)", 2, "R")}, QStringLiteral("b"))});
    LabelInterface *first = build(QStringLiteral("Driver"));
    LabelInterface *second = build(QStringLiteral("DRIVER"));
    QVERIFY(first && second && first != second);
    QCOMPARE(first->prefixSymbols(), QStringList{"D"});
    QCOMPARE(second->prefixSymbols(), QStringList{"R"});
    QVERIFY(!build(QStringLiteral("driver")));
    QCOMPARE(m_error, unknownDriver);
}

void DefaultLabelsBuildingTest::aFreedLabelIsBuiltAnewFromTheFile()
{
    writeDatabase({driver(QStringLiteral("A"), {Row()}), driver(QStringLiteral("B"), {Row()}, QStringLiteral("b"))});
    LabelInterface *other = build(QStringLiteral("B"));
    QVERIFY(build(QStringLiteral("A")));
    writeDatabase({driver(QStringLiteral("A"), {row("(R)(\\d+)", 2, "R"), Row()})});
    QCOMPARE(build(QStringLiteral("A"))->prefixSymbols(), QStringList{"D"});
    label::freeLabel(QStringLiteral("A"));
    LabelInterface *anew = build(QStringLiteral("A"));
    QVERIFY(anew);
    QCOMPARE(anew->prefixSymbols(), (QStringList{"R", "D"}));
    QCOMPARE(build(QStringLiteral("B")), other);
    QCOMPARE(other->prefixSymbols(), QStringList{"D"});
}

void DefaultLabelsBuildingTest::freeingAnUnknownDriverChangesNothing()
{
    writeDatabase({driver(QStringLiteral("A"), {Row()})});
    LabelInterface *made = build(QStringLiteral("A"));
    QVERIFY(made);
    const LogRecorder log;
    label::freeLabel(QStringLiteral("B"));
    label::freeLabel(QStringLiteral("a"));
    label::freeLabel(QString());
    QCOMPARE(build(QStringLiteral("A")), made);
    QCOMPARE(made->countBitTypes(), 1);
    label::freeLabel(QStringLiteral("A"));
    label::freeLabel(QStringLiteral("A"));
    QCOMPARE(log.lines(), QStringList());
}

/// The last test: afterwards the store has stale pointers.
void DefaultLabelsBuildingTest::freeingAllLabelsKeepsTheirPointers()
{
    writeDatabase({driver(QStringLiteral("Last 1"), {Row()}),
                   driver(QStringLiteral("Last 2"), {Row()}, QStringLiteral("b")),
                   driver(QStringLiteral("Last 3"), {Row()}, QStringLiteral("c"))});
    QString error = untouched;
    const auto first = quintptr(label::createLabel(QStringLiteral("Last 1"), error));
    const auto second = quintptr(label::createLabel(QStringLiteral("Last 2"), error));
    QVERIFY(first != 0 && second != 0);
    const LogRecorder log;
    label::freeLabels();
    QCOMPARE(quintptr(label::createLabel(QStringLiteral("Last 1"), error)), first);
    QCOMPARE(quintptr(label::createLabel(QStringLiteral("Last 2"), error)), second);
    QCOMPARE(log.lines(), QStringList());
    QVERIFY(label::createLabel(QStringLiteral("Last 3"), error));
    QCOMPARE(log.lines(), QStringList{rowLine});
    QCOMPARE(error, untouched);
    label::freeLabel(QStringLiteral("Last 3"));
}

QTEST_GUILESS_MAIN(DefaultLabelsBuildingTest)

#include "tst_defaultlabels_building.moc"
