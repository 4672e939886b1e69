// Names, numbers and handles; see record_session.h.
#include "library/qx/record_session.h"

#include "records/addresses.h"
#include "runtime/handle_text.h"

#include <cstring>

namespace qxsh {

namespace {

// "_", the address's four bytes in memory order as hex digits, "_p_" and the record's name.
constexpr int digits_at = 1;
constexpr int mark_at = digits_at + address_digits;
constexpr int record_at = mark_at + 3;

const Tcl_ObjType *type_of(Tcl_Obj *object)
{
    Tcl_IncrRefCount(object);
    const Tcl_ObjType *const type = object->typePtr;
    Tcl_DecrRefCount(object);
    return type;
}

// Tcl's empty list has no type.
Tcl_Obj *list_of_one()
{
    Tcl_Obj *const element = Tcl_NewObj();
    return Tcl_NewListObj(1, &element);
}

} // namespace

record_session::record_session(Tcl_Interp *interp)
    : interp_(interp), names_(reinterpret_cast<Tcl_Obj **>(
                           Tcl_Alloc(static_cast<unsigned>(field_count * sizeof(Tcl_Obj *))))),
      dict_type_(type_of(Tcl_NewDictObj())),
      list_type_(type_of(list_of_one())), number_types_{type_of(Tcl_NewLongObj(0)),
                                                        type_of(Tcl_NewWideIntObj(INT64_MAX))}
{
    for (unsigned i = 0; i < field_count; ++i) {
        names_[i] = Tcl_NewStringObj(field_rows[i].name.text(), -1);
        Tcl_IncrRefCount(names_[i]);
    }
    Tcl_InitHashTable(&records_, TCL_STRING_KEYS);
    for (int i = 0; i < record_count; ++i) {
        int is_new;
        Tcl_HashEntry *const entry =
            Tcl_CreateHashEntry(&records_, record_rows[i].name.text(), &is_new);
        Tcl_SetHashValue(entry, const_cast<record_row *>(record_rows + i));
    }
}

record_session::~record_session()
{
    for (unsigned i = 0; i < field_count; ++i)
        Tcl_DecrRefCount(names_[i]);
    Tcl_Free(reinterpret_cast<char *>(names_));
    Tcl_DeleteHashTable(&records_);
}

const record_row *record_session::record(const char *name) const
{
    auto *const table = const_cast<Tcl_HashTable *>(&records_);
    Tcl_HashEntry *const entry = Tcl_FindHashEntry(table, name);
    return entry == nullptr ? nullptr : static_cast<const record_row *>(Tcl_GetHashValue(entry));
}

// Recognises a handle by its text alone; "NULL" and other words are not recognised.
bool record_session::recognise(Tcl_Obj *handle, found_record &found)
{
    int length;
    const char *const text = Tcl_GetStringFromObj(handle, &length);
    std::uint32_t address;
    if (length <= record_at || text[0] != '_' || std::memcmp(text + mark_at, "_p_", 3) != 0 ||
        !read_address(text + digits_at, address) || address == 0)
        return false;
    if (std::strcmp(text + record_at, last_->name.text()) != 0) {
        const record_row *const row = record(text + record_at);
        if (row == nullptr)
            return false;
        last_ = row;
    }
    found = {last_, static_cast<unsigned char *>(pointer_to(address))};
    return true;
}

// Other words go to the scripts, which ask the module's commands whether they are handles and set
// the error if not.
bool record_session::ask_module(Tcl_Obj *handle, found_record &found)
{
    if (!run_script("::qx::handle::of_record", {handle}))
        return false;
    Tcl_Obj *plain;
    if (Tcl_ListObjIndex(interp_, Tcl_GetObjResult(interp_), 1, &plain) != TCL_OK)
        return false;
    const bool recognised = plain != nullptr && recognise(plain, found);
    Tcl_ResetResult(interp_);
    if (recognised && access_ != nullptr)
        return true;
    Tcl_SetErrorCode(interp_, "QX", "HANDLE", Tcl_GetString(handle), nullptr);
    Tcl_AppendResult(interp_, "records are read and written where package demo is loaded", nullptr);
    return false;
}

bool record_session::run_script(const char *command, std::initializer_list<Tcl_Obj *> words) const
{
    Tcl_Obj *const list = Tcl_NewListObj(static_cast<int>(words.size()), words.begin());
    Tcl_Obj *const name = Tcl_NewStringObj(command, -1);
    Tcl_ListObjReplace(nullptr, list, 0, 0, 1, &name);
    Tcl_IncrRefCount(list);
    const int status = Tcl_EvalObjEx(interp_, list, TCL_EVAL_GLOBAL);
    Tcl_DecrRefCount(list);
    return status == TCL_OK;
}

bool record_session::is_structured(Tcl_Obj *object) const
{
    int count;
    return is_dict(object) || (object->typePtr == list_type_ &&
                               Tcl_ListObjLength(nullptr, object, &count) == TCL_OK && count != 1);
}

bool record_session::refuse_memory(Tcl_Obj *handle, Tcl_Obj *text)
{
    Tcl_SetObjResult(interp_, text);
    Tcl_SetErrorCode(interp_, "QX", "MEMORY", Tcl_GetString(handle), nullptr);
    return false;
}

bool record_session::refuse_missing(Tcl_Obj *handle)
{
    return refuse_memory(
        handle, Tcl_ObjPrintf("there is no memory of a record at %s", Tcl_GetString(handle)));
}

bool record_session::find(Tcl_Obj *handle, found_record &found)
{
    // Looked up here, so that the first record of a process is refused as all others are.
    if (access_ == nullptr)
        access_ = static_cast<const memory_access *>(
            Tcl_GetAssocData(interp_, memory_access_name, nullptr));
    const bool at_once = access_ != nullptr && recognise(handle, found);
    if (!at_once && !ask_module(handle, found))
        return false;
    if (access_->allows != nullptr &&
        !access_->allows(interp_, found.memory, found.row->name.text()))
        return refuse_memory(handle, Tcl_GetObjResult(interp_));
    return access_->can_read(found.memory, found.row->size) || refuse_missing(handle);
}

bool record_session::check_writable(Tcl_Obj *handle, const found_record &found)
{
    return access_->can_write(found.memory, found.row->size) || refuse_missing(handle);
}

record_session::taken record_session::take_number(Tcl_Obj *object, std::uint32_t greatest,
                                                  std::uint32_t &value) const
{
    Tcl_WideInt wide;
    if (Tcl_GetWideIntFromObj(nullptr, object, &wide) != TCL_OK)
        return taken::no_number;
    // Tcl misreads some numbers of more than 64 bits; the object then has another type.
    const auto *const type = object->typePtr;
    if (wide < 0 || wide > greatest || (type != number_types_[0] && type != number_types_[1]))
        return taken::outside;
    value = static_cast<std::uint32_t>(wide);
    return taken::number;
}

} // namespace qxsh
