#include "admin/sql.h"

#include <locale.h>
#include <unistd.h>
#include <CLI/CLI.hpp>
#include <algorithm>
#include <clocale>
#include <cwchar>
#include <memory>
#include <vector>

#include "admin/shop.h"
#include "admin/sql_guard.h"
#include "admin/tool.h"
#include "backup/backup.h"
#include "common/csv.h"
#include "common/date_time.h"
#include "common/text.h"

namespace admin {

namespace {

// wcwidth() knows Unicode's widths only under a UTF-8 locale, which the program's own need not be.
class UnicodeLocale {
  public:
    UnicodeLocale() : locale_(newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr)) {
        if (locale_ != nullptr) former_ = uselocale(locale_);
    }
    ~UnicodeLocale() {
        if (locale_ == nullptr) return;
        uselocale(former_);
        freelocale(locale_);
    }
    UnicodeLocale(const UnicodeLocale&) = delete;
    UnicodeLocale& operator=(const UnicodeLocale&) = delete;

  private:
    locale_t locale_;
    locale_t former_ = nullptr;
};

bool is_number(const database::Value& value) {
    return std::holds_alternative<std::int64_t>(value) || std::holds_alternative<double>(value);
}

std::string shown(const database::Value& value) {
    if (database::is_null(value)) return "NULL";
    std::string text = database::text_of(value);
    for (char& c : text) {
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7f) c = ' ';
    }
    return text;
}

void append_line(std::string& out, std::string line) {
    line.erase(line.find_last_not_of(' ') + 1);
    out += line + '\n';
}

}  // namespace

std::size_t display_width(std::string_view text) {
    std::size_t width = 0;
    const UnicodeLocale unicode;
    for (const char32_t c : common::code_points(text)) {
        const int cells = wcwidth(static_cast<wchar_t>(c));
        width += cells < 0 ? 1U : static_cast<std::size_t>(cells);
    }
    return width;
}

std::string aligned_table(const database::Result& result) {
    const std::size_t columns = result.columns().size();
    std::vector<std::size_t> widths;
    for (const std::string& name : result.columns())
        widths.push_back(display_width(name));
    for (const database::Row& row : result) {
        for (std::size_t i = 0; i < columns; ++i) {
            widths[i] = std::max(widths[i], display_width(shown(row.cells()[i])));
        }
    }
    const auto padded = [&](const std::string& text, std::size_t column, bool right) {
        const std::string blanks(widths[column] - display_width(text), ' ');
        return (column == 0 ? "" : "  ") + (right ? blanks + text : text + blanks);
    };
    std::string out;
    std::string header;
    std::string rule;
    for (std::size_t i = 0; i < columns; ++i) {
        header += padded(result.columns()[i], i, false);
        rule += (i == 0 ? "" : "  ") + std::string(widths[i], '-');
    }
    append_line(out, header);
    append_line(out, rule);
    for (const database::Row& row : result) {
        std::string line;
        for (std::size_t i = 0; i < columns; ++i) {
            line += padded(shown(row.cells()[i]), i, is_number(row.cells()[i]));
        }
        append_line(out, line);
    }
    return out;
}

std::string csv_table(const database::Result& result) {
    std::string out = common::csv_record(result.columns());
    std::vector<std::string> cells;
    for (const database::Row& row : result) {
        cells.clear();
        for (const database::Value& value : row.cells())
            cells.push_back(database::text_of(value));
        out += common::csv_record(cells);
    }
    return out;
}

namespace {

struct SqlOptions {
    std::string statement;
    bool csv = false;
    bool yes = false;
};

std::string joined(const std::vector<std::string>& texts, const char* between) {
    std::string all;
    for (const std::string& text : texts)
        all += (all.empty() ? "" : between) + text;
    return all;
}

// Asks before a statement whose damage could not be undone row by row.
void confirm(const StatementEffect& effect, const SqlOptions& options, Tool& tool) {
    if (effect.dangers.empty() || options.yes) return;
    const std::string what = "this statement " + joined(effect.dangers, ", and ");
    if (tool.terminal == nullptr || isatty(STDIN_FILENO) == 0)
        throw Refused(what + "; if that is meant, give --yes");
    tool.err << what << ". Go on? [y/N] " << std::flush;
    std::string answer;
    std::getline(tool.in, answer);
    answer = common::lower_ascii(common::trim(answer));
    if (answer != "y" && answer != "yes") throw Refused("nothing was changed");
}

// Before the first statement of a day that changes something, an embedded shop is copied.
void keep_copy_of_today(Tool& tool) {
    constexpr std::string_view prefix = "before-sql-";
    constexpr std::size_t days_kept = 7;
    const Place place = read_place(tool.shop);
    if (!is_embedded(place)) return;
    std::string day = common::date_text(tool.clock.now().date);
    std::erase(day, '/');
    const auto copy = tool.shop / (std::string(prefix) + day + ".backup");
    if (std::filesystem::exists(copy)) return;
    backup::back_up(startup::shop_file(place, tool.shop), copy);
    backup::keep_newest(tool.shop, prefix, days_kept);
    tool.err << "the shop as it was is kept in " << copy.string() << '\n';
}

void run(const SqlOptions& options, Tool& tool) {
    const auto connection = open_shop(tool);
    const StatementEffect effect = effect_of(options.statement);
    confirm(effect, options, tool);
    if (effect.changes) keep_copy_of_today(tool);
    // run() because only it returns both the rows and the number of changed rows.
    const auto outcome = connection->run(options.statement, {});
    connection->make_durable();
    if (outcome.result.columns().empty()) {
        if (effect.tables.empty()) {
            tool.err << "done\n";
        } else {
            tool.err << outcome.changed << (outcome.changed == 1 ? " row of " : " rows of ")
                     << joined(effect.tables, ", ") << " changed\n";
        }
    } else if (options.csv) {
        tool.out << csv_table(outcome.result);
    } else {
        const std::size_t count = outcome.result.size();
        tool.out << aligned_table(outcome.result) << '(' << count << (count == 1 ? " row)\n" : " rows)\n");
    }
}

}  // namespace

void add_sql(CLI::App& program, Tool& tool) {
    const auto options = std::make_shared<SqlOptions>();
    CLI::App* command = program.add_subcommand(
        "sql", tool.help("Runs a Transact-SQL statement on the shop and prints its rows",
                         "ينفذ جملة Transact-SQL على المحل ويعرض سطورها"));
    command->add_option("statement", options->statement, tool.help("The statement", "الجملة"))->required();
    command->add_flag("--csv", options->csv,
                      tool.help("Rows as CSV (RFC 4180, UTF-8, nulls empty) instead of a table",
                                "السطور بصيغة CSV بدلا من جدول، والخالي منها بلا قيمة"));
    command->add_flag(
        "--yes", options->yes,
        tool.help("Do not ask before a statement that drops something, or deletes or updates without where",
                  "لا يسأل قبل جملة drop، ولا قبل delete أو update بدون where"));
    command->callback([options, &tool] { run(*options, tool); });
}

}  // namespace admin
