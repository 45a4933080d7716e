// The panel of the keypad's keys: figures, Arabic letters, Latin letters.
#pragma once

#include <QFrame>
#include <functional>

class QGridLayout;

namespace ui {

// Property of a widget that is read from afar, such as net and change. The pad covers it only if there is no
// other place.
inline constexpr auto read_property = "read";

class Pad : public QFrame {
    Q_OBJECT
  public:
    // `close` is called by the key that closes it.
    Pad(QWidget* window, std::function<void()> close);

    // Shows it anew, with the figures.
    void begin();
    // Moves the pad to where it does not cover the field and covers as little as possible of what is to be
    // read, then of what can be pressed. Leaves it where it is if another place is hardly better, unless
    // another screen came to the front.
    void make_way_for(const QWidget* field);

  private:
    enum class Page { figures, arabic, latin };
    void show_page(Page page);
    void add_key(QGridLayout* grid, const QString& key, int row, int column);
    void press(const QString& key);

    std::function<void()> close_;
    bool capital_ = false;
    Page page_ = Page::figures;
    QWidget* keys_ = nullptr;
    const QWidget* front_ = nullptr;  // only compared
};

}  // namespace ui
