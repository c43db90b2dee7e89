// The user-interface seam on a terminal: every box goes to standard error
// as "QUILLON: " and its text, Yes/No boxes take the answer given on the
// command line, dialogs take the paths the command was given.
#pragma once

#include <deque>
#include <ostream>

#include "core/ui.h"

namespace quillon::cli {

class ConsoleUi : public UserInterface {
 public:
  explicit ConsoleUi(std::ostream& err) : err_(err) {}

  bool answerYes = true;
  std::deque<std::string> openPaths, savePaths;
  std::deque<u16> inputs;

  int boxesShown = 0;
  bool answeredNo = false;

  Answer messageBox(const MessageBoxRequest& box) override;
  std::optional<u16> inputBox(const u16& prompt, const u16& title, const u16& defaultText) override;
  std::optional<std::string> openFileDialog(const FileDialogRequest& req) override;
  std::optional<std::string> saveFileDialog(const FileDialogRequest& req) override;
  void setClipboard(const u16& text) override { clip_ = text; }
  u16 clipboard() override { return clip_; }
  void clearClipboard() override { clip_.clear(); }
  void setPointer(Pointer) override {}
  void pumpEvents() override {}
  double timeOfDay() override;

 private:
  std::ostream& err_;
  u16 clip_;
};

}  // namespace quillon::cli
