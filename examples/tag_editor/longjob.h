// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef TAG_EDITOR_LONGJOB_H
#define TAG_EDITOR_LONGJOB_H

#include <QObject>
#include <QString>

/// Work in small steps on the main thread, where tags must be written. The window stays responsive between the steps.
class LongJob : public QObject
{
    Q_OBJECT

public:
    explicit LongJob(QObject *parent = nullptr);

    /// Starts the job; `finished` is emitted later.
    void start();

    /// Cancels before the next step and undoes the job.
    void cancel();

    /// The current work, for a progress bar.
    virtual QString title() const = 0;

Q_SIGNALS:
    void progress(int done, int all);
    /// `problem` is empty on success, and after a cancel.
    void finished(const QString &problem, const QString &result);

protected:
    enum class Step {
        More,
        Done,
        Failed, ///< `m_problem` has the reason
    };

    /// The first step. False, with `m_problem` set, if there is nothing to do.
    virtual bool begin() = 0;
    virtual Step step() = 0;
    /// Commits the work. False, with `m_problem` set, if that fails.
    virtual bool commit() = 0;
    virtual void rollBack() = 0;
    virtual int done() const = 0;
    virtual int all() const = 0;
    virtual QString result() const = 0;

    QString m_problem;

private:
    void run();
    void end(bool isDone);

    bool m_hasBegun = false;
    bool m_isCancelled = false;
};

#endif
