// Stock-taking: the counts of a shop. Each covers a store, and all its items, a group, or what is scanned.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "common/choice.h"
#include "common/date_time.h"
#include "common/form.h"
#include "common/refusal.h"
#include "common/services.h"
#include "database/connection.h"
#include "signin/session.h"

namespace counting {

enum class Scope {
    everything,  // all items of the store
    group,       // those of one group
    scanned      // a shelf, a list: nothing else is missing from it
};

enum class State { open, booked, given_up };
std::string_view name_of(State state);

// A row of till_count.
struct Count {
    std::int64_t number = 0;
    std::int64_t store = 0;
    std::string store_name;
    Scope scope = Scope::everything;
    std::int64_t group = 0;  // items.itype
    std::string group_name;
    // Each expiry batch is counted by itself; otherwise an item is counted whole, whatever its dates.
    bool by_date = false;
    std::string title;
    common::Moment opened;
    std::string opened_by;
    State state = State::open;
    common::Moment closed;
    std::string closed_by;

    bool is_open() const { return state == State::open; }
    // "كل الأصناف", the group's name, "ما يمرر على الماسح فقط".
    std::string scope_name() const;
};

// The newest first. A shop without the table has none.
std::vector<Count> read_counts(database::Connection& connection);
std::optional<Count> read_count(database::Connection& connection, std::int64_t number);

// What a new count covers: all items, what is scanned, or else the code of a group.
inline constexpr std::int64_t all_items = -1;
inline constexpr std::int64_t what_is_scanned = -2;
struct NewCount {
    std::optional<std::int64_t> store;
    std::optional<std::int64_t> what = all_items;
    bool by_date = false;
    std::string title = {};
};
common::FormTable<NewCount> new_count_form();
// What can be counted: these two, and the groups by name.
std::vector<common::Choice> read_scopes(database::Connection& connection);

// Opens a count; returns its number, or why not.
std::variant<std::int64_t, common::Refusal> open_count(database::Connection& connection,
                                                       const signin::Session& session, common::Clock& clock,
                                                       const NewCount& fields);

}  // namespace counting
