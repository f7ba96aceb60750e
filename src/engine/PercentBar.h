#pragma once

#include <QColor>
#include <QFont>
#include <QString>
#include <QWidget>
#include <optional>

namespace burnwick {

// A bar that fills from the left, with a text in its middle that is inverted where the bar covers it.
//
// A new Value draws the bar anew, with all other properties as they are then; set alone, these change nothing
// that can be seen. What the system has repainted is the last drawing. The first showing draws, too. Numbers
// have 16 bits, and stop at their ends.
class PercentBar final : public QWidget {
    Q_OBJECT
    // An invalid colour is the palette's: that of a button, and of its text.
    Q_PROPERTY(QColor BackColor READ BackColor WRITE SetBackColor)
    Q_PROPERTY(QColor ForeColor READ ForeColor WRITE SetForeColor)
    // The object name, until it is set. One that contains "Bar" stands for the percentage.
    Q_PROPERTY(QString Caption READ Caption WRITE SetCaption)
    Q_PROPERTY(int Max READ Max WRITE SetMax)
    // Kept, but without a part in the percentage: callers count from 0.
    Q_PROPERTY(int Min READ Min WRITE SetMin)
    Q_PROPERTY(int Value READ Value WRITE SetValue STORED false)
    Q_PROPERTY(QString Version READ Version CONSTANT)

public:
    explicit PercentBar(QWidget* parent = nullptr);

    QColor BackColor() const;
    QColor ForeColor() const;
    QString Caption() const;
    int Max() const { return Max_; }
    int Min() const { return Min_; }
    int Value() const { return Value_; }
    QString Version() const { return QStringLiteral("1.00.1001"); }

    void SetBackColor(const QColor& color) { BackColor_ = color; }
    void SetForeColor(const QColor& color) { ForeColor_ = color; }
    void SetCaption(const QString& caption) { Caption_ = caption; }
    void SetMax(int max);
    void SetMin(int min);
    void SetValue(int value);

    // As last drawn.
    int Percent() const { return Shown().Percent; }
    QString Text() const { return Shown().Text; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    struct Drawing {
        QColor Back;
        QColor Fore;
        QFont Font;
        QString Text;
        int Percent = 0;
    };

    Drawing Draw() const;
    Drawing Shown() const { return Drawn_.value_or(Draw()); }

    QColor BackColor_;
    QColor ForeColor_;
    std::optional<QString> Caption_;
    int Max_ = 100;
    int Min_ = 0;
    int Value_ = 0;
    std::optional<Drawing> Drawn_;
};

}  // namespace burnwick
