#include "ui/shift_side.h"

#include <QComboBox>
#include <QPushButton>
#include <QVBoxLayout>

#include "sales/sales_screen.h"
#include "ui/fields.h"
#include "ui/list_table.h"
#include "ui/style.h"
#include "ui/text.h"

namespace ui {

ShiftSide::ShiftSide(QWidget* host, const sales::SalesScreen& screen) : Sheet(host, "ورديات الدرج") {
    setObjectName("shift_side");
    set_card_width(640);
    QComboBox* users = choice_list("user_filter");
    for (const sales::Choice& user : screen.lists().user_filter) {
        users->addItem(qt(user.name), QVariant::fromValue<qlonglong>(user.code));
    }
    users->setCurrentIndex(users->findData(QVariant::fromValue<qlonglong>(sales::all_users)));
    body()->addWidget(captioned("ال&مستخدم", users));
    QStringList headings;
    for (const auto heading : sales::shift_headings)
        headings << qt(heading);
    auto* table = new ListTable("shift_list", headings, 2);
    table->setMinimumHeight(px(320));
    std::vector<QStringList> rows;
    for (auto shift = screen.shifts().rbegin(); shift != screen.shifts().rend(); ++shift) {
        rows.push_back(
            {QString::number(shift->number), "\u200e" + qt(shift->start), "\u200e" + qt(shift->end)});
    }
    table->show_rows(rows);
    body()->addWidget(table);
    auto* close = new QPushButton("&رجوع");
    close->setObjectName("shift_side_close");
    connect(close, &QPushButton::clicked, this, [this] { leave(0); });
    body()->addWidget(close);
}

}  // namespace ui
