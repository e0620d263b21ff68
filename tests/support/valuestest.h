// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TESTS_VALUESTEST_H
#define ZELMAR_LABEL_TESTS_VALUESTEST_H

#include "support/logrecorder.h"
#include "support/projectfixtures.h"
#include "support/projecttest.h"

#include "zelmar_label/tag_store/tagsystem.h"

#include <QList>
#include <QObject>
#include <QTemporaryDir>

#include <memory>

TagRow tag(int id, int type, int scale = 1);

/// A test program for tag values. Its functions share one project; a message or log line that a function does not take
/// fails it.
class ValuesTest : public QObject
{
    Q_OBJECT

protected Q_SLOTS:
    void init();
    void cleanup();
    void cleanupTestCase();

protected:
    /// Makes the project, of these tags.
    void bindTo(const QList<TagRow> &rows);

    TagSystem *m_tags = nullptr;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<MessageRecorder> m_messages;
    std::unique_ptr<LogRecorder> m_log;
};

#endif
