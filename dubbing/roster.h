// The roster of character names in dubbing work (`voces`, `numvoces`), and
// the two forms that show it: the picking form `FormaPer` offered at the end
// of each block, and the roster form `FrmNewChar`. The forms are data here
// (their lists live in the session); the windows render them.
#pragma once

#include "core/station.h"

namespace quillon {

// `mnu_dub_car`: rebuilds the roster and both lists from the DUB[ tags of
// the script, reading every tag at the long tag's places.
void scanCharacters(Station& st);

// True when `name` is one of voces[1..numvoces], compared exactly.
bool checkforchar(const Station& st, const u16& name);
// Stores `name` at numvoces + 1.
void createchar(Station& st, const u16& name);

// The operator names a new character during work; a new name is added,
// selected in the picking list and written as the block's tag.
void personaje_nuevo(Station& st);

// ---- FormaPer, the picking form --------------------------------------------
// `Aceptar`, or a pick in the list: the block's tag with the selected name
// (no name when none is selected); the form hides.
void formaPerAceptar(Station& st);
// `Nuevo`: hides the form and asks for a new character.
void formaPerNuevo(Station& st);
// `Borrar`: after the OK of its question, takes the selected name off the
// picking list (not off `voces`) and lowers numvoces; below two names the
// form hides.
void formaPerBorrar(Station& st);
// `Option1` (voice on) and `Option2` (voice off).
void formaPerOption1(Station& st);
void formaPerOption2(Station& st);
// `Salir`: hides the form; no tag is written.
void formaPerSalir(Station& st);

// ---- FrmNewChar, the roster form -------------------------------------------
// `CommandCreate` with `Text1`'s text. A name already present is reported
// once per roster entry and stored all the same.
void frmNewCharCreate(Station& st, const u16& text1);

}  // namespace quillon
