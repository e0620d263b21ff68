// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef TAG_EDITOR_TAGMODEL_H
#define TAG_EDITOR_TAGMODEL_H

#include "addressjudge.h"
#include "tagcsv.h"
#include "tagindex.h"

#include <QAbstractTableModel>
#include <QCache>
#include <QFont>
#include <QIcon>

class ProjectSession;

/// A project's tags as a table. It reads the list of tags at the start, and the content of a row when a view needs it.
class TagModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column {
        Name,
        Type,
        Address,
        Access,
        Scale,
        ColumnCount,
    };

    enum Role {
        IdRole = Qt::UserRole,
        LinkRole,
        /// The data type's number.
        TypeRole,
    };

    explicit TagModel(ProjectSession &session, QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

    const TagIndex &index() const { return m_index; }
    using QAbstractTableModel::index;

    const TagScope &scope() const { return m_scope; }
    void setScope(const TagScope &scope);
    const QString &filter() const { return m_filter; }
    void setFilter(const QString &text);

    /// Disables editing during other writes.
    void setLocked(bool isLocked) { m_isLocked = isLocked; }

    /// The font of addresses, and the colour of wrong ones.
    void setLook(const QFont &addressFont, const QColor &wrong, const QIcon &wrongIcon);

    /// -1 if the tag is not shown.
    int rowOf(int id) const;
    int idAt(int row) const { return m_ids.value(row, -1); }
    /// The tags shown, from top to bottom.
    const QVector<int> &ids() const { return m_ids; }

    /// How many rows were read so far.
    int fetchCount() const { return m_fetchCount; }

Q_SIGNALS:
    /// A change was refused; the sentence has the reason.
    void refused(const QString &reason);
    /// The tags of the project were read again.
    void reloaded();

private:
    struct Record
    {
        PlainTag tag;
        int access = 0;
        AddressVerdict verdict;
    };

    void reload();
    void refilter();
    void update(int id);
    const Record &record(int id) const;
    QString text(const Record &record, int column) const;
    QVariant appearance(const Record &record, int column, int role) const;

    ProjectSession &m_session;
    TagIndex m_index;
    TagScope m_scope;
    QString m_filter;
    QVector<int> m_ids;
    QFont m_addressFont;
    QColor m_wrong;
    QIcon m_wrongIcon;
    bool m_isLocked = false;
    mutable QCache<int, Record> m_records;
    mutable int m_fetchCount = 0;
};

#endif
