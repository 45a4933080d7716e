// The commands of the sales window. One table row says what a key does, what it is called, and where else the
// window shows it. The key handler, the key strip, the menu and the test of the guide read the same rows.
#pragma once

#include <QKeyCombination>
#include <QString>
#include <array>
#include <vector>

namespace ui {

class SalesWindow;

struct Command {
    // `strip_or_foot`: on the strip if that needs no further row, else below the line grid.
    enum class Place { none, strip, strip_or_foot, strip_end, menu };
    // What a command does first with a cell or discount that is being typed: `commit` enters it, and does not
    // run if it is refused; `finish` also enters the text of the entry field; `keep` leaves it alone; `pass`
    // gives the key to the field.
    enum class Typing { finish, commit, keep, pass };

    QString name;         // part of the object names: "key_f8" on the strip, "menu_password" in the menu
    QString caption;      // with "&" before the mnemonic if it has one
    QKeyCombination key;  // Qt::Key_unknown for none
    Place place;
    void (*run)(SalesWindow& window);
    Typing typing = Typing::commit;
    QString button = {};  // caption of its button below the line grid; empty for none
};

// Keys that the window also shows beside the part that they act on.
namespace key {
inline constexpr QKeyCombination save = Qt::Key_F1;
inline constexpr QKeyCombination kind = Qt::Key_F4;
inline constexpr QKeyCombination payment = Qt::Key_F5;
inline constexpr QKeyCombination card = Qt::Key_F6;
inline constexpr QKeyCombination tips = Qt::Key_F7;
// Keys that take a cash sale at one press: the net, and the larger amounts offered for it.
inline constexpr std::array<QKeyCombination, 4> cash = {Qt::SHIFT | Qt::Key_F5, Qt::SHIFT | Qt::Key_F6,
                                                        Qt::SHIFT | Qt::Key_F7, Qt::SHIFT | Qt::Key_F8};
inline constexpr QKeyCombination discount = Qt::CTRL | Qt::Key_P;
inline constexpr QKeyCombination walk_in_customer = Qt::Key_F10;
inline constexpr QKeyCombination recall = Qt::CTRL | Qt::Key_R;
inline constexpr QKeyCombination invoice_data = Qt::CTRL | Qt::Key_D;
inline constexpr QKeyCombination search = Qt::CTRL | Qt::Key_F;
inline constexpr QKeyCombination tiles = Qt::CTRL | Qt::Key_G;
inline constexpr QKeyCombination first_price_level = Qt::CTRL | Qt::Key_1;
}  // namespace key

}  // namespace ui
