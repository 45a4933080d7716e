#include "ui/display/customer_screen.h"

#include <QGuiApplication>
#include <QImageReader>
#include <QLabel>
#include <QPainter>
#include <QPixmap>
#include <QScreen>
#include <QStackedLayout>
#include <QVBoxLayout>

#include "printing/layouts.h"
#include "sales/sales_desk.h"
#include "signin/session.h"
#include "ui/display/customer_lines.h"
#include "ui/widgets/colours.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

constexpr int parting_seconds = 20;
constexpr double net_size = 56;  // as in the style sheet
constexpr double figure_size = 40;
constexpr int logo_height = 220;

// Mirrored monitors show the cashier's own screen.
bool is_apart(const QScreen* monitor, const QWidget& cashier) {
    return monitor != nullptr && monitor != cashier.screen() &&
           !monitor->geometry().intersects(cashier.screen()->geometry());
}

}  // namespace

CustomerScreen::CustomerScreen(const sales::SalesDesk& desk, const signin::Session& session, QWidget& cashier)
    : QWidget(nullptr, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus),
      desk_(desk),
      cashier_(cashier) {
    setObjectName("customer_screen");
    set_role(this, "screen");
    setWindowTitle(qt(message::title));
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_QuitOnClose, false);
    setFocusPolicy(Qt::NoFocus);
    pages_ = new QStackedLayout(this);
    pages_->addWidget(build_idle(session));
    pages_->addWidget(build_sale());
    parting_.setSingleShot(true);
    parting_.setInterval(parting_seconds * 1000);
    connect(&parting_, &QTimer::timeout, this, [this] {
        has_parted_ = true;
        mirror();
    });
    connect(qGuiApp, &QGuiApplication::screenAdded, this, &CustomerScreen::follow);
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, &CustomerScreen::leave);
    for (QScreen* monitor : QGuiApplication::screens())
        follow(monitor);
}

QWidget* CustomerScreen::build_idle(const signin::Session& session) {
    auto* page = new QWidget;
    set_role(page, "head");
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(px(40), px(40), px(40), px(40));
    column->setSpacing(px(24));
    column->addStretch(1);
    if (const auto file = printing::logo_file(session.settings.logo, session.program_folder); !file.empty()) {
        QImageReader reader(qt(file.string()));
        reader.setDecideFormatFromContent(true);
        if (const QPixmap logo = QPixmap::fromImageReader(&reader); !logo.isNull()) {
            auto* picture = new QLabel;
            picture->setObjectName("customer_logo");
            picture->setPixmap(logo.scaledToHeight(px(logo_height), Qt::SmoothTransformation));
            picture->setAlignment(Qt::AlignCenter);
            column->addWidget(picture);
        }
    }
    auto* shop = label(qt(session.settings.aname), "kind", "customer_shop");
    auto* greeting = label(desk_.screen_greeting() ? qt(*desk_.screen_greeting()) : QString("أهلا وسهلا بكم"),
                           "title", "customer_greeting");
    shop->setStyleSheet(QString("font-size: %1px; color: %2;").arg(px(60)).arg(colour::paper));
    greeting->setStyleSheet(QString("font-size: %1px; color: %2;").arg(px(36)).arg(colour::lit));
    for (QLabel* text : {shop, greeting}) {
        text->setAlignment(Qt::AlignCenter);
        text->setWordWrap(true);
        column->addWidget(text);
    }
    column->addStretch(1);
    return page;
}

QLabel* CustomerScreen::add_figure(QVBoxLayout* column, const char* name, const QString& caption,
                                   bool large) {
    auto* box = new QFrame;
    set_role(box, large ? "net" : "change");
    auto* inside = new QVBoxLayout(box);
    inside->setContentsMargins(px(18), px(8), px(18), px(6));
    inside->setSpacing(0);
    inside->addWidget(label(caption, "caption"));
    auto* figure = new Figure(name, large ? "netfigure" : "changefigure");
    figure->setFixedHeight(px(66));
    inside->addWidget(figure);
    column->addWidget(box);
    return figure;
}

QWidget* CustomerScreen::build_sale() {
    auto* page = new QWidget;
    auto* row = new QHBoxLayout(page);
    row->setContentsMargins(px(18), px(18), px(18), px(18));
    row->setSpacing(px(18));
    lines_ = new CustomerLines;
    row->addWidget(lines_, 5);
    auto* figures = new QWidget;
    auto* column = new QVBoxLayout(figures);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(px(14));
    column->addStretch(1);
    net_ = add_figure(column, "customer_net", "الصافي", true);
    payment_ = new QWidget;
    auto* paying = new QVBoxLayout(payment_);
    paying->setContentsMargins(0, 0, 0, 0);
    paying->setSpacing(px(14));
    paid_ = add_figure(paying, "customer_paid", "المدفوع", false);
    change_ = add_figure(paying, "customer_change", "الباقي", false);
    returned_ = add_figure(paying, "customer_returned", "يرد لكم", false);
    QSizePolicy policy = payment_->sizePolicy();
    policy.setRetainSizeWhenHidden(true);  // the net stays where it is
    payment_->setSizePolicy(policy);
    column->addWidget(payment_);
    column->addStretch(1);
    row->addWidget(figures, 3);
    return page;
}

// A monitor often comes as a mirror of the first one and is moved beside it afterwards.
void CustomerScreen::follow(QScreen* monitor) {
    connect(monitor, &QScreen::geometryChanged, this, [this] {
        if (monitor_ != nullptr) leave(monitor_);
        for (QScreen* any : QGuiApplication::screens())
            show_on(any);
    });
    show_on(monitor);
}

void CustomerScreen::show_on(QScreen* monitor) {
    if (monitor_ != nullptr || !is_apart(monitor, cashier_)) return;
    monitor_ = monitor;
    setScreen(monitor);
    setGeometry(monitor->geometry());
    show();
    mirror();
}

// Some platforms give every new window the focus, whatever it asks for.
bool CustomerScreen::event(QEvent* event) {
    if (event->type() == QEvent::WindowActivate) cashier_.activateWindow();
    return QWidget::event(event);
}

void CustomerScreen::leave(const QScreen* monitor) {
    if (monitor != monitor_) return;
    monitor_ = nullptr;
    hide();
    for (QScreen* other : QGuiApplication::screens()) {
        if (other != monitor) show_on(other);
    }
}

bool CustomerScreen::shows_last() const {
    const auto& last = desk_.last_receipt();
    return last && !last->is_over && sales::moves_cash(last->invoice.payment) && !has_parted_;
}

void CustomerScreen::show_amounts(const sales::Invoice& invoice,
                                  const std::optional<sales::PaymentTaken>& taken) {
    show_fitted(net_, qt(invoice.net().text()), net_size);
    for (const QLabel* figure : {paid_, change_})
        figure->parentWidget()->setVisible(!invoice.is_return());
    returned_->parentWidget()->setVisible(invoice.is_return());
    payment_->setVisible(taken.has_value());
    if (!taken) return;
    for (QLabel* figure : {paid_, returned_})
        show_fitted(figure, qt(taken->paid.text()), figure_size);
    show_fitted(change_, qt(taken->change.text()), figure_size);
}

void CustomerScreen::mirror() {
    if (monitor_ == nullptr) return;
    const sales::Invoice& invoice = desk_.invoice();
    if (!invoice.lines.empty()) {
        parting_.stop();
        has_parted_ = false;
        const auto& begun = desk_.sale().begun_save;
        const sales::Payment* payment = begun ? begun->payment.get() : nullptr;
        pages_->setCurrentIndex(1);
        lines_->show_lines(invoice);
        show_amounts(invoice, payment ? std::optional(sales::PaymentTaken{payment->paid(), payment->change()})
                                      : std::nullopt);
        return;
    }
    const bool parting = shows_last();
    if (parting) {
        const sales::LastReceipt& last = *desk_.last_receipt();
        lines_->show_lines(last.invoice);
        show_amounts(last.invoice, last.payment);
        if (!parting_.isActive()) parting_.start();
    }
    pages_->setCurrentIndex(parting ? 1 : 0);
}

}  // namespace ui
