// The user-interface seam on Qt: modal boxes, dialogs, the clipboard, the
// pointer and the event pump of the operator's desktop.
#pragma once

#include <functional>

#include <QString>

#include "app/qt_text.h"
#include "core/ui.h"

class QWidget;

namespace quillon {

// "Media files|*.avi;*.mov|All files|*.*" as Qt writes it:
// "Media files (*.avi *.mov);;All files (*.*)".
QString qtFileFilter(const u16& filter);

class QtUi : public UserInterface {
 public:
  // Runs before each pump waits, so the window shows what the logic has
  // just changed.
  std::function<void()> beforePump;
  // Parent of the boxes and dialogs; null for none.
  std::function<QWidget*()> dialogParent;
  // Runs before any box or dialog opens.
  std::function<void()> beforeDialog;

  Answer messageBox(const MessageBoxRequest& box) override;
  std::optional<u16> inputBox(const u16& prompt, const u16& title, const u16& defaultText) override;
  std::optional<std::string> openFileDialog(const FileDialogRequest& req) override;
  std::optional<std::string> saveFileDialog(const FileDialogRequest& req) override;

  void setClipboard(const u16& text) override;
  u16 clipboard() override;
  void clearClipboard() override;

  void setPointer(Pointer p) override;
  // Waits for the next event and handles what is pending. Timer1 always
  // runs, so the wait is never longer than its interval and a loop that
  // pumps sleeps between ticks instead of spinning.
  void pumpEvents() override;
  double timeOfDay() override;

  Pointer pointer() const { return pointer_; }
  int pumps() const { return pumps_; }

 private:
  // Runs beforeDialog and gives the dialog's parent.
  QWidget* prepareDialog() const;
  Pointer pointer_ = Pointer::Default;
  int pumps_ = 0;
};

}  // namespace quillon
