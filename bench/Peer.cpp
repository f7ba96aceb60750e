#include "bench/Peer.h"

#include <fcntl.h>
#include <stdlib.h>  // NOLINT(modernize-deprecated-headers): posix_openpt and its kin
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstddef>
#include <fstream>
#include <system_error>
#include <thread>
#include <vector>

#include "engine/FlashMessages.h"
#include "platform/serial/MSComm.h"

namespace bench {

namespace {

using namespace std::chrono_literals;

// The host takes two answers for one unless the line falls quiet between them.
constexpr auto PauseBetweenAnswers = 20ms;

constexpr std::size_t CommandLength = 4;
constexpr std::size_t BlockMessageLength = 262;

int OrThrow(int result) {
    if (result < 0) {
        throw std::system_error(errno, std::generic_category(), "cannot make a pseudo-terminal");
    }
    return result;
}

std::string NameOf(int far) {
    OrThrow(grantpt(far));
    OrThrow(unlockpt(far));
    constexpr std::size_t longest = 128;
    std::array<char, longest> path{};
    if (const int error = ptsname_r(far, path.data(), path.size()); error != 0) {
        throw std::system_error(error, std::generic_category(), "the pseudo-terminal has no name");
    }
    return path.data();
}

class Answerer {
public:
    explicit Answerer(int far) : Far_(far) {}

    // Until the line is gone.
    int Run() {
        std::array<std::byte, 4096> room{};
        for (auto got = read(Far_, room.data(), room.size()); got > 0;
             got = read(Far_, room.data(), room.size())) {
            Waiting_.insert(Waiting_.end(), room.begin(), room.begin() + got);
            while (AnswerFirst()) {
            }
        }
        return 0;
    }

private:
    bool AnswerFirst() {
        if (Waiting_.size() < CommandLength) {
            return false;
        }
        const auto kind = static_cast<burnwick::MessageKind>(Waiting_[2]);
        const auto length = kind == burnwick::MessageKind::Block ? BlockMessageLength : CommandLength;
        if (Waiting_.size() < length) {
            return false;
        }
        Waiting_.erase(Waiting_.begin(), Waiting_.begin() + static_cast<std::ptrdiff_t>(length));
        if (kind == burnwick::MessageKind::Block) {
            Send(burnwick::AnswerCode::Acknowledge);
        } else if (kind == burnwick::MessageKind::ProgramMode) {
            Send(burnwick::AnswerCode::Acknowledge);
            std::this_thread::sleep_for(PauseBetweenAnswers);
            Send(burnwick::AnswerCode::Ready);
        } else if (kind != burnwick::MessageKind::Finish) {
            Send(burnwick::AnswerCode::Ready);
        }
        return true;
    }

    void Send(burnwick::AnswerCode code) const {
        const std::array<std::byte, CommandLength> answer{std::byte{0xFF}, std::byte{0xAA},
                                                          static_cast<std::byte>(code), std::byte{0}};
        // An answer that does not leave shows as a run that fails.
        static_cast<void>(!write(Far_, answer.data(), answer.size()));
    }

    int Far_;
    std::vector<std::byte> Waiting_;
};

}  // namespace

SilentLine::SilentLine()
    : Far_(OrThrow(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC))),
      Device_(NameOf(Far_.Get())),
      Host_(OrThrow(open(Device_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC))) {
    termios settings{};
    tcgetattr(Host_.Get(), &settings);
    cfmakeraw(&settings);
    cfsetspeed(&settings, B9600);
    tcsetattr(Host_.Get(), TCSANOW, &settings);
}

void LeadAllPortsTo(const SilentLine& line, const std::filesystem::path& folder) {
    std::ofstream file(folder / "Burnwick.ini", std::ios::trunc);
    file << "[Ports]\n";
    for (int port = burnwick::MSComm::FirstPort; port <= burnwick::MSComm::LastPort; ++port) {
        file << "COM" << port << '=' << line.Device() << '\n';
    }
}

Peer::Peer() : Process_([this] { return Answerer(Line_.FarEnd()).Run(); }) {}

}  // namespace bench
