#include "ui/goods/item_field.h"

#include <QKeyEvent>
#include <QTimer>

#include "signin/session.h"
#include "ui/sales/matches.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/key_queue.h"
#include "ui/widgets/text.h"

namespace ui {

ItemField::Source::Source(const Context& context) : store(context.session.store_code), context_(context) {}

sales::MatchQuery ItemField::Source::match_query(const sales::Entry& entry) const {
    sales::MatchQuery query;
    if (entry.form == sales::EntryForm::code) query.typed = entry.name;
    query.price_level = sales::retail_level;
    query.store = store;
    query.stopped_too = true;
    return query;
}

std::vector<sales::Match> ItemField::Source::match(const sales::MatchQuery& query) {
    std::vector<sales::Match> matches;
    guarded(context_.services, "search items",
            [&] { matches = sales::match_items(context_.connection, query); });
    return matches;
}

ItemField::ItemField(const QString& name, const Context& context, QWidget* over)
    : context_(context), source_(context), matches_(new Matches(over, source_, context)) {
    setObjectName(name);
    setProperty(keys_property, QString(""));  // an item is scanned here, also on a sheet
    begin_right(this);
    set_hint(this, "باركود أو كود أو جزء من اسم الصنف");
    matches_->follow(this);
    connect(matches_, &Matches::taken, this, [this](QLineEdit*, const sales::Entry& entry) { enter(entry); });
}

void ItemField::set_store(std::int64_t store) {
    source_.store = store;
}

void ItemField::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    if (event->reason() != Qt::ActiveWindowFocusReason) QTimer::singleShot(0, this, &QLineEdit::selectAll);
}

void ItemField::keyPressEvent(QKeyEvent* event) {
    if (matches_->take_key(*event)) return;
    if (is_enter(event->key())) {
        enter(sales::read_entry(utf8(text())));
    } else if (event->key() == Qt::Key_Down) {
        emit left_downwards();
    } else if (event->key() == Qt::Key_Escape && !text().isEmpty()) {
        clear();
    } else {
        QLineEdit::keyPressEvent(event);
    }
}

void ItemField::enter(const sales::Entry& entry) {
    goods::Picked found;
    if (!guarded(context_.services, "PickItem",
                 [&] { found = goods::pick_item(context_.connection, entry); }))
        return;
    switch (found.outcome) {
        case goods::Picked::Outcome::words:
            if (const auto first = matches_->first_for(this)) enter(*first);
            break;
        case goods::Picked::Outcome::item:
            clear();
            emit picked(found.pick);
            break;
        case goods::Picked::Outcome::refused:
            if (found.refusal.empty()) return;
            clear();
            context_.services.prompts.message(found.refusal);
    }
}

}  // namespace ui
