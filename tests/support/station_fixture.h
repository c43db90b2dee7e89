// A headless station for tests: scripted user interface, memory document.
#pragma once

#include <memory>
#include <string>

#include "core/station.h"
#include "doubles/scripted_ui.h"
#include "script/memory_document.h"

namespace quillon::testing {

struct TestStation {
  explicit TestStation(int fps = 30);
  ScriptedUi ui;
  MemoryDocumentService docs;
  Station st;

  // Opens a new active document holding `text` ('\n' may stand for CR).
  MemoryDocument& open(std::u16string_view text);
  std::u16string content() { return docs.content(); }
};

// Turns '\n' into the paragraph mark so tests can write scripts readably.
std::u16string script(std::u16string_view text);

// A generated timed script of `count` two-line subtitles, each 3 s long with
// a 1 s gap, in the block layout the scanners read.
std::u16string generatedSubtitleScript(int count, int fps = 30);

// Whole file as bytes; empty when missing.
std::string readFile(const std::string& path);
// A fresh, empty folder under the test's temporary directory.
std::string tempDir(const std::string& name);

}  // namespace quillon::testing
