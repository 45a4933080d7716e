#include "ui/cash/shift_screens.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "cash/messages.h"
#include "common/text.h"
#include "printing/report_printer.h"
#include "sales/held_invoices.h"
#include "sales/lists.h"
#include "sales/sales_desk.h"
#include "ui/cash/cash_panel.h"
#include "ui/cash/count_sheet.h"
#include "ui/printing/reports.h"
#include "ui/widgets/choices.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/list_table.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

// Prints the report of the shift that the last action closed, if the settings want it printed.
void print_report_of(const cash::ShiftStart& logic, const Context& context) {
    if (logic.report()) print_shift_report(*logic.report(), context);
}

// Names the invoices that the drawer's till still holds when a start closes the shift before; they may be
// resumed in the new one.
void tell_of_held(const Context& context) {
    const std::string held = sales::held_words(context.connection, context.session);
    if (!held.empty()) context.services.prompts.message(common::trim(held), common::Icon::information);
}

QPushButton* shift_button(QHBoxLayout* row, const char* name, const QString& caption, int share,
                          std::function<void()> action) {
    QPushButton* button = foot_button(row, name, caption, share, std::move(action));
    button->setMinimumHeight(px(50));
    return button;
}

}  // namespace

ShiftForm::ShiftForm() {
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
    FieldGrid grid(2, 14);
    form_.add(cash::shift_form(), grid);
    column->addLayout(grid.layout());
    count_ = new QPushButton("&عد النقدية بالفئات");
    count_->setObjectName("shift_count");
    count_->setAutoDefault(true);
    count_->setMinimumHeight(px(44));
    connect(count_, &QPushButton::clicked, this, &ShiftForm::count_wanted);
    column->addWidget(count_);
    QWidget* counted = form_.field("shift_counted");
    enter_leads_on({first_field(), counted, form_.field("shift_leave")});
    enter_leads_on({form_.field("shift_date"), form_.field("shift_time"), counted});
}

void ShiftForm::lead_to(QWidget* last) {
    enter_leads_on({form_.field("shift_leave"), last});
}

bool ShiftForm::open(cash::ShiftStart& logic, const Context& context) {
    if (const auto refusal = logic.open()) {
        form_.refuse(*refusal, context.services.prompts);
        return false;
    }
    fill_choices(form_.list("shift_worker"), logic.workers(), {});
    form_.show(logic.entry);
    show_number(logic);
    const auto& last = logic.last_shift();
    count_->setEnabled(logic.is_in_shift());
    QString text = "لم تبدأ أي وردية على هذا الدرج";
    if (last) {
        text = QString("وردية رقم %1 · %2 · %3")
                   .arg(last->number)
                   .arg(qt(logic.last_worker()), last->is_open() ? "مفتوحة" : "مغلقة");
    }
    state_->setText(text);
    // Shown only where it matters: a correct count falls short of the expected cash by this much.
    const common::Amount beside = logic.discounts().beside;
    discounts_->setVisible(!beside.is_zero());
    discounts_->setText(qt(cash::message::shift_discounts) + " : " + figure(beside.text()));
    return true;
}

void ShiftForm::count(cash::ShiftStart& logic, const Context& context) {
    if (!logic.is_in_shift()) return;
    guarded(context.services, "CountDrawer", [&] {
        cash::HandOver count(context.connection, context.session, context.services);
        count.open(*logic.last_shift());
        if (CountSheet(this, context, count).run() != 1) return;
        logic.entry.pieces = count.count;
        form_.line("shift_counted")->setText(qt(count.count.total().text()));
    });
    form_.line("shift_leave")->setFocus();
}

void ShiftForm::show_number(const cash::ShiftStart& logic) {
    qobject_cast<QLabel*>(form_.field("next_shift"))->setText(QString::number(logic.next_number()));
}

bool ShiftForm::start(cash::ShiftStart& logic, const Context& context) {
    const bool closes = logic.is_in_shift();
    const bool started = form_.save(context.services, "StartShift", logic.entry, [&] {
        auto refusal = logic.start();
        if (closes && !refusal) tell_of_held(context);
        print_report_of(logic, context);
        return refusal;
    });
    if (!started) show_number(logic);
    if (started && logic.report()) context.back_up();
    return started;
}

// Closes the shift now and does not read the date and time in the fields: a wrong date must not keep a shift
// open.
bool ShiftForm::close_current(cash::ShiftChange& logic, const Context& context) {
    logic.entry.counted = utf8(form_.line("shift_counted")->text());
    logic.entry.leave = utf8(form_.line("shift_leave")->text());
    std::optional<common::Refusal> refusal;
    bool closed = false;
    guarded(context.services, "CloseShift", [&] {
        if (!logic.confirm_close(sales::held_words(context.connection, context.session))) return;
        refusal = logic.close_current();
        closed = !refusal;
        print_report_of(logic, context);
    });
    if (refusal) form_.refuse(*refusal, context.services.prompts);
    if (!closed) show_number(logic);
    if (closed) context.back_up();
    return closed;
}

ShiftScreen::ShiftScreen(QWidget* host, const Context& context)
    : Sheet(host, "الورديات"),
      context_(context),
      logic_(context.connection, context.session, context.services),
      form_(new ShiftForm) {
    setObjectName("shift2s");
    set_card_width(620);
    body()->addWidget(form_);
    auto* row = new QHBoxLayout;
    row->setSpacing(px(10));
    auto* start = shift_button(row, "shift_start", "&بدء وردية جديدة", 1, [this] {
        if (Sheet::top_of(window()) == this && form_->start(logic_, context_)) leave(1);
    });
    set_role(start, "main");
    shift_button(row, "shift_back", "&رجوع", 1, [this] { leave(0); });
    // Possible between shifts too, where it says that the shift is closed: it may have been closed elsewhere
    // after this screen was opened.
    shift_button(row, "shift_close", "إ&غلاق الوردية الحالية", 1, [this] {
        if (Sheet::top_of(window()) == this && form_->close_current(logic_, context_)) leave(1);
    });
    body()->addSpacing(px(4));
    body()->addLayout(row);
    form_->lead_to(start);
    connect(form_, &ShiftForm::count_wanted, this, [this] {
        if (Sheet::top_of(window()) == this) form_->count(logic_, context_);
    });
}

QString ShiftScreen::closing() const {
    const auto& report = logic_.report();
    if (!report) return {};
    const QString closed = QString("أغلقت الوردية %1 · الرصيد الدفتري %2 · ")
                               .arg(report->number)
                               .arg(figure(report->expected.text()));
    if (!report->counted) return closed + qt(cash::message::not_counted);
    return closed + QString("الفعلي %1 · الفرق %2")
                        .arg(figure(report->counted->text()), figure(report->difference()->text()));
}

ShiftStartScreen::ShiftStartScreen(QWidget* host, const Context& context)
    : Sheet(host, "بدء وردية"),
      context_(context),
      logic_(context.connection, context.session, context.services),
      form_(new ShiftForm) {
    setObjectName("shiftc");
    set_card_width(620);
    body()->addWidget(form_);
    auto* row = new QHBoxLayout;
    row->setSpacing(px(10));
    auto* start = shift_button(row, "shiftc_start", "&بدء وردية جديدة", 2, [this] {
        if (Sheet::top_of(window()) == this && form_->start(logic_, context_)) leave(1);
    });
    set_role(start, "main");
    shift_button(row, "shiftc_back", "&رجوع", 1, [this] { leave(0); });
    body()->addSpacing(px(4));
    body()->addLayout(row);
    form_->lead_to(start);
    connect(form_, &ShiftForm::count_wanted, this, [this] {
        if (Sheet::top_of(window()) == this) form_->count(logic_, context_);
    });
}

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
    fill_choices(users_, desk_.lists().user_filter, sales::all_users);
    connect(users_, &QComboBox::activated, this,
            [this] { guarded(context_.services, "Shifts", [this] { show_shifts(); }); });
    column->addWidget(captioned("المستخ&دم", users_));
    shifts_ = new ListTable("shift_list", text_list(sales::shift_headings), 2);
    column->addWidget(shifts_, 1);
    auto* row = new QHBoxLayout;
    row->setSpacing(px(10));
    foot_button(row, "shift_side_start", "&بدء وردية", 1, [this] { start_shift(); });
    foot_button(row, "shift_side_close", "&رجوع", 1, [this] { leave(0); });
    column->addLayout(row);
    return half;
}

// A user's shifts are those in which he sold; a shift itself records the worker, not the user.
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
        rows.push_back({QString::number(shift->number), figure(shift->start),
                        shift->end.empty() ? QString("مفتوحة") : figure(shift->end)});
    }
    shifts_->show_rows(std::move(rows));
}

void ShiftSide::start_shift() {
    if (Sheet::top_of(window()) != this) return;
    guarded(context_.services, "StartShift", [&] {
        ShiftStartScreen start(this, context_);
        if (!start.open() || start.run() != 1) return;
        desk_.reload();
        show_shifts();
    });
    panel_->refresh();
}

}  // namespace ui
