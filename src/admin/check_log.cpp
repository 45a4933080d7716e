// The check of the activity log for saves that did not finish. The log has for each save the lines "save of
// invoice N (kind K, customer C, store S) begins, ..." and then "... finished" or "... stopped, last finished
// step: ...", perhaps followed by "... finished" or "... undone" when the cashier has chosen. The lines of
// vouchers begin with "save of voucher N (kind K, kind of party Z, party C)".
#include <algorithm>
#include <filesystem>
#include <map>
#include <system_error>

#include "accounts/voucher_saving.h"
#include "admin/checks.h"
#include "common/files.h"
#include "common/text.h"
#include "sales/invoice_key.h"

namespace admin {

using database::Connection;
using database::quoted;
using database::Sql;

namespace {

struct Line {
    std::string_view message;
    common::Moment moment;
};

// "message  ----  code  ----  yyyy/MM/dd HH:mm"
std::optional<Line> read_line(std::string_view text) {
    constexpr std::string_view between = "  ----  ";
    const std::size_t last = text.rfind(between);
    const std::size_t code = last == std::string_view::npos ? last : text.rfind(between, last - 1);
    if (code == std::string_view::npos || last == 0) return std::nullopt;
    const auto moment = common::parse_moment(text.substr(last + between.size()));
    if (!moment) return std::nullopt;
    return Line{text.substr(0, code), *moment};
}

constexpr std::string_view save_of = "save of ";
constexpr std::size_t largest_log = 1U << 30U;

class LogCheck {
  public:
    LogCheck(Connection& connection, const Period& period) : connection_(connection), period_(period) {}

    Findings run(const std::filesystem::path& log_file) {
        std::string log;
        try {
            if (std::filesystem::exists(log_file)) log = common::read_file(log_file, largest_log);
        } catch (const std::system_error& error) {
            return {{Verdict::wrong, "log",
                     std::string("cannot be read: ") + error.what() +
                         "; saves that were cut off stay unknown until it can"}};
        }
        for (std::string_view rest = log; !rest.empty();) {
            const std::size_t end = std::min(rest.find('\n'), rest.size());
            const auto line = read_line(common::trim(rest.substr(0, end)));
            if (line && line->moment.date >= period_.from) take(*line);
            rest.remove_prefix(std::min(end + 1, rest.size()));
        }
        for (const auto& [name, stopped] : stopped_)
            judge_stopped(stopped);
        for (const auto& [name, moment] : begun_)
            judge(name, moment);
        for (const auto& [name, left] : unfinished_vouchers_)
            add(Verdict::note, left.moment, left.text + ". If it is unfinished, that stands above");
        if (findings_.empty())
            findings_.push_back({Verdict::good, "log", "every save that began was finished"});
        return std::move(findings_);
    }

  private:
    struct Stopped {
        std::string text;
        common::Moment moment;
    };

    void take(const Line& line) {
        if (line.message == mended_line) {
            findings_.clear();
            begun_.clear();
            stopped_.clear();
            unfinished_vouchers_.clear();
            return;
        }
        if (!line.message.starts_with(save_of)) return;
        const std::size_t end = line.message.find(')');
        if (end == std::string_view::npos) return;
        const std::string name(line.message.substr(0, end + 1));
        const std::string_view what = line.message.substr(end + 1);
        if (name.starts_with(std::string(save_of) + std::string(accounts::voucher_log_name)))
            return take_voucher(name, what, line);
        if (what.starts_with(" begins")) {
            // An earlier save of this name did not write its header, or its number would have been used.
            begun_[name] = line.moment;
            return;
        }
        // A save that stopped may be finished or undone later, with a line of its own.
        begun_.erase(name);
        if (what.starts_with(" stopped, ")) {
            stopped_[name] = {std::string(line.message), line.moment};
        } else if (what.starts_with(" finished") || what.starts_with(" undone")) {
            stopped_.erase(name);
        }
    }

    void judge_stopped(const Stopped& stopped) {
        const bool nothing = stopped.text.find(" nothing saved, ") != std::string::npos;
        add(nothing ? Verdict::note : Verdict::wrong, stopped.moment,
            stopped.text + (nothing
                                ? "; the cashier was told to save it again"
                                : "; if it stands above as unfinished, finish or undo it there; else write "
                                  "what comes after that step by hand, or return the sale"));
    }

    // A save that stopped stays unfinished until it is finished or undone.
    void take_voucher(const std::string& name, std::string_view what, const Line& line) {
        const auto known = unfinished_vouchers_.find(name);
        const bool has_stopped = known != unfinished_vouchers_.end() && known->second.has_stopped;
        const bool nothing = what.find(" nothing saved, ") != std::string_view::npos;
        if (what.starts_with(" stopped, ") && !nothing) {
            unfinished_vouchers_[name] = {std::string(line.message), line.moment, true};
        } else if (what.starts_with(" finished") || what.starts_with(" undone") ||
                   (nothing && !has_stopped)) {
            unfinished_vouchers_.erase(name);
        } else if (what.starts_with(" begins") && !has_stopped) {
            unfinished_vouchers_[name] = {name + " was begun and not finished: the till went out",
                                          line.moment, false};
        }
    }

    void add(Verdict verdict, const common::Moment& moment, const std::string& text) {
        findings_.push_back({verdict, "log", common::moment_text(moment).substr(0, 16) + ": " + text});
    }

    // Judges a save that was cut off. The checks of the database show everything that it left undone except
    // its last step, which reduces the goods reserved for an account customer.
    void judge(const std::string& name, const common::Moment& moment) {
        const auto invoice = sales::read_log_name(std::string_view(name).substr(save_of.size()));
        if (!invoice) return;
        const std::string went_out = name + " was begun and not finished: the till went out. ";
        const Sql key = Sql(" where sales.pnum = ") + invoice->number +
                        " and sales.ctype = " + invoice->ctype + " and sales.vcode = " + invoice->vcode +
                        " and sales.stcode = " + invoice->store +
                        " and sales.[date] >= " + quoted(common::add_days(moment.date, -1));
        if (connection_.query(Sql("select pnum from sales") + key).empty()) {
            add(Verdict::note, moment,
                went_out +
                    "It has no header, so no money of it is counted; if the goods were handed out, ring "
                    "them up again");
            return;
        }
        const auto reserved = connection_.query(
            Sql("select distinct reservd.icode from sales inner join saledata on sales.pnum = saledata.pnum "
                "and "
                "sales.ctype = saledata.ctype and sales.vcode = saledata.vcode and sales.stcode = "
                "saledata.stcode inner join reservd on reservd.icode = saledata.icode and reservd.ccode = "
                "sales.vcode") +
            key + " and (sales.ctype = 0 or sales.ctype = 1) and reservd.quan1 > 0");
        if (reserved.empty()) {
            add(Verdict::note, moment, went_out + "What it left undone stands above, if anything");
            return;
        }
        std::string items;
        for (const auto& row : reserved)
            items += (items.empty() ? "" : ", ") + row.text("icode");
        add(Verdict::wrong, moment,
            went_out + "Its goods may still stand as reserved for customer " +
                std::to_string(invoice->vcode) + ": look at the reservations of item " + items +
                " (table reservd)");
    }

    Connection& connection_;
    Period period_;
    Findings findings_;
    std::map<std::string, common::Moment> begun_;
    std::map<std::string, Stopped> stopped_;
    struct Unfinished {
        std::string text;
        common::Moment moment;
        bool has_stopped = false;
    };
    std::map<std::string, Unfinished> unfinished_vouchers_;
};

}  // namespace

Findings check_log(Connection& connection, const std::filesystem::path& log_file, const Period& period) {
    return LogCheck(connection, period).run(log_file);
}

}  // namespace admin
