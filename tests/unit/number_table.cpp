// Reading and writing of the number table; see number_table.h.
#include "tests/unit/number_table.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>

namespace {

constexpr const char *file_name = QXSH_EXPECTED "/numbers.tsv";
constexpr std::string_view escaped = "\t\n\v\f\r\"\\";
constexpr std::string_view escapes = "tnvfr\"\\";

std::string quote(std::string_view word)
{
    std::string text = "\"";
    for (const char c : word) {
        const auto place = escaped.find(c);
        if (place != std::string_view::npos) {
            text += {'\\', escapes[place]};
        } else if (c < ' ' || c > '~') {
            char number[8];
            std::snprintf(number, sizeof number, "\\x%02x", static_cast<unsigned char>(c));
            text += number;
        } else {
            text += c;
        }
    }
    return text + "\"";
}

std::string unquote(const std::string &text)
{
    std::string word;
    for (std::size_t i = 1; i + 1 < text.size(); ++i) {
        if (text[i] != '\\') {
            word += text[i];
        } else if (text[++i] == 'x') {
            word += static_cast<char>(std::stoi(text.substr(i + 1, 2), nullptr, 16));
            i += 2;
        } else {
            word += escaped[escapes.find(text[i])];
        }
    }
    return word;
}

// A line that names only a word is a row whose readings are still to be written.
number_row parse(const std::string &line)
{
    number_row row;
    auto end = line.find('\t');
    row.word = unquote(line.substr(0, end));
    EXPECT_EQ(quote(row.word), line.substr(0, end));
    for (auto &reading : row.readings) {
        if (end == std::string::npos)
            break;
        const auto start = end + 1;
        end = line.find('\t', start);
        reading = line.substr(start, end == std::string::npos ? end : end - start);
    }
    return row;
}

} // namespace

std::vector<number_row> read_number_table()
{
    std::vector<number_row> rows;
    std::ifstream file{file_name};
    EXPECT_TRUE(file.is_open()) << file_name;
    for (std::string line; std::getline(file, line);) {
        if (!line.starts_with('#'))
            rows.push_back(parse(line));
    }
    return rows;
}

void write_number_table(const std::vector<number_row> &rows)
{
    std::string text;
    std::ifstream old{file_name};
    for (std::string line; std::getline(old, line) && line.starts_with('#');)
        text += line + '\n';
    for (const auto &row : rows)
        text += number_line(row) + '\n';
    std::ofstream{file_name, std::ios::binary} << text;
}

std::string number_line(const number_row &row)
{
    std::string line = quote(row.word);
    for (const auto &reading : row.readings)
        line += '\t' + reading;
    return line;
}
