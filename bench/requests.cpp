#include "bench/requests.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <memory>
#include <stdexcept>

#include "backup/copy_shop.h"
#include "bench/shop_data.h"
#include "bench/till.h"
#include "cash/shift.h"
#include "common/clock.h"
#include "database/embedded/open.h"
#include "database/sqlserver/open.h"
#include "database/till_tables.h"
#include "goods/item_import.h"
#include "sales/sales_desk.h"
#include "shop/new_shop.h"
#include "signin/sign_in.h"
#include "support/shop.h"
#include "support/tds_bridge.h"

namespace bench {

namespace {

namespace fs = std::filesystem;
using test::TdsBridge;

constexpr Sizes sizes{1000};
constexpr int lines = 20;

// Agrees to everything.
class Cashier final : public common::Prompts {
  public:
    void message(std::string_view, common::Icon) override {}
    common::Answer choose(std::string_view, const common::Choices&, common::Icon) override {
        return common::Answer::yes;
    }
};

// A test server on a copy of the shop, or without one, and a connection to it.
class Server {
  public:
    Server(const fs::path& shop, std::chrono::milliseconds latency)
        : copy_(shop), bridge_(copy_.folder.path()) {
        bridge_.set_latency(latency);
        connection = database::open_sqlserver(
            "Provider=SQLOLEDB.1;Password=secret;User ID=sa;Initial Catalog= shop;Encryption=off;"
            "Data Source=127.0.0.1," +
            std::to_string(bridge_.port()));
    }
    TdsBridge& bridge() { return bridge_; }

  private:
    struct Copy {
        explicit Copy(const fs::path& shop) {
            if (!shop.empty()) fs::copy_file(shop, folder.path() / "shop.db");
        }
        test::TemporaryFolder folder;
    };
    Copy copy_;
    TdsBridge bridge_;

  public:
    std::unique_ptr<database::Connection> connection;  // ends before its server
};

// The actions of a morning in their order, on one server.
class Morning {
  public:
    using Measured = std::function<void(RequestTiming& action, const std::function<void()>& work)>;
    explicit Morning(Server& server) : connection_(*server.connection) {
        // It begins between shifts.
        connection_.execute("update shift set e_date = s_date where e_date is null");
        session_.cash_point = 1;
        session_.settings.max_dis = 10;
    }

    void work_through(std::vector<RequestTiming>& actions, const Measured& measured) {
        auto action = actions.begin();
        signin::SignIn sign_in(connection_, session_, services());
        sales::SalesDesk desk(connection_, session_, services(), nobody_);
        measured(*action++, [&] {
            require(sign_in.confirm(1, "1") == signin::SignInOutcome::signed_in && desk.Open(), "sign-in");
        });
        measured(*action++, [&] { start_shift(desk); });
        const auto enter = [&](int n) {
            require(desk.lines().EnterItem(sales::read_entry(rung_up_code(sizes, n))), "an item");
        };
        measured(*action++, [&] { enter(0); });
        for (int n = 1; n < lines; ++n)
            measured(*action, [&] { enter(n); });
        ++action;
        measured(*action++, [&] { enter(0); });
        measured(*action++, [&] {
            require(desk.checkout().begin_save() == sales::BeginSave::ask_payment, "the payment");
        });
        measured(*action++,
                 [&] { require(desk.checkout().SaveInvoice() == sales::SaveOutcome::saved, "the save"); });
    }

  private:
    static void require(bool done, const char* what) {
        if (!done) throw std::runtime_error(std::string("refused on the test server: ") + what);
    }
    common::Services services() { return {cashier_, clock_, nobody_, log_}; }

    // From the opening of the screen to the sales desk.
    void start_shift(sales::SalesDesk& desk) {
        cash::ShiftChange screen(connection_, session_, services());
        screen.open();
        screen.entry.worker = screen.workers().front().code;
        const auto refused = screen.start();
        require(!refused, refused ? refused->text.c_str() : "");
        desk.reload();
    }

    struct NoLog final : common::Log {
        void log_event(std::string_view, std::string_view) override {}
    };
    database::Connection& connection_;
    signin::Session session_;
    Cashier cashier_;
    common::SystemClock clock_;  // as the server's
    NobodyThere nobody_;
    NoLog log_;
};

using Statements = std::vector<TdsBridge::Received>;

// Works through a morning, and gives each action's statements to `by_hand` afterwards.
void measure_morning(const fs::path& shop, int latency_ms, std::vector<RequestTiming>& actions) {
    const std::chrono::milliseconds latency(latency_ms);
    const auto times_of = [latency_ms](RequestTiming& action) -> RequestTimes& {
        if (action.times.empty() || action.times.back().latency_ms != latency_ms)
            action.times.push_back({latency_ms, {}, {}});
        return action.times.back();
    };
    std::vector<std::pair<RequestTiming*, Statements>> done;
    {
        Server server(shop, latency);
        Morning morning(server);
        morning.work_through(actions, [&](RequestTiming& action, const std::function<void()>& work) {
            const int requests_before = server.bridge().requests();
            const std::size_t before = server.bridge().received().size();
            times_of(action).till.push_back(milliseconds(work));
            const Statements all = server.bridge().received();
            done.emplace_back(&action,
                              Statements(all.begin() + static_cast<std::ptrdiff_t>(before), all.end()));
            action.requests = std::max(action.requests, server.bridge().requests() - requests_before);
            action.statements = std::max(action.statements, static_cast<int>(done.back().second.size()));
        });
    }
    Server server(shop, latency);
    for (auto& [action, statements] : done) {
        times_of(*action).by_hand.push_back(milliseconds([&, &said = statements] {
            for (const auto& statement : said)
                // The till also asks for tables that the shop may lack.
                database::unless_table_is_missing(
                    [&] { server.connection->run(statement.text, statement.values); });
        }));
    }
}

std::string items_file(int items) {
    std::string csv = "code,name,group,price11,price12,barcode,stock\n";
    for (int n = 0; n < items; ++n)
        csv += fmt::format("{},صنف من الملف {},مجموعة {},{}.25,{}.50,T{},12\n", 500'000 + n, n, n % 20,
                           10 + n % 90, 12 + n % 90, n);
    return csv;
}

void import_items(database::Connection& connection, const std::string& csv) {
    signin::Session session;
    session.cash_point = 1;
    const goods::ImportPlan plan = goods::plan_import(connection, csv, false);
    const goods::ImportOutcome outcome =
        goods::write_import(connection, session, plan, common::SystemClock().now());
    for (const auto* problems : {&plan.problems, &outcome.problems})
        if (!problems->empty()) throw std::runtime_error("an item: " + problems->front().reason.english);
}

}  // namespace

bool LoadTiming::met() const {
    return std::ranges::all_of(times, [this](const auto& at) {
        return at.first != judged_ms || median(at.second) <= budget_s * 1000;
    });
}

std::vector<LoadTiming> measure_loads(int rounds) {
    const test::TemporaryFolder demo;
    shop::NewShop wanted;
    wanted.folder = demo.path() / "shop";
    wanted.demo = true;
    shop::make_shop(wanted, common::SystemClock().now());
    const fs::path file = wanted.folder / wanted.place.database;
    const std::string csv = items_file(1000);
    std::vector<LoadTiming> loads = {{"1,000 lines of items imported", 5.6, 0.5},
                                     {"the demo shop copied, about 3,700 rows", 42, 2}};
    for (const int latency_ms : {0, 1, 5}) {
        const std::chrono::milliseconds latency(latency_ms);
        for (LoadTiming& load : loads)
            load.times.emplace_back(latency_ms, Samples());
        for (int round = 0; round < rounds; ++round) {
            Server shop(file, latency);
            loads[0].times.back().second.push_back(
                milliseconds([&] { import_items(*shop.connection, csv); }));
            Server empty({}, latency);
            const auto source = database::open_embedded(file);
            loads[1].times.back().second.push_back(milliseconds([&] {
                const auto copied = backup::copy_shop(*source, *empty.connection, [](auto, auto) {});
                if (!copied.differences.empty()) throw std::runtime_error("the copy differs");
            }));
        }
    }
    return loads;
}

std::vector<RequestTiming> measure_requests(const fs::path& folder, int rounds) {
    const fs::path shop = shop_of(folder, sizes);
    std::vector<RequestTiming> actions = {
        {"sign-in", 26, 12},          {"shift start", 60, 25},   {"first code to line", 7, 2},
        {"code to line", 6, 2},       {"same item again", 5, 2}, {"F1 with 20 lines", 22, 3},
        {"save of 20 lines", 89, 12},
    };
    for (const int latency_ms : {0, 1, 5})
        for (int round = 0; round < rounds; ++round)
            measure_morning(shop, latency_ms, actions);
    return actions;
}

}  // namespace bench
