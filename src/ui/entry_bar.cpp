#include "ui/entry_bar.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QVBoxLayout>

#include "ui/key_button.h"
#include "ui/style.h"

namespace ui {

EntryBar::EntryBar(QWidget* parent) : QWidget(parent) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(px(8));
    auto* row = new QHBoxLayout;
    row->setSpacing(px(10));
    column->addLayout(row);

    field_ = new QLineEdit;
    field_->setObjectName("entry");
    field_->setPlaceholderText("كود الصنف أو الباركود");
    set_role(field_, "entry");
    field_->installEventFilter(this);
    row->addWidget(field_, 1);
    auto* general = new KeyButton("general_item", "*", "صنف عام", KeyButton::Look::tool);
    auto* search = new KeyButton("search", "Ctrl F", "بحث", KeyButton::Look::tool);
    general->setMinimumWidth(px(150));
    search->setMinimumWidth(px(150));
    row->addWidget(general);
    row->addWidget(search);

    recalled_ = new QLineEdit;
    recalled_->setObjectName("entry_for_recalled");
    recalled_->setPlaceholderText("إضافة صنف إلى الفاتورة المستدعاة");
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
