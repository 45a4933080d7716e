#include "bench/lists.h"

#include <fmt/format.h>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QLineEdit>
#include <QTimer>
#include <QVBoxLayout>
#include <cstdio>
#include <stdexcept>

#include "bench/copies.h"
#include "bench/list_shop.h"
#include "bench/painted_till.h"
#include "ui/goods/goods_page.h"
#include "ui/sales/sales_window.h"
#include "ui/screens.h"
#include "ui/widgets/sheet.h"

namespace bench {

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

// Where a list is: the command of the sales window that leads to it, the buttons and fields on the way, by
// their object names, and the field that searches it. Opening it begins with the last step.
struct ListPlace {
    const char* table;
    const char* command;  // none for the items of the office
    std::vector<const char*> steps = {};
    const char* search = nullptr;
    const char* letter = "9";
    int longest = 10'000;
};

const std::vector<ListPlace>& places() {
    static const std::vector<ListPlace> all = {
        {"search_results", "search", {"search_contains"}, "search_name", "ي"},
        {"receipts", "receipts"},
        {"customers_list", "customers", {}, "customers_search"},
        {"receivers_list", "tips_receivers", {}, "receivers_search"},
        {"walk_ins", "f10", {"walk_in_name"}},
        {"vouchers", "shift_f11", {"voucher_choose"}},
        {"statement_rows", "customers", {"customers_statement"}},
        {"offers", "offers", {}, "offers_customer"},
        {"shift_list", "shifts"},
        {"journal", "f9"},
        {"figure_rows_table", "f9", {"figure_cash_sales"}},
        {"goods_items", nullptr, {}, "goods_search", "ي"},
        {"source_stores", "line_source", {}, nullptr, "", 100},  // no shop has more stores
    };
    return all;
}

const ui::Command& command_of(const char* name) {
    for (const auto* table : {&ui::SalesWindow::commands(), &ui::screen_commands()})
        for (const ui::Command& command : *table)
            if (command.name == name) return command;
    throw std::runtime_error(fmt::format("there is no command {}", name));
}

double since(Clock::time_point start) {
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

// Opens one list, presses a key in it and closes it again.
class Visit {
  public:
    Visit(PaintedTill& till, const ListPlace& place, int length)
        : till_(till), place_(place), length_(length) {}

    // The milliseconds to the painted list, and from the key to its painted answer.
    std::pair<double, double> go() {
        go_on(0);
        command_of(place_.command).run(till_.window());
        if (!failure_.empty()) throw std::runtime_error(fmt::format("{}: {}", place_.table, failure_));
        if (answered_ < 0) throw std::runtime_error(fmt::format("{} did not open", place_.table));
        return {opened_, answered_};
    }

  private:
    // Does the step when the screen that is opening runs.
    void go_on(std::size_t step) {
        begun_ = Clock::now();
        QTimer::singleShot(0, &till_.window(), [this, step] {
            till_.paint();
            if (step == place_.steps.size()) {
                opened_ = since(begun_);
                press_key();
                close();
            } else if (auto* widget = till_.window().findChild<QWidget*>(place_.steps[step])) {
                go_on(step + 1);
                act_on(*widget);
            } else {
                failure_ = fmt::format("there is no {}", place_.steps[step]);
                close();
            }
        });
    }

    static void act_on(QWidget& widget) {
        if (auto* button = qobject_cast<QAbstractButton*>(&widget))
            button->click();
        else
            press(widget, Qt::Key_Return, "\r");
    }

    // A letter in the search, without the pause in which it waits for more of them; else a page down.
    void press_key() {
        auto* table = till_.window().findChild<QAbstractItemView*>(place_.table);
        if (table == nullptr || table->model()->rowCount() < shown()) {
            failure_ = fmt::format("{} rows", table == nullptr ? -1 : table->model()->rowCount());
            return;
        }
        begun_ = Clock::now();
        if (place_.search != nullptr) {
            auto* field = till_.window().findChild<QLineEdit*>(place_.search);
            press(*field, 0, place_.letter);
            press(*field, Qt::Key_Down);
        } else {
            press(*table, Qt::Key_PageDown);
        }
        till_.paint();
        answered_ = since(begun_);
        if (table->model()->rowCount() == 0) failure_ = "the search left no rows";
    }
    int shown() const { return std::string(place_.command) == "search" ? 0 : length_; }

    void close() {
        for (auto* sheet : till_.window().findChildren<ui::Sheet*>())
            if (sheet->isVisible()) sheet->leave();
    }

    PaintedTill& till_;
    const ListPlace& place_;
    int length_;
    Clock::time_point begun_;
    double opened_ = -1;
    double answered_ = -1;
    std::string failure_;
};

// The office's list of items is on a page, which shows the first thousand and reads them at every letter.
class GoodsVisit {
  public:
    explicit GoodsVisit(const ui::Context& context) : context_(context) {
        window_.resize(1366, 768);
        window_.show();
    }

    std::pair<double, double> go(const ListPlace& place) {
        const auto begun = Clock::now();
        QVBoxLayout around(&window_);
        ui::GoodsPage page(context_);
        around.addWidget(&page);
        page.open();
        page.show();
        paint(window_);
        const double opened = since(begun);
        const auto* table = page.findChild<QAbstractItemView*>(place.table);
        if (table->model()->rowCount() == 0) throw std::runtime_error("goods_items: no rows");
        auto* field = page.findChild<QLineEdit*>(place.search);
        const auto typed = Clock::now();
        press(*field, 0, place.letter);
        press(*field, Qt::Key_Down);
        paint(window_);
        const double answered = since(typed);
        if (table->model()->rowCount() == 0) throw std::runtime_error("goods_items: the search left no rows");
        return {opened, answered};
    }

  private:
    ui::Context context_;
    QWidget window_;
};

// A shop of one length and a till on it.
class LongShop {
  public:
    LongShop(const fs::path& folder, int length)
        : file_(make(folder, length)),
          copies_(folder, file_, list_sizes(length)),
          till_(copies_.home(), list_sizes(length)),
          painted_(till_) {
        painted_.type_code();  // for the list of stores that may supply an item
    }
    ~LongShop() { fs::remove(file_); }

    PaintedTill& till() { return painted_; }

  private:
    static fs::path make(const fs::path& folder, int length) {
        fs::create_directories(folder);
        const fs::path file = folder / fmt::format("lists-{}-{}.db", length, ::getpid());
        make_list_shop(file, length);
        return file;
    }
    fs::path file_;
    Copies copies_;
    Till till_;
    PaintedTill painted_;
};

}  // namespace

std::vector<ListTiming> measure_lists(const fs::path& folder, const std::vector<int>& lengths, int rounds,
                                      const std::string& only) {
    std::vector<ListTiming> timings;
    for (const ListPlace& place : places())
        timings.push_back({place.table, {}});
    for (const int length : lengths) {
        LongShop shop(folder, length);
        for (std::size_t at = 0; at < places().size(); ++at) {
            if (timings[at].name.find(only) == std::string::npos || length > places()[at].longest) continue;
            std::fprintf(stderr, "measuring %s, %d rows\n", timings[at].name.c_str(), length);
            ListTimes times{length, {}, {}};
            for (int round = -1; round < rounds; ++round) {
                const ListPlace& place = places()[at];
                const auto [opened, answered] = place.command == nullptr
                                                    ? GoodsVisit(shop.till().context()).go(place)
                                                    : Visit(shop.till(), place, length).go();
                if (round < 0) continue;
                times.opening.push_back(opened);
                times.key.push_back(answered);
            }
            timings[at].lengths.push_back(std::move(times));
        }
    }
    std::erase_if(timings, [](const ListTiming& timing) { return timing.lengths.empty(); });
    return timings;
}

}  // namespace bench
