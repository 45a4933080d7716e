#include "ui/shop/users_page.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "printing/report_printer.h"
#include "shop/messages.h"
#include "shop/users.h"
#include "signin/badges.h"
#include "signin/passwords.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/list_table.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

// "Leave what you changed without saving it?"
constexpr std::string_view ask_drop_changes = "لم تحفظ ما غيرته. هل تتركه؟";
// "Block …? He keeps his name on what he did and can no longer sign in."
constexpr std::string_view ask_block =
    "إيقاف المستخدم؟ لن يستطيع الدخول ولا الموافقة، ويبقى اسمه على ما عمله";

QString count_of_rights(const std::string& permissions) {
    int held = 0;
    int all = 0;
    for (const shop::RightGroup& group : shop::right_groups())
        for (const signin::Action action : group.actions) {
            ++all;
            held += signin::allows(permissions, action) ? 1 : 0;
        }
    return held == all ? "كل الصلاحيات" : held == 0 ? "بيع فقط" : QString("%1 من %2").arg(held).arg(all);
}

QStringList cells(const shop::UserRow& user) {
    QString last;
    if (user.last_sign_in)
        last = figure(common::date_text(user.last_sign_in->date) + "  " +
                      common::time_text(user.last_sign_in->time).substr(0, 5));
    return {qt(user.name), count_of_rights(user.permissions), last, user.has_badge ? "نعم" : "",
            user.blocked ? "موقوف" : "يعمل"};
}

}  // namespace

UsersPage::UsersPage(const Context& context)
    : Page("users_page"), context_(context), logic_(context.connection, context.session, context.services) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(px(8));
    users_ = new ListTable("users_list", {"الاسم", "الصلاحيات", "آخر دخول", "بطاقة", "الحالة"}, 0);
    users_->verticalHeader()->setDefaultSectionSize(px(least_target));
    users_->set_look([this](int row, int) {
        return logic_.rows()[static_cast<std::size_t>(row)].blocked ? CellLook::dimmed : CellLook::plain;
    });
    users_->setMinimumHeight(px(136));
    column->addWidget(users_, 1);
    name_ = text_field("user_name");
    column->addWidget(captioned("الا&سم", name_));
    column->addWidget(build_rights());
    said_ = label({}, "side", "users_said");
    column->addWidget(said_);
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(px(8));
    foot_button(buttons, "user_add", "إ&ضافة", 1, [this] { add(); });
    set_role(foot_button(buttons, "user_save", "&حفظ", 1, [this] { save(); }), "main");
    password_ = foot_button(buttons, "user_password_change", "&كلمة السر", 1, [this] { set_password(); });
    badge_ = foot_button(buttons, "user_badge_change", "&بطاقة", 1, [this] { set_badge(); });
    block_ = foot_button(buttons, "user_block", "إيقا&ف", 1, [this] { set_blocked(); });
    column->addLayout(buttons);
    connect(users_, &ListTable::row_chosen, this, [this](int at) { choose_user(at); });
    connect(users_, &ListTable::row_taken, this, [this] { name_->setFocus(); });
}

QWidget* UsersPage::build_rights() {
    auto* area = new QWidget;
    auto* grid = new QGridLayout(area);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(px(12));
    grid->setVerticalSpacing(0);
    int column = 0;
    for (const shop::RightGroup& group : shop::right_groups()) {
        int row = 0;
        grid->addWidget(label(qt(group.caption), "total"), row++, column);
        for (const signin::Action action : group.actions) {
            auto* box = new QCheckBox(qt(signin::caption_of(action)));
            box->setObjectName("right_" + QString::number(rights_.size() + 1));
            box->setMinimumHeight(px(least_target));
            rights_.emplace_back(action, box);
            grid->addWidget(box, row++, column);
        }
        grid->setColumnStretch(column++, 1);
    }
    return area;
}

void UsersPage::open() {
    logic_.open();
    said_->clear();
    show_users(read_.code);
}

void UsersPage::take_focus() {
    users_->setFocus();
}

shop::UserRow UsersPage::typed() const {
    shop::UserRow user = read_;
    user.name = utf8(name_->text().trimmed());
    for (const auto& [action, box] : rights_)
        if (box->isChecked() != signin::allows(user.permissions, action))
            user.permissions = shop::with_right(user.permissions, action, box->isChecked());
    return user;
}

bool UsersPage::may_leave() {
    const shop::UserRow now = typed();
    return (now.name == read_.name && now.permissions == read_.permissions) ||
           context_.services.prompts.question(ask_drop_changes);
}

void UsersPage::show_users(std::int64_t code) {
    std::vector<QStringList> texts;
    int chosen = 0;
    for (const shop::UserRow& user : logic_.rows()) {
        if (user.code == code) chosen = static_cast<int>(texts.size());
        texts.push_back(cells(user));
    }
    users_->show_rows(std::move(texts));
    users_->choose_row(chosen);
    if (!logic_.rows().empty()) show_user(logic_.rows()[static_cast<std::size_t>(chosen)]);
}

void UsersPage::show_user(const shop::UserRow& user) {
    read_ = user;
    name_->setText(qt(user.name));
    for (const auto& [action, box] : rights_)
        box->setChecked(signin::allows(user.permissions, action));
    block_->setText(user.blocked ? "ت&فعيل" : "إيقا&ف");
    for (QPushButton* button : {password_, badge_, block_})
        button->setEnabled(user.code != 0);
}

void UsersPage::choose_user(int at) {
    if (at < 0 || static_cast<std::size_t>(at) >= logic_.rows().size()) return;
    const shop::UserRow& user = logic_.rows()[static_cast<std::size_t>(at)];
    if (user.code == read_.code) return;
    said_->clear();
    show_user(user);
}

void UsersPage::add() {
    if (Sheet::top_of(window()) != nullptr || !may_leave()) return;
    said_->clear();
    shop::UserRow user;
    user.permissions = shop::permission_string("none");
    show_user(user);
    name_->setFocus();
}

template <typename Change>
void UsersPage::change(const QString& done, Change change) {
    guarded(context_.services, "ChangeUser", [&] {
        const std::optional<common::Refusal> refusal = change();
        if (refusal) {
            if (!refusal->text.empty())
                context_.services.prompts.message(refusal->text, common::Icon::critical);
            if (refusal->field.empty())
                show_users(read_.code);
            else
                name_->setFocus();
            return;
        }
        show_users(read_.code);
        said_->setText(done);
        users_->setFocus();
    });
}

void UsersPage::save() {
    if (Sheet::top_of(window()) != nullptr) return;
    shop::UserRow user = typed();
    std::string password;
    if (read_.code == 0) {
        NewPasswordSheet sheet(this, context_, name_->text());
        if (sheet.run() == 0) return;
        password = sheet.password();
    }
    change("تم حفظ " + name_->text(), [&] {
        auto refusal = logic_.save(user, read_, password);
        if (!refusal) read_.code = user.code;
        return refusal;
    });
}

void UsersPage::set_password() {
    if (Sheet::top_of(window()) != nullptr) return;
    NewPasswordSheet sheet(this, context_, qt(read_.name));
    if (sheet.run() == 0) return;
    change("تم تغيير كلمة سر " + qt(read_.name),
           [&] { return logic_.set_password(read_, sheet.password()); });
}

void UsersPage::set_blocked() {
    if (Sheet::top_of(window()) != nullptr) return;
    if (!read_.blocked && !context_.services.prompts.question(ask_block, common::Icon::exclamation)) return;
    change(read_.blocked ? "يستطيع الدخول الآن: " + qt(read_.name) : "تم إيقاف " + qt(read_.name),
           [&] { return logic_.set_blocked(read_, !read_.blocked); });
}

void UsersPage::set_badge() {
    if (Sheet::top_of(window()) != nullptr) return;
    BadgeSheet sheet(this, context_, read_);
    if (sheet.run() == 0) return;
    const std::string scanned = sheet.scanned();
    change(scanned.empty() ? QString("تم سحب البطاقة") : QString("تم حفظ البطاقة"),
           [&] { return logic_.set_badge(read_, scanned); });
}

NewPasswordSheet::NewPasswordSheet(QWidget* host, const Context& context, const QString& name)
    : Sheet(host, "كلمة سر " + name), context_(context) {
    setObjectName("user_password_sheet");
    set_card_width(440);
    const auto field = [this](const char* object, const QString& caption) {
        QLineEdit* made = text_field(object);
        made->setEchoMode(QLineEdit::Password);
        made->setMaxLength(signin::longest_password);
        body()->addWidget(captioned(caption, made));
        return made;
    };
    first_ = field("user_password", "كلمة السر ال&جديدة");
    again_ = field("user_password_again", "كلمة السر مرة أ&خرى");
    QHBoxLayout* row = add_row();
    set_role(foot_button(row, "user_password_confirm", "&موافق", 2, [this] { confirm(); }), "main");
    foot_button(row, "user_password_back", "&رجوع", 1, [this] { leave(0); });
    enter_leads_on({first_, again_});
    connect(again_, &QLineEdit::returnPressed, this, &NewPasswordSheet::confirm);
}

std::string NewPasswordSheet::password() const {
    return utf8(first_->text());
}

void NewPasswordSheet::confirm() {
    if (Sheet::top_of(window()) != this) return;
    const bool is_empty = first_->text().trimmed().isEmpty();
    if (!is_empty && first_->text() == again_->text()) return leave(1);
    context_.services.prompts.message(is_empty ? shop::message::no_password : shop::message::passwords_differ,
                                      common::Icon::critical);
    again_->clear();
    first_->setFocus();
    first_->selectAll();
}

BadgeSheet::BadgeSheet(QWidget* host, const Context& context, const shop::UserRow& user)
    : Sheet(host, "بطاقة " + qt(user.name)), context_(context) {
    setObjectName("user_badge_sheet");
    set_card_width(560);
    QLabel* text = label(
        "صاحب البطاقة يوافق بها عند الكاشير بدلا من كلمة سره. مرر البطاقة، أو اطلب رقما جديدا "
        "واطبعه.",
        "side");
    text->setWordWrap(true);
    body()->addWidget(text);
    number_ = digits_field("user_badge", static_cast<int>(signin::longest_badge));
    body()->addWidget(captioned("رقم ال&بطاقة", number_));
    QHBoxLayout* row = add_row();
    set_role(foot_button(row, "user_badge_keep", "&موافق  Enter", 2,
                         [this] {
                             if (!number_->text().isEmpty()) leave(1);
                         }),
             "main");
    foot_button(row, "user_badge_draw", "رقم جدي&د", 1,
                [this] { number_->setText(qt(signin::new_badge())); });
    foot_button(row, "user_badge_print", "&طباعة", 1, [this, name = user.name] { print(name); });
    if (user.has_badge)
        set_role(foot_button(row, "user_badge_take", "&سحب البطاقة", 1,
                             [this] {
                                 number_->clear();
                                 leave(1);
                             }),
                 "stop");
    foot_button(row, "user_badge_back", "ر&جوع", 1, [this] { leave(0); });
    connect(number_, &QLineEdit::returnPressed, this, [this] {
        if (!number_->text().isEmpty()) leave(1);
    });
}

// The card is a label with the name and the number as a barcode.
void BadgeSheet::print(const std::string& name) {
    if (Sheet::top_of(window()) != this) return;
    if (!signin::read_badge(scanned()))
        return context_.services.prompts.message(shop::message::no_badge, common::Icon::critical);
    guarded(context_.services, "PrintBadge", [&] {
        printing::LabelJob card;
        card.paper = printing::label_papers().front();
        printing::Label label;
        label.shop = context_.session.settings.aname;
        label.name = name;
        label.barcode = scanned();
        card.labels = {label};
        context_.reports.print_labels(card);
    });
}

std::string BadgeSheet::scanned() const {
    return utf8(number_->text().trimmed());
}

}  // namespace ui
