#include "ui/signin/password_sheet.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "signin/sign_in.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

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
        made->setMaxLength(50);
        body()->addWidget(captioned(caption, made));
        return made;
    };
    old_ = field("old_password", "كلمة السر ال&قديمة");
    new_ = field("new_password", "كلمة السر ال&جديدة");
    again_ = field("new_password_again", "كلمة السر الجديدة مرة &أخرى");
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
