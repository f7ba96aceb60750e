#pragma once

#include <QLocalSocket>
#include <memory>
#include <string>

namespace burnwick::test {

// A place of the test's own where copies of the program meet, until the object ends.
class MeetingPlace {
public:
    MeetingPlace();
    MeetingPlace(const MeetingPlace&) = delete;
    MeetingPlace& operator=(const MeetingPlace&) = delete;
    ~MeetingPlace();

private:
    struct Place;
    std::unique_ptr<Place> Place_;
};

// Another running copy of the program, a process of its own that ends with its object. Every wait ends after
// some seconds.
class RunningCopy {
public:
    explicit RunningCopy(const std::string& name);
    RunningCopy(const RunningCopy&) = delete;
    RunningCopy& operator=(const RunningCopy&) = delete;
    ~RunningCopy();

    bool CameForward() const;  // waits for it
    bool WasAsked() const;
    void Kill();
    // As orderly as the system can.
    void End();
    // Stands still, and goes on.
    void Stop() const;
    void Continue() const;
    // Kilobytes.
    long Memory() const;

private:
    struct Process;
    std::unique_ptr<Process> Process_;
};

// Who connects as any program may, to the only copy that runs.
class Stranger {
public:
    Stranger();

    void Say(const std::string& text);
    // Waits until the copy has cut the connection, and tells whether it has said nothing.
    bool IsCutOff();

private:
    QLocalSocket Socket_;
};

}  // namespace burnwick::test
