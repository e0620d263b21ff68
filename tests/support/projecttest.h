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

/// The connection of the project that a fixture makes, and the name of a second one to the same file.
extern const QString key;
extern const QString otherKey;

extern const QString allRows;
extern const QString idsAndNames;

TagRow tag(int id, const QString &name, int connectorId = 0);

/// A test program whose functions have an empty project each, without a tag table. A message that the library shows and
/// the function does not take fails it.
class ProjectTest : public QObject
{
    Q_OBJECT

protected Q_SLOTS:
    void init();
    void cleanup();

protected:
    static TagSystem *bound();

    /// The names as the database has them at this moment for the connection of the tags.
    static QStringList reloaded();

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
    std::unique_ptr<MessageRecorder> m_messages;
};

#endif
