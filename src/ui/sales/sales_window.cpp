// The sales window: its parts and what they show.
#include "ui/sales/sales_window.h"

#include <QApplication>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QResizeEvent>
#include <QVBoxLayout>

#include "common/numbers.h"
#include "ui/help/open_help.h"
#include "ui/printing/printing_line.h"
#include "ui/sales/change_card.h"
#include "ui/sales/entry_bar.h"
#include "ui/sales/header_bar.h"
#include "ui/sales/kind_bar.h"
#include "ui/sales/line_view.h"
#include "ui/sales/matches.h"
#include "ui/sales/party_bar.h"
#include "ui/sales/tiles_panel.h"
#include "ui/sales/totals_panel.h"
#include "ui/widgets/colours.h"
#include "ui/widgets/column_menu.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/key_button.h"
#include "ui/widgets/key_queue.h"
#include "ui/widgets/keypad.h"
#include "ui/widgets/screen_choice.h"
#include "ui/widgets/server_link.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

constexpr int news_seconds = 8;

}  // namespace

SalesWindow::SalesWindow(Context context, const std::vector<Command>& screens)
    : context_(std::move(context)),
      screens_(screens),
      desk_(context_.connection, context_.session, context_.services, context_.receipts),
      model_(new LineModel(desk_, this)),
      header_(new HeaderBar),
      server_(label({}, "lost", "server_lost")),
      kind_bar_(new KindBar),
      totals_(new TotalsPanel),
      strip_(new KeyStrip) {
    setObjectName("Form31");
    set_role(this, "screen");
    setWindowTitle(qt(message::title));
    setMinimumSize(px(1024), px(700));

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(header_);
    server_->setAlignment(Qt::AlignCenter);
    column->addWidget(server_);
    column->addWidget(kind_bar_);
    auto* middle = new QHBoxLayout;
    middle->setSpacing(0);
    middle->addWidget(build_main(), 1);
    middle->addWidget(totals_);
    column->addLayout(middle, 1);
    column->addWidget(strip_);

    // "Detailed search".
    matches_ = new Matches(this, desk_.lines(), context_, " · " + key_cap(key::search) + " بحث بالتفصيل");
    build_strip();
    build_menu();
    connect_parts();
    show_server();
    qApp->installEventFilter(this);
}

SalesWindow::~SalesWindow() {
    tiles_->disconnect(this);  // it hides with the window
    qApp->removeEventFilter(this);
}

QWidget* SalesWindow::build_main() {
    auto* main = new QWidget;
    auto* column = new QVBoxLayout(main);
    column->setContentsMargins(px(14), px(14), px(14), px(10));
    column->setSpacing(px(10));
    banner_ = new InvoiceBanner;
    column->addWidget(banner_);
    entry_bar_ = new EntryBar;
    column->addWidget(entry_bar_);
    party_bar_ = new PartyBar;
    column->addWidget(party_bar_);
    change_ = new ChangeCard;
    column->addWidget(change_);
    auto* frame = new QFrame;
    set_role(frame, "grid");
    auto* inside = new QVBoxLayout(frame);
    inside->setContentsMargins(px(2), px(2), px(2), px(2));
    lines_ = new LineView(model_);
    inside->addWidget(lines_);
    column->addWidget(frame, 1);
    tiles_ = new TilesPanel(desk_, context_, lines_);
    column->addWidget(tiles_);
    main->installEventFilter(tiles_);
    printing_ = new PrintingLine(context_.services);
    column->addWidget(printing_);
    column->addWidget(build_foot());
    return main;
}

// The line below the grid: stock of the current line, number of lines and pieces, and buttons of screens.
QWidget* SalesWindow::build_foot() {
    auto* box = new QWidget;
    auto* foot = new QHBoxLayout(box);
    foot->setContentsMargins(px(4), 0, px(4), 0);
    foot->setSpacing(px(8));
    stock_ = label({}, "foot", "stock");
    stock_->setMinimumWidth(px(60));
    counts_ = label({}, "foot", "counts");
    foot->addWidget(stock_, 1);
    foot->addWidget(counts_);
    const auto add = [&](const Command& command, const QString& name, const QString& caption) {
        auto* button = new KeyButton(name, key_cap(command.key), caption, KeyButton::Look::strip);
        button->setToolTip(QString(command.caption).remove('&'));
        button->setFocusPolicy(Qt::ClickFocus);
        button->setFixedHeight(px(least_target));
        connect(button, &QPushButton::clicked, this, [this, &command] { perform(command); });
        foot->addWidget(button);
        return button;
    };
    for (const Command& command : commands())
        if (command.place == Command::Place::strip_or_foot)
            foot_keys_.push_back(add(command, "foot_" + command.name, command.caption));
    for (const Command& screen : screens_)
        if (!screen.button.isEmpty()) add(screen, "key_" + screen.name, screen.button);
    return box;
}

void SalesWindow::build_strip() {
    const auto add = [this](const std::vector<Command>& commands, Command::Place place) {
        for (const Command& command : commands) {
            if (command.place != place) continue;
            strip_->add(
                command.name, key_cap(command.key), QString(command.caption).remove('&'),
                [this, &command] { perform(command); }, place == Command::Place::strip_or_foot);
        }
    };
    strip_->tell_of_spare([this](bool shown) {
        for (QWidget* button : foot_keys_)
            button->setVisible(!shown);
    });
    add(commands(), Command::Place::strip);
    add(commands(), Command::Place::strip_or_foot);
    add(screens_, Command::Place::strip);
    add(commands(), Command::Place::strip_end);
}

void SalesWindow::build_menu() {
    auto* menu = new ColumnMenu(header_->menu_button());
    menu->setObjectName("main_menu");
    const auto add = [menu](const QString& name, const QString& caption, const QString& cap, auto action) {
        QAction* entry = menu->addAction(cap.isEmpty() ? caption : caption + "\t" + cap);
        entry->setObjectName("menu_" + name);
        connect(entry, &QAction::triggered, menu, action);
    };
    // A screen with a function key is on the strip; with all of them the menu would not fit the screen.
    for (const auto* table : {&screens_, &commands()}) {
        for (const Command& command : *table) {
            if (command.place != Command::Place::menu) continue;
            add(command.name, command.caption, key_cap(command.key), [this, &command] { perform(command); });
        }
        menu->addSeparator();
    }
    // Queued, so that the help opens over the screen and not over the menu, which is still closing.
    add("help", "ال&مساعدة", help_cap,
        [this] { QMetaObject::invokeMethod(this, &open_help, Qt::QueuedConnection); });
    header_->menu_button()->setMenu(menu);
    // The click has put the focus on the menu's button, where keys would be lost.
    connect(menu, &QMenu::aboutToHide, this, &SalesWindow::focus_entry);
}

void SalesWindow::connect_parts() {
    connect(entry_bar_, &EntryBar::keypad_clicked, this, [this] { context_.keypad.toggle(); });
    connect(header_, &HeaderBar::shift_clicked, this, &SalesWindow::show_shifts);
    connect(kind_bar_, &KindBar::kind_chosen, this, &SalesWindow::switch_kind);
    connect(kind_bar_, &KindBar::price_level_chosen, this, &SalesWindow::choose_price_level);
    connect(kind_bar_, &KindBar::recall_wanted, this, &SalesWindow::recall);
    connect(banner_, &InvoiceBanner::reprint_clicked, this, &SalesWindow::reprint);
    connect(banner_, &InvoiceBanner::return_clicked, this, &SalesWindow::start_return);
    connect(entry_bar_, &EntryBar::entered, this,
            [this](const QString& text) { enter(sales::read_entry(utf8(text), context_.keys.is_scan())); });
    connect(entry_bar_, &EntryBar::general_item_clicked, this, [this] { enter(sales::read_entry("*")); });
    connect(entry_bar_, &EntryBar::search_clicked, this, [this] { search(); });
    connect(entry_bar_, &EntryBar::tiles_clicked, tiles_, &TilesPanel::toggle);
    connect(tiles_, &TilesPanel::taken, this, [this](sales::Entry entry) {
        const sales::Entry typed = sales::read_entry(utf8(entry_bar_->field()->text()));
        if (typed.form == sales::EntryForm::quantity) entry.quantity = typed.quantity;
        enter(entry);
    });
    connect(tiles_, &TilesPanel::left, this, &SalesWindow::focus_entry);
    connect(tiles_, &TilesPanel::toggled, this, &SalesWindow::repaint_all);
    connect(entry_bar_, &EntryBar::down, this, &SalesWindow::go_to_grid);
    connect(entry_bar_, &EntryBar::quick_quantity_wanted, this, &SalesWindow::quick_quantity);
    connect(entry_bar_, &EntryBar::delete_wanted, this, &SalesWindow::delete_current_line);
    connect(entry_bar_, &EntryBar::next_unit_wanted, this, [this] {
        next_unit();
        focus_entry();
    });
    connect(entry_bar_, &EntryBar::entered_for_recalled, this, [this](const QString& text) {
        enter_for_recalled(sales::read_entry(utf8(text), context_.keys.is_scan()));
    });
    for (QLineEdit* field : {entry_bar_->field(), entry_bar_->recalled_field()})
        matches_->follow(field);
    connect(matches_, &Matches::taken, this, &SalesWindow::enter_found);
    connect_party_bar();
    connect(printing_, &PrintingLine::answered, this, &SalesWindow::focus_entry);
    connect(lines_, &LineView::row_chosen, this, [this](int row) {
        desk_.lines().select_row(static_cast<std::size_t>(row));
        repaint_all();
    });
    connect(lines_, &LineView::edit_wanted, this, &SalesWindow::edit_cell);
    connect(lines_, &LineView::committed, this, &SalesWindow::commit_cell);
    connect(lines_, &LineView::edit_cancelled, this, [this](int row) {
        desk_.lines().cancel_edit(static_cast<std::size_t>(row));
        focus_entry();
    });
    connect(lines_, &LineView::delete_wanted, this, &SalesWindow::delete_current_line);
    connect(lines_, &LineView::next_unit_wanted, this, &SalesWindow::next_unit);
    connect(lines_, &LineView::left, this, &SalesWindow::focus_entry);
    connect(totals_, &TotalsPanel::payment_chosen, this, &SalesWindow::switch_payment);
    connect(totals_, &TotalsPanel::save_clicked, this, [this] { press(key::save); });
    connect(totals_, &TotalsPanel::cash_taken, this, &SalesWindow::take_cash);
    connect(totals_, &TotalsPanel::left, this, [this] {
        repaint_all();
        focus_entry();
    });
    connect(totals_, &TotalsPanel::discount_value_typed, this, [this](const QString& text) {
        refused_ = !desk_.lines().CommitDiscountValue(utf8(text));
        if (!refused_) focus_entry();
        repaint_all();
    });
    connect(totals_, &TotalsPanel::discount_percent_typed, this, [this](const QString& text) {
        refused_ = !desk_.lines().CommitDiscountPercent(utf8(text));
        if (!refused_) focus_entry();
        repaint_all();
    });
    connect(&context_.keys, &KeyQueue::scan_waiting, this, &SalesWindow::focus_entry_for_scan);
    connect(&context_.server, &ServerLink::changed, this, &SalesWindow::show_server);
    seconds_.setProperty(runs_while_waiting, true);
    connect(&seconds_, &QTimer::timeout, this, &SalesWindow::tick);
    connect(&news_, &QTimer::timeout, this, [this] { header_->next_news(desk_.news()); });
}

void SalesWindow::connect_party_bar() {
    connect(party_bar_, &PartyBar::customer_chosen, this, [this](qlonglong code) {
        desk_.header().choose_customer(code);
        repaint_all();
    });
    connect(party_bar_, &PartyBar::bank_chosen, this, [this](qlonglong code) {
        desk_.header().choose_bank(code);
        repaint_all();
    });
    connect(party_bar_, &PartyBar::card_typed, this, [this](const QString& holder, const QString& reference) {
        desk_.header().enter_card(utf8(holder), utf8(reference));
    });
    connect(party_bar_, &PartyBar::permit_typed, this, [this](bool opened, const QString& number) {
        desk_.header().enter_permit(opened, utf8(number));
    });
    connect(party_bar_, &PartyBar::tips_receiver_chosen, this,
            [this](qlonglong code) { desk_.header().choose_tips_receiver(code); });
    connect(party_bar_, &PartyBar::unknown_name, this,
            [this](QComboBox* list) { all_known({list}, context_.services.prompts); });
    connect(party_bar_, &PartyBar::finished, this, &SalesWindow::focus_entry);
}

bool SalesWindow::open() {
    if (!desk_.Open()) return false;
    party_bar_->fill(desk_);
    repaint_all();
    header_->show_clock(desk_.clock_text());
    focus_entry();
    seconds_.start(1000);
    news_.start(news_seconds * 1000);
    QTimer::singleShot(0, this, [this] { header_->next_news(desk_.news()); });
    // Later, when the window is there to show the question over.
    QTimer::singleShot(0, this, &SalesWindow::settle_unfinished);
    return true;
}

void SalesWindow::repaint_all() {
    header_->show_state(desk_, context_.session);
    kind_bar_->show_state(desk_);
    banner_->show_state(desk_);
    // With the tiles open on a small screen, the second entry field of a recalled receipt would leave no room
    // for lines. It is then hidden unless it holds a text; tiles go into the upper field.
    const bool has_room = !tiles_->is_cramped() || !entry_bar_->recalled_field()->text().isEmpty();
    entry_bar_->show_recalled(desk_.sale().recalled && has_room);
    tiles_->parentWidget()->layout()->setSpacing(px(tiles_->is_cramped() ? 6 : 10));
    party_bar_->show_state(desk_);
    lines_->set_compact(context_.screen_choice.compact_rows);
    lines_->set_background(colour::from_blue_first(sales::grid_colour(desk_.invoice().kind)));
    model_->refresh();
    lines_->show_current(desk_.sale().current_row ? static_cast<int>(*desk_.sale().current_row) : -1);
    double pieces = 0;
    for (const sales::Line& line : desk_.invoice().lines)
        pieces += line.quantity;
    counts_->setText("السطور " + QString::number(desk_.invoice().lines.size()) + " · القطع " +
                     qt(common::shortest_text(common::round_decimals(pieces, 3))));
    counts_->setVisible(!desk_.invoice().lines.empty());
    counts_->parentWidget()->layout()->activate();  // the stock takes what they leave
    show_stock();
    totals_->show_state(desk_);
    change_->show_state(desk_);
    emit shown();
    printing_->refresh();
}

// Shows the quantity and as many whole expiry dates as fit: half a date misleads.
void SalesWindow::show_stock() {
    const int room = std::max(px(60), stock_->width());
    const QFontMetrics metrics = stock_->fontMetrics();
    QString all = qt(desk_.sale().stock.quantity).trimmed();
    QString shown = all;
    bool cut = false;
    for (const std::string& expiry : desk_.sale().stock.expiries) {
        const QString next = "   " + qt(expiry);
        all += next;
        cut = cut || metrics.horizontalAdvance(shown + next + " …") > room;
        if (!cut) shown += next;
    }
    stock_->setText(metrics.elidedText(cut ? shown + " …" : shown, Qt::ElideRight, room));
    stock_->setToolTip(all);
}

void SalesWindow::tick() {
    const common::Date day = desk_.invoice().date;
    desk_.tick();
    header_->show_clock(desk_.clock_text());
    printing_->refresh();
    if (desk_.invoice().date != day) kind_bar_->show_state(desk_);
}

void SalesWindow::show_server() {
    const QString text = context_.server.text();
    server_->setText(text);
    server_->setVisible(!text.isEmpty());
    set_state(server_, "back", !context_.server.is_lost());
}

void SalesWindow::notice(const QString& text) {
    banner_->notice(text);
    repaint_all();
}

void SalesWindow::focus_entry() {
    entry_bar_->field()->setFocus();
}

void SalesWindow::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    totals_->setFixedWidth(px(event->size().width() < px(1200) ? 280 : 336));
}

}  // namespace ui
