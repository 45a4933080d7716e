#include "ui/accounts/account_statement_screen.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>
#include <algorithm>

#include "accounts/messages.h"
#include "common/numbers.h"
#include "printing/report_printer.h"
#include "signin/session.h"
#include "ui/accounts/statement_model.h"
#include "ui/printing/reports.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/form_fields.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

printing::Report report_of(const accounts::AccountStatement& statement, const signin::Session& session) {
    printing::Report report = printing::headed("account", session);
    report.title = "كشف حساب عميل";
    report.captions = {{"العميل", statement.customer_name()},
                       {"كود", std::to_string(statement.customer.value_or(0))},
                       {"من تاريخ", common::date_text(statement.start)},
                       {"إلى تاريخ", common::date_text(statement.end)}};
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
    report.totals = {{"رصيد سابق", common::format_amount(statement.brought_forward())},
                     {"إجمالي مدين", common::format_amount(statement.debits())},
                     {"إجمالي دائن", common::format_amount(statement.credits())},
                     {"الرصيد", common::format_amount(statement.closing())}};
    return report;
}

Form39::Form39(QWidget* host, const Context& context)
    : Sheet(host), context_(context), logic_(context.connection, context.services) {
    setObjectName("Form39");
    body()->setContentsMargins(px(22), px(14), px(22), px(16));
    body()->setSpacing(px(10));
    body()->addWidget(build_choices());
    body()->addWidget(build_sums());
    model_ = new StatementModel(this);
    table_ = new QTableView;
    table_->setObjectName("statement_rows");
    table_->setModel(model_);
    set_role(table_, "sheet");
    table_->setSelectionBehavior(QAbstractItemView::SelectRows);
    table_->setSelectionMode(QAbstractItemView::SingleSelection);
    table_->setTabKeyNavigation(false);
    table_->setShowGrid(false);
    table_->setWordWrap(false);
    table_->installEventFilter(this);
    table_->verticalHeader()->hide();
    table_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table_->verticalHeader()->setDefaultSectionSize(px(36));
    QHeaderView* header = table_->horizontalHeader();
    header->setSectionsClickable(false);
    header->setHighlightSections(false);
    header->setSectionResizeMode(QHeaderView::Fixed);
    for (const auto& [column, width] : {std::pair(0, 120), {1, 125}, {2, 125}, {3, 135}, {5, 200}})
        header->resizeSection(column, px(width));
    header->setSectionResizeMode(StatementModel::description, QHeaderView::Stretch);
    body()->addWidget(table_, 1);
    row_text_ = label({}, "side");
    row_text_->setObjectName("statement_row_text");
    row_text_->setWordWrap(true);
    body()->addWidget(row_text_);
    connect(table_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& now) { show_row_text(now.row()); });
    empty_ = label("اختر العميل والمدة ثم اضغط عرض", "plain");
    empty_->setObjectName("statement_empty");
    empty_->setAlignment(Qt::AlignCenter);
    body()->addWidget(empty_, 1);
    body()->addWidget(build_foot());
}

QWidget* Form39::build_choices() {
    auto* bar = new QWidget;
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(px(12));
    row->addWidget(label("كشف حساب عميل", "title"), 0, Qt::AlignBottom);
    row->addSpacing(px(8));
    customer_ = choice_list("statement_customer");
    start_ = moment_field("statement_start");
    end_ = moment_field("statement_end");
    start_->setFixedWidth(px(130));
    end_->setFixedWidth(px(130));
    row->addWidget(captioned("ال&عميل", customer_), 1);
    row->addWidget(captioned("&من تاريخ", start_));
    row->addWidget(captioned("إ&لى تاريخ", end_));
    const auto button = [&](const char* name, const QString& caption, const char* role, auto action) {
        auto* made = new QPushButton(caption);
        made->setObjectName(name);
        made->setFixedHeight(px(field_height));
        made->setAutoDefault(true);
        if (role != nullptr) set_role(made, role);
        connect(made, &QPushButton::clicked, this, action);
        row->addWidget(made, 0, Qt::AlignBottom);
        return made;
    };
    QPushButton* show = button("statement_show", "عر&ض", "main", [this] { show_statement(); });
    button("statement_arrears", "المت&أخرات", nullptr, [this] { check_arrears(); });
    enter_leads_on({customer_, start_, end_, show});
    return bar;
}

QWidget* Form39::build_sums() {
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

QWidget* Form39::build_foot() {
    auto* bar = new QWidget;
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(px(10));
    note_ = label({}, "side");
    note_->setObjectName("account_note");
    row->addWidget(note_, 1);
    const auto button = [&](const char* name, const QString& caption, const char* role, auto action) {
        QPushButton* made = foot_button(row, name, caption, 0, [this, action] { (this->*action)(); });
        made->setMinimumHeight(px(40));
        if (role != nullptr) set_role(made, role);
        outputs_ << made;
    };
    button("account_print", "&طباعة", "main", &Form39::print);
    button("account_preview", "معاي&نة", nullptr, &Form39::preview);
    outputs_ << foot_button(row, "account_pdf", "ملف P&DF", 0, [this] { keep(Form::pdf); });
    outputs_ << foot_button(row, "account_csv", "ملف &CSV", 0, [this] { keep(Form::csv); });
    foot_button(row, "account_back", "&رجوع", 0, [this] { leave(0); })->setMinimumHeight(px(40));
    for (QPushButton* made : outputs_)
        made->setMinimumHeight(px(40));
    return bar;
}

void Form39::open(std::optional<std::int64_t> customer) {
    logic_.open();
    fill_choices(customer_, logic_.customers(), customer);
    start_->setText(qt(common::date_text(logic_.start)));
    end_->setText(qt(common::date_text(logic_.end)));
    logic_.customer = customer;
    if (customer) logic_.show();
    keep_shown();
    repaint_statement();
}

bool Form39::read_fields() {
    const auto start = date_in(start_, context_.services.prompts);
    if (!start) return false;
    const auto end = date_in(end_, context_.services.prompts);
    if (!end) return false;
    logic_.customer = choice_of(customer_);
    logic_.start = *start;
    logic_.end = *end;
    return true;
}

void Form39::show_statement() {
    if (Sheet::top_of(window()) != this || !read_fields()) return;
    bool shown = false;
    guarded(context_.services, "AccountStatement", [&] { shown = logic_.show(); });
    if (shown) {
        keep_shown();
        repaint_statement();
        table_->setFocus();
    } else {
        (logic_.customer ? static_cast<QWidget*>(start_) : customer_)->setFocus();
    }
}

void Form39::keep_shown() {
    paper_ = report_of(logic_, context_.session);
    shown_customer_ = logic_.customer.value_or(0);
}

void Form39::repaint_statement() {
    const bool shown = !logic_.rows().empty();
    model_->show(logic_.rows());
    const double sums[] = {logic_.brought_forward(), logic_.debits(), logic_.credits(), logic_.closing()};
    for (std::size_t i = 0; i < std::size(sums); ++i)
        sums_[i]->setText(shown ? qt(common::format_amount(sums[i])) : QString("—"));
    table_->setVisible(shown);
    empty_->setVisible(!shown);
    if (shown) {
        table_->setCurrentIndex(model_->index(0, 0));
        // Besides the movements there are the balances before and after them.
        note_->setText("عدد الحركات " + QString::number(logic_.rows().size() - 2));
    }
    for (QPushButton* output : outputs_)
        output->setEnabled(shown);
}

// What the columns have no room for, in full.
void Form39::show_row_text(int row) {
    QStringList texts;
    for (int column = StatementModel::description; column < model_->columnCount() && row >= 0; ++column) {
        const QString text = model_->index(row, column).data().toString();
        if (table_->fontMetrics().horizontalAdvance(text) > table_->columnWidth(column) - px(18))
            texts << model_->headerData(column, Qt::Horizontal, Qt::DisplayRole)
                             .toString()
                             .remove(QChar(0x640)) +
                         ": " + text;
    }
    row_text_->setText(texts.join("\n"));
    row_text_->setVisible(!texts.isEmpty());
}

void Form39::check_arrears() {
    if (Sheet::top_of(window()) != this || !read_fields()) return;
    guarded(context_.services, "Arrears", [&] { logic_.check_arrears(); });
    (logic_.customer ? static_cast<QWidget*>(end_) : customer_)->setFocus();
}

void Form39::print() {
    if (Sheet::top_of(window()) != this) return;
    guarded(context_.services, "PrintAccount", [&] {
        if (context_.reports.print(paper_)) note_->setText(printed_text(context_));
    });
}

void Form39::preview() {
    guarded(context_.services, "PreviewAccount", [&] { context_.reports.preview(paper_); });
}

void Form39::keep(Form form) {
    if (Sheet::top_of(window()) != this) return;
    guarded(context_.services, "KeepAccount", [&] {
        const common::Moment now = context_.services.clock.now();
        std::string moment = common::moment_text(now);
        std::replace(moment.begin(), moment.end(), ' ', '-');
        std::erase_if(moment, [](char c) { return c == '/' || c == ':'; });
        const auto folder = context_.session.program_folder / "Receipts";
        std::filesystem::create_directories(folder);
        const auto file = folder / ("account-" + std::to_string(shown_customer_) + "-" + moment +
                                    (form == Form::csv ? ".csv" : ".pdf"));
        const bool kept = form == Form::csv ? context_.reports.save_csv(paper_, file)
                                            : context_.reports.save_pdf(paper_, file);
        if (kept) note_->setText("تم حفظ الملف \u200e" + qt("Receipts/" + file.filename().string()));
    });
}

void Form39::take_focus() {
    if (table_->isVisible()) {
        table_->setFocus();
    } else {
        customer_->setFocus();
    }
}

bool Form39::eventFilter(QObject* watched, QEvent* event) {
    if (watched == table_ && event->type() == QEvent::KeyPress) {
        // To the first and the last row, not to the first and the last column.
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Home || key == Qt::Key_End) {
            // Not selectRow: from right to left it finds no column at the view's edge, and so no row.
            table_->setCurrentIndex(model_->index(key == Qt::Key_Home ? 0 : model_->rowCount() - 1, 0));
            return true;
        }
    }
    return Sheet::eventFilter(watched, event);
}

void Form39::resizeEvent(QResizeEvent* event) {
    Sheet::resizeEvent(event);
    card()->setFixedSize(std::min(width() - px(24), px(1500)), std::min(height() - px(24), px(900)));
}

}  // namespace ui
