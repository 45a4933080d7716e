#include "play/hands.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QKeySequence>
#include <QTimer>
#include <QWindow>

namespace play {

namespace {

constexpr quint64 hand_ms = 1200;  // from one key to the next, slowly enough to answer a box
constexpr quint64 typing_ms = 250;
constexpr quint64 scanner_ms = 5;

}  // namespace

bool Hands::press(const QString& name) {
    QString sequence = name;
    sequence.replace("Enter", "Return");
    if (name == "+") {
        push(Qt::Key_Plus, Qt::NoModifier, "+", hand_ms);
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
    push(key, keys[0].keyboardModifiers(), text, hand_ms);
    return true;
}

void Hands::type(const QString& text) {
    // A keyboard sends a character beyond the first plane in one press.
    for (const char32_t character : text.toUcs4()) {
        push(character < 128 ? QChar(character).toUpper().unicode() : 0, Qt::NoModifier,
             QString::fromUcs4(&character, 1), typing_ms);
    }
}

void Hands::scan(const QString& text) {
    // Scans that follow one another stand closer together than any two keys of a hand.
    quint64 pause = keys_.empty() ? hand_ms : scanner_ms;
    for (const QChar character : text) {
        push(character.unicode() < 128 ? character.toUpper().unicode() : 0, Qt::NoModifier,
             QString(character), pause);
        pause = scanner_ms;
    }
    push(Qt::Key_Return, Qt::NoModifier, "\r", pause);
}

void Hands::push(int key, Qt::KeyboardModifiers modifiers, const QString& text, quint64 after) {
    time_ += after;
    keys_.push_back({key, modifiers, text, time_});
    if (!sending_) {
        sending_ = true;
        QTimer::singleShot(0, this, &Hands::send_next);
    }
}

void Hands::send_next() {
    if (keys_.empty()) {
        sending_ = false;
        return;
    }
    const Key key = keys_.front();
    keys_.pop_front();
    // Asked for before the key is sent: the key may open a box, which runs its own loop until it is answered.
    QTimer::singleShot(0, this, &Hands::send_next);
    send(key);
}

void Hands::strike(int key, Qt::KeyboardModifiers modifiers) {
    time_ += hand_ms;
    send({key, modifiers, {}, time_});
}

void Hands::send(const Key& key) {
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
