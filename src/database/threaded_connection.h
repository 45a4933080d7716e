// A connection to a server whose statements run in a separate thread, so that the calling thread can keep its
// screen alive while the server is silent.
#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <stop_token>
#include <thread>

#include "database/connection.h"

namespace database {

// What the calling thread does until its statement has ended.
class Wait {
  public:
    virtual ~Wait() = default;
    // Called before each statement: how long the thread may stand still for it.
    virtual std::chrono::milliseconds patience() = 0;
    // Called when that time is over. Returns once `ended` returns true, or false to give the statement up.
    virtual bool wait(const std::function<bool()>& ended) = 0;
    // Called in the connection's thread when the statement that wait() was called for has ended.
    virtual void wake() = 0;
    // Called after each statement, with its error or null.
    virtual void ended(const std::exception* error) = 0;
};

// A connection whose wait for a server can be ended from another thread.
class Stoppable {
  public:
    virtual ~Stoppable() = default;
    // From now on a request to stop ends the wait as if its time were over, and a statement that is run after
    // the request fails without being sent.
    virtual void set_stop(std::stop_token stop) = 0;
};

// A statement that was given up is cut off and throws Error HYT00 at once. It may have run, but it never runs
// after the next statement. Only one thread may use the connection.
class ThreadedConnection final : public Connection {
  public:
    // `wait` must live as long as the connection.
    ThreadedConnection(std::unique_ptr<Connection> real, Wait& wait);
    ~ThreadedConnection() override;

    // A statement is durable as soon as the server has answered.
    void make_durable() override {}
    bool is_embedded() const override { return false; }
    Table describe(std::string_view table) override;
    std::shared_ptr<const Table> description(std::string_view table) override;
    void describe_all(const std::vector<std::string>& tables) override;
    Outcome run(std::string_view statement, const std::vector<Value>& values) override;

    std::vector<Outcome> run_all(const std::vector<Command>& commands) override;

    // Runs `work` in the connection's thread, on the real connection, and returns at once. A statement that
    // is asked for meanwhile waits for its end.
    void run_later(std::function<void(Connection&)> work);

  private:
    struct Task {
        std::function<void(Connection&)> work;
        std::stop_source stop{};
        std::exception_ptr error{};
        bool is_waited_for = false;
        bool has_ended = false;
    };
    // Runs `work` in the connection's thread and returns its result. The error names `what` if it is given
    // up.
    template <typename Answer>
    Answer ask(std::string_view what, std::function<Answer(Connection&)> work);
    void run_task(const std::shared_ptr<Task>& task, std::string_view what);
    void submit(const std::shared_ptr<Task>& task);
    void work();

    std::unique_ptr<Connection> real_;
    Stoppable* stoppable_;
    Wait& wait_;
    bool is_asking_ = false;
    std::mutex lock_;
    std::condition_variable submitted_;
    std::condition_variable task_ended_;
    std::deque<std::shared_ptr<Task>> tasks_;
    bool is_ending_ = false;
    std::thread thread_;
};

}  // namespace database
