#include "ui/sales/receipts_sheet.h"
#include "ui/widgets/fields.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "common/numbers.h"
#include "sales/sales_desk.h"
#include "ui/widgets/list_table.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

QString kind_text(const sales::InvoiceKey& key) {
    return key.is_sale() ? "مبيعات" : "مرتجعات";
}

}  // namespace

ReceiptsSheet::ReceiptsSheet(QWidget* host, sales::SalesDesk& desk)
    : Sheet(host, "بونات اليوم"), desk_(desk), rows_(desk.receipts().receipts_today()) {
    setObjectName("receipts_screen");
    set_card_width(760);
    double sold = 0;
    double returned = 0;
    std::vector<QStringList> texts;
    for (const sales::ReceiptRow& row : rows_) {
        (row.key.is_sale() ? sold : returned) += row.net;
        texts.push_back({"\u200e" + QString::number(row.key.number),
                         "\u200e" + qt(common::twelve_hour_text(row.time)), kind_text(row.key),
                         qt(sales::payment_caption(row.payment)),
                         "\u200e" + qt(common::format_amount(row.net))});
    }
    auto* sums =
        label(rows_.empty() ? QString("لم يحفظ هذا الدرج أي بون اليوم")
                            : QString("عدد البونات %1 · مبيعات \u200e%2 · مرتجعات \u200e%3")
                                  .arg(rows_.size())
                                  .arg(qt(common::format_amount(sold)), qt(common::format_amount(returned))),
              "side");
    sums->setObjectName("receipts_sums");
    body()->addWidget(sums);
    table_ = new ListTable("receipts", {"رقم البون", "الوقت", "النوع", "الدفع", "الصافي"}, 2);
    table_->setMinimumHeight(px(380));
    table_->say_when_empty("لم يحفظ هذا الدرج أي بون اليوم");
    table_->show_rows(texts);
    body()->addWidget(table_, 1);

    QHBoxLayout* buttons = add_row();
    set_role(foot_button(buttons, "receipt_show", "&عرض البون  Enter", 1, [this] { show_receipt(); }),
             "main");
    foot_button(buttons, "receipt_reprint", "إعادة ال&طباعة", 1, [this] { reprint(); });
    foot_button(buttons, "receipt_return", "ا&رتجاع من هذا البون", 1, [this] { start_return(); });
    foot_button(buttons, "receipt_back", "ر&جوع", 1, [this] { leave(0); });
    connect(table_, &ListTable::row_taken, this, [this] { show_receipt(); });
}

void ReceiptsSheet::take_focus() {
    table_->setFocus();
}

const sales::ReceiptRow* ReceiptsSheet::chosen() {
    // A second press of a button is ignored while a box is open.
    if (Sheet::top_of(window()) != this) return nullptr;
    const int row = table_->currentRow();
    if (row >= 0 && static_cast<std::size_t>(row) < rows_.size())
        return &rows_[static_cast<std::size_t>(row)];
    return nullptr;
}

void ReceiptsSheet::show_receipt() {
    const auto* row = chosen();
    if (row != nullptr && desk_.receipts().recall(*row)) leave(1);
}

void ReceiptsSheet::reprint() {
    if (const auto* row = chosen()) desk_.receipts().reprint(*row);
    table_->setFocus();
}

void ReceiptsSheet::start_return() {
    const auto* row = chosen();
    if (row != nullptr && desk_.receipts().recall(*row)) {
        desk_.receipts().start_return();
        leave(1);
    }
}

}  // namespace ui
