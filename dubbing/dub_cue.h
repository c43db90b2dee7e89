// What follows a finished dubbing block: the character is picked and the
// DUB[ tag written at the cursor.
#pragma once

#include "core/station.h"

namespace quillon {

// The long tag "DUB[0 N in>out] name CR" (F for voice off), or with cue-in
// only "DUB[in]<TAB>name CR", both times less the reaction delay. An empty
// name writes the tag with no name and no paragraph mark.
u16 dubbingTag(const Station& st, const u16& name);

// Writes the block's tag behind the selection and moves on. A name that is
// not in the roster writes nothing.
void insertar_dub(Station& st, const u16& vozinsert);

// After a block: the picking form (opened on the previous speaker when
// dialogue interaction is on), a new character, or a tag without a name.
void pickCharacterFor(Station& st);

}  // namespace quillon
