#include "play/play_services.h"

#include <fstream>
#include <iterator>

#include "common/text.h"

namespace play {

namespace fs = std::filesystem;

fs::path PlayDevices::file_of(std::string_view port) const {
    std::string name = common::lower_ascii(common::trim(port));
    for (char& letter : name) {
        if (letter == '/' || letter == ':') letter = '_';
    }
    return folder_ / "ports" / name;
}

bool PlayDevices::write_port(std::string_view port, std::string_view bytes) {
    fs::path missing = file_of(port);
    missing += ".missing";
    if (common::trim(port).empty() || fs::exists(missing)) return false;
    std::ofstream stream(file_of(port), std::ios::binary | std::ios::app);
    stream << bytes;
    return stream.good();
}

std::string PlayDevices::taken(std::string_view port) const {
    std::ifstream stream(file_of(port), std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

void PlayDevices::empty(std::string_view port) const {
    std::error_code ignored;
    fs::remove(file_of(port), ignored);
}

void PlayDevices::unplug(std::string_view port, bool missing) const {
    fs::path mark = file_of(port);
    mark += ".missing";
    if (missing) {
        std::ofstream{mark};
    } else {
        fs::remove(mark);
    }
}

}  // namespace play
