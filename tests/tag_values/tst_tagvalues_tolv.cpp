// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/labelfixtures.h"
#include "support/logrecorder.h"
#include "support/projectfixtures.h"

#include "zelmar_label/label_store/labelstore.h"
#include "zelmar_label/tag_store/tagsystem.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

namespace {

const QString key = QStringLiteral("project that is done");
const QString driver = QStringLiteral("Registers");

TagRow tag(int id, int type, const QString &address, int scale = 1)
{
    TagRow row;
    row.id = id;
    row.name = QStringLiteral("Tag %1").arg(id);
    row.connectorId = 2;
    row.dataType = type;
    row.address = address;
    row.scale = scale;
    row.scanTime = 0;
    return row;
}

QString hexOf(const QByteArray &bytes)
{
    return QString::fromLatin1(bytes.toHex(' '));
}

} // namespace

/// Values and commands in the process that only reads a finished project: types, links and addresses are those at the
/// start, text lengths the current ones.
class TagValuesTolvTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();

    void nothingIsReadOnce_data();
    void nothingIsReadOnce();
    void bitType_data();
    void bitType();
    void sizeOfATag_data();
    void sizeOfATag();
    void codec_data();
    void codec();
    void lengthOfATextIsThatOfTheMoment();
    void limits_data();
    void limits();
    void textForms();
    void runOfATag();
    void blocksOfATag();
    void unknownTags();

private:
    TagSystem *m_tags = nullptr;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<MessageRecorder> m_messages;
};

/// The rows change after the start; this must have no effect.
void TagValuesTolvTest::initTestCase()
{
    QCoreApplication::instance()->setProperty("tolv_env", true);
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
    m_messages = std::make_unique<MessageRecorder>();
    Driver plc;
    plc.name = driver;
    Row registers;
    registers.blocksize = 4;
    plc.rows = {registers};
    writeDriverDatabase(driverDatabasePath(), {plc});
    makeProject(m_folder->filePath(QStringLiteral("project")), key, {{2, driver, 1}});
    QList<TagRow> rows{tag(1, 3, QStringLiteral("D100")), tag(2, 8, QStringLiteral("D200"), 4),
                       tag(3, 0, QStringLiteral("D300")), tag(4, 9, QStringLiteral("3-D400"))};
    writeTags(key, rows);
    const LogRecorder log;
    m_tags = TagSystem::instance(key);
    QVERIFY(m_tags->getLable(2));
    m_tags->setRecipeTags({{30001, QStringLiteral("R>1_1")}, {30002, QStringLiteral("R>1_2")}},
                          {{30001, 1}, {30002, 9999}});
    m_tags->setRecipeRowTags({{50001, QStringLiteral("R>1_1I1")}}, {{50001, 2}});
    executeOn(key, QStringLiteral("UPDATE custom_tag_table SET address = 'D9', data_type = 5, connector_id = 9"));
}

void TagValuesTolvTest::cleanupTestCase()
{
    QCOMPARE(m_messages->take(), QStringList());
    m_messages.reset();
    dropProjects();
    label::freeLabel(driver);
    m_folder.reset();
    QDir(QFileInfo(driverDatabasePath()).absolutePath()).removeRecursively();
}

void TagValuesTolvTest::nothingIsReadOnce_data()
{
    QTest::addColumn<int>("id");
    QTest::newRow("a tag whose scan time is 0") << 1;
    QTest::newRow("a recipe tag of it") << 30001;
    QTest::newRow("a system tag") << 20012;
    QTest::newRow("no such tag") << 9999;
    QTest::newRow("a recipe tag of no tag, whose scan time is -1") << 30002;
}

void TagValuesTolvTest::nothingIsReadOnce()
{
    QFETCH(int, id);
    QVERIFY(!m_tags->isReadOnce(id));
}

void TagValuesTolvTest::bitType_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<bool>("expected");
    QTest::newRow("a bit") << 3 << true;
    QTest::newRow("a number") << 1 << false;
    QTest::newRow("no such tag, though its data type is Bit") << 9998 << false;
    QTest::newRow("a recipe tag of a number") << 30001 << false;
}

void TagValuesTolvTest::bitType()
{
    QFETCH(int, id);
    QTEST(m_tags->isBitType(id), "expected");
}

void TagValuesTolvTest::sizeOfATag_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<int>("size");
    QTest::addColumn<bool>("isText");
    QTest::newRow("INT(16)") << 1 << 2 << false;
    QTest::newRow("Ascii") << 2 << 1 << true;
    QTest::newRow("Bit") << 3 << 1 << false;
    QTest::newRow("DOUBLE") << 4 << 8 << false;
    QTest::newRow("a recipe tag of INT(16)") << 30001 << 2 << false;
    QTest::newRow("a recipe row tag of Ascii") << 50001 << 1 << true;
    QTest::newRow("a system tag") << 20012 << 4 << false;
    QTest::newRow("no such tag") << 9997 << 1 << false;
}

void TagValuesTolvTest::sizeOfATag()
{
    QFETCH(int, id);
    QTEST(m_tags->getDataSizeByID(id), "size");
    QTEST(m_tags->isAsciiType(id), "isText");
}

void TagValuesTolvTest::codec_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("hex");
    QTest::addColumn<QVariant>("plain");
    QTest::addColumn<QVariant>("threadSafe");
    const QVariant text(QByteArray("AB\0\0", 4));
    QTest::newRow("INT(16)") << 1 << QVariant(-2) << QStringLiteral("fe ff") << QVariant(-2) << QVariant(-2);
    QTest::newRow("Ascii") << 2 << QVariant(QByteArray("AB")) << QStringLiteral("41 42 00 00") << text << text;
    QTest::newRow("Bit") << 3 << QVariant(7) << QStringLiteral("01") << QVariant(1) << QVariant(true);
    QTest::newRow("DOUBLE") << 4 << QVariant(1.0) << QStringLiteral("00 00 00 00 00 00 f0 3f") << QVariant(1.0)
                            << QVariant(1.0);
    QTest::newRow("a recipe tag of INT(16)")
        << 30001 << QVariant(-2) << QStringLiteral("fe ff") << QVariant(-2) << QVariant(-2);
    QTest::newRow("a recipe row tag of Ascii")
        << 50001 << QVariant(QByteArray("AB")) << QStringLiteral("41 42 00 00") << text << text;
    QTest::newRow("a recipe tag of no tag is a bit")
        << 30002 << QVariant(3) << QStringLiteral("01") << QVariant(1) << QVariant(true);
    QTest::newRow("no such tag is a bit")
        << 9996 << QVariant(3) << QStringLiteral("01") << QVariant(1) << QVariant(true);
}

void TagValuesTolvTest::codec()
{
    QFETCH(int, id);
    QFETCH(QVariant, value);
    QFETCH(QVariant, plain);
    QFETCH(QVariant, threadSafe);
    QByteArray bytes;
    m_tags->var2ByteArray(id, value, bytes);
    QTEST(hexOf(bytes), "hex");
    QTEST(hexOf(m_tags->varToByteArrayThreadSafe(id, value)), "hex");
    QVariant back;
    m_tags->byteArray2Var(id, bytes, back);
    QCOMPARE(back, plain);
    QCOMPARE(back.userType(), plain.userType());
    const QVariant safe = m_tags->byteArrayToVarThreadSafe(id, bytes);
    QCOMPARE(safe, threadSafe);
    QCOMPARE(safe.userType(), threadSafe.userType());
}

void TagValuesTolvTest::lengthOfATextIsThatOfTheMoment()
{
    bool ok = false;
    executeOn(key, QStringLiteral("UPDATE custom_tag_table SET scale = 3 WHERE id = 2"));
    const QString image = hexOf(m_tags->varToByteArrayThreadSafe(2, QByteArray("AB")));
    const quint64 length = m_tags->getCommunicatorCommandByIndex(2, ok).length;
    executeOn(key, QStringLiteral("UPDATE custom_tag_table SET scale = 4 WHERE id = 2"));
    QCOMPARE(image, QStringLiteral("41 42 00"));
    // The command has its length at the start.
    QCOMPARE(length, 4ULL);
    QVERIFY(ok);
}

void TagValuesTolvTest::limits_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QVariant>("highest");
    QTest::addColumn<QVariant>("lowest");
    QTest::newRow("INT(16)") << 1 << QVariant(32767) << QVariant(-32768);
    QTest::newRow("Bit") << 3 << QVariant(1) << QVariant(0);
    QTest::newRow("a recipe tag of INT(16)") << 30001 << QVariant(32767) << QVariant(-32768);
    QTest::newRow("no such tag is a bit") << 9995 << QVariant(1) << QVariant(0);
    QTest::newRow("no tag stays as it is") << -1 << QVariant() << QVariant();
}

void TagValuesTolvTest::limits()
{
    QFETCH(int, id);
    QVariant max;
    QVariant min;
    m_tags->getMaxMinValue(id, max, min);
    QTEST(max, "highest");
    QTEST(min, "lowest");
}

void TagValuesTolvTest::textForms()
{
    QVERIFY(m_tags->isInTheRange(1, -32768));
    QVERIFY(!m_tags->isInTheRange(30001, 32768));
    QCOMPARE(m_tags->toBaseSystemStringFromLongLong(1, -1, 16), QStringLiteral("ffff"));
    bool ok = false;
    bool formatError = true;
    QCOMPARE(m_tags->toLongLongByBaseSystemString(30001, QStringLiteral("8000"), ok, 16, formatError), -32768LL);
    QVERIFY(ok);
    QVERIFY(!formatError);
}

void TagValuesTolvTest::runOfATag()
{
    const LogRecorder log;
    const QStringList words{QStringLiteral("D100 2 1"), QStringLiteral("D101 2 1")};
    QCOMPARE(shortForms(m_tags->getContinuousCommand(1, 2)), words);
    const QStringList quadWords{QStringLiteral("3-D400 4 1"), QStringLiteral("3-D404 4 1")};
    QCOMPARE(shortForms(m_tags->getContinuousCommand(4, 2)), quadWords);
    const QStringList texts{QStringLiteral("D200 2 4"), QStringLiteral("D205 2 4")};
    QCOMPARE(shortForms(m_tags->getContinuousCommandwithCap(2, 2, 5, true)), texts);
    QCOMPARE(m_tags->getPrefixSymbol(4), QStringLiteral("D"));
    QCOMPARE(log.lines(), QStringList());
}

void TagValuesTolvTest::blocksOfATag()
{
    QList<CommunicatorCommand> out;
    QVERIFY(m_tags->creatBlockCommand(1, 6, out));
    const QStringList words{QStringLiteral("D100 2 4"), QStringLiteral("D104 2 2")};
    QCOMPARE(shortForms(out), words);
    QVERIFY(m_tags->creatBlockCommand(4, 2, out));
    const QStringList quadWords{QStringLiteral("3-D400 4 1"), QStringLiteral("3-D404 4 1")};
    QCOMPARE(shortForms(out), quadWords);
    // A block has the scan time of its tag's command, which is 1 here.
    QVERIFY(m_tags->creatBlockCommand(1, 4, out));
    QCOMPARE(shortForms(out), QStringList{QStringLiteral("D100 2 4")});
    QCOMPARE(out.first().scanTime, 1);
}

void TagValuesTolvTest::unknownTags()
{
    const LogRecorder log;
    QList<CommunicatorCommand> out{command(QStringLiteral("before"), 1)};
    for (const int id : {9994, -1}) {
        QVERIFY(m_tags->getContinuousCommand(id, 2).isEmpty());
        QVERIFY(m_tags->getContinuousCommandwithCap(id, 2, 1, true).isEmpty());
        QCOMPARE(m_tags->getPrefixSymbol(id), QString());
        QVERIFY(!m_tags->creatBlockCommand(id, 2, out));
    }
    QCOMPARE(addresses(out), QStringList{QStringLiteral("before")});
    QCOMPARE(log.lines(), QStringList());
}

QTEST_GUILESS_MAIN(TagValuesTolvTest)

#include "tst_tagvalues_tolv.moc"
