#include "platform/qt/EventRound.h"

#include <QCoreApplication>

namespace burnwick {

namespace {

class PlainRound final : public EventRound {
public:
    void Run(bool wait) override {
        if (wait) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        } else {
            QCoreApplication::processEvents();
        }
    }
};

}  // namespace

std::unique_ptr<EventRound> NewEventRound() {
    return std::make_unique<PlainRound>();
}

}  // namespace burnwick
