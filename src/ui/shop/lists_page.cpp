#include "ui/shop/lists_page.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "common/search.h"
#include "ui/shop/period_prices_sheet.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/list_table.h"
#include "ui/widgets/sheet.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

// "Delete …?"
constexpr std::string_view ask_erase = "حذف ";

constexpr int lists_width = 190;
constexpr int fields_in_a_row = 2;

QString plain(const char* caption) {
    return QString(caption).remove('&');
}

}  // namespace

ListsPage::ListsPage(const Context& context)
    : Page("lists_page"),
      context_(context),
      logic_(context.connection, context.session, context.services),
      pause_([this] {
          const auto words = common::search_words(utf8(search_->text()));
          rows_->narrow([&](int row) {
              const auto cells = logic_.cells(logic_.rows()[static_cast<std::size_t>(row)]);
              std::string text;
              for (const std::string& cell : cells)
                  text += cell + ' ';
              return common::contains_words(common::folded(text), words);
          });
      }) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(px(12));
    lists_ = new ListTable("lists_names", {"القائمة"}, 0);
    lists_->verticalHeader()->setDefaultSectionSize(px(least_target));
    lists_->setFixedWidth(px(lists_width));
    std::vector<QStringList> names;
    for (const shop::ListDescription& list : shop::lists())
        names.push_back({qt(list.caption)});
    lists_->show_rows(std::move(names));
    row->addWidget(lists_);
    row->addWidget(build_rows(), 1);
    connect(lists_, &ListTable::row_chosen, this, [this](int at) { choose_list(at); });
    connect(lists_, &ListTable::row_taken, this, [this] { rows_->setFocus(); });
}

QWidget* ListsPage::build_rows() {
    auto* side = new QWidget;
    column_ = new QVBoxLayout(side);
    column_->setContentsMargins(0, 0, 0, 0);
    column_->setSpacing(px(8));
    auto* head = new QHBoxLayout;
    title_ = label({}, "title", "lists_title");
    head->addWidget(title_, 1);
    search_ = text_field("lists_search");
    search_->setFixedHeight(px(least_target));
    set_hint(search_, "بحث في القائمة");
    head->addWidget(search_, 1);
    column_->addLayout(head);
    connect(search_, &QLineEdit::textChanged, this, [this] { pause_.begin(); });
    said_ = label({}, "side", "lists_said");
    said_->setWordWrap(true);
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(px(8));
    add_ = foot_button(buttons, "list_add", "إ&ضافة", 1, [this] { add(); });
    save_ = foot_button(buttons, "list_save", "&حفظ", 1, [this] { save(); });
    set_role(save_, "main");
    erase_ = foot_button(buttons, "list_erase", "ح&ذف", 1, [this] { erase(); });
    prices_ = foot_button(buttons, "list_prices", "&أسعار الفترة", 1, [this] { open_prices(); });
    column_->addWidget(said_);
    column_->addLayout(buttons);
    return side;
}

void ListsPage::open() {
    logic_.open(shop::lists()[static_cast<std::size_t>(shown_list_)]);
    show_list();
}

void ListsPage::take_focus() {
    lists_->setFocus();
}

bool ListsPage::is_typed_in() const {
    auto values = read_.values;
    return form_ != nullptr && (form_->read(values) || values != read_.values);
}

bool ListsPage::may_leave() {
    return !is_typed_in() || context_.services.prompts.question(ask_drop);
}

void ListsPage::choose_list(int at) {
    if (at < 0 || at == shown_list_ || form_ == nullptr) return;
    if (!may_leave()) {
        lists_->choose_row(shown_list_);
        return;
    }
    shown_list_ = at;
    guarded(context_.services, "OpenList", [&] { open(); });
}

// The table and the form are built anew, since every list has its own columns and fields.
void ListsPage::show_list() {
    const shop::ListDescription& list = logic_.list();
    title_->setText(qt(list.caption));
    search_->clear();
    said_->clear();
    QStringList headings{"كود"};
    for (const common::FieldDescription& field : list.fields)
        headings << plain(field.caption);
    delete rows_;
    rows_ = new ListTable("lists_rows", headings, 1);
    rows_->verticalHeader()->setDefaultSectionSize(px(least_target));
    rows_->say_when_empty("القائمة فارغة · اضغط إضافة");
    column_->insertWidget(1, rows_, 1);
    connect(rows_, &ListTable::row_chosen, this, [this](int at) { choose_row(at); });
    connect(rows_, &ListTable::row_taken, this, [this] { form_->field("list_name")->setFocus(); });
    connect(rows_, &ListTable::left_upwards, search_, qOverload<>(&QWidget::setFocus));
    prices_->setVisible(list.name == "periods");
    build_form();
    show_rows(0, 0);
    setTabOrder(lists_, search_);
    setTabOrder(search_, rows_);
    QWidget* former = rows_;
    for (const common::FieldDescription& field : list.fields) {
        setTabOrder(former, form_->field(field.name));
        former = form_->field(field.name);
    }
    for (QWidget* button : {add_, save_, erase_, prices_}) {
        setTabOrder(former, button);
        former = button;
    }
}

void ListsPage::build_form() {
    form_.reset();
    delete fields_;
    fields_ = new QWidget;
    FieldGrid grid(fields_in_a_row, 6);
    form_ = std::make_unique<RecordForm>();
    read_ = {};  // the new form shows no row yet, not even the one that was chosen
    form_->add(logic_.list().fields, grid);
    form_->set_row_height(least_target);
    if (!logic_.list().parent.empty()) fill_choices(form_->list("list_parent"), logic_.parents(), {});
    fields_->setLayout(grid.layout());
    column_->insertWidget(2, fields_);
    form_->lead_on(save_);
}

void ListsPage::show_rows(std::int64_t code, std::int64_t parent) {
    std::vector<QStringList> texts;
    int chosen = -1;
    for (const shop::ListRow& row : logic_.rows()) {
        if (row.code == code && row.parent == parent) chosen = static_cast<int>(texts.size());
        texts.push_back(text_list(logic_.cells(row), {0}));
    }
    rows_->show_rows(std::move(texts));
    pause_.search();
    if (chosen >= 0) rows_->choose_row(chosen);
    if (logic_.rows().empty()) show_row(logic_.new_row());
}

void ListsPage::show_row(const shop::ListRow& row) {
    read_ = row;
    form_->show(row.values);
    // The parts of the key cannot be changed.
    if (logic_.list().is_counted_in_parent()) set_fixed(form_->field("list_parent"), row.code != 0);
    const bool is_new = row.code == 0;
    save_->setText(is_new ? "&حفظ الجديد" : "&حفظ");
    for (QPushButton* button : {erase_, prices_})
        button->setEnabled(!is_new);
}

void ListsPage::choose_row(int at) {
    if (at < 0 || static_cast<std::size_t>(at) >= logic_.rows().size()) return;
    const shop::ListRow& row = logic_.rows()[static_cast<std::size_t>(at)];
    if (row == read_) return;
    said_->clear();
    show_row(row);
}

void ListsPage::add() {
    if (Sheet::top_of(window()) != nullptr || !may_leave()) return;
    said_->clear();
    show_row(logic_.new_row());
    form_->field("list_name")->setFocus();
}

bool ListsPage::accept(const std::optional<common::Refusal>& refusal) {
    if (!refusal) return true;
    if (!refusal->text.empty()) form_->refuse(*refusal, context_.services.prompts);
    return false;
}

void ListsPage::save() {
    if (Sheet::top_of(window()) != nullptr) return;
    guarded(context_.services, "SaveList", [&] {
        shop::ListRow row = read_;
        if (!accept(form_->read(row.values))) return;
        const auto refusal = logic_.save(row, read_);
        if (refusal && !refusal->field.empty()) {
            accept(refusal);
            return;
        }
        const bool is_done = accept(refusal);
        if (!refusal || !refusal->text.empty()) show_rows(row.code, row.parent);
        if (!is_done) return;
        said_->setText(QString("تم الحفظ: ") + qt(std::get<std::string>(row.values.front())));
        rows_->setFocus();
    });
}

void ListsPage::erase() {
    if (Sheet::top_of(window()) != nullptr || read_.code == 0) return;
    const std::string name = std::get<std::string>(read_.values.front());
    if (!context_.services.prompts.question(std::string(ask_erase) + name + "؟", common::Icon::exclamation))
        return;
    guarded(context_.services, "DeleteFromList", [&] {
        const auto refusal = logic_.erase(read_);
        if (refusal && refusal->text.empty()) return;
        const bool is_done = accept(refusal);
        show_rows(read_.code, read_.parent);
        if (is_done) said_->setText(QString("تم الحذف: ") + qt(name));
        rows_->setFocus();
    });
}

void ListsPage::open_prices() {
    if (Sheet::top_of(window()) != nullptr || read_.code == 0) return;
    guarded(context_.services, "PeriodPrices", [&] {
        PeriodPricesSheet(this, context_, read_.code, qt(std::get<std::string>(read_.values.front()))).run();
    });
}

}  // namespace ui
