// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/projecttest.h"

#include "zelmar_label/tag_store/tagsystem.h"

#include <QtTest>

#include <limits>

class TagNamesTest : public ProjectTest
{
    Q_OBJECT

private Q_SLOTS:
    void kindsOfNames_data();
    void kindsOfNames();
    void newNamesComeFromTheList();

    void namesOfIds_data();
    void namesOfIds();
    void theNameOfADoubledIdIsEmpty();

    void idsOfNames_data();
    void idsOfNames();
    void namesWithoutADatabase();

    void recipesWithIdsOfNoTag();
    void aNullNameIsTheEmptyOne();

    void connectedTags_data();
    void connectedTags();
    void recipesAreReplaced();
    void recipesAreNoRows();

    void theListIsACopy();
    void namesOfALink_data();
    void namesOfALink();

    void similarNames_data();
    void similarNames();
    void similarNamesAreOfTheList();
    void similarInternalNamesAreOfTheTable();
    void idsOfSimilarNames_data();
    void idsOfSimilarNames();

    void similarTexts_data();
    void similarTexts();

private:
    TagSystem *filled();
};

/// Ten rows, some of them where a name of another kind or a second row hides them, and four recipe maps.
TagSystem *TagNamesTest::filled()
{
    writeTags(key, {tag(1, "Temperature_1"), tag(2, "tank", 3), tag(3, "Tank"), tag(4, "twin", 3), tag(5, "twin"),
                    tag(6, "S>Mine"), tag(7, "R>1_7"), tag(8, "a'b"), tag(20094, "at a system id"),
                    tag(30001, "at a recipe id")});
    TagSystem *tags = TagSystem::instance(key);
    tags->setRecipeTags(
        {{30000, "R>1_1I1"}, {30005, "R>same"}, {30003, "R>same"}, {50000, "R>1_9I1"}, {50002, "R>high"}},
        {{30000, 1}, {30003, -7}, {50000, 2}});
    tags->setRecipeRowTags(
        {{50001, "R>1_1"}, {50003, "R>same"}, {60000, "r>small"}, {40000, "R>low"}, {30000, "R>hidden"}},
        {{50001, 3}, {60000, 20022}, {40000, 5}});
    return tags;
}

void TagNamesTest::kindsOfNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isSystem");
    QTest::addColumn<bool>("isRecipe");
    QTest::addColumn<bool>("isNew");
    QTest::newRow("an empty name") << "" << false << false << false;
    QTest::newRow("a null name") << QString() << false << false << false;
    QTest::newRow("a system tag") << "S>Year" << true << false << false;
    QTest::newRow("a system name without a tag") << "S>Nothing" << true << false << false;
    QTest::newRow("a system name in small letters") << "s>Year" << true << false << false;
    QTest::newRow("the name of a default-built item") << "s>invalid" << true << false << false;
    QTest::newRow("a system prefix alone") << "S>" << true << false << false;
    QTest::newRow("a recipe tag") << "R>1_1I1" << false << true << false;
    QTest::newRow("a recipe name in small letters") << "r>1" << false << true << false;
    QTest::newRow("a recipe prefix alone") << "R>" << false << true << false;
    QTest::newRow("a prefix without its mark") << "S" << false << false << true;
    QTest::newRow("a prefix further on") << " S>Year" << false << false << true;
    QTest::newRow("another letter with the mark") << "T>Year" << false << false << true;
    QTest::newRow("a wide prefix") << QString::fromUtf8("Ｓ>Year") << false << false << true;
    QTest::newRow("a name of the table") << "tank" << false << false << false;
    QTest::newRow("a name of the table in another case") << "TANK" << false << false << true;
    QTest::newRow("a name of the table with a blank") << "tank " << false << false << true;
    QTest::newRow("a doubled name") << "twin" << false << false << false;
    QTest::newRow("an unknown name") << "pump" << false << false << true;
    QTest::newRow("a name with an apostrophe, in the table") << "a'b" << false << false << false;
}

void TagNamesTest::kindsOfNames()
{
    QFETCH(QString, name);
    const TagSystem *tags = filled();
    QTEST(tags->isSystemTag(name), "isSystem");
    QTEST(tags->isRecipeTag(name), "isRecipe");
    QTEST(tags->isNewTag(name), "isNew");
}

void TagNamesTest::newNamesComeFromTheList()
{
    TagSystem *tags = filled();
    writeTags(key, {tag(0, "written by others")});
    QVERIFY(tags->isNewTag("written by others"));
    executeOn(key, "DROP TABLE custom_tag_table");
    QVERIFY(!tags->isNewTag("tank"));
    QVERIFY(tags->isNewTag("pump"));
    executeOn(key, tagTableStatement());
    tags->refreshTagNames();
    QVERIFY(tags->isNewTag("tank"));
}

void TagNamesTest::namesOfIds_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QString>("name");
    QTest::newRow("a row") << 1 << "Temperature_1";
    QTest::newRow("one of two rows of one name") << 4 << "twin";
    QTest::newRow("a row that is named like a system tag") << 6 << "S>Mine";
    QTest::newRow("a row that is named like a recipe tag") << 7 << "R>1_7";
    QTest::newRow("a name with an apostrophe") << 8 << "a'b";
    QTest::newRow("no row") << 99 << "";
    QTest::newRow("zero") << 0 << "";
    QTest::newRow("a negative id") << -1 << "";
    QTest::newRow("the lowest number") << std::numeric_limits<int>::min() << "";
    QTest::newRow("the highest number") << std::numeric_limits<int>::max() << "";
    QTest::newRow("a system tag") << 20022 << "S>Year";
    QTest::newRow("a system tag with the id of another") << 20201 << "S>R_Year";
    QTest::newRow("the last system tag") << 20999 << "S>NULL";
    QTest::newRow("a system id without a tag hides a row") << 20094 << "";
    QTest::newRow("the first system id") << 20000 << "";
    QTest::newRow("the last system id") << 21000 << "";
    QTest::newRow("a recipe tag") << 30003 << "R>same";
    QTest::newRow("a recipe tag hides a recipe row tag") << 30000 << "R>1_1I1";
    QTest::newRow("a recipe id without a tag hides a row") << 30001 << "";
    QTest::newRow("the last recipe item tag") << 50000 << "R>1_9I1";
    QTest::newRow("the first recipe row tag") << 50001 << "R>1_1";
    QTest::newRow("a recipe tag among the row tags") << 50002 << "R>high";
    QTest::newRow("the last recipe row tag") << 60000 << "r>small";
    QTest::newRow("a recipe row tag among the item tags") << 40000 << "R>low";
    QTest::newRow("behind the recipe ids") << 60001 << "";
}

void TagNamesTest::namesOfIds()
{
    QFETCH(int, id);
    QTEST(filled()->getTagNameById(id), "name");
}

void TagNamesTest::theNameOfADoubledIdIsEmpty()
{
    executeOn(key, "CREATE TABLE custom_tag_table (id INTEGER, name TEXT)");
    executeOn(key, "INSERT INTO custom_tag_table VALUES (1, 'one'), (2, 'first'), (2, 'second'), (3, 'x'), (3, 'x')");
    const TagSystem *tags = TagSystem::instance(key);
    QCOMPARE(tags->getTagNameById(1), QStringLiteral("one"));
    QCOMPARE(tags->getTagNameById(2), QString());
    QCOMPARE(tags->getTagNameById(3), QString());
    QCOMPARE(tags->getIdByTagName("second"), 2);
    QCOMPARE(tags->getIdByTagName("x"), -1);
}

void TagNamesTest::idsOfNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("id");
    QTest::newRow("a row") << "tank" << 2;
    QTest::newRow("a row of another case") << "Tank" << 3;
    QTest::newRow("a case that no row has") << "TANK" << -1;
    QTest::newRow("a doubled name") << "twin" << -1;
    QTest::newRow("an unknown name") << "pump" << -1;
    QTest::newRow("an empty name") << "" << -1;
    QTest::newRow("a null name") << QString() << -1;
    QTest::newRow("a pattern of names") << "tan%" << -1;
    QTest::newRow("a place mark") << "%1" << -1;
    QTest::newRow("a name with an apostrophe is in no row") << "a'b" << -1;
    QTest::newRow("doubled apostrophes are not one") << "a''b" << -1;
    QTest::newRow("a condition in the name") << "x' or name = 'tank" << -1;
    QTest::newRow("a row at a system id") << "at a system id" << 20094;
    QTest::newRow("a row at a recipe id") << "at a recipe id" << 30001;
    QTest::newRow("a system tag") << "S>Year" << 20022;
    QTest::newRow("a system tag with the id of another") << "S>R_Year" << 20201;
    QTest::newRow("the last system tag") << "S>NULL" << 20999;
    QTest::newRow("a system tag that is in no count") << "S>Change_screen_time" << 20900;
    QTest::newRow("a system name in small letters") << "s>Year" << -1;
    QTest::newRow("a system name of another case") << "S>year" << -1;
    QTest::newRow("a system name hides a row") << "S>Mine" << -1;
    QTest::newRow("a recipe tag") << "R>1_1I1" << 30000;
    QTest::newRow("the lowest of the recipe tags of one name") << "R>same" << 30003;
    QTest::newRow("a recipe row tag") << "R>1_1" << 50001;
    QTest::newRow("a recipe row tag in small letters") << "r>small" << 60000;
    QTest::newRow("a recipe tag of another case") << "R>small" << -1;
    QTest::newRow("a recipe row tag whose id is a recipe tag's") << "R>hidden" << 30000;
    QTest::newRow("a recipe name hides a row") << "R>1_7" << -1;
}

void TagNamesTest::idsOfNames()
{
    QFETCH(QString, name);
    QTEST(filled()->getIdByTagName(name), "id");
}

void TagNamesTest::namesWithoutADatabase()
{
    TagSystem *tags = TagSystem::instance(QString());
    QCOMPARE(tags->getIdByTagName("S>Year"), 20022);
    QCOMPARE(tags->getIdByTagName("S>R_Year"), 20201);
    QCOMPARE(tags->getIdByTagName("s>Year"), -1);
    QCOMPARE(tags->getIdByTagName("S>Nothing"), -1);
    QCOMPARE(tags->getIdByTagName("tank"), -1);
    QCOMPARE(tags->getTagNameById(20201), QStringLiteral("S>R_Year"));
    QCOMPARE(tags->getTagNameById(20094), QString());
    QCOMPARE(tags->getTagNameById(1), QString());
    tags->setRecipeTags({{30000, "R>1"}}, {});
    QCOMPARE(tags->getIdByTagName("R>1"), 30000);
    QCOMPARE(tags->getTagNameById(30000), QStringLiteral("R>1"));
    QCOMPARE(tags->getTagNames(), QStringList());
    QCOMPARE(tags->getTagNameList(0), QStringList());
    QCOMPARE(tags->getInternalTagNames(), QStringList());
    QCOMPARE(tags->getSimilarTagNames("a"), QStringList());
    QCOMPARE(tags->getInternalSimilarTagNames("a"), QStringList());
    QCOMPARE(tags->findSimilarTagName("a"), QList<int>());
    QVERIFY(tags->isNewTag("tank"));
    QVERIFY(!tags->isNewTag("S>Year"));
}

void TagNamesTest::recipesWithIdsOfNoTag()
{
    TagSystem *tags = filled();
    tags->setRecipeTags({{-5, "R>minus"}, {-1, "R>none"}, {30000, "R>minus"}}, {});
    tags->setRecipeRowTags({{-9, "R>row"}, {50001, "R>minus"}}, {});
    QCOMPARE(tags->getIdByTagName("R>minus"), -5);
    QCOMPARE(tags->getIdByTagName("R>none"), -1);
    QCOMPARE(tags->getIdByTagName("R>row"), -9);
}

void TagNamesTest::aNullNameIsTheEmptyOne()
{
    writeTags(key, {tag(9, "")});
    TagSystem *tags = TagSystem::instance(key);
    QCOMPARE(tags->getIdByTagName(""), 9);
    QCOMPARE(tags->getIdByTagName(QString()), 9);
}

void TagNamesTest::connectedTags_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<int>("connected");
    QTest::newRow("a custom id") << 100 << -1;
    QTest::newRow("a system id") << 20022 << -1;
    QTest::newRow("a negative id") << -1 << -1;
    QTest::newRow("before the recipe ids") << 29999 << -1;
    QTest::newRow("a recipe tag") << 30000 << 1;
    QTest::newRow("a recipe tag that is connected to no tag") << 30003 << -7;
    QTest::newRow("a recipe tag that is not connected") << 30005 << 0;
    QTest::newRow("the last recipe item tag") << 50000 << 2;
    QTest::newRow("the first recipe row tag") << 50001 << 3;
    QTest::newRow("a recipe row tag that is not connected") << 50003 << 0;
    QTest::newRow("the last recipe row tag") << 60000 << 20022;
    QTest::newRow("a recipe row tag below 50001 is looked for in the other map") << 40000 << 0;
    QTest::newRow("behind the recipe ids") << 60001 << -1;
}

void TagNamesTest::connectedTags()
{
    QFETCH(int, id);
    QTEST(filled()->getRecipeConnectedID(id), "connected");
    TagSystem *empty = TagSystem::instance(QString());
    QCOMPARE(empty->getRecipeConnectedID(id), id < 30000 || id > 60000 ? -1 : 0);
}

void TagNamesTest::recipesAreReplaced()
{
    TagSystem *tags = filled();
    tags->setRecipeTags({{30007, "R>new"}}, {{30007, 4}});
    QCOMPARE(tags->getIdByTagName("R>new"), 30007);
    QCOMPARE(tags->getIdByTagName("R>1_1I1"), -1);
    QCOMPARE(tags->getTagNameById(30000), QStringLiteral("R>hidden"));
    QCOMPARE(tags->getIdByTagName("R>same"), 50003);
    QCOMPARE(tags->getRecipeConnectedID(30000), 0);
    QCOMPARE(tags->getRecipeConnectedID(30007), 4);
    QCOMPARE(tags->getRecipeConnectedID(50001), 3);
    tags->setRecipeRowTags({}, {{50009, 6}});
    QCOMPARE(tags->getIdByTagName("R>1_1"), -1);
    QCOMPARE(tags->getTagNameById(30000), QString());
    QCOMPARE(tags->getTagNameById(30007), QStringLiteral("R>new"));
    QCOMPARE(tags->getRecipeConnectedID(50001), 0);
    QCOMPARE(tags->getRecipeConnectedID(50009), 6);
    QCOMPARE(tags->getRecipeConnectedID(30007), 4);
}

void TagNamesTest::recipesAreNoRows()
{
    TagSystem *tags = filled();
    const QString all = "SELECT * FROM custom_tag_table";
    const QStringList rows = rowsOn(key, all);
    const QStringList names = tags->getTagNames();
    tags->setRecipeTags({{30007, "R>new"}}, {});
    tags->setRecipeRowTags({{50007, "R>newer"}}, {});
    QCOMPARE(rowsOn(key, all), rows);
    QCOMPARE(tags->getTagNames(), names);
    tags->refreshTagNames();
    QCOMPARE(tags->getTagNames(), names);
}

void TagNamesTest::theListIsACopy()
{
    TagSystem *tags = filled();
    const QStringList names = {"Temperature_1", "tank",  "Tank", "twin",           "twin",
                               "S>Mine",        "R>1_7", "a'b",  "at a system id", "at a recipe id"};
    QStringList copy = tags->getTagNames();
    QCOMPARE(copy, names);
    copy.clear();
    QCOMPARE(tags->getTagNames(), names);
}

void TagNamesTest::namesOfALink_data()
{
    QTest::addColumn<int>("link");
    QTest::addColumn<QStringList>("names");
    QTest::newRow("a link") << 3 << QStringList({"tank", "twin"});
    QTest::newRow("the internal tags") << 0
                                       << QStringList({"Temperature_1", "Tank", "twin", "S>Mine", "R>1_7", "a'b",
                                                       "at a system id", "at a recipe id"});
    QTest::newRow("a link without tags") << 4 << QStringList();
    QTest::newRow("a negative link") << -1 << QStringList();
}

void TagNamesTest::namesOfALink()
{
    QFETCH(int, link);
    QFETCH(QStringList, names);
    TagSystem *tags = filled();
    QCOMPARE(tags->getTagNameList(link), names);
    if (link == 0)
        QCOMPARE(tags->getInternalTagNames(), names);
    // This list is the table's, after any writer.
    writeTags(key, {tag(0, "later", link)});
    QCOMPARE(tags->getTagNameList(link), names + QStringList("later"));
    executeOn(key, "DROP TABLE custom_tag_table");
    QCOMPARE(tags->getTagNameList(link), QStringList());
}

void TagNamesTest::similarNames_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<QStringList>("internalNames");
    QTest::newRow("an empty text") << "" << QStringList() << QStringList();
    QTest::newRow("a null text") << QString() << QStringList() << QStringList();
    QTest::newRow("letters within a name") << "tmp" << QStringList("Temperature_1") << QStringList("Temperature_1");
    QTest::newRow("names that differ by case") << "TAN" << QStringList({"tank", "Tank"}) << QStringList("Tank");
    QTest::newRow("a doubled name stands twice") << "wi" << QStringList({"twin", "twin"}) << QStringList("twin");
    QTest::newRow("rows that are named like other tags") << "s>" << QStringList("S>Mine") << QStringList("S>Mine");
    QTest::newRow("system and recipe tags are not searched") << "year" << QStringList() << QStringList();
    QTest::newRow("an apostrophe") << "'" << QStringList("a'b") << QStringList("a'b");
    QTest::newRow("no such letters") << "xyz" << QStringList() << QStringList();
    QTest::newRow("a point is no expression") << "." << QStringList() << QStringList();
}

void TagNamesTest::similarNames()
{
    QFETCH(QString, text);
    TagSystem *tags = filled();
    QTEST(tags->getSimilarTagNames(text), "names");
    QTEST(tags->getInternalSimilarTagNames(text), "internalNames");
}

void TagNamesTest::similarNamesAreOfTheList()
{
    TagSystem *tags = filled();
    executeOn(key, "DROP TABLE custom_tag_table");
    QCOMPARE(tags->getSimilarTagNames("tan"), QStringList({"tank", "Tank"}));
    QCOMPARE(tags->findSimilarTagName("tan"), QList<int>());
}

void TagNamesTest::similarInternalNamesAreOfTheTable()
{
    TagSystem *tags = filled();
    writeTags(key, {tag(0, "tango")});
    QCOMPARE(tags->getSimilarTagNames("tan"), QStringList({"tank", "Tank"}));
    QCOMPARE(tags->getInternalSimilarTagNames("tan"), QStringList({"Tank", "tango"}));
    executeOn(key, "DROP TABLE custom_tag_table");
    QCOMPARE(tags->getInternalSimilarTagNames("tan"), QStringList());
    QCOMPARE(tags->getInternalSimilarTagNames(""), QStringList());
}

void TagNamesTest::idsOfSimilarNames_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QList<int>>("ids");
    QTest::newRow("an empty text") << "" << QList<int>();
    QTest::newRow("one name") << "tmp" << QList<int>({1});
    QTest::newRow("two names") << "tan" << QList<int>({2, 3});
    QTest::newRow("a doubled name has no id") << "twin" << QList<int>();
    QTest::newRow("a doubled name among others") << "t" << QList<int>({1, 2, 3, 20094, 30001});
    QTest::newRow("a name that breaks its statement has no id") << "a'b" << QList<int>();
    QTest::newRow("a row that is named like a system tag") << "mine" << QList<int>();
    QTest::newRow("no such letters") << "xyz" << QList<int>();
}

void TagNamesTest::idsOfSimilarNames()
{
    QFETCH(QString, text);
    QFETCH(QList<int>, ids);
    QCOMPARE(sorted(filled()->findSimilarTagName(text)), ids);
}

void TagNamesTest::similarTexts_data()
{
    QTest::addColumn<QString>("a");
    QTest::addColumn<QString>("b");
    QTest::addColumn<double>("percent");
    QTest::addColumn<int>("n");
    QTest::addColumn<bool>("isCaseSensitive");
    QTest::addColumn<bool>("isSimilar");
    QTest::newRow("the same text") << "abc"
                                   << "abc" << 50.0 << 2 << true << true;
    QTest::newRow("the same text is just below 100 percent") << "abc"
                                                             << "abc" << 99.99 << 2 << true << true;
    QTest::newRow("the limit itself is not enough") << "abc"
                                                    << "abc" << 100.0 << 2 << true << false;
    QTest::newRow("an empty second text") << "abc"
                                          << "" << 0.0 << 2 << true << false;
    QTest::newRow("an empty first text") << ""
                                         << "abc" << 0.0 << 2 << true << false;
    QTest::newRow("two empty texts below a negative limit") << ""
                                                            << "" << -1.0 << 2 << true << false;
    QTest::newRow("nothing in common") << "abc"
                                       << "xyz" << 0.0 << 2 << true << false;
    QTest::newRow("nothing in common, a negative limit") << "abc"
                                                         << "xyz" << -0.5 << 2 << true << true;
    QTest::newRow("another case") << "ABC"
                                  << "abc" << 0.0 << 2 << true << false;
    QTest::newRow("another case that does not matter") << "ABC"
                                                       << "abc" << 99.0 << 2 << false << true;
    QTest::newRow("one gram of three in a longer text, below") << "ab"
                                                               << "xaby" << 33.3 << 2 << true << true;
    QTest::newRow("one gram of three in a longer text, above") << "ab"
                                                               << "xaby" << 33.4 << 2 << true << false;
    QTest::newRow("one gram of the shorter second text, below") << "xaby"
                                                                << "ab" << 33.3 << 2 << true << true;
    QTest::newRow("one gram of the shorter second text, above") << "xaby"
                                                                << "ab" << 33.4 << 2 << true << false;
    QTest::newRow("the first gram is padded") << "ab"
                                              << "ax" << 33.3 << 2 << true << true;
    QTest::newRow("single characters are not padded") << "a"
                                                      << "xax" << 99.0 << 1 << true << true;
    QTest::newRow("half of the single characters") << "ab"
                                                   << "ac" << 49.9 << 1 << true << true;
    QTest::newRow("half of the single characters is the limit") << "ab"
                                                                << "ac" << 50.0 << 1 << true << false;
    QTest::newRow("a longer first text passes 100") << "aaaa"
                                                    << "a" << 399.0 << 1 << true << true;
    QTest::newRow("a longer first text ends at 400") << "aaaa"
                                                     << "a" << 400.0 << 1 << true << false;
    QTest::newRow("a longer second text does not pass 100") << "a"
                                                            << "aaaa" << 100.0 << 1 << true << false;
    QTest::newRow("grams longer than the texts") << "ab"
                                                 << "ab" << 99.0 << 5 << true << true;
    QTest::newRow("blanks alone are grams of three") << "a"
                                                     << "b" << 0.0 << 3 << true << false;
    QTest::newRow("a blank at the end meets the padding") << "a "
                                                          << "b" << 0.0 << 2 << true << false;
    QTest::newRow("two blanks at the end meet the padding") << "a"
                                                            << "b  " << 0.0 << 2 << true << false;
    QTest::newRow("a gram that repeats counts each time") << "abab"
                                                          << "ab" << 133.0 << 2 << true << true;
    QTest::newRow("a gram that repeats, at its limit") << "abab"
                                                       << "ab" << 133.4 << 2 << true << false;
}

void TagNamesTest::similarTexts()
{
    QFETCH(QString, a);
    QFETCH(QString, b);
    QFETCH(double, percent);
    QFETCH(int, n);
    QFETCH(bool, isCaseSensitive);
    const QString sameA = a;
    const QString sameB = b;
    QTEST(TagSystem::instance(QString())->isStringSimilar(a, b, percent, n,
                                                          isCaseSensitive ? Qt::CaseSensitive : Qt::CaseInsensitive),
          "isSimilar");
    QCOMPARE(a, sameA);
    QCOMPARE(b, sameB);
}

QTEST_GUILESS_MAIN(TagNamesTest)

#include "tst_tagnames.moc"
