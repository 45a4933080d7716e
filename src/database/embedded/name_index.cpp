#include "database/embedded/name_index.h"

#include <algorithm>
#include <memory>
#include <vector>

#include "common/search.h"
#include "common/text.h"
#include "database/embedded/collation.h"
#include "database/embedded/definitions.h"
#include "database/embedded/functions.h"
#include "database/name_search.h"
#include "database/tsql/parser.h"

namespace database::embedded {

namespace {

using Kind = Expression::Kind;

// searched_text() of a column, as a tree.
struct KnownText {
    KnownText() { query = tsql::Parser(text, tokens, pinned).whole_query(); }
    const std::string text = (Sql("select ") + searched_text("known")).text();
    const tsql::Tokens tokens = tsql::tokenize(text, {});
    std::set<std::size_t> pinned;
    std::unique_ptr<Select> query;
};

// Compares a tree with the known one; `column` becomes the column that stands where the known one's does.
bool is_same(Writer& writer, const KnownText& text, const Expression& known, const Expression& e,
             const Expression*& column) {
    if (known.kind != e.kind || known.parts.size() != e.parts.size() || known.negated != e.negated)
        return false;
    if (known.kind == Kind::column) {
        if (column == nullptr) column = &e;
        return e.table == column->table && e.name == column->name;
    }
    if (known.kind == Kind::value) {
        const std::string* value = writer.text_value(e);
        return value != nullptr && *value == std::get<std::string>(text.tokens.values[known.slot]);
    }
    if (known.name != e.name || known.has_operand != e.has_operand || known.has_else != e.has_else)
        return false;
    return std::equal(known.parts.begin(), known.parts.end(), e.parts.begin(),
                      [&](const auto& a, const auto& b) { return is_same(writer, text, *a, *b, column); });
}

// A pattern of LIKE for folded texts. Those that a search makes are texts between "%" signs, with sets of
// letters that are alike; they are matched without decoding a name, because a search reads all names of a
// shop.
class FoldedPattern {
  public:
    explicit FoldedPattern(std::string_view pattern) : whole_(common::code_points(common::folded(pattern))) {
        const std::u32string text = common::code_points(pattern);
        for (std::size_t at = 0; at < text.size() && plain_; ++at)
            add(text, at);
    }
    bool matches(std::string_view folded) const {
        if (!plain_) return is_like(common::code_points(folded), whole_);
        if (!folded.starts_with(parts_.front())) return false;
        if (parts_.size() == 1) return folded.size() == parts_.front().size();
        folded.remove_prefix(parts_.front().size());
        for (std::size_t i = 1; i + 1 < parts_.size(); ++i) {
            const auto found = folded.find(parts_[i]);
            if (found == folded.npos) return false;
            folded.remove_prefix(found + parts_[i].size());
        }
        return folded.ends_with(parts_.back());
    }
    // The text with which all matches begin.
    std::string beginning() const { return plain_ ? parts_.front() : std::string(); }

  private:
    void add(const std::u32string& text, std::size_t& at) {
        if (text[at] == U'%') {
            parts_.emplace_back();
        } else if (text[at] == U'_') {
            plain_ = false;
        } else if (text[at] == U'[') {
            const std::size_t end = text.find(U']', at);
            plain_ = end != text.npos && add_set(text.substr(at + 1, end - at - 1));
            at = end;
        } else {
            parts_.back() += common::folded(common::utf8(text[at]));
        }
    }
    // Returns false unless all characters of the set are alike.
    bool add_set(const std::u32string& set) {
        if (set.empty() || (set.size() > 1 && set.find_first_of(U"^-") != set.npos)) return false;
        const std::string first = common::folded(common::utf8(set.front()));
        parts_.back() += first;
        return std::all_of(set.begin(), set.end(),
                           [&](char32_t c) { return common::folded(common::utf8(c)) == first; });
    }

    std::u32string whole_;
    std::vector<std::string> parts_{""};
    bool plain_ = true;
};

void fold(const Call& call) {
    if (call.null(0)) return call.give();
    call.give(std::string_view(common::folded(call.text(0))));
}

void like_folded(const Call& call) {
    if (call.any_null()) return call.give();
    const auto& pattern = kept_argument<FoldedPattern>(call, 1);
    call.give(std::int64_t{pattern.matches(call.text(0))});
}

void like_from(const Call& call) {
    if (call.null(0)) return call.give();
    call.give(std::string_view(FoldedPattern(call.text(0)).beginning()));
}

void like_to(const Call& call) {
    if (call.null(0)) return call.give();
    call.give(std::string_view(FoldedPattern(call.text(0)).beginning() + "\U0010FFFF"));
}

constexpr Function functions[] = {
    {"ts_folded", 1, fold},
    {"ts_like_folded", 2, like_folded},
    {"ts_like_from", 1, like_from},
    {"ts_like_to", 1, like_to},
};

}  // namespace

std::string name_index(const std::string& table) {
    return index_name(table, "own folded name");
}

const Expression* searched_column(Writer& writer, const Expression& expression) {
    static const KnownText known;
    const Expression* column = nullptr;
    const Expression& text = *known.query->items.front().value;
    return is_same(writer, known, text, expression, column) ? column : nullptr;
}

void register_name_search(sqlite3* engine) {
    register_all(engine, functions, std::size(functions));
}

}  // namespace database::embedded
