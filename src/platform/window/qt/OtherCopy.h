#pragma once

#include <QString>
#include <filesystem>
#include <string>

namespace burnwick {

// What the system wants of copies of the program that meet, beside what Qt's local sockets do.

// What parts the copies of one user and one name that cannot see each other's windows; empty when nothing
// does.
std::string SessionName();

// The name under which the socket listens that belongs to this path, in a folder of the user's own.
QString SocketNameOf(const std::filesystem::path& path);

// Lets the program at the other end of a connected socket put its window before this program's. False when it
// is no program of this user: it must not be spoken to.
bool LetComeForward(qintptr socket);

}  // namespace burnwick
