#include "ui/accounts/voucher_list.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "common/numbers.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/list_table.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

constexpr long days_shown = 30;

}  // namespace

VoucherList::VoucherList(QWidget* host, const Context& context, accounts::VoucherKind kind)
    : Sheet(host, kind == accounts::VoucherKind::receipt ? "اختيار إيصال مقبوضات" : "اختيار إيصال مدفوعات"),
      context_(context),
      kind_(kind) {
    setObjectName("voucher_list");
    set_card_width(820);
    FieldGrid grid(2, 0);
    grid.layout()->setHorizontalSpacing(px(10));
    form_.add(accounts::voucher_period_form(), grid);
    auto* period = new QHBoxLayout;
    period->setSpacing(px(10));
    period->addLayout(grid.layout(), 2);
    auto* show_button = new QPushButton("عر&ض");
    show_button->setObjectName("vouchers_show");
    show_button->setFixedHeight(px(field_height));
    period->addWidget(show_button, 0, Qt::AlignBottom);
    count_ = label({}, "side");
    count_->setObjectName("vouchers_count");
    period->addWidget(count_, 2, Qt::AlignBottom);
    body()->addLayout(period);
    table_ = new ListTable("vouchers", {"رقم الإيصال", "التاريخ", "الاسم", "طريقة الدفع", "القيمة"}, 2);
    table_->setMinimumHeight(px(340));
    body()->addWidget(table_, 1);
    auto* row = new QHBoxLayout;
    row->setSpacing(px(10));
    set_role(foot_button(row, "vouchers_take", "&تعديل  Enter", 2, [this] { take(table_->currentRow()); }),
             "main");
    foot_button(row, "vouchers_back", "&رجوع", 1, [this] { leave(0); });
    body()->addLayout(row);
    QLineEdit* from = form_.line("vouchers_from");
    QLineEdit* to = form_.line("vouchers_to");
    enter_leads_on({from, to});
    connect(to, &QLineEdit::returnPressed, this, &VoucherList::show);
    connect(show_button, &QPushButton::clicked, this, &VoucherList::show);
    connect(table_, &ListTable::row_taken, this, &VoucherList::take);
    connect(table_, &ListTable::left_upwards, from, qOverload<>(&QWidget::setFocus));
}

bool VoucherList::open() {
    const common::Date today = context_.services.clock.now().date;
    period_ = {common::add_days(today, -days_shown), today};
    form_.show(period_);
    return list();
}

void VoucherList::take_focus() {
    if (table_->rowCount() > 0) {
        table_->setFocus();
    } else {
        form_.field("vouchers_from")->setFocus();
    }
}

void VoucherList::show() {
    if (list()) take_focus();
}

bool VoucherList::list() {
    const auto read = [this]() -> std::optional<common::Refusal> {
        vouchers_ = accounts::list_vouchers(context_.connection, kind_, period_);
        return std::nullopt;
    };
    if (!form_.save(context_.services, "ListVouchers", period_, read)) return false;
    std::reverse(vouchers_.begin(), vouchers_.end());  // the latest first
    std::vector<QStringList> rows;
    rows.reserve(vouchers_.size());
    for (const accounts::VoucherEntry& entry : vouchers_) {
        rows.push_back({"\u200e" + qt(entry.key.number), "\u200e" + qt(common::date_text(entry.key.date)),
                        qt(entry.party_name), qt(accounts::method_name(entry.method)),
                        "\u200e" + qt(common::format_amount(entry.key.amount))});
    }
    table_->say_when_empty("لا توجد إيصالات في هذه المدة · غير التاريخين ثم اضغط عرض");
    table_->show_rows(rows);
    count_->setText(rows.empty() ? QString("لا توجد إيصالات في هذه المدة")
                                 : "عدد الإيصالات " + QString::number(rows.size()));
    return true;
}

void VoucherList::take(int row) {
    if (Sheet::top_of(window()) != this) return;
    if (row < 0 || static_cast<std::size_t>(row) >= vouchers_.size()) return;
    chosen_ = vouchers_[static_cast<std::size_t>(row)].key;
    leave(1);
}

}  // namespace ui
