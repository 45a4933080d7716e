#include "ui/cash/shift_screen.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/cash/shift_fields.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

shift2s::shift2s(QWidget* host, const Context& context)
    : Sheet(host, "الورديات"),
      context_(context),
      logic_(context.connection, context.session, context.services),
      fields_(new ShiftFields) {
    setObjectName("shift2s");
    set_card_width(620);
    body()->addWidget(fields_);

    auto* row = new QHBoxLayout;
    row->setSpacing(px(10));
    const auto button = [&](const char* name, const QString& caption, const char* role) {
        auto* made = new QPushButton(caption);
        made->setObjectName(name);
        made->setMinimumHeight(px(50));
        made->setAutoDefault(true);
        if (role != nullptr) set_role(made, role);
        row->addWidget(made, 1);
        return made;
    };
    start_ = button("shift_start", "&بدء وردية جديدة", "main");
    auto* back = button("shift_back", "&رجوع", nullptr);
    close_ = button("shift_close", "إ&غلاق الوردية الحالية", nullptr);
    body()->addSpacing(px(4));
    body()->addLayout(row);

    // Enter ends on the button that starts the shift.
    connect(fields_, &ShiftFields::finished, start_, qOverload<>(&QWidget::setFocus));
    connect(start_, &QPushButton::clicked, this, &shift2s::start);
    connect(close_, &QPushButton::clicked, this, &shift2s::close_shift);
    connect(back, &QPushButton::clicked, this, [this] { leave(0); });
}

// Closing stays possible between shifts, where it says that the shift is closed already: it may have been
// closed elsewhere after this screen was opened.
bool shift2s::open() {
    if (!logic_.open()) return false;
    fields_->show_state(logic_);
    return true;
}

QString shift2s::closing() const {
    const auto& report = logic_.report();
    if (!report) return {};
    return QString(
               "أغلقت الوردية %1 · الرصيد الدفتري \u200e%2\u200f · الفعلي \u200e%3\u200f · الفرق \u200e%4")
        .arg(report->number)
        .arg(qt(report->expected.text()), qt(report->counted.text()), qt(report->difference.text()));
}

void shift2s::take_focus() {
    fields_->first_field()->setFocus();
}

void shift2s::start() {
    if (Sheet::top_of(window()) != this) return;
    if (!fields_->read_into(logic_)) {
        context_.services.prompts.message(message::wrong_date);
        return;
    }
    act("StartShift", [this] { return logic_.start(); });
}

// A wrong date is no reason to keep a shift open: it closes now.
void shift2s::close_shift() {
    if (Sheet::top_of(window()) != this) return;
    fields_->read_amounts_into(logic_);
    act("CloseShift", [this] { return logic_.close_current(); });
}

template <typename Action>
void shift2s::act(std::string_view name, Action action) {
    bool done = false;
    guarded(context_.services, name, [&] {
        done = action();
        if (done) print_shift_report(logic_, context_);
    });
    if (done) {
        leave(1);
    } else {
        fields_->show_refused(logic_);
    }
}

}  // namespace ui
