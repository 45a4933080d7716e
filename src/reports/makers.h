// What makes the table of each kind of report.
#pragma once

#include <memory>

#include "reports/report.h"

namespace reports {

class Maker {
  public:
    virtual ~Maker() = default;
    virtual int steps() const { return 1; }
    // The step of that number, counted from 0.
    virtual void step(int number) = 0;
    virtual Table table() = 0;
};

// For the kinds that sum invoices, in steps of a calendar quarter.
std::unique_ptr<Maker> make_of_invoices(database::Connection& connection, const Request& request);
// Likewise for the kinds that sum lines.
std::unique_ptr<Maker> make_of_lines(database::Connection& connection, const Request& request);
// Reports of suppliers, ages of debts, stock, cash and closed days, made in one step.
Table table_of_suppliers(database::Connection& connection, const Request& request);
Table table_of_ages(database::Connection& connection, const Request& request);
Table table_of_stock(database::Connection& connection, const Request& request);
Table table_of_cash(database::Connection& connection, const Request& request);
Table table_of_closed_days(database::Connection& connection, const Request& request);

}  // namespace reports
