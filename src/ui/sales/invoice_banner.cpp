#include "ui/sales/invoice_banner.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include "common/date_time.h"
#include "sales/sales_desk.h"
#include "ui/widgets/colours.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

InvoiceBanner::InvoiceBanner(QWidget* parent) : QFrame(parent) {
    setObjectName("invoice_banner");
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(px(8), px(6), px(14), px(6));
    row->setSpacing(px(8));
    text_ = label({}, "plain", "invoice_state");
    text_->setWordWrap(true);
    row->addWidget(text_, 1);
    reprint_ = button("reprint", "إعادة ال&طباعة");
    return_ = button("return_of_sale", "ا&رتجاع من هذا البون");
    row->addWidget(reprint_);
    row->addWidget(return_);
    connect(reprint_, &QPushButton::clicked, this, &InvoiceBanner::reprint_clicked);
    connect(return_, &QPushButton::clicked, this, &InvoiceBanner::return_clicked);
    hide();
}

QPushButton* InvoiceBanner::button(const char* name, const QString& caption) {
    auto* made = new QPushButton(caption);
    made->setObjectName(name);
    made->setFixedHeight(px(38));
    return made;
}

void InvoiceBanner::set_colours(const char* background, const char* edge) {
    setStyleSheet(QString("ui--InvoiceBanner { background: %1; border: none; border-right: %2px solid %3; "
                          " } QLabel { color: %4; }")
                      .arg(background)
                      .arg(px(6))
                      .arg(edge)
                      .arg(colour::ink));
}

void InvoiceBanner::show_state(const sales::SalesDesk& desk) {
    const auto& recalled = desk.sale().recalled;
    const bool saved = desk.sale().shows_saved_receipt();
    QString text;
    if (const auto& step = desk.sale().partly_saved) {
        set_colours("#fbe9e7", colour::alarm);
        text = QString(
                   "البون رقم %1 حفظ جزء منه فقط، آخر خطوة تمت: %2. لا يحفظ مرة أخرى: ألغ البون (F3) وأبلغ "
                   "المدير")
                   .arg(desk.invoice().number)
                   .arg(qt(sales::name_of(*step)));
    } else if (saved) {
        set_colours("#e3effa", colour::focus);
        text = QString("بون محفوظ رقم %1 · \u200e%2 %3\u200e · وردية %4")
                   .arg(recalled->invoice.number)
                   .arg(qt(common::date_text(recalled->saved_at.date)),
                        qt(common::twelve_hour_text(recalled->saved_at.time)))
                   .arg(recalled->shift);
    } else if (recalled) {
        set_colours("#e7f3ec", colour::return_bar);
        text = QString("مرتجع من البون رقم %1 بتاريخ %2")
                   .arg(recalled->invoice.number)
                   .arg(qt(common::date_text(recalled->invoice.date)));
    } else if (desk.sale().offer != 0) {
        set_colours("#fdf6da", colour::sale_bar);
        text = QString("من عرض السعر رقم %1").arg(desk.sale().offer);
    }
    if (!desk.invoice().lines.empty()) notice_.clear();
    if (text.isEmpty() && !notice_.isEmpty()) {
        set_colours("#e3effa", colour::focus);
        text = notice_;
    }
    text_->setText(text);
    reprint_->setVisible(saved || desk.sale().partly_saved);
    return_->setVisible(saved && !recalled->invoice.is_return() && !desk.sale().partly_saved);
    setVisible(!text.isEmpty());
}

}  // namespace ui
