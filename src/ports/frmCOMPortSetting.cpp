#include "ports/frmCOMPortSetting.h"

#include <QSignalBlocker>
#include <algorithm>
#include <utility>

#include "forms/FormParts.h"
#include "forms/MsgBox.h"
#include "ports/PortEntries.h"
#include "ports/modFindCOMPorts.h"
#include "ui_frmCOMPortSetting.h"

namespace burnwick {

namespace {

constexpr int TwipsPerInch = 1440;
constexpr int TwipsBelowMainWindow = 1000;

}  // namespace

frmCOMPortSetting::frmCOMPortSetting(Services services, QWidget* parent)
    : PlacedDialog(parent),
      Services_(std::move(services)),
      Ui_(std::make_unique<Ui::frmCOMPortSetting>()),
      SavedPort_(Services_.Control.CommPort()) {
    Ui_->setupUi(this);
    NameControls(*this);
    FindCOMPorts();
    LoadBaudRateOption();
    if (!Ui_->cboPort->isEnabled()) {
        Ui_->cmdOK->setEnabled(false);
    }
    connect(Ui_->cboPort, &QComboBox::currentIndexChanged, this, &frmCOMPortSetting::cboPort_Click);
    // The entry that is selected already can be clicked, too.
    connect(Ui_->cboPort, &QComboBox::activated, this, &frmCOMPortSetting::cboPort_Click);
    connect(Ui_->cboPort, &DropDownList::DropDown, this, &frmCOMPortSetting::cboPort_DropDown);
    connect(Ui_->cboPort, &DropDownList::KeyUp, this, &frmCOMPortSetting::cboPort_KeyUp);
    for (const int index : {0, 1}) {
        auto* const option = index == 0 ? Ui_->optBaudRate_0 : Ui_->optBaudRate_1;
        connect(option, &QRadioButton::toggled, this, [this, index](bool checked) {
            if (checked) {
                optBaudRate_Click(index);
            }
        });
    }
    connect(Ui_->cmdOK, &QPushButton::clicked, this, &frmCOMPortSetting::cmdOK_Click);
    connect(Ui_->cmdCancel, &QPushButton::clicked, this, &frmCOMPortSetting::reject);
}

frmCOMPortSetting::~frmCOMPortSetting() = default;

void frmCOMPortSetting::Place() {
    PlacedDialog::Place();
    if (parentWidget() != nullptr) {
        const int below = TwipsBelowMainWindow * parentWidget()->logicalDpiY() / TwipsPerInch;
        const int lowest = ScreenOf(*this).bottom() + 1 - frameGeometry().height();
        move(x(), std::min(parentWidget()->frameGeometry().top() + below, lowest));
    }
}

// Lists the ports that are not in the list yet, each in its place.
void frmCOMPortSetting::FindCOMPorts() {
    const PortEntries found = modFindCOMPorts::FindCOMPorts(Services_.Control, Services_.Devices);
    DropDownList& list = *Ui_->cboPort;
    const bool isFirst = list.count() == 0;
    const QSignalBlocker quiet(list);
    for (int index = 0; const PortEntry& entry : found.Entries) {
        while (index < list.count() && SelectedPort(list.itemText(index).toStdString()) < entry.Number) {
            ++index;
        }
        const QString text = QString::fromStdString(entry.Text);
        if (entry.Number == 0 && !isFirst) {
            break;  // what was there before may come back
        }
        if (list.itemText(index) != text) {
            list.insertItem(index, text);
        }
        list.setItemData(index, PlainToolTip(QString::fromStdString(entry.ToolTip)), Qt::ToolTipRole);
    }
    Ui_->Frame1->setTitle(QString::fromStdString(PortsCaption(list.count())));
    Ui_->Frame1->setAccessibleDescription(Ui_->Frame1->title());
    if (isFirst) {
        list.setToolTip(PlainToolTip(QString::fromStdString(found.ToolTip)));
        list.setCurrentIndex(static_cast<int>(found.Selected));
        cboPort_Click();
    }
}

// A list that says that there is no port is of no use.
int frmCOMPortSetting::GetSelectedPort() {
    const int port = SelectedPort(Ui_->cboPort->currentText().toStdString());
    if (port == 0) {
        Ui_->cboPort->setEnabled(false);
    }
    return port;
}

void frmCOMPortSetting::LoadBaudRateOption() {
    QRadioButton* selected = Ui_->optBaudRate_0;
    QRadioButton* other = Ui_->optBaudRate_1;
    if (BaudOptionOf(Services_.BaudRate) == 1) {
        std::swap(selected, other);
    }
    selected->setChecked(true);
    // Qt makes one stop of them for the Tab key, but only once one has had the focus.
    other->setFocusPolicy(Qt::ClickFocus);
}

void frmCOMPortSetting::cboPort_Click() {
    Ui_->cboPort->SetLocked(true);
    EnableOKForPort();
}

void frmCOMPortSetting::EnableOKForPort() {
    Ui_->cmdOK->setEnabled(GetSelectedPort() != SavedPort_);
}

void frmCOMPortSetting::cboPort_DropDown() {
    Ui_->cboPort->SetLocked(false);
    FindCOMPorts();
}

void frmCOMPortSetting::cboPort_KeyUp(int key) {
    switch (key) {
        case Qt::Key_Escape:
            reject();
            break;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (GetSelectedPort() != SavedPort_) {
                cmdOK_Click();
            }
            break;
        case Qt::Key_Down:
            Select(Ui_->cboPort->currentIndex() + 1);
            break;
        case Qt::Key_Up:
            Select(Ui_->cboPort->currentIndex() - 1);
            break;
        default:
            break;
    }
}

// The entry stays at either end of the list; the button follows it in any case.
void frmCOMPortSetting::Select(int index) {
    if (index >= 0 && index < Ui_->cboPort->count()) {
        Ui_->cboPort->setCurrentIndex(index);
    }
    EnableOKForPort();
}

// The port is not looked at here, on purpose: back at the stored speed there is nothing to confirm, whatever
// port is selected.
void frmCOMPortSetting::optBaudRate_Click(int index) {
    BaudRateChanged_ = index != BaudIndexOf(Services_.BaudRate);
    Ui_->cmdOK->setEnabled(BaudRateChanged_ && Ui_->cboPort->isEnabled());
}

void frmCOMPortSetting::cmdOK_Click() {
    MSComm& control = Services_.Control;
    const int port = GetSelectedPort();
    if (!TakePort(port)) {
        return;
    }
    const bool to57600 = Ui_->optBaudRate_0->isChecked();
    Services_.Store(control.CommPort(), to57600 ? "0" : "1");
    const auto* const option = to57600 ? Ui_->optBaudRate_0 : Ui_->optBaudRate_1;
    Services_.ShowChoice(port, option->text().trimmed().toStdString());
    if (control.PortOpen()) {
        control.SetPortOpen(false);
    }
    if (BaudRateChanged_) {
        Services_.LogBaudRateChange(to57600);
    }
    accept();
}

// Another port than before has to open; one that does not is told, and the one before stays in force.
bool frmCOMPortSetting::TakePort(int port) {
    MSComm& control = Services_.Control;
    if (port == SavedPort_) {
        control.SetCommPort(port);
        return true;
    }
    if (control.PortOpen()) {
        control.SetPortOpen(false);
    }
    if (const CommResult error = modFindCOMPorts::TestPort(control, port)) {
        MsgBox(this, QMessageBox::Warning, PortRefusedBox(port, error->Description));
        control.SetCommPort(SavedPort_);
        return false;
    }
    return true;
}

}  // namespace burnwick
