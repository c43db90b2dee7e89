// quillon-cli tc: the timecode converters from the command line.
#include <ostream>

#include "cli/command.h"
#include "core/timecode.h"

namespace quillon::cli {

namespace {

int runTc(Invocation& inv) {
  std::string form, error;
  bool hasForm = inv.takeOption("--form", form, error);
  if (!error.empty()) return inv.fail(error);
  if (inv.rejectUnknownOptions(error)) return inv.fail(error);
  if (inv.args.size() != 2) return inv.fail("tc wants a conversion and one value (see tc --help)");
  const std::string& what = inv.args[0];
  const std::string& value = inv.args[1];
  const int fps = inv.st.fps();

  if (what == "to-tc") {
    if (!hasForm) form = "frame";
    char* end = nullptr;
    double seconds = std::strtod(value.c_str(), &end);
    if (value.empty() || *end != '\0') return inv.fail("to-tc wants seconds, got '" + value + "'");
    u16 text;
    if (form == "frame")
      text = SEGaTC(seconds, fps);
    else if (form == "hundredths")
      text = SEGaTCA(seconds);
    else if (form == "thousandths")
      text = SEGaTCV(seconds);
    else
      return inv.fail("--form for to-tc is frame, hundredths or thousandths");
    inv.out << toUtf8(text) << '\n';
    return kExitOk;
  }
  if (what == "to-seconds") {
    if (!hasForm) form = "frame";
    double r;
    if (form == "frame")
      r = TCaSEG(fromUtf8(value), fps, inv.ui);
    else if (form == "fractional")
      r = TCAaSEG(fromUtf8(value), inv.ui);
    else
      return inv.fail("--form for to-seconds is frame or fractional");
    inv.out << secondsText(r) << '\n';
    return r == -1 ? kExitStopped : kExitOk;
  }
  if (what == "to-frames") {
    if (hasForm) return inv.fail("to-frames takes no --form");
    long f = TCaFRAMES(fromUtf8(value), fps);
    inv.out << f << '\n';
    return f == -1 ? kExitStopped : kExitOk;
  }
  return inv.fail("unknown conversion '" + what + "': to-tc, to-seconds or to-frames");
}

const CommandRegistrar reg({"tc",
                            "tc [--fps N] to-tc [--form frame|hundredths|thousandths] SECONDS\n"
                            "       quillon-cli tc [--fps N] to-seconds [--form frame|fractional] TEXT\n"
                            "       quillon-cli tc [--fps N] to-frames TEXT",
                            "Convert between seconds, timecode text and frames.", runTc});

}  // namespace
}  // namespace quillon::cli
