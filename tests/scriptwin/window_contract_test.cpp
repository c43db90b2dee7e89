// The document contract, run on the documents the script window shows: every
// operation goes to the window's service, and after each one that changes
// the document the editor must show the same text, italics and selection.
#include "support/document_contract.h"

#include "window_fixture.h"

namespace quillon::testing {

namespace {

class WindowBackedDocument : public DocumentService {
 public:
  explicit WindowBackedDocument(const std::u16string& text) : w_((qtApp(), ui_), std::string()) {
    s().documentsAdd();
    s().active()->setText(text);
    settle();
  }
  ~WindowBackedDocument() override { check(); }

  bool connect() override { return s().connect(); }
  int documentsCount() override { return s().documentsCount(); }
  void documentsAdd() override { s().documentsAdd(); }
  u16 userName() override { return s().userName(); }
  u16 userAddress() override { return s().userAddress(); }
  u16 name() override { return pass(s().name()); }
  u16 fullName() override { return pass(s().fullName()); }
  long length() override { return pass(s().length()); }
  u16 text(TextRange r) override { return pass(s().text(r)); }
  void insertText(long pos, u16v t, bool stickLeft, bool italic) override {
    s().insertText(pos, t, stickLeft, italic), after();
  }
  void eraseText(TextRange r) override { s().eraseText(r); after(); }
  void replaceText(TextRange r, u16v t, bool italic) override { s().replaceText(r, t, italic); after(); }
  bool italicAt(TextRange r) override { return pass(s().italicAt(r)); }
  void setItalic(TextRange r, bool on) override { s().setItalic(r, on); after(); }
  u16 fontName() override { return pass(s().fontName()); }
  void setFontName(const u16& f) override { s().setFontName(f); }
  TextRange selectionRange() override { return pass(s().selectionRange()); }
  void setSelectionRange(TextRange r) override { s().setSelectionRange(r); after(); }
  long paragraphsCount() override { return pass(s().paragraphsCount()); }
  TextRange paragraphRange(long n) override { return pass(s().paragraphRange(n)); }
  long paragraphIndexAt(long pos) override { return pass(s().paragraphIndexAt(pos)); }
  void undoClear() override { s().undoClear(); }
  std::optional<u16> customProperty(const u16& n) override { return pass(s().customProperty(n)); }
  void setCustomProperty(const u16& n, const u16& v) override { s().setCustomProperty(n, v); }
  std::optional<u16> builtinProperty(int i) override { return pass(s().builtinProperty(i)); }
  void setBuiltinProperty(int i, const u16& v) override { s().setBuiltinProperty(i, v); }

 private:
  ScriptWindowService& s() { return w_.service(); }
  // The service's pending error is this wrapper's.
  template <typename T>
  T pass(T value) {
    if (s().pendingError()) raiseError(s().pendingError());
    s().clearError();
    return value;
  }
  void after() {
    pass(0);
    settle();
    check();
  }
  void check() {
    ScriptView* v = w_.activeView();
    EXPECT_TRUE(!v || editorInStep(*v));
  }

  ScriptedUi ui_;
  ScriptWindow w_;
};

std::unique_ptr<DocumentService> makeWindowBacked(const std::u16string& text) {
  return std::make_unique<WindowBackedDocument>(text);
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(ScriptWindow, DocumentContract,
                         ::testing::Values(DocumentFactory{"window", makeWindowBacked}), factoryName);

}  // namespace quillon::testing
