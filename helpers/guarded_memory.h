// Guarded access to memory that a script names. A handle may be stale, computed or made up. If
// there is no memory the kernel sends a signal; a handler that calls leave_guarded_access() makes
// the access return 0 without effect, the helper continues, and its command reports the fault.
// Continuing is safe because helpers hold no lock, allocation or state. Numbers are little-endian,
// at any alignment. Without such a handler a bad access ends the process as usual.
#pragma once

#include <cstddef>
#include <cstdint>

namespace qxsh {

/// The first bad access since the last report.
struct memory_fault
{
    bool happened;
    std::uint32_t address; ///< the low 32 bits, as in a handle
};

/// Whether the processor accesses numbers at any alignment.
#if defined(__arm__) && !defined(__ARM_FEATURE_UNALIGNED)
constexpr bool any_alignment = false;
#else
constexpr bool any_alignment = true;
#endif

/// Set by leave_guarded_access; whoever reports the fault clears it.
[[gnu::visibility("hidden")]] extern memory_fault pending_fault;

std::uint8_t load_8(const void *address);
std::uint16_t load_16(const void *address);
std::uint32_t load_32(const void *address);
void store_8(void *address, std::uint32_t value);
void store_16(void *address, std::uint32_t value);
void store_32(void *address, std::uint32_t value);

/// Whether `size` bytes (1 to 4096, so at most two pages) can be read; if not, sets pending_fault.
bool can_read(const void *address, std::size_t size);

/// The same for writing; the bytes keep their values.
bool can_write(void *address, std::size_t size);

/// The same for copying them from `source` to `target`, which may overlap; copies nothing.
bool can_copy(void *target, const void *source, std::size_t size);

/// For a handler of SIGSEGV and SIGBUS; `context` is its third argument. If one of the functions
/// above was interrupted, makes it return 0 when the handler returns, records the first fault at
/// `address`, and returns true. Returns false, with nothing changed, for any other fault, and
/// always on an unknown processor or in a build without optimisation. Async-signal-safe.
bool leave_guarded_access(void *context, const void *address);

} // namespace qxsh
