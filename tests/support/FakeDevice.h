#pragma once

#include <string>
#include <vector>

#include "platform/files/Bytes.h"
#include "platform/serial/SerialDevice.h"
#include "support/VirtualLoop.h"

namespace burnwick::test {

// A serial device without a system behind it, on virtual time. What answers stands in the classes derived
// from it.
class FakeDevice : public SerialDevice {
public:
    struct Frame {
        Microseconds At;
        unsigned Baud;
        Bytes Content;
    };

    explicit FakeDevice(VirtualLoop& loop) : Loop_(loop) {}
    FakeDevice(const FakeDevice&) = delete;
    FakeDevice& operator=(const FakeDevice&) = delete;
    ~FakeDevice() override { Loop_.RemoveSource(this); }

    CommResult Open(const std::string& path, const LineSettings& settings) override;
    void Close() override { IsOpen_ = false; }
    bool Apply(const LineSettings& settings) override;
    std::optional<std::size_t> Read(std::span<std::byte> room) override;
    void Write(std::span<const std::byte> bytes) override;
    void DiscardInput() override;
    std::optional<WaitHandle> InputHandle() const override { return std::nullopt; }

    // Refuses to open from now on: this path, or any.
    void RefuseToOpen(CommError error, std::string path = {}) {
        OpenError_ = std::move(error);
        RefusedPath_ = std::move(path);
    }
    // The adapter is pulled out: nothing goes or comes any more.
    void PullOut() { Gone_ = true; }

    bool IsOpen() const { return IsOpen_; }
    // How often it was opened.
    int Opens() const { return Opens_; }
    // Every frame written, in order.
    const std::vector<Frame>& Sent() const { return Sent_; }
    // Every speed that the open line was set to, in order.
    const std::vector<unsigned>& Speeds() const { return Speeds_; }

protected:
    // The host has written a frame.
    virtual void HearFrame(const Frame& frame) = 0;
    // Lets everything happen that is due, calling Arrive for bytes that reach the host.
    virtual void LetHappen() = 0;

    void Arrive(const Bytes& bytes) { Waiting_.insert(Waiting_.end(), bytes.begin(), bytes.end()); }
    unsigned Baud() const { return Settings_.Baud; }
    VirtualLoop& Loop() { return Loop_; }

private:
    VirtualLoop& Loop_;
    std::optional<CommError> OpenError_;
    std::string RefusedPath_;
    bool Gone_ = false;
    bool IsOpen_ = false;
    int Opens_ = 0;
    LineSettings Settings_;
    std::vector<unsigned> Speeds_;
    Bytes Waiting_;
    std::vector<Frame> Sent_;
};

}  // namespace burnwick::test
