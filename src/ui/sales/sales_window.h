// The sales screen.
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

class EntryBar;
class HeaderBar;
class InvoiceBanner;
class KeyStrip;
class KindBar;
class LineModel;
class LineView;
class PartyBar;
class TotalsPanel;

// Shows a sales::SalesDesk: it passes keys on to the desk's actions and repaints from it after each one.
// Typing goes on in the item-code field unless an action wants it elsewhere.
class SalesWindow : public QWidget {
    Q_OBJECT
  public:
    SalesWindow(Context context, const std::vector<Command>& screens);
    ~SalesWindow() override;

    // Opens the logic and shows the screen; false when the database failed (the message has been shown).
    bool open();
    sales::SalesDesk& desk() { return desk_; }
    const Context& context() const { return context_; }
    // The window's own commands; those that open other screens are handed to the constructor.
    static const std::vector<Command>& commands();
    // Shows what the logic holds; called after every action, and by neighbouring screens that changed it.
    void repaint_all();
    // What happens every second: the clock goes on, and the day with it.
    void tick();
    // A word on what another screen has done, which stands above the grid until the next line is entered.
    void notice(const QString& text);
    void focus_entry();

  signals:
    // The cashier left the program, or asked for it to start again.
    void finished(bool restart);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void show_stock();
    // sales_screen.cpp
    QWidget* build_main();
    QWidget* build_foot();
    void build_strip();
    void build_menu();
    void connect_parts();
    // sales_screen_keys.cpp
    bool press(QKeyCombination key);
    void perform(const Command& command);
    bool is_typing() const;
    // sales_screen_actions.cpp. Each ends with a repaint.
    void act(std::string_view name, const std::function<void()>& action);
    // The same, and typing goes on in the item-code field.
    void act_and_return(std::string_view name, const std::function<void()>& action);
    void enter_item(const QString& text);
    void edit_cell(int row, int column, const QString& first);
    void commit_cell(int row, int column, const QString& text, bool by_enter);
    // Takes in what was typed into a cell or discount and not entered; false when it was refused.
    bool finish_editing();
    void save();
    void recall(const QString& number);
    void reprint();
    void start_return();
    void switch_kind(int kind);
    void choose_price_level(int level);
    void switch_payment(int payment);
    void toggle_payment();
    void focus_payment_fields();
    void search();
    void item_info();
    void quick_quantity();
    void delete_current_line();
    void show_shifts();
    void go_to_grid();
    void focus_entry_for_scan();
    void open_screen(const Command& screen);
    void escape();
    void restart();
    void leave();

    Context context_;
    const std::vector<Command>& screens_;
    sales::SalesDesk desk_;
    LineModel* model_;
    HeaderBar* header_;
    KindBar* kind_bar_;
    InvoiceBanner* banner_ = nullptr;
    EntryBar* entry_bar_ = nullptr;
    PartyBar* party_bar_ = nullptr;
    LineView* lines_ = nullptr;
    QLabel* stock_ = nullptr;
    QLabel* counts_ = nullptr;
    TotalsPanel* totals_;
    KeyStrip* strip_;
    QTimer seconds_;
    QTimer news_;
    bool acting_ = false;
    bool leaving_ = false;
    bool refused_ = false;  // the last value typed was refused
};

}  // namespace ui
