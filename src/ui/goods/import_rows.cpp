#include "ui/goods/import_rows.h"

#include "ui/widgets/text.h"

namespace ui {

namespace {

// Nobody reads more rows; the sums count all.
constexpr std::size_t most_lines_shown = 5000;

}  // namespace

QStringList import_headings() {
    return {"السطر", "كود", "الاسم", "ماذا سيحدث"};
}

std::vector<QStringList> import_rows(const goods::ImportPlan& plan) {
    std::vector<QStringList> rows;
    const auto add = [&](std::size_t line, const QString& code, const QString& name, const QString& what) {
        if (rows.size() < most_lines_shown)
            rows.push_back({figure(static_cast<qlonglong>(line)), code, name, what});
    };
    for (const goods::LineProblem& problem : plan.problems)
        add(problem.line, figure(problem.code), qt(problem.name), "مرفوض : " + qt(problem.reason.arabic));
    for (const goods::LineProblem& note : plan.notes)
        add(note.line, figure(note.code), qt(note.name), "ملاحظة : " + qt(note.reason.arabic));
    for (const goods::PlannedLine& line : plan.lines)
        if (line.changes_anything())
            add(line.item.line, figure(line.item.code), qt(line.name),
                line.item.is_update ? qt(line.changes) : "صنف جديد");
    return rows;
}

QString import_text(const goods::ImportPlan& plan) {
    if (plan.has_unknown_headings) {
        QStringList known;
        for (const goods::ItemColumn& column : goods::item_columns())
            known << qt(column.arabic.front());
        return "الأعمدة المعروفة : " + known.join("، ");
    }
    QString said =
        "أصناف جديدة " + QString::number(plan.added) + "، أصناف تتغير " + QString::number(plan.changed);
    if (!plan.notes.empty()) said += "، ملاحظات " + QString::number(plan.notes.size());
    if (!plan.problems.empty())
        said +=
            "، سطور مرفوضة " + QString::number(plan.problems.size()) + " · أصلحها في الملف ثم اقرأه مرة أخرى";
    return said;
}

}  // namespace ui
