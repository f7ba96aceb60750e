// The commands that only open other dialogs.
#include "app/frmMain.h"
#include "forms/MsgBox.h"
#include "log/ActivityLog.h"
#include "log/frmActivity.h"
#include "platform/files/Utf8Path.h"
#include "ports/frmCOMPortSetting.h"
#include "settings/frmOptions.h"
#include "tools/WebEmail.h"
#include "tools/frmAbout.h"
#include "tools/frmAboutOEM.h"
#include "tools/frmFileCompare.h"
#include "tools/frmHelp.h"
#include "ui_frmMain.h"

namespace burnwick {

void frmMain::mnuToolCOMPortSetting_Click() {
    frmCOMPortSetting(
        {.Control = MSComm1,
         .Devices = PortDevices(Services_.Settings),
         .BaudRate = Services_.Settings.Stored(Setting::BaudRate),
         .Store =
             [this](int port, const std::string& baudRate) {
                 Services_.Settings.Change([&](SettingValues& settings) {
                     settings.Store(Setting::ComPort, std::to_string(port));
                     settings.Store(Setting::BaudRate, baudRate);
                 });
             },
         .ShowChoice =
             [this](int port, const std::string& baudRate) {
                 SetStatus(StatusAfterPortChoice(Ui_->lblStatus->text().toStdString(), port, baudRate));
             },
         .LogBaudRateChange =
             [this](bool to57600) {
                 LogBaudRateChange(Services_.ProgramFolder, to57600, Services_.Loop.Now());
             }},
        this)
        .exec();
}

// Where the program is installed, or where it keeps what is its own: either may be marked.
bool frmMain::IsOfEquipmentMaker() const {
    return IsOEM(Utf8Text(Services_.Executable.parent_path())) || IsOEM(Utf8Text(Services_.ProgramFolder));
}

void frmMain::mnuFileCompareFiles_Click() {
    frmFileCompare({.Folder = Services_.Settings.Value(Setting::LastPath), .Beep = Services_.Beep}, this)
        .exec();
}

void frmMain::mnuToolViewLog_Click() {
    frmActivity(Services_.ProgramFolder, this).exec();
}

void frmMain::mnuToolOptions_Click() {
    frmOptions({.Settings = Services_.Settings, .Shell = Services_.Shell, .Program = Services_.Executable},
               this)
        .exec();
}

// Beside the window, not before it: a run may go on meanwhile, and must not wait for a message.
void frmMain::mnuHelpBurnwickHelp_Click() {
    const auto file = Services_.HelpFile();
    if (file.empty()) {
        MsgBox(this, QMessageBox::Critical, HelpFileMissingBox(Services_.Product.Title));
        return;
    }
    const auto openLink = [this](const std::string& link) { WebEmail::Open(link, Services_.OpenLink); };
    ShowHelp(file, IsOfEquipmentMaker(), openLink, *this);
}

void frmMain::mnuHelpAbout_Click() {
    if (IsOfEquipmentMaker()) {
        frmAboutOEM(Services_.Product, this).exec();
    } else {
        frmAbout(Services_.Product, Services_.OpenLink, this).exec();
    }
}

}  // namespace burnwick
