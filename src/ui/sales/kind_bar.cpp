#include "ui/sales/kind_bar.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "common/date_time.h"
#include "sales/sales_desk.h"
#include "ui/sales/commands.h"
#include "ui/widgets/choices.h"
#include "ui/widgets/colours.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/key_button.h"
#include "ui/widgets/sheet.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

const char* bar_colour(sales::KindOption kind) {
    switch (kind) {
        case sales::KindOption::sale:
            return colour::sale_bar;
        case sales::KindOption::return_:
            return colour::return_bar;
        case sales::KindOption::third:
            return colour::third_bar;
    }
    return colour::sale_bar;
}

QString customer_text(const sales::Invoice& invoice) {
    using sales::PaymentOption;
    if (invoice.payment == PaymentOption::account) return qt(invoice.customer_name);
    if (invoice.walk_in) return qt(invoice.walk_in->name);
    return "عميل نقدي";
}

}  // namespace

KindBar::KindBar(QWidget* parent) : QWidget(parent) {
    set_role(this, "kinds");
    setFixedHeight(px(84));
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, px(1));
    row->setSpacing(0);
    kind_ = label({}, "kind", "kind_label");
    kind_->setAlignment(Qt::AlignCenter);
    row->addWidget(kind_);

    row->addWidget(cell("رقم البون", key::recall, number_box()));
    date_ = new Figure("invoice_date", "figure");
    row->addWidget(cell("التاريخ", key::invoice_data, date_));
    kinds_ = new Segments("kind", {{0, "بيع"}, {1, "مرتجع"}, {2, "نوع ثالث"}});
    row->addWidget(cell("النوع", key::kind, kinds_));
    std::vector<std::pair<int, QString>> levels;
    for (const auto caption : sales::price_level_captions) {
        levels.emplace_back(static_cast<int>(levels.size()) + 2, qt(caption));
    }
    levels_ = new Segments("price_level", levels);
    row->addWidget(cell("فئة السعر", key::first_price_level, levels_));
    customer_ = label({}, "figure", "customer");
    customer_->setMinimumWidth(px(60));
    row->addWidget(cell("العميل", key::walk_in_customer, customer_, true), 1);

    connect(kinds_, &Segments::chosen, this, &KindBar::kind_chosen);
    connect(levels_, &Segments::chosen, this, &KindBar::price_level_chosen);
}

// The receipt number. Another number typed over it recalls a saved receipt.
QWidget* KindBar::number_box() {
    auto* box = new QWidget;
    auto* pair = new QHBoxLayout(box);
    pair->setContentsMargins(0, 0, 0, 0);
    pair->setSpacing(px(6));
    number_ = new NumberField("invoice_number");
    number_->setAccessibleName("رقم البون");
    number_->setMaxLength(18);
    number_->setFixedHeight(px(least_target));
    number_->setStyleSheet(
        QString("QLineEdit { font-size: %1px; font-weight: 700; padding: 0 %2px; }").arg(px(18)).arg(px(8)));
    number_->installEventFilter(this);
    recall_ = new QPushButton;
    recall_->setObjectName("recall");
    recall_->setAccessibleName("استدعاء بون محفوظ");
    recall_->setToolTip("استدعاء بون محفوظ برقمه");
    recall_->setFocusPolicy(Qt::ClickFocus);
    recall_->setProperty(key_property, key_cap(key::recall));
    recall_->setMinimumWidth(px(least_target));
    recall_->setFixedHeight(px(least_target));
    recall_->setStyleSheet(
        QString("QPushButton { font-size: %1px; padding: 0 %2px; }").arg(px(14)).arg(px(8)));
    pair->addWidget(number_);
    pair->addWidget(recall_);
    connect(number_, &QLineEdit::returnPressed, this, [this] { emit recall_wanted(number_->text()); });
    connect(recall_, &QPushButton::clicked, this, [this] {
        // The field still holds the number of the invoice on the window: the cashier must type another one
        // first.
        if (number_->text() == shown_number_) {
            focus_number();
        } else {
            emit recall_wanted(number_->text());
        }
    });
    return box;
}

void KindBar::focus_number() {
    number_->setFocus();
    number_->selectAll();
}

bool KindBar::eventFilter(QObject* watched, QEvent* event) {
    if (watched == number_ && event->type() == QEvent::FocusOut) {
        // A number typed without Enter is replaced by the invoice's own when the focus leaves, unless only a
        // box took it.
        QMetaObject::invokeMethod(
            this,
            [this] {
                if (!number_->hasFocus() && Sheet::top_of(window()) == nullptr)
                    number_->setText(shown_number_);
            },
            Qt::QueuedConnection);
    }
    return QWidget::eventFilter(watched, event);
}

QWidget* KindBar::cell(const QString& caption, QKeyCombination key, QWidget* content, bool last) {
    auto* made = new QWidget;
    made->setProperty("last", last);
    set_role(made, "cell");
    auto* column = new QVBoxLayout(made);
    column->setContentsMargins(px(18), px(5), px(18), px(4));
    column->setSpacing(0);
    QString cap = key_cap(key);
    if (key == key::first_price_level) cap += "-" + QString::number(std::size(sales::price_level_captions));
    column->addWidget(label(caption + " " + cap, "caption"));
    column->addStretch(1);
    column->addWidget(content);
    column->addStretch(1);
    return made;
}

void KindBar::show_state(const sales::SalesDesk& desk) {
    const sales::Invoice& invoice = desk.invoice();
    kind_->setText(qt(sales::kind_caption(invoice.kind, invoice.payment)));
    const QColor background = colour::from_blue_first(sales::grid_colour(invoice.kind));
    const QString style = QString("background: %1; border-left: %2px solid %3;")
                              .arg(background.name())
                              .arg(px(6))
                              .arg(bar_colour(invoice.kind));
    if (style != kind_style_) {
        kind_style_ = style;
        kind_->setStyleSheet(style);
    }
    const QString number = QString::number(invoice.number);
    // Keep a number that is being typed, and the selection of one that is about to be replaced.
    const bool keeps = number_->hasFocus() && number_->text() != shown_number_ && shown_number_ == number;
    if (!keeps && number_->text() != number) number_->setText(number);
    shown_number_ = number;
    date_->setText(qt(common::date_text(invoice.date)));
    kinds_->show_chosen(static_cast<int>(invoice.kind));
    levels_->show_chosen(invoice.price_level);
    customer_->setText(customer_text(invoice));
}

void KindBar::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    const bool narrow = width() < px(1200);
    kind_->setFixedWidth(px(narrow ? 164 : 220));
    number_->setFixedWidth(px(narrow ? 62 : 92));
    recall_->setText(narrow ? "↺" : "استدعاء");
    for (QWidget* made : findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        if (made->layout() != nullptr) {
            made->layout()->setContentsMargins(px(narrow ? 8 : 18), px(5), px(narrow ? 8 : 18), px(4));
        }
    }
}

}  // namespace ui
