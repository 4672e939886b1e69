// An extension for tests: memory whose ends and rights are known. Each command gives the eight
// digits of an address as handles have them.
//
//   pages_end         behind a writable page of zeroes, where there is no memory
//   pages_read_only   a page of zeroes that cannot be written, and none behind it
//   pages_file_end    behind the last page of a file, where a mapping of it goes on
#include <tcl.h>

#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>

namespace {

const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));

// Three pages below 4 GiB, where nothing else is.
char *three_pages(int rights, int flags, int file)
{
    static std::uintptr_t hint = 0xe0000000;
    for (;;) {
        hint -= 16 * page;
        auto *const wanted = reinterpret_cast<void *>(hint);
        void *const got = mmap(wanted, 3 * page, rights, flags, file, 0);
        if (got == wanted)
            return static_cast<char *>(got);
        if (got == MAP_FAILED)
            return nullptr;
        munmap(got, 3 * page);
    }
}

int give(Tcl_Interp *interp, const char *address)
{
    auto rest = static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(address));
    char digits[9];
    for (int i = 0; i < 4; ++i, rest >>= 8)
        std::snprintf(digits + 2 * i, 3, "%02x", static_cast<unsigned>(rest & 0xff));
    Tcl_SetObjResult(interp, Tcl_NewStringObj(digits, 8));
    return TCL_OK;
}

// What a page of `rights` between two without any is asked for.
char *page_between(int rights)
{
    char *const pages = three_pages(PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1);
    mprotect(pages + page, page, rights);
    return pages + page;
}

int pages_end(ClientData, Tcl_Interp *interp, int, Tcl_Obj *const[])
{
    return give(interp, page_between(PROT_READ | PROT_WRITE) + page);
}

int pages_read_only(ClientData, Tcl_Interp *interp, int, Tcl_Obj *const[])
{
    return give(interp, page_between(PROT_READ));
}

int pages_file_end(ClientData, Tcl_Interp *interp, int, Tcl_Obj *const[])
{
    std::FILE *const file = std::tmpfile();
    if (file == nullptr || ftruncate(fileno(file), static_cast<off_t>(page)) != 0)
        return TCL_ERROR;
    return give(interp, three_pages(PROT_READ | PROT_WRITE, MAP_SHARED, fileno(file)) + page);
}

} // namespace

extern "C" DLLEXPORT int Pages_Init(Tcl_Interp *interp)
{
    if (Tcl_InitStubs(interp, "8.5", 0) == nullptr)
        return TCL_ERROR;
    Tcl_CreateObjCommand(interp, "pages_end", pages_end, nullptr, nullptr);
    Tcl_CreateObjCommand(interp, "pages_read_only", pages_read_only, nullptr, nullptr);
    Tcl_CreateObjCommand(interp, "pages_file_end", pages_file_end, nullptr, nullptr);
    return TCL_OK;
}
