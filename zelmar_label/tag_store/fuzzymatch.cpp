// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/tag_store/fuzzymatch_p.h"

namespace label {

namespace {

// Expressions compare character by character in lower case; a surrogate is a character of its own.
inline ushort folded(QChar character)
{
    const ushort code = character.unicode();
    if (code < 128)
        return code >= 'A' && code <= 'Z' ? static_cast<ushort>(code + ('a' - 'A')) : code;
    return character.toLower().unicode();
}

} // namespace

FuzzyMatch::FuzzyMatch(const QString &text)
{
    m_folded.reserve(text.size());
    for (int at = 0; at < text.size(); ++at) {
        m_folded.append(QChar(folded(text.at(at))));
        if (text.at(at) != QLatin1Char('\\') || at + 1 == text.size())
            m_pieceEnds.push_back(at + 1);
    }
}

bool FuzzyMatch::followsAt(const QString &name, int at, int first, int end) const
{
    if (at + (end - first) > name.size())
        return false;
    for (int i = first; i < end; ++i, ++at) {
        if (folded(name.at(at)) != m_folded.at(i).unicode())
            return false;
    }
    return true;
}

bool FuzzyMatch::matches(const QString &name) const
{
    if (m_pieceEnds.empty())
        return false;
    int at = 0;
    int first = 0;
    for (const int end : m_pieceEnds) {
        while (at < name.size() && !followsAt(name, at, first, end))
            ++at;
        if (at >= name.size())
            return false;
        at += end - first;
        first = end;
    }
    return true;
}

QStringList FuzzyMatch::filter(const QStringList &names) const
{
    QStringList found;
    for (const QString &name : names) {
        if (matches(name))
            found.append(name);
    }
    return found;
}

} // namespace label
