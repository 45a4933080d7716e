#include "printing/pages/logo.h"

#include <QBuffer>
#include <QFileInfo>
#include <QImage>
#include <QImageReader>

#include "common/ports.h"
#include "printing/pages/canvas.h"

namespace printing::pages {

namespace {

// The largest logo, on A4, is a third of the paper wide and 20 mm high: 600 dots an inch.
constexpr QSize largest(1500, 500);

}  // namespace

std::optional<std::string> logo_picture(const std::filesystem::path& file) {
    const QString name = qstring(file.string());
    // A pipe would be waited for, and closing the shop's own file would drop its locks.
    if (!QFileInfo(name).isFile() || common::is_open_here(file)) return std::nullopt;
    QImageReader reader(name);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    // A large photograph is already scaled down while it is read.
    const QSize size = reader.size();
    if (size.width() > 4 * largest.width() || size.height() > 4 * largest.height())
        reader.setScaledSize(size.scaled(4 * largest, Qt::KeepAspectRatio));
    QImage picture = reader.read();
    if (picture.isNull()) return std::nullopt;
    if (picture.width() > largest.width() || picture.height() > largest.height())
        picture = picture.scaled(largest, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    QBuffer bytes;
    bytes.open(QIODevice::WriteOnly);
    if (picture.isNull() || !picture.save(&bytes, "PNG")) return std::nullopt;
    return bytes.data().toStdString();
}

}  // namespace printing::pages
