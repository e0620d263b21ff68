// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/logrecorder.h"
#include "support/projectfixtures.h"
#include "support/threads.h"

#include "zelmar_label/tag_store/tagsystem.h"

#include <QCoreApplication>
#include <QMap>
#include <QSqlDatabase>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>
#include <thread>
#include <vector>

namespace {

const QString noConnection = QStringLiteral("warning: Database Error: TagSystem::init() tag database not exist ");

void setTolvEnvironment(const QVariant &value)
{
    QCoreApplication::instance()->setProperty("tolv_env", value);
}

TagRow pump(int link)
{
    TagRow row;
    row.id = 1;
    row.name = QStringLiteral("Pump");
    row.address = QStringLiteral("D1");
    row.connectorId = link;
    return row;
}

void setLink(const QString &key, int link)
{
    executeOn(key, QStringLiteral("UPDATE custom_tag_table SET connector_id = ?"), {link});
}

} // namespace

/// The process has one default object, which cannot be reset: each test continues from the previous one.
class TagLifecycleTolvTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anObjectOfAnEditorIsNoDefault();
    void anObjectWithoutADatabaseIsNoDefault();
    void withoutAProjectTheKeyIsZero();
    void theDefaultIsReturnedWhateverTheProperties();
    void aSecondKeyReplacesTheDefault();
    void anyValueOfThePropertyWillDo_data();
    void anyValueOfThePropertyWillDo();
    void theTagTableIsReadOnce();
    void anObjectThatCannotBeOpenedIsADefaultToo();
    void theCompileConnectionIsNotUsed();
    void everyThreadGetsTheDefault();
    void dropKeepsTheDefault();

private:
    TagSystem *makeObject(const QString &key, const QList<TagRow> &tags = {});

    QTemporaryDir m_folder;
};

TagSystem *TagLifecycleTolvTest::makeObject(const QString &key, const QList<TagRow> &tags)
{
    makeProject(m_folder.filePath(QStringLiteral("project ") + key), key);
    writeTags(key, tags);
    return TagSystem::instance(key);
}

void TagLifecycleTolvTest::anObjectOfAnEditorIsNoDefault()
{
    QCoreApplication::instance()->setProperty("currentProject", quint64(1));
    TagSystem *const first = makeObject(QStringLiteral("1"), {pump(1)});
    TagSystem *const second = makeObject(QStringLiteral("2"));
    QCOMPARE(TagSystem::instance(), first);
    setLink(QStringLiteral("1"), 2);
    QCOMPARE(first->getCommunicatorID(1), 2);

    setTolvEnvironment(true);
    QCOMPARE(TagSystem::instance(QStringLiteral("2")), second);
    QCOMPARE(TagSystem::instance(), first);
    setLink(QStringLiteral("1"), 3);
    QVERIFY2(first->getCommunicatorID(1) == 3, "only a new object reads the table into memory");
    QCoreApplication::instance()->setProperty("currentProject", quint64(2));
    QCOMPARE(TagSystem::instance(), second);
    QCoreApplication::instance()->setProperty("currentProject", QVariant());
}

void TagLifecycleTolvTest::anObjectWithoutADatabaseIsNoDefault()
{
    TagSystem *const none = TagSystem::instance(QString());
    QVERIFY(none);
    QCoreApplication::instance()->setProperty("currentProject", quint64(1));
    QCOMPARE(TagSystem::instance(), TagSystem::instance(QStringLiteral("1")));
    QVERIFY(TagSystem::instance() != none);
    QCoreApplication::instance()->setProperty("currentProject", QVariant());
}

void TagLifecycleTolvTest::withoutAProjectTheKeyIsZero()
{
    QVERIFY(!TagSystem::s_instanceMap->contains(QStringLiteral("0")));
    const LogRecorder log;
    TagSystem *const zero = TagSystem::instance();
    QVERIFY(zero);
    QCOMPARE(TagSystem::s_instanceMap->value(QStringLiteral("0")), zero);
    const QStringList lines = log.lines();
    QVERIFY2(!lines.isEmpty() && lines.first() == noConnection, qPrintable(lines.join(QLatin1Char('\n'))));
    QCOMPARE(lines.filter(noConnection).size(), 1);
    QVERIFY(!zero->database().isValid());

    // It is deleted, but it has become the default.
    makeProject(m_folder.filePath(QStringLiteral("project 0")), QStringLiteral("0"));
    QCoreApplication::instance()->setProperty("currentProject", quint64(1));
    QCOMPARE(TagSystem::instance(), zero);
    QVERIFY(!zero->database().isValid());
    QCOMPARE(zero->getCommunicatorID(1), -1);
    QCOMPARE(zero->getTagNameById(20022), QStringLiteral("S>Year"));
    QCoreApplication::instance()->setProperty("currentProject", QVariant());
}

void TagLifecycleTolvTest::theDefaultIsReturnedWhateverTheProperties()
{
    TagSystem *const standing = TagSystem::instance();
    setTolvEnvironment(QVariant());
    QCOMPARE(TagSystem::instance(), standing);
    QCoreApplication::instance()->setProperty("currentProject", quint64(99));
    QCOMPARE(TagSystem::instance(), standing);
    QVERIFY(!TagSystem::s_instanceMap->contains(QStringLiteral("99")));

    TagSystem *const editors = makeObject(QStringLiteral("3"), {pump(1)});
    QVERIFY2(TagSystem::instance() == standing, "an object made without the property is no default");
    setLink(QStringLiteral("3"), 2);
    QCOMPARE(editors->getCommunicatorID(1), 2);
    QCoreApplication::instance()->setProperty("currentProject", QVariant());
    setTolvEnvironment(true);
}

void TagLifecycleTolvTest::aSecondKeyReplacesTheDefault()
{
    TagSystem *const first = makeObject(QStringLiteral("10"), {pump(1)});
    QCOMPARE(TagSystem::instance(), first);
    TagSystem *const second = makeObject(QStringLiteral("11"), {pump(2)});
    QVERIFY(first != second);
    QCOMPARE(TagSystem::instance(), second);
    QCOMPARE(TagSystem::instance(QStringLiteral("10")), first);
    QVERIFY2(TagSystem::instance() == second, "an older object does not come back by being asked for");
    QCOMPARE(first->getCommunicatorID(1), 1);
    QCOMPARE(second->getCommunicatorID(1), 2);
    TagSystem::instance(QString());
    QCOMPARE(TagSystem::instance(), second);
}

void TagLifecycleTolvTest::anyValueOfThePropertyWillDo_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::newRow("true") << QVariant(true);
    QTest::newRow("false") << QVariant(false);
    QTest::newRow("zero") << QVariant(0);
    QTest::newRow("an empty text") << QVariant(QStringLiteral(""));
    QTest::newRow("a null text") << QVariant(QString());
    QTest::newRow("a number without a value") << QVariant(QVariant::Int);
}

void TagLifecycleTolvTest::anyValueOfThePropertyWillDo()
{
    QFETCH(QVariant, value);
    setTolvEnvironment(value);
    const QString key = QStringLiteral("value ") + QLatin1String(QTest::currentDataTag());
    TagSystem *const made = makeObject(key, {pump(1)});
    QCOMPARE(TagSystem::instance(), made);
    setLink(key, 2);
    QCOMPARE(made->getCommunicatorID(1), 1);
    setTolvEnvironment(true);
}

void TagLifecycleTolvTest::theTagTableIsReadOnce()
{
    TagSystem *const made = makeObject(QStringLiteral("20"), {pump(3)});
    QCOMPARE(made->getTagNames(), QStringList{QStringLiteral("Pump")});
    setLink(QStringLiteral("20"), 4);
    QCOMPARE(made->getCommunicatorID(1), 3);
    executeOn(QStringLiteral("20"), QStringLiteral("DROP TABLE custom_tag_table"));
    QCOMPARE(TagSystem::instance(QStringLiteral("20")), made);
    QCOMPARE(made->getCommunicatorID(1), 3);
    QCOMPARE(made->getTagNameById(1), QString());
    made->closeDatabase();
    QCOMPARE(made->getCommunicatorID(1), 3);
}

void TagLifecycleTolvTest::anObjectThatCannotBeOpenedIsADefaultToo()
{
    QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("30")).setDatabaseName(m_folder.path());
    const LogRecorder log;
    TagSystem *const made = TagSystem::instance(QStringLiteral("30"));
    QCOMPARE(log.lines().count(QStringLiteral("warning: Database Error: Unable to open default Tag database.")), 1);
    QCOMPARE(TagSystem::instance(), made);
    QCOMPARE(made->getCustomTagTableAddressColumn(), 5);
    QCOMPARE(made->getCommunicatorID(1), -1);
}

void TagLifecycleTolvTest::theCompileConnectionIsNotUsed()
{
    TagSystem *const made = makeObject(QStringLiteral("40"), {pump(1)});
    QString connectionOfTheThread;
    QString nameInTheThread;
    QStringList otherNames;
    const QString compiling = QStringLiteral("TOLV_compileing");
    const QString compiledPath = m_folder.filePath(QStringLiteral("compiled"));
    inAnotherThread([&] {
        makeProject(compiledPath, compiling);
        TagRow other = pump(2);
        other.name = QStringLiteral("other");
        writeTags(compiling, {other});
        connectionOfTheThread = made->database().connectionName();
        nameInTheThread = made->getTagNameById(1);
        otherNames = rowsOn(compiling, QStringLiteral("SELECT name FROM custom_tag_table"));
        closeProject(compiling);
    });
    QCOMPARE(connectionOfTheThread, QStringLiteral("40"));
    QCOMPARE(nameInTheThread, QStringLiteral("Pump"));
    QCOMPARE(otherNames, QStringList{QStringLiteral("other")});
    QCOMPARE(made->database().connectionName(), QStringLiteral("40"));
}

void TagLifecycleTolvTest::everyThreadGetsTheDefault()
{
    TagSystem *const made = makeObject(QStringLiteral("50"), {pump(3)});
    std::vector<int> rightAnswers(threadCount, 0);
    std::vector<std::thread> threads;
    for (int i = 0; i < threadCount; ++i) {
        threads.emplace_back([&rightAnswers, made, i] {
            for (int pass = 0; pass < 200; ++pass) {
                TagSystem *const standing = TagSystem::instance();
                const bool isRight = standing == made && standing->getCommunicatorID(1) == 3 &&
                                     standing->getAddressByID(1) == QLatin1String("D1") &&
                                     standing->getTagNameById(1) == QLatin1String("Pump") &&
                                     standing->getSystemTagType(20022) == SystemTagItemInformation::ControlTag;
                rightAnswers[size_t(i)] += isRight ? 1 : 0;
            }
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    QCOMPARE(rightAnswers, std::vector<int>(threadCount, 200));
}

void TagLifecycleTolvTest::dropKeepsTheDefault()
{
    TagSystem *const last = TagSystem::instance();
    const auto lastAddress = quintptr(last);
    QVERIFY(TagSystem::s_instanceMap->values().contains(last));
    TagSystem::drop();
    QVERIFY(!TagSystem::s_instanceMap);
    QVERIFY(!QSqlDatabase::contains(QStringLiteral("50")));
    QCOMPARE(quintptr(TagSystem::instance()), lastAddress);
    QVERIFY2(!TagSystem::s_instanceMap, "no object is made");

    TagSystem *const next = makeObject(QStringLiteral("60"));
    QCOMPARE(TagSystem::instance(), next);
    dropProjects();
}

QTEST_GUILESS_MAIN(TagLifecycleTolvTest)

#include "tst_taglifecycle_tolv.moc"
