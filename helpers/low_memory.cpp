// Block memory for 64-bit builds: the standard library's pools over mappings below 4 GiB. Each
// block has an eight-byte header, since a pool needs the size when a block is freed. Small blocks
// are cut from chunks: the pool would round up their sizes and is slower. With QXSH_MEMORY_TOOLS
// the sanitizer and valgrind treat the blocks like malloc's.
#include "helpers/block_memory.h"

#include "records/addresses.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <memory_resource>
#include <new>

#ifdef QXSH_MEMORY_TOOLS
#include <sanitizer/asan_interface.h>
#include <valgrind/memcheck.h>
#else
#define ASAN_POISON_MEMORY_REGION(address, size)
#define ASAN_UNPOISON_MEMORY_REGION(address, size)
#define VALGRIND_MALLOCLIKE_BLOCK(address, size, red_zone, zeroed)
#define VALGRIND_FREELIKE_BLOCK(address, red_zone)
#define VALGRIND_MAKE_MEM_DEFINED(address, size)
#endif

namespace qxsh {

static_assert(sizeof(void *) == 8);

namespace {

// Maps ranges below 4 GiB, at the lowest free address. The kernel is only given hints, so nothing
// already mapped (a library, the sanitizer's shadow, another module's blocks) is replaced.
class low_mappings : public std::pmr::memory_resource
{
public:
    bool contains(std::uintptr_t address)
    {
        if (address - last_start_ < last_size_)
            return true;
        const auto next = ranges_.upper_bound(address);
        if (next == ranges_.begin() || address >= std::prev(next)->second)
            return false;
        last_start_ = std::prev(next)->first;
        last_size_ = std::prev(next)->second - last_start_;
        return true;
    }

private:
    // Leaves room for a program that is not position independent, and its heap.
    static constexpr std::uintptr_t first_address = 0x10000000;
    static constexpr std::uintptr_t end_address = std::uintptr_t{1} << 32;
    static constexpr std::uintptr_t step = 0x100000;

    void *do_allocate(std::size_t bytes, std::size_t) override
    {
        const auto size = round_up(bytes, static_cast<std::size_t>(sysconf(_SC_PAGESIZE)));
        auto address = first_address;
        while (size <= end_address - address) {
            if (const auto end = end_of_known_range(address, size); end != 0) {
                address = end;
                continue;
            }
            if (map_at(address, size)) {
                note(address, size);
                return reinterpret_cast<void *>(address);
            }
            address = round_up(address + 1, step);
        }
        throw std::bad_alloc{};
    }

    void do_deallocate(void *start, std::size_t, std::size_t) override
    {
        const auto range = ranges_.find(reinterpret_cast<std::uintptr_t>(start));
        // A later mapping here must not inherit the marks of freed blocks.
        ASAN_UNPOISON_MEMORY_REGION(start, range->second - range->first);
        munmap(start, range->second - range->first);
        ranges_.erase(range);
        last_size_ = 0;
    }

    bool do_is_equal(const memory_resource &other) const noexcept override
    {
        return this == &other;
    }

    static std::uintptr_t round_up(std::uintptr_t value, std::uintptr_t unit)
    {
        return (value + unit - 1) / unit * unit;
    }

    // The end of one of our ranges that overlaps [address, address + size), or 0.
    std::uintptr_t end_of_known_range(std::uintptr_t address, std::size_t size) const
    {
        auto next = ranges_.upper_bound(address);
        if (next != ranges_.begin() && std::prev(next)->second > address)
            return std::prev(next)->second;
        if (next != ranges_.end() && next->first < address + size)
            return next->second;
        return 0;
    }

    static bool map_at(std::uintptr_t address, std::size_t size)
    {
        auto *const hint = reinterpret_cast<void *>(address);
        void *const got =
            mmap(hint, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (got == hint)
            return true;
        if (got != MAP_FAILED)
            munmap(got, size);
        return false;
    }

    // Without memory for the note there must be no mapping.
    void note(std::uintptr_t address, std::size_t size)
    {
        try {
            ranges_.emplace(address, address + size);
        } catch (...) {
            munmap(reinterpret_cast<void *>(address), size);
            throw;
        }
    }

    std::map<std::uintptr_t, std::uintptr_t> ranges_; // start -> end
    std::uintptr_t last_start_ = 0; // the last range in which an address was found
    std::uintptr_t last_size_ = 0;
};

struct header
{
    std::uint32_t size;  // of the block, or no_block
    std::uint32_t check; // of a free block: the address of the next free one of its size
};

constexpr std::uint32_t no_block = UINT32_MAX;

constexpr std::size_t alignment = 8;
#ifdef QXSH_MEMORY_TOOLS
constexpr std::size_t red_zone = 16; // after the block; the header guards its start
#else
constexpr std::size_t red_zone = 0;
#endif

// Neither is ever destroyed: scripts may hold blocks until the process ends.
low_mappings &mappings()
{
    static auto *const instance = new low_mappings;
    return *instance;
}

std::pmr::memory_resource &pool()
{
    static auto *const instance = new std::pmr::unsynchronized_pool_resource(&mappings());
    return *instance;
}

// Blocks of up to this many bytes, with their header, are cut to size from chunks; freed ones go to
// a list for their size. Larger ones come from the pool.
constexpr std::size_t small_bytes = 1024;
constexpr std::size_t chunk_bytes = 256 * 1024;
header *free_lists[small_bytes / alignment + 1];
char *chunk; // the rest of the newest one
std::size_t chunk_left;

void add_to_list(header *head, std::size_t bytes)
{
    header *&list = free_lists[bytes / alignment];
    head->size = no_block;
    head->check = address_of(list);
    list = head;
    ASAN_POISON_MEMORY_REGION(head, bytes);
}

header *take_from_list(std::size_t bytes)
{
    header *&list = free_lists[bytes / alignment];
    header *const head = list;
    if (head != nullptr) {
        ASAN_UNPOISON_MEMORY_REGION(head, bytes);
        list = static_cast<header *>(pointer_to(head->check));
    }
    return head;
}

header *take_from_pool(std::size_t bytes)
{
    try {
        auto *const memory = pool().allocate(bytes, alignment);
        ASAN_UNPOISON_MEMORY_REGION(memory, bytes);
        return static_cast<header *>(memory);
    } catch (const std::bad_alloc &) {
        return nullptr;
    }
}

bool start_chunk()
{
    void *const memory = take_from_pool(chunk_bytes);
    if (memory == nullptr)
        return false;
    if (chunk_left >= sizeof(header)) // the rest of the old one becomes a free block
        add_to_list(reinterpret_cast<header *>(chunk), chunk_left);
    chunk = static_cast<char *>(memory);
    chunk_left = chunk_bytes;
    return true;
}

header *cut_from_chunk(std::size_t bytes)
{
    if (chunk_left < bytes && !start_chunk())
        return nullptr;
    auto *const head = reinterpret_cast<header *>(chunk);
    chunk += bytes;
    chunk_left -= bytes;
    return head;
}

header *take_memory(std::size_t bytes)
{
    if (bytes > small_bytes)
        return take_from_pool(bytes);
    header *const head = take_from_list(bytes);
    return head != nullptr ? head : cut_from_chunk(bytes);
}

std::size_t bytes_for(std::uint32_t size)
{
    const std::size_t user = (size != 0 ? size : 1) + red_zone;
    return (sizeof(header) + user + alignment - 1) / alignment * alignment;
}

// Marks a live block. Depends on its address, so a copied or moved header does not match.
std::uint32_t check_word(const header *block, std::uint32_t size)
{
    return address_of(block) ^ size ^ 0x71787368u;
}

[[noreturn]] void report_bad_free(void *block)
{
    std::fflush(stdout);
    std::fprintf(stderr, "qx_data_free: 0x%08lx is not a live block\n",
                 reinterpret_cast<unsigned long>(block));
    std::abort();
}

} // namespace

void *allocate_block(std::uint32_t size)
{
    if (size > INT32_MAX)
        return nullptr;
    const auto bytes = bytes_for(size);
    header *const head = take_memory(bytes);
    if (head == nullptr)
        return nullptr;
    VALGRIND_MAKE_MEM_DEFINED(head, sizeof *head);
    *head = {size, check_word(head, size)};
    void *const block = head + 1;
    VALGRIND_MALLOCLIKE_BLOCK(block, size, red_zone, 1);
    std::memset(block, 0, size);
    ASAN_POISON_MEMORY_REGION(head, sizeof *head);
    ASAN_POISON_MEMORY_REGION(static_cast<char *>(block) + size, bytes - sizeof *head - size);
    return block;
}

void free_block(void *block)
{
    if (block == nullptr)
        return;
    const auto address = reinterpret_cast<std::uintptr_t>(block);
    auto *const head = reinterpret_cast<header *>(address - sizeof(header));
    if (address % alignment != 0 || !mappings().contains(address - sizeof(header)))
        report_bad_free(block);
    ASAN_UNPOISON_MEMORY_REGION(head, sizeof *head);
    if (head->size == no_block || head->check != check_word(head, head->size))
        report_bad_free(block);
    const auto bytes = bytes_for(head->size);
    VALGRIND_FREELIKE_BLOCK(block, red_zone);
    if (bytes <= small_bytes) {
        add_to_list(head, bytes);
    } else {
        head->size = no_block;
        ASAN_POISON_MEMORY_REGION(head, bytes);
        pool().deallocate(head, bytes, alignment);
    }
}

} // namespace qxsh
