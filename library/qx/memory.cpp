// The library of the package qx: a record's bytes in one go, whatever its handle points to.
//
//   qx::memory::read HANDLE SIZE     -> the bytes; an error if there is no such memory
//   qx::memory::write HANDLE BYTES   the same way back
//
// Which type a handle has to have is the scripts' business; see records.tcl.
#include "transfer.h"

#include <tcl.h>

#include <cerrno>
#include <cstdint>
#include <cstring>

namespace {

int hex_digit(char digit)
{
    if (digit >= '0' && digit <= '9')
        return digit - '0';
    return digit >= 'a' && digit <= 'f' ? digit - 'a' + 10 : -1;
}

// A handle begins with an underscore and the address's four bytes in memory order. Gives null for
// anything else.
void *address_in(const char *handle)
{
    unsigned char bytes[4];
    if (*handle++ != '_')
        return nullptr;
    for (unsigned char &byte : bytes) {
        const int high = hex_digit(handle[0]);
        const int low = high < 0 ? -1 : hex_digit(handle[1]);
        if (low < 0)
            return nullptr;
        byte = static_cast<unsigned char>(16 * high + low);
        handle += 2;
    }
    std::uint32_t address;
    std::memcpy(&address, bytes, sizeof address);
    return reinterpret_cast<void *>(static_cast<std::uintptr_t>(address));
}

int refuse(Tcl_Interp *interp, const char *handle)
{
    Tcl_ResetResult(interp);
    Tcl_SetErrorCode(interp, "QX", "MEMORY", handle, nullptr);
    Tcl_AppendResult(interp, "there is no memory of a record at ", handle, nullptr);
    return TCL_ERROR;
}

int read_command(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    int size;
    if (objc != 3) {
        Tcl_WrongNumArgs(interp, 1, objv, "handle size");
        return TCL_ERROR;
    }
    if (Tcl_GetIntFromObj(interp, objv[2], &size) != TCL_OK)
        return TCL_ERROR;
    const char *const handle = Tcl_GetString(objv[1]);
    const void *const address = address_in(handle);
    unsigned char bytes[qxsh::largest_transfer];
    if (address == nullptr || size < 0 || size > static_cast<int>(sizeof bytes) ||
        !qxsh::transfer(bytes, address, static_cast<std::size_t>(size)))
        return refuse(interp, handle);
    Tcl_SetObjResult(interp, Tcl_NewByteArrayObj(bytes, size));
    return TCL_OK;
}

int write_command(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    if (objc != 3) {
        Tcl_WrongNumArgs(interp, 1, objv, "handle bytes");
        return TCL_ERROR;
    }
    const char *const handle = Tcl_GetString(objv[1]);
    void *const address = address_in(handle);
    int size;
    const unsigned char *const bytes = Tcl_GetByteArrayFromObj(objv[2], &size);
    if (address == nullptr || size > qxsh::largest_transfer ||
        !qxsh::transfer(address, bytes, static_cast<std::size_t>(size)))
        return refuse(interp, handle);
    return TCL_OK;
}

} // namespace

extern "C" __attribute__((visibility("default"))) int Qxmemory_Init(Tcl_Interp *interp)
{
    if (Tcl_InitStubs(interp, "8.5", 0) == nullptr)
        return TCL_ERROR;
    Tcl_CreateObjCommand(interp, "::qx::memory::read", read_command, nullptr, nullptr);
    Tcl_CreateObjCommand(interp, "::qx::memory::write", write_command, nullptr, nullptr);
    return TCL_OK;
}
