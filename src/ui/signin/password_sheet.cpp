#include "ui/signin/password_sheet.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "signin/sign_in.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/messages.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

PasswordSheet::PasswordSheet(QWidget* host, const Context& context)
    : Sheet(host, "تغيير كلمة السر"), context_(context) {
    setObjectName("Form63");
    set_card_width(440);
    const auto field = [this](const char* name, const QString& caption) {
        QLineEdit* made = text_field(name);
        made->setEchoMode(QLineEdit::Password);
        made->setMaxLength(50);
        body()->addWidget(captioned(caption, made));
        return made;
    };
    old_ = field("old_password", "كلمة السر ال&قديمة");
    new_ = field("new_password", "كلمة السر ال&جديدة");
    again_ = field("new_password_again", "كلمة السر الجديدة مرة &أخرى");
    auto* row = new QHBoxLayout;
    row->setSpacing(px(10));
    auto* confirmed = new QPushButton("&تغيير");
    confirmed->setObjectName("password_confirm");
    set_role(confirmed, "main");
    auto* back = new QPushButton("&رجوع");
    back->setObjectName("password_back");
    row->addWidget(confirmed, 2);
    row->addWidget(back, 1);
    body()->addLayout(row);
    connect(old_, &QLineEdit::returnPressed, new_, qOverload<>(&QWidget::setFocus));
    connect(new_, &QLineEdit::returnPressed, again_, qOverload<>(&QWidget::setFocus));
    connect(again_, &QLineEdit::returnPressed, this, &PasswordSheet::confirm);
    connect(confirmed, &QPushButton::clicked, this, &PasswordSheet::confirm);
    connect(back, &QPushButton::clicked, this, [this] { leave(0); });
}

void PasswordSheet::confirm() {
    guarded(context_.services, "ChangePassword", [this] {
        if (new_->text() != again_->text()) {
            context_.services.prompts.message(message::passwords_differ);
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
        // What stands hidden in the fields would be added to.
        new_->clear();
        again_->clear();
        old_->setFocus();
        old_->selectAll();
    });
}

}  // namespace ui
