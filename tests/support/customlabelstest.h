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

/// A test program of the labels that drivers have of their own, in a database that each function makes anew.
class CustomLabelsTest : public QObject
{
    Q_OBJECT

protected Q_SLOTS:
    void cleanup();

protected:
    bool setup(const QString &name);

    /// A custom label that `cleanup` frees; "untouched" stands in m_error when the store left the text alone.
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

    /// True for the line that names the step of `operation` that failed.
    static bool isFailureLine(const QString &line, const char *operation);

    QString m_error;

private:
    QSet<QString> m_names;
};

/// Which drivers use their custom label is read once in a process; so a fresh look takes a fresh process. Its steps are
/// "use NAME", "setup NAME", "default NAME", "remove PATH" and "rename FROM>TO"; the result has a word for each step.
/// Such a program has `runTestOrSteps` as its `main`.
QString inAFreshProcess(const QStringList &steps);
int runTestOrSteps(QObject &test, int argc, char *argv[]);

#endif
