// Tables of expected values in tests/expected: tab-separated columns; comment lines begin with "#".
#pragma once

#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

using table_row = std::vector<std::string>;

/// The rows of a table; empty, with a failure of the running test, if it cannot be read.
inline std::vector<table_row> read_expected(const std::string &name)
{
    std::vector<table_row> rows;
    std::ifstream file{QXSH_EXPECTED "/" + name};
    EXPECT_TRUE(file.is_open()) << name;
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with('#'))
            continue;
        table_row row;
        std::size_t start = 0;
        for (auto end = line.find('\t'); end != line.npos; end = line.find('\t', start)) {
            row.push_back(line.substr(start, end - start));
            start = end + 1;
        }
        row.push_back(line.substr(start));
        rows.push_back(row);
    }
    EXPECT_FALSE(rows.empty()) << name;
    return rows;
}
