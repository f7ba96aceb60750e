#include "tools/frmHelp.h"

#include <QAccessibleWidget>
#include <QApplication>
#include <QKeyEvent>
#include <QScrollBar>
#include <QShortcut>
#include <QSignalBlocker>
#include <QTextBlock>
#include <QWheelEvent>
#include <algorithm>
#include <array>
#include <utility>

#include "forms/AccessibleAs.h"
#include "forms/FormParts.h"
#include "platform/files/Utf8Path.h"
#include "tools/HelpPage.h"
#include "tools/WebEmail.h"
#include "ui_frmHelp.h"

namespace burnwick {

namespace {

constexpr int ContentsWidth = 230;
constexpr int RoomForFrame = 8;
constexpr int AirAboveHeading = 8;
constexpr int PositionRole = Qt::UserRole;
constexpr int SmallestZoom = -4;
constexpr int LargestZoom = 16;

frmHelp* OpenWindow() {
    for (QWidget* const window : QApplication::topLevelWidgets()) {
        auto* const help = qobject_cast<frmHelp*>(window);
        if (help != nullptr && help->isVisible()) {
            return help;
        }
    }
    return nullptr;
}

std::vector<int> MatchesIn(const QString& text, const QString& wanted) {
    std::vector<int> matches;
    for (qsizetype at = 0; !wanted.isEmpty(); at += wanted.size()) {
        at = text.indexOf(wanted, at, Qt::CaseInsensitive);
        if (at < 0) {
            break;
        }
        matches.push_back(static_cast<int>(at));
    }
    return matches;
}

// To a screen reader a window, where a widget that is none by its class holds others and no more.
class AccessibleHelp final : public QAccessibleWidget {
public:
    explicit AccessibleHelp(frmHelp& form) : QAccessibleWidget(&form, QAccessible::Window) {}
};

}  // namespace

void ShowHelp(const std::filesystem::path& helpFile, bool isOEM, const OpenHelpLink& openLink,
              QWidget& owner) {
    frmHelp* help = OpenWindow();
    if (help == nullptr) {
        help = new frmHelp(helpFile, isOEM, openLink);
        help->setAttribute(Qt::WA_DeleteOnClose);
        // Not its child: it would stay on top of it.
        QObject::connect(&owner, &QObject::destroyed, help, [help] { delete help; });
        const QMargins frame(RoomForFrame, RoomForFrame, RoomForFrame, RoomForFrame);
        const QRect screen = ScreenOf(owner) - frame;
        QRect place(QPoint(), help->size().boundedTo(screen.size()));
        place.moveCenter(screen.center());
        help->setGeometry(place);
    }
    help->ComeForward();
}

frmHelp::frmHelp(const std::filesystem::path& helpFile, bool isOEM, OpenHelpLink openLink)
    : OpenLink_(std::move(openLink)), Ui_(std::make_unique<Ui::frmHelp>()) {
    MakeAccessibleAs<frmHelp, AccessibleHelp>();
    setAttribute(Qt::WA_QuitOnClose, false);
    Ui_->setupUi(this);
    NameControls(*this);
    setWindowTitle(isOEM ? "Burnwick (OEM) Help" : "Burnwick Help");
    Ui_->splContents->setSizes({ContentsWidth, width() - ContentsWidth});
    Ui_->splContents->setStretchFactor(1, 1);
    Ui_->lblFound->setMinimumWidth(fontMetrics().horizontalAdvance("0000 of 0000"));
    Ui_->txtPage->setDocument(&Document_);
    Ui_->txtPage->viewport()->installEventFilter(this);
    ConnectCommands();
    AddShortcuts();
    const HelpPage page = ReadHelpFile(helpFile);
    Html_ = QString::fromStdString(page.Html);
    if (page.Trouble.empty()) {
        ShowPage();
    } else {
        ShowTrouble(helpFile, page.Trouble);
    }
    Ui_->txtPage->setFocus();
}

frmHelp::~frmHelp() {
    // The page outlives what shows it: members go before children.
    Ui_->txtPage->setDocument(nullptr);
}

void frmHelp::ConnectCommands() {
    connect(Ui_->cmdBack, &QToolButton::clicked, this, &frmHelp::cmdBack_Click);
    connect(Ui_->cmdForward, &QToolButton::clicked, this, &frmHelp::cmdForward_Click);
    connect(Ui_->cmdFindNext, &QToolButton::clicked, this, &frmHelp::FindNext);
    connect(Ui_->cmdFindPrevious, &QToolButton::clicked, this, &frmHelp::FindPrevious);
    connect(Ui_->txtFind, &QLineEdit::textChanged, this, &frmHelp::txtFind_Change);
    connect(Ui_->tvwContents, &QTreeWidget::currentItemChanged, this, &frmHelp::tvwContents_Click);
    // The entry that is selected already can be clicked, too.
    connect(Ui_->tvwContents, &QTreeWidget::itemClicked, this, &frmHelp::tvwContents_Click);
    connect(Ui_->txtPage, &QTextBrowser::anchorClicked, this, &frmHelp::txtPage_Link);
    connect(Ui_->txtPage->verticalScrollBar(), &QScrollBar::valueChanged, this, &frmHelp::txtPage_Scroll);
}

void frmHelp::AddShortcuts() {
    const auto onKeys = [this](const QKeySequence& keys, auto handler) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, handler);
    };
    const auto inFind = [this](Qt::KeyboardModifiers modifiers, void (frmHelp::*handler)()) {
        for (const Qt::Key enter : {Qt::Key_Return, Qt::Key_Enter}) {
            auto* const shortcut = new QShortcut(QKeySequence(modifiers | enter), Ui_->txtFind);
            shortcut->setContext(Qt::WidgetShortcut);
            connect(shortcut, &QShortcut::activated, this, handler);
        }
    };
    inFind(Qt::NoModifier, &frmHelp::FindNext);
    inFind(Qt::ShiftModifier, &frmHelp::FindPrevious);
    onKeys(Qt::CTRL | Qt::Key_F, [this] { Find(); });
    onKeys(Qt::CTRL | Qt::Key_W, [this] { close(); });
    for (const Qt::Key plus : {Qt::Key_Plus, Qt::Key_Equal}) {
        onKeys(Qt::CTRL | plus, [this] { Zoom(1); });
    }
    onKeys(Qt::CTRL | Qt::Key_Minus, [this] { Zoom(-1); });
    onKeys(Qt::CTRL | Qt::Key_0, [this] { Zoom(-Zoom_); });
}

void frmHelp::ComeForward() {
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
}

// The colours of links are those of the time when the page was taken in.
void frmHelp::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && !Html_.isEmpty()) {
        const Place place = Top();
        ShowPage();
        ScrollTo(place);
    }
}

bool frmHelp::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Wheel) {
        const auto* const wheel = static_cast<QWheelEvent*>(event);
        if (wheel->modifiers().testFlag(Qt::ControlModifier) && wheel->angleDelta().y() != 0) {
            Zoom(wheel->angleDelta().y() > 0 ? 1 : -1);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void frmHelp::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Escape) {
        QWidget::keyPressEvent(event);
    } else if (Ui_->txtFind->hasFocus()) {
        Ui_->txtPage->setFocus();
    } else {
        close();
    }
}

void frmHelp::ShowPage() {
    const QTextCursor before = Ui_->txtPage->textCursor();
    const int from = before.anchor();
    const int to = before.position();
    Document_.Show(Html_);
    Select(from, to);
    ListContents();
    Ui_->txtPage->verticalScrollBar()->setValue(0);
}

void frmHelp::ShowTrouble(const std::filesystem::path& helpFile, const std::string& trouble) {
    Document_.setPlainText("The help cannot be shown.\n\n" + QString::fromStdString(Utf8Text(helpFile)) + "\n"
                           + QString::fromStdString(trouble) + "\n\nInstall Burnwick again to get it back.");
    Ui_->tvwContents->setEnabled(false);
    Ui_->txtFind->setEnabled(false);
}

void frmHelp::ListContents() {
    const QSignalBlocker quiet(Ui_->tvwContents);
    Ui_->tvwContents->clear();
    Headings_.clear();
    Positions_.clear();
    std::vector<std::pair<int, QTreeWidgetItem*>> above;  // levels and entries
    for (QTextBlock block = Document_.begin(); block.isValid(); block = block.next()) {
        bool isTarget = false;
        for (auto piece = block.begin(); !piece.atEnd(); ++piece) {
            for (const QString& name : piece.fragment().charFormat().anchorNames()) {
                Positions_.emplace(name, piece.fragment().position());
                isTarget = true;
            }
        }
        const int level = block.blockFormat().headingLevel();
        if (level == 0 || !isTarget) {
            continue;
        }
        while (!above.empty() && above.back().first >= level) {
            above.pop_back();
        }
        auto* const entry = new QTreeWidgetItem({block.text().trimmed()});
        entry->setData(0, PositionRole, block.position());
        entry->setToolTip(0, block.text().toHtmlEscaped());
        if (above.empty()) {
            Ui_->tvwContents->addTopLevelItem(entry);
        } else {
            above.back().second->addChild(entry);
        }
        above.emplace_back(level, entry);
        Headings_[block.position()] = entry;
    }
    Ui_->tvwContents->expandAll();
}

frmHelp::Place frmHelp::Top() const {
    const QTextCursor cursor = Ui_->txtPage->cursorForPosition(QPoint(0, 0));
    return {cursor.position(), Ui_->txtPage->cursorRect(cursor).top()};
}

void frmHelp::ScrollTo(const Place& place) {
    QTextCursor cursor(&Document_);
    cursor.setPosition(std::min(place.Position, Document_.characterCount() - 1));
    // Laid out to its end, or it could not be scrolled there.
    static_cast<void>(Document_.size());
    QScrollBar& bar = *Ui_->txtPage->verticalScrollBar();
    Scrolling_ = true;
    bar.setValue(bar.value() + Ui_->txtPage->cursorRect(cursor).top() - place.Offset);
    Scrolling_ = false;
    txtPage_Scroll();
}

void frmHelp::GoTo(int position) {
    const Place before = Top();
    Unselect();
    ScrollTo({position, AirAboveHeading});
    // Near the end of the page it cannot be scrolled to the top.
    SelectHeading(position);
    if (Top() != before) {
        Back_.push_back(before);
        Forward_.clear();
        EnableWays();
    }
}

// Selects the entry of the heading under which the position is.
void frmHelp::SelectHeading(int position) {
    const QSignalBlocker quiet(Ui_->tvwContents);
    auto heading = Headings_.upper_bound(position);
    Ui_->tvwContents->setCurrentItem(heading == Headings_.begin() ? nullptr : (--heading)->second);
}

void frmHelp::EnableWays() {
    Ui_->cmdBack->setEnabled(!Back_.empty());
    Ui_->cmdForward->setEnabled(!Forward_.empty());
}

void frmHelp::cmdBack_Click() {
    Forward_.push_back(Top());
    Unselect();
    ScrollTo(Back_.back());
    Back_.pop_back();
    EnableWays();
}

void frmHelp::cmdForward_Click() {
    Back_.push_back(Top());
    Unselect();
    ScrollTo(Forward_.back());
    Forward_.pop_back();
    EnableWays();
}

void frmHelp::tvwContents_Click(const QTreeWidgetItem* item) {
    if (item != nullptr) {
        GoTo(item->data(0, PositionRole).toInt());
    }
}

void frmHelp::txtPage_Link(const QUrl& link) {
    const std::string address = link.toEncoded().toStdString();
    const auto target = Positions_.find(link.fragment(QUrl::FullyDecoded));
    if (!address.starts_with("#")) {
        if (WebEmail::MayOpen(address)) {
            OpenLink_(address);
        }
    } else if (target != Positions_.end()) {
        GoTo(target->second);
    }
}

void frmHelp::txtPage_Scroll() {
    if (!Scrolling_ && !Headings_.empty()) {
        SelectHeading(Ui_->txtPage->cursorForPosition(QPoint(0, 2 * AirAboveHeading)).position());
    }
}

void frmHelp::txtFind_Change() {
    Matches_ = MatchesIn(Document_.toPlainText(), Ui_->txtFind->text());
    Ui_->cmdFindNext->setEnabled(!Matches_.empty());
    Ui_->cmdFindPrevious->setEnabled(!Matches_.empty());
    if (Matches_.empty()) {
        Unselect();
        ShowText(*Ui_->lblFound, Ui_->txtFind->text().isEmpty() ? "" : "Not found");
        return;
    }
    // The match that is selected may go on.
    const QTextCursor cursor = Ui_->txtPage->textCursor();
    const int from = cursor.hasSelection() ? cursor.selectionStart() : Top().Position;
    const auto next = std::lower_bound(Matches_.begin(), Matches_.end(), from);
    ShowMatch(next == Matches_.end() ? 0 : static_cast<std::size_t>(next - Matches_.begin()));
}

void frmHelp::Find() {
    Ui_->txtFind->setFocus(Qt::ShortcutFocusReason);
    Ui_->txtFind->selectAll();
}

// Past the last match comes the first.
void frmHelp::FindNext() {
    if (Matches_.empty()) {
        return;
    }
    const QTextCursor cursor = Ui_->txtPage->textCursor();
    const int from = cursor.hasSelection() ? cursor.selectionStart() + 1 : Top().Position;
    const auto next = std::lower_bound(Matches_.begin(), Matches_.end(), from);
    ShowMatch(next == Matches_.end() ? 0 : static_cast<std::size_t>(next - Matches_.begin()));
}

void frmHelp::FindPrevious() {
    if (Matches_.empty()) {
        return;
    }
    const QTextCursor cursor = Ui_->txtPage->textCursor();
    const int from = cursor.hasSelection() ? cursor.selectionStart() : Top().Position;
    const auto next = std::lower_bound(Matches_.begin(), Matches_.end(), from);
    const auto index = static_cast<std::size_t>(next - Matches_.begin());
    ShowMatch((index == 0 ? Matches_.size() : index) - 1);
}

void frmHelp::ShowMatch(std::size_t index) {
    Select(Matches_[index], Matches_[index] + static_cast<int>(Ui_->txtFind->text().size()));
    ShowText(*Ui_->lblFound, std::to_string(index + 1) + " of " + std::to_string(Matches_.size()));
}

void frmHelp::Select(int from, int to) {
    QTextCursor cursor(&Document_);
    cursor.setPosition(from);
    cursor.setPosition(to, QTextCursor::KeepAnchor);
    Ui_->txtPage->setTextCursor(cursor);
}

// A search then begins at what is read. The page stays where it has been scrolled to.
void frmHelp::Unselect() {
    QTextCursor cursor = Ui_->txtPage->textCursor();
    const int scrolled = Ui_->txtPage->verticalScrollBar()->value();
    cursor.clearSelection();
    Ui_->txtPage->setTextCursor(cursor);
    Ui_->txtPage->verticalScrollBar()->setValue(scrolled);
}

void frmHelp::Zoom(int steps) {
    const int zoom = std::clamp(Zoom_ + steps, SmallestZoom, LargestZoom);
    const Place place = Top();
    Ui_->txtPage->zoomIn(zoom - Zoom_);
    Zoom_ = zoom;
    ScrollTo(place);
}

}  // namespace burnwick
