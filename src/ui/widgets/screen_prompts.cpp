#include "ui/widgets/screen_prompts.h"

#include <QApplication>

#include "ui/widgets/message_box.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

// The window in use; null before the first one stands.
QWidget* host() {
    if (QWidget* active = QApplication::activeWindow(); active != nullptr && active->isVisible())
        return active;
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && window->windowType() == Qt::Window) return window;
    }
    return nullptr;
}

}  // namespace

void ScreenPrompts::message(std::string_view text, common::Icon icon) {
    MessageBox(host(), qt(text), icon, MessageBox::Buttons::ok).run();
}

bool ScreenPrompts::question(std::string_view text, common::Icon icon) {
    return MessageBox(host(), qt(text), icon, MessageBox::Buttons::yes_no).run() == 1;
}

}  // namespace ui
