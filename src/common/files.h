// Files of the system, opened without blocking, read whole and replaced whole.
#pragma once

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <utility>

namespace common {

// Owns a file descriptor and closes it; -1 if empty.
class Descriptor {
  public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor();
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    int get() const { return number_; }
    bool is_open() const { return number_ >= 0; }

  private:
    int number_;
};

// Writes all bytes to a file or device, waiting for it until the deadline. Returns false on an error or when
// time is up.
bool write_all(int descriptor, std::string_view bytes, std::chrono::steady_clock::time_point deadline);

// The bytes of a file. Throws std::system_error if the file is missing, not a regular file, unreadable or
// larger than the limit; the text of the error names the file.
inline constexpr std::size_t small_file = 1U << 20U;
std::string read_file(const std::filesystem::path& file, std::size_t limit = small_file);

// Writes and syncs a new file, then renames it over the old one: a crash leaves the old bytes or the new
// ones. A symbolic link stays, and its target is replaced. Throws std::system_error with the file's name; the
// old file is then unchanged.
void replace_file(const std::filesystem::path& file, std::string_view bytes, unsigned mode = 0644);

// Appends to a regular file in one piece, creating it if it is missing. Returns false if that fails.
bool append_to_file(const std::filesystem::path& file, std::string_view bytes);

// The mode of a file with a shop's data: its owner and group use it, nobody else reads it.
inline constexpr unsigned shop_file_mode = 0660;
// From now on the files and folders that this process makes get that mode, whatever the umask was.
void keep_files_from_others();

// Waits until a file or folder has reached the disk. Returns false if that fails.
bool sync_file(const std::filesystem::path& file);

}  // namespace common
