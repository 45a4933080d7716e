// The gallery: pictures of every screen at several sizes, and the page that shows them side by side.
#pragma once

#include <QImage>
#include <QSize>
#include <filesystem>
#include <string>
#include <vector>

#include "play/script.h"

namespace play {

// The sizes that every screen is shown at.
const std::vector<QSize>& gallery_sizes();

// One "look" of a play: look NAME = CAPTION.
struct Look {
    std::string name;
    std::string caption;
    std::string screen;  // the class of the screen, sheet or box in front, as the sources name it
};

// What stands in a "look" step; nothing when it does not read so.
bool read_look(const Step& step, Look& look);

// The class of the screen, sheet or box in front; empty when there is none.
std::string front_screen();

// The whole screen as the cashier sees it: the window in use, and the open menu or list above it. A window
// that is smaller than the screen stands in its middle.
QImage picture_of_screen(const QSize& screen);

// Where an object stands in that picture, with a little of what is around it; a window is the whole of it.
// Empty when there is none.
QRect place_of(const QString& object);

// Writes a picture as a small PNG of at most so many colours. False when it cannot be written.
bool save_small(const QImage& picture, const std::filesystem::path& file, int colours);

// The file of a look: "NAME-1024.png".
std::string picture_name(const std::string& look, const QSize& screen);

// One play of the gallery and what it looked at.
struct Chapter {
    std::filesystem::path play;
    std::string title;  // the first line of the play
    std::vector<Look> looks;
};

// Writes the page; its pictures lie in "pictures/screens" and the plays in "screens" beside it.
void write_gallery(const std::filesystem::path& file, const std::vector<Chapter>& chapters);

}  // namespace play
