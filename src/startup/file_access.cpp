#include "startup/file_access.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <system_error>

#include "startup/messages.h"
#include "startup/start_up_error.h"

namespace startup {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t size_limit = 1U << 20U;

[[noreturn]] void fail(const fs::path& file, std::string_view what, int error, std::string_view reason) {
    throw StartUpError(
        file.string() + ": " + std::string(what) + ": " + std::generic_category().message(error),
        std::string(reason) + file.filename().string());
}

class Descriptor {
  public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() {
        if (number_ >= 0) close(number_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    int get() const { return number_; }

  private:
    int number_;
};

bool write_all(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

void sync_folder(const fs::path& folder) {
    const Descriptor handle(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (handle.get() >= 0) fsync(handle.get());
}

}  // namespace

std::string read_whole(const fs::path& file) {
    // Without blocking, or a pipe put in the file's place would hold up the start for ever.
    const Descriptor handle(open(file.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (handle.get() < 0) {
        fail(file, "cannot be opened", errno,
             errno == ENOENT ? message::file_missing : message::file_unreadable);
    }
    struct stat form {};
    if (fstat(handle.get(), &form) != 0 || !S_ISREG(form.st_mode)) {
        fail(file, "is no plain file", S_ISDIR(form.st_mode) ? EISDIR : EINVAL, message::file_unreadable);
    }
    std::string bytes;
    std::array<char, 4096> piece{};
    while (true) {
        const ssize_t got = read(handle.get(), piece.data(), piece.size());
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) fail(file, "cannot be read", errno, message::file_unreadable);
        if (got == 0) return bytes;
        bytes.append(piece.data(), static_cast<std::size_t>(got));
        if (bytes.size() > size_limit) fail(file, "is far too long", EFBIG, message::file_unreadable);
    }
}

void replace_whole(const fs::path& file, std::string_view bytes, unsigned mode) {
    std::error_code ignored;
    const fs::path real = fs::canonical(file, ignored);  // a link keeps leading to the file it leads to
    const fs::path target = real.empty() ? file : real;
    if (fs::is_directory(target, ignored)) fail(file, "is a folder", EISDIR, message::file_unwritable);
    std::string fresh = target.string() + ".XXXXXX";
    const auto give_up = [&](int error) {
        unlink(fresh.c_str());
        fail(file, "cannot be written", error, message::file_unwritable);
    };
    {
        const Descriptor handle(mkostemp(fresh.data(), O_CLOEXEC));
        if (handle.get() < 0) fail(file, "cannot be written", errno, message::file_unwritable);
        if (fchmod(handle.get(), mode) != 0 || !write_all(handle.get(), bytes) || fsync(handle.get()) != 0) {
            give_up(errno);
        }
    }
    if (rename(fresh.c_str(), target.c_str()) != 0) give_up(errno);
    sync_folder(target.parent_path().empty() ? fs::path(".") : target.parent_path());
}

}  // namespace startup
