// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/label_table/addressrepair_p.h"

#include "zelmar_label/address_grammar/commandformatter.h"
#include "zelmar_label/label_table/characterslip_p.h"

#include <algorithm>
#include <queue>
#include <vector>

namespace label {

namespace {

// The costs of typing errors.
constexpr int costOfCase = 1;
constexpr int costOfBlank = 1;
constexpr int costOfZeros = 1;
constexpr int costOfLookAlike = 2;
constexpr int costOfOtherSeparator = 3;
constexpr int costOfMissingSeparator = 4;
constexpr int costOfTransposition = 4;
constexpr int costOfWrongDigit = 5;
constexpr int costOfMissingDigit = 6;
constexpr int costOfExtraCharacter = 7;
constexpr int costOfExtraEnd = 9;
constexpr int mostCost = 16;

bool isAsciiDigit(QChar character)
{
    return character >= QLatin1Char('0') && character <= QLatin1Char('9');
}

QChar inOtherCase(QChar character)
{
    return character.isUpper() ? character.toLower() : character.toUpper();
}

/// Matches a text with a row and, where it leaves the row, tries corrections, the most likely first.
class Repairer
{
public:
    Repairer(const CommandFormatter &row, const QString &text)
        : m_row(row)
        , m_text(text)
    {
    }

    QList<Repair> run()
    {
        const QString shorter = withoutZerosAt(std::min(m_row.matchedFront(m_text), m_text.size()));
        if (m_row.isDeviceAddressValid(shorter))
            found({shorter, costOfZeros});
        push(QString(), 0, 0);
        // This many steps find likely corrections; more would be guesses.
        constexpr int mostSteps = 24;
        constexpr int mostRepairs = 2;
        for (int step = 0; step < mostSteps && !m_open.empty() && m_found.size() < mostRepairs; ++step) {
            const State state = m_open.top();
            m_open.pop();
            follow(state);
        }
        return m_found;
    }

private:
    struct State
    {
        QString built;
        int next;
        int cost;
        int order;

        bool operator<(const State &other) const
        {
            return cost != other.cost ? cost > other.cost : order > other.order;
        }
    };

    /// The text without the leading zeros of the number at the position where it leaves the row.
    QString withoutZerosAt(int place) const
    {
        int start = place;
        while (start > 0 && m_text.at(start - 1).isDigit())
            --start;
        int end = start;
        while (end + 1 < m_text.size() && m_text.at(end) == QLatin1Char('0') && m_text.at(end + 1).isDigit())
            ++end;
        return m_text.left(start) + m_text.mid(end);
    }

    void push(const QString &built, int next, int cost)
    {
        if (cost <= mostCost)
            m_open.push({built, next, cost, m_order++});
    }

    void pushIfPossible(const QString &built, int next, int cost)
    {
        if (cost <= mostCost && m_row.canBeCompleted(built))
            push(built, next, cost);
    }

    void follow(const State &state)
    {
        const QString whole = state.built + m_text.mid(state.next);
        const int reach = m_row.matchedFront(whole);
        if (reach > whole.size()) {
            if (m_row.isDeviceAddressValid(whole))
                found({whole, state.cost});
            return;
        }
        const int followed = std::max(0, reach - state.built.size());
        const int next = state.next + followed;
        const QString built = state.built + m_text.mid(state.next, followed);
        if (next >= m_text.size())
            appendMissing(built, next, state.cost);
        else
            mend(built, next, state.cost);
    }

    void found(const Repair &repair)
    {
        const bool isKnown = std::any_of(m_found.begin(), m_found.end(),
                                         [&](const Repair &one) { return one.address == repair.address; });
        if (!isKnown)
            m_found.append(repair);
    }

    void mend(const QString &built, int next, int cost)
    {
        const QChar character = m_text.at(next);
        if (isBlank(character)) {
            push(built, next + 1, cost + costOfBlank);
            return;
        }
        if (character.isLetter())
            pushIfPossible(built + inOtherCase(character), next + 1, cost + costOfCase);
        if (!isInWord(next)) {
            for (const QChar meant : lookAlikes(character))
                pushIfPossible(built + meant, next + 1, cost + costOfLookAlike);
        }
        if (isAsciiDigit(character))
            pushNearestDigit(built, next, cost);
        const bool isDivider = isSeparator(character) || character.isPunct();
        for (const char separator : {'.', ':', '/', '\\'}) {
            if (isDivider)
                pushIfPossible(built + QLatin1Char(separator), next + 1, cost + costOfOtherSeparator);
            else
                pushIfPossible(built + QLatin1Char(separator), next, cost + costOfMissingSeparator);
        }
        const bool isBeforeDigit = next + 1 < m_text.size() && m_text.at(next + 1).isDigit();
        // Two numbers are not joined into one.
        if (!isDivider || !isBeforeDigit || built.isEmpty() || !built.back().isDigit())
            push(built, next + 1, cost + costOfExtraCharacter);
        if (!isDivider && !isBeforeDigit)
            pushIfPossible(built + QLatin1Char('0'), next + 1, cost + costOfExtraEnd);
        push(built, m_text.size(), cost + costOfExtraEnd);
    }

    /// True for a letter followed by a letter that does not look like a digit: "TIM5" has no 1 in it.
    bool isInWord(int place) const
    {
        return m_text.at(place).isLetter() && place + 1 < m_text.size() && m_text.at(place + 1).isLetter() &&
               lookAlikes(m_text.at(place + 1)).isEmpty();
    }

    /// The digits that the row allows instead of this one, nearest first; of two equally near, the lower first.
    QString digitsNear(QChar digit, const QString &front) const
    {
        QString near;
        const auto add = [&](int other) {
            const QChar character = QLatin1Char(static_cast<char>('0' + other));
            if (other >= 0 && other < 10 && m_row.canBeCompleted(front + character))
                near.append(character);
        };
        for (int distance = 1; distance < 10; ++distance) {
            add(digit.digitValue() - distance);
            add(digit.digitValue() + distance);
        }
        return near;
    }

    void pushNearestDigit(const QString &built, int next, int cost)
    {
        const QString near = cost + costOfWrongDigit <= mostCost ? digitsNear(m_text.at(next), built) : QString();
        if (!near.isEmpty())
            push(built + near.at(0), next + 1, cost + costOfWrongDigit);
    }

    /// A text that can continue, with another last digit: an even number for an odd one.
    void findOtherLastDigit(const QString &built, int cost)
    {
        if (built.isEmpty() || !isAsciiDigit(built.back()) || cost + costOfWrongDigit > mostCost)
            return;
        const QString front = built.left(built.size() - 1);
        for (const QChar digit : digitsNear(built.back(), front)) {
            if (!m_row.isDeviceAddressValid(front + digit))
                continue;
            found({front + digit, cost + costOfWrongDigit});
            return;
        }
    }

    void appendMissing(const QString &built, int next, int cost)
    {
        findOtherLastDigit(built, cost);
        for (const char separator : {'.', ':', '/', '\\'})
            pushIfPossible(built + QLatin1Char(separator), next, cost + costOfMissingDigit);
        // For numbers from 1.
        constexpr int costOfOne = costOfMissingDigit + muchUnlikelier + 1;
        pushIfPossible(built + QLatin1Char('0'), next, cost + costOfMissingDigit);
        pushIfPossible(built + QLatin1Char('1'), next, cost + costOfOne);
    }

    const CommandFormatter &m_row;
    const QString m_text;
    std::priority_queue<State> m_open;
    QList<Repair> m_found;
    int m_order = 0;
};

/// The cost of reading the first `size` characters of `text` as `symbol`; 0 for more than one typing error.
int costOfSymbol(const QString &text, int size, const QString &symbol)
{
    int same = 0;
    while (same < size && same < symbol.size() && text.at(same) == symbol.at(same))
        ++same;
    if (same == size && same == symbol.size())
        return 0;
    const auto tailEquals = [&](int textFrom, int symbolFrom) {
        return QStringView(text).mid(textFrom, size - textFrom) == QStringView(symbol).mid(symbolFrom);
    };
    if (size == symbol.size() && same + 1 < size && text.at(same) == symbol.at(same + 1) &&
        text.at(same + 1) == symbol.at(same) && tailEquals(same + 2, same + 2))
        return costOfTransposition;
    if (size == symbol.size() + 1 && tailEquals(same + 1, same))
        return costOfExtraCharacter;
    // A symbol of one letter would leave nothing.
    if (symbol.size() < 2)
        return 0;
    if (size == symbol.size() - 1 && tailEquals(same, same + 1))
        return costOfExtraCharacter;
    // A digit belongs to the number.
    const bool isLetterWrong = same < size && !text.at(same).isDigit();
    return isLetterWrong && size == symbol.size() && tailEquals(same + 1, same + 1) ? costOfWrongCharacter : 0;
}

} // namespace

QList<Repair> repaired(const CommandFormatter &row, const QString &deviceAddress)
{
    return Repairer(row, deviceAddress).run();
}

QList<Repair> withNearSymbol(const CommandFormatter &row, const QString &deviceAddress)
{
    const QString symbol = row.prefixSymbol();
    QList<Repair> repairs;
    for (int size = symbol.size() + 1; size >= qMax(1, symbol.size() - 1); --size) {
        const int cost = size <= deviceAddress.size() ? costOfSymbol(deviceAddress, size, symbol) : 0;
        if (cost > 0)
            repairs.append({symbol + deviceAddress.mid(size), cost});
    }
    return repairs;
}

bool isLikelySlip(int cost)
{
    return cost < costOfTransposition;
}

} // namespace label
