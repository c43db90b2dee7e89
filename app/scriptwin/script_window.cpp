#include "app/scriptwin/script_window.h"

#include <QAction>
#include <QCloseEvent>
#include <QMenuBar>
#include <QPointer>
#include <QTabWidget>

#include "app/qt_text.h"
#include "app/scriptwin/script_view.h"
#include "script/document_files.h"
#ifdef QUILLON_HAVE_DOCFILES
#include "script/files/office_formats.h"
#endif

namespace quillon {

namespace {

constexpr int kJournalIntervalMs = 3000;

const u16 kOpenFilter = u"Script documents (*.docx;*.odt;*.txt)|*.docx;*.odt;*.txt|All files (*.*)|*.*";
const u16 kSaveFilter =
    u"Word document (*.docx)|*.docx|OpenDocument text (*.odt)|*.odt|Plain text (*.txt)|*.txt";

}  // namespace

// ---- service ----------------------------------------------------------------

void ScriptWindowService::documentsAdd() {
  MemoryDocumentService::documentsAdd();
  window_.syncWithService();
}

void ScriptWindowService::setVisible(bool on) {
  if (on) window_.show();
  else window_.hide();
}

void ScriptWindowService::activateWindow() { window_.bringForward(); }

void installScriptWindow(Station& st, ScriptWindow& window) { st.doc = &window.service(); }

ScriptWindow* installScriptWindow(Station& st, UserInterface& ui, QObject* owner) {
  auto* w = new ScriptWindow(ui);
  if (owner) QObject::connect(owner, &QObject::destroyed, w, [w] { delete w; });
  installScriptWindow(st, *w);
  QTimer::singleShot(0, w, [w] { w->offerRecovery(); });
  QPointer<ScriptWindow> guarded(w);
  st.endProgram = [guarded, previous = st.endProgram](Station& s) {
    if (guarded && !guarded->closeAll()) guarded->writeJournal();
    if (previous) previous(s);
  };
  return w;
}

// ---- window -----------------------------------------------------------------

ScriptWindow::ScriptWindow(UserInterface& ui, std::string journalFolder, QWidget* parent)
    : QMainWindow(parent), ui_(ui), service_(*this), journal_(std::move(journalFolder)) {
#ifdef QUILLON_HAVE_DOCFILES
  registerOfficeDocumentFormats();
#endif
  setObjectName("ScriptWindow");
  tabs_ = new QTabWidget(this);
  tabs_->setObjectName("ScriptTabs");
  tabs_->setTabsClosable(true);
  tabs_->setDocumentMode(true);
  setCentralWidget(tabs_);
  connect(tabs_, &QTabWidget::currentChanged, this, [this](int index) {
    if (syncing_ || index < 0) return;
    service_.activate(static_cast<size_t>(index));
    refreshTitles();
  });
  connect(tabs_, &QTabWidget::tabCloseRequested, this, [this](int index) { closeDocument(index); });
  buildMenus();
  journalTimer_.setInterval(kJournalIntervalMs);
  connect(&journalTimer_, &QTimer::timeout, this, [this] {
    if (journalDirty_) writeJournal();
  });
  journalTimer_.start();
  resize(800, 900);
  refreshTitles();
}

ScriptWindow::~ScriptWindow() {
  // Views first: they hold on to the documents.
  while (tabs_->count() > 0) removeTab(tabs_->count() - 1);
  // A clean end leaves no journal; unsaved work keeps it for the next start.
  bool unsaved = false;
  for (const auto& d : service_.documents()) unsaved = unsaved || d->modified;
  if (!unsaved) journal_.remove();
}

void ScriptWindow::buildMenus() {
  QMenu* file = menuBar()->addMenu(tr("&File"));
  auto add = [this](QMenu* m, const QString& text, const QKeySequence& keys, auto fn) {
    QAction* a = m->addAction(text);
    if (!keys.isEmpty()) a->setShortcut(keys);
    connect(a, &QAction::triggered, this, fn);
    return a;
  };
  add(file, tr("&New"), QKeySequence::New, [this] { newDocument(); });
  add(file, tr("&Open..."), QKeySequence::Open, [this] { openWithDialog(); });
  add(file, tr("&Save"), QKeySequence::Save, [this] { save(); });
  add(file, tr("Save &As..."), QKeySequence(), [this] { saveAs(); });
  file->addSeparator();
  add(file, tr("&Close"), QKeySequence::Close, [this] { closeDocument(activeIndex()); });

  QMenu* edit = menuBar()->addMenu(tr("&Edit"));
  // The editor takes these keys itself; the entries are for the mouse.
  add(edit, tr("&Undo\tCtrl+Z"), QKeySequence(), [this] {
    if (auto* v = activeView()) v->undoLast();
  });
  edit->addSeparator();
  add(edit, tr("Cu&t\tCtrl+X"), QKeySequence(), [this] {
    if (auto* v = activeView()) v->cut();
  });
  add(edit, tr("&Copy\tCtrl+C"), QKeySequence(), [this] {
    if (auto* v = activeView()) v->copy();
  });
  add(edit, tr("&Paste\tCtrl+V"), QKeySequence(), [this] {
    if (auto* v = activeView()) v->paste();
  });
  add(edit, tr("Select &All\tCtrl+A"), QKeySequence(), [this] {
    if (auto* v = activeView()) v->selectAll();
  });
  edit->addSeparator();
  add(edit, tr("&Italic\tCtrl+I"), QKeySequence(), [this] {
    if (auto* v = activeView()) v->toggleItalic();
  });
}

int ScriptWindow::documentCount() const { return tabs_->count(); }

ScriptView* ScriptWindow::view(int index) const { return qobject_cast<ScriptView*>(tabs_->widget(index)); }

ScriptView* ScriptWindow::activeView() const { return view(tabs_->currentIndex()); }

int ScriptWindow::activeIndex() const { return tabs_->currentIndex(); }

ScriptView* ScriptWindow::makeView(MemoryDocument& doc) {
  auto* v = new ScriptView(doc);
  connect(v, &ScriptView::documentChanged, this, &ScriptWindow::onDocumentChanged);
  return v;
}

void ScriptWindow::removeTab(int index) {
  ScriptView* v = view(index);
  tabs_->removeTab(index);
  delete v;
}

void ScriptWindow::syncWithService() {
  syncing_ = true;
  auto& docs = service_.documents();
  auto holds = [&](const MemoryDocument* d) {
    for (const auto& p : docs)
      if (p.get() == d) return true;
    return false;
  };
  for (int i = tabs_->count() - 1; i >= 0; --i)
    if (!holds(&std::as_const(*view(i)).model())) {
      // Its document is gone already: the view must not reach for it.
      view(i)->forgetModel();
      removeTab(i);
    }
  for (int k = 0; k < static_cast<int>(docs.size()); ++k) {
    MemoryDocument* d = docs[static_cast<size_t>(k)].get();
    if (k < tabs_->count() && &view(k)->model() == d) continue;
    int found = -1;
    for (int j = k + 1; j < tabs_->count(); ++j)
      if (&view(j)->model() == d) found = j;
    if (found >= 0) {
      ScriptView* v = view(found);
      tabs_->removeTab(found);
      tabs_->insertTab(k, v, QString());
    } else {
      tabs_->insertTab(k, makeView(*d), QString());
    }
  }
  int active = -1;
  for (int k = 0; k < static_cast<int>(docs.size()); ++k)
    if (docs[static_cast<size_t>(k)].get() == service_.active()) active = k;
  if (active >= 0) tabs_->setCurrentIndex(active);
  syncing_ = false;
  refreshTitles();
  if (!docs.empty()) show();
}

void ScriptWindow::refreshTitles() {
  for (int i = 0; i < tabs_->count(); ++i) {
    const MemoryDocument& d = view(i)->model();
    tabs_->setTabText(i, toQString(d.name) + (d.modified ? QStringLiteral(" *") : QString()));
    tabs_->setTabToolTip(i, d.path.empty() ? toQString(d.name) : QString::fromStdString(d.path));
  }
  const ScriptView* v = activeView();
  setWindowTitle(v ? toQString(v->model().name) + QStringLiteral(" - Quillon script") : QStringLiteral("Quillon script"));
}

void ScriptWindow::onDocumentChanged() {
  journalDirty_ = true;
  refreshTitles();
}

void ScriptWindow::newDocument() { service_.documentsAdd(); }

bool ScriptWindow::openFile(const std::string& path) {
  for (size_t i = 0; i < service_.documents().size(); ++i)
    if (service_.documents()[i]->path == path) {
      service_.activate(i);
      syncWithService();
      return true;
    }
  std::string error;
  auto doc = loadDocumentFile(path, error);
  if (!doc) {
    critical(ui_, fromUtf8(error.empty() ? "Cannot open " + path : error));
    return false;
  }
  service_.addDocument(std::move(doc));
  syncWithService();
  return true;
}

bool ScriptWindow::openWithDialog() {
  FileDialogRequest req;
  req.title = u"Open script";
  req.filter = kOpenFilter;
  auto path = ui_.openFileDialog(req);
  if (!path || path->empty()) return false;
  return openFile(*path);
}

std::string ScriptWindow::askSaveName(const MemoryDocument& doc) {
  FileDialogRequest req;
  req.title = u"Save script as";
  req.filter = kSaveFilter;
  u16 name = doc.name;
  if (fileExtension(toUtf8(name)).empty()) name += isRegisteredDocumentFormat("docx") ? u".docx" : u".txt";
  req.defaultName = name;
  auto path = ui_.saveFileDialog(req);
  if (!path || path->empty()) return {};
  std::string p = *path;
  if (fileExtension(p).empty()) p += isRegisteredDocumentFormat("docx") ? ".docx" : ".txt";
  return p;
}

bool ScriptWindow::saveDocument(int index, bool askForName) {
  ScriptView* v = view(index);
  if (!v) return false;
  MemoryDocument& d = v->model();
  std::string path = d.path;
  if (askForName || path.empty()) path = askSaveName(d);
  if (path.empty()) return false;
  std::string error;
  if (!saveDocumentFile(d, path, error)) {
    critical(ui_, fromUtf8(error.empty() ? "Cannot write " + path : error));
    return false;
  }
  d.path = path;
  d.name = fromUtf8(fileName(path));
  d.modified = false;
  refreshTitles();
  writeJournal();
  return true;
}

bool ScriptWindow::save() { return saveDocument(activeIndex(), false); }
bool ScriptWindow::saveAs() { return saveDocument(activeIndex(), true); }

bool ScriptWindow::closeDocument(int index) {
  ScriptView* v = view(index);
  if (!v) return true;
  MemoryDocument& d = v->model();
  if (d.modified) {
    MessageBoxRequest box;
    box.text = u"Do you want to save the changes to " + d.name + u"?";
    box.buttons = Buttons::YesNoCancel;
    box.icon = Icon::Exclamation;
    box.title = g_appTitle;
    const Answer a = ui_.messageBox(box);
    if (a == Answer::Cancel) return false;
    if (a == Answer::Yes && !saveDocument(index, false)) return false;
  }
  removeTab(index);
  service_.activate(static_cast<size_t>(index));
  service_.closeActive();
  syncWithService();
  writeJournal();
  return true;
}

bool ScriptWindow::closeAll() {
  while (documentCount() > 0)
    if (!closeDocument(documentCount() - 1)) return false;
  journal_.remove();
  return true;
}

void ScriptWindow::closeEvent(QCloseEvent* e) {
  if (closeAll()) e->accept();
  else e->ignore();
}

void ScriptWindow::bringForward() {
  show();
  setWindowState((windowState() & ~Qt::WindowMinimized) | Qt::WindowActive);
  raise();
  activateWindow();
  if (ScriptView* v = activeView()) v->setFocus();
}

bool ScriptWindow::writeJournal() {
  journalDirty_ = false;
  std::vector<const MemoryDocument*> changed;
  for (const auto& d : service_.documents())
    if (d->modified) changed.push_back(d.get());
  return journal_.write(changed);
}

void ScriptWindow::setJournalInterval(int milliseconds) { journalTimer_.setInterval(milliseconds); }

bool ScriptWindow::offerRecovery() {
  const auto files = journal_.orphans();
  if (files.empty()) return false;
  auto docs = journal_.recoverOrphans();
  if (docs.empty()) {
    journal_.discardOrphans();
    return false;
  }
  MessageBoxRequest box;
  box.text = u"Quillon did not close properly last time. Recover " + numberText(static_cast<double>(docs.size())) +
             u" script document(s) with unsaved changes?";
  box.buttons = Buttons::YesNo;
  box.icon = Icon::Question;
  box.title = g_appTitle;
  if (ui_.messageBox(box) != Answer::Yes) {
    journal_.discardOrphans();
    return false;
  }
  for (auto& d : docs) {
    // The file it came from gives back what the journal does not keep (the
    // word processor's own formatting), with the journal's text over it.
    if (!d->path.empty()) {
      std::string error;
      if (auto original = loadDocumentFile(d->path, error)) d->sourcePackage = original->sourcePackage;
    }
    service_.addDocument(std::move(d));
  }
  syncWithService();
  // The taken-back work is journalled under this station before the old
  // journal goes, so that a second crash now loses nothing either.
  writeJournal();
  journal_.discardOrphans();
  return true;
}

}  // namespace quillon
