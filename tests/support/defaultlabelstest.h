// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TESTS_DEFAULTLABELSTEST_H
#define ZELMAR_LABEL_TESTS_DEFAULTLABELSTEST_H

#include "support/labelfixtures.h"
#include "support/labelstoremessages.h"

#include "zelmar_label/label_store/labelstore.h"
#include "zelmar_label/label_table/labelloader.h"

#include <QList>
#include <QObject>
#include <QSet>
#include <QString>
#include <QStringList>

/// A test program for labels from the driver database. Each function makes its own database.
class DefaultLabelsTest : public QObject
{
    Q_OBJECT

protected Q_SLOTS:
    void cleanup();

protected:
    /// A label that `cleanup` frees; m_error stays "untouched" when the store does not write to it.
    label::LabelInterface *build(const QString &name);

    /// The error for a driver whose entry cannot be read.
    static QString failure(const QString &name);

    static Row row(const char *pattern, int type, const char *symbol, const char *rule = "");

    /// A driver with its own table names.
    static Driver driver(const QString &name, const QList<Row> &rows, const QString &tables = QStringLiteral("a"));

    static void writeDatabase(const QList<Driver> &drivers);

    /// A database made only by statements, for tables of unusual form.
    static void writeStatements(const QStringList &statements);

    static bool isConnectionOpen();

    static label::LabelLoader *loader(label::LabelInterface *made);

    QString m_error;

private:
    QSet<QString> m_built;
};

#endif
