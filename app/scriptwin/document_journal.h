// The journal of the open script documents: a snapshot of every document
// with unsaved changes, rewritten whole every few seconds while the station
// runs and removed when it closes cleanly. A journal left by a station that
// is no longer running is what a crash leaves behind, and it is offered back
// on the next start.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "script/memory_document.h"

namespace quillon {

// $QUILLON_STATE_DIR, else $XDG_STATE_HOME/quillon, else
// ~/.local/state/quillon; the journal lives in its "journal" folder.
std::string defaultJournalFolder();

// The documents' state as bytes, and back; `ok` false (and nothing) for
// damaged bytes.
std::string journalBytes(const std::vector<const MemoryDocument*>& docs);
std::vector<std::unique_ptr<MemoryDocument>> documentsFromJournal(std::string_view bytes, bool& ok);

class DocumentJournal {
 public:
  // `folder` empty: no journal is kept.
  explicit DocumentJournal(std::string folder);

  const std::string& folder() const { return folder_; }
  // This station's journal file.
  std::string path() const;

  // Rewrites this station's journal with the documents given; with none,
  // removes it. False when it could not be written.
  bool write(const std::vector<const MemoryDocument*>& docs);
  void remove();

  // Journals left by stations no longer running, oldest first.
  std::vector<std::string> orphans() const;
  // The documents of those journals; the files stay until discardOrphans.
  std::vector<std::unique_ptr<MemoryDocument>> recoverOrphans() const;
  void discardOrphans() const;

 private:
  std::string folder_;
};

}  // namespace quillon
