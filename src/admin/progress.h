// How far long work is, on a terminal only.
#pragma once

#include <cstddef>
#include <string>

#include "admin/tool.h"

namespace admin {

// A bar on tool.err, redrawn when its percentage changes and wiped away at the end; nothing at all where
// tool.err is no terminal, so that logs stay clean.
class Progress {
  public:
    Progress(Tool& tool, std::string label, std::size_t total);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    // `amount` of the total is done.
    void reach(std::size_t amount);
    void step() { reach(done_ + 1); }

  private:
    Tool& tool_;
    std::string label_;
    std::size_t total_;
    std::size_t done_ = 0;
    int percent_ = -1;
};

}  // namespace admin
