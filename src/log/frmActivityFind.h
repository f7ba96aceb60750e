#pragma once

#include <QString>
#include <memory>

#include "forms/PlacedDialog.h"

namespace burnwick {

namespace Ui {
class frmActivityFind;
}

// What is looked for in the activity log; nothing when the text is empty.
struct LogQuery {
    QString Text;
    bool MatchCase = false;
};

// Asks what to look for.
class frmActivityFind final : public PlacedDialog {
    Q_OBJECT

public:
    // Begins with the query, which must outlive the dialog. Find puts in what was entered; Cancel, and
    // closing by any other means, empties its text.
    explicit frmActivityFind(LogQuery& query, QWidget* parent = nullptr);
    ~frmActivityFind() override;

    void reject() override;

protected:
    void Place() override;

private:
    void txtFind_Change();
    void cmdFind_Click();
    void cmdCancel_Click();

    LogQuery& Query_;
    std::unique_ptr<Ui::frmActivityFind> Ui_;
};

}  // namespace burnwick
