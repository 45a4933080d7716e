// Many figures as a right-to-left ledger: columns of captions with their figures, each column closed by its
// total on one common line. The arrow keys walk over it; Enter or a click opens a figure. The daily statement
// and the day summary are two such ledgers.
#pragma once

#include <QAbstractButton>
#include <vector>

namespace ui {

// One captioned figure. Its text is the figure, its accessible name the caption.
class FigureCell : public QAbstractButton {
    Q_OBJECT
  public:
    enum class Kind { plain, carried, total };
    FigureCell(const QString& name, const QString& sign, const QString& caption, Kind kind);
    void show_figure(const QString& text);
    // Sets the sizes of its texts, and the room kept for the figure at the left end, so that the decimals of
    // a column line up.
    void set_measures(int caption_pixels, int figure_pixels, int figure_width);
    int figure_width(int figure_pixels) const;
    int caption_width(int caption_pixels) const;
    // The width left for the caption of a cell beside its figure.
    static int caption_room(int cell_width, int figure_width);
    QSize sizeHint() const override;

  signals:
    // An arrow, Home or End was pressed.
    void walk(int key);
    void focused();

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    QFont sized(int pixels) const;
    QString sign_;
    QString caption_;
    Kind kind_;
    int caption_pixels_;
    int figure_pixels_;
    int figure_width_ = 0;
};

struct LedgerEntry {
    int id = 0;
    QString name;  // object name of the cell
    QString sign;  // "+", "−", "=" or nothing, before the caption
    QString caption;
    FigureCell::Kind kind = FigureCell::Kind::plain;
};
struct LedgerGroup {
    QString title;
    std::vector<LedgerEntry> entries;
};
// Groups from the top; totals sink to the foot of the column.
using LedgerColumn = std::vector<LedgerGroup>;

class FigureLedger : public QWidget {
    Q_OBJECT
  public:
    // Columns from the right.
    FigureLedger(const QString& name, const std::vector<LedgerColumn>& columns);
    void show_figure(int id, const QString& text);
    // Called after the figures of all cells were shown.
    void align_figures();
    // Puts the focus on the figure that had it last; at first on the one with this id.
    void take_focus(int id);

  signals:
    void opened(int id);
    void left_downwards();
    void left_upwards();

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    struct Placed {
        int id;
        FigureCell* cell;
    };
    void align_column(const std::vector<Placed>& column);
    void walk(std::size_t column, std::size_t row, int key);
    void make_current(FigureCell* cell);
    std::vector<std::vector<Placed>> columns_;
    FigureCell* current_ = nullptr;
};

// The ids are the columns of the statement and of the summary; object names "figure_cash_sales",
// "summary_4". The discounts have cells only where the net leaves them out.
std::vector<LedgerColumn> statement_ledger(bool with_discounts);
std::vector<LedgerColumn> summary_ledger(bool with_discounts);

}  // namespace ui
