#include "ui/purchases/receipts_page.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "accounts/messages.h"
#include "purchases/suppliers.h"
#include "signin/permissions.h"
#include "ui/printing/report_foot.h"
#include "ui/purchases/papers.h"
#include "ui/purchases/saved_receipt_sheet.h"
#include "ui/widgets/list_table.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

using purchases::PurchaseKind;

ReceiptsPage::ReceiptsPage(const Context& context) : Page("receipts_page"), context_(context) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(px(10));
    column->addWidget(build_choices());
    table_ = new ListTable("receipts_list", text_list(receipts_headings), 3);
    table_->say_when_empty("لا توجد فواتير في هذه المدة · ابدأ توريدا جديدا أو اختر مدة أخرى");
    table_->set_look([this](int row, int cell) {
        if (rows_[static_cast<std::size_t>(row)].kind == PurchaseKind::vendor_return && cell == 0)
            return CellLook::alarm;
        return cell == 5 ? CellLook::strong : CellLook::plain;
    });
    column->addWidget(table_, 1);
    note_ = label({}, "side", "receipts_note");
    column->addWidget(note_);
    column->addWidget(build_foot());
    connect(table_, &ListTable::left_upwards, form_.field("receipts_from"), qOverload<>(&QWidget::setFocus));
    connect(table_, &ListTable::row_taken, this, [this] { show_document(); });
    today_ = context_.services.clock.now().date;
    period_ = {{today_.year, today_.month, 1}, today_, {}};
}

QWidget* ReceiptsPage::build_choices() {
    auto* bar = new QWidget;
    auto* column = new QVBoxLayout(bar);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(label("بضاعة واردة", "title"));
    auto* row = new QHBoxLayout;
    row->setSpacing(px(10));
    FieldGrid grid(4, 0);
    grid.layout()->setHorizontalSpacing(px(10));
    form_.add(purchases::period_form(), grid);
    show_codes(form_.list("receipts_supplier"), "كود", "المورد");
    row->addLayout(grid.layout(), 1);
    QPushButton* show = field_button(row, "receipts_show", "عر&ض", [this] { show_receipts(); });
    form_.lead_on(purchases::period_form(), show);
    column->addLayout(row);
    return bar;
}

QWidget* ReceiptsPage::build_foot() {
    auto* bar = new QWidget;
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(px(8));
    const auto button = [&](const char* name, const QString& caption, std::function<void()> action) {
        QPushButton* made = foot_button(row, name, caption, 0, std::move(action));
        made->setMinimumHeight(px(least_target));
        return made;
    };
    set_role(button("receipts_new", "&توريد جديد", [this] { begin(PurchaseKind::supply); }), "main");
    button("receipts_return", "إرجاع &بضاعة", [this] { begin(PurchaseKind::vendor_return); });
    button("receipts_open", "&فتح", [this] { show_document(); });
    row->addStretch(1);
    add_report_buttons(
        row, "receipts", context_, [this] { return paper_of(rows_, period_, context_.session); }, note_);
    return bar;
}

void ReceiptsPage::open() {
    if (!period_.supplier) period_.supplier = 0;
    fill_choices(form_.list("receipts_supplier"), purchases::suppliers_to_choose(context_.connection),
                 period_.supplier);
    // A period up to today goes on to the next day.
    const common::Date today = context_.services.clock.now().date;
    if (period_.to == today_) period_.to = today;
    today_ = today;
    form_.show(period_);
    repaint_rows();
}

void ReceiptsPage::show_receipts() {
    const bool shown =
        form_.save(context_.services, "Receipts", period_, [this]() -> std::optional<common::Refusal> {
            if (period_.to < period_.from)
                return common::Refusal("receipts_from", accounts::message::end_before_start);
            repaint_rows();
            return std::nullopt;
        });
    if (shown) take_focus();
}

void ReceiptsPage::repaint_rows() {
    rows_ = purchases::list_receipts(context_.connection, period_);
    std::vector<QStringList> rows;
    common::Amount net;
    for (const auto& row : rows_) {
        rows.push_back(text_list(cells_of(row), {1, 2, 4, 5}));
        net += row.kind == PurchaseKind::supply ? row.net : -row.net;
    }
    table_->show_rows(std::move(rows));
    note_->setText("عدد الفواتير " + figure(static_cast<qlonglong>(rows_.size())) + "، الصافي " +
                   figure(net.text()));
}

void ReceiptsPage::begin(PurchaseKind kind) {
    if (!signin::authorise_change(context_.session, context_.services.prompts, signin::Action::receive_goods))
        return;
    purchases::Receipt receipt;
    receipt.kind = kind;
    begin_goods_in(this, context_, std::move(receipt));
    guarded(context_.services, "Receipts", [&] { open(); });
    take_focus();
}

void ReceiptsPage::show_document() {
    const int row = table_->current_row();
    if (row < 0) return;
    const purchases::SavedRow chosen = rows_[static_cast<std::size_t>(row)];
    show_saved_receipt(this, context_, chosen.kind, chosen.number);
    guarded(context_.services, "Receipts", [&] { open(); });
    if (table_->shown_count() > row) table_->choose_row(row);
    take_focus();
}

void ReceiptsPage::take_focus() {
    if (table_->shown_count() > 0)
        table_->setFocus();
    else
        form_.field("receipts_from")->setFocus();
}

}  // namespace ui
