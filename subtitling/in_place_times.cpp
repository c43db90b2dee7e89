#include "subtitling/in_place_times.h"

#include "script/document_service.h"
#include "script/timing_tag.h"

namespace quillon {

bool InPlaceTimes::rewrite(int i, const u16& findText, const u16& replacement) {
  DocumentService& d = *st_.doc;
  const long at = st_.s.scan.tagAt[static_cast<size_t>(i)] + shift_ + tag_place::kCueIn;
  long matched = 0;
  const bool here = at >= 0 && findPatternMatchesAt(d.text({at, at + static_cast<long>(findText.size())}), 0,
                                                    findText, true, matched);
  if (here) {
    // The station's own replacement, bounded to the tag's times.
    d.select({at, at + matched});
    FindRequest f;
    f.findText = findText;
    f.replaceWith = replacement;
    f.replace = ReplaceMode::One;
    d.execute(f);
    shift_ += static_cast<long>(replacement.size()) - matched;
  } else {
    d.selectAll();
  }
  d.undoClear();
  return here;
}

}  // namespace quillon
