#include "ui/cash/shift_start_screen.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/cash/shift_fields.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

shiftc::shiftc(QWidget* host, const Context& context)
    : Sheet(host, "بدء وردية"),
      context_(context),
      logic_(context.connection, context.session, context.services),
      fields_(new ShiftFields),
      start_(new QPushButton("&بدء وردية جديدة")) {
    setObjectName("shiftc");
    set_card_width(620);
    body()->addWidget(fields_);
    auto* row = new QHBoxLayout;
    row->setSpacing(px(10));
    start_->setObjectName("shiftc_start");
    set_role(start_, "main");
    auto* back = new QPushButton("&رجوع");
    back->setObjectName("shiftc_back");
    for (QPushButton* made : {start_, back}) {
        made->setMinimumHeight(px(50));
        made->setAutoDefault(true);
    }
    row->addWidget(start_, 2);
    row->addWidget(back, 1);
    body()->addSpacing(px(4));
    body()->addLayout(row);
    connect(fields_, &ShiftFields::finished, start_, qOverload<>(&QWidget::setFocus));
    connect(start_, &QPushButton::clicked, this, &shiftc::start);
    connect(back, &QPushButton::clicked, this, [this] { leave(0); });
}

bool shiftc::open() {
    if (!logic_.open()) return false;
    fields_->show_state(logic_);
    return true;
}

void shiftc::take_focus() {
    fields_->first_field()->setFocus();
}

void shiftc::start() {
    if (Sheet::top_of(window()) != this) return;
    if (!fields_->read_into(logic_)) {
        context_.services.prompts.message(message::wrong_date);
        return;
    }
    bool started = false;
    guarded(context_.services, "StartShift", [&] {
        started = logic_.start();
        if (started) print_shift_report(logic_, context_);
    });
    if (started) {
        leave(1);
    } else {
        fields_->show_refused(logic_);
    }
}

}  // namespace ui
