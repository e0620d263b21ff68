// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_PATTERNPREFIX_P_H
#define ZELMAR_LABEL_PATTERNPREFIX_P_H

#include <QString>

#include <array>
#include <vector>

namespace label {

/// The known leading characters of every text that a pattern matches, read from the pattern's text. Most rows of a
/// device table begin with a fixed symbol; this rules out an address in nanoseconds, many times as fast as an
/// expression.
///
/// It only rules out: a pattern that it cannot read for sure rules out nothing.
class PatternPrefix
{
public:
    explicit PatternPrefix(const QString &pattern);

    /// True when no exact match of `text` is possible.
    bool rulesOutMatch(const QString &text) const
    {
        return text.size() < static_cast<int>(m_positions.size()) || rulesOutCompletion(text);
    }

    /// True when no text that begins with `text` can match.
    bool rulesOutCompletion(const QString &text) const;

    /// The number of leading characters of `text` that are not ruled out.
    int possibleFront(const QString &text) const;

    /// Number of known leading characters.
    int size() const { return static_cast<int>(m_positions.size()); }

private:
    class Parser;

    /// The characters allowed at one position; one flag for all beyond ASCII.
    struct Characters
    {
        std::array<quint64, 2> ascii = {};
        bool beyondAscii = false;

        bool contains(QChar character) const
        {
            const ushort code = character.unicode();
            return code < 128 ? ((ascii[code >> 6] >> (code & 63)) & 1) != 0 : beyondAscii;
        }
        void add(QChar character);
        void addRange(ushort first, ushort last);
        void addDigits();
        void addAll();
    };

    std::vector<Characters> m_positions;
};

} // namespace label

#endif
