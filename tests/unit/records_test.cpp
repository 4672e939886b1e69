// What record helpers share: creation, slots, nested records, elements; null rules, index rules,
// copies that overlap, and arithmetic modulo 2^32.
#include "helpers/records.h"
#include "tests/unit/block.h"
#include "tests/unit/captured_output.h"

namespace {

using namespace qxsh;

byte_list bytes_at(const void *start, std::size_t size)
{
    const auto *const first = static_cast<const unsigned char *>(start);
    return {first, first + size};
}

TEST(record_creation, gives_zeroed_blocks)
{
    for (const std::uint32_t size : {1u, 3u, 4u, 21u, 88u, 212u, 1000u}) {
        void *const dirty = create_record(size);
        std::memset(dirty, 0xee, size);
        free_block(dirty);
        void *const record = create_record(size);
        EXPECT_EQ(bytes_at(record, size), byte_list(size));
        free_block(record);
    }
}

TEST(record_creation, of_arrays)
{
    void *const array = create_record_array(5, 12);
    EXPECT_EQ(bytes_at(array, 60), byte_list(60));
    std::memset(array, 0xee, 60);
    free_block(array);
}

// 20259280 records of 212 bytes are 2^32 + 64 bytes.
TEST(record_creation, of_arrays_whose_size_wraps)
{
    void *const array = create_record_array(20259280, 212);
    ASSERT_NE(array, nullptr);
    EXPECT_EQ(bytes_at(array, 64), byte_list(64));
    std::memset(array, 0xee, 64);
#ifdef QXSH_SANITIZED
    EXPECT_DEATH(static_cast<volatile unsigned char *>(array)[64] = 1, "AddressSanitizer");
#endif
    free_block(array);
}

TEST(record_creation, of_empty_arrays)
{
    // 65536 * 65536 is 0, too.
    for (const auto &[count, size] :
         {std::pair{0u, 88u}, {0u, 1u}, {65536u, 65536u}, {0x80000000u, 2u}}) {
        void *const array = create_record_array(count, size);
        EXPECT_NE(array, nullptr);
        free_block(array);
    }
}

TEST(record_creation, without_memory)
{
    EXPECT_EQ(create_record_array(24403224, 88), nullptr); // 2^31 + 64
    EXPECT_EQ(create_record_array(1, 0x80000000), nullptr);
    EXPECT_EQ(create_record_array(UINT32_MAX, 1), nullptr);
    EXPECT_EQ(create_record_array(UINT32_MAX, 12), nullptr); // 2^32 - 12
}

TEST(record_slots, lie_end_to_end)
{
    const block array{120};
    for (std::uint32_t index = 0; index < 10; ++index)
        EXPECT_EQ(record_slot(array, index, 12), array.at(12 * index));
    EXPECT_EQ(record_slot(nullptr, 0, 12), nullptr);
    EXPECT_EQ(record_slot(nullptr, 5, 12), nullptr);
}

TEST(record_slots, are_computed_for_any_index)
{
    const block array{120};
    const auto low = static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(array.at(0)));
    for (const std::uint32_t index : {10u, 1000u, 0x10000000u, 0x80000000u, UINT32_MAX}) {
        const auto slot = reinterpret_cast<std::uintptr_t>(record_slot(array, index, 88));
        EXPECT_EQ(slot, static_cast<std::uint32_t>(low + index * 88));
    }
    EXPECT_EQ(record_slot(array.at(88), UINT32_MAX, 88), array.at(0)); // the one before
    EXPECT_EQ(record_slot(array, 0x40000000, 12), array.at(0));        // once around
}

TEST(record_slots, receive_whole_copies)
{
    block array{30};
    const block item{byte_list{1, 2, 3, 4, 5, 6, 7, 8, 9, 10}};
    set_record_slot(array, item, 1, 10);
    auto right = byte_list(30);
    for (unsigned char i = 0; i < 10; ++i)
        right[10u + i] = static_cast<unsigned char>(i + 1);
    EXPECT_EQ(array.bytes(), right);
    set_record_slot(array.at(10), item, UINT32_MAX, 10);
    for (unsigned char i = 0; i < 10; ++i)
        right[i] = static_cast<unsigned char>(i + 1);
    EXPECT_EQ(array.bytes(), right);
}

TEST(record_slots, of_null_or_from_null_do_nothing)
{
    block array{20};
    array.count_up();
    const auto before = array.bytes();
    set_record_slot(array, nullptr, 0, 10);
    set_record_slot(array, nullptr, UINT32_MAX, 10);
    set_record_slot(nullptr, array, 0, 10);
    set_record_slot(nullptr, array, 1, 10);
    set_record_slot(nullptr, nullptr, 0, 10);
    EXPECT_EQ(array.bytes(), before);
}

// Whatever the distance, the copy has the bytes that the source had before.
TEST(record_copies, may_overlap)
{
    constexpr std::uint32_t size = 20;
    for (std::uint32_t from = 0; from <= 40; ++from) {
        for (std::uint32_t to = 0; to <= 40; to += 4) {
            block room{64};
            room.count_up();
            auto right = room.bytes();
            const auto source = room.bytes();
            for (std::uint32_t i = 0; i < size; ++i)
                right[to + i] = source[from + i];

            copy_record(room, to, room.at(from), size);
            EXPECT_EQ(room.bytes(), right);
            room.count_up();
            set_record(room, to, room.at(from), size);
            EXPECT_EQ(room.bytes(), right);
            room.count_up();
            set_record_slot(room.at(to), room.at(from), 0, size);
            EXPECT_EQ(room.bytes(), right);
            room.count_up();
            set_record_element(room, to, 1, room.at(from), size, 0, "setter");
            EXPECT_EQ(room.bytes(), right);
            room.count_up();
            put_record<size>(room, to, room.at(from));
            EXPECT_EQ(room.bytes(), right);
        }
    }
}

TEST(nested_records, are_copied_unless_a_pointer_is_null)
{
    block record{16};
    const block source{byte_list{1, 2, 3, 4}};
    set_record(record, 8, nullptr, 4);
    set_record(nullptr, 8, source, 4);
    set_record(nullptr, 0, nullptr, 4);
    EXPECT_EQ(record.bytes(), byte_list(16));
    set_record(record, 8, source, 4);
    EXPECT_EQ(record.bytes(), (byte_list{0, 0, 0, 0, 0, 0, 0, 0, 1, 2, 3, 4, 0, 0, 0, 0}));
}

TEST(nested_records, lie_inside)
{
    const block record{16};
    EXPECT_EQ(record_at(record, 0), record.at(0));
    EXPECT_EQ(record_at(record, 9), record.at(9));
    EXPECT_EQ(record_at(nullptr, 0), nullptr);
    EXPECT_EQ(record_at(nullptr, 9), nullptr);
}

// A record of 20 bytes with three nested records of 4 bytes from byte 4 on.
class record_elements : public testing::Test
{
protected:
    void set(void *record, const void *source, std::uint32_t index)
    {
        set_record_element(record, 4, 3, source, 4, index, "qx_pkt_info_set_tag");
    }

    captured_output output_;
    block record_{20};
    block source_{byte_list{1, 2, 3, 4}};
};

TEST_F(record_elements, of_each_index)
{
    for (std::uint32_t index = 0; index < 3; ++index) {
        auto right = record_.bytes();
        for (unsigned char i = 0; i < 4; ++i)
            right[4 + 4 * index + i] = static_cast<unsigned char>(i + 1);
        set(record_, source_, index);
        EXPECT_EQ(record_.bytes(), right);
    }
    EXPECT_EQ(output_.take(), "");
}

TEST_F(record_elements, all_ones_mean_every_element)
{
    set(record_, source_, 4294967295);
    EXPECT_EQ(record_.bytes(),
              (byte_list{0, 0, 0, 0, 1, 2, 3, 4, 1, 2, 3, 4, 1, 2, 3, 4, 0, 0, 0, 0}));
    EXPECT_EQ(output_.take(), "");
}

TEST_F(record_elements, every_element_becomes_one_of_them)
{
    for (std::uint32_t chosen = 0; chosen < 3; ++chosen) {
        record_.count_up();
        auto right = record_.bytes();
        for (std::uint32_t i = 0; i < 12; ++i)
            right[4 + i] = static_cast<unsigned char>(4 + 4 * chosen + i % 4 + 1);
        set(record_, record_.at(4 + 4 * chosen), 4294967295);
        EXPECT_EQ(record_.bytes(), right);
    }
}

TEST_F(record_elements, indices_past_the_end_are_reported)
{
    for (const std::uint32_t index : {3u, 4u, 1000u, 0x40000000u, 0x80000000u, 4294967294u}) {
        set(record_, source_, index);
        EXPECT_EQ(output_.take(), "qx_pkt_info_set_tag bad Index \n") << index;
    }
    EXPECT_EQ(record_.bytes(), byte_list(20));
}

TEST_F(record_elements, null_comes_before_the_index)
{
    for (const std::uint32_t index : {0u, 3u, 4294967295u}) {
        set(nullptr, source_, index);
        set(record_, nullptr, index);
        set(nullptr, nullptr, index);
    }
    EXPECT_EQ(output_.take(), "");
    EXPECT_EQ(record_.bytes(), byte_list(20));
}

TEST_F(record_elements, addresses)
{
    for (std::uint32_t index = 0; index < 3; ++index)
        EXPECT_EQ(record_element(record_, 4, 3, 4, index), record_.at(4 + 4 * index));
    for (const std::uint32_t index : {3u, 0x40000000u, 4294967295u})
        EXPECT_EQ(record_element(record_, 4, 3, 4, index), nullptr);
    EXPECT_EQ(record_element(nullptr, 4, 3, 4, 0), nullptr);
    EXPECT_EQ(record_element(nullptr, 4, 3, 4, 3), nullptr);
    EXPECT_EQ(output_.take(), "");
}

TEST(scalars, are_cut_and_read_back)
{
    block record{8};
    record.fill(0xee);
    set_scalar<std::uint8_t>(record, 1, 0x1ff);
    set_scalar<std::uint16_t>(record, 3, 0x12345);
    EXPECT_EQ(record.bytes(), (byte_list{0xee, 0xff, 0xee, 0x45, 0x23, 0xee, 0xee, 0xee}));
    EXPECT_EQ(get_scalar<std::uint8_t>(record, 1), 0xff);
    EXPECT_EQ(get_scalar<std::uint16_t>(record, 3), 0x2345);
    set_scalar<std::uint32_t>(record, 3, 0x87654321);
    EXPECT_EQ(get_scalar<std::uint32_t>(record, 3), 0x87654321u);
}

TEST(scalars, of_null)
{
    set_scalar<std::uint8_t>(nullptr, 1, 5);
    set_scalar<std::uint32_t>(nullptr, 0, 5);
    set_bits<std::uint32_t>(nullptr, 0, 3, 2, 5);
    EXPECT_EQ(get_scalar<std::uint8_t>(nullptr, 1), 0);
    EXPECT_EQ(get_scalar<std::uint16_t>(nullptr, 1), 0);
    EXPECT_EQ(get_scalar<std::uint32_t>(nullptr, 0), 0u);
    EXPECT_EQ(get_bits<std::uint32_t>(nullptr, 0, 3, 2), 0u);
    EXPECT_EQ(get_bits<std::uint8_t>(nullptr, 0, 3, 2), 0);
}

TEST(bit_fields, keep_their_neighbours)
{
    block record{byte_list{0xff, 0x00, 0xff, 0x00}};
    set_bits<std::uint16_t>(record, 1, 6, 4, 0x15); // cut to 5: bits 6 and 8
    EXPECT_EQ(record.bytes(), (byte_list{0xff, 0x40, 0xfd, 0x00}));
    EXPECT_EQ(get_bits<std::uint16_t>(record, 1, 6, 4), 5);
    set_bits<std::uint8_t>(record, 0, 0, 8, 0);
    EXPECT_EQ(record.bytes(), (byte_list{0x00, 0x40, 0xfd, 0x00}));
}

// The element rules of one storage width, in a record with a byte before and one behind the array.
template <class Storage> void expect_elements()
{
    captured_output output;
    constexpr std::uint32_t count = 6;
    constexpr auto width = static_cast<std::uint32_t>(sizeof(Storage));
    const auto pattern = static_cast<Storage>(0x89abcdef);
    for (std::uint32_t index = 0; index < count; ++index) {
        block record{2 + count * width};
        auto right = record.bytes();
        std::memcpy(&right[1 + index * width], &pattern, width);
        set_element<Storage>(record, 1, count, 0x89abcdef, index, "setter");
        EXPECT_EQ(record.bytes(), right);
        for (std::uint32_t each = 0; each < count; ++each)
            EXPECT_EQ(get_element<Storage>(record, 1, count, each), each == index ? pattern : 0);
    }
    block record{2 + count * width};
    for (const std::uint32_t index : {6u, 7u, 0x10000u, 0x40000000u, 0x80000000u, 4294967294u}) {
        set_element<Storage>(record, 1, count, 5, index, "qx_pkt_info_set_da_mac");
        EXPECT_EQ(output.take(), "qx_pkt_info_set_da_mac bad Index \n") << index;
        EXPECT_EQ(get_element<Storage>(record, 1, count, index), 0u);
    }
    EXPECT_EQ(record.bytes(), byte_list(2 + count * width));
    set_element<Storage>(record, 1, count, 0x89abcdef, 4294967295, "setter");
    EXPECT_EQ(record.bytes().front(), 0);
    EXPECT_EQ(record.bytes().back(), 0);
    for (std::uint32_t each = 0; each < count; ++each)
        EXPECT_EQ(get_element<Storage>(record, 1, count, each), pattern);
    EXPECT_EQ(get_element<Storage>(record, 1, count, 6), 0u);
    EXPECT_EQ(get_element<Storage>(record, 1, count, 4294967295), 0u);
    for (const std::uint32_t index : {0u, 6u, 4294967295u}) {
        set_element<Storage>(nullptr, 1, count, 5, index, "setter");
        EXPECT_EQ(get_element<Storage>(nullptr, 1, count, index), 0u);
    }
    EXPECT_EQ(output.take(), "");
}

TEST(elements, of_8_bits)
{
    expect_elements<std::uint8_t>();
}

TEST(elements, of_16_bits)
{
    expect_elements<std::uint16_t>();
}

TEST(elements, of_32_bits)
{
    expect_elements<std::uint32_t>();
}

TEST(bad_indices, are_reported_in_one_piece)
{
    captured_output output;
    report_bad_index("qx_flow_set_swid_array");
    EXPECT_EQ(output.calls(), 1);
    EXPECT_EQ(output.take(), "qx_flow_set_swid_array bad Index \n");
    report_bad_index("%s%n"); // a name is no format
    EXPECT_EQ(output.take(), "%s%n bad Index \n");
}

} // namespace
