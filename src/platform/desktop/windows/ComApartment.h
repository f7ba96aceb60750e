#pragma once

#include "platform/process/windows/SystemHeaders.h"

#include <objbase.h>

#include <memory>

namespace burnwick {

// The thread may use objects of the system while this lives. A thread that already may, in whichever way,
// keeps its own.
class ComApartment {
public:
    ComApartment()
        : Entered_(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE))) {}
    ComApartment(const ComApartment&) = delete;
    ComApartment& operator=(const ComApartment&) = delete;
    ~ComApartment() {
        if (Entered_) {
            CoUninitialize();
        }
    }

private:
    bool Entered_;
};

// An object of the system, given back when its owner ends.
struct ComRelease {
    void operator()(IUnknown* object) const { object->Release(); }
};
template <typename Object>
using ComPointer = std::unique_ptr<Object, ComRelease>;

}  // namespace burnwick
