// Whole small files in and out, the way every file beside the program is read and written.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace startup {

// The file's bytes. Throws StartUpError when it is missing, no plain file, unreadable or larger than 1 MB.
std::string read_whole(const std::filesystem::path& file);

// Replaces a file by way of a new one beside it, synced before it takes the name: at any moment the old bytes
// or the new ones are there whole. Throws StartUpError when that is not possible; the old file then still
// stands.
void replace_whole(const std::filesystem::path& file, std::string_view bytes, unsigned mode = 0644);

}  // namespace startup
