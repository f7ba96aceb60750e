#include "settings/frmOptions.h"

#include <algorithm>
#include <utility>

#include "forms/FormParts.h"
#include "forms/Hourglass.h"
#include "ui_frmOptions.h"

namespace burnwick {

namespace {

constexpr std::size_t Summary = 1;

}  // namespace

frmOptions::frmOptions(Services services, QWidget* parent)
    : PlacedDialog(parent), Services_(std::move(services)), Ui_(std::make_unique<Ui::frmOptions>()) {
    Ui_->setupUi(this);
    NameControls(*this);
    optLogOption_ = {Ui_->optLogOption_0, Ui_->optLogOption_1, Ui_->optLogOption_2};
    LoadSettings();
    connect(Ui_->cmdOK, &QPushButton::clicked, this, &frmOptions::cmdOK_Click);
    connect(Ui_->cmdCancel, &QPushButton::clicked, this, &frmOptions::reject);
}

frmOptions::~frmOptions() = default;

void frmOptions::LoadSettings() {
    Ui_->chkFlashMenu->setChecked(Is(Setting::ContextMenu, "Yes"));
    Ui_->chkDesktop->setChecked(Is(Setting::Desktop, "Yes"));
    Ui_->chkVerify->setChecked(Is(Setting::Verify, "1"));
    QRadioButton* selected = optLogOption_[Summary];
    for (QRadioButton* const option : optLogOption_) {
        if (Is(Setting::LogOption, option->text().toStdString())) {
            selected = option;
        }
    }
    selected->setChecked(true);
    // Qt makes one stop of them for the Tab key, but only once one has had the focus.
    for (QRadioButton* const option : optLogOption_) {
        option->setFocusPolicy(option == selected ? Qt::StrongFocus : Qt::ClickFocus);
    }
}

void frmOptions::cmdOK_Click() {
    FinishClicks(*this);
    ChangeDesktop();
    const auto* const selected =
        *std::find_if(optLogOption_.begin(), optLogOption_.end(),
                      [](const QRadioButton* option) { return option->isChecked(); });
    Services_.Settings.Change([&](SettingValues& settings) {
        settings.Store(Setting::ContextMenu, Ui_->chkFlashMenu->isChecked() ? "Yes" : "No");
        settings.Store(Setting::Desktop, Ui_->chkDesktop->isChecked() ? "Yes" : "No");
        settings.Store(Setting::LogOption, selected->text().toStdString());
        settings.Store(Setting::Verify, Ui_->chkVerify->isChecked() ? "1" : "0");
    });
    accept();
}

void frmOptions::ChangeDesktop() const {
    const Hourglass hourglass;
    if (Ui_->chkFlashMenu->isChecked()) {
        Services_.Shell.RegisterFileType(Services_.Program);
    } else {
        Services_.Shell.UnregisterFileType();
    }
    if (Ui_->chkDesktop->isChecked()) {
        Services_.Shell.CreateDesktopShortcut(Services_.Program);
    } else {
        Services_.Shell.DeleteDesktopShortcut();
    }
}

bool frmOptions::Is(const SettingEntry& entry, const std::string& value) const {
    return Services_.Settings.Stored(entry) == value;
}

}  // namespace burnwick
