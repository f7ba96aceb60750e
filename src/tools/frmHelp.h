#pragma once

#include <QString>
#include <QWidget>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "tools/HelpDocument.h"

class QTreeWidgetItem;

namespace burnwick {

namespace Ui {
class frmHelp;
}

// Called with a web or mail address that the user has clicked.
using OpenHelpLink = std::function<void(const std::string& link)>;

// Shows the help in a window of its own beside the owner, which it does not block and with which it ends; one
// that is open already comes forward instead. What cannot be shown is told in the window.
void ShowHelp(const std::filesystem::path& helpFile, bool isOEM, const OpenHelpLink& openLink,
              QWidget& owner);

// The user's manual, with its contents, a way back and a search. It neither keeps the program running nor has
// an event loop of its own.
class frmHelp final : public QWidget {
    Q_OBJECT

public:
    frmHelp(const std::filesystem::path& helpFile, bool isOEM, OpenHelpLink openLink);
    ~frmHelp() override;

    void ComeForward();

protected:
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    // What stands at the top of the page: a position in the text, and where its line begins from there.
    struct Place {
        int Position = 0;
        int Offset = 0;
        bool operator==(const Place&) const = default;
    };

    void ConnectCommands();
    void AddShortcuts();
    void ShowPage();
    void ShowTrouble(const std::filesystem::path& helpFile, const std::string& trouble);
    void ListContents();
    Place Top() const;
    void ScrollTo(const Place& place);
    void GoTo(int position);
    void SelectHeading(int position);
    void EnableWays();
    void cmdBack_Click();
    void cmdForward_Click();
    void tvwContents_Click(const QTreeWidgetItem* item);
    void txtPage_Link(const QUrl& link);
    void txtPage_Scroll();
    void txtFind_Change();
    void Find();
    void FindNext();
    void FindPrevious();
    void ShowMatch(std::size_t index);
    void Select(int from, int to);
    void Unselect();
    void Zoom(int steps);

    OpenHelpLink OpenLink_;
    std::unique_ptr<Ui::frmHelp> Ui_;
    HelpDocument Document_;
    QString Html_;
    std::map<int, QTreeWidgetItem*> Headings_;  // by their positions
    std::map<QString, int> Positions_;          // of what links lead to
    std::vector<Place> Back_;
    std::vector<Place> Forward_;
    std::vector<int> Matches_;  // positions, in order
    bool Scrolling_ = false;    // by itself
    int Zoom_ = 0;
};

}  // namespace burnwick
