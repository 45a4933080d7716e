// The test server's session with one client, on a connection of its own to the shop's file.
#pragma once

#include <memory>
#include <string>

#include "database/connection.h"
#include "support/tds_bridge.h"
#include "support/tds_request.h"

namespace test::tds {

class Session {
  public:
    Session(TdsBridge& bridge, int number, int socket) : bridge_(bridge), number_(number), socket_(socket) {}
    // Returns when the client is gone or cut off.
    void run();

  private:
    bool log_in(std::string_view body);  // returns false after refusing it
    // The answer to a request; empty for silence. Sets `cut_` if the connection ends with it.
    std::string answer(const Message& message);
    std::string answer_statement(std::string_view text, const std::vector<database::Value>& values,
                                 bool in_call);
    std::string answer_call(const Call& call);
    std::string result_of(const Statement& statement, bool in_call);

    TdsBridge& bridge_;
    int number_;
    int socket_;
    bool cut_ = false;
    std::unique_ptr<database::Connection> shop_;
};

}  // namespace test::tds
