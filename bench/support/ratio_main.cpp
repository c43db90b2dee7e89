// The benchmark programs' main: the usual console report, then for every
// benchmark run at more than one size the cost of its largest size over its
// smallest (processor time, which a machine shared with other work disturbs
// least). Work that grows linearly gives the ratio of the sizes, 10 for
// 19999 entries over 1999.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <string>

namespace {

class RatioReporter : public benchmark::ConsoleReporter {
 public:
  RatioReporter() : ConsoleReporter(OO_None) {}

  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& r : runs) {
      if (r.error_occurred || r.run_type != Run::RT_Iteration || r.run_name.args.empty()) continue;
      const long size = std::strtol(r.run_name.args.c_str(), nullptr, 10);
      if (size > 0) cpu_[r.run_name.function_name][size] = r.GetAdjustedCPUTime();
    }
  }

  void Finalize() override {
    bool header = false;
    for (const auto& [name, bySize] : cpu_) {
      if (bySize.size() < 2) continue;
      const auto& [small, smallCpu] = *bySize.begin();
      const auto& [large, largeCpu] = *bySize.rbegin();
      if (!header) std::printf("\nGrowth, largest size over smallest (processor time):\n");
      header = true;
      std::printf("%-32s %6ld/%-6ld %8.1f\n", name.c_str(), large, small, smallCpu > 0 ? largeCpu / smallCpu : 0.0);
    }
    ConsoleReporter::Finalize();
  }

 private:
  std::map<std::string, std::map<long, double>> cpu_;
};

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  benchmark::Shutdown();
  return 0;
}
