// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TESTS_CUSTOMLABELSTEST_H
#define ZELMAR_LABEL_TESTS_CUSTOMLABELSTEST_H

#include "support/labelfixtures.h"
#include "support/labelstoremessages.h"

#include "zelmar_label/label_store/labelstore.h"
#include "zelmar_label/label_table/labelinterface.h"

#include <QObject>
#include <QSet>
#include <QString>
#include <QStringList>

extern const QString customConnection;
/// The statement that makes the index of the custom database, and one that reads it.
extern const QString indexStatement;
extern const QString allOfIndex;

/// A test program for custom labels. Each function makes a new database.
class CustomLabelsTest : public QObject
{
    Q_OBJECT

protected Q_SLOTS:
    void cleanup();

protected:
    bool setup(const QString &name);

    /// A custom label that `cleanup` frees; m_error stays "untouched" when the store does not write to it.
    label::LabelInterface *build(const QString &name);

    static QString customPath();

    /// Runs statements on the custom database, which is made if it is missing.
    static void changeCustomDatabase(const QStringList &statements);
    static QStringList customRows(const QString &statement);
    static QStringList customTables();

    static Driver driver(const QString &name, int blockSize = 120, int bitBlockSize = 960, const QString &tables = {});

    /// The values of a device row, in the order of a custom device table.
    static QString deviceRow(const char *table, const char *pattern, const char *symbol);

    static bool isConnectionOpen();

    /// True for the line that names the failed step of `operation`.
    static bool isFailureLine(const QString &line, const char *operation);

    QString m_error;

private:
    QSet<QString> m_names;
};

/// A process reads once which drivers use their custom label, so each new reading needs a new process. Its steps are
/// "use NAME", "setup NAME", "default NAME", "remove PATH" and "rename FROM>TO"; the result has a word for each step.
/// Such a program has `runTestOrSteps` as its `main`.
QString inAFreshProcess(const QStringList &steps);
int runTestOrSteps(QObject &test, int argc, char *argv[]);

#endif
