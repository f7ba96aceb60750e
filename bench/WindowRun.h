#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "bench/LinkRun.h"
#include "job/JobEvent.h"

namespace bench {

// The main window in this process, on the real event loop, the system's serial device, and settings and log
// in files; its runs are started as by its user. A run that does not end well throws, with what the window
// says.
class BenchWindow {
public:
    // The line is its COM1; `folder` is made for its files.
    BenchWindow(std::filesystem::path folder, const std::string& device);
    BenchWindow(const BenchWindow&) = delete;
    BenchWindow& operator=(const BenchWindow&) = delete;
    ~BenchWindow();

    // Each returns when the run has ended; the time is the link's own, of the transfer.
    Seconds Download(const std::filesystem::path& image);
    Seconds Upload(const std::filesystem::path& file);  // of 8 Mbit

    // Called after each event of a job that the window has taken.
    std::function<void(const burnwick::JobEvent& event)> AfterEvent = [](const burnwick::JobEvent&) {};

    // The whole window, at once.
    void Repaint();

    // Looks for its unit for so long, with another window in front, and is then cancelled.
    void WaitFor(const std::filesystem::path& image, std::chrono::milliseconds time);

    bool IsRunning() const;

private:
    class Parts;

    void ClickRecentFile(const std::filesystem::path& image);
    void AwaitEndOfRun() const;
    void ExpectStatus(const std::string& wanted) const;

    std::unique_ptr<Parts> Parts_;
};

// Counts how long the window lets an event wait while it runs.
class Heartbeat {
public:
    explicit Heartbeat(const BenchWindow& window);
    Heartbeat(const Heartbeat&) = delete;
    Heartbeat& operator=(const Heartbeat&) = delete;
    ~Heartbeat();

    // The longest time between two beats, of which at least one fell into a run.
    Seconds LongestPause() const;

private:
    class Beats;

    std::unique_ptr<Beats> Beats_;
};

}  // namespace bench
