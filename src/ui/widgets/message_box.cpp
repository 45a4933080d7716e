#include "ui/widgets/message_box.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/widgets/colours.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/key_queue.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

constexpr QChar word_joiner(0x2060);

// A disc with the sign of the icon; a null picture for no icon.
QPixmap picture_of(common::Icon icon, double ratio) {
    const int size = px(52);
    QPixmap picture(QSize(size, size) * ratio);
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    const char* background = colour::focus;
    QString sign = "i";
    switch (icon) {
        case common::Icon::none:
            return {};
        case common::Icon::information:
            break;
        case common::Icon::question:
            sign = "؟";
            break;
        case common::Icon::exclamation:
            background = colour::warning, sign = "!";
            break;
        case common::Icon::critical:
            background = colour::alarm, sign = "×";
            break;
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(background));
    painter.drawEllipse(0, 0, size, size);
    QFont font = painter.font();
    font.setPixelSize(size * 5 / 8);
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(QRect(0, 0, size, size), Qt::AlignCenter, sign);
    return picture;
}

}  // namespace

MessageBox::MessageBox(QWidget* host, const QString& text, common::Icon icon, const common::Choices* question)
    : Sheet(host), text_(text), is_question_(question != nullptr), icon_(icon) {
    setObjectName("message_box");
    setProperty(keys_property, keys_held);
    set_card_width(520);

    body()->addWidget(label(qt(message::title), "caption"));

    auto* row = new QHBoxLayout;
    row->setSpacing(px(18));
    if (const QPixmap picture = picture_of(icon, devicePixelRatioF()); !picture.isNull()) {
        auto* shown = new QLabel;
        shown->setPixmap(picture);
        row->addWidget(shown, 0, Qt::AlignTop);
    }
    // A file name must not be broken at its hyphens. A path is still broken after its slashes.
    auto* said = new QLabel(sentence(text.trimmed()).replace("-", QString(word_joiner) + '-' + word_joiner));
    said->setObjectName("message_text");
    said->setTextFormat(Qt::PlainText);
    said->setWordWrap(true);
    said->setMinimumHeight(px(56));
    set_role(said, "said");
    row->addWidget(said, 1);
    body()->addLayout(row);

    answers_ = new QHBoxLayout;
    answers_->setSpacing(px(10));
    answers_->addStretch(1);
    if (question == nullptr) {
        marked_ = button("&" + qt(message::ok), "message_ok", 1);
    } else {
        QPushButton* yes = button("&" + qt(question->yes), "message_yes", 1);
        QPushButton* no = button("&" + qt(question->no), "message_no", 2);
        marked_ = icon == common::Icon::question || icon == common::Icon::none ? yes : no;
    }
    body()->addLayout(answers_);
}

void MessageBox::offer(const QString& caption) {
    button(caption, "message_offer", 3);
}

QPushButton* MessageBox::button(const QString& caption, const char* name, int result) {
    auto* made = new QPushButton(caption);
    made->setObjectName(name);
    // The button that Enter presses is drawn filled.
    set_role(made, "answer");
    made->setAutoDefault(true);
    // Its caption is bold while it is the marked one.
    made->ensurePolished();
    QFont bold = made->font();
    bold.setBold(true);
    made->setMinimumSize(std::max(px(130), QFontMetrics(bold).horizontalAdvance(caption) + px(34)), px(48));
    connect(made, &QPushButton::clicked, this, [this, result] { leave(result); });
    answers_->addWidget(made);
    return made;
}

void MessageBox::take_focus() {
    marked_->setFocus();
}

void MessageBox::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Left:
        case Qt::Key_Down:
            focusNextPrevChild(true);
            break;
        case Qt::Key_Right:
        case Qt::Key_Up:
            focusNextPrevChild(false);
            break;
        default:
            Sheet::keyPressEvent(event);
    }
    event->accept();
}

void ScreenPrompts::message(std::string_view text, common::Icon icon) {
    MessageBox(window_in_use(), qt(text), icon).run();
}

common::Answer ScreenPrompts::choose(std::string_view text, const common::Choices& choices,
                                     common::Icon icon) {
    switch (MessageBox(window_in_use(), qt(text), icon, &choices).run()) {
        case 1:
            return common::Answer::yes;
        case 2:
            return common::Answer::no;
        default:
            return common::Answer::closed;
    }
}

}  // namespace ui
