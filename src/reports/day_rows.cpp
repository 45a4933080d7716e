#include "reports/day_rows.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "common/json.h"
#include "database/reads.h"

namespace reports {

namespace {

using database::Fragment;
using database::quoted;
using database::Sql;

// The first `keys` columns of the statement are the key; `captions` are those of the others. The number of
// the document is the first column.
struct DayTable {
    std::string_view kind;
    Fragment select;  // up to the condition of the store
    Fragment date;
    Fragment group;
    std::size_t keys;
    std::array<std::string_view, 5> captions;
};

// receipt, lines of a receipt, goods in, their lines, voucher, bank, withdrawal or deposit, expense, surplus
// or shortage, cash transfer
constexpr DayTable day_tables[] = {
    {"بون",
     "select pnum,ctype,vcode,time_,ptot,pdis,stype,ptype,[user] from sales where stcode = ",
     "[date]",
     "",
     4,
     {"الإجمالي", "الخصم", "الدفع", "الخزينة", "المستخدم"}},
    {"أصناف بون",
     "select pnum,ctype,vcode,count(*) as n,round(sum(quan),3) as q,round(sum(quan * price - "
     "isnull(disc,0)),2) as v,sum(cast(icode as float)) as i from saledata where stcode = ",
     "[date]",
     " group by pnum,ctype,vcode",
     3,
     {"السطور", "الكمية", "القيمة", "مجموع الأكواد"}},
    {"فاتورة مورد",
     "select pnum,ctype,vcode,ptot,pdis,ptax from purchase where stcode = ",
     "[date]",
     "",
     3,
     {"الإجمالي", "الخصم", "الضريبة"}},
    {"أصناف فاتورة مورد",
     "select pnum,ctype,vcode,count(*) as n,round(sum(quan1),3) as q,round(sum(quan * price - "
     "isnull(disc,0)),2) as v,sum(cast(icode as float)) as i from purdata where stcode = ",
     "[date]",
     " group by pnum,ctype,vcode",
     3,
     {"السطور", "الكمية", "القيمة", "مجموع الأكواد"}},
    {"إيصال",
     "select chkno,ptype,ztype,vcode,pay_id,quan,dis,[type],cash_n from vencuspay where stcode = ",
     "[date]",
     "",
     5,
     {"القيمة", "الخصم", "الطريقة", "الخزينة"}},
    {"حركة بنك",
     "select ser,bcode,[type],type1,quan,cash_n from btran where stcode = ",
     "[date]",
     "",
     4,
     {"القيمة", "الخزينة"}},
    {"سحب أو إيداع",
     "select ser,type1,time_,aml,cash_n from in_out where stcode = ",
     "[date]",
     "",
     3,
     {"القيمة", "الخزينة"}},
    {"مصروف",
     "select mcode,scode,time_,[value],cash_n from dailyexp where stcode = ",
     "expdate",
     "",
     3,
     {"القيمة", "الخزينة"}},
    {"زيادة أو عجز", "select ptype,time_,aml from mor_les where stcode = ", "[date]", "", 2, {"القيمة"}},
    {"تحويل نقدية صادر",
     "select cnum,cash_nf,cto,cash_nt,caml from cach_t where cfr = ",
     "cdate",
     "",
     4,
     {"القيمة"}},
    {"تحويل نقدية وارد",
     "select cnum,cash_nf,cfr,cash_nt,caml from cach_t where cto = ",
     "cdate",
     "",
     4,
     {"القيمة"}},
};

void append(std::string& list, bool is_first, std::string text) {
    std::ranges::replace(text, '|', '/');
    if (!is_first) list += '|';
    list += text;
}

std::vector<std::string> cells_of(const std::string& list) {
    std::vector<std::string> cells(1);
    for (const char letter : list) {
        if (letter == '|')
            cells.emplace_back();
        else
            cells.back() += letter;
    }
    return cells;
}

// What a row says, with captions: only what differs from another row of the same key, or everything if there
// is none.
std::string shown(const DayTable& table, const DayRow& row, const DayRow* other) {
    const std::vector<std::string> cells = cells_of(row.content);
    const std::vector<std::string> others =
        other != nullptr ? cells_of(other->content) : std::vector<std::string>();
    std::string text;
    for (std::size_t i = 0; i < cells.size() && i < table.captions.size(); ++i) {
        if (cells[i].empty() || (i < others.size() && others[i] == cells[i])) continue;
        text += (text.empty() ? "" : "، ") + std::string(table.captions[i]) + " " + cells[i];
    }
    return text;
}

}  // namespace

std::vector<DayRow> read_day_rows(database::Connection& connection, std::int64_t store,
                                  const common::Date& day) {
    std::vector<DayRow> rows;
    database::Reads reads;
    for (std::size_t i = 0; i < std::size(day_tables); ++i) {
        const DayTable& table = day_tables[i];
        reads.add(Sql(table.select) + store + " and " + table.date + " >= " + quoted(day) + " and " +
                      table.date + " < " + quoted(common::add_days(day, 1)) + table.group,
                  [&rows, &table, i](const database::Result& found) {
                      for (const database::Row& row : found) {
                          DayRow one{static_cast<int>(i), {}, {}};
                          const auto& cells = row.cells();
                          for (std::size_t at = 0; at < cells.size(); ++at)
                              append(at < table.keys ? one.key : one.content, at == 0 || at == table.keys,
                                     database::text_of(cells[at]));
                          rows.push_back(std::move(one));
                      }
                  });
    }
    reads.run(connection);
    std::ranges::sort(rows);
    return rows;
}

std::string text_of(const std::vector<DayRow>& rows) {
    nlohmann::json list = nlohmann::json::array();
    for (const DayRow& row : rows)
        list.push_back({row.table, row.key, row.content});
    return common::json_text(list);
}

std::vector<DayRow> day_rows_of(std::string_view text) {
    std::vector<DayRow> rows;
    for (const auto& row : nlohmann::json::parse(text))
        rows.push_back({row.at(0).get<int>(), row.at(1).get<std::string>(), row.at(2).get<std::string>()});
    std::ranges::sort(rows);
    return rows;
}

std::vector<ChangedRow> changes_between(const std::vector<DayRow>& before, const std::vector<DayRow>& now) {
    std::vector<DayRow> gone;
    std::vector<DayRow> come;
    std::ranges::set_difference(before, now, std::back_inserter(gone));
    std::ranges::set_difference(now, before, std::back_inserter(come));
    std::vector<ChangedRow> changes;
    const auto add = [&](const DayRow* old, const DayRow* fresh) {
        const DayRow& row = old != nullptr ? *old : *fresh;
        if (row.table < 0 || static_cast<std::size_t>(row.table) >= std::size(day_tables)) return;
        const DayTable& table = day_tables[row.table];
        changes.push_back({old == nullptr     ? RowChange::added
                           : fresh == nullptr ? RowChange::removed
                                              : RowChange::altered,
                           std::string(table.kind), cells_of(row.key).front(),
                           old == nullptr ? std::string() : shown(table, *old, fresh),
                           fresh == nullptr ? std::string() : shown(table, *fresh, old)});
    };
    const auto place = [](const DayRow& row) { return std::tie(row.table, row.key); };
    std::size_t old = 0;
    std::size_t fresh = 0;
    while (old < gone.size() || fresh < come.size()) {
        const bool takes_old =
            old < gone.size() && (fresh == come.size() || place(gone[old]) <= place(come[fresh]));
        const bool takes_fresh =
            fresh < come.size() && (old == gone.size() || place(come[fresh]) <= place(gone[old]));
        add(takes_old ? &gone[old] : nullptr, takes_fresh ? &come[fresh] : nullptr);
        old += takes_old ? 1 : 0;
        fresh += takes_fresh ? 1 : 0;
    }
    return changes;
}

}  // namespace reports
