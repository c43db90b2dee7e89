// What every import shares: the open dialog starting in the remembered
// folder, the new document it writes into, writing at the selection, and
// the box for a file of another kind.
#pragma once

#include <optional>
#include <string>

#include "core/station.h"

namespace quillon {

// Attaches the script document, asks for the file in `dialogInitDir` and
// remembers the chosen file's folder there. The chosen path (UTF-8), or
// nullopt when the word processor was not there or the operator cancelled.
std::optional<std::string> importFrame(Station& st, u16v title, u16v filter);

// A new document in `font`, the active one from now on: where an import,
// or an export that makes a document, writes.
void openNewDocument(Station& st, u16v font);

// Selection.Paragraphs(1).Range.InsertAfter, then the cursor right over the
// text: how every import writes into its new document.
void insertAtSelection(Station& st, const u16& text);

// The box for a file that is not of the format the operator chose: the
// file's name and what such a file holds.
void tellNotOfFormat(Station& st, const std::string& path, u16v what, u16v expected);

}  // namespace quillon
