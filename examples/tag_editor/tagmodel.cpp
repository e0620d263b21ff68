// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "tagmodel.h"

#include "look.h"
#include "projectsession.h"
#include "tagcsv.h"

#include <zelmar_label/tag_store/tagsystem.h>

namespace {

/// Several screens full.
constexpr int keptRecords = 2000;

} // namespace

TagModel::TagModel(ProjectSession &session, QObject *parent)
    : QAbstractTableModel(parent)
    , m_session(session)
    , m_records(keptRecords)
{
    connect(&session, &ProjectSession::opened, this, &TagModel::reload);
    connect(&session, &ProjectSession::tagsAdded, this, &TagModel::reload);
    connect(&session, &ProjectSession::tagChanged, this, &TagModel::update);
    reload();
}

int TagModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_ids.size();
}

int TagModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(ColumnCount);
}

void TagModel::setLook(const QFont &addressFont, const QColor &wrong, const QIcon &wrongIcon)
{
    m_addressFont = addressFont;
    m_wrong = wrong;
    m_wrongIcon = wrongIcon;
    if (!m_ids.isEmpty())
        Q_EMIT dataChanged(index(0, 0), index(m_ids.size() - 1, ColumnCount - 1));
}

void TagModel::setScope(const TagScope &scope)
{
    m_scope = scope;
    refilter();
}

void TagModel::setFilter(const QString &text)
{
    if (text == m_filter)
        return;
    m_filter = text;
    refilter();
}

void TagModel::reload()
{
    m_records.clear();
    if (m_session.isOpen())
        m_index.load(m_session.tags());
    else
        m_index.clear();
    refilter();
    Q_EMIT reloaded();
}

void TagModel::refilter()
{
    beginResetModel();
    m_ids = m_session.isOpen() ? m_index.find(m_session.tags(), m_scope, m_filter) : QVector<int>();
    endResetModel();
}

void TagModel::update(int id)
{
    m_records.remove(id);
    m_index.rename(m_session.tags(), id, m_session.tag(id).name);
    const int row = rowOf(id);
    if (row >= 0)
        Q_EMIT dataChanged(index(row, 0), index(row, ColumnCount - 1));
}

int TagModel::rowOf(int id) const
{
    return m_ids.indexOf(id);
}

const TagModel::Record &TagModel::record(int id) const
{
    if (Record *known = m_records.object(id))
        return *known;
    auto *made = new Record;
    made->tag = m_session.tag(id);
    made->access = m_session.tags().getAccessModeByID(id);
    made->verdict = m_session.verdict(id, made->tag);
    m_records.insert(id, made);
    ++m_fetchCount;
    return *made;
}

QString TagModel::text(const Record &record, int column) const
{
    switch (column) {
    case Name:
        return record.tag.name;
    case Type:
        return dataTypeName(m_session.tags(), record.tag.dataType);
    case Address:
        return record.tag.address;
    case Access:
        return m_session.tags().accessModeList().value(record.access, QString::number(record.access));
    default:
        return QString::number(record.tag.scale);
    }
}

QVariant TagModel::appearance(const Record &record, int column, int role) const
{
    if (role == Qt::TextAlignmentRole)
        return int(Qt::AlignVCenter | (column == Scale ? Qt::AlignRight : Qt::AlignLeft));
    if (column == Name && role == Qt::ToolTipRole)
        return look::brief(record.tag.name);
    if (column != Address)
        return QVariant();
    if (role == Qt::FontRole)
        return m_addressFont;
    if (record.verdict.isAccepted())
        return QVariant();
    if (role == Qt::ForegroundRole)
        return m_wrong;
    if (role == Qt::DecorationRole)
        return m_wrongIcon;
    if (role == Qt::ToolTipRole)
        return look::brief(record.verdict.reason);
    return QVariant();
}

QVariant TagModel::data(const QModelIndex &index, int role) const
{
    const int id = idAt(index.row());
    if (!index.isValid() || id < 0)
        return QVariant();
    if (role == IdRole)
        return id;
    const Record &known = record(id);
    switch (role) {
    case Qt::DisplayRole:
        return text(known, index.column());
    case Qt::EditRole:
        return index.column() == Scale ? QVariant(known.tag.scale) : QVariant(text(known, index.column()));
    case LinkRole:
        return known.tag.link;
    case TypeRole:
        return known.tag.dataType;
    default:
        return appearance(known, index.column(), role);
    }
}

bool TagModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    const int id = idAt(index.row());
    if (role != Qt::EditRole || id < 0 ||
        value == data(index, index.column() == Type ? int(TypeRole) : int(Qt::EditRole)))
        return false;
    const PlainTag tag = record(id).tag;
    QString reason;
    if (index.column() == Name)
        reason = m_session.rename(id, value.toString());
    else if (index.column() == Type)
        reason = m_session.change(id, tag.address, value.toInt(), tag.scale);
    else if (index.column() == Address)
        reason = m_session.change(id, value.toString(), tag.dataType, tag.scale);
    else
        reason = m_session.change(id, tag.address, tag.dataType, value.toInt());
    if (!reason.isEmpty())
        Q_EMIT refused(reason);
    return reason.isEmpty();
}

QVariant TagModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal)
        return QVariant();
    if (role == Qt::TextAlignmentRole)
        return int(Qt::AlignVCenter | (section == Scale ? Qt::AlignRight : Qt::AlignLeft));
    if (role == Qt::ToolTipRole && section == Scale)
        return tr("The length in bytes of a text");
    if (role != Qt::DisplayRole)
        return QVariant();
    const QStringList titles = {tr("Name"), tr("Type"), tr("Address"), tr("Access"), tr("Scale")};
    return titles.value(section);
}

Qt::ItemFlags TagModel::flags(const QModelIndex &index) const
{
    const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    const bool isEditable =
        index.isValid() && index.column() != Access && !m_isLocked && m_session.isOpen() && m_session.isWritable();
    return isEditable ? flags | Qt::ItemIsEditable : flags;
}
