#pragma once

#include <QLabel>

namespace burnwick {

// A line of plain text that takes the room it is given: a text that is longer is cut in its middle, and told
// whole by the tool tip.
class ElidedLabel : public QLabel {
public:
    explicit ElidedLabel(QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QString Shown() const;
};

}  // namespace burnwick
