// The cashier's hands: keys on their way to the window in use, with the pace of a person or of a scanner.
#pragma once

#include <QObject>
#include <QString>
#include <deque>

class QWidget;

namespace play {

class Hands : public QObject {
    Q_OBJECT
  public:
    // A key by its name: "F1", "Shift+F9", "Ctrl+F", "Enter", "Esc", "Down", "Delete", "+", "5". False when
    // there is none of that name.
    bool press(const QString& name);
    void type(const QString& text);
    // The characters and an Enter, as fast as a scanner sends them.
    void scan(const QString& text);
    bool idle() const { return keys_.empty(); }
    // One key at once, which has been taken when this returns.
    void strike(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

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
