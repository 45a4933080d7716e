#include "play/inspection.h"

#include <QAbstractButton>
#include <QApplication>
#include <QKeySequence>
#include <QLabel>
#include <map>

#include "play/seeing.h"
#include "ui/widgets/sheet.h"

namespace play {

QWidget* screen_in_front() {
    QWidget* window = front_window();
    if (window == nullptr || QApplication::activePopupWidget() != nullptr) return nullptr;
    QWidget* sheet = ui::Sheet::top_of(window);
    return sheet != nullptr ? sheet : window;
}

QRect place_of(const QWidget* widget) {
    return {widget->mapTo(widget->window(), QPoint()), widget->size()};
}

std::string name_of(const QWidget* widget) {
    for (const QWidget* at = widget; at != nullptr; at = at->parentWidget()) {
        if (at->objectName().isEmpty() || at->objectName().startsWith("qt_")) continue;
        const std::string name = at->objectName().toStdString();
        return at == widget ? name : std::string("a ") + widget->metaObject()->className() + " in " + name;
    }
    return widget->metaObject()->className();
}

std::vector<std::string> faults_of_screen(Hands& hands) {
    std::vector<std::string> faults;
    QWidget* front = screen_in_front();
    if (front == nullptr) return faults;
    inspect_room(front, faults);
    inspect_mnemonics(front, faults);
    inspect_contrast(front, faults);
    inspect_focus(front, hands, faults);
    return faults;
}

void inspect_mnemonics(const QWidget* front, std::vector<std::string>& faults) {
    std::map<QString, std::string> owners;
    const auto add = [&](const QString& text, const QWidget* owner) {
        const QString key = QKeySequence::mnemonic(text).toString();
        if (key.isEmpty()) return;
        const auto [at, fresh] = owners.emplace(key, name_of(owner));
        if (!fresh && at->second != name_of(owner))
            faults.push_back(key.toStdString() + " is both " + at->second + "'s and " + name_of(owner) +
                             "'s");
    };
    for (const auto* label : front->findChildren<QLabel*>()) {
        if (label->isVisible() && label->buddy() != nullptr && label->buddy()->isEnabled())
            add(label->text(), label->buddy());
    }
    for (const auto* button : front->findChildren<QAbstractButton*>()) {
        if (button->isVisible()) add(button->text(), button);
    }
}

}  // namespace play
