// Building plans; see record_plan.h. A word names a view of a union by the end of its path.
#include "library/qx/record_plan.h"

#include <algorithm>
#include <string_view>

namespace qxsh {

namespace {

using words_used = bool; // one per word in the views

// The fields that lead to a record, innermost first.
struct field_path
{
    const field_path *outer;
    const field_row *field;
};

// Whether the path ends in the word's names, which dots separate.
bool ends_in(const field_path *path, std::string_view word)
{
    for (; path != nullptr; path = path->outer) {
        const std::string_view name = path->field->name.text();
        if (!word.ends_with(name))
            return false;
        word.remove_suffix(name.size());
        if (word.empty())
            return true;
        if (!word.ends_with('.'))
            return false;
        word.remove_suffix(1);
    }
    return false;
}

shown_as numbers_as(const field_row &field, bool raw, const code_list *codes)
{
    if (codes != nullptr)
        return field.count != 0 ? shown_as::codes : shown_as::code;
    if (!raw) {
        switch (field.holds) {
        case holding::mac:
            return shown_as::mac;
        case holding::ipv4:
            return shown_as::ipv4;
        case holding::ipv6:
            return shown_as::ipv6;
        case holding::ip:
            return shown_as::ip;
        default:
            break;
        }
    }
    if (field.width != 0)
        return shown_as::bits;
    return field.count != 0 ? shown_as::numbers : shown_as::number;
}

const field_row *family_of_record(const record_row &record)
{
    return record.family < 0 ? nullptr : &fields_of(record)[record.family];
}

// Appends what chooses the views of a union to the choices. A word that the profile does not have
// chooses nothing.
std::span<const view_choice> choices_of(const field_row &field, const code_book &book,
                                        view_choice *&end)
{
    view_choice *const first = end;
    for (const view_row &row : std::span{view_rows, view_count}) {
        if (field_rows + row.field != &field)
            continue;
        std::uint32_t number = row.number;
        const char *const word = row.word.text();
        const code_list *const codes = book.of(field_rows[row.chooser]);
        if (*word == '\0' || (codes != nullptr && codes->number_of(word, number)))
            *end++ = {&row, number};
    }
    return {first, end};
}

unsigned most_choices(const record_row &record)
{
    unsigned count = 0;
    for (const view_row &row : std::span{view_rows, view_count})
        count += row.field >= record.first && row.field < record.first + record.fields ? 1 : 0;
    return count;
}

} // namespace

// Builds one plan and the plans nested in it.
class plan_maker
{
public:
    plan_maker(plan_cache &cache, plan_options options, int words, Tcl_Obj **views,
               words_used *used)
        : cache_(cache), options_(options), raw_(options.raw), count_(words), views_(views),
          used_(used)
    {}

    const record_plan *make(const record_row &record, const field_path *path);

private:
    std::string_view word(int number) const { return Tcl_GetString(views_[number]); }
    bool names(int number, const field_path *view) const
    {
        return word(number) == "*" || ends_in(view, word(number));
    }
    bool is_named(const field_path &view) const;
    void choose(record_plan &plan, const field_path *path);
    void fill(plan_step &step, const field_row &field, const record_row &record,
              const field_path *path, view_choice *&choices);

    plan_cache &cache_;
    const plan_options options_;
    const bool raw_;
    const int count_;
    Tcl_Obj **const views_;
    words_used *const used_;
};

bool plan_maker::is_named(const field_path &view) const
{
    for (int i = 0; i < count_; ++i)
        if (names(i, &view))
            return true;
    return false;
}

// Marks the views that the words with the most names name.
void plan_maker::choose(record_plan &plan, const field_path *path)
{
    std::ptrdiff_t most = 0;
    for (unsigned step = 0; step < plan.count; ++step) {
        const field_path view = {path, plan.steps[step].field};
        for (int i = 0; i < count_; ++i) {
            if (!names(i, &view))
                continue;
            used_[i] = true;
            const std::string_view text = word(i);
            const auto parts = 1 + std::count(text.begin(), text.end(), '.');
            if (parts > most)
                for (unsigned earlier = 0; earlier < step; ++earlier)
                    plan.steps[earlier].named = false;
            plan.steps[step].named = plan.steps[step].named || parts >= most;
            plan.named = true;
            most = std::max(most, parts);
        }
    }
}

// A union that represents an address is shown as the address unless a view of it is named.
void plan_maker::fill(plan_step &step, const field_row &field, const record_row &record,
                      const field_path *path, view_choice *&choices)
{
    const code_book &book = cache_.session_.codes();
    const code_list *const codes = options_.words ? book.of(field) : nullptr;
    step = {cache_.session_.name(field),
            &field,
            nullptr,
            family_of_record(record),
            codes,
            &book.families(),
            numbers_as(field, raw_, codes),
            false,
            record.is_union ? cache_.session_.holes().of_view(record, field) : holes{},
            choices_of(field, book, choices)};
    const record_row *const inner = record_in(field);
    if (inner == nullptr)
        return;
    const field_path here = {path, &field};
    if (field.count == 0 && !raw_ && is_address(*inner)) {
        bool named = false;
        for (const field_row &view : fields_of(*inner))
            named = named || is_named({&here, &view});
        if (!named) {
            step.what = shown_as::ip;
            return;
        }
    }
    step.what = field.count == 0 ? shown_as::record : shown_as::records;
    step.nested = count_ == 0 ? cache_.plain_plan(*inner, options_) : make(*inner, &here);
}

const record_plan *plan_maker::make(const record_row &record, const field_path *path)
{
    const unsigned count = record.fields;
    const auto bytes = sizeof(record_plan) + count * sizeof(plan_step) +
                       most_choices(record) * sizeof(view_choice);
    auto *const plan = reinterpret_cast<record_plan *>(Tcl_Alloc(static_cast<unsigned>(bytes)));
    *plan = {&record,
             count,
             reinterpret_cast<plan_step *>(plan + 1),
             false,
             cache_.session_.holes().of_record(record),
             cache_.all_};
    cache_.all_ = plan;
    auto *choices = reinterpret_cast<view_choice *>(plan->steps + count);
    for (unsigned i = 0; i < count; ++i)
        fill(plan->steps[i], fields_of(record)[i], record, path, choices);
    if (record.is_union)
        choose(*plan, path);
    return plan;
}

plan_cache::plan_cache(record_session &session)
    : session_(session), plain_(reinterpret_cast<const record_plan **>(Tcl_Alloc(
                             static_cast<unsigned>(4 * record_count * sizeof(record_plan *)))))
{
    std::fill_n(plain_, 4 * record_count, nullptr);
    Tcl_InitHashTable(&of_views_, TCL_STRING_KEYS);
}

plan_cache::~plan_cache()
{
    Tcl_DeleteHashTable(&of_views_);
    Tcl_Free(reinterpret_cast<char *>(plain_));
    free_plans(nullptr);
}

void plan_cache::clear()
{
    Tcl_DeleteHashTable(&of_views_);
    Tcl_InitHashTable(&of_views_, TCL_STRING_KEYS);
    std::fill_n(plain_, 4 * record_count, nullptr);
    free_plans(nullptr);
}

void plan_cache::free_plans(const record_plan *kept)
{
    while (all_ != kept) {
        record_plan *const next = all_->next;
        Tcl_Free(reinterpret_cast<char *>(all_));
        all_ = next;
    }
}

const record_plan *&plan_cache::plain_place(const record_row &record, plan_options options) const
{
    return plain_[4 * (&record - record_rows) + (options.raw ? 1 : 0) + (options.words ? 2 : 0)];
}

const record_plan *plan_cache::plain_plan(const record_row &record, plan_options options)
{
    const record_plan *&plan = plain_place(record, options);
    if (plan == nullptr)
        plan = plan_maker{*this, options, 0, nullptr, nullptr}.make(record, nullptr);
    return plan;
}

const record_plan *plan_cache::plan_of_views(const record_row &record, plan_options options)
{
    Tcl_Interp *const interp = session_.interp();
    int count;
    Tcl_Obj **words;
    if (Tcl_ListObjGetElements(interp, options.views, &count, &words) != TCL_OK)
        return nullptr;
    auto *const used = reinterpret_cast<words_used *>(Tcl_Alloc(static_cast<unsigned>(count + 1)));
    std::fill_n(used, count, false);
    record_plan *const kept = all_;
    const auto *const plan = plan_maker{*this, options, count, words, used}.make(record, nullptr);
    int good = 0;
    while (good < count && (used[good] || std::string_view{Tcl_GetString(words[good])} == "*"))
        ++good;
    Tcl_Free(reinterpret_cast<char *>(used));
    if (good == count)
        return plan;
    free_plans(kept);
    const char *const word = Tcl_GetString(words[good]);
    Tcl_ResetResult(interp);
    Tcl_SetErrorCode(interp, "QX", "UNKNOWN", "view", word, nullptr);
    Tcl_AppendResult(interp, "no union in ", record.name.text(), " has the view \"", word, "\"",
                     nullptr);
    return nullptr;
}

const record_plan *plan_cache::plan(const record_row &record, plan_options options)
{
    if (options.views == nullptr || Tcl_GetString(options.views)[0] == '\0') {
        if (const record_plan *const plan = plain_place(record, options); plan != nullptr)
            return plan;
        return session_.codes().open() ? plain_plan(record, options) : nullptr;
    }
    if (!session_.codes().open())
        return nullptr;
    Tcl_Obj *const key = Tcl_ObjPrintf("%s %d %d %s", record.name.text(), options.raw ? 1 : 0,
                                       options.words ? 1 : 0, Tcl_GetString(options.views));
    Tcl_IncrRefCount(key);
    const record_plan *plan;
    Tcl_HashEntry *entry = Tcl_FindHashEntry(&of_views_, Tcl_GetString(key));
    if (entry != nullptr) {
        plan = static_cast<const record_plan *>(Tcl_GetHashValue(entry));
    } else if ((plan = plan_of_views(record, options)) != nullptr) {
        int is_new;
        entry = Tcl_CreateHashEntry(&of_views_, Tcl_GetString(key), &is_new);
        Tcl_SetHashValue(entry, const_cast<record_plan *>(plan));
    }
    Tcl_DecrRefCount(key);
    return plan;
}

} // namespace qxsh
