// Test double of the user-interface seam: answers from queues, records every
// box, and runs a simulated clock that advances on each pump.
#pragma once

#include <deque>
#include <functional>
#include <vector>

#include "core/ui.h"

namespace quillon {

class ScriptedUi : public UserInterface {
 public:
  struct Record {
    MessageBoxRequest box;
    Answer answer;
  };

  // Queued answers; when a queue is empty the box gets its default button's
  // answer (OK for OK boxes, Yes for Yes/No unless the default is the second).
  std::deque<Answer> answers;
  std::deque<std::optional<u16>> inputs;
  std::deque<std::optional<std::string>> openPaths;
  std::deque<std::optional<std::string>> savePaths;

  std::vector<Record> boxes;
  std::vector<u16> inputPrompts;
  std::vector<FileDialogRequest> openRequests, saveRequests;
  std::vector<Pointer> pointerHistory;
  Pointer pointer = Pointer::Default;
  u16 clip;

  double clock = 36000.0;     // seconds since midnight
  double pumpStep = 0.001;    // each pump advances the clock this much
  long pumps = 0;
  // Called on every pump after the clock moves: tests press keys here.
  std::function<void()> onPump;

  Answer messageBox(const MessageBoxRequest& box) override;
  std::optional<u16> inputBox(const u16& prompt, const u16& title, const u16& defaultText) override;
  std::optional<std::string> openFileDialog(const FileDialogRequest& req) override;
  std::optional<std::string> saveFileDialog(const FileDialogRequest& req) override;
  void setClipboard(const u16& text) override { clip = text; }
  u16 clipboard() override { return clip; }
  void clearClipboard() override { clip.clear(); }
  void setPointer(Pointer p) override {
    pointer = p;
    pointerHistory.push_back(p);
  }
  void pumpEvents() override;
  double timeOfDay() override { return clock; }

  // Texts of the boxes shown so far, in order.
  std::vector<u16> boxTexts() const;
  const MessageBoxRequest& lastBox() const { return boxes.back().box; }
};

// The answer a box gets when nobody chooses: its default button.
Answer defaultAnswer(const MessageBoxRequest& box);

}  // namespace quillon
