#include "common/port_transfer.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <utility>

#include "common/ports.h"

namespace common {

using std::chrono::steady_clock;

namespace {

// While an object exists, writing to a pipe without a reader fails instead of ending the program by a signal.
class BrokenPipeGuard {
  public:
    BrokenPipeGuard() {
        sigemptyset(&pipe_);
        sigaddset(&pipe_, SIGPIPE);
        pthread_sigmask(SIG_BLOCK, &pipe_, &before_);
    }
    ~BrokenPipeGuard() {
        const timespec at_once{};
        while (sigtimedwait(&pipe_, nullptr, &at_once) == SIGPIPE) {
        }
        pthread_sigmask(SIG_SETMASK, &before_, nullptr);
    }
    BrokenPipeGuard(const BrokenPipeGuard&) = delete;
    BrokenPipeGuard& operator=(const BrokenPipeGuard&) = delete;

  private:
    sigset_t pipe_{};
    sigset_t before_{};
};

bool is_pipe(int descriptor) {
    struct stat form {};
    return fstat(descriptor, &form) == 0 && S_ISFIFO(form.st_mode);
}

// Reads back what is left in a pipe, so that nobody else gets it.
void empty_pipe(int descriptor) {
    const std::string self = "/proc/self/fd/" + std::to_string(descriptor);
    const Descriptor reader(open(self.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    std::array<char, 4096> dropped{};
    while (reader.is_open() && read(reader.get(), dropped.data(), dropped.size()) > 0) {
    }
}

}  // namespace

PortTransfer::PortTransfer(Descriptor port, std::string bytes)
    : port_(std::move(port)), bytes_(std::move(bytes)), moved_(steady_clock::now()) {}

PortTransfer::State PortTransfer::advance() {
    const BrokenPipeGuard guard;
    while (written_ < bytes_.size()) {
        const ssize_t count = write(port_.get(), bytes_.data() + written_, bytes_.size() - written_);
        if (count == 0 || (count < 0 && errno == EAGAIN)) break;
        if (count > 0)
            written_ += static_cast<std::size_t>(count);
        else if (errno != EINTR)
            return fail(fault_of(errno));
    }
    const std::size_t left = bytes_.size() - written_ + waiting();
    if (left == 0) return State::done;
    if (left != left_) {
        left_ = left;
        moved_ = steady_clock::now();
    }
    return steady_clock::now() - moved_ < port_patience ? State::under_way : fail(PortFault::silent);
}

PortTransfer::State PortTransfer::fail(PortFault fault) {
    fault_ = fault;
    abandon();
    return State::failed;
}

// The bytes that are written but still buffered by the system. A USB printer does not report how many, only
// that it has not taken the last ones; closing its port would lose them.
std::size_t PortTransfer::waiting() const {
    int count = 0;
    if (isatty(port_.get()) != 0) {
        if (ioctl(port_.get(), TIOCOUTQ, &count) != 0) return 0;
    } else if (is_pipe(port_.get())) {
        if (ioctl(port_.get(), FIONREAD, &count) != 0) return 0;
    } else {
        pollfd ready{port_.get(), POLLOUT, 0};
        count = poll(&ready, 1, 0) == 1 && (ready.revents & POLLOUT) != 0 ? 0 : 1;
    }
    return static_cast<std::size_t>(std::max(count, 0));
}

bool PortTransfer::is_slow_to_close() const {
    return isatty(port_.get()) != 0;
}

// Closing a serial port would wait for its bytes for half a minute and more.
void PortTransfer::abandon() {
    bytes_.resize(written_);
    if (isatty(port_.get()) != 0)
        tcflush(port_.get(), TCOFLUSH);
    else if (is_pipe(port_.get()))
        empty_pipe(port_.get());
}

}  // namespace common
