// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/patterncomparison.h"

PatternComparison::PatternComparison(const QString &pattern)
    : m_pattern(pattern)
    , m_expression(pattern, Qt::CaseSensitive, QRegExp::RegExp)
{
}

QString PatternComparison::difference() const
{
    const QString none = QStringLiteral("no text");
    if (m_pattern.isValid() != m_expression.isValid())
        return sentence(QStringLiteral("isValid"), m_pattern.isValid(), m_expression.isValid(), none);
    if (m_expression.isValid() && m_pattern.countGroups() != m_expression.captureCount())
        return sentence(QStringLiteral("countGroups"), m_pattern.countGroups(), m_expression.captureCount(), none);
    return QString();
}

QString PatternComparison::difference(const QString &text)
{
    m_hasMatched = m_expression.exactMatch(text);
    if (m_pattern.matches(text) != m_hasMatched)
        return sentence(QStringLiteral("matches"), !m_hasMatched, m_hasMatched, text);
    const int front = m_hasMatched ? text.size() : m_expression.matchedLength();
    if (m_pattern.front(text) != front)
        return sentence(QStringLiteral("front"), m_pattern.front(text), front, text);
    return m_hasMatched && m_expression.captureCount() > 0 ? groupDifference(text) : QString();
}

QString PatternComparison::groupDifference(const QString &text)
{
    m_expression.indexIn(text);
    for (int group = 0; group <= m_expression.captureCount(); ++group) {
        const label::TextPlace place = m_pattern.group(group, text);
        const int size = m_expression.cap(group).size();
        if (place.size != size)
            return sentence(QStringLiteral("size of group %1").arg(group), place.size, size, text);
        const int start = size > 0 ? m_expression.pos(group) : place.start;
        if (place.start != start)
            return sentence(QStringLiteral("start of group %1").arg(group), place.start, start, text);
    }
    return QString();
}

QString PatternComparison::sentence(const QString &question, int own, int expected, const QString &text) const
{
    return QStringLiteral("pattern |%1| text |%2|: %3 is %4, and QRegExp says %5")
        .arg(m_pattern.text(), text, question, QString::number(own), QString::number(expected));
}
