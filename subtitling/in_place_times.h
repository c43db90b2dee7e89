// Rewriting the times of scanned tags where they stand.
//
// The retiming commands and the interleave repair give entries new times:
// the find text `Left(in,8) ^? Right(in,2) > Left(out,8) ^? Right(out,2) ]`
// is replaced by the new cue-in and cue-out. Each entry's find text is tried
// at its own tag, where the scan read it, and nowhere else, so a tag already
// rewritten is never taken for a later entry's and no search runs over the
// script: a whole-script retime costs one step per tag.
#pragma once

#include "core/station.h"

namespace quillon {

class InPlaceTimes {
 public:
  explicit InPlaceTimes(Station& st) : st_(st) {}

  // Entry `i` of the scan table, taken in script order. When its tag still
  // reads `findText` from position 8, that text becomes `replacement` and is
  // left selected; otherwise nothing changes and the whole script is
  // selected. The word processor's undo list is emptied either way.
  bool rewrite(int i, const u16& findText, const u16& replacement);

 private:
  Station& st_;
  long shift_ = 0;  // characters the rewrites so far added in front of the next tag
};

}  // namespace quillon
