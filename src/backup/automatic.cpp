#include "backup/automatic.h"

#include <algorithm>
#include <chrono>
#include <map>

#include "common/text.h"
#include "common/typed.h"
#include "common/wording.h"
#include "database/till_settings.h"

namespace backup {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view copy_ending = ".backup";
// Notes in till_setting, beside the settings.
constexpr std::string_view made_note = "backup_made";
constexpr std::string_view failed_note = "backup_failed";
constexpr std::size_t longest_note = 200;

// The day in a copy's name.
std::optional<common::Date> day_of(std::string_view name, std::string_view prefix) {
    constexpr std::string_view form = "20261121-104200";
    if (!name.starts_with(prefix) || !name.ends_with(copy_ending) ||
        name.size() != prefix.size() + form.size() + copy_ending.size())
        return std::nullopt;
    const std::string digits(name.substr(prefix.size(), 8));
    return common::read_date(digits.substr(0, 4) + "/" + digits.substr(4, 2) + "/" + digits.substr(6, 2));
}

void thin_out(const fs::path& folder) {
    std::error_code ignored;
    std::vector<std::string> names;
    for (fs::directory_iterator entry(folder, ignored), end; !ignored && entry != end;
         entry.increment(ignored)) {
        const std::string name = entry->path().filename();
        // An unfinished copy this old was cut off; a younger one may be in the making at another till.
        constexpr auto long_ago = std::chrono::hours(6);
        if (name.starts_with(automatic_prefix) &&
            name.find(std::string(copy_ending) + ".making") != name.npos &&
            fs::last_write_time(entry->path(), ignored) < fs::file_time_type::clock::now() - long_ago) {
            fs::remove(entry->path(), ignored);
        } else {
            names.push_back(name);
        }
    }
    for (const std::string& name : superfluous(names, automatic_prefix))
        fs::remove(folder / name, ignored);
}

}  // namespace

std::string name_at(std::string_view prefix, const common::Moment& moment) {
    std::string text = common::moment_text(moment);
    std::erase(text, '/');
    std::erase(text, ':');
    std::replace(text.begin(), text.end(), ' ', '-');
    return std::string(prefix) + text + std::string(copy_ending);
}

std::vector<std::string> superfluous(std::vector<std::string> names, std::string_view prefix) {
    std::sort(names.begin(), names.end(), std::greater<>());
    struct Periods {
        std::size_t kept_at_most;
        long (*number_of)(const common::Date& day);
        std::vector<long> kept = {};
    };
    Periods all[] = {
        {7, [](const common::Date& day) { return static_cast<long>(common::days_from_epoch(day)); }},
        // Weeks that begin on Saturday.
        {4,
         [](const common::Date& day) { return (static_cast<long>(common::days_from_epoch(day)) + 5) / 7; }},
        {12, [](const common::Date& day) { return day.year * 12L + day.month; }},
    };
    std::vector<std::string> too_many;
    for (const std::string& name : names) {
        const auto day = day_of(name, prefix);
        if (!day) continue;
        bool is_kept = false;
        for (Periods& periods : all) {
            const long number = periods.number_of(*day);
            if (periods.kept.size() == periods.kept_at_most ||
                (!periods.kept.empty() && periods.kept.back() == number))
                continue;
            periods.kept.push_back(number);
            is_kept = true;
        }
        if (!is_kept) too_many.push_back(name);
    }
    return too_many;
}

std::vector<Outcome> back_up_to_folders(database::Connection& connection, const fs::path& shop,
                                        const common::Moment& now, const Progress& progress) {
    const auto folders = database::backup_folders(connection);
    if (folders.empty()) return {};  // there may be no table for the notes either
    std::vector<Outcome> outcomes;
    std::string failed;
    bool made = false;
    for (const fs::path& folder : folders) {
        Outcome outcome;
        outcome.file = shop.parent_path() / folder / name_at(automatic_prefix, now);
        try {
            outcome.copy = back_up(shop, outcome.file, progress);
            thin_out(outcome.file.parent_path());
            made = true;
        } catch (const std::exception& error) {
            outcome.failure = error.what();
            failed += (failed.empty() ? "" : ", ") + folder.string();
        }
        outcomes.push_back(std::move(outcome));
    }
    if (made) database::set_till_setting(connection, made_note, common::moment_text(now));
    database::set_till_setting(connection, failed_note, common::cut_to_column(failed, longest_note));
    connection.make_durable();
    return outcomes;
}

std::vector<std::string> missing_folders(database::Connection& connection) {
    std::vector<std::string> missing;
    std::error_code ignored;
    for (const fs::path& folder : database::backup_folders(connection))
        if (!fs::is_directory(folder, ignored)) missing.push_back(folder.string());
    return missing;
}

std::optional<State> state_of(database::Connection& connection) {
    if (!connection.is_embedded() || database::backup_folders(connection).empty()) return std::nullopt;
    State state;
    if (const auto made = database::till_setting(connection, made_note))
        state.made = common::parse_moment(*made);
    state.failed = database::till_setting(connection, failed_note).value_or("");
    return state;
}

std::string age_words(const State& state, const common::Date& today) {
    std::string words = "لم تحفظ نسخة احتياطية بعد";
    if (state.made) {
        const long days = common::days_from_epoch(today) - common::days_from_epoch(state.made->date);
        const std::string moment = common::moment_text(*state.made);
        const std::string time = moment.substr(moment.find(' ') + 1, 5);
        const std::string when = days <= 0 ? "اليوم " + time
                                 : days == 1
                                     ? "أمس " + time
                                     : "منذ " + common::counted(days, {"يوم", "يومين", "أيام", "يوما"});
        words = "آخر نسخة احتياطية: " + when;
    }
    return words;
}

std::string failure_words(const State& state) {
    return state.failed.empty() ? "" : "لم تحفظ النسخة في: \u200E" + state.failed;
}

}  // namespace backup
