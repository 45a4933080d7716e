#include "play/gallery.h"

#include <cxxabi.h>
#include <QApplication>
#include <QPainter>
#include <QWidget>
#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <typeinfo>
#include <unordered_map>

#include "play/seeing.h"
#include "ui/widgets/colours.h"
#include "ui/widgets/sheet.h"
#include "ui/widgets/text.h"

namespace play {

namespace {

// The colours that are used most, the rarer ones of a kind together.
QVector<QRgb> palette_of(const QImage& picture, int most_colours) {
    std::unordered_map<QRgb, int> counted;
    for (int y = 0; y < picture.height(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
        for (int x = 0; x < picture.width(); ++x)
            ++counted[line[x] | 0xFF000000];
    }
    std::vector<std::pair<QRgb, int>> colours(counted.begin(), counted.end());
    std::sort(colours.begin(), colours.end(), [](const auto& a, const auto& b) {
        return a.second != b.second ? a.second > b.second : a.first < b.first;
    });
    // The grounds, which cover most of it, stand as they are; of the rest a colour that is hardly another one
    // than one taken already needs no place of its own.
    constexpr std::size_t grounds = 14;
    QVector<QRgb> taken;
    for (std::size_t at = 0; at < std::min(grounds, colours.size()); ++at)
        taken.push_back(colours[at].first);
    for (const int apart : {24, 8, 0}) {
        for (const auto& [colour, count] : colours) {
            if (taken.size() == most_colours) return taken;
            const bool known = std::any_of(taken.begin(), taken.end(), [&](QRgb other) {
                return std::abs(qRed(colour) - qRed(other)) + std::abs(qGreen(colour) - qGreen(other)) +
                           std::abs(qBlue(colour) - qBlue(other)) <=
                       apart;
            });
            if (!known) taken.push_back(colour);
        }
    }
    return taken;
}

}  // namespace

const std::vector<QSize>& gallery_sizes() {
    static const std::vector<QSize> sizes = {{1024, 768}, {1920, 1080}};
    return sizes;
}

bool read_look(const Step& step, Look& look) {
    const Halves said = split_at(step.rest, "=");
    if (!said.found || said.before.empty() || said.after.empty()) return false;
    look.name = said.before;
    look.caption = said.after;
    return true;
}

std::string front_screen() {
    const QWidget* window = front_window();
    if (window == nullptr) return {};
    const QWidget* front = ui::Sheet::top_of(window);
    if (front == nullptr) front = window;
    int status = 0;
    const std::unique_ptr<char, decltype(&std::free)> readable(
        abi::__cxa_demangle(typeid(*front).name(), nullptr, nullptr, &status), &std::free);
    const std::string name = readable == nullptr ? typeid(*front).name() : readable.get();
    return name.substr(name.rfind(':') + 1);
}

QImage picture_of_screen(const QSize& screen) {
    QImage picture(screen, QImage::Format_RGB32);
    picture.fill(QColor(ui::colour::net));
    QPainter painter(&picture);
    QWidget* window = front_window();
    if (window == nullptr) return picture;
    const QImage shown = window->grab().toImage();
    const bool whole = shown.size() == screen;
    const QPoint corner((screen.width() - shown.width()) / 2, (screen.height() - shown.height()) / 2);
    painter.drawImage(whole ? QPoint() : corner, shown);
    for (QWidget* above : QApplication::topLevelWidgets()) {
        if (above == window || !above->isVisible() || above->windowType() != Qt::Popup) continue;
        painter.drawImage(above->pos() - window->pos(), above->grab().toImage());
    }
    return picture;
}

QRect place_of(const QString& object) {
    const QWidget* widget = find_widget(object);
    if (widget == nullptr) return {};
    const QWidget* window = widget->window();
    if (widget == window) return window->rect();
    constexpr int edge = 12;
    // A sheet covers the whole window; what it shows stands on its card.
    if (qobject_cast<const ui::Sheet*>(widget) != nullptr) {
        for (const QWidget* child : widget->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
            if (child->property("role") == "card") widget = child;
        }
    }
    return QRect(widget->mapTo(window, QPoint()), widget->size())
        .adjusted(-edge, -edge, edge, edge)
        .intersected(window->rect());
}

bool save_small(const QImage& picture, const std::filesystem::path& file, int colours) {
    const QImage small = picture.convertToFormat(QImage::Format_Indexed8, palette_of(picture, colours),
                                                 Qt::ThresholdDither | Qt::AvoidDither);
    constexpr int smallest = 0;  // the quality of a PNG is its size
    return small.save(ui::qt(file.string()), "PNG", smallest);
}

std::string picture_name(const std::string& look, const QSize& screen) {
    return look + "-" + std::to_string(screen.width()) + ".png";
}

void write_gallery(const std::filesystem::path& file, const std::vector<Chapter>& chapters) {
    std::ofstream page(file, std::ios::trunc);
    page << "# Screens\n\n"
            "Every screen, sheet and box of the program at 1024 × 768 and at 1920 × 1080, on the demo shop, "
            "with the time\nstanding still. Made by `docs/make-screens`; the plays named here lead to each "
            "picture, and `look` in a play\nalso inspects the screen (`docs/plays.md`).\n";
    for (const Chapter& chapter : chapters) {
        const std::string play = chapter.play.filename().string();
        page << "\n## " << chapter.title << "\n\n[" << play << "](screens/" << play << ")\n";
        for (const Look& look : chapter.looks) {
            page << "\n### " << look.caption << "\n\n`" << look.screen << "`\n\n";
            std::string heads = "|";
            std::string rule = "|";
            std::string pictures = "|";
            for (const QSize& size : gallery_sizes()) {
                heads += " " + std::to_string(size.width()) + " × " + std::to_string(size.height()) + " |";
                rule += "---|";
                pictures +=
                    " ![" + look.caption + "](pictures/screens/" + picture_name(look.name, size) + ") |";
            }
            page << heads << "\n" << rule << "\n" << pictures << "\n";
        }
    }
}

}  // namespace play
