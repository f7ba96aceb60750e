#pragma once

#include <string>

#include "platform/Registry.h"

// The file association "Flash with Burnwick" as a registry has it. Where the system's own part of the
// registry refuses, it stands in the user's.
namespace burnwick::modUtility {

// Associates "*.bin" with the program (its path).
void RegisterFileType(Registry& registry, const std::string& program);

// Takes the association away. One that another program has put in its place since is left.
void UnregisterFileType(Registry& registry);

// The program that the association starts; empty when there is none.
std::string AssociatedProgram(const Registry& registry);

}  // namespace burnwick::modUtility
