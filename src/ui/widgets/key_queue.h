// The queue that every key passes on its way to the screens. No scan is lost, merged, or taken by a box that
// appeared in between, and a key with Ctrl or Alt does the same on every keyboard layout.
#pragma once

#include <QKeyEvent>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QWindow>
#include <deque>
#include <vector>

class QWidget;

namespace ui {

// Dynamic property that says how a widget, or the sheet around it, takes keys; its values follow.
inline constexpr auto keys_property = "takes_keys";
// For a message box: scans wait until it is gone, what is typed by hand is dropped with a sound, and only an
// Enter or Esc that belongs to neither answers it.
inline constexpr auto keys_held = "held";
// For an amount field: a burst of characters that ends with Enter is a scan and goes to the entry field
// later.
inline constexpr auto keys_no_scans = "no scans";

// Whether a key types a character.
inline bool is_printable(const QString& text, Qt::KeyboardModifiers modifiers) {
    return !text.isEmpty() && text.front().isPrint() &&
           !(modifiers & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
}
inline bool is_enter(int key) {
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}

class KeyQueue : public QObject {
    Q_OBJECT
  public:
    explicit KeyQueue(QObject* parent = nullptr);

    // Returns true if no key waits for its field.
    bool idle() const { return held_.empty() && scans_.empty() && pending_.empty(); }

    // While held, every key waits; afterwards they go on in their order.
    void hold(bool held);

    // Returns true while characters wait until it is clear whether they are a scan or typing.
    bool is_undecided() const { return !pending_.empty(); }

    // How many characters came as fast as a scanner sends them, up to the key that the screen got last. For
    // an Enter, the characters before it.
    std::size_t burst() const { return delivered_.burst; }
    // Returns true if that key is the Enter of a scan.
    bool is_scan() const { return delivered_.is_enter && delivered_.burst >= shortest_scan; }

    // The scans that wait for the field in use, or for a box, to be left.
    std::size_t waiting_scans() const;
    void drop_waiting_scans();
    // The last scan that waits for an open box to be answered; empty if there is none.
    QString scan_behind_box() const;
    void drop_scan_behind_box();

    // A scanner sends its characters and the Enter behind them closer together than this. Nobody presses
    // four keys in a row that fast.
    static constexpr quint64 burst_ms = 35;
    static constexpr std::size_t shortest_scan = 3;
    // The least time between an answer to a box and the key before it, unless that led to a button, and
    // between an answer and characters that were typed without looking.
    static constexpr quint64 answer_gap_ms = 200;
    static constexpr quint64 after_typing_ms = 1000;

  signals:
    // A scan came while the focus was in an amount field or in a box. It is entered as soon as the focus
    // leaves that.
    void scan_waiting();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    struct Key {
        int key;
        Qt::KeyboardModifiers modifiers;
        QString text;
        bool repeated;
        quint64 time;
        std::size_t burst = 0;
        bool printable() const { return is_printable(text, modifiers); }
        bool is_enter() const { return ui::is_enter(key); }
        bool leads_to_button() const;
        bool acts() const;
    };

    void take(Key key);
    std::deque<Key>::const_iterator last_scan() const;
    void take_at_box(const Key& key, quint64 gap, bool led_to_button);
    bool collect_behind_box(const Key& key);
    void keep_scans_alone();
    bool is_close(const Key& key) const;
    bool answers_box(const Key& key, quint64 gap, bool led_to_button);
    void route(const Key& key);
    void end_pending();
    void deliver_pending();
    void deliver_waiting();
    void deliver(const Key& key);
    bool is_mnemonic(const Key& key);

    QPointer<QWindow> window_;  // that got the last key
    bool on_hold_ = false;
    std::deque<Key> held_;      // scans that came while a box was open; everything typed while on hold
    std::deque<Key> scans_;     // came while a field was in use that takes no scans
    std::vector<Key> pending_;  // the beginning of a scan or of a typed number
    bool behind_box_ = false;   // the pending keys came while a box was open
    QTimer pending_timer_;
    quint64 last_ = 0;
    std::size_t burst_ = 0;
    struct {
        bool is_enter = false;
        std::size_t burst = 0;
    } delivered_;
    bool led_to_button_ = false;  // the last key was an arrow or Tab
    bool typed_at_box_ = false;   // characters without the Enter that ends them
    bool delivering_ = false;
    bool typing_ = false;  // the key being delivered is a character
    unsigned boxes_shown_ = 0;
};

}  // namespace ui
