#include "office/office_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QScrollArea>
#include <QStackedWidget>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>

#include "signin/session.h"
#include "ui/help/open_help.h"
#include "ui/signin/sign_in_window.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/key_button.h"
#include "ui/widgets/sheet.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace office {

namespace {

using ui::px;
using ui::qt;

constexpr int entries_width = 206;

// "Leave the office?"
constexpr std::string_view ask_leave = "الخروج من برنامج المكتب؟";
// The shop is kept by another program; nothing can be changed here.
constexpr auto shown_only = "للعرض فقط";

}  // namespace

OfficeWindow::OfficeWindow(const ui::Context& context) : context_(context) {
    setObjectName("office_window");
    ui::set_role(this, "screen");
    setWindowTitle(qt(ui::message::title));
    setMinimumSize(px(640), px(480));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(build_head());
    auto* row = new QHBoxLayout;
    row->setSpacing(0);
    row->addWidget(build_entries());
    stack_ = new QStackedWidget;
    stack_->setContentsMargins(px(12), px(12), px(12), px(12));
    row->addWidget(stack_, 1);
    column->addLayout(row, 1);
    qApp->installEventFilter(this);
}

QWidget* OfficeWindow::build_head() {
    auto* head = new QWidget;
    ui::set_role(head, "head");
    auto* row = new QHBoxLayout(head);
    row->setContentsMargins(px(18), px(8), px(18), px(8));
    row->setSpacing(px(18));
    const auto& session = context_.session;
    row->addWidget(ui::label(qt(session.settings.aname), "shop", "office_shop"));
    row->addWidget(ui::label("المكتب", "plain", "office_title"));
    if (session.is_read_only) row->addWidget(ui::label(shown_only, "lost", "office_read_only"));
    row->addStretch(1);
    row->addWidget(ui::label(qt(session.user_name), "plain", "office_user"));
    clock_ = ui::label({}, "clock", "office_clock");
    row->addWidget(clock_);
    const auto tick = [this] {
        const common::Moment now = context_.services.clock.now();
        clock_->setText("\u200e" + qt(common::date_text(now.date)) + "  " +
                        qt(common::time_text(now.time)).left(5));
    };
    auto* timer = new QTimer(this);
    connect(timer, &QTimer::timeout, this, tick);
    timer->start(1000);
    tick();
    return head;
}

QWidget* OfficeWindow::build_entries() {
    auto* area = new QScrollArea;
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setFixedWidth(px(entries_width));
    area->setFocusPolicy(Qt::NoFocus);
    auto* side = new QWidget;
    ui::set_role(side, "entries");
    auto* column = new QVBoxLayout(side);
    column->setContentsMargins(px(8), px(10), px(8), px(10));
    column->setSpacing(px(4));
    for (const Entry& entry : entries()) {
        const auto is_allowed = [this](signin::Action right) {
            return signin::allows(context_.session, right);
        };
        if (std::ranges::any_of(entry.rights, is_allowed)) add_entry(entry, *column);
    }
    column->addStretch(1);
    const auto foot = [&](const char* name, const char* cap, const QString& caption, auto action) {
        auto* button = new ui::KeyButton(name, cap, caption, ui::KeyButton::Look::strip);
        connect(button, &QPushButton::clicked, this, action);
        column->addWidget(button);
    };
    foot("office_help", ui::help_cap, "المساعدة", [] { ui::open_help(); });
    foot("office_password", "", "كلمة السر", [this] { ui::PasswordSheet(this, context_).run(); });
    foot("office_leave", "Ctrl Q", "خروج", [this] { leave(); });
    area->setWidget(side);
    return area;
}

void OfficeWindow::add_entry(const Entry& entry, QVBoxLayout& column) {
    auto* button = new QPushButton(entry.caption);
    button->setObjectName("office_" + entry.name);
    button->setCheckable(true);
    button->setMinimumHeight(px(ui::least_target));
    button->setAutoDefault(true);
    ui::set_role(button, "entry");
    const std::size_t at = places_.size();
    if (at < 9) button->setToolTip("Ctrl+" + QString::number(at + 1));
    connect(button, &QPushButton::clicked, this, [this, at] { open_entry(places_[at]); });
    column.addWidget(button);
    places_.push_back({&entry, button});
}

void OfficeWindow::open() {
    for (Place& place : places_) {
        if (place.entry->make == nullptr) continue;
        show_page(place);
        return;
    }
    if (!places_.empty()) places_.front().button->setFocus();
}

void OfficeWindow::open_entry(Place& place) {
    if (ui::Sheet::top_of(this) != nullptr) return mark_current();
    if (place.entry->make != nullptr) {
        if (&place == current_ || may_leave_page()) show_page(place);
    } else {
        ui::guarded(context_.services, "OpenEntry", [&] { place.entry->run(this, context_); });
    }
    mark_current();
}

bool OfficeWindow::show_page(Place& place) {
    const bool shown = ui::guarded(context_.services, "OpenPage", [&] {
        if (place.page == nullptr) {
            place.page = place.entry->make(context_);
            place.page->set_links(*this);
            stack_->addWidget(place.page);
        }
        place.page->open();
        current_ = &place;
        stack_->setCurrentWidget(place.page);
        place.page->take_focus();
    });
    mark_current();
    return shown;
}

std::size_t OfficeWindow::place_of(ui::PageList list) const {
    const auto found = std::ranges::find_if(
        places_, [list](const Place& place) { return std::ranges::count(place.entry->lists, list) > 0; });
    return static_cast<std::size_t>(found - places_.begin());
}

void OfficeWindow::open(ui::PageList list) {
    if (!has(list) || !may_leave_page()) return;
    Place& place = places_[place_of(list)];
    if (show_page(place)) ui::guarded(context_.services, "OpenList", [&] { place.page->show_list(list); });
}

void OfficeWindow::mark_current() {
    for (const Place& place : places_)
        place.button->setChecked(&place == current_);
}

bool OfficeWindow::may_leave_page() {
    return current_ == nullptr || current_->page->may_leave();
}

void OfficeWindow::leave() {
    if (ui::Sheet::top_of(this) != nullptr || !may_leave_page()) return;
    if (context_.services.prompts.ask(ask_leave) == common::Answer::yes) emit finished();
}

bool OfficeWindow::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress || watched != QApplication::focusWidget() || !isActiveWindow() ||
        ui::Sheet::top_of(this) != nullptr)
        return false;
    const auto* pressed = static_cast<QKeyEvent*>(event);
    if (pressed->modifiers() != Qt::ControlModifier) return false;
    if (pressed->key() == Qt::Key_Q) {
        leave();
        return true;
    }
    const auto at = static_cast<std::size_t>(pressed->key() - Qt::Key_1);
    if (pressed->key() < Qt::Key_1 || pressed->key() > Qt::Key_9 || at >= places_.size()) return false;
    open_entry(places_[at]);
    return true;
}

void OfficeWindow::closeEvent(QCloseEvent* event) {
    event->ignore();
    leave();
}

}  // namespace office
