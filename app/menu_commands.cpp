#include "app/menu_commands.h"

#include <map>
#include <string>

#include "captions/caption_timing_loop.h"
#include "captions/scc_export.h"
#include "dubbing/dialogue_list.h"
#include "dubbing/dub_marks.h"
#include "dubbing/dub_to_sub.h"
#include "dubbing/line_count.h"
#include "dubbing/roster.h"
#include "formats/line_imports.h"
#include "formats/merge.h"
#include "formats/stl_import.h"
#include "formats/text_exports.h"
#include "simulation/simulation_menus.h"
#include "subtitling/editing_commands.h"
#include "subtitling/parameters.h"
#include "subtitling/retiming.h"
#include "subtitling/statistics.h"
#include "subtitling/timing_loop.h"
#include "transport/input_pedal.h"
#include "transport/keys.h"
#include "transport/pedal.h"
#include "transport/startup.h"
#include "transport/video_commands.h"
#include "transport/video_menu.h"
#include "transport/video_open.h"

namespace quillon {

namespace {

// An option item that is its own check mark over one session flag.
MenuCommand toggle(const char* item, bool Session::*flag) {
  return [item, flag](Station& st) { flipOption(st.view, item, st.s.*flag); };
}

// mnu_delay: the operator's reaction delay, 0 to 1 second.
void mnu_delay(Station& st) {
  auto answer = st.ui.inputBox(u"Enter delay time (Max. 1 sec.)", g_appTitle, numberText(st.s.delay));
  if (!answer || answer->empty()) return;
  double d = leadingNumber(*answer);
  if (d < 0 || d > 1) d = 0.30;
  st.s.delay = d;
}

std::map<std::string, MenuCommand, std::less<>> buildCommands() {
  std::map<std::string, MenuCommand, std::less<>> m;
  auto add = [&](const char* name, MenuCommand c) { m[name] = std::move(c); };

  // File
  add("mnu_FileOpen", [](Station& st) { abrirvideo(st, u""); });
  add("mnu_FileExit", [](Station& st) { unloadMainForm(st); });

  // Video
  add("mnu_vid_open", [](Station& st) { abrirvideo(st, u""); });
  add("mnu_play", [](Station& st) {
    st.ui.setPointer(Pointer::Default);
    togglePlay(st);
  });
  add("mnu_vid_ira_hms", mnu_tex_iTC);
  add("mnu_com", mnu_com);
  add("mnu_fin", mnu_fin);
  add("mnu_iraultblo", mnu_iraultblo);
  add("mnu_5secf", mnu_5secf);
  add("mnu_10secf", mnu_10secf);
  add("mnu_20secf", mnu_20secf);
  add("mnu_5secb", mnu_5secb);
  add("mnu_10secb", mnu_10secb);
  add("mnu_20secb", mnu_20secb);
  for (int n = 1; n <= 10; ++n)
    m["mnu_iramarca" + std::to_string(n)] = [n](Station& st) { mnu_iramarca(st, n); };
  add("mnu_dir", mnu_dir);
  add("mnu_sil", toggleMute);
  add("mnu_vid_track_l", [](Station& st) { applyTrack(st, u'L'); });
  add("mnu_vid_track_r", [](Station& st) { applyTrack(st, u'R'); });
  add("mnu_vid_track_st", [](Station& st) { applyTrack(st, u'S'); });
  add("mnu_vid_slo_set", mnu_vid_slo_set);
  add("mnu_vid_slo_rate", mnu_vid_slo_rate);
  add("mnu_NTSC", [](Station& st) { setVideoStandard(st, 30); });
  add("mnu_PAL", [](Station& st) { setVideoStandard(st, 25); });
  add("mnu_CINE", [](Station& st) { setVideoStandard(st, 24); });
  add("mnu_vid_inf", mnu_vid_inf);
  add("mnu_pan", enterFullScreen);
  add("mnu_grabframe", mnu_grabframe);
  add("mnu_video_tag", tagcurrentfile);
  add("mnu_tag_in", mnu_tag_in);
  add("mnu_tag_out", mnu_tag_out);

  // Subtitling
  add("mnu_temp", mnu_temp);
  add("mnu_sub_edit", mnu_sub_edit);
  add("mnu_sub_next", mnu_sub_next);
  add("mnu_sub_prev", mnu_sub_prev);
  add("mnu_undo", mnu_undo);
  add("mnu_sub_merge", mnu_sub_merge);
  add("mnu_sub_deltiming", mnu_sub_deltiming);
  add("mnu_sub_changeinterleave", mnu_sub_changeinterleave);
  add("mnu_sim_d", mnu_sim_d);
  add("mnu_sim_s", mnu_sim_s);
  add("mnu_sim_q", mnu_sim_q);
  add("mnu_sim_con", mnu_sim_con);
  add("mnu_sim_follow", mnu_sim_follow);
  add("mnu_sim_est", mnu_sim_est);
  add("mnu_sub_out", mnu_sub_out);
  add("mnu_sub_sami", [](Station& st) { mnuSubSami(st); });
  add("mnu_sub_ssa", [](Station& st) { mnuSubSsa(st); });
  add("mnu_sub_sbv", [](Station& st) { mnuSubSbv(st); });
  add("mnu_sub_qt", [](Station& st) { mnuSubQt(st); });
  add("mnu_sub_unitext", [](Station& st) { mnuSubUnitext(st); });
  add("mnu_sub_imp_EBU", [](Station& st) { mnuSubImpEBU(st); });
  add("mnu_sub_imp_SUBL", [](Station& st) { mnuSubImpSUBL(st); });
  add("mnu_sub_imp_850", [](Station& st) { mnuSubImp850(st); });
  add("mnu_sub_imp_SRT", [](Station& st) { mnuSubImpSRT(st); });
  add("mnu_sub_imp_SUB", [](Station& st) { mnuSubImpSUB(st); });
  add("mnu_sub_impunitxt", [](Station& st) { mnuSubImpunitxt(st); });
  add("mnu_sub_mge_load", [](Station& st) { cargarTiming(st); });
  add("mnu_sub_mge_off", mnuSubMgeOff);
  add("mnu_sub_mge_mge", [](Station& st) { mergeTiming(st); });
  add("mnu_tex_off", mnu_tex_off);
  add("mnu_tex_PALtoNTSC", mnu_tex_PALtoNTSC);
  add("mnu_tex_NTSCtoPAL", mnu_tex_NTSCtoPAL);
  add("mnu_tex_iTC", mnu_tex_iTC);
  add("mnu_situ_off", mnu_situ_off);
  add("mnu_tex_par_vel", mnu_tex_par_vel);
  add("mnu_sub_par_min", mnu_sub_par_min);
  add("mnu_sub_par_min2", mnu_sub_par_min2);
  add("mnu_sub_par_max", mnu_sub_par_max);
  add("mnu_sub_par_ilv", mnu_sub_par_ilv);
  add("mnu_sub_par_fast", mnu_sub_par_fast);
  add("mnu_sub_par_slow", mnu_sub_par_slow);
  add("mnu_sub_par_cxl", mnu_sub_par_cxl);
  add("mnu_sub_par_seq", mnu_sub_par_seq);
  add("mnu_tex_opc_int", mnu_tex_opc_int);
  add("mnu_tex_opc_asis", mnu_tex_opc_asis);
  add("mnu_tex_opc_less", mnu_tex_opc_less);
  add("mnu_sub_opc_chk", mnu_sub_opc_chk);
  add("mnu_sub_opc_dis", mnu_sub_opc_dis);
  add("mnu_sub_opc_col", mnu_sub_opc_col);
  add("mnu_sub_opc_seq", mnu_sub_opc_seq);
  add("mnu_sub_opc_mtx", mnu_sub_opc_mtx);
  add("mnu_sub_opc_sim", mnu_sub_opc_sim);

  // Dubbing
  add("mnu_dub_blo", mnu_dub_blo);
  add("mnu_dub_car", scanCharacters);
  add("mnu_dub_out", mnu_dub_out);
  add("mnu_DUB_SUB", [](Station& st) { mnu_DUB_SUB(st); });
  add("mnu_dub_opc_voz_on", formaPerOption1);
  add("mnu_dub_opc_voz_off", formaPerOption2);
  add("mnu_dub_opc_inonly", toggle("mnu_dub_opc_inonly", &Session::cueInOnly));
  add("mnu_dub_opc_switch", toggle("mnu_dub_opc_switch", &Session::switchToWordProcessor));
  add("mnu_dub_opc_chr", toggle("mnu_dub_opc_chr", &Session::characterWindow));
  add("mnu_dub_opc_dia", toggle("mnu_dub_opc_dia", &Session::dub_dialogos));
  add("mnu_dub_opc_sim", mnu_dub_opc_sim);

  // Closed captions
  add("mnu_cc_temp", mnu_cc_temp);
  add("mnu_cc_sim_d", mnu_cc_sim_d);
  add("mnu_cc_sim_l", mnu_cc_sim_l);
  add("mnu_cc_sim_q", mnu_cc_sim_q);
  add("mnu_cc_scc", [](Station& st) { mnu_cc_scc(st); });

  // Tools
  add("mnu_delay", mnu_delay);
  add("mnu_opc_tcclip", mnu_opc_tcclip);
  add("mnu_opc_hideTC", mnu_opc_hideTC);
  add("mnu_herr_lin", [](Station& st) { mnu_herr_lin(st); });
  add("mnu_herr_opt_ACTRA", toggle("mnu_herr_opt_ACTRA", &Session::actraGuidelines));
  for (int n = 1; n <= 4; ++n)
    m["mnu_footpedalcom" + std::to_string(n)] = [n](Station& st) { mnu_footpedalcom(st, n); };
  add("mnu_footpedaljump", mnu_footpedaljump);
  for (int n = 1; n <= kMaxListedPedals; ++n)
    m["mnu_footpedalusb" + std::to_string(n)] = [n](Station& st) { mnu_footpedalusb(st, n); };
  add("mnu_footpedalmap", mnu_footpedalmap);
  return m;
}

std::map<std::string, MenuCommand, std::less<>>& commands() {
  static auto table = buildCommands();
  return table;
}

}  // namespace

MenuCommand menuCommand(std::string_view item) {
  auto it = commands().find(item);
  return it == commands().end() ? MenuCommand{} : it->second;
}

void setMenuCommand(std::string_view item, MenuCommand command) { commands()[std::string(item)] = std::move(command); }

bool clickMenuItem(Station& st, std::string_view item) {
  MenuCommand c = menuCommand(item);
  if (!c) return false;
  c(st);
  return true;
}

}  // namespace quillon
