#include "ui/sales/header_bar.h"

#include <QHBoxLayout>
#include <QPushButton>

#include "sales/sales_desk.h"
#include "ui/help/open_help.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

HeaderBar::HeaderBar(QWidget* parent) : QWidget(parent) {
    set_role(this, "head");
    setFixedHeight(px(56));
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(px(20), 0, px(20), 0);
    row->setSpacing(px(28));
    const auto add = [&](const char* name, const char* role) {
        QLabel* made = label({}, role);
        made->setObjectName(name);
        row->addWidget(made);
        return made;
    };
    shop_ = add("shop_name", "shop");
    store_ = add("store_name", "head");
    drawer_ = add("drawer_name", "head");
    user_ = add("user_name", "head");
    shift_ = new QPushButton;
    shift_->setObjectName("shift_number");
    shift_->setFixedHeight(px(least_target));
    shift_->setFocusPolicy(Qt::ClickFocus);
    shift_->setProperty(key_property, "menu_shifts");  // the menu has the same action
    set_role(shift_, "headtext");
    row->addWidget(shift_);
    connect(shift_, &QPushButton::clicked, this, &HeaderBar::shift_clicked);
    news_ = add("news", "ticker");
    news_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    news_->setAlignment(Qt::AlignCenter);
    row->setStretchFactor(news_, 1);
    menu_ = new QPushButton(tr("&القائمة"));
    menu_->setObjectName("menu");
    menu_->setFocusPolicy(Qt::ClickFocus);
    menu_->setFixedHeight(px(least_target));
    set_role(menu_, "headbutton");
    row->addWidget(menu_);
    auto* help = new QPushButton("؟");
    help->setObjectName("help_button");
    help->setAccessibleName("المساعدة");
    help->setToolTip(QString("المساعدة  ") + help_cap);
    help->setProperty(key_property, help_cap);
    help->setFocusPolicy(Qt::NoFocus);  // the focus stays in the field being typed into
    help->setFixedSize(px(least_target), px(least_target));
    set_role(help, "headbutton");
    row->addWidget(help);
    connect(help, &QPushButton::clicked, this, &open_help);
    clock_ = new Figure("clock", "clock");
    clock_->setAlignment(Qt::AlignLeft | Qt::AlignAbsolute | Qt::AlignVCenter);
    row->addWidget(clock_);
}

void HeaderBar::show_state(const sales::SalesDesk& desk, const signin::Session& session) {
    std::string shop = session.settings.aname;
    // The frame says already that this is a training.
    if (session.is_training && shop.starts_with(signin::training_prefix))
        shop.erase(0, signin::training_prefix.size());
    shop_->setText(qt(shop));
    const std::string store = common::name_of(desk.lists().stores, desk.invoice().store);
    store_->setText("المخزن: " + qt(store.empty() ? session.store_name : store));
    drawer_->setText("الخزينة: " + qt(session.drawer_name));
    user_->setText("المستخدم: " + qt(session.user_name));
    const auto shift = desk.shift_number();
    shift_->setText(shift == 0 ? QString("بدون وردية") : "وردية رقم " + QString::number(shift));
    fit_news();
}

void HeaderBar::show_clock(const std::string& text) {
    // Leave room for the seconds, which come with the first tick, so that the bar does not move.
    clock_->setMinimumWidth(clock_->fontMetrics().horizontalAdvance("00:00:00 AM"));
    clock_->setText(qt(text));
}

void HeaderBar::next_news(const std::vector<std::string>& news) {
    if (news.empty()) return;
    news_->setToolTip(qt(news[news_at_++ % news.size()]));
    fit_news();
}

// The news gets the room that the other texts of the bar leave.
void HeaderBar::fit_news() {
    layout()->activate();
    // In less space the news would be unreadable; the tool tip has it.
    constexpr double least = 140;
    const bool fits = news_->width() >= px(least);
    news_->setText(fits ? news_->fontMetrics().elidedText(news_->toolTip(), Qt::ElideRight, news_->width())
                        : QString());
}

void HeaderBar::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    const bool narrow = width() < px(1200);
    layout()->setSpacing(px(narrow ? 12 : 28));
    fit_news();
}

}  // namespace ui
