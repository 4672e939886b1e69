// SDK records as the device stores them. Records must not contain pointers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

namespace qxsim {

/// A key that consists of 32-bit words, by which it is sorted, the first word first. Such keys are
/// compared at every step of a search, so the comparison is a plain loop.
template <class Key>
concept word_key = requires
{
    typename Key::sorted_by_words;
};

template <word_key Key> bool operator<(const Key &left, const Key &right)
{
    static_assert(std::has_unique_object_representations_v<Key> && sizeof(Key) % 4 == 0);
    const auto *one = reinterpret_cast<const std::uint32_t *>(&left);
    const auto *other = reinterpret_cast<const std::uint32_t *>(&right);
    for (std::size_t index = 0; index < sizeof(Key) / 4; ++index)
        if (one[index] != other[index])
            return one[index] < other[index];
    return false;
}

/// A copy of all bytes of an SDK record, including padding.
template <class Record> class stored
{
    static_assert(std::is_trivially_copyable_v<Record>);

public:
    stored() = default; ///< all bytes zero
    explicit stored(const Record &record) { std::memcpy(bytes_, &record, sizeof bytes_); }

    void copy_to(Record &record) const { std::memcpy(&record, bytes_, sizeof bytes_); }
    bool operator==(const stored &other) const
    {
        return std::memcmp(bytes_, other.bytes_, sizeof bytes_) == 0;
    }
    /// Some order of their bytes.
    bool operator<(const stored &other) const
    {
        return std::memcmp(bytes_, other.bytes_, sizeof bytes_) < 0;
    }

    const Record &operator*() const { return *reinterpret_cast<const Record *>(bytes_); }
    const Record *operator->() const { return &**this; }
    Record &operator*() { return *reinterpret_cast<Record *>(bytes_); }
    Record *operator->() { return &**this; }

private:
    alignas(Record) unsigned char bytes_[sizeof(Record)]{};
};

/// An array of records in the caller's memory, not owned, with any alignment.
template <class Record> class record_array
{
public:
    record_array(const void *start, std::size_t size)
        : start_(static_cast<const unsigned char *>(start)), size_(size)
    {}
    std::size_t size() const { return size_; }

    /// A copy of the record at an index below size().
    stored<Record> operator[](std::size_t index) const
    {
        stored<Record> copy;
        std::memcpy(&*copy, start_ + index * sizeof(Record), sizeof(Record));
        return copy;
    }

private:
    const unsigned char *start_;
    std::size_t size_;
};

} // namespace qxsim
