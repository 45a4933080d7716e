#include "ui/cash/shift_side.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "sales/lists.h"
#include "sales/sales_desk.h"
#include "ui/cash/cash_panel.h"
#include "ui/cash/shift_screens.h"
#include "ui/widgets/choices.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/list_table.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

ShiftSide::ShiftSide(QWidget* host, sales::SalesDesk& desk, const Context& context)
    : Sheet(host, "ورديات الدرج"), context_(context), desk_(desk) {
    setObjectName("shift_side");
    set_card_width(976);
    auto* halves = new QHBoxLayout;
    halves->setSpacing(px(24));
    halves->addWidget(build_shifts(), 5);
    panel_ = new CashPanel(context);
    halves->addWidget(panel_, 4);
    body()->addLayout(halves);
    show_shifts();
    panel_->open();
}

QWidget* ShiftSide::build_shifts() {
    auto* half = new QWidget;
    auto* column = new QVBoxLayout(half);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(px(12));
    users_ = choice_list("user_filter");
    for (const common::Choice& user : desk_.lists().user_filter) {
        users_->addItem(qt(user.name), QVariant::fromValue<qlonglong>(user.code));
    }
    users_->setCurrentIndex(users_->findData(QVariant::fromValue<qlonglong>(sales::all_users)));
    connect(users_, &QComboBox::activated, this,
            [this] { guarded(context_.services, "Shifts", [this] { show_shifts(); }); });
    column->addWidget(captioned("المستخ&دم", users_));
    QStringList headings;
    for (const auto heading : sales::shift_headings)
        headings << qt(heading);
    shifts_ = new ListTable("shift_list", headings, 2);
    column->addWidget(shifts_, 1);
    auto* row = new QHBoxLayout;
    row->setSpacing(px(10));
    const auto button = [&](const char* name, const QString& caption, auto action) {
        auto* made = new QPushButton(caption);
        made->setObjectName(name);
        made->setMinimumHeight(px(48));
        made->setAutoDefault(true);
        connect(made, &QPushButton::clicked, this, action);
        row->addWidget(made, 1);
    };
    button("shift_side_start", "&بدء وردية", [this] { start_shift(); });
    button("shift_side_close", "&رجوع", [this] { leave(0); });
    column->addLayout(row);
    return half;
}

// A user's shifts are those he sold in: the shift itself records the worker, not the user.
void ShiftSide::show_shifts() {
    const auto user = choice_of(users_);
    const bool all = !user || *user == sales::all_users;
    std::set<std::int64_t> sold;
    if (!all) sold = sales::shifts_of_user(context_.connection, context_.session, *user);
    shifts_->say_when_empty(all ? "لم تبدأ أي وردية على هذا الدرج"
                                : "لم يبع هذا المستخدم في أي وردية على هذا الدرج");
    std::vector<QStringList> rows;
    for (auto shift = desk_.shifts().rbegin(); shift != desk_.shifts().rend(); ++shift) {
        if (!all && !sold.contains(shift->number)) continue;
        rows.push_back({QString::number(shift->number), "\u200e" + qt(shift->start),
                        shift->end.empty() ? QString("مفتوحة") : "\u200e" + qt(shift->end)});
    }
    shifts_->show_rows(rows);
}

void ShiftSide::start_shift() {
    if (Sheet::top_of(window()) != this) return;
    guarded(context_.services, "StartShift", [&] {
        ShiftStartScreen start(this, context_);
        if (!start.open() || start.run() != 1) return;
        desk_.reload_shifts();
        show_shifts();
    });
    panel_->refresh();
}

}  // namespace ui
