#include "ui/counting/count_paper.h"

#include "ui/counting/texts.h"

namespace ui {

namespace {

using counting::Difference;

struct PaperColumn {
    const char* heading;
    double share;
    bool is_figure;
    bool is_cost;          // only for who may see costs
    bool of_counted_only;  // goods that nobody counted have none
    std::string (*text)(const Difference&);
};

std::string moved_text(const Difference& one) {
    return one.moved_meanwhile == 0 ? "" : quantity_text(one.moved_meanwhile);
}

const PaperColumn columns[] = {
    {"كود", 0.8, true, false, false, [](const Difference& one) { return std::to_string(one.item); }},
    {"الصنف", 3, false, false, false, [](const Difference& one) { return one.name; }},
    {"صالح حتى", 1.1, true, false, false, [](const Difference& one) { return expiry_text(one.expiry); }},
    {"المعدود", 0.9, true, false, true, [](const Difference& one) { return quantity_text(one.counted); }},
    {"الدفتر", 0.9, true, false, false, [](const Difference& one) { return quantity_text(one.stock); }},
    {"الفرق", 0.9, true, false, true, [](const Difference& one) { return quantity_text(one.surplus()); }},
    {"القيمة", 1.1, true, true, false, [](const Difference& one) { return one.value().text(); }},
    {"تحرك", 1.1, true, false, true, moved_text},
    {"وقت العد", 1.5, true, false, true, [](const Difference& one) { return minute_text(one.moment); }},
    {"المستخدم", 1.2, false, false, true, [](const Difference& one) { return one.user; }},
};

template <typename Take>
void for_each_column(bool sees_cost, bool is_missing, const Take& take) {
    for (const PaperColumn& column : columns)
        if ((sees_cost || !column.is_cost) && (!is_missing || !column.of_counted_only)) take(column);
}

}  // namespace

QStringList counting_headings(bool sees_cost, bool is_missing) {
    QStringList headings;
    for_each_column(sees_cost, is_missing, [&](const PaperColumn& column) { headings << column.heading; });
    return headings;
}

QStringList counting_cells(const Difference& difference, bool sees_cost, bool is_missing) {
    QStringList cells;
    for_each_column(sees_cost, is_missing, [&](const PaperColumn& column) {
        const std::string text = column.text(difference);
        cells << (column.is_figure ? figure(text) : qt(text));
    });
    return cells;
}

QString totals_text(const std::vector<Difference>& found, bool sees_cost) {
    const counting::Totals totals = counting::totals_of(found);
    QString text = "عدد الأصناف " + figure(static_cast<qlonglong>(totals.items));
    if (sees_cost)
        text += " · زيادة " + figure(totals.surplus.text()) + " · عجز " + figure(totals.shortage.text()) +
                " · الصافي " + figure(totals.net().text());
    return text;
}

printing::Report count_paper(const signin::Session& session, const counting::Count& count,
                             const std::vector<Difference>& found, bool sees_cost, bool is_missing) {
    printing::Report report = printing::headed("count", session);
    report.title = std::string(is_missing ? "أصناف لم تعد في الجرد رقم " : "جرد المخزن رقم ") +
                   std::to_string(count.number);
    report.captions = {{"المخزن", count.store_name},
                       {"ما يعد", count.scope_name()},
                       {"فتح في", minute_text(count.opened) + " " + count.opened_by},
                       {"الحالة", std::string(counting::name_of(count.state)) +
                                      (count.is_open() ? "" : " " + minute_text(count.closed))}};
    if (!count.title.empty()) report.captions.emplace_back("بيان", count.title);
    report.orientation = printing::Orientation::landscape;
    for_each_column(sees_cost, is_missing, [&](const PaperColumn& column) {
        report.columns.push_back(
            {column.heading, column.is_figure ? printing::Align::end : printing::Align::start, column.share});
    });
    for (const Difference& one : found) {
        std::vector<std::string> cells;
        for_each_column(sees_cost, is_missing,
                        [&](const PaperColumn& column) { cells.push_back(column.text(one)); });
        report.rows.push_back(std::move(cells));
    }
    const counting::Totals totals = counting::totals_of(found);
    report.totals = {{"عدد الأصناف", std::to_string(totals.items)}};
    if (sees_cost) {
        report.totals.emplace_back("زيادة", totals.surplus.text());
        report.totals.emplace_back("عجز", totals.shortage.text());
        report.totals.emplace_back("الصافي", totals.net().text());
    }
    report.signatures = {"القائم بالجرد", "يعتمد"};
    return report;
}

}  // namespace ui
