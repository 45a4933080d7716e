#include "ui/cash/shift_fields.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include "cash/messages.h"
#include "cash/shift_screen.h"
#include "common/date_time.h"
#include "printing/report_printer.h"
#include "ui/printing/reports.h"
#include "ui/widgets/choices.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

ShiftFields::ShiftFields() {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(px(14));
    state_ = label({}, "side");
    state_->setObjectName("shift_state");
    column->addWidget(state_);
    discounts_ = label({}, "side");
    discounts_->setObjectName("shift_discounts");
    column->addWidget(discounts_);
    column->addWidget(rule());

    number_ = new Figure("next_shift", "figure");
    number_->setFixedHeight(px(48));
    worker_ = choice_list("shift_worker");
    date_ = moment_field("shift_date");
    time_ = moment_field("shift_time");
    counted_ = new AmountField("shift_counted");
    leave_ = new AmountField("shift_leave");
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(px(16));
    grid->setVerticalSpacing(px(14));
    grid->addWidget(captioned("رقم الوردية الجديدة", number_), 0, 0);
    grid->addWidget(captioned("ال&موظف", worker_), 0, 1);
    grid->addWidget(captioned("ال&تاريخ", date_), 1, 0);
    grid->addWidget(captioned("ال&وقت", time_), 1, 1);
    grid->addWidget(captioned("الرصيد ال&فعلي", counted_), 2, 0);
    grid->addWidget(captioned("يترك بال&درج", leave_), 2, 1);
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(1, 1);
    column->addLayout(grid);

    connect(worker_->lineEdit(), &QLineEdit::returnPressed, counted_, qOverload<>(&QWidget::setFocus));
    connect(date_, &QLineEdit::returnPressed, time_, qOverload<>(&QWidget::setFocus));
    connect(time_, &QLineEdit::returnPressed, counted_, qOverload<>(&QWidget::setFocus));
    connect(counted_, &QLineEdit::returnPressed, leave_, qOverload<>(&QWidget::setFocus));
    connect(leave_, &QLineEdit::returnPressed, this, &ShiftFields::finished);
}

void ShiftFields::show_state(const cash::ShiftStartScreen& screen) {
    fill_choices(worker_, screen.workers(), screen.worker);
    number_->setText(QString::number(screen.next_number()));
    date_->setText(qt(common::date_text(screen.date)));
    time_->setText(qt(screen.time));
    counted_->setText(qt(screen.counted));
    leave_->setText(qt(screen.leave));
    const auto& last = screen.last_shift();
    QString text = "لم تبدأ أي وردية على هذا الدرج";
    if (last) {
        text = QString("وردية رقم %1 · %2 · %3")
                   .arg(last->number)
                   .arg(qt(screen.last_worker()), last->is_open() ? "مفتوحة" : "مغلقة");
    }
    state_->setText(text);
    // Said only where it matters: by this much a right count is short of the expected cash.
    discounts_->setVisible(!screen.discounts().is_zero());
    discounts_->setText(qt(cash::message::shift_discounts) + " : " + qt(screen.discounts().text()));
}

bool ShiftFields::read_into(cash::ShiftStartScreen& screen) {
    screen.worker = choice_of(worker_);
    const auto date = common::parse_moment(utf8(date_->text()));
    if (!date) {
        date_->setFocus();
        return false;
    }
    screen.date = date->date;
    screen.time = utf8(time_->text().trimmed());
    read_amounts_into(screen);
    return true;
}

void ShiftFields::read_amounts_into(cash::ShiftStartScreen& screen) {
    screen.counted = utf8(counted_->text());
    screen.leave = utf8(leave_->text());
}

void ShiftFields::show_refused(const cash::ShiftStartScreen& screen) {
    counted_->setText(qt(screen.counted));
    leave_->setText(qt(screen.leave));
    number_->setText(QString::number(screen.next_number()));
    using Field = cash::ShiftStartScreen::Field;
    switch (screen.refused_field()) {
        case Field::time:
            return time_->setFocus();
        case Field::counted:
            return counted_->setFocus();
        case Field::leave:
            return leave_->setFocus();
        case Field::worker:
        case Field::none:
            return worker_->setFocus();
    }
}

QWidget* ShiftFields::first_field() {
    return worker_;
}

void print_shift_report(const cash::ShiftStartScreen& screen, const Context& context) {
    if (!screen.report()) return;
    if (context.reports.print(report_of(*screen.report(), context.session))) return;
    context.services.prompts.message(cash::message::check_printer, common::Icon::exclamation);
}

}  // namespace ui
