#include "ui/printing/printer_sheet.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>
#include <system_error>

#include "common/named_values.h"
#include "common/ports.h"
#include "common/text.h"
#include "database/error.h"
#include "printing/messages.h"
#include "printing/pages/paper_picture.h"
#include "printing/pages/raster.h"
#include "printing/pages/receipt_page.h"
#include "printing/pages/system_printers.h"
#include "printing/report_printer.h"
#include "printing/text_receipt.h"
#include "printing/workstation_printer.h"
#include "sales/invoice_receipt.h"
#include "sales/payment.h"
#include "sales/sales_desk.h"
#include "sales/saving.h"
#include "signin/permissions.h"
#include "ui/printing/receipt_designer.h"
#include "ui/printing/reports.h"
#include "ui/widgets/choices.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/key_queue.h"
#include "ui/widgets/list_table.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

// "The test page was sent to port …"
constexpr std::string_view test_sent = "تم إرسال صفحة التجربة إلى المنفذ ";
// "This is the drawer's port: a test page would open it."
constexpr std::string_view drawer_port = "هذا منفذ الدرج، وصفحة التجربة تفتحه : ";

constexpr double screen_dots_per_mm = 8;  // as the print head has

// "available", "no port", "not available"
QString state_of(common::PortFault fault) {
    if (fault == common::PortFault::none) return "متاح";
    return common::is_never_a_port(fault) ? "ليس منفذا" : "غير متاح";
}

QString port_name(const std::string& port) {
    const bool text_port = printing::PrinterChoice{port}.is_text_port();
    return text_port ? figure(port) : QString("طابعة النظام");
}

}  // namespace

void keep_printer(const Context& context) {
    const auto file = common::printer_file(context.session.program_folder, context.session.cash_point);
    try {
        printing::keep_printer_choice(file, context.printer_choice);
    } catch (const std::system_error& error) {
        context.services.log.log_event(error.what(), "print");
        context.services.prompts.message(
            database::with_reason(printing::message::naming(printing::message::file_failed, file.string()),
                                  error),
            common::Icon::exclamation);
    }
}

PrinterSheet::PrinterSheet(QWidget* host, const Context& context, const sales::SalesDesk& desk)
    : Sheet(host, "طابعة البون"), context_(context), desk_(desk) {
    setObjectName("printer_screen");
    set_card_width(900);
    current_ = label({}, "side");
    current_->setObjectName("printer_current");
    body()->addWidget(current_);
    auto* lists = new QHBoxLayout;
    lists->setSpacing(px(16));
    wide_ = add_list("ports_48");
    narrow_ = add_list("ports_40");
    used_ = wide_;
    lists->addWidget(captioned("48 &حرفا في السطر · ورق 80 مم", wide_), 1);
    lists->addWidget(captioned("40 ح&رفا في السطر · ورق 58 مم", narrow_), 1);
    body()->addLayout(lists, 1);
    forms_ = new Segments("printer_form", {{0, "&نص"}, {1, "&صورة"}, {2, "صورة للطابعات الب&سيطة"}});
    auto* form_row = new QHBoxLayout;
    form_row->addWidget(label("شكل البون على المنفذ", "side"));
    form_row->addWidget(forms_);
    form_row->addStretch(1);
    body()->addLayout(form_row);
    connect(forms_, &Segments::chosen, forms_, &Segments::show_chosen);

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(px(10));
    const auto add = [&](const char* name, const QString& caption, std::function<void()> action) {
        return foot_button(buttons, name, caption, 1, std::move(action));
    };
    set_role(add("printer_choose", "ا&ختيار  Enter", [this] { choose(); }), "main");
    add("printer_test", "ت&جربة طباعة", [this] { test(); });
    add("printer_paper", "ال&بون على الشاشة", [this] { show_paper(); });
    add("printer_design", "تص&ميم البون", [this] { design(); });
    add("printer_back", "رجو&ع", [this] { leave(0); });
    body()->addLayout(buttons);

    for (ListTable* table : {wide_, narrow_})
        connect(table, &ListTable::row_taken, this, [this] { choose(); });
    show_ports();
}

ListTable* PrinterSheet::add_list(const char* name) {
    auto* table = new ListTable(name, {"المنفذ", "الجهاز", "الحالة"}, 1);
    table->setMinimumHeight(px(360));
    table->set_look([this](int row, int) {
        return offers_[static_cast<std::size_t>(row)].fault == common::PortFault::none ? CellLook::plain
                                                                                       : CellLook::dimmed;
    });
    table->installEventFilter(this);
    return table;
}

void PrinterSheet::take_focus() {
    used_->setFocus();
}

bool PrinterSheet::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusIn && (watched == wide_ || watched == narrow_))
        use(static_cast<ListTable*>(watched));
    return Sheet::eventFilter(watched, event);
}

// Both lists share one cursor; the other list shows none.
void PrinterSheet::use(ListTable* table) {
    used_ = table;
    (table == wide_ ? narrow_ : wide_)->choose_row(-1);
    if (table->current_row() < 0) table->choose_row(0);
}

void PrinterSheet::show_ports() {
    const printing::PrinterChoice& choice = context_.printer_choice;
    offers_ = printing::ports_offered(choice, context_.session.working_folder);
    const std::string port =
        choice.is_text_port() ? choice.receipt_port : printing::PrinterChoice::system_printer;
    std::vector<QStringList> rows;
    int in_use = 0;
    for (const printing::PortOffer& offer : offers_) {
        if (common::port_path(offer.port) == common::port_path(port)) in_use = static_cast<int>(rows.size());
        const QString device = offer.device == offer.port ? QString() : figure(offer.device);
        rows.push_back({port_name(offer.port), device, state_of(offer.fault)});
    }
    for (ListTable* table : {wide_, narrow_})
        table->show_rows(rows);
    use(choice.line_width == printing::narrow_roll.columns ? narrow_ : wide_);
    used_->choose_row(in_use);
    forms_->show_chosen(static_cast<int>(choice.picture));
    current_->setText(QString("البون يطبع الآن على: %1\u200f · %2 حرفا في السطر")
                          .arg(port_name(port))
                          .arg(choice.line_width) +
                      (choice.prints_pictures() ? " · صورة" : ""));
}

printing::PrinterChoice PrinterSheet::marked() const {
    const int row = used_->current_row();
    if (row < 0 || static_cast<std::size_t>(row) >= offers_.size()) return context_.printer_choice;
    const printing::RollWidth& roll = used_ == wide_ ? printing::wide_roll : printing::narrow_roll;
    return {offers_[static_cast<std::size_t>(row)].port, roll.columns,
            static_cast<printing::ReceiptPicture>(forms_->value())};
}

void PrinterSheet::choose() {
    if (Sheet::top_of(window()) != this) return;
    guarded(context_.services, "ChoosePrinter", [&] {
        const printing::PrinterChoice choice = marked();
        if (!may_choose()) return;
        if (is_refused(choice)) return;
        context_.printer_choice = choice;
        show_ports();
        keep_printer(context_);
    });
    used_->setFocus();
}

bool PrinterSheet::may_choose() {
    return signin::authorise(context_.session, context_.services.prompts, signin::Action::choose_port);
}

// A device may be switched on later; a file of the shop never becomes a printer.
bool PrinterSheet::is_refused(const printing::PrinterChoice& choice) {
    using common::PortFault;
    if (!choice.is_text_port()) return false;
    const PortFault fault = common::port_fault(choice.receipt_port, context_.session.working_folder);
    if (!common::is_never_a_port(fault)) return false;
    context_.services.prompts.message(printing::message::port_words(fault, choice.receipt_port),
                                      common::Icon::exclamation);
    return true;
}

bool PrinterSheet::opens_drawer(const printing::PrinterChoice& choice) {
    for (const std::string_view drawer :
         {std::string_view(context_.session.settings.cash), sales::keyboard_drawer_port}) {
        if (common::trim(drawer).empty() ||
            !common::is_same_port(choice.receipt_port, drawer, context_.session.working_folder))
            continue;
        context_.services.prompts.message(printing::message::naming(drawer_port, choice.receipt_port),
                                          common::Icon::exclamation);
        return true;
    }
    return false;
}

void PrinterSheet::test() {
    if (Sheet::top_of(window()) != this) return;
    guarded(context_.services, "TestPrint", [&] {
        const printing::PrinterChoice choice = marked();
        if (!may_choose()) return;
        if (!choice.is_text_port()) {
            if (context_.reports.print(printing::test_report(context_.session.settings.aname)))
                say_where_kept(context_);
            return;
        }
        if (!choice.prints_pictures() && opens_drawer(choice)) return;
        const common::PortFault fault = context_.services.devices.write_port(
            choice.receipt_port, test_page(choice), printing::message::test_title);
        if (fault == common::PortFault::none)
            context_.services.prompts.message(printing::message::naming(test_sent, choice.receipt_port));
        else
            context_.services.prompts.message(std::string(printing::message::test_failed) +
                                                  printing::message::port_words(fault, choice.receipt_port),
                                              common::Icon::exclamation);
    });
    used_->setFocus();
}

void PrinterSheet::show_paper() {
    if (Sheet::top_of(window()) != this) return;
    guarded(context_.services, "ShowPaper", [&] {
        PaperSheet(this, desk_.last_receipt() ? "آخر بون" : "صفحة التجربة", paper(marked())).run();
    });
    used_->setFocus();
}

void PrinterSheet::design() {
    if (Sheet::top_of(window()) != this) return;
    ReceiptDesignerSheet designer(this, context_, desk_);
    if (designer.open() && designer.run() != 0) show_ports();
    used_->setFocus();
}

// The last receipt; before the first sale the test page.
QImage PrinterSheet::paper(const printing::PrinterChoice& choice) const {
    namespace pages = printing::pages;
    const auto& last = desk_.last_receipt();
    if (!last && !choice.prints_pictures()) return pages::paper_picture(test_page(choice), choice.line_width);
    if (!last) return pages::pictures(test_picture(choice), screen_dots_per_mm).front();
    const printing::Receipt receipt =
        sales::receipt_of(last->invoice, last->payment, context_.session, last->shift, last->time);
    if (choice.prints_pictures()) {
        pages::SystemReceiptPrinter printer({context_.connection,
                                             context_.services,
                                             choice,
                                             context_.session.program_folder,
                                             {},
                                             {},
                                             context_.session.is_training});
        return pages::pictures(*printer.pages(receipt, printing::Form::full), screen_dots_per_mm).front();
    }
    const std::string bytes = printing::text_receipt(receipt, printing::Form::full, choice.line_width,
                                                     printing::PrinterCodes::load(context_.connection),
                                                     printing::read_receipt_settings(context_.connection));
    return pages::paper_picture(bytes, choice.line_width);
}

printing::pages::ReceiptPage PrinterSheet::test_picture(const printing::PrinterChoice& choice) const {
    return printing::pages::ReceiptPage(
        printing::test_layout(context_.session.settings.aname, choice.line_width,
                              printing::read_receipt_settings(context_.connection)));
}

std::string PrinterSheet::test_page(const printing::PrinterChoice& choice) const {
    if (!choice.prints_pictures())
        return printing::test_print(choice.line_width, printing::PrinterCodes::load(context_.connection));
    return printing::pages::raster(test_picture(choice), printing::roll_of(choice.line_width),
                                   choice.picture);
}

PaperSheet::PaperSheet(QWidget* host, const QString& title, const QImage& paper) : Sheet(host, title) {
    setObjectName("paper_sheet");
    auto* picture = new QLabel;
    picture->setObjectName("paper");
    const QPixmap drawn = QPixmap::fromImage(paper);
    picture->setPixmap(px(100) > 100 ? drawn.scaledToWidth(px(paper.width()), Qt::SmoothTransformation)
                                     : drawn);
    area_ = new QScrollArea;
    area_->setObjectName("paper_area");
    area_->setWidget(picture);
    area_->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    set_role(area_, "paper");
    area_->setFixedWidth(px(paper.width()) + px(32));
    area_->setMinimumHeight(std::min(picture->pixmap().height() + px(8), host->window()->height() - px(220)));
    body()->addWidget(area_, 1);
    auto* back = new QPushButton("ر&جوع");
    back->setObjectName("paper_back");
    back->setMinimumHeight(px(48));
    connect(back, &QPushButton::clicked, this, [this] { leave(0); });
    body()->addWidget(back);
}

void PaperSheet::take_focus() {
    area_->setFocus();
}

void PaperSheet::keyPressEvent(QKeyEvent* event) {
    if (is_enter(event->key())) {
        leave(0);
        event->accept();
        return;
    }
    Sheet::keyPressEvent(event);
}

}  // namespace ui
