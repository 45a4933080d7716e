// tallvex-bench: measures the till against its budgets on a large shop.

#include <sys/wait.h>
#include <unistd.h>

#include <QApplication>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

#include "bench/measure.h"
#include "bench/painted_till.h"
#include "bench/plain.h"
#include "bench/rows.h"
#include "bench/shop_data.h"
#include "bench/till.h"
#include "cash/cash_position.h"
#include "cash/daily_statement.h"
#include "database/schema.h"
#include "startup/shop_files.h"
#include "ui/style.h"

namespace {

namespace fs = std::filesystem;
using bench::Action;
using bench::Figure;

// Starts the till itself on the shop; it ends as soon as its sign-in screen is painted.
void start_till(const fs::path& program, const fs::path& shop_folder) {
    const pid_t child = fork();
    if (child == 0) {
        setenv("TALLVEX_HOME", shop_folder.c_str(), 1);
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
        setenv("TALLVEX_END_AT", "sign-in", 1);
        if (chdir(shop_folder.c_str()) != 0) _exit(126);
        execl(program.c_str(), program.c_str(), "1", nullptr);
        _exit(127);
    }
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child || !WIFEXITED(status) || WEXITSTATUS(status) != 0)
        throw std::runtime_error("the till did not start");
}

std::vector<bench::PlainLine> twenty_lines() {
    static int next = 1;
    std::vector<bench::PlainLine> lines;
    for (int i = 0; i < 20; ++i) {
        lines.push_back({next, 1, 10});
        next = next % 9'000 + 1;
    }
    return lines;
}

}  // namespace

// The resident memory of this process, in MB.
double memory() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("VmRSS:")) return std::stod(line.substr(6)) / 1024;
    return 0;
}

// Memory of a till that sells all day, in a process of its own: once its caches are filled, and 2,000 sales
// later.
int sell_all_day(const fs::path& shop) {
    bench::Till till(shop);
    bench::PaintedTill painted(till);
    for (int sale = 0; sale < 300; ++sale)
        painted.sell(5);
    std::printf("%.1f ", memory());
    for (int sale = 0; sale < 2'000; ++sale)
        painted.sell(5);
    std::printf("%.1f\n", memory());
    return EXIT_SUCCESS;
}

std::vector<bench::Reading> memory_of_a_day(const fs::path& self, const fs::path& shop) {
    const std::string command = self.string() + " --sell-all-day " + shop.string();
    FILE* const out = popen(command.c_str(), "r");  // NOLINT: the paths are our own
    double opened = 0;
    double sold = 0;
    if (out == nullptr || std::fscanf(out, "%lf %lf", &opened, &sold) != 2 || pclose(out) != 0)
        throw std::runtime_error("the till that sells all day failed");
    return {{"memory of the running till", "MB", 120, sold},
            {"of it grown over 2,000 sales", "MB", 4, sold - opened}};
}

int main(int argc, char** argv) try {
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    const QApplication application(argc, argv);
    ui::dress(*qApp, {1366, 768});
    const fs::path programs = fs::canonical("/proc/self/exe").parent_path();
    const fs::path data = programs.parent_path() / "bench-data";
    if (argc == 3 && std::string(argv[1]) == "--sell-all-day") return sell_all_day(argv[2]);
    const bool small = argv[1] != nullptr && std::string(argv[1]) == "--tenth";
    const bench::Sizes sizes = small ? bench::Sizes::tenth() : bench::Sizes::full();
    std::fprintf(stderr, "making the shop in %s, once\n", data.c_str());
    const fs::path shop = bench::shop_of(data, sizes);
    const fs::path plain = bench::plain_shop_of(data, sizes);
    const fs::path home = data / ("home-" + std::to_string(sizes.invoices));
    if (!fs::exists(home)) {
        fs::create_directories(home);
        fs::create_symlink(shop, home / "shop.db");
        startup::write_connection_file(home, {"embedded", "shop.db", "Not Found"});
        startup::write_version_file(home, "bench");
    }

    bench::Till till(shop);
    bench::PlainTill by_hand(plain);
    bench::PaintedTill painted(till);
    double kept = 0;
    const common::Moment start{bench::last_day, {8, 0, 0, 0}};
    const common::Moment until{bench::last_day, {23, 59, 59, 0}};
    const std::int64_t until_seconds = common::days_from_epoch(bench::last_day) * 86'400LL + 86'399;
    cash::CashPosition position(till.connection(), till.session(), till.nobody());
    cash::DailyStatement statement(till.connection(), till.session(), till.outside());
    if (!statement.open()) throw std::runtime_error("the statement did not open");
    statement.date = bench::last_day;
    sales::SearchFilters prefix;
    prefix.name = "صنف 12";
    const std::vector<Action> actions = {
        {.name = "process start to sign-in shown, schema up to date",
         .budget_ms = 400,
         .rounds = 10,
         .run = [&] { start_till(programs / "tallvex", home); }},
        {.name = "the upgrade list, nothing to do",
         .budget_ms = 50,
         .rounds = 20,
         .run = [&] { database::run_upgrade_list(till.connection()); }},
        {.name = "EnterItem: a code to a line",
         .figure = Figure::percentile_99,
         .budget_ms = 16,
         .rounds = 500,
         .run = [&] { till.ring_up(1); },
         .prepare =
             [&] {
                 if (till.screen().invoice().lines.size() >= 40) till.screen().clear();
             },
         .by_hand = [&] { kept += by_hand.look_up(twenty_lines().front().item); }},
        {.name = "Enter on a code to a painted line",
         .figure = Figure::percentile_99,
         .budget_ms = 16,
         .rounds = 300,
         .run = [&] { painted.enter_and_paint(); },
         .prepare =
             [&] {
                 if (painted.lines() >= 40) painted.clear();
                 painted.type_code();
             }},
        {.name = "search panel, prefix of a name",
         .budget_ms = 100,
         .rounds = 20,
         .run = [&] { kept += static_cast<double>(till.screen().search(prefix).size()); },
         .by_hand = [&] { kept += static_cast<double>(by_hand.search("صنف 12")); }},
        {.name = "cash position of a store with 3 drawers",
         .budget_ms = 1000,
         .rounds = 10,
         .run = [&] { position.compute(1, start, until); },
         .by_hand =
             [&] {
                 for (int drawer = 1; drawer <= sizes.drawers; ++drawer)
                     kept += by_hand.cash_position(drawer, until_seconds);
             },
         .ratio_budget = 1.3},
        {.name = "daily statement and journal",
         .budget_ms = 1000,
         .rounds = 10,
         .run = [&] { statement.show(); }},
        {.name = "save of a 20-line invoice, durable",
         .budget_ms = 50,
         .rounds = 200,
         .run = [&] { till.save(); },
         .prepare =
             [&] {
                 till.screen().clear();
                 till.ring_up(20);
                 till.begin_save();
             },
         .by_hand = [&] { by_hand.save(twenty_lines()); },
         .ratio_budget = 1.3},
    };
    const bool met =
        bench::measure_and_print(actions, memory_of_a_day(fs::canonical("/proc/self/exe"), shop));
    return met && kept >= 0 ? EXIT_SUCCESS : EXIT_FAILURE;
} catch (const std::exception& error) {
    std::fprintf(stderr, "tallvex-bench: %s\n", error.what());
    return EXIT_FAILURE;
}
