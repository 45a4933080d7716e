// Child processes, for tests that give up permissions, fill the disk or kill the program.
#pragma once

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <functional>

namespace test {

// Starts `body` in a child process, which exits with 0 if it returns true.
inline pid_t start_child(const std::function<bool()>& body) {
    const pid_t child = fork();
    if (child != 0) return child;
    bool good = false;
    try {
        good = body();
    } catch (...) {
    }
    _exit(good ? 0 : 1);
}

// The status of a child that has ended.
inline int wait_for(pid_t child) {
    int status = 0;
    waitpid(child, &status, 0);
    return status;
}

// Runs `body` in a child process. Returns true if it returned true. Failed expectations of the child are
// printed, but count only through the result.
inline bool in_child(const std::function<bool()>& body) {
    return wait_for(start_child(body)) == 0;
}

// Gives up the rights of root, whom no permission stops. Returns false if that failed.
inline bool become_nobody() {
    constexpr uid_t nobody = 65534;
    return geteuid() != 0 || setuid(nobody) == 0;
}

// From now on no file grows beyond this size, as on a full disk.
inline void fill_disk(rlim_t bytes) {
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{bytes, bytes};
    setrlimit(RLIMIT_FSIZE, &limit);
}

}  // namespace test
