// Accesses that a signal handler can abort; see guarded_memory.h. They are in a section of their
// own, by which the handler recognises them. Each compiles to a few instructions that call nothing
// outside the section and use no stack, so returning 0 to the caller changes at most four
// registers. The register names in a signal's context are the kernel's; on a processor not listed
// here, or without optimisation, faults stay fatal.
#ifndef _GNU_SOURCE
#define _GNU_SOURCE // register names in ucontext_t
#endif
#include "helpers/guarded_memory.h"

#include "records/addresses.h"

#include <signal.h> // ucontext_t, as POSIX.1-2008 has it

#include <cstddef>
#include <cstring>

namespace qxsh {

constinit memory_fault pending_fault = {false, 0};

#define GUARDED [[gnu::section("qxsh_guarded"), gnu::noinline]]

namespace {

using byte = volatile unsigned char;

// Where the processor requires alignment, unaligned numbers are accessed byte by byte. memcpy would
// call the C library there.
constexpr std::uintptr_t alignment_mask = any_alignment ? 0 : ~std::uintptr_t{0};

template <class Number> [[gnu::always_inline]] inline bool in_one_piece(const void *address)
{
    return (reinterpret_cast<std::uintptr_t>(address) & alignment_mask & (sizeof(Number) - 1)) == 0;
}

template <class Number> [[gnu::always_inline]] inline Number load_piece(const void *address)
{
    constexpr std::size_t alignment = any_alignment ? 1 : sizeof(Number);
    Number value;
    std::memcpy(&value, __builtin_assume_aligned(address, alignment), sizeof value);
    return value;
}

template <class Number> [[gnu::always_inline]] inline void store_piece(void *address, Number value)
{
    constexpr std::size_t alignment = any_alignment ? 1 : sizeof(Number);
    std::memcpy(__builtin_assume_aligned(address, alignment), &value, sizeof value);
}

} // namespace

GUARDED std::uint8_t load_8(const void *address)
{
    return load_piece<std::uint8_t>(address);
}

GUARDED void store_8(void *address, std::uint32_t value)
{
    store_piece(address, static_cast<std::uint8_t>(value));
}

// The unaligned paths are separate functions so that the compiler does not merge them with the
// aligned ones.
GUARDED static std::uint16_t load_two_bytes(const void *address)
{
    const auto *const bytes = static_cast<const byte *>(address);
    const unsigned low = bytes[0];
    return static_cast<std::uint16_t>(low | static_cast<unsigned>(bytes[1]) << 8);
}

GUARDED static std::uint32_t load_four_bytes(const void *address)
{
    const auto *const bytes = static_cast<const byte *>(address);
    std::uint32_t value = bytes[0];
    value |= static_cast<std::uint32_t>(bytes[1]) << 8;
    value |= static_cast<std::uint32_t>(bytes[2]) << 16;
    return value | static_cast<std::uint32_t>(bytes[3]) << 24;
}

GUARDED static void store_two_bytes(void *address, std::uint32_t value)
{
    auto *const bytes = static_cast<byte *>(address);
    bytes[0] = static_cast<unsigned char>(value);
    bytes[1] = static_cast<unsigned char>(value >> 8);
}

GUARDED static void store_four_bytes(void *address, std::uint32_t value)
{
    auto *const bytes = static_cast<byte *>(address);
    bytes[0] = static_cast<unsigned char>(value);
    bytes[1] = static_cast<unsigned char>(value >> 8);
    bytes[2] = static_cast<unsigned char>(value >> 16);
    bytes[3] = static_cast<unsigned char>(value >> 24);
}

GUARDED std::uint16_t load_16(const void *address)
{
    if (!in_one_piece<std::uint16_t>(address)) [[unlikely]]
        return load_two_bytes(address);
    return load_piece<std::uint16_t>(address);
}

GUARDED std::uint32_t load_32(const void *address)
{
    if (!in_one_piece<std::uint32_t>(address)) [[unlikely]]
        return load_four_bytes(address);
    return load_piece<std::uint32_t>(address);
}

GUARDED void store_16(void *address, std::uint32_t value)
{
    if (!in_one_piece<std::uint16_t>(address)) [[unlikely]]
        return store_two_bytes(address, value);
    store_piece(address, static_cast<std::uint16_t>(value));
}

GUARDED void store_32(void *address, std::uint32_t value)
{
    if (!in_one_piece<std::uint32_t>(address)) [[unlikely]]
        return store_four_bytes(address, value);
    store_piece(address, value);
}

GUARDED bool can_read(const void *address, std::size_t size)
{
    const auto *const bytes = static_cast<const byte *>(address);
    static_cast<void>(bytes[0]);
    static_cast<void>(bytes[size - 1]);
    return true;
}

GUARDED bool can_write(void *address, std::size_t size)
{
    auto *const bytes = static_cast<byte *>(address);
    const unsigned char first = bytes[0];
    bytes[0] = first;
    const unsigned char last = bytes[size - 1];
    bytes[size - 1] = last;
    return true;
}

GUARDED bool can_copy(void *target, const void *source, std::size_t size)
{
    const auto *const from = static_cast<const byte *>(source);
    auto *const to = static_cast<byte *>(target);
    static_cast<void>(from[0]);
    static_cast<void>(from[size - 1]);
    const unsigned char first = to[0];
    to[0] = first;
    const unsigned char last = to[size - 1];
    to[size - 1] = last;
    return true;
}

// ------------------------------------------------------------------------------- the handler

// Defined by the linker.
extern "C" [[gnu::visibility("hidden")]] const char __start_qxsh_guarded[];
extern "C" [[gnu::visibility("hidden")]] const char __stop_qxsh_guarded[];

// interrupted_at() is the address of the interrupted instruction; return_zero() changes the
// registers as the function's return would. A return address on the stack is on top: the functions
// push nothing.

#if !defined(__OPTIMIZE__)

static constexpr bool known_here = false;
static std::uintptr_t interrupted_at(const ucontext_t &)
{
    return 0;
}
static void return_zero(ucontext_t &) {}

#elif defined(__x86_64__)

static constexpr bool known_here = true;

static std::uintptr_t interrupted_at(const ucontext_t &context)
{
    return static_cast<std::uintptr_t>(context.uc_mcontext.gregs[REG_RIP]);
}

static void return_zero(ucontext_t &context)
{
    auto &all = context.uc_mcontext.gregs;
    all[REG_RIP] = *reinterpret_cast<const greg_t *>(all[REG_RSP]);
    all[REG_RSP] += 8;
    all[REG_RAX] = 0;
}

#elif defined(__i386__)

static constexpr bool known_here = true;

static std::uintptr_t interrupted_at(const ucontext_t &context)
{
    return static_cast<std::uintptr_t>(context.uc_mcontext.gregs[REG_EIP]);
}

static void return_zero(ucontext_t &context)
{
    auto &all = context.uc_mcontext.gregs;
    all[REG_EIP] = *reinterpret_cast<const greg_t *>(all[REG_ESP]);
    all[REG_ESP] += 4;
    all[REG_EAX] = 0;
    all[REG_EDX] = 0;
}

#elif defined(__arm__)

static constexpr bool known_here = true;

static std::uintptr_t interrupted_at(const ucontext_t &context)
{
    return context.uc_mcontext.arm_pc;
}

static void return_zero(ucontext_t &context)
{
    auto &all = context.uc_mcontext;
    constexpr unsigned long thumb = 0x20;
    constexpr unsigned long conditional = 0x0600fc00; // the state of an IT block
    all.arm_cpsr &= ~(thumb | conditional);
    if ((all.arm_lr & 1) != 0)
        all.arm_cpsr |= thumb;
    all.arm_pc = all.arm_lr & ~1ul;
    all.arm_r0 = 0;
    all.arm_r1 = 0;
}

#else

static constexpr bool known_here = false;
static std::uintptr_t interrupted_at(const ucontext_t &)
{
    return 0;
}
static void return_zero(ucontext_t &) {}

#endif

bool leave_guarded_access(void *context, const void *address)
{
    if (!known_here)
        return false;
    auto &machine = *static_cast<ucontext_t *>(context);
    const auto at = interrupted_at(machine);
    if (at < reinterpret_cast<std::uintptr_t>(__start_qxsh_guarded) ||
        at >= reinterpret_cast<std::uintptr_t>(__stop_qxsh_guarded))
        return false;
    return_zero(machine);
    if (!pending_fault.happened)
        pending_fault = {true, address_of(address)};
    return true;
}

} // namespace qxsh
