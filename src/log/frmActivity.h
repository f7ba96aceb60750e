#pragma once

#include <QString>
#include <QTimer>
#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>
#include <string_view>

#include "forms/Hourglass.h"
#include "forms/PlacedDialog.h"
#include "log/LogSearch.h"
#include "log/frmActivityFind.h"

namespace burnwick {

namespace Ui {
class frmActivity;
}

// Shows the activity log as it is when the viewer is made, searches in it and clears it.
class frmActivity final : public PlacedDialog {
    Q_OBJECT

public:
    // The log is in this folder.
    explicit frmActivity(std::filesystem::path programFolder, QWidget* parent = nullptr);
    ~frmActivity() override;

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void LoadLog(std::string_view content);
    void ShowNoLog(std::string_view message);
    void SearchLog(std::size_t start);
    void SearchOn();
    void EndSearch();
    void TellResult();
    void cmdFind_Click();
    void cmdFindNext_Click();
    void cmdClear_Click();
    void txtLog_KeyDown(int key);

    std::filesystem::path ProgramFolder_;
    std::unique_ptr<Ui::frmActivity> Ui_;
    QString Text_;               // the text box's, with its line ends
    LogQuery Query_;             // what the find dialog has confirmed
    std::size_t LastFound_ = 0;  // position of the last match, from 1; 0 when the last search found none
    std::optional<LogSearch> Search_;  // while it goes on
    std::optional<Hourglass> Hourglass_;
    QTimer Slices_;
};

}  // namespace burnwick
