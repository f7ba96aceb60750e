#pragma once

#include <memory>

#include "platform/loop/MessageLoop.h"

namespace burnwick::test {

// What the system's loop can wait for: ready while something was put into it and not taken.
class Pipe {
public:
    Pipe();
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    ~Pipe();

    WaitHandle Handle() const;
    void Put() const;
    // There must be something.
    void Take() const;
    // The handle is none any longer.
    void CloseHandle();

private:
    struct Ends;
    std::unique_ptr<Ends> Ends_;
};

}  // namespace burnwick::test
