// Several statements as one, for work of the administrator that must not stay half-done.
#pragma once

#include "database/connection.h"

namespace admin {

// Begun with the object; undone with it unless commit() was reached.
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
            // A lost connection has undone it already.
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
