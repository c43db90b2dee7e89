#include "doubles/scripted_ui.h"

namespace quillon {

Answer defaultAnswer(const MessageBoxRequest& box) {
  auto pick = [&](Answer a, Answer b, Answer c = Answer::Cancel) {
    if (box.defaultButton == 2) return b;
    if (box.defaultButton == 3) return c;
    return a;
  };
  switch (box.buttons) {
    case Buttons::OK: return Answer::OK;
    case Buttons::OKCancel: return pick(Answer::OK, Answer::Cancel);
    case Buttons::YesNo: return pick(Answer::Yes, Answer::No);
    case Buttons::YesNoCancel: return pick(Answer::Yes, Answer::No, Answer::Cancel);
    case Buttons::RetryCancel: return pick(Answer::Retry, Answer::Cancel);
    case Buttons::AbortRetryIgnore: return pick(Answer::Abort, Answer::Retry, Answer::Ignore);
  }
  return Answer::OK;
}

namespace {
// The next queued answer, or `fallback` when none is left.
template <typename T>
T next(std::deque<T>& queue, T fallback) {
  if (queue.empty()) return fallback;
  T v = std::move(queue.front());
  queue.pop_front();
  return v;
}
}  // namespace

std::optional<u16> ScriptedUi::inputBox(const u16& prompt, const u16&, const u16& defaultText) {
  inputPrompts.push_back(prompt);
  return next(inputs, std::optional<u16>(defaultText));
}

std::optional<std::string> ScriptedUi::openFileDialog(const FileDialogRequest& req) {
  openRequests.push_back(req);
  return next(openPaths, std::optional<std::string>());
}

std::optional<std::string> ScriptedUi::saveFileDialog(const FileDialogRequest& req) {
  saveRequests.push_back(req);
  return next(savePaths, std::optional<std::string>());
}

Answer ScriptedUi::messageBox(const MessageBoxRequest& box) {
  boxes.push_back({box, next(answers, defaultAnswer(box))});
  return boxes.back().answer;
}

void ScriptedUi::pumpEvents() {
  ++pumps;
  clock += pumpStep;
  if (onPump) onPump();
}

std::vector<u16> ScriptedUi::boxTexts() const {
  std::vector<u16> out;
  for (const auto& r : boxes) out.push_back(r.box.text);
  return out;
}

}  // namespace quillon
