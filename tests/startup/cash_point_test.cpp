// One till for each cash point: on one machine, and among the machines of a server.
#include <gtest/gtest.h>
#include <poll.h>

#include <thread>

#include "startup/cash_point_lock.h"
#include "startup/running_till.h"
#include "support/child.h"
#include "support/shop.h"

namespace {

using namespace std::chrono_literals;
using startup::CashPointLock;
using startup::RunningTill;

// A till in another process, which holds the lock of a cash point and answers if it is asked.
class OtherTill {
  public:
    OtherTill(const std::string& shop, int cash_point, bool answers, bool as_nobody = false) {
        int ready[2];
        if (pipe(ready) != 0) return;
        process_ = test::start_child([&] {
            if (as_nobody && !test::become_nobody()) return false;
            CashPointLock lock(shop, cash_point);
            if (lock.take(0s)) return false;
            if (write(ready[1], "r", 1) != 1) return false;
            pollfd asked{lock.descriptor(), POLLIN, 0};
            while (answers && poll(&asked, 1, -1) > 0)
                lock.answer([] {});
            return sleep(60) == 0;
        });
        char word = 0;
        holds = read(ready[0], &word, 1) == 1;
        close(ready[0]);
        close(ready[1]);
    }
    ~OtherTill() { end(); }
    void end() {
        if (process_ <= 0) return;
        kill(process_, SIGKILL);
        test::wait_for(process_);
        process_ = 0;
    }
    bool holds = false;

  private:
    pid_t process_ = 0;
};

// Other tests of this program may run at the same time.
std::string own_shop() {
    return "shop of " + std::to_string(getpid());
}

TEST(CashPoints, ASecondStartShowsTheFirst) {
    OtherTill first(own_shop(), 1, true);
    ASSERT_TRUE(first.holds);
    CashPointLock second(own_shop(), 1);
    const auto holder = second.take();
    ASSERT_TRUE(holder);
    EXPECT_TRUE(holder->shown);
    EXPECT_EQ(second.descriptor(), -1);
    // Other cash points and other shops are free, and so is this one after a crash.
    EXPECT_FALSE(CashPointLock(own_shop(), 2).take());
    EXPECT_FALSE(CashPointLock("another " + own_shop(), 1).take());
    first.end();
    EXPECT_FALSE(second.take(0s));
    EXPECT_GE(second.descriptor(), 0);
}

TEST(CashPoints, AHolderThatEndsIsWaitedForAndASilentOneNamed) {
    OtherTill first(own_shop(), 1, false);
    ASSERT_TRUE(first.holds);
    CashPointLock second(own_shop(), 1);
    const auto silent = second.take(200ms);
    ASSERT_TRUE(silent);
    EXPECT_FALSE(silent->shown);
    EXPECT_EQ(silent->user, "");
    std::thread ending([&] {
        std::this_thread::sleep_for(300ms);
        first.end();
    });
    EXPECT_FALSE(second.take(5s));
    ending.join();
    if (geteuid() != 0) return;
    second.release();
    const OtherTill of_nobody(own_shop(), 1, true, true);
    ASSERT_TRUE(of_nobody.holds);
    const auto other = second.take();
    ASSERT_TRUE(other);
    EXPECT_FALSE(other->shown);
    EXPECT_EQ(other->user, "nobody");
}

TEST(CashPoints, OneMachineOfAServerHasEach) {
    test::Shop shop;
    const RunningTill here(2, "PC1 /shop");
    const RunningTill there(2, "PC2 '/shop'");
    EXPECT_FALSE(here.claim(shop.connection()));
    EXPECT_FALSE(here.claim(shop.connection())) << "renewed, or started again after a crash";
    EXPECT_EQ(there.claim(shop.connection()), "PC1 /shop");
    EXPECT_FALSE(RunningTill(3, "PC2 '/shop'").claim(shop.connection()));
    there.leave(shop.connection());
    EXPECT_EQ(there.claim(shop.connection()), "PC1 /shop") << "only its own till gives it free";
    // Its machine was switched off three minutes ago, or a little less.
    shop.sql("update till_running set seen = dateadd(second, -170, getdate())");
    EXPECT_EQ(there.claim(shop.connection()), "PC1 /shop");
    shop.sql("update till_running set seen = dateadd(second, -185, getdate())");
    EXPECT_FALSE(there.claim(shop.connection()));
    EXPECT_EQ(here.claim(shop.connection()), "PC2 '/shop'");
    there.leave(shop.connection());
    EXPECT_FALSE(here.claim(shop.connection()));
    // A shop whose tills may not create tables.
    shop.sql("drop table till_running");
    EXPECT_FALSE(here.claim(shop.connection()));
    EXPECT_FALSE(there.claim(shop.connection()));
    EXPECT_NO_THROW(here.leave(shop.connection()));
}

}  // namespace
