#include "core/menu_table.h"

#include <string_view>
#include <unordered_map>

namespace quillon {

namespace {

// No item carries an accelerator: every transport key belongs to the key
// handlers, and a menu shortcut would swallow the key before they see it.
constexpr MenuEntry cmd(std::string_view name, std::string_view parent,
                        std::u16string_view caption, bool separatorBefore = false) {
  return MenuEntry{name, parent, caption, {}, separatorBefore, false};
}

constexpr MenuEntry check(std::string_view name, std::string_view parent,
                          std::u16string_view caption, bool separatorBefore = false) {
  return MenuEntry{name, parent, caption, {}, separatorBefore, true};
}

constexpr bool kSep = true;

std::vector<MenuEntry> buildTable() {
  return {
      // Menu bar. Timing and simulation disable these seven as one set.
      cmd("mnu_file", "", u"&File"),
      cmd("mnu_ctlVideo", "", u"&Video"),
      cmd("mnu_sub", "", u"&Subtitling"),
      cmd("mnu_dub", "", u"&Dubbing"),
      cmd("mnu_cc", "", u"&Closed Captions"),
      cmd("mnu_herr", "", u"&Tools"),
      cmd("mnu_hlp", "", u"&Help"),

      // File
      cmd("mnu_FileOpen", "mnu_file", u"&Open video..."),
      cmd("mnu_FileExit", "mnu_file", u"E&xit", kSep),

      // Video
      cmd("mnu_vid_open", "mnu_ctlVideo", u"Open &video..."),
      cmd("mnu_play", "mnu_ctlVideo", u"&Play", kSep),  // toggles to "Sto&p" while running
      cmd("mnu_vid_ira", "mnu_ctlVideo", u"Go &to"),
      cmd("mnu_vid_ira_hms", "mnu_vid_ira", u"hh:mm:ss:ff..."),
      cmd("mnu_com", "mnu_vid_ira", u"&Top"),
      cmd("mnu_fin", "mnu_vid_ira", u"&End"),
      cmd("mnu_iraultblo", "mnu_vid_ira", u"beginning of &last dubbing block"),
      cmd("mnu_5secf", "mnu_vid_ira", u"5 seconds &forward", kSep),
      cmd("mnu_10secf", "mnu_vid_ira", u"10 seconds forw&ard"),
      cmd("mnu_20secf", "mnu_vid_ira", u"20 seconds forwa&rd"),
      cmd("mnu_5secb", "mnu_vid_ira", u"5 seconds &back"),
      cmd("mnu_10secb", "mnu_vid_ira", u"10 seconds ba&ck"),
      cmd("mnu_20secb", "mnu_vid_ira", u"20 seconds bac&k"),
      // Marker captions are rewritten with the position once a marker is set.
      cmd("mnu_iramarca1", "mnu_vid_ira", u"marker &1", kSep),
      cmd("mnu_iramarca2", "mnu_vid_ira", u"marker &2"),
      cmd("mnu_iramarca3", "mnu_vid_ira", u"marker &3"),
      cmd("mnu_iramarca4", "mnu_vid_ira", u"marker &4"),
      cmd("mnu_iramarca5", "mnu_vid_ira", u"marker &5"),
      cmd("mnu_iramarca6", "mnu_vid_ira", u"marker &6"),
      cmd("mnu_iramarca7", "mnu_vid_ira", u"marker &7"),
      cmd("mnu_iramarca8", "mnu_vid_ira", u"marker &8"),
      cmd("mnu_iramarca9", "mnu_vid_ira", u"marker &9"),
      cmd("mnu_iramarca10", "mnu_vid_ira", u"marker 1&0"),
      cmd("mnu_dir", "mnu_ctlVideo", u"Keyboard di&gits ->"),
      check("mnu_sil", "mnu_ctlVideo", u"&Mute", kSep),
      cmd("mnu_vid_track", "mnu_ctlVideo", u"Audio t&rack"),
      check("mnu_vid_track_l", "mnu_vid_track", u"&Left"),
      check("mnu_vid_track_r", "mnu_vid_track", u"&Right"),
      check("mnu_vid_track_st", "mnu_vid_track", u"&Stereo"),
      // The submenu itself carries the check mark that shows slow motion is on.
      check("mnu_vid_vel_slo", "mnu_ctlVideo", u"S&low motion"),
      cmd("mnu_vid_slo_set", "mnu_vid_vel_slo", u"&Set"),
      cmd("mnu_vid_slo_rate", "mnu_vid_vel_slo", u"&Rate..."),
      cmd("mnu_vid_stand", "mnu_ctlVideo", u"Video &Standard"),
      check("mnu_NTSC", "mnu_vid_stand", u"&NTSC"),
      check("mnu_PAL", "mnu_vid_stand", u"&PAL"),
      check("mnu_CINE", "mnu_vid_stand", u"&CINE"),
      cmd("mnu_vid_inf", "mnu_ctlVideo", u"Inf&o", kSep),
      cmd("mnu_pan", "mnu_ctlVideo", u"&Full Screen..."),
      cmd("mnu_grabframe", "mnu_ctlVideo", u"Copy bitmap in Clipboard"),
      cmd("mnu_video_tag", "mnu_ctlVideo", u"T&ag video file...", kSep),
      cmd("mnu_vid_tag_int", "mnu_ctlVideo", u"&Interactive tagging"),
      cmd("mnu_tag_in", "mnu_vid_tag_int", u"Burnt-in timecode, &in point..."),
      cmd("mnu_tag_out", "mnu_vid_tag_int", u"Burnt-in timecode, &out point..."),

      // Subtitling
      cmd("mnu_temp", "mnu_sub", u"&Timing"),
      cmd("mnu_sub_edit", "mnu_sub", u"&Edit timing"),
      cmd("mnu_sub_next", "mnu_sub", u"&Next subtitle"),
      cmd("mnu_sub_prev", "mnu_sub", u"Pre&vious subtitle"),
      cmd("mnu_undo", "mnu_sub", u"&Undo last timing"),
      cmd("mnu_sub_merge", "mnu_sub", u"&Merge subtitles", kSep),
      cmd("mnu_sub_deltiming", "mnu_sub", u"&Delete timing"),
      cmd("mnu_sub_changeinterleave", "mnu_sub", u"&Change interleave"),
      cmd("mnu_sim", "mnu_sub", u"&Simulate", kSep),
      cmd("mnu_sim_d", "mnu_sim", u"&All"),
      cmd("mnu_sim_s", "mnu_sim", u"Text se&lection"),
      cmd("mnu_sim_q", "mnu_sim", u"From current &timecode"),
      check("mnu_sim_con", "mnu_sim", u"&Jump to next block", kSep),
      check("mnu_sim_follow", "mnu_sim", u"&Follow simulation in Word document"),
      // Rendered simulation stays disabled and its settings hidden in every
      // session; the entries exist so the view state can say so.
      check("mnu_WYS", "mnu_sim", u"WYSIWYG simulation", kSep),
      cmd("mnu_WYS_font", "mnu_sim", u"Fo&nt..."),
      cmd("mnu_WYS_hpos", "mnu_sim", u"&Horizontal position..."),
      cmd("mnu_WYS_vpos", "mnu_sim", u"&Vertical position..."),
      cmd("mnu_sim_est", "mnu_sub", u"St&atistics..."),
      cmd("mnu_sub_out", "mnu_sub", u"Su&btitle list"),
      cmd("mnu_sub_exp", "mnu_sub", u"E&xport", kSep),
      cmd("mnu_sub_ebu", "mnu_sub_exp", u"to &EBU format (.stl)..."),
      cmd("mnu_sub_dvdm", "mnu_sub_exp", u"to D&VD Maestro format (.txt)..."),
      cmd("mnu_sub_cpc", "mnu_sub_exp", u"to &CPC format (.cpc)..."),
      cmd("mnu_sub_sub", "mnu_sub_exp", u"to .SU&B format (.sub)..."),
      cmd("mnu_sub_sami", "mnu_sub_exp", u"to &SAMI format (.smi)..."),
      cmd("mnu_sub_ssa", "mnu_sub_exp", u"to SS&A format (.ssa)..."),
      cmd("mnu_sub_sbv", "mnu_sub_exp", u"to &Youtube format (.sbv)"),
      cmd("mnu_sub_qt", "mnu_sub_exp", u"to &QTText (.txt)...", kSep),
      cmd("mnu_sub_unitext", "mnu_sub_exp", u"to &Unicode (.txt)..."),
      cmd("mnu_sub_imp", "mnu_sub", u"&Import"),
      cmd("mnu_sub_imp_EBU", "mnu_sub_imp", u"from &EBU format (.stl)..."),
      cmd("mnu_sub_imp_SUBL", "mnu_sub_imp", u"from S&UB {}..."),
      cmd("mnu_sub_imp_850", "mnu_sub_imp", u"from &DOS 850 format..."),
      cmd("mnu_sub_imp_SRT", "mnu_sub_imp", u"from .SR&T format..."),
      cmd("mnu_sub_imp_SUB", "mnu_sub_imp", u"from .&SUB format..."),
      cmd("mnu_sub_impunitxt", "mnu_sub_imp", u"from &Unicode .txt", kSep),
      cmd("mnu_sub_mge", "mnu_sub", u"&File merge..."),
      cmd("mnu_sub_mge_load", "mnu_sub_mge", u"&Load timing file"),
      cmd("mnu_sub_mge_off", "mnu_sub_mge", u"&Offset timing file..."),
      cmd("mnu_sub_mge_mge", "mnu_sub_mge", u"&Merge timing and text files"),
      cmd("mnu_tex_off", "mnu_sub", u"Offset timin&g...", kSep),
      cmd("mnu_tex_PALtoNTSC", "mnu_sub", u"&PAL to NTSC"),
      cmd("mnu_tex_NTSCtoPAL", "mnu_sub", u"NTSC to PA&L"),
      cmd("mnu_tex_iTC", "mnu_sub", u"&Jump to timecode..."),
      check("mnu_situ_off", "mnu_sub", u"Re&write tags in place"),
      cmd("mnu_tex_par", "mnu_sub", u"Pa&rameters", kSep),
      cmd("mnu_tex_par_vel", "mnu_tex_par", u"&Reading speed..."),
      cmd("mnu_sub_par_read", "mnu_tex_par", u"Reading speed &table..."),
      cmd("mnu_sub_par_min", "mnu_tex_par", u"Minimum duration, &1 line...", kSep),
      cmd("mnu_sub_par_min2", "mnu_tex_par", u"Minimum duration, &2 lines..."),
      cmd("mnu_sub_par_max", "mnu_tex_par", u"Ma&ximum duration..."),
      cmd("mnu_sub_par_ilv", "mnu_tex_par", u"Minimum &interleave..."),
      cmd("mnu_sub_par_fast", "mnu_tex_par", u"&Fast threshold...", kSep),
      cmd("mnu_sub_par_slow", "mnu_tex_par", u"&Slow threshold..."),
      cmd("mnu_sub_par_cxl", "mnu_tex_par", u"Max &characters per row...", kSep),
      cmd("mnu_sub_par_seq", "mnu_tex_par", u"&Next sequential number..."),
      cmd("mnu_sub_opc", "mnu_sub", u"&Options"),
      // The three timing modes are exclusive; exactly one is checked.
      check("mnu_tex_opc_int", "mnu_sub_opc", u"&Interactive timing"),
      check("mnu_tex_opc_asis", "mnu_sub_opc", u"&Assisted timing"),
      check("mnu_tex_opc_less", "mnu_sub_opc", u"&Text-less timing"),
      check("mnu_sub_opc_chk", "mnu_sub_opc", u"&Reading speed check", kSep),
      check("mnu_sub_opc_dis", "mnu_sub_opc", u"&Disable rule checks"),
      check("mnu_sub_opc_col", "mnu_sub_opc", u"Reading speed color feed&back"),
      check("mnu_sub_opc_seq", "mnu_sub_opc", u"&Sequential numbering", kSep),
      check("mnu_sub_opc_mtx", "mnu_sub_opc", u"&Minimize subtitle window"),
      check("mnu_sub_opc_sim", "mnu_sub_opc", u"Simulation follows s&ubtitles", kSep),

      // Dubbing
      cmd("mnu_dub_blo", "mnu_dub", u"Cue-in"),  // shows what the next press does
      cmd("mnu_dub_car", "mnu_dub", u"&Load characters", kSep),
      cmd("mnu_dub_out", "mnu_dub", u"&Dialogue list"),
      cmd("mnu_DUB_SUB", "mnu_dub", u"&Convert DUB to SUB"),
      cmd("mnu_dub_opc", "mnu_dub", u"&Options", kSep),
      check("mnu_dub_opc_voz_on", "mnu_dub_opc", u"Voice &on"),
      check("mnu_dub_opc_voz_off", "mnu_dub_opc", u"Voice o&ff"),
      check("mnu_dub_opc_inonly", "mnu_dub_opc", u"Cue-&in only", kSep),
      check("mnu_dub_opc_switch", "mnu_dub_opc", u"&Switch to word processor"),
      check("mnu_dub_opc_chr", "mnu_dub_opc", u"&Character window"),
      check("mnu_dub_opc_dia", "mnu_dub_opc", u"&Dialogue interaction"),
      check("mnu_dub_opc_sim", "mnu_dub_opc", u"Simulation follows dubbin&g", kSep),

      // Closed captions
      cmd("mnu_cc_temp", "mnu_cc", u"&Timing"),
      cmd("mnu_cc_sim", "mnu_cc", u"&Simulate"),
      cmd("mnu_cc_sim_d", "mnu_cc_sim", u"&All"),
      cmd("mnu_cc_sim_l", "mnu_cc_sim", u"Text se&lection"),
      cmd("mnu_cc_sim_q", "mnu_cc_sim", u"From current &timecode"),
      cmd("mnu_cc_conv", "mnu_cc", u"&Convert", kSep),
      cmd("mnu_cc_scc", "mnu_cc_conv", u"to .&scc DVD format..."),
      cmd("mnu_cc_ult", "mnu_cc_conv", u"to .&ULT format..."),

      // Tools
      cmd("mnu_delay", "mnu_herr", u"&Delay...."),
      check("mnu_opc_tcclip", "mnu_herr", u"Timecode in &clipboard"),
      cmd("mnu_opc_hideTC", "mnu_herr", u"&Hide timecodes"),
      check("mnu_herr_writer", "mnu_herr", u"Script in LibreOffice &Writer", kSep),
      cmd("mnu_herr_lin", "mnu_herr", u"&Line count", kSep),
      check("mnu_herr_opt_ACTRA", "mnu_herr", u"&ACTRA guidelines"),
      cmd("mnu_footpedal", "mnu_herr", u"&Foot pedal", kSep),
      cmd("mnu_footpedalport", "mnu_footpedal", u"&Port"),
      check("mnu_footpedalcom1", "mnu_footpedalport", u"COM&1"),
      check("mnu_footpedalcom2", "mnu_footpedalport", u"COM&2"),
      check("mnu_footpedalcom3", "mnu_footpedalport", u"COM&3"),
      check("mnu_footpedalcom4", "mnu_footpedalport", u"COM&4"),
      cmd("mnu_footpedaljump", "mnu_footpedal", u"&Seconds..."),
      cmd("mnu_footpedalmap", "mnu_footpedal", u"USB pedal &order..."),
  };
}

}  // namespace

const std::vector<MenuEntry>& menuTable() {
  static const std::vector<MenuEntry> table = buildTable();
  return table;
}

const MenuEntry* findMenuEntry(std::string_view name) {
  static const auto index = [] {
    std::unordered_map<std::string_view, const MenuEntry*> m;
    for (const auto& e : menuTable()) m.emplace(e.name, &e);
    return m;
  }();
  auto it = index.find(name);
  return it == index.end() ? nullptr : it->second;
}

}  // namespace quillon
