#include "ui/sales/held_sheet.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "sales/sales_desk.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/list_table.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

QString time_of(const common::Moment& moment, const common::Date& today) {
    const QString time = qt(common::twelve_hour_text(moment.time));
    return figure(moment.date == today ? time : qt(common::date_text(moment.date)) + " " + time);
}

}  // namespace

HeldSheet::HeldSheet(QWidget* host, sales::SalesDesk& desk, const Context& context)
    : Sheet(host, "البونات المعلقة"), desk_(desk), context_(context) {
    setObjectName("held_screen");
    set_card_width(860);
    table_ = new ListTable("held", {"الوقت", "العميل", "النوع", "الصافي", "السطور", "الخزينة", "الكاشير"}, 1);
    table_->setMinimumHeight(px(340));
    table_->say_when_empty("لا توجد بونات معلقة · يعلق البون بالمفتاحين Shift F2");
    table_->set_look([this](int row, int) {
        return held_[static_cast<std::size_t>(row)].taken != 0 ? CellLook::dimmed : CellLook::plain;
    });
    body()->addWidget(table_, 1);
    details_ = label({}, "side", "held_details");
    details_->setWordWrap(true);
    details_->setMinimumHeight(px(52));
    details_->setAlignment(Qt::AlignTop | Qt::AlignLeading);
    body()->addWidget(details_);

    QHBoxLayout* buttons = add_row();
    set_role(foot_button(buttons, "held_resume", "ا&سترجاع  Enter", 2, [this] { resume(); }), "main");
    foot_button(buttons, "held_discard", "&حذف  Delete", 1, [this] { discard(); });
    foot_button(buttons, "held_back", "ر&جوع", 1, [this] { leave(0); });
    connect(table_, &ListTable::row_taken, this, [this] { resume(); });
    connect(table_, &ListTable::row_chosen, this, [this] { show_details(); });
    read();
}

void HeldSheet::take_focus() {
    table_->setFocus();
}

void HeldSheet::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Delete) {
        discard();
        event->accept();
    } else {
        Sheet::keyPressEvent(event);
    }
}

void HeldSheet::read() {
    held_ = desk_.held().list();
    invoices_.clear();
    const common::Date today = context_.services.clock.now().date;
    std::vector<QStringList> rows;
    for (const sales::HeldInvoice& held : held_) {
        QString kind;
        auto& kept = invoices_.emplace_back();
        try {
            kept = sales::read_kept_invoice(held.content);
            kind = qt(sales::kind_caption(kept->invoice.kind, kept->invoice.payment));
        } catch (const std::exception&) {
            // Resuming it says that it cannot be read.
        }
        rows.push_back({time_of(held.moment, today), qt(held.customer), kind, figure(held.net.text()),
                        figure(held.line_count), qt(desk_.held().drawer_name(held.drawer)),
                        qt(held.user_name)});
    }
    table_->show_rows(std::move(rows));
    show_details();
}

void HeldSheet::show_details() {
    const int row = table_->current_row();
    details_->setText(row < 0 ? QString() : details(static_cast<std::size_t>(row)));
}

QString HeldSheet::details(std::size_t row) const {
    const sales::HeldInvoice& held = held_[row];
    if (held.id == desk_.held().id_on_screen()) return "على شاشتك الآن";
    if (held.taken != 0)
        return "مفتوح الآن على " + qt(desk_.held().drawer_name(held.taken_drawer)) + " · " +
               qt(held.taken_user);
    QStringList names;
    if (invoices_[row])
        for (const sales::Line& line : invoices_[row]->invoice.lines)
            names << qt(line.name);
    const QString all = names.join("، ");
    const int width = std::max(px(200), details_->width());
    return details_->fontMetrics().elidedText(all, Qt::ElideRight, 2 * width - px(80));
}

const sales::HeldInvoice* HeldSheet::chosen() {
    // A second press of a button is ignored while a box is open.
    if (Sheet::top_of(window()) != this) return nullptr;
    const int row = table_->current_row();
    return row < 0 ? nullptr : &held_[static_cast<std::size_t>(row)];
}

void HeldSheet::resume() {
    const auto* held = chosen();
    if (held == nullptr) return;
    if (desk_.held().resume(*held)) return leave(1);
    read();
    table_->setFocus();
}

void HeldSheet::discard() {
    const auto* held = chosen();
    if (held == nullptr) return;
    desk_.held().discard(*held);
    read();
    table_->setFocus();
}

}  // namespace ui
