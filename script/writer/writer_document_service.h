// The document service over a running LibreOffice Writer, reached through
// its UNO bridge (a pipe or a socket). The active document is the one Writer
// has in front; the selection is the one the operator sees in Writer.
//
// A bridge call costs about a tenth of a millisecond, so the text is read in
// bulk once and kept here: scans, finds and paragraph walks run on that copy,
// and only cursor moves and edits cross the bridge. The copy follows the
// service's own edits and is read again when Writer reports a change made by
// anyone else. A document closed in Writer, or Writer gone, reads as no
// document open (the pending error), and the next attach connects again.
//
// Nothing UNO shows through this header.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "script/document_service.h"
#include "script/writer/office_process.h"

namespace quillon {

struct WriterOptions {
  // A UNO connection: "pipe,name=NAME" or "socket,host=HOST,port=N".
  std::string connection;
  // Documents the service opens or creates get no window (a headless office).
  bool hiddenDocuments = false;
  // Whether the active document follows the one in front in Writer at each
  // attach (the station), or stays the one chosen (the command line).
  bool followFrontDocument = true;
  // When the office cannot be reached, whether connect() starts it, and how
  // it waits meanwhile (the station keeps its window alive).
  std::function<bool(std::string& error)> startOffice;
  std::function<void()> whileWaiting;
  double startTimeoutSeconds = 120;
};

class WriterDocumentService : public DocumentService {
 public:
  explicit WriterDocumentService(WriterOptions options);
  ~WriterDocumentService() override;

  // ---- Beyond the service -----------------------------------------------------
  // Connects (without starting anything); false with the reason.
  bool reach(std::string& error);
  // Why the last connect() failed; empty when it did not.
  const std::string& lastError() const { return lastError_; }
  const WriterOptions& options() const { return options_; }
  // Opens a script file in Writer (or finds it open there) and makes it the
  // active document.
  bool openFile(const std::string& path, std::string& error);
  // The document open in Writer whose file is `path` becomes the active one.
  bool useOpenFile(const std::string& path, std::string& error);
  // The active document saved to its own file, or a copy of it stored as
  // `path` in the format its extension names (odt, docx, doc, rtf, txt).
  bool save(std::string& error);
  bool storeCopy(const std::string& path, std::string& error);
  // Writer shows the service's selection and edits a moment after the
  // station pauses (see view_updates.h); this shows them at once.
  void showSelection();
  // Closes the active document without asking (tests and tools).
  void closeActive();
  // Ends the office itself (tests and tools).
  void terminateOffice();

  // ---- Primitives -------------------------------------------------------------
  bool connect() override;
  int documentsCount() override;
  void documentsAdd() override;
  void setVisible(bool on) override;
  void activateWindow() override;
  u16 userName() override;
  u16 userAddress() override;

  u16 name() override;
  u16 fullName() override;
  long length() override;
  u16 text(TextRange r) override;
  void insertText(long pos, u16v text, bool stickLeft, bool italic) override;
  void eraseText(TextRange r) override;
  void replaceText(TextRange r, u16v t, bool italic) override;
  bool italicAt(TextRange r) override;
  void setItalic(TextRange r, bool on) override;
  u16 fontName() override;
  void setFontName(const u16& font) override;
  TextRange selectionRange() override;
  void setSelectionRange(TextRange r) override;
  long paragraphsCount() override;
  TextRange paragraphRange(long n) override;
  long paragraphIndexAt(long pos) override;
  void undoClear() override;
  std::optional<u16> customProperty(const u16& name) override;
  void setCustomProperty(const u16& name, const u16& value) override;
  std::optional<u16> builtinProperty(int index) override;
  void setBuiltinProperty(int index, const u16& value) override;

  struct Impl;

 private:
  // The document open in Writer whose file is `path` becomes the active
  // one, opened there first when `load`; a `pin`ned one stays active.
  bool bindFile(const std::string& path, bool load, bool pin, std::string& error);
  void followFront();

  WriterOptions options_;
  std::string lastError_;
  std::unique_ptr<Impl> impl_;
};

// Tries to reach the service's office until it answers or `timeoutSeconds`
// pass, calling `whileWaiting` between tries; false with the reason.
bool waitForOffice(WriterDocumentService& service, double timeoutSeconds, const std::function<void()>& whileWaiting,
                   std::string& error);

// A windowless office of its own for programs that drive Writer unattended
// (tests, benchmarks): its profile in `profileDir`, set up first, listening
// at `connection`, and ended with this process. True once it answers.
bool startHeadlessOffice(OfficeProcess& process, const std::string& connection, const std::string& profileDir,
                         double timeoutSeconds, std::string& error);
// Asks that office to end, then makes sure its process has.
void stopHeadlessOffice(OfficeProcess& process, const std::string& connection);

// For programs built with the leak checker: what the UNO runtime keeps for
// the life of the process, once loaded.
const char* unoRuntimeLeakSuppressions();

}  // namespace quillon
