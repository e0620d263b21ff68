// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "nextwrongjob.h"

#include "projectsession.h"

NextWrongJob::NextWrongJob(const ProjectSession &session, const QVector<int> &ids, int row, QObject *parent)
    : LongJob(parent)
    , m_session(session)
    , m_ids(ids)
    , m_row(row)
{
}

QString NextWrongJob::title() const
{
    return tr("Looking for the next invalid address");
}

LongJob::Step NextWrongJob::step()
{
    if (m_done == m_ids.size())
        return Step::Done;
    const int id = m_ids.at((m_row + 1 + m_done++) % m_ids.size());
    if (m_session.verdict(id, m_session.tag(id)).isAccepted())
        return Step::More;
    m_found = id;
    return Step::Done;
}

QString NextWrongJob::result() const
{
    return m_found < 0 ? tr("All addresses shown are valid.") : QString();
}
