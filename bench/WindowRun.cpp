#include "bench/WindowRun.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTimer>
#include <algorithm>
#include <stdexcept>
#include <utility>

#include "app/frmMain.h"
#include "job/JobThread.h"
#include "platform/loop/MessageLoop.h"
#include "platform/loop/WindowLoop.h"
#include "platform/serial/SerialDevice.h"
#include "settings/RegistryShell.h"
#include "settings/modUtility.h"

namespace bench {

namespace {

using namespace std::chrono_literals;
using burnwick::modUtility::WriteIniValue;
using Clock = std::chrono::steady_clock;

// The user in front of the two dialogs of an upload.
class UploadAnswers {
public:
    explicit UploadAnswers(std::string file) : File_(std::move(file)) {
        QObject::connect(&Timer_, &QTimer::timeout, &Timer_, [this] { Look(); });
        Timer_.start(10ms);
    }

private:
    void Look() const {
        const QWidget* const dialog = QApplication::activeModalWidget();
        if (dialog == nullptr || !dialog->isVisible()) {
            return;
        }
        if (auto* const name = dialog->findChild<QLineEdit*>("fileNameEdit")) {
            name->setText(QString::fromStdString(File_));
            QMetaObject::invokeMethod(name, &QLineEdit::returnPressed);
        } else if (auto* const ok = dialog->findChild<QPushButton*>("cmdOK")) {
            ok->click();
        }
    }

    std::string File_;
    QTimer Timer_;
};

}  // namespace

class BenchWindow::Parts {
public:
    Parts(const BenchWindow& owner, std::filesystem::path folder, const std::string& device)
        : Owner_(owner), Folder_(std::move(folder)) {
        std::filesystem::create_directories(Folder_);
        burnwick::modUtility::SetIniPath(Folder_ / "Burnwick.ini");
        WriteIniValue("Ports", "COM1", device);
        WriteIniValue("COMPort", "COM", "1");
        WriteIniValue("COMPort", "BaudRate", "1");
        WriteIniValue("ChipSelect", "UploadChipSize", "3");
        Window_ = std::make_unique<burnwick::frmMain>(Services_);
    }

    burnwick::frmMain& Window() const { return *Window_; }
    Seconds Transfer() const { return Transfer_; }

private:
    std::unique_ptr<burnwick::Job> NewJob(const burnwick::FlashOrder& order,
                                          const burnwick::JobEvents& take) {
        return burnwick::NewJobThread(*Loop_)(order, [this, take](const burnwick::JobEvent& event) {
            if (const auto* const result = std::get_if<burnwick::JobResult>(&event)) {
                Transfer_ = result->Transfer.Elapsed.value_or(0ms);
            }
            take(event);
            Owner_.AfterEvent(event);
        });
    }

    const BenchWindow& Owner_;
    std::filesystem::path Folder_;
    Seconds Transfer_{};
    std::unique_ptr<burnwick::EventLoop> Loop_ = burnwick::NewWindowLoop();
    std::unique_ptr<burnwick::MessageLoop> PortLoop_ = burnwick::NewSystemLoop();
    std::unique_ptr<burnwick::ShellIntegration> Shell_ = burnwick::DesktopShell();
    burnwick::WindowServices Services_{
        .Product = {.Title = "Burnwick"},
        .Trace = [](const std::string&) {},
        .Loop = *Loop_,
        .PortLoop = *PortLoop_,
        .Settings = burnwick::IniSettings(),
        .ProgramFolder = Folder_,
        .Executable = Folder_ / "Burnwick",
        .Shell = *Shell_,
        .Copies = [](const std::string&) { return burnwick::CopiesNamed("burnwick-figures"); },
        .NewDevice = burnwick::NewSerialDevice,
        .NewJob = [this](const auto& order, const auto& take) { return NewJob(order, take); },
        .InhibitSleep = [](const std::string&) { return nullptr; },
        .Beep = [] {},
        .Flash = [](QWidget*) {},
        .Notify = [](const std::string&, const std::string&) {},
    };
    std::unique_ptr<burnwick::frmMain> Window_;
};

BenchWindow::BenchWindow(std::filesystem::path folder, const std::string& device)
    : Parts_(std::make_unique<Parts>(*this, std::move(folder), device)) {
    if (!Parts_->Window().Form_Load()) {
        throw std::runtime_error("the window does not load");
    }
}

BenchWindow::~BenchWindow() = default;

Seconds BenchWindow::Download(const std::filesystem::path& image) {
    ClickRecentFile(image);
    ExpectStatus("Programming was completed successfully.");
    return Parts_->Transfer();
}

Seconds BenchWindow::Upload(const std::filesystem::path& file) {
    const UploadAnswers answers(file.string());
    Parts_->Window().findChild<QPushButton*>("cmdUpload")->click();
    AwaitEndOfRun();
    ExpectStatus("Uploading was completed successfully.");
    return Parts_->Transfer();
}

void BenchWindow::WaitFor(const std::filesystem::path& image, std::chrono::milliseconds time) {
    QWidget elsewhere;
    elsewhere.show();
    QApplication::setActiveWindow(&elsewhere);
    auto* const quit = Parts_->Window().findChild<QPushButton*>("cmdQuit");
    QTimer::singleShot(time, quit, &QPushButton::click);
    ClickRecentFile(image);
    ExpectStatus("Programming was canceled.");
}

void BenchWindow::Repaint() {
    Parts_->Window().repaint();
}

bool BenchWindow::IsRunning() const {
    return !Parts_->Window().findChild<QPushButton*>("cmdDownload")->isEnabled();
}

// The way to a download that leads through no dialog.
void BenchWindow::ClickRecentFile(const std::filesystem::path& image) {
    auto* const entry = Parts_->Window().findChild<QAction*>("mnuFileMRF_1");
    entry->setText(QString::fromStdString("&1 " + image.string()));
    entry->trigger();
    AwaitEndOfRun();
}

void BenchWindow::AwaitEndOfRun() const {
    while (IsRunning()) {
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

void BenchWindow::ExpectStatus(const std::string& wanted) const {
    const auto& window = Parts_->Window();
    const auto status = window.findChild<QLabel*>("lblStatus")->text().toStdString();
    if (status != wanted) {
        const auto display = window.findChild<QPlainTextEdit*>("txtDisplay")->toPlainText().toStdString();
        throw std::runtime_error("a run of the window failed: " + status + '\n' + display);
    }
}

class Heartbeat::Beats {
public:
    explicit Beats(const BenchWindow& window) : Window_(window) {
        constexpr auto interval = 2ms;
        QObject::connect(&Timer_, &QTimer::timeout, &Timer_, [this] { Beat(); });
        Timer_.setTimerType(Qt::PreciseTimer);
        Timer_.start(interval);
    }

    void Beat() {
        const auto now = Clock::now();
        const bool runs = Window_.IsRunning();
        if (runs || Ran_) {
            Longest_ = std::max<Seconds>(Longest_, now - Last_);
        }
        Last_ = now;
        Ran_ = runs;
    }

    Seconds Longest() const { return Longest_; }

private:
    const BenchWindow& Window_;
    bool Ran_ = false;
    Clock::time_point Last_ = Clock::now();
    Seconds Longest_{};
    QTimer Timer_;
};

Heartbeat::Heartbeat(const BenchWindow& window) : Beats_(std::make_unique<Beats>(window)) {}

Heartbeat::~Heartbeat() = default;

Seconds Heartbeat::LongestPause() const {
    // A run that has ended has kept the next beat waiting until now.
    Beats_->Beat();
    return Beats_->Longest();
}

}  // namespace bench
