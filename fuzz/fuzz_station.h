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

namespace quillon::fuzz {

// One station per process, reset for each input: a fresh session costs
// more than most runs (twenty thousand empty scan entries, allocated and
// paged in), where a reset only reassigns them.
struct FuzzStation {
  explicit FuzzStation(size_t inputSize);
  ~FuzzStation();

  // A new active document holding `bytes` as a plain-text script file.
  MemoryDocument& open(std::string_view bytes);

  ScriptedUi& ui;
  MemoryDocumentService docs;
  Station& st;
  Answer answer;
};

inline std::string_view bytesOf(const uint8_t* data, size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

}  // namespace quillon::fuzz
