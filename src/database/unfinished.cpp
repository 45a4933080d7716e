#include "database/unfinished.h"

#include <string>

namespace database {

namespace {

// "The save of …" "did not come to its end."
constexpr std::string_view save_of = "لم يكتمل حفظ ";
// What each answer does: finish writes what is missing, …, and prints nothing; undo removes what was written,
// …, the printed receipt is void.
constexpr std::string_view finish_caption = "إكمال الحفظ";
constexpr std::string_view undo_caption = "تراجع";
constexpr std::string_view finish_does = "\n\nإكمال الحفظ: يسجل ما بقي منه";
constexpr std::string_view without_paper = " دون طباعة";
constexpr std::string_view undo_does = "\nتراجع: يمحى ما سجل منه كأنه لم يحفظ";
constexpr std::string_view paper_is_void = "، والبون المطبوع لاغ";
// "It could not be done now. You are asked again at the next save."
constexpr std::string_view left_open = "تعذر ذلك الآن. سيسألك البرنامج عنه مرة أخرى عند الحفظ التالي";
// "Nothing of it is saved any more. Its printed receipt is void: tear it up."
constexpr std::string_view tear_up = "\nلم يعد منه شيء محفوظا. البون المطبوع لاغ، مزقه";

std::string question_about(const JournalEntry& entry, Paper paper, const std::exception* cause) {
    std::string text = std::string(save_of) + entry.title;
    if (cause != nullptr) text += "\n" + std::string(cause_of(*cause));
    text += finish_does;
    if (paper == Paper::printed) text += without_paper;
    text += undo_does;
    if (paper != Paper::none) text += paper_is_void;
    return text;
}

std::string log_text(const JournalEntry& entry, const Resumption& how, std::string_view what) {
    return "save of " + log_name(entry, &how) + " " + std::string(what);
}

}  // namespace

std::string log_name(const JournalEntry& entry, const Resumption* how) {
    try {
        if (how != nullptr) return how->log_name(entry);
    } catch (const std::exception&) {
        // The entry is described without its content.
    }
    return "a document of the kind " + entry.kind + " (" + entry.title + ")";
}

void finish(Connection& connection, common::Log& log, JournalEntry& entry, const Resumption& how) {
    const std::string recorded = log_text(entry, how, "undone: it is saved as ");
    const std::string name = log_name(entry, &how);
    how.finish(connection, entry);
    connection.make_durable();
    const std::string written = log_name(entry, &how);
    if (written != name) log.log_event(recorded + written, common::saving_code);
    log.log_event(log_text(entry, how, "finished"), common::saving_code);
}

void undo(Connection& connection, common::Log& log, const JournalEntry& entry, const Resumption& how) {
    how.undo(connection, entry);
    connection.make_durable();
    log.log_event(log_text(entry, how, "undone"), common::saving_code);
}

Settled settle(Connection& connection, const common::Services& services, JournalEntry& entry,
               const Resumption& how, Paper paper, const std::exception* cause) {
    // A hasty Enter finishes a save whose receipt the customer holds, and undoes any other.
    const common::Icon icon = paper == Paper::printed ? common::Icon::question : common::Icon::exclamation;
    const common::Answer answer =
        services.prompts.choose(question_about(entry, paper, cause), {finish_caption, undo_caption}, icon);
    if (answer == common::Answer::closed) return Settled::left;
    try {
        if (answer == common::Answer::yes) {
            finish(connection, services.log, entry, how);
            return Settled::finished;
        }
        undo(connection, services.log, entry, how);
    } catch (const std::exception& error) {
        services.log.log_event(log_text(entry, how, log_line("stays unfinished", error)),
                               common::saving_code);
        services.prompts.message(with_reason(left_open, error), common::Icon::critical);
        return Settled::left;
    }
    if (paper != Paper::none)
        services.prompts.message(entry.title + std::string(tear_up), common::Icon::exclamation);
    return Settled::undone;
}

}  // namespace database
