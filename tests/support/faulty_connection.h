// A connection that fails on purpose, for tests of what an action leaves behind.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "database/connection.h"

namespace test {

// Passes everything on to the connection it is given and counts the statements from 1; describe() and
// make_durable() do not count.
class FaultyConnection : public database::Connection {
  public:
    explicit FaultyConnection(database::Connection& inner) : inner_(inner) {}

    enum class Fault {
        passing,  // Error HY000, once
        lost,     // Error 08S01, from then on for everything; an open transaction is rolled back
    };
    // The n-th statement from now fails instead of running.
    void fail_at(std::int64_t n, Fault fault);
    // Calls `what` before the n-th statement from now: to change rows behind an action's back, or to kill the
    // process there.
    void call_before(std::int64_t n, std::function<void()> what);
    // The same, but not before a transaction that is open then has ended: another till would wait for that.
    void call_between(std::int64_t n, std::function<void()> what);
    // The same before the next statement that contains a text.
    void call_at(std::string text, std::function<void()> what);
    // From now on nothing fails.
    void stop_failing();

    // The statements asked for so far, the failed ones among them.
    std::int64_t count() const { return static_cast<std::int64_t>(statements_.size()); }
    const std::vector<std::string>& statements() const { return statements_; }
    // Returns false if the action ended before the fault.
    bool has_failed() const { return has_failed_; }

    Outcome run(std::string_view statement, const std::vector<database::Value>& values) override;
    void make_durable() override;
    bool is_embedded() const override { return inner_.is_embedded(); }
    Table describe(std::string_view table) override;
    std::vector<std::string> tables() override { return inner_.tables(); }
    std::shared_ptr<const Table> description(std::string_view table) override;

  private:
    void check_lost(std::string_view statement) const;
    void lose();
    database::Connection& inner_;
    std::vector<std::string> statements_;
    std::int64_t fail_at_ = 0;
    Fault fault_ = Fault::passing;
    bool has_failed_ = false;
    bool lost_ = false;
    std::int64_t call_at_ = 0;
    std::int64_t call_from_ = 0;
    std::string call_text_;
    bool in_transaction_ = false;
    std::function<void()> call_;
};

}  // namespace test
