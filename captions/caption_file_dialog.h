// Choosing the file a caption export writes: the save dialog, and the
// question before an existing file is replaced.
#pragma once

#include <optional>
#include <string>

#include "core/station.h"

namespace quillon {

struct CaptionFileRequest {
  u16 dialogTitle;
  u16 filter;
  u16 extension;      // ".scc", ".ult": the suggested name is the document's with it
  u16 questionTitle;  // title of the replace question
};

// The chosen path, or nullopt when the operator cancelled. An existing file
// is replaced only on Yes; No opens the dialog again.
std::optional<std::string> chooseCaptionFile(Station& st, const CaptionFileRequest& req);

// `name` with its extension (from the last dot on) replaced by `extension`.
u16 nameWithExtension(const u16& name, const u16& extension);

}  // namespace quillon
