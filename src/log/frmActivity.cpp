#include "log/frmActivity.h"

#include <QElapsedTimer>
#include <QHideEvent>
#include <QKeyEvent>
#include <QRect>
#include <QShowEvent>
#include <span>
#include <string>
#include <utility>

#include "forms/FormParts.h"
#include "forms/MsgBox.h"
#include "log/LogFile.h"
#include "log/LogText.h"
#include "ui_frmActivity.h"

namespace burnwick {

namespace {

constexpr std::size_t SliceLength = 65'536;  // characters
constexpr qint64 LongestSlice = 10;          // milliseconds
constexpr double MostOfScreen = 0.9;

QString Shown(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

// Unlike QString::toLower(), which may need more characters than it was given.
void LowerCase(std::span<char16_t> text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (i + 1 < text.size() && QChar::isHighSurrogate(text[i]) && QChar::isLowSurrogate(text[i + 1])) {
            const char32_t lower = QChar::toLower(QChar::surrogateToUcs4(text[i], text[i + 1]));
            text[i] = QChar::highSurrogate(lower);
            text[++i] = QChar::lowSurrogate(lower);
        } else {
            text[i] = QChar(text[i]).toLower().unicode();
        }
    }
}

}  // namespace

frmActivity::frmActivity(std::filesystem::path programFolder, QWidget* parent)
    : PlacedDialog(parent),
      ProgramFolder_(std::move(programFolder)),
      Ui_(std::make_unique<Ui::frmActivity>()) {
    Ui_->setupUi(this);
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    NameControls(*this);
    const LogFile log = ReadLogFile(ProgramFolder_);
    if (!log.Content.empty()) {
        LoadLog(log.Content);
    } else {
        ShowNoLog(log.Trouble.empty() ? EmptyLogText : log.Trouble);
        Ui_->cmdClear->setEnabled(log.MayBeCleared);
    }
    Ui_->txtLog->setFocus();
    // As large as it would like, where a new window is given two thirds of a small screen at most.
    resize(sizeHint().boundedTo(ScreenOf(*this).size() * MostOfScreen));
    connect(&Slices_, &QTimer::timeout, this, &frmActivity::SearchOn);
    connect(Ui_->cmdFind, &QPushButton::clicked, this, &frmActivity::cmdFind_Click);
    connect(Ui_->cmdFindNext, &QPushButton::clicked, this, &frmActivity::cmdFindNext_Click);
    connect(Ui_->cmdClear, &QPushButton::clicked, this, &frmActivity::cmdClear_Click);
    connect(Ui_->cmdClose, &QPushButton::clicked, this, &frmActivity::reject);
}

frmActivity::~frmActivity() = default;

void frmActivity::showEvent(QShowEvent* event) {
    if (!event->spontaneous()) {
        Ui_->txtLog->moveCursor(QTextCursor::End);
    }
    PlacedDialog::showEvent(event);
}

// Whoever closes the viewer waits for no result.
void frmActivity::hideEvent(QHideEvent* event) {
    if (!event->spontaneous() && Search_) {
        EndSearch();
    }
    QDialog::hideEvent(event);
}

// Keys that no control wants come here, whichever has the focus.
void frmActivity::keyPressEvent(QKeyEvent* event) {
    txtLog_KeyDown(event->key());
    if (event->key() != Qt::Key_F3) {
        QDialog::keyPressEvent(event);
    }
}

void frmActivity::txtLog_KeyDown(int key) {
    if (key == Qt::Key_F3 && Ui_->cmdFindNext->isEnabled()) {
        cmdFindNext_Click();
    }
}

void frmActivity::LoadLog(std::string_view content) {
    Text_ = Shown(LogText(content));
    Ui_->txtLog->ShowLines(Text_);
}

// A message instead of the log: there is nothing to look for.
void frmActivity::ShowNoLog(std::string_view message) {
    Text_.clear();
    Ui_->txtLog->ShowMessage(Shown(message));
    Ui_->cmdFind->setEnabled(false);
    Ui_->cmdFindNext->setEnabled(false);
}

void frmActivity::cmdFind_Click() {
    frmActivityFind(Query_, this).exec();
    SearchLog(1);
}

void frmActivity::cmdFindNext_Click() {
    SearchLog(LastFound_ + 1);
}

// Begins a search. It goes on in the pauses of the event loop, and most logs are searched before that.
void frmActivity::SearchLog(std::size_t start) {
    if (Query_.Text.isEmpty()) {
        return;
    }
    Ui_->txtLog->setFocus();
    for (QPushButton* const button : {Ui_->cmdFind, Ui_->cmdFindNext, Ui_->cmdClear}) {
        button->setEnabled(false);
    }
    Hourglass_.emplace();
    const std::u16string_view text(QStringView(Text_).utf16(), static_cast<std::size_t>(Text_.size()));
    Search_.emplace(text, Query_.Text.toStdU16String(), start, Query_.MatchCase ? ToLowerCase() : LowerCase);
    Slices_.start();
    SearchOn();
}

void frmActivity::SearchOn() {
    QElapsedTimer time;
    time.start();
    bool ended = false;
    while (!ended && time.elapsed() < LongestSlice) {
        ended = Search_->Read(SliceLength);
    }
    // A match is shown where it stands.
    if (ended && (Search_->Found() == 0 || Ui_->txtLog->IsWhole())) {
        LastFound_ = Search_->Found();
        EndSearch();
        TellResult();
    }
}

void frmActivity::EndSearch() {
    Slices_.stop();
    Search_.reset();
    Hourglass_.reset();
    for (QPushButton* const button : {Ui_->cmdFind, Ui_->cmdFindNext, Ui_->cmdClear}) {
        button->setEnabled(true);
    }
}

void frmActivity::TellResult() {
    if (LastFound_ == 0) {
        Ui_->cmdFindNext->setEnabled(false);
        MsgBox(this, QMessageBox::Information, NotFoundBox(Query_.Text.toStdString()));
        return;
    }
    Ui_->txtLog->Select(static_cast<qsizetype>(LastFound_) - 1, Query_.Text.size());
}

void frmActivity::cmdClear_Click() {
    const BoxText question = ClearLogQuestion();
    const auto answer = MsgBox(this, QMessageBox::Question, question, QMessageBox::Yes | QMessageBox::No, {},
                               QMessageBox::No);
    if (answer != QMessageBox::Yes) {
        return;
    }
    const std::string trouble = ClearLogFile(ProgramFolder_);
    if (!trouble.empty()) {
        MsgBox(this, QMessageBox::Warning, {question.Caption, trouble});
        return;
    }
    Ui_->cmdClear->setEnabled(false);
    ShowNoLog(EmptyLogText);
}

}  // namespace burnwick
