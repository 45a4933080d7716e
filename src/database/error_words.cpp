#include "database/error_words.h"

#include <string>

#include "common/text.h"
#include "database/error.h"

namespace database {

std::optional<std::string_view> words_for(const std::exception& error) {
    const auto* failure = dynamic_cast<const Error*>(&error);
    if (failure == nullptr) return std::nullopt;
    if (failure->is_connection_lost()) return message::connection_lost;
    if (failure->sqlstate() == "HYT00" || failure->sqlstate() == "HYT01") return message::timed_out;
    if (failure->sqlstate() == "40001") return message::changed_meanwhile;
    // These three have no state of their own; both engines put their English words in front.
    const std::string text = common::lower_ascii(failure->what());
    const auto says = [&](std::string_view words) { return text.find(words) != text.npos; };
    if (says("disk is full") || says("is full") || says("disk i/o error")) return message::disk_full;
    if (says("readonly") || says("read-only")) return message::read_only;
    if (says("is locked") || says("busy")) return message::busy;
    return std::nullopt;
}

}  // namespace database
