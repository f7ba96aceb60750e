// A copy under the name of its argument, until it is ended. Prints each time that it is asked to come
// forward.

#include <QCoreApplication>
#include <cstdio>

#include "platform/process/ProcessText.h"
#include "platform/window/SingleInstance.h"

namespace {

void Say(const char* text) {
    std::puts(text);
    std::fflush(stdout);
}

}  // namespace

int main(int argc, char* argv[]) {
    const QCoreApplication application(argc, argv);
    const auto arguments = burnwick::ProgramArguments(argc, argv);
    const auto copies = burnwick::CopiesNamed(arguments.empty() ? "" : arguments.front());
    copies->Claim([] { Say("forward"); });
    Say("running");
    return QCoreApplication::exec();
}
