// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/projectfixtures.h"

#include "zelmar_label/tag_store/systemtagiteminformation.h"
#include "zelmar_label/tag_store/tagsystem.h"

#include <QMap>
#include <QTemporaryDir>
#include <QtTest>

#include <limits>
#include <type_traits>

using Information = SystemTagItemInformation;

namespace {

/// No operation returns the items; an explicit instantiation may name a private member.
QMap<int, Information> &systemTagsOf(TagSystem &tags);

template<auto member>
struct SystemTags
{
    friend QMap<int, Information> &systemTagsOf(TagSystem &tags) { return tags.*member; }
};
template struct SystemTags<&TagSystem::m_systemTags>;

struct SystemTag
{
    int key;
    int id;
    const char *name;
    int dataType;
    int tagType;
};

const SystemTag table[] = {
    {20010, 20010, "S>Current_screen_name", 7, 0},
    {20011, 20011, "S>Change_screen", 3, 1},
    {20012, 20012, "S>Current_screen", 3, 0},
    {20020, 20020, "S>Full_time", 7, 0},
    {20021, 20021, "S>Full_date", 7, 0},
    {20022, 20022, "S>Year", 3, 1},
    {20023, 20023, "S>Month", 3, 1},
    {20024, 20024, "S>Day", 3, 1},
    {20025, 20025, "S>Hour", 3, 1},
    {20026, 20026, "S>Minute", 3, 1},
    {20027, 20027, "S>Second", 3, 1},
    {20028, 20028, "S>WeekDay", 3, 0},
    {20030, 20030, "S>Current_USER", 7, 0},
    {20031, 20031, "S>Current_user_security_group_list", 7, 0},
    {20050, 20050, "S>Current_alarm_count", 3, 0},
    {20060, 20060, "S>User_Command", 7, 1},
    {20070, 20070, "S>R_Timestamp", 7, 0},
    {20071, 20071, "S>Set_DateTime", 7, 1},
    {20072, 20072, "S>R_Timestamp_Unix", 8, 0},
    {20090, 20090, "S>SD_card_size", 3, 0},
    {20091, 20091, "S>USB_MemoryStick_size", 3, 0},
    {20092, 20092, "S>IP_Address", 7, 0},
    {20093, 20093, "S>Current_language_ID", 3, 1},
    {20095, 20095, "S>Backlight", 3, 1},
    {20096, 20096, "S>CF_card_accessing_bit", 3, 0},
    {20097, 20097, "S>USB_accessing_bit", 3, 0},
    {20098, 20098, "S>Flash_free_size", 3, 0},
    {20099, 20099, "S>Buzzer_enable_bit", 3, 1},
    {20100, 20100, "S>R_Current_language_ID", 3, 0},
    {20101, 20101, "S>R_Idle_Time", 3, 0},
    {20102, 20102, "S>R_MAC_Address", 7, 0},
    {20201, 20022, "S>R_Year", 3, 0},
    {20202, 20023, "S>R_Month", 3, 0},
    {20203, 20024, "S>R_Day", 3, 0},
    {20204, 20025, "S>R_Hour", 3, 0},
    {20205, 20026, "S>R_Minute", 3, 0},
    {20206, 20027, "S>R_Second", 3, 0},
    {20207, 20207, "S>Week", 3, 0},
    {20900, 20900, "S>Change_screen_time", 3, 0},
    {20901, 20901, "S>Cpu_usage", 3, 0},
    {20902, 20902, "S>Ram_left", 3, 0},
    {20930, 20930, "S>Barcode_index", 3, 1},
    {20999, 20999, "S>NULL", 3, 0},
};

const int tableSize = 43;
static_assert(std::extent<decltype(table)>::value == tableSize, "a row is missing or doubled");

CommunicatorCommand::DataType dataType(int number)
{
    return static_cast<CommunicatorCommand::DataType>(number);
}

} // namespace

class SystemTagsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();

    void aDefaultItem();
    void aFullItem();
    void copiesHaveNoParent();
    void assignmentKeepsTheParent();
    void itemsLiveByValueInAMap();
    void itemsAreObjectsWithoutExtras();
    void tagTypesHaveTheirNumbers();

    void everyTagOfTheTable_data();
    void everyTagOfTheTable();
    void theTableHoldsNothingElse();
    void idsWithoutATag_data();
    void idsWithoutATag();
    void askingChangesNothing();

    void theCounts();
    void theCountsOfABoundObject();
    void objectsShareNothing();
    void systemTagsStandInNoDatabase();
};

void SystemTagsTest::cleanup()
{
    dropProjects();
}

void SystemTagsTest::aDefaultItem()
{
    QObject parent;
    const Information item(&parent);
    QCOMPARE(item.id, -1);
    QCOMPARE(item.name, QStringLiteral("s>invalid"));
    QCOMPARE(item.parent(), &parent);
    QVERIFY2(int(item.dataType) != 7, "no text: a lookup of a tag that does not exist has to give a number");
    QCOMPARE(Information(nullptr).parent(), static_cast<QObject *>(nullptr));
}

void SystemTagsTest::aFullItem()
{
    QObject parent;
    const Information item(20022, QStringLiteral("S>Year"), Information::ControlTag, CommunicatorCommand::DoubleWord,
                           &parent);
    QCOMPARE(item.id, 20022);
    QCOMPARE(item.name, QStringLiteral("S>Year"));
    QCOMPARE(int(item.tagType), 1);
    QCOMPARE(int(item.dataType), 3);
    QCOMPARE(item.parent(), &parent);
}

void SystemTagsTest::copiesHaveNoParent()
{
    QObject parent;
    const Information source(20201, QStringLiteral("S>R_Year"), Information::InformationTag, dataType(8), &parent);
    const Information copy(source);
    QCOMPARE(copy.id, 20201);
    QCOMPARE(copy.name, QStringLiteral("S>R_Year"));
    QCOMPARE(int(copy.tagType), 0);
    QCOMPARE(int(copy.dataType), 8);
    QVERIFY(!copy.parent());
    QCOMPARE(source.parent(), &parent);
}

void SystemTagsTest::assignmentKeepsTheParent()
{
    QObject parent;
    QObject otherParent;
    Information source(7, QStringLiteral("source"), Information::ControlTag, dataType(7), &otherParent);
    Information assigned(&parent);
    QCOMPARE(&(assigned = source), &assigned);
    Information copied(&parent);
    copied.copy(source);
    for (const Information *item : {&assigned, &copied}) {
        QCOMPARE(item->id, 7);
        QCOMPARE(item->name, QStringLiteral("source"));
        QCOMPARE(int(item->tagType), 1);
        QCOMPARE(int(item->dataType), 7);
        QCOMPARE(item->parent(), &parent);
    }
    const Information &itself = source;
    source = itself;
    QCOMPARE(source.id, 7);
    QCOMPARE(source.name, QStringLiteral("source"));
}

void SystemTagsTest::itemsLiveByValueInAMap()
{
    QMap<int, Information> items;
    items.insert(1, Information(2, QStringLiteral("one"), Information::ControlTag, dataType(3), nullptr));
    QMap<int, Information> detached = items;
    detached[1].name = QStringLiteral("other");
    QCOMPARE(items.value(1).name, QStringLiteral("one"));
    QCOMPARE(detached.value(1).name, QStringLiteral("other"));
    QCOMPARE(items[5].id, -1);
    QCOMPARE(items[5].name, QStringLiteral("s>invalid"));
}

void SystemTagsTest::itemsAreObjectsWithoutExtras()
{
    const QMetaObject &meta = Information::staticMetaObject;
    QCOMPARE(meta.className(), "SystemTagItemInformation");
    QCOMPARE(meta.superClass(), &QObject::staticMetaObject);
    QCOMPARE(meta.methodCount(), QObject::staticMetaObject.methodCount());
    QCOMPARE(meta.propertyCount(), QObject::staticMetaObject.propertyCount());
    QCOMPARE(meta.enumeratorCount(), 0);
}

void SystemTagsTest::tagTypesHaveTheirNumbers()
{
    QCOMPARE(int(Information::InformationTag), 0);
    QCOMPARE(int(Information::ControlTag), 1);
    QCOMPARE(int(Information::InvalidTag), 2);
}

void SystemTagsTest::everyTagOfTheTable_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("id");
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("expectedDataType");
    QTest::addColumn<int>("expectedTagType");
    for (const SystemTag &tag : table)
        QTest::newRow(tag.name) << tag.key << tag.id << tag.name << tag.dataType << tag.tagType;
}

void SystemTagsTest::everyTagOfTheTable()
{
    QFETCH(int, key);
    QFETCH(int, id);
    QFETCH(QString, name);
    QFETCH(int, expectedDataType);
    QFETCH(int, expectedTagType);
    TagSystem tags(nullptr);
    QCOMPARE(int(tags.getSystemTagType(key)), expectedTagType);
    QCOMPARE(int(tags.getSystemTagDataType(key)), expectedDataType);
    QCOMPARE(tags.isControlSystemTag(key), expectedTagType == 1);
    QCOMPARE(tags.getTagNameById(key), name);
    QCOMPARE(tags.getIdByTagName(name), key);
    QVERIFY(tags.isSystemID(key));
    QVERIFY(systemTagsOf(tags).contains(key));
    const Information item = systemTagsOf(tags).value(key);
    QCOMPARE(item.id, id);
    QCOMPARE(item.name, name);
    QCOMPARE(int(item.dataType), expectedDataType);
    QCOMPARE(int(item.tagType), expectedTagType);
}

void SystemTagsTest::theTableHoldsNothingElse()
{
    TagSystem tags(nullptr);
    QList<int> keys;
    for (const SystemTag &tag : table)
        keys.append(tag.key);
    QCOMPARE(systemTagsOf(tags).keys(), keys);
    QCOMPARE(keys.size(), tableSize);
}

void SystemTagsTest::idsWithoutATag_data()
{
    QTest::addColumn<int>("id");
    QTest::newRow("a gap in the numbering") << 20094;
    QTest::newRow("the first system id") << 20000;
    QTest::newRow("the last system id") << 21000;
    QTest::newRow("the id behind the last tag") << 21001;
    QTest::newRow("a custom tag") << 1;
    QTest::newRow("a recipe tag") << 30000;
    QTest::newRow("zero") << 0;
    QTest::newRow("no tag") << -1;
    QTest::newRow("the lowest number") << std::numeric_limits<int>::min();
    QTest::newRow("the highest number") << std::numeric_limits<int>::max();
}

void SystemTagsTest::idsWithoutATag()
{
    QFETCH(int, id);
    TagSystem tags(nullptr);
    QCOMPARE(int(tags.getSystemTagType(id)), 2);
    QCOMPARE(int(tags.getSystemTagDataType(id)), 9);
    QVERIFY(!tags.isControlSystemTag(id));
}

void SystemTagsTest::askingChangesNothing()
{
    TagSystem tags(nullptr);
    for (int id = 19990; id <= 21010; ++id) {
        tags.getSystemTagType(id);
        tags.getSystemTagDataType(id);
        tags.isControlSystemTag(id);
    }
    QCOMPARE(systemTagsOf(tags).size(), tableSize);
}

void SystemTagsTest::theCounts()
{
    QObject parent;
    TagSystem *const tags = new TagSystem(&parent);
    QCOMPARE(tags->parent(), &parent);
    QCOMPARE(tags->numControlSystemTag(), 13);
    QCOMPARE(tags->numInforSystemTag(), 28);
    QVERIFY(tags->isControlSystemTag(20022));
    QVERIFY(!tags->isControlSystemTag(20201));
}

void SystemTagsTest::theCountsOfABoundObject()
{
    const QTemporaryDir folder;
    makeProject(folder.filePath(QStringLiteral("project.db")), QStringLiteral("11"));
    TagSystem *const bound = TagSystem::instance(QStringLiteral("11"));
    QCOMPARE(bound->numControlSystemTag(), 13);
    QCOMPARE(bound->numInforSystemTag(), 28);
    TagSystem *const unbound = TagSystem::instance(QString());
    QCOMPARE(unbound->numControlSystemTag(), 13);
    QCOMPARE(unbound->numInforSystemTag(), 28);
    QVERIFY(bound->addTag(QStringLiteral("one more"), QStringLiteral("D1"), 1, 3, 1));
    QCOMPARE(bound->numControlSystemTag(), 13);
    QCOMPARE(bound->numInforSystemTag(), 28);
}

void SystemTagsTest::objectsShareNothing()
{
    TagSystem first(nullptr);
    TagSystem second(nullptr);
    systemTagsOf(first).remove(20022);
    systemTagsOf(first)[20023].name = QStringLiteral("other");
    QCOMPARE(int(first.getSystemTagType(20022)), 2);
    QCOMPARE(int(second.getSystemTagType(20022)), 1);
    QCOMPARE(second.getTagNameById(20023), QStringLiteral("S>Month"));
}

void SystemTagsTest::systemTagsStandInNoDatabase()
{
    const QTemporaryDir folder;
    makeProject(folder.filePath(QStringLiteral("project.db")), QStringLiteral("12"));
    TagSystem *const tags = TagSystem::instance(QStringLiteral("12"));
    QCOMPARE(tags->getTagNameById(20022), QStringLiteral("S>Year"));
    QCOMPARE(tags->getTagNames(), QStringList());
    QCOMPARE(rowsOn(QStringLiteral("12"), QStringLiteral("SELECT count(*) FROM custom_tag_table")),
             QStringList{QStringLiteral("0")});
    QCOMPARE(rowsOn(QStringLiteral("12"), QStringLiteral("SELECT name FROM sqlite_master ORDER BY name")),
             (QStringList{QStringLiteral("LINK"), QStringLiteral("NODE"), QStringLiteral("custom_tag_table")}));
}

QTEST_GUILESS_MAIN(SystemTagsTest)

#include "tst_systemtags.moc"
