// A logo taken from a picture file.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace printing::pages {

// The picture as a PNG file, no larger than paper shows it; nothing if the file is not a picture that can be
// read.
std::optional<std::string> logo_picture(const std::filesystem::path& file);

}  // namespace printing::pages
