#include "ui/counting/write_off_view.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "database/choices.h"
#include "sales/items.h"
#include "signin/permissions.h"
#include "ui/counting/texts.h"
#include "ui/goods/item_field.h"
#include "ui/widgets/choices.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/key_queue.h"
#include "ui/widgets/list_table.h"
#include "ui/widgets/style.h"

namespace ui {

namespace {

constexpr auto damaged = "تالف";
constexpr auto expired = "منتهي الصلاحية";

// "Take these goods from the stock?"
constexpr std::string_view ask_save = "خصم هذه الأصناف من رصيد المخزن؟";

}  // namespace

WriteOffView::WriteOffView(const Context& context)
    : context_(context), sees_cost_(signin::allows(context.session, signin::Action::see_cost)) {
    setObjectName("write_off");
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(px(10));
    column->addWidget(build_entry());
    QStringList headings = {"كود", "الصنف", "الكمية", "صالح حتى", "السبب"};
    if (sees_cost_) headings << "القيمة";
    table_ = new ListTable("write_off_lines", headings, 1);
    table_->say_when_empty("مرر الأصناف التالفة أو المنتهية لتخصم من الرصيد");
    connect(table_, &ListTable::left_upwards, this, [this] { item_->setFocus(); });
    column->addWidget(table_, 1);
    auto* foot = new QHBoxLayout;
    remove_ = foot_button(foot, "write_off_remove", "حذف ال&سطر", 0, [this] { remove(); });
    foot->addWidget(note_ = label({}, "side", "write_off_note"), 1);
    save_ = foot_button(foot, "write_off_save", "خصم من الرصي&د", 0, [this] { save(); });
    set_role(save_, "main");
    column->addLayout(foot);
    forget_picked();
    show_lines();
}

QWidget* WriteOffView::build_entry() {
    auto* bar = new QWidget;
    auto* rows = new QVBoxLayout(bar);
    rows->setContentsMargins(0, 0, 0, 0);
    auto* first = new QHBoxLayout;
    first->setSpacing(px(10));
    first->addWidget(captioned("الم&خزن", store_ = choice_list("write_off_store")), 1);
    item_ = new ItemField("write_off_item", context_, this);
    first->addWidget(captioned("مرر الص&نف", item_), 2);
    rows->addLayout(first);
    picked_name_ = label({}, "figure", "write_off_picked");
    rows->addWidget(picked_name_);
    auto* second = new QHBoxLayout;
    second->setSpacing(px(10));
    second->addWidget(captioned("الصلا&حية", batch_ = choice_list("write_off_batch")), 2);
    quantity_ = new AmountField("write_off_quantity");
    auto* counted = captioned("ال&كمية", quantity_);
    counted->setFixedWidth(px(120));
    second->addWidget(counted);
    reason_ = text_field("write_off_reason");
    reason_->setMaxLength(400);
    second->addWidget(captioned("السب&ب", reason_), 2);
    add_ = field_button(second, "write_off_add", "إ&ضافة  Enter", [this] { add(); });
    rows->addLayout(second);
    connect(store_, &QComboBox::currentIndexChanged, this, &WriteOffView::choose_store);
    connect(item_, &ItemField::picked, this, &WriteOffView::take_item);
    connect(item_, &ItemField::left_downwards, this, [this] { table_->setFocus(); });
    enter_leads_on({batch_, quantity_, reason_});
    connect(reason_, &QLineEdit::returnPressed, this, &WriteOffView::add);
    // The next item is scanned while a quantity is typed: that one is added first.
    connect(&context_.keys, &KeyQueue::scan_waiting, this, [this] {
        if (quantity_->hasFocus()) add();
    });
    return bar;
}

void WriteOffView::open() {
    const auto stores = database::load_stores(context_.connection);
    const auto chosen = choice_of(store_);
    const QSignalBlocker quiet(store_);
    fill_choices(store_, stores, chosen ? *chosen : context_.session.store_code);
    item_->set_store(store());
}

std::int64_t WriteOffView::store() const {
    return choice_of(store_).value_or(context_.session.store_code);
}

void WriteOffView::choose_store() {
    item_->set_store(store());
    forget_picked();
}

void WriteOffView::take_item(const goods::Pick& pick) {
    guarded(context_.services, "WriteOffItem", [&] {
        batches_ = counting::read_batches(context_.connection, store(), pick.item.code);
        picked_ = pick;
        show_picked();
        quantity_->setFocus();
    });
}

void WriteOffView::show_picked() {
    picked_name_->setText(qt(picked_->item.name) + " · " + qt(sales::unit_name(picked_->item.unit_level)));
    std::vector<common::Choice> choices;
    for (std::size_t i = 0; i < batches_.size(); ++i)
        choices.push_back({static_cast<std::int64_t>(i),
                           expiry_text(batches_[i].expiry) + " · " + quantity_text(batches_[i].held)});
    for (QWidget* field : std::initializer_list<QWidget*>{batch_, quantity_, reason_, add_})
        field->setEnabled(true);
    fill_choices(batch_, choices, choices.empty() ? std::optional<std::int64_t>() : 0);
    quantity_->setText(qt(common::shortest_text(picked_->quantity)));
    const bool is_expired = !batches_.empty() && batches_.front().expiry < context_.services.clock.now().date;
    reason_->setText(is_expired ? expired : damaged);
}

void WriteOffView::forget_picked() {
    picked_.reset();
    picked_name_->clear();
    batches_.clear();
    fill_choices(batch_, {}, {});
    quantity_->clear();
    reason_->clear();
    for (QWidget* field : std::initializer_list<QWidget*>{batch_, quantity_, reason_, add_})
        field->setEnabled(false);
}

void WriteOffView::add() {
    if (!picked_ || !all_known({batch_}, context_.services.prompts)) return;
    counting::WrittenOff typed;
    typed.item = picked_->item.code;
    typed.unit_level = picked_->item.unit_level;
    typed.quantity = utf8(quantity_->text());
    typed.reason = utf8(reason_->text());
    if (const auto at = choice_of(batch_)) typed.expiry = batches_[static_cast<std::size_t>(*at)].expiry;
    guarded(context_.services, "WriteOffLine", [&] {
        auto made = counting::write_off_line(context_.connection, store(), typed, lines_);
        if (const auto* refusal = std::get_if<common::Refusal>(&made)) {
            context_.services.prompts.message(refusal->text, common::Icon::critical);
            (refusal->field == "write_off_reason" ? reason_ : quantity_)->setFocus();
            return;
        }
        lines_.push_back(std::get<counting::WriteOffLine>(made));
        note_->clear();
        forget_picked();
        show_lines();
        item_->setFocus();
    });
}

void WriteOffView::remove() {
    const int row = table_->current_row();
    if (row < 0) return;
    lines_.erase(lines_.begin() + row);
    show_lines();
    take_focus();
}

void WriteOffView::save() {
    if (!signin::authorise_change(context_.session, context_.services.prompts, signin::Action::count_stock))
        return;
    if (!context_.services.prompts.question(ask_save, common::Icon::exclamation)) return;
    guarded(context_.services, "WriteOff", [&] {
        auto saved = counting::write_off(context_.connection, context_.session, context_.services.clock,
                                         store(), lines_);
        if (const auto* refusal = std::get_if<common::Refusal>(&saved)) {
            context_.services.prompts.message(refusal->text, common::Icon::critical);
            return;
        }
        lines_.clear();
        show_lines();
        note_->setText("تم حفظ محضر التالف رقم " + figure(std::get<std::int64_t>(saved)));
        item_->setFocus();
    });
}

void WriteOffView::show_lines() {
    std::vector<QStringList> rows;
    common::Amount sum;
    for (const auto& line : lines_) {
        rows.push_back({figure(line.item), qt(line.name), figure(quantity_text(line.quantity)),
                        figure(line.expiry ? expiry_text(line.expiry) : std::string()), qt(line.reason)});
        if (sees_cost_) rows.back() << figure(line.value().text());
        sum += line.value();
    }
    table_->show_rows(std::move(rows));
    store_->setEnabled(lines_.empty());  // the lines belong to one store
    remove_->setEnabled(!lines_.empty());
    save_->setEnabled(!lines_.empty());
    if (lines_.empty()) return;
    note_->setText("عدد السطور " + figure(static_cast<qlonglong>(lines_.size())) +
                   (sees_cost_ ? " · القيمة " + figure(sum.text()) : QString()));
}

void WriteOffView::take_focus() {
    item_->setFocus();
}

}  // namespace ui
