#include "ui/widgets/cash_point_renewal.h"

#include <memory>
#include <utility>

#include "common/prompts.h"
#include "ui/widgets/server_link.h"
#include "ui/widgets/sheet.h"

namespace ui {

namespace {

constexpr std::chrono::milliseconds between_looks{500};
constexpr common::Choices leave_or_stay = {"خروج", "متابعة البيع"};

}  // namespace

CashPointRenewal::CashPointRenewal(ServerLink& server, common::Prompts& prompts,
                                   std::chrono::milliseconds every, std::function<Claim()> claim,
                                   std::function<std::string(const std::string&)> found)
    : server_(server), prompts_(prompts), claim_(std::move(claim)), found_(std::move(found)) {
    connect(&renewals_, &QTimer::timeout, this, &CashPointRenewal::renew);
    connect(&asking_, &QTimer::timeout, this, &CashPointRenewal::ask);
    asking_.setInterval(between_looks);
    renewals_.start(every);
}

// The cashier never waits for it.
void CashPointRenewal::renew() {
    const Claim claim = claim_();
    if (!claim) return;
    const auto other = std::make_shared<std::optional<std::string>>();
    server_.run_later([other, claim](database::Connection& shop) { *other = claim(shop); },
                      [this, other] { renewed(*other); });
}

void CashPointRenewal::renewed(const std::optional<std::string>& other) {
    if (other == other_) return;
    other_ = other;
    asking_.stop();
    if (!other) return;
    question_ = found_(*other);
    asking_.start();
}

// Asks only between two actions: this timer does not run while one waits for the server, and an open box or
// sheet belongs to one.
void CashPointRenewal::ask() {
    QWidget* window = window_in_use();
    if (window == nullptr || Sheet::top_of(window) != nullptr) return;
    asking_.stop();
    if (prompts_.choose(question_, leave_or_stay, common::Icon::exclamation) == common::Answer::yes)
        window->close();
}

}  // namespace ui
