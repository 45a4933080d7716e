#include "ui/shift_screen.h"

#include <QComboBox>
#include <QDateEdit>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "printing/report_printer.h"
#include "ui/fields.h"
#include "ui/guard.h"
#include "ui/report_of.h"
#include "ui/style.h"
#include "ui/text.h"

namespace ui {

shift2s::shift2s(QWidget* host, const Context& context)
    : Sheet(host, "الورديات"),
      context_(context),
      logic_(context.connection, context.session, context.outside) {
    setObjectName("shift2s");
    set_card_width(620);
    state_ = label({}, "side");
    state_->setObjectName("shift_state");
    body()->addWidget(state_);
    body()->addWidget(rule());

    number_ = new Figure("next_shift", "figure");
    worker_ = choice_list("shift_worker");
    date_ = new QDateEdit;
    date_->setObjectName("shift_date");
    date_->setDisplayFormat("yyyy/MM/dd");
    date_->setLayoutDirection(Qt::LeftToRight);
    date_->setLocale(QLocale::c());
    time_ = new QLineEdit;
    time_->setObjectName("shift_time");
    time_->setLayoutDirection(Qt::LeftToRight);
    time_->setAlignment(Qt::AlignRight);
    time_->setMaxLength(8);
    counted_ = new AmountField("shift_counted");
    leave_ = new AmountField("shift_leave");
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(px(16));
    grid->setVerticalSpacing(px(14));
    grid->addWidget(captioned("رقم الوردية الجديدة", number_), 0, 0);
    grid->addWidget(captioned("ال&موظف", worker_), 0, 1);
    grid->addWidget(captioned("التاريخ", date_), 1, 0);
    grid->addWidget(captioned("الوقت", time_), 1, 1);
    grid->addWidget(captioned("الرصيد ال&فعلي", counted_), 2, 0);
    grid->addWidget(captioned("ي&ترك بالدرج", leave_), 2, 1);
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(1, 1);
    body()->addLayout(grid);

    auto* row = new QHBoxLayout;
    row->setSpacing(px(10));
    const auto button = [&](const char* name, const QString& caption, const char* role) {
        auto* made = new QPushButton(caption);
        made->setObjectName(name);
        made->setMinimumHeight(px(50));
        if (role != nullptr) set_role(made, role);
        row->addWidget(made, 1);
        return made;
    };
    start_ = button("shift_start", "&بدء وردية جديدة", "main");
    auto* back = button("shift_back", "&رجوع", nullptr);
    close_ = button("shift_close", "إ&غلاق الوردية الحالية", nullptr);
    body()->addSpacing(px(4));
    body()->addLayout(row);

    // Enter walks through the fields and ends on the button that starts the shift.
    connect(worker_->lineEdit(), &QLineEdit::returnPressed, counted_, qOverload<>(&QWidget::setFocus));
    connect(time_, &QLineEdit::returnPressed, counted_, qOverload<>(&QWidget::setFocus));
    connect(counted_, &QLineEdit::returnPressed, leave_, qOverload<>(&QWidget::setFocus));
    connect(leave_, &QLineEdit::returnPressed, start_, qOverload<>(&QWidget::setFocus));
    for (QPushButton* pressed : {start_, back, close_})
        pressed->setAutoDefault(true);
    connect(start_, &QPushButton::clicked, this, [this] {
        act("StartShift", [this] {
            if (!logic_.start()) return;
            print_report();
            leave(1);
        });
    });
    connect(close_, &QPushButton::clicked, this, [this] {
        act("CloseShift", [this] {
            if (!logic_.close_current()) return;
            print_report();
            leave(1);
        });
    });
    connect(back, &QPushButton::clicked, this, [this] { leave(0); });
}

bool shift2s::open() {
    if (!logic_.open()) return false;
    for (const cash::Choice& worker : logic_.workers()) {
        worker_->addItem(qt(worker.name), QVariant::fromValue<qlonglong>(worker.code));
    }
    worker_->setCurrentIndex(-1);
    show_state();
    return true;
}

void shift2s::show_state() {
    number_->setText(QString::number(logic_.next_number()));
    date_->setDate(QDate(logic_.date.year, logic_.date.month, logic_.date.day));
    time_->setText(qt(logic_.time));
    counted_->setText(qt(logic_.counted));
    leave_->setText(qt(logic_.leave));
    const auto& last = logic_.last_shift();
    QString text = "لم تبدأ أي وردية على هذا الدرج";
    if (last) {
        text = QString("وردية رقم %1 · %2 · %3")
                   .arg(last->number)
                   .arg(qt(logic_.last_worker()), last->is_open() ? "مفتوحة" : "مغلقة");
    }
    state_->setText(text);
    close_->setEnabled(logic_.is_in_shift());
}

void shift2s::read_fields() {
    logic_.worker.reset();
    if (const qlonglong code = chosen_code(worker_); code != 0) logic_.worker = code;
    const QDate date = date_->date();
    logic_.date = {date.year(), date.month(), date.day()};
    logic_.time = utf8(time_->text().trimmed());
    logic_.counted = utf8(counted_->text());
    logic_.leave = utf8(leave_->text());
}

template <typename Action>
void shift2s::act(std::string_view name, Action action) {
    if (Sheet::top_of(window()) != this) return;
    read_fields();
    guarded(context_.outside, name, action);
}

void shift2s::print_report() {
    if (logic_.report()) context_.reports.print(report_of(*logic_.report(), context_.session));
}

}  // namespace ui
