// A one-hour interactive timing session on the simulated clock, one pump
// turn per Timer1 tick, in a script that already holds 1999 or 19999 timed
// subtitles. The operator marks every three seconds; each subtitle costs a
// walk of the scan table and a document edit, and every other turn only
// waits. The counters give the processor time of one turn (median and 99th
// percentile): it must not grow with the script.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <ctime>
#include <vector>

#include "bench/support/bench_station.h"
#include "bench/support/timed_script.h"
#include "core/timecode.h"
#include "doubles/simulated_player.h"
#include "subtitling/timing_loop.h"
#include "transport/video_commands.h"

namespace {

using namespace quillon;

// Processor time of this thread, so that other processes on the machine do
// not show as work of the turn.
double threadNanoseconds() {
  timespec t{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
  return static_cast<double>(t.tv_sec) * 1e9 + static_cast<double>(t.tv_nsec);
}

constexpr double kSessionSeconds = 3600;
constexpr double kMarkEvery = 3;
constexpr int kFps = 25;

// `timed` subtitles already timed, then enough untimed two-line texts for
// the hour.
u16 sessionScript(int timed) {
  const int untimed = static_cast<int>(kSessionSeconds / (2 * kMarkEvery)) + 10;
  // Behind the hour: the marks land clear of them.
  u16 out = bench::timedScript(timed, kFps, 1, 4000);
  out.reserve(out.size() + static_cast<size_t>(untimed) * 40);
  for (int i = 0; i < untimed; ++i) out += u"Untimed text " + numberText(i + 1) + u"\rwith a second line\r\r";
  return out;
}

struct Session1h : bench::BenchStation {
  Session1h() : BenchStation(kFps), player([this] { return ui.clock; }) {
    st.player = &player;
    bench::useUsualParameters(st.s);
    st.s.delay = 0.3;
    installTransport(st);
    doc = &open();
    ui.pumpStep = 0.033;
  }

  // One whole session; the gaps between consecutive pumps go to `turns`.
  void run(const u16& text, std::vector<double>& turns) {
    Session& s = st.s;
    doc->setText(text);
    const long start = static_cast<long>(text.find(u"Untimed text 1\r"));
    docs.select({start, start});
    player.fileDuration = kSessionSeconds + 100;
    player.renderFile("session.mp4");
    s.videoFile = u"session.mp4";
    s.videoDuration = player.fileDuration;
    s.tcStart = 0;
    s.tcEnd = s.videoDuration;
    s.g_dblPosActual = 0;
    double nextMark = kMarkEvery;
    double last = -1;
    ui.onPump = [&] {
      const double now = threadNanoseconds();
      if (last >= 0) turns.push_back(now - last);
      last = now;
      timer1Tick(st);
      const double tc = transformadaTCactual(s);
      if (tc >= kSessionSeconds) {
        s.g_fsim = false;  // Esc
      } else if (tc >= nextMark) {
        s.TCSpacebar = tc;  // the overlay's Space
        nextMark += kMarkEvery;
      }
    };
    timingLoop(st);
    ui.onPump = nullptr;
  }

  SimulatedPlayer player;
  MemoryDocument* doc = nullptr;
};

double percentile(std::vector<double>& v, double p) {
  if (v.empty()) return 0;
  const size_t k = std::min(v.size() - 1, static_cast<size_t>(p * static_cast<double>(v.size())));
  std::nth_element(v.begin(), v.begin() + static_cast<long>(k), v.end());
  return v[k];
}

void BM_TimingSessionOneHour(benchmark::State& state) {
  const u16 text = sessionScript(static_cast<int>(state.range(0)));
  Session1h b;
  std::vector<double> turns;
  long tags = 0;
  for (auto _ : state) {
    turns.clear();
    b.run(text, turns);
    tags = b.st.s.tagUndoCount;
  }
  state.counters["turns"] = static_cast<double>(turns.size());
  state.counters["tags"] = static_cast<double>(tags);
  state.counters["turn_ns_median"] = percentile(turns, 0.5);
  state.counters["turn_ns_p99"] = percentile(turns, 0.99);
}

BENCHMARK(BM_TimingSessionOneHour)->Arg(1999)->Arg(19999)->Unit(benchmark::kMillisecond)->Iterations(2);

}  // namespace
