#include "support/data_file.h"

#include <fstream>
#include <stdexcept>

namespace test {

std::filesystem::path tests_folder() {
    return TALLVEX_TESTS;
}

std::vector<std::string> data_lines(const std::string& name, const std::string& comment) {
    std::ifstream file(tests_folder() / name);
    if (!file) throw std::runtime_error("no test data " + name);
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);)
        if (!line.empty() && !line.starts_with(comment)) lines.push_back(line);
    if (lines.empty()) throw std::runtime_error("empty test data " + name);
    return lines;
}

}  // namespace test
