#include "cli/Arguments.h"

#include <CLI/CLI.hpp>
#include <string>

namespace burnwick::cli {

namespace {

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

}  // namespace burnwick::cli
