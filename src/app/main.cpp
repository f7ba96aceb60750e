#include <QApplication>
#include <QDir>
#include <QIcon>
#include <QSessionManager>
#include <QTimer>
#include <algorithm>
#include <iostream>
#include <string>
#include <vector>

#include "ProductData.h"
#include "app/frmMain.h"
#include "job/JobThread.h"
#include "job/ListedFile.h"
#include "platform/desktop/Notification.h"
#include "platform/desktop/OpenLink.h"
#include "platform/files/ProgramFolder.h"
#include "platform/files/Utf8Path.h"
#include "platform/loop/MessageLoop.h"
#include "platform/loop/WindowLoop.h"
#include "platform/process/Interrupt.h"
#include "platform/process/ProcessText.h"
#include "platform/process/StandardStreams.h"
#include "platform/serial/SerialDevice.h"
#include "platform/window/Attention.h"
#include "settings/RegistryShell.h"
#include "settings/modUtility.h"

namespace {

// A file association passes a path unquoted: its blanks have made several arguments of it.
std::string CommandLine() {
    const QStringList arguments = QApplication::arguments().mid(1);
    std::vector<std::string> words(static_cast<std::size_t>(arguments.size()));
    std::transform(arguments.begin(), arguments.end(), words.begin(),
                   [](const QString& argument) { return argument.toStdString(); });
    return burnwick::CommandText(words);
}

QIcon ProgramIcon() {
    QIcon icon;
    for (const char* const size : {"16", "22", "24", "32", "48", "64", "128", "256"}) {
        icon.addFile(QString(":/icons/burnwick-%1.png").arg(size));
    }
    return icon;
}

// Copies with a home of their own are stations of their own: they know nothing of each other.
std::unique_ptr<burnwick::SingleInstance> CopiesOf(const std::string& title) {
    return burnwick::CopiesNamed(title + burnwick::EnvironmentText("BURNWICK_HOME"));
}

burnwick::WindowServices ServicesOn(burnwick::EventLoop& loop, burnwick::MessageLoop& portLoop,
                                    burnwick::ShellIntegration& shell) {
    using namespace burnwick;
    return {
        .Product = ProductData(),
        .CommandLine = CommandLine(),
        .Debug = EnvironmentText("BURNWICK_DEBUG") == "1",
        .Trace = [](const std::string& line) { std::cerr << line << std::endl; },
        .Loop = loop,
        .PortLoop = portLoop,
        .Settings = IniSettings(),
        .ProgramFolder = ProgramFolder(),
        .Executable = Utf8Path(QDir::toNativeSeparators(QApplication::applicationFilePath()).toStdString()),
        .Shell = shell,
        .Copies = CopiesOf,
        .NewDevice = NewSerialDevice,
        .NewJob = NewJobThread(loop),
        .InhibitSleep = InhibitSleep,
        .Beep = [] { QApplication::beep(); },
        .Flash = [](QWidget* window) { AskForAttention(window->winId()); },
        .Notify = Notify,
        .HelpFile = [] { return ListedFile(ShippedFolders(), "Burnwick.hlp"); },
        .OpenLink = OpenLink,
    };
}

// A unit that is half programmed is of no use, so the session does not end in a run. The system waits for the
// answer: nothing may be done here but to give it.
void KeepSessionInRuns(const QApplication& application, burnwick::frmMain& window) {
    QObject::connect(&application, &QGuiApplication::commitDataRequest, &window,
                     [&window](QSessionManager& session) {
                         if (window.IsRunning()) {
                             session.cancel();
                         }
                     });
}

}  // namespace

int main(int argc, char* argv[]) {
    using namespace burnwick;
    KeepStandardStreams();
    SurviveFailedWrites();
    HoldInterrupts();
    int words = WordsForToolkit(argc);
    const QApplication application(words, argv);
    const QString title = QString::fromStdString(ProductData().Title);
    QApplication::setApplicationName(title);
    QApplication::setDesktopFileName(DesktopId);
    QApplication::setWindowIcon(ProgramIcon());
    const auto loop = NewWindowLoop();
    const auto portLoop = NewSystemLoop();
    const auto shell = DesktopShell();
    WindowServices services = ServicesOn(*loop, *portLoop, *shell);
    modUtility::SetIniPath(services.ProgramFolder / "Burnwick.ini");
    frmMain window(services);
    KeepSessionInRuns(application, window);
    const auto interrupt = CatchInterrupts(*loop, [&window] { window.Unload(); });
    QTimer::singleShot(0, &window, [&window] {
        if (!window.Form_Load()) {
            QApplication::quit();
        }
    });
    return QApplication::exec();
}
