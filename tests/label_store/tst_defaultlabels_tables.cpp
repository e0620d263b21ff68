// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/defaultlabelstest.h"
#include "support/logrecorder.h"

#include "zelmar_label/label_store/labelstore.h"

#include <QtTest>

using label::LabelInterface;

namespace {

const QString usualIndex =
    QStringLiteral("CREATE TABLE table_index (name TEXT, general_table TEXT, device_table TEXT)");
const QString usualEntry = QStringLiteral("INSERT INTO table_index VALUES ('Form', 'g', 'd')");
const QString usualGeneral = QStringLiteral("CREATE TABLE g (block_size, bit_block_size)");
const QString usualLimits = QStringLiteral("INSERT INTO g VALUES (11, 22)");
const QString usualDevice =
    QStringLiteral("CREATE TABLE d (pattern, type, address_group_index, description, prefix_symbol, start, \"end\", "
                   "data_size, multiple_rule, catch_table, base, blocksize, \"continue\")");
const QString usualRow =
    QStringLiteral("INSERT INTO d VALUES ('(D)(\\d+)', 2, 2, 'D: word', 'D', '0', '99', 2, '', 'words', 10, 32, 'Y')");

} // namespace

/// Tests how a label reads its driver's tables, in the usual form and in others.
class DefaultLabelsTablesTest : public DefaultLabelsTest
{
    Q_OBJECT

private Q_SLOTS:
    void generalTables_data();
    void generalTables();
    void deviceTablesWithoutRows_data();
    void deviceTablesWithoutRows();
    void aRequiredColumnIsMissing_data();
    void aRequiredColumnIsMissing();
    void otherFormsOfTheTables_data();
    void otherFormsOfTheTables();
    void withoutAContinueColumnTheRuleIsN();
    void blockSizes_data();
    void blockSizes();
    void dataSizesKeepTheirSign_data();
    void dataSizesKeepTheirSign();
    void emptyCells();
};

void DefaultLabelsTablesTest::generalTables_data()
{
    QTest::addColumn<QStringList>("statements");
    QTest::addColumn<int>("blockSize");
    QTest::addColumn<int>("bitBlockSize");
    QTest::newRow("the usual one") << QStringList{usualGeneral, usualLimits} << 11 << 22;
    QTest::newRow("missing") << QStringList() << 0 << 0;
    QTest::newRow("without a row") << QStringList{usualGeneral} << 0 << 0;
    QTest::newRow("two rows, the last of which counts")
        << QStringList{usualGeneral, usualLimits, "INSERT INTO g VALUES (33, 44)"} << 33 << 44;
    QTest::newRow("without the bits' column")
        << QStringList{"CREATE TABLE g (block_size)", "INSERT INTO g VALUES (11)"} << 11 << 0;
    QTest::newRow("without the registers' column")
        << QStringList{"CREATE TABLE g (bit_block_size)", "INSERT INTO g VALUES (22)"} << 0 << 22;
    QTest::newRow("without either column") << QStringList{"CREATE TABLE g (x)", "INSERT INTO g VALUES (1)"} << 0 << 0;
    QTest::newRow("further columns in another order")
        << QStringList{"CREATE TABLE g (x, bit_block_size, y, block_size)", "INSERT INTO g VALUES (1, 22, 3, 11)"} << 11
        << 22;
    QTest::newRow("numbers as texts") << QStringList{usualGeneral, "INSERT INTO g VALUES ('11', '22')"} << 11 << 22;
    QTest::newRow("texts that are no numbers") << QStringList{usualGeneral, "INSERT INTO g VALUES ('a', '')"} << 0 << 0;
    QTest::newRow("empty cells") << QStringList{usualGeneral, "INSERT INTO g VALUES (NULL, NULL)"} << 0 << 0;
    QTest::newRow("negative numbers") << QStringList{usualGeneral, "INSERT INTO g VALUES (-1, -2)"} << -1 << -2;
}

void DefaultLabelsTablesTest::generalTables()
{
    QFETCH(QStringList, statements);
    QFETCH(int, blockSize);
    QFETCH(int, bitBlockSize);
    writeStatements(QStringList{usualIndex, usualEntry, usualDevice, usualRow} + statements);
    const LogRecorder log;
    LabelInterface *made = build(QStringLiteral("Form"));
    QVERIFY(made);
    QCOMPARE(m_error, untouched);
    QCOMPARE(made->getBlockCommandMaxSize(), blockSize);
    QCOMPARE(made->getBitCommandMaxSize(), bitBlockSize);
    QCOMPARE(made->countBitTypes(), 1);
    QCOMPARE(log.lines(), QStringList{rowLine});
}

void DefaultLabelsTablesTest::deviceTablesWithoutRows_data()
{
    QTest::addColumn<QStringList>("statements");
    QTest::newRow("missing") << QStringList();
    QTest::newRow("empty") << QStringList{usualDevice};
    QTest::newRow("of another form") << QStringList{"CREATE TABLE d (x)", "INSERT INTO d VALUES (1)"};
}

void DefaultLabelsTablesTest::deviceTablesWithoutRows()
{
    QFETCH(QStringList, statements);
    writeStatements(QStringList{usualIndex, usualEntry, usualGeneral, usualLimits} + statements);
    const LogRecorder log;
    LabelInterface *made = build(QStringLiteral("Form"));
    QVERIFY(made);
    QCOMPARE(m_error, untouched);
    QCOMPARE(made->countBitTypes(), 0);
    QCOMPARE(made->getBlockCommandMaxSize(), 11);
    QCOMPARE(build(QStringLiteral("Form")), made);
    QVERIFY(!isConnectionOpen());
    QCOMPARE(log.lines(), QStringList());
}

void DefaultLabelsTablesTest::aRequiredColumnIsMissing_data()
{
    QTest::addColumn<QString>("column");
    for (const char *column : {"pattern", "type", "address_group_index", "description", "prefix_symbol", "data_size",
                               "catch_table", "multiple_rule", "start", "end", "base", "blocksize"})
        QTest::newRow(column) << column;
}

void DefaultLabelsTablesTest::aRequiredColumnIsMissing()
{
    QFETCH(QString, column);
    Driver one = driver(QStringLiteral("A"), {Row(), Row()});
    one.missingColumns = QStringList{column};
    writeDatabase({one});
    const LogRecorder log;
    LabelInterface *made = build(QStringLiteral("A"));
    QVERIFY(made);
    QCOMPARE(m_error, untouched);
    QCOMPARE(made->countBitTypes(), 0);
    QCOMPARE(made->getBlockCommandMaxSize(), 100);
    QCOMPARE(made->addressValidation(QStringLiteral("D1"), -1), -1);
    QCOMPARE(build(QStringLiteral("A")), made);
    QCOMPARE(log.lines(), QStringList());
}

void DefaultLabelsTablesTest::otherFormsOfTheTables_data()
{
    QTest::addColumn<QStringList>("statements");
    QTest::addColumn<QStringList>("symbols");
    QTest::addColumn<int>("blockSize");
    const QStringList general{usualGeneral, usualLimits};
    const QStringList device{usualDevice, usualRow};
    QTest::newRow("the usual form") << general + device + QStringList{usualIndex, usualEntry} << QStringList{"D"} << 11;
    QTest::newRow("device columns in the opposite order, with others between them")
        << general + QStringList{usualIndex, usualEntry,
                                 "CREATE TABLE d (\"continue\", x, blocksize, base, catch_table, multiple_rule, "
                                 "data_size, \"end\", start, prefix_symbol, y, description, address_group_index, type, "
                                 "pattern, z)",
                                 "INSERT INTO d VALUES ('Y', 1, 32, 10, 'words', '', 2, '99', '0', 'D', 2, 'D: word', "
                                 "2, 2, '(D)(\\d+)', 3)"}
        << QStringList{"D"} << 11;
    QTest::newRow("device columns in capitals")
        << general + QStringList{usualIndex, usualEntry,
                                 "CREATE TABLE d (PATTERN, TYPE, ADDRESS_GROUP_INDEX, DESCRIPTION, PREFIX_SYMBOL, "
                                 "START, \"END\", DATA_SIZE, MULTIPLE_RULE, CATCH_TABLE, BASE, BLOCKSIZE, "
                                 "\"CONTINUE\")",
                                 usualRow}
        << QStringList{"D"} << 11;
    QTest::newRow("a view for a device table")
        << general + QStringList{usualIndex, usualEntry, QString(usualDevice).replace(" d ", " stored "),
                                 QString(usualRow).replace(" d ", " stored "), "CREATE VIEW d AS SELECT * FROM stored"}
        << QStringList{"D"} << 11;
    QTest::newRow("numbers as texts")
        << general + QStringList{usualIndex, usualEntry, usualDevice,
                                 "INSERT INTO d VALUES ('(D)(\\d+)', '2', '2', 'D: word', 'D', '0', '99', '2', '', "
                                 "'words', '10', '32', 'Y')"}
        << QStringList{"D"} << 11;
    QTest::newRow("limits as numbers")
        << general + QStringList{usualIndex, usualEntry, usualDevice,
                                 "INSERT INTO d VALUES ('(D)(\\d+)', 2, 2, 'D: word', 'D', 0, 99, 2, '', 'words', 10, "
                                 "32, 'Y')"}
        << QStringList{"D"} << 11;
    QTest::newRow("an index in another order, with another column")
        << general + device +
               QStringList{"CREATE TABLE table_index (device_table, x, general_table, name)",
                           "INSERT INTO table_index VALUES ('d', 1, 'g', 'Form')"}
        << QStringList{"D"} << 11;
    QTest::newRow("an index without general tables") << general + device +
                                                            QStringList{"CREATE TABLE table_index (name, device_table)",
                                                                        "INSERT INTO table_index VALUES ('Form', 'd')"}
                                                     << QStringList{"D"} << 0;
    QTest::newRow("an index without device tables") << general + device +
                                                           QStringList{"CREATE TABLE table_index (name, general_table)",
                                                                       "INSERT INTO table_index VALUES ('Form', 'g')"}
                                                    << QStringList() << 11;
    QTest::newRow("an index with empty cells")
        << general + device + QStringList{usualIndex, "INSERT INTO table_index VALUES ('Form', NULL, '')"}
        << QStringList() << 0;
}

void DefaultLabelsTablesTest::otherFormsOfTheTables()
{
    QFETCH(QStringList, statements);
    QFETCH(QStringList, symbols);
    QFETCH(int, blockSize);
    writeStatements(statements);
    LabelInterface *made = build(QStringLiteral("Form"));
    QVERIFY(made);
    QCOMPARE(m_error, untouched);
    QCOMPARE(made->prefixSymbols(), symbols);
    QCOMPARE(made->getBlockCommandMaxSize(), blockSize);
    if (symbols.isEmpty())
        return;
    QCOMPARE(made->getFormatString(0), QStringLiteral("D: word"));
    QCOMPARE(made->datatype(0), 2);
    QCOMPARE(made->datasize(0), 2);
    QCOMPARE(made->base(0), 10);
    QCOMPARE(made->blocksize(0), 32);
    QCOMPARE(made->isMustContinue(0), true);
    QCOMPARE(made->getCatchTableName(QStringLiteral("D99"), 2), QStringLiteral("words"));
    QCOMPARE(made->addressValidation(QStringLiteral("D100"), -1), -1);
}

void DefaultLabelsTablesTest::withoutAContinueColumnTheRuleIsN()
{
    Row word;
    word.continueRule = QStringLiteral("Y");
    Driver one = driver(QStringLiteral("A"), {word, word});
    one.missingColumns = QStringList{QStringLiteral("continue")};
    writeDatabase({one, driver(QStringLiteral("B"), {word}, QStringLiteral("b"))});
    LabelInterface *made = build(QStringLiteral("A"));
    QVERIFY(made);
    QCOMPARE(made->countBitTypes(), 2);
    QCOMPARE(loader(made)->deviceTypesTable().continueRule(0), QStringLiteral("N"));
    QCOMPARE(loader(made)->deviceTypesTable().continueRule(1), QStringLiteral("N"));
    QCOMPARE(made->isMustContinue(0), false);
    LabelInterface *other = build(QStringLiteral("B"));
    QVERIFY(other);
    QCOMPARE(loader(other)->deviceTypesTable().continueRule(0), QStringLiteral("Y"));
}

void DefaultLabelsTablesTest::blockSizes_data()
{
    QTest::addColumn<int>("stored");
    QTest::addColumn<int>("read");
    QTest::newRow("a usual one") << 64 << 64;
    QTest::newRow("-1 is none") << -1 << 0;
    QTest::newRow("any negative one is none") << -64 << 0;
    QTest::newRow("0") << 0 << 0;
    QTest::newRow("1") << 1 << 1;
}

void DefaultLabelsTablesTest::blockSizes()
{
    QFETCH(int, stored);
    QFETCH(int, read);
    Row word;
    word.blocksize = stored;
    writeDatabase({driver(QStringLiteral("A"), {word})});
    LabelInterface *made = build(QStringLiteral("A"));
    QVERIFY(made);
    QCOMPARE(made->blocksize(0), read);
}

void DefaultLabelsTablesTest::dataSizesKeepTheirSign_data()
{
    QTest::addColumn<int>("stored");
    QTest::addColumn<quint64>("read");
    QTest::newRow("a usual one") << 4 << Q_UINT64_C(4);
    QTest::newRow("0") << 0 << Q_UINT64_C(0);
    QTest::newRow("-1") << -1 << Q_UINT64_C(0xffffffffffffffff);
    QTest::newRow("-2") << -2 << Q_UINT64_C(0xfffffffffffffffe);
}

void DefaultLabelsTablesTest::dataSizesKeepTheirSign()
{
    QFETCH(int, stored);
    QFETCH(quint64, read);
    Row word;
    word.dataSize = stored;
    writeDatabase({driver(QStringLiteral("A"), {word})});
    LabelInterface *made = build(QStringLiteral("A"));
    QVERIFY(made);
    QCOMPARE(quint64(loader(made)->deviceTypesTable().getFormatterAtIndex(0).datasize()), read);
    QCOMPARE(made->datasize(0), stored);
}

void DefaultLabelsTablesTest::emptyCells()
{
    writeStatements({usualIndex, usualEntry, usualDevice,
                     "INSERT INTO d VALUES (NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, "
                     "NULL)",
                     usualRow});
    LabelInterface *made = build(QStringLiteral("Form"));
    QVERIFY(made);
    QCOMPARE(made->countBitTypes(), 2);
    QCOMPARE(made->datatype(0), 0);
    QCOMPARE(made->base(0), 0);
    QCOMPARE(made->datasize(0), 0);
    QCOMPARE(made->blocksize(0), 0);
    QCOMPARE(made->getFormatString(0), QString());
    QCOMPARE(loader(made)->deviceTypesTable().continueRule(0), QString());
    QCOMPARE(made->addressValidation(QStringLiteral("D1"), -1), 1);
}

QTEST_GUILESS_MAIN(DefaultLabelsTablesTest)

#include "tst_defaultlabels_tables.moc"
