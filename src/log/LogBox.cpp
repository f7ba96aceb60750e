#include "log/LogBox.h"

#include <QElapsedTimer>
#include <QFontDatabase>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QScrollBar>
#include <QStringView>
#include <QTextBlock>
#include <QWheelEvent>
#include <algorithm>
#include <utility>

namespace burnwick {

namespace {

constexpr int Columns = 84;
constexpr int Lines = 28;
constexpr qsizetype LongestLine = 10'000;  // characters; laying out a line takes time that grows with it
constexpr qsizetype FirstPiece = 250'000;
constexpr qsizetype Piece = 30'000;
constexpr qint64 LongestFilling = 10;  // milliseconds at a time

}  // namespace

LogBox::LogBox(QWidget* parent) : QPlainTextEdit(parent) {
    setReadOnly(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setTabChangesFocus(true);
    setUndoRedoEnabled(false);
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    connect(&Filling_, &QTimer::timeout, this, &LogBox::Fill);
}

void LogBox::ShowLines(const QString& text) {
    ShowMessage({});
    setLineWrapMode(NoWrap);
    Text_ = text;
    Break(text);
    Rest_ = Shown_.size();
    FillPiece(FirstPiece);
    if (IsWhole()) {
        SetWhole();
        return;
    }
    setContextMenuPolicy(Qt::NoContextMenu);  // "Select All" would select what is there
    Filling_.start();
}

void LogBox::ShowMessage(const QString& text) {
    Rest_ = 0;
    OnceWhole_ = {};
    SetWhole();
    Text_.clear();
    Breaks_.clear();
    setLineWrapMode(WidgetWidth);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    setPlainText(text);
}

// One LF for each line end, and one wherever a line is too long.
void LogBox::Break(const QString& text) {
    Shown_.reserve(text.size());
    for (qsizetype begin = 0; begin < text.size();) {
        const qsizetype found = text.indexOf('\r', begin);
        const qsizetype end = found < 0 ? text.size() : found;
        while (end - begin > LongestLine) {
            const bool partsPair = text[begin + LongestLine - 1].isHighSurrogate();
            const qsizetype length = LongestLine - (partsPair ? 1 : 0);
            Shown_ += QStringView(text).mid(begin, length);
            Breaks_.push_back(Shown_.size() - static_cast<qsizetype>(Breaks_.size()));
            Shown_ += '\n';
            begin += length;
        }
        Shown_ += QStringView(text).mid(begin, end - begin);
        Shown_ += '\n';
        begin = end + 2;
    }
}

// Not while the user holds the scroll bar: it would slip out of his hand.
void LogBox::Fill() {
    if (verticalScrollBar()->isSliderDown() || horizontalScrollBar()->isSliderDown()) {
        return;
    }
    QElapsedTimer time;
    time.start();
    while (!IsWhole() && time.elapsed() < LongestFilling) {
        FillPiece(Piece);
    }
    if (IsWhole()) {
        SetWhole();
    }
}

// Puts whole lines in front of what is there, about so many characters; the view stays where it is.
void LogBox::FillPiece(qsizetype length) {
    const qsizetype from = Rest_ <= length ? 0 : Shown_.lastIndexOf('\n', Rest_ - length) + 1;
    QScrollBar& bar = *verticalScrollBar();
    const int lines = blockCount();
    const int above = bar.value();
    QTextCursor(document()).insertText(Shown_.mid(from, Rest_ - from));
    bar.setValue(above + blockCount() - lines);
    Rest_ = from;
}

void LogBox::SetWhole() {
    Filling_.stop();
    setContextMenuPolicy(Qt::DefaultContextMenu);
    Shown_ = {};
    if (const auto once = std::exchange(OnceWhole_, {})) {
        once();
    }
}

// Where a character of the text stands in the whole box.
int LogBox::PlaceOf(qsizetype position) const {
    const qsizetype unbroken = position - QStringView(Text_).first(position).count('\r');
    const auto after = std::upper_bound(Breaks_.begin(), Breaks_.end(), unbroken);
    return static_cast<int>(unbroken + (after - Breaks_.begin()));
}

void LogBox::Select(qsizetype start, qsizetype length) {
    QTextCursor cursor = textCursor();
    cursor.setPosition(PlaceOf(start));
    cursor.setPosition(PlaceOf(start + length), QTextCursor::KeepAnchor);
    setTextCursor(cursor);
}

QSize LogBox::sizeHint() const {
    const QFontMetrics font = fontMetrics();
    const int edges = 2 * frameWidth() + 2 * static_cast<int>(document()->documentMargin());
    return {Columns * font.horizontalAdvance('M') + verticalScrollBar()->sizeHint().width() + edges,
            Lines * font.lineSpacing() + horizontalScrollBar()->sizeHint().height() + edges};
}

// What means all of the text waits for all of it.
void LogBox::keyPressEvent(QKeyEvent* event) {
    const auto mode = event->matches(QKeySequence::SelectStartOfDocument) ? QTextCursor::KeepAnchor
                                                                          : QTextCursor::MoveAnchor;
    if (IsWhole()) {
        QPlainTextEdit::keyPressEvent(event);
    } else if (event->matches(QKeySequence::SelectAll)) {
        OnceWhole_ = [this] { selectAll(); };
    } else if (event->matches(QKeySequence::MoveToStartOfDocument)
               || event->matches(QKeySequence::SelectStartOfDocument)) {
        OnceWhole_ = [this, mode] { moveCursor(QTextCursor::Start, mode); };
    } else {
        OnceWhole_ = {};
        QPlainTextEdit::keyPressEvent(event);
    }
}

// Who has gone elsewhere meanwhile stays there.
void LogBox::mousePressEvent(QMouseEvent* event) {
    OnceWhole_ = {};
    QPlainTextEdit::mousePressEvent(event);
}

void LogBox::wheelEvent(QWheelEvent* event) {
    OnceWhole_ = {};
    QPlainTextEdit::wheelEvent(event);
}

// Lines as they are in the text: without the ends that break long ones.
QMimeData* LogBox::createMimeDataFromSelection() const {
    const QTextCursor cursor = textCursor();
    QString selected = cursor.selectedText();
    selected.replace(QChar::ParagraphSeparator, '\n');
    const qsizetype start = cursor.selectionStart() + Rest_;
    QString whole;
    whole.reserve(selected.size());
    qsizetype from = 0;
    for (std::size_t index = 0; index < Breaks_.size(); ++index) {
        const qsizetype place = Breaks_[index] + static_cast<qsizetype>(index) - start;
        if (place >= 0 && place < selected.size()) {
            whole += QStringView(selected).mid(from, place - from);
            from = place + 1;
        }
    }
    whole += QStringView(selected).mid(from);
    auto* const copied = new QMimeData;
    copied->setText(whole);
    return copied;
}

}  // namespace burnwick
