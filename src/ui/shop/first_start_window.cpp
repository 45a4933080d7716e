#include "ui/shop/first_start_window.h"

#include <QDir>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QVBoxLayout>

#include "printing/messages.h"
#include "printing/printer_text.h"
#include "printing/text_receipt.h"
#include "shop/refused.h"
#include "ui/goods/import_rows.h"
#include "ui/printing/file_sheet.h"
#include "ui/widgets/choices.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/list_table.h"
#include "ui/widgets/sheet.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

using shop::FirstStep;

// "Leave without making the shop? What was typed is lost."
constexpr std::string_view ask_leave = "الخروج بدون إنشاء المحل؟ لن يحفظ ما كتبته";
// "The test page was sent."
constexpr std::string_view test_sent = "تم إرسال صفحة التجربة إلى المنفذ ";
// The system's printer is tried from the office, once the shop is there.
constexpr std::string_view test_later =
    "هذه طابعة النظام، وتجرب من شاشة الكاشير بعد إنشاء المحل. التجربة من هنا للطابعات المتصلة بمنفذ";
constexpr auto next_caption = "ال&تالي  Enter";
constexpr auto make_caption = "إن&شاء المحل";
constexpr auto enter_caption = "&دخول المكتب";

}  // namespace

FirstStartWindow::FirstStartWindow(const std::filesystem::path& folder, const common::Services& services,
                                   std::function<void(QWidget&)> show_window)
    : FrontWindow("first_start", "محل جديد", 820),
      services_(services),
      show_window_(std::move(show_window)),
      logic_(folder),
      forms_(shop::first_steps.size()) {
    column()->setSpacing(px(10));
    auto* head = new QHBoxLayout;
    title_ = label({}, "said", "first_title");
    where_ = label({}, "side", "first_where");
    head->addWidget(title_);
    head->addStretch(1);
    head->addWidget(where_);
    column()->addLayout(head);
    explanation_ = label({}, "side", "first_explanation");
    explanation_->setWordWrap(true);
    column()->addWidget(explanation_);
    column()->addWidget(rule());
    steps_ = new QStackedWidget;
    steps_->setMinimumHeight(px(404));
    column()->addWidget(steps_);
    auto* foot = new QHBoxLayout;
    foot->setSpacing(px(10));
    next_ = foot_button(foot, "first_next", next_caption, 2, [this] { next(); });
    set_role(next_, "main");
    back_ = foot_button(foot, "first_back", "السا&بق", 1, [this] { back(); });
    auto* leave_button = foot_button(foot, "first_leave", "&خروج", 1, [this] { give_up(); });
    for (QPushButton* button : {next_, back_, leave_button})
        button->setMinimumHeight(px(50));
    for (const FirstStep step : shop::first_steps)
        steps_->addWidget(step == FirstStep::summary ? build_summary() : build_form(step));
    steps_->addWidget(build_end());
    column()->addLayout(foot);
    show_step(0);
}

QWidget* FirstStartWindow::build_form(FirstStep step) {
    auto* page = new QWidget;
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(px(10));
    if (step == FirstStep::printer) build_printers(page);
    const int columns = step == FirstStep::users ? 3 : 2;
    FieldGrid grid(columns, 8);
    auto& form = forms_[static_cast<std::size_t>(step)];
    form.add(shop::form_of(step), grid);
    form.set_row_height(least_target);
    for (const auto& field : shop::form_of(step))
        if (QLineEdit* line = form.line(field.description.name);
            line != nullptr &&
            std::string_view(field.description.name).find("owner_") != std::string_view::npos)
            line->setEchoMode(QLineEdit::Password);
    column->addLayout(grid.layout());
    if (step == FirstStep::items)
        build_items(page);
    else
        column->addStretch(1);
    form.lead_on(shop::form_of(step), next_);
    form.show(logic_.fields);
    return page;
}

void FirstStartWindow::build_printers(QWidget* page) {
    auto* column = static_cast<QVBoxLayout*>(page->layout());
    ports_ = new ListTable("first_ports", {"المنفذ", "الجهاز", "الحالة"}, 1);
    ports_->verticalHeader()->setDefaultSectionSize(px(least_target));
    offers_ = printing::ports_offered(logic_.printer, logic_.folder());
    std::vector<QStringList> rows;
    for (const printing::PortOffer& offer : offers_) {
        const bool on_port = printing::PrinterChoice{offer.port}.is_text_port();
        rows.push_back({on_port ? figure(offer.port) : QString("طابعة النظام"),
                        offer.device == offer.port ? QString() : figure(offer.device),
                        offer.fault == common::PortFault::none ? "متاح" : "غير متاح"});
    }
    ports_->show_rows(std::move(rows));
    ports_->setMinimumHeight(px(220));
    column->addWidget(ports_, 1);
    connect(ports_, &ListTable::row_taken, this, [this] { next(); });
    auto* row = new QHBoxLayout;
    row->setSpacing(px(10));
    row->addWidget(label("عرض الورق", "side"));
    paper_ = new Segments(
        "first_paper", {{printing::wide_roll.columns, "&80 مم"}, {printing::narrow_roll.columns, "&58 مم"}});
    paper_->set_height(least_target);
    paper_->show_chosen(printing::wide_roll.columns);
    connect(paper_, &Segments::chosen, paper_, &Segments::show_chosen);
    row->addWidget(paper_);
    row->addStretch(1);
    foot_button(row, "first_test", "ت&جربة طباعة", 0, [this] {
        test_printer();
    })->setMinimumHeight(px(least_target));
    column->addLayout(row);
}

void FirstStartWindow::build_items(QWidget* page) {
    auto* column = static_cast<QVBoxLayout*>(page->layout());
    auto* row = new QHBoxLayout;
    row->setSpacing(px(10));
    foot_button(row, "first_items_choose", "اخت&يار ملف", 0, [this] { choose_items(); });
    foot_button(row, "first_items_read", "&قراءة الملف", 0, [this] {
        if (Sheet::top_of(this) == nullptr)
            guarded(services_, "ReadItemsFile", [this] { read_step() && read_items(); });
    });
    items_said_ = label({}, "side", "first_items_said");
    row->addWidget(items_said_, 1);
    column->addLayout(row);
    items_ = new ListTable("first_items", import_headings(), import_stretched);
    items_->say_when_empty("اختر ملفا ثم اقرأه. أول سطر فيه أسماء الأعمدة، مثل كود والاسم وقطاعي");
    column->addWidget(items_, 1);
}

void FirstStartWindow::choose_items() {
    if (Sheet::top_of(this) != nullptr) return;
    QLineEdit* path = forms_[at_].line("first_items_file");
    const QFileInfo typed(path->text().trimmed());
    const QString folder = typed.isAbsolute() ? typed.absolutePath() : QDir::homePath();
    FileSheet sheet(this, csv_choice(), services_.prompts, utf8(folder),
                    [path](const std::filesystem::path& file) {
                        path->setText(qt(file.string()));
                        return true;
                    });
    if (sheet.run() != 1) return;
    guarded(services_, "ReadItemsFile", [this] { read_step() && read_items(); });
}

QWidget* FirstStartWindow::build_summary() {
    auto* page = new QWidget;
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(0, 0, 0, 0);
    summary_ = new QGridLayout;
    summary_->setHorizontalSpacing(px(18));
    summary_->setVerticalSpacing(px(14));
    summary_->setColumnStretch(1, 1);
    column->addLayout(summary_);
    column->addStretch(1);
    return page;
}

QWidget* FirstStartWindow::build_end() {
    auto* page = new QWidget;
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(px(14));
    // The till can sell now; sign in here as the owner; add items, prices, suppliers; rights; copies.
    for (const char* line : {"1 · الكاشير جاهز للبيع: افتح برنامج الكاشير واختر اسم الكاشير وافتح الوردية.",
                             "2 · ادخل المكتب باسم صاحب المحل لإضافة الأصناف والموردين وتعديل الأسعار.",
                             "3 · من صفحة المستخدمين حدد ما يسمح به لكل كاشير.",
                             "4 · من صفحة الإعدادات حدد مجلدا على قرص آخر تحفظ فيه نسخة من المحل كل يوم."}) {
        QLabel* text = label(line, "plain");
        text->setWordWrap(true);
        column->addWidget(text);
    }
    column->addStretch(1);
    return page;
}

bool FirstStartWindow::run() {
    show_window_(*this);
    activateWindow();
    show_step(0);
    return wait();
}

void FirstStartWindow::show_step(std::size_t at) {
    at_ = at;
    steps_->setCurrentIndex(static_cast<int>(at));
    back_->setVisible(at > 0 && !is_made());
    if (is_made()) {
        title_->setText("تم إنشاء المحل");
        where_->setText({});
        explanation_->setText("ماذا بعد؟");
        next_->setText(enter_caption);
        next_->setFocus();
        return;
    }
    const FirstStep step = shop::first_steps[at];
    title_->setText(qt(shop::text_of(step).title));
    explanation_->setText(qt(shop::text_of(step).explanation));
    where_->setText(QString("خطوة %1 من %2").arg(at + 1).arg(shop::first_steps.size()));
    next_->setText(step == FirstStep::summary ? make_caption : next_caption);
    if (step == FirstStep::summary) show_summary();
    const auto table = shop::form_of(step);
    if (step == FirstStep::printer)
        ports_->setFocus();
    else if (table.empty())
        next_->setFocus();
    else
        forms_[at].field(table.front().description.name)->setFocus();
}

void FirstStartWindow::show_summary() {
    while (QLayoutItem* item = summary_->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    int row = 0;
    for (const auto& [caption, value] : logic_.summary()) {
        summary_->addWidget(label(qt(caption), "side"), row, 0, Qt::AlignTop);
        QLabel* text = label(qt(value), "plain");
        text->setObjectName("first_summary_" + QString::number(row + 1));
        text->setWordWrap(true);
        if (caption == "المجلد") text->setText(figure(qt(value)));
        summary_->addWidget(text, row++, 1);
    }
}

bool FirstStartWindow::read_step() {
    const FirstStep step = shop::first_steps[at_];
    auto& form = forms_[at_];
    if (auto refusal = form.read(logic_.fields)) return form.accept(refusal, services_.prompts);
    if (step == FirstStep::printer) logic_.printer = marked_printer();
    return form.accept(logic_.check(step), services_.prompts);
}

bool FirstStartWindow::read_items() {
    if (shop::first_steps[at_] != FirstStep::items) return true;
    const auto refusal = logic_.read_items(services_.clock.now());
    const goods::ImportPlan& plan = logic_.items_plan();
    items_->show_rows(import_rows(plan));
    items_said_->setText(logic_.fields.items_file.empty() ? QString() : import_text(plan));
    return forms_[at_].accept(refusal, services_.prompts);
}

void FirstStartWindow::next() {
    if (Sheet::top_of(this) != nullptr) return;
    if (is_made()) return leave(true);
    guarded(services_, "FirstStart", [&] {
        if (shop::first_steps[at_] == FirstStep::summary)
            make();
        else if (read_step() && read_items())
            show_step(at_ + 1);
    });
}

void FirstStartWindow::back() {
    if (Sheet::top_of(this) == nullptr && at_ > 0) show_step(at_ - 1);
}

void FirstStartWindow::make() {
    try {
        logic_.make(services_.clock.now());
    } catch (const shop::Refused& refused) {
        if (refused.told().empty()) throw;
        services_.prompts.message(refused.told(), common::Icon::critical);
        return;
    }
    show_step(at_ + 1);
}

void FirstStartWindow::give_up() {
    if (Sheet::top_of(this) != nullptr) return;
    if (is_made() || services_.prompts.ask(ask_leave) == common::Answer::yes) leave(is_made());
}

printing::PrinterChoice FirstStartWindow::marked_printer() const {
    const int row = ports_->current_row();
    if (row < 0) return logic_.printer;
    return {offers_[static_cast<std::size_t>(row)].port, paper_->value()};
}

void FirstStartWindow::test_printer() {
    if (Sheet::top_of(this) != nullptr) return;
    guarded(services_, "TestPrint", [&] {
        const printing::PrinterChoice choice = marked_printer();
        if (!choice.is_text_port()) return services_.prompts.message(test_later, common::Icon::information);
        const std::string page = printing::test_print(choice.line_width, printing::default_codes());
        const common::PortFault fault =
            services_.devices.write_port(choice.receipt_port, page, printing::message::test_title);
        if (fault == common::PortFault::none)
            services_.prompts.message(printing::message::naming(test_sent, choice.receipt_port));
        else
            services_.prompts.message(std::string(printing::message::test_failed) +
                                          printing::message::port_words(fault, choice.receipt_port),
                                      common::Icon::exclamation);
    });
}

void FirstStartWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        event->accept();
        if (at_ > 0 && !is_made())
            back();
        else
            give_up();
        return;
    }
    FrontWindow::keyPressEvent(event);
}

void FirstStartWindow::closeEvent(QCloseEvent* event) {
    event->ignore();
    give_up();
}

}  // namespace ui
