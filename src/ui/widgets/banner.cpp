#include "ui/widgets/banner.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include "ui/widgets/colours.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/style.h"

namespace ui {

Banner::Banner(const char* name, const char* text_name, QWidget* parent) : QFrame(parent) {
    setObjectName(name);
    row_ = new QHBoxLayout(this);
    row_->setContentsMargins(px(8), px(6), px(14), px(6));
    row_->setSpacing(px(8));
    text_ = label({}, "plain", text_name);
    text_->setWordWrap(true);
    row_->addWidget(text_, 1);
    hide();
}

QPushButton* Banner::add_button(const char* name, const QString& caption) {
    auto* made = new QPushButton(caption);
    made->setObjectName(name);
    made->setFixedHeight(px(least_target));
    row_->addWidget(made);
    return made;
}

void Banner::set_colours(const char* background, const char* edge) {
    setStyleSheet(QString("ui--Banner { background: %1; border: none; border-right: %2px solid %3; } "
                          "QLabel { color: %4; }")
                      .arg(background)
                      .arg(px(6))
                      .arg(edge)
                      .arg(colour::ink));
}

}  // namespace ui
