#include "ui/sales/quick_quantity.h"

#include <QVBoxLayout>

#include "ui/widgets/fields.h"
#include "ui/widgets/style.h"

namespace ui {

QuickQuantity::QuickQuantity(QWidget* host, const QString& item, const QString& quantity) : Sheet(host) {
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

QString QuickQuantity::text() const {
    return field_->text();
}

}  // namespace ui
