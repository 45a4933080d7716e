#include "ui/sales/key_strip.h"

#include "ui/widgets/key_button.h"
#include "ui/widgets/style.h"

namespace ui {

KeyStrip::KeyStrip(QWidget* parent) : QWidget(parent) {
    set_role(this, "keys");
    setFixedHeight(px(64));
}

void KeyStrip::add(const QString& name, const QString& key, const QString& caption,
                   std::function<void()> action) {
    auto* button = new KeyButton("key_" + name, key, caption, KeyButton::Look::strip, this);
    // The keys themselves reach these actions; Tab need not pass them all.
    button->setFocusPolicy(Qt::ClickFocus);
    connect(button, &QPushButton::clicked, this, [run = std::move(action)] { run(); });
    keys_.push_back(button);
    arrange();
}

void KeyStrip::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    arrange();
}

// As many keys on each row as on the others, the first rows taking what is over.
std::vector<std::vector<KeyButton*>> KeyStrip::even_rows(std::size_t count) const {
    std::vector<std::vector<KeyButton*>> rows(count);
    const std::size_t each = (keys_.size() + count - 1) / count;
    for (std::size_t at = 0; at < keys_.size(); ++at)
        rows[at / each].push_back(keys_[at]);
    return rows;
}

void KeyStrip::arrange() {
    const int side = px(12);
    const int gap = px(6);
    std::vector<std::vector<KeyButton*>> rows(1);
    int used = 0;
    for (KeyButton* key : keys_) {
        const int wide = key->sizeHint().width();
        if (!rows.back().empty() && used + wide > width() - 2 * side) {
            rows.emplace_back();
            used = 0;
        }
        rows.back().push_back(key);
        used += wide + gap;
    }
    const bool single = rows.size() == 1;
    if (!single) rows = even_rows(rows.size());
    const int tall = px(single ? 48 : 38);
    int top = px(8);
    for (const auto& row : rows) {
        int natural = -gap;
        for (const KeyButton* key : row)
            natural += key->sizeHint().width() + gap;
        // A row is spread over the whole width, unless it is far too short for it.
        const int spare = width() - 2 * side - natural;
        const int more = spare > 0 && spare < width() / 2 ? spare / static_cast<int>(row.size()) : 0;
        int right = width() - side;
        for (KeyButton* key : row) {
            const int wide = key->sizeHint().width() + more;
            key->setGeometry(right - wide, top, wide, tall);
            right -= wide + gap;
            key->show();
        }
        top += tall + gap;
    }
    setFixedHeight(top - gap + px(8));
}

}  // namespace ui
