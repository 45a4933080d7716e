#include "admin/progress.h"

#include <algorithm>

namespace admin {

namespace {
constexpr int bar_cells = 40;
}

Progress::Progress(Tool& tool, std::string label, std::size_t total)
    : tool_(tool), label_(std::move(label)), total_(total) {
    reach(0);
}

Progress::~Progress() {
    if (tool_.terminal) tool_.err << "\r\x1b[K" << std::flush;
}

void Progress::reach(std::size_t amount) {
    done_ = amount;
    if (!tool_.terminal) return;
    const int percent = total_ == 0 ? 100 : static_cast<int>(std::min(done_, total_) * 100 / total_);
    if (percent == percent_) return;
    percent_ = percent;
    const int filled = percent * bar_cells / 100;
    tool_.err << '\r' << label_ << " [" << std::string(static_cast<std::size_t>(filled), '#')
              << std::string(static_cast<std::size_t>(bar_cells - filled), '.') << "] " << percent
              << "%\x1b[K" << std::flush;
}

}  // namespace admin
