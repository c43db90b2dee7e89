#include "app/vk_keys.h"

namespace quillon {

int virtualKey(int k, bool keypad) {
  if (k >= Qt::Key_0 && k <= Qt::Key_9) return keypad ? 96 + (k - Qt::Key_0) : 48 + (k - Qt::Key_0);
  if (k >= Qt::Key_A && k <= Qt::Key_Z) return 65 + (k - Qt::Key_A);
  if (k >= Qt::Key_F1 && k <= Qt::Key_F12) return 112 + (k - Qt::Key_F1);
  switch (k) {
    case Qt::Key_Backspace: return 8;
    case Qt::Key_Tab:
    case Qt::Key_Backtab: return 9;
    case Qt::Key_Return:
    case Qt::Key_Enter: return 13;
    case Qt::Key_Shift: return 16;
    case Qt::Key_Control: return 17;
    case Qt::Key_Alt: return 18;
    case Qt::Key_Escape: return 27;
    case Qt::Key_Space: return 32;
    case Qt::Key_PageUp: return 33;
    case Qt::Key_PageDown: return 34;
    case Qt::Key_End: return 35;
    case Qt::Key_Home: return 36;
    case Qt::Key_Left: return 37;
    case Qt::Key_Up: return 38;
    case Qt::Key_Right: return 39;
    case Qt::Key_Down: return 40;
    case Qt::Key_Insert: return 45;
    case Qt::Key_Delete: return 46;
    case Qt::Key_Asterisk: return keypad ? 106 : 0;
    case Qt::Key_Plus: return keypad ? 107 : 187;
    case Qt::Key_Minus: return keypad ? 109 : 189;
    case Qt::Key_Period: return keypad ? 110 : 190;
    case Qt::Key_Slash: return keypad ? 111 : 191;
    default: return 0;
  }
}

int shiftMask(Qt::KeyboardModifiers m) {
  int mask = 0;
  if (m & Qt::ShiftModifier) mask |= 1;
  if (m & Qt::ControlModifier) mask |= 2;
  if (m & Qt::AltModifier) mask |= 4;
  return mask;
}

}  // namespace quillon
