// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef TAG_EDITOR_LONGJOB_H
#define TAG_EDITOR_LONGJOB_H

#include <QObject>
#include <QString>

/// Work in small steps on the main thread, where the library wants its tags written, with a window that stays alive
/// between them.
class LongJob : public QObject
{
    Q_OBJECT

public:
    explicit LongJob(QObject *parent = nullptr);

    /// Begins; `finished` comes later.
    void start();

    /// Stops before the next step and takes back what was done.
    void cancel();

    /// What is being done, for a progress bar.
    virtual QString title() const = 0;

Q_SIGNALS:
    void progress(int done, int all);
    /// `problem` is empty when all went well, and after a cancel.
    void finished(const QString &problem, const QString &result);

protected:
    enum class Step {
        More,
        Done,
        Failed, ///< `m_problem` says why
    };

    /// The first step. False, with `m_problem` set, when there is nothing to do.
    virtual bool begin() = 0;
    virtual Step step() = 0;
    /// Makes what was done last. False, with `m_problem` set, when that fails.
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
