// The page docs/screens.md with pictures of every screen at several sizes.
#pragma once

#include <QImage>
#include <QSize>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "play/script.h"

namespace play {

// The sizes at which the page shows every screen.
const std::vector<QSize>& page_sizes();

// A picture that a play takes with the step "look NAME = CAPTION".
struct Screenshot {
    std::string name;
    std::string caption;
    std::string window;  // the object name of a window that is not the cashier's; empty for his screen
    std::string screen;  // the class of the screen, sheet or box that is shown
};

// Reads a "look" step. Returns nothing for any other step.
std::optional<Screenshot> read_screenshot(const Step& step);

// The class of a screen, sheet or box without its namespace.
std::string class_of(const QWidget& screen);
// The class of the one in front; empty if there is none.
std::string front_screen();

// The whole screen as the cashier sees it: the active window and the menus or lists open above it. A window
// smaller than the screen stands in its middle.
QImage picture_of_screen(const QSize& screen);

// The place of an object in that picture with a small margin; for a window all of it. Empty if there is no
// such object.
QRect place_in_picture(const QString& object);

// Writes a picture as a small PNG with at most that many colours. Returns false if it cannot be written.
bool save_png(const QImage& picture, const std::filesystem::path& file, int colours);

// The file name of a screenshot: "NAME-1024.png".
std::string picture_name(const std::string& name, const QSize& screen);

// What one play shows on the page.
struct Section {
    std::filesystem::path play;
    std::string title;  // the first line of the play
    std::vector<Screenshot> screenshots;
};

// Writes the page. Its pictures belong in "pictures/screens" beside it, the plays in "screens".
void write_screens_page(const std::filesystem::path& file, const std::vector<Section>& sections);

}  // namespace play
