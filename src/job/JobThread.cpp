#include "job/JobThread.h"

#include <exception>
#include <utility>
#include <variant>

#include "platform/loop/MessageLoop.h"
#include "platform/serial/SerialDevice.h"

namespace burnwick {

namespace {

// The first and the last progress of a transfer are kept.
bool IsPassing(const JobEvent& event) {
    const auto* const progress = std::get_if<BlockProgress>(&event);
    return progress != nullptr && progress->Block != 0 && progress->Block != progress->TotalBlock;
}

bool Supersedes(const JobEvent& older, const JobEvent& newer) {
    return IsPassing(older) && IsPassing(newer);
}

}  // namespace

JobThread::JobThread(EventLoop& owner, JobTools tools, FlashOrder order, JobEvents take)
    : Tools_(std::move(tools)),
      Order_(std::move(order)),
      Take_(std::move(take)),
      Events_(Supersedes),
      Watch_(owner.WatchInput(Events_.Handle(), [this] { TakeEvents(); })) {}

JobThread::~JobThread() {
    if (Thread_.joinable()) {
        Cancel();
        Thread_.join();
    }
}

void JobThread::Start() {
    Thread_ = std::thread([this] { Run(); });
}

// On the job's thread, as is everything that it calls.
void JobThread::Run() {
    try {
        const auto loop = Tools_.NewLoop();
        FlashJob job(*loop, Tools_.NewDevice(*loop), std::move(Order_),
                     [this](const JobEvent& event) { Events_.Post(event); });
        const auto commands = loop->WatchInput(Commands_.Handle(), [&] { Obey(job); });
        job.Run();
    } catch (const std::exception& error) {
        JobResult result;
        result.Unforeseen = error.what();
        Events_.Post(result);
    }
}

void JobThread::Obey(FlashJob& job) {
    for (const Command command : Commands_.TakeAll()) {
        if (command == Command::Cancel) {
            job.Cancel();
        } else {
            job.Answer(command == Command::Yes);
        }
    }
}

void JobThread::TakeEvents() {
    for (const JobEvent& event : Events_.TakeAll()) {
        if (const auto* const result = std::get_if<JobResult>(&event)) {
            TakeResult(*result);
            continue;
        }
        try {
            Take_(event);
        } catch (const std::exception& error) {
            Unforeseen_ = error.what();
            Cancel();
        }
    }
}

void JobThread::TakeResult(JobResult result) {
    if (!Unforeseen_.empty()) {
        result.Unforeseen = Unforeseen_;
    }
    Take_(result);
}

NewJob NewJobThread(EventLoop& owner) {
    return [&owner](const FlashOrder& order, JobEvents take) {
        const JobTools tools{NewSystemLoop, [](MessageLoop&) { return NewSerialDevice(); }};
        return std::make_unique<JobThread>(owner, tools, order, std::move(take));
    };
}

}  // namespace burnwick
