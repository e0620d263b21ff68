// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "projectcheck.h"

#include "zelmar_label/tag_store/tagsystem.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QSqlError>
#include <QSqlQuery>
#include <QStringList>
#include <QVariant>

namespace {

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(ProjectCheck)
};

QString missingColumn(const QStringList &columns)
{
    const QStringList needed = {QStringLiteral("id"),        QStringLiteral("name"),    QStringLiteral("connector_id"),
                                QStringLiteral("data_type"), QStringLiteral("address"), QStringLiteral("scan_time"),
                                QStringLiteral("scale")};
    for (const QString &column : needed) {
        if (!columns.contains(column))
            return column;
    }
    return QString();
}

} // namespace

QString missingFile(const QString &projectPath)
{
    const QString drivers = QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("database/drivers"));
    if (!QFileInfo(projectPath).isFile())
        return Texts::tr("there is no project at %1").arg(projectPath);
    if (!QFileInfo(drivers).isFile())
        return Texts::tr("there is no driver database at %1").arg(drivers);
    return QString();
}

QString reservedIdWarning(TagSystem &tags, const QString &path)
{
    constexpr int mostNamed = 5;
    QStringList named;
    int count = 0;
    const QList<int> ids = tags.getTagIDList();
    for (const int id : ids) {
        if (!tags.isNotNormalTag(id))
            continue;
        if (++count <= mostNamed)
            named.append(QString::number(id));
    }
    if (count == 0)
        return QString();
    if (count > mostNamed)
        named.append(QStringLiteral("..."));
    const QString list = named.join(QLatin1String(", "));
    return count == 1
               ? Texts::tr("1 tag of %1 has the id of a system or recipe tag (%2): its address is not used; give it "
                           "another id")
                     .arg(path, list)
               : Texts::tr("%1 tags of %2 have ids of system or recipe tags (%3): their addresses are not used; "
                           "give them other ids")
                     .arg(QString::number(count), path, list);
}

ProjectCheck checkProject(const QSqlDatabase &database, const QString &path)
{
    ProjectCheck check;
    QSqlQuery query(database);
    if (!query.exec(QStringLiteral("SELECT name FROM pragma_table_info('custom_tag_table')"))) {
        // SQLite's error code for a file that is not a database.
        const bool isDatabase = query.lastError().nativeErrorCode() != QLatin1String("26");
        check.problem =
            (isDatabase ? Texts::tr("the project %1 cannot be read (%2)") : Texts::tr("%1 is not a project (%2)"))
                .arg(path, query.lastError().databaseText());
        return check;
    }
    QStringList columns;
    while (query.next())
        columns.append(query.value(0).toString().toLower());
    // A failure after the first rows, such as a lock.
    if (query.lastError().isValid()) {
        check.problem = Texts::tr("%1 cannot be read (%2)").arg(path, query.lastError().databaseText());
        return check;
    }
    check.hasTagTable = !columns.isEmpty();
    const QString missing = check.hasTagTable ? missingColumn(columns) : QString();
    if (!missing.isEmpty())
        check.problem = Texts::tr("the tag table of %1 lacks the column %2").arg(path, missing);
    return check;
}
