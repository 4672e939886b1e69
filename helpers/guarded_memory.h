// Every access of a helper to memory that a script names goes through these functions. A handle may
// be stale, computed or made up; where there is no memory the kernel sends a signal, and a handler
// that calls leave_guarded_access() turns it into "nothing was read or written": the access returns
// 0, the helper goes on to its end, and the command that called it reports the fault. Nothing is
// lost by going on, since helpers hold nothing: no lock, no allocation, no state of their own.
// Little-endian, at any alignment. Without such a handler a bad access ends the process as usual.
#pragma once

#include <cstdint>

namespace qxsh {

/// The first access since the last report that met no memory.
struct memory_fault
{
    bool happened;
    std::uint32_t address; ///< its low 32 bits, which is all that a handle has
};

/// Whether this processor reads and writes numbers at any alignment.
#if defined(__arm__) && !defined(__ARM_FEATURE_UNALIGNED)
constexpr bool any_alignment = false;
#else
constexpr bool any_alignment = true;
#endif

/// Set by leave_guarded_access, cleared by whoever reports it.
[[gnu::visibility("hidden")]] extern memory_fault pending_fault;

std::uint8_t load_8(const void *address);
std::uint16_t load_16(const void *address);
std::uint32_t load_32(const void *address);
void store_8(void *address, std::uint32_t value);
void store_16(void *address, std::uint32_t value);
void store_32(void *address, std::uint32_t value);

/// Whether `size` bytes (1 to 4096, so at most two pages) can be read; it is pending_fault if not.
bool can_read(const void *address, std::uint32_t size);

/// Whether they can be written.
bool can_write(void *address, std::uint32_t size);

/// Whether they can be copied to `target`, as memmove does.
bool can_copy(void *target, const void *source, std::uint32_t size);

/// For the handler of SIGSEGV and SIGBUS: if `context` (its third argument) says that one of the
/// functions above was interrupted, makes it return 0 when the handler returns, notes the fault at
/// `address` and gives true. False: the fault is somebody else's, nothing is changed.
/// Async-signal-safe.
bool leave_guarded_access(void *context, const void *address);

} // namespace qxsh
