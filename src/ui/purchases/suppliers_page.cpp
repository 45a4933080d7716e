#include "ui/purchases/suppliers_page.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "common/numbers.h"
#include "common/search.h"
#include "ui/printing/report_foot.h"
#include "ui/purchases/supplier_sheet.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/list_table.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

// Number, name, telephone, what he is owed.
constexpr std::array<std::string_view, 4> supplier_headings{"كود", "المورد", "التليفون", "المستحق له"};

std::array<std::string, 4> cells_of(const purchases::SupplierRow& row) {
    return {std::to_string(row.code), row.name, row.phone, row.balance.text()};
}

printing::Report paper_of(const std::vector<purchases::SupplierRow>& rows, const signin::Session& session) {
    printing::Report report = printing::headed("suppliers", session);
    report.title = "أرصدة الموردين";
    for (std::size_t column = 0; column < supplier_headings.size(); ++column)
        report.columns.push_back({std::string(supplier_headings[column]),
                                  column == 3 ? printing::Align::end : printing::Align::start,
                                  column == 1 ? 3.0 : 1.2});
    common::Amount sum;
    for (const auto& row : rows) {
        const auto cells = cells_of(row);
        report.rows.emplace_back(cells.begin(), cells.end());
        sum += row.balance;
    }
    report.totals = {{"المستحق للموردين", sum.text()}};
    return report;
}

}  // namespace

SuppliersPage::SuppliersPage(const Context& context)
    : Page("suppliers_page"), context_(context), pause_([this] { narrow(); }) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(px(10));
    column->addWidget(label("الموردون", "title"));
    search_ = text_field("suppliers_search");
    set_hint(search_, "كود أو جزء من الاسم");
    column->addWidget(captioned("&بحث", search_));
    table_ = new ListTable("suppliers_list", text_list(supplier_headings), 1);
    column->addWidget(table_, 1);
    note_ = label({}, "side", "suppliers_note");
    column->addWidget(note_);
    auto* row = new QHBoxLayout;
    row->setSpacing(px(8));
    const auto button = [&](const char* name, const QString& caption, void (SuppliersPage::*action)()) {
        QPushButton* made = foot_button(row, name, caption, 0, [this, action] { (this->*action)(); });
        made->setMinimumHeight(px(least_target));
        return made;
    };
    set_role(button("suppliers_statement", "كشف &حساب", &SuppliersPage::show_statement), "main");
    button("suppliers_edit", "تع&ديل", &SuppliersPage::edit);
    button("suppliers_new", "إ&ضافة مورد", &SuppliersPage::add);
    row->addStretch(1);
    add_report_buttons(
        row, "suppliers", context_, [this] { return paper_of(suppliers_, context_.session); }, note_);
    column->addLayout(row);
    connect(search_, &QLineEdit::textChanged, this, [this] { pause_.begin(); });
    connect(search_, &QLineEdit::returnPressed, this, [this] {
        pause_.end();
        table_->setFocus();
    });
    connect(table_, &ListTable::left_upwards, search_, qOverload<>(&QWidget::setFocus));
    connect(table_, &ListTable::row_taken, this, [this] { show_statement(); });
}

void SuppliersPage::open() {
    suppliers_ = purchases::list_suppliers(context_.connection);
    table_->say_when_empty(suppliers_.empty() ? "لا يوجد موردون · أضف أول مورد بالزر أسفل القائمة"
                                              : "لا يوجد ما يطابق البحث · اكتب جزءا أقصر من الاسم");
    std::vector<QStringList> rows;
    common::Amount sum;
    for (const auto& supplier : suppliers_) {
        rows.push_back(text_list(cells_of(supplier), {0, 2, 3}));
        sum += supplier.balance;
    }
    const int chosen_row = table_->current_row();
    table_->show_rows(std::move(rows));
    note_->setText("عدد الموردين " + figure(static_cast<qlonglong>(suppliers_.size())) + "، المستحق لهم " +
                   figure(sum.text()));
    narrow();
    if (chosen_row >= 0 && chosen_row < static_cast<int>(suppliers_.size())) table_->choose_row(chosen_row);
}

void SuppliersPage::narrow() {
    const std::string typed = utf8(search_->text().trimmed());
    const auto code = common::parse_integer(typed);
    const std::vector<std::string> words = common::search_words(typed);
    table_->narrow([&](int row) {
        const auto& supplier = suppliers_[static_cast<std::size_t>(row)];
        return supplier.code == code ||
               common::contains_words(common::folded(supplier.name + "\n" + supplier.phone), words);
    });
}

const purchases::SupplierRow* SuppliersPage::chosen() const {
    const int row = table_->current_row();
    return row < 0 ? nullptr : &suppliers_[static_cast<std::size_t>(row)];
}

void SuppliersPage::add() {
    SupplierSheet sheet(this, context_);
    if (!guarded(context_.services, "NewSupplier", [&] { sheet.open_new(); }) || sheet.run() != 1) return;
    guarded(context_.services, "Suppliers", [&] { open(); });
}

void SuppliersPage::edit() {
    const auto* supplier = chosen();
    if (supplier == nullptr) return;
    SupplierSheet sheet(this, context_);
    bool opened = false;
    guarded(context_.services, "EditSupplier", [&] { opened = sheet.open_edit(supplier->code); });
    if (opened && sheet.run() == 1) guarded(context_.services, "Suppliers", [&] { open(); });
}

void SuppliersPage::show_statement() {
    const auto* supplier = chosen();
    if (supplier == nullptr) return;
    SupplierStatementSheet sheet(this, context_, supplier->code, supplier->name);
    if (sheet.open()) sheet.run();
}

void SuppliersPage::take_focus() {
    search_->setFocus();
}

}  // namespace ui
