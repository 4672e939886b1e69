// Bounded tables, of which a simulated device consists: rows sorted by key, and the rows removed
// last, in memory that is allocated once. Relies on the standard library only.
#pragma once

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace qxsim {

/// A table of at most `capacity` rows, sorted by key. Keys are unique and totally ordered. The
/// constructor allocates all memory and may throw std::bad_alloc; nothing else throws if copying
/// keys and entries does not. Pointers to rows are valid until the next add, remove or clear.
template <class Key, class Entry> class bounded_table
{
public:
    struct row
    {
        Key key;
        Entry entry;
    };

    explicit bounded_table(std::size_t capacity) : capacity_(capacity)
    {
        rows_.reserve(capacity);
        removed_.reserve(capacity);
    }

    std::size_t capacity() const noexcept { return capacity_; }
    std::size_t size() const noexcept { return rows_.size(); }
    bool empty() const noexcept { return rows_.empty(); }
    bool full() const noexcept { return rows_.size() >= capacity_; }

    /// The entry with this key; null if there is none.
    Entry *find(const Key &key) noexcept
    {
        const auto place = position(key);
        return place < rows_.size() && rows_[place].key == key ? &rows_[place].entry : nullptr;
    }
    const Entry *find(const Key &key) const noexcept
    {
        return const_cast<bounded_table *>(this)->find(key);
    }

    /// The first row; null if the table is empty.
    const row *first() const noexcept { return rows_.empty() ? nullptr : &rows_.front(); }

    /// The first row with a greater key, whether or not `key` is in the table; null at the end.
    const row *next(const Key &key) const noexcept
    {
        const auto place =
            std::upper_bound(rows_.begin(), rows_.end(), key,
                             [](const Key &left, const row &right) { return left < right.key; });
        return place == rows_.end() ? nullptr : &*place;
    }

    /// Adds an entry. The key must not be in the table, and the table must not be full.
    Entry &add(const Key &key, const Entry &entry) noexcept
    {
        assert(!full() && find(key) == nullptr);
        std::erase_if(removed_, [&](const row &one) { return one.key == key; });
        const auto place = rows_.begin() + static_cast<std::ptrdiff_t>(position(key));
        return rows_.insert(place, row{key, entry})->entry;
    }

    /// Removes the row with this key; false if there is none.
    bool remove(const Key &key) noexcept
    {
        const auto place = position(key);
        if (place == rows_.size() || !(rows_[place].key == key))
            return false;
        keep_removed(rows_[place]);
        rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(place));
        return true;
    }

    /// Removes all rows.
    void clear() noexcept
    {
        for (const row &one : rows_)
            keep_removed(one);
        rows_.clear();
    }

    /// The rows removed last and not added again, oldest first, at most `capacity` of them.
    const std::vector<row> &removed() const noexcept { return removed_; }

    // Rows in key order; entries may be changed, keys must not.
    auto begin() noexcept { return rows_.begin(); }
    auto end() noexcept { return rows_.end(); }
    auto begin() const noexcept { return rows_.begin(); }
    auto end() const noexcept { return rows_.end(); }

private:
    void keep_removed(const row &one) noexcept
    {
        if (removed_.size() == capacity_)
            removed_.erase(removed_.begin());
        removed_.push_back(one);
    }

    /// The index of the key's row, or where it would be inserted.
    std::size_t position(const Key &key) const noexcept
    {
        const auto place =
            std::lower_bound(rows_.begin(), rows_.end(), key,
                             [](const row &left, const Key &right) { return left.key < right; });
        return static_cast<std::size_t>(place - rows_.begin());
    }

    std::size_t capacity_;
    std::vector<row> rows_;
    std::vector<row> removed_;
};

/// True if the key is among the rows removed last.
template <class Table, class Key> bool was_removed(const Table &table, const Key &key) noexcept
{
    return std::any_of(table.removed().begin(), table.removed().end(),
                       [&](const auto &row) { return row.key == key; });
}

/// The first row whose entry satisfies `holds`; null if there is none.
template <class Rows, class Condition> auto find_row(Rows &table, Condition holds)
{
    const auto place =
        std::find_if(table.begin(), table.end(), [&](const auto &row) { return holds(row.entry); });
    return place == table.end() ? nullptr : &*place;
}

/// A table that numbers its entries: base + 1 to base + 65535, each entry getting the next free
/// number after the last one assigned. So a number is reused only after all the others.
template <class Entry> class numbered_table : public bounded_table<std::uint32_t, Entry>
{
public:
    static constexpr std::uint32_t serial_limit = 65535;

    numbered_table(std::size_t capacity, std::uint32_t base)
        : bounded_table<std::uint32_t, Entry>(capacity), base_(base)
    {
        assert(capacity < serial_limit);
    }

    /// Adds an entry to a table that is not full; returns its number.
    std::uint32_t add(const Entry &entry) noexcept
    {
        do
            last_ = last_ % serial_limit + 1;
        while (this->find(base_ + last_) != nullptr);
        bounded_table<std::uint32_t, Entry>::add(base_ + last_, entry);
        return base_ + last_;
    }

    /// The last number assigned, without the base; 0 if there is none yet.
    std::uint32_t last() const noexcept { return last_; }

private:
    std::uint32_t base_;
    std::uint32_t last_ = 0;
};

} // namespace qxsim
