// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/labelfixtures.h"
#include "support/logrecorder.h"
#include "support/projectfixtures.h"

#include "zelmar_label/label_store/labelstore.h"
#include "zelmar_label/label_table/labelinterface.h"
#include "zelmar_label/tag_store/tagsystem.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QtTest>

#include <climits>
#include <memory>

using label::LabelInterface;

namespace {

const QString key = QStringLiteral("project of links");
const QString words = QStringLiteral("Words");
const QString relays = QStringLiteral("Relays and words");

/// The lines without the toolkit's own warnings about missing connections.
QStringList ownLines(const LogRecorder &log)
{
    const QStringList lines = log.lines();
    QStringList own;
    for (const QString &line : lines) {
        if (!line.startsWith(QLatin1String("warning: QSql")))
            own.append(line);
    }
    return own;
}

TagRow tag(int id, int link, const QString &address, const QString &name = QString())
{
    TagRow row;
    row.id = id;
    row.name = name.isNull() ? QStringLiteral("Tag %1").arg(id) : name;
    row.connectorId = link;
    row.address = address;
    return row;
}

/// A project whose tag table has no primary key, so ids may be duplicate.
void writeTagsWithDoubledId()
{
    executeOn(key, QStringLiteral("CREATE TABLE custom_tag_table (id, name, access, connector_id, data_type, address, "
                                  "scan_time, scale, addition)"));
    executeOn(key, QStringLiteral("INSERT INTO custom_tag_table VALUES (7, 'one', 0, 2, 1, 'D1', 1, 1, 0), "
                                  "(7, 'other', 0, 3, 1, 'D2', 1, 1, 0), (8, 'single', 0, 3, 1, 'D3', 1, 1, 0)"));
}

} // namespace

class TagLinksTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    void linkOfATag_data();
    void linkOfATag();
    void linkOfAnInternalTagThatTheLibraryAdded();
    void linkOfADoubledRow();
    void linkOfATagWithoutADatabase_data();
    void linkOfATagWithoutADatabase();
    void linkOfTheTagOfAnObject_data();
    void linkOfTheTagOfAnObject();
    void linkOfTheTagOfAnObjectWithoutTheProperty();
    void linkOfTheTagOfAnObjectByADeclaredProperty();

    void linkName_data();
    void linkName();
    void labelOfALink_data();
    void labelOfALink();
    void labelStaysTheSameUntilItIsFreed();
    void labelFollowsTheSwitchToACustomOne();
    void labelOfAnUnknownLinkShowsNothing();

    void allLinks();
    void enabledLinks();
    void enabledLinksWithoutTheColumn();
    void stations_data();
    void stations();
    void stationIsValid_data();
    void stationIsValid();
    void stationIsValidLogsAFailedStatement();
    void stationOfAnAddress_data();
    void stationOfAnAddress();

    void idsOfAllTags();
    void idsOfAllTagsWithRecipeTags();
    void idsOfALink_data();
    void idsOfALink();
    void idsByAddress_data();
    void idsByAddress();
    void idIsValid_data();
    void idIsValid();
    void idIsValidForADoubledRow();
    void idIsValidLogsAFailedStatement();

    void withoutTables();
    void withoutADatabase();
    void tablesThatChangeUnderAnOpenProject();

private:
    std::unique_ptr<QTemporaryDir> m_folder;
};

void TagLinksTest::initTestCase()
{
    Driver plain;
    plain.name = words;
    plain.rows = {Row()};
    Driver mixed;
    mixed.name = relays;
    Row relay;
    relay.pattern = QStringLiteral("(X)(\\d+)");
    relay.type = 0;
    relay.prefixSymbol = QStringLiteral("X");
    mixed.rows = {relay, Row()};
    mixed.generalTable = QStringLiteral("general_mixed");
    mixed.deviceTable = QStringLiteral("types_mixed");
    writeDriverDatabase(driverDatabasePath(), {plain, mixed});
    QFile::remove(
        driverDatabasePath().replace(QLatin1String("database/drivers"), QLatin1String("database/customdrivers")));
}

void TagLinksTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
    LinkRow secondOfThree{3, QStringLiteral("Overridden"), 1};
    makeProject(
        m_folder->filePath(QStringLiteral("project")), key,
        {{2, words, 0}, {3, relays, 0}, secondOfThree, {5, QStringLiteral("No such driver"), 1}, {9, QString(), 2}},
        {{1, 12, 2}, {2, 3, 2}, {3, 3, 2}, {4, 7, 3}, {5, 9, 0}, {6, 255, 3}});
    writeTags(key,
              {tag(1, 2, QStringLiteral("D100")), tag(2, 2, QStringLiteral("D200")), tag(3, 3, QStringLiteral("D100")),
               tag(4, 0, QStringLiteral("")), tag(21001, 3, QStringLiteral("X1")), tag(29999, 2, QStringLiteral("D3")),
               tag(60001, 2, QStringLiteral("D4")), tag(-5, 2, QStringLiteral("D5"))});
    TagSystem::instance(key);
}

void TagLinksTest::cleanup()
{
    dropProjects();
    m_folder.reset();
    label::freeLabel(words);
    label::freeLabel(relays);
}

void TagLinksTest::cleanupTestCase()
{
    QDir(QFileInfo(driverDatabasePath()).absolutePath()).removeRecursively();
}

void TagLinksTest::linkOfATag_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<int>("link");
    QTest::newRow("a tag on a link") << 1 << 2;
    QTest::newRow("a tag on another link") << 3 << 3;
    QTest::newRow("an internal tag") << 4 << 0;
    QTest::newRow("no tag") << -1 << -1;
    QTest::newRow("a negative id, though a row bears it") << -5 << -1;
    QTest::newRow("the lowest number") << INT_MIN << -1;
    QTest::newRow("no row 0") << 0 << -1;
    QTest::newRow("no such row") << 999 << -1;
    QTest::newRow("no such row, the highest number") << INT_MAX << -1;
    QTest::newRow("just below the system tags, without a row") << 19999 << -1;
    QTest::newRow("the first system id") << 20000 << 0;
    QTest::newRow("a system tag") << 20011 << 0;
    QTest::newRow("a system id without a tag") << 20094 << 0;
    QTest::newRow("the last system id") << 21000 << 0;
    QTest::newRow("just above the system tags") << 21001 << 3;
    QTest::newRow("just below the recipe tags") << 29999 << 2;
    QTest::newRow("the first recipe id") << 30000 << 0;
    QTest::newRow("the last recipe id") << 50000 << 0;
    QTest::newRow("the first recipe row id") << 50001 << 0;
    QTest::newRow("the last recipe row id") << 60000 << 0;
    QTest::newRow("just above the recipe tags") << 60001 << 2;
}

void TagLinksTest::linkOfATag()
{
    QFETCH(int, id);
    TagSystem *tags = TagSystem::instance(key);
    QTEST(tags->getCommunicatorID(id), "link");
    QTEST(tags->getLinkID(id), "link");
}

void TagLinksTest::linkOfAnInternalTagThatTheLibraryAdded()
{
    TagSystem *tags = TagSystem::instance(key);
    tags->addDafaultTag(QStringLiteral("Counter"));
    QCOMPARE(tags->getCommunicatorID(tags->getIdByTagName(QStringLiteral("Counter"))), 0);
    QVERIFY(tags->addTag(QStringLiteral("Speed"), QStringLiteral("D7"), 17, 3, 1));
    QCOMPARE(tags->getLinkID(tags->getIdByTagName(QStringLiteral("Speed"))), 17);
}

void TagLinksTest::linkOfADoubledRow()
{
    executeOn(key, QStringLiteral("DROP TABLE custom_tag_table"));
    writeTagsWithDoubledId();
    TagSystem *tags = TagSystem::instance(key);
    QCOMPARE(tags->getCommunicatorID(7), -1);
    QCOMPARE(tags->getLinkID(7), -1);
    QCOMPARE(tags->getCommunicatorID(8), 3);
}

void TagLinksTest::linkOfATagWithoutADatabase_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<int>("link");
    QTest::newRow("no tag") << -1 << -1;
    QTest::newRow("a custom id") << 1 << -1;
    QTest::newRow("a system tag") << 20011 << 0;
    QTest::newRow("a recipe id") << 30000 << 0;
    QTest::newRow("a recipe row id") << 60000 << 0;
}

void TagLinksTest::linkOfATagWithoutADatabase()
{
    QFETCH(int, id);
    const LogRecorder log;
    TagSystem *tags = TagSystem::instance(QString());
    QTEST(tags->getCommunicatorID(id), "link");
    QTEST(tags->getLinkID(id), "link");
}

void TagLinksTest::linkOfTheTagOfAnObject_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("link");
    QTest::newRow("a number") << QVariant(1) << 2;
    QTest::newRow("a number as text") << QVariant(QStringLiteral("3")) << 3;
    QTest::newRow("an internal tag") << QVariant(4) << 0;
    QTest::newRow("no tag") << QVariant(-1) << -1;
    QTest::newRow("a system tag") << QVariant(20011) << 0;
    QTest::newRow("a recipe tag") << QVariant(30000) << 0;
    QTest::newRow("no such row") << QVariant(999) << -1;
    QTest::newRow("a text that is no number asks for row 0") << QVariant(QStringLiteral("abc")) << -1;
    QTest::newRow("a value without a number asks for row 0") << QVariant(QStringList{QStringLiteral("1")}) << -1;
}

void TagLinksTest::linkOfTheTagOfAnObject()
{
    QFETCH(QVariant, value);
    QObject object;
    object.setProperty("tagId", value);
    TagSystem *tags = TagSystem::instance(key);
    QTEST(tags->getCommunicatorID(&object, QStringLiteral("tagId")), "link");
    QTEST(tags->getLinkID(&object, QStringLiteral("tagId")), "link");
}

void TagLinksTest::linkOfTheTagOfAnObjectWithoutTheProperty()
{
    TagSystem *tags = TagSystem::instance(key);
    executeOn(key, QStringLiteral("INSERT INTO custom_tag_table (id, connector_id) VALUES (0, 5)"));
    QObject object;
    QCOMPARE(tags->getCommunicatorID(&object, QStringLiteral("x")), -1);
    QCOMPARE(tags->getLinkID(&object, QStringLiteral("x")), -1);
    object.setProperty("y", QStringLiteral("abc"));
    QCOMPARE(tags->getCommunicatorID(&object, QStringLiteral("y")), 5);
    // The lock is free again in either case.
    QCOMPARE(tags->getCommunicatorID(1), 2);
}

void TagLinksTest::linkOfTheTagOfAnObjectByADeclaredProperty()
{
    TagSystem *tags = TagSystem::instance(key);
    QObject object;
    object.setObjectName(QStringLiteral("2"));
    QCOMPARE(tags->getCommunicatorID(&object, QStringLiteral("objectName")), 2);
    object.setProperty("gr\xf6\xdf"
                       "e",
                       3);
    QCOMPARE(tags->getLinkID(&object, QString::fromUtf8("gr\xc3\xb6\xc3\x9f"
                                                        "e")),
             3);
}

void TagLinksTest::linkName_data()
{
    QTest::addColumn<int>("link");
    QTest::addColumn<QString>("name");
    QTest::newRow("a link") << 2 << QStringLiteral("Words");
    QTest::newRow("the first row of a doubled link") << 3 << QStringLiteral("Relays and words");
    QTest::newRow("a driver that does not exist") << 5 << QStringLiteral("No such driver");
    QTest::newRow("a link without a model") << 9 << QString();
    QTest::newRow("no such link") << 4 << QString();
    QTest::newRow("the link of internal tags") << 0 << QString();
    QTest::newRow("no link") << -1 << QString();
    QTest::newRow("a link that was added later") << 10 << QStringLiteral("300");
}

void TagLinksTest::linkName()
{
    QFETCH(int, link);
    const MessageRecorder messages;
    TagSystem *tags = TagSystem::instance(key);
    executeOn(key, QStringLiteral("INSERT INTO LINK VALUES (10, 300, 1)"));
    QTEST(tags->getLinkName(link), "name");
}

void TagLinksTest::labelOfALink_data()
{
    QTest::addColumn<int>("link");
    QTest::addColumn<int>("rows");
    QTest::newRow("a link") << 2 << 1;
    QTest::newRow("the first row of a doubled link") << 3 << 2;
    QTest::newRow("a driver that does not exist") << 5 << -1;
    QTest::newRow("a link without a model") << 9 << -1;
    QTest::newRow("no such link") << 4 << -1;
    QTest::newRow("the link of internal tags") << 0 << -1;
    QTest::newRow("no link") << -1 << -1;
}

void TagLinksTest::labelOfALink()
{
    QFETCH(int, link);
    LabelInterface *made = TagSystem::instance(key)->getLable(link);
    QTEST(made ? made->countBitTypes() : -1, "rows");
}

void TagLinksTest::labelStaysTheSameUntilItIsFreed()
{
    TagSystem *tags = TagSystem::instance(key);
    LabelInterface *made = tags->getLable(2);
    QVERIFY(made);
    QString error;
    QCOMPARE(label::createLabel(words, error), made);
    QCOMPARE(tags->getLable(2), made);
    QCOMPARE(made->addressValidation(QStringLiteral("D100"), 2), 0);
    executeOn(key, QStringLiteral("UPDATE LINK SET LINKID = 77 WHERE LINKID = 2"));
    QVERIFY(!tags->getLable(2));
    QCOMPARE(tags->getLable(77), made);
    QCOMPARE(tags->getLinkName(77), words);
}

void TagLinksTest::labelFollowsTheSwitchToACustomOne()
{
    TagSystem *tags = TagSystem::instance(key);
    LabelInterface *usual = tags->getLable(2);
    QVERIFY(usual);
    QVERIFY(label::setupCustomLabel(words));
    LabelInterface *custom = tags->getLable(2);
    QVERIFY(custom);
    QVERIFY(custom != usual);
    QCOMPARE(custom->countBitTypes(), 0);
    QCOMPARE(custom->getBlockCommandMaxSize(), 100);
    QString error;
    QCOMPARE(label::createCustomLabel(words, error), custom);
    QCOMPARE(tags->getLable(2), custom);

    QVERIFY(label::setupDefaultLabel(words));
    QCOMPARE(tags->getLable(2), usual);
    QCOMPARE(usual->countBitTypes(), 1);
    label::freeCustomLabel(words);
    label::removeCustomLabelDatabase();
}

void TagLinksTest::labelOfAnUnknownLinkShowsNothing()
{
    MessageRecorder messages;
    const LogRecorder log;
    QVERIFY(!TagSystem::instance(key)->getLable(4));
    QCOMPARE(messages.take(), QStringList());
    QCOMPARE(log.lines(), QStringList());
}

void TagLinksTest::allLinks()
{
    TagSystem *tags = TagSystem::instance(key);
    QCOMPARE(sorted(tags->getAllLinkID()), (QList<int>{2, 3, 5, 9}));
    executeOn(key, QStringLiteral("INSERT INTO LINK VALUES (-1, 'negative', 0), (9, 'again', 0)"));
    QCOMPARE(sorted(tags->getAllLinkID()), (QList<int>{-1, 2, 3, 5, 9}));
    executeOn(key, QStringLiteral("DELETE FROM LINK"));
    QCOMPARE(tags->getAllLinkID(), QList<int>());
}

void TagLinksTest::enabledLinks()
{
    TagSystem *tags = TagSystem::instance(key);
    // Link 2 is disabled, of the two rows of link 3 one is enabled, and 2 is not the mark of an enabled link.
    QCOMPARE(sorted(tags->getAllEnabledLinkID()), (QList<int>{3, 5}));
    executeOn(key,
              QStringLiteral("INSERT INTO LINK VALUES (11, 'as text', '1'), (12, 'unset', NULL), (13, 'minus', -1)"));
    QCOMPARE(sorted(tags->getAllEnabledLinkID()), (QList<int>{3, 5, 11}));
    executeOn(key, QStringLiteral("UPDATE LINK SET ENABLED = 0"));
    QCOMPARE(tags->getAllEnabledLinkID(), QList<int>());
}

void TagLinksTest::enabledLinksWithoutTheColumn()
{
    executeOn(key, QStringLiteral("DROP TABLE LINK"));
    executeOn(key, QStringLiteral("CREATE TABLE LINK (LINKID, PLC_MODEL)"));
    executeOn(key, QStringLiteral("INSERT INTO LINK VALUES (2, 'Words')"));
    MessageRecorder messages;
    TagSystem *tags = TagSystem::instance(key);
    QCOMPARE(tags->getAllEnabledLinkID(), QList<int>());
    QCOMPARE(tags->getAllLinkID(), QList<int>{2});
    QCOMPARE(messages.take(), QStringList());
}

void TagLinksTest::stations_data()
{
    QTest::addColumn<int>("link");
    QTest::addColumn<QList<int>>("expected");
    QTest::newRow("ascending, doubled ones as often as they stand") << 2 << QList<int>{3, 3, 12};
    QTest::newRow("another link") << 3 << QList<int>{7, 255};
    QTest::newRow("the link of internal tags") << 0 << QList<int>{9};
    QTest::newRow("a link without stations") << 5 << QList<int>();
    QTest::newRow("no such link") << 4 << QList<int>();
    QTest::newRow("no link") << -1 << QList<int>();
}

void TagLinksTest::stations()
{
    QFETCH(int, link);
    QTEST(TagSystem::instance(key)->stationList(link), "expected");
}

void TagLinksTest::stationIsValid_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<int>("station");
    QTest::addColumn<bool>("valid");
    QTest::newRow("on the tag's link") << 1 << 12 << true;
    QTest::newRow("doubled on the tag's link") << 2 << 3 << true;
    QTest::newRow("only on another link") << 1 << 7 << false;
    QTest::newRow("on the other link, of a tag there") << 3 << 7 << true;
    QTest::newRow("on no link") << 1 << 99 << false;
    QTest::newRow("an internal tag asks about link 0") << 4 << 9 << true;
    QTest::newRow("a system tag asks about link 0") << 20011 << 9 << true;
    QTest::newRow("a system tag knows no other link") << 20011 << 12 << false;
    QTest::newRow("a recipe tag asks about link 0") << 30000 << 9 << true;
    QTest::newRow("a tag that does not exist") << 999 << 12 << false;
    QTest::newRow("no tag") << -1 << 9 << false;
    QTest::newRow("no station") << 1 << -1 << false;
}

void TagLinksTest::stationIsValid()
{
    QFETCH(int, id);
    QFETCH(int, station);
    const LogRecorder log;
    QTEST(TagSystem::instance(key)->isValidStationID(id, station), "valid");
    QCOMPARE(log.lines(), QStringList());
}

void TagLinksTest::stationIsValidLogsAFailedStatement()
{
    executeOn(key, QStringLiteral("DROP TABLE NODE"));
    MessageRecorder messages;
    const LogRecorder log;
    QVERIFY(!TagSystem::instance(key)->isValidStationID(1, 12));
    QCOMPARE(log.lines(), QStringList{QStringLiteral("isValidStationID execute failed")});
    QCOMPARE(messages.take(), QStringList());
}

void TagLinksTest::stationOfAnAddress_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("station");
    QTest::newRow("a station and a device address") << QStringLiteral("12-D100") << QStringLiteral("12");
    QTest::newRow("a station alone") << QStringLiteral("12") << QStringLiteral("12");
    QTest::newRow("a device address alone") << QStringLiteral("D100") << QString();
    QTest::newRow("four digits") << QStringLiteral("1234-D1") << QStringLiteral("123");
    QTest::newRow("three digits") << QStringLiteral("255-D1") << QStringLiteral("255");
    QTest::newRow("leading zeros") << QStringLiteral("003-D1") << QStringLiteral("003");
    QTest::newRow("digits without a sign behind them") << QStringLiteral("12D100") << QStringLiteral("12");
    QTest::newRow("nothing behind the sign") << QStringLiteral("7-") << QStringLiteral("7");
    QTest::newRow("nothing before the sign") << QStringLiteral("-D1") << QString();
    QTest::newRow("a second sign") << QStringLiteral("1-2-D1") << QStringLiteral("1");
    QTest::newRow("a blank in front") << QStringLiteral(" 12-D1") << QString();
    QTest::newRow("a line end in front") << QStringLiteral("\n12-D1") << QString();
    QTest::newRow("digits of another script") << QStringLiteral("\u0661\u0662-D1") << QStringLiteral("\u0661\u0662");
    QTest::newRow("a system tag") << QStringLiteral("S>NULL") << QString();
    QTest::newRow("no text") << QString() << QString();
}

void TagLinksTest::stationOfAnAddress()
{
    QFETCH(QString, address);
    QTEST(TagSystem::getStationID(address), "station");
}

void TagLinksTest::idsOfAllTags()
{
    const QList<int> rows{-5, 1, 2, 3, 4, 21001, 29999, 60001};
    TagSystem *tags = TagSystem::instance(key);
    QCOMPARE(tags->getTagIDList(), rows);
    QVERIFY(tags->addTag(QStringLiteral("Last"), QString(), 2, 1, 1));
    QCOMPARE(tags->getTagIDList(), rows + QList<int>{60002});
    QCOMPARE(tags->getTagIDList(2), (QList<int>{-5, 1, 2, 29999, 60001, 60002}));
}

void TagLinksTest::idsOfAllTagsWithRecipeTags()
{
    TagSystem *tags = TagSystem::instance(key);
    executeOn(key, QStringLiteral("INSERT INTO custom_tag_table (id, name) VALUES (30001, 'in both')"));
    tags->setRecipeTags(
        {{50000, QStringLiteral("R>1_3")}, {30000, QStringLiteral("R>1_1")}, {30001, QStringLiteral("R>1_2")}},
        {{30000, 1}});
    tags->setRecipeRowTags({{50001, QStringLiteral("R>1_1I1")}}, {{50001, 1}});
    QCOMPARE(tags->getTagIDList(), (QList<int>{-5, 1, 2, 3, 4, 21001, 29999, 30001, 60001, 30000, 50000}));

    executeOn(key, QStringLiteral("DROP TABLE custom_tag_table"));
    QCOMPARE(tags->getTagIDList(), (QList<int>{30000, 30001, 50000}));
    tags->setRecipeTags({}, {});
    QCOMPARE(tags->getTagIDList(), QList<int>());
}

void TagLinksTest::idsOfALink_data()
{
    QTest::addColumn<int>("link");
    QTest::addColumn<QList<int>>("expected");
    QTest::newRow("a link") << 2 << QList<int>{-5, 1, 2, 29999, 60001};
    QTest::newRow("another link") << 3 << QList<int>{3, 21001};
    QTest::newRow("the internal tags, without system and recipe tags") << 0 << QList<int>{4};
    QTest::newRow("a link without tags") << 5 << QList<int>();
    QTest::newRow("no link") << -1 << QList<int>();
}

void TagLinksTest::idsOfALink()
{
    QFETCH(int, link);
    TagSystem *tags = TagSystem::instance(key);
    tags->setRecipeTags({{30000, QStringLiteral("R>1_1")}}, {{30000, 1}});
    QTEST(tags->getTagIDList(link), "expected");
}

void TagLinksTest::idsByAddress_data()
{
    QTest::addColumn<int>("link");
    QTest::addColumn<QString>("address");
    QTest::addColumn<QList<int>>("expected");
    QTest::newRow("one tag") << 2 << QStringLiteral("D200") << QList<int>{2};
    QTest::newRow("several tags, in row order") << 2 << QStringLiteral("D100") << QList<int>{1, 101};
    QTest::newRow("the same address on another link") << 3 << QStringLiteral("D100") << QList<int>{3};
    QTest::newRow("an address that is only on another link") << 3 << QStringLiteral("D200") << QList<int>();
    QTest::newRow("in other letters") << 2 << QStringLiteral("d100") << QList<int>();
    QTest::newRow("with a blank behind it") << 2 << QStringLiteral("D100 ") << QList<int>();
    QTest::newRow("with a station that is not stored") << 2 << QStringLiteral("1-D100") << QList<int>();
    QTest::newRow("no address") << 0 << QString() << QList<int>{4};
    QTest::newRow("an address that breaks the statement") << 2 << QStringLiteral("D1'00") << QList<int>();
    QTest::newRow("an apostrophe alone") << 2 << QStringLiteral("'") << QList<int>();
    QTest::newRow("a doubled apostrophe stands for two") << 2 << QStringLiteral("O''Neil") << QList<int>();
    QTest::newRow("an address that looks like a condition")
        << 3 << QStringLiteral("' OR address = 'X1") << QList<int>();
    QTest::newRow("a quote") << 2 << QStringLiteral("\"") << QList<int>{103};
    QTest::newRow("a place of the statement") << 2 << QStringLiteral("D%3") << QList<int>{104};
    QTest::newRow("a number with leading zeros is stored without them")
        << 2 << QStringLiteral("0017") << QList<int>{105};
    QTest::newRow("and found without them") << 2 << QStringLiteral("17") << QList<int>{105};
    QTest::newRow("letters beyond ASCII") << 2 << QStringLiteral("\u00c4\U0001f600") << QList<int>{106};
}

void TagLinksTest::idsByAddress()
{
    QFETCH(int, link);
    QFETCH(QString, address);
    QFETCH(QList<int>, expected);
    writeTags(key, {tag(101, 2, QStringLiteral("D100")), tag(102, 2, QStringLiteral("O'Neil")),
                    tag(103, 2, QStringLiteral("\"")), tag(104, 2, QStringLiteral("D%3")),
                    tag(105, 2, QStringLiteral("0017")), tag(106, 2, QStringLiteral("\u00c4\U0001f600"))});
    MessageRecorder messages;
    const LogRecorder log;
    QCOMPARE(TagSystem::instance(key)->getTagIDsByAddress(link, address), expected);
    QStringList lines;
    for (int id : qAsConst(expected))
        lines.append(QStringLiteral("TagSystem::getTagIDsByAddress  ") + QString::number(id));
    QCOMPARE(log.lines(), lines);
    QCOMPARE(messages.take(), QStringList());
}

void TagLinksTest::idIsValid_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<bool>("valid");
    QTest::newRow("a tag") << 1 << true;
    QTest::newRow("an internal tag") << 4 << true;
    QTest::newRow("no such row") << 999 << false;
    QTest::newRow("0") << 0 << false;
    QTest::newRow("no tag") << -1 << false;
    QTest::newRow("a negative id that has a row") << -5 << true;
    QTest::newRow("just below the system tags, without a row") << 19999 << false;
    QTest::newRow("the first system id") << 20000 << true;
    QTest::newRow("a system id without a tag") << 20094 << true;
    QTest::newRow("the last system id") << 21000 << true;
    QTest::newRow("just above the system tags, with a row") << 21001 << true;
    QTest::newRow("above the system tags, without a row") << 21002 << false;
    QTest::newRow("just below the recipe tags, with a row") << 29999 << true;
    QTest::newRow("the first recipe id, without a tag") << 30000 << true;
    QTest::newRow("the last recipe id, without a tag") << 60000 << true;
    QTest::newRow("just above the recipe tags, with a row") << 60001 << true;
    QTest::newRow("above the recipe tags, without a row") << 60002 << false;
}

void TagLinksTest::idIsValid()
{
    QFETCH(int, id);
    const LogRecorder log;
    QTEST(TagSystem::instance(key)->isValidTagID(id), "valid");
    QCOMPARE(log.lines(), QStringList());
}

void TagLinksTest::idIsValidForADoubledRow()
{
    executeOn(key, QStringLiteral("DROP TABLE custom_tag_table"));
    writeTagsWithDoubledId();
    QVERIFY(TagSystem::instance(key)->isValidTagID(7));
    QVERIFY(!TagSystem::instance(key)->isValidTagID(1));
}

void TagLinksTest::idIsValidLogsAFailedStatement()
{
    executeOn(key, QStringLiteral("DROP TABLE custom_tag_table"));
    MessageRecorder messages;
    const LogRecorder log;
    QVERIFY(!TagSystem::instance(key)->isValidTagID(1));
    QCOMPARE(log.lines(), QStringList{QStringLiteral("TagSystem::isValidTagID  \"no such table: custom_tag_table "
                                                     "Unable to execute statement\"")});
    QVERIFY(TagSystem::instance(key)->isValidTagID(20011));
    QCOMPARE(log.lines().size(), 1);
    QCOMPARE(messages.take(), QStringList());
}

void TagLinksTest::withoutTables()
{
    executeOn(key, QStringLiteral("DROP TABLE LINK"));
    executeOn(key, QStringLiteral("DROP TABLE NODE"));
    executeOn(key, QStringLiteral("DROP TABLE custom_tag_table"));
    MessageRecorder messages;
    const LogRecorder log;
    TagSystem *tags = TagSystem::instance(key);
    QCOMPARE(tags->getCommunicatorID(1), -1);
    QCOMPARE(tags->getLinkName(2), QString());
    QVERIFY(!tags->getLable(2));
    QCOMPARE(tags->getAllLinkID(), QList<int>());
    QCOMPARE(tags->getAllEnabledLinkID(), QList<int>());
    QCOMPARE(tags->stationList(2), QList<int>());
    QCOMPARE(tags->getTagIDList(), QList<int>());
    QCOMPARE(tags->getTagIDList(2), QList<int>());
    QCOMPARE(tags->getTagIDsByAddress(2, QStringLiteral("D100")), QList<int>());
    QCOMPARE(log.lines(), QStringList());
    QCOMPARE(messages.take(), QStringList());
}

void TagLinksTest::withoutADatabase()
{
    MessageRecorder messages;
    const LogRecorder log;
    TagSystem *tags = TagSystem::instance(QString());
    tags->setRecipeTags({{30000, QStringLiteral("R>1_1")}}, {});
    QCOMPARE(tags->getLinkName(2), QString());
    QVERIFY(!tags->getLable(2));
    QCOMPARE(tags->getAllLinkID(), QList<int>());
    QCOMPARE(tags->getAllEnabledLinkID(), QList<int>());
    QCOMPARE(tags->stationList(2), QList<int>());
    QCOMPARE(tags->getTagIDList(), QList<int>{30000});
    QCOMPARE(tags->getTagIDList(0), QList<int>());
    QCOMPARE(tags->getTagIDsByAddress(2, QStringLiteral("D100")), QList<int>());
    QVERIFY(tags->isValidTagID(20011));
    QCOMPARE(ownLines(log), QStringList());
    QVERIFY(!tags->isValidStationID(20011, 9));
    QCOMPARE(ownLines(log), QStringList{QStringLiteral("isValidStationID execute failed")});
    QVERIFY(!tags->isValidTagID(1));
    QCOMPARE(ownLines(log).size(), 2);
    QVERIFY2(ownLines(log).last().startsWith(QLatin1String("TagSystem::isValidTagID  \"")),
             qPrintable(ownLines(log).last()));
    QCOMPARE(messages.take(), QStringList());
}

/// Earlier answers are not cached.
void TagLinksTest::tablesThatChangeUnderAnOpenProject()
{
    TagSystem *tags = TagSystem::instance(key);
    for (int round = 0; round < 2; ++round) {
        QCOMPARE(tags->getCommunicatorID(1), 2);
        QCOMPARE(tags->stationList(3), (QList<int>{7, 255}));
        executeOn(key, QStringLiteral("UPDATE custom_tag_table SET connector_id = 3 WHERE id = 1"));
        executeOn(key, QStringLiteral("DELETE FROM NODE WHERE STATIONID = 255"));
        QCOMPARE(tags->getCommunicatorID(1), 3);
        QCOMPARE(tags->stationList(3), QList<int>{7});
        QVERIFY(tags->isValidStationID(1, 7));
        executeOn(key, QStringLiteral("ALTER TABLE custom_tag_table RENAME TO hidden"));
        QCOMPARE(tags->getCommunicatorID(1), -1);
        executeOn(key, QStringLiteral("ALTER TABLE hidden RENAME TO custom_tag_table"));
        executeOn(key, QStringLiteral("UPDATE custom_tag_table SET connector_id = 2 WHERE id = 1"));
        executeOn(key, QStringLiteral("INSERT INTO NODE VALUES (6, 255, 3)"));
    }
}

QTEST_GUILESS_MAIN(TagLinksTest)

#include "tst_taglinks.moc"
