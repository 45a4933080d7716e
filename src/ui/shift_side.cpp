#include "ui/shift_side.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "sales/sales_screen.h"
#include "ui/cash_panel.h"
#include "ui/fields.h"
#include "ui/guard.h"
#include "ui/list_table.h"
#include "ui/shift_start_screen.h"
#include "ui/style.h"
#include "ui/text.h"

namespace ui {

ShiftSide::ShiftSide(QWidget* host, sales::SalesScreen& screen, const Context& context)
    : Sheet(host, "ورديات الدرج"), context_(context), screen_(screen) {
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
    QComboBox* users = choice_list("user_filter");
    for (const sales::Choice& user : screen_.lists().user_filter) {
        users->addItem(qt(user.name), QVariant::fromValue<qlonglong>(user.code));
    }
    users->setCurrentIndex(users->findData(QVariant::fromValue<qlonglong>(sales::all_users)));
    column->addWidget(captioned("ال&مستخدم", users));
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
        made->setMinimumHeight(px(46));
        made->setAutoDefault(true);
        connect(made, &QPushButton::clicked, this, action);
        row->addWidget(made, 1);
    };
    button("shift_side_start", "&بدء وردية", [this] { start_shift(); });
    button("shift_side_close", "&رجوع", [this] { leave(0); });
    column->addLayout(row);
    return half;
}

void ShiftSide::show_shifts() {
    std::vector<QStringList> rows;
    for (auto shift = screen_.shifts().rbegin(); shift != screen_.shifts().rend(); ++shift) {
        rows.push_back(
            {QString::number(shift->number), "\u200e" + qt(shift->start), "\u200e" + qt(shift->end)});
    }
    shifts_->show_rows(rows);
}

void ShiftSide::start_shift() {
    if (Sheet::top_of(window()) != this) return;
    guarded(context_.outside, "StartShift", [&] {
        shiftc start(this, context_);
        if (!start.open() || start.run() != 1) return;
        screen_.reload_shifts();
        show_shifts();
    });
    panel_->refresh();
}

}  // namespace ui
