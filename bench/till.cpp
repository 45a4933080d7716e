#include "bench/till.h"

#include <fmt/format.h>

#include <cstdio>
#include <stdexcept>

#include "bench/invoices.h"
#include "database/embedded/open.h"
#include "sales/messages.h"

namespace bench {

void NobodyThere::message(std::string_view text, common::Icon) {
    std::fprintf(stderr, "the till said: %.*s\n", static_cast<int>(text.size()), text.data());
    throw std::runtime_error("the till said: " + std::string(text));
}

common::Answer NobodyThere::choose(std::string_view text, const common::Choices&, common::Icon icon) {
    if (text.starts_with(sales::message::cancel_receipt)) return common::Answer::yes;
    message(text, icon);
    return common::Answer::no;
}

std::string rung_up_code(const Sizes& sizes, std::int64_t n) {
    return fmt::format("622{:010}", rung_up_item(sizes, n));
}

Till::Till(const std::filesystem::path& home, const Sizes& sizes)
    : sizes_(sizes), connection_(database::open_embedded(home / "shop.db")), log_(home, nobody_) {
    session_.cash_point = 1;
    session_.store_code = 1;
    session_.user_code = 1;
    session_.user_name = "مدير";
    session_.permissions = std::string(400, '1');
    session_.settings.max_dis = 10;
    session_.settings.st_d = 1;
    screen_ = std::make_unique<sales::SalesDesk>(*connection_, session_, services(), nobody_);
    if (!screen_->Open()) throw std::runtime_error("the sales screen did not open");
}

void Till::ring_up(std::int64_t n, int lines) {
    for (int i = 0; i < lines; ++i)
        if (!screen_->lines().EnterItem(sales::read_entry(rung_up_code(sizes_, n + i))))
            throw std::runtime_error("an item was refused");
}

void Till::begin_save() {
    if (screen_->checkout().begin_save() == sales::BeginSave::refused)
        throw std::runtime_error("a save was refused");
}

void Till::save() {
    if (screen_->checkout().SaveInvoice() != sales::SaveOutcome::saved)
        throw std::runtime_error("an invoice was not saved");
}

}  // namespace bench
