// Prints the program folder, for a copy of this program in a folder of the test's choice.

#include <cstdio>

#include "platform/files/ProgramFolder.h"

int main() {
    return std::puts(burnwick::ProgramFolder().c_str()) >= 0 ? 0 : 1;
}
