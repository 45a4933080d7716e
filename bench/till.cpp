#include "bench/till.h"

#include <stdexcept>

#include "bench/rows.h"
#include "database/open.h"

namespace bench {

// A message means that the measured road was left: the figure would be worthless.
void NobodyThere::message(std::string_view text, common::Icon) {
    throw std::runtime_error("the till said: " + std::string(text));
}

common::Moment NobodyThere::now() {
    return {last_day, {12, 0, 0, 0}};
}

Till::Till(const std::filesystem::path& shop) : connection_(database::open_embedded(shop)) {
    session_.cash_point = 1;
    session_.store_code = 1;
    session_.user_code = 1;
    session_.user_name = "مدير";
    session_.permissions = std::string(400, '1');
    session_.settings.max_dis = 10;
    session_.settings.st_d = 1;
    screen_ = std::make_unique<sales::SalesScreen>(*connection_, session_, outside(), nobody_);
    if (!screen_->Open()) throw std::runtime_error("the sales screen did not open");
}

void Till::ring_up(int lines) {
    for (int i = 0; i < lines; ++i) {
        if (!screen_->EnterItem(std::to_string(next_item_))) throw std::runtime_error("an item was refused");
        next_item_ = next_item_ % 9'000 + 1;
    }
}

void Till::begin_save() {
    if (screen_->begin_save() == sales::BeginSave::refused) throw std::runtime_error("a save was refused");
}

void Till::save() {
    if (screen_->SaveInvoice() != sales::SaveOutcome::saved)
        throw std::runtime_error("an invoice was not saved");
}

}  // namespace bench
