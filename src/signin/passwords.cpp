#include "signin/passwords.h"

#include "common/numbers.h"
#include "common/text.h"
#include "signin/messages.h"

namespace signin {

namespace {

using common::Icon;

std::string text_of(Attempts::Time pause) {
    if (pause == Attempts::Time()) return {};
    const auto seconds = (pause.count() + 999) / 1000;
    const std::string two_digits = std::to_string(100 + seconds % 60).substr(1);
    return std::string(message::wait_before) + std::to_string(seconds / 60) + ":" + two_digits +
           std::string(message::wait_after);
}

}  // namespace

bool same_password(std::string_view a, std::string_view b) {
    return common::western_digits(common::trim_blanks(a)) == common::western_digits(common::trim_blanks(b));
}

std::string pause_text(const Session& session, common::Clock& clock, std::int64_t user) {
    return text_of(session.attempts.pause(user, clock.running()));
}

bool is_password(Session& session, common::Services& services, const TypedPassword& password) {
    if (const std::string wait = pause_text(session, services.clock, password.user); !wait.empty()) {
        services.prompts.message(wait, Icon::exclamation);
        return false;
    }
    if (password.stored && same_password(password.typed, *password.stored)) {
        session.attempts.right(password.user);
        return true;
    }
    session.attempts.wrong(password.user, services.clock.running());
    services.log.log_event("wrong password for user " + std::to_string(password.user), password.screen);
    session.note({.kind = audit::Kind::sign_in_refused, .what = std::string(password.noted)});
    services.prompts.message(password.refusal, Icon::exclamation);
    return false;
}

}  // namespace signin
