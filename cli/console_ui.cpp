#include "cli/console_ui.h"

#include <chrono>
#include <ctime>

namespace quillon::cli {

Answer ConsoleUi::messageBox(const MessageBoxRequest& box) {
  ++boxesShown;
  std::string t = toUtf8(box.text);
  for (char& c : t)
    if (c == '\r') c = '\n';
  err_ << "QUILLON: " << t << '\n';
  err_.flush();
  switch (box.buttons) {
    case Buttons::YesNo:
    case Buttons::YesNoCancel:
      if (!answerYes) answeredNo = true;
      return answerYes ? Answer::Yes : Answer::No;
    case Buttons::OKCancel: return answerYes ? Answer::OK : Answer::Cancel;
    case Buttons::RetryCancel: return Answer::Cancel;
    case Buttons::AbortRetryIgnore: return Answer::Abort;
    case Buttons::OK: break;
  }
  return Answer::OK;
}

std::optional<u16> ConsoleUi::inputBox(const u16&, const u16&, const u16& defaultText) {
  if (inputs.empty()) return defaultText;
  u16 v = inputs.front();
  inputs.pop_front();
  return v;
}

std::optional<std::string> ConsoleUi::openFileDialog(const FileDialogRequest&) {
  if (openPaths.empty()) return std::nullopt;
  std::string p = openPaths.front();
  openPaths.pop_front();
  return p;
}

std::optional<std::string> ConsoleUi::saveFileDialog(const FileDialogRequest&) {
  if (savePaths.empty()) return std::nullopt;
  std::string p = savePaths.front();
  savePaths.pop_front();
  return p;
}

double ConsoleUi::timeOfDay() {
  auto now = std::chrono::system_clock::now();
  std::time_t t = std::chrono::system_clock::to_time_t(now);
  std::tm tmv{};
  localtime_r(&t, &tmv);
  double frac = std::chrono::duration<double>(now.time_since_epoch()).count();
  frac -= static_cast<double>(static_cast<long long>(frac));
  return tmv.tm_hour * 3600.0 + tmv.tm_min * 60.0 + tmv.tm_sec + frac;
}

}  // namespace quillon::cli
