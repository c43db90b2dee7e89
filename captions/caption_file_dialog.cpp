#include "captions/caption_file_dialog.h"

#include <filesystem>

#include "script/document_service.h"

namespace quillon {

u16 nameWithExtension(const u16& name, const u16& extension) {
  size_t dot = name.rfind(u'.');
  size_t slash = name.find_last_of(u"/\\");
  if (dot == u16::npos || (slash != u16::npos && dot < slash) || dot == 0) return name + extension;
  return name.substr(0, dot) + extension;
}

std::optional<std::string> chooseCaptionFile(Station& st, const CaptionFileRequest& req) {
  FileDialogRequest dialog;
  dialog.title = req.dialogTitle;
  dialog.filter = req.filter;
  dialog.defaultName = nameWithExtension(st.doc ? st.doc->name() : u16(), req.extension);
  if (st.doc) st.doc->clearError();
  auto path = st.ui.saveFileDialog(dialog);
  while (path && !path->empty()) {
    std::error_code ec;
    if (!std::filesystem::exists(*path, ec)) return path;
    MessageBoxRequest box;
    box.text = u"Do you want to replace the existing " + fromUtf8(*path) + u"?";
    box.buttons = Buttons::YesNo;
    box.icon = Icon::Exclamation;
    box.title = req.questionTitle;
    Answer a = st.ui.messageBox(box);
    if (a == Answer::Yes) return path;
    if (a != Answer::No) return std::nullopt;
    path = st.ui.saveFileDialog(dialog);
  }
  return std::nullopt;
}

}  // namespace quillon
