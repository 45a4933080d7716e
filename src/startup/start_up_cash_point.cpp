// How a start gets its cash point: from the tills of this machine, and from the machines of a server.
#include "common/cash_point.h"
#include "common/text.h"
#include "startup/messages.h"
#include "startup/start_up.h"

namespace startup {

using common::Icon;

// Another till of this machine with the same cash point comes to the front instead of this one, or the
// cashier is told whose it is. Returns that till.
std::optional<CashPointLock::Holder> StartUp::take_cash_point() {
    std::error_code ignored;
    const auto& folder = environment_.working_folder;
    const std::string file = std::filesystem::weakly_canonical(shop_file(record_, folder), ignored).string();
    // The server's address may change; its name does not.
    session_.shop = source_.is_embedded() ? file : record_.server + '\n' + record_.database;
    const std::string place = std::filesystem::weakly_canonical(folder, ignored).string();
    lock_.emplace(source_.is_embedded() ? file : place + '\n' + source_.data_source + '\n' + record_.database,
                  session_.cash_point);
    auto holder = lock_->take();
    if (!holder) {
        if (environment_.listen && lock_->descriptor() >= 0) environment_.listen(lock_->descriptor());
        open_trail();
        return std::nullopt;
    }
    lock_.reset();
    const std::string number = std::to_string(session_.cash_point);
    progress("cash point " + number + " is running on this machine");
    if (holder->shown) return holder;
    const std::string text =
        session_.is_office ? std::string(message::office) : std::string(message::cash_point) + number;
    services_.prompts.message(
        text + (holder->user.empty() ? std::string(message::runs_silently)
                                     : std::string(message::runs_as_user) + holder->user),
        Icon::critical);
    return holder;
}

void StartUp::open_trail() {
    session_.trail->open(session_.cash_point, {environment_.working_folder, record_.database},
                         services_.clock);
}

void StartUp::answer_second_start(const std::function<void()>& show) {
    if (lock_)
        lock_->answer([&] {
            progress("brought to the front by a second start");
            show();
        });
}

// Tells the cashier if another machine runs this cash point. Tills of a shop in a file are on one machine.
bool StartUp::claim_cash_point() {
    if (source_.is_embedded()) return true;
    if (session_.is_office) return claim_office();
    claim_.emplace(session_.cash_point, place_of_this_machine());
    const auto other = claim_->claim(*connection_);
    if (!other) return true;
    claim_.reset();
    const std::string number = std::to_string(session_.cash_point);
    progress("cash point " + number + " is running on " + *other);
    services_.prompts.message(std::string(message::cash_point) + number +
                                  std::string(message::runs_elsewhere) + *other +
                                  std::string(message::free_after_three_minutes),
                              Icon::critical);
    return false;
}

// Takes the first number that no office of another machine has.
bool StartUp::claim_office() {
    std::optional<std::string> other;
    for (std::int64_t number = common::first_office; number <= common::last_office; ++number) {
        claim_.emplace(number, place_of_this_machine());
        other = claim_->claim(*connection_);
        if (other) continue;
        session_.cash_point = number;
        if (number != common::first_office) open_trail();
        return true;
    }
    claim_.reset();
    services_.prompts.message(std::string(message::too_many_offices) + *other, Icon::critical);
    return false;
}

std::string StartUp::place_of_this_machine() const {
    return common::left(session_.computer_name + " " + environment_.working_folder.string(), 200);
}

std::string StartUp::found_other_till(const std::string& place) {
    const std::string number = std::to_string(session_.cash_point);
    progress("cash point " + number + " also runs on " + place);
    return std::string(message::cash_point) + number + std::string(message::taken_by_other) + place +
           std::string(message::one_till_for_a_drawer);
}

// If the server is gone by then, the claim runs out by itself.
void StartUp::leave_cash_point() {
    if (!claim_) return;
    try {
        claim_->leave(*connection_);
    } catch (const database::Error& error) {
        progress(std::string("the cash point was not given free: ") + error.what());
    }
}

void StartUp::hand_over() {
    claim_.reset();
    if (lock_) lock_->release();
}

}  // namespace startup
