// What docs/simulator.md says that each function may answer, read from its table.
#pragma once

#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <string>

/// Function -> names of statuses, those that any function may return included.
inline std::map<std::string, std::set<std::string>> read_documented_statuses(const char *file)
{
    std::map<std::string, std::set<std::string>> table;
    std::ifstream page{file};
    for (std::string line; std::getline(page, line);) {
        if (!line.starts_with("| `qx_"))
            continue;
        const auto name_end = line.find('`', 3);
        if (line.find('.') < name_end)
            continue; // a value of an argument
        const auto cell = line.find('|', name_end) + 1;
        std::istringstream words{line.substr(cell, line.find('|', cell) - cell)};
        std::set<std::string> &row = table[line.substr(3, name_end - 3)];
        row = {"QX_OK", "QX_BAD_DEVICE", "QX_NULL_POINTER", "QX_SUSPENDED"};
        for (std::string word; words >> word;)
            row.insert(word);
    }
    return table;
}
