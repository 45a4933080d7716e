#include "ui/widgets/segments.h"

#include <QButtonGroup>
#include <QFrame>
#include <QHBoxLayout>
#include <QPushButton>

#include "ui/widgets/style.h"

namespace ui {

Segments::Segments(const QString& name, const std::vector<std::pair<int, QString>>& options, QWidget* parent)
    : QWidget(parent) {
    setObjectName(name);
    set_role(this, "segments");
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(px(1), px(1), px(1), px(1));
    row->setSpacing(0);
    auto* group = new QButtonGroup(this);
    for (const auto& [value, caption] : options) {
        if (!buttons_.empty()) {
            auto* divider = new QFrame;
            set_role(divider, "divider");
            row->addWidget(divider);
        }
        auto* button = new QPushButton(caption);
        button->setObjectName(name + "_" + QString::number(value));
        button->setCheckable(true);
        button->setProperty("end", buttons_.empty()                        ? "first"
                                   : buttons_.size() + 1 == options.size() ? "last"
                                                                           : "");
        set_role(button, "segment");
        group->addButton(button);
        row->addWidget(button);
        buttons_.emplace_back(value, button);
        connect(button, &QPushButton::clicked, this,
                [this, chosen_value = value] { emit chosen(chosen_value); });
    }
    set_height(38);
}

void Segments::set_height(double measure) {
    for (const auto& [of, button] : buttons_)
        button->setFixedHeight(px(measure) - 2 * px(1));
}

void Segments::show_chosen(int value) {
    for (const auto& [of, button] : buttons_)
        button->setChecked(of == value);
}

int Segments::value() const {
    for (const auto& [of, button] : buttons_) {
        if (button->isChecked()) return of;
    }
    return 0;
}

}  // namespace ui
