// SDK records as the device keeps them, and their description as the log and the listings need it.
// Relies on records without pointers, little-endian in memory on every build.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <type_traits>

namespace qxsim {

/// A copy of an SDK record, every byte of it, padding included.
template <typename Record> class stored
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

/// An array of records in the caller's memory, at any address.
template <typename Record> class record_array
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

struct record_description;

/// One field of a record.
struct field_description
{
    const char *name;
    std::uint16_t offset;             ///< bytes from the record's start
    std::uint8_t size;                ///< bytes of a scalar or of a bit-field's unit; 0 for records
    std::uint8_t bit;                 ///< lowest bit of a bit-field
    std::uint8_t width;               ///< bits of a bit-field; 0 for other fields
    std::uint16_t count;              ///< elements of an array; 0 for other fields
    bool secret;                      ///< key material
    const record_description *record; ///< what the field is made of; null for scalars
};

struct record_description
{
    const char *name;
    std::uint32_t size; ///< bytes
    std::span<const field_description> fields;
};

/// The scalar or bit-field of a record at any address; `index` counts array elements.
std::uint32_t read_field(const void *record, const field_description &field,
                         unsigned index) noexcept;

/// Sets the bytes of a record copy that belong to no field to zero, so that copies of equal fields
/// are equal bytes. For records of up to 256 bytes.
void clear_padding(void *record, const record_description &description) noexcept;

} // namespace qxsim
