#include "ui/counting/new_count_sheet.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "database/choices.h"
#include "signin/session.h"
#include "ui/widgets/choices.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

NewCountSheet::NewCountSheet(QWidget* host, const Context& context)
    : Sheet(host, "جرد جديد"), context_(context) {
    setObjectName("new_count");
    set_card_width(520);
    FieldGrid grid(2, 12);
    form_.add(counting::new_count_form(), grid);
    body()->addLayout(grid.layout());
    auto* foot = add_row();
    auto* begin = foot_button(foot, "new_count_begin", "بدء ال&جرد", 2, [this] { save(); });
    set_role(begin, "main");
    foot_button(foot, "new_count_back", "&رجوع", 1, [this] { leave(0); });
    form_.lead_on(counting::new_count_form(), begin);
}

void NewCountSheet::open() {
    fill_choices(form_.list("count_store"), database::load_stores(context_.connection), {});
    fill_choices(form_.list("count_scope"), counting::read_scopes(context_.connection), {});
    fields_.store = context_.session.store_code;
    form_.show(fields_);
}

void NewCountSheet::save() {
    if (Sheet::top_of(window()) != this) return;
    std::int64_t number = 0;
    const bool saved =
        form_.save(context_.services, "NewCount", fields_, [&]() -> std::optional<common::Refusal> {
            auto opened =
                counting::open_count(context_.connection, context_.session, context_.services.clock, fields_);
            if (auto* refusal = std::get_if<common::Refusal>(&opened)) return *refusal;
            number = std::get<std::int64_t>(opened);
            return std::nullopt;
        });
    if (saved && number > 0) leave(static_cast<int>(number));
}

}  // namespace ui
