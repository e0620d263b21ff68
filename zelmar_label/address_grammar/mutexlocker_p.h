// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_MUTEXLOCKER_P_H
#define ZELMAR_LABEL_MUTEXLOCKER_P_H

#include <QtGlobal>

#if defined(__SANITIZE_THREAD__)
#include <sanitizer/tsan_interface.h>
#endif

namespace label {

/// Locks a Qt mutex. Unlike `QMutexLocker` it informs the thread sanitizer, which does not see into Qt's libraries and
/// would report each waiting thread as a race.
template<typename Mutex>
class MutexLocker
{
public:
    explicit MutexLocker(Mutex *mutex)
        : m_mutex(mutex)
    {
        m_mutex->lock();
#if defined(__SANITIZE_THREAD__)
        __tsan_acquire(m_mutex);
#endif
    }
    ~MutexLocker()
    {
        unlock();
    }
    Q_DISABLE_COPY(MutexLocker)

    /// Unlocks before the end of the scope.
    void unlock()
    {
        if (!m_mutex)
            return;
#if defined(__SANITIZE_THREAD__)
        __tsan_release(m_mutex);
#endif
        m_mutex->unlock();
        m_mutex = nullptr;
    }

private:
    Mutex *m_mutex;
};

} // namespace label

#endif
