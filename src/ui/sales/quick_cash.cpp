#include "ui/sales/quick_cash.h"

#include <QHBoxLayout>
#include <algorithm>

#include "ui/sales/commands.h"
#include "ui/widgets/key_button.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

QuickCash::QuickCash(const QString& name, QWidget* parent) : QWidget(parent) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(px(8));
    for (int at = 0; at < count; ++at) {
        const QString part = at == exact ? QString("_exact") : "_note_" + QString::number(at);
        auto* button = new KeyButton(name + part, key_cap(key::cash[static_cast<std::size_t>(at)]), {},
                                     KeyButton::Look::pay);
        button->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
        button->setMinimumHeight(px(46));
        button->setMaximumHeight(px(56));
        // The keys reach the buttons wherever the focus is.
        button->setFocusPolicy(Qt::ClickFocus);
        QSizePolicy policy = button->sizePolicy();
        policy.setRetainSizeWhenHidden(true);
        button->setSizePolicy(policy);
        connect(button, &QPushButton::clicked, this, [this, at] { emit taken(at); });
        row->addWidget(button, 1);
        buttons_[static_cast<std::size_t>(at)] = button;
    }
}

void QuickCash::offer(common::Amount net, const common::Denominations& denominations) {
    amounts_ = {net};
    for (const common::Amount amount : likely_payments(net, denominations, count - 1))
        amounts_.push_back(amount);
    for (int at = 0; at < count; ++at) {
        KeyButton* button = buttons_[static_cast<std::size_t>(at)];
        const auto offered = amount(at);
        button->setVisible(offered.has_value());
        if (offered)
            button->set_caption(at == exact ? QString("بالضبط") : qt(common::denomination_text(*offered)));
    }
}

std::optional<common::Amount> QuickCash::amount(int button) const {
    const auto at = static_cast<std::size_t>(button);
    return at < amounts_.size() ? std::optional(amounts_[at]) : std::nullopt;
}

std::optional<int> QuickCash::button_of(QKeyCombination pressed) {
    const auto found = std::find(key::cash.begin(), key::cash.end(), pressed);
    if (found == key::cash.end()) return std::nullopt;
    return static_cast<int>(found - key::cash.begin());
}

}  // namespace ui
