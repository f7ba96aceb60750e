#pragma once

#include <QPlainTextEdit>
#include <QString>
#include <QTimer>
#include <functional>
#include <vector>

namespace burnwick {

// A text box to read in. It shows the end of a long text at once, and fills up with the rest from there in
// the pauses of the event loop; caret, selection and view stay with their text meanwhile. A line too long to
// be laid out quickly goes on in the next one, and is copied as the one line that it is.
class LogBox final : public QPlainTextEdit {
    Q_OBJECT

public:
    explicit LogBox(QWidget* parent = nullptr);

    // Lines end in CR LF, the last one too; there is no CR or LF elsewhere.
    void ShowLines(const QString& text);
    // A text of any kind, at once and as broad as the box.
    void ShowMessage(const QString& text);

    // All of the text is in the box.
    bool IsWhole() const { return Rest_ == 0; }

    // Selects so many characters of the text, from this one on (the first is 0), with the caret behind them.
    // The box must be whole.
    void Select(qsizetype start, qsizetype length);

    // Room for a line of the log, and for some records.
    QSize sizeHint() const override;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    QMimeData* createMimeDataFromSelection() const override;

private:
    void Fill();
    void FillPiece(qsizetype length);
    void SetWhole();
    void Break(const QString& text);
    int PlaceOf(qsizetype position) const;

    QString Shown_;                  // each line ends in one LF; empty once the box is whole
    qsizetype Rest_ = 0;             // characters at the front of it that are not in the box yet
    QString Text_;                   // what ShowLines() was given
    std::vector<qsizetype> Breaks_;  // places where a long line is broken, were there no break before
    QTimer Filling_;
    std::function<void()> OnceWhole_;
};

}  // namespace burnwick
