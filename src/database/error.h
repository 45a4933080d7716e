// The one error of the database layer.
#pragma once

#include <stdexcept>
#include <string>

namespace database {

class Error : public std::runtime_error {
  public:
    Error(std::string sqlstate, const std::string& text, std::string statement)
        : std::runtime_error(text), sqlstate_(std::move(sqlstate)), statement_(std::move(statement)) {}
    // Five characters: "08001" no server, "08S01" connection lost, "28000" wrong password, "42000" a
    // statement that cannot run, "23000" a key violated, "HYT00" time-out, "HY000" other.
    const std::string& sqlstate() const { return sqlstate_; }
    // The server's own text is what(). The statement that failed; empty when there was none.
    const std::string& statement() const { return statement_; }
    bool is_connection_lost() const { return sqlstate_.starts_with("08"); }

  private:
    std::string sqlstate_;
    std::string statement_;
};

}  // namespace database
