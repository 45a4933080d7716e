// The sheets that change a tile, and the name of a page of tiles.
#pragma once

#include "sales/tiles.h"
#include "ui/widgets/sheet.h"

class QLineEdit;
class QPushButton;

namespace ui {

class Segments;

// The colours of tiles; the first is that of a new one. Dark text is readable on all of them.
inline constexpr const char* tile_colours[] = {"#ffffff", "#fff1c2", "#ffdcc2", "#ffd6d6",
                                               "#f3d9f7", "#d9e4fb", "#cfeef0", "#d8f0d0"};
inline constexpr int tile_colour_count = static_cast<int>(std::size(tile_colours));
const char* tile_colour(int colour);

// run() returns what is to be done with the tile.
class TileSheet : public Sheet {
    Q_OBJECT
  public:
    enum Result { back, change, remove, earlier, later };
    TileSheet(QWidget* host, const sales::Tile& tile);
    // With the unit and the colour chosen.
    const sales::Tile& tile() const { return tile_; }

  protected:
    void enter() override { leave(change); }
    void take_focus() override;

  private:
    sales::Tile tile_;
    std::vector<QPushButton*> colours_;
    QPushButton* keep_ = nullptr;
};

class TilePageSheet : public Sheet {
    Q_OBJECT
  public:
    enum Result { back, change, remove };
    TilePageSheet(QWidget* host, const QString& name, bool is_new);
    QString name() const;

  protected:
    void enter() override { leave(change); }

  private:
    QLineEdit* name_;
};

}  // namespace ui
