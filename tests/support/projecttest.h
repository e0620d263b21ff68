// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TESTS_PROJECTTEST_H
#define ZELMAR_LABEL_TESTS_PROJECTTEST_H

#include "support/projectfixtures.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>

class TagSystem;

/// The connection of a fixture's project, and the name of a second one to the same file.
extern const QString key;
extern const QString otherKey;

extern const QString allRows;
extern const QString idsAndNames;

TagRow tag(int id, const QString &name, int connectorId = 0);

/// A test program in which each function has an empty project without a tag table. A message of the library that the
/// function does not take fails it.
class ProjectTest : public QObject
{
    Q_OBJECT

protected Q_SLOTS:
    void init();
    void cleanup();

protected:
    static TagSystem *bound();

    /// The current names in the database on the connection of the tags.
    static QStringList reloaded();

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
    std::unique_ptr<MessageRecorder> m_messages;
};

#endif
