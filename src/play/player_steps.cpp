// The steps of a play that do something: what the cashier does, and what happens to the shop.
#include <sys/resource.h>

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPointer>
#include <QProcess>
#include <QScreen>
#include <QTableView>
#include <QTimer>
#include <algorithm>
#include <csignal>
#include <cstdio>
#include <fstream>

#include "common/date_time.h"
#include "common/text.h"
#include "office/office_window.h"
#include "play/inspection.h"
#include "play/player.h"
#include "play/receipt_reading.h"
#include "play/screen_reader.h"
#include "play/screens_page.h"
#include "ui/sales/sales_window.h"
#include "ui/widgets/list_table.h"
#include "ui/widgets/message_box.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace play {

namespace {

// There are many screenshots, so they are kept small. Pictures of a part of the screen keep more colours, to
// distinguish pale backgrounds.
constexpr int screenshot_colours = 24;
constexpr int part_colours = 128;
constexpr auto painting_time = std::chrono::milliseconds(120);

// Finds a widget that the cashier can operate now. Returns null and sets `why_not` if there is none.
QWidget* usable(const std::string& name, Progress& why_not) {
    const std::string quoted = "\"" + name + "\"";
    QWidget* widget = find_widget(ui::qt(name));
    if (widget == nullptr) {
        why_not = Progress::wait("no " + quoted + " on the screen");
        return nullptr;
    }
    const ui::Sheet* top = ui::Sheet::top_of(widget->window());
    const QWidget* waiting = find_widget("server_waiting");
    const QWidget* keypad = find_widget("keypad");
    const bool on_top = (waiting != nullptr && waiting->isAncestorOf(widget)) ||
                        (keypad != nullptr && keypad->isAncestorOf(widget));
    if (top != nullptr && !top->isAncestorOf(widget) && !on_top) {
        why_not = Progress::wait(quoted + " lies under " + top->objectName().toStdString());
        return nullptr;
    }
    if (!widget->isEnabled()) {
        why_not = Progress::wait(quoted + " is disabled");
        return nullptr;
    }
    return widget;
}

// Clicks when the step is over, because the click may open a box that runs its own loop.
Progress click_later(QAbstractButton* button) {
    QTimer::singleShot(0, button, [button] {
        // The mouse takes the focus to a button that the keyboard passes over.
        if (button->focusPolicy() == Qt::ClickFocus) button->setFocus(Qt::MouseFocusReason);
        button->click();
    });
    return Progress::ok();
}

Progress choose_entry(QComboBox* list, const QString& value) {
    const int index = list->findText(value);
    if (index < 0) return Progress::wait("the list has no such entry");
    list->setFocus();
    list->setCurrentIndex(index);
    QTimer::singleShot(0, list, [list, index] { emit list->activated(index); });
    return Progress::ok();
}

// The cell with the value; an invalid index if there is none.
QModelIndex cell_with(const QTableView* table, const QString& value) {
    for (int row = 0; row < table->model()->rowCount(); ++row) {
        for (int column = 0; column < table->model()->columnCount(); ++column) {
            const QModelIndex cell = table->model()->index(row, column);
            if (without_marks(cell.data().toString()).trimmed() == value) return cell;
        }
    }
    return {};
}

Progress choose_row(QTableView* table, const QString& value) {
    const QModelIndex cell = cell_with(table, value);
    if (!cell.isValid()) return Progress::wait("no row holds it");
    table->setFocus();
    table->setCurrentIndex(cell);
    return Progress::ok();
}

// Presses and releases the mouse on a cell.
Progress click_at(QWidget* widget, QPoint place) {
    QTimer::singleShot(0, widget, [at = QPointer(widget), place] {
        for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
            if (at == nullptr) return;
            QMouseEvent mouse(type, place, at->mapToGlobal(place), Qt::LeftButton,
                              type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton,
                              Qt::NoModifier);
            QCoreApplication::sendEvent(at, &mouse);
        }
    });
    return Progress::ok();
}

Progress click_cell(QTableView* table, const QString& value) {
    const QModelIndex cell = cell_with(table, value);
    if (!cell.isValid()) return Progress::wait("no cell holds it");
    table->scrollTo(cell);
    return click_at(table->viewport(), table->visualRect(cell).center());
}

void put_focus(QWidget* widget) {
    widget->setFocus(Qt::OtherFocusReason);
    auto* field = qobject_cast<QLineEdit*>(widget);
    if (auto* list = qobject_cast<QComboBox*>(widget)) field = list->lineEdit();
    if (field != nullptr) field->selectAll();
}

}  // namespace

Progress Player::do_shop(const Step& step) {
    if (running_) return Progress::fail("the program is running");
    rows_.reset();
    shop_.set_up(step.rest);
    devices_ = std::make_unique<PlayDevices>(shop_.folder());
    return Progress::ok();
}

Progress Player::do_clock(const Step& step) {
    const auto moment = common::parse_moment(step.rest);
    if (!moment) return Progress::fail("no moment of the form 2026/11/21 10:42:00");
    clock_.put(*moment);
    return Progress::ok();
}

Progress Player::do_screen(const Step& step) {
    const auto size = split_at(step.rest, "x");
    screen_ = QSize(std::atoi(size.before.c_str()), std::atoi(size.after.c_str()));
    if (screen_.width() < 640 || screen_.height() < 480)
        return Progress::fail("no size of the form 1366 x 768");
    ui::apply_style(*qApp, screen_);
    return Progress::ok();
}

Progress Player::do_sql(const Step& step) {
    rows().execute(database::Sql::from_administrator(step.rest));
    rows().make_durable();
    return Progress::ok();
}

// start | start office | start as cash point N
bool Player::read_cash_point(const Step& step) {
    const auto said = words(step.rest);
    if (said.empty()) return true;
    if (said.size() != 4 || !step.rest.starts_with("as cash point ")) return false;
    cash_point_ = said[3];
    return true;
}

Progress Player::do_start(const Step& step) {
    if (running_) return Progress::wait("the program is still running");
    in_training_ = step.rest == "training";
    in_office_ = step.rest == "office";
    if (!in_training_ && !in_office_ && !read_cash_point(step))
        return Progress::fail("it reads: start as cash point 2");
    start_program();
    return Progress::ok();
}

Progress Player::do_remember(const Step& step) {
    if (step.rest != "shop") return Progress::fail("it reads: remember shop");
    remembered_ = fingerprints();
    return Progress::ok();
}

// Read by another program: closing a file of the shop here would release the locks of its engine. Left out
// are the training, the engine's memory and the receipt port.
std::string Player::fingerprints() {
    QProcess reader;
    reader.setWorkingDirectory(QString::fromStdString(shop_.folder().string()));
    reader.start("sh", {"-c", "find . -type f ! -path './training-*' ! -name '*-shm' ! -path './ports/" +
                                  ui::qt(receipt_port()) + "' | sort | xargs -d '\\n' sha256sum"});
    reader.waitForFinished();
    return reader.readAllStandardOutput().toStdString();
}

Progress Player::do_restart(const Step&) {
    if (auto* office = qobject_cast<office::OfficeWindow*>(find_widget("office_window")); office != nullptr) {
        emit office->finished();
        return Progress::wait("the program is ending");
    }
    auto* sales = qobject_cast<ui::SalesWindow*>(find_widget("Form31"));
    if (sales != nullptr) {
        emit sales->finished(false);
        return Progress::wait("the program is ending");
    }
    if (running_) return Progress::wait("the program is ending");
    start_program();
    return Progress::ok();
}

Progress Player::do_user(const Step& step) {
    if (phase_ == 1) {
        // A key sent before the sales window is open would still go to this one.
        const bool gone = find_widget("Form62") == nullptr;
        return gone || open_box() != nullptr ? Progress::ok() : Progress::wait("the sign-in screen");
    }
    const auto said = split_at(step.rest, "password");
    Progress problem;
    QWidget* user = usable("user", problem);
    if (user == nullptr) return problem;
    put_focus(user);
    input_.type(ui::qt(said.before));
    input_.press("Enter");
    input_.type(ui::qt(said.after));
    input_.press("Enter");
    phase_ = 1;
    return Progress::wait("");
}

Progress Player::do_type(const Step& step) {
    const auto said = split_at(step.rest, "into");
    if (!said.found) return Progress::fail("it reads: type TEXT into OBJECT");
    Progress problem;
    QWidget* field = usable(said.after, problem);
    if (field == nullptr) return problem;
    put_focus(field);
    input_.type(ui::qt(said.before));
    return Progress::ok();
}

// count keys of TASK
Progress Player::do_count(const Step& step) {
    const auto said = split_at(step.rest, "of");
    if (!said.found || said.before != "keys") return Progress::fail("it reads: count keys of TASK");
    counting_ = Counted{said.after};
    return Progress::ok();
}

Progress Player::do_press(const Step& step) {
    if (counting_) ++counting_->keys;
    return input_.press(ui::qt(step.rest)) ? Progress::ok() : Progress::fail("there is no such key");
}

Progress Player::do_scan(const Step& step) {
    // scan CODE CODE ... | scan rows SELECT ...
    if (step.rest.starts_with("rows ")) {
        for (const auto& row : rows().query(database::Sql::from_administrator(step.rest.substr(5)))) {
            input_.scan(ui::qt(database::text_of(row.cells().front())));
        }
        return Progress::ok();
    }
    for (const std::string& code : words(step.rest)) {
        if (counting_) ++counting_->scans;
        input_.scan(ui::qt(code));
    }
    return Progress::ok();
}

Progress Player::do_choose(const Step& step) {
    const auto said = split_at(step.rest, "in");
    if (!said.found) return Progress::fail("it reads: choose VALUE in OBJECT");
    Progress problem;
    QWidget* widget = usable(said.after, problem);
    if (widget == nullptr) return problem;
    const QString value = ui::qt(said.before);
    if (auto* list = qobject_cast<QComboBox*>(widget)) return choose_entry(list, value);
    if (auto* table = qobject_cast<QTableView*>(widget)) return choose_row(table, value);
    for (auto* button : widget->findChildren<QAbstractButton*>()) {
        if (text_of(button) == value) return click_later(button);
    }
    return Progress::wait("there is no such choice");
}

Progress Player::do_click(const Step& step) {
    if (QAction* action = find_action(ui::qt(step.rest))) {
        QTimer::singleShot(0, action, [action] { action->trigger(); });
        return Progress::ok();
    }
    Progress problem;
    const auto said = split_at(step.rest, "in");
    QWidget* widget = usable(said.found ? said.after : step.rest, problem);
    if (widget == nullptr) return problem;
    if (auto* table = qobject_cast<QTableView*>(widget); table != nullptr && said.found)
        return click_cell(table, ui::qt(said.before));
    if (qobject_cast<QLineEdit*>(widget) != nullptr) return click_at(widget, widget->rect().center());
    auto* button = qobject_cast<QAbstractButton*>(widget);
    return button != nullptr ? click_later(button) : Progress::fail("it is no button or field");
}

Progress Player::do_answer(const Step& step) {
    const ui::MessageBox* box = open_box();
    if (box == nullptr) return Progress::wait("no box is open");
    auto* button = box->findChild<QAbstractButton*>("message_" + ui::qt(step.rest));
    if (button == nullptr) return Progress::fail("the box has no such answer");
    button->click();
    return Progress::ok();
}

// The monitor itself is there from the beginning of the play (program.cpp); here its cable is pulled and
// plugged.
Progress Player::do_monitor(const Step& step) {
    const auto monitors = QGuiApplication::screens();
    const auto second = std::find_if(monitors.begin(), monitors.end(), [](const QScreen* monitor) {
        return monitor->name() == customer_monitor;
    });
    if (second == monitors.end()) return Progress::fail("no second monitor is connected");
    if (step.rest == "gone") {
        emit qGuiApp->screenRemoved(*second);
    } else if (step.rest == "back") {
        emit qGuiApp->screenAdded(*second);
    }
    return Progress::ok();
}

Progress Player::do_picture(const Step& step) {
    if (std::chrono::steady_clock::now() - since_ < painting_time) return Progress::wait("");
    QWidget* window = front_window();
    if (window == nullptr) return Progress::wait("there is no window");
    std::filesystem::create_directories(settings_.pictures);
    // picture NAME | picture NAME of OBJECT: the whole screen, or the part of it with the object
    const auto said = split_at(step.rest, "of");
    const auto file = settings_.pictures / (said.before + ".png");
    if (said.found) {
        // A window of its own: the customer's screen.
        QWidget* widget = find_widget(ui::qt(said.after));
        if (widget != nullptr && widget->isWindow() && widget != window) {
            if (!widget->grab().save(ui::qt(file.string())))
                return Progress::fail(file.string() + " cannot be written");
            std::printf("picture %s\n", file.c_str());
            return Progress::ok();
        }
        const QRect part = place_in_picture(ui::qt(said.after));
        if (part.isEmpty()) return Progress::wait("no \"" + said.after + "\" on the screen");
        if (!save_png(picture_of_screen(screen_).copy(part), file, part_colours))
            return Progress::fail(file.string() + " cannot be written");
    } else if (!window->grab().save(ui::qt(file.string()))) {
        return Progress::fail(file.string() + " cannot be written");
    }
    std::printf("picture %s\n", file.c_str());
    return Progress::ok();
}

Progress Player::do_look(const Step& step) {
    if (std::chrono::steady_clock::now() - since_ < painting_time) return Progress::wait("");
    auto shot = read_screenshot(step);
    if (!shot) return Progress::fail("it reads: look NAME = CAPTION, or look NAME of WINDOW = CAPTION");
    QWidget* other = shot->window.empty() ? nullptr : find_widget(ui::qt(shot->window));
    if (!shot->window.empty() && other == nullptr)
        return Progress::wait("no \"" + shot->window + "\" on the screen");
    // The clock on the screen may be a second behind that of the play.
    if (auto* sales = qobject_cast<ui::SalesWindow*>(find_widget("Form31"))) sales->tick();
    shot->screen = other != nullptr ? class_of(*other) : front_screen();
    if (shot->screen.empty()) return Progress::wait("there is no window");
    std::filesystem::create_directories(settings_.pictures);
    const auto file = settings_.pictures / picture_name(shot->name, screen_);
    const QImage picture = other != nullptr ? other->grab().toImage() : picture_of_screen(screen_);
    if (!save_png(picture, file, screenshot_colours))
        return Progress::fail(file.string() + " cannot be written");
    if (!settings_.screenshots.empty()) {
        std::ofstream(settings_.screenshots, std::ios::app)
            << shot->name << '\t' << shot->screen << '\t' << shot->caption << '\n';
    }
    if (other != nullptr) return Progress::ok();  // nothing on it can be operated
    for (const std::string& fault : faults_of_screen(input_)) {
        std::fprintf(stderr, "%s:%d: %s: %s\n", script_.file.c_str(), step.line, shot->screen.c_str(),
                     fault.c_str());
        faulty_ = true;
    }
    return Progress::ok();
}

Progress Player::do_kill(const Step& step) {
    const auto said = split_at("- " + step.rest, "when");
    if (!said.found || said.after.empty()) return Progress::fail("it reads: kill when STATEMENT");
    if (connection_ == nullptr) return Progress::wait("the program is not running");
    connection_->kill_when(said.after);
    return Progress::ok();
}

Progress Player::do_fail(const Step& step) {
    // fail SQLSTATE when STATEMENT
    const auto said = split_at(step.rest, "when");
    if (!said.found || said.after.empty()) return Progress::fail("it reads: fail SQLSTATE when STATEMENT");
    if (connection_ == nullptr) return Progress::wait("the program is not running");
    connection_->fail_when(said.after, said.before);
    return Progress::ok();
}

Progress Player::do_disk(const Step& step) {
    if (step.rest != "full" && step.rest != "free") return Progress::fail("it reads: disk full|free");
    // No file can be written to: the system refuses it to this process, as it does on a full disk.
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit{};
    getrlimit(RLIMIT_FSIZE, &limit);
    limit.rlim_cur = step.rest == "full" ? 0 : limit.rlim_max;
    setrlimit(RLIMIT_FSIZE, &limit);
    return Progress::ok();
}

Progress Player::do_port(const Step& step) {
    const auto said = words(step.rest);
    const std::string what = said.size() == 2 ? said[1] : "";
    constexpr int at_once = 1'000'000;
    if (said.size() == 3 && said[1] == "slow") {
        devices_->set_speed(said[0], std::atoi(said[2].c_str()));
    } else if (what == "stuck" || what == "free") {
        devices_->set_speed(said[0], what == "stuck" ? 0 : at_once);
    } else if (what == "empty") {
        devices_->empty(said[0]);
    } else if (what == "missing" || what == "back") {
        devices_->set_missing(said[0], what == "missing");
    } else {
        return Progress::fail("it reads: port NAME missing|back|empty|slow BYTES|stuck|free");
    }
    return Progress::ok();
}

Progress Player::do_file(const Step& step) {
    const auto said = words(step.rest);
    const std::string what = said.size() > 1 ? said[1] : "";
    if (running_) return Progress::fail("the program is running");
    rows_.reset();
    const auto file = shop_.folder() / (said.empty() ? "" : said[0]);
    if (what == "removed") {
        std::filesystem::remove_all(file);
    } else if (what == "shortened" && said.size() == 3) {
        std::filesystem::resize_file(file, static_cast<std::uintmax_t>(std::atoi(said[2].c_str())));
    } else if (what == "spoilt") {
        std::ofstream(file, std::ios::binary | std::ios::trunc)
            << "spoilt \x01\x02\xff, and no such file at all";
    } else if (what == "folder") {
        std::filesystem::remove_all(file);
        std::filesystem::create_directory(file);
    } else if (what == "is" && said.size() == 3) {
        std::filesystem::copy_file(script_.file.parent_path() / said[2], file);
    } else {
        return Progress::fail("it reads: file NAME removed|shortened BYTES|spoilt|folder|is FILE");
    }
    return Progress::ok();
}

Progress Player::do_server(const Step& step) {
    if (!settings_.server || !settings_.server->command)
        return Progress::fail("this play needs a test server");
    rows_.reset();  // its connection would be cut as well
    const std::string answer = settings_.server->command(step.rest);
    return answer == "ok" ? Progress::ok() : Progress::fail("the test server has no such command");
}

Progress Player::do_say(const Step& step) {
    if (step.rest == "keys") {
        for (const Counted& task : counted_)
            std::printf("%-12s %s\n", task.text().c_str(), task.task.c_str());
        return Progress::ok();
    }
    const bool receipt = step.rest == "receipt";
    const std::string text = receipt ? readable_receipt(devices_->written(receipt_port())) : step.rest;
    std::printf("%s\n", text.c_str());
    std::fflush(stdout);
    return Progress::ok();
}

}  // namespace play
