#include "bench/copies.h"

#include <fmt/format.h>
#include <unistd.h>

#include <stdexcept>

#include "bench/by_hand_engine.h"
#include "startup/shop_files.h"

namespace bench {

namespace fs = std::filesystem;

Copies::Copies(const fs::path& folder, const fs::path& shop, const Sizes& sizes)
    : root_(folder / fmt::format("run-{}-{}", sizes.invoices, ::getpid())), sizes_(sizes) {
    fs::create_directories(home() / startup::logs_folder_name);
    fs::copy_file(shop, home() / "shop.db");
    fs::copy_file(shop, by_hand());
    startup::write_connection_file(home(), {"embedded", "shop.db", "Not Found"});
    startup::write_version_file(home(), "bench");
    ::sync();
}

Copies::~Copies() {
    std::error_code ignored;
    fs::remove_all(root_, ignored);
}

void Copies::compare_work() const {
    HandEngine engine(by_hand());
    engine.run(fmt::format("attach '{}' as ours", (home() / "shop.db").string()).c_str());
    const std::pair<const char*, std::int64_t> tables[] = {
        {"sales", sizes_.invoices}, {"saledata", sizes_.lines()}, {"stk", 0}};
    for (const auto& [table, before] : tables) {
        const auto rows = [&](const char* side) {
            return fmt::format("select rowid, * from {}.{} where rowid > {}", side, table, before);
        };
        const auto count = [&](const std::string& of) {
            return HandRun(engine.prepare("select count(*) from (" + of + ")")).whole(0);
        };
        const std::string ours = rows("ours"), hand = rows("main");
        if (count(ours) == 0 || count(ours) != count(hand) || count(ours + " except " + hand) != 0 ||
            count(hand + " except " + ours) != 0)
            throw std::runtime_error(fmt::format("the work by hand left other rows in {}", table));
    }
}

}  // namespace bench
