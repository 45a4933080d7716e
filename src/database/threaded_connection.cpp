#include "database/threaded_connection.h"

#include <stdexcept>
#include <utility>

namespace database {

ThreadedConnection::ThreadedConnection(std::unique_ptr<Connection> real, Wait& wait)
    : real_(std::move(real)),
      stoppable_(dynamic_cast<Stoppable*>(real_.get())),
      wait_(wait),
      thread_([this] { work(); }) {}

ThreadedConnection::~ThreadedConnection() {
    {
        const std::lock_guard guard(lock_);
        is_ending_ = true;
        for (const auto& task : tasks_)
            task->stop.request_stop();
    }
    submitted_.notify_one();
    thread_.join();
}

template <typename Answer>
Answer ThreadedConnection::ask(std::string_view what, std::function<Answer(Connection&)> work) {
    // Owned by the task as well, which outlives this call if it is given up.
    const auto answer = std::make_shared<std::optional<Answer>>();
    const auto task = std::make_shared<Task>();
    task->work = [answer, work = std::move(work)](Connection& real) { answer->emplace(work(real)); };
    run_task(task, what);
    return std::move(**answer);
}

Connection::Table ThreadedConnection::describe(std::string_view table) {
    return ask<Table>(table, [name = std::string(table)](Connection& real) { return real.describe(name); });
}

std::shared_ptr<const Connection::Table> ThreadedConnection::description(std::string_view table) {
    return ask<std::shared_ptr<const Table>>(
        table, [name = std::string(table)](Connection& real) { return real.description(name); });
}

void ThreadedConnection::describe_all(const std::vector<std::string>& tables) {
    ask<bool>("describe", [tables](Connection& real) {
        real.describe_all(tables);
        return true;
    });
}

Connection::Outcome ThreadedConnection::run(std::string_view statement, const std::vector<Value>& values) {
    return ask<Outcome>(statement, [text = std::string(statement), values](Connection& real) {
        return real.run(text, values);
    });
}

std::vector<Connection::Outcome> ThreadedConnection::run_all(const std::vector<Command>& commands) {
    if (commands.empty()) return {};
    try {
        return ask<std::vector<Outcome>>(commands.front().text(),
                                         [commands](Connection& real) { return real.run_all(commands); });
    } catch (const BatchError&) {
        throw;
    } catch (const Error& error) {
        throw BatchError(error, 0);  // given up: nobody knows how far it came
    }
}

void ThreadedConnection::run_later(std::function<void(Connection&)> work) {
    const auto task = std::make_shared<Task>();
    task->work = std::move(work);
    submit(task);
}

void ThreadedConnection::submit(const std::shared_ptr<Task>& task) {
    {
        const std::lock_guard guard(lock_);
        tasks_.push_back(task);
    }
    submitted_.notify_one();
}

void ThreadedConnection::run_task(const std::shared_ptr<Task>& task, std::string_view what) {
    // Whatever runs while a statement is waited for must not begin another, which would run in the middle of
    // an action.
    if (is_asking_) throw std::logic_error("a statement is asked for while another is waited for");
    const auto patience = wait_.patience();
    submit(task);
    const auto has_ended = [&] { return task->has_ended; };
    std::unique_lock guard(lock_);
    if (!task_ended_.wait_for(guard, patience, has_ended)) {
        task->is_waited_for = true;
        is_asking_ = true;
        guard.unlock();
        const bool has_waited = wait_.wait([&] {
            const std::lock_guard held(lock_);
            return task->has_ended;
        });
        guard.lock();
        is_asking_ = false;
        if (!has_waited && !task->has_ended) {
            guard.unlock();
            task->stop.request_stop();
            const Error error("HYT00", "The cashier gave up waiting for the server.", std::string(what));
            wait_.ended(&error);
            throw error;
        }
    }
    guard.unlock();
    try {
        if (task->error) std::rethrow_exception(task->error);
    } catch (const std::exception& error) {
        wait_.ended(&error);
        throw;
    }
    wait_.ended(nullptr);
}

void ThreadedConnection::work() {
    std::unique_lock guard(lock_);
    for (;;) {
        submitted_.wait(guard, [&] { return is_ending_ || !tasks_.empty(); });
        if (tasks_.empty()) return;
        // It stays in the queue while it runs, so that it can be stopped at the end.
        const std::shared_ptr<Task> task = tasks_.front();
        guard.unlock();
        try {
            if (stoppable_ != nullptr) stoppable_->set_stop(task->stop.get_token());
            if (!task->stop.stop_requested()) task->work(*real_);
        } catch (...) {
            task->error = std::current_exception();
        }
        guard.lock();
        tasks_.pop_front();
        task->has_ended = true;
        if (task->is_waited_for) wait_.wake();
        task_ended_.notify_one();
    }
}

}  // namespace database
