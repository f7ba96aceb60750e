#pragma once

#include <gmock/gmock.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QGroupBox>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTimer>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "forms/DropDownList.h"
#include "gui/FormTest.h"
#include "platform/serial/SystemPorts.h"
#include "platform/window/BoxText.h"
#include "ports/PortTable.h"
#include "ports/frmCOMPortSetting.h"
#include "support/SomePorts.h"

namespace burnwick::test {

// Three ports, COM1 (which is saved), COM6 and COM16, at 115200 bit/s.
class frmCOMPortSettingTest : public FormTest {
protected:
    frmCOMPortSettingTest()
        : Device(*new SomePorts(Loop, There)),  // owned by Control
          Control(Loop, std::unique_ptr<SerialDevice>(&Device),
                  [this](int port) { return DeviceOf(port, Devices); }) {
        QApplication::setDoubleClickInterval(1);
    }

    std::unique_ptr<QDialog> New() override {
        return std::make_unique<frmCOMPortSetting>(
            frmCOMPortSetting::Services{
                .Control = Control,
                .Devices = Devices,
                .BaudRate = Settings["COMPort/BaudRate"],
                .Store =
                    [this](int port, const std::string& baudRate) {
                        Settings["COMPort/COM"] = std::to_string(port);
                        Settings["COMPort/BaudRate"] = baudRate;
                        Note("store COM" + std::to_string(port) + " " + baudRate);
                    },
                .ShowChoice =
                    [this](int port, const std::string& baudRate) {
                        Note("show COM" + std::to_string(port) + " " + baudRate);
                    },
                .LogBaudRateChange = [this](bool to57600) { Note(to57600 ? "log 57600" : "log 115200"); },
            },
            Parent);
    }

    DropDownList& List() { return Find<DropDownList>("cboPort"); }
    QPushButton& OK() { return Find<QPushButton>("cmdOK"); }
    QPushButton& Cancel() { return Find<QPushButton>("cmdCancel"); }
    QRadioButton& Option(int index) {
        return Find<QRadioButton>(index == 0 ? "optBaudRate_0" : "optBaudRate_1");
    }
    std::string Selected() { return List().currentText().toStdString(); }
    std::string FrameCaption() { return Find<QGroupBox>("Frame1").title().toStdString(); }
    std::vector<std::string> Listed() {
        std::vector<std::string> texts;
        for (int index = 0; index < List().count(); ++index) {
            texts.push_back(List().itemText(index).toStdString());
        }
        return texts;
    }
    std::string Tip(int index) { return List().itemData(index, Qt::ToolTipRole).toString().toStdString(); }

    // On its button, left of the text.
    void Click(QRadioButton& option) {
        QTest::mouseClick(&option, Qt::LeftButton, {}, QPoint(8, option.height() / 2));
    }
    using FormTest::Click;
    void DropDown() {
        QTest::mouseClick(&List(), Qt::LeftButton);
        ASSERT_TRUE(QTest::qWaitForWindowExposed(List().view()->window()));
        // A list just dropped down takes a quick release for the end of that click.
        QTest::qWait(20);
    }
    void Choose(int index) {
        DropDown();
        QAbstractItemView& view = *List().view();
        const QPoint place = view.visualRect(view.model()->index(index, 0)).center();
        QTest::mouseMove(view.viewport(), place);
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, place);
        ASSERT_FALSE(view.isVisible());
    }
    // Clicks OK in the message box that is about to open.
    void AwaitBox() {
        QTimer::singleShot(0, &Form(), [this] {
            auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            EXPECT_EQ(box->icon(), QMessageBox::Warning);
            Box = {box->windowTitle().toStdString(), box->text().toStdString()};
            QTest::mouseClick(box->button(QMessageBox::Ok), Qt::LeftButton);
        });
    }
    void Note(const std::string& call) { Calls.push_back(call); }

    std::map<std::string, std::string> Settings{{"COMPort/COM", "1"}, {"COMPort/BaudRate", "1"}};
    std::vector<std::string> Calls;  // what the dialog asked of the world, in order
    OwnDevices Devices = [this](int port) { return Settings["Ports/COM" + std::to_string(port)]; };
    VirtualLoop Loop;
    std::set<std::string> There{SystemDeviceOf(1), SystemDeviceOf(6), SystemDeviceOf(16)};
    SomePorts& Device;
    MSComm Control;
    BoxText Box;  // the message box that was shown
};

}  // namespace burnwick::test
