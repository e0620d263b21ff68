// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TESTS_LIFECYCLETEST_H
#define ZELMAR_LABEL_TESTS_LIFECYCLETEST_H

#include "support/projectfixtures.h"

#include <QObject>
#include <QString>
#include <QTemporaryDir>
#include <QVariant>

#include <memory>

/// A test program for the lifetime of `TagSystem` objects and their databases. Each function starts without objects,
/// connections, current project and folder of stand-alone databases.
class LifecycleTest : public QObject
{
    Q_OBJECT

protected Q_SLOTS:
    void init();
    void cleanup();

protected:
    /// Connections.
    static const QString key;
    static const QString otherKey;
    static const QString compiling;

    static const QString allTables;

    /// Messages of the library.
    static const QString noProject;
    static const QString noConnection;
    static const QString notOpened;
    static const QString fileNotMade;
    static const QString noOpenDatabase;
    static const QString standAloneNotOpened;

    static void setCurrentProject(const QVariant &project);

    QString path(const char *fileName) const { return m_folder->filePath(QLatin1String(fileName)); }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<MessageRecorder> m_messages;
};

#endif
