#include "ui/sales/entry_bar.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

#include "common/date_time.h"
#include "sales/entry.h"
#include "sales/sales_desk.h"
#include "ui/sales/commands.h"
#include "ui/widgets/colours.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/key_button.h"
#include "ui/widgets/key_queue.h"
#include "ui/widgets/keypad.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

// Paints its own hint, smaller than typed text and clear of the cursor.
class EntryField : public SelectingField {
  public:
    EntryField() {
        setObjectName("entry");
        setAccessibleName("كود الصنف أو الباركود");
        set_role(this, "entry");
        begin_right(this);
    }

  protected:
    void paintEvent(QPaintEvent* event) override {
        SelectingField::paintEvent(event);
        if (!text().isEmpty()) return;
        QPainter painter(this);
        QFont smaller = font();
        smaller.setPixelSize(px(17));
        painter.setFont(smaller);
        painter.setPen(QColor(colour::hint));
        painter.drawText(rect().adjusted(0, 0, -px(32), 0),
                         Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter, accessibleName());
    }
};

}  // namespace

EntryBar::EntryBar(QWidget* parent) : QWidget(parent) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(px(8));
    auto* row = new QHBoxLayout;
    row->setSpacing(px(10));
    column->addLayout(row);

    field_ = new EntryField;
    field_->installEventFilter(this);
    row->addWidget(field_, 1);
    auto* general = new KeyButton("general_item", "*", "صنف عام", KeyButton::Look::tool);
    auto* search = new KeyButton("search", key_cap(key::search), "بحث", KeyButton::Look::tool);
    auto* tiles = new KeyButton("tiles_open", key_cap(key::tiles), "أصناف سريعة", KeyButton::Look::tool);
    tools_ = {general, search, tiles};
    for (KeyButton* button : tools_)
        row->addWidget(button);
    auto* keypad = new QPushButton("⌨");
    keypad->setObjectName("keypad_button");
    keypad->setAccessibleName("لوحة الأرقام");
    keypad->setToolTip(QString("لوحة الأرقام  ") + keypad_cap);
    keypad->setProperty(key_property, keypad_cap);
    keypad->setFocusPolicy(Qt::NoFocus);  // the focus stays in the field to be typed into
    keypad->setFixedSize(px(54), px(54));
    set_role(keypad, "tool");
    row->addWidget(keypad);
    connect(keypad, &QPushButton::clicked, this, &EntryBar::keypad_clicked);

    recalled_ = text_field("entry_for_recalled");
    set_hint(recalled_, "إضافة صنف إلى البون المستدعى");
    recalled_->hide();
    column->addWidget(recalled_);

    // A sign acts at once unless more follows as fast as a scanner sends it, because codes may contain signs.
    sign_.setSingleShot(true);
    sign_.setInterval(static_cast<int>(KeyQueue::burst_ms) + 5);
    connect(&sign_, &QTimer::timeout, this, &EntryBar::take_sign);
    connect(field_, &QLineEdit::textEdited, &sign_, qOverload<>(&QTimer::start));
    connect(field_, &QLineEdit::returnPressed, this, [this] { emit entered(field_->text()); });
    connect(recalled_, &QLineEdit::returnPressed, this, [this] {
        emit entered_for_recalled(recalled_->text());
        recalled_->setFocus();
    });
    connect(general, &QPushButton::clicked, this, &EntryBar::general_item_clicked);
    connect(search, &QPushButton::clicked, this, &EntryBar::search_clicked);
    connect(tiles, &QPushButton::clicked, this, &EntryBar::tiles_clicked);
}

void EntryBar::show_recalled(bool recalled) {
    recalled_->setVisible(recalled);
}

void EntryBar::take_sign() {
    const QString text = field_->text();
    if (text == "+" || text == "/") {
        clear();
        emit(text == "+" ? quick_quantity_wanted() : next_unit_wanted());
    } else if (sales::read_entry(utf8(text)).form == sales::EntryForm::quantity_of_last) {
        emit entered(text);
    }
}

void EntryBar::clear() {
    // Not QLineEdit::clear(), which would keep everything typed on that day for undo.
    field_->setText({});
    recalled_->setText({});
}

// On a narrow screen the field gets the width of the keys.
void EntryBar::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    for (KeyButton* button : tools_)
        button->set_key_below(width() < px(900));
}

bool EntryBar::eventFilter(QObject* watched, QEvent* event) {
    if (watched == field_ && event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Down || key->key() == Qt::Key_Up) {
            emit down();
            return true;
        }
        if (key->key() == Qt::Key_Delete && field_->text().isEmpty()) {
            emit delete_wanted();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

InvoiceBanner::InvoiceBanner(QWidget* parent)
    : Banner("invoice_banner", "invoice_state", parent),
      reprint_(add_button("reprint", "إعادة ال&طباعة")),
      return_(add_button("return_of_sale", "م&رتجع من هذا البون")) {
    connect(reprint_, &QPushButton::clicked, this, &InvoiceBanner::reprint_clicked);
    connect(return_, &QPushButton::clicked, this, &InvoiceBanner::return_clicked);
}

void InvoiceBanner::show_state(const sales::SalesDesk& desk) {
    const auto& recalled = desk.sale().recalled;
    const bool saved = desk.sale().shows_saved_receipt();
    QString text;
    if (const auto& partly = desk.sale().partly_saved) {
        set_colours("#fbe9e7", colour::alarm);
        text = QString(partly->journal_id != 0
                           ? "البون رقم %1 حفظ جزء منه فقط، آخر خطوة تمت: %2. اضغط F1 لإكمال حفظه أو "
                             "التراجع عنه"
                           : "البون رقم %1 حفظ جزء منه فقط، آخر خطوة تمت: %2. لا يحفظ مرة أخرى: ألغ "
                             "البون (F3) وأبلغ المدير")
                   .arg(desk.invoice().number)
                   .arg(qt(sales::name_of(partly->finished)));
    } else if (saved) {
        set_colours("#e3effa", colour::focus);
        text = QString("بون محفوظ رقم %1 · %2 · وردية %3")
                   .arg(recalled->invoice.number)
                   .arg(figure(common::date_text(recalled->identity.key.date) + " " +
                               common::twelve_hour_text(recalled->identity.time)))
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
    this->text()->setText(text);
    reprint_->setVisible(saved || desk.sale().partly_saved);
    return_->setVisible(saved && !recalled->invoice.is_return() && !desk.sale().partly_saved);
    setVisible(!text.isEmpty());
}

}  // namespace ui
