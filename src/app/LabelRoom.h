#pragma once

#include <QWidget>

namespace burnwick {

// The place in a layout of a label whose text changes all the time. A label that stands in a layout itself
// has the whole window laid out anew for each of its texts; of one in here nobody else hears.
class LabelRoom final : public QWidget {
public:
    explicit LabelRoom(QWidget* parent = nullptr);

    // One line, as wide as there is room.
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void resizeEvent(QResizeEvent* event) override;
};

}  // namespace burnwick
