#include "dubbing/dub_cue.h"

#include "core/timecode.h"
#include "dubbing/roster.h"
#include "script/document_ops.h"
#include "script/document_service.h"
#include "script/timing_tag.h"

namespace quillon {

u16 dubbingTag(const Station& st, const u16& name) {
  const Session& s = st.s;
  const int fps = st.fps();
  TimingTag tag = s.cueInOnly ? TimingTag::shortDubbing(SEGaTC(s.blockOut - s.delay, fps))
                              : TimingTag::dubbing(s.dub_voz_on ? u'N' : u'F', SEGaTC(s.blockIn - s.delay, fps),
                                                   SEGaTC(s.blockOut - s.delay, fps));
  tag.trailer = name;
  return name.empty() ? tag.text() : tag.line();
}

void insertar_dub(Station& st, const u16& vozinsert) {
  Session& s = st.s;
  Roster& r = s.roster;
  r.vozanterior = r.vozactual;
  if (!vozinsert.empty()) {
    int j = 1;
    while (j <= r.numvoces && r.voces[j] != vozinsert) ++j;
    if (j > r.numvoces) return;
    r.vozactual = static_cast<int16_t>(j);
  }
  const u16 tag = dubbingTag(st, vozinsert);
  if (!attachDocument(st)) return;
  DocumentService& d = *st.doc;
  d.selectionInsertAfter(tag);
  d.moveRight(wdCharacter, static_cast<long>(tag.size()));
  // Without the picking form the cursor skips to the coming dialogue, so
  // that marks in a row land on it.
  if (!s.characterWindow) d.selectNext(wdParagraph, 2);
  s.blockIn = 0;
  s.blockOut = 0;
  // Tested after the marks are zeroed, so it never fires; the station has
  // always behaved so.
  if (!s.cueInOnly && s.blockOut - s.blockIn >= 30)
    warning(st.ui, u"Warning: Try to create blocks of less than 30 seconds");
  if (s.switchToWordProcessor)
    d.activateWindow();
  else if (st.resumeVideo)
    st.resumeVideo(st);
}

void pickCharacterFor(Station& st) {
  Session& s = st.s;
  const Roster& r = s.roster;
  if (r.numvoces > 0) {
    if (s.dub_dialogos && r.vozanterior > 0) {
      const u16& previous = r.voces[r.vozanterior];
      auto& items = s.pickingList.items;
      int found = -1;
      for (int k = 0; k < static_cast<int>(items.size()); ++k)
        if (items[static_cast<size_t>(k)] == previous) {
          found = k;
          break;
        }
      if (found < 0) return;
      s.pickingList.listIndex = found;
    }
    if (s.characterWindow)
      s.pickingFormVisible = true;
    else
      insertar_dub(st, u"");
  } else if (s.characterWindow) {
    personaje_nuevo(st);
  } else {
    insertar_dub(st, u"");
  }
}

}  // namespace quillon
