#pragma once

#include <functional>
#include <memory>

#include "job/FlashJob.h"

namespace burnwick {

// A flashing job as its owner holds it. Its events, a JobResult last, come on the owner's thread.
class Job {
public:
    virtual ~Job() = default;

    virtual void Start() = 0;

    // Takes effect at once; nothing is lost when it comes too late.
    virtual void Cancel() = 0;

    // Answers a VerificationOffer.
    virtual void Answer(bool yes) = 0;
};

using JobEvents = std::function<void(const JobEvent&)>;
using NewJob = std::function<std::unique_ptr<Job>(const FlashOrder&, JobEvents)>;

// A job on the thread of its owner: Start returns when the job has ended. For tests in virtual time.
class InlineJob final : public Job {
public:
    InlineJob(MessageLoop& loop, std::unique_ptr<SerialDevice> device, const FlashOrder& order,
              JobEvents raise)
        : Job_(loop, std::move(device), order, std::move(raise)) {}

    void Start() override { Job_.Run(); }
    void Cancel() override { Job_.Cancel(); }
    void Answer(bool yes) override { Job_.Answer(yes); }

private:
    FlashJob Job_;
};

}  // namespace burnwick
