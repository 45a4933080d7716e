#include "ui/widgets/server_panel.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>

#include "ui/widgets/fields.h"
#include "ui/widgets/key_button.h"
#include "ui/widgets/server_wait.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

constexpr int second_ms = 1000;

}  // namespace

ServerPanel::ServerPanel(QWidget* window, const QElapsedTimer& begun)
    : QWidget(window, window == nullptr ? Qt::Tool : Qt::Widget), begun_(begun) {
    setObjectName("server_waiting");
    setWindowTitle(qt(message::title));
    setFocusPolicy(Qt::NoFocus);
    auto* outer = new QVBoxLayout(this);
    auto* card = new QWidget;
    set_role(card, "card");
    card->setFixedWidth(px(440));
    outer->addWidget(card, 0, Qt::AlignCenter);
    auto* column = new QVBoxLayout(card);
    column->setContentsMargins(px(28), px(22), px(28), px(24));
    column->setSpacing(px(14));

    auto* head = new QHBoxLayout;
    head->addWidget(label("في انتظار رد الخادم", "title"), 1);
    seconds_ = label({}, "title", "server_seconds");
    head->addWidget(seconds_);
    column->addLayout(head);
    if (window != nullptr) {
        auto* said = label("ما تكتبه أو تقرؤه بالماسح الآن محفوظ، ويدخل بعد رد الخادم.", "side");
        said->setWordWrap(true);
        column->addWidget(said);
    }
    button_ = new KeyButton("server_give_up", "Esc", "إيقاف الانتظار", KeyButton::Look::strip);
    button_->setFocusPolicy(Qt::NoFocus);
    button_->setProperty(key_property, "Esc");
    button_->setMinimumHeight(px(48));
    connect(button_, &QPushButton::clicked, this, &ServerPanel::given_up);
    column->addWidget(button_);

    auto* second = new QTimer(this);
    second->setProperty(runs_while_waiting, true);
    connect(second, &QTimer::timeout, this, &ServerPanel::show_seconds);
    second->start(second_ms / 4);
    show_seconds();
    shown_.start();
    if (window != nullptr) {
        setGeometry(window->rect());
        window->installEventFilter(this);
    } else {
        adjustSize();
        move(screen()->availableGeometry().center() - rect().center());
    }
    show();
    raise();
    if (window == nullptr) activateWindow();
}

void ServerPanel::show_seconds() {
    seconds_->setText(QString::number(begun_.elapsed() / second_ms) + " ث");
}

bool ServerPanel::has_button_at(const QPoint& global) const {
    return button_->rect().contains(button_->mapFromGlobal(global));
}

bool ServerPanel::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize && watched == parentWidget()) setGeometry(parentWidget()->rect());
    return QWidget::eventFilter(watched, event);
}

// The screen below stays readable: the cashier can go on reading prices to the customer.
void ServerPanel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), isWindow() ? QColor(0xee, 0xf1, 0xf4) : QColor(15, 37, 54, 70));
}

}  // namespace ui
