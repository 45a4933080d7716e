#include "ui/sales/matches.h"

#include <QElapsedTimer>
#include <QFocusEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QStyledItemDelegate>
#include <QVBoxLayout>
#include <memory>

#include "common/messages.h"
#include "common/numbers.h"
#include "sales/items.h"
#include "ui/widgets/colours.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/key_button.h"
#include "ui/widgets/key_queue.h"
#include "ui/widgets/list_table.h"
#include "ui/widgets/server_link.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

constexpr double row_height = 46;
constexpr double heading_height = 36;
constexpr double below_list = 120;  // the lines at the foot of the window stay in sight
constexpr int most_rows = 8;
// What this till sells most is read some time after sign-in, or when a search needs it.
constexpr int popular_after_ms = 10'000;
constexpr int between_days_ms = 50;
// The time that the first search may spend on it before it answers.
constexpr int first_popular_ms = 10;

constexpr auto next_unit_cap = "Ctrl U";

constexpr int first_unit_column = 1;
constexpr int stock_column = 4;

bool is_unit_column(int column) {
    return column >= first_unit_column && column < stock_column;
}

// A price as a button to be tapped, filled for the unit that Enter takes.
class UnitCells : public QStyledItemDelegate {
  public:
    UnitCells(QObject* parent, std::function<bool(int row, int unit)> is_chosen)
        : QStyledItemDelegate(parent), is_chosen_(std::move(is_chosen)) {}

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        QStyleOptionViewItem plain(option);
        initStyleOption(&plain, index);
        const QString text = std::exchange(plain.text, QString());
        plain.widget->style()->drawControl(QStyle::CE_ItemViewItem, &plain, painter, plain.widget);
        if (text.isEmpty()) return;
        const bool chosen = is_chosen_(index.row(), index.column() - first_unit_column + 1);
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(QColor(chosen ? colour::focus : colour::edge));
        painter->setBrush(QColor(chosen ? colour::focus : colour::paper));
        const QRectF button = QRectF(option.rect).adjusted(px(4), px(4.5), -px(4), -px(4.5));
        painter->drawRoundedRect(button, px(6), px(6));
        painter->setPen(QColor(chosen ? colour::paper : colour::ink));
        painter->setFont(plain.font);
        painter->drawText(button, Qt::AlignCenter, text);
        painter->restore();
    }

  private:
    std::function<bool(int row, int unit)> is_chosen_;
};

}  // namespace

Matches::Matches(QWidget* over, sales::MatchSource& source, const Context& context, const QString& more_keys)
    : QFrame(over), source_(source), context_(context), more_keys_(more_keys), pause_([this] { answer(); }) {
    setObjectName("matches_panel");
    set_role(this, "matches");
    setFocusPolicy(Qt::NoFocus);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(px(3), px(3), px(3), px(3));
    column->setSpacing(0);
    QStringList headings = {"الاسم"};
    for (int unit = 1; unit <= 3; ++unit)
        headings << qt(sales::unit_name(unit));
    table_ = new ListTable("matches", headings << "الرصيد", 0);
    set_role(table_, "matches");
    table_->setFocusPolicy(Qt::NoFocus);
    table_->setProperty(key_property, "Down");
    table_->verticalHeader()->setDefaultSectionSize(px(row_height));
    table_->horizontalHeader()->setFixedHeight(px(heading_height));
    table_->say_when_empty("لا يوجد صنف بهذا الاسم");
    auto* units = new UnitCells(
        this, [this](int row, int unit) { return row == table_->current_row() && unit == unit_; });
    for (int unit = 0; unit < 3; ++unit)
        table_->setItemDelegateForColumn(first_unit_column + unit, units);
    column->addWidget(table_, 1);
    hint_ = label({}, "hint", "matches_hint");
    column->addWidget(hint_);
    hide();

    connect(table_, &ListTable::row_chosen, this, &Matches::choose);
    connect(table_, &QAbstractItemView::clicked, this, [this](const QModelIndex& cell) {
        const int unit = cell.column() - first_unit_column + 1;
        const bool by_unit =
            is_unit_column(cell.column()) && found_[static_cast<std::size_t>(cell.row())].has_unit(unit);
        take(cell.row(), by_unit ? unit : unit_);
    });
    connect(&popular_, &QTimer::timeout, this, &Matches::read_popular);
    popular_.setSingleShot(true);
    if (source_.popular() != nullptr) popular_.start(popular_after_ms);
    over->installEventFilter(this);
}

void Matches::follow(QLineEdit* field) {
    connect(field, &QLineEdit::textEdited, this, [this, field] { edited(field); });
    connect(field, &QLineEdit::textChanged, this, [this, field](const QString& text) {
        if (field == field_ && text.isEmpty()) shut();
    });
    field->installEventFilter(this);
}

sales::Entry Matches::typed_entry() const {
    return field_ == nullptr ? sales::Entry() : sales::read_entry(utf8(field_->text()));
}

void Matches::edited(QLineEdit* field) {
    field_ = field;
    if (source_.match_query(typed_entry()).typed.empty()) return shut();
    pause_.begin(context_.keys.burst() > 1 ? SearchPause::burst_ms : SearchPause::quick_ms);
}

// On a server, typing goes on meanwhile; answers for earlier letters are dropped when they come.
void Matches::answer() {
    if (field_ == nullptr) return;
    if (context_.connection.is_embedded()) return answer_now();
    if (is_asking_ || context_.server.is_lost()) return;
    if (popular_.isActive()) {
        popular_.stop();
        read_popular();
    }
    const sales::MatchQuery query = source_.match_query(typed_entry());
    if (query.typed.empty() || query.typed == answered_) return;
    is_asking_ = true;
    const auto found = std::make_shared<std::vector<sales::Match>>();
    context_.server.run_later(
        [query, found](database::Connection& shop) { *found = sales::match_items(shop, query); },
        [self = QPointer(this), typed = query.typed, found] {
            if (self == nullptr) return;
            self->is_asking_ = false;
            if (self->typed_entry().name == typed)
                self->show_matches(typed, std::move(*found));
            else
                self->answer();
        },
        [self = QPointer(this)] {
            if (self != nullptr) self->is_asking_ = false;
        });
}

void Matches::answer_now() {
    pause_.cancel();
    const sales::Popular* popular = source_.popular();
    if (popular != nullptr && !popular->is_complete() && context_.connection.is_embedded()) {
        QElapsedTimer spent;
        spent.start();
        while (!popular->is_complete() && spent.elapsed() < first_popular_ms)
            read_popular_days(1);
    }
    const sales::MatchQuery query = source_.match_query(typed_entry());
    if (query.typed.empty()) return shut();
    show_matches(query.typed, source_.match(query));
}

void Matches::show_matches(const std::string& typed, std::vector<sales::Match> found) {
    if (field_ == nullptr) return;
    found_ = std::move(found);
    answered_ = typed;
    has_chosen_ = false;
    std::vector<QStringList> rows;
    for (const sales::Match& match : found_) {
        QStringList row = {qt(match.name)};
        for (const auto& price : match.prices)
            row << (price ? figure(common::format_amount(*price)) : QString());
        rows.push_back(row << (match.stock ? figure(common::format_quantity(*match.stock)) : QString()));
    }
    const QString keys =
        QString("\u200fEnter إدخال · Down اختيار صنف · %1 اختيار الوحدة").arg(next_unit_cap) + more_keys_;
    hint_->setText(found_.empty()                        ? "Esc مسح ما كتب"
                   : found_.size() < sales::most_matches ? keys
                                                         : "اكتب حرفا آخر لباقي الأصناف · " + keys);
    table_->show_rows(std::move(rows));
    choose(table_->current_row());
    place();
    show();
    raise();
}

// Below the field, as wide as the bar that it stands in.
void Matches::place() {
    const QWidget* bar = field_->parentWidget();
    const QPoint left = bar->mapTo(parentWidget(), QPoint(0, 0));
    const int top = field_->mapTo(parentWidget(), QPoint(0, field_->height())).y() + px(4);
    const int other = px(heading_height) + hint_->sizeHint().height() + 2 * px(3) + 2;
    const int fits = (parentWidget()->height() - top - other - px(below_list)) / px(row_height);
    const int rows = std::clamp(static_cast<int>(found_.size()), 2, std::max(2, std::min(fits, most_rows)));
    setGeometry(left.x(), top, bar->width(), rows * px(row_height) + other);
}

void Matches::shut() {
    pause_.cancel();
    answered_.clear();
    found_.clear();
    has_chosen_ = false;
    hide();
}

void Matches::choose(int row) {
    unit_ = row >= 0 && static_cast<std::size_t>(row) < found_.size()
                ? found_[static_cast<std::size_t>(row)].first_unit()
                : 1;
    table_->viewport()->update();
}

// After the last unit comes the first again.
void Matches::choose_next_unit(int step) {
    const int row = table_->current_row();
    if (row < 0) return;
    has_chosen_ = true;
    for (int tried = 0; tried < 3; ++tried) {
        unit_ = (unit_ - 1 + step + 3) % 3 + 1;
        if (found_[static_cast<std::size_t>(row)].has_unit(unit_)) break;
    }
    table_->viewport()->update();
}

sales::Entry Matches::entry_of(const sales::Match& match, int unit) const {
    sales::Entry entry = sales::chosen_item(match.code, unit);
    entry.quantity = typed_entry().quantity;
    return entry;
}

void Matches::take(int row, int unit) {
    if (row < 0 || static_cast<std::size_t>(row) >= found_.size()) return;
    const sales::Entry entry = entry_of(found_[static_cast<std::size_t>(row)], unit);
    emit taken(field_, entry);
}

std::optional<sales::Entry> Matches::first_for(QLineEdit* field) {
    const bool was_shown = isVisible() && field == field_ && answered_ == typed_entry().name;
    field_ = field;
    if (!was_shown) answer_now();
    if (found_.empty()) {
        field->setText({});
        context_.services.prompts.message(common::message::wrong_code);
        return std::nullopt;
    }
    if (context_.keys.is_scan()) {
        field->selectAll();  // the next scan replaces it
        return std::nullopt;
    }
    return entry_of(found_.front(), unit_);
}

void Matches::show_for(QLineEdit* field) {
    field->setFocus();
    field_ = field;
    answer_now();
}

bool Matches::take_key(const QKeyEvent& key) {
    if (field_ == nullptr || (!isVisible() && !pause_.is_waiting())) return false;
    const int code = key.key();
    const bool next_unit = code == Qt::Key_U && key.modifiers() == Qt::ControlModifier;
    const bool moves =
        code == Qt::Key_Down || code == Qt::Key_Up || code == Qt::Key_PageDown || code == Qt::Key_PageUp;
    if ((moves || next_unit) && pause_.is_waiting()) answer_now();
    if (!isVisible()) return false;
    const int row = table_->current_row();
    const auto last = static_cast<int>(found_.size()) - 1;
    if (moves) {
        // The first row is chosen as the list opens, so that the first Down leads to the second.
        const int step = code == Qt::Key_PageDown || code == Qt::Key_PageUp ? most_rows : 1;
        const int to = row + (code == Qt::Key_Up || code == Qt::Key_PageUp ? -step : step);
        has_chosen_ = true;
        if (last >= 0) table_->choose_row(std::clamp(to, 0, last));
    } else if (next_unit) {
        choose_next_unit(1);
    } else if (has_chosen_ && (code == Qt::Key_Left || code == Qt::Key_Right)) {
        choose_next_unit(code == Qt::Key_Left ? 1 : -1);
    } else if (has_chosen_ && is_enter(key.key())) {
        take(row, unit_);
    } else {
        return false;
    }
    return true;
}

bool Matches::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize && watched == parentWidget() && isVisible()) shut();
    // Another window of the till may come to the front meanwhile.
    if (event->type() == QEvent::FocusOut && watched == field_ &&
        static_cast<QFocusEvent*>(event)->reason() != Qt::ActiveWindowFocusReason) {
        shut();
        field_ = nullptr;
    }
    return QFrame::eventFilter(watched, event);
}

void Matches::read_popular() {
    if (!context_.connection.is_embedded()) return read_popular_days(sales::Popular::days_counted);
    read_popular_days(1);
    if (!source_.popular()->is_complete()) popular_.start(between_days_ms);
}

// A file is read day by day, each within a few milliseconds, and a server once.
void Matches::read_popular_days(int days) {
    sales::Popular& popular = *source_.popular();
    if (popular.is_complete()) return;
    const sales::Days wanted = popular.next(context_.services.clock.now().date, days);
    const auto read = [store = context_.session.store_code, cash_point = context_.session.cash_point,
                       wanted](database::Connection& shop) {
        return sales::read_sold(shop, store, cash_point, wanted);
    };
    if (context_.connection.is_embedded()) {
        try {
            popular.add(read(context_.connection), days);
        } catch (const std::exception&) {
            popular.add({}, days);  // the names then come in their other order
        }
        return;
    }
    const auto sold = std::make_shared<std::vector<sales::SoldItem>>();
    context_.server.run_later([sold, read](database::Connection& shop) { *sold = read(shop); },
                              [self = QPointer(this), sold, days] {
                                  if (self == nullptr) return;
                                  self->source_.popular()->add(*sold, days);
                                  self->answered_.clear();
                                  if (!self->has_chosen_) self->answer();
                              });
}

}  // namespace ui
