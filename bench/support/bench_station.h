// The headless station the benchmarks drive: scripted boxes, memory
// documents and the frame rate. What a benchmark needs beyond that, it sets.
#pragma once

#include <memory>
#include <string>
#include <unistd.h>

#include "core/station.h"
#include "doubles/scripted_ui.h"
#include "script/memory_document.h"

namespace quillon::bench {

struct BenchStation {
  explicit BenchStation(int fps) : st(ui) {
    st.doc = &docs;
    st.s.g_fps = static_cast<int16_t>(fps);
    st.s.framePeriod = 1.0 / fps;
  }
  // A new active document holding `text`.
  MemoryDocument& open(const u16& text = {}, const u16& name = {}) {
    auto doc = std::make_unique<MemoryDocument>();
    doc->setText(text);
    doc->name = name;
    return docs.addDocument(std::move(doc));
  }
  ScriptedUi ui;
  MemoryDocumentService docs;
  Station st;
};

// The parameters a station usually runs with: 14 characters a second, 1 to
// 6 seconds on air, 2 frames between subtitles, 32 characters a row.
inline void useUsualParameters(Session& s) {
  s.readingSpeed = 14;
  s.minOnAir1 = 1;
  s.maxOnAir = 6;
  s.minInterleave = 2;
  s.maxCharsRow = 32;
}

// A file of this run's own in /tmp.
inline std::string tempPath(const std::string& name) {
  return "/tmp/quillon-bench-" + std::to_string(::getpid()) + "-" + name;
}

}  // namespace quillon::bench
