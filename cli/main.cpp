#include <clocale>
#include <cstring>
#include <iostream>

#include "cli/command.h"
#include "core/atomic_file.h"
#include "core/settings.h"
#include "core/timecode.h"

using namespace quillon;
using namespace quillon::cli;

namespace {

void printUsage(std::ostream& o) {
  o << "usage: quillon-cli COMMAND [OPTIONS] ARGS...\n\ncommands:\n";
  for (const auto& c : commands()) o << "  " << c.name << "\t" << c.summary << "\n";
  o << "\ncommon options:\n"
       "  --fps N              24, 25 or 30 (default 30)\n"
       "  --settings FILE      parameters from a settings line instead of the defaults\n"
       "  --param NAME=VALUE   set one parameter (flags take T or F)\n"
       "  --answer yes|no      answer to Yes/No boxes (default yes)\n"
       "  --video-duration S   stand in for an open video of S seconds\n"
       "  --tc-window DIGITS   the video's timecode window, HHMMSSFFHHMMSSFF\n"
       "  --writer CONNECTION  work on the document open in LibreOffice Writer at a UNO\n"
       "                       connection (pipe,name=NAME or socket,host=H,port=N): SCRIPT\n"
       "                       names which one (the one in front when left out), and the\n"
       "                       edits stay in it (-o, when given, gets a copy)\n"
       "  --help               this text, or the command's own\n";
}

bool setParam(Session& s, const std::string& assignment, std::string& error) {
  auto eq = assignment.find('=');
  if (eq == std::string::npos) {
    error = "--param wants NAME=VALUE, got '" + assignment + "'";
    return false;
  }
  std::string name = assignment.substr(0, eq), value = assignment.substr(eq + 1);
  auto number = [&](double& target) {
    char* end = nullptr;
    double v = std::strtod(value.c_str(), &end);
    if (value.empty() || *end != '\0') {
      error = "parameter " + name + " wants a number, got '" + value + "'";
      return false;
    }
    target = v;
    return true;
  };
  auto flag = [&](bool& target) {
    if (value != "T" && value != "F") {
      error = "parameter " + name + " takes T or F, got '" + value + "'";
      return false;
    }
    target = value == "T";
    return true;
  };
  double d = 0;
  if (name == "readingSpeed") return number(s.readingSpeed);
  if (name == "minOnAir1") return number(s.minOnAir1);
  if (name == "minOnAir2") return number(s.minOnAir2);
  if (name == "maxOnAir") return number(s.maxOnAir);
  if (name == "fastThreshold") return number(s.fastThreshold);
  if (name == "slowThreshold") return number(s.slowThreshold);
  if (name == "delay") return number(s.delay);
  if (name == "minInterleave") {
    if (!number(d)) return false;
    s.minInterleave = static_cast<int16_t>(d);
    return true;
  }
  if (name == "maxCharsRow") {
    if (!number(d)) return false;
    s.maxCharsRow = static_cast<int16_t>(d);
    return true;
  }
  if (name == "readingSpeedCheck") return flag(s.readingSpeedCheck);
  if (name == "checksDisabled") return flag(s.checksDisabled);
  error = "unknown parameter '" + name + "'";
  return false;
}

}  // namespace

int main(int argc, char** argv) {
  std::setlocale(LC_ALL, "C");
  // The common options may also stand before the command.
  std::vector<std::string> words(argv + 1, argv + argc);
  size_t at = 0;
  auto commonOption = [](const std::string& w) {
    const std::string name = w.substr(0, w.find('='));
    for (const char* o : {"--fps", "--settings", "--param", "--answer", "--video-duration", "--tc-window", "--writer"})
      if (name == o) return true;
    return false;
  };
  while (at + 1 < words.size() && commonOption(words[at])) at += words[at].find('=') == std::string::npos ? 2 : 1;
  if (at >= words.size()) at = 0;
  if (words.empty() || words[at] == "--help" || words[at] == "-h") {
    printUsage(words.empty() ? std::cerr : std::cout);
    return words.empty() ? kExitUsage : kExitOk;
  }
  const std::string command = words[at];
  words.erase(words.begin() + static_cast<long>(at));
  const CommandSpec* spec = nullptr;
  for (const auto& c : commands())
    if (command == c.name) spec = &c;
  Invocation inv(std::cout, std::cerr);
  if (!spec) return inv.fail("unknown command '" + command + "' (see --help)");

  std::string settingsFile, answer, fpsText = "30", videoDuration, tcWindow, writer;
  std::vector<std::string> params;
  const size_t count = words.size();
  for (size_t i = 0; i < count; ++i) {
    std::string a = words[i];
    auto valued = [&](const std::string& opt, std::string& target) {
      if (a == opt) {
        if (i + 1 >= count) return 2;
        target = words[++i];
        return 1;
      }
      if (a.rfind(opt + "=", 0) == 0) {
        target = a.substr(opt.size() + 1);
        return 1;
      }
      return 0;
    };
    std::string p;
    int r;
    if ((r = valued("--fps", fpsText)) || (r = valued("--settings", settingsFile)) || (r = valued("--answer", answer)) ||
        (r = valued("--video-duration", videoDuration)) || (r = valued("--tc-window", tcWindow)) ||
        (r = valued("--writer", writer))) {
      if (r == 2) return inv.fail(a + " wants a value");
      continue;
    }
    if ((r = valued("--param", p))) {
      if (r == 2) return inv.fail("--param wants NAME=VALUE");
      params.push_back(p);
      continue;
    }
    if (a == "--help" || a == "-h") {
      inv.help = true;
      continue;
    }
    inv.args.push_back(a);
  }
  inv.writerConnection = writer;
  if (inv.help && !spec->ownHelp) {
    std::cout << "usage: quillon-cli " << spec->usage << "\n" << spec->summary << "\n";
    return kExitOk;
  }
  if (fpsText != "24" && fpsText != "25" && fpsText != "30") return inv.fail("--fps must be 24, 25 or 30, got '" + fpsText + "'");
  inv.st.s.g_fps = static_cast<int16_t>(std::stoi(fpsText));
  inv.st.s.framePeriod = 1.0 / inv.st.s.g_fps;
  if (!answer.empty() && answer != "yes" && answer != "no") return inv.fail("--answer must be yes or no");
  inv.ui.answerYes = answer != "no";

  std::string line;
  if (!settingsFile.empty()) {
    std::string bytes, error;
    if (!readWholeFile(settingsFile, bytes, &error)) return inv.fail(error);
    line = readSettingsLine(settingsFile);
  }
  applySettingsLine(inv.st.s, line);
  for (const auto& p : params) {
    std::string error;
    if (!setParam(inv.st.s, p, error)) return inv.fail(error);
  }
  // --video-duration and --tc-window stand in for an open video.
  if (!videoDuration.empty() || !tcWindow.empty()) {
    char* end = nullptr;
    double d = std::strtod(videoDuration.c_str(), &end);
    if (!videoDuration.empty() && (*end != '\0' || d < 0)) return inv.fail("--video-duration wants seconds, got '" + videoDuration + "'");
    if (!tcWindow.empty() && tcWindow.size() != 16) return inv.fail("--tc-window wants 16 digits HHMMSSFFHHMMSSFF");
    Session& s = inv.st.s;
    s.videoFile = u"video";
    s.videoDuration = d;
    s.noframes = s.g_fps * d;
    setVideoTimecodeWindow(s, inv.st.view, fromUtf8(tcWindow));
  }
  return spec->run(inv);
}
