// The WYSIWYG side of a subtitle simulation: the per-frame subtitle table and
// the Timer1 tick that hands the subtitle of the current frame to the
// player's overlay. All of it stands behind `wysiwygCapable`, which nothing
// sets, so a session never reaches it; it is kept whole for the day a player
// can draw subtitle images.
#pragma once

#include <string>

#include "core/station.h"

namespace quillon {

// What the player's subtitle overlay and the frame generator offer.
class WysiwygRenderer {
 public:
  virtual ~WysiwygRenderer() = default;
  // Font setup, then one image per subtitle record for the overlay calls.
  virtual void setupFont(Station& st) = 0;
  virtual void generateFrames(Station& st) = 0;
  // `ChangeSubtitleCall`: lines as single-byte (Windows-1252) text, x
  // rounded to whole pixels, justification 0 centre, 1 left, 2 right.
  struct Subtitle {
    std::string line1, line2;
    long x = 0;
    double y1 = 0, y2 = 0;
    bool italic1 = false, italic2 = false;
    int justification = 0;
  };
  virtual void changeSubtitle(const Subtitle& sub) = 0;
  virtual void showSubtitle(int on) = 0;  // `ShowSubtitle(0 | 1)`
  virtual double videoWidth() = 0;
  // Tops of a record's two lines in the picture.
  virtual double lineTop(const SubtitleRecord& r, int line) = 0;
  // Side margins in 720ths of the video's width.
  double leftMargin = 110, rightMargin = 110;
};

// Every frame from 0 to noframes - 1: no subtitle, and its own number.
void cleanSubtitlesArray(Session& s);
// Marks each frame with the subtitle record showing on it, from the
// records' timecode texts relative to the video's first frame (TCBase).
void fillSubtitlesArray(Session& s);
// One Timer1 tick of the WYSIWYG simulation; does nothing unless
// wysiwygCapable, wysiwygOn and g_fsim all hold.
void wysiwygTick(Station& st, WysiwygRenderer& renderer);

}  // namespace quillon
