#include "common/files.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>

namespace common {

namespace fs = std::filesystem;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

namespace {

[[noreturn]] void fail(const fs::path& file, const char* what, int error) {
    throw std::system_error(error, std::generic_category(), file.string() + ": " + what);
}

// 0 for a regular file, else the error number for using it as one.
int error_of_kind(const Descriptor& file) {
    struct stat form {};
    if (fstat(file.get(), &form) != 0) return errno;
    if (S_ISREG(form.st_mode)) return 0;
    return S_ISDIR(form.st_mode) ? EISDIR : EINVAL;
}

}  // namespace

Descriptor::~Descriptor() {
    if (number_ >= 0) close(number_);
}

bool write_all(int descriptor, std::string_view bytes, steady_clock::time_point deadline) {
    while (!bytes.empty()) {
        const ssize_t written = write(descriptor, bytes.data(), bytes.size());
        if (written > 0) {
            bytes.remove_prefix(static_cast<std::size_t>(written));
            continue;
        }
        if (written < 0 && errno != EAGAIN && errno != EINTR) return false;
        const auto left = std::chrono::duration_cast<milliseconds>(deadline - steady_clock::now()).count();
        if (left <= 0) return false;
        pollfd ready{descriptor, POLLOUT, 0};
        const int answer = poll(&ready, 1, static_cast<int>(left));
        if (answer > 0 && (ready.revents & POLLOUT) == 0) return false;
    }
    return true;
}

std::string read_file(const fs::path& file, std::size_t limit) {
    // Without O_NONBLOCK a pipe in the file's place would be waited for forever.
    const Descriptor source(open(file.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (!source.is_open()) fail(file, "cannot be opened", errno);
    if (const int error = error_of_kind(source)) fail(file, "is not a regular file", error);
    std::string bytes;
    std::array<char, 4096> piece{};
    while (true) {
        const ssize_t got = read(source.get(), piece.data(), piece.size());
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) fail(file, "cannot be read", errno);
        if (got == 0) return bytes;
        bytes.append(piece.data(), static_cast<std::size_t>(got));
        if (bytes.size() > limit) fail(file, "is too large", EFBIG);
    }
}

void replace_file(const fs::path& file, std::string_view bytes, unsigned mode) {
    constexpr auto patience = std::chrono::minutes(1);
    std::error_code ignored;
    const fs::path real = fs::canonical(file, ignored);
    const fs::path target = real.empty() ? file : real;
    if (fs::is_directory(target, ignored)) fail(file, "is a folder", EISDIR);
    if (fs::exists(target, ignored) && !fs::is_regular_file(target, ignored))
        fail(file, "is a device", EINVAL);
    std::string fresh = target.string() + ".XXXXXX";
    const auto give_up = [&](int error) {
        unlink(fresh.c_str());
        fail(file, "cannot be written", error);
    };
    {
        const Descriptor made(mkostemp(fresh.data(), O_CLOEXEC));
        if (!made.is_open()) fail(file, "cannot be written", errno);
        if (fchmod(made.get(), mode) != 0 || !write_all(made.get(), bytes, steady_clock::now() + patience) ||
            fsync(made.get()) != 0) {
            give_up(errno);
        }
    }
    if (rename(fresh.c_str(), target.c_str()) != 0) give_up(errno);
    sync_file(target.parent_path().empty() ? fs::path(".") : target.parent_path());
}

bool append_to_file(const fs::path& file, std::string_view bytes) {
    const Descriptor target(open(file.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_NONBLOCK | O_CLOEXEC, 0664));
    if (!target.is_open() || error_of_kind(target) != 0) return false;
    return write(target.get(), bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
}

void keep_files_from_others() {
    umask(0777 & ~(shop_file_mode | S_IXUSR | S_IXGRP));
}

bool sync_file(const fs::path& file) {
    const Descriptor opened(open(file.c_str(), O_RDONLY | O_CLOEXEC));
    return opened.is_open() && fsync(opened.get()) == 0;
}

}  // namespace common
