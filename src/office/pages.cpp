#include "office/pages.h"

#include "ui/journal/journal_screen.h"

namespace office {

namespace {

void run_journal(QWidget* window, const ui::Context& context) {
    ui::JournalScreen screen(window, context);
    if (screen.open()) screen.run();
}

}  // namespace

const std::vector<Entry>& entries() {
    using signin::Action;
    static const std::vector<Entry> table = {
        {"journal", "سجل الأحدا&ث", Action::daily_statement, nullptr, run_journal},
    };
    return table;
}

}  // namespace office
