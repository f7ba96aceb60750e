#include <QCryptographicHash>
#include <filesystem>
#include <optional>
#include <utility>
#include <vector>

#include "platform/files/FileLock.h"
#include "platform/files/RuntimeFolder.h"
#include "platform/window/SingleInstance.h"
#include "platform/window/qt/ComeForward.h"
#include "platform/window/qt/OtherCopy.h"

namespace burnwick {

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

// Each running copy has a slot, so that a later one is found when an earlier one has ended. What they do not
// suffice for runs uncounted.
constexpr int Slots = 8;

// Names may be long, and hold what no file name may.
std::string FileNameFor(const std::string& name) {
    constexpr qsizetype enough = 16;
    const auto hash = QCryptographicHash::hash(QByteArray::fromStdString(name), QCryptographicHash::Sha256);
    return "burnwick-" + hash.toHex().left(enough).toStdString();
}

class SlottedInstance final : public SingleInstance {
public:
    explicit SlottedInstance(const std::string& name)
        : Folder_(RuntimeFolder()), Name_(FileNameFor(name + '\n' + SessionName())) {}

    bool AnotherRuns() override { return !Others().empty(); }

    bool BringForward() override {
        const QDeadlineTimer deadline(500ms);
        const std::vector<int> others = Others();
        for (std::size_t i = 0; i < others.size(); ++i) {
            // One that hangs must not use up the time of those behind it.
            const auto left = static_cast<qint64>(others.size() - i);
            if (AskToComeForward(SocketName(others[i]), QDeadlineTimer(deadline.remainingTime() / left))) {
                return true;
            }
        }
        return false;
    }

    void Claim(std::function<void()> comeForward) override {
        for (int slot = 1; slot <= Slots && !Folder_.empty() && !Lock_; ++slot) {
            Lock_ = LockFile(LockPath(slot), 0ms);
            Slot_ = Lock_ ? slot : 0;
        }
        if (Lock_) {
            Server_.emplace(SocketName(Slot_), std::move(comeForward));
        }
    }

private:
    // The slots of the other copies: their locks end with them, however they end.
    std::vector<int> Others() const {
        std::vector<int> others;
        for (int slot = 1; slot <= Slots && !Folder_.empty(); ++slot) {
            std::error_code error;
            if (slot != Slot_ && fs::exists(LockPath(slot), error) && !LockFile(LockPath(slot), 0ms)) {
                others.push_back(slot);
            }
        }
        return others;
    }

    fs::path LockPath(int slot) const { return Folder_ / (Name_ + "-" + std::to_string(slot) + ".lock"); }
    QString SocketName(int slot) const {
        return SocketNameOf(Folder_ / (Name_ + "-" + std::to_string(slot) + ".socket"));
    }

    fs::path Folder_;
    std::string Name_;
    int Slot_ = 0;
    // The socket ends before the lock does: the next copy finds the slot free and empty.
    std::unique_ptr<FileLock> Lock_;
    std::optional<ComeForwardServer> Server_;
};

}  // namespace

std::unique_ptr<SingleInstance> CopiesNamed(const std::string& name) {
    return std::make_unique<SlottedInstance>(name);
}

}  // namespace burnwick
