#pragma once

#include <string>

#include "platform/desktop/Registry.h"

// The file association "Flash with Burnwick" as a registry has it. Where the system's own part of the
// registry refuses, it stands in the user's.
namespace burnwick::modUtility {

// Associates "*.bin" with the program (its path). Which type of files it was before is remembered.
void RegisterFileType(Registry& registry, const std::string& program);

// Takes the association away, and gives "*.bin" back to the type that it was before, when that is still
// there. One that another program has put in its place since is left, as is what others keep in the same
// keys.
void UnregisterFileType(Registry& registry);

// The program that the association starts; empty when there is none, or when "*.bin" is another program's by
// now.
std::string AssociatedProgram(const Registry& registry);

}  // namespace burnwick::modUtility
