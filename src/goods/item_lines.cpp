#include "goods/item_lines.h"

#include <algorithm>
#include <limits>

#include "common/csv.h"
#include "common/numbers.h"
#include "common/text.h"
#include "common/typed.h"
#include "goods/barcodes.h"

namespace goods {

namespace {

constexpr double highest_amount = 1e9;
constexpr std::int64_t highest_code = std::numeric_limits<std::int32_t>::max();
constexpr std::string_view prices_header[3][5] = {{"price11", "price12", "price13", "price14", "price15"},
                                                  {"price21", "price22", "price23", "price24", "price25"},
                                                  {"price31", "price32", "price33", "price34", "price35"}};
constexpr std::string_view barcode_header[3] = {"barcode", "pack_barcode", "carton_barcode"};

// Thrown for a line that cannot be used; reading goes on with the next line.
struct BadLine {
    std::string reason;
};

std::string comparable(std::string_view barcode) {
    return common::lower_ascii(common::trim_right(barcode));
}

// Why a line with this barcode is not imported; empty if it is. Of eight digits shops also have numbers of
// their own.
std::string fault_of(const std::string& barcode) {
    const std::string named = "barcode \"" + barcode + "\"";
    switch (barcode_fault(barcode)) {
        case BarcodeFault::empty:
            return "a barcode is empty; write one \"|\" between two barcodes";
        case BarcodeFault::blank:
            return named + " has a blank in it, which no scanner sends; write \"|\" between several barcodes";
        case BarcodeFault::apostrophe:
            return named +
                   " has an apostrophe in it, which the spreadsheet may have put before it to mark a text";
        case BarcodeFault::rounded:
            return named +
                   " was rounded by the spreadsheet; set that column's cells to text and enter it again";
        case BarcodeFault::receipt:
            return named + " would be read as the barcode of a receipt";
        case BarcodeFault::scale_label:
            return named + " would be read as a label of the scale";
        case BarcodeFault::check_digit:
            return barcode.size() == 8 ? std::string() : named + " has a wrong check digit";
        default:
            return {};
    }
}

class Reader {
  public:
    Reader(std::string_view csv, const KnownGoods& known, const std::function<void(std::size_t)>& reached)
        : text_(csv),
          csv_(csv, common::guess_separator(csv)),
          known_(known),
          reached_(reached),
          names_(known.names) {}

    ItemFile read() {
        try {
            if (text_.starts_with("\xFF\xFE") || text_.starts_with("\xFE\xFF")) {
                problem(1, "the file is UTF-16; save it as CSV UTF-8");
                return std::move(file_);
            }
            if (!read_header()) return std::move(file_);
            while (csv_.next(cells_)) {
                for (std::string& cell : cells_)
                    cell = common::without_apostrophe(cell);
                read_line();
                if (reached_) reached_(csv_.position());
            }
            if (file_.lines.empty() && file_.problems.empty())
                problem(1, "there is no item below the first line");
        } catch (const common::CsvError& error) {
            problem(error.line(), error.reason());
        }
        return std::move(file_);
    }

  private:
    void problem(std::size_t line, std::string reason) {
        file_.problems.push_back({line, std::move(reason)});
    }

    // Notes what the owner should look at although the line can be imported.
    void note(const ItemLine& item) {
        const auto add = [this](std::string text) { file_.notes.push_back({csv_.line(), std::move(text)}); };
        for (const std::string& text : cleaned_)
            add(text);
        const auto [known, is_new] = names_.emplace(common::lower_ascii(item.name), item.code);
        if (!is_new) add("name is also that of item " + std::to_string(known->second));
        for (std::size_t unit = 0; unit < 3; ++unit) {
            if (!has_unit(item, unit)) continue;
            const auto& prices = item.prices[unit];
            for (std::size_t level = 1; level < prices.size(); ++level) {
                if (prices[level] >= prices[0]) continue;
                add(std::string(prices_header[unit][level]) + " " + common::shortest_text(prices[level]) +
                    " is below the cost " + common::shortest_text(prices[0]));
                break;  // one is enough to have the line looked at
            }
        }
    }

    static bool has_unit(const ItemLine& item, std::size_t unit) {
        return unit == 0 || (unit == 1 ? item.pack : item.carton).has_value();
    }

    bool read_header() {
        if (!csv_.next(header_)) {
            problem(1, "the file is empty");
            return false;
        }
        for (std::string& name : header_) {
            name = common::lower_ascii(common::trim(name));
            const bool known = std::any_of(item_columns().begin(), item_columns().end(),
                                           [&](const ItemColumn& column) { return column.name == name; });
            if (!known) problem(1, "\"" + name + "\" is no column of an items file (see --columns)");
            if (std::count(header_.begin(), header_.end(), name) > 1) {
                problem(1, "the column \"" + name + "\" is there twice");
                return false;
            }
        }
        for (const std::string_view needed : {"code", "name", "price12"}) {
            if (std::find(header_.begin(), header_.end(), needed) == header_.end()) {
                problem(1, "the column \"" + std::string(needed) + "\" is missing");
            }
        }
        return file_.problems.empty();
    }

    void read_line() {
        // An empty row of a spreadsheet.
        if (std::all_of(cells_.begin(), cells_.end(),
                        [](const std::string& cell) { return common::trim(cell).empty(); })) {
            return;
        }
        cleaned_.clear();
        try {
            if (cells_.size() != header_.size()) {
                throw BadLine{"has " + std::to_string(cells_.size()) + " cells, the first line has " +
                              std::to_string(header_.size())};
            }
            file_.lines.push_back(read_item());
            file_.lines.back().line = csv_.line();
            note(file_.lines.back());
        } catch (const BadLine& bad) {
            problem(csv_.line(), bad.reason);
        }
    }

    // The unchanged cell of a column; empty if the file does not have the column.
    std::string_view whole_cell(std::string_view column) const {
        const auto found = std::find(header_.begin(), header_.end(), column);
        if (found == header_.end()) return {};
        return cells_[static_cast<std::size_t>(found - header_.begin())];
    }
    // Without blanks at its ends.
    std::string_view cell(std::string_view column) const { return common::trim(whole_cell(column)); }

    // The text of a column for a column of the database.
    std::string text(std::string_view column, const database::TextLimits& table, std::string_view target) {
        std::string found(cell(column));
        if (common::utf8(common::code_points(found)) != found) {
            throw BadLine{std::string(column) +
                          " is not UTF-8 text; save the file as CSV UTF-8, or give --code-page-1256 if it "
                          "comes from an Arabic Windows"};
        }
        for (char& c : found) {
            // A receipt has one line for it, and its printer would take the other control characters for
            // commands.
            if (c == '\n' || c == '\r' || c == '\t') c = ' ';
            if (static_cast<unsigned char>(c) < 0x20 || c == 0x7f)
                throw BadLine{std::string(column) + " has a control character in it"};
        }
        if (!table.fits(target, found)) throw BadLine{std::string(column) + " is too long"};
        if (!found.empty() && found != whole_cell(column)) {
            cleaned_.push_back(std::string(column) + " becomes \"" + found +
                               "\", on one line and without the blanks around it");
        }
        return found;
    }

    std::optional<double> number(std::string_view column) const {
        const std::string_view found = cell(column);
        if (found.empty()) return std::nullopt;
        const std::string named = std::string(column) + " \"" + std::string(found) + "\"";
        switch (common::number_fault(found)) {
            case common::NumberFault::comma:
                throw BadLine{named +
                              " has a comma in it; write the decimals after a point, and no separators"};
            case common::NumberFault::minus:
                throw BadLine{named + " is below 0"};
            case common::NumberFault::no_number:
                throw BadLine{named + " is no number"};
            case common::NumberFault::none:
                break;
        }
        const double value = common::numeric_value(found);
        if (value > highest_amount) throw BadLine{named + " is too large"};
        return value;
    }

    std::optional<double> factor(std::string_view column) const {
        const auto value = number(column);
        if (value && *value <= 0) throw BadLine{std::string(column) + " must be more than 0"};
        return value;
    }

    ItemLine read_item() {
        ItemLine item;
        item.code = read_code();
        item.name = text("name", known_.items, "name");
        if (item.name.empty()) throw BadLine{"name is empty"};
        item.maker = text("maker", known_.makers, "name");
        item.group = text("group", known_.groups, "name");
        item.description = text("description", known_.items, "desc");
        item.minimum = number("minimum");
        item.service = read_service();
        item.pack = factor("pack");
        item.carton = factor("carton");
        read_prices(item);
        read_stock(item);
        for (std::size_t unit = 0; unit < 3; ++unit)
            read_barcodes(item, unit);
        // Only a good line takes its code and barcodes.
        codes_.insert(item.code);
        for (const auto& barcodes : item.barcodes) {
            for (const std::string& barcode : barcodes)
                barcodes_.insert(comparable(barcode));
        }
        return item;
    }

    std::int64_t read_code() const {
        const std::string found(cell("code"));
        const auto code = common::read_code(found);
        if (!code) {
            throw BadLine{"code \"" + found + "\" is no whole number from 1 to " +
                          std::to_string(highest_code)};
        }
        if (known_.codes.contains(*code))
            throw BadLine{"the shop has an item " + std::to_string(*code) + " already"};
        if (codes_.contains(*code)) throw BadLine{"code " + std::to_string(*code) + " is in the file twice"};
        if (barcodes_.contains(std::to_string(*code)))
            throw BadLine{"code " + std::to_string(*code) + " is also a barcode of another line"};
        return *code;
    }

    bool read_service() const {
        const std::string_view found = cell("service");
        if (found.empty() || found == "0") return false;
        if (found == "1") return true;
        throw BadLine{"service is neither 0 nor 1"};
    }

    void read_prices(ItemLine& item) const {
        const double factors[3] = {1, item.pack.value_or(1), item.carton.value_or(1)};
        for (std::size_t unit = 0; unit < 3; ++unit) {
            for (std::size_t level = 0; level < 5; ++level) {
                const auto price = number(prices_header[unit][level]);
                if (unit == 0 && level == 1 && !price) throw BadLine{"price12 (the retail price) is empty"};
                // A cost may be 0, but nothing is sold for nothing.
                if (level > 0 && price && *price == 0 && has_unit(item, unit)) {
                    throw BadLine{std::string(prices_header[unit][level]) +
                                  " is 0, so the till would give the item away"};
                }
                const double of_unit = unit == 0 ? 0 : item.prices[0][level] * factors[unit];
                item.prices[unit][level] = price.value_or(of_unit);
            }
            if (unit != 0) continue;
            for (std::size_t level = 2; level < 5; ++level) {
                if (!number(prices_header[0][level])) item.prices[0][level] = item.prices[0][1];
            }
        }
    }

    void read_stock(ItemLine& item) const {
        item.stock = number("stock");
        if (item.stock && item.service) throw BadLine{"a service has no stock"};
        if (const std::string found(cell("store")); !found.empty()) {
            item.store = common::parse_integer(found);
            if (!item.store || !known_.stores.contains(*item.store)) {
                throw BadLine{"the shop has no store \"" + found + "\""};
            }
        }
        if (const std::string found(cell("expiry")); !found.empty()) {
            const auto date = common::read_date(found);
            if (!date) {
                throw BadLine{"expiry \"" + found +
                              "\" is no date (year/month/day, or day/month/year with four digits of the "
                              "year)"};
            }
            item.expiry = *date;
        }
    }

    // The barcodes of a unit are in one cell, separated by "|".
    void read_barcodes(ItemLine& item, std::size_t unit) const {
        const std::string_view all = whole_cell(barcode_header[unit]);
        if (common::trim(all).empty()) return;
        for (std::size_t from = 0; from <= all.size();) {
            const std::size_t end = std::min(all.find('|', from), all.size());
            const std::string barcode =
                common::western_digits(all.substr(from, end - from));  // as scanners send them
            from = end + 1;
            judge(barcode);
            for (const auto& others : item.barcodes) {
                if (std::find(others.begin(), others.end(), barcode) != others.end()) {
                    throw BadLine{"barcode " + barcode + " is there twice"};
                }
            }
            if (!has_unit(item, unit)) throw BadLine{"a barcode for a unit without its number of base units"};
            item.barcodes[unit].push_back(barcode);
        }
    }

    void judge(const std::string& barcode) const {
        if (auto fault = fault_of(barcode); !fault.empty()) throw BadLine{std::move(fault)};
        if (!known_.barcode.fits("bar", barcode)) throw BadLine{"a barcode is too long"};
        if (known_.barcodes.contains(comparable(barcode))) {
            throw BadLine{"barcode " + barcode + " belongs to another item of the shop"};
        }
        if (barcodes_.contains(comparable(barcode)))
            throw BadLine{"barcode " + barcode + " is in the file twice"};
        // A scan looks for a barcode first, so that this one would hide the item with that code.
        const auto as_code = common::all_digits(barcode) ? common::parse_integer(barcode) : std::nullopt;
        if (as_code && (known_.codes.contains(*as_code) || codes_.contains(*as_code))) {
            throw BadLine{"barcode " + barcode + " is also the code of an item"};
        }
    }

    std::string_view text_;
    common::CsvReader csv_;
    const KnownGoods& known_;
    const std::function<void(std::size_t)>& reached_;
    std::vector<std::string> header_;
    std::vector<std::string> cells_;
    std::vector<std::string> cleaned_;  // how the line's texts were changed when they were read
    std::unordered_set<std::int64_t> codes_;
    std::unordered_set<std::string> barcodes_;
    std::unordered_map<std::string, std::int64_t> names_;  // in lower case, of the shop and of the file
    ItemFile file_;
};

}  // namespace

ItemFile read_items(std::string_view csv, const KnownGoods& known,
                    const std::function<void(std::size_t)>& reached) {
    return Reader(csv, known, reached).read();
}

}  // namespace goods
