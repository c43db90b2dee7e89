// The session: every field the main window owns, as plain data under the
// names the station's rules use. Nothing here talks to a device or a window.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "core/pedal_input.h"
#include "core/station_options.h"
#include "core/text.h"

namespace quillon {

inline constexpr int kScanCapacity = 19999;
inline constexpr int kRosterCapacity = 999;

// One per subtitle beside the scan arrays, for the rendering hand-over.
// ScanTable::clear resets it field by field: a new field goes there too.
struct SubtitleRecord {
  int number = 0;
  double cueInSeconds = 0, cueOutSeconds = 0;
  u16 cueInText, cueOutText;
  char16_t position = u'0', alignment = u' ', style = u'N';
  u16 line1, line2;
  bool dialogue = false;  // both lines begin with '-'
  u16 imageFileName;
};

// Parallel arrays indexed from 1 to 19999; index 0 is unused.
struct ScanTable {
  ScanTable();
  std::vector<double> cueIn, cueOut;
  std::vector<u16> text;
  std::vector<char16_t> posDigit, alignChar, styleChar;
  std::vector<u16> noteText;
  std::vector<bool> isSubtitle, voiceOn;
  std::vector<double> voiceIndex;
  // Document offset of each entry's tag, so that it can be rewritten where it stands.
  std::vector<long> tagAt;
  std::vector<SubtitleRecord> records;
  // Four text rows per caption, [index][0..3].
  std::vector<std::array<u16, 4>> captionRows;
  int subtitleCount = 0;  // entries in use, 0 to 19999

  void clear();  // every entry back to empty, count 0
  void clearCaptionRows();
  int count() const { return subtitleCount; }
};

// Character names of dubbing work, `voces[1..999]`.
struct Roster {
  Roster() : voces(kRosterCapacity + 1) {}
  std::vector<u16> voces;
  int16_t numvoces = 0;
  int16_t vozactual = 0, vozanterior = 0;
  void clear() {
    for (auto& v : voces) v.clear();
    numvoces = 0;
  }
};

struct Session {
  // Timecode
  int16_t g_fps = 0;
  double framePeriod = 0;
  double videoDuration = 0;
  double tcStart = 0, tcEnd = 0;
  double g_dblPosActual = 0;
  u16 TCInitial, TCFinal;
  long TCBase = 0;
  double noframes = 0;
  double delay = 0.30;

  // Settings line and the options it carries
  std::string g_settingsLine;
  // The choices kept beside it in `options.conf`.
  StationOptions options;
  bool muteOn = false;
  char16_t audioTrack = u'R';
  bool dub_voz_on = true;
  bool dub_dialogos = false;
  bool actraGuidelines = false;
  bool cueInOnly = false;
  bool switchToWordProcessor = true;
  bool characterWindow = true;
  bool readingSpeedCheck = false;
  bool colourFeedback = false;
  bool sequentialNumbering = false;
  bool minimiseSubtitleWindow = false;
  bool jumpToNextBlock = false;
  bool inSituOffset = true;
  bool timecodeInClipboard = false;
  bool followSimulation = true;
  double footpedaljump = 5;
  int16_t commPort = 1;
  double slowRate = 0.25;

  // Subtitling parameters
  double readingSpeed = 14;
  double minOnAir1 = 1.00;
  double minOnAir2 = 0;
  double maxOnAir = 6.00;
  int16_t minInterleave = 0;
  double fastThreshold = 25;
  double slowThreshold = 0;
  int16_t maxCharsRow = 32;
  bool checksDisabled = false;  // `mnu_sub_opc_dis`
  double minCaptionOnAir = 1.00;
  double maxCaptionOnAir = 6.00;

  // Session variables set by `iniciarvariables`
  int16_t changeSub = 0;
  u16 videoFile;
  bool g_fVideoRun = false;
  bool g_docAttached = false;  // `g_doc` holds the word processor
  double totalbloq2lineas = 0, totalbloq1linea = 0;
  bool g_fsim = false, g_fspot = false, g_fedit = false, saveedittiming = false, editingcueout = false;
  double TCSpacebar = 0;
  int16_t ultimaposenpantalla = 0, ultimaposenpantallacc = 0;
  u16 ultimaposhcc;
  bool miItal = false;
  u16 miItalStyle = u"N";  // style letter of the coming subtitle
  double ultimodelay = 0;
  double TCF = 0;
  u16 g_stlFileName, g_DVDMFileName, g_CPCFileName, g_SUBFileName, g_SAMIFileName, g_QTFileName,
      g_SSAFileName, g_SBVFileName, g_ULTFileName, g_PACFileName;
  int16_t fullscreenmode = 0;
  int16_t lastfootpedalevent = 0;
  double topventana = 0, leftventana = 0;
  bool outnextin = false;
  bool cc = true;
  bool tctag = true;
  double upperlimit = 0, lowerlimit = 0;
  int16_t nextSeqNumber = 1;
  bool keyDigitsForward = false;
  bool wysiwygCapable = false;
  int timer1Interval = 33, timer2Interval = 500;  // milliseconds
  double sessionStartTime = 0;  // time of day at start-up
  long characterCount = 0;

  // Tables filled by the scanners
  ScanTable scan;
  Roster roster;

  // ---- Subtitling workflow ------------------------------------------------
  // Running total of the last subtitle scan beside totalbloq1linea and
  // totalbloq2lineas: characters of the kept subtitles, CR between lines included.
  double totalChars = 0;
  // Tags written by the current timing run, from 1, so `mnu_undo` can take
  // them back last first.
  std::vector<u16> tagUndo = std::vector<u16>(kScanCapacity + 1);
  int tagUndoCount = 0;
  // Font size of both lines of the subtitle overlay, set with maxCharsRow.
  int16_t overlayFontSize = 11;

  // ---- Dubbing (dubbing/) ----
  // The marks of the block being cued and the lists of the two
  // character forms. `pickingList` is `FormaPer.List1` (the picking form),
  // `rosterFormList` is `FrmNewChar.List1`; both gain every name the roster
  // gains, but deleting from the picking form leaves `roster.voces` alone.
  double blockStart = 0, blockIn = 0, blockOut = 0;
  struct CharacterList {
    std::vector<u16> items;
    int listIndex = -1;  // selected item, -1 for none
  };
  CharacterList pickingList, rosterFormList;
  bool pickingFormVisible = false;

  // ---- Transport (transport/) ----
  // Set by a frame step so that the slider's own move that follows it does
  // not seek to whole seconds.
  bool frameStepFlag = false;
  // Position markers 1 to 12 in player seconds; 0 is unset. Index 0 unused.
  std::array<double, 13> markers{};
  // The last dubbing block marked with the space bar, timecode seconds;
  // `mnu_iraultblo` and Ctrl+Space go back to its start.
  double lastCueIn = 0, lastCueOut = 0;
  // Names prefilled for the QC transcoder dialog by the video opening.
  u16 qcInputName, qcOutputName;
  // The USB pedals the port menu lists, in its order, and when the input
  // devices are next looked at for pedals come and gone (time of day).
  std::vector<PedalDeviceInfo> pedalDevices;
  double pedalWatchDue = 0;

  // ---- Simulation (simulation/) ----
  // `jumpNextBlock`, `followInDocument` and `readingSpeedColor` are the
  // settings jumpToNextBlock, followSimulation and colourFeedback above.
  bool wysiwygOn = false;  // `mnu_WYS`; acts only when wysiwygCapable
  double simEndPosition = 0;  // where the closing run-out of a simulation ends
  // Per-frame subtitle table from frame 0.
  struct FrameEntry {
    long subtitle = -1;  // the subtitle record shown on the frame, -1 for none
    long frame = 0;
  };
  std::vector<FrameEntry> frameTable;
  long currentFrame = 0, currentFrameSubtitle = -1, loadedFrameSubtitle = -1;
  bool fontChangePending = false;  // set by the font dialog: hand over once more

  // ---- Subtitle interchange formats (formats/) ----
  // Where the shared file dialog opens next: the folder of the last choice.
  std::string dialogInitDir;
  // Timing tables of the file merge, kept from one load to the next. The
  // plain tables are sized by the first load; cards are keyed by
  // letter index * 20000 + subtitle number.
  std::vector<uint8_t> timingPresent, timingHasCard;
  std::vector<double> timingIn, timingOut;
  std::map<int, std::pair<double, double>> cardTimes;
  int16_t lastTimingNumber = 0;
};

}  // namespace quillon
