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
    Ui_->chkFlashMenu->setChecked(Is("ContextMenu", "Yes"));
    Ui_->chkDesktop->setChecked(Is("Desktop", "Yes"));
    Ui_->chkVerify->setChecked(Is("Verify", "1"));
    QRadioButton* selected = optLogOption_[Summary];
    for (QRadioButton* const option : optLogOption_) {
        if (Is("LogOption", option->text().toStdString())) {
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
    {
        const Hourglass hourglass;
        StoreFileType();
        StoreShortcut();
    }
    const auto* const selected =
        *std::find_if(optLogOption_.begin(), optLogOption_.end(),
                      [](const QRadioButton* option) { return option->isChecked(); });
    Store("LogOption", selected->text().toStdString());
    Store("Verify", Ui_->chkVerify->isChecked() ? "1" : "0");
    accept();
}

void frmOptions::StoreFileType() {
    if (Ui_->chkFlashMenu->isChecked()) {
        Services_.Shell.RegisterFileType(Services_.Program);
        Store("ContextMenu", "Yes");
    } else {
        Services_.Shell.UnregisterFileType();
        Store("ContextMenu", "No");
    }
}

void frmOptions::StoreShortcut() {
    if (Ui_->chkDesktop->isChecked()) {
        Services_.Shell.CreateDesktopShortcut(Services_.Program);
        Store("Desktop", "Yes");
    } else {
        Services_.Shell.DeleteDesktopShortcut();
        Store("Desktop", "No");
    }
}

bool frmOptions::Is(const std::string& key, const std::string& value) const {
    return Services_.Setting("Options", key) == value;
}

void frmOptions::Store(const std::string& key, const std::string& value) const {
    Services_.Store("Options", key, value);
}

}  // namespace burnwick
