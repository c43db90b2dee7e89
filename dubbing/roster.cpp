#include "dubbing/roster.h"

#include <algorithm>

#include "core/timecode.h"
#include "dubbing/dub_cue.h"
#include "script/document_ops.h"
#include "script/document_service.h"
#include "script/tag_grammar.h"

namespace quillon {

namespace {

void clearRoster(Station& st) {
  st.s.roster.clear();
  st.s.pickingList = {};
  st.s.rosterFormList = {};
}

// Adds a name to both lists, as createchar's companions do.
void addToLists(Station& st, const u16& name) {
  st.s.pickingList.items.push_back(name);
  st.s.rosterFormList.items.push_back(name);
}

}  // namespace

void scanCharacters(Station& st) {
  if (!attachDocument(st)) return;
  const u16 text = st.doc->content();
  if (text.empty()) return;
  clearRoster(st);
  st.ui.setPointer(Pointer::Hourglass);
  const long len = static_cast<long>(text.size());
  const int fps = st.fps();

  long cur = instr(1, text, u"DUB[");
  long nxt = cur > 0 ? instr(cur + 5, text, u"DUB[") : 0;
  if (cur > 0 && nxt == 0) nxt = len;
  while (cur > 0 && nxt > 0) {
    const long t = cur - 1;  // 0-based offset of the tag's D
    if (tagChar(text, t, tag_place::kPosition) == CR) break;
    const TimingTag tag = readTag(text, t, TimingTag::Kind::Dubbing);
    TCaSEG(tag.cueIn, fps, st.ui);
    TCaSEG(tag.cueOut, fps, st.ui);
    const long n = characterNameLength(text, t + tag_place::kTrailer);
    if (faultyNameLength(n)) {
      critical(st.ui, u"Error: Invalid format \r" + mid(text, t + 4, 33));
      st.s.scan.subtitleCount = 1;
      break;
    }
    const u16 name = tagField(text, t, tag_place::kTrailer, n);
    const size_t before = st.s.pickingList.items.size();
    if (lookUpCharacter(st, name) == 0) break;
    if (st.s.pickingList.items.size() > before) st.view.panel(8).text = name;
    cur = nxt;
    nxt = cur < len ? instr(cur + 3, text, u"DUB[") : 0;
    if (cur < len && nxt == 0) nxt = len;
  }
  if (!st.s.pickingList.items.empty()) {
    st.s.pickingList.listIndex = 0;
    st.view.panel(8).text = numberText(static_cast<double>(st.s.pickingList.items.size())) + u" characters.";
  } else {
    st.view.panel(8).text = u"No chars loaded";
  }
  st.ui.setPointer(Pointer::Default);
}

bool checkforchar(const Station& st, const u16& name) {
  const Roster& r = st.s.roster;
  for (int i = 1; i <= r.numvoces && i < kRosterCapacity; ++i)
    if (r.voces[i] == name) return true;
  return false;
}

void createchar(Station& st, const u16& name) {
  Roster& r = st.s.roster;
  if (r.numvoces + 1 >= kRosterCapacity) return;  // the last place is never used
  ++r.numvoces;
  r.voces[r.numvoces] = name;
}

void personaje_nuevo(Station& st) {
  auto answer = st.ui.inputBox(u"Enter new character", g_appTitle, u"");
  if (!answer || answer->empty()) return;
  const u16 name = *answer;
  if (checkforchar(st, name)) {
    waitSeconds(st.ui, 1);
    critical(st.ui, u"Error: Character already exists");
    return;
  }
  createchar(st, name);
  addToLists(st, name);
  st.s.pickingList.listIndex = static_cast<int>(st.s.pickingList.items.size()) - 1;
  insertar_dub(st, name);
}

void formaPerAceptar(Station& st) {
  const auto& l = st.s.pickingList;
  const u16 name = l.listIndex >= 0 && l.listIndex < static_cast<int>(l.items.size())
                       ? l.items[static_cast<size_t>(l.listIndex)]
                       : u16();
  st.s.pickingFormVisible = false;
  insertar_dub(st, name);
}

void formaPerNuevo(Station& st) {
  st.s.pickingFormVisible = false;
  personaje_nuevo(st);
}

void formaPerBorrar(Station& st) {
  auto& l = st.s.pickingList;
  if (l.listIndex < 0 || l.listIndex >= static_cast<int>(l.items.size())) return;
  const u16 name = l.items[static_cast<size_t>(l.listIndex)];
  Answer a = msgBox(st.ui, u"Are you sure you want to delete character: " + name + u"?", Buttons::OKCancel,
                    Icon::Exclamation);
  if (a != Answer::OK) return;
  l.items.erase(l.items.begin() + l.listIndex);
  l.listIndex = -1;
  --st.s.roster.numvoces;
  if (st.s.roster.numvoces < 2) st.s.pickingFormVisible = false;
}

void formaPerOption1(Station& st) {
  st.s.dub_voz_on = true;
  st.view.menu("mnu_dub_opc_voz_on").checked = true;
  st.view.menu("mnu_dub_opc_voz_off").checked = false;
}

void formaPerOption2(Station& st) {
  st.s.dub_voz_on = false;
  st.view.menu("mnu_dub_opc_voz_on").checked = false;
  st.view.menu("mnu_dub_opc_voz_off").checked = true;
}

void formaPerSalir(Station& st) { st.s.pickingFormVisible = false; }

void frmNewCharCreate(Station& st, const u16& text1) {
  if (text1.empty()) return;
  for (int i = 1; i <= st.s.roster.numvoces; ++i)
    if (checkforchar(st, text1)) critical(st.ui, u"Error: Character already exists");
  createchar(st, text1);
  addToLists(st, text1);
  st.s.rosterFormList.listIndex = static_cast<int>(st.s.rosterFormList.items.size()) - 1;
}

}  // namespace quillon
