// Actions of several statements that take effect together or not at all.
#pragma once

#include "database/connection.h"

namespace database {

// Runs an action, and repeats it as long as another till changes the same rows meanwhile.
template <typename Action>
void until_unchanged(const Action& action) {
    constexpr int most_attempts = 100;  // more than competing tills can use up
    for (int attempt = 1;; ++attempt) {
        try {
            return action();
        } catch (const Error& error) {
            if (error.kind() != Error::Kind::changed_meanwhile || attempt == most_attempts) throw;
        }
    }
}

// Runs an action in a transaction. After a rollback the action starts afresh, so it must itself read what it
// changes.
template <typename Action>
void in_transaction(Connection& connection, const Action& action) {
    until_unchanged([&] {
        Transaction transaction(connection);
        action();
        transaction.commit();
    });
}

}  // namespace database
