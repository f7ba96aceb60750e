#include "bench/LogCost.h"

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <fstream>
#include <functional>
#include <stdexcept>
#include <string>

#include "log/frmActivity.h"

namespace bench {

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr double LongestOpening = 1000;  // milliseconds
constexpr double LongestSearch = 2000;
constexpr double LongestPause = 50;
constexpr std::size_t LogSize = 20UL * 1024 * 1024;  // bytes
constexpr auto Patience = 60s;

// Lines as short as those of a real log: their number is what costs. Gives their number.
int WriteBigLog(const std::filesystem::path& path) {
    constexpr int linesInRecord = 4;
    const std::string record =
        "C:\\images\\unit-4711.bin\r\nFlashed: 07/22/2004 3:05:09 PM\r\n"
        "Status: Programming completed successfully.\r\n \r\n";
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    int lines = 0;
    for (std::size_t size = 0; size < LogSize; size += record.size()) {
        file << record;
        lines += linesInRecord;
    }
    return lines;
}

void RunUntil(const std::function<bool()>& done) {
    const auto end = Clock::now() + Patience;
    while (!done()) {
        if (Clock::now() > end) {
            throw std::runtime_error("the log viewer does not come to an end");
        }
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

// Notes when a widget is painted for the first time.
class FirstPaint final : public QObject {
public:
    bool eventFilter(QObject* watched, QEvent* event) override {
        Seen_ = Seen_ || event->type() == QEvent::Paint;
        return QObject::eventFilter(watched, event);
    }
    bool Seen() const { return Seen_; }

private:
    bool Seen_ = false;
};

// The longest time that an event waits while this lives.
class Beats {
public:
    Beats() {
        constexpr auto interval = 2ms;
        QObject::connect(&Timer_, &QTimer::timeout, &Timer_, [this] { Beat(); });
        Timer_.setTimerType(Qt::PreciseTimer);
        Timer_.start(interval);
    }

    Milliseconds Longest() {
        Beat();
        return Longest_;
    }

private:
    void Beat() {
        const auto now = Clock::now();
        Longest_ = std::max<Milliseconds>(Longest_, now - Last_);
        Last_ = now;
    }

    Clock::time_point Last_ = Clock::now();
    Milliseconds Longest_{};
    QTimer Timer_;
};

// Asks the find dialog for a text that is nowhere, and waits for the answer.
class HopelessSearch {
public:
    explicit HopelessSearch(const burnwick::frmActivity& viewer) {
        QObject::connect(&Timer_, &QTimer::timeout, &Timer_, [this] { Look(); });
        Timer_.start(1ms);
        viewer.findChild<QPushButton*>("cmdFind")->click();
        RunUntil([this] { return Answered_; });
    }

    Milliseconds Duration() const { return End_ - Begin_; }

private:
    void Look() {
        auto* const dialog = QApplication::activeModalWidget();
        if (auto* const box = qobject_cast<QMessageBox*>(dialog)) {
            End_ = Clock::now();
            Answered_ = true;
            Timer_.stop();
            box->accept();
        } else if (auto* const text =
                       dialog == nullptr ? nullptr : dialog->findChild<QLineEdit*>("txtFind")) {
            text->setText("nowhere in this log");
            Begin_ = Clock::now();
            dialog->findChild<QPushButton*>("cmdFind")->click();
        }
    }

    QTimer Timer_;
    bool Answered_ = false;
    Clock::time_point Begin_;
    Clock::time_point End_;
};

}  // namespace

Figures MeasureLogCost(const std::filesystem::path& folder) {
    const int lines = WriteBigLog(folder / "Burnwick.log");
    const auto begin = Clock::now();
    burnwick::frmActivity viewer(folder);
    viewer.setModal(false);  // the dialogs that it opens are looked for
    auto* const box = viewer.findChild<QPlainTextEdit*>("txtLog");
    FirstPaint paint;
    box->viewport()->installEventFilter(&paint);
    viewer.show();
    RunUntil([&paint] { return paint.Seen(); });
    const Milliseconds opening = Clock::now() - begin;

    Beats beats;
    const HopelessSearch early(viewer);
    RunUntil([box, lines] { return box->blockCount() > lines; });
    const Milliseconds filling = Clock::now() - begin;
    const HopelessSearch late(viewer);
    return {AtMost("a log of 20 MB, until its end is shown", opening.count(), LongestOpening, {0, " ms"}),
            Told("  until all of it is in the box", filling.count(), {0, " ms"}),
            AtMost("a search through it, while the box fills up", early.Duration().count(), LongestSearch,
                   {0, " ms"}),
            AtMost("a search through it later", late.Duration().count(), LongestSearch, {0, " ms"}),
            AtMost("longest time that the log viewer does not answer", beats.Longest().count(), LongestPause,
                   {1, " ms"})};
}

}  // namespace bench
