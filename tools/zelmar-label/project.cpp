// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "project.h"

#include "interruptedwrite.h"
#include "projectcheck.h"
#include "tagtypes.h"

#include "zelmar_label/label_table/labelloader.h"
#include "zelmar_label/tag_store/tagmessages_p.h"
#include "zelmar_label/tag_store/tagsystem.h"

#include <QFileInfo>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

namespace {

const char *const connectionName = "project";
constexpr int firstRecipeId = 30000;

QString quoted(const QString &text)
{
    return QLatin1Char('"') + text + QLatin1Char('"');
}

/// A tag table must not be made in a database of another program. A project may be an empty file.
bool isOfAnotherKind(const QStringList &tables)
{
    return !tables.isEmpty() && !tables.contains(QStringLiteral("LINK"), Qt::CaseInsensitive);
}

} // namespace

Project::Project(const Streams &streams)
    : m_streams(streams)
{
    label::setMessageHandler([this](label::MessageKind, const QString &, const QString &text) {
        if (m_isQuiet)
            return;
        m_hasFailed = true;
        m_streams.complain(m_path + QLatin1String(": ") + text.trimmed());
    });
}

Project::~Project()
{
    if (m_isInTransaction)
        QSqlQuery(database()).exec(QStringLiteral("ROLLBACK"));
    // Closes and removes the connection of an open project.
    TagSystem::drop();
    if (QSqlDatabase::contains(QLatin1String(connectionName)))
        QSqlDatabase::removeDatabase(QLatin1String(connectionName));
    label::setMessageHandler({});
}

QSqlDatabase Project::database() const
{
    return QSqlDatabase::database(QLatin1String(connectionName), false);
}

bool Project::open(const QString &path, Access access)
{
    m_path = path;
    if (!isReadable())
        return false;
    undoInterruptedWrite(path);
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QLatin1String(connectionName));
        if (access == Access::ReadOnly)
            db.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
        db.setDatabaseName(path);
        if (!db.open()) {
            m_streams.complain(
                QStringLiteral("the project %1 cannot be opened (%2)").arg(path, db.lastError().databaseText()));
            return false;
        }
    }
    if (!readTable())
        return false;
    if (!m_hasTable && access == Access::ReadOnly && !m_takesMissingTable) {
        m_streams.complain(QStringLiteral("%1 has no tag table; \"zelmar-label import\" makes one").arg(path));
        return false;
    }
    // A new tag table is part of the transaction.
    if (access == Access::ReadWrite && !m_hasTable && !begin())
        return false;
    m_isQuiet = !m_hasTable && access == Access::ReadOnly;
    m_tags = TagSystem::instance(QLatin1String(connectionName));
    m_judge = std::make_unique<AddressJudge>(*m_tags);
    m_isQuiet = false;
    const QString warning = reservedIdWarning(*m_tags, path);
    if (!warning.isEmpty())
        m_streams.complain(warning);
    m_hasTable = m_hasTable || access == Access::ReadWrite;
    return !m_hasFailed && (access == Access::ReadOnly || m_isInTransaction || begin());
}

bool Project::isReadable() const
{
    const QString missing = missingFile(m_path);
    if (!missing.isEmpty())
        m_streams.complain(missing);
    return missing.isEmpty();
}

/// False, with a message, if the file is not a project database or its tag table is invalid.
bool Project::readTable()
{
    const ProjectCheck check = checkProject(database(), m_path);
    m_hasTable = check.hasTagTable;
    QString problem = check.problem;
    if (problem.isEmpty() && !m_hasTable && isOfAnotherKind(database().tables()))
        problem = QStringLiteral("%1 is not a project: it has neither a tag table nor a table LINK").arg(m_path);
    if (!problem.isEmpty())
        m_streams.complain(problem);
    return problem.isEmpty();
}

bool Project::begin()
{
    // SQLite begins a transaction even on a read-only file.
    if (!QFileInfo(m_path).isWritable()) {
        m_streams.complain(QStringLiteral("the project %1 is read-only").arg(m_path));
        return false;
    }
    QSqlQuery query(database());
    m_isInTransaction = query.exec(QStringLiteral("BEGIN IMMEDIATE"));
    if (!m_isInTransaction)
        m_streams.complain(
            QStringLiteral("the project %1 cannot be written (%2)").arg(m_path, query.lastError().databaseText()));
    return m_isInTransaction;
}

bool Project::commit()
{
    QSqlQuery query(database());
    if (query.exec(QStringLiteral("COMMIT"))) {
        m_isInTransaction = false;
        return true;
    }
    m_streams.complain(
        QStringLiteral("the project %1 cannot be written (%2)").arg(m_path, query.lastError().databaseText()));
    return false;
}

bool Project::setRecipes(const QStringList &recipes)
{
    QMap<int, QString> names;
    QMap<int, int> connected;
    for (const QString &recipe : recipes) {
        const int end = recipe.indexOf(QLatin1Char('='));
        const QString name = recipe.left(end);
        if (!m_tags->isRecipeTag(name)) {
            m_streams.complain(QStringLiteral("\"%1\" is not a recipe tag name: those begin with \"R>\"").arg(name));
            return false;
        }
        const int tag = find(recipe.mid(end + 1));
        if (tag < 0)
            return false;
        const int id = firstRecipeId + names.size();
        names.insert(id, name);
        connected.insert(id, tag);
    }
    m_tags->setRecipeTags(names, connected);
    return true;
}

int Project::find(const QString &text) const
{
    const int named = m_tags->getIdByTagName(text);
    if (named >= 0)
        return named;
    bool isNumber = false;
    const int id = text.toInt(&isNumber);
    if (isNumber && id >= 0 && !m_tags->getTagNameById(id).isEmpty())
        return id;
    const int doubled = m_tags->getTagNames().count(text);
    if (doubled > 1)
        m_streams.complain(
            QStringLiteral("%1 tags have the name %2; give an id").arg(QString::number(doubled), quoted(text)));
    else
        m_streams.complain(QStringLiteral("there is no tag %1 in %2").arg(quoted(text), m_path));
    return -1;
}

/// Null if there is no such driver. The store owns the label.
std::shared_ptr<Device> Project::deviceOf(int linkId, const QString &driver)
{
    const auto known = m_devices.constFind(driver);
    if (known != m_devices.constEnd())
        return *known;
    std::shared_ptr<Device> device;
    auto *label = dynamic_cast<label::LabelLoader *>(m_tags->getLable(linkId));
    if (label && label->countType(0) > 0)
        device = std::make_shared<Device>(std::shared_ptr<label::LabelLoader>(std::shared_ptr<void>(), label));
    m_devices.insert(driver, device);
    return device;
}

const Link &Project::link(int id)
{
    const auto known = m_links.constFind(id);
    if (known != m_links.constEnd())
        return **known;
    auto made = std::make_shared<Link>();
    made->exists = m_tags->getAllLinkID().contains(id);
    if (made->exists) {
        made->isEnabled = m_tags->getAllEnabledLinkID().contains(id);
        made->driver = m_tags->getLinkName(id);
        made->stations = m_tags->stationList(id);
        made->device = deviceOf(id, made->driver);
    }
    m_links.insert(id, made);
    return *made;
}

QString Project::refusal(int linkId, int dataType, const QString &address, int scale)
{
    return m_judge->judge(linkId, dataType, address, scale).reason;
}

QString Project::refusal(int tagId)
{
    if (m_tags->isNotNormalTag(tagId))
        return QString();
    const int type = m_tags->getDataTypeByID(tagId);
    return refusal(m_tags->getCommunicatorID(tagId), type, m_tags->getAddressByID(tagId),
                   type == tagtype::Ascii ? m_tags->getScaleByID(tagId) : 1);
}
