// The first start of the office: a window that asks step by step for what a shop needs, and makes it.
#pragma once

#include <functional>
#include <vector>

#include "common/services.h"
#include "printing/ports_offered.h"
#include "shop/first_start.h"
#include "ui/signin/front_window.h"
#include "ui/widgets/form.h"

class QGridLayout;
class QLabel;
class QPushButton;
class QStackedWidget;

namespace ui {

class ListTable;
class Segments;

class FirstStartWindow : public FrontWindow {
    Q_OBJECT
  public:
    FirstStartWindow(const std::filesystem::path& folder, const common::Services& services,
                     std::function<void(QWidget&)> show_window);
    // Returns true once there is a shop, false if the user left before.
    bool run();

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

  private:
    QWidget* build_form(shop::FirstStep step);
    void build_printers(QWidget* page);
    void build_items(QWidget* page);
    QWidget* build_summary();
    QWidget* build_end();
    void show_step(std::size_t at);
    void show_summary();
    void next();
    void back();
    void give_up();
    void make();
    // Takes over the fields of the step; returns false after showing why not.
    bool read_step();
    // At the step of the items, tries the file and shows what it adds and what is refused.
    bool read_items();
    void choose_items();
    printing::PrinterChoice marked_printer() const;
    void test_printer();
    bool is_made() const { return at_ >= shop::first_steps.size(); }

    common::Services services_;
    std::function<void(QWidget&)> show_window_;
    shop::FirstStart logic_;
    std::vector<Form<shop::FirstStartFields>> forms_;
    std::size_t at_ = 0;
    std::vector<printing::PortOffer> offers_;
    QLabel* where_;
    QLabel* title_;
    QLabel* explanation_;
    QStackedWidget* steps_;
    ListTable* ports_;
    Segments* paper_;
    ListTable* items_;
    QLabel* items_said_;
    QGridLayout* summary_;
    QPushButton* next_;
    QPushButton* back_;
};

}  // namespace ui
