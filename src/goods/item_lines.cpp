#include "goods/item_lines.h"

#include <algorithm>
#include <limits>

#include "common/csv.h"
#include "common/numbers.h"
#include "common/search.h"
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

// Follows a Latin text that ends with a quotation mark, so that the mark stays beside it among Arabic words.
constexpr const char* left_to_right = "\u200E";

// Thrown for a line that cannot be used; reading goes on with the next line.
struct BadLine {
    Words reason;
};

// A barcode that cannot be imported; nothing if it can. Shops also use eight-digit numbers of their own.
std::optional<Words> fault_of(const std::string& barcode) {
    const BarcodeFault fault = barcode_fault(barcode);
    const std::string named = "barcode \"" + barcode + "\"";
    const auto words = [&](std::string english) {
        return Words{std::move(english), barcode + " : " + std::string(words_for(fault))};
    };
    switch (fault) {
        case BarcodeFault::none:
            return std::nullopt;
        case BarcodeFault::empty:
            return Words{"a barcode is empty; write one \"|\" between two barcodes",
                         "باركود خال، اكتب | واحدة بين كل اثنين"};
        case BarcodeFault::blank:
            return words(named +
                         " has a blank in it, which no scanner sends; write \"|\" between several "
                         "barcodes");
        case BarcodeFault::apostrophe:
            return words(named +
                         " has an apostrophe in it, which the spreadsheet may have put before it to "
                         "mark a text");
        case BarcodeFault::rounded:
            return words(named +
                         " was rounded by the spreadsheet; set that column's cells to text and enter "
                         "it again");
        case BarcodeFault::receipt:
            return words(named + " would be read as the barcode of a receipt");
        case BarcodeFault::scale_label:
            return words(named + " would be read as a label of the scale");
        case BarcodeFault::check_digit:
            break;
    }
    if (barcode.size() == 8) return std::nullopt;
    return Words{named + " has a wrong check digit", barcode + " : رقم المراجعة في آخر الباركود غير صحيح"};
}

// A heading may be سعر البيع or سعر بيع, الكمية or كميه.
std::string comparable_heading(std::string_view heading) {
    constexpr std::string_view article = "ال";
    std::string words;
    for (const std::string& word : common::search_words(heading))
        words += " " + (word.starts_with(article) ? word.substr(article.size()) : word);
    return words;
}

const ItemColumn* column_of(std::string_view heading) {
    const std::string wanted = comparable_heading(heading);
    const auto is_called = [&](std::string_view name) { return comparable_heading(name) == wanted; };
    for (const ItemColumn& column : item_columns())
        if (is_called(column.name) || std::ranges::any_of(column.arabic, is_called)) return &column;
    return nullptr;
}

// A cell as it is named to people.
constexpr std::size_t most_of_a_cell = 100;
std::string as_named(std::string_view cell) {
    return common::left(common::printable(cell), most_of_a_cell);
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
                problem(1,
                        {"the file is UTF-16; save it as CSV UTF-8", "الملف بترميز UTF-16، احفظه CSV UTF-8"});
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
                problem(1, {"there is no item below the first line", "لا توجد أصناف تحت السطر الأول"});
        } catch (const common::CsvError& error) {
            problem(error.line(), {error.reason(), "علامات الاقتباس في السطر غير مكتملة"});
        }
        return std::move(file_);
    }

  private:
    void problem(std::size_t line, Words reason) { file_.problems.push_back({line, std::move(reason)}); }
    LineProblem of_this_line(Words reason) const {
        return {csv_.line(), std::move(reason), as_named(cell("code")), as_named(cell("name"))};
    }

    // Notes what the owner should look at although the line can be imported.
    void note(const ItemLine& item) {
        const auto add = [this](Words text) { file_.notes.push_back(of_this_line(std::move(text))); };
        for (const Words& text : cleaned_)
            add(text);
        if (item.is_update && item.stock)
            add({"stock is not changed by an import, but by goods in and counts",
                 "رصيد الصنف المسجل لا يتغير بالاستيراد، بل بالبضاعة الواردة والجرد"});
        if (!item.name.empty()) {
            const auto [known, is_new] = names_.emplace(common::lower_ascii(item.name), item.code);
            if (!is_new && known->second != item.code)
                add({"name is also that of item " + std::to_string(known->second),
                     "الاسم هو أيضا اسم الصنف " + std::to_string(known->second)});
        }
        for (std::size_t unit = 0; unit < 3; ++unit) {
            if (!has_unit(item, unit)) continue;
            const auto& prices = item.prices[unit];
            for (std::size_t level = 1; level < prices.size(); ++level) {
                if (prices[level] >= prices[0] || prices[level] == 0) continue;
                const std::string_view column = prices_header[unit][level];
                const std::string price = " " + common::shortest_text(prices[level]);
                const std::string cost = common::shortest_text(prices[0]);
                add({std::string(column) + price + " is below the cost " + cost,
                     heading(column) + price + " أقل من التكلفة " + cost});
                break;  // one is enough to have the line looked at
            }
        }
    }

    static bool has_unit(const ItemLine& item, std::size_t unit) {
        return unit == 0 || (unit == 1 ? item.pack : item.carton).has_value();
    }

    bool read_header() {
        if (!csv_.next(header_)) {
            problem(1, {"the file is empty", "الملف خال"});
            return false;
        }
        headings_ = header_;
        for (std::string& name : header_) {
            const ItemColumn* known = column_of(name);
            if (known != nullptr) {
                name = known->name;
            } else {
                name = common::trim(name);
                file_.has_unknown_headings = true;
                problem(1, {"\"" + name + "\" is no column of an items file (see --columns)",
                            "\"" + name + "\" ليس من أعمدة ملف الأصناف"});
            }
            if (std::count(header_.begin(), header_.end(), name) > 1) {
                problem(1, {"the column \"" + name + "\" is there twice", "العمود " + name + " مكرر"});
                return false;
            }
        }
        if (file_.problems.size() == header_.size()) {
            file_.problems.clear();
            problem(1, {"the first line must hold the names of the columns, such as code,name,price12 (see "
                        "--columns)",
                        "السطر الأول لا بد أن يكون أسماء الأعمدة، مثل كود والاسم وقطاعي، والأصناف تحته"});
            return false;
        }
        for (const std::string_view needed : {"code", "name", "price12"}) {
            if (known_.may_update && needed != "code") continue;
            if (std::find(header_.begin(), header_.end(), needed) == header_.end())
                problem(1, {"the column \"" + std::string(needed) + "\" is missing",
                            "العمود " + std::string(column_of(needed)->arabic.front()) + " غير موجود"});
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
                const std::string cells = std::to_string(cells_.size());
                const std::string columns = std::to_string(header_.size());
                throw BadLine{{"has " + cells + " cells, the first line has " + columns,
                               "السطر به " + cells + " خلايا، والسطر الأول به " + columns}};
            }
            file_.lines.push_back(read_item());
            file_.lines.back().line = csv_.line();
            note(file_.lines.back());
        } catch (const BadLine& bad) {
            file_.problems.push_back(of_this_line(bad.reason));
        }
    }

    // The unchanged cell of a column; empty if the file does not have the column, or the line ends before it.
    std::string_view whole_cell(std::string_view column) const {
        const auto at = static_cast<std::size_t>(std::ranges::find(header_, column) - header_.begin());
        return at < header_.size() && at < cells_.size() ? std::string_view(cells_[at]) : std::string_view();
    }
    // What the file calls a column, for its keeper.
    std::string heading(std::string_view column) const {
        const auto at = static_cast<std::size_t>(std::ranges::find(header_, column) - header_.begin());
        return std::string(at < headings_.size() ? common::trim(headings_[at]) : column);
    }
    // Without blanks at its ends.
    std::string_view cell(std::string_view column) const { return common::trim(whole_cell(column)); }

    // The text of a column for a column of the database.
    std::string text(std::string_view column, const database::TextLimits& table, std::string_view target) {
        std::string found(cell(column));
        if (common::utf8(common::code_points(found)) != found) {
            throw BadLine{
                {std::string(column) +
                     " is not UTF-8 text; save the file as CSV UTF-8, or give --code-page-1256 if it "
                     "comes from an Arabic Windows",
                 heading(column) + " ليس بترميز UTF-8، احفظ الملف CSV UTF-8"}};
        }
        for (char& c : found) {
            // A receipt has one line for it, and its printer would take the other control characters for
            // commands.
            if (c == '\n' || c == '\r' || c == '\t') c = ' ';
            if (static_cast<unsigned char>(c) < 0x20 || c == 0x7f)
                throw BadLine{{std::string(column) + " has a control character in it",
                               heading(column) + " به رموز لا تطبع"}};
        }
        if (!table.fits(target, found))
            throw BadLine{{std::string(column) + " is too long", heading(column) + " أطول من المسموح به"}};
        if (!found.empty() && found != whole_cell(column)) {
            cleaned_.push_back({std::string(column) + " becomes \"" + found +
                                    "\", on one line and without the blanks around it",
                                heading(column) + " يصبح \"" + found + "\" في سطر واحد وبلا مسافات حوله"});
        }
        return found;
    }

    std::optional<double> number(std::string_view column) const {
        const std::string_view found = cell(column);
        if (found.empty()) return std::nullopt;
        const std::string named = std::string(column) + " \"" + std::string(found) + "\"";
        const std::string in_arabic = heading(column) + " \"" + std::string(found) + "\"" + left_to_right;
        switch (common::number_fault(found)) {
            case common::NumberFault::comma:
                throw BadLine{
                    {named + " has a comma in it; write the decimals after a point, and no separators",
                     in_arabic + " به فاصلة، اكتب الكسر بعد نقطة وبدون فواصل"}};
            case common::NumberFault::minus:
                throw BadLine{{named + " is below 0", in_arabic + " أقل من صفر"}};
            case common::NumberFault::no_number:
                throw BadLine{{named + " is no number", in_arabic + " ليس رقما"}};
            case common::NumberFault::none:
                break;
        }
        const double value = common::numeric_value(found);
        if (value > highest_amount)
            throw BadLine{{named + " is too large", in_arabic + " أكبر من المسموح به"}};
        return value;
    }

    std::optional<double> factor(std::string_view column) const {
        const auto value = number(column);
        if (value && *value <= 0)
            throw BadLine{
                {std::string(column) + " must be more than 0", heading(column) + " يجب أن يكون أكبر من صفر"}};
        return value;
    }

    ItemLine read_item() {
        ItemLine item;
        item.code = read_code();
        item.is_update = known_.codes.contains(item.code);
        for (std::size_t column = 0; column < item_columns().size(); ++column)
            if (!cell(item_columns()[column].name).empty()) item.given |= std::uint64_t{1} << column;
        item.name = text("name", known_.items, "name");
        if (item.name.empty() && !item.is_update) throw BadLine{{"name is empty", "الاسم خال"}};
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
                barcodes_.insert(comparable_barcode(barcode));
        }
        return item;
    }

    std::int64_t read_code() const {
        const std::string found(cell("code"));
        const auto code = common::read_code(found);
        if (!code) {
            throw BadLine{
                {"code \"" + found + "\" is no whole number from 1 to " + std::to_string(highest_code),
                 "الكود \"" + found + "\" ليس رقما صحيحا من 1 إلى " + std::to_string(highest_code)}};
        }
        const std::string text = std::to_string(*code);
        if (known_.codes.contains(*code) && !known_.may_update)
            throw BadLine{
                {"the shop has an item " + text + " already", "الكود " + text + " مسجل لصنف في المحل"}};
        if (codes_.contains(*code))
            throw BadLine{{"code " + text + " is in the file twice", "الكود " + text + " مكرر في الملف"}};
        if (barcodes_.contains(text))
            throw BadLine{{"code " + text + " is also a barcode of another line",
                           "الكود " + text + " هو أيضا باركود في سطر آخر"}};
        return *code;
    }

    bool read_service() const {
        const std::string_view found = cell("service");
        if (found.empty() || found == "0") return false;
        if (found == "1") return true;
        throw BadLine{{"service is neither 0 nor 1", heading("service") + " يقبل 0 أو 1 فقط"}};
    }

    void read_prices(ItemLine& item) const {
        const double factors[3] = {1, item.pack.value_or(1), item.carton.value_or(1)};
        for (std::size_t unit = 0; unit < 3; ++unit) {
            for (std::size_t level = 0; level < 5; ++level) {
                const auto price = number(prices_header[unit][level]);
                if (unit == 0 && level == 1 && !price && !item.is_update)
                    throw BadLine{{"price12 (the retail price) is empty", heading("price12") + " خال"}};
                // A cost may be 0, but nothing is sold for nothing.
                const bool is_sold = item.is_update || has_unit(item, unit);
                if (level > 0 && price && *price == 0 && is_sold) {
                    throw BadLine{
                        {std::string(prices_header[unit][level]) +
                             " is 0, so the till would give the item away",
                         heading(prices_header[unit][level]) + " صفر، والكاشير سيبيع الصنف بلا مقابل"}};
                }
                if (item.is_update) {
                    item.prices[unit][level] = price.value_or(0);
                    continue;
                }
                const double of_unit = unit == 0 ? 0 : item.prices[0][level] * factors[unit];
                item.prices[unit][level] = price.value_or(of_unit);
            }
            if (unit != 0 || item.is_update) continue;
            for (std::size_t level = 2; level < 5; ++level) {
                if (!number(prices_header[0][level])) item.prices[0][level] = item.prices[0][1];
            }
        }
    }

    void read_stock(ItemLine& item) const {
        item.stock = number("stock");
        if (item.stock && item.service)
            throw BadLine{{"a service has no stock", "ما يباع بدون كميات ليس له رصيد"}};
        if (const std::string found(cell("store")); !found.empty()) {
            item.store = common::parse_integer(found);
            if (!item.store || !known_.stores.contains(*item.store)) {
                throw BadLine{
                    {"the shop has no store \"" + found + "\"", "لا يوجد مخزن رقمه \"" + found + "\""}};
            }
        }
        if (const std::string found(cell("expiry")); !found.empty()) {
            const auto date = common::read_date(found);
            if (!date) {
                throw BadLine{{"expiry \"" + found +
                                   "\" is no date (year/month/day, or day/month/year with four digits of the "
                                   "year)",
                               heading("expiry") + " \"" + found + "\"" + left_to_right +
                                   " ليس تاريخا (سنة/شهر/يوم، أو يوم/شهر/سنة بأربعة أرقام)"}};
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
            judge(barcode, item.code);
            for (const auto& others : item.barcodes) {
                if (std::find(others.begin(), others.end(), barcode) != others.end()) {
                    throw BadLine{
                        {"barcode " + barcode + " is there twice", "الباركود " + barcode + " مكرر"}};
                }
            }
            if (!has_unit(item, unit) && !item.is_update)
                throw BadLine{{"a barcode for a unit without its number of base units",
                               "باركود لعبوة أو كرتونة بدون عدد وحداتها"}};
            item.barcodes[unit].push_back(barcode);
        }
    }

    void judge(const std::string& barcode, std::int64_t item) const {
        if (auto fault = fault_of(barcode)) throw BadLine{std::move(*fault)};
        if (!known_.barcode.fits("bar", barcode))
            throw BadLine{{"a barcode is too long", "باركود أطول من المسموح به"}};
        const auto known = known_.barcodes.find(comparable_barcode(barcode));
        if (known != known_.barcodes.end() && !(known_.may_update && known->second == item)) {
            throw BadLine{{"barcode " + barcode + " belongs to another item of the shop",
                           "الباركود " + barcode + " مسجل لصنف آخر " + std::to_string(known->second)}};
        }
        if (barcodes_.contains(comparable_barcode(barcode)))
            throw BadLine{
                {"barcode " + barcode + " is in the file twice", "الباركود " + barcode + " مكرر في الملف"}};
        // A scan looks for a barcode first, so that this one would hide the item with that code.
        const auto as_code = common::all_digits(barcode) ? common::parse_integer(barcode) : std::nullopt;
        if (as_code && as_code != item && (known_.codes.contains(*as_code) || codes_.contains(*as_code))) {
            throw BadLine{{"barcode " + barcode + " is also the code of an item",
                           "الباركود " + barcode + " هو أيضا كود صنف"}};
        }
    }

    std::string_view text_;
    common::CsvReader csv_;
    const KnownGoods& known_;
    const std::function<void(std::size_t)>& reached_;
    std::vector<std::string> header_;    // names of item_columns()
    std::vector<std::string> headings_;  // as the file has them
    std::vector<std::string> cells_;
    std::vector<Words> cleaned_;  // how the line's texts were changed when they were read
    std::unordered_set<std::int64_t> codes_;
    std::unordered_set<std::string> barcodes_;
    std::unordered_map<std::string, std::int64_t> names_;  // in lower case, of the shop and of the file
    ItemFile file_;
};

}  // namespace

bool ItemLine::has(std::string_view column) const {
    for (std::size_t at = 0; at < item_columns().size(); ++at)
        if (item_columns()[at].name == column) return (given >> at & 1) != 0;
    return false;
}

ItemFile read_items(std::string_view csv, const KnownGoods& known,
                    const std::function<void(std::size_t)>& reached) {
    return Reader(csv, known, reached).read();
}

}  // namespace goods
