// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef TAG_EDITOR_LINKTREE_H
#define TAG_EDITOR_LINKTREE_H

#include "tagindex.h"

#include <QTreeWidget>

class ProjectSession;

/// The project's links with their stations. The selection sets which tags are shown.
class LinkTree : public QTreeWidget
{
    Q_OBJECT

public:
    explicit LinkTree(ProjectSession &session, QWidget *parent = nullptr);

    /// Shows how many tags each link has.
    void showCounts(const TagIndex &index);

    TagScope scope() const;

Q_SIGNALS:
    void scopeChanged(const TagScope &scope);

protected:
    void changeEvent(QEvent *event) override;

private:
    QTreeWidgetItem *addItem(QTreeWidgetItem *parent, const QString &title, const TagScope &scope);
    void fill();
    void applyColors();

    ProjectSession &m_session;
};

#endif
