#include "ui/widgets/key_button.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QStyleOptionButton>
#include <QStylePainter>
#include <algorithm>
#include <iterator>

#include "ui/widgets/colours.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/style.h"

namespace ui {

namespace {

struct Measures {
    const char* role;
    double caption, cap;  // font sizes
    double side;          // blank at each side
    double height;
    double cap_side;  // blank within the cap
    double between;
};

const Measures& measures(KeyButton::Look look) {
    static constexpr Measures all[] = {
        {"key", 14, 12, 9, 48, 7, 6},
        {"tool", 16, 12, 16, 54, 7, 6},
        {"pay", 16, 11, 8, 71, 0, 8},
        {"save", 26, 14, 20, 77, 9, 10},
    };
    return all[static_cast<int>(look)];
}

}  // namespace

QString key_cap(QKeyCombination key) {
    if (key.key() == Qt::Key_unknown) return {};
    return QKeySequence(key)
        .toString(QKeySequence::PortableText)
        .replace("Shift+", "⇧")
        .replace("Ctrl+", "Ctrl ");
}

KeyButton::KeyButton(const QString& name, const QString& key, const QString& caption, Look look,
                     QWidget* parent)
    : QPushButton(parent), key_(key), caption_(caption), look_(look), key_below_(look == Look::pay) {
    setObjectName(name);
    setAccessibleName(caption);
    if (!key.isEmpty()) setProperty(key_property, key);
    setToolTip(key.isEmpty() ? caption : caption + "  " + key);
    set_role(this, measures(look).role);
}

void KeyButton::set_caption(const QString& caption) {
    if (caption == caption_) return;
    caption_ = caption;
    setAccessibleName(caption);
    setToolTip(key_.isEmpty() ? caption : caption + "  " + key_);
    updateGeometry();
    update();
}

void KeyButton::set_key_below(bool below) {
    if (below == key_below_) return;
    key_below_ = below;
    updateGeometry();
    update();
}

QFont KeyButton::font_of(bool cap) const {
    QFont made = font();
    made.setPixelSize(px(cap ? measures(look_).cap : measures(look_).caption));
    made.setBold(look_ == Look::save);
    return made;
}

QSize KeyButton::sizeHint() const {
    const Measures& m = measures(look_);
    const int caption = QFontMetrics(font_of(false)).horizontalAdvance(caption_);
    const int cap =
        key_.isEmpty() ? 0 : QFontMetrics(font_of(true)).horizontalAdvance(key_) + px(2 * m.cap_side);
    if (key_below_) return {std::max(caption, cap) + px(2 * m.side), px(m.height)};
    return {caption + cap + (cap == 0 ? 0 : px(m.between)) + px(2 * m.side), px(m.height)};
}

void KeyButton::paintEvent(QPaintEvent*) {
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    option.text.clear();
    painter.drawControl(QStyle::CE_PushButton, option);
    painter.setRenderHint(QPainter::Antialiasing);

    const Measures& m = measures(look_);
    const bool lit = isEnabled() && (look_ == Look::save || isChecked());
    const QColor ink = !isEnabled() ? colour::off : lit ? colour::paper : colour::ink;
    const QFont caption_font = font_of(false);
    const QFont cap_font = font_of(true);
    if (key_below_) {
        const QRect upper(0, 0, width(), height() * 2 / 3);
        painter.setPen(ink);
        painter.setFont(caption_font);
        painter.drawText(upper, Qt::AlignCenter, caption_);
        painter.setPen(lit || !isEnabled() ? ink : QColor(colour::quiet));
        painter.setFont(cap_font);
        painter.drawText(QRect(0, height() * 58 / 100, width(), height() * 34 / 100), Qt::AlignCenter, key_);
        return;
    }
    // Right to left: the cap comes first, at the right.
    const int caption = QFontMetrics(caption_font).horizontalAdvance(caption_);
    const int cap = key_.isEmpty() ? 0 : QFontMetrics(cap_font).horizontalAdvance(key_) + px(2 * m.cap_side);
    const int between = cap == 0 ? 0 : px(m.between);
    int right = (width() + caption + cap + between) / 2;
    if (cap != 0) {
        const int tall = QFontMetrics(cap_font).height() + px(look_ == Look::save ? 14 : 6);
        const QRect box(right - cap, (height() - tall) / 2, cap, tall);
        painter.setPen(Qt::NoPen);
        painter.setBrush(lit ? QColor(255, 255, 255, 51) : QColor(colour::cap));
        painter.drawRoundedRect(box, px(4), px(4));
        painter.setPen(lit           ? QColor(colour::paper)
                       : isEnabled() ? QColor(colour::slate)
                                     : QColor(colour::off));
        painter.setFont(cap_font);
        painter.drawText(box, Qt::AlignCenter, key_);
        right -= cap + between;
    }
    painter.setPen(ink);
    painter.setFont(caption_font);
    painter.drawText(QRect(right - caption, 0, caption, height()), Qt::AlignCenter, caption_);
}

ConfirmButtons confirm_buttons(QHBoxLayout* row, const QString& name, const QString& caption) {
    auto* confirm = new KeyButton(name + "_confirm", "Enter", caption, KeyButton::Look::save);
    confirm->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    auto* back = new KeyButton(name + "_back", "Esc", "رجوع", KeyButton::Look::tool);
    back->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
    for (KeyButton* button : {confirm, back})
        button->setAutoDefault(true);  // Enter presses the focused one
    row->addWidget(confirm, 2);
    row->addWidget(back, 1);
    return {confirm, back};
}

KeyStrip::KeyStrip(QWidget* parent) : QWidget(parent) {
    set_role(this, "keys");
    setFixedHeight(px(64));
}

void KeyStrip::add(const QString& name, const QString& key, const QString& caption,
                   std::function<void()> action, bool is_spare) {
    auto* button = new KeyButton("key_" + name, key, caption, KeyButton::Look::strip, this);
    // The keys themselves reach these actions, so Tab skips the buttons.
    button->setFocusPolicy(Qt::ClickFocus);
    connect(button, &QPushButton::clicked, this, [run = std::move(action)] { run(); });
    keys_.push_back(button);
    if (is_spare) spare_.push_back(button);
    arrange();
}

void KeyStrip::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    arrange();
}

// Divides the keys evenly among the rows; the last row may be shorter.
std::vector<KeyStrip::Row> KeyStrip::even_rows(const Row& keys, std::size_t count) {
    std::vector<Row> rows(count);
    const std::size_t each = (keys.size() + count - 1) / count;
    for (std::size_t at = 0; at < keys.size(); ++at)
        rows[at / each].push_back(keys[at]);
    return rows;
}

std::vector<KeyStrip::Row> KeyStrip::rows_of(const Row& keys) const {
    std::vector<Row> rows(1);
    int used = 0;
    for (KeyButton* key : keys) {
        const int wide = key->sizeHint().width();
        if (!rows.back().empty() && used + wide > width() - 2 * px(12)) {
            rows.emplace_back();
            used = 0;
        }
        rows.back().push_back(key);
        used += wide + px(6);
    }
    return rows;
}

void KeyStrip::arrange() {
    const int side = px(12);
    const int gap = px(6);
    Row needed;
    std::ranges::copy_if(keys_, std::back_inserter(needed),
                         [this](KeyButton* key) { return std::ranges::find(spare_, key) == spare_.end(); });
    std::vector<Row> rows = rows_of(keys_);
    const bool shows_spare = rows.size() == rows_of(needed).size();
    if (!shows_spare) rows = rows_of(needed);
    for (KeyButton* key : spare_)
        key->setVisible(shows_spare);
    if (told_) told_(shows_spare);
    const bool single = rows.size() == 1;
    if (!single) rows = even_rows(shows_spare ? keys_ : needed, rows.size());
    const int tall = px(single ? 48 : least_target);
    int top = px(8);
    for (const auto& row : rows) {
        int natural = -gap;
        for (const KeyButton* key : row)
            natural += key->sizeHint().width() + gap;
        // A row is spread over the whole width unless it fills less than half of it.
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
