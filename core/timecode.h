// Converters between seconds, timecode text and frames.
//
// The arithmetic is nominal: a second at 30 fps is always 30 frames. The only
// drop-frame concession is the label repair inside SEGaTC.
#pragma once

#include <cstdint>

#include "core/text.h"

namespace quillon {

class UserInterface;
struct Session;
struct ViewState;

// "HH:MM:SS:FF" to seconds; -1 after the box "Error in time code format: [..]".
double TCaSEG(u16v text, int fps, UserInterface& ui);
// The same test and sum without a box: -1 when the text is refused.
double tcToSeconds(u16v text, int fps);
// "H:MM:SS.mmm" to seconds; -1 after "Error in time code format SSA: [..]".
double TCAaSEG(u16v text, UserInterface& ui);
double tcaToSeconds(u16v text);

u16 SEGaTC(double seconds, int fps);        // "HH:MM:SS:FF", with the 30-fps label repair
u16 SEGaTCback09(double seconds, int fps);  // the same without the 30-fps repair
u16 SEGaTCA(double seconds);                // "H:MM:SS:hh", hundredths
u16 SEGaTCV(double seconds);                // "H:MM:SS.mmm", thousandths (":00" on whole seconds)
u16 SEGaTC8(double seconds, int fps);       // "HHMMSSFF"

double SEGaFRAMES(double seconds, int fps);
double FRAMESaSEG(int16_t frames, int fps);
// Frame index with hour and minute weights fixed at 25 fps; -1 when refused.
long TCaFRAMES(u16v text, int fps);

int16_t minimo(int16_t a, int16_t b);
int16_t maximo(int16_t a, int16_t b);

// The player clock mapped onto the video's own timecode window, and back.
double transformadaTCactual(const Session& s);
double transformadainversa(const Session& s, double t);
// Reads the 16-digit window string (start HHMMSSFF, end HHMMSSFF) and
// refreshes LabCom, LabDur and LabTimecode.
void setVideoTimecodeWindow(Session& s, ViewState& view, u16v window);

}  // namespace quillon
