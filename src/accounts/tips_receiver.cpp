#include "accounts/tips_receiver.h"

#include <algorithm>

#include "accounts/messages.h"
#include "common/typed.h"
#include "database/form.h"

namespace accounts {

using common::FieldKind;
using common::Refusal;
using database::Recordset;
using database::Sql;

namespace {

constexpr common::FormField<TipsReceiverFields> receiver_fields[] = {
    // code, name
    {&TipsReceiverFields::code, {"receiver_code", "&كود", FieldKind::code, {0, 0}}},
    {&TipsReceiverFields::name,
     {"receiver_name", "ال&اسم", FieldKind::text, {1, 0}, "cname", message::enter_name}},
};

}  // namespace

common::FormTable<TipsReceiverFields> tips_receiver_form() {
    return receiver_fields;
}

std::vector<common::Choice> load_tips_receivers(database::Connection& connection) {
    return database::choices(connection.query("select * from boundata order by ccode"), "ccode", "cname");
}

std::string_view TipsReceiver::title() const {
    return is_editing() ? "تعديل بيان اكراميات" : "اضافة بيان اكراميات";
}

void TipsReceiver::open_new() {
    std::int64_t highest = 0;
    for (const common::Choice& receiver : load_tips_receivers(connection_))
        highest = std::max(highest, receiver.code);
    editing_.reset();
    fields = {std::to_string(highest + 1), ""};
}

std::optional<Refusal> TipsReceiver::open_edit(std::int64_t receiver) {
    const auto receivers = load_tips_receivers(connection_);
    if (!contains(receivers, receiver)) return Refusal("", message::no_such_receiver);
    editing_ = receiver;
    fields = {std::to_string(receiver), name_of(receivers, receiver)};
    return std::nullopt;
}

std::optional<Refusal> TipsReceiver::save() {
    const database::TextLimits limits(connection_, "boundata");
    if (auto refused = database::check(tips_receiver_form(), fields, limits)) return refused;
    const auto code = is_editing() ? editing_ : common::read_code(fields.code);
    if (!code) return Refusal("receiver_code", common::message::wrong_code);

    Recordset entry(connection_, Sql("select * from boundata where ccode = ") + *code);
    if (is_editing()) {
        if (entry.empty()) return Refusal("", message::no_such_receiver);
    } else {
        if (!entry.empty()) return Refusal("receiver_code", message::duplicate_receiver);
        entry.add();
    }
    database::store(tips_receiver_form(), fields, entry);
    entry.set("ccode", *code);
    entry.update();
    connection_.make_durable();
    return std::nullopt;
}

}  // namespace accounts
