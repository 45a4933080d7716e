// The shop's pages of tiles, below the lines of the invoice: one tap rings an item up. Users with the right
// to do so also change pages and tiles here.
#pragma once

#include <QFrame>
#include <vector>

#include "sales/tiles.h"
#include "ui/widgets/context.h"

class QHBoxLayout;
class QPushButton;
class QScrollArea;

namespace sales {
class SalesDesk;
}

namespace ui {

class TilesPanel : public QFrame {
    Q_OBJECT
  public:
    // Tab comes to it from the widget `before`.
    TilesPanel(sales::SalesDesk& desk, const Context& context, QWidget* before);

    // Opens the panel with the focus on its first tile, or closes it if the focus is in it.
    void toggle();
    // Shows the prices of another price level.
    void refresh();
    // Returns true if the panel leaves little of a small screen.
    bool is_cramped() const;

  signals:
    // The panel has come or gone.
    void toggled();
    void taken(const sales::Entry& entry);
    // The panel was closed, or a page was changed: the focus belongs to the entry field.
    void left();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent*) override { emit toggled(); }
    void hideEvent(QHideEvent*) override { emit toggled(); }
    void resizeEvent(QResizeEvent* event) override;

  private:
    // Takes the height that the lines and the parts around them leave.
    void fit();
    void read();
    void show_pages();
    void show_tiles();
    QPushButton* tab(const QString& name, const QString& caption);
    void set_editing(bool editing);
    void end_editing();
    void close_tiles();
    void choose_page(std::size_t page);
    void press_tile(std::size_t at);
    void add_tile();
    void edit_tile(std::size_t at);
    void edit_page(bool is_new);
    void store(sales::TilePage page);
    void focus_tile(int at);
    sales::TilePage* page() { return page_ < pages_.size() ? &pages_[page_] : nullptr; }

    sales::SalesDesk& desk_;
    const Context& context_;
    QWidget* before_;
    QHBoxLayout* tabs_;
    QScrollArea* scroll_;
    QWidget* area_;
    std::vector<QPushButton*> tiles_;
    int columns_ = 1;
    std::vector<sales::TilePage> pages_;
    std::size_t page_ = 0;
    bool editing_ = false;
};

}  // namespace ui
