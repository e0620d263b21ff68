// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef TAG_EDITOR_CSVJOBS_H
#define TAG_EDITOR_CSVJOBS_H

#include "importplan.h"
#include "longjob.h"
#include "tagcsv.h"

#include <QFile>
#include <QSaveFile>
#include <QSet>

#include <memory>

class ProjectSession;

/// Adds the tags of a CSV file to the project and changes existing ones, all or none.
class ImportJob : public LongJob
{
    Q_OBJECT

public:
    ImportJob(ProjectSession &session, const QString &path, QObject *parent = nullptr);

    QString title() const override;

    /// The lines that prevent the import of the file.
    const QList<ImportPlan::Refusal> &refusals() const { return m_refusals; }

protected:
    bool begin() override;
    Step step() override;
    bool commit() override;
    void rollBack() override;
    int done() const override { return m_read + m_written; }
    int all() const override { return m_content.rows.size() + (m_plan ? m_plan->writeCount() : 0); }
    QString result() const override;

private:
    bool readFile();
    Step startWriting();

    ProjectSession &m_session;
    QString m_path;
    CsvContent m_content;
    TagColumns m_columns;
    std::unique_ptr<ImportPlan> m_plan;
    QList<ImportPlan::Refusal> m_refusals;
    int m_read = 0;
    int m_written = 0;
    bool m_isWriting = false;
};

/// Writes all tags of the project into a CSV file, which is created only when it is complete.
class ExportJob : public LongJob
{
    Q_OBJECT

public:
    ExportJob(ProjectSession &session, const QString &path, QObject *parent = nullptr);

    QString title() const override;

protected:
    bool begin() override;
    Step step() override;
    bool commit() override;
    void rollBack() override;
    int done() const override { return m_done; }
    int all() const override { return m_ids.size(); }
    QString result() const override;

private:
    ProjectSession &m_session;
    QSaveFile m_file;
    QList<int> m_ids;
    QSet<QString> m_names;
    int m_doubled = 0;
    int m_done = 0;
};

#endif
