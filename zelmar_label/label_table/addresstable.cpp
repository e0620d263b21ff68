// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/label_table/addresstable_p.h"

#include "zelmar_label/label_table/labeltype.h"

#include <QtAlgorithms>

#include <algorithm>
#include <utility>

namespace label {

namespace {

bool mayLookAhead(const QString &pattern)
{
    return pattern.contains(QLatin1String("(?=")) || pattern.contains(QLatin1String("(?!")) ||
           pattern.contains(QLatin1Char('$'));
}

/// The same for rows that accept the same addresses.
std::string acceptanceOf(const AddressRow &row)
{
    const AddressColumns &columns = row.columns;
    const QChar end(QChar::Null);
    return (columns.pattern + end + columns.start + end + columns.end + end + columns.multipleRule + end +
            QString::number(columns.base) + end + QString::number(columns.type) + end +
            QString::number(columns.addressGroupIndex))
        .toStdString();
}

/// True for a row that may write to the debug log, or that a script decides.
bool isNoisyRow(const CommandFormatter &formatter)
{
    return formatter.isScripted() || !formatter.firstNumber() || !formatter.lastNumber();
}

TextPlace rangeIn(QStringView device, const RowLeaf &leaf)
{
    return {leaf.rangeStart, static_cast<int>(device.size()) - leaf.rangeStart - leaf.behindRange};
}

void setRange(AddressVerdict &verdict, TextPlace range)
{
    verdict.rangeStart = range.size > 0 ? range.start : -1;
    verdict.rangeSize = range.size;
}

} // namespace

AddressTable::Row::Row(std::shared_ptr<const CommandFormatter> rowFormatter)
    : formatter(std::move(rowFormatter))
    , type(formatter->type())
    , isNoisy(isNoisyRow(*formatter))
    , looksAhead(mayLookAhead(formatter->pattern()))
{
}

AddressTable::AddressTable(const AddressTable &other)
{
    const int size = other.size();
    for (int index = 0; index < size; ++index)
        append(other.rowAt(index).formatter);
}

AddressTable::~AddressTable()
{
    for (std::atomic<std::unique_ptr<Row> *> &segment : m_segments)
        delete[] segment.load();
}

/// Segment k begins at row 64 * (2^k - 1).
AddressTable::Place AddressTable::placeOf(int index)
{
    const auto group = static_cast<quint32>(index / firstSegment + 1);
    const int segment = 31 - static_cast<int>(qCountLeadingZeroBits(group));
    return {std::size_t(segment), std::size_t(index - firstSegment * ((1 << segment) - 1))};
}

const AddressTable::Row &AddressTable::rowAt(int index) const
{
    const Place place = placeOf(index);
    return *m_segments[place.segment].load(std::memory_order_acquire)[place.row];
}

AddressTable::Row &AddressTable::rowAt(int index)
{
    return const_cast<Row &>(std::as_const(*this).rowAt(index));
}

void AddressTable::store(std::unique_ptr<Row> row, int index)
{
    const Place place = placeOf(index);
    std::atomic<std::unique_ptr<Row> *> &segment = m_segments[place.segment];
    if (!segment.load(std::memory_order_relaxed))
        segment.store(new std::unique_ptr<Row>[std::size_t(firstSegment) << place.segment], std::memory_order_release);
    segment.load(std::memory_order_relaxed)[place.row] = std::move(row);
}

int AddressTable::append(std::shared_ptr<const CommandFormatter> formatter)
{
    const std::lock_guard<std::mutex> lock(m_writing);
    const int index = m_size.load(std::memory_order_relaxed);
    store(std::make_unique<Row>(std::move(formatter)), index);
    const Row &row = rowAt(index);
    if (row.looksAhead)
        add(m_lookingAhead, index);
    const AddressRow &facts = row.formatter->compiledRow();
    if (joinSame(index))
        m_index.listOnly(index, facts);
    else if (m_index.add(index, facts, !row.isNoisy, !row.looksAhead))
        m_isCompiled.store(false, std::memory_order_release);
    else
        add(m_alone, index);
    m_size.store(index + 1, std::memory_order_release);
    return index;
}

/// Adds an index to a published list.
void AddressTable::add(std::atomic<const std::vector<int> *> &list, int index) const
{
    const std::vector<int> *const old = list.load(std::memory_order_relaxed);
    auto longer = std::make_unique<std::vector<int>>(old ? *old : std::vector<int>());
    longer->insert(std::upper_bound(longer->begin(), longer->end(), index), index);
    m_lists.push_back(std::move(longer));
    list.store(m_lists.back().get(), std::memory_order_release);
}

/// True when an earlier row accepts the same addresses: it is always found first, and this one only in completions.
bool AddressTable::joinSame(int index)
{
    const Row &row = rowAt(index);
    if (row.isNoisy || row.looksAhead)
        return false;
    const auto [known, isFirst] = m_lastSame.insert({acceptanceOf(row.formatter->compiledRow()), index});
    if (isFirst)
        return false;
    rowAt(known->second).nextSame.store(index, std::memory_order_release);
    known->second = index;
    return true;
}

void AddressTable::compileAdded() const
{
    const std::lock_guard<std::mutex> lock(m_writing);
    for (const int tooLarge : m_index.compile())
        add(m_alone, tooLarge);
    m_isCompiled.store(true, std::memory_order_release);
}

/// Rows that match a text, in row order. A few fit in place; nearly every address matches one or two.
struct AddressTable::Matches
{
    static constexpr std::size_t fewest = 16;

    void add(const RowLeaf &leaf)
    {
        if (count < fewest) {
            std::size_t place = count++;
            for (; place > 0 && few[place - 1].row > leaf.row; --place)
                few[place] = few[place - 1];
            few[place] = leaf;
            return;
        }
        if (many.empty())
            many.assign(few.begin(), few.end());
        const auto isBefore = [](const RowLeaf &left, const RowLeaf &right) { return left.row < right.row; };
        many.insert(std::upper_bound(many.begin(), many.end(), leaf, isBefore), leaf);
    }
    const RowLeaf *begin() const { return many.empty() ? few.data() : many.data(); }
    const RowLeaf *end() const { return many.empty() ? few.data() + count : many.data() + many.size(); }

    std::array<RowLeaf, fewest> few;
    std::size_t count = 0;
    std::vector<RowLeaf> many;
};

bool AddressTable::findPlain(QStringView device, int type, AddressVerdict &verdict) const
{
    if (m_alone.load(std::memory_order_acquire))
        return false;
    bool isPlain = true;
    m_index.visitMatches(device, [&](const RowLeaf &leaf) {
        isPlain = isPlain && leaf.isPlain;
        const bool isBefore = verdict.row < 0 || leaf.row < verdict.row;
        if (isPlain && isBefore && passesTypeFilter(leaf.type, type))
            acceptPlain(leaf, device, verdict);
    });
    return isPlain;
}

RangeReader::Numbers AddressTable::readByRule(const AddressRow &row, QStringView range)
{
    return {row.number(range), bitOf(row, range), true};
}

/// Sets the verdict if the number is valid.
void AddressTable::acceptPlain(const RowLeaf &leaf, QStringView device, AddressVerdict &verdict)
{
    const TextPlace range = rangeIn(device, leaf);
    const QStringView text(device.data() + range.start, range.size);
    RangeReader::Numbers read = leaf.reader.read(text);
    if (!read.isKnown)
        read = readByRule(*leaf.facts, text);
    if (read.number != -1 && !leaf.reader.isValid(read.number))
        return;
    verdict.row = leaf.row;
    verdict.number = read.number;
    verdict.bit = read.bit;
    setRange(verdict, range);
}

/// Asks the rows that match in their order, so that they write to the debug log in it.
void AddressTable::findInTurn(QStringView device, int type, AddressVerdict &verdict) const
{
    verdict.row = -1;
    Matches matches;
    m_index.visitMatches(device, [&](const RowLeaf &leaf) { matches.add(leaf); });
    if (const std::vector<int> *const alone = m_alone.load(std::memory_order_acquire)) {
        for (const int index : *alone) {
            if (at(index).compiledPattern().matches(device)) {
                RowLeaf leaf;
                leaf.row = index;
                matches.add(leaf);
            }
        }
    }
    for (const RowLeaf &leaf : matches) {
        const Row &row = rowAt(leaf.row);
        const bool isOfType = passesTypeFilter(row.type, type);
        // A row of the other class still reports unreadable limits.
        if ((isOfType || row.isNoisy) && accepts(row, leaf, device, verdict) && isOfType) {
            verdict.row = leaf.row;
            return;
        }
    }
}

int AddressTable::first(QStringView device, int type) const
{
    AddressVerdict verdict;
    compile();
    if (!findPlain(device, type, verdict))
        findInTurn(device, type, verdict);
    return verdict.row;
}

void AddressTable::judge(QStringView device, int type, AddressVerdict &verdict) const
{
    compile();
    if (!findPlain(device, type, verdict)) {
        findInTurn(device, type, verdict);
        const TextPlace range{verdict.rangeStart, verdict.rangeSize};
        verdict.bit = verdict.row < 0 ? -1 : bitOf(at(verdict.row), device, range);
    }
    verdict.isAccepted = verdict.row >= 0;
    if (verdict.isAccepted)
        return;
    verdict.number = -1;
    verdict.rangeStart = -1;
    verdict.rangeSize = 0;
}

bool AddressTable::accepts(const Row &row, const RowLeaf &leaf, QStringView device, AddressVerdict &verdict)
{
    const TextPlace range = leaf.rangeStart >= 0 ? rangeIn(device, leaf) : row.formatter->rangePlace(device);
    return readAddress(*row.formatter, device, range, verdict);
}

bool AddressTable::readAddress(const CommandFormatter &formatter, QStringView device, TextPlace range,
                               AddressVerdict &verdict)
{
    setRange(verdict, range);
    verdict.number = formatter.isScripted()
                         ? formatter.getAddresRangePart(device.toString())
                         : formatter.compiledRow().number(device.mid(qMax(0, range.start), range.size));
    if (verdict.number == -1)
        return true;
    return isNoisyRow(formatter) ? formatter.isRangeValid(verdict.number)
                                 : formatter.compiledRow().isValid(verdict.number);
}

int AddressTable::bitOf(const CommandFormatter &formatter, QStringView device, TextPlace range)
{
    if (formatter.isScripted())
        return formatter.compiledRow().isBit() ? formatter.getbitOffset(device.toString()) : -1;
    return bitOf(formatter.compiledRow(), device.mid(qMax(0, range.start), range.size));
}

int AddressTable::bitOf(const AddressRow &row, QStringView range)
{
    // Any other rule has no bits.
    const bool hasBits = row.rule.isSplit() || (row.rule.isOnePart() && row.rule.bitRadix() >= 0);
    return row.isBit() && hasBits ? row.bit(range) : -1;
}

/// Rows that are not listed under a longer text, in ascending order.
std::vector<int> AddressTable::unlisted(const std::vector<int> &found, int type) const
{
    const int count = size();
    std::vector<int> rows;
    for (const int first : found) {
        for (int index = first; index >= 0 && index < count;) {
            const Row &row = rowAt(index);
            if (passesTypeFilter(row.type, type))
                rows.push_back(index);
            index = row.nextSame.load(std::memory_order_acquire);
        }
    }
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    return rows;
}

QList<int> AddressTable::completions(QStringView device, int type) const
{
    compile();
    std::vector<int> found;
    const GrowingRows *const listed = m_index.visitCompletions(device, [&](const RowLeaf &leaf) {
        if (!rowAt(leaf.row).looksAhead)
            found.push_back(leaf.row);
    });
    for (const std::vector<int> *const list :
         {m_alone.load(std::memory_order_acquire), m_lookingAhead.load(std::memory_order_acquire)}) {
        for (std::size_t place = 0; list && place < list->size(); ++place) {
            const int index = (*list)[place];
            if (passesTypeFilter(rowAt(index).type, type) && at(index).compiledPattern().canBeCompleted(device))
                found.push_back(index);
        }
    }
    std::vector<int> others = unlisted(found, type);
    QList<int> indexes;
    indexes.reserve(static_cast<int>(others.size()) + (listed ? listed->size() : 0));
    // The rows that are not listed are few: the loop over the others tests only for the next of them.
    others.push_back(size());
    auto other = others.begin();
    const auto appendOthers = [&](int end) {
        for (; *other < end; ++other)
            indexes.append(*other);
        other += *other == end && end < others.back() ? 1 : 0;
    };
    const bool wantsBits = passesTypeFilter(BitType, type);
    const bool wantsRegisters = passesTypeFilter(WordType, type);
    const auto append = [&](ListedRow row) {
        const int index = static_cast<int>(row.index);
        if (index >= *other)
            appendOthers(qMin(index, others.back()));
        if ((row.isBit ? wantsBits : wantsRegisters) && index < others.back())
            indexes.append(index);
    };
    if (listed)
        listed->visit(append);
    appendOthers(others.back());
    return indexes;
}

} // namespace label
