#include "settings/FileType.h"

#include <array>
#include <utility>

#include "settings/modRegistry.h"

namespace burnwick::modUtility {

namespace {

constexpr const char* Extension = ".bin";
constexpr const char* FileType = "Burnwick";
constexpr const char* Command = R"(Burnwick\shell\open\command)";
// The file's place in the command, unquoted.
constexpr const char* Argument = " %1";

struct Place {
    RegistryRoot Root;
    std::string Prefix;
};

// What one user has associated comes before what all have.
const std::array<Place, 2>& Places() {
    static const std::array<Place, 2> places{
        {{RegistryRoot::ClassesRoot, ""}, {RegistryRoot::CurrentUser, R"(Software\Classes\)"}}};
    return places;
}

bool RegisterIn(Registry& registry, const Place& place, const std::string& program) {
    const std::array<std::pair<std::string, std::string>, 6> keys{{
        {Extension, FileType},
        {FileType, "Burnwick File"},
        {R"(Burnwick\DefaultIcon)", program + ",0"},
        {R"(Burnwick\shell)", ""},
        {R"(Burnwick\shell\open)", "&Flash with Burnwick"},
        {Command, program + Argument},
    }};
    for (const auto& [key, value] : keys) {
        if (!modRegistry::SetKeyValue(registry, place.Root, place.Prefix + key, value)) {
            return false;
        }
    }
    return true;
}

void UnregisterIn(Registry& registry, const Place& place) {
    const std::string extension = place.Prefix + Extension;
    if (modRegistry::GetKeyValue(registry, place.Root, extension, "") == FileType) {
        modRegistry::DeleteKey(registry, place.Root, extension);
    }
    modRegistry::DeleteKey(registry, place.Root, place.Prefix + FileType);
}

}  // namespace

void RegisterFileType(Registry& registry, const std::string& program) {
    for (const Place& place : Places()) {
        if (RegisterIn(registry, place, program)) {
            return;
        }
    }
}

void UnregisterFileType(Registry& registry) {
    for (const Place& place : Places()) {
        UnregisterIn(registry, place);
    }
}

std::string AssociatedProgram(const Registry& registry) {
    std::string command = modRegistry::GetKeyValue(registry, RegistryRoot::ClassesRoot, Command, "");
    const std::size_t rest = std::string(Argument).size();
    command.resize(command.size() > rest ? command.size() - rest : 0);
    return command;
}

}  // namespace burnwick::modUtility
