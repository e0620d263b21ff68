// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "importplan.h"

#include "zelmar_label/tag_store/tagsystem.h"

#include <QCoreApplication>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

namespace {

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(ImportPlan)
};

QString reservedName(const TagSystem &tags, const QString &name)
{
    if (name.isEmpty())
        return Texts::tr("the name is empty");
    if (tags.isSystemTag(name))
        return Texts::tr("names that begin with \"%1\" are reserved for system tags").arg(name.left(2));
    if (tags.isRecipeTag(name))
        return Texts::tr("names that begin with \"%1\" are reserved for recipe tags").arg(name.left(2));
    return QString();
}

QString changedName(const StoredText &stored, const QString &name)
{
    const QString kept = stored.name(name);
    return kept == name ? QString() : Texts::tr("the project would store the name as \"%1\"").arg(kept);
}

} // namespace

ImportPlan::ImportPlan(TagSystem &tags, const AddressRefusal &refusal)
    : m_tags(tags)
    , m_refusal(refusal)
{
}

bool ImportPlan::readKnownTags(const QSqlDatabase &project, QString &error)
{
    m_stored.readColumns(project);
    QSqlQuery query(project);
    query.setForwardOnly(true);
    query.exec(QStringLiteral("SELECT name, connector_id, data_type, address, scale FROM %1")
                   .arg(m_tags.customTagTableName()));
    while (query.next()) {
        Known &known = m_known[query.value(0).toString()];
        known.tag.name = query.value(0).toString();
        known.tag.link = query.value(1).toInt();
        known.tag.dataType = query.value(2).toInt();
        known.tag.address = query.value(3).toString();
        known.tag.scale = query.value(4).toInt();
        ++known.count;
    }
    error = query.lastError().databaseText();
    return !query.lastError().isValid();
}

void ImportPlan::readRow(const TagColumns &columns, const CsvRow &row)
{
    QString reason;
    const PlainTag tag = columns.tag(row, m_tags, reason);
    if (reason.isEmpty())
        reason = refusalOf(tag);
    if (!tag.name.isEmpty() && !m_lines.contains(tag.name))
        m_lines.insert(tag.name, row.line);
    if (!reason.isEmpty()) {
        m_refusals.append({row.line, tag.name, reason});
        return;
    }
    const auto known = m_known.constFind(tag.name);
    if (known == m_known.constEnd())
        m_added.append(tag);
    else if (known->tag.isSame(tag))
        ++m_unchanged;
    else
        m_changed.append(tag);
}

QString ImportPlan::nameRefusal(const TagSystem &tags, const StoredText &stored, const QString &name)
{
    const QString reason = reservedName(tags, name);
    return reason.isEmpty() ? changedName(stored, name) : reason;
}

QString ImportPlan::refusalOf(const PlainTag &tag) const
{
    QString reason = reservedName(m_tags, tag.name);
    if (!reason.isEmpty())
        return reason;
    if (m_lines.contains(tag.name))
        return Texts::tr("line %1 has the same name").arg(m_lines.value(tag.name));
    const auto known = m_known.constFind(tag.name);
    if (known != m_known.constEnd() && known->count > 1)
        return Texts::tr("%1 tags of the project have this name").arg(known->count);
    reason = changedName(m_stored, tag.name);
    if (!reason.isEmpty())
        return reason;
    const QString kept = m_stored.address(tag.address);
    if (kept != tag.address)
        return Texts::tr("the project would store the address %1 as \"%2\"").arg(tag.address, kept);
    return m_refusal(tag.link, tag.dataType, tag.address, tag.scale);
}

bool ImportPlan::write(int index)
{
    const bool isNew = index < m_added.size();
    const PlainTag &tag = isNew ? m_added.at(index) : m_changed.at(index - m_added.size());
    return isNew ? m_tags.addTag(tag.name, tag.address, tag.link, tag.dataType, tag.scale)
                 : m_tags.modifyTag(tag.name, tag.address, tag.link, tag.dataType, tag.scale);
}
