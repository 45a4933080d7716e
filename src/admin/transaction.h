// A transaction, for commands that must not be left half done.
#pragma once

#include "database/connection.h"

namespace admin {

// Begins with the object and is rolled back with it unless commit() was called.
class Transaction {
  public:
    explicit Transaction(database::Connection& connection) : connection_(connection) {
        connection_.execute("begin transaction");
    }
    ~Transaction() {
        if (committed_) return;
        try {
            connection_.execute("rollback transaction");
        } catch (const database::Error&) {
            // A lost connection has rolled it back already.
        }
    }
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    void commit() {
        connection_.execute("commit transaction");
        committed_ = true;
    }

  private:
    database::Connection& connection_;
    bool committed_ = false;
};

}  // namespace admin
