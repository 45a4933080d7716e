#include "ui/widgets/search_pause.h"

namespace ui {

SearchPause::SearchPause(std::function<void()> search) : search_(std::move(search)) {
    timer_.setSingleShot(true);
    timer_.callOnTimeout(search_);
}

void SearchPause::begin(int milliseconds) {
    timer_.start(milliseconds);
}

void SearchPause::end() {
    if (timer_.isActive()) search();
}

void SearchPause::search() {
    timer_.stop();
    search_();
}

}  // namespace ui
