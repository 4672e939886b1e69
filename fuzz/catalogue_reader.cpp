// Fuzz target: the catalogue's reader, sourced into a Tcl interpreter, with files that exist only
// in memory. Any text is either accepted or rejected with one line that names file and line, never
// with another Tcl error. Input: one byte selects the file of the sample that the rest replaces.
#include "fuzz/bytes.h"
#include "fuzz/expect.h"
#include "fuzz/target.h"
#include "fuzz/tcl_words.h"

#include <fstream>
#include <iterator>
#include <map>

namespace fuzz {

namespace {

Tcl_Interp *interp;
std::map<std::string, std::string> sample; ///< the files as they stand in the tree
std::map<std::string, std::string> files;  ///< those of this input

// Tcl's code is not instrumented for coverage: the reader's answers guide the fuzzer instead.
constexpr std::size_t answers = 4096;
__attribute__((section("__libfuzzer_extra_counters"), used)) std::uint8_t seen[answers];

std::string tail(const std::string &name)
{
    return name.substr(name.rfind('/') + 1);
}

// Replacements for the reader's open, read, close, glob and file: a channel is its file's name.
int serve_open(ClientData, Tcl_Interp *, int, Tcl_Obj *const words[])
{
    if (!files.contains(tail(Tcl_GetString(words[1]))))
        return TCL_ERROR;
    Tcl_SetObjResult(interp, words[1]);
    return TCL_OK;
}

int serve_read(ClientData, Tcl_Interp *, int, Tcl_Obj *const words[])
{
    const std::string text = script_text(files.at(tail(Tcl_GetString(words[1]))));
    Tcl_SetObjResult(interp, Tcl_NewStringObj(text.data(), static_cast<int>(text.size())));
    return TCL_OK;
}

int serve_close(ClientData, Tcl_Interp *, int, Tcl_Obj *const[])
{
    return TCL_OK;
}

int serve_glob(ClientData, Tcl_Interp *, int, Tcl_Obj *const[])
{
    Tcl_Obj *const list = Tcl_NewObj();
    for (const auto &[name, text] : files)
        Tcl_ListObjAppendElement(nullptr, list, held{"sample/" + name});
    Tcl_SetObjResult(interp, list);
    return TCL_OK;
}

int serve_readable(ClientData, Tcl_Interp *, int, Tcl_Obj *const words[])
{
    const std::string name = Tcl_GetString(words[1]);
    Tcl_SetObjResult(interp, Tcl_NewIntObj(files.contains(tail(name)) ? 1 : 0));
    return TCL_OK;
}

void evaluate(const char *script)
{
    if (Tcl_Eval(interp, script) != TCL_OK)
        finding(Tcl_GetStringResult(interp));
}

std::string text_of(const std::string &name)
{
    std::ifstream file{QXSH_PROJECT "/tests/generator/sample/" + name, std::ios::binary};
    expect(file.good(), name);
    return {std::istreambuf_iterator<char>{file}, {}};
}

// Counts a message by its kind, which is its letters.
void count_answer(std::string_view message)
{
    std::uint32_t hash = 2166136261;
    for (const char c : message.substr(0, 120))
        if ((c >= 'a' && c <= 'z') || c == ' ')
            hash = (hash ^ static_cast<unsigned char>(c)) * 16777619;
    std::uint8_t &counter = seen[(hash >> 8) % answers];
    counter = static_cast<std::uint8_t>(counter + 1);
}

// "sample/lamp.tcl:23: error: ...", a single line.
bool is_complaint(std::string_view message)
{
    constexpr std::string_view folder = "sample/";
    if (!message.starts_with(folder) || message.find('\n') != message.npos)
        return false;
    message.remove_prefix(folder.size());
    const auto name_end = message.find(':');
    if (name_end == message.npos || !message.substr(0, name_end).ends_with(".tcl"))
        return false;
    message.remove_prefix(name_end + 1);
    const auto number_end = message.find_first_not_of("0123456789");
    constexpr std::string_view mark = ": error: ";
    return number_end != 0 && number_end != message.npos &&
           message.substr(number_end).starts_with(mark) &&
           message.size() > number_end + mark.size();
}

} // namespace

void prepare(const char *program)
{
    interp = start_tcl(program);
    expect(Tcl_Init(interp) == TCL_OK, "Tcl finds its script library");
    evaluate("source {" QXSH_PROJECT "/tools/catalogue.tcl}");
    const std::pair<const char *, Tcl_ObjCmdProc *> commands[] = {
        {"::catalogue::open", serve_open},   {"::catalogue::read", serve_read},
        {"::catalogue::close", serve_close}, {"::catalogue::glob", serve_glob},
        {"::in_memory", serve_readable},
    };
    for (const auto &[name, procedure] : commands)
        Tcl_CreateObjCommand(interp, name, procedure, nullptr, nullptr);
    evaluate("proc catalogue::file {what args} {\n"
             "    if {$what eq {readable}} { return [::in_memory {*}$args] }\n"
             "    return [::file $what {*}$args]\n"
             "}\n"
             "proc read_sample {} {\n"
             "    catalogue::load sample\n"
             "    foreach record [catalogue::records] { catalogue::type_alignment $record }\n"
             "    list [catalogue::commands] [catalogue::types]\n"
             "}\n"
             "proc outcome {} {\n"
             "    set ::errorCode NONE\n"
             "    if {![catch {read_sample} answer]} { return {} }\n"
             "    list $::errorCode $answer\n"
             "}\n");
    for (const char *name : {"index.tcl", "lamp.tcl", "data.tcl"})
        sample[name] = text_of(name);
}

void execute(std::span<const std::uint8_t> data)
{
    bytes input{data};
    const std::uint8_t which = input.byte() % 4;
    const std::string text = input.rest();
    if (which == 0)
        files = {{"index.tcl", "areas lamp"}, {"lamp.tcl", text}};
    else if (which == 1)
        files = {{"index.tcl", text}, {"data.tcl", "area data D"}, {"lamp.tcl", "area lamp L"}};
    else if (which == 2)
        files = {
            {"index.tcl", sample["index.tcl"]}, {"data.tcl", text}, {"lamp.tcl", "area lamp L"}};
    else
        files = {
            {"index.tcl", sample["index.tcl"]}, {"data.tcl", "area data D"}, {"lamp.tcl", text}};
    evaluate("outcome");
    const held outcome{Tcl_GetObjResult(interp)};
    Tcl_ResetResult(interp);
    count_answer(outcome.text());
    int parts;
    Tcl_Obj **part;
    if (Tcl_ListObjGetElements(nullptr, outcome, &parts, &part) != TCL_OK || parts == 0)
        return;
    expect_equal(held{part[0]}.text(), "CATALOGUE", "the error code", held{part[1]}.text());
    if (!is_complaint(held{part[1]}.text()))
        finding("no one line: " + std::string{held{part[1]}.text()});
}

} // namespace fuzz
