#include "play/screens_page.h"

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

#include "play/screen_reader.h"
#include "ui/widgets/colours.h"
#include "ui/widgets/sheet.h"
#include "ui/widgets/text.h"

namespace play {

namespace {

// The most frequent colours; a rare one shares its place with a similar colour.
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
    // Background colours, which cover most of the picture, are kept exactly. Of the other colours, those that
    // hardly differ from one already taken come last.
    constexpr std::size_t backgrounds = 14;
    QVector<QRgb> taken;
    for (std::size_t at = 0; at < std::min(backgrounds, colours.size()); ++at)
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

const std::vector<QSize>& page_sizes() {
    static const std::vector<QSize> sizes = {{1024, 768}, {1920, 1080}};
    return sizes;
}

std::optional<Screenshot> read_screenshot(const Step& step) {
    const Halves said = split_at(step.rest, "=");
    if (!said.found || said.before.empty() || said.after.empty()) return std::nullopt;
    const Halves what = split_at(said.before, "of");
    return Screenshot{what.before, said.after, what.after, {}};
}

std::string class_of(const QWidget& screen) {
    int status = 0;
    const std::unique_ptr<char, decltype(&std::free)> readable(
        abi::__cxa_demangle(typeid(screen).name(), nullptr, nullptr, &status), &std::free);
    const std::string name = readable == nullptr ? typeid(screen).name() : readable.get();
    return name.substr(name.rfind(':') + 1);
}

std::string front_screen() {
    const QWidget* window = front_window();
    if (window == nullptr) return {};
    const QWidget* front = ui::Sheet::top_of(window);
    return class_of(front == nullptr ? *window : *front);
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

QRect place_in_picture(const QString& object) {
    const QWidget* widget = find_widget(object);
    if (widget == nullptr) return {};
    const QWidget* window = widget->window();
    if (widget == window) return window->rect();
    constexpr int edge = 12;
    // A sheet covers the whole window; its card is the visible part.
    if (qobject_cast<const ui::Sheet*>(widget) != nullptr) {
        for (const QWidget* child : widget->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
            if (child->property("role") == "card") widget = child;
        }
    }
    return QRect(widget->mapTo(window, QPoint()), widget->size())
        .adjusted(-edge, -edge, edge, edge)
        .intersected(window->rect());
}

bool save_png(const QImage& picture, const std::filesystem::path& file, int colours) {
    const QImage small = picture.convertToFormat(QImage::Format_Indexed8, palette_of(picture, colours),
                                                 Qt::ThresholdDither | Qt::AvoidDither);
    constexpr int smallest = 0;  // for PNG, the lowest "quality" is the best compression
    return small.save(ui::qt(file.string()), "PNG", smallest);
}

std::string picture_name(const std::string& name, const QSize& screen) {
    return name + "-" + std::to_string(screen.width()) + ".png";
}

void write_screens_page(const std::filesystem::path& file, const std::vector<Section>& sections) {
    std::ofstream page(file, std::ios::trunc);
    page << "# Screens\n\n"
            "Every screen, sheet and box of the program at 1024 × 768 and at 1920 × 1080, on the demo shop, "
            "with the time\nstanding still. Made by `docs/make-screens`; the plays named here lead to each "
            "picture, and `look` in a play\nalso inspects the screen (`docs/plays.md`).\n";
    for (const Section& section : sections) {
        const std::string play = section.play.filename().string();
        page << "\n## " << section.title << "\n\n[" << play << "](screens/" << play << ")\n";
        for (const Screenshot& shot : section.screenshots) {
            page << "\n### " << shot.caption << "\n\n`" << shot.screen << "`\n\n";
            std::string heads = "|";
            std::string rule = "|";
            std::string pictures = "|";
            for (const QSize& size : page_sizes()) {
                heads += " " + std::to_string(size.width()) + " × " + std::to_string(size.height()) + " |";
                rule += "---|";
                pictures +=
                    " ![" + shot.caption + "](pictures/screens/" + picture_name(shot.name, size) + ") |";
            }
            page << heads << "\n" << rule << "\n" << pictures << "\n";
        }
    }
}

}  // namespace play
