#include "ui/purchases/supplier_sheet.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "accounts/messages.h"
#include "signin/permissions.h"
#include "ui/printing/report_foot.h"
#include "ui/purchases/papers.h"
#include "ui/widgets/list_table.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

SupplierSheet::SupplierSheet(QWidget* host, const Context& context)
    : Sheet(host), context_(context), logic_(context.connection, context.session) {
    setObjectName("supplier_card");
    set_card_width(760);
    title_ = label({}, "title", "supplier_title");
    body()->addWidget(title_);
    FieldGrid grid(3, 12);
    grid.layout()->setHorizontalSpacing(px(12));
    form_.add(purchases::supplier_form(), grid);
    body()->addLayout(grid.layout());
    auto* row = add_row();
    QPushButton* save = foot_button(row, "supplier_save", "ح&فظ", 1, [this] { this->save(); });
    set_role(save, "main");
    foot_button(row, "supplier_back", "&رجوع", 1, [this] { leave(0); });
    form_.lead_on(purchases::supplier_form(), save);
}

void SupplierSheet::open_new() {
    logic_.open_new();
    show_card();
}

bool SupplierSheet::open_edit(std::int64_t code) {
    if (!form_.accept(logic_.open_edit(code), context_.services.prompts)) return false;
    show_card();
    return true;
}

void SupplierSheet::show_card() {
    title_->setText(qt(logic_.title()));
    form_.show(logic_.card);
    set_fixed(form_.field("supplier_number"), logic_.is_editing());
}

void SupplierSheet::take_focus() {
    form_.field("supplier_name")->setFocus();
}

void SupplierSheet::save() {
    if (Sheet::top_of(window()) != this) return;
    if (!signin::authorise_change(context_.session, context_.services.prompts, signin::Action::receive_goods))
        return;
    if (form_.save(context_.services, "SaveSupplier", logic_.card, [this] { return logic_.save(); }))
        leave(1);
}

SupplierStatementSheet::SupplierStatementSheet(QWidget* host, const Context& context, std::int64_t supplier,
                                               std::string name)
    : Sheet(host), context_(context), supplier_(supplier), name_(std::move(name)) {
    setObjectName("supplier_statement");
    body()->setContentsMargins(px(22), px(14), px(22), px(16));
    body()->setSpacing(px(10));
    auto* row = new QHBoxLayout;
    row->setSpacing(px(12));
    row->addWidget(label("كشف حساب " + qt(name_), "title"), 1, Qt::AlignBottom);
    from_ = moment_field("supplier_from");
    to_ = moment_field("supplier_to");
    for (auto [caption, field] : {std::pair("&من تاريخ", from_), std::pair("إ&لى تاريخ", to_)}) {
        field->setFixedWidth(px(130));
        row->addWidget(captioned(caption, field));
    }
    QPushButton* show = field_button(row, "supplier_show", "عر&ض", [this] {
        if (show_statement()) table_->setFocus();
    });
    set_role(show, "main");
    enter_leads_on({from_, to_, show});
    body()->addLayout(row);
    table_ = new ListTable("supplier_rows", text_list(accounts::statement_headings), 4);
    table_->set_look([this](int at, int column) {
        const bool dated = !statement_.rows[static_cast<std::size_t>(at)].date.empty();
        return column == 3 || !dated ? CellLook::strong : CellLook::plain;
    });
    body()->addWidget(table_, 1);
    auto* foot = new QHBoxLayout;
    foot->setSpacing(px(10));
    note_ = label({}, "side", "supplier_note_line");
    foot->addWidget(note_, 1);
    add_report_buttons(
        foot, "supplier_statement", context_,
        [this] { return paper_of(statement_, name_, start_, end_, context_.session); }, note_);
    foot_button(foot, "supplier_statement_back", "&رجوع", 0, [this] {
        leave(0);
    })->setMinimumHeight(px(least_target));
    body()->addLayout(foot);
}

bool SupplierStatementSheet::open() {
    const common::Date today = context_.services.clock.now().date;
    to_->setText(qt(common::date_text(today)));
    from_->setText(qt(common::date_text({today.year, today.month, 1})));
    return show_statement();
}

bool SupplierStatementSheet::show_statement() {
    const auto start = date_in(from_, context_.services.prompts);
    const auto end = start ? date_in(to_, context_.services.prompts) : std::nullopt;
    if (!end) return false;
    if (*end < *start) {
        context_.services.prompts.message(accounts::message::end_before_start, common::Icon::critical);
        from_->setFocus();
        return false;
    }
    return guarded(context_.services, "SupplierStatement", [&] {
        statement_ = accounts::vendor_statement(context_.connection, supplier_, *start, *end);
        start_ = *start;
        end_ = *end;
        std::vector<QStringList> rows;
        for (const accounts::StatementRow& row : statement_.rows)
            rows.push_back(text_list(row.cells(), {0, 1, 2, 3}));
        table_->show_rows(std::move(rows));
        note_->setText("المستحق للمورد " + figure(statement_.closing.text()));
    });
}

void SupplierStatementSheet::take_focus() {
    table_->setFocus();
}

void SupplierStatementSheet::resizeEvent(QResizeEvent* event) {
    Sheet::resizeEvent(event);
    card()->setFixedSize(std::min(width() - px(24), px(1300)), std::min(height() - px(24), px(860)));
}

}  // namespace ui
