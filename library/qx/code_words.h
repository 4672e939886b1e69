// The code words and the address families of the profile in use, for code that reads and writes
// records. They come from the package's scripts (profile.tcl), when they are first needed.
#pragma once

#include "records/table.h"

#include <tcl.h>

#include <climits>
#include <cstdint>

namespace qxsh {

class record_session;

/// The words of a field or an argument, as the profile lists them: at least one.
struct code_list
{
    struct code
    {
        std::uint32_t number;
        Tcl_Obj *word; ///< owned by the book
    };

    code_list *next; ///< of the same book
    int count;
    code *codes;

    /// Finds the number of a word. Returns false, with `number` unchanged, if it is none of them.
    bool number_of(const char *word, std::uint32_t &number) const;

    /// The word for a number, the same object each time, or a new object of the number.
    Tcl_Obj *shown(std::uint32_t number) const;

    /// The text that a word is neither a number nor one of these: a new object.
    Tcl_Obj *refusal(const char *word) const;
};

/// A new object of an unsigned number.
inline Tcl_Obj *new_number(std::uint32_t value)
{
    if constexpr (LONG_MAX < UINT32_MAX)
        if (value > static_cast<std::uint32_t>(LONG_MAX))
            return Tcl_NewWideIntObj(value);
    return Tcl_NewLongObj(static_cast<long>(value));
}

struct address_families
{
    std::uint32_t ipv4 = 0;
    std::uint32_t ipv6 = 1;

    /// The version of a family, 4, 6 or 0 if it is unknown, and back.
    int version_of(std::uint32_t family) const
    {
        return family == ipv4 ? 4 : family == ipv6 ? 6 : 0;
    }
    std::uint32_t family_of(int version) const { return version == 4 ? ipv4 : ipv6; }
};

class code_book
{
public:
    /// The session must outlive the book.
    explicit code_book(const record_session &session);
    ~code_book();
    code_book(const code_book &) = delete;
    code_book &operator=(const code_book &) = delete;

    /// Learns what the profile in use says, unless the book knows it already. Returns false, with
    /// an error in the interpreter, if the profile cannot be read. All others below need it.
    bool open();

    /// The words of a field or an argument; null if it has none.
    const code_list *of(const field_row &field) const { return lists_[&field - field_rows]; }
    const code_list *of(const argument_row &argument) const;

    const address_families &families() const { return families_; }

    /// Forgets everything: another profile is in use.
    void close();

private:
    bool read(Tcl_Obj *content);
    bool read_families(Tcl_Obj *const numbers[]);
    bool read_words(const code_list *&list, Tcl_Obj *words);
    const code_list **place(const char *name);
    Tcl_Interp *interp() const;

    const record_session &session_;
    const code_list **const lists_; // by number of the field, then by number of the argument
    code_list *all_ = nullptr;
    address_families families_;
    bool open_ = false;
};

} // namespace qxsh
