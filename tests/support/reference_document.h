// The plainest document service there is: one buffer of text, one of italic
// flags, paragraphs found by reading the text from the start every time.
// Slow on purpose; the station's own document is held to it.
#pragma once

#include <map>
#include <vector>

#include "script/document_service.h"

namespace quillon::testing {

class ReferenceDocumentService : public DocumentService {
 public:
  explicit ReferenceDocumentService(const u16& text);
  const std::vector<uint8_t>& italics() { return doc().italic; }

  bool connect() override { return true; }
  int documentsCount() override { return static_cast<int>(docs_.size()); }
  void documentsAdd() override { docs_.emplace_back(); }
  u16 userName() override { return {}; }
  u16 userAddress() override { return {}; }

  u16 name() override { return u"Reference"; }
  u16 fullName() override { return name(); }
  long length() override { return static_cast<long>(doc().text.size()); }
  u16 text(TextRange r) override;
  void insertText(long pos, u16v text, bool stickLeft, bool italic) override;
  void eraseText(TextRange r) override;
  bool italicAt(TextRange r) override;
  void setItalic(TextRange r, bool on) override;
  u16 fontName() override { return doc().font; }
  void setFontName(const u16& font) override { doc().font = font; }
  TextRange selectionRange() override { return doc().selection; }
  void setSelectionRange(TextRange r) override;
  long paragraphsCount() override;
  TextRange paragraphRange(long n) override;
  long paragraphIndexAt(long pos) override;
  void undoClear() override {}
  std::optional<u16> customProperty(const u16& name) override;
  void setCustomProperty(const u16& name, const u16& value) override { doc().custom[name] = value; }
  std::optional<u16> builtinProperty(int index) override;
  void setBuiltinProperty(int index, const u16& value) override { doc().builtin[index] = value; }

 private:
  struct Doc {
    u16 text = u"\r";
    std::vector<uint8_t> italic = std::vector<uint8_t>(1, 0);
    TextRange selection;
    u16 font;
    std::map<u16, u16> custom;
    std::map<int, u16> builtin;
  };
  Doc& doc() { return docs_.back(); }
  long clampTo(long p, long hi) { return std::max(0L, std::min(p, hi)); }
  std::vector<Doc> docs_;
};

}  // namespace quillon::testing
