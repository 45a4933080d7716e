#include "database/name_search.h"

#include "common/search.h"
#include "common/text.h"

namespace database {

namespace {

// A binary collation, because the others do not find a mark that stands for itself. The few names with marks
// are picked out first, because removing marks is slow on a server.
constexpr Fragment exactly = " collate Latin1_General_BIN2";
constexpr Fragment removals[] = {",N'\u0640',N'')", ",N'\u064B',N'')", ",N'\u064C',N'')", ",N'\u064D',N'')",
                                 ",N'\u064E',N'')", ",N'\u064F',N'')", ",N'\u0650',N'')", ",N'\u0651',N'')",
                                 ",N'\u0652',N'')", ",N'\u0653',N'')", ",N'\u0654',N'')", ",N'\u0655',N'')",
                                 ",N'\u0670',N'')"};

Sql like(Fragment column, const std::string& pattern) {
    return searched_text(column) + " like N" + quoted(pattern);
}

}  // namespace

Sql searched_text(Fragment column) {
    Sql text = Sql("lower(case when ") + column + exactly + " like N'%[\u0640\u064B-\u0655\u0670]%' then ";
    for ([[maybe_unused]] const Fragment& removal : removals)
        text += "replace(";
    text += Sql(column) + exactly;
    for (const Fragment& removal : removals)
        text += removal;
    return std::move(text) + " else " + column + exactly + " end)";
}

Sql begins_with_typed(Fragment column, std::string_view typed) {
    return like(column, like_text(common::trim(typed)) + "%");
}

Sql contains_typed_words(Fragment column, std::string_view typed) {
    const std::vector<std::string> words = common::search_words(typed);
    Sql condition("");
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (i > 0) condition += " and ";
        condition += like(column, "%" + like_text(words[i]) + "%");
    }
    return condition;
}

}  // namespace database
