// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_PROJECTFILES_STOREDTEXT_H
#define ZELMAR_LABEL_PROJECTFILES_STOREDTEXT_H

#include <QSqlDatabase>
#include <QString>

/// Predicts how a project's tag table stores a text: most declarations keep "D100" but store "007" as the number 7.
/// Uses a second database with the same declarations.
class StoredText
{
public:
    StoredText();
    ~StoredText();
    Q_DISABLE_COPY(StoredText)

    /// Copies the column declarations of `project`.
    void readColumns(const QSqlDatabase &project);

    QString name(const QString &text) const { return stored("name", text); }
    QString address(const QString &text) const { return stored("address", text); }

private:
    QString stored(const char *column, const QString &text) const;
    QSqlDatabase memory() const;

    QString m_connection;
};

#endif
