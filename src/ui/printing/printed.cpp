#include "ui/printing/printed.h"

#include "printing/report_printer.h"
#include "ui/widgets/messages.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

// The file as the cashier finds it: within the program's folder.
std::string name_of(const std::filesystem::path& file) {
    return "\u200e" + (file.parent_path().filename() / file.filename()).string();
}

}  // namespace

QString printed_text(const Context& context) {
    const auto kept = context.reports.kept_file();
    return kept.empty() ? qt(message::printed) : qt(message::kept_instead) + qt(name_of(kept));
}

void say_where_kept(const Context& context) {
    const auto kept = context.reports.kept_file();
    if (!kept.empty())
        context.services.prompts.message(std::string(message::kept_instead) + name_of(kept),
                                         common::Icon::information);
}

}  // namespace ui
