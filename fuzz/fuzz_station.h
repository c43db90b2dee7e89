// The headless station every fuzz target drives: scripted boxes, memory
// documents, the frame rate and the answer to Yes/No boxes chosen from the
// input's size so that the fuzzer varies them without a header of its own.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "core/station.h"
#include "doubles/scripted_ui.h"
#include "script/document_files.h"
#include "script/memory_document.h"
#include "script/tag_grammar.h"

namespace quillon::fuzz {

// One station per process, reset for each input: a fresh session costs
// more than most runs (twenty thousand empty scan entries, allocated and
// paged in), where a reset only reassigns them.
struct FuzzStation {
  explicit FuzzStation(size_t inputSize);
  ~FuzzStation();

  // A new active document holding `bytes` as a plain-text script file.
  MemoryDocument& open(std::string_view bytes);

  // The scan mode the input's size picks among the first `modes`, with what
  // that mode reads set up: the whole text selected, or a position 30
  // seconds in.
  ScanMode scanMode(size_t inputSize, int modes);

  ScriptedUi& ui;
  MemoryDocumentService docs;
  Station& st;
  Answer answer;
};

// One input through a scanner: the checks installed, the input opened as
// the script, and a scan in the mode its size picks among the first `modes`.
inline int scanInput(const uint8_t* data, size_t size, void (*installChecks)(Station&),
                     bool (*scan)(Station&, ScanMode), int modes) {
  FuzzStation f(size);
  installChecks(f.st);
  f.open({reinterpret_cast<const char*>(data), size});
  scan(f.st, f.scanMode(size, modes));
  return 0;
}

inline std::string_view bytesOf(const uint8_t* data, size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

}  // namespace quillon::fuzz
