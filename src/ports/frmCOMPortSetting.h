#pragma once

#include <functional>
#include <memory>
#include <string>

#include "forms/PlacedDialog.h"
#include "platform/serial/MSComm.h"
#include "ports/PortTable.h"

namespace burnwick {

namespace Ui {
class frmCOMPortSetting;
}

// Asks for the serial port and the speed of the link. Only OK changes anything.
class frmCOMPortSetting final : public PlacedDialog {
    Q_OBJECT

public:
    struct Services {
        MSComm& Control;  // is closed, and opened for a moment to try a port; must outlive the dialog
        OwnDevices Devices;
        std::string BaudRate;  // as it is stored: "0" or "1"
        std::function<void(int port, const std::string& baudRate)> Store;
        // Tells the user what was chosen: the port's number, the speed as text.
        std::function<void(int port, const std::string& baudRate)> ShowChoice;
        // The speed chosen is another one than before.
        std::function<void(bool to57600)> LogBaudRateChange;
    };

    explicit frmCOMPortSetting(Services services, QWidget* parent = nullptr);
    ~frmCOMPortSetting() override;

protected:
    void Place() override;

private:
    void FindCOMPorts();
    int GetSelectedPort();
    void LoadBaudRateOption();
    void cboPort_Click();
    void cboPort_DropDown();
    void cboPort_KeyUp(int key);
    void optBaudRate_Click(int index);
    void cmdOK_Click();
    bool TakePort(int port);
    void EnableOKForPort();
    void Select(int index);

    Services Services_;
    std::unique_ptr<Ui::frmCOMPortSetting> Ui_;
    int SavedPort_;
    bool BaudRateChanged_ = false;
};

}  // namespace burnwick
