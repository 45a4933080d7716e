// Fresh copies of a measured shop: one for the program, in a home folder as its start needs it, and one for
// the work by hand.
#pragma once

#include <filesystem>

#include "bench/sizes.h"

namespace bench {

class Copies {
  public:
    // Copies `shop` under `folder` and syncs the copies, so that no write-back disturbs the measurements.
    Copies(const std::filesystem::path& folder, const std::filesystem::path& shop, const Sizes& sizes);
    ~Copies();
    Copies(const Copies&) = delete;
    Copies& operator=(const Copies&) = delete;

    // "shop.db", the connection file, the version file, the log.
    std::filesystem::path home() const { return root_ / "home"; }
    std::filesystem::path by_hand() const { return root_ / "by_hand.db"; }
    std::filesystem::path by_hand_log() const { return root_ / "by_hand.log"; }

    // Compares the invoices that were added to both, their lines, and all stock, row by row. Throws
    // std::runtime_error, which names the table, if they differ, and if nothing was added.
    void compare_work() const;

  private:
    std::filesystem::path root_;
    Sizes sizes_;
};

}  // namespace bench
