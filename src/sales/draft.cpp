#include "sales/draft.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <system_error>
#include <utility>

#include "audit/hash.h"
#include "common/random.h"

namespace sales {

using database::Sql;

namespace {

constexpr std::size_t largest_file = 64U << 20U;

constexpr std::size_t hash_digits = 16;

std::string hash_of(std::string_view text) {
    return audit::sha256(std::string(text)).substr(0, hash_digits);
}

// A record is a line: the hash of a text, a blank and the text.
std::string record_of(std::string_view text) {
    return fmt::format("{} {}\n", hash_of(text), text);
}

// Takes the first record off; nothing if it is torn.
std::optional<KeptChange> take_record(std::string_view& records) {
    constexpr std::size_t prefix = hash_digits + 1;
    const std::size_t end = records.find('\n');
    if (end == records.npos || end < prefix) return std::nullopt;
    const std::string_view text = records.substr(prefix, end - prefix);
    if (record_of(text) != records.substr(0, end + 1)) return std::nullopt;
    records.remove_prefix(end + 1);
    return read_kept_change(text);
}

// Returns false if the change does not fit what is known of the invoice.
bool apply(KeptChange& change, KeptInvoice& known) {
    std::vector<Line> lines = std::move(known.invoice.lines);
    std::optional<RecalledInvoice> receipt = std::move(known.recalled);
    if (change.head) known = read_kept_invoice(*change.head);
    if (change.recalled) receipt = std::move(change.recalled);
    known.recalled = std::move(receipt);
    const std::size_t had = lines.size();
    lines.resize(change.line_count);
    std::size_t added = 0;
    for (auto& [place, line] : change.lines) {
        if (place >= lines.size()) return false;
        if (place >= had) ++added;
        lines[place] = std::move(line);
    }
    known.invoice.lines = std::move(lines);
    return change.line_count <= had + added;
}

}  // namespace

std::filesystem::path draft_file(const std::filesystem::path& program_folder, std::string_view shop,
                                 std::int64_t cash_point) {
    return draft_file(program_folder, "draft", shop, cash_point);
}

std::filesystem::path draft_file(const std::filesystem::path& program_folder, std::string_view name,
                                 std::string_view shop, std::int64_t cash_point) {
    return program_folder / fmt::format("{}-{}-{}.txt", name, cash_point, hash_of(shop));
}

std::vector<database::Command> leaving_the_screen(const DraftMark& mark) {
    std::vector<database::Command> commands;
    if (mark.serial != 0)
        commands.emplace_back(Sql("update till_draft set past = ") + mark.serial +
                              " where id = " + mark.file + " and past < " + mark.serial);
    if (mark.held != 0)
        commands.emplace_back(Sql("delete from till_held where id = ") + mark.held +
                              " and taken = " + mark.file);
    return commands;
}

void Draft::open(const std::filesystem::path& file) {
    mark_ = {common::random_id(), 0, 0};
    if (file.empty()) return;
    std::error_code ignored;
    std::string text;
    if (std::filesystem::exists(file, ignored)) {
        try {
            text = common::read_file(file, largest_file);
        } catch (const std::system_error&) {
            return;  // nothing that may be written to
        }
    }
    file_.emplace(
        ::open(file.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_NONBLOCK | O_CLOEXEC, common::shop_file_mode));
    if (!is_open()) return;
    read(text);
    if (!left_) begin_file();
}

// A file that is damaged in its middle is read up to there.
void Draft::read(std::string_view text) {
    const std::size_t size = text.size();
    Left found;
    try {
        while (auto change = take_record(text)) {
            found.mark = change->mark;
            if (heading_size_ == 0) heading_size_ = size - text.size();
            if (!apply(*change, found.invoice)) break;
            if (!found.invoice.invoice.lines.empty()) left_ = found;
        }
    } catch (const std::exception&) {
        // A text of a later version, or damaged.
    }
    if (left_)
        mark_.file = left_->mark.file;
    else
        former_ = found.mark.file;
}

// The file is synced once before the row of its former mark goes: until then a power cut could bring back its
// old content.
void Draft::begin_file() {
    KeptChange heading;
    heading.mark = {mark_.file, 0, 0};
    const std::string record = record_of(text_of(heading));
    heading_size_ = record.size();
    if (ftruncate(file_->get(), 0) != 0 || !append(heading) || (former_ != 0 && fsync(file_->get()) != 0)) {
        former_ = 0;
        file_.reset();
    }
}

// The row says which invoice of the file has left the screen; a shop without the table keeps no such row.
void Draft::ask(database::Reads& reads) {
    if (!is_open()) return;
    if (former_ != 0)
        reads.add_optional(Sql("delete from till_draft where id = ") + former_,
                           [](const database::Result&) {});
    reads.add_optional(Sql("insert into till_draft (id, past) select ") + mark_.file +
                           ", 0 where not exists (select id from till_draft where id = " + mark_.file + ")",
                       [this](const database::Result&) {
                           is_noted_ = true;
                           if (!left_) mark_.serial = 1;
                       });
}

bool Draft::append(const KeptChange& change) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(1);
    return common::write_all(file_->get(), record_of(text_of(change)), deadline);
}

void Draft::keep(KeptInvoice invoice) {
    if (!is_open() || left_) return;
    KeptChange change{mark_, {}, {}, {}, invoice.invoice.lines.size()};
    std::vector<Line> lines = std::exchange(invoice.invoice.lines, {});
    std::optional<RecalledInvoice> receipt = std::exchange(invoice.recalled, std::nullopt);
    std::optional<InvoiceIdentity> identity;
    if (receipt) identity = receipt->identity;
    // A record can add a receipt, but not remove one.
    if (written_ && written_->receipt && !identity) empty();
    if (written_) invoice.begun = written_->begun;
    Written now{mark_, text_of(invoice), identity, std::move(lines), invoice.begun};

    if (!written_ || written_->head != now.head) change.head = now.head;
    if (receipt && (!written_ || written_->receipt != identity)) change.recalled = std::move(receipt);
    const std::size_t had = written_ ? written_->lines.size() : 0;
    for (std::size_t at = 0; at < now.lines.size(); ++at)
        if (at >= had || written_->lines[at] != now.lines[at]) change.lines.emplace_back(at, now.lines[at]);
    const bool is_same = written_ && written_->mark == mark_ && !change.head && !change.recalled &&
                         change.lines.empty() && had == now.lines.size();
    if (is_same) return;
    const bool is_written = append(change);
    written_ = std::move(now);
    if (!is_written) empty();  // nothing is read behind half a record; start anew next time
}

void Draft::take_left() {
    mark_.held = left_->mark.held;
    if (is_noted_) mark_.serial = std::max<std::int64_t>(left_->mark.serial, 1);
    left_.reset();
}

void Draft::forget_left(std::int64_t past) {
    if (is_noted_) mark_.serial = std::max(left_->mark.serial, past);
    left_.reset();
    clear();
    if (is_open()) empty();
}

void Draft::clear() {
    mark_.held = 0;
    if (left_) return;
    if (is_noted_) mark_.serial += 1;
    if (is_open() && written_) empty();
}

void Draft::renew() {
    if (is_noted_ && !left_) mark_.serial += 1;
}

void Draft::empty() {
    const bool is_cut = ftruncate(file_->get(), static_cast<off_t>(heading_size_)) == 0;
    written_.reset();
    if (!is_cut) file_.reset();
}

}  // namespace sales
