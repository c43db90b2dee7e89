// Qt's keys as the virtual key codes the key handlers are written in.
#pragma once

#include <Qt>

namespace quillon {

// The virtual key code of a Qt key, 0 for a key the handlers do not know.
// `keypad` tells the digits and the plus and minus of the number pad from
// those of the main keyboard.
int virtualKey(int qtKey, bool keypad);
// Shift 1, Ctrl 2, Alt 4.
int shiftMask(Qt::KeyboardModifiers m);

}  // namespace quillon
