// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_ADDRESSTABLE_P_H
#define ZELMAR_LABEL_ADDRESSTABLE_P_H

#include "zelmar_label/address_grammar/addressrow.h"
#include "zelmar_label/address_grammar/commandformatter.h"
#include "zelmar_label/label_table/addressverdict.h"
#include "zelmar_label/label_table/rowindex_p.h"

#include <QList>
#include <QStringView>

#include <array>
#include <atomic>
#include <memory>
#include <mutex>
#include <string>
#include <unordered_map>
#include <vector>

namespace label {

/// The rows of one device table: they are appended, and never change or move.
///
/// Any number of threads may ask, also while one appends. Asking takes no lock, except that the first question after
/// `append` compiles the new rows; `compile` does so before.
class AddressTable
{
public:
    AddressTable() = default;
    /// The same formatters, without copies of their scripts.
    AddressTable(const AddressTable &other);
    AddressTable &operator=(const AddressTable &) = delete;
    ~AddressTable();

    /// Returns the row's type index.
    int append(std::shared_ptr<const CommandFormatter> formatter);

    /// Compiles the rows that were appended.
    void compile() const
    {
        if (!m_isCompiled.load(std::memory_order_acquire))
            compileAdded();
    }

    /// Number of rows.
    int size() const { return m_size.load(std::memory_order_acquire); }

    const CommandFormatter &at(int index) const { return *rowAt(index).formatter; }

    /// The first row that accepts the device address and passes the type filter; -1 for none. All rows up to it that
    /// match write what they have to write to the debug log.
    int first(QStringView device, int type) const;

    /// As above; sets row, number and place of the range string in the device address, and with a row `isAccepted`.
    void judge(QStringView device, int type, AddressVerdict &verdict) const;

    /// The rows, ascending, that accept the device address or could after further characters, with any number, and
    /// pass the filter.
    QList<int> completions(QStringView device, int type) const;

    /// Reads number and place of the range string of a device address that the row matches. True when the number is
    /// within the limits; -1 counts as within.
    static bool readAddress(const CommandFormatter &formatter, QStringView device, TextPlace range,
                            AddressVerdict &verdict);

    /// The bit in a device address with this range string; -1 on a register row and on a row without bits.
    static int bitOf(const CommandFormatter &formatter, QStringView device, TextPlace range);

private:
    struct Row
    {
        explicit Row(std::shared_ptr<const CommandFormatter> formatter);

        const std::shared_ptr<const CommandFormatter> formatter;
        const int type;
        /// True when an address that matches may write to the debug log.
        const bool isNoisy;
        /// True when completing is a question for the expression.
        const bool looksAhead;
        /// The next row that accepts exactly the same addresses; -1 for none.
        std::atomic<int> nextSame = -1;
    };
    struct Matches;
    struct Place
    {
        std::size_t segment;
        std::size_t row;
    };

    void compileAdded() const;
    static Place placeOf(int index);
    const Row &rowAt(int index) const;
    Row &rowAt(int index);
    void store(std::unique_ptr<Row> row, int index);
    void add(std::atomic<const std::vector<int> *> &list, int index) const;
    bool joinSame(int index);
    static bool accepts(const Row &row, const RowLeaf &leaf, QStringView device, AddressVerdict &verdict);
    std::vector<int> unlisted(const std::vector<int> &found, int type) const;
    static RangeReader::Numbers readByRule(const AddressRow &row, QStringView range);
    static void acceptPlain(const RowLeaf &leaf, QStringView device, AddressVerdict &verdict);
    static int bitOf(const AddressRow &row, QStringView range);
    /// Finds the row that accepts. False, with any verdict, when a row matches that must be asked in its turn.
    bool findPlain(QStringView device, int type, AddressVerdict &verdict) const;
    void findInTurn(QStringView device, int type, AddressVerdict &verdict) const;

    static constexpr int firstSegment = 64;
    static constexpr int mostSegments = 24;
    /// Each segment has twice as many places as the one before.
    std::array<std::atomic<std::unique_ptr<Row> *>, mostSegments> m_segments = {};
    std::atomic<int> m_size = 0;

    mutable std::mutex m_writing;
    mutable std::atomic<bool> m_isCompiled = true;
    mutable RowIndex m_index;
    /// Rows that the index does not know, ascending. Published as a whole.
    mutable std::atomic<const std::vector<int> *> m_alone = nullptr;
    std::atomic<const std::vector<int> *> m_lookingAhead = nullptr;
    mutable std::vector<std::unique_ptr<const std::vector<int>>> m_lists;
    /// For the writer: the last of the rows that accept the same addresses.
    std::unordered_map<std::string, int> m_lastSame;
};

} // namespace label

#endif
