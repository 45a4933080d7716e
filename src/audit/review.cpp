#include "audit/review.h"

#include "audit/chain.h"
#include "common/cash_point.h"
#include "database/choices.h"
#include "database/reads.h"

namespace audit {

namespace {

using common::FieldKind;
using database::quoted;
using database::Sql;

constexpr std::string_view everything = "الكل";  // all
// The end of the period lies before its beginning.
constexpr std::string_view wrong_period = "تاريخ النهاية قبل تاريخ البداية";

constexpr common::FormField<ReviewFields> review_fields[] = {
    // from date, to date, user, event
    {&ReviewFields::start, {"journal_start", "&من تاريخ", FieldKind::date, {0, 0}}},
    {&ReviewFields::end, {"journal_end", "إ&لى تاريخ", FieldKind::date, {0, 1}}},
    {&ReviewFields::user, {"journal_user", "المست&خدم", FieldKind::choice, {0, 2}}},
    {&ReviewFields::kind, {"journal_kind", "ال&حدث", FieldKind::choice, {0, 3}}},
};

// The condition of the choice.
Sql chosen(const ReviewFields& fields) {
    Sql condition = Sql(" from till_journal where moment >= ") + quoted(fields.start) + " and moment < " +
                    quoted(common::add_days(fields.end, 1));
    if (fields.user.value_or(0) != 0) condition += Sql(" and user_code = ") + *fields.user;
    if (const auto kind = fields.kind.value_or(0); kind != 0)
        condition += Sql(" and kind = ") + quoted(kinds()[static_cast<std::size_t>(kind) - 1].stored);
    return condition;
}

std::string or_empty(const std::optional<std::int64_t>& number) {
    return number ? std::to_string(*number) : std::string();
}

}  // namespace

const std::array<std::string_view, 9> event_headings = {"الوقت", "المستخدم", "الحدث",     "البيان", "المبلغ",
                                                        "الصنف", "البون",    "وافق عليه", "الخزينة"};
const std::array<std::string_view, 4> total_headings = {"الحدث", "المستخدم", "العدد", "المبلغ"};

common::FormTable<ReviewFields> review_form() {
    return review_fields;
}

std::array<std::string, 9> ReviewRow::cells() const {
    const Event& event = entry.event;
    return {common::moment_text(entry.moment),
            entry.user.name,
            std::string(caption_of(entry.kind)),
            event.what,
            event.amount ? event.amount->text() : std::string(),
            or_empty(event.item),
            or_empty(event.invoice),
            event.approver ? event.approver->name : std::string(),
            common::cash_point_name(till)};
}

std::array<std::string, 4> KindTotal::cells() const {
    return {std::string(caption_of(kind)), user.name, std::to_string(number),
            amount ? amount->text() : std::string()};
}

void Review::open(const common::Date& today) {
    database::Reads reads;
    reads.add("select * from [users] order by code", database::into(users_));
    reads.run(connection_);
    users_.insert(users_.begin(), {0, std::string(everything)});
    kinds_ = {{0, std::string(everything)}};
    for (const KindName& kind : audit::kinds())
        kinds_.push_back({static_cast<std::int64_t>(kinds_.size()), std::string(kind.caption)});
    fields = {today, today, 0, 0};
}

std::optional<common::Refusal> Review::show() {
    if (fields.end < fields.start) return common::Refusal{"journal_end", std::string(wrong_period)};
    std::vector<ReviewRow> rows;
    std::vector<KindTotal> totals;
    database::Reads reads;
    const Sql condition = chosen(fields);
    reads.add_optional(
        Sql("select top ") + most_rows + " *" + condition + " order by moment desc, cash_no, num desc",
        [&](const database::Result& found) {
            rows.reserve(found.size());
            for (const database::Row& row : found)
                rows.push_back({row.integer("cash_no"), entry_of(row)});
        });
    reads.add_optional(
        Sql("select kind, user_code, max(user_name) as user_name, count(*) as events, "
            "sum(amount) as amount") +
            condition + " group by kind, user_code order by kind, user_code",
        [&](const database::Result& found) {
            for (const database::Row& row : found)
                totals.push_back({row.text("kind"),
                                  {row.integer("user_code"), row.text("user_name")},
                                  row.integer("events"),
                                  row.null("amount") ? std::nullopt
                                                     : std::optional(common::Amount(row.number("amount")))});
        });
    reads.run(connection_);
    rows_ = std::move(rows);
    totals_ = std::move(totals);
    count_ = 0;
    for (const KindTotal& total : totals_)
        count_ += total.number;
    return std::nullopt;
}

}  // namespace audit
