// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_GROWINGROWS_P_H
#define ZELMAR_LABEL_GROWINGROWS_P_H

#include <QtGlobal>

#include <algorithm>
#include <atomic>
#include <memory>

namespace label {

/// A row, and its class for type filters.
struct ListedRow
{
    quint32 index : 31;
    quint32 isBit : 1;
};

/// Rows that one thread appends in ascending order while any number of threads reads. Rows never move.
class GrowingRows
{
public:
    GrowingRows() = default;
    Q_DISABLE_COPY(GrowingRows)

    ~GrowingRows()
    {
        for (Block *block = m_first.load(); block;) {
            const std::unique_ptr<Block> owned(block);
            block = owned->next.load();
        }
    }

    /// Does nothing for the row that was appended last.
    void append(ListedRow row)
    {
        const int size = m_size.load(std::memory_order_relaxed);
        if (size > 0 && m_last->rows[m_used - 1].index == row.index)
            return;
        if (!m_last || m_used == m_last->size)
            addBlock();
        m_last->rows[m_used++] = row;
        m_size.store(size + 1, std::memory_order_release);
    }

    int size() const { return m_size.load(std::memory_order_acquire); }

    /// Calls `visit(ListedRow)` for each row.
    template<typename Visit>
    void visit(Visit visit) const
    {
        // The size is published last, so that the blocks of all rows that it counts are known.
        int left = size();
        const std::atomic<Block *> *place = &m_first;
        while (left > 0) {
            const Block &block = *place->load(std::memory_order_relaxed);
            std::for_each(block.rows.get(), block.rows.get() + qMin(left, block.size), visit);
            left -= block.size;
            place = &block.next;
        }
    }

private:
    struct Block
    {
        explicit Block(int blockSize)
            : rows(new ListedRow[std::size_t(blockSize)])
            , size(blockSize)
        {
        }

        const std::unique_ptr<ListedRow[]> rows;
        const int size;
        std::atomic<Block *> next = nullptr;
    };

    /// Each block has twice as many places as the one before.
    void addBlock()
    {
        constexpr int firstSize = 4;
        Block *const block = new Block(m_last ? 2 * m_last->size : firstSize);
        (m_last ? m_last->next : m_first).store(block, std::memory_order_relaxed);
        m_last = block;
        m_used = 0;
    }

    std::atomic<Block *> m_first = nullptr;
    std::atomic<int> m_size = 0;
    /// For the writer: the places in use of the last block.
    int m_used = 0;
    Block *m_last = nullptr;
};

} // namespace label

#endif
