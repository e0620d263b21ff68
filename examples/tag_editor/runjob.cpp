// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "runjob.h"

#include "counts.h"
#include "projectsession.h"

#include <zelmar_label/tag_store/tagsystem.h>

RunJob::RunJob(ProjectSession &session, const RunSettings &settings, QObject *parent)
    : LongJob(parent)
    , m_session(session)
    , m_settings(settings)
{
}

QString RunJob::title() const
{
    return counted(m_settings.total, tr("Adding 1 tag"), tr("Adding %1 tags"));
}

bool RunJob::begin()
{
    m_run = planRun(m_session, m_settings, m_settings.total);
    m_problem = m_run.problem.isEmpty() ? m_session.begin() : m_run.problem;
    return m_problem.isEmpty();
}

LongJob::Step RunJob::step()
{
    if (m_done == m_run.names.size())
        return Step::Done;
    const QString name = m_run.names.at(m_done);
    if (m_session.tags().addTag(name, m_run.addresses.at(m_done), m_settings.link, m_settings.dataType,
                                m_settings.scale)) {
        ++m_done;
        return Step::More;
    }
    m_problem = tr("\"%1\" could not be added; the run is not added.").arg(name);
    return Step::Failed;
}

bool RunJob::commit()
{
    m_problem = m_session.commit();
    return m_problem.isEmpty();
}

void RunJob::rollBack()
{
    m_session.rollBack();
}

QString RunJob::result() const
{
    return counted(m_run.names.size(), tr("1 tag is added"), tr("%1 tags are added")) +
           tr(", from %1 to %2.").arg(m_run.names.constFirst(), m_run.names.constLast());
}
