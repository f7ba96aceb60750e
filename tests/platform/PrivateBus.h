#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <systemd/sd-bus.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <future>
#include <string>
#include <thread>

#include "platform/files/linux/UniqueFd.h"

namespace burnwick::test {

// A bus of the test's own.
class PrivateBus {
public:
    explicit PrivateBus(const std::filesystem::path& folder) {
        const auto config = folder / "bus.conf";
        std::ofstream(config)
            << "<busconfig><type>session</type><listen>unix:dir=" << folder.string()
            << "</listen><policy context='default'><allow send_destination='*' eavesdrop='true'/>"
               "<allow eavesdrop='true'/><allow own='*'/></policy></busconfig>";
        std::array<int, 2> ends{};
        EXPECT_EQ(pipe(ends.data()), 0);
        const UniqueFd readEnd(ends[0]);
        UniqueFd writeEnd(ends[1]);
        Process_ = fork();
        if (Process_ == 0) {
            dup2(writeEnd.Get(), STDOUT_FILENO);
            // It complains of limits that do not matter here.
            dup2(open("/dev/null", O_WRONLY), STDERR_FILENO);
            const auto argument = "--config-file=" + config.string();
            execl(DBUS_DAEMON, DBUS_DAEMON, argument.c_str(), "--print-address=1", "--nofork", nullptr);
            _exit(127);
        }
        writeEnd.Reset();
        for (char c = 0; read(readEnd.Get(), &c, 1) == 1 && c != '\n';) {
            Address_ += c;
        }
    }
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;
    ~PrivateBus() {
        kill(Process_, SIGKILL);
        waitpid(Process_, nullptr, 0);
    }

    const std::string& Address() const { return Address_; }

private:
    pid_t Process_ = -1;
    std::string Address_;
};

// A thread that offers one object on a bus.
class BusService {
public:
    // The methods are given `self`.
    BusService(const std::string& address, const char* name, const char* path, const char* interface,
               const sd_bus_vtable* methods, void* self) {
        std::promise<void> ready;
        Thread_ = std::jthread([=, &ready](const std::stop_token& stop) {
            sd_bus* bus = nullptr;
            sd_bus_new(&bus);
            sd_bus_set_address(bus, address.c_str());
            sd_bus_set_bus_client(bus, 1);
            EXPECT_GE(sd_bus_start(bus), 0);
            EXPECT_GE(sd_bus_add_object_vtable(bus, nullptr, path, interface, methods, self), 0);
            EXPECT_GE(sd_bus_request_name(bus, name, 0), 0);
            ready.set_value();
            while (!stop.stop_requested()) {
                if (sd_bus_process(bus, nullptr) == 0) {
                    sd_bus_wait(bus, 5000);
                }
            }
            sd_bus_flush_close_unref(bus);
        });
        ready.get_future().wait();
    }

private:
    std::jthread Thread_;
};

// A bus that takes connections, and never says a word.
class DeafBus {
public:
    explicit DeafBus(const std::filesystem::path& folder) : Path_(folder / "deaf") {
        sockaddr_un name{};
        name.sun_family = AF_UNIX;
        Path_.string().copy(name.sun_path, sizeof name.sun_path - 1);
        EXPECT_EQ(bind(Fd_.Get(), reinterpret_cast<const sockaddr*>(&name), sizeof name), 0);
        EXPECT_EQ(listen(Fd_.Get(), 5), 0);
    }

    std::string Address() const { return "unix:path=" + Path_.string(); }

private:
    std::filesystem::path Path_;
    UniqueFd Fd_{socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)};
};

}  // namespace burnwick::test
