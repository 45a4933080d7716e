#include "bench/machine.h"

#include <fmt/format.h>
#include <sqlite3.h>

#include <fstream>
#include <thread>

#include "common/text.h"

namespace bench {

namespace {

// The value after "word:" in a file of the system; empty if there is none.
std::string told(const char* file, const std::string& word, char mark) {
    std::ifstream stream(file);
    for (std::string line; std::getline(stream, line);) {
        const auto at = line.find(mark);
        if (at == line.npos || common::trim(line.substr(0, at)) != word) continue;
        std::string value(common::trim(line.substr(at + 1)));
        std::erase(value, '"');
        return value;
    }
    return {};
}

}  // namespace

std::vector<std::string> describe_machine() {
    std::vector<std::string> lines;
    const std::string processor = told("/proc/cpuinfo", "model name", ':');
    lines.push_back(fmt::format("{}{} cores", processor.empty() ? "" : processor + ", ",
                                std::thread::hardware_concurrency()));
    if (const std::string memory = told("/proc/meminfo", "MemTotal", ':'); !memory.empty())
        lines.back() += fmt::format(", {:.0f} GB of memory", std::stod(memory) / 1024 / 1024);
    if (const std::string system = told("/etc/os-release", "PRETTY_NAME", '='); !system.empty())
        lines.push_back(system);
    lines.push_back(
        fmt::format("GCC {}, SQLite {}, Qt {}", __VERSION__, sqlite3_libversion(), BENCH_QT_VERSION));
    return lines;
}

}  // namespace bench
