#include "ui/sales/entry_bar.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QVBoxLayout>

#include "ui/sales/commands.h"
#include "ui/widgets/colours.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/key_button.h"
#include "ui/widgets/style.h"

namespace ui {

namespace {

// Paints its own hint, smaller than typed text and clear of the cursor.
class EntryField : public QLineEdit {
  public:
    EntryField() {
        setObjectName("entry");
        setAccessibleName("كود الصنف أو الباركود");
        set_role(this, "entry");
        begin_right(this);
    }

  protected:
    void paintEvent(QPaintEvent* event) override {
        QLineEdit::paintEvent(event);
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
    general->setMinimumWidth(px(150));
    search->setMinimumWidth(px(150));
    row->addWidget(general);
    row->addWidget(search);

    recalled_ = text_field("entry_for_recalled");
    set_hint(recalled_, "إضافة صنف إلى الفاتورة المستدعاة");
    recalled_->hide();
    column->addWidget(recalled_);

    connect(field_, &QLineEdit::returnPressed, this, [this] { emit entered(field_->text()); });
    connect(recalled_, &QLineEdit::returnPressed, this, [this] {
        emit entered_for_recalled(recalled_->text());
        recalled_->clear();
        recalled_->setFocus();
    });
    connect(general, &QPushButton::clicked, this, &EntryBar::general_item_clicked);
    connect(search, &QPushButton::clicked, this, &EntryBar::search_clicked);
}

void EntryBar::show_recalled(bool recalled) {
    recalled_->setVisible(recalled);
}

bool EntryBar::eventFilter(QObject* watched, QEvent* event) {
    if (watched == field_ && event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Down || key->key() == Qt::Key_Up) {
            emit down();
            return true;
        }
        if (key->text() == "+" && field_->text().isEmpty()) {
            emit quick_quantity_wanted();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

}  // namespace ui
