// A connection in whose middle the program can be ended, as a power cut ends it, and whose server time is the
// play's.
#pragma once

#include <memory>
#include <string>

#include "common/clock.h"
#include "database/connection.h"

namespace play {

// The exit code of a till that was ended on purpose.
inline constexpr int killed = 137;

class MortalConnection final : public database::Connection {
  public:
    MortalConnection(std::unique_ptr<database::Connection> real, common::Clock& clock)
        : real_(std::move(real)), clock_(clock) {}

    // Ends the process, without any farewell, when a statement that contains the text is to be run.
    void kill_when(std::string text);
    bool is_armed() const { return !deadly_.empty(); }
    // The next statement that contains the text fails with the SQLSTATE.
    void fail_when(std::string text, std::string sqlstate);

    void make_durable() override { real_->make_durable(); }
    bool is_embedded() const override { return real_->is_embedded(); }
    Table describe(std::string_view table) override { return real_->describe(table); }
    Outcome run(std::string_view statement, const std::vector<database::Value>& values) override;

  private:
    std::unique_ptr<database::Connection> real_;
    common::Clock& clock_;
    std::string deadly_;
    std::string failing_;
    std::string sqlstate_;
};

}  // namespace play
