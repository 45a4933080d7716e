#include "ui/cash/expense_screen.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "common/date_time.h"
#include "ui/widgets/choices.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

Form41ca::Form41ca(QWidget* host, const Context& context)
    : Sheet(host, qt(cash::Expenses::title)),
      context_(context),
      logic_(context.connection, context.session, context.services) {
    setObjectName("Form41ca");
    set_card_width(620);
    store_ = choice_list("expense_store");
    drawer_ = choice_list("expense_drawer");
    main_heading_ = choice_list("expense_main");
    sub_heading_ = choice_list("expense_sub");
    date_ = moment_field("expense_date");
    value_ = new AmountField("expense_value");
    set_role(value_, "large");
    for (QWidget* field : std::initializer_list<QWidget*>{value_, date_})
        field->setFixedHeight(px(62));
    notes_ = text_field("expense_notes");
    notes_->setMaxLength(200);

    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(px(16));
    grid->setVerticalSpacing(px(12));
    grid->addWidget(captioned("ال&مخزن", store_), 0, 0);
    grid->addWidget(captioned("الخ&زينة", drawer_), 0, 1);
    grid->addWidget(captioned("المصروف ال&رئيسي", main_heading_), 1, 0);
    grid->addWidget(captioned("المصروف ال&فرعي", sub_heading_), 1, 1);
    grid->addWidget(captioned("ال&قيمة", value_), 2, 0);
    grid->addWidget(captioned("ال&تاريخ", date_), 2, 1);
    grid->addWidget(captioned("م&لاحظات", notes_), 3, 0, 1, 2);
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(1, 1);
    body()->addLayout(grid);

    auto* row = new QHBoxLayout;
    row->setSpacing(px(10));
    const auto button = [&](const char* name, const QString& caption, int share, auto action) {
        auto* made = new QPushButton(caption);
        made->setObjectName(name);
        made->setMinimumHeight(px(50));
        made->setAutoDefault(true);
        connect(made, &QPushButton::clicked, this, action);
        row->addWidget(made, share);
        return made;
    };
    QPushButton* save = button("expense_save", "&حفظ", 2, [this] { this->save(); });
    set_role(save, "main");
    save_ = save;
    button("expense_close", "إ&غلاق", 1, [this] { leave(0); });
    body()->addSpacing(px(4));
    body()->addLayout(row);
    connect_parts();
}

void Form41ca::connect_parts() {
    connect(store_, &QComboBox::activated, this, [this] {
        const auto store = choice_of(store_);
        if (!store || *store == logic_.store()) return;
        guarded(context_.services, "Expense", [&] {
            logic_.choose_store(*store);
            fill_choices(drawer_, logic_.drawers(), logic_.drawer());
        });
    });
    connect(main_heading_, &QComboBox::activated, this, [this] {
        const auto heading = choice_of(main_heading_);
        if (!heading || heading == logic_.main_heading()) return;
        guarded(context_.services, "Expense", [&] {
            logic_.choose_main_heading(*heading);
            fill_choices(sub_heading_, logic_.sub_headings(), std::nullopt);
        });
    });
    const auto enter_leads = [this](QLineEdit* from, QWidget* to) {
        connect(from, &QLineEdit::returnPressed, to, qOverload<>(&QWidget::setFocus));
    };
    enter_leads(store_->lineEdit(), drawer_);
    enter_leads(drawer_->lineEdit(), main_heading_);
    enter_leads(main_heading_->lineEdit(), sub_heading_);
    enter_leads(sub_heading_->lineEdit(), value_);
    enter_leads(value_, notes_);
    enter_leads(date_, notes_);
    enter_leads(notes_, save_);
}

void Form41ca::open() {
    logic_.open();
    fill_choices(store_, logic_.stores(), logic_.store());
    fill_choices(drawer_, logic_.drawers(), logic_.drawer());
    fill_choices(main_heading_, logic_.main_headings(), std::nullopt);
    fill_choices(sub_heading_, {}, std::nullopt);
    date_->setText(qt(common::date_text(logic_.date)));
    value_->setText(qt(logic_.value));
}

void Form41ca::take_focus() {
    main_heading_->setFocus();
}

void Form41ca::read_fields() {
    // A heading typed in full and left by a click on the button has not been taken yet.
    const auto heading = choice_of(main_heading_);
    if (heading && heading != logic_.main_heading()) {
        logic_.choose_main_heading(*heading);
        fill_choices(sub_heading_, logic_.sub_headings(), std::nullopt);
    }
    logic_.choose_drawer(choice_of(drawer_));
    logic_.choose_sub_heading(choice_of(sub_heading_));
    logic_.value = utf8(value_->text());
    logic_.notes = utf8(notes_->text().trimmed());
}

QWidget* Form41ca::missing_field() const {
    if (!logic_.drawer()) return drawer_;
    if (!logic_.main_heading()) return main_heading_;
    if (!logic_.sub_heading()) return sub_heading_;
    return value_;
}

void Form41ca::save() {
    if (Sheet::top_of(window()) != this) return;
    const auto date = common::parse_moment(utf8(date_->text()));
    if (!date) {
        context_.services.prompts.message(message::wrong_date, common::Icon::critical);
        date_->setFocus();
        return;
    }
    logic_.date = date->date;
    bool saved = false;
    guarded(context_.services, "SaveExpense", [&] {
        read_fields();
        saved = logic_.save();
    });
    if (saved && logic_.is_done()) {
        leave(1);
        return;
    }
    value_->setText(qt(logic_.value));
    (saved ? static_cast<QWidget*>(value_) : missing_field())->setFocus();
}

}  // namespace ui
