// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef TAG_EDITOR_NEXTWRONGJOB_H
#define TAG_EDITOR_NEXTWRONGJOB_H

#include "longjob.h"

#include <QVector>

class ProjectSession;

/// Finds the next tag with an invalid address. Each tag needs a check by its device. With very many tags this takes
/// longer than a window may be unresponsive.
class NextWrongJob : public LongJob
{
    Q_OBJECT

public:
    /// Starts after `row` of `ids`, and continues at the top after the last.
    NextWrongJob(const ProjectSession &session, const QVector<int> &ids, int row, QObject *parent = nullptr);

    QString title() const override;

    /// -1 if there is none, or none was found yet.
    int found() const { return m_found; }

protected:
    bool begin() override { return true; }
    Step step() override;
    bool commit() override { return true; }
    void rollBack() override {}
    int done() const override { return m_done; }
    int all() const override { return m_ids.size(); }
    QString result() const override;

private:
    const ProjectSession &m_session;
    const QVector<int> m_ids;
    const int m_row;
    int m_done = 0;
    int m_found = -1;
};

#endif
