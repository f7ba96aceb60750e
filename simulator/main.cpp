#include <fcntl.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <chrono>
#include <cstddef>
#include <exception>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "simulator/FlashFile.h"
#include "simulator/Line.h"
#include "simulator/Link.h"
#include "simulator/PseudoTerminal.h"
#include "simulator/Server.h"
#include "simulator/Unit.h"

namespace {

using namespace simulator;

constexpr int ExitFailure = 1;
constexpr int ExitUsage = 64;
constexpr std::size_t DefaultSize = 1024UL * 1024;
constexpr std::size_t LargestSize = 16 * DefaultSize;  // as many blocks as a block number can tell apart

struct Options {
    std::string Link;
    std::string Flash;
    std::string Ident;
    bool Announce = false;
    bool Pace = false;
    unsigned MaxBaud = 115200;
    std::size_t Size = DefaultSize;
    std::vector<std::string> Faults;
    int LastBlock = -1;
    long LastLimit = 60'000;
};

std::string CheckFault(const std::string& text) {
    if (ParseFaultOrder(text)) {
        return {};
    }
    std::string message = "'" + text + "' is no fault; give NAME or NAME@BLOCK, NAME being one of";
    for (const auto& name : FaultNames()) {
        message += " " + name;
    }
    return message;
}

std::string CheckSize(const std::string& text) {
    std::size_t size = 0;
    const bool good =
        CLI::detail::lexical_cast(text, size) && size > 0 && size <= LargestSize && size % BlockSize == 0;
    return good ? std::string() : "'" + text + "' is no whole number of 256-byte blocks up to 16 MiB";
}

std::string CheckIdent(const std::string& text) {
    return text.size() == 1 ? std::string() : "'" + text + "' is not one character";
}

void Describe(CLI::App& app, Options& options) {
    app.add_option("--link", options.Link, "Keep a symbolic link PATH pointing at the line")
        ->type_name("PATH");
    app.add_option("--flash", options.Flash, "Keep the unit's memory in FILE; it is created when missing")
        ->type_name("FILE");
    app.add_option("--size", options.Size, "Bytes of memory, where no file says otherwise (1048576)")
        ->type_name("BYTES")
        ->check(CheckSize);
    app.add_option("--ident", options.Ident, "Character that the unit gives when it is asked what it is")
        ->type_name("CHAR")
        ->check(CheckIdent);
    app.add_flag("--announce", options.Announce, "Wait for the flash request, and answer no probe");
    app.add_option("--max-baud", options.MaxBaud, "Highest speed that the unit changes to (115200)")
        ->type_name("N");
    app.add_flag("--pace", options.Pace, "Let every byte take its time on the line");
    app.add_option("--fault", options.Faults,
                   "Go wrong once, at a block or during the set-up; may be repeated")
        ->type_name("NAME[@BLOCK]")
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
        ->check(CheckFault);
    app.add_option("--last-block", options.LastBlock,
                   "Last block of the transfer, for the late faults (the chip's)")
        ->type_name("BLOCK")
        ->check(CLI::NonNegativeNumber);
    app.add_option("--last-limit", options.LastLimit, "Milliseconds that the host waits at it (60000)")
        ->type_name("MS")
        ->check(CLI::PositiveNumber);
}

UnitOptions MakeUnitOptions(const Options& options, std::vector<std::byte> flash) {
    UnitOptions unit;
    unit.Flash = std::move(flash);
    unit.Ident = options.Ident.empty() ? '\0' : options.Ident.front();
    unit.Announce = options.Announce;
    unit.MaxBaud = options.MaxBaud;
    unit.LastBlockLimit = std::chrono::milliseconds(options.LastLimit);
    if (options.LastBlock >= 0) {
        unit.LastBlock = options.LastBlock;
    }
    for (const auto& text : options.Faults) {
        if (const auto order = ParseFaultOrder(text)) {
            unit.Faults.push_back(*order);
        }
    }
    return unit;
}

// Started with a standard stream closed, the program would get the line itself under that stream's number,
// and print into it.
void FillStandardStreams() {
    int descriptor = open("/dev/null", O_RDWR);
    while (descriptor >= 0 && descriptor <= STDERR_FILENO) {
        descriptor = open("/dev/null", O_RDWR);
    }
    if (descriptor >= 0) {
        close(descriptor);
    }
}

void Print(std::string_view line) {
    std::cout << line << '\n' << std::flush;
}

void Complain(const std::exception& error) {
    std::cerr << "burnwick-unit: " << error.what() << '\n';
}

void Run(const Options& options) {
    PrepareSignals();
    std::optional<FlashFile> file;
    if (!options.Flash.empty()) {
        file.emplace(options.Flash, options.Size);
    }
    PseudoTerminal terminal;
    std::optional<Link> link;
    if (!options.Link.empty()) {
        link.emplace(options.Link, terminal.HostPath());
    }
    Unit unit(MakeUnitOptions(
        options, file ? file->Contents() : std::vector<std::byte>(options.Size, std::byte{0xFF})));
    Line line(unit, options.Pace);
    Print(terminal.HostPath());
    const auto keepFlash = [&file, &unit] {
        if (file) {
            file->Keep(unit.Flash());
        }
    };
    // A memory that cannot be kept now may yet be kept at the end: only then is it a failure.
    Serve(terminal, line, unit, [&keepFlash] {
        try {
            keepFlash();
        } catch (const std::exception& error) {
            Complain(error);
        }
    });
    keepFlash();
}

}  // namespace

int main(int argc, char** argv) {
    FillStandardStreams();
    CLI::App app(
        "A simulated video unit on a pseudo-terminal. Prints the device path of its line, and serves until "
        "it is interrupted.");
    Options options;
    Describe(app, options);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : ExitUsage;
    }
    try {
        Run(options);
    } catch (const std::exception& error) {
        Complain(error);
        return ExitFailure;
    }
    return 0;
}
