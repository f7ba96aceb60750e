#include "engine/PercentBar.h"

#include <QAccessibleValueInterface>
#include <QAccessibleWidget>
#include <QFontMetrics>
#include <QPainter>
#include <QRegion>
#include <algorithm>
#include <cstdint>
#include <limits>

#include "engine/PercentBarText.h"
#include "forms/AccessibleAs.h"

namespace burnwick {

namespace {

// To a screen reader the bar is its percentage.
class AccessibleBar final : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit AccessibleBar(PercentBar& bar) : QAccessibleWidget(&bar, QAccessible::ProgressBar), Bar_(bar) {}

    QString text(QAccessible::Text what) const override {
        return what == QAccessible::Value ? Bar_.Text() : QAccessibleWidget::text(what);
    }
    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ValueInterface ? static_cast<QAccessibleValueInterface*>(this)
                                                   : QAccessibleWidget::interface_cast(type);
    }
    QVariant currentValue() const override { return Bar_.Percent(); }
    void setCurrentValue(const QVariant& /*value*/) override {}
    QVariant minimumValue() const override { return 0; }
    QVariant maximumValue() const override { return 100; }
    QVariant minimumStepSize() const override { return 1; }

private:
    const PercentBar& Bar_;
};

int As16Bit(int number) {
    using Range = std::numeric_limits<std::int16_t>;
    return std::clamp<int>(number, Range::min(), Range::max());
}

// Halfway between a window and its text: it stands out from both, on light and on dark.
QColor FrameColor(const QPalette& palette) {
    const QColor window = palette.color(QPalette::Window);
    const QColor text = palette.color(QPalette::WindowText);
    return QColor::fromRgbF((window.redF() + text.redF()) / 2, (window.greenF() + text.greenF()) / 2,
                            (window.blueF() + text.blueF()) / 2);
}

}  // namespace

PercentBar::PercentBar(QWidget* parent) : QWidget(parent) {
    MakeAccessibleAs<PercentBar, AccessibleBar>();
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QColor PercentBar::BackColor() const {
    return BackColor_.isValid() ? BackColor_ : palette().color(QPalette::Button);
}

QColor PercentBar::ForeColor() const {
    return ForeColor_.isValid() ? ForeColor_ : palette().color(QPalette::ButtonText);
}

QString PercentBar::Caption() const {
    return Caption_.value_or(objectName());
}

void PercentBar::SetMax(int max) {
    Max_ = As16Bit(max);
}

void PercentBar::SetMin(int min) {
    Min_ = As16Bit(min);
}

void PercentBar::SetValue(int value) {
    Value_ = As16Bit(value);
    Drawn_ = Draw();
    update();
    if (QAccessible::isActive()) {
        QAccessibleValueChangeEvent changed(this, Drawn_->Percent);
        QAccessible::updateAccessibility(&changed);
    }
}

// Colours that were never set stay unset in a drawing: it follows a palette that changes.
PercentBar::Drawing PercentBar::Draw() const {
    const int percent = BarPercent(Value_, Max_);
    const auto text = QString::fromStdString(BarText(Caption().toStdString(), percent));
    QFont own = font();
    // Or else a painter would take what the font inherits from the widget as it is by then.
    own.setResolveMask(QFont::AllPropertiesResolved);
    return {BackColor_, ForeColor_, own, text, percent};
}

QSize PercentBar::sizeHint() const {
    const QFontMetrics metrics(font());
    return {24 * metrics.averageCharWidth(), metrics.height() * 8 / 5};
}

QSize PercentBar::minimumSizeHint() const {
    const QFontMetrics metrics(font());
    return {metrics.horizontalAdvance(QStringLiteral(" 100% ")), metrics.height() * 8 / 5};
}

void PercentBar::paintEvent(QPaintEvent* /*event*/) {
    Drawn_ = Shown();
    const QColor back = Drawn_->Back.isValid() ? Drawn_->Back : palette().color(QPalette::Button);
    const QColor fore = Drawn_->Fore.isValid() ? Drawn_->Fore : palette().color(QPalette::ButtonText);

    QPainter painter(this);
    painter.setFont(Drawn_->Font);
    const auto fill = [&](const QColor& ground, const QColor& ink) {
        painter.fillRect(rect(), ground);
        painter.setPen(ink);
        painter.drawText(rect(), Qt::AlignCenter, Drawn_->Text);
    };
    fill(back, fore);
    // Both halves draw the same text at the same place, so that it is cut at the bar's edge to the pixel.
    painter.setClipRect(QRectF(0, 0, width() * Drawn_->Percent / 100.0, height()));
    fill(fore, back);
    painter.setClipping(false);
    for (const QRect& edge : QRegion(rect()).subtracted(rect().adjusted(1, 1, -1, -1))) {
        painter.fillRect(edge, FrameColor(palette()));
    }
}

}  // namespace burnwick
