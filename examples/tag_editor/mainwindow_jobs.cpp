// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "mainwindow.h"

#include "csvjobs.h"
#include "listpanels.h"
#include "messagebar.h"
#include "nextwrongjob.h"
#include "tagmodel.h"

#include <QFileDialog>
#include <QLabel>
#include <QProgressBar>
#include <QTimer>
#include <QToolButton>

namespace {

constexpr int shortWorkInMilliseconds = 100;

/// A dialog that does not block the program.
QFileDialog *fileDialog(QWidget *parent, const QString &title, const QString &filter, QFileDialog::AcceptMode mode)
{
    auto *const dialog = new QFileDialog(parent, title);
    dialog->setObjectName(QStringLiteral("fileDialog"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(mode);
    dialog->setFileMode(mode == QFileDialog::AcceptOpen ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
    dialog->setNameFilters({filter, QFileDialog::tr("All Files (*)")});
    return dialog;
}

} // namespace

bool MainWindow::openProject(const QString &path)
{
    if (!isReady() || !report(m_session.open(path)))
        return false;
    const QString warning = m_session.reservedIdWarning();
    if (!warning.isEmpty())
        m_messages->show(MessageBar::Kind::Problem, warning);
    return true;
}

bool MainWindow::openSample(const QString &path)
{
    return isReady() && report(m_session.openSample(path));
}

void MainWindow::chooseProject()
{
    QFileDialog *const dialog =
        fileDialog(this, tr("Open a project"), tr("Projects (*.db *.sqlite)"), QFileDialog::AcceptOpen);
    connect(dialog, &QFileDialog::fileSelected, this, &MainWindow::openProject);
    dialog->open();
}

void MainWindow::chooseSample()
{
    openSample();
}

void MainWindow::chooseImport()
{
    QFileDialog *const dialog =
        fileDialog(this, tr("Import tags"), tr("Comma-separated values (*.csv)"), QFileDialog::AcceptOpen);
    connect(dialog, &QFileDialog::fileSelected, this, &MainWindow::importFrom);
    dialog->open();
}

void MainWindow::chooseExport()
{
    QFileDialog *const dialog =
        fileDialog(this, tr("Export tags"), tr("Comma-separated values (*.csv)"), QFileDialog::AcceptSave);
    dialog->setDefaultSuffix(QStringLiteral("csv"));
    connect(dialog, &QFileDialog::fileSelected, this, &MainWindow::exportTo);
    dialog->open();
}

void MainWindow::importFrom(const QString &path)
{
    if (isReady() && m_session.isOpen())
        start(new ImportJob(m_session, path, this));
}

void MainWindow::exportTo(const QString &path)
{
    if (isReady() && m_session.isOpen())
        start(new ExportJob(m_session, path, this));
}

bool MainWindow::report(const QString &problem)
{
    if (problem.isEmpty())
        m_messages->clear();
    else
        m_messages->show(MessageBar::Kind::Problem, problem);
    return problem.isEmpty();
}

bool MainWindow::isReady()
{
    return report(m_job ? tr("%1 is still running; Escape stops it.").arg(m_job->title()) : QString());
}

/// Also true without a project: there is nothing to edit then.
bool MainWindow::mayEdit()
{
    return isReady() && report(m_session.isOpen() ? m_session.refusalToWrite() : QString());
}

void MainWindow::start(LongJob *job)
{
    m_job = job;
    m_model->setLocked(true);
    m_jobTitle->setText(job->title());
    connect(job, &LongJob::progress, this, [this](int done, int all) {
        m_progress->setRange(0, all);
        m_progress->setValue(done);
    });
    connect(job, &LongJob::finished, this, &MainWindow::finish);
    // A very short job would only flicker.
    QTimer::singleShot(shortWorkInMilliseconds, job, [this, job] { setProgressVisible(job == m_job); });
    job->start();
}

void MainWindow::setProgressVisible(bool isVisible)
{
    m_jobTitle->setVisible(isVisible);
    m_progress->setVisible(isVisible);
    m_cancel->setVisible(isVisible);
}

void MainWindow::finish(const QString &problem, const QString &result)
{
    const auto *const search = qobject_cast<NextWrongJob *>(m_job);
    const int wrong = search ? search->found() : -1;
    const auto *const import = qobject_cast<ImportJob *>(m_job);
    const QList<ImportPlan::Refusal> refusals = import ? import->refusals() : QList<ImportPlan::Refusal>();
    m_job->deleteLater();
    m_job = nullptr;
    m_model->setLocked(false);
    setProgressVisible(false);
    if (report(problem))
        m_messages->show(MessageBar::Kind::Done, result);
    if (wrong >= 0)
        showWrong(wrong);
    if (refusals.isEmpty())
        return;
    m_report->show(refusals);
    showReport();
}
