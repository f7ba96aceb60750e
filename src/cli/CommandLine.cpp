// The only source that includes the option parser: its header takes seconds to compile.
#include "cli/CommandLine.h"

#include <CLI/CLI.hpp>
#include <array>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "cli/Arguments.h"
#include "cli/CompareVerb.h"
#include "cli/DownloadVerb.h"
#include "cli/InfoVerb.h"
#include "cli/PortsVerb.h"
#include "cli/UploadVerb.h"
#include "cli/Verb.h"
#include "cli/VerifyVerb.h"

namespace burnwick::cli {

namespace {

constexpr const char* ExitStatuses = R"(Exit status:
  0 done               4 canceled
  1 no response        5 port not available
  2 transmitting error 6 file missing, unreadable or not an image
  3 not compatible     7 verification or comparison found differences
                       64 wrong usage)";

// The first argument when it ought to be a verb and is none; empty otherwise.
std::string UnknownVerb(const CLI::App& app, const std::vector<std::string>& arguments) {
    if (arguments.empty() || arguments.front().starts_with('-')) {
        return {};
    }
    const auto named =
        app.get_subcommands([&](const CLI::App* verb) { return verb->get_name() == arguments.front(); });
    return named.empty() ? arguments.front() : "";
}

// The message of a wrong call in one line, with what to do about it.
std::string WordUsageError(const CLI::App& app, const CLI::ParseError& error) {
    const auto chosen = app.get_subcommands();
    const std::string verb = chosen.empty() ? "" : " " + chosen.front()->get_name();
    std::string text = error.what();
    for (auto& character : text) {
        character = character == '\n' ? ' ' : character;
    }
    return text + ". Try: burnwick-cli" + verb + " --help";
}

// What cannot be printed is told as an error: an empty file must not pass for an answer.
int Execute(Verb& verb, Environment& environment) {
    const int status = verb.Execute(environment);
    if (environment.Out.flush()) {
        return status;
    }
    PrintError(environment.Err, "the output cannot be written. Is the disk full, or its reader gone?");
    return status == Done && !verb.IsRun() ? FileUnusable : status;
}

CLI::Option& Choice(CLI::App& verb, const std::string& name, std::string& into, const std::string& value,
                    const std::vector<std::string>& choices, const std::string& help) {
    return *verb.add_option(name, into, help)->type_name(value)->check(CLI::IsMember(choices));
}

}  // namespace

void Arguments::AddRequired(const std::string& name, std::string& into, const std::string& help) {
    Verb_.add_option(name, into, help)->required();
}

void Arguments::AddRequired(const std::string& name, std::vector<std::string>& into,
                            const std::string& help) {
    Verb_.add_option(name, into, help)->required();
}

void Arguments::AddFlag(const std::string& name, bool& into, const std::string& help) {
    Verb_.add_flag(name, into, help);
}

void Arguments::AddOption(const std::string& name, std::string& into, const std::string& value,
                          const std::string& help) {
    // An unset variable of a script must not count as no option.
    const auto notEmpty = [](const std::string& given) {
        return given.empty() ? std::string("it is empty") : std::string();
    };
    Verb_.add_option(name, into, help)->type_name(value)->check(notEmpty);
}

void Arguments::AddChoice(const std::string& name, std::string& into, const std::string& value,
                          const std::vector<std::string>& choices, const std::string& help) {
    Choice(Verb_, name, into, value, choices, help);
}

void Arguments::AddRequiredChoice(const std::string& name, std::string& into, const std::string& value,
                                  const std::vector<std::string>& choices, const std::string& help) {
    Choice(Verb_, name, into, value, choices, help).required();
}

void Arguments::AddExample(const std::string& call) {
    Verb_.footer("Example:\n  " + call);
}

int RunCommandLine(const std::vector<std::string>& words, Environment& environment) {
    CLI::App app("Programs, reads and checks the flash memory of a video unit over a serial line",
                 "burnwick-cli");
    app.set_version_flag("--version", "burnwick-cli " BURNWICK_VERSION " (build " BURNWICK_BUILD ")");
    app.require_subcommand(1);
    // "/images/unit.bin" is a path on every system.
    app.allow_windows_style_options(false);
    app.footer(ExitStatuses);
    std::array<std::pair<std::unique_ptr<Verb>, CLI::App*>, 6> verbs{{
        {std::make_unique<DownloadVerb>(), nullptr},
        {std::make_unique<UploadVerb>(), nullptr},
        {std::make_unique<VerifyVerb>(), nullptr},
        {std::make_unique<InfoVerb>(), nullptr},
        {std::make_unique<CompareVerb>(), nullptr},
        {std::make_unique<PortsVerb>(), nullptr},
    }};
    for (auto& [verb, parser] : verbs) {
        parser = app.add_subcommand(verb->Name(), verb->Help());
        Arguments arguments(*parser);
        verb->Declare(arguments);
    }
    if (const std::string unknown = UnknownVerb(app, words); !unknown.empty()) {
        PrintError(environment.Err, unknown + ": no such verb. Try: burnwick-cli --help");
        return WrongUsage;
    }
    try {
        app.parse(std::vector<std::string>(words.rbegin(), words.rend()));
    } catch (const CLI::Success& wanted) {
        return app.exit(wanted, environment.Out, environment.Err);
    } catch (const CLI::ParseError& error) {
        PrintError(environment.Err, WordUsageError(app, error));
        return WrongUsage;
    }
    for (auto& [verb, parser] : verbs) {
        if (parser->parsed()) {
            return Execute(*verb, environment);
        }
    }
    return WrongUsage;
}

}  // namespace burnwick::cli
