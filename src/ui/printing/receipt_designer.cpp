#include "ui/printing/receipt_designer.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFontDatabase>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "printing/messages.h"
#include "printing/pages/logo.h"
#include "sales/invoice_receipt.h"
#include "sales/sales_desk.h"
#include "signin/permissions.h"
#include "ui/printing/file_sheet.h"
#include "ui/printing/printer_sheet.h"
#include "ui/printing/receipt_paper.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace fs = std::filesystem;
namespace pages = printing::pages;
using printing::ReceiptDesign;

namespace {

// "The changes to the receipt are not saved"; the answers: save, leave them.
constexpr std::string_view not_saved = "تغييرات البون لم تحفظ";
constexpr common::Choices save_or_not = {"حفظ", "عدم الحفظ"};

constexpr double fields_width = 560;
constexpr double field_row = 44;
constexpr double heading_width = 84;

using Shown = ReceiptPaper::Shown;

// The last receipt; before the first sale an example.
printing::Receipt shown_receipt(const signin::Session& session, const sales::SalesDesk& desk) {
    if (const auto& last = desk.last_receipt())
        return sales::receipt_of(last->invoice, last->payment, session, last->shift, last->time);
    printing::Receipt receipt = printing::example_receipt();
    receipt.user_name = session.user_name;
    return receipt;
}

}  // namespace

ReceiptDesignerSheet::ReceiptDesignerSheet(QWidget* host, const Context& context,
                                           const sales::SalesDesk& desk)
    : Sheet(host, "تصميم البون"),
      context_(context),
      logic_(context.connection, context.session),
      paper_(new ReceiptPaper(context, shown_receipt(context.session, desk))) {
    setObjectName("receipt_designer");
    layout()->setAlignment(card(), Qt::Alignment());  // as large as the window
    body()->setContentsMargins(px(24), px(12), px(24), px(14));
    body()->setSpacing(px(8));
    auto* columns = add_row();
    columns->setSpacing(px(18));
    columns->addWidget(build_fields());
    columns->addWidget(paper_, 1);
}

QWidget* ReceiptDesignerSheet::build_fields() {
    auto* fields = new QWidget;
    fields->setFixedWidth(px(fields_width));
    auto* column = new QVBoxLayout(fields);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(px(6));
    build_lines(column);
    column->addWidget(build_logo());
    build_switches(column);
    column->addStretch(1);
    auto* row = new QHBoxLayout;
    row->setSpacing(px(10));
    save_ = foot_button(row, "design_save", "ح&فظ", 2, [this] { save(); });
    set_role(save_, "main");
    foot_button(row, "design_back", "رج&وع", 1, [this] { escape(); });
    column->addLayout(row);
    form_.lead_on(printing::shop_lines_form(), save_);
    return fields;
}

void ReceiptDesignerSheet::build_lines(QVBoxLayout* column) {
    FieldGrid grid(4, 6);
    form_.add(printing::shop_lines_form(), grid);
    form_.set_row_height(field_row);
    width_ = new Segments("design_width",
                          {{printing::wide_roll.columns, "80 مم"}, {printing::narrow_roll.columns, "58 مم"}});
    width_->set_height(field_row);
    grid.add("عرض ورق الجهاز", width_, 2, 3);
    connect(width_, &Segments::chosen, this, [this](int columns) {
        width_->show_chosen(columns);
        redraw();
    });
    column->addLayout(grid.layout());
}

QWidget* ReceiptDesignerSheet::build_logo() {
    auto* box = new QWidget;
    auto* row = new QHBoxLayout(box);
    row->setContentsMargins(0, px(4), 0, 0);
    row->setSpacing(px(10));
    row->addWidget(label("الشعار", "caption"));
    logo_ = label({}, "side", "design_logo");
    row->addWidget(logo_, 1);
    foot_button(row, "design_logo_choose", "اختيار صورة", 0, [this] { choose_logo(); });
    foot_button(row, "design_logo_none", "بدون &شعار", 0, [this] {
        logic_.remove_logo();
        show_logo();
        redraw();
    });
    return box;
}

void ReceiptDesignerSheet::build_switches(QVBoxLayout* column) {
    const auto add = [&](const QString& caption, common::FormTable<ReceiptDesign> table) {
        auto* row = new QHBoxLayout;
        QLabel* heading = label(caption, "caption");
        heading->setFixedWidth(px(heading_width));
        heading->setMinimumHeight(px(field_row));
        row->addWidget(heading, 0, Qt::AlignTop);
        FieldGrid grid(3, 0);
        grid.layout()->setHorizontalSpacing(px(6));
        form_.add(table, grid);
        row->addLayout(grid.layout(), 1);
        column->addLayout(row);
    };
    // Groups of fields: drawn receipts, text receipts, and what is printed at a save.
    add("البون المرسوم", printing::page_form());
    add("البون النصي", printing::text_form());
    add("عند الحفظ", printing::save_form());
    auto* full_page = qobject_cast<QCheckBox*>(form_.field("design_full_page"));
    QWidget* cash_form = form_.field("design_cash_form");
    connect(full_page, &QCheckBox::toggled, this, [this, cash_form](bool is_page) {
        cash_form->setEnabled(is_page);
        if (is_page) paper_->show_form(Shown::page);
    });
    cash_form->setEnabled(false);
}

bool ReceiptDesignerSheet::open() {
    if (!signin::authorise(context_.session, context_.services.prompts, signin::Action::choose_port))
        return false;
    return guarded(context_.services, "OpenReceiptDesigner", [&] {
        logic_.open();
        paper_->open();
        fill_fonts();
        form_.show(logic_.design);
        const printing::PrinterChoice& choice = context_.printer_choice;
        width_->show_chosen(choice.line_width);
        const bool is_text = choice.is_text_port() && !choice.prints_pictures();
        paper_->show_form(logic_.design.full_page ? Shown::page : is_text ? Shown::text : Shown::roll);
        show_logo();
        follow_changes();
    });
}

// The fonts with Arabic letters that this machine has, and the one in use.
void ReceiptDesignerSheet::fill_fonts() {
    const std::string used = logic_.design.settings().font;
    for (const QString& family : QFontDatabase::families(QFontDatabase::Arabic))
        fonts_.push_back(utf8(family));
    std::vector<common::Choice> choices;
    const bool is_here = std::find(fonts_.begin(), fonts_.end(), used) != fonts_.end();
    if (!is_here) fonts_.push_back(used);
    std::int64_t chosen = 0;
    for (std::size_t at = 0; at < fonts_.size(); ++at) {
        const auto code = static_cast<std::int64_t>(at);
        if (fonts_[at] == used) chosen = code;
        // "not on this machine"
        choices.push_back(
            {code, fonts_[at] + (fonts_[at] == used && !is_here ? " (ليس على هذا الجهاز)" : "")});
    }
    fill_choices(form_.list("design_font"), choices, chosen);
}

void ReceiptDesignerSheet::follow_changes() {
    connect(paper_, &ReceiptPaper::changed, this, &ReceiptDesignerSheet::redraw);
    for (auto* line : card()->findChildren<QLineEdit*>())
        connect(line, &QLineEdit::textChanged, this, &ReceiptDesignerSheet::redraw);
    for (auto* box : card()->findChildren<QCheckBox*>())
        connect(box, &QCheckBox::toggled, this, &ReceiptDesignerSheet::redraw);
    connect(form_.list("design_font"), &QComboBox::currentIndexChanged, this, &ReceiptDesignerSheet::redraw);
}

void ReceiptDesignerSheet::show_logo() {
    const QString name = chosen_name_.isEmpty() ? qt(logic_.design.logo) : chosen_name_;
    if (logic_.misses_logo())
        logo_->setText(figure(name) + "\u200f (ليس على هذا الجهاز)");
    else
        logo_->setText(logic_.logo().empty() ? QString("بدون شعار") : figure(name));
}

std::optional<common::Refusal> ReceiptDesignerSheet::read() {
    if (auto refusal = form_.read(logic_.design)) return refusal;
    const auto chosen = choice_of(form_.list("design_font"));
    if (!chosen) return common::Refusal("design_font", common::message::not_in_list);
    // The default font stays the default until another one is chosen.
    const std::string& font = fonts_.at(static_cast<std::size_t>(*chosen));
    if (font != logic_.design.settings().font) logic_.design.font = font;
    return std::nullopt;
}

void ReceiptDesignerSheet::redraw() {
    if (!isVisible()) return;
    guarded(context_.services, "DrawReceipt", [&] {
        // While a value is still being typed, the picture stays as it was.
        if (read()) return;
        paper_->draw(logic_.design, width_->value());
    });
}

void ReceiptDesignerSheet::choose_logo() {
    if (Sheet::top_of(window()) != this) return;
    FileSheet(this, picture_choice(), context_.services.prompts, context_.session.program_folder,
              [this](const fs::path& file) { return take_logo(file); })
        .run();
}

// Keeps the picture in a temporary file until the design is saved.
bool ReceiptDesignerSheet::take_logo(const fs::path& file) {
    const auto picture = pages::logo_picture(file);
    auto chosen = std::make_unique<QTemporaryFile>();
    if (!picture || !chosen->open()) {
        context_.services.prompts.message(
            printing::message::naming(printing::message::not_a_picture, file.filename().string()),
            common::Icon::critical);
        return false;
    }
    chosen->write(picture->data(), static_cast<qint64>(picture->size()));
    chosen->flush();
    chosen_logo_ = std::move(chosen);
    chosen_name_ = qt(file.filename().string());
    logic_.design.logo = utf8(chosen_logo_->fileName());
    show_logo();
    redraw();
    return true;
}

void ReceiptDesignerSheet::save() {
    if (Sheet::top_of(window()) != this) return;
    if (!signin::authorise(context_.session, context_.services.prompts, signin::Action::choose_port)) return;
    std::optional<common::Refusal> refusal;
    const bool ended = guarded(context_.services, "SaveReceiptDesign", [&] {
        refusal = read();
        if (!refusal) refusal = logic_.save();
    });
    if (!form_.accept(refusal, context_.services.prompts) || !ended) return;
    if (context_.printer_choice.line_width != width_->value()) {
        context_.printer_choice.line_width = width_->value();
        keep_printer(context_);
    }
    leave(1);
}

void ReceiptDesignerSheet::take_focus() {
    form_.field("design_name")->setFocus();
}

void ReceiptDesignerSheet::escape() {
    if (Sheet::top_of(window()) != this) return;
    const bool is_changed =
        read().has_value() || logic_.is_changed() || width_->value() != context_.printer_choice.line_width;
    if (!is_changed) return leave(0);
    switch (context_.services.prompts.choose(not_saved, save_or_not, common::Icon::question)) {
        case common::Answer::yes:
            return save();
        case common::Answer::no:
            return leave(0);
        case common::Answer::closed:
            break;
    }
}

void ReceiptDesignerSheet::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_PageDown || event->key() == Qt::Key_PageUp) {
        paper_->scroll(event->key() == Qt::Key_PageDown);
        event->accept();
        return;
    }
    Sheet::keyPressEvent(event);
}

}  // namespace ui
