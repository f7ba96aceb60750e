#pragma once

#include <string>

#include "image/modBinFileInfo.h"
#include "job/Summary.h"

class QWidget;

namespace burnwick {

namespace Ui {
class frmMain;
}

// The main window's summary of an image, and the commands that copy it: as a line of text, or the image into
// another folder. They are disabled while the summary is empty.
class SummaryPanel {
public:
    // Both must outlive the panel.
    SummaryPanel(QWidget& window, Ui::frmMain& ui) : Window_(window), Ui_(ui) {}

    void Show(const modBinFileInfo::BinFileInfo& information, bool wholeChecksum);
    void Clear();
    const SoftwareSummary& Texts() const { return Summary_; }

    void CopyLine() const;
    void CopyToFolder() const;

private:
    void ShowTexts() const;
    void ShowTitle(const std::string& title) const;
    void EnableCommands(bool enabled) const;
    void CopyInto(const std::string& folder) const;

    QWidget& Window_;
    Ui::frmMain& Ui_;
    SoftwareSummary Summary_;
    modBinFileInfo::BinFileInfo Information_;
};

}  // namespace burnwick
