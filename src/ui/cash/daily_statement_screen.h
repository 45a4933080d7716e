// The daily cash statement: the day's figures as a ledger, or the day summary, the journal under them, and
// the printing of the cashier's report.
#pragma once

#include <cstdint>
#include <vector>

#include "cash/daily_statement.h"
#include "cash/figures.h"
#include "ui/widgets/context.h"
#include "ui/widgets/sheet.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace ui {

class FigureLedger;
class ListTable;
class Segments;

// A choice of another store, drawer or day is shown at once, so that no figure is ever shown under a name
// that it does not belong to.
class DailyStatementScreen : public Sheet {
    Q_OBJECT
  public:
    DailyStatementScreen(QWidget* host, const Context& context);
    // Shows today's statement of the workstation's drawer; returns false after a message if the user may not
    // see it.
    bool open();

  protected:
    void take_focus() override;
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QWidget* build_choices();
    QWidget* build_journal_bar();
    void show_parts();
    void choose_store();
    void choose_drawer();
    // Returns false after a message if the typed text is not a date.
    bool choose_date();
    void step_date(long days);
    // Makes a choice and shows its statement; if that fails, goes back to what is shown.
    template <typename Choice>
    void change(Choice choice);
    void take_back();
    void show_choices();
    void show_figures();
    void show_journal();
    void show_row_note(int row);
    void open_figure(int figure);
    void print();
    void preview();

    Context context_;
    cash::DailyStatement logic_;
    // What the figures on the screen belong to.
    struct {
        std::int64_t store = 0;
        std::int64_t drawer = 0;
        common::Date date;
    } shown_;
    QComboBox* store_;
    QComboBox* drawer_;
    QLineEdit* date_;
    Segments* view_;
    FigureLedger* statement_;
    FigureLedger* summary_;
    Segments* filter_;
    QLabel* count_;
    QPushButton* alone_;  // shows the journal without the figures
    QLabel* note_;
    QLabel* row_note_;
    ListTable* journal_;
};

// The rows that make a figure of the statement, and their sum.
class FigureRowsSheet : public Sheet {
    Q_OBJECT
  public:
    // `caption` is the figure's heading, `chosen` the row that the cursor is on.
    FigureRowsSheet(QWidget* host, const QString& caption, const cash::FigureRows& rows, int chosen = 0);
    // What any list shows of such a row, below `what`.
    static QStringList headings(const QString& what);
    static QStringList cells(std::string_view what, const cash::FigureRow& row);

  protected:
    void take_focus() override;

  private:
    ListTable* table_;
};

}  // namespace ui
