// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_PROJECTFILES_STOREDTEXT_H
#define ZELMAR_LABEL_PROJECTFILES_STOREDTEXT_H

#include <QSqlDatabase>
#include <QString>

/// Tells what a project's tag table would make of a text: most are declared such that the database keeps "D100", but
/// stores "007" as the number 7. Asks the database itself, beside the project.
class StoredText
{
public:
    StoredText();
    ~StoredText();
    Q_DISABLE_COPY(StoredText)

    /// Takes over how the columns are declared in `project`.
    void readColumns(const QSqlDatabase &project);

    QString name(const QString &text) const { return stored("name", text); }
    QString address(const QString &text) const { return stored("address", text); }

private:
    QString stored(const char *column, const QString &text) const;
    QSqlDatabase memory() const;

    QString m_connection;
};

#endif
