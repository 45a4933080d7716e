#include "ui/accounts/account_statement_screen.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "printing/report_printer.h"
#include "signin/session.h"
#include "ui/printing/reports.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/list_table.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

printing::Report report_of(const accounts::AccountStatement& statement, const signin::Session& session) {
    printing::Report report = printing::headed("account", session);
    report.title = "كشف حساب عميل";
    report.captions = {{"العميل", statement.customer_name()},
                       {"كود", std::to_string(statement.fields.customer.value_or(0))},
                       {"من تاريخ", common::date_text(statement.fields.start)},
                       {"إلى تاريخ", common::date_text(statement.fields.end)}};
    const double shares[] = {1.2, 1.2, 1.2, 1.3, 3, 1.8};
    for (std::size_t column = 0; column < accounts::statement_headings.size(); ++column) {
        const bool amount = column >= 1 && column <= 3;
        report.columns.push_back({std::string(accounts::statement_headings[column]),
                                  amount ? printing::Align::end : printing::Align::start, shares[column]});
    }
    for (const accounts::StatementRow& row : statement.rows()) {
        const auto cells = row.cells();
        report.rows.emplace_back(cells.begin(), cells.end());
    }
    report.totals = {{"رصيد سابق", statement.brought_forward().text()},
                     {"إجمالي مدين", statement.debits().text()},
                     {"إجمالي دائن", statement.credits().text()},
                     {"الرصيد", statement.closing().text()}};
    return report;
}

namespace {

constexpr int balance = 3;
constexpr int description = 4;

}  // namespace

AccountStatementScreen::AccountStatementScreen(QWidget* host, const Context& context)
    : Sheet(host), context_(context), logic_(context.connection, context.services) {
    setObjectName("Form39");
    body()->setContentsMargins(px(22), px(14), px(22), px(16));
    body()->setSpacing(px(10));
    body()->addWidget(build_choices());
    body()->addWidget(build_sums());
    table_ = new ListTable("statement_rows", text_list(accounts::statement_headings), description);
    // The balance, and the rows that hold nothing else: brought forward, and closing.
    table_->set_look([this](int row, int column) {
        const bool dated = !table_->model()->index(row, 0).data().toString().isEmpty();
        return column == balance || !dated ? CellLook::strong : CellLook::plain;
    });
    body()->addWidget(table_, 1);
    row_text_ = label({}, "side");
    row_text_->setObjectName("statement_row_text");
    row_text_->setWordWrap(true);
    body()->addWidget(row_text_);
    connect(table_, &ListTable::row_chosen, this, &AccountStatementScreen::show_row_text);
    empty_ = label("اختر العميل والمدة ثم اضغط عرض", "plain");
    empty_->setObjectName("statement_empty");
    empty_->setAlignment(Qt::AlignCenter);
    body()->addWidget(empty_, 1);
    body()->addWidget(build_foot());
}

QWidget* AccountStatementScreen::build_choices() {
    auto* bar = new QWidget;
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(px(12));
    row->addWidget(label("كشف حساب عميل", "title"), 0, Qt::AlignBottom);
    row->addSpacing(px(8));
    FieldGrid grid(1, 0);
    grid.layout()->setHorizontalSpacing(px(12));
    form_.add(accounts::statement_form(), grid);
    show_codes(form_.list("statement_customer"), "كود", "الاسم");
    for (const char* date : {"statement_start", "statement_end"})
        form_.field(date)->setFixedWidth(px(130));
    row->addLayout(grid.layout(), 1);
    QPushButton* show = field_button(row, "statement_show", "عر&ض", [this] { show_statement(); });
    set_role(show, "main");
    field_button(row, "statement_arrears", "المتأ&خرات", [this] { check_arrears(); });
    form_.lead_on(accounts::statement_form(), show);
    return bar;
}

QWidget* AccountStatementScreen::build_sums() {
    auto* bar = new QWidget;
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(px(24));
    const std::pair<const char*, const char*> sums[] = {{"statement_forward", "رصيد سابق"},
                                                        {"statement_debits", "إجمالي مدين"},
                                                        {"statement_credits", "إجمالي دائن"},
                                                        {"statement_closing", "الرصيد الحالي"}};
    for (std::size_t i = 0; i < std::size(sums); ++i) {
        auto* pair = new QHBoxLayout;
        pair->setSpacing(px(8));
        pair->addWidget(label(sums[i].second, "side"));
        sums_[i] = new Figure(sums[i].first, "figure");
        pair->addWidget(sums_[i]);
        pair->addStretch(1);
        row->addLayout(pair, 1);
    }
    return bar;
}

QWidget* AccountStatementScreen::build_foot() {
    auto* bar = new QWidget;
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(px(10));
    note_ = label({}, "side");
    note_->setObjectName("account_note");
    row->addWidget(note_, 1);
    const auto button = [&](const char* name, const QString& caption, const char* role, auto action) {
        QPushButton* made = foot_button(row, name, caption, 0, [this, action] { (this->*action)(); });
        made->setMinimumHeight(px(least_target));
        if (role != nullptr) set_role(made, role);
        outputs_ << made;
    };
    button("account_print", "&طباعة", "main", &AccountStatementScreen::print);
    button("account_preview", "معاي&نة", nullptr, &AccountStatementScreen::preview);
    outputs_ << foot_button(row, "account_pdf", "ملف P&DF", 0, [this] { keep(ReportFile::pdf); });
    outputs_ << foot_button(row, "account_csv", "ملف &CSV", 0, [this] { keep(ReportFile::csv); });
    foot_button(row, "account_back", "&رجوع", 0, [this] { leave(0); })->setMinimumHeight(px(least_target));
    for (QPushButton* made : outputs_)
        made->setMinimumHeight(px(least_target));
    return bar;
}

void AccountStatementScreen::open(std::optional<std::int64_t> customer) {
    logic_.open();
    fill_choices(form_.list("statement_customer"), logic_.customers(), {});
    logic_.fields.customer = customer;
    form_.show(logic_.fields);
    if (customer) form_.accept(logic_.show(), context_.services.prompts);
    keep_shown();
    repaint_statement();
}

void AccountStatementScreen::show_statement() {
    if (Sheet::top_of(window()) != this) return;
    if (!form_.save(context_.services, "AccountStatement", logic_.fields, [this] { return logic_.show(); }))
        return;
    keep_shown();
    repaint_statement();
    table_->setFocus();
}

void AccountStatementScreen::keep_shown() {
    paper_ = report_of(logic_, context_.session);
    shown_customer_ = logic_.fields.customer.value_or(0);
}

void AccountStatementScreen::repaint_statement() {
    const bool shown = !logic_.rows().empty();
    std::vector<QStringList> rows;
    rows.reserve(paper_.rows.size());
    for (const auto& cells : paper_.rows)
        rows.push_back(text_list(cells, {0, 1, 2, balance}));
    table_->show_rows(std::move(rows));
    const common::Amount sums[] = {logic_.brought_forward(), logic_.debits(), logic_.credits(),
                                   logic_.closing()};
    for (std::size_t i = 0; i < std::size(sums); ++i)
        sums_[i]->setText(shown ? qt(sums[i].text()) : QString("—"));
    table_->setVisible(shown);
    empty_->setVisible(!shown);
    show_row_text(table_->current_row());
    if (shown) {
        // Two of the rows are balances.
        note_->setText("عدد الحركات " + QString::number(logic_.rows().size() - 2));
    }
    for (QPushButton* output : outputs_)
        output->setEnabled(shown);
}

// Shows in full what does not fit into its column.
void AccountStatementScreen::show_row_text(int row) {
    QStringList texts;
    for (int column = description; column < table_->model()->columnCount() && row >= 0; ++column) {
        const QString text = table_->model()->index(row, column).data().toString();
        if (table_->fontMetrics().horizontalAdvance(text) > table_->columnWidth(column) - px(18))
            texts << table_->model()
                             ->headerData(column, Qt::Horizontal)
                             .toString()
                             .remove(QChar(0x640))
                             .replace('\n', ' ') +
                         ": " + text;
    }
    row_text_->setText(texts.join("\n"));
    row_text_->setVisible(!texts.isEmpty());
}

void AccountStatementScreen::check_arrears() {
    if (Sheet::top_of(window()) != this) return;
    if (form_.save(context_.services, "Arrears", logic_.fields, [this] { return logic_.check_arrears(); }))
        form_.field("statement_end")->setFocus();
}

void AccountStatementScreen::print() {
    if (Sheet::top_of(window()) != this) return;
    guarded(context_.services, "PrintAccount", [&] {
        if (context_.reports.print(paper_)) note_->setText(printed_text(context_));
    });
}

void AccountStatementScreen::preview() {
    if (Sheet::top_of(window()) != this) return;
    guarded(context_.services, "PreviewAccount", [&] {
        context_.reports.preview(paper_);
        if (const QString kept = kept_text(context_); !kept.isEmpty()) note_->setText(kept);
    });
}

void AccountStatementScreen::keep(ReportFile kind) {
    if (Sheet::top_of(window()) != this) return;
    guarded(context_.services, "KeepAccount", [&] {
        printing::Report named = paper_;
        named.name += '-';
        named.name += std::to_string(shown_customer_);
        if (const QString kept = keep_report(context_, named, kind); !kept.isEmpty()) note_->setText(kept);
    });
}

void AccountStatementScreen::take_focus() {
    if (table_->isVisible()) {
        table_->setFocus();
    } else {
        form_.field("statement_customer")->setFocus();
    }
}

void AccountStatementScreen::resizeEvent(QResizeEvent* event) {
    Sheet::resizeEvent(event);
    card()->setFixedSize(std::min(width() - px(24), px(1500)), std::min(height() - px(24), px(900)));
}

}  // namespace ui
