#include "common/ports.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <utility>

#include "common/files.h"
#include "common/text.h"

namespace common {

namespace fs = std::filesystem;

namespace {

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

bool is_same_file(const struct stat& one, const struct stat& other) {
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

bool is_open_here(const struct stat& file) {
    std::error_code failed;
    for (fs::directory_iterator entry("/proc/self/fd", failed), end; !failed && entry != end;
         entry.increment(failed)) {
        struct stat open {};
        if (stat(entry->path().c_str(), &open) == 0 && is_same_file(open, file)) return true;
    }
    return false;
}

// Returns true for DOS device names that are not in the table ("com10", "lpt", "prn"), for example a mistyped
// port.
bool is_dos_device(std::string_view name) {
    if (name.ends_with(':')) name.remove_suffix(1);
    const std::string plain = lower_ascii(name);
    const auto is_listed = [&plain](const auto& entry) { return entry.first == plain; };
    if (std::any_of(port_table.begin(), port_table.end(), is_listed)) return false;
    if (plain == "prn" || plain == "aux" || plain == "con" || plain == "nul") return true;
    return (plain.starts_with("com") || plain.starts_with("lpt")) &&
           plain.find_first_not_of("0123456789", 3) == plain.npos;
}

// A DOS name must not become a file of that name.
PortFault fault_of_name(std::string_view port) {
    const std::string_view name = trim(port);
    if (name.starts_with("\\\\")) return PortFault::shared_printer;
    const bool has_drive = name.size() > 1 && name[1] == ':';
    return has_drive || name.find('\\') != name.npos || is_dos_device(name) ? PortFault::unknown_name
                                                                            : PortFault::none;
}

template <std::size_t N>
bool ends_in(const fs::path& path, const std::array<std::string_view, N>& endings) {
    const std::string name = lower_ascii(path.filename().string());
    return std::any_of(endings.begin(), endings.end(),
                       [&name](std::string_view ending) { return name.ends_with(ending); });
}

// Files that SQLite keeps beside a database. An empty one may be in use.
bool is_beside_database(const fs::path& path) {
    return ends_in(path, std::array<std::string_view, 3>{"-wal", "-shm", "-journal"});
}

// Decides whether receipts may create a file of this name or fill an empty one. Under /dev, a file in place
// of a missing printer would swallow receipts; so would a file in the shop's folder that a mistyped port name
// creates.
PortFault fault_of_new_file(const fs::path& path, const fs::path& folder) {
    std::error_code failed;
    const fs::path parent = fs::weakly_canonical(path.has_parent_path() ? path.parent_path() : ".", failed);
    if (failed || !fs::is_directory(parent, failed)) return PortFault::missing;
    const std::string place = parent.string() + "/";
    if (place.starts_with("/dev/") || place.starts_with("/proc/") || place.starts_with("/sys/"))
        return PortFault::missing;
    const bool named_as_receipts = ends_in(path, std::array<std::string_view, 3>{".txt", ".prn", ".bin"});
    if (is_beside_database(path) || (fs::equivalent(parent, folder, failed) && !named_as_receipts))
        return PortFault::not_a_port;
    return access(parent.c_str(), W_OK) == 0 ? PortFault::none : fault_of(errno);
}

// Memory is a character device too, and writing to it would be fatal; /dev/null and /dev/full are harmless.
bool is_device(const struct stat& form) {
    constexpr unsigned memory = 1;
    constexpr unsigned null = 3;
    constexpr unsigned full = 7;
    return major(form.st_rdev) != memory || minor(form.st_rdev) == null || minor(form.st_rdev) == full;
}

// Judges a path without opening it. `form` describes what is there; its mode is 0 if there is nothing.
PortFault fault_before_opening(const fs::path& path, const fs::path& folder, struct stat& form) {
    form = {};
    if (stat(path.c_str(), &form) != 0) {
        const int error = errno;
        form = {};
        std::error_code ignored;
        return error == ENOENT && !fs::is_symlink(path, ignored) ? fault_of_new_file(path, folder)
                                                                 : fault_of(error);
    }
    switch (form.st_mode & S_IFMT) {
        case S_IFCHR:
            return is_device(form) ? PortFault::none : PortFault::not_a_port;
        case S_IFIFO:
            return PortFault::none;
        case S_IFREG:
            if (is_open_here(form) || is_beside_database(path)) return PortFault::not_a_port;
            return form.st_size == 0 ? fault_of_new_file(path, folder) : PortFault::none;
        default:
            return PortFault::not_a_port;
    }
}

// Makes sure that what was opened is what was judged, and that a file holds receipts.
PortFault fault_after_opening(const Descriptor& file, const struct stat& judged) {
    struct stat form {};
    if (fstat(file.get(), &form) != 0) return fault_of(errno);
    if (judged.st_mode != 0 && !is_same_file(form, judged)) return PortFault::not_a_port;
    if (!S_ISREG(form.st_mode) || form.st_size == 0) return PortFault::none;
    std::array<char, 512> first{};
    const ssize_t got = pread(file.get(), first.data(), first.size(), 0);
    std::string_view beginning(first.data(), static_cast<std::size_t>(std::max<ssize_t>(got, 0)));
    // Other files can begin with the code of a bell, so it must be followed by more bells or by a receipt.
    beginning.remove_prefix(std::min(beginning.find_first_not_of(drawer_bell), beginning.size()));
    return printer_reset.starts_with(beginning.substr(0, printer_reset.size())) ? PortFault::none
                                                                                : PortFault::not_a_port;
}

constexpr int quietly = O_NONBLOCK | O_NOCTTY | O_CLOEXEC;

// A new file is created only if nothing is there, not even a dangling link.
int open_as_port(const fs::path& path, const struct stat& judged) {
    if (judged.st_mode == 0) return open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | quietly, shop_file_mode);
    return open(path.c_str(), (S_ISREG(judged.st_mode) ? O_RDWR | O_APPEND : O_WRONLY) | quietly);
}

bool is_path(std::string_view path) {
    return !path.empty() && path.find('\0') == std::string_view::npos;
}

}  // namespace

PortFault fault_of(int error) {
    switch (error) {
        case EACCES:
        case EPERM:
        case EROFS:
            return PortFault::denied;
        case ENOSPC:
        case EDQUOT:
        case EFBIG:
            return PortFault::disk_full;
        case ENOENT:
        case ENOTDIR:
        case ENODEV:
        case ENXIO:
        case EIO:
            return PortFault::missing;
        default:
            return PortFault::silent;
    }
}

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

PortFault port_fault(std::string_view port, const fs::path& folder) {
    if (const PortFault fault = fault_of_name(port); fault != PortFault::none) return fault;
    if (!is_path(port_path(port))) return PortFault::missing;
    const fs::path path = folder / port_path(port);
    struct stat form {};
    const PortFault fault = fault_before_opening(path, folder, form);
    if (fault != PortFault::none || form.st_mode == 0) return fault;
    if (access(path.c_str(), W_OK) != 0) return fault_of(errno);
    if (!S_ISREG(form.st_mode) || form.st_size == 0) return PortFault::none;
    const Descriptor file(open(path.c_str(), O_RDONLY | quietly));
    return file.is_open() ? fault_after_opening(file, form) : fault_of(errno);
}

bool is_same_port(std::string_view one, std::string_view other, const fs::path& folder) {
    return port_place(one, folder) == port_place(other, folder);
}

OpenedPort open_port(std::string_view port, const fs::path& folder) {
    const auto refused = [](PortFault fault) { return OpenedPort{fault, Descriptor(-1)}; };
    if (const PortFault fault = fault_of_name(port); fault != PortFault::none) return refused(fault);
    if (!is_path(port_path(port))) return refused(PortFault::missing);
    const fs::path path = folder / port_path(port);
    struct stat form {};
    if (const PortFault fault = fault_before_opening(path, folder, form); fault != PortFault::none)
        return refused(fault);
    Descriptor file(open_as_port(path, form));
    if (!file.is_open()) return refused(fault_of(errno));
    const PortFault fault = fault_after_opening(file, form);
    return fault == PortFault::none ? OpenedPort{fault, std::move(file)} : refused(fault);
}

fs::path port_place(std::string_view port, const fs::path& folder) {
    std::error_code failed;
    return fs::weakly_canonical(folder / port_path(port), failed);
}

bool is_open_here(const fs::path& file) {
    struct stat form {};
    return stat(file.c_str(), &form) == 0 && S_ISREG(form.st_mode) && is_open_here(form);
}

}  // namespace common
