// The one error of the database layer.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace database {

class Error : public std::runtime_error {
  public:
    // What a cashier can be told and do something about; everything else is `other`.
    enum class Kind {
        other,
        server_missing,  // nobody answers at the server's address
        no_driver,
        login_refused,
        database_missing,  // or closed to this login
        file_missing,
        file_is_folder,
        file_unreadable,
        file_damaged,  // or no shop at all
        read_only,
        disk_full,
        busy,  // another program holds the shop file
        connection_lost,
        timed_out,
        changed_meanwhile,  // another till wrote the same row
    };

    Error(std::string sqlstate, const std::string& text, std::string statement, Kind kind)
        : std::runtime_error(text),
          sqlstate_(std::move(sqlstate)),
          statement_(std::move(statement)),
          kind_(kind) {}
    // For errors whose SQLSTATE says it all.
    Error(std::string sqlstate, const std::string& text, std::string statement)
        : Error(sqlstate, text, std::move(statement), kind_of(sqlstate)) {}

    Kind kind() const { return kind_; }
    // Five characters: "08001" no server, "08S01" connection lost, "28000" wrong password, "42000" a
    // statement that cannot run, "23000" a key violated, "HYT00" time-out, "HY000" other.
    const std::string& sqlstate() const { return sqlstate_; }
    // The statement that failed; empty if there was none. The server's own text is what().
    const std::string& statement() const { return statement_; }
    // Returns true if the database is out of reach, so that the next statement would fail as well.
    bool is_connection_lost() const { return sqlstate_.starts_with("08"); }

  private:
    static Kind kind_of(std::string_view sqlstate);

    std::string sqlstate_;
    std::string statement_;
    Kind kind_;
};

}  // namespace database
