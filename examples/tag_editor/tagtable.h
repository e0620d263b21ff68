// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef TAG_EDITOR_TAGTABLE_H
#define TAG_EDITOR_TAGTABLE_H

#include <QTableView>

QT_BEGIN_NAMESPACE
class QLabel;
QT_END_NAMESPACE

class ProjectSession;
class TagModel;

/// The tags in a table. If there are none, it shows the reason.
class TagTable : public QTableView
{
    Q_OBJECT

public:
    TagTable(ProjectSession &session, TagModel &model, QWidget *parent = nullptr);

    /// The id of the current tag; -1 for none.
    int currentTag() const;
    void selectTag(int id);
    void editCell(int column);

    /// The text over the empty table; empty while there are rows.
    QString hint() const;

Q_SIGNALS:
    void tagSelected(int id);

protected:
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;

private:
    void applyLook();
    void restore();
    void showHint();

    ProjectSession &m_session;
    TagModel &m_model;
    QLabel *m_hint;
    int m_current = -1;
};

#endif
