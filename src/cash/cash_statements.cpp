// The statements of the sums, put together from their terms.
#include "cash/cash_terms.h"

namespace cash {

namespace {

using database::Fragment;
using database::quoted;
using database::Sql;

// Moments of an invoice's period are written with the bare name of the date column.
Fragment date_column(const Procedure& procedure, const Shape& shape) {
    return procedure.span == Span::period ? Fragment("date") : shape.date;
}

class Composer {
  public:
    Composer(const Procedure& procedure, Movement movement, const Drawer& drawer, const Window& window)
        : procedure_(procedure),
          term_(term(movement)),
          shape_(chosen_shape()),
          drawer_(drawer),
          window_(window) {}

    Sql sum() {
        Sql statement("");
        for (const Part& part : shape_.select)
            append(statement, part);
        for (const Part& part : shape_.source)
            append(statement, part);
        return statement;
    }

    Sql rows() {
        Sql statement("select * ");
        for (const Part& part : shape_.source)
            append(statement, part);
        return statement;
    }

  private:
    const Shape& chosen_shape() const {
        if (procedure_.drawer_first) return term_.drawer_first;
        if (procedure_.span == Span::period && term_.of_period != nullptr) return *term_.of_period;
        return term_.shape;
    }

    void append(Sql& statement, const Part& part) const {
        switch (part.slot) {
            case Slot::text:
                statement += part.text;
                break;
            case Slot::amount:
                append_amount(statement);
                break;
            case Slot::gap:
                statement += term_.gap;
                break;
            case Slot::moment:
                append_window(statement);
                break;
            case Slot::condition:
                statement += term_.condition;
                break;
            case Slot::store:
                statement += drawer_.store;
                break;
            case Slot::drawer:
                statement += drawer_.code;
                break;
        }
    }

    void append_amount(Sql& statement) const {
        if (term_.movement == Movement::opening) {
            statement += procedure_.opening;
        } else if (procedure_.rounded_rows && term_.rounded_by_calc) {
            statement += Sql("round(") + term_.amount + ",2)";
        } else {
            statement += term_.amount;
        }
    }

    void append_window(Sql& statement) const {
        switch (procedure_.span) {
            case Span::before:
                if (procedure_.counts_by_bare_date && term_.movement == Movement::count_difference) {
                    statement += Sql("date <") + quoted(window_.until) + " ";
                } else {
                    statement += moment() + "<" + quoted(window_.until);
                }
                break;
            case Span::up_to:
                statement += moment() + "<=" + quoted(window_.until);
                break;
            case Span::period:
                statement += Sql("(") + moment() + ">" + quoted(window_.from + " ") + " and " + moment() +
                             "<=" + quoted(window_.until) + ")";
                break;
            case Span::since:
                statement +=
                    moment() + ">=" + quoted(window_.from) + " and " + moment() + "<" + quoted(window_.until);
                break;
            case Span::day:
                statement += Sql("(") + moment() + ">" + quoted(window_.from) + " and " + moment() +
                             "<=" + quoted(window_.until) + ")";
                break;
        }
    }

    // The row's moment: its date joined with its time, a missing time counting as midnight.
    Sql moment() const {
        return Sql("cast(convert(varchar,") + date_column(procedure_, shape_) +
               ",101) + ' ' + isnull(convert(varchar,[time_],8)," + procedure_.missing_time +
               ") as datetime)";
    }

    const Procedure& procedure_;
    const Term& term_;
    const Shape& shape_;
    const Drawer& drawer_;
    const Window& window_;
};

}  // namespace

Sql sum_statement(const Procedure& procedure, Movement movement, const Drawer& drawer, const Window& window) {
    return Composer(procedure, movement, drawer, window).sum();
}

Sql rows_statement(const Procedure& procedure, Movement movement, const Drawer& drawer,
                   const Window& window) {
    return Composer(procedure, movement, drawer, window).rows();
}

}  // namespace cash
