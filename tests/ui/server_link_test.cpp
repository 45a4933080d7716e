// Background work of a till: it renews its cash point and notices a server that is gone.
#include "ui/widgets/server_link.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <atomic>

#include "database/sqlserver/open.h"
#include "support/services.h"
#include "support/shop.h"
#include "support/tds_bridge.h"
#include "ui/widgets/cash_point_renewal.h"
#include "ui/widgets/key_queue.h"
#include "ui/widgets/sheet.h"

namespace {

using Network = test::TdsBridge::Network;

template <typename Condition>
bool comes_true(Condition condition) {
    constexpr qint64 patience_ms = 8000;
    QElapsedTimer waited;
    waited.start();
    while (!condition() && waited.elapsed() < patience_ms)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
    return condition();
}

class ServerLink : public testing::Test {
  protected:
    test::TemporaryFolder folder;
    test::TdsBridge bridge{folder.path()};
    std::string named = test::TestServer{"127.0.0.1," + std::to_string(bridge.port()), "shop", "sa", "secret"}
                            .connection_string();
    ui::KeyQueue keys;
    test::FixedClock clock;
    ui::ServerLink link{keys, clock};
    std::unique_ptr<database::Connection> connection =
        link.attach(database::open_sqlserver(named, {2, 2}), [this] { return database::ping_server(named); });
};

TEST_F(ServerLink, AnIdleTillNoticesThatTheServerIsGoneAndBack) {
    int renewed = 0;
    const auto renew = [&] {
        link.run_later([](database::Connection& shop) { shop.query("select getdate()"); },
                       [&] { ++renewed; });
    };
    renew();
    EXPECT_TRUE(comes_true([&] { return renewed == 1; }));

    // Any other error does not concern the network.
    link.run_later([](database::Connection& shop) { shop.query("select x from nowhere"); },
                   [&] { ++renewed; });
    renew();
    EXPECT_TRUE(comes_true([&] { return renewed == 2; }));
    EXPECT_TRUE(link.text().isEmpty());

    bridge.set_network(Network::down);
    renew();
    EXPECT_TRUE(comes_true([&] { return link.is_lost(); }));
    EXPECT_TRUE(link.text().contains("10:42")) << link.text().toStdString();
    bridge.set_network(Network::up);
    EXPECT_TRUE(comes_true([&] { return !link.is_lost(); }));
    EXPECT_FALSE(link.text().isEmpty());
    EXPECT_EQ(renewed, 2);
}

TEST_F(ServerLink, WhoseCashPointWasTakenIsAskedOnceBetweenTwoActions) {
    const auto run_for = [](qint64 ms) {
        QElapsedTimer waited;
        waited.start();
        comes_true([&] { return waited.elapsed() >= ms; });
    };
    QWidget window;
    window.show();
    ui::Sheet box(&window);
    box.show();
    std::atomic<const char*> place = "SHOP2";
    test::RememberedPrompts prompts;
    prompts.answers = {false, true};
    const ui::CashPointRenewal renewal(
        link, prompts, std::chrono::milliseconds(50),
        [&]() -> ui::CashPointRenewal::Claim {
            return [&](database::Connection&) {
                const char* at = place;
                return at == nullptr ? std::nullopt : std::optional<std::string>(at);
            };
        },
        [](const std::string& at) { return "taken by " + at; });
    run_for(800);
    EXPECT_TRUE(prompts.questions.empty()) << "a box is open";
    box.hide();
    run_for(1500);
    EXPECT_EQ(prompts.questions, std::vector<std::string>{"taken by SHOP2"});
    EXPECT_TRUE(window.isVisible()) << "the cashier stays";

    place = nullptr;
    run_for(300);
    place = "SHOP3";
    EXPECT_TRUE(comes_true([&] { return !window.isVisible(); }));
    EXPECT_EQ(prompts.questions.back(), "taken by SHOP3");
}

}  // namespace
