// The guard: every error has its words, a log line, and ends the action only.
#include "ui/guard.h"

#include <gtest/gtest.h>

#include <new>

#include "database/error.h"
#include "database/error_words.h"
#include "support/outside.h"
#include "ui/messages.h"

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
        {Error("HY000", "database or disk is full", "insert"), database::message::disk_full},
        {Error("HY000", "attempt to write a readonly database", "insert"), database::message::read_only},
        {Error("HY000", "database is locked", "insert"), database::message::busy},
        {Error("40001", "the row was changed", "update"), database::message::changed_meanwhile},
        {Error("42000", "syntax error", "selec"), ui::message::failed},
    };
    for (const auto& [error, words] : cases) {
        test::RememberedOutside outside;
        const bool done = ui::guarded(outside.all(), "Action", [&] { throw error; });
        EXPECT_FALSE(done);
        EXPECT_EQ(outside.prompts.last(), words) << error.what();
        ASSERT_EQ(outside.log.lines.size(), 1U);
        EXPECT_NE(outside.log.lines[0].find(error.what()), std::string::npos);
        EXPECT_NE(outside.log.lines[0].find(error.statement()), std::string::npos);
    }
}

TEST(Guard, OutlivesErrorsOfOtherKinds) {
    test::RememberedOutside outside;
    EXPECT_FALSE(ui::guarded(outside.all(), "Action", [] { throw std::bad_alloc(); }));
    EXPECT_EQ(outside.prompts.last(), ui::message::failed);
    EXPECT_TRUE(ui::guarded(outside.all(), "Action", [] {}));
    EXPECT_EQ(outside.prompts.messages.size(), 1U);
}

}  // namespace
