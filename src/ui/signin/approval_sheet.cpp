#include "ui/signin/approval_sheet.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

#include "signin/badges.h"
#include "signin/messages.h"
#include "signin/passwords.h"
#include "ui/widgets/choices.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/key_queue.h"
#include "ui/widgets/message_box.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

constexpr int offer_taken = 3;  // of MessageBox::run()

// The scan if it is somebody's badge, else nothing.
std::string badge_in(const Context& context, const std::string& scan) {
    const auto digits = signin::read_badge(scan);
    return digits && signin::badge_owner(context.connection, *digits) ? *digits : std::string();
}

}  // namespace

std::optional<audit::Person> ask_supervisor(const Context& context, const signin::Refused& refused) {
    MessageBox box(window_in_use(), qt(refused.text), refused.icon);
    box.offer("موافقة الم&شرف");  // a supervisor's approval
    // A badge that is scanned here answers at once; if it waited, it would go to the entry field.
    std::string badge;
    QObject::connect(
        &context.keys, &KeyQueue::scan_waiting, &box,
        [&] {
            guarded(context.services, "Approve",
                    [&] { badge = badge_in(context, utf8(context.keys.scan_behind_box())); });
            if (badge.empty()) return;
            context.keys.drop_scan_behind_box();
            box.leave(offer_taken);
        },
        Qt::QueuedConnection);
    if (box.run() != offer_taken) return std::nullopt;
    std::optional<audit::Person> approver;
    guarded(context.services, "Approve", [&] {
        ApprovalSheet sheet(window_in_use(), context, refused);
        if (!sheet.open()) return;
        if (badge.empty() || !sheet.take_badge(badge)) sheet.run();
        approver = sheet.approver();
    });
    return approver;
}

ApprovalSheet::ApprovalSheet(QWidget* host, const Context& context, const signin::Refused& refused)
    : Sheet(host, "موافقة المشرف"),
      context_(context),
      logic_(context.connection, context.session, context.services, refused.action) {
    setObjectName("approval");
    set_card_width(460);
    auto* what = label(sentence(qt(refused.what)), "said");
    what->setObjectName("approval_action");
    what->setWordWrap(true);
    body()->addWidget(what);
    user_ = choice_list("approval_user");
    body()->addWidget(captioned("الم&شرف", user_));
    password_ = text_field("approval_password");
    password_->setEchoMode(QLineEdit::Password);
    password_->setMaxLength(signin::longest_password);
    password_->setProperty(keys_property, QString(""));                     // a badge is scanned here
    body()->addWidget(captioned("&كلمة السر، أو مرر البطاقة", password_));  // password, or scan the badge
    pause_ = label({}, "warning");
    pause_->setObjectName("approval_pause");
    pause_->setWordWrap(true);
    body()->addWidget(pause_);
    QHBoxLayout* row = add_row();
    set_role(foot_button(row, "approval_confirm", "م&وافق", 2, [this] { confirm(); }), "main");
    foot_button(row, "approval_back", "إل&غاء", 1, [this] { leave(0); });

    fill_choices(user_, logic_.users(), {});
    if (!logic_.users().empty()) user_->setCurrentIndex(0);
    lead_on(user_, password_);
    connect(password_, &QLineEdit::returnPressed, this, &ApprovalSheet::confirm);
    auto* watch = new QTimer(this);
    const auto show_pause = [this] {
        pause_->setText(qt(logic_.pause_text(choice_of(user_))));
        pause_->setVisible(!pause_->text().isEmpty());
    };
    connect(watch, &QTimer::timeout, this, show_pause);
    watch->start(250);
    show_pause();
}

bool ApprovalSheet::open() {
    if (!logic_.users().empty()) return true;
    context_.services.prompts.message(signin::message::no_supervisor, common::Icon::exclamation);
    return false;
}

bool ApprovalSheet::take_badge(const std::string& badge) {
    approver_ = logic_.confirm({}, badge);
    return approver_.has_value();
}

void ApprovalSheet::take_focus() {
    password_->setFocus();
}

void ApprovalSheet::confirm() {
    if (Sheet::top_of(window()) != this) return;
    guarded(context_.services, "Approve", [this] {
        approver_ = logic_.confirm(choice_of(user_), utf8(password_->text()));
        if (approver_) return leave(1);
        password_->setFocus();
        password_->selectAll();
    });
}

}  // namespace ui
