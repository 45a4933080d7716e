#include "ui/purchases/saved_receipt_sheet.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <tuple>

#include "accounts/parties.h"
#include "database/choices.h"
#include "goods/item_list.h"
#include "goods/labels.h"
#include "purchases/messages.h"
#include "signin/permissions.h"
#include "ui/goods/label_sheet.h"
#include "ui/printing/report_foot.h"
#include "ui/purchases/papers.h"
#include "ui/widgets/list_table.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

using purchases::PurchaseKind;

SavedReceiptSheet::SavedReceiptSheet(QWidget* host, const Context& context, purchases::Receipt receipt,
                                     std::int64_t number)
    : Sheet(host), context_(context), receipt_(std::move(receipt)), number_(number) {
    setObjectName("saved_receipt");
    if (const auto party = accounts::find_party(context.connection, accounts::PartyKind::vendor,
                                                receipt_.supplier.value_or(0)))
        supplier_ = party->name;
    store_ = common::name_of(database::load_stores(context.connection), receipt_.store);
    body()->setContentsMargins(px(22), px(14), px(22), px(16));
    body()->setSpacing(px(10));
    body()->addWidget(
        label(qt(name_of(receipt_.kind)) + " رقم " + figure(number), "title", "saved_receipt_title"));
    build_sums();
    table_ = new ListTable("saved_receipt_lines", text_list(receipt_headings), 0);
    table_->set_look([](int, int column) { return column == 5 ? CellLook::strong : CellLook::plain; });
    std::vector<QStringList> rows;
    for (const purchases::Line& line : receipt_.lines)
        rows.push_back(text_list(cells_of(line), {2, 3, 4, 5, 6}));
    table_->show_rows(std::move(rows));
    body()->addWidget(table_, 1);
    build_foot();
}

void SavedReceiptSheet::build_sums() {
    auto* row = new QHBoxLayout;
    row->setSpacing(px(18));
    const auto pair = [&](const QString& caption, const QString& text, const char* name) {
        row->addWidget(label(caption, "side"));
        row->addWidget(label(text, "plain", name));
    };
    pair("المورد", qt(supplier_), "saved_receipt_supplier");
    pair("التاريخ", figure(common::date_text(receipt_.date)), "saved_receipt_date");
    pair("فاتورة المورد", receipt_.invoice.empty() ? "—" : figure(receipt_.invoice), "saved_receipt_invoice");
    pair("المخزن", qt(store_), "saved_receipt_store");
    row->addStretch(1);
    body()->addLayout(row);
    if (!receipt_.note.empty()) body()->addWidget(label(qt(receipt_.note), "plain", "saved_receipt_note"));
}

void SavedReceiptSheet::build_foot() {
    auto* sums = new QHBoxLayout;
    sums->setSpacing(px(18));
    note_ = label({}, "side", "saved_receipt_told");
    sums->addWidget(note_, 1);
    for (const auto& [caption, amount, name] :
         {std::tuple("الإجمالي", receipt_.total(), "saved_receipt_total"),
          std::tuple("الخصم", receipt_.discount, "saved_receipt_discount"),
          std::tuple("الضريبة", receipt_.tax, "saved_receipt_tax"),
          std::tuple("الصافي", receipt_.net(), "saved_receipt_net")}) {
        sums->addWidget(label(caption, "side"));
        auto* sum = new Figure(name, "figure");
        sum->setText(qt(amount.text()));
        sums->addWidget(sum);
    }
    body()->addLayout(sums);
    auto* row = new QHBoxLayout;
    row->setSpacing(px(10));
    add_report_buttons(
        row, "saved_receipt", context_, [this] { return paper(); }, note_);
    row->addStretch(1);
    if (receipt_.kind == PurchaseKind::supply) {
        foot_button(row, "saved_receipt_labels", "م&لصقات", 0, [this] {
            print_labels();
        })->setMinimumHeight(px(least_target));
        foot_button(row, "saved_receipt_return", "مر&تجع منها", 0, [this] {
            leave(give_back);
        })->setMinimumHeight(px(least_target));
        foot_button(row, "saved_receipt_correct", "ع&كس وتصحيح", 0, [this] {
            leave(correct);
        })->setMinimumHeight(px(least_target));
    }
    foot_button(row, "saved_receipt_back", "&رجوع", 0, [this] {
        leave(nothing);
    })->setMinimumHeight(px(least_target));
    body()->addLayout(row);
}

printing::Report SavedReceiptSheet::paper() const {
    return paper_of(receipt_, number_, supplier_, store_, context_.session);
}

void SavedReceiptSheet::print_labels() {
    guarded(context_.services, "Labels", [&] {
        goods::ItemFilter items;
        for (const purchases::Line& line : receipt_.lines)
            items.marked.insert(line.item);
        LabelSheet(this, context_, goods::labels_of(context_.connection, items)).run();
    });
}

void SavedReceiptSheet::take_focus() {
    table_->setFocus();
}

void SavedReceiptSheet::resizeEvent(QResizeEvent* event) {
    Sheet::resizeEvent(event);
    card()->setFixedSize(std::min(width() - px(24), px(1300)), std::min(height() - px(24), px(860)));
}

void begin_goods_in(QWidget* host, const Context& context, purchases::Receipt receipt) {
    GoodsInSheet sheet(host, context);
    const bool opened = guarded(context.services, "GoodsIn", [&] {
        auto left = sheet.left_open();
        sheet.open(std::move(left ? *left : receipt));
    });
    if (opened && sheet.run() == 1)
        show_saved_receipt(host, context, sheet.logic().receipt().kind, sheet.logic().saved()->number);
}

namespace {

// The document that follows another one, ready to be completed and saved; nothing if nothing of it is left.
std::optional<purchases::Receipt> next_of(const Context& context, const purchases::Receipt& saved,
                                          std::int64_t number, int next) {
    purchases::Receipt back = purchases::return_of(context.connection, saved, number);
    if (back.lines.empty()) {
        context.services.prompts.message(purchases::message::nothing_left, common::Icon::information);
        return std::nullopt;
    }
    if (next == SavedReceiptSheet::give_back) return back;
    purchases::Receipt copy = saved;
    copy.corrects = number;
    return copy;
}

}  // namespace

void show_saved_receipt(QWidget* host, const Context& context, PurchaseKind kind, std::int64_t number) {
    int next = SavedReceiptSheet::nothing;
    std::optional<purchases::Receipt> receipt;
    guarded(context.services, "ShowReceipt", [&] {
        auto saved = purchases::load_receipt(context.connection, kind, number);
        if (!saved) return context.services.prompts.message(purchases::message::no_such_receipt);
        next = SavedReceiptSheet(host, context, *saved, number).run();
        if (next == SavedReceiptSheet::nothing ||
            !signin::authorise_change(context.session, context.services.prompts,
                                      signin::Action::receive_goods))
            return;
        receipt = next_of(context, *saved, number, next);
    });
    if (!receipt) return;
    begin_goods_in(host, context, std::move(*receipt));
}

}  // namespace ui
