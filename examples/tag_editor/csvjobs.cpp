// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "csvjobs.h"

#include "counts.h"
#include "projectsession.h"

#include <zelmar_label/tag_store/tagsystem.h>

#include <QFileInfo>

ImportJob::ImportJob(ProjectSession &session, const QString &path, QObject *parent)
    : LongJob(parent)
    , m_session(session)
    , m_path(path)
{
}

QString ImportJob::title() const
{
    return tr("Import of %1").arg(QFileInfo(m_path).fileName());
}

bool ImportJob::readFile()
{
    QFile file(m_path);
    if (!file.open(QIODevice::ReadOnly)) {
        m_problem = tr("%1 cannot be read: %2.").arg(m_path, file.errorString());
        return false;
    }
    m_content = readCsv(file);
    QString error = m_content.error;
    int line = m_content.errorLine;
    if (error.isEmpty() && m_content.rows.isEmpty()) {
        error = tr("the line of column names is missing");
        line = 1;
    } else if (error.isEmpty()) {
        const CsvRow header = m_content.rows.takeFirst();
        line = header.line;
        m_columns.read(header, error);
    }
    if (!error.isEmpty())
        m_problem = tr("%1, line %2: %3.").arg(m_path).arg(line).arg(error);
    return error.isEmpty();
}

bool ImportJob::begin()
{
    if (!readFile())
        return false;
    m_problem = m_session.begin();
    if (!m_problem.isEmpty())
        return false;
    m_plan = std::make_unique<ImportPlan>(m_session.tags(),
                                          [this](int linkId, int dataType, const QString &address, int scale) {
                                              return m_session.judge().judge(linkId, dataType, address, scale).reason;
                                          });
    QString error;
    if (m_plan->readKnownTags(m_session.database(), error))
        return true;
    m_problem = tr("The tags of the project cannot be read (%1).").arg(error);
    return false;
}

LongJob::Step ImportJob::startWriting()
{
    m_isWriting = true;
    m_refusals = m_plan->refusals();
    if (m_refusals.isEmpty())
        return Step::More;
    m_problem = counted(m_refusals.size(), tr("1 line is refused; nothing is imported."),
                        tr("%1 lines are refused; nothing is imported."));
    return Step::Failed;
}

LongJob::Step ImportJob::step()
{
    if (m_read < m_content.rows.size()) {
        m_plan->readRow(m_columns, m_content.rows.at(m_read++));
        return Step::More;
    }
    if (!m_isWriting)
        return startWriting();
    if (m_written == m_plan->writeCount())
        return Step::Done;
    if (m_plan->write(m_written++))
        return Step::More;
    m_problem = tr("The project refuses a tag; nothing is imported.");
    return Step::Failed;
}

bool ImportJob::commit()
{
    m_problem = m_session.commit();
    return m_problem.isEmpty();
}

void ImportJob::rollBack()
{
    m_session.rollBack();
}

QString ImportJob::result() const
{
    return tr("%1: %2 added, %3 changed, %4 unchanged.")
        .arg(title(), QString::number(m_plan->added()), QString::number(m_plan->changed()),
             QString::number(m_plan->unchanged()));
}

ExportJob::ExportJob(ProjectSession &session, const QString &path, QObject *parent)
    : LongJob(parent)
    , m_session(session)
    , m_file(path)
{
}

QString ExportJob::title() const
{
    return tr("Export to %1").arg(QFileInfo(m_file.fileName()).fileName());
}

bool ExportJob::begin()
{
    if (!m_file.open(QIODevice::WriteOnly)) {
        m_problem = tr("%1 cannot be written: %2.").arg(m_file.fileName(), m_file.errorString());
        return false;
    }
    m_ids = m_session.tags().getTagIDList();
    m_file.write(tagCsvHeader());
    return true;
}

LongJob::Step ExportJob::step()
{
    if (m_done == m_ids.size())
        return Step::Done;
    const PlainTag tag = plainTag(m_session.tags(), m_ids.at(m_done++));
    if (m_names.contains(tag.name))
        ++m_doubled;
    m_names.insert(tag.name);
    m_file.write(tagCsvLine(m_session.tags(), tag));
    return Step::More;
}

bool ExportJob::commit()
{
    if (m_file.commit())
        return true;
    m_problem = tr("%1 cannot be written: %2.").arg(m_file.fileName(), m_file.errorString());
    return false;
}

void ExportJob::rollBack()
{
    m_file.cancelWriting();
}

QString ExportJob::result() const
{
    const QString written = tr("%1: %2.").arg(title(), counted(m_ids.size(), tr("1 tag"), tr("%1 tags")));
    return m_doubled == 0 ? written
                          : written + QLatin1Char(' ') +
                                counted(m_doubled, tr("1 name is used more than once; an import uses only the first."),
                                        tr("%1 names are used more than once; an import uses only the first."));
}
