// How far a timing mark lands from the frame the operator saw. The whole
// station runs (Qt window, libmpv playing the generated test pattern, whose
// frames carry their own number as a strip of 8 bits across the top); the
// space bar is pressed through the window's real key path at chosen moments
// of a subtitle timing run, with no reaction delay. The frame on show at a
// press is the player's own clock read just before and just after the key
// event; after the run the cues the loop wrote into the script are set
// against those frames.
//
// A press that falls while the picture changes has two candidate frames;
// the distance counts to the nearer. The counters give the mean and the
// largest distance in frames (the target is at most one), the mean with
// its sign (negative: the cue lies before the frame on show), and how
// often the picture, read off the strip after each press, was not the
// frame the clock gave around it (picture_off_clock, a share; 0 when the
// clock is the picture). Reading the picture takes about a frame's time on
// the window thread, which is why it is not read at the press itself.
//
// Runs offscreen when there is no display; mpv then decodes without drawing
// and the picture comes from its decoder output.
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include <QApplication>
#include <QTest>
#include <QTimer>

#include <benchmark/benchmark.h>

#include "app/bench/bench_station.h"
#include "app/overlay_windows.h"
#include "core/timecode.h"
#include "transport/mpv/mpv_player.h"

namespace {

using namespace quillon;

constexpr int kFps = 25;
constexpr int kSubtitles = 4;

// The strip: bit i is the 32-pixel column i, light for 1; -1 without a
// picture.
int frameOnShow(MpvPlayer& player) {
  MpvPicture p;
  if (!player.grabPicture(p) || p.width < 256 || p.height < 16) return -1;
  int n = 0;
  for (int bit = 0; bit < 8; ++bit)
    if (p.brightness(32 * bit + 16, 8) > 3 * 128) n |= 1 << bit;
  return n;
}

// The frame the player's own clock stands at.
int clockFrame(MpvPlayer& player) { return static_cast<int>(std::lround(player.currentPosition() * kFps)); }

struct Press {
  int before = -1, after = -1;  // the player's frame just before and after the key event
};

std::string script() {
  std::string s;
  for (int i = 1; i <= kSubtitles; ++i) s += "Subtitle number " + std::to_string(i) + ".\r\r";
  return s;
}

// The cue frames of the script's tags, in order: in, out, in, out...
std::vector<int> writtenFrames(const u16& text, UserInterface& ui) {
  std::vector<int> frames;
  for (size_t at = text.find(u"SUB["); at != u16::npos; at = text.find(u"SUB[", at + 1)) {
    const u16 tag = text.substr(at, 32);  // SUB[p a s in>out]
    if (tag.size() < 32 || tag[19] != u'>') continue;
    for (size_t from : {size_t{8}, size_t{20}})
      frames.push_back(static_cast<int>(std::lround(TCaSEG(tag.substr(from, 11), kFps, ui) * kFps)));
  }
  return frames;
}

void pressKey(Qt::Key key) {
  QWidget* w = QApplication::focusWidget();
  if (!w) w = QApplication::activeWindow();
  if (w) QTest::keyClick(w, key);
}

void BM_MarkingPrecision(benchmark::State& state) {
  if (!std::filesystem::exists(bench::kPatternVideo)) return state.SkipWithError("sample media not generated");
  const bool display = bench::startApplication();
  const std::string config = (std::filesystem::temp_directory_path() / "quillon-bench-marking").string();
  std::filesystem::create_directories(config);
  setenv("QUILLON_CONFIG_DIR", config.c_str(), 1);

  std::vector<double> distances;
  std::mt19937 random(11);
  std::uniform_int_distribution<int> phase(0, 1000 / kFps - 1);  // ms
  int straddled = 0, pictureChecks = 0, pictureOffClock = 0;
  bool pictureMissing = false;
  double signedTotal = 0;
  for (auto _ : state) {
    DesktopOptions o = bench::benchOptions(display);
    o.quitApplication = false;
    auto desk = bench::stationOnPattern(o, script());
    if (!desk) return state.SkipWithError("the sample video did not open");
    auto* player = dynamic_cast<MpvPlayer*>(desk->player());
    if (!player) return state.SkipWithError("the station is not on the mpv player");
    Station& st = desk->station();
    st.s.g_fps = kFps;
    st.s.framePeriod = 1.0 / kFps;
    st.s.delay = 0;
    pressKey(Qt::Key_Home);

    // In and out 1.6 s apart, 0.7 s to the next in.
    std::vector<double> marks;
    for (int i = 0; i < kSubtitles; ++i) {
      marks.push_back(0.6 + 2.3 * i);
      marks.push_back(2.2 + 2.3 * i);
    }
    std::vector<Press> presses;
    QObject guard;
    auto* timer = new QTimer(&guard);
    timer->setTimerType(Qt::PreciseTimer);
    timer->setInterval(2);
    // The player's clock steps at each new frame, so a press made as soon
    // as it passes a mark would always fall just behind a frame change.
    // The press waits a further random part of a frame, as an operator's
    // hand, out of step with the picture, does.
    bool waiting = false;
    const auto pressNow = [&] {
      waiting = false;
      Press p;
      p.before = clockFrame(*player);
      pressKey(Qt::Key_Space);
      p.after = clockFrame(*player);
      presses.push_back(p);
      // The check of the clock against the picture comes after the press:
      // taking the picture holds the window thread for about a frame.
      const int from = clockFrame(*player), shown = frameOnShow(*player), to = clockFrame(*player);
      if (shown < 0) pictureMissing = true;
      else if (shown < from || shown > to) ++pictureOffClock;
      ++pictureChecks;
    };
    QObject::connect(timer, &QTimer::timeout, timer, [&] {
      if (waiting) return;
      if (presses.size() >= marks.size()) {
        if (st.s.g_fsim && transformadaTCactual(st.s) > marks.back() + 0.5) pressKey(Qt::Key_Escape);
        return;
      }
      const bool ready = st.s.g_fsim && QApplication::focusWidget() == static_cast<QWidget*>(desk->window().formaSub());
      if (!ready || player->currentPosition() < marks[presses.size()]) return;
      waiting = true;
      QTimer::singleShot(phase(random), Qt::PreciseTimer, &guard, pressNow);
    });
    timer->start();
    desk->window().action("mnu_temp")->trigger();
    timer->stop();

    const std::vector<int> written = writtenFrames(desk->documents().content(), desk->ui());
    desk->close();
    if (presses.size() != marks.size() || written.size() != marks.size())
      return state.SkipWithError("the run did not take every press");
    for (size_t i = 0; i < presses.size(); ++i) {
      const Press& p = presses[i];
      if (p.before != p.after) ++straddled;
      const int lo = std::min(p.before, p.after), hi = std::max(p.before, p.after);
      const int w = written[i];
      const int off = w < lo ? w - lo : w > hi ? w - hi : 0;  // late is positive
      distances.push_back(std::abs(off));
      signedTotal += off;
    }
  }
  double total = 0, worst = 0;
  for (double d : distances) {
    total += d;
    worst = std::max(worst, d);
  }
  state.counters["presses"] = static_cast<double>(distances.size());
  state.counters["mean_frames"] = distances.empty() ? 0 : total / static_cast<double>(distances.size());
  state.counters["max_frames"] = worst;
  state.counters["mean_signed_frames"] = distances.empty() ? 0 : signedTotal / static_cast<double>(distances.size());
  state.counters["straddled"] = straddled;
  if (!pictureMissing) state.counters["picture_off_clock"] = pictureChecks ? double(pictureOffClock) / pictureChecks : 0;
}
BENCHMARK(BM_MarkingPrecision)->Iterations(4)->Unit(benchmark::kSecond)->UseRealTime();

}  // namespace
