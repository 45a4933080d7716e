// Keeps the cash point of a shop on a server for this till while it runs, and tells the cashier if another
// machine took it: after some minutes without the server it counts as free.
#pragma once

#include <QObject>
#include <QTimer>
#include <chrono>
#include <functional>
#include <optional>
#include <string>

namespace common {
class Prompts;
}
namespace database {
class Connection;
}

namespace ui {

class ServerLink;

class CashPointRenewal : public QObject {
  public:
    // Renews the claim in another thread. Returns the place of the till that has the cash point, if it is
    // not this one. Empty as long as there is nothing to renew.
    using Claim = std::function<std::optional<std::string>(database::Connection&)>;
    // Renews the claim. If another till has it, `found` is given that till's place and returns a question;
    // Yes leaves the program.
    CashPointRenewal(ServerLink& server, common::Prompts& prompts, std::chrono::milliseconds every,
                     std::function<Claim()> claim, std::function<std::string(const std::string&)> found);

  private:
    void renew();
    void renewed(const std::optional<std::string>& other);
    void ask();

    ServerLink& server_;
    common::Prompts& prompts_;
    std::function<Claim()> claim_;
    std::function<std::string(const std::string&)> found_;
    std::optional<std::string> other_;  // the till that the cashier was told about
    std::string question_;
    QTimer renewals_;
    QTimer asking_;  // until the question can be asked
};

}  // namespace ui
