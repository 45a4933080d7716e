// The logic of the screen Form36: adds or edits one of those who receive tips.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/choice.h"
#include "common/form.h"
#include "common/refusal.h"
#include "database/connection.h"

namespace accounts {

struct TipsReceiverFields {
    std::string code;  // fixed while editing
    std::string name;
};
common::FormTable<TipsReceiverFields> tips_receiver_form();

std::vector<common::Choice> load_tips_receivers(database::Connection& connection);

class TipsReceiver {
  public:
    explicit TipsReceiver(database::Connection& connection) : connection_(connection) {}

    void open_new();  // proposes the highest code plus 1
    // Refused if there is no such receiver.
    std::optional<common::Refusal> open_edit(std::int64_t receiver);
    std::string_view title() const;

    std::optional<common::Refusal> save();

    TipsReceiverFields fields;

    bool is_editing() const { return editing_.has_value(); }

  private:
    database::Connection& connection_;
    std::optional<std::int64_t> editing_;
};

}  // namespace accounts
