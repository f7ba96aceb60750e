#pragma once

#include <algorithm>
#include <chrono>

namespace burnwick::test {

// Far more than a busy machine delays a call that does not wait, and far less than a wait without a limit
// takes: the peers of these tests never answer; system services have limits of 25 s and more.
inline constexpr std::chrono::seconds HangLimit{20};

// How long a call takes.
template <typename Call>
std::chrono::steady_clock::duration Elapsed(Call call) {
    const auto before = std::chrono::steady_clock::now();
    call();
    return std::chrono::steady_clock::now() - before;
}

// The shortest of the times that `call` returns. A busy machine delays some calls; a call that waits delays
// each.
template <typename Call>
std::chrono::steady_clock::duration Shortest(int calls, Call call) {
    auto shortest = std::chrono::steady_clock::duration::max();
    for (int done = 0; done < calls; ++done) {
        shortest = std::min<std::chrono::steady_clock::duration>(shortest, call());
    }
    return shortest;
}

}  // namespace burnwick::test
