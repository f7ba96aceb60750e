// A copy under the name of its argument, until it is ended. Prints each time that it is asked to come
// forward.

#include <QCoreApplication>
#include <cstdio>

#include "platform/SingleInstance.h"

namespace {

void Say(const char* text) {
    std::puts(text);
    std::fflush(stdout);
}

}  // namespace

int main(int argc, char* argv[]) {
    const QCoreApplication application(argc, argv);
    const auto copies = burnwick::CopiesNamed(argc > 1 ? argv[1] : "");
    copies->Claim([] { Say("forward"); });
    Say("running");
    return QCoreApplication::exec();
}
