#include "accounts/tips_receiver.h"

#include <algorithm>

#include "accounts/messages.h"
#include "common/text.h"
#include "database/recordset.h"

namespace accounts {

using database::Recordset;
using database::Sql;

std::string_view TipsReceiver::title() const {
    return is_editing() ? "تعديل بيان اكراميات" : "اضافة بيان اكراميات";
}

bool TipsReceiver::refuse(std::string_view text) {
    services_.prompts.message(text, common::Icon::critical);
    return false;
}

void TipsReceiver::load() {
    receivers_ =
        database::choices(connection_.query("select * from boundata order by ccode"), "ccode", "cname");
}

void TipsReceiver::open_new() {
    load();
    std::int64_t highest = 0;
    for (const common::Choice& receiver : receivers_)
        highest = std::max(highest, receiver.code);
    editing_ = 0;
    code = std::to_string(highest + 1);
    name.clear();
}

bool TipsReceiver::open_edit(std::int64_t receiver) {
    load();
    if (!contains(receivers_, receiver)) return refuse(message::no_such_receiver);
    editing_ = receiver;
    code = std::to_string(receiver);
    name = name_of(receivers_, receiver);
    return true;
}

bool TipsReceiver::save() {
    if (common::trim(name).empty()) return refuse(message::enter_name);
    const auto number = is_editing() ? std::optional(editing_) : read_code(code);
    if (!number) return refuse(message::wrong_receiver);
    if (!database::TextLimits(connection_, "boundata").fits("cname", name)) return refuse(message::too_long);

    Recordset entry(connection_, Sql("select * from boundata where ccode = ") + *number);
    if (is_editing()) {
        if (entry.empty()) return refuse(message::no_such_receiver);
    } else {
        if (!entry.empty()) return refuse(message::duplicate_receiver);
        entry.add();
    }
    entry.set("ccode", *number);
    entry.set("cname", name);
    entry.update();
    connection_.make_durable();
    load();
    return true;
}

}  // namespace accounts
