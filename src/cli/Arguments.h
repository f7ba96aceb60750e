#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace burnwick::cli {

// What a verb takes on the command line, and where each piece goes. The texts are those of its help.
class Arguments {
public:
    // Declares for this verb. It must outlive what is declared.
    explicit Arguments(CLI::App& verb) : Verb_(verb) {}

    // Words that must be given, by their place.
    void AddRequired(const std::string& name, std::string& into, const std::string& help);
    void AddRequired(const std::string& name, std::vector<std::string>& into, const std::string& help);

    void AddFlag(const std::string& name, bool& into, const std::string& help);

    // An option with a value; `value` is what the help calls it.
    void AddOption(const std::string& name, std::string& into, const std::string& value,
                   const std::string& help);

    // An option with one of these values.
    void AddChoice(const std::string& name, std::string& into, const std::string& value,
                   const std::vector<std::string>& choices, const std::string& help);
    void AddRequiredChoice(const std::string& name, std::string& into, const std::string& value,
                           const std::vector<std::string>& choices, const std::string& help);

    // A call as it is typed, shown below the help.
    void AddExample(const std::string& call);

private:
    CLI::App& Verb_;
};

}  // namespace burnwick::cli
