#include "play/mortal_connection.h"

#include <unistd.h>

#include "common/text.h"
#include "database/error.h"

namespace play {

void MortalConnection::kill_when(std::string text) {
    deadly_ = common::lower_ascii(text);
}

void MortalConnection::fail_when(std::string text, std::string sqlstate) {
    failing_ = common::lower_ascii(text);
    sqlstate_ = std::move(sqlstate);
}

database::Connection::Outcome MortalConnection::run(std::string_view statement,
                                                    const std::vector<database::Value>& values) {
    if (!deadly_.empty() || !failing_.empty()) {
        const std::string text = common::lower_ascii(statement);
        if (!deadly_.empty() && text.find(deadly_) != std::string::npos) _exit(killed);
        if (!failing_.empty() && text.find(failing_) != std::string::npos) {
            failing_.clear();
            throw database::Error(sqlstate_, "failed on purpose", std::string(statement));
        }
    }
    // A play is played on the day that it says, whatever day it is.
    if (statement == "select getdate()") {
        auto columns = std::make_shared<const database::Columns>(std::vector<std::string>{""});
        return {database::Result(columns, {database::Row(columns, {clock_.now()})}), 0};
    }
    return real_->run(statement, values);
}

}  // namespace play
