#include "audit/trail_file.h"

#include <algorithm>
#include <cstdlib>
#include <system_error>

#include "audit/person_json.h"
#include "common/files.h"
#include "common/text.h"

namespace audit {

TALLVEX_JSON(Event, what, amount, item, invoice, approver)
TALLVEX_JSON(Entry, id, moment, store, user, kind, event)
TALLVEX_JSON(End, number, hash)

namespace {

namespace fs = std::filesystem;

constexpr std::string_view name_before = "till_journal_";
constexpr std::string_view name_after = ".txt";
constexpr std::size_t long_file = 1U << 16U;
constexpr std::size_t longest_file = 1U << 28U;

std::string text_of(const fs::path& file) {
    try {
        return common::read_file(file, longest_file);
    } catch (const std::exception&) {
        return {};
    }
}

std::string entry_line(const Entry& entry) {
    return "{\"entry\":" + common::json_text(entry) + "}\n";
}

std::string end_line(const End& end, std::int64_t last) {
    return "{\"end\":" + common::json_text(end) + ",\"last\":" + std::to_string(last) + "}\n";
}

void take_line(Kept& kept, std::string_view line) {
    try {
        const auto read = nlohmann::json::parse(line);
        if (read.contains("entry")) kept.pending.push_back(read["entry"].get<Entry>());
        if (!read.contains("end")) return;
        kept.end = read["end"].get<End>();
        const auto last = std::ranges::find(kept.pending, read["last"].get<std::int64_t>(), &Entry::id);
        if (last != kept.pending.end()) kept.pending.erase(kept.pending.begin(), last + 1);
    } catch (const std::exception&) {
        // Half a line, left by a power cut.
    }
}

}  // namespace

fs::path Place::file_of(std::int64_t till) const {
    const std::string shop = fs::path(common::trim(database)).filename().string();
    return folder / (std::string(name_before) + shop + '_' + std::to_string(till) + std::string(name_after));
}

std::set<std::int64_t> Place::tills() const {
    std::set<std::int64_t> tills;
    std::error_code error;
    for (const auto& file : fs::directory_iterator(folder, error)) {
        const std::string name = file.path().stem().string();
        const std::int64_t till = std::atoll(name.c_str() + name.rfind('_') + 1);
        if (file.path() == file_of(till)) tills.insert(till);
    }
    return tills;
}

Kept read_kept(const fs::path& file) {
    Kept kept;
    const std::string text = text_of(file);
    for (std::string_view rest = text; !rest.empty();) {
        const std::size_t end = std::min(rest.find('\n'), rest.size() - 1);
        take_line(kept, rest.substr(0, end + 1));
        rest.remove_prefix(end + 1);
    }
    return kept;
}

void keep_entry(const fs::path& file, const Entry& entry) {
    common::append_to_file(file, entry_line(entry));
}

void keep_end(const fs::path& file, const End& end, std::int64_t last) {
    common::append_to_file(file, end_line(end, last));
}

void shorten(const fs::path& file, const Kept& kept) {
    const std::string old = text_of(file);
    if (old.empty() || (old.size() < long_file && old.ends_with('\n'))) return;
    std::string text = end_line(kept.end, 0);
    for (const Entry& entry : kept.pending)
        text += entry_line(entry);
    try {
        common::replace_file(file, text, common::shop_file_mode);
    } catch (const std::system_error&) {
        // The longer file has the same content, but nothing may be appended to half a line.
        common::append_to_file(file, "\n");
    }
}

}  // namespace audit
