// SDK records as the device stores them. Records must not contain pointers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

namespace qxsim {

/// A copy of all bytes of an SDK record, including padding.
template <class Record> class stored
{
    static_assert(std::is_trivially_copyable_v<Record>);

public:
    stored() = default; ///< all bytes zero
    explicit stored(const Record &record) noexcept { std::memcpy(bytes_, &record, sizeof bytes_); }

    void copy_to(Record &record) const noexcept { std::memcpy(&record, bytes_, sizeof bytes_); }
    bool same_bytes(const stored &other) const noexcept
    {
        return std::memcmp(bytes_, other.bytes_, sizeof bytes_) == 0;
    }

    const Record &operator*() const noexcept { return *reinterpret_cast<const Record *>(bytes_); }
    const Record *operator->() const noexcept { return &**this; }
    Record &operator*() noexcept { return *reinterpret_cast<Record *>(bytes_); }
    Record *operator->() noexcept { return &**this; }

private:
    alignas(Record) unsigned char bytes_[sizeof(Record)]{};
};

/// An array of records in the caller's memory, not owned, with any alignment.
template <class Record> class record_array
{
public:
    record_array(const void *start, std::size_t size) noexcept
        : start_(static_cast<const unsigned char *>(start)), size_(size)
    {}
    std::size_t size() const noexcept { return size_; }

    /// A copy of the record at an index below size().
    stored<Record> operator[](std::size_t index) const noexcept
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
