#include <CLI/CLI.hpp>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "admin/shop.h"
#include "admin/tool.h"
#include "common/code_page.h"
#include "common/files.h"
#include "goods/item_import.h"

namespace admin {

namespace {

constexpr std::size_t largest_file = 1U << 30U;

struct ImportOptions {
    std::string file;
    bool columns = false;
    bool code_page_1256 = false;
    bool update = false;
};

void list_columns(Tool& tool) {
    for (const goods::ItemColumn& column : goods::item_columns()) {
        tool.out << column.name << std::string(16 - column.name.size(), ' ') << column.meaning;
        for (std::size_t at = 0; at < column.arabic.size(); ++at)
            tool.out << (at == 0 ? " (" : "، ") << column.arabic[at];
        tool.out << ")\n";
    }
}

// Reports faulty lines and those to be looked at, line by line.
void report(const std::vector<goods::LineProblem>& problems, const std::vector<goods::LineProblem>& notes,
            const ImportOptions& options, Tool& tool) {
    std::multimap<std::size_t, std::string> said;
    for (const goods::LineProblem& problem : problems)
        said.emplace(problem.line, problem.reason.english);
    for (const goods::LineProblem& note : notes)
        said.emplace(note.line, "note: " + note.reason.english);
    for (const auto& [line, text] : said)
        tool.err << options.file << ':' << line << ": " << text << '\n';
}

// A bar for each stage in turn.
class StageBar {
  public:
    explicit StageBar(Tool& tool) : tool_(tool) {}
    void operator()(goods::ImportStage stage, std::size_t done, std::size_t total) {
        if (stage != stage_) {
            stage_ = stage;
            shown_.reset();  // the bar of the stage before is erased first
            shown_.emplace(tool_, stage == goods::ImportStage::reading ? "reading" : "writing", total);
        }
        shown_->reach(done);
    }

  private:
    Tool& tool_;
    std::optional<goods::ImportStage> stage_;
    std::optional<Progress> shown_;
};

goods::ImportOutcome import(const std::string& csv, const ImportOptions& options, Tool& tool) {
    const auto connection = open_shop(tool);
    StageBar bar(tool);
    const goods::ImportProgress progress = std::ref(bar);
    const goods::ImportPlan plan = goods::plan_import(*connection, csv, options.update, progress);
    signin::Session session;
    session.user_name = "tallvex-admin";
    goods::ImportOutcome outcome =
        goods::write_import(*connection, session, plan, tool.clock.now(), progress);
    report(outcome.problems, plan.notes, options, tool);
    return outcome;
}

void run(const ImportOptions& options, Tool& tool) {
    std::string csv = common::read_file(tool.folder / options.file, largest_file);
    if (options.code_page_1256) csv = common::from_code_page_1256(csv);
    const goods::ImportOutcome outcome = import(csv, options, tool);
    if (!outcome.problems.empty()) {
        const std::size_t count = outcome.problems.size();
        throw Refused("nothing was imported; mend the " +
                      (count == 1 ? std::string("line") : std::to_string(count) + " lines") +
                      " named above and import the file again");
    }
    const auto counted = [](std::size_t count, std::string_view noun) {
        return std::to_string(count) + " " + std::string(noun) + (count == 1 ? "" : "s");
    };
    tool.out << counted(outcome.items, "item") << ", " << counted(outcome.barcodes, "barcode") << " and "
             << outcome.batches << (outcome.batches == 1 ? " row" : " rows") << " of stock imported";
    if (options.update) tool.out << ", " << counted(outcome.changed, "item") << " changed";
    tool.out << '\n';
}

}  // namespace

void add_import_items(CLI::App& program, Tool& tool) {
    const auto options = std::make_shared<ImportOptions>();
    CLI::App* command = program.add_subcommand(
        "import-items",
        tool.help(
            "Adds the items of a CSV file (UTF-8) with prices, barcodes and opening stock, or none of them",
            "يضيف أصناف ملف CSV بأسعارها وباركوداتها ورصيدها الافتتاحي، كلها أو لا شيء منها"));
    command->add_option(
        "file", options->file,
        tool.help("The CSV file; its first line names the columns", "ملف CSV، وسطره الأول أسماء الأعمدة"));
    command->add_flag(
        "--columns", options->columns,
        tool.help("List the columns such a file may have", "يعرض الأعمدة التي يمكن أن تكون في الملف"));
    command->add_flag("--code-page-1256", options->code_page_1256,
                      tool.help("The file is in the code page of an Arabic Windows instead of UTF-8",
                                "الملف بترميز Windows العربي 1256 بدلا من UTF-8"));
    command->add_flag(
        "--update", options->update,
        tool.help("Change the items that the shop has already; what a line leaves empty stays as it is",
                  "يعدل الأصناف المسجلة من قبل، وما يتركه السطر خاليا يبقى كما هو"));
    command->callback([options, &tool] {
        if (options->columns) {
            list_columns(tool);
        } else if (options->file.empty()) {
            throw CLI::RequiredError("file");
        } else {
            run(*options, tool);
        }
    });
}

}  // namespace admin
