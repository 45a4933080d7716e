#include "ui/cash/expense_screen.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/widgets/choices.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

ExpenseScreen::ExpenseScreen(QWidget* host, const Context& context)
    : Sheet(host, qt(cash::Expenses::title)),
      context_(context),
      logic_(context.connection, context.session, context.services) {
    setObjectName("Form41ca");
    set_card_width(620);
    FieldGrid grid(2, 12);
    form_.add(cash::expense_form(), grid);
    QWidget* value = form_.field("expense_value");
    QWidget* date = form_.field("expense_date");
    set_role(value, "large");
    for (QWidget* field : {value, date})
        field->setFixedHeight(px(62));
    body()->addLayout(grid.layout());

    auto* row = new QHBoxLayout;
    row->setSpacing(px(10));
    QPushButton* save = foot_button(row, "expense_save", "&حفظ", 2, [this] { this->save(); });
    set_role(save, "main");
    QPushButton* close = foot_button(row, "expense_close", "إ&غلاق", 1, [this] { leave(0); });
    for (QPushButton* button : {save, close})
        button->setMinimumHeight(px(50));
    body()->addSpacing(px(4));
    body()->addLayout(row);

    QComboBox* store = form_.list("expense_store");
    QComboBox* main_heading = form_.list("expense_main");
    connect(store, &QComboBox::activated, this, [this] { choose_store(); });
    connect(main_heading, &QComboBox::activated, this, [this] { choose_main_heading(); });
    QWidget* notes = form_.field("expense_notes");
    enter_leads_on(
        {store, form_.field("expense_drawer"), main_heading, form_.field("expense_sub"), value, notes, save});
    enter_leads_on({date, notes});
}

void ExpenseScreen::open() {
    logic_.open();
    fill_choices(form_.list("expense_store"), logic_.stores(), {});
    fill_choices(form_.list("expense_drawer"), logic_.drawers(), {});
    fill_choices(form_.list("expense_main"), logic_.main_headings(), {});
    fill_choices(form_.list("expense_sub"), {}, {});
    form_.show(logic_.expense);
}

void ExpenseScreen::take_focus() {
    form_.field("expense_main")->setFocus();
}

void ExpenseScreen::choose_store() {
    const auto store = choice_of(form_.list("expense_store"));
    guarded(context_.services, "Expense", [&] {
        logic_.expense.drawer = choice_of(form_.list("expense_drawer"));
        logic_.choose_store(store);
        fill_choices(form_.list("expense_drawer"), logic_.drawers(), logic_.expense.drawer);
    });
}

void ExpenseScreen::choose_main_heading() {
    const auto heading = choice_of(form_.list("expense_main"));
    guarded(context_.services, "Expense", [&] {
        logic_.expense.sub_heading = choice_of(form_.list("expense_sub"));
        logic_.choose_main_heading(heading);
        fill_choices(form_.list("expense_sub"), logic_.sub_headings(), logic_.expense.sub_heading);
    });
}

void ExpenseScreen::save() {
    if (Sheet::top_of(window()) != this) return;
    // A store whose name was typed in full is not chosen yet when a click on this button leaves the field.
    choose_store();
    choose_main_heading();
    const bool saved =
        form_.save(context_.services, "SaveExpense", logic_.expense, [this] { return logic_.save(); });
    if (!saved) return;
    if (logic_.is_done()) return leave(1);
    form_.show(logic_.expense);
    form_.field("expense_value")->setFocus();
}

}  // namespace ui
