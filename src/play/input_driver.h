// Sends keys to the active window at the speed of a person or of a scanner.
#pragma once

#include <QObject>
#include <QString>
#include <deque>

class QWidget;

namespace play {

class InputDriver : public QObject {
    Q_OBJECT
  public:
    // Presses a key by its name: "F1", "Shift+F9", "Ctrl+F", "Enter", "Esc", "Down", "Delete", "+", "5".
    // Returns false if there is no key of that name.
    bool press(const QString& name);
    void type(const QString& text);
    // Sends the characters and an Enter as fast as a scanner.
    void scan(const QString& text);
    // Whether all keys have been sent.
    bool idle() const { return keys_.empty(); }
    // Sends one key at once, ahead of the others, and returns when it has been handled.
    void press_now(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

  private:
    struct Key {
        int key;
        Qt::KeyboardModifiers modifiers;
        QString text;
        quint64 time;
    };
    void push(int key, Qt::KeyboardModifiers modifiers, const QString& text, quint64 after);
    void send_next();
    static void send(const Key& key);

    std::deque<Key> keys_;
    quint64 time_ = 1000000;
    bool sending_ = false;
};

}  // namespace play
