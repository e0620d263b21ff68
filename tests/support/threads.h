// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TESTS_THREADS_H
#define ZELMAR_LABEL_TESTS_THREADS_H

#include <QStringList>

#include <functional>
#include <mutex>

constexpr int threadCount = 8;

/// Runs `work` to its end on a new thread.
void inAnotherThread(const std::function<void()> &work);

/// Runs `task(number)` on `threadCount` threads at once, one of which is the main one.
void onAllThreads(const std::function<void(int)> &task);

/// Collects texts from all threads.
class Texts
{
public:
    void add(const QString &text);

    /// Adds the text if the result is wrong.
    void check(bool isRight, const QString &text);

    bool isEmpty() const;
    QStringList texts() const;

private:
    mutable std::mutex m_mutex;
    QStringList m_texts;
};

#endif
