// The script window: the station's own word processor. Each open script
// document has a tab; the tab in front is the active document the logic
// works on, and the window's service is the document service the station
// drives. A file menu opens and saves .txt, .docx and .odt; nothing is lost:
// closing asks to save, and a journal brings unsaved work back after a crash.
#pragma once

#include <QMainWindow>
#include <QTimer>
#include <string>

#include "app/scriptwin/document_journal.h"
#include "core/station.h"
#include "core/ui.h"
#include "script/memory_document.h"

class QTabWidget;

namespace quillon {

class ScriptView;
class ScriptWindow;

// The document service behind the window: the memory documents, where every
// document added shows at once in the window.
class ScriptWindowService : public MemoryDocumentService {
 public:
  explicit ScriptWindowService(ScriptWindow& window) : window_(window) {}
  void documentsAdd() override;
  void setVisible(bool on) override;
  void activateWindow() override;

 private:
  ScriptWindow& window_;
};

class ScriptWindow : public QMainWindow {
  Q_OBJECT

 public:
  // `journalFolder` empty keeps no journal.
  explicit ScriptWindow(UserInterface& ui, std::string journalFolder = defaultJournalFolder(),
                        QWidget* parent = nullptr);
  ~ScriptWindow() override;

  ScriptWindowService& service() { return service_; }
  int documentCount() const;
  ScriptView* view(int index) const;
  ScriptView* activeView() const;
  int activeIndex() const;
  // Shows every document the service holds, in its order, the active one
  // in front. Called after anything added or removed documents directly.
  void syncWithService();

  // File menu.
  void newDocument();
  bool openFile(const std::string& path);  // false after its message
  bool openWithDialog();
  bool save();    // the active document, to its file or as a new one
  bool saveAs();
  bool saveDocument(int index, bool askForName);
  // Asks to save a changed document first; false when the operator kept it
  // open (Cancel, or a save that did not happen).
  bool closeDocument(int index);
  // Every document, as on leaving the station: false when one stays open.
  bool closeAll();

  // Brings the window and its active document forward.
  void bringForward();

  // At start: offers the unsaved documents of a station that ended without
  // closing. True when some were taken back.
  bool offerRecovery();
  // Snapshot of the changed documents now; the timer does it every few
  // seconds while something changed.
  bool writeJournal();
  DocumentJournal& journal() { return journal_; }
  void setJournalInterval(int milliseconds);

 protected:
  void closeEvent(QCloseEvent* e) override;

 private:
  void buildMenus();
  void onDocumentChanged();
  void refreshTitles();
  ScriptView* makeView(MemoryDocument& doc);
  void removeTab(int index);
  std::string askSaveName(const MemoryDocument& doc);

  UserInterface& ui_;
  ScriptWindowService service_;
  QTabWidget* tabs_ = nullptr;
  DocumentJournal journal_;
  QTimer journalTimer_;
  bool journalDirty_ = false;
  bool syncing_ = false;
};

// The window's service becomes the station's document service.
void installScriptWindow(Station& st, ScriptWindow& window);

// The desktop's one line: makes the script window (deleted with `owner`),
// puts its service in the station, offers a crashed session's documents as
// soon as the event loop runs, and has the station's end ask to save each
// changed document first. Call it after the station's endProgram hook is
// set. A Cancel at that question cannot stop the end any more; the journal
// then keeps the document for the next start.
ScriptWindow* installScriptWindow(Station& st, UserInterface& ui, QObject* owner);

}  // namespace quillon
