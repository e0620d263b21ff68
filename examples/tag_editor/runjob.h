// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef TAG_EDITOR_RUNJOB_H
#define TAG_EDITOR_RUNJOB_H

#include "longjob.h"
#include "tagrun.h"

class ProjectSession;

/// Adds a run of tags, all or none.
class RunJob : public LongJob
{
    Q_OBJECT

public:
    RunJob(ProjectSession &session, const RunSettings &settings, QObject *parent = nullptr);

    QString title() const override;

protected:
    bool begin() override;
    Step step() override;
    bool commit() override;
    void rollBack() override;
    int done() const override { return m_done; }
    int all() const override { return m_settings.total; }
    QString result() const override;

private:
    ProjectSession &m_session;
    RunSettings m_settings;
    TagRun m_run;
    int m_done = 0;
};

#endif
