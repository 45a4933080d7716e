#include "reports/desk.h"

#include <algorithm>

#include "database/choices.h"
#include "reports/messages.h"
#include "signin/permissions.h"

namespace reports {

using common::FieldKind;

namespace {

constexpr std::string_view all_stores = "كل الفروع";

constexpr common::FormField<DeskFields> fields_of_desk[] = {
    // report, period, from date, to date, store
    {&DeskFields::kind, {"report_kind", "نوع الت&قرير", FieldKind::choice, {0, 0, 2}}},
    {&DeskFields::preset, {"report_preset", "الم&دة", FieldKind::choice, {0, 2}}},
    {&DeskFields::start, {"report_start", "من &تاريخ", FieldKind::date, {0, 3}}},
    {&DeskFields::end, {"report_end", "إلى تاري&خ", FieldKind::date, {0, 4}}},
    {&DeskFields::store, {"report_store", "ال&فرع", FieldKind::choice, {0, 5}}},
};

// A column for each heading; names take what figures leave.
std::vector<printing::ReportColumn> paper_columns(const std::vector<std::string>& headings,
                                                  const std::function<bool(std::size_t)>& is_figure,
                                                  std::size_t name) {
    std::vector<printing::ReportColumn> columns;
    for (std::size_t i = 0; i < headings.size(); ++i)
        columns.push_back({headings[i], is_figure(i) ? printing::Align::end : printing::Align::start,
                           i == name ? 2.2 : 1.2});
    return columns;
}

constexpr std::size_t most_upright_columns = 6;

}  // namespace

common::FormTable<DeskFields> desk_form() {
    return fields_of_desk;
}

void Desk::open() {
    kinds_.clear();
    const bool sees_cost = signin::allows(session_, signin::Action::see_cost);
    for (const Kind& kind : reports::kinds())
        if (sees_cost || !kind.tells_cost)
            kinds_.push_back({static_cast<std::int64_t>(kind.id), std::string(kind.caption)});
    presets_.clear();
    for (const PresetName& preset : reports::presets())
        presets_.push_back({static_cast<std::int64_t>(preset.preset), std::string(preset.caption)});
    stores_ = database::load_stores(connection_);
    stores_.insert(stores_.begin(), {0, std::string(all_stores)});
    if (fields.kind) return;
    fields.kind = static_cast<std::int64_t>(KindId::sales_by_day);
    fields.preset = static_cast<std::int64_t>(Preset::this_month);
    fields.store = 0;
    take_preset();
}

void Desk::take_preset() {
    const auto preset = static_cast<Preset>(fields.preset.value_or(static_cast<std::int64_t>(Preset::free)));
    const Period days = period_of(preset, clock_.now().date, {fields.start, fields.end, 0});
    fields.start = days.first;
    fields.end = days.last;
}

std::optional<common::Refusal> Desk::choose() {
    if (fields.end < fields.start) return common::Refusal("report_end", message::wrong_period);
    // Days that were typed are no longer those of the preset.
    const auto preset = static_cast<Preset>(fields.preset.value_or(static_cast<std::int64_t>(Preset::free)));
    const Period days = period_of(preset, clock_.now().date, {fields.start, fields.end, 0});
    if (days.first != fields.start || days.last != fields.end)
        fields.preset = static_cast<std::int64_t>(Preset::free);
    chosen_.kind = static_cast<KindId>(fields.kind.value_or(0));
    chosen_.period = {fields.start, fields.end, fields.store.value_or(0)};
    chosen_.now = clock_.now();
    chosen_.shows_cost = signin::allows(session_, signin::Action::see_cost);
    return std::nullopt;
}

bool Desk::make(const std::function<bool(int done, int total)>& go_on) {
    Report report(connection_, chosen_);
    while (report.done() < report.steps()) {
        if (!go_on(report.done(), report.steps())) return false;
        report.step();
    }
    table_ = report.table();
    request_ = chosen_;
    return true;
}

Behind Desk::rows_behind(std::size_t row) {
    return reports::rows_behind(connection_, request_, table_.rows.at(row));
}

std::string Desk::period_text() const {
    const std::string store = common::name_of(stores_, request_.period.store);
    // "Now", or the days.
    if (!kind().has_period) return "الآن " + common::moment_text(request_.now) + " · " + store;
    return common::date_text(request_.period.first) + " ← " + common::date_text(request_.period.last) +
           " · " + store;
}

printing::Report Desk::paper() const {
    printing::Report report = printing::headed(std::string(kind().name), session_);
    report.title = kind().caption;
    if (kind().has_period)
        report.captions = {{"من تاريخ", common::date_text(request_.period.first)},
                           {"إلى تاريخ", common::date_text(request_.period.last)}};
    else
        report.captions = {{"في", common::moment_text(request_.now)}};
    report.captions.emplace_back("الفرع", common::name_of(stores_, request_.period.store));
    report.captions.emplace_back("المستخدم", session_.user_name);
    const auto headings = table_.headings();
    if (headings.size() > most_upright_columns) report.orientation = printing::Orientation::landscape;
    report.columns = paper_columns(
        headings,
        [this](std::size_t column) {
            return column > 0 && table_.columns[column - 1].format != Format::text;
        },
        0);
    for (const TableRow& row : table_.rows)
        report.rows.push_back(table_.cells(row));
    if (!table_.totals.empty()) report.rows.push_back(table_.total_cells());
    return report;
}

printing::Report paper_of(const Behind& behind, const signin::Session& session) {
    printing::Report report = printing::headed("rows", session);
    report.title = behind.title;
    if (behind.headings.size() > most_upright_columns) report.orientation = printing::Orientation::landscape;
    report.columns = paper_columns(
        behind.headings,
        [&](std::size_t column) {
            return std::ranges::find(behind.figures, static_cast<int>(column)) != behind.figures.end();
        },
        static_cast<std::size_t>(behind.name_column));
    for (const BehindRow& row : behind.rows)
        report.rows.push_back(row.cells);
    if (!behind.sum.empty()) report.footers = {behind.sum};
    return report;
}

}  // namespace reports
