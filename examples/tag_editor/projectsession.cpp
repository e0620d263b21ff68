// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "projectsession.h"

#include "importplan.h"
#include "pickerlabel.h"
#include "projectcheck.h"
#include "sampleproject.h"

#include <zelmar_label/tag_store/tagsystem.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSqlError>
#include <QSqlQuery>
#include <QStandardPaths>
#include <QVariant>

namespace {

/// The library finds a project's connection by the number in the application's property.
QString freeKey()
{
    static int last = 0;
    QString key;
    do {
        key = QString::number(++last);
    } while (QSqlDatabase::contains(key));
    return key;
}

void removeConnection(const QString &key)
{
    if (QSqlDatabase::contains(key))
        QSqlDatabase::removeDatabase(key);
}

/// While it writes, SQLite keeps a journal beside the file.
bool mayWrite(const QString &path)
{
    const QFileInfo file(path);
    return file.isWritable() && QFileInfo(file.absolutePath()).isWritable();
}

/// `text` as a sentence of its own.
QString sentence(const QString &text)
{
    return text.left(1).toUpper() + text.mid(1) + QLatin1Char('.');
}

} // namespace

ProjectSession::ProjectSession(QObject *parent)
    : QObject(parent)
{
}

ProjectSession::~ProjectSession()
{
    close();
}

QString ProjectSession::samplePath()
{
    return QDir(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation))
        .filePath(QStringLiteral("sample-project.db"));
}

label::LabelInterface *ProjectSession::pickerLabel(label::LabelInterface *label)
{
    std::unique_ptr<PickerLabel> &picker = m_pickerLabels[label];
    if (!picker)
        picker = std::make_unique<PickerLabel>(*label);
    return picker.get();
}

QSqlDatabase ProjectSession::database() const
{
    return m_tags->database();
}

/// Registers and opens the file as connection `key`, and checks that it is a project.
QString ProjectSession::connect(const QString &path, const QString &key) const
{
    const bool isWritable = mayWrite(path);
    QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), key);
    db.setConnectOptions(isWritable ? QStringLiteral("QSQLITE_BUSY_TIMEOUT=1000")
                                    : QStringLiteral("QSQLITE_BUSY_TIMEOUT=1000;QSQLITE_OPEN_READONLY"));
    db.setDatabaseName(path);
    if (!db.open())
        return tr("The project %1 cannot be opened (%2).").arg(path, db.lastError().databaseText());
    const ProjectCheck check = checkProject(db, path);
    if (!check.problem.isEmpty())
        return sentence(check.problem);
    QSqlQuery query(db);
    if (!query.exec(QStringLiteral("SELECT LINKID, PLC_MODEL, ENABLED FROM LINK LIMIT 1")) ||
        !query.exec(QStringLiteral("SELECT NODEID, STATIONID, LINKID FROM NODE LIMIT 1")))
        return tr("%1 is not a project: it has no tables of links and stations (%2).")
            .arg(path, query.lastError().databaseText());
    if (!check.hasTagTable && !isWritable)
        return tr("%1 has no tag table and is read-only.").arg(path);
    return QString();
}

QString ProjectSession::open(const QString &path)
{
    const QString missing = missingFile(path);
    if (!missing.isEmpty())
        return sentence(missing);
    const QString key = freeKey();
    QString problem = connect(path, key);
    if (problem.isEmpty())
        take(path, key, mayWrite(path));
    else
        removeConnection(key);
    return problem;
}

QString ProjectSession::reservedIdWarning() const
{
    const QString warning = ::reservedIdWarning(*m_tags, m_path);
    return warning.isEmpty() ? warning : sentence(warning);
}

void ProjectSession::take(const QString &path, const QString &key, bool isWritable)
{
    close();
    QCoreApplication::instance()->setProperty("currentProject", key.toULongLong());
    m_tags = TagSystem::instance(key);
    m_judge = std::make_unique<AddressJudge>(*m_tags);
    m_stored = std::make_unique<StoredText>();
    m_stored->readColumns(database());
    m_path = QFileInfo(path).absoluteFilePath();
    m_isWritable = isWritable;
    Q_EMIT opened();
}

void ProjectSession::close()
{
    if (!m_tags)
        return;
    rollBack();
    m_judge.reset();
    m_stored.reset();
    m_tags->closeDatabase();
    m_tags = nullptr;
    // The library keeps its data of a project, with the names of all tags, even after the project is closed.
    TagSystem::drop();
}

QString ProjectSession::openSample(const QString &path)
{
    if (QFileInfo::exists(path))
        return open(path);
    QDir().mkpath(QFileInfo(path).absolutePath());
    const QString key = freeKey();
    QString problem;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), key);
        db.setDatabaseName(path);
        if (!db.open())
            problem = tr("The sample project %1 cannot be made (%2).").arg(path, db.lastError().databaseText());
    }
    if (!problem.isEmpty()) {
        removeConnection(key);
        return problem;
    }
    take(path, key, true);
    QString reason = begin();
    // A judge of its own: its first call stores the links, which must be written by then.
    AddressJudge judge(*m_tags);
    const auto refusal = [&judge](int linkId, int dataType, const QString &address, int scale) {
        return judge.judge(linkId, dataType, address, scale).reason;
    };
    if (reason.isEmpty() && writeSampleProject(database(), *m_tags, refusal, reason) && commit().isEmpty()) {
        m_judge = std::make_unique<AddressJudge>(*m_tags);
        Q_EMIT opened();
        return QString();
    }
    close();
    QFile::remove(path);
    Q_EMIT opened();
    return tr("The sample project %1 cannot be made (%2).").arg(path, reason);
}

PlainTag ProjectSession::tag(int id) const
{
    return plainTag(*m_tags, id);
}

AddressVerdict ProjectSession::verdict(int id, const PlainTag &tag) const
{
    if (m_tags->isNotNormalTag(id))
        return {tr("the tag's number, %1, belongs to system or recipe tags").arg(id), {}};
    return m_judge->judge(tag.link, tag.dataType, tag.address, tag.scale);
}

QString ProjectSession::nameProblem(const QString &name) const
{
    const QString reason = ImportPlan::nameRefusal(*m_tags, *m_stored, name);
    if (!reason.isEmpty())
        return sentence(reason);
    return m_tags->isNewTag(name) ? QString() : tr("There is already a tag \"%1\".").arg(name);
}

QString ProjectSession::refusalToWrite() const
{
    if (!m_isWritable)
        return tr("The project is read-only.");
    // It would become part of the running transaction, and be rolled back with it.
    return m_isInTransaction ? tr("Tags are being written; try again later.") : QString();
}

/// Tags are changed by their names.
QString ProjectSession::refusalToWrite(int id) const
{
    QString refusal = refusalToWrite();
    if (!refusal.isEmpty())
        return refusal;
    const QString name = tag(id).name;
    return m_tags->getIdByTagName(name) == id ? QString()
                                              : tr("More than one tag has the name \"%1\"; rename one.").arg(name);
}

QString ProjectSession::rename(int id, const QString &name)
{
    if (tag(id).name == name)
        return QString();
    QString refusal = refusalToWrite();
    if (!refusal.isEmpty())
        return refusal;
    QString problem = nameProblem(name);
    if (!problem.isEmpty())
        return problem;
    m_tags->setTagNameById(name, id);
    if (tag(id).name != name)
        return tr("The name \"%1\" was refused: it contains a quote, or a tag of this name with a number exists.")
            .arg(name);
    Q_EMIT tagChanged(id);
    return QString();
}

QString ProjectSession::change(int id, const QString &address, int dataType, int scale)
{
    QString problem = refusalToWrite(id);
    if (!problem.isEmpty())
        return problem;
    const QString kept = m_stored->address(address);
    if (kept != address)
        return tr("The project would store the address %1 as \"%2\".").arg(address, kept);
    const PlainTag before = tag(id);
    if (!m_tags->modifyTag(before.name, address, before.link, dataType, scale))
        return tr("The tag could not be changed.");
    Q_EMIT tagChanged(id);
    return QString();
}

QString ProjectSession::add(const QString &name, int linkId, int dataType, const QString &address, int scale)
{
    QString refusal = refusalToWrite();
    if (!refusal.isEmpty())
        return refusal;
    QString problem = nameProblem(name);
    if (!problem.isEmpty())
        return problem;
    const QString reason = m_judge->judge(linkId, dataType, address, scale).reason;
    if (!reason.isEmpty())
        return sentence(reason);
    // A null text would be stored as NULL, where the library stores an empty text.
    const QString stored = address.isNull() ? QStringLiteral("") : address;
    if (!m_tags->addTag(name, stored, linkId, dataType, scale))
        return tr("The tag could not be added.");
    Q_EMIT tagsAdded();
    return QString();
}

QString ProjectSession::begin()
{
    QString refusal = refusalToWrite();
    if (!refusal.isEmpty())
        return refusal;
    QSqlQuery query(database());
    m_isInTransaction = query.exec(QStringLiteral("BEGIN IMMEDIATE"));
    return m_isInTransaction ? QString()
                             : tr("The project cannot be written (%1).").arg(query.lastError().databaseText());
}

QString ProjectSession::commit()
{
    QSqlQuery query(database());
    if (!query.exec(QStringLiteral("COMMIT"))) {
        const QString reason = query.lastError().databaseText();
        rollBack();
        return tr("The project cannot be written (%1).").arg(reason);
    }
    m_isInTransaction = false;
    Q_EMIT tagsAdded();
    return QString();
}

void ProjectSession::rollBack()
{
    if (!m_isInTransaction)
        return;
    QSqlQuery(database()).exec(QStringLiteral("ROLLBACK"));
    m_isInTransaction = false;
    m_tags->refreshTagNames();
    Q_EMIT tagsAdded();
}
