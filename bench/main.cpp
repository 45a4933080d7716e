// tallvex-bench: measures the till against its budgets on a large shop.

#include <CLI/CLI.hpp>
#include <QApplication>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

#include <fmt/format.h>

#include "bench/actions.h"
#include "bench/copies.h"
#include "bench/day_of_sales.h"
#include "bench/lists.h"
#include "bench/report.h"
#include "bench/requests.h"
#include "bench/shop_data.h"
#include "ui/widgets/style.h"

namespace {

namespace fs = std::filesystem;

constexpr double most_megabytes = 120;
// MB over 1,000 sales; a sale that leaks one line takes more.
constexpr double most_growth = 1;

struct Options {
    int size = bench::Sizes::full_invoices;
    int sales = 2000;
    int step = 100;
    double rounds = 1;
    std::string only;
    std::string data;
    std::string page;
    std::string day_of_sales;
    bool lists_alone = false;
    bool requests_alone = false;
};

fs::path programs_folder() {
    return fs::canonical("/proc/self/exe").parent_path();
}

std::string described(const bench::Counted& held) {
    return fmt::format("{} items, {} stock rows, {} invoices with {} lines, {} days: {:.0f} MB", held.items,
                       held.stock_rows, held.invoices, held.lines, bench::Sizes::days, held.megabytes);
}

void add_memory(bench::Report& report, const Options& options) {
    double highest = 0;
    bench::Samples second_half;
    for (const auto& [sales, megabytes] : report.memory) {
        highest = std::max(highest, megabytes);
        if (sales * 2 >= options.sales) second_half.push_back(megabytes);
    }
    report.readings.push_back({"memory of the running till", "MB", most_megabytes, highest});
    report.readings.push_back({"its growth over 1,000 sales, once caches are full", "MB", most_growth,
                               bench::slope_per_step(second_half) * 1000 / options.step});
}

fs::path data_folder(const Options& options) {
    return options.data.empty() ? programs_folder().parent_path() / "bench-data" : fs::path(options.data);
}

void measure_lists(bench::Report& report, const Options& options) {
    const auto lengths =
        report.judged || options.lists_alone ? std::vector{100, 1000, 10'000} : std::vector{100};
    report.lists = bench::measure_lists(data_folder(options), lengths,
                                        std::max(2, static_cast<int>(10 * options.rounds)),
                                        options.lists_alone ? options.only : "");
}

void measure_shops(bench::Report& report, const Options& options) {
    const fs::path data = data_folder(options);
    const bench::Sizes full{options.size};
    const bench::Sizes tenth{options.size / 10};
    const fs::path shop = bench::shop_of(data, full);
    const fs::path small_shop = bench::shop_of(data, tenth);
    report.shops = {"full: " + described(bench::count_rows(shop)),
                    "tenth: " + described(bench::count_rows(small_shop))};
    const bench::Copies copies(data, shop, full);
    const bench::Copies small_copies(data, small_shop, tenth);
    report.timings = bench::measure_actions({programs_folder() / "tallvex", options.only, options.rounds},
                                            copies, full, small_copies, tenth);
    if (options.only.empty() || std::string("memory").find(options.only) != std::string::npos) {
        std::fprintf(stderr, "measuring the memory over %d sales\n", options.sales);
        report.memory = bench::memory_of_a_day(copies.home(), full, options.sales, options.step);
        add_memory(report, options);
    }
}

int measure(const Options& options) {
    bench::Report report;
    report.judged = options.size == bench::Sizes::full_invoices;
    report.machine = bench::describe_machine();
    const bool all = options.only.empty() && !options.lists_alone && !options.requests_alone;
    if (all || options.lists_alone) measure_lists(report, options);
    if (all || options.requests_alone) {
        report.requests =
            bench::measure_requests(data_folder(options), std::max(1, static_cast<int>(10 * options.rounds)));
        report.loads = bench::measure_loads(std::max(1, static_cast<int>(3 * options.rounds)));
    }
    if (!options.lists_alone && !options.requests_alone) measure_shops(report, options);
    std::fputs(("\n" + report.table()).c_str(), stdout);
    if (!options.page.empty()) {
        std::ofstream page(options.page);
        page << report.document();
        if (!page.flush()) throw std::runtime_error("cannot write " + options.page);
    }
    const auto missed = report.missed();
    for (const std::string& name : missed)
        std::printf("budget missed: %s\n", name.c_str());
    return missed.empty() ? EXIT_SUCCESS : EXIT_FAILURE;
}

}  // namespace

int main(int argc, char** argv) try {
    CLI::App app(
        "Measures the till against its budgets on a shop of 1,000,000 invoices, and on a tenth of it.");
    Options options;
    app.add_option("--size", options.size, "invoices of the shop; budgets hold for 1000000 only")
        ->check(CLI::Range(1000, 10'000'000));
    app.add_option("--only", options.only, "measure the actions whose name has this word");
    app.add_flag("--lists", options.lists_alone, "measure the lists alone, of 100, 1000 and 10000 rows");
    app.add_flag("--requests", options.requests_alone, "measure the requests to a server alone");
    app.add_option("--rounds", options.rounds, "times the usual rounds")->check(CLI::PositiveNumber);
    app.add_option("--sales", options.sales, "sales of the day whose memory is measured");
    app.add_option("--step", options.step, "sales between two looks at the memory");
    app.add_option("--data", options.data, "where the shops are kept");
    app.add_option("--page", options.page, "write the report to this page");
    app.add_option("--sell-all-day", options.day_of_sales)->group("");
    CLI11_PARSE(app, argc, argv);

    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    ui::apply_style(*qApp, {1366, 768});
    if (!options.day_of_sales.empty())
        return bench::sell_all_day(options.day_of_sales, {options.size}, options.sales, options.step);
    return measure(options);
} catch (const std::exception& error) {
    std::fprintf(stderr, "tallvex-bench: %s\n", error.what());
    return EXIT_FAILURE;
}
