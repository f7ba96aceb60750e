#pragma once

#include <functional>
#include <memory>
#include <string>

#include "forms/PlacedDialog.h"

class QLineEdit;

namespace burnwick {

namespace Ui {
class frmFileCompare;
}

namespace modBinFileInfo {
class DifferingRanges;
}

class DifferencesModel;

// Tells whether two images are identical, and if not, where they differ. Closing it ends a comparison.
class frmFileCompare final : public PlacedDialog {
    Q_OBJECT

public:
    struct Services {
        std::string Folder;  // in which files are looked for
        std::function<void()> Beep;
    };

    explicit frmFileCompare(Services services, QWidget* parent = nullptr);
    ~frmFileCompare() override;

    void done(int result) override;

private:
    void cmdFile1_Click();
    void cmdFile2_Click();
    void cmdCompare_Click();
    void cmdClose_Click();
    void cmdDifferences_Toggle(bool shown);
    void cmdCopy_Click();
    void txtFile_Change();
    void SelectFile(const std::string& title, QLineEdit& file);
    void Compare(const std::string& file1, const std::string& file2);
    void SetComparing(bool comparing);
    bool BothFilesAreNamed() const;
    void SetUpDifferences();
    void ShowDifferences(modBinFileInfo::DifferingRanges ranges);
    void MakeRoomForDifferences(bool shown);

    Services Services_;
    std::unique_ptr<Ui::frmFileCompare> Ui_;
    DifferencesModel* Differences_;  // owned by the dialog
    int WidthForList_ = 0;           // by which the dialog has become wider
    bool IsComparing_ = false;
    bool IsClosed_ = false;  // in mid-comparison
};

}  // namespace burnwick
