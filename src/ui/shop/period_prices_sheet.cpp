#include "ui/shop/period_prices_sheet.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QVBoxLayout>

#include "common/numbers.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/list_table.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

PeriodPricesSheet::PeriodPricesSheet(QWidget* host, const Context& context, std::int64_t period,
                                     const QString& name)
    : Sheet(host, "أسعار " + name),
      context_(context),
      logic_(context.connection, context.session, context.services, period, utf8(name)) {
    setObjectName("period_prices");
    set_card_width(760);
    field_ = new ItemField("period_item", context, this);
    body()->addWidget(captioned("ال&صنف: مرره أو اكتب كوده أو اسمه", field_));
    QHBoxLayout* row = add_row();
    name_ = label("اختر صنفا", "plain", "period_item_name");
    row->addWidget(name_, 1, Qt::AlignBottom);
    percent_ = new AmountField("period_percent");
    price_ = new AmountField("period_price");
    row->addWidget(captioned("ال&خصم %", percent_));
    row->addWidget(captioned("أو ال&سعر في الفترة", price_));
    auto* save_button = foot_button(row, "period_save", "&حفظ", 0, [this] { save(); });
    set_role(save_button, "main");
    rows_ = new ListTable("period_rows", text_list(shop::period_price_headings), 1);
    rows_->verticalHeader()->setDefaultSectionSize(px(least_target));
    rows_->setMinimumHeight(px(300));
    rows_->say_when_empty("لا توجد أسعار في هذه الفترة بعد");
    body()->addWidget(rows_, 1);
    QHBoxLayout* foot = add_row();
    foot_button(foot, "period_remove", "ح&ذف من الفترة", 1, [this] { remove(); });
    foot_button(foot, "period_back", "ر&جوع", 1, [this] { leave(0); });
    connect(field_, &ItemField::picked, this, [this](const goods::Pick& pick) {
        item_ = pick.item;
        show_item(pick.item);
        percent_->setFocus();
    });
    connect(rows_, &ListTable::row_chosen, this, &PeriodPricesSheet::choose_row);
    connect(percent_, &QLineEdit::returnPressed, this, &PeriodPricesSheet::save);
    connect(price_, &QLineEdit::returnPressed, this, &PeriodPricesSheet::save);
    logic_.open();
    show_rows();
}

void PeriodPricesSheet::take_focus() {
    field_->setFocus();
}

void PeriodPricesSheet::show_rows() {
    std::vector<QStringList> texts;
    for (const shop::PeriodPrice& row : logic_.rows())
        texts.push_back(text_list(row.cells(), {0, 2, 3, 4}));
    rows_->show_rows(std::move(texts));
}

void PeriodPricesSheet::show_item(const sales::Item& item) {
    name_->setText(qt(item.name));
    percent_->clear();
    price_->clear();
}

void PeriodPricesSheet::choose_row(int at) {
    if (at < 0 || static_cast<std::size_t>(at) >= logic_.rows().size()) return;
    const shop::PeriodPrice& row = logic_.rows()[static_cast<std::size_t>(at)];
    guarded(context_.services, "PeriodPrice", [&] {
        item_ = sales::load_item(context_.connection, row.item, 1);
        if (item_) show_item(*item_);
        percent_->setText(qt(common::shortest_text(common::round_decimals(row.percent, 4))));
    });
}

bool PeriodPricesSheet::accept(const std::optional<common::Refusal>& refusal) {
    if (!refusal) return true;
    if (!refusal->text.empty()) context_.services.prompts.message(refusal->text, common::Icon::critical);
    (refusal->field == "period_price" ? price_ : percent_)->setFocus();
    return false;
}

void PeriodPricesSheet::save() {
    if (Sheet::top_of(window()) != this) return;
    if (!item_) return field_->setFocus();
    guarded(context_.services, "PeriodPrice", [&] {
        // The retail price is that of the unit, whichever unit the scan named.
        const auto item = sales::load_item(context_.connection, item_->code, 1);
        if (!item ||
            !accept(logic_.set(*item, utf8(percent_->text().trimmed()), utf8(price_->text().trimmed()))))
            return;
        item_.reset();
        show_rows();
        item_.reset();
        name_->setText("تم الحفظ: " + qt(item->name));
        percent_->clear();
        price_->clear();
        field_->setFocus();
    });
}

void PeriodPricesSheet::remove() {
    if (Sheet::top_of(window()) != this) return;
    const int at = rows_->current_row();
    if (at < 0) return;
    guarded(context_.services, "PeriodPrice", [&] {
        if (!accept(logic_.remove(logic_.rows()[static_cast<std::size_t>(at)].item))) return;
        item_.reset();
        name_->setText("اختر صنفا");
        show_rows();
    });
}

}  // namespace ui
