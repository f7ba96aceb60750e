#pragma once

#include <functional>
#include <memory>
#include <string>
#include <thread>

#include "job/Job.h"
#include "job/Mailbox.h"

namespace burnwick {

// What a job's own thread works with. Both are made on that thread, and end there.
struct JobTools {
    std::function<std::unique_ptr<MessageLoop>()> NewLoop;
    std::function<std::unique_ptr<SerialDevice>(MessageLoop&)> NewDevice;
};

// A job with a thread of its own: whatever holds up the owner does not hold up the unit. The two threads
// share nothing but the mailboxes.
class JobThread final : public Job {
public:
    // `take` gets the events from the owner's event loop. A progress event that was not taken yet
    // gives way to a newer one, the first and the last of a transfer apart; all other events are kept. An
    // exception of `take` cancels the job, and becomes its result's Unforeseen.
    JobThread(EventLoop& owner, JobTools tools, FlashOrder order, JobEvents take);
    JobThread(const JobThread&) = delete;
    JobThread& operator=(const JobThread&) = delete;

    // Cancels the job, and waits for its closing steps.
    ~JobThread() override;

    void Start() override;
    void Cancel() override { Commands_.Post(Command::Cancel); }
    void Answer(bool yes) override { Commands_.Post(yes ? Command::Yes : Command::No); }

private:
    enum class Command { Cancel, Yes, No };

    void Run();
    void Obey(FlashJob& job);
    void TakeEvents();
    void TakeResult(JobResult result);

    JobTools Tools_;
    FlashOrder Order_;
    JobEvents Take_;
    std::string Unforeseen_;
    Mailbox<Command> Commands_;
    Mailbox<JobEvent> Events_;
    std::unique_ptr<Watch> Watch_;
    std::thread Thread_;
};

// Makes jobs with threads of their own, on the system's loop and serial ports.
NewJob NewJobThread(EventLoop& owner);

}  // namespace burnwick
