// tallvex-bench: measures the till against its budgets on a large shop.

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

#include "bench/measure.h"
#include "bench/plain.h"
#include "bench/rows.h"
#include "bench/shop_data.h"
#include "bench/till.h"
#include "database/schema.h"
#include "startup/shop_files.h"

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

int main(int, char** argv) try {
    const fs::path programs = fs::canonical("/proc/self/exe").parent_path();
    const fs::path data = programs.parent_path() / "bench-data";
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
    double kept = 0;
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
        {.name = "save of a 20-line invoice, durable",
         .budget_ms = 50,
         .rounds = 200,
         .run = [&] { till.save(); },
         .prepare =
             [&] {
                 till.screen().clear();
                 till.ring_up(20);
             },
         .by_hand = [&] { by_hand.save(twenty_lines()); },
         .ratio_budget = 1.3},
    };
    const bool met = bench::measure_and_print(actions, {});
    return met && kept >= 0 ? EXIT_SUCCESS : EXIT_FAILURE;
} catch (const std::exception& error) {
    std::fprintf(stderr, "tallvex-bench: %s\n", error.what());
    return EXIT_FAILURE;
}
