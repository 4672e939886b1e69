// Block memory: places, sizes, zeroes, many blocks, no memory; what happens to a program that frees
// what is no block; and what the sanitizers see of it.
#include "helpers/block_memory.h"
#include "tests/unit/block.h"

#include <sys/mman.h>
#include <sys/resource.h>

#include <algorithm>
#include <csignal>
#include <random>
#include <set>
#include <vector>

#ifdef QXSH_SANITIZED
// Without this the sanitizer's allocator ends the process where malloc gives null.
extern "C" const char *__asan_default_options()
{
    return "allocator_may_return_null=1";
}
#endif

namespace {

using namespace qxsh;

std::uintptr_t address(const void *start)
{
    return reinterpret_cast<std::uintptr_t>(start);
}

TEST(blocks, are_aligned_zeroed_and_below_4_gib)
{
    std::vector<void *> blocks;
    for (std::uint32_t size = 0; size < 2000; ++size) {
        auto *const start = static_cast<unsigned char *>(allocate_block(size));
        ASSERT_NE(start, nullptr);
        EXPECT_EQ(address(start) % 8, 0u);
        EXPECT_LE(address(start) + size, std::uint64_t{1} << 32);
        EXPECT_TRUE(std::all_of(start, start + size, [](unsigned char byte) { return byte == 0; }));
        std::memset(start, 0xee, size);
        blocks.push_back(start);
    }
    for (auto *each : blocks)
        free_block(each);
}

TEST(blocks, are_zeroed_when_they_are_used_again)
{
    for (const std::uint32_t size : {1u, 8u, 24u, 212u, 4096u, 100000u, 10000000u}) {
        for (int time = 0; time < 3; ++time) {
            auto *const start = static_cast<unsigned char *>(allocate_block(size));
            ASSERT_NE(start, nullptr);
            EXPECT_TRUE(std::all_of(start, start + size, [](unsigned char b) { return b == 0; }));
            std::memset(start, 0xee, size);
            free_block(start);
        }
    }
}

#if UINTPTR_MAX > UINT32_MAX
// Our own block memory. Whatever a block's size is, what is freed is used again: a script that
// makes and frees records for ever stays as large as it is.
TEST(blocks, are_used_again)
{
    for (std::uint32_t size = 1; size <= 1100; ++size) {
        std::set<void *> places;
        for (int time = 0; time < 40; ++time) {
            void *const start = allocate_block(size);
            places.insert(start);
            free_block(start);
        }
        EXPECT_LE(places.size(), 2u) << size;
    }
}
#endif

TEST(blocks, of_size_0_are_distinct)
{
    std::vector<void *> blocks;
    for (int i = 0; i < 100; ++i)
        blocks.push_back(allocate_block(0));
    std::sort(blocks.begin(), blocks.end());
    EXPECT_NE(blocks.front(), nullptr);
    EXPECT_EQ(std::adjacent_find(blocks.begin(), blocks.end()), blocks.end());
    for (auto *each : blocks)
        free_block(each);
}

TEST(blocks, of_2_gib_and_more_do_not_exist)
{
    for (const std::uint32_t size :
         {0x80000000u, 0x80000001u, 0xc0000000u, 0xfffffff0u, UINT32_MAX})
        EXPECT_EQ(allocate_block(size), nullptr) << size;
}

// The system refuses; afterwards all is as before.
TEST(blocks, without_memory)
{
    constexpr std::uint32_t size = 100000000;
    free_block(allocate_block(1)); // what exists only once is there now
    rlimit limit;
    ASSERT_EQ(getrlimit(RLIMIT_AS, &limit), 0);
    const auto before = limit.rlim_cur;
    limit.rlim_cur = std::min<rlim_t>(before, 1000000);
    ASSERT_EQ(setrlimit(RLIMIT_AS, &limit), 0);
    void *const map = mmap(nullptr, size, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    void *const refused = allocate_block(size);
    limit.rlim_cur = before;
    ASSERT_EQ(setrlimit(RLIMIT_AS, &limit), 0);
    if (map != MAP_FAILED) {
        munmap(map, size);
        free_block(refused);
        GTEST_SKIP() << "limits of memory are not kept here, as under an emulator";
    }
    EXPECT_EQ(refused, nullptr);
    void *const given = allocate_block(size);
    EXPECT_NE(given, nullptr);
    free_block(given);
}

TEST(blocks, null_is_freed_without_effect)
{
    free_block(nullptr);
    free_block(nullptr);
}

// 100,000 blocks of all sizes; each is filled with a pattern of its own, which has to last.
TEST(blocks, do_not_overlap)
{
    struct entry
    {
        unsigned char *start;
        std::uint32_t size;
        unsigned char pattern;
    };
    std::mt19937 random{3};
    std::vector<entry> entries;
    const auto add = [&] {
        const auto pick = random() % 1000;
        const auto size = static_cast<std::uint32_t>(pick == 0   ? random() % 100000
                                                     : pick < 20 ? random() % 5000
                                                                 : random() % 250);
        auto *const start = static_cast<unsigned char *>(allocate_block(size));
        ASSERT_NE(start, nullptr);
        const auto pattern = static_cast<unsigned char>(random());
        std::memset(start, pattern, size);
        entries.push_back({start, size, pattern});
    };
    const auto release = [&](std::size_t number) {
        const auto &each = entries[number];
        ASSERT_TRUE(std::all_of(each.start, each.start + each.size,
                                [&](unsigned char byte) { return byte == each.pattern; }));
        free_block(each.start);
        entries[number] = entries.back();
        entries.pop_back();
    };
    while (entries.size() < 100000)
        add();
    for (int i = 0; i < 50000; ++i) // blocks that take the places of others
        random() % 2 != 0 ? add() : release(random() % entries.size());

    std::sort(entries.begin(), entries.end(),
              [](const entry &a, const entry &b) { return a.start < b.start; });
    for (std::size_t i = 1; i < entries.size(); ++i)
        ASSERT_GE(entries[i].start, entries[i - 1].start + std::max(entries[i - 1].size, 1u));
    while (!entries.empty())
        release(random() % entries.size());
}

TEST(blocks, of_many_megabytes)
{
    std::vector<unsigned char *> blocks;
    for (int i = 0; i < 8; ++i) {
        auto *const start = static_cast<unsigned char *>(allocate_block(20000000));
        ASSERT_NE(start, nullptr);
        EXPECT_LE(address(start) + 20000000, std::uint64_t{1} << 32);
        start[0] = start[19999999] = static_cast<unsigned char>(i);
        blocks.push_back(start);
    }
    for (int i = 0; i < 8; ++i) {
        EXPECT_EQ(blocks[i][0], i);
        EXPECT_EQ(blocks[i][19999999], i);
        free_block(blocks[i]);
    }
}

// What the process says when it stops: our own words on 64 bits, else those of the C library or the
// sanitizer.
#if UINTPTR_MAX > UINT32_MAX
constexpr const char *double_free = "is not a live block";
constexpr const char *bad_free = double_free;
#elif defined QXSH_SANITIZED
constexpr const char *double_free = "attempting double-free";
constexpr const char *bad_free = "attempting free on address which was not malloc";
#else
constexpr const char *double_free = "free|invalid pointer"; // it has several words for it
constexpr const char *bad_free = double_free;
#endif

// Why a wrong release cannot be tested.
#ifdef __UCLIBC__
constexpr const char *unnoticed = "uClibc does not notice a wrong release";
#else
constexpr const char *unnoticed = nullptr;
#endif

TEST(blocks_DeathTest, freed_twice)
{
    if (unnoticed != nullptr)
        GTEST_SKIP() << unnoticed;
    for (const std::uint32_t size : {0u, 4u, 212u, 10000u}) {
        void *const start = allocate_block(size);
        EXPECT_DEATH((free_block(start), free_block(start)), double_free) << size;
        free_block(start);
    }
}

#if UINTPTR_MAX > UINT32_MAX || !defined QXSH_SANITIZED
TEST(blocks_DeathTest, a_bad_free_aborts)
{
    if (unnoticed != nullptr)
        GTEST_SKIP() << unnoticed;
    void *const start = allocate_block(100);
    EXPECT_EXIT((free_block(start), free_block(start)), testing::KilledBySignal(SIGABRT),
                double_free);
    free_block(start);
}
#endif

TEST(blocks_DeathTest, freed_by_an_interior_pointer)
{
    if (unnoticed != nullptr)
        GTEST_SKIP() << unnoticed;
    for (const std::uint32_t offset : {8u, 16u, 1u, 4u, 200u}) {
#if UINTPTR_MAX == UINT32_MAX && defined QXSH_SANITIZED
        // There AddressSanitizer takes the number of a call stack for a block's state: one number
        // in 256 looks like a live block.
        if (offset == 8)
            continue;
#endif
        block room{212};
        EXPECT_DEATH(free_block(room.at(offset)), bad_free) << offset;
        room.fill(0xff);
        EXPECT_DEATH(free_block(room.at(offset)), bad_free) << offset;
    }
}

#if UINTPTR_MAX > UINT32_MAX && !defined QXSH_SANITIZED
// A copy of a block, its header included, is no block.
TEST(blocks_DeathTest, freed_by_a_copy)
{
    block room{200};
    block original{16};
    std::memcpy(room.at(32), original.at(0) - 8, 24);
    EXPECT_DEATH(free_block(room.at(40)), bad_free);
}
#endif

#if UINTPTR_MAX > UINT32_MAX
TEST(blocks_DeathTest, other_memory_freed)
{
    alignas(16) unsigned char local[64] = {};
    const std::vector<unsigned char> heap(64);
    EXPECT_DEATH(free_block(local + 32), bad_free);
    EXPECT_DEATH(free_block(const_cast<unsigned char *>(heap.data())), bad_free);
    EXPECT_DEATH(free_block(reinterpret_cast<void *>(8)), bad_free);
    EXPECT_DEATH(free_block(reinterpret_cast<void *>(1)), bad_free);
    EXPECT_DEATH(free_block(reinterpret_cast<void *>(0xfffffff8)), bad_free);
}
#endif

#ifdef QXSH_SANITIZED
void write(const unsigned char *where)
{
    *const_cast<volatile unsigned char *>(where) = 1;
}

unsigned char read(const unsigned char *where)
{
    return *static_cast<const volatile unsigned char *>(where);
}

// Each report takes a while, so only the byte behind the block is tried for every size.
TEST(sanitized_blocks_DeathTest, are_not_overrun)
{
    for (const std::uint32_t size : {1u, 3u, 7u, 8u, 12u, 21u, 212u, 5000u}) {
        const block room{size};
        EXPECT_DEATH(write(room.at(size)), "AddressSanitizer") << size;
        for (std::uint32_t i = 0; i < size; ++i)
            write(room.at(i));
    }
    const block room{12};
    EXPECT_DEATH(read(room.at(12)), "AddressSanitizer");
    EXPECT_DEATH(write(room.at(12) + 7), "AddressSanitizer");
    EXPECT_DEATH(write(room.at(0) - 1), "AddressSanitizer");
}

TEST(sanitized_blocks_DeathTest, are_not_used_after_free)
{
    for (const std::uint32_t size : {4u, 212u, 5000u}) {
        auto *const start = static_cast<unsigned char *>(allocate_block(size));
        free_block(start);
        EXPECT_DEATH(write(start + size - 1), "AddressSanitizer") << size;
    }
    auto *const start = static_cast<unsigned char *>(allocate_block(12));
    free_block(start);
    EXPECT_DEATH(read(start), "AddressSanitizer");
}
#endif

} // namespace
