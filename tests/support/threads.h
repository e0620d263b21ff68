// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TESTS_THREADS_H
#define ZELMAR_LABEL_TESTS_THREADS_H

#include <QStringList>

#include <functional>
#include <mutex>

constexpr int threadCount = 8;

/// Runs `work` on a thread of its own, to its end.
void inAnotherThread(const std::function<void()> &work);

/// Runs `task(number)` on `threadCount` threads at once, one of which is the main one.
void onAllThreads(const std::function<void(int)> &task);

/// Texts from all threads.
class Texts
{
public:
    void add(const QString &text);

    /// Adds the text unless it is right.
    void check(bool isRight, const QString &text);

    bool isEmpty() const;
    QStringList texts() const;

private:
    mutable std::mutex m_mutex;
    QStringList m_texts;
};

#endif
