// Prompts, clock, devices and log that record what they are given, for tests of logic.
#pragma once

#include <deque>
#include <map>
#include <string>
#include <vector>

#include "common/services.h"

namespace test {

class RememberedPrompts final : public common::Prompts {
  public:
    void message(std::string_view text, common::Icon icon) override {
        messages.emplace_back(text);
        last_icon = icon;
    }
    // Answers with the next of `answers`, else No; closes the box instead if `closes` is set.
    common::Answer choose(std::string_view text, const common::Choices&, common::Icon icon) override {
        questions.emplace_back(text);
        last_icon = icon;
        if (closes) return common::Answer::closed;
        if (answers.empty()) return common::Answer::no;
        const bool yes = answers.front();
        answers.pop_front();
        return yes ? common::Answer::yes : common::Answer::no;
    }
    std::string last() const { return messages.empty() ? std::string() : messages.back(); }

    std::vector<std::string> messages;
    std::vector<std::string> questions;
    std::deque<bool> answers;
    bool closes = false;
    common::Icon last_icon = common::Icon::none;
};

class FixedClock final : public common::Clock {
  public:
    common::Moment now() override { return moment; }
    bool set(const common::Moment& to) override {
        if (!may_set) return false;
        moment = to;
        return true;
    }
    std::chrono::milliseconds running() override { return ran; }
    common::Moment moment{{2026, 11, 21}, {10, 42, 0, 0}};
    std::chrono::milliseconds ran{};
    bool may_set = true;
};

class RememberedDevices final : public common::Devices {
  public:
    common::PortFault write_port(std::string_view port, std::string_view bytes, std::string_view) override {
        if (fault == common::PortFault::none) ports[std::string(port)] += bytes;
        return fault;
    }
    bool write_file(std::string_view name, std::string_view bytes) override {
        if (fault != common::PortFault::none) return false;
        files[std::string(name)] = bytes;
        return true;
    }
    std::map<std::string, std::string> ports;
    std::map<std::string, std::string> files;
    common::PortFault fault = common::PortFault::none;
};

class RememberedLog final : public common::Log {
  public:
    void log_event(std::string_view message, std::string_view code) override {
        lines.push_back(std::string(message) + "  ----  " + std::string(code));
    }
    std::vector<std::string> lines;
};

struct RememberedServices {
    RememberedPrompts prompts;
    FixedClock clock;
    RememberedDevices devices;
    RememberedLog log;
    common::Services all() { return {prompts, clock, devices, log}; }
};

}  // namespace test
