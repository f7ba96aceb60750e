#pragma once

#include <QAccessible>

namespace burnwick {

// From the first call on, screen readers see each control of a class as what an interface of its own tells,
// which is made with the control.
template <typename Control, typename Interface>
void MakeAccessibleAs() {
    static const bool made = [] {
        QAccessible::installFactory([](const QString& /*className*/, QObject* object) {
            auto* const control = qobject_cast<Control*>(object);
            return control == nullptr ? nullptr : static_cast<QAccessibleInterface*>(new Interface(*control));
        });
        return true;
    }();
    Q_UNUSED(made);
}

}  // namespace burnwick
