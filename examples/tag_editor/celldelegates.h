// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef TAG_EDITOR_CELLDELEGATES_H
#define TAG_EDITOR_CELLDELEGATES_H

#include <QStyledItemDelegate>

class ProjectSession;

/// Edits an address cell with the library's picker, and the cell of an internal tag as plain text.
class AddressDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit AddressDelegate(ProjectSession &session, QObject *parent = nullptr);

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    void setEditorData(QWidget *editor, const QModelIndex &index) const override;
    void setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const override;
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    void finish(QWidget *editor);

    ProjectSession &m_session;
};

/// Edits a data type cell with a choice from the library's list.
class TypeDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit TypeDelegate(ProjectSession &session, QObject *parent = nullptr);

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    void setEditorData(QWidget *editor, const QModelIndex &index) const override;
    void setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const override;

private:
    ProjectSession &m_session;
};

#endif
