// The sales window: the screen that the cashier works on all day.
#pragma once

#include <QTimer>
#include <QWidget>
#include <functional>

#include "sales/sales_desk.h"
#include "ui/sales/commands.h"
#include "ui/widgets/context.h"

class QLabel;
class QLineEdit;

namespace ui {

class ChangeCard;
class EntryBar;
class HeaderBar;
class InvoiceBanner;
class KeyStrip;
class KindBar;
class LineModel;
class LineView;
class Matches;
class TilesPanel;
class PartyBar;
class PrintingLine;
class TotalsPanel;

// Shows sales::SalesDesk: it calls the actions of the logic and repaints after each. After an action the
// focus is in the item-code field, unless the action needs it elsewhere.
class SalesWindow : public QWidget {
    Q_OBJECT
  public:
    SalesWindow(Context context, const std::vector<Command>& screens);
    ~SalesWindow() override;

    // Opens the logic and shows it. Returns false, after a message, if the database failed.
    bool open();
    sales::SalesDesk& desk() { return desk_; }
    const Context& context() const { return context_; }
    // The window's own commands. Those that open other screens are passed to the constructor.
    static const std::vector<Command>& commands();
    // Repaints everything from the logic. Called after every action, and by screens that changed the invoice.
    void repaint_all();
    // Called every second: updates the clock, and the date at midnight.
    void tick();
    // Shows a text above the grid until the next line is entered, for screens that report what they did.
    void notice(const QString& text);
    void focus_entry();

  signals:
    // What the window shows of the invoice and its payment may have changed.
    void shown();
    // The cashier left the program (false) or started it again (true).
    void finished(bool restart);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void show_stock();
    // sales_window.cpp
    QWidget* build_main();
    QWidget* build_foot();
    void build_strip();
    void build_menu();
    void connect_parts();
    void connect_party_bar();
    void show_server();
    // sales_window_keys.cpp
    bool press(QKeyCombination key);
    void perform(const Command& command);
    bool is_typing() const;
    // sales_window_actions.cpp. Runs an action in the guard, then repaints.
    void act(std::string_view name, const std::function<void()>& action);
    // The same, then moves the focus to the item-code field.
    void act_and_return(std::string_view name, const std::function<void()>& action);
    // These return true if a line was added or raised.
    bool enter(const sales::Entry& entry);
    bool enter_for_recalled(const sales::Entry& entry);
    // Enters the text of the entry fields. Returns false if the cashier must deal with it first.
    bool finish_entry();
    void edit_cell(int row, int column, const QString& first);
    void commit_cell(int row, int column, const QString& text, bool by_enter);
    // Enters what was typed into a cell or discount so far. Returns false if it was refused.
    bool finish_editing();
    // Begins the save and has the cash of a sale paid; `pay` returns false to go back to the invoice.
    void save(const std::function<bool(sales::Payment&)>& pay);
    void save_with_dialog();
    // Saves with the amount that a button of QuickCash takes, without a dialog.
    void take_cash(int button);
    void settle_unfinished();
    void print_shift_reports();
    void cancel(std::string_view name, bool (sales::Checkout::*action)());
    void hold();
    void show_held();
    void recall(const QString& number);
    void reprint();
    void start_return();
    void switch_kind(int kind);
    void choose_price_level(int level);
    void switch_payment(int payment);
    void toggle_payment();
    void focus_payment_fields();
    // Enters the first match of the words in an entry field.
    bool enter_words(QLineEdit* field);
    // The same for an item that was chosen: into the invoice, or into the recalled one.
    bool enter_found(const QLineEdit* field, const sales::Entry& entry);
    // Opens the search, for the words in the entry field or with empty filters, and enters the item taken.
    void search();
    void item_info();
    void quick_quantity();
    void next_unit();
    void delete_current_line();
    void show_shifts();
    void go_to_grid();
    void focus_entry_for_scan();
    void open_screen(const Command& screen);
    // Runs a screen that may change the shift. A text in the entry field belonged to the shift before.
    void run_screen(const std::function<void()>& screen);
    void escape();
    void restart();
    void leave();

    Context context_;
    const std::vector<Command>& screens_;
    sales::SalesDesk desk_;
    LineModel* model_;
    HeaderBar* header_;
    QLabel* server_;  // the line about a lost server
    KindBar* kind_bar_;
    InvoiceBanner* banner_ = nullptr;
    EntryBar* entry_bar_ = nullptr;
    Matches* matches_ = nullptr;
    TilesPanel* tiles_ = nullptr;
    PartyBar* party_bar_ = nullptr;
    ChangeCard* change_ = nullptr;
    LineView* lines_ = nullptr;
    PrintingLine* printing_ = nullptr;
    QLabel* stock_ = nullptr;
    QLabel* counts_ = nullptr;
    TotalsPanel* totals_;
    KeyStrip* strip_;
    std::vector<QWidget*> foot_keys_;  // shown while the strip has no room for them
    QTimer seconds_;
    QTimer news_;
    bool acting_ = false;
    bool leaving_ = false;
    bool refused_ = false;  // the last typed value was refused
};

}  // namespace ui
