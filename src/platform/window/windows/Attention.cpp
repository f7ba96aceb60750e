#include "platform/window/Attention.h"

#include "platform/process/windows/SystemHeaders.h"

namespace burnwick {

// Qt would flash the taskbar's button alone, and stop by itself after some seconds.
void AskForAttention(WindowHandle window) {
    FlashWindow(reinterpret_cast<HWND>(window), TRUE);
}

}  // namespace burnwick
