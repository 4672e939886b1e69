// Reading the profile's code words from its Tcl form; see code_words.h.
#include "library/qx/code_words.h"

#include "library/qx/record_session.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace qxsh {

namespace {

int argument_count()
{
    const call_row &last = call_rows[call_count - 1];
    return last.first + last.arguments;
}

int list_count()
{
    return field_count + argument_count();
}

// The row with this name, or null.
template <class Rows> auto *named(Rows &&rows, std::string_view name)
{
    for (auto &row : rows)
        if (name == row.name.text())
            return &row;
    return static_cast<decltype(&*std::begin(rows))>(nullptr);
}

} // namespace

bool code_list::number_of(const char *word, std::uint32_t &number) const
{
    for (int i = 0; i < count; ++i) {
        if (std::strcmp(Tcl_GetString(codes[i].word), word) == 0) {
            number = codes[i].number;
            return true;
        }
    }
    return false;
}

Tcl_Obj *code_list::shown(std::uint32_t number) const
{
    for (int i = 0; i < count; ++i)
        if (codes[i].number == number)
            return codes[i].word;
    return new_number(number);
}

Tcl_Obj *code_list::refusal(const char *word) const
{
    Tcl_Obj *const text = Tcl_ObjPrintf("\"%s\" is neither a number nor one of ", word);
    for (int i = 0; i < count; ++i)
        Tcl_AppendStringsToObj(text, i == 0 ? "" : ", ", Tcl_GetString(codes[i].word), nullptr);
    return text;
}

code_book::code_book(const record_session &session)
    : session_(session), lists_(reinterpret_cast<const code_list **>(
                             Tcl_Alloc(static_cast<unsigned>(list_count()) * sizeof(code_list *))))
{
    std::fill_n(lists_, list_count(), nullptr);
}

code_book::~code_book()
{
    close();
    Tcl_Free(reinterpret_cast<char *>(lists_));
}

void code_book::close()
{
    while (all_ != nullptr) {
        code_list *const next = all_->next;
        for (int i = 0; i < all_->count; ++i)
            Tcl_DecrRefCount(all_->codes[i].word);
        Tcl_Free(reinterpret_cast<char *>(all_));
        all_ = next;
    }
    std::fill_n(lists_, list_count(), nullptr);
    open_ = false;
}

const code_list *code_book::of(const argument_row &argument) const
{
    return lists_[field_count + (&argument - argument_rows)];
}

// The scripts may take a profile into use, which closes the book, so it is opened behind that.
bool code_book::open()
{
    if (open_)
        return true;
    if (!session_.run_script("::qx::profile::for_library", {}))
        return false;
    Tcl_Obj *const content = Tcl_GetObjResult(interp());
    Tcl_IncrRefCount(content);
    open_ = read(content);
    Tcl_DecrRefCount(content);
    if (open_)
        Tcl_ResetResult(interp());
    else
        close();
    return open_;
}

// The numbers of IPv4 and IPv6, then places and their words, alternating.
bool code_book::read(Tcl_Obj *content)
{
    int count;
    Tcl_Obj **words;
    if (Tcl_ListObjGetElements(interp(), content, &count, &words) != TCL_OK)
        return false;
    if (session_.take_number(words[0], UINT32_MAX, families_.ipv4) !=
            record_session::taken::number ||
        session_.take_number(words[1], UINT32_MAX, families_.ipv6) != record_session::taken::number)
        return false;
    for (int i = 2; i + 1 < count; i += 2) {
        const code_list **const list = place(Tcl_GetString(words[i]));
        if (list != nullptr && !read_words(*list, words[i + 1]))
            return false;
    }
    return read_families(words);
}

// The words ipv4 and ipv6, for fields that hold a family and have no others.
bool code_book::read_families(Tcl_Obj *const numbers[])
{
    Tcl_Obj *const words[] = {Tcl_NewStringObj("ipv4", -1), numbers[0],
                              Tcl_NewStringObj("ipv6", -1), numbers[1]};
    Tcl_Obj *const list = Tcl_NewListObj(4, words);
    Tcl_IncrRefCount(list);
    const code_list *families = nullptr;
    const bool good = read_words(families, list);
    for (unsigned i = 0; good && i < field_count; ++i)
        if (field_rows[i].holds == holding::family && lists_[i] == nullptr)
            lists_[i] = families;
    Tcl_DecrRefCount(list);
    return good;
}

// Finds OWNER.NAME. The profile's reader has refused places that do not exist; those of a newer
// catalogue are of no use here.
const code_list **code_book::place(const char *name)
{
    const std::string_view whole = name;
    const auto dot = whole.find('.');
    if (dot == whole.npos)
        return nullptr;
    const std::string_view owner = whole.substr(0, dot);
    const std::string_view part = whole.substr(dot + 1);
    if (const auto *const record = named(std::span{record_rows, record_count}, owner)) {
        const auto *const field = named(fields_of(*record), part);
        return field == nullptr ? nullptr : lists_ + (field - field_rows);
    }
    if (const auto *const call = named(std::span{call_rows, call_count}, owner)) {
        const auto *const argument = named(arguments_of(*call), part);
        return argument == nullptr ? nullptr : lists_ + field_count + (argument - argument_rows);
    }
    return nullptr;
}

bool code_book::read_words(const code_list *&list, Tcl_Obj *words)
{
    int count;
    Tcl_Obj **each;
    if (Tcl_ListObjGetElements(interp(), words, &count, &each) != TCL_OK)
        return false;
    if (count < 2)
        return true;
    const int codes = count / 2;
    const auto bytes = sizeof(code_list) + static_cast<unsigned>(codes) * sizeof(code_list::code);
    auto *const made = reinterpret_cast<code_list *>(Tcl_Alloc(static_cast<unsigned>(bytes)));
    *made = {all_, 0, reinterpret_cast<code_list::code *>(made + 1)};
    all_ = made;
    list = made;
    for (int i = 0; i < codes; ++i) {
        std::uint32_t number;
        if (session_.take_number(each[2 * i + 1], UINT32_MAX, number) !=
            record_session::taken::number)
            return false;
        Tcl_IncrRefCount(each[2 * i]);
        made->codes[made->count++] = {number, each[2 * i]};
    }
    return true;
}

Tcl_Interp *code_book::interp() const
{
    return session_.interp();
}

} // namespace qxsh
