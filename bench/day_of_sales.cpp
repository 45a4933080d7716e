#include "bench/day_of_sales.h"

#include <unistd.h>

#include <QApplication>
#include <QComboBox>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QLineEdit>
#include <QProcess>
#include <QWindow>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <fstream>
#include <stdexcept>

#include "bench/till.h"
#include "startup/shop_files.h"
#include "startup/start_up.h"
#include "ui/sales/sales_window.h"
#include "ui/till.h"
#include "ui/widgets/key_queue.h"
#include "ui/widgets/server_link.h"
#include "ui/widgets/sheet.h"

namespace bench {

namespace {

constexpr int lines_per_sale = 5;

double resident_megabytes() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("VmRSS:")) return std::stod(line.substr(6)) / 1024;
    throw std::runtime_error("the system does not tell the memory of a process");
}

// Sends keys to the till's windows one by one, and continues when the till has handled them.
class Cashier final : public QObject {
  public:
    Cashier(const Sizes& sizes, int sales, int step) : sizes_(sizes), sales_(sales), step_(step) {
        waited_.start();
        timer_ = startTimer(0);
    }

  private:
    struct Key {
        int key;
        QString text;
        quint64 after;  // milliseconds in the timestamps of the keys
    };

    // Each key has its own timer, started before the key is sent, because the key may open a sheet that runs
    // its own loop. Posted events would not do: Qt keeps all of them as long as each one posts another.
    void timerEvent(QTimerEvent*) override {
        killTimer(timer_);
        timer_ = startTimer(0);
        if (!keys_.empty()) {
            const Key key = keys_.front();
            keys_.pop_front();
            send(key);
        } else {
            look();
        }
        if (waited_.elapsed() > 20'000) give_up("the till did not go on");
    }

    void look() {
        const QWindow* window = QGuiApplication::focusWindow();
        if (window == nullptr) return;
        if (sales_screen() == nullptr) {
            sign_in();
        } else if (sales_screen()->isVisible() && ui::Sheet::top_of(sales_screen()) == nullptr) {
            sell();
        }
    }

    void sign_in() {
        if (signed_in_) return;
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            auto* users = widget->findChild<QComboBox*>("user");
            if (widget->objectName() != "Form62" || !widget->isVisible() || users == nullptr) continue;
            tell(-1);
            users->setCurrentIndex(0);
            auto* password = widget->findChild<QLineEdit*>("password");
            password->setFocus();
            password->setText("1");
            type(Qt::Key_Return, "\r", 1000);
            signed_in_ = true;
        }
    }

    void sell() {
        const auto& invoice = sales_screen()->desk().invoice();
        if (done_ >= 0 && invoice.number == number_) return;  // not saved yet
        waited_.restart();
        number_ = invoice.number;
        if (++done_ % step_ == 0) tell(done_);
        if (done_ == sales_) {
            std::fflush(stdout);
            _exit(EXIT_SUCCESS);
        }
        for (int line = 0; line < lines_per_sale; ++line) {
            for (const char digit : rung_up_code(sizes_, next_++))
                type(QChar(digit).unicode(), QString(QChar(digit)), 5);
            type(Qt::Key_Return, "\r", 5);
        }
        type(Qt::Key_F1, {}, 1200);
        type(Qt::Key_Return, "\r", 1200);
    }

    void type(int key, const QString& text, quint64 after) { keys_.push_back({key, text, after}); }

    void send(const Key& key) {
        time_ += key.after;
        for (const auto kind : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QWindow* window = QGuiApplication::focusWindow();
            if (window == nullptr) return;
            QKeyEvent event(kind, key.key, Qt::NoModifier, key.text);
            event.setTimestamp(time_);
            QCoreApplication::sendEvent(window, &event);
        }
    }

    static ui::SalesWindow* sales_screen() {
        for (QWidget* widget : QApplication::topLevelWidgets())
            if (auto* screen = qobject_cast<ui::SalesWindow*>(widget)) return screen;
        return nullptr;
    }

    static void tell(int sales) { std::printf("%d %.2f\n", sales, resident_megabytes()); }

    [[noreturn]] static void give_up(const char* why) {
        std::fprintf(stderr, "%s\n", why);
        _exit(EXIT_FAILURE);
    }

    Sizes sizes_;
    int sales_;
    int step_;
    int done_ = -1;
    int timer_ = 0;
    bool signed_in_ = false;
    std::int64_t number_ = 0;
    std::int64_t next_ = 0;
    quint64 time_ = 1'000'000;
    std::deque<Key> keys_;
    QElapsedTimer waited_;
};

}  // namespace

int sell_all_day(const std::filesystem::path& home, const Sizes& sizes, int sales, int step) {
    NobodyThere nobody;
    startup::ActivityLog log(home, nobody);
    const common::Services services{nobody, nobody, nobody, log};
    startup::Environment environment;
    environment.command_line = "1";
    environment.program_folder = home;
    environment.working_folder = home;
    startup::StartUp start_up(environment, services);
    ui::KeyQueue keys;
    ui::ServerLink server(keys, nobody);
    const Cashier cashier(sizes, sales, step);
    const auto show = [](QWidget& window) {
        window.resize(1366, 768);
        window.show();
    };
    start_up.run([&](database::Connection& connection, signin::Session& session) {
        ui::run_till(connection, session, {services, keys, server, [] { return false; }, [] {}, show});
    });
    std::fprintf(stderr, "the till ended before the day did\n");
    return EXIT_FAILURE;
}

std::vector<std::pair<int, double>> memory_of_a_day(const std::filesystem::path& home, const Sizes& sizes,
                                                    int sales, int step) {
    QProcess child;
    child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    child.start("/proc/self/exe", {"--sell-all-day", QString::fromStdString(home.string()), "--size",
                                   QString::number(sizes.invoices), "--sales", QString::number(sales),
                                   "--step", QString::number(step)});
    if (!child.waitForFinished(-1) || child.exitStatus() != QProcess::NormalExit || child.exitCode() != 0)
        throw std::runtime_error("the till that sells all day failed");
    std::vector<std::pair<int, double>> curve;
    for (const QByteArray& line : child.readAllStandardOutput().split('\n')) {
        const auto words = line.split(' ');
        if (words.size() == 2) curve.emplace_back(words[0].toInt(), words[1].toDouble());
    }
    if (curve.size() < 3 || curve.back().first != sales)
        throw std::runtime_error("the till that sells all day told too little");
    return curve;
}

}  // namespace bench
