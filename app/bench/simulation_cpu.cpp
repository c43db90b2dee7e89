// What a running simulation costs the machine: the whole process's processor
// time (player threads included) against the wall clock while a subtitle
// simulation plays the test pattern from start to end, and the picture's
// frames per second meanwhile. The pumped loops wait for events, so the
// share of one core stays low (the target is under 10%).
//
// Runs on the desktop's display with the picture, or offscreen without it
// when there is none: `xvfb-run -a bench_simulation_cpu` gives both.
#include <sys/resource.h>

#include <cstdio>
#include <string>

#include <QElapsedTimer>
#include <QEvent>
#include <QWidget>

#include <benchmark/benchmark.h>

#include "app/bench/bench_station.h"

namespace {

double processSeconds() {
  rusage u{};
  getrusage(RUSAGE_SELF, &u);
  return double(u.ru_utime.tv_sec + u.ru_stime.tv_sec) + double(u.ru_utime.tv_usec + u.ru_stime.tv_usec) / 1e6;
}

// Counts the picture's repaints.
struct FrameCounter : QObject {
  int frames = 0;
  bool eventFilter(QObject*, QEvent* e) override {
    if (e->type() == QEvent::Paint) ++frames;
    return false;
  }
};

std::string timedScript() {
  std::string s;
  for (int i = 0; i < 4; ++i) {
    const int in = 1 + 2 * i;
    char tag[64];
    std::snprintf(tag, sizeof tag, "SUB[0 N 00:00:%02d:00>00:00:%02d:15]\r", in, in + 1);
    s += tag;
    s += "Subtitle number " + std::to_string(i + 1) + "\rwith its second line.\r\r";
  }
  return s;
}

void BM_SimulationProcessorShare(benchmark::State& state) {
  const bool display = quillon::bench::startApplication();
  for (auto _ : state) {
    auto desk = quillon::bench::stationOnPattern(quillon::bench::benchOptions(display), timedScript());
    if (!desk) {
      state.SkipWithError("the sample video did not open");
      return;
    }
    FrameCounter counter;
    desk->window().videoArea()->installEventFilter(&counter);
    const int pumps0 = desk->ui().pumps();
    const double cpu0 = processSeconds();
    QElapsedTimer wall;
    wall.start();
    desk->window().action("mnu_sim_d")->trigger();  // to the end of the video
    const double seconds = wall.elapsed() / 1000.0;
    const double cpu = processSeconds() - cpu0;
    state.counters["cpu_percent_of_one_core"] = 100.0 * cpu / seconds;
    state.counters["picture_fps"] = counter.frames / seconds;
    state.counters["simulated_seconds"] = seconds;
    state.counters["pumps_per_second"] = (desk->ui().pumps() - pumps0) / seconds;
    desk->window().videoArea()->removeEventFilter(&counter);
    desk->close();
  }
}
BENCHMARK(BM_SimulationProcessorShare)->Iterations(1)->Unit(benchmark::kSecond)->UseRealTime();

}  // namespace
