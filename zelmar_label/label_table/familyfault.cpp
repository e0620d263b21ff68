// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/label_table/familyfault_p.h"

#include "zelmar_label/label_table/addressjudge_p.h"
#include "zelmar_label/label_table/addressrepair_p.h"
#include "zelmar_label/label_table/addresssearch_p.h"
#include "zelmar_label/label_table/characterslip_p.h"
#include "zelmar_label/label_table/rowdescription_p.h"

#include <QRegularExpression>

#include <algorithm>
#include <vector>

namespace label {

namespace {

using Kind = AddressDiagnosis::Kind;

/// The text with "0" for each number, in capitals, to compare texts without their numbers.
QString shape(const QString &address)
{
    QString shape;
    for (const QChar character : address.toUpper()) {
        const QChar mark = character.isDigit() ? QChar(QLatin1Char('0')) : character;
        if (mark != QLatin1Char('0') || !shape.endsWith(mark))
            shape.append(mark);
    }
    return shape;
}

QString withoutSeparators(const QString &shape)
{
    QString letters;
    for (const QChar character : shape) {
        if (character.isLetterOrNumber())
            letters.append(character);
    }
    return letters;
}

/// How far two texts agree; highest when they are equal.
int commonFront(const QString &left, const QString &right)
{
    if (left == right)
        return left.size() + 1;
    const int size = qMin(left.size(), right.size());
    int same = 0;
    while (same < size && left.at(same) == right.at(same))
        ++same;
    return same;
}

/// How similar an address and an example are without their numbers, with separators and without.
int likeness(const QString &address, const QString &example)
{
    const QString left = shape(address);
    const QString right = shape(example);
    return commonFront(left, right) + commonFront(withoutSeparators(left), withoutSeparators(right));
}

/// The common characters at the end, whatever the numbers: for "DB1.DW2" and "DB1.DBW4" the "W" and the number.
int commonTail(const QString &address, const QString &example)
{
    const QString left = shape(address);
    const QString right = shape(example);
    int same = 0;
    while (same < left.size() && same < right.size() &&
           left.at(left.size() - 1 - same) == right.at(right.size() - 1 - same))
        ++same;
    return same;
}

struct Family
{
    int row;
    int likeness;
    /// Among equally similar families.
    int tail;

    bool operator<(const Family &other) const
    {
        return likeness != other.likeness ? likeness > other.likeness : tail > other.tail;
    }
};

/// True when the text leaves its nearest row in the concrete prefix of a family's member: such a row says nothing about
/// the text.
bool isInMemberPrefix(const AddressJudge &judge, const AddressSearch &search)
{
    if (search.nearest() < 0)
        return false;
    const CommandFormatter &row = judge.row(search.nearest());
    return search.reach() < row.prefixSymbol().size() && row.getEditorUsedPrefixsymbol() != row.prefixSymbol();
}

/// The families whose symbol the text begins with, the most similar first, if `reach` does not go beyond the symbol.
std::vector<Family> familiesOf(const AddressJudge &judge, int reach, const QString &address, int type)
{
    std::vector<Family> families;
    for (int index = 0; index < judge.table().countFormatters(); ++index) {
        const CommandFormatter &row = judge.row(index);
        const QString symbol = row.prefixSymbol();
        if (passesTypeFilter(row.type(), type) && isFamilyTemplate(row) && !symbol.isEmpty() &&
            reach <= symbol.size() && address.startsWith(symbol, Qt::CaseInsensitive))
            families.push_back(
                {index, likeness(address, exampleAddress(row)), commonTail(address, exampleAddress(row))});
    }
    std::stable_sort(families.begin(), families.end());
    return families;
}

QString withoutZerosInFront(const QString &text)
{
    static const QRegularExpression zeros(QStringLiteral("(?<!\\d)0+(?=\\d)"));
    return QString(text).remove(zeros);
}

struct NumberPlace
{
    int start;
    int size;
};

std::vector<NumberPlace> numberPlaces(const QString &text)
{
    std::vector<NumberPlace> places;
    for (int at = 0; at < text.size(); ++at) {
        const int start = at;
        while (at < text.size() && text.at(at).isDigit())
            ++at;
        if (at > start)
            places.push_back({start, at - start});
    }
    return places;
}

/// One number of a family's address, and the family's numbers at its position.
class NumberProbe
{
public:
    NumberProbe(AddressJudge &judge, int type, const QString &text, NumberPlace place)
        : m_judge(judge)
        , m_type(type)
        , m_text(text)
        , m_place(place)
    {
        bool isRead = false;
        constexpr qint64 beyondAny = 10000000000;
        m_number = text.mid(place.start, place.size).toLongLong(&isRead);
        if (!isRead || m_number > beyondAny)
            m_number = beyondAny;
    }

    QString with(qint64 number) const
    {
        return m_text.left(m_place.start) + QString::number(number) + m_text.mid(m_place.start + m_place.size);
    }

    /// The accepted number nearest to the text's own, towards `good`; -1 when `good` is not accepted either.
    qint64 nearest(qint64 good) const
    {
        if (good == m_number || !isAccepted(good))
            return -1;
        qint64 refused = m_number;
        while (refused - good > 1 || good - refused > 1) {
            const qint64 middle = good + (refused - good) / 2;
            (isAccepted(middle) ? good : refused) = middle;
        }
        return good;
    }

private:
    bool isAccepted(qint64 number) const { return m_judge.accepts(with(number), m_type); }

    AddressJudge &m_judge;
    const int m_type;
    const QString m_text;
    const NumberPlace m_place;
    qint64 m_number;
};

/// Finds the number of `text`, written like the family's example, that the family does not have.
void explainNumber(AddressJudge &judge, const QString &text, const QString &example, AddressDiagnosis &diagnosis,
                   QStringList &offers)
{
    const std::vector<NumberPlace> own = numberPlaces(text);
    const std::vector<NumberPlace> known = numberPlaces(example);
    for (std::size_t index = 0; index < own.size() && index < known.size(); ++index) {
        const NumberProbe probe(judge, diagnosis.type, text, own[index]);
        const qint64 limit = probe.nearest(example.mid(known[index].start, known[index].size).toLongLong());
        if (limit < 0)
            continue;
        offers.append(probe.with(limit));
        // If the text is also wrong elsewhere, that fault comes first.
        if (text != diagnosis.address)
            return;
        const int start = own[index].start;
        const bool isLast = start + own[index].size == text.size();
        const bool isBit = isLast && judge.row(diagnosis.row).type() == BitType && start > 0 &&
                           QLatin1String("./").contains(text.at(start - 1));
        if (isBit)
            diagnosis.kind = Kind::BitBeyondWord;
        diagnosis.position = start;
        diagnosis.number = text.mid(start, own[index].size);
        diagnosis.limit = QString::number(limit);
        return;
    }
}

/// The text, written like the examples of the most similar families.
void offerMembers(const AddressJudge &judge, const std::vector<Family> &families, const QString &text,
                  QStringList &offers)
{
    constexpr std::size_t mostFamilies = 3;
    for (std::size_t index = 0; index < families.size() && index < mostFamilies; ++index) {
        // A much less similar one is not offered.
        constexpr int muchLess = 2;
        if (!offers.isEmpty() && families[index].likeness + muchLess < families.front().likeness)
            break;
        const QString meant = withNumbersOf(text, exampleAddress(judge.row(families[index].row)));
        if (!meant.isEmpty())
            offers.append(meant);
    }
}

} // namespace

bool explainFamily(AddressJudge &judge, const AddressSearch &search, AddressDiagnosis &diagnosis, QStringList &offers)
{
    const QString text = withoutDigitLetters(diagnosis.address.trimmed());
    const int reach = isInMemberPrefix(judge, search) ? 0 : search.reach();
    const std::vector<Family> families = familiesOf(judge, reach, text, diagnosis.type);
    if (families.empty())
        return false;
    diagnosis.kind = Kind::UnknownFamilyMember;
    diagnosis.row = families.front().row;
    const QString plain = withoutZerosInFront(text);
    if (plain != diagnosis.address && judge.accepts(plain, diagnosis.type)) {
        offers.append(plain);
        return true;
    }
    const QString example = exampleAddress(judge.row(diagnosis.row));
    const QString meant = withNumbersOf(text, example);
    if (!meant.isEmpty() && (meant == diagnosis.address || !judge.accepts(meant, diagnosis.type)))
        explainNumber(judge, meant, example, diagnosis, offers);
    if (diagnosis.number.isEmpty())
        offerMembers(judge, families, text, offers);
    return true;
}

void offerFamilyMembers(AddressJudge &judge, const QString &address, int type, QStringList &offers)
{
    const QString text = withoutDigitLetters(address.trimmed());
    offerMembers(judge, familiesOf(judge, 0, text, type), text, offers);
}

} // namespace label
