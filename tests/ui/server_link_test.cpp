// What a till does by itself: it renews its cash point in the background, and notices a server that is gone.
#include "ui/widgets/server_link.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>

#include "database/sqlserver/open.h"
#include "support/services.h"
#include "support/shop.h"
#include "support/tds_bridge.h"
#include "ui/widgets/key_queue.h"

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

TEST(ServerLink, AnIdleTillNoticesThatTheServerIsGoneAndBack) {
    const test::TemporaryFolder folder;
    test::TdsBridge bridge(folder.path());
    const std::string named =
        test::TestServer{"127.0.0.1," + std::to_string(bridge.port()), "shop", "sa", "secret"}
            .connection_string();
    ui::KeyQueue keys;
    test::FixedClock clock;
    ui::ServerLink link(keys, clock);
    const auto connection = link.attach(database::open_sqlserver(named, {2, 2}),
                                        [named] { return database::ping_server(named); });
    int renewed = 0;
    const auto renew = [&] {
        link.run_later([](database::Connection& shop) { shop.query("select getdate()"); },
                       [&] { ++renewed; });
    };
    renew();
    EXPECT_TRUE(comes_true([&] { return renewed == 1; }));

    // Any other error is none of the network's.
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

}  // namespace
