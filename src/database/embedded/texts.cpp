// Functions on texts. Positions and lengths count characters, from 1.
#include <algorithm>
#include <memory>
#include <optional>

#include "common/numbers.h"
#include "common/text.h"
#include "database/embedded/collation.h"
#include "database/embedded/functions.h"

namespace database::embedded {

namespace {

// What a text function may grow a value to, in characters.
constexpr std::int64_t longest = 1'000'000;

void length(const Call& call) {
    if (call.null(0)) return call.give();
    call.give(static_cast<std::int64_t>(common::length(common::trim_right(call.text(0)))));
}

void upper(const Call& call) {
    if (call.null(0)) return call.give();
    std::u32string text = common::code_points(call.text(0));
    for (char32_t& c : text) {
        // The upper-case letter is the one that folds to this one.
        for (const char32_t distance : {0x20U, 0x50U, 1U}) {
            if (c >= distance && fold(c) == c && c - distance != c && fold(c - distance) == c) {
                c -= distance;
                break;
            }
        }
    }
    call.give(common::utf8(text));
}

void lower(const Call& call) {
    if (call.null(0)) return call.give();
    std::u32string text = common::code_points(call.text(0));
    std::transform(text.begin(), text.end(), text.begin(), fold);
    call.give(common::utf8(text));
}

// The smaller of a length and 64 bits.
std::size_t count_of(const Call& call, int i) {
    return static_cast<std::size_t>(std::clamp<std::int64_t>(call.integer(i), 0, longest));
}

void left(const Call& call) {
    if (call.any_null()) return call.give();
    if (call.integer(1) < 0)
        return call.fail("42000", "Invalid length parameter passed to the left function.");
    call.give(common::left(call.text(0), count_of(call, 1)));
}

void right(const Call& call) {
    if (call.any_null()) return call.give();
    if (call.integer(1) < 0)
        return call.fail("42000", "Invalid length parameter passed to the right function.");
    call.give(common::right(call.text(0), count_of(call, 1)));
}

// substring(text, start, length): what lies before character 1 counts towards the length.
void substring(const Call& call) {
    if (call.any_null()) return call.give();
    const std::int64_t start = std::clamp(call.integer(1), -longest, longest);
    const std::int64_t wanted = std::min(call.integer(2), longest);
    if (wanted < 0) return call.fail("42000", "Invalid length parameter passed to the substring function.");
    const std::u32string text = common::code_points(call.text(0));
    const auto size = static_cast<std::int64_t>(text.size());
    const std::int64_t first = std::clamp<std::int64_t>(start - 1, 0, size);
    const std::int64_t last = std::clamp<std::int64_t>(start - 1 + wanted, first, size);
    call.give(common::utf8(std::u32string_view(text).substr(static_cast<std::size_t>(first),
                                                            static_cast<std::size_t>(last - first))));
}

// charindex(what, text[, start])
void charindex(const Call& call) {
    if (call.any_null()) return call.give();
    const std::u32string what = folded(call.text(0)), text = folded(call.text(1));
    const std::int64_t start = call.count > 2 ? std::clamp<std::int64_t>(call.integer(2), 1, longest) : 1;
    const auto at =
        what.empty() ? std::u32string::npos : text.find(what, static_cast<std::size_t>(start - 1));
    call.give(at == std::u32string::npos ? std::int64_t{0} : static_cast<std::int64_t>(at) + 1);
}

// replace(text, what, with), without regard to case
void replace(const Call& call) {
    if (call.any_null()) return call.give();
    const std::u32string text = common::code_points(call.text(0)), what = folded(call.text(1));
    const std::u32string with = common::code_points(call.text(2));
    std::u32string lower_text = text;
    std::transform(text.begin(), text.end(), lower_text.begin(), fold);
    if (what.empty()) return call.give(call.text(0));
    std::u32string result;
    for (std::size_t at = 0; at < text.size();) {
        if (lower_text.compare(at, what.size(), what) == 0) {
            result += with;
            at += what.size();
        } else {
            result += text[at++];
        }
        if (result.size() > static_cast<std::size_t>(longest))
            return call.fail("22001", "The text grows too long.");
    }
    call.give(common::utf8(result));
}

void reverse(const Call& call) {
    if (call.null(0)) return call.give();
    std::u32string text = common::code_points(call.text(0));
    std::reverse(text.begin(), text.end());
    call.give(common::utf8(text));
}

void replicate(const Call& call) {
    if (call.any_null() || call.integer(1) < 0) return call.give();
    const std::string_view text = call.text(0);
    const std::int64_t times = call.integer(1);
    if (!text.empty() && times > longest / static_cast<std::int64_t>(text.size())) {
        return call.fail("22001", "The text grows too long.");
    }
    std::string result;
    for (std::int64_t i = 0; i < times && !text.empty(); ++i)
        result += text;
    call.give(result);
}

// stuff(text, start, length, with)
void stuff(const Call& call) {
    if (call.null(0) || call.null(1) || call.null(2)) return call.give();
    const std::u32string text = common::code_points(call.text(0));
    const std::int64_t start = call.integer(1), count = std::min(call.integer(2), longest);
    if (start < 1 || count < 0 || start > static_cast<std::int64_t>(text.size())) return call.give();
    const auto at = static_cast<std::size_t>(start - 1);
    const std::size_t end = std::min(text.size(), at + static_cast<std::size_t>(count));
    call.give(common::utf8(text.substr(0, at)) + std::string(call.null(3) ? "" : call.text(3)) +
              common::utf8(text.substr(end)));
}

// str(number[, length[, decimals]]): right-aligned in 10 characters; stars when it does not fit.
void str(const Call& call) {
    if (call.any_null()) return call.give();
    const std::int64_t width = call.count > 1 ? call.integer(1) : 10;
    const int decimals =
        call.count > 2 ? static_cast<int>(std::clamp<std::int64_t>(call.integer(2), 0, 9)) : 0;
    if (width < 1 || width > 8000) return call.give();
    const auto room = static_cast<std::size_t>(width);
    std::string text = common::format_decimals(call.number(0), decimals);
    if (text.size() > room) {
        const auto mark = text.find('.');
        const std::size_t needed = mark == std::string::npos ? text.size() : mark;
        if (needed > room) return call.give(std::string(room, '*'));
        // As many decimals as there is room for.
        const int kept = room > needed + 1 ? static_cast<int>(room - needed - 1) : 0;
        text = common::format_decimals(call.number(0), kept);
        if (text.size() > room) return call.give(std::string(room, '*'));
    }
    call.give(std::string(room - text.size(), ' ') + text);
}

void character(const Call& call) {
    if (call.null(0) || call.integer(0) < 0 || call.integer(0) > 0x10FFFF) return call.give();
    call.give(common::utf8(static_cast<char32_t>(call.integer(0))));
}

void code(const Call& call) {
    if (call.null(0)) return call.give();
    const std::u32string text = common::code_points(call.text(0));
    text.empty() ? call.give() : call.give(static_cast<std::int64_t>(text.front()));
}

// A pattern of LIKE. The commonest, "the beginning of a name%", is matched without folding the whole text,
// as a search goes through every name of the shop.
struct Pattern {
    explicit Pattern(std::string_view text) : whole(folded(text)) {
        if (whole.find_first_of(U"%_[") + 1 == whole.size() && whole.ends_with(U'%'))
            beginning = std::u32string_view(whole).substr(0, whole.size() - 1);
    }
    Pattern(const Pattern&) = delete;
    Pattern& operator=(const Pattern&) = delete;

    bool matches(std::string_view text, char32_t escape) const {
        if (beginning && escape == 0) return begins_with(text, *beginning);
        return is_like(folded(text), whole, escape);
    }

    std::u32string whole;
    std::optional<std::u32string_view> beginning;
};

void like(const Call& call) {
    if (call.any_null()) return call.give();
    // The pattern is the same for all rows of a statement: it is read once.
    auto* pattern = static_cast<Pattern*>(sqlite3_get_auxdata(call.context, 1));
    std::unique_ptr<Pattern> made;
    if (pattern == nullptr) {
        made = std::make_unique<Pattern>(call.text(1));
        pattern = made.get();
    }
    char32_t escape = 0;
    if (call.count > 2) {
        const std::u32string text = folded(call.text(2));
        if (text.size() != 1)
            return call.fail("42000", "The escape character of LIKE must be one character.");
        escape = text.front();
    }
    const bool matches = pattern->matches(call.text(0), escape);
    call.give(std::int64_t{matches});
    if (made) {
        sqlite3_set_auxdata(call.context, 1, made.release(),
                            [](void* kept) { delete static_cast<Pattern*>(kept); });
    }
}

constexpr Function texts[] = {
    {"ts_len", 1, length},
    {"ts_upper", 1, upper},
    {"ts_lower", 1, lower},
    {"ts_left", 2, left},
    {"ts_right", 2, right},
    {"ts_substring", 3, substring},
    {"ts_charindex", 2, charindex},
    {"ts_charindex", 3, charindex},
    {"ts_replace", 3, replace},
    {"ts_reverse", 1, reverse},
    {"ts_replicate", 2, replicate},
    {"ts_stuff", 4, stuff},
    {"ts_str", 1, str},
    {"ts_str", 2, str},
    {"ts_str", 3, str},
    {"ts_char", 1, character},
    {"ts_unicode", 1, code},
    {"ts_like", 2, like},
    {"ts_like", 3, like},
};

}  // namespace

void register_texts(sqlite3* engine) {
    register_all(engine, texts, std::size(texts));
}

}  // namespace database::embedded
