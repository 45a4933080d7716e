// One statement through ODBC: its values bound, its results read whole.
#pragma once

#include <string_view>
#include <vector>

#include "database/connection.h"
#include "database/sqlserver/odbc_text.h"

namespace database {

// A handle of the driver manager, freed with the object; a connection is closed first.
class OdbcHandle {
  public:
    OdbcHandle() = default;
    // Throws Error HY001 if the driver manager has no handle.
    OdbcHandle(SQLSMALLINT kind, SQLHANDLE parent);
    OdbcHandle(OdbcHandle&& other) noexcept;
    OdbcHandle& operator=(OdbcHandle&& other) noexcept;
    ~OdbcHandle() { free(); }
    void free();
    SQLHANDLE get() const { return handle_; }
    explicit operator bool() const { return handle_ != nullptr; }

  private:
    SQLSMALLINT kind_ = 0;
    SQLHANDLE handle_ = nullptr;
};

// What a driver answered when a statement failed.
struct OdbcFailure {
    std::vector<Diagnostic> diagnostics;
};

// Runs a statement and reads the first result it gives; the counts of changed rows of all its parts are
// added. Waits at most the given seconds for the server. Throws OdbcFailure.
Connection::Outcome run_odbc_statement(SQLHDBC connection, std::string_view text,
                                       const std::vector<Value>& values, int seconds);

// Runs a text of batch_text() and adds the outcome of each statement to `outcomes`, also if it throws.
void run_odbc_batch(SQLHDBC connection, std::string_view text, int seconds,
                    std::vector<Connection::Outcome>& outcomes);

}  // namespace database
