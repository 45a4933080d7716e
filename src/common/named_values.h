// Small files of "name = value" lines that a workstation keeps beside the program.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>

namespace common {

// "printer-1.txt" and "screen-1.txt" of cash point 1, in the program's folder.
std::filesystem::path printer_file(const std::filesystem::path& program_folder, std::int64_t cash_point);
std::filesystem::path screen_file(const std::filesystem::path& program_folder, std::int64_t cash_point);

using NamedValues = std::map<std::string, std::string, std::less<>>;

// The values of a file; none if it is missing or cannot be read. Lines that are not pairs are skipped.
NamedValues read_named_values(const std::filesystem::path& file);
// Replaces the file. Throws std::system_error if it cannot be written; the one before then stays.
void keep_named_values(const std::filesystem::path& file, const NamedValues& values);

}  // namespace common
