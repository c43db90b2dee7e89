// The user-interface seam: everything the logic asks of the desktop.
//
// The Qt window implements it for the operator, the command line implements
// it on standard error, and the scripted double answers from a queue in tests.
#pragma once

#include <optional>
#include <string>

#include "core/text.h"

namespace quillon {

// The application's title, on every message box and the main window.
inline const u16 g_appTitle = u"QUILLON";

enum class Buttons { OK, OKCancel, YesNo, YesNoCancel, RetryCancel, AbortRetryIgnore };
enum class Icon { None, Critical, Question, Exclamation, Information };
enum class Answer { OK, Cancel, Yes, No, Retry, Abort, Ignore };
enum class Pointer { Default, Hourglass };

struct MessageBoxRequest {
  u16 text;
  Buttons buttons = Buttons::OK;
  Icon icon = Icon::None;
  int defaultButton = 1;  // 1-based among the buttons
  u16 title;              // g_appTitle unless a box names its own
};

struct FileDialogRequest {
  u16 title;
  u16 filter;       // "Description|*.ext|Other|*.*"
  u16 defaultName;  // suggested file name
  u16 initialDir;
};

class UserInterface {
 public:
  virtual ~UserInterface() = default;

  virtual Answer messageBox(const MessageBoxRequest& box) = 0;
  // Text typed, or nullopt when the operator cancelled.
  virtual std::optional<u16> inputBox(const u16& prompt, const u16& title, const u16& defaultText) = 0;
  // UTF-8 file-system paths, or nullopt on cancel.
  virtual std::optional<std::string> openFileDialog(const FileDialogRequest& req) = 0;
  virtual std::optional<std::string> saveFileDialog(const FileDialogRequest& req) = 0;

  virtual void setClipboard(const u16& text) = 0;
  virtual u16 clipboard() = 0;
  virtual void clearClipboard() = 0;

  virtual void setPointer(Pointer p) = 0;
  // One turn of the event pump: deliver pending input, timers and repaints.
  virtual void pumpEvents() = 0;
  // Seconds since midnight, as the station's clock reads it.
  virtual double timeOfDay() = 0;
};

// Convenience forms used throughout the logic.
Answer msgBox(UserInterface& ui, const u16& text, Buttons b = Buttons::OK, Icon i = Icon::None,
              int defaultButton = 1);
inline Answer critical(UserInterface& ui, const u16& text) { return msgBox(ui, text, Buttons::OK, Icon::Critical); }
inline Answer warning(UserInterface& ui, const u16& text) { return msgBox(ui, text, Buttons::OK, Icon::Exclamation); }

// A busy wait that keeps the windows alive: pump once per pass until
// `seconds` of the time of day have gone by.
void waitSeconds(UserInterface& ui, int seconds);

}  // namespace quillon
