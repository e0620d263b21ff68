// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "output.h"

#include <QIODevice>
#include <QJsonArray>
#include <QJsonDocument>

#include <vector>

void Streams::print(const QString &line) const
{
    out.write(line.toUtf8() + '\n');
}

void Streams::complain(const QString &sentence) const
{
    err.write("zelmar-label: " + sentence.toUtf8() + '\n');
}

void Streams::print(const TextTable &table) const
{
    const QStringList lines = table.lines();
    for (const QString &line : lines) {
        if (colored && line.startsWith(QLatin1String("ok ")))
            print(QLatin1String("\033[32mok\033[0m") + line.mid(2));
        else if (colored && line.startsWith(QLatin1String("refused ")))
            print(QLatin1String("\033[31mrefused\033[0m") + line.mid(7));
        else
            print(line);
    }
}

QString counted(int count, const char *noun)
{
    const QLatin1String plural(count == 1 ? "" : "s");
    return QString::number(count) + QLatin1Char(' ') + QLatin1String(noun) + plural;
}

JsonLine &JsonLine::add(const char *key, const QJsonValue &value)
{
    // Qt can only write whole documents, and sorts the keys of objects.
    const QByteArray array = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
    if (!m_members.isEmpty())
        m_members += ',';
    m_members += '"';
    m_members += key;
    m_members += "\":" + array.mid(1, array.size() - 2);
    return *this;
}

QString JsonLine::text() const
{
    return QLatin1Char('{') + QString::fromUtf8(m_members) + QLatin1Char('}');
}

QStringList TextTable::lines() const
{
    std::vector<int> widths;
    for (const QStringList &row : m_rows) {
        widths.resize(qMax(widths.size(), static_cast<std::size_t>(row.size())));
        for (int column = 0; column + 1 < row.size(); ++column)
            widths[column] = qMax(widths[column], row.at(column).size());
    }
    QStringList lines;
    for (const QStringList &row : m_rows) {
        QString line;
        for (int column = 0; column < row.size(); ++column) {
            const bool isLast = column == row.size() - 1;
            line += isLast ? row.at(column) : row.at(column).leftJustified(widths[column] + 2);
        }
        lines.append(line);
    }
    return lines;
}
