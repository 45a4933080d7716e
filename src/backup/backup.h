// Copies of an embedded shop's file, made and put back while tills use it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace backup {

// Why a copy was not made or put back, and what to do. Nothing is left half done.
class Error : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// Called after every few megabytes with the number of pages copied and of all pages.
using Progress = std::function<void(const std::string& label, std::size_t done, std::size_t total)>;

struct Copy {
    std::uintmax_t bytes = 0;
    std::int64_t invoices = 0;         // rows of sales in the copy
    std::vector<std::string> strange;  // what a shop should not hold (contents.h); of a restored shop only
};

// Copies the shop file as it is at one moment to `target`; tills may go on writing. The copy is checked (page
// structure, and that it is a shop) and synced before it gets its name, and only its owner and group may use
// it. Throws Error if the target exists or the check fails. The shop is never changed.
Copy back_up(const std::filesystem::path& shop, const std::filesystem::path& target,
             const Progress& progress = {});

// Replaces the shop by a backup. First checks a copy of the backup and runs the upgrade list on it, then
// backs up the shop's present state to `safety`. Open tills see the restored rows with their next statement.
// Throws Error, with the shop unchanged, if the file is not a backup or the tills never pause.
Copy put_back(const std::filesystem::path& backup, const std::filesystem::path& shop,
              const std::filesystem::path& safety, const Progress& progress = {});

// Deletes all but the newest of a folder's copies whose names begin with `prefix` and go on with their time.
void keep_newest(const std::filesystem::path& folder, std::string_view prefix, std::size_t how_many);

// Checks a file and returns how many sales it holds. Throws Error with the file's name if the file is empty,
// damaged or not a shop.
std::int64_t check_copy(const std::filesystem::path& file);

}  // namespace backup
