// How a start gets its connection, and waits for a server that does not answer.
#include <exception>

#include "startup/messages.h"
#include "startup/shop_files.h"
#include "startup/start_up.h"
#include "startup/workstation.h"

namespace startup {

// Returns false if the cashier gave up waiting for the server.
bool StartUp::connect() {
    progress("connecting to " + source_.data_source);
    if (source_.is_embedded() || !environment_.wait_for_server)
        open();
    else if (!wait_for_server())
        return false;
    progress("connected");
    return true;
}

void StartUp::open() {
    connection_ =
        open_shop(record_, environment_.program_folder, environment_.working_folder, environment_.open);
}

// Only a server that does not answer is waited for; any other error ends the start at once.
bool StartUp::wait_for_server() {
    std::exception_ptr other;
    std::string silence;  // why the first attempt did not reach the server
    const auto attempt = [&] {
        try {
            open();
        } catch (const database::Error& error) {
            using Kind = database::Error::Kind;
            const bool is_silent = error.kind() == Kind::server_missing ||
                                   error.kind() == Kind::connection_lost || error.kind() == Kind::timed_out;
            if (!is_silent) {
                other = std::current_exception();
                return true;
            }
            if (silence.empty()) {
                silence = error.what();
                services_.log.log_event("waiting for the server: " + silence, failure_log_code);
            }
            if (store_server_address()) {
                record_.address = found_address_;
                source_ = data_source_of(record_);
            }
            return false;
        } catch (...) {
            other = std::current_exception();
        }
        return true;
    };
    const bool ended = environment_.wait_for_server(record_.server, attempt);
    if (other) std::rethrow_exception(other);
    if (ended) return true;
    services_.log.log_event("the cashier left while the server did not answer", failure_log_code);
    write_fatal_record(silence);
    return false;
}

// Asks the network for the server's address and stores it for the next start. Returns true if that start will
// connect to another data source than this one did.
bool StartUp::store_server_address() {
    try {
        std::string address = environment_.get_ip(record_.server);
        // The "C" at the end may be an addition to the machine's name.
        if (address == no_address && source_.server != record_.server)
            address = environment_.get_ip(source_.server);
        if (address == found_address_) return false;
        found_address_ = address;
        services_.log.log_event("address of " + record_.server + ": " + address, failure_log_code);
        if (address == no_address) return false;
        write_server_address(environment_.program_folder, address);
        return data_source_of({record_.server, record_.database, address}).data_source != source_.data_source;
    } catch (const std::exception& error) {
        services_.log.log_event(std::string("the server's address was not kept: ") + error.what(),
                                failure_log_code);
        return false;
    }
}

}  // namespace startup
