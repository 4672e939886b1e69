// Binding modules and types for tests: type records with any casts.
#pragma once

#include "runtime/type_registry.h"

#include <cstdint>
#include <deque>
#include <initializer_list>
#include <map>
#include <string>
#include <vector>

/// A converter from a derived type to a base at an offset of sixteen bytes.
inline void *sixteen_on(void *pointer, int *)
{
    return static_cast<char *>(pointer) + 16;
}

/// The pointer with a 32-bit address.
inline void *at(std::uint32_t address)
{
    return reinterpret_cast<void *>(static_cast<std::uintptr_t>(address));
}

/// A type with its own cast list, that does not belong to a module.
class sample_type
{
public:
    explicit sample_type(const std::string &name) : name_(name), text_(name.substr(3) + " *")
    {
        record_ = {name_.c_str(), text_.c_str(), nullptr, nullptr, nullptr, 0};
    }
    sample_type(const sample_type &) = delete;
    sample_type &operator=(const sample_type &) = delete;

    /// Adds a source at the end of the list.
    sample_type &accept(sample_type &source, swig_converter converter = nullptr)
    {
        swig_cast_record *const last = casts_.empty() ? nullptr : &casts_.back();
        casts_.push_back({&source.record_, converter, nullptr, last});
        (last != nullptr ? last->next : record_.cast) = &casts_.back();
        return *this;
    }

    operator swig_type_record *() { return &record_; }
    swig_type_record *operator->() { return &record_; }

private:
    std::string name_;
    std::string text_;
    swig_type_record record_;
    std::deque<swig_cast_record> casts_; // never moves its elements
};

/// A type that accepts only itself, like all types of the product.
class plain_type : public sample_type
{
public:
    explicit plain_type(const std::string &name) : sample_type(name) { accept(*this); }
};

/// The sources in a type's cast list, by name, in order; "broken" where the two directions
/// disagree.
inline std::vector<std::string> sources_of(const swig_type_record *type)
{
    std::vector<std::string> names;
    const swig_cast_record *before = nullptr;
    for (const auto *cast = type->cast; cast != nullptr; before = cast, cast = cast->next)
        names.push_back(cast->prev == before ? cast->type->name : "broken");
    return names;
}

/// A module of the named types; the names must be sorted.
class sample_module
{
public:
    sample_module(std::initializer_list<std::string> names)
    {
        for (const auto &name : names) {
            auto &text = texts_.emplace_back(name);
            own_.push_back(&records_.emplace_back(
                swig_type_record{text.c_str(), text.c_str(), nullptr, nullptr, nullptr, 0}));
            casts_[name].push_back({own_.back(), nullptr, nullptr, nullptr});
        }
        types_.resize(own_.size() + 1, static_cast<swig_type_record *>(at(0x7f7f7f7f)));
    }
    sample_module(const sample_module &) = delete;
    sample_module &operator=(const sample_module &) = delete;

    /// Adds a static cast from a type of this module, which must not be linked yet.
    void accept(const std::string &target, const std::string &source,
                swig_converter converter = nullptr)
    {
        casts_[target].push_back({own(source), converter, nullptr, nullptr});
    }

    /// Leaves the type without static casts.
    void accept_nothing(const std::string &target) { casts_[target].clear(); }

    void link(Tcl_Interp *interp) { swig_link_module(interp, record()); }

    /// The module's record. The first call completes it, so add casts before.
    swig_module_record *record()
    {
        if (record_.types == nullptr) {
            for (auto *type : own_) {
                auto &casts = casts_[type->name];
                casts.push_back({nullptr, nullptr, nullptr, nullptr});
                cast_lists_.push_back(casts.data());
            }
            record_ = {types_.data(),
                       static_cast<unsigned int>(own_.size()),
                       nullptr,
                       own_.data(),
                       cast_lists_.data(),
                       nullptr};
        }
        return &record_;
    }

    /// The module's static record of a type.
    swig_type_record *own(const std::string &name)
    {
        for (auto *type : own_) {
            if (name == type->name)
                return type;
        }
        return nullptr;
    }

    /// The record that stands for a type after linking.
    swig_type_record *resolved(std::size_t number) { return types_[number]; }

private:
    std::deque<std::string> texts_;
    std::deque<swig_type_record> records_;
    std::vector<swig_type_record *> own_;
    std::map<std::string, std::vector<swig_cast_record>> casts_;
    std::vector<swig_cast_record *> cast_lists_;
    std::vector<swig_type_record *> types_; // holds no valid pointer before the module is linked
    swig_module_record record_{};
};
