// Work in a process of its own, for tests that take rights or disk space away.
#pragma once

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <functional>

namespace test {

// Runs something in a child; true when it answered true and did not end otherwise. Failed expectations of the
// child are printed, but count only through the answer.
inline bool in_child(const std::function<bool()>& body) {
    const pid_t child = fork();
    if (child == 0) {
        bool good = false;
        try {
            good = body();
        } catch (...) {
        }
        _exit(good ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

// Gives up the administrator's rights, whom no permission stops; the files must be open to everybody.
inline bool become_nobody() {
    constexpr uid_t nobody = 65534;
    return geteuid() != 0 || setuid(nobody) == 0;
}

// From here on no file grows beyond this size, as on a disk that is full.
inline void fill_disk(rlim_t bytes) {
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{bytes, bytes};
    setrlimit(RLIMIT_FSIZE, &limit);
}

}  // namespace test
