// Bounded tables, of which a simulated device consists: rows in the order of their keys, and the
// rows removed last, in memory that is allocated once. Rows never move; what is sorted are their
// two-byte places, so that each operation costs about the same in an empty table and in a full one.
// Relies on the standard library only.
#pragma once

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace qxsim {

/// Appends a value's bytes.
template <class Value> void append_bytes(std::string &bytes, const Value &value)
{
    static_assert(std::has_unique_object_representations_v<Value>, "all bytes have a meaning");
    bytes.append(reinterpret_cast<const char *>(&value), sizeof value);
}

/// Takes a value's bytes off the front; false, and the value unchanged, if there are too few.
template <class Value> bool take_bytes(std::string_view &bytes, Value &value)
{
    static_assert(std::is_trivially_copyable_v<Value>);
    if (bytes.size() < sizeof value)
        return false;
    std::memcpy(static_cast<void *>(&value), bytes.data(), sizeof value);
    bytes.remove_prefix(sizeof value);
    return true;
}

/// A table of at most `capacity` (up to 32767) rows, sorted by key. Keys are unique and totally
/// ordered. The constructor allocates all memory and may throw std::bad_alloc; nothing else throws
/// if copying keys and entries does not, except save(). Pointers to rows are valid until that row
/// is removed.
template <class Key, class Entry> class bounded_table
{
    using place = std::uint16_t; ///< an index of rows_
    using places = std::vector<place>;

public:
    struct row
    {
        Key key;
        Entry entry;
    };

    /// Walks the rows in key order. Adding and removing rows invalidates it.
    template <class Row> class walker
    {
    public:
        walker(Row *rows, const place *at) : rows_(rows), at_(at) {}
        Row &operator*() const { return rows_[*at_]; }
        Row *operator->() const { return rows_ + *at_; }
        walker &operator++()
        {
            ++at_;
            return *this;
        }
        bool operator==(const walker &) const = default;

    private:
        Row *rows_;
        const place *at_;
    };

    /// A table that remembers as many removed rows as it can hold.
    explicit bounded_table(std::size_t capacity) : bounded_table(capacity, capacity) {}

    /// A table that remembers so many removed rows, at most `capacity`.
    bounded_table(std::size_t capacity, std::size_t remembered)
        : capacity_(capacity), remembered_(remembered)
    {
        assert(capacity <= INT16_MAX);
        rows_.reserve(capacity + remembered);
        ages_.reserve(capacity + remembered);
        present_.reserve(capacity);
        removed_.reserve(remembered);
        free_.reserve(capacity + remembered);
    }

    std::size_t capacity() const { return capacity_; }
    std::size_t size() const { return present_.size(); }
    bool empty() const { return present_.empty(); }
    bool full() const { return present_.size() >= capacity_; }

    /// The entry with this key; null if there is none.
    Entry *find(const Key &key)
    {
        const std::size_t index = position(present_, key);
        return holds(present_, index, key) ? &rows_[present_[index]].entry : nullptr;
    }
    const Entry *find(const Key &key) const { return const_cast<bounded_table *>(this)->find(key); }

    /// The entry with this key if it was removed lately and not added again; otherwise null.
    const Entry *removed(const Key &key) const
    {
        const std::size_t index = position(removed_, key);
        return holds(removed_, index, key) ? &rows_[removed_[index]].entry : nullptr;
    }
    /// How many removed rows are remembered now.
    std::size_t removed_count() const { return removed_.size(); }

    /// The first row; null if the table is empty.
    const row *first() const { return empty() ? nullptr : &rows_[present_.front()]; }

    /// The first row with a greater key, whether or not `key` is in the table; null at the end.
    const row *next(const Key &key) const
    {
        const std::size_t index = position(present_, key);
        const std::size_t after = index + (holds(present_, index, key) ? 1 : 0);
        return after == size() ? nullptr : &rows_[present_[after]];
    }

    /// The last row whose key is not greater; null if there is none.
    const row *at_or_before(const Key &key) const
    {
        const std::size_t index = position(present_, key);
        const std::size_t after = index + (holds(present_, index, key) ? 1 : 0);
        return after == 0 ? nullptr : &rows_[present_[after - 1]];
    }

    /// Adds an entry. The key must not be in the table, and the table must not be full.
    Entry &add(const Key &key, const Entry &entry)
    {
        assert(!full() && find(key) == nullptr);
        const std::size_t known = position(removed_, key);
        if (holds(removed_, known, key))
            forget(known);
        const place at = put(row{key, entry});
        insert(present_, position(present_, key), at);
        return rows_[at].entry;
    }

    /// Removes the row with this key; false if there is none.
    bool remove(const Key &key)
    {
        const std::size_t index = position(present_, key);
        if (!holds(present_, index, key))
            return false;
        const place at = present_[index];
        present_.erase(present_.begin() + static_cast<std::ptrdiff_t>(index));
        remember(at);
        return true;
    }

    /// Removes all rows.
    void clear()
    {
        for (const place at : present_)
            remember(at);
        present_.clear();
    }

    // Rows in key order; entries may be changed, keys must not.
    auto begin() { return walker<row>{rows_.data(), present_.data()}; }
    auto end() { return walker<row>{rows_.data(), present_.data() + size()}; }
    auto begin() const { return walker<const row>{rows_.data(), present_.data()}; }
    auto end() const { return walker<const row>{rows_.data(), present_.data() + size()}; }

    /// Appends all rows and removed rows as bytes, which are the same on all processors that a
    /// board or a PC has. May throw std::bad_alloc.
    void save(std::string &bytes) const
    {
        append_bytes(bytes, static_cast<std::uint32_t>(size()));
        for (const place at : present_)
            append_row(bytes, rows_[at]);
        append_bytes(bytes, static_cast<std::uint32_t>(removed_.size()));
        for (place at = oldest_; at != none; at = ages_[at].newer)
            append_row(bytes, rows_[at]);
    }

    /// Fills a new table with what save() has written, which it takes off the front. False if that
    /// does not make a table of this capacity; the table is then of no use.
    bool restore(std::string_view &bytes)
    {
        std::uint32_t count = 0;
        row one;
        if (!take_bytes(bytes, count) || count > capacity_)
            return false;
        for (std::uint32_t index = 0; index < count; ++index) {
            if (!take_row(bytes, one) || find(one.key) != nullptr)
                return false;
            add(one.key, one.entry);
        }
        if (!take_bytes(bytes, count) || count > remembered_)
            return false;
        for (std::uint32_t index = 0; index < count; ++index) {
            if (!take_row(bytes, one) || find(one.key) != nullptr || removed(one.key) != nullptr)
                return false;
            remember(put(one));
        }
        return true;
    }

private:
    static constexpr place none = UINT16_MAX;

    /// Neighbours of a removed row in the order of removal.
    struct age
    {
        place older = none;
        place newer = none;
    };

    static void append_row(std::string &bytes, const row &one)
    {
        append_bytes(bytes, one.key);
        append_bytes(bytes, one.entry);
    }
    static bool take_row(std::string_view &bytes, row &one)
    {
        return take_bytes(bytes, one.key) && take_bytes(bytes, one.entry);
    }

    /// The index of the key's place, or where it would be inserted. Calls look for a key and then
    /// add or remove it, so the last answer is tried first.
    std::size_t position(const places &sorted, const Key &key) const
    {
        std::size_t &last = &sorted == &present_ ? last_present_ : last_removed_;
        const auto before = [&](std::size_t index) { return rows_[sorted[index]].key < key; };
        if (last <= sorted.size() && (last == 0 || before(last - 1)) &&
            (last == sorted.size() || !before(last)))
            return last;
        const auto found = std::lower_bound(
            sorted.begin(), sorted.end(), key,
            [this](place left, const Key &right) { return rows_[left].key < right; });
        last = static_cast<std::size_t>(found - sorted.begin());
        return last;
    }
    bool holds(const places &sorted, std::size_t index, const Key &key) const
    {
        return index < sorted.size() && rows_[sorted[index]].key == key;
    }
    static void insert(places &sorted, std::size_t index, place at)
    {
        sorted.insert(sorted.begin() + static_cast<std::ptrdiff_t>(index), at);
    }

    /// Puts a row into a free place. The memory behind the rows used so far has never been written,
    /// so that a new device costs what is put into it.
    place put(const row &one)
    {
        if (free_.empty()) {
            rows_.push_back(one);
            ages_.emplace_back();
            return static_cast<place>(rows_.size() - 1);
        }
        const place at = free_.back();
        free_.pop_back();
        rows_[at] = one;
        return at;
    }

    /// Keeps a row as the one removed last, in place of the oldest if there are enough.
    void remember(place at)
    {
        if (remembered_ == 0) {
            free_.push_back(at);
            return;
        }
        if (removed_.size() == remembered_)
            forget(position(removed_, rows_[oldest_].key));
        insert(removed_, position(removed_, rows_[at].key), at);
        ages_[at] = {newest_, none};
        (newest_ == none ? oldest_ : ages_[newest_].newer) = at;
        newest_ = at;
    }

    /// Forgets the removed row at this index of removed_.
    void forget(std::size_t index)
    {
        const place at = removed_[index];
        removed_.erase(removed_.begin() + static_cast<std::ptrdiff_t>(index));
        const age between = ages_[at];
        (between.older == none ? oldest_ : ages_[between.older].newer) = between.newer;
        (between.newer == none ? newest_ : ages_[between.newer].older) = between.older;
        free_.push_back(at);
    }

    std::size_t capacity_;
    std::size_t remembered_; ///< how many removed rows there can be
    std::vector<row> rows_;  ///< present, removed and free ones; all have room, so none moves
    places present_;         ///< sorted by key
    places removed_;         ///< sorted by key
    places free_;            ///< places of rows that were there
    std::vector<age> ages_;  ///< by place
    mutable std::size_t last_present_ = 0; ///< the last position in present_
    mutable std::size_t last_removed_ = 0; ///< the last position in removed_
    place oldest_ = none;                  ///< of the removed rows
    place newest_ = none;
};

/// The first row whose entry satisfies `holds`, in a table of a few rows; null if there is none.
template <class Table, class Condition> auto find_row(Table &table, Condition holds)
{
    for (auto &row : table)
        if (holds(row.entry))
            return &row;
    return static_cast<decltype(&*table.begin())>(nullptr);
}

/// A table that numbers its entries: base + 1 to base + 65535, each entry getting the next free
/// number after the last one assigned. So a number is reused only after all the others.
template <class Entry> class numbered_table : public bounded_table<std::uint32_t, Entry>
{
    using table = bounded_table<std::uint32_t, Entry>;

public:
    static constexpr std::uint32_t serial_limit = 65535;

    numbered_table(std::size_t capacity, std::uint32_t base) : table(capacity), base_(base) {}

    /// Adds an entry to a table that is not full; returns its number.
    std::uint32_t add(const Entry &entry)
    {
        do
            last_ = last_ % serial_limit + 1;
        while (this->find(base_ + last_) != nullptr);
        table::add(base_ + last_, entry);
        return base_ + last_;
    }

    void save(std::string &bytes) const
    {
        append_bytes(bytes, last_);
        table::save(bytes);
    }
    bool restore(std::string_view &bytes)
    {
        return take_bytes(bytes, last_) && last_ <= serial_limit && table::restore(bytes);
    }

private:
    std::uint32_t base_;
    std::uint32_t last_ = 0;
};

} // namespace qxsim
