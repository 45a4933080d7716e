#include "ui/sales/item_sheets.h"

#include <QGridLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "sales/sales_desk.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

QuickQuantitySheet::QuickQuantitySheet(QWidget* host, const QString& item, const QString& quantity)
    : Sheet(host) {
    setObjectName("quick_quantity_sheet");
    set_card_width(360);
    QLabel* name = label(item, "figure");
    name->setWordWrap(true);
    body()->addWidget(name);
    field_ = new AmountField("quick_quantity");
    set_role(field_, "large");
    field_->setText(quantity);
    body()->addWidget(captioned("الكمية", field_));
    connect(field_, &QLineEdit::returnPressed, this, [this] { leave(1); });
}

QString QuickQuantitySheet::text() const {
    return field_->text();
}

ItemInfoSheet::ItemInfoSheet(QWidget* host, const sales::ItemInfo& info, const sales::StockShown* stock)
    : Sheet(host, qt(info.name)) {
    setObjectName("item_info_sheet");
    set_card_width(460);
    auto* grid = new QGridLayout;
    grid->setVerticalSpacing(px(10));
    int row = 0;
    const auto add = [&](const QString& caption, const char* name, const std::string& text) {
        grid->addWidget(label(caption, "plain"), row, 0);
        auto* figure = new Figure(name, "figure");
        figure->setText(qt(text));
        grid->addWidget(figure, row++, 1);
    };
    add("كود", "info_code", std::to_string(info.code));
    add("سعر التكلفة", "info_price11", info.price11);
    add("قطاعي", "info_price12", info.price12);
    add("جملة", "info_price13", info.price13);
    body()->addLayout(grid);
    QLabel* profit = label(qt(info.profit), "figure", "info_profit");
    body()->addWidget(profit);
    if (stock != nullptr) {
        body()->addWidget(rule());
        QString lines = qt(stock->quantity).trimmed();
        for (const std::string& expiry : stock->expiries)
            lines += "\n" + qt(expiry);
        QLabel* shown = label(lines, "side", "info_stock");
        body()->addWidget(shown);
    }
    auto* close = new QPushButton(tr("&رجوع"));
    close->setObjectName("info_close");
    connect(close, &QPushButton::clicked, this, [this] { leave(0); });
    body()->addWidget(close);
}

}  // namespace ui
