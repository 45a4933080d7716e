#include "common/ports.h"

#include <fcntl.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <thread>
#include <utility>

#include "common/files.h"
#include "common/text.h"

namespace common {

namespace fs = std::filesystem;
using Deadline = std::chrono::steady_clock::time_point;

namespace {

constexpr auto patience = std::chrono::seconds(3);

// Serial ports count from com1 = ttyS0, parallel printers (today's USB printers) from lpt1 = lp0.
constexpr std::array<std::pair<std::string_view, std::string_view>, 12> port_table = {{
    {"com1", "/dev/ttyS0"},
    {"com2", "/dev/ttyS1"},
    {"com3", "/dev/ttyS2"},
    {"com4", "/dev/ttyS3"},
    {"com5", "/dev/ttyS4"},
    {"com6", "/dev/ttyS5"},
    {"com7", "/dev/ttyS6"},
    {"com8", "/dev/ttyS7"},
    {"com9", "/dev/ttyS8"},
    {"lpt1", "/dev/usb/lp0"},
    {"lpt2", "/dev/usb/lp1"},
    {"lpt3", "/dev/usb/lp2"},
}};

// While an object exists, writing to a pipe without a reader fails instead of ending the program by a signal.
class BrokenPipeGuard {
  public:
    BrokenPipeGuard() {
        sigemptyset(&pipe_);
        sigaddset(&pipe_, SIGPIPE);
        pthread_sigmask(SIG_BLOCK, &pipe_, &before_);
    }
    ~BrokenPipeGuard() {
        const timespec at_once{};
        while (sigtimedwait(&pipe_, nullptr, &at_once) == SIGPIPE) {
        }
        pthread_sigmask(SIG_SETMASK, &before_, nullptr);
    }
    BrokenPipeGuard(const BrokenPipeGuard&) = delete;
    BrokenPipeGuard& operator=(const BrokenPipeGuard&) = delete;

  private:
    sigset_t pipe_{};
    sigset_t before_{};
};

// Creates or empties a file and opens it for writing. Nothing is created under /dev, where a file in place of
// a missing printer would swallow receipts.
int open_for_output(const std::string& path) {
    int flags = O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC | O_TRUNC;
    const auto belongs_to_dev = [&path] {
        const std::string plain = fs::path(path).lexically_normal().string();
        return plain.starts_with("/dev/");
    };
    if (!belongs_to_dev()) flags |= O_CREAT;
    return open(path.c_str(), flags, 0644);
}

// Waits until a serial device has taken all bytes, because closing its port would wait for half a minute and
// more. Bytes that it does not take in time are dropped, so that they are not printed later.
bool drain(int descriptor, bool written, Deadline deadline) {
    if (isatty(descriptor) == 0) return written;
    int waiting = 0;
    while (written && ioctl(descriptor, TIOCOUTQ, &waiting) == 0 && waiting > 0) {
        if (std::chrono::steady_clock::now() >= deadline)
            written = false;
        else
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    if (!written) tcflush(descriptor, TCOFLUSH);
    return written;
}

bool write_path(const std::string& path, std::string_view bytes) {
    const Deadline deadline = std::chrono::steady_clock::now() + patience;
    const Descriptor file(open_for_output(path));
    if (!file.is_open()) return false;
    const BrokenPipeGuard guard;
    return drain(file.get(), write_all(file.get(), bytes, deadline), deadline);
}

}  // namespace

std::string port_path(std::string_view port) {
    const std::string_view name = trim(port);
    std::string_view plain = name;
    if (plain.ends_with(':')) plain.remove_suffix(1);
    for (const auto& [known, path] : port_table) {
        if (!equal_ignoring_case(plain, known)) continue;
        std::string variable = "TALLVEX_";
        for (const char letter : known)
            variable += letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
        const char* given = std::getenv(variable.c_str());
        return given != nullptr && *given != '\0' ? given : std::string(path);
    }
    return std::string(name);
}

const std::vector<std::string>& known_ports() {
    static const std::vector<std::string> names = [] {
        std::vector<std::string> made;
        for (const auto& entry : port_table)
            made.emplace_back(entry.first);
        return made;
    }();
    return names;
}

bool FileDevices::write_port(std::string_view port, std::string_view bytes) {
    const std::string path = port_path(port);
    if (path.empty() || path.find('\0') != std::string::npos) return false;
    return write_path((fs::path(folder_) / path).string(), bytes);
}

bool FileDevices::write_file(std::string_view name, std::string_view bytes) {
    if (name.empty() || name.find('\0') != std::string_view::npos) return false;
    return write_path((fs::path(folder_) / name).string(), bytes);
}

}  // namespace common
