// The guard: every error has its words, a log line, and ends the action only.
#include "ui/widgets/guard.h"

#include <gtest/gtest.h>

#include <new>

#include "database/error.h"
#include "support/services.h"
#include "ui/widgets/messages.h"

namespace {

TEST(Guard, SaysWhatWentWrongInTheCashiersWords) {
    using database::Error;
    const struct {
        Error error;
        std::string_view words;
    } cases[] = {
        {Error("08S01", "Communication link failure", "select 1"), database::message::connection_lost},
        {Error("08001", "SQL Server does not exist or access denied.", ""),
         database::message::connection_lost},
        {Error("HYT00", "Timeout expired", "select 1"), database::message::timed_out},
        {Error("HY000", "database or disk is full", "insert", Error::Kind::disk_full),
         database::message::disk_full},
        {Error("HY000", "attempt to write a readonly database", "insert", Error::Kind::read_only),
         database::message::read_only},
        {Error("HYT00", "database is locked", "insert", Error::Kind::busy), database::message::busy},
        {Error("40001", "the row was changed", "update"), database::message::changed_meanwhile},
        {Error("42000", "syntax error", "selec"), ui::message::failed},
    };
    for (const auto& [error, words] : cases) {
        test::RememberedServices services;
        const bool done = ui::guarded(services.all(), "Action", [&] { throw error; });
        EXPECT_FALSE(done);
        EXPECT_EQ(services.prompts.last(), words) << error.what();
        ASSERT_EQ(services.log.lines.size(), 1U);
        EXPECT_NE(services.log.lines[0].find(error.what()), std::string::npos);
        EXPECT_NE(services.log.lines[0].find(error.statement()), std::string::npos);
    }
}

TEST(Guard, OutlivesErrorsOfOtherKinds) {
    test::RememberedServices services;
    EXPECT_FALSE(ui::guarded(services.all(), "Action", [] { throw std::bad_alloc(); }));
    EXPECT_EQ(services.prompts.last(), ui::message::failed);
    EXPECT_TRUE(ui::guarded(services.all(), "Action", [] {}));
    EXPECT_EQ(services.prompts.messages.size(), 1U);
}

}  // namespace
