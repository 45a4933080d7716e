#include "play/input_driver.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QKeySequence>
#include <QTimer>
#include <QWindow>

namespace play {

namespace {

constexpr quint64 key_ms = 1200;  // between two keys, slowly enough to answer a box
constexpr quint64 typing_ms = 250;
constexpr quint64 scanner_ms = 5;

}  // namespace

bool InputDriver::press(const QString& name) {
    QString sequence = name;
    sequence.replace("Enter", "Return");
    if (name == "+") {
        push(Qt::Key_Plus, Qt::NoModifier, "+", key_ms);
        return true;
    }
    const QKeySequence keys(sequence, QKeySequence::PortableText);
    if (keys.count() != 1 || keys[0].key() == Qt::Key_unknown) return false;
    const Qt::Key key = keys[0].key();
    QString text;
    if (key == Qt::Key_Return) text = "\r";
    if (key >= Qt::Key_Space && key <= Qt::Key_AsciiTilde && keys[0].keyboardModifiers() == Qt::NoModifier) {
        text = QChar(static_cast<char16_t>(key)).toLower();
    }
    push(key, keys[0].keyboardModifiers(), text, key_ms);
    return true;
}

void InputDriver::type(const QString& text) {
    // A character outside the basic plane is one key press too.
    for (const char32_t character : text.toUcs4()) {
        push(character < 128 ? QChar(character).toUpper().unicode() : 0, Qt::NoModifier,
             QString::fromUcs4(&character, 1), typing_ms);
    }
}

void InputDriver::scan(const QString& text) {
    // Scans that follow one another are closer together than two keys of a person.
    quint64 pause = keys_.empty() ? key_ms : scanner_ms;
    for (const QChar character : text) {
        push(character.unicode() < 128 ? character.toUpper().unicode() : 0, Qt::NoModifier,
             QString(character), pause);
        pause = scanner_ms;
    }
    push(Qt::Key_Return, Qt::NoModifier, "\r", pause);
}

void InputDriver::push(int key, Qt::KeyboardModifiers modifiers, const QString& text, quint64 after) {
    time_ += after;
    keys_.push_back({key, modifiers, text, time_});
    if (!sending_) {
        sending_ = true;
        QTimer::singleShot(0, this, &InputDriver::send_next);
    }
}

void InputDriver::send_next() {
    if (keys_.empty()) {
        sending_ = false;
        return;
    }
    const Key key = keys_.front();
    keys_.pop_front();
    // Scheduled before the key is sent, because the key may open a box that runs its own loop until answered.
    QTimer::singleShot(0, this, &InputDriver::send_next);
    send(key);
}

void InputDriver::press_now(int key, Qt::KeyboardModifiers modifiers) {
    time_ += key_ms;
    send({key, modifiers, {}, time_});
}

void InputDriver::send(const Key& key) {
    QWindow* window = QGuiApplication::focusWindow();
    if (window == nullptr) return;
    QKeyEvent press(QEvent::KeyPress, key.key, key.modifiers, key.text);
    press.setTimestamp(key.time);
    QCoreApplication::sendEvent(window, &press);
    QKeyEvent release(QEvent::KeyRelease, key.key, key.modifiers, key.text);
    release.setTimestamp(key.time);
    if (QGuiApplication::focusWindow() != nullptr)
        QCoreApplication::sendEvent(QGuiApplication::focusWindow(), &release);
}

}  // namespace play
