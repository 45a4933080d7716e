// Every key on its way to the screens: nothing that is typed or scanned is lost, merged, or taken by a box
// that appeared in between.
#pragma once

#include <QKeyEvent>
#include <QObject>
#include <QTimer>
#include <deque>
#include <vector>

class QWidget;

namespace ui {

// How a widget, or the sheet it stands on, takes keys; the dynamic property `keys_property` carries it.
inline constexpr auto keys_property = "takes_keys";
// A message box: characters wait until it is gone, and only an Enter or Esc that comes alone answers it.
inline constexpr auto keys_held = "held";
// A field for amounts: a burst of characters that ends with Enter is a scan and goes to the entry field
// later.
inline constexpr auto keys_no_scans = "no scans";

class KeyQueue : public QObject {
    Q_OBJECT
  public:
    explicit KeyQueue(QObject* parent = nullptr);

    // True when no key waits for its field.
    bool idle() const { return held_.empty() && scans_.empty() && doubtful_.empty(); }

    // True while characters wait for the moment that tells a scan from typing.
    bool in_doubt() const { return !doubtful_.empty(); }

    // A scanner sends its characters closer together than this; no hand does, four times in a row.
    static constexpr quint64 burst_ms = 35;
    static constexpr std::size_t shortest_scan = 4;
    // An answer to a box comes at least this long after the key before it, and no sooner than this after
    // characters that were typed without looking.
    static constexpr quint64 alone_ms = 200;
    static constexpr quint64 blind_ms = 1000;

  signals:
    // A scan came while the focus was in an amount field; it is entered as soon as the focus leaves there.
    void scan_waits();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    struct Key {
        int key;
        Qt::KeyboardModifiers modifiers;
        QString text;
        bool repeated;
        quint64 time;
        bool printable() const;
        bool is_enter() const { return key == Qt::Key_Return || key == Qt::Key_Enter; }
    };

    void take(const Key& key);
    bool answers_box(const Key& key, quint64 gap) const;
    void route(const Key& key);
    void settle_doubt();
    void feed();
    void deliver(const Key& key);
    void drop_rest_of_word();

    std::deque<Key> held_;       // typed while a box was open
    std::deque<Key> scans_;      // came to a field that takes none
    std::vector<Key> doubtful_;  // the beginning of a scan, or of a number
    QTimer doubt_;
    quint64 last_ = 0;
    bool delivering_ = false;
    unsigned boxes_ = 0;  // how many came up so far
};

}  // namespace ui
