#include "app/frmMain.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QFontDatabase>
#include <QKeyEvent>
#include <QMimeData>
#include <QTimer>
#include <QToolTip>
#include <chrono>

#include "app/modSystemMenu.h"
#include "forms/FormParts.h"
#include "forms/MsgBox.h"
#include "image/modBinFileInfo.h"
#include "job/RecentFiles.h"
#include "platform/files/Utf8Path.h"
#include "ports/modFindCOMPorts.h"
#include "settings/ShellCheck.h"
#include "settings/modActivatePrevInstance.h"
#include "ui_frmMain.h"

namespace burnwick {

namespace {

using namespace std::chrono_literals;

// A whole run, but for its verification, is read without scrolling.
constexpr int DisplayLines = 20;
constexpr int DisplayColumns = 68;

// The one image among what is dragged over the window; empty for anything else.
std::string DraggedImage(const QMimeData& data) {
    const auto urls = data.urls();
    if (urls.size() != 1 || !urls.constFirst().isLocalFile()) {
        return {};
    }
    const std::string path = QDir::toNativeSeparators(urls.constFirst().toLocalFile()).toStdString();
    const bool isImage =
        modBinFileInfo::ReadTrouble(path).empty() && modBinFileInfo::CheckFileFormat(path).empty();
    return isImage ? path : std::string();
}

std::unique_ptr<Ui::frmMain> NewUi(QMainWindow& window) {
    auto ui = std::make_unique<Ui::frmMain>();
    ui->setupUi(&window);
    return ui;
}

void KeepPlaceWhenHidden(QWidget& control) {
    QSizePolicy policy = control.sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    control.setSizePolicy(policy);
}

// A key that is still held down from a dialog, or the second click of a double one: a run was to be
// cancelled, and not the program left as well.
bool IsUnintended(const QEvent& event) {
    return event.type() == QEvent::MouseButtonDblClick
           || (event.type() == QEvent::KeyPress && static_cast<const QKeyEvent&>(event).isAutoRepeat());
}

}  // namespace

frmMain::frmMain(WindowServices& services)
    : Services_(services),
      Ui_(NewUi(*this)),
      MSComm1(services.PortLoop, services.NewDevice(),
              [this](int port) { return DeviceOf(port, PortDevices(Services_.Settings)); }),
      tmrStatus(services.Loop.NewTimer(800ms, [this] { tmrStatus_Timer(); })),
      Title_(services.Product.Title),
      Summary_(*this, *Ui_),
      Recent_(*Ui_, services.Settings, [this](const std::string& path) { mnuFileMRF_Click(path); }),
      TitleBar_(
          *this, services.Loop, [this] { return AwayCaption(Texts_.Timing, Percent); },
          [this] { Services_.Flash(this); }) {
    Layout();
    ConnectCommands();
}

frmMain::~frmMain() = default;

// What a form file cannot tell: sizes that follow the fonts.
void frmMain::Layout() {
    NameControls(*this);
    Ui_->txtDisplay->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    const QFontMetrics metrics = Ui_->txtDisplay->fontMetrics();
    const int border = 2 * (Ui_->txtDisplay->frameWidth() + 4);
    Ui_->txtDisplay->setMinimumSize(metrics.averageCharWidth() * DisplayColumns + border,
                                    metrics.lineSpacing() * DisplayLines + border);
    Ui_->cmdQuit->installEventFilter(this);
    Ui_->txtDisplay->installEventFilter(this);
    Ui_->lblRate->setMinimumWidth(fontMetrics().horizontalAdvance("000.0 KB/s, 00:00 left"));
    KeepPlaceWhenHidden(*Ui_->lblStatus);
    KeepPlaceWhenHidden(*Ui_->lblTiming);
    Ui_->lblTiming->hide();
    Ui_->chkDebug->setVisible(Services_.Debug);
    Ui_->chkDebug->setChecked(Services_.Debug);
    layout()->setSizeConstraint(QLayout::SetFixedSize);
    // Its frame says so, too.
    setWindowFlag(Qt::MSWindowsFixedSizeDialogHint);
}

void frmMain::ConnectCommands() {
    const auto onClick = [this](QPushButton* button, void (frmMain::*handler)()) {
        connect(button, &QPushButton::clicked, this, handler);
    };
    const auto onCommand = [this](QAction* command, void (frmMain::*handler)()) {
        connect(command, &QAction::triggered, this, handler);
    };
    onClick(Ui_->cmdDownload, &frmMain::cmdDownload_Click);
    onClick(Ui_->cmdUpload, &frmMain::cmdUpload_Click);
    onClick(Ui_->cmdQuit, &frmMain::cmdQuit_Click);
    onCommand(Ui_->mnuFileDownload, &frmMain::cmdDownload_Click);
    onCommand(Ui_->mnuFileUpload, &frmMain::cmdUpload_Click);
    onCommand(Ui_->mnuFileCompareFiles, &frmMain::mnuFileCompareFiles_Click);
    connect(Ui_->mnuFileCopy, &QAction::triggered, this, [this] { Summary_.CopyLine(); });
    connect(Ui_->mnuFileCopyToFolder, &QAction::triggered, this, [this] {
        // A run that begins must not wait for a folder to be chosen.
        if (!Running_) {
            Summary_.CopyToFolder();
        }
    });
    onCommand(Ui_->mnuFileExit, &frmMain::cmdQuit_Click);
    onCommand(Ui_->mnuToolCOMPortSetting, &frmMain::mnuToolCOMPortSetting_Click);
    onCommand(Ui_->mnuToolViewLog, &frmMain::mnuToolViewLog_Click);
    onCommand(Ui_->mnuToolOptions, &frmMain::mnuToolOptions_Click);
    onCommand(Ui_->mnuHelpBurnwickHelp, &frmMain::mnuHelpBurnwickHelp_Click);
    onCommand(Ui_->mnuHelpAbout, &frmMain::mnuHelpAbout_Click);
}

bool frmMain::Form_Load() {
    Title_ = ApplicationTitle(Services_.Product.Title, BuildNumber(Services_.Product));
    Copies_ = Services_.Copies(Title_);
    if (modActivatePrevInstance::ActivatePrevInstance(*Copies_,
                                                      Services_.Settings.Value(Setting::Programming))) {
        return false;
    }
    Copies_->Claim([this] { ComeForward(); });
    Summary_.Clear();
    if (Ui_->chkDebug->isChecked()) {
        Title_ = "Burnwick-Debug";
    }
    CheckShellIntegration(Services_.Shell, Services_.Executable, Services_.Settings);
    Services_.Settings.StoreMissing(Setting::LogOption);
    CheckStartupPort();
    FillMissingSettings();
    FadeBar();
    ShowInBar(Ui_->PercentBar1->objectName(), 0);
    TitleBar_.SetCaption(Title_);
    Ui_->cmdDownload->setFocus();
    show();
    SystemMenu_ = SystemMenuOf(winId());
    if (!Services_.CommandLine.empty()) {
        TransferMode = TransferModes::Download;
        RunFlashCommand();
    }
    for (const int item : {0, 2, 4}) {  // Restore, Size, Maximize
        modSystemMenu::RemoveSystemMenuItem(*SystemMenu_, item);
    }
    Recent_.Load();
    return true;
}

void frmMain::FillMissingSettings() const {
    Services_.Settings.Change([](SettingValues& settings) {
        settings.StoreMissing(Setting::BaudRate);
        settings.StoreMissing(Setting::Programming);
    });
}

void frmMain::CheckStartupPort() {
    SettingStore& settings = Services_.Settings;
    MSComm1.SetCommPort(modFindCOMPorts::ChooseStartupPort(
        MSComm1, settings.Stored(Setting::ComPort),
        [&](int port) { settings.Store(Setting::ComPort, std::to_string(port)); }));
    SetStatus(ReadyText(MSComm1.CommPort(), GetBaudRateSetting(settings.Value(Setting::BaudRate))));
}

void frmMain::ComeForward() {
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
}

void frmMain::Unload() {
    Unloading_ = true;
    // The command that has opened a dialog ends with it.
    for (QWidget* dialog = QApplication::activeModalWidget(); dialog != nullptr && dialog->close();) {
        dialog = QApplication::activeModalWidget();
    }
    close();
    Unloading_ = false;
}

void frmMain::closeEvent(QCloseEvent* event) {
    event->ignore();
    if (!Unloading_ && SendsBlocks()) {
        RefuseToClose();
        return;
    }
    if (!Unloading_ && SystemMenu_ && SystemMenu_->CloseIsGreyed()) {
        return;
    }
    if (Running_) {
        CloseWhenDone_ = true;
        CancelRun();
        return;
    }
    Form_Unload();
    event->accept();
}

// True while Cancel is disabled: a unit that is half programmed does not start any more.
bool frmMain::SendsBlocks() const {
    return JobRuns_ && TransferMode == TransferModes::Download && !Texts_.Verifying
           && !Ui_->cmdQuit->isEnabled();
}

void frmMain::RefuseToClose() {
    Services_.Beep();
    const QWidget& cancel = *Ui_->cmdQuit;
    QToolTip::showText(cancel.mapToGlobal(QPoint(0, cancel.height())),
                       "The unit is being programmed, and does not start again if that is broken off.\n"
                       "Close the window when the programming has ended.",
                       this);
}

void frmMain::Form_Unload() {
    if (MSComm1.PortOpen()) {
        MSComm1.SetPortOpen(false);
    }
    tmrStatus->SetEnabled(false);
    TitleBar_.Stop();
    Services_.Settings.Store(Setting::Programming, "No");
    CloseWindowByTitle("Burnwick Help");
    CloseWindowByTitle("Burnwick (OEM) Help");
}

void frmMain::AddRecentFile(const std::string& path) {
    if (LeavesRecentFile(Result_, TransferMode == TransferModes::Upload)) {
        Recent_.Add(path);
    }
}

void frmMain::mnuFileMRF_Click(const std::string& path) {
    if (Running_) {
        return;
    }
    std::error_code ignored;
    if (!std::filesystem::exists(Utf8Path(path), ignored)) {
        MsgBox(this, QMessageBox::Critical, FileNotFoundBox(path));
        return;
    }
    DownloadFile(path);
    AddRecentFile(path);
}

void frmMain::dragEnterEvent(QDragEnterEvent* event) {
    if (!Running_ && !DraggedImage(*event->mimeData()).empty()) {
        event->acceptProposedAction();
    }
}

void frmMain::dropEvent(QDropEvent* event) {
    const std::string path = Running_ ? "" : DraggedImage(*event->mimeData());
    if (path.empty()) {
        return;
    }
    event->acceptProposedAction();
    // Whoever the image was dragged from waits for this call to return.
    QTimer::singleShot(0, this, [this, path] { DownloadFile(path); });
}

bool frmMain::eventFilter(QObject* watched, QEvent* event) {
    if (watched == Ui_->cmdQuit && IsUnintended(*event)) {
        return true;
    }
    if (watched == Ui_->txtDisplay && event->type() == QEvent::KeyPress) {
        const auto* const key = static_cast<QKeyEvent*>(event);
        // The way to stop a download when Cancel is disabled already; hidden on purpose.
        if (JobRuns_ && TransferMode == TransferModes::Download && Texts_.MovesBlocks
            && key->key() == Qt::Key_S && key->modifiers() == Qt::ShiftModifier) {
            Job_->Cancel();
            return true;
        }
    }
    return QMainWindow::eventFilter(watched, event);
}

}  // namespace burnwick
