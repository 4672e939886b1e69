// Reading a recording's header and calls.
#include "replay/recording_reader.h"

#include "replay/line_source.h"
#include "replay/recorded_line.h"

#include <nlohmann/json.hpp>

namespace qxsh {

namespace {

using json = nlohmann::json;

[[noreturn]] void fail(const std::string &what)
{
    throw recording_error{1, what};
}

std::string text_of(const json &header, const char *name)
{
    const auto found = header.find(name);
    if (found == header.end())
        fail(std::string{"\""} + name + "\" is missing in the header");
    if (!found->is_string())
        fail(std::string{name} + ": expected a text");
    auto text = found->get<std::string>();
    if (text != header_text(text))
        fail(std::string{name} + ": a text with control characters");
    return text;
}

void check_version(const json &header)
{
    const auto found = header.find("recording");
    if (found == header.end())
        fail(header.contains("function") ? "a call without a header before it: no recording"
                                         : "no recording");
    if (!found->is_number_unsigned())
        fail("recording: expected the format's version, a number");
    const auto version = found->get<std::uint64_t>();
    if (version > recording_version)
        fail("the recording has version " + std::to_string(version) +
             " of the format; the newest " + "known here is " + std::to_string(recording_version));
    if (version == 0)
        fail("recording: there is no version 0 of the format");
}

recording_header header_of(std::string_view line)
{
    if (line.starts_with("\x1f\x8b"))
        fail("gzip data; the name has to end in .gz then");
    const json header = json::parse(line.begin(), line.end(), nullptr, false);
    if (!header.is_object() || line.find('\0') != line.npos)
        fail("no recording: no header of JSON");
    check_version(header);
    recording_header result;
    result.library = text_of(header, "library");
    result.build_id = text_of(header, "build_id");
    result.date = text_of(header, "date");
    result.processor = text_of(header, "processor");
    const auto size = header.find("size");
    if (size == header.end() || !size->is_number_unsigned())
        fail("size: expected a number of bytes");
    result.size = size->get<std::uint64_t>();
    const auto keys = recorded_keys_of(text_of(header, "keys"));
    if (!keys)
        fail("keys: expected clear, fingerprints or lengths");
    result.keys = *keys;
    const auto salt = from_hexadecimal(text_of(header, "salt"));
    if (!salt || (salt->size() != 16 && !salt->empty()))
        fail("salt: expected 32 hexadecimal digits or nothing");
    if (!salt->empty() && *keys != recorded_keys::fingerprints)
        fail("salt: there are no fingerprints");
    result.salt = *salt;
    return result;
}

} // namespace

struct recording_reader::state
{
    explicit state(const std::string &name)
        : lines(name), header(read_header()), parser(header.keys)
    {}

    recording_header read_header();

    line_source lines;
    const recording_header header;
    recorded_line parser;
    std::uint64_t last = 0; ///< number of the last call
};

recording_header recording_reader::state::read_header()
{
    std::string_view line;
    if (!lines.next(line))
        fail("the file is empty: no recording");
    return header_of(line);
}

recording_reader::recording_reader(const std::string &name) : state_(std::make_unique<state>(name))
{}

recording_reader::~recording_reader() = default;

const recording_header &recording_reader::header() const
{
    return state_->header;
}

double recording_reader::done() const
{
    return state_->lines.done();
}

void recording_reader::restart()
{
    std::string_view header;
    state_->lines.restart();
    state_->lines.next(header);
    state_->last = 0;
}

bool recording_reader::next(recorded_call &call)
{
    std::string_view line;
    if (!state_->lines.next(line))
        return false;
    call.line = state_->lines.line();
    const std::string mistake = state_->parser.read(line, call);
    if (!mistake.empty())
        throw recording_error{call.line, mistake};
    if (call.number == 0)
        throw recording_error{call.line, "call: calls are numbered from 1"};
    if (call.number <= state_->last)
        throw recording_error{call.line, "call: " + std::to_string(call.number) +
                                             " does not follow " + std::to_string(state_->last)};
    state_->last = call.number;
    return true;
}

} // namespace qxsh
