#include "support/faulty_connection.h"

namespace test {

using database::Connection;
using database::Error;

void FaultyConnection::fail_at(std::int64_t n, Fault fault) {
    fail_at_ = count() + n;
    fault_ = fault;
    has_failed_ = false;
}

void FaultyConnection::call_before(std::int64_t n, std::function<void()> what) {
    call_at_ = count() + n;
    call_ = std::move(what);
}

void FaultyConnection::call_between(std::int64_t n, std::function<void()> what) {
    call_from_ = count() + n;
    call_ = std::move(what);
}

void FaultyConnection::call_at(std::string text, std::function<void()> what) {
    call_text_ = std::move(text);
    call_ = std::move(what);
}

void FaultyConnection::stop_failing() {
    fail_at_ = call_at_ = call_from_ = 0;
    lost_ = false;
}

void FaultyConnection::check_lost(std::string_view statement) const {
    if (lost_) throw Error("08S01", "Communication link failure", std::string(statement));
}

Connection::Outcome FaultyConnection::run(std::string_view statement,
                                          const std::vector<database::Value>& values) {
    statements_.emplace_back(statement);
    if (count() == call_at_) call_();
    if (!call_text_.empty() && statement.find(call_text_) != std::string_view::npos) {
        call_text_.clear();
        call_();
    }
    if (call_from_ != 0 && count() >= call_from_ && !in_transaction_) {
        call_from_ = 0;
        call_();
    }
    if (count() == fail_at_) {
        has_failed_ = true;
        if (fault_ == Fault::passing)
            throw Error("HY000", "The statement failed on purpose.", std::string(statement));
        lose();
    }
    check_lost(statement);
    Outcome outcome = inner_.run(statement, values);
    if (statement.ends_with(" transaction")) in_transaction_ = statement.starts_with("begin");
    return outcome;
}

void FaultyConnection::lose() {
    lost_ = true;
    if (in_transaction_) inner_.run("rollback transaction", {});
    in_transaction_ = false;
}

void FaultyConnection::make_durable() {
    check_lost("");
    inner_.make_durable();
}

Connection::Table FaultyConnection::describe(std::string_view table) {
    check_lost("");
    return inner_.describe(table);
}

std::shared_ptr<const Connection::Table> FaultyConnection::description(std::string_view table) {
    check_lost("");
    return inner_.description(table);
}

}  // namespace test
