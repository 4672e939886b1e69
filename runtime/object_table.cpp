// The object table, a Tcl hash table with one-word keys; see object_table.h.
#include "runtime/object_table.h"

#include "runtime/tcl_api.h"

namespace qxsh::object_table {

static Tcl_HashTable *table()
{
    static Tcl_HashTable pointers;
    static bool initialised = false;
    if (!initialised) {
        Tcl_InitHashTable(&pointers, TCL_ONE_WORD_KEYS);
        initialised = true;
    }
    return &pointers;
}

static Tcl_HashEntry *find(void *pointer)
{
    return Tcl_FindHashEntry(table(), static_cast<const char *>(pointer));
}

void acquire(void *pointer)
{
    int is_new;
    Tcl_CreateHashEntry(table(), static_cast<const char *>(pointer), &is_new);
}

bool disown(void *pointer)
{
    Tcl_HashEntry *const entry = find(pointer);
    if (entry == nullptr)
        return false;
    Tcl_DeleteHashEntry(entry);
    return true;
}

bool owned(void *pointer)
{
    return find(pointer) != nullptr;
}

} // namespace qxsh::object_table
