#include "ui/reports/close_days_sheet.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "database/choices.h"
#include "reports/frozen_day.h"
#include "reports/labels.h"
#include "signin/permissions.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/list_table.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

// "Close this day? What any program writes into it later will be shown as changed."
constexpr std::string_view ask_close =
    "\nهل تريد إقفال هذا اليوم؟ تحفظ أرقامه كما هي الآن، وما يكتبه أي برنامج فيه بعد ذلك يظهر على أنه تغير "
    "بعد الإقفال.";

}  // namespace

CloseDaysSheet::CloseDaysSheet(QWidget* host, const Context& context)
    : Sheet(host, "إقفال الأيام"), context_(context) {
    setObjectName("close_days");
    set_card_width(720);
    // day, store, net
    list_ = new ListTable("close_days_list", {"اليوم", "الفرع", "صافي المبيعات"}, 0);
    list_->say_when_empty("كل الأيام مقفلة");  // all days are closed
    list_->setMinimumHeight(px(360));
    connect(list_, &ListTable::row_taken, this, &CloseDaysSheet::close);
    body()->addWidget(list_);
    auto* row = add_row();
    note_ = label({}, "side", "close_days_note");
    row->addWidget(note_, 1);
    set_role(foot_button(row, "close_days_close", "إ&قفال اليوم  Enter", 0,
                         [this] { close(list_->current_row()); }),
             "main");
    foot_button(row, "close_days_back", "ر&جوع", 0, [this] { leave(0); });
    show_days();
}

void CloseDaysSheet::show_days() {
    const common::Date today = context_.services.clock.now().date;
    days_.clear();
    for (const common::Choice& store : database::load_stores(context_.connection))
        if (!reports::is_frozen(context_.connection, store.code, today))
            days_.push_back({store.code, store.name, today});
    for (reports::DayToClose& day : reports::days_to_close(context_.connection, today))
        days_.push_back(std::move(day));
    std::vector<QStringList> rows;
    for (const reports::DayToClose& day : days_)
        rows.push_back({qt(reports::day_label(day.day)), qt(day.store_name),
                        figure(reports::text_of(
                            reports::sales_of(context_.connection, {day.day, day.day, day.store}).net(),
                            reports::Format::amount))});
    list_->show_rows(std::move(rows));
}

void CloseDaysSheet::close(int row) {
    if (row < 0 || row >= static_cast<int>(days_.size()) || Sheet::top_of(window()) != this) return;
    const reports::DayToClose day = days_[static_cast<std::size_t>(row)];
    guarded(context_.services, "CloseDay", [&] {
        common::Prompts& prompts = context_.services.prompts;
        if (!signin::authorise_change(context_.session, prompts, signin::Action::see_reports)) return;
        if (!prompts.question(reports::day_label(day.day) + " · " + day.store_name + std::string(ask_close)))
            return;
        const auto refused = reports::close_day(context_.connection, context_.session,
                                                context_.services.clock, day.store, day.day);
        if (refused) {
            prompts.message(refused->text, common::Icon::exclamation);
            return;
        }
        note_->setText("تم إقفال يوم " + figure(common::date_text(day.day)));
        show_days();
        list_->setFocus();
    });
}

void CloseDaysSheet::take_focus() {
    list_->setFocus();
}

}  // namespace ui
