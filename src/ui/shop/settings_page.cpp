#include "ui/shop/settings_page.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QVBoxLayout>

#include "ui/shop/record_form.h"
#include "ui/widgets/choices.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/list_table.h"
#include "ui/widgets/sheet.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

constexpr auto not_set = "غير محدد";

// Figures and port names are written from left to right.
bool runs_left(const QString& text) {
    return !text.isEmpty() && text.at(0).unicode() < 0x100;
}

}  // namespace

SettingsPage::SettingsPage(const Context& context)
    : Page("settings_page"),
      context_(context),
      logic_(context.connection, context.session, context.services) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(px(8));
    column->addWidget(label("إعدادات المحل", "title"));
    settings_ = new ListTable("settings_list", {"المجموعة", "الإعداد", "القيمة"}, 2);
    settings_->verticalHeader()->setDefaultSectionSize(px(least_target));
    settings_->set_look([](int, int at) { return at == 0 ? CellLook::dimmed : CellLook::plain; });
    column->addWidget(settings_, 1);
    caption_ = label({}, "total", "setting_caption");
    column->addWidget(caption_);
    explained_ = label({}, "side", "setting_explained");
    explained_->setWordWrap(true);
    explained_->setMinimumHeight(px(46));
    explained_->setAlignment(Qt::AlignTop);
    column->addWidget(explained_);
    auto* row = new QHBoxLayout;
    row->setSpacing(px(8));
    fields_ = new QStackedWidget;
    fields_->setFixedHeight(px(field_height));
    text_ = text_field("setting_value");
    list_ = choice_list("setting_choice");
    fields_->addWidget(text_);
    fields_->addWidget(list_);
    row->addWidget(fields_, 1);
    set_role(foot_button(row, "setting_save", "&حفظ", 0, [this] { save(); }), "main");
    unset_ = foot_button(row, "setting_unset", "ب&دون قيمة", 0, [this] { unset(); });
    column->addLayout(row);
    said_ = label({}, "side", "settings_said");
    column->addWidget(said_);
    connect(settings_, &ListTable::row_chosen, this, [this](int at) {
        if (at < 0 || at == shown_) return;
        if (may_leave())
            show_setting(at);
        else
            settings_->choose_row(shown_);
    });
    connect(settings_, &ListTable::row_taken, this, [this] { fields_->currentWidget()->setFocus(); });
    connect(text_, &QLineEdit::returnPressed, this, &SettingsPage::save);
}

void SettingsPage::open() {
    logic_.open();
    said_->clear();
    show_values(shown_ < 0 ? 0 : shown_);
}

void SettingsPage::take_focus() {
    settings_->setFocus();
}

void SettingsPage::show_values(int at) {
    std::vector<QStringList> rows;
    std::string_view group;
    for (const shop::SettingValue& value : logic_.values()) {
        QString text = value.shown.empty() ? QString(not_set) : qt(value.shown);
        if (runs_left(text)) text = figure(text);
        // The group is shown once, beside its first setting.
        rows.push_back({value.setting.group == group ? QString() : qt(value.setting.group),
                        qt(value.setting.caption), text});
        group = value.setting.group;
    }
    shown_ = -1;
    settings_->show_rows(std::move(rows));
    settings_->choose_row(at);
    show_setting(at);
}

void SettingsPage::show_setting(int at) {
    shown_ = at;
    const shop::SettingValue& value = logic_.values()[static_cast<std::size_t>(at)];
    caption_->setText(qt(value.setting.caption));
    explained_->setText(qt(value.setting.explained));
    unset_->setVisible(value.setting.till != nullptr);
    if (value.setting.is_choice()) {
        fill_choices(list_, logic_.choices(value.setting), logic_.chosen(value));
        fields_->setCurrentWidget(list_);
    } else {
        text_->setText(qt(value.stored));
        text_->setLayoutDirection(runs_left(text_->text()) ? Qt::LeftToRight : Qt::RightToLeft);
        fields_->setCurrentWidget(text_);
    }
    before_ = typed();
}

QString SettingsPage::typed() const {
    if (fields_->currentWidget() == text_) return text_->text();
    const auto code = choice_of(list_);
    return code ? QString::number(*code) : QString();
}

bool SettingsPage::may_leave() {
    return shown_ < 0 || typed() == before_ || context_.services.prompts.question(ask_drop);
}

void SettingsPage::save() {
    if (Sheet::top_of(window()) == nullptr && shown_ >= 0) store(typed());
}

void SettingsPage::unset() {
    if (Sheet::top_of(window()) == nullptr && shown_ >= 0) store({});
}

void SettingsPage::store(const QString& value) {
    guarded(context_.services, "SaveSetting", [&] {
        const shop::SettingValue read = logic_.values()[static_cast<std::size_t>(shown_)];
        const auto refusal = logic_.save(read, utf8(value));
        if (refusal) {
            if (!refusal->text.empty())
                context_.services.prompts.message(refusal->text, common::Icon::critical);
            if (refusal->field.empty())
                show_values(shown_);
            else
                fields_->currentWidget()->setFocus();
            return;
        }
        show_values(shown_);
        said_->setText("تم الحفظ: " + qt(read.setting.caption));
        settings_->setFocus();
    });
}

}  // namespace ui
