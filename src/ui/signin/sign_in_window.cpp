#include "ui/signin/sign_in_window.h"

#include <QApplication>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

#include "backup/automatic.h"
#include "signin/passwords.h"
#include "signin/sign_in.h"
#include "ui/help/open_help.h"
#include "ui/widgets/choices.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/key_button.h"
#include "ui/widgets/keypad.h"
#include "ui/widgets/sheet.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

SignInWindow::SignInWindow(const Context& context, bool offers_training)
    : FrontWindow("Form62", context.session.is_office ? "دخول المكتب" : "تسجيل الدخول", 440),
      context_(context),
      logic_(context.connection, context.session, context.services) {
    user_ = choice_list("user");
    user_->setMinimumHeight(px(48));
    column()->addWidget(captioned("ا&سم المستخدم", user_));
    password_ = text_field("password");
    password_->setEchoMode(QLineEdit::Password);
    password_->setMinimumHeight(px(48));
    password_->setMaxLength(signin::longest_password);
    column()->addWidget(captioned("&كلمة السر", password_));
    keyboard_ = label({}, "side");
    keyboard_->setObjectName("keyboard_layout");
    column()->addWidget(keyboard_);
    pause_ = label({}, "warning");
    pause_->setObjectName("sign_in_pause");
    pause_->setWordWrap(true);
    column()->addWidget(pause_);

    auto* row = new QHBoxLayout;
    row->setSpacing(px(10));
    auto* enter = foot_button(row, "sign_in", "&دخول", 2, [this] { confirm(); });
    set_role(enter, "main");
    auto* cancel = foot_button(row, "cancel", "إل&غاء", 1, [this] { leave(false); });
    for (QPushButton* button : {enter, cancel})
        button->setMinimumHeight(px(52));
    column()->addSpacing(px(6));
    column()->addLayout(row);
    auto* help = new KeyButton("help_button", help_cap, "المساعدة", KeyButton::Look::strip);
    help->setShortcut(QKeySequence::mnemonic("&م"));
    help->setAutoDefault(true);
    auto* others = new QHBoxLayout;
    others->setSpacing(px(10));
    help->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);  // as high as its neighbours
    others->addWidget(help, 1);
    auto* keypad = new QPushButton("⌨");
    keypad->setObjectName("keypad_button");
    keypad->setAccessibleName("لوحة الأرقام");
    keypad->setToolTip(QString("لوحة الأرقام  ") + keypad_cap);
    keypad->setProperty(key_property, keypad_cap);
    keypad->setFocusPolicy(Qt::NoFocus);
    keypad->setMinimumSize(px(64), px(48));
    connect(keypad, &QPushButton::clicked, this, [this] { context_.keypad.toggle(); });
    others->addWidget(keypad);
    column()->addLayout(others);
    if (offers_training) {
        foot_button(others, "training", "تدري&ب", 1, [this] {
            wants_training_ = true;
            leave(true);
        });
    }
    for (QLabel** line : {&backup_, &backup_failed_}) {
        *line = label({}, "side");
        (*line)->setWordWrap(true);
        column()->addWidget(*line);
    }
    backup_->setObjectName("backup_age");
    backup_failed_->setObjectName("backup_failed");

    fill();
    lead_on(user_, password_);
    // A password that was typed for one user is not sent for another.
    connect(user_, &QComboBox::currentIndexChanged, password_, &QLineEdit::clear);
    connect(password_, &QLineEdit::returnPressed, this, &SignInWindow::confirm);
    qApp->installEventFilter(this);
    auto* watch = new QTimer(this);
    connect(watch, &QTimer::timeout, this, &SignInWindow::show_state);
    watch->start(250);
    show_state();
    connect(help, &QPushButton::clicked, this, &open_help);
}

void SignInWindow::fill() {
    for (const signin::User& user : logic_.users()) {
        user_->addItem(qt(user.name), QVariant::fromValue<qlonglong>(user.code));
    }
    user_->setCurrentIndex(-1);
    const auto copied = backup::state_of(context_.connection);
    backup_->setVisible(copied.has_value());
    backup_failed_->setVisible(copied && !copied->failed.empty());
    if (!copied) return;
    backup_->setText(qt(backup::age_words(*copied, context_.services.clock.now().date)));
    backup_failed_->setText(qt(backup::failure_words(*copied)));
}

bool SignInWindow::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) typed_with_.learn(*static_cast<QKeyEvent*>(event));
    return FrontWindow::eventFilter(watched, event);
}

void SignInWindow::show_state() {
    keyboard_->setText(keyboard_now().value_or(typed_with_).text());
    pause_->setText(qt(logic_.pause_text(choice_of(user_))));
    pause_->setVisible(!pause_->text().isEmpty());
}

bool SignInWindow::run() {
    context_.show_window(*this);
    activateWindow();
    user_->setFocus();
    return wait();
}

void SignInWindow::confirm() {
    if (Sheet::top_of(this) != nullptr) return;
    guarded(context_.services, "SignIn", [this] {
        switch (logic_.confirm(choice_of(user_), utf8(password_->text()))) {
            case signin::SignInOutcome::signed_in:
                leave(true);
                break;
            case signin::SignInOutcome::end_program:
                leave(false);
                break;
            case signin::SignInOutcome::stay_on_list:
                password_->clear();
                user_->setFocus();
                break;
            case signin::SignInOutcome::stay_on_password:
                password_->setFocus();
                password_->selectAll();
                break;
        }
    });
    show_state();
}

namespace {

// "The two new passwords differ."
constexpr std::string_view passwords_differ = "كلمتا السر الجديدتان غير متطابقتين";

}  // namespace

PasswordSheet::PasswordSheet(QWidget* host, const Context& context)
    : Sheet(host, "تغيير كلمة السر"), context_(context) {
    setObjectName("Form63");
    set_card_width(440);
    const auto field = [this](const char* name, const QString& caption) {
        QLineEdit* made = text_field(name);
        made->setEchoMode(QLineEdit::Password);
        made->setMaxLength(signin::longest_password);
        body()->addWidget(captioned(caption, made));
        return made;
    };
    old_ = field("old_password", "كلمة السر ال&قديمة");
    new_ = field("new_password", "كلمة السر ال&جديدة");
    again_ = field("new_password_again", "كلمة السر الجديدة مرة أ&خرى");
    QHBoxLayout* row = add_row();
    set_role(foot_button(row, "password_confirm", "&تغيير", 2, [this] { confirm(); }), "main");
    foot_button(row, "password_back", "&رجوع", 1, [this] { leave(0); });
    enter_leads_on({old_, new_, again_});
    connect(again_, &QLineEdit::returnPressed, this, &PasswordSheet::confirm);
}

void PasswordSheet::confirm() {
    guarded(context_.services, "ChangePassword", [this] {
        if (new_->text() != again_->text()) {
            context_.services.prompts.message(passwords_differ);
            again_->clear();
            new_->setFocus();
            new_->selectAll();
            return;
        }
        if (signin::change_password(context_.connection, context_.session, context_.services,
                                    utf8(old_->text()), utf8(new_->text()))) {
            leave(1);
            return;
        }
        // Clear the hidden text, or what is typed next would be added to it.
        new_->clear();
        again_->clear();
        old_->setFocus();
        old_->selectAll();
    });
}

}  // namespace ui
