// Test data, kept in files beside the tests.
#pragma once

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace test {

// The lines of tests/NAME without the empty ones and those that begin with `comment`.
inline std::vector<std::string> data_lines(const std::string& name, const std::string& comment) {
    std::ifstream file(std::filesystem::path(TALLVEX_TESTS) / name);
    if (!file) throw std::runtime_error("no test data " + name);
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);)
        if (!line.empty() && !line.starts_with(comment)) lines.push_back(line);
    if (lines.empty()) throw std::runtime_error("empty test data " + name);
    return lines;
}

}  // namespace test
