#include "startup/workstation.h"

#include <arpa/inet.h>
#include <netdb.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <future>
#include <memory>
#include <thread>

#include "common/text.h"
#include "database/sqlserver/address.h"
#include "startup/connection_file.h"

namespace startup {

namespace fs = std::filesystem;

namespace {

std::string numeric_address(const addrinfo& entry) {
    std::array<char, 64> text{};
    if (getnameinfo(entry.ai_addr, entry.ai_addrlen, text.data(), text.size(), nullptr, 0, NI_NUMERICHOST) !=
        0) {
        return {};
    }
    return text.data();
}

// Asks the system's resolver, however long that takes; empty if it knows no address.
std::string resolve(const std::string& machine) {
    addrinfo wanted{};
    wanted.ai_socktype = SOCK_STREAM;
    addrinfo* list = nullptr;
    if (getaddrinfo(machine.c_str(), nullptr, &wanted, &list) != 0) return {};
    const std::unique_ptr<addrinfo, decltype(&freeaddrinfo)> owner(list, freeaddrinfo);
    for (const int family : {AF_INET, AF_INET6}) {
        for (const addrinfo* entry = list; entry != nullptr; entry = entry->ai_next) {
            if (entry->ai_family == family) return numeric_address(*entry);
        }
    }
    return {};
}

// The resolver has no useful time-out, so a thread asks it and is abandoned if it is late.
std::string resolve_within(const std::string& machine, std::chrono::milliseconds within) {
    auto promise = std::make_shared<std::promise<std::string>>();
    std::future<std::string> answer = promise->get_future();
    std::thread([promise, machine] { promise->set_value(resolve(machine)); }).detach();
    if (answer.wait_for(within) != std::future_status::ready) return {};
    return answer.get();
}

}  // namespace

std::optional<fs::path> named_folder(const char* variable) {
    const char* folder = std::getenv(variable);
    if (folder == nullptr || *folder == '\0') return std::nullopt;
    std::error_code gone;
    const fs::path absolute = fs::absolute(folder, gone);
    return gone ? fs::path(folder) : absolute.lexically_normal();
}

fs::path program_folder() {
    if (const auto home = named_home()) return *home;
    std::error_code error;
    const fs::path program = fs::read_symlink("/proc/self/exe", error);
    return error ? fs::current_path() : program.parent_path();
}

std::string computer_name() {
    std::array<char, 256> name{};
    if (gethostname(name.data(), name.size() - 1) != 0) return {};
    return common::left(name.data(), 100);
}

bool is_this_machine(std::string_view server, std::string_view computer_name) {
    server = common::trim(server);
    computer_name = common::trim(computer_name);
    if (common::equal_ignoring_case(server, computer_name)) return !computer_name.empty();
    const std::string host = database::parse_data_source(server).host;
    if (common::equal_ignoring_case(host, "localhost") || host == "::1" || host.starts_with("127."))
        return true;
    if (host.empty() || computer_name.empty()) return false;
    if (common::equal_ignoring_case(host, computer_name)) return true;
    // One of the two may have its domain. The first part of an address is not a name.
    const auto has_domain = [](std::string_view name) { return name.find('.') != name.npos; };
    const auto without_domain = [](std::string_view name) { return name.substr(0, name.find('.')); };
    const bool is_address = host.find_first_not_of("0123456789.") == host.npos;
    return !is_address && has_domain(host) != has_domain(computer_name) &&
           common::equal_ignoring_case(without_domain(host), without_domain(computer_name));
}

std::int64_t cash_point_of(std::string_view command_line) {
    if (command_line.empty() || command_line.front() < '0' || command_line.front() > '9') return 0;
    return command_line.front() - '0';
}

std::string get_ip(std::string_view server, std::chrono::milliseconds within) {
    std::string machine(common::trim(server).substr(0, common::trim(server).find('\\')));
    std::string port;  // with its comma
    if (const auto comma = machine.find(','); comma != std::string::npos) {
        port = machine.substr(comma);
        machine.resize(comma);
    }
    if (machine.empty() || machine.find('\0') != std::string::npos) return std::string(no_address);
    const std::string address = resolve_within(machine, within);
    return address.empty() ? std::string(no_address) : address + port;
}

}  // namespace startup
