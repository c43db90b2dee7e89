#include "fuzz_station.h"

namespace quillon::fuzz {

namespace {

struct Shared {
  Shared() {
    // The pristine copy holds no scan table and no undo list, so that a
    // reset copies the small fields alone.
    ScanTable table = std::move(pristineSession.scan);
    std::vector<u16> undo = std::move(pristineSession.tagUndo);
  }
  ScriptedUi ui;
  Station st{ui};
  Session pristineSession;
  ViewState pristineView;
};

Shared& shared() {
  static Shared* s = new Shared;
  return *s;
}

}  // namespace

FuzzStation::FuzzStation(size_t inputSize) : ui(shared().ui), st(shared().st) {
  static constexpr int16_t kRates[] = {24, 25, 30};
  ui = ScriptedUi();
  // The big tables stay with the station: the scanners clear the scan
  // table themselves, as the station's do between two scans.
  ScanTable table = std::move(st.s.scan);
  std::vector<u16> undo = std::move(st.s.tagUndo);
  st.s = shared().pristineSession;
  st.s.scan = std::move(table);
  st.s.scan.subtitleCount = 0;
  st.s.tagUndo = std::move(undo);
  st.view = shared().pristineView;
  st.doc = &docs;
  st.s.g_fps = kRates[inputSize % 3];
  st.s.framePeriod = 1.0 / st.s.g_fps;
  answer = (inputSize / 3) % 2 ? Answer::Yes : Answer::No;
  for (int i = 0; i < 64; ++i) ui.answers.push_back(answer);
  // Loops that wait on the clock must not spin for long on a fuzz input.
  ui.pumpStep = 1.0;
}

FuzzStation::~FuzzStation() { st.doc = nullptr; }

MemoryDocument& FuzzStation::open(std::string_view bytes) { return docs.addDocument(plainTextDocument(bytes)); }

ScanMode FuzzStation::scanMode(size_t inputSize, int modes) {
  const auto mode = static_cast<ScanMode>((inputSize / 6) % static_cast<size_t>(modes));
  if (mode == ScanMode::Selection) docs.selectAll();
  if (mode == ScanMode::FromCurrentPosition) st.s.g_dblPosActual = 30.0;
  return mode;
}

}  // namespace quillon::fuzz
