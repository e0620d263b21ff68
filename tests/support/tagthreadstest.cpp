// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/tagthreadstest.h"

#include "support/labelfixtures.h"

#include "zelmar_label/label_store/labelstore.h"
#include "zelmar_label/tag_store/tagsystem.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QTest>

#include <cstring>

namespace threads {

const QString key = QStringLiteral("project of many threads");
const QString words = QStringLiteral("Words");
const QString blocks = QStringLiteral("ISO on TCP");
const QString scripted = QStringLiteral("Scripted");
const QString own = QStringLiteral("Own words");

namespace {

void writeDrivers()
{
    writeScript(QStringLiteral("threads.js"),
                QStringLiteral("function init() { bitBase = 8; needOptimize = true; }"
                               "function getAddressRange(address) { return parseInt(address.substr(1), 10); }"));
    Driver plain;
    plain.name = words;
    plain.rows = {Row()};
    Row family;
    family.pattern = QStringLiteral("DB_DBW");
    family.prefixSymbol = QStringLiteral("DB");
    Driver dynamic;
    dynamic.name = blocks;
    dynamic.rows = {family};
    dynamic.generalTable = QStringLiteral("general_blocks");
    dynamic.deviceTable = QStringLiteral("types_blocks");
    Row script;
    script.multipleRule = QStringLiteral("F>threads.js");
    Driver withScript;
    withScript.name = scripted;
    withScript.rows = {script};
    withScript.generalTable = QStringLiteral("general_script");
    withScript.deviceTable = QStringLiteral("types_script");
    Driver copied;
    copied.name = own;
    copied.rows = {Row()};
    copied.generalTable = QStringLiteral("general_own");
    copied.deviceTable = QStringLiteral("types_own");
    writeDriverDatabase(driverDatabasePath(), {plain, dynamic, withScript, copied});
}

} // namespace

QVariant hundred(const Tag &tag)
{
    return tag.type() == 8 ? QVariant(QByteArray("100")) : QVariant(100);
}

QByteArray hundredImage(const Tag &tag)
{
    if (tag.type() == 8)
        return QByteArray("100").leftJustified(tag.scale(), '\0', true);
    QByteArray image(tag.size(), '\0');
    const float single = 100;
    const double twice = 100;
    if (tag.type() == 7)
        std::memcpy(image.data(), &single, sizeof single);
    else if (tag.type() == 9)
        std::memcpy(image.data(), &twice, sizeof twice);
    else
        image[0] = tag.type() == 0 ? '\0' : 'd';
    return image;
}

QStringList troubleIn(const LogRecorder &log)
{
    const QStringList lines = log.lines();
    QStringList trouble;
    for (const QString &line : lines) {
        if (!line.endsWith(QLatin1String("    commandformatter")) &&
            !line.startsWith(QLatin1String("TagSystem::getTagIDsByAddress ")))
            trouble.append(line);
    }
    return trouble;
}

void TagThreadsTest::initTestCase()
{
    QCoreApplication::instance()->setProperty("tolv_env", true);
    QDir(QFileInfo(driverDatabasePath()).absolutePath()).removeRecursively();
    writeDrivers();
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
    makeProject(
        m_folder->filePath(QStringLiteral("project")), key,
        {{1, words, 1}, {2, blocks, 1}, {3, scripted, 1}, {4, QStringLiteral("No such driver"), 0}, {5, own, 0}},
        {{1, 12, 2}, {2, 3, 2}, {3, 7, 3}});
    QList<TagRow> rows;
    for (int id = 1; id <= tagCount; ++id)
        rows.append(Tag(id).row());
    writeTags(key, rows);
    QVERIFY(label::setupCustomLabel(own));

    TagSystem *tags = TagSystem::instance(key);
    QMap<int, QString> names;
    QMap<int, QString> rowNames;
    QMap<int, int> connected;
    QMap<int, int> rowConnected;
    for (int i = 0; i < recipeCount; ++i) {
        names.insert(30000 + i, QStringLiteral("R>1_%1").arg(i));
        connected.insert(30000 + i, i + 1);
        rowNames.insert(50001 + i, QStringLiteral("R>1_%1I1").arg(i));
        rowConnected.insert(50001 + i, i + 1);
    }
    tags->setRecipeTags(names, connected);
    tags->setRecipeRowTags(rowNames, rowConnected);
}

void TagThreadsTest::init()
{
    m_messages = std::make_unique<MessageRecorder>();
}

void TagThreadsTest::cleanup()
{
    QCOMPARE(m_messages->take(), QStringList());
    m_messages.reset();
    for (const QString &name : {words, blocks, scripted, own})
        label::freeLabel(name);
    label::freeCustomLabel(own);
}

void TagThreadsTest::cleanupTestCase()
{
    dropProjects();
    m_folder.reset();
    removeScript(QStringLiteral("threads.js"));
    QDir(QFileInfo(driverDatabasePath()).absolutePath()).removeRecursively();
}

} // namespace threads
