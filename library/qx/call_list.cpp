// Applying lists of calls; see call_list.h. An entry is an object: the function in `call`, its
// words as for qx::call in `args`, the statuses that are not failures in `allow`, and in `save` a
// name for the result, which later entries write "$name" or "$name.path".
#include "library/qx/call_list.h"

#include "library/qx/held_object.h"
#include "library/qx/json_reader.h"
#include "library/qx/shown_progress.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <vector>

namespace qxsh {

namespace {

bool is_name(std::string_view text)
{
    constexpr std::string_view characters = "0123456789_abcdefghijklmnopqrstuvwxyz"
                                            "ABCDEFGHIJKLMNOPQRSTUVWXYZ";
    return text.find_first_not_of(characters) == text.npos && !text.empty() && text[0] > '9';
}

class call_list
{
public:
    call_list(record_session &session, sdk_caller &caller, Tcl_Obj *file)
        : session_(session), caller_(caller), file_(file)
    {}
    ~call_list()
    {
        if (calls_ != nullptr)
            Tcl_DecrRefCount(calls_);
    }

    bool run() { return read() && check() && perform(); }

private:
    struct entry
    {
        Tcl_Obj *call = nullptr;
        Tcl_Obj *args = nullptr; // none: no words
        Tcl_Obj *allow = nullptr;
        Tcl_Obj *save = nullptr;
    };

    bool read();
    bool read_bytes(Tcl_Obj *bytes);
    bool check();
    bool take(Tcl_Obj *object, entry &taken);
    bool check_args(const entry &call);
    template <class Use> bool with_args(const entry &call, Use use);
    bool perform();
    bool perform(const entry &call);
    Tcl_Obj *filled(Tcl_Obj *value);
    Tcl_Obj *saved(const char *text);
    Tcl_Obj *saved_later(const char *text);
    bool is_unknown(Tcl_Obj *value) const;
    bool has_failed(std::string_view name) const;
    bool refuse(Tcl_Obj *what);
    bool refuse(const char *what) { return refuse(Tcl_NewStringObj(what, -1)); }
    bool refuse_call();

    Tcl_Interp *interp() const { return session_.interp(); }

    record_session &session_;
    sdk_caller &caller_;
    Tcl_Obj *const file_;
    const held_object saved_{Tcl_NewDictObj()};           // name -> result
    const held_object unknown_{Tcl_NewStringObj("$", 1)}; // before the first call: what is saved
    bool drafting_ = true;                                // no call is made yet
    Tcl_Obj *calls_ = nullptr;
    std::vector<entry> entries_;
    std::size_t number_ = 0; // of the call, from 1; 0: the whole file
};

// The error of the call that runs, with its place.
bool call_list::refuse_call()
{
    Tcl_Obj *const text = Tcl_ObjPrintf("%s: call %d, %s", Tcl_GetString(file_),
                                        static_cast<int>(number_), Tcl_GetStringResult(interp()));
    Tcl_SetObjResult(interp(), text);
    return false;
}

bool call_list::refuse(Tcl_Obj *what)
{
    Tcl_SetObjResult(interp(), what);
    Tcl_SetErrorCode(interp(), "QX", "APPLY", Tcl_GetString(file_), std::to_string(number_).c_str(),
                     nullptr);
    if (number_ != 0)
        return refuse_call();
    Tcl_SetObjResult(interp(), Tcl_ObjPrintf("%s: %s", Tcl_GetString(file_), Tcl_GetString(what)));
    return false;
}

// Appends the file's bytes, as they are, to an empty text.
bool call_list::read_bytes(Tcl_Obj *bytes)
{
    Tcl_Channel const channel = Tcl_FSOpenFileChannel(interp(), file_, "r", 0);
    if (channel == nullptr)
        return false;
    Tcl_SetChannelOption(nullptr, channel, "-translation", "binary");
    char block[4096];
    int count;
    while ((count = Tcl_Read(channel, block, sizeof block)) > 0)
        Tcl_AppendToObj(bytes, block, count);
    const int error = Tcl_GetErrno();
    Tcl_Close(nullptr, channel);
    Tcl_SetErrno(error);
    return count == 0 || refuse(Tcl_ObjPrintf("cannot be read: %s", Tcl_PosixError(interp())));
}

bool call_list::read()
{
    const held_object bytes{Tcl_NewObj()};
    if (!read_bytes(bytes.get()))
        return false;
    int length;
    const char *const text = Tcl_GetStringFromObj(bytes.get(), &length);
    calls_ = read_json(interp(), Tcl_GetString(file_) + std::string{":"},
                       {text, static_cast<unsigned>(length)});
    return calls_ != nullptr;
}

bool call_list::take(Tcl_Obj *object, entry &taken)
{
    Tcl_DictSearch search;
    Tcl_Obj *key;
    Tcl_Obj *value;
    int done;
    const char *unknown = nullptr;
    if (!session_.is_dict(object))
        return refuse("is not an object with a \"call\" and its \"args\"");
    Tcl_DictObjFirst(nullptr, object, &search, &key, &value, &done);
    for (; done == 0; Tcl_DictObjNext(&search, &key, &value, &done)) {
        const std::string_view name = Tcl_GetString(key);
        if (name == "call")
            taken.call = value;
        else if (name == "args")
            taken.args = value;
        else if (name == "allow")
            taken.allow = value;
        else if (name == "save")
            taken.save = value;
        else
            unknown = Tcl_GetString(key);
    }
    Tcl_DictObjDone(&search);
    if (unknown != nullptr)
        return refuse(Tcl_ObjPrintf("\"%s\" is none of call, args, allow and save", unknown));
    if (taken.call == nullptr || session_.is_container(taken.call))
        return refuse("\"call\" has to name an SDK function");
    if (!caller_.knows(taken.call))
        return refuse_call();
    for (const auto &[list, name] : {std::pair{taken.args, "args"}, {taken.allow, "allow"}})
        if (list != nullptr && !session_.is_list(list))
            return refuse(Tcl_ObjPrintf("\"%s\" has to be a list", name));
    if (taken.allow != nullptr && !session_.run_script("::qx::status::numbers", {taken.allow}))
        return refuse_call();
    if (taken.save != nullptr &&
        (session_.is_container(taken.save) || !is_name(Tcl_GetString(taken.save))))
        return refuse("\"save\" has to be a name of letters, digits and _");
    return true;
}

bool call_list::check()
{
    int count;
    Tcl_Obj **objects;
    if (!session_.is_list(calls_))
        return refuse("is not a list of calls");
    Tcl_ListObjGetElements(nullptr, calls_, &count, &objects);
    for (int i = 0; i < count; ++i) {
        entry taken;
        number_ = entries_.size() + 1;
        if (!take(objects[i], taken))
            return false;
        for (const entry &earlier : entries_)
            if (taken.save != nullptr && earlier.save != nullptr &&
                std::strcmp(Tcl_GetString(taken.save), Tcl_GetString(earlier.save)) == 0)
                return refuse(Tcl_ObjPrintf("\"%s\" is saved twice", Tcl_GetString(taken.save)));
        entries_.push_back(taken);
        if (!check_args(taken))
            return false;
    }
    drafting_ = false;
    return true;
}

// Lets `use` have a call's words, with saved results in place of their names.
template <class Use> bool call_list::with_args(const entry &call, Use use)
{
    int count = 0;
    Tcl_Obj **words = nullptr;
    if (call.args == nullptr)
        return use(count, words);
    Tcl_Obj *const args = filled(call.args);
    if (args == nullptr)
        return false;
    Tcl_ListObjGetElements(nullptr, args, &count, &words);
    const bool good = use(count, words);
    Tcl_DecrRefCount(args);
    return good;
}

// The words of a call, as far as they are known before any call is made.
bool call_list::check_args(const entry &call)
{
    return with_args(call, [&](int count, Tcl_Obj *const *words) {
        return caller_.check(call.call, count, words) || refuse_call();
    });
}

// Whether an earlier call should have saved this name; its failure was allowed.
bool call_list::has_failed(std::string_view name) const
{
    return std::any_of(entries_.begin(),
                       entries_.begin() + static_cast<std::ptrdiff_t>(number_ - 1),
                       [name](const entry &each) {
                           return each.save != nullptr && name == Tcl_GetString(each.save);
                       });
}

// The part of a saved result that "$name.path" stands for; null, with an error, if there is none.
Tcl_Obj *call_list::saved(const char *text)
{
    const auto refuse_part = [&](const char *what, const char *name) -> Tcl_Obj * {
        Tcl_Obj *const refusal = Tcl_ObjPrintf("%s: ", text);
        Tcl_AppendPrintfToObj(refusal, what, name);
        refuse(refusal);
        return nullptr;
    };
    std::string_view rest = text + 1;
    Tcl_Obj *value = saved_.get();
    for (bool is_first = true;; is_first = false) {
        const auto length = rest.find_first_of(".(");
        const std::string_view name = rest.substr(0, length);
        const held_object key{Tcl_NewStringObj(name.data(), static_cast<int>(name.size()))};
        Tcl_Obj *found = nullptr;
        Tcl_DictObjGet(nullptr, value, key.get(), &found);
        if (found == nullptr)
            return refuse_part(!is_first          ? "the result has no \"%s\""
                               : has_failed(name) ? "\"%s\" has no value: its call failed"
                                                  : "no call before has saved \"%s\"",
                               Tcl_GetString(key.get()));
        value = found;
        rest.remove_prefix(std::min(length, rest.size()));
        if (rest.starts_with('(')) {
            unsigned index;
            const auto [end, error] =
                std::from_chars(rest.data() + 1, rest.data() + rest.size(), index);
            Tcl_Obj *element = nullptr;
            if (error == std::errc{} && end != rest.data() + rest.size() && *end == ')')
                Tcl_ListObjIndex(nullptr, value, static_cast<int>(index), &element);
            if (element == nullptr)
                return refuse_part("there is no such element", "");
            value = element;
            rest.remove_prefix(static_cast<std::size_t>(end + 1 - rest.data()));
        }
        if (rest.empty())
            return value;
        if (!rest.starts_with('.'))
            return refuse_part("there is no such element", "");
        rest.remove_prefix(1);
    }
}

// What stands for a saved result before the calls; null, with an error, if none will save it.
Tcl_Obj *call_list::saved_later(const char *text)
{
    const std::string name{text + 1, std::strcspn(text + 1, ".(")};
    if (has_failed(name))
        return unknown_.get();
    refuse(Tcl_ObjPrintf("%s: no call before has saved \"%s\"", text, name.c_str()));
    return nullptr;
}

// Whether a value is a saved result, or a list that has one.
bool call_list::is_unknown(Tcl_Obj *value) const
{
    Tcl_Obj *element = nullptr;
    for (int i = 0; session_.is_list(value); ++i) {
        Tcl_ListObjIndex(nullptr, value, i, &element);
        if (element == nullptr || is_unknown(element))
            return element != nullptr;
    }
    return value == unknown_.get();
}

// A value with saved results in place of their names; before the calls without the members of
// objects that need one. It has a reference that the caller releases. Null, with an error, if
// something is not saved.
Tcl_Obj *call_list::filled(Tcl_Obj *value)
{
    int length;
    if (session_.is_list(value) && Tcl_ListObjLength(nullptr, value, &length) == TCL_OK &&
        length == 0) {
        Tcl_IncrRefCount(value); // a copy would not have the type of lists
        return value;
    }
    if (!session_.is_container(value)) {
        const char *const text = Tcl_GetString(value);
        Tcl_Obj *const now = text[0] != '$' ? value : drafting_ ? saved_later(text) : saved(text);
        if (now != nullptr)
            Tcl_IncrRefCount(now);
        return now;
    }
    const bool is_dict = session_.is_dict(value);
    Tcl_Obj *const copy = is_dict ? Tcl_NewDictObj() : Tcl_NewListObj(0, nullptr);
    Tcl_IncrRefCount(copy);
    bool good = true;
    if (is_dict) {
        Tcl_DictSearch search;
        Tcl_Obj *key;
        Tcl_Obj *inner;
        int done;
        Tcl_DictObjFirst(nullptr, value, &search, &key, &inner, &done);
        for (; done == 0 && good; Tcl_DictObjNext(&search, &key, &inner, &done)) {
            Tcl_Obj *const now = filled(inner);
            good = now != nullptr;
            if (good && !(drafting_ && is_unknown(now)))
                Tcl_DictObjPut(nullptr, copy, key, now);
            if (good)
                Tcl_DecrRefCount(now);
        }
        Tcl_DictObjDone(&search);
    } else {
        int count;
        Tcl_Obj **elements;
        Tcl_ListObjGetElements(nullptr, value, &count, &elements);
        for (int i = 0; i < count && good; ++i) {
            Tcl_Obj *const now = filled(elements[i]);
            good = now != nullptr;
            if (good) {
                Tcl_ListObjAppendElement(nullptr, copy, now);
                Tcl_DecrRefCount(now);
            }
        }
    }
    if (good)
        return copy;
    Tcl_DecrRefCount(copy);
    return nullptr;
}

bool call_list::perform(const entry &call)
{
    return with_args(call, [&](int count, Tcl_Obj *const *words) {
        std::uint32_t status = 0;
        if (caller_.call(call.call, call.allow, count, words, status) != TCL_OK)
            return refuse_call();
        if (call.save != nullptr && status == 0)
            Tcl_DictObjPut(nullptr, saved_.get(), call.save, Tcl_GetObjResult(interp()));
        return true;
    });
}

bool call_list::perform()
{
    constexpr int calls_per_step = 256;
    std::optional<shown_progress> progress;
    bool has_saved = false;
    number_ = 0;
    if (entries_.size() > calls_per_step) {
        const std::string what = std::string{"applying "} + Tcl_GetString(file_);
        progress.emplace(interp(), what, std::to_string(entries_.size()) + " calls");
    }
    for (const entry &call : entries_) {
        if (++number_ % calls_per_step == 0 && progress)
            progress->at(number_);
        has_saved = has_saved || call.save != nullptr;
        if (!perform(call))
            return false;
    }
    Tcl_SetObjResult(interp(), has_saved
                                   ? saved_.get()
                                   : Tcl_NewWideIntObj(static_cast<Tcl_WideInt>(entries_.size())));
    return true;
}

} // namespace

int apply_calls(record_session &session, sdk_caller &caller, int objc, Tcl_Obj *const objv[])
{
    if (objc != 2) {
        Tcl_WrongNumArgs(session.interp(), 1, objv, "file");
        return TCL_ERROR;
    }
    return call_list{session, caller, objv[1]}.run() ? TCL_OK : TCL_ERROR;
}

} // namespace qxsh
