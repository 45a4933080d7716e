// The logic of Form36: the list of those who receive tips.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "accounts/lists.h"
#include "common/services.h"
#include "database/connection.h"

namespace accounts {

class TipsReceiver {
  public:
    TipsReceiver(database::Connection& connection, common::Services services)
        : connection_(connection), services_(services) {}

    void open_new();  // proposes the highest code plus 1
    // False with a message when there is no such receiver.
    bool open_edit(std::int64_t receiver);
    std::string_view title() const;

    // True when the entry was written; the screen then closes.
    bool save();

    std::string code;  // fixed while editing
    std::string name;

    bool is_editing() const { return editing_ != 0; }
    const std::vector<common::Choice>& receivers() const { return receivers_; }

  private:
    void load();
    bool refuse(std::string_view text);
    database::Connection& connection_;
    common::Services services_;
    std::int64_t editing_ = 0;
    std::vector<common::Choice> receivers_;
};

}  // namespace accounts
