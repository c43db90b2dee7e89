// The settings forms of the exports as plain models: named controls with
// labels, defaults, input limits and combo lists, the progress bar, and the
// OK/Cancel button with the run it starts and stops. A window renders them;
// the command line sets their controls by name; the generators read them.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "core/atomic_file.h"
#include "core/text.h"

namespace quillon {

struct FormControl {
  std::string name;      // "TextOPT", "ComboLC", "Text_vpos3"
  u16 label;
  u16 defaultText;
  int maxLength = 0;     // characters the operator may type; 0 for no limit
  std::vector<u16> list; // combo entries; empty for a text box
  bool multiLine = false;
  bool listOnly = false;  // a combo that takes only its list's entries
  u16 text;
};

class FormModel {
 public:
  u16 windowTitle;
  std::vector<FormControl> controls;

  // `CommandProximo`, the progress bar and the window's visibility.
  u16 commandCaption = u"OK";
  bool commandIsDefault = true;
  int progressMax = 0;
  int progressValue = 0;
  bool visible = false;
  bool loaded = false;
  // Set by Cancel; the generator looks at it once a row and stops. It is
  // `cancelarSTL` of `FormaSTL`, `cancelarDVDM` of `FormDVDMaestro`,
  // `cancelarCPC` of `FormCPC` and `cancelarSUB` of the .SUB form.
  bool cancelRequested = false;
  // Told each time the generator moves the progress bar, so that a window
  // can show it and let the operator press `CommandProximo` to stop a long run.
  std::function<void()> progressMoved;
  void setProgress(int value) {
    progressValue = value;
    if (progressMoved) progressMoved();
  }

  FormControl* find(std::string_view name);
  const FormControl* find(std::string_view name) const;
  // The control's text; throws std::out_of_range for a name the form lacks.
  u16& operator[](std::string_view name);
  const u16& operator[](std::string_view name) const;

  // As the operator types it: cut at the input limit. False for a name the
  // form lacks.
  bool setByOperator(std::string_view name, const u16& value);
  // Every control back to its default.
  void resetControls();

  // Show: a form not yet loaded loads first (controls at their defaults).
  // Returns true when this show loaded it.
  bool show();
  void hide() { visible = false; }

  // Ready for a run: the button reads "OK" and is the default, the bar is
  // empty and the cancel flag is clear, so that a Cancel pressed while no run
  // was going (after a wrong extension's message) cannot swallow the next one.
  void readyToRun();
  // `CommandProximo`: on "OK" the caption turns to "Cancel" and `generate`
  // runs, its result returned; on "Cancel" the flag is set and the form hides.
  WriteResult pressCommand(const std::function<WriteResult()>& generate);
  // The end of a generator's run: the bar back to empty; `write` runs unless
  // the run was cancelled, in which case nothing is written and the flag
  // clears; the form hides.
  WriteResult finishRun(const std::function<WriteResult()>& write);

 protected:
  FormControl& add(std::string name, u16 label, u16 defaultText, int maxLength = 0,
                   std::vector<u16> list = {});
};

}  // namespace quillon
