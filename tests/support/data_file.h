// Test data, kept in files beside the tests.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace test {

// tests/ of this checkout.
std::filesystem::path tests_folder();
// The lines of tests/NAME without the empty ones and those that begin with `comment`.
std::vector<std::string> data_lines(const std::string& name, const std::string& comment);

}  // namespace test
