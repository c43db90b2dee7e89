// The prologue every list export shares: scan the subtitles (the selection
// first, the whole script when that fails), refuse an empty list, ask for the
// file name and whether an existing file may be replaced.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "core/form_model.h"
#include "core/station.h"

namespace quillon {

enum class ListExport { EBU, DVDMaestro, CPC, SUB, SAMI, SBV, SSA };

struct ListExportWords {
  u16 dialogTitle;
  u16 questionTitle;
  u16 filter;
  u16 extension;  // of the suggested name, with its dot
};

const ListExportWords& listExportWords(ListExport which);

// Steps 1 and 2: false after "Error: Invalid subtitle list." or when a rule
// check stopped the scan.
bool scanForExport(Station& st);

// The whole frame. The chosen file name (UTF-8 path), or nullopt when the
// export stops here, silently or after its message.
std::optional<std::string> exportFrame(Station& st, ListExport which);

// A list export's menu item up to its settings form: the frame, then under
// the busy pointer the form shown (loaded at its first show) and ready to
// run, `fill` run, and the bar one step longer than the entries. False when
// the frame stopped.
bool openExportForm(Station& st, ListExport which, FormModel& form, const std::function<void()>& fill = {});

// The script document's name less its last four characters.
u16 documentBaseName(Station& st);

// An entry of the script document's CustomDocumentProperties, and a
// BuiltinDocumentProperties entry by index; nullopt where Word would raise
// an error. The pending error is left clear.
std::optional<u16> documentProperty(Station& st, const u16& name);
std::optional<u16> builtinDocumentProperty(Station& st, int index);

// Case-insensitive test of a file name for an extension text (".stl").
bool nameContains(const u16& name, u16v what);
// A subtitle's text less its two closing characters.
u16 subtitleBody(const u16& text);
// `SEGaTC` with a point before the frames: "HH:MM:SS.FF".
u16 dottedTimecode(double seconds, int fps);

// What the station writes as plain text where a format names no encoding.
enum class TextEncoding { Windows1252, Utf8 };
std::string encodeText(u16v text, TextEncoding enc);
// Reads UTF-8 when the bytes are valid UTF-8 or carry its mark, otherwise
// Windows-1252.
u16 decodeTextFile(std::string_view bytes);

// Script text through Windows-1252 and on to code page 850 (`ANSItoASCII`).
std::string ansiToAscii(u16v text);
// Script text as Windows-1252 bytes, the form a text written unconverted takes.
std::string ansiBytes(u16v text);

}  // namespace quillon
