// The step "expect": what must be seen on the screen, in the rows, on paper.
#include <QAbstractButton>
#include <QApplication>
#include <QImage>
#include <QTableView>
#include <QWidget>
#include <fstream>
#include <iterator>

#include "common/numbers.h"
#include "common/text.h"
#include "play/player.h"
#include "play/receipt_reading.h"
#include "play/screen_reader.h"
#include "startup/shop_files.h"
#include "ui/widgets/message_box.h"
#include "ui/widgets/text.h"

namespace play {

namespace {

Progress compared(const std::string& seen, const std::string& wanted) {
    return seen == wanted ? Progress::ok() : Progress::wait(seen);
}

std::string shown(const database::Value& value) {
    return database::is_null(value) ? "null" : std::string(common::trim(database::text_of(value)));
}

std::string all_of(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace

Progress Player::do_expect(const Step& step) {
    const auto blank = step.rest.find(' ');
    const std::string what = step.rest.substr(0, blank);
    const std::string rest =
        blank == std::string::npos ? "" : std::string(common::trim(step.rest.substr(blank + 1)));
    if (what == "text") return expect_text(rest);
    if (what == "message") return expect_box(rest, false);
    if (what == "question") return expect_box(rest, true);
    if (what == "cell") return expect_cell(rest);
    if (what == "count") return expect_count(rest);
    if (what == "keys") return expect_keys(rest);
    if (what == "seen") return expect_seen(rest);
    if (what == "colour") return expect_colour(rest);
    if (what == "rows") return expect_rows(rest);
    if (what == "receipt") return expect_receipt(rest);
    if (what == "port") return expect_port(rest);
    if (what == "server") return expect_server(rest);
    if (what == "shop" && rest == "unchanged") {
        const std::string now = fingerprints();
        return now == remembered_ ? Progress::ok()
                                  : Progress::fail("before:\n" + remembered_ + "now:\n" + now);
    }
    if (what == "end") return running_ ? Progress::wait("the program is running") : Progress::ok();
    if (what == "log") return expect_file("Logs/hm_log.qzv", split_at("- " + rest, "contains").after);
    if (what == "file") {
        const auto said = split_at(rest, "contains");
        return expect_file(said.before, said.after);
    }
    if (what == "no" && rest == "box") {
        const ui::MessageBox* box = open_box();
        return box == nullptr ? Progress::ok() : Progress::wait(box->text().toStdString());
    }
    return expect_state(what, rest);
}

Progress Player::expect_text(const std::string& rest) {
    const auto said = split_at(rest, "=");
    const QWidget* widget = find_widget(ui::qt(said.before));
    if (widget == nullptr) return Progress::wait("it is not on the screen");
    return compared(text_of(widget).toStdString(), said.after);
}

Progress Player::expect_box(const std::string& text, bool question) {
    const ui::MessageBox* box = open_box();
    if (box == nullptr) return Progress::wait("no box is open");
    if (box->is_question() != question) return Progress::wait(question ? "a message" : "a question");
    // A box of several lines is compared as one.
    const std::string seen = box->text().trimmed().replace('\n', ' ').toStdString();
    // "..." at the end stands for any text.
    if (text.ends_with("...") && seen.starts_with(text.substr(0, text.size() - 3))) return Progress::ok();
    return compared(seen, text);
}

Progress Player::expect_cell(const std::string& rest) {
    // ROW HEADING of TABLE = TEXT
    const auto equal = split_at(rest, "=");
    const auto of = split_at(equal.before, "of");
    const auto blank = of.before.find(' ');
    if (!equal.found || !of.found || blank == std::string::npos) {
        return Progress::fail("it reads: expect cell ROW HEADING of TABLE = TEXT");
    }
    const auto* table = qobject_cast<QTableView*>(find_widget(ui::qt(of.after)));
    if (table == nullptr) return Progress::wait("there is no such table on the screen");
    const Cell cell =
        cell_of(table, std::atoi(of.before.c_str()), ui::qt(common::trim(of.before.substr(blank))));
    if (!cell.found) return Progress::wait("there is no such cell");
    return compared(cell.text.toStdString(), equal.after);
}

Progress Player::expect_count(const std::string& rest) {
    const auto said = split_at(rest, "=");
    const auto* table = qobject_cast<QTableView*>(find_widget(ui::qt(said.before)));
    if (table == nullptr) return Progress::wait("there is no such table on the screen");
    return compared(std::to_string(table->model()->rowCount()), said.after);
}

std::string Player::Counted::text() const {
    std::string text = scans == 0 ? "" : scans == 1 ? "scan" : std::to_string(scans) + " scans";
    if (keys > 0 || text.empty()) text += (text.empty() ? "" : " + ") + std::to_string(keys);
    return text;
}

// Ends the counting.
Progress Player::expect_keys(const std::string& rest) {
    if (!counting_) return Progress::fail("no keys are being counted");
    const Progress progress = compared(counting_->text(), split_at(rest, "=").after);
    if (progress.state == Progress::done) counted_.push_back(*std::exchange(counting_, std::nullopt));
    return progress;
}

Progress Player::expect_seen(const std::string& rest) {
    const auto said = split_at(rest, "=");
    const auto* table = qobject_cast<QTableView*>(find_widget(ui::qt(said.before)));
    if (table == nullptr) return Progress::wait("there is no such table on the screen");
    int seen = 0;
    for (int row = 0; row < table->model()->rowCount(); ++row) {
        const int top = table->rowViewportPosition(row);
        if (top >= 0 && top + table->rowHeight(row) <= table->viewport()->height()) ++seen;
    }
    return compared(std::to_string(seen), said.after);
}

Progress Player::expect_state(const std::string& what, const std::string& object) {
    const QWidget* widget = find_widget(ui::qt(object));
    if (what == "hidden") return widget == nullptr ? Progress::ok() : Progress::wait("it is on the screen");
    if (widget == nullptr) return Progress::wait("it is not on the screen");
    if (what == "shown") return Progress::ok();
    if (what == "enabled") return widget->isEnabled() ? Progress::ok() : Progress::wait("it is disabled");
    if (what == "disabled") return widget->isEnabled() ? Progress::wait("it is enabled") : Progress::ok();
    if (what == "checked" || what == "unchecked") {
        const auto* button = qobject_cast<const QAbstractButton*>(widget);
        if (button == nullptr) return Progress::fail("it is no option");
        return button->isChecked() == (what == "checked") ? Progress::ok()
                                                          : Progress::wait("it is the other way");
    }
    if (what == "focus") {
        const QWidget* focus = QApplication::focusWidget();
        if (focus == widget || (focus != nullptr && widget->isAncestorOf(focus))) return Progress::ok();
        return Progress::wait(focus == nullptr ? "the focus is nowhere" : focus->objectName().toStdString());
    }
    return Progress::fail("nothing of that kind can be expected");
}

Progress Player::expect_colour(const std::string& rest) {
    const auto said = split_at(rest, "=");
    QWidget* widget = find_widget(ui::qt(said.before));
    if (widget == nullptr) return Progress::wait("it is not on the screen");
    // The middle of the lower edge, where there is no text.
    const QImage image = widget->grab().toImage();
    const QColor seen = image.pixelColor(image.width() / 2, image.height() - 4);
    return compared(seen.name().toStdString(), common::lower_ascii(said.after));
}

Progress Player::expect_rows(const std::string& rest) {
    const auto said = split_at(rest, "gives");
    if (!said.found) return Progress::fail("it reads: expect rows SELECT ... gives A | B ; C | D");
    std::string seen;
    const auto result = rows().query(database::Sql::from_administrator(said.before));
    for (const auto& row : result) {
        if (!seen.empty()) seen += " ; ";
        bool first = true;
        for (const auto& cell : row.cells()) {
            if (!first) seen += " | ";
            seen += shown(cell);
            first = false;
        }
    }
    return compared(seen, said.after == "nothing" ? "" : said.after);
}

std::string Player::receipt_port() {
    return database::text_of(rows().scalar("select [Print] from basic"));
}

Progress Player::expect_receipt(const std::string& rest) {
    const auto said = split_at("- " + rest, "contains");
    if (!said.found) return Progress::fail("it reads: expect receipt contains TEXT");
    const std::string bytes = devices_->written(receipt_port());
    if (receipt_holds(bytes, said.after)) return Progress::ok();
    return Progress::wait(bytes.empty() ? "no receipt" : "\n" + readable_receipt(bytes));
}

Progress Player::expect_port(const std::string& rest) {
    // NAME bytes 07 0A ... | NAME is FILE | NAME empty
    const auto said = words(rest);
    if (said.size() < 2) return Progress::fail("it reads: expect port NAME bytes 07 0A | is FILE | empty");
    const std::string bytes = devices_->written(said[0]);
    if (said[1] == "is" && said.size() == 3) {
        const std::string wanted = all_of(script_.file.parent_path() / said[2]);
        if (bytes == wanted && !wanted.empty()) return Progress::ok();
        std::ofstream(settings_.pictures / said[2], std::ios::binary) << bytes;
        return Progress::wait("\n" + readable_receipt(bytes) + "\n    kept as " +
                              (settings_.pictures / said[2]).string());
    }
    std::string seen;
    for (const char byte : bytes) {
        char hex[4];
        std::snprintf(hex, sizeof hex, "%02X", static_cast<unsigned>(static_cast<unsigned char>(byte)));
        seen += (seen.empty() ? "" : " ") + std::string(hex);
    }
    std::string wanted;
    if (said[1] == "bytes") {
        for (std::size_t at = 2; at < said.size(); ++at)
            wanted += (at == 2 ? "" : " ") + said[at];
    }
    return compared(seen, wanted);
}

Progress Player::expect_server(const std::string& rest) {
    if (!settings_.server || !settings_.server->command)
        return Progress::fail("this play needs a test server");
    const auto said = split_at(rest, "=");
    std::string seen = settings_.server->command(said.before);
    if (said.before == "requests" && seen != said.after) seen += settings_.server->command("statements");
    return compared(seen, said.after);
}

Progress Player::expect_file(const std::string& name, const std::string& text) {
    const std::string bytes = all_of(shop_.folder() / name);
    return bytes.find(text) != std::string::npos ? Progress::ok()
                                                 : Progress::wait(bytes.empty() ? "nothing" : bytes);
}

}  // namespace play
