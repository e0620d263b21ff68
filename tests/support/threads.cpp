// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/threads.h"

#include <atomic>
#include <thread>
#include <vector>

namespace {

/// Releases all threads at the same moment.
class StartLine
{
public:
    void wait()
    {
        ++m_waiting;
        while (m_waiting < threadCount)
            std::this_thread::yield();
    }

private:
    std::atomic<int> m_waiting{0};
};

} // namespace

void inAnotherThread(const std::function<void()> &work)
{
    std::thread(work).join();
}

void onAllThreads(const std::function<void(int)> &task)
{
    StartLine start;
    std::vector<std::thread> threads;
    for (int i = 1; i < threadCount; ++i) {
        threads.emplace_back([&start, &task, i] {
            start.wait();
            task(i);
        });
    }
    start.wait();
    task(0);
    for (std::thread &thread : threads)
        thread.join();
}

void Texts::add(const QString &text)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_texts.append(text);
}

void Texts::check(bool isRight, const QString &text)
{
    if (!isRight)
        add(text);
}

bool Texts::isEmpty() const
{
    return texts().isEmpty();
}

QStringList Texts::texts() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_texts;
}
