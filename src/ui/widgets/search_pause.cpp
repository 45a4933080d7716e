#include "ui/widgets/search_pause.h"

namespace ui {

namespace {

constexpr int pause_ms = 100;

}  // namespace

SearchPause::SearchPause(std::function<void()> search) : search_(std::move(search)) {
    timer_.setSingleShot(true);
    timer_.setInterval(pause_ms);
    timer_.callOnTimeout(search_);
}

void SearchPause::begin() {
    timer_.start();
}

void SearchPause::end() {
    if (timer_.isActive()) search();
}

void SearchPause::search() {
    timer_.stop();
    search_();
}

}  // namespace ui
