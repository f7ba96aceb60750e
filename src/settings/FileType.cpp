#include "settings/FileType.h"

#include <algorithm>
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

// In the file type's key: which one the extension had before.
constexpr const char* TypeBefore = "TypeBefore";

// What a user has chosen from the file manager's "Open with" goes before every association.
constexpr const char* UsersChoice =
    R"(Software\Microsoft\Windows\CurrentVersion\Explorer\FileExts\.bin\UserChoice)";

struct Place {
    RegistryRoot Root;
    std::string Prefix;
};

const Place& OfAll() {
    static const Place place{RegistryRoot::ClassesRoot, ""};
    return place;
}

const Place& OfTheUser() {
    static const Place place{RegistryRoot::CurrentUser, R"(Software\Classes\)"};
    return place;
}

std::string TextIn(const Registry& registry, const Place& place, const std::string& key,
                   const std::string& name = "") {
    return modRegistry::GetKeyValue(registry, place.Root, place.Prefix + key, name);
}

// What one user has associated comes before what all have.
std::string TextInForce(const Registry& registry, const std::string& key) {
    const auto users = TextIn(registry, OfTheUser(), key);
    return users.empty() ? TextIn(registry, OfAll(), key) : users;
}

// False when the place refuses. A type of our own says nothing of the one before it.
bool RememberType(Registry& registry, const Place& place) {
    const auto type = TextIn(registry, place, Extension);
    const auto ownKey = place.Prefix + FileType;
    if (type.empty()) {
        registry.DeleteValue(place.Root, ownKey, TypeBefore);
    }
    return type.empty() || type == FileType || registry.StoreText(place.Root, ownKey, TypeBefore, type);
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
    return RememberType(registry, place) && std::all_of(keys.begin(), keys.end(), [&](const auto& key) {
               return modRegistry::SetKeyValue(registry, place.Root, place.Prefix + key.first, key.second);
           });
}

// A program that has been removed since is not brought back as one that opens files.
bool IsStillThere(const Registry& registry, const std::string& type) {
    return !type.empty()
           && (modRegistry::KeyExists(registry, OfAll().Root, OfAll().Prefix + type)
               || modRegistry::KeyExists(registry, OfTheUser().Root, OfTheUser().Prefix + type));
}

// The extension's key has more in it than its type, from other programs: it goes when nothing is left there.
void GiveExtensionBack(Registry& registry, const Place& place) {
    const auto key = place.Prefix + Extension;
    const auto before = TextIn(registry, place, FileType, TypeBefore);
    if (IsStillThere(registry, before)) {
        modRegistry::SetKeyValue(registry, place.Root, key, before);
        return;
    }
    registry.DeleteValue(place.Root, key, "");
    if (registry.IsEmpty(place.Root, key)) {
        modRegistry::DeleteKey(registry, place.Root, key);
    }
}

void UnregisterIn(Registry& registry, const Place& place) {
    if (TextIn(registry, place, Extension) == FileType) {
        GiveExtensionBack(registry, place);
    }
    registry.DeleteValue(place.Root, place.Prefix + FileType, TypeBefore);
    // From the lowest one up: what other programs have put below them stays, and the keys above it.
    for (const char* const key :
         {Command, R"(Burnwick\shell\open)", R"(Burnwick\shell)", R"(Burnwick\DefaultIcon)", FileType}) {
        registry.DeleteValue(place.Root, place.Prefix + key, "");
        modRegistry::DeleteKey(registry, place.Root, place.Prefix + key);
    }
}

bool IsAnotherPrograms(const std::string& type) {
    return !type.empty() && type != FileType;
}

}  // namespace

void RegisterFileType(Registry& registry, const std::string& program) {
    for (const Place& place : {OfAll(), OfTheUser()}) {
        if (RegisterIn(registry, place, program)) {
            return;
        }
        UnregisterIn(registry, place);
    }
}

// The keys of all show the user's in their place: these go first, or they would be taken for the others.
void UnregisterFileType(Registry& registry) {
    for (const Place& place : {OfTheUser(), OfAll()}) {
        UnregisterIn(registry, place);
    }
}

std::string AssociatedProgram(const Registry& registry) {
    if (IsAnotherPrograms(TextInForce(registry, Extension))
        || IsAnotherPrograms(
            modRegistry::GetKeyValue(registry, RegistryRoot::CurrentUser, UsersChoice, "ProgId"))) {
        return {};
    }
    std::string command = TextInForce(registry, Command);
    const std::size_t rest = std::string(Argument).size();
    command.resize(command.size() > rest ? command.size() - rest : 0);
    return command;
}

}  // namespace burnwick::modUtility
