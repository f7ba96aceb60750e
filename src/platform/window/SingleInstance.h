#pragma once

#include <functional>
#include <memory>
#include <string>

namespace burnwick {

// The running copies of the program that one user has started under one name. A copy is counted from the
// moment that it claims its place, until its object or its process ends.
class SingleInstance {
public:
    virtual ~SingleInstance() = default;

    // True when another copy is running.
    virtual bool AnotherRuns() = 0;

    // Asks the other copy to come forward. True when it has said that it does; waits for that half a second
    // at most.
    virtual bool BringForward() = 0;

    // Takes this copy's place among them. `comeForward` is called inside the message loop when a later copy
    // asks for it.
    virtual void Claim(std::function<void()> comeForward) = 0;
};

// The copies under this name, of this user and no other one. `name` may hold any characters.
std::unique_ptr<SingleInstance> CopiesNamed(const std::string& name);

}  // namespace burnwick
