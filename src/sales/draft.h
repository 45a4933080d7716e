// The invoice in work, kept in a file beside the program as it grows, so that a crash loses nothing of it. A
// change appends what is different to the file and is not synced: a torn end costs the last change at most.
// When the invoice is saved, held or cancelled, the file is emptied.
//
// A power cut may leave the file as it was seconds before. So the last step of a save, and holding, note in
// the table till_draft which invoice of the file has left the screen, and a start forgets those up to it.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/files.h"
#include "database/connection.h"
#include "database/reads.h"
#include "sales/invoice_text.h"

namespace sales {

// "draft-1-0123456789abcdef.txt" of cash point 1, in the program's folder; the digits tell shops apart.
std::filesystem::path draft_file(const std::filesystem::path& program_folder, std::string_view shop,
                                 std::int64_t cash_point);
// The same for a draft of another name, "receipt-…".
std::filesystem::path draft_file(const std::filesystem::path& program_folder, std::string_view name,
                                 std::string_view shop, std::int64_t cash_point);

// The statements that note that an invoice has left the screen for good, to run with the last step of its
// save: it is no draft and no longer held.
std::vector<database::Command> leaving_the_screen(const DraftMark& mark);

class Draft {
  public:
    // An invoice that an earlier run of the till left in the file.
    struct Left {
        KeptInvoice invoice;
        DraftMark mark;
    };

    // Opens the file or makes it, and reads what is left in it. If it cannot be used, nothing is kept.
    void open(const std::filesystem::path& file);
    // Returns true if the invoice in work is kept.
    bool is_open() const { return file_ && file_->is_open(); }
    // Adds what makes the file's row in till_draft; for the first reads of a run.
    void ask(database::Reads& reads);

    // What is left comes first: until one of these is called nothing else is kept.
    const std::optional<Left>& left() const { return left_; }
    // The screen now shows what was left, and the file goes on with it.
    void take_left();
    // What was left is no longer in work. `past` is the serial that till_draft holds.
    void forget_left(std::int64_t past);

    // Appends what has changed since the last call.
    void keep(KeptInvoice invoice);
    // The invoice is no longer in work.
    void clear();

    // The invoice in work; without a serial if nobody will ask for it.
    const DraftMark& mark() const { return mark_; }
    // The invoice in work is a held one that was resumed.
    void resume(std::int64_t held) { mark_.held = held; }
    // Keeps the invoice in work although till_draft may say that it has left the screen.
    void renew();

  private:
    void read(std::string_view text);
    bool append(const KeptChange& change);
    void begin_file();
    void empty();

    std::optional<common::Descriptor> file_;
    std::size_t heading_size_ = 0;  // of the record that begins the file
    DraftMark mark_;
    bool is_noted_ = false;    // till_draft has a row of the file
    std::int64_t former_ = 0;  // the mark of an earlier run's file, which left nothing
    std::optional<Left> left_;

    // What the file holds of the invoice in work.
    struct Written {
        DraftMark mark;
        std::string head;
        std::optional<InvoiceIdentity> receipt;
        std::vector<Line> lines;
        common::Moment begun;
    };
    std::optional<Written> written_;
};

}  // namespace sales
