#include "simulator/Line.h"

#include <algorithm>
#include <utility>

#include "simulator/Wire.h"

namespace simulator {

namespace {

constexpr std::size_t SliceLength = 14;  // bytes that a receive buffer gathers before it hands them over

void TakeEarlier(std::optional<Time>& next, std::optional<Time> candidate) {
    if (candidate && (!next || *candidate < *next)) {
        next = candidate;
    }
}

}  // namespace

Line::Line(Unit& unit, bool paced) : Unit_(unit), Paced_(paced) {}

void Line::FromHost(Time now, unsigned hostBaud, std::span<const std::byte> bytes) {
    Advance(now, hostBaud);
    if (!Paced_) {
        Unit_.Receive(now, hostBaud, bytes);
        return;
    }
    const Instant start = std::max<Instant>(HostFree_, now);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        HostFree_ = start + AirTime(i + 1, hostBaud);
        ToUnit_.push_back({HostFree_, hostBaud, bytes[i], i + 1 == bytes.size()});
    }
}

std::optional<Time> Line::NextEvent() const {
    if (!Arrived_.empty()) {
        return ArrivedAt_;
    }
    std::optional<Time> next = Unit_.NextEvent();
    // The unit answers messages, and a message ends with a write: to wake for each byte would be for nothing.
    const auto writeEnd =
        std::find_if(ToUnit_.begin(), ToUnit_.end(), [](const ByteToUnit& byte) { return byte.EndsWrite; });
    if (writeEnd != ToUnit_.end()) {
        TakeEarlier(next, std::chrono::ceil<Time>(writeEnd->Over));
    }
    if (!ToHost_.empty()) {
        TakeEarlier(next, std::chrono::ceil<Time>(ToHost_.front().HandedOver));
    }
    return next;
}

std::vector<std::byte> Line::ToHost(Time now, unsigned hostBaud) {
    Advance(now, hostBaud);
    return std::exchange(Arrived_, {});
}

void Line::Advance(Time now, unsigned hostBaud) {
    while (true) {
        const auto unitNext = Unit_.NextEvent();
        const bool byteDue = !ToUnit_.empty() && ToUnit_.front().Over <= now;
        if (unitNext && *unitNext <= now && (!byteDue || *unitNext <= ToUnit_.front().Over)) {
            TakeFromUnit(*unitNext, hostBaud);
        } else if (byteDue) {
            DeliverToUnit();
        } else {
            break;
        }
    }
    DeliverToHost(now, hostBaud);
}

void Line::TakeFromUnit(Time at, unsigned hostBaud) {
    const unsigned unitBaud = Unit_.Baud();
    const auto bytes = Unit_.Send(at, Paced_ ? unitBaud : hostBaud);
    if (bytes.empty()) {
        return;
    }
    if (!Paced_) {
        ArrivedAt_ = Arrived_.empty() ? at : ArrivedAt_;
        Arrived_.insert(Arrived_.end(), bytes.begin(), bytes.end());
        return;
    }
    const Instant start = std::max<Instant>(UnitFree_, at);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const auto sliceEnd = std::min((i / SliceLength + 1) * SliceLength, bytes.size());
        ToHost_.push_back({start + AirTime(i + 1, unitBaud), start + AirTime(sliceEnd, unitBaud), unitBaud,
                           bytes[i], false});
    }
    UnitFree_ = ToHost_.back().Over;
}

void Line::DeliverToUnit() {
    const ByteToUnit byte = ToUnit_.front();
    ToUnit_.pop_front();
    Unit_.Receive(std::chrono::ceil<Time>(byte.Over), byte.Baud, std::span(&byte.Value, 1));
}

void Line::DeliverToHost(Time now, unsigned hostBaud) {
    for (auto& byte : ToHost_) {
        if (byte.Over > now) {
            break;
        }
        if (!std::exchange(byte.Judged, true) && byte.Baud != hostBaud) {
            byte.Value = Garbled(byte.Value);
        }
    }
    while (!ToHost_.empty() && ToHost_.front().HandedOver <= now) {
        if (Arrived_.empty()) {
            ArrivedAt_ = std::chrono::ceil<Time>(ToHost_.front().HandedOver);
        }
        Arrived_.push_back(ToHost_.front().Value);
        ToHost_.pop_front();
    }
}

}  // namespace simulator
