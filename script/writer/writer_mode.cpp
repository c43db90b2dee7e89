#include "script/writer/writer_mode.h"

namespace quillon {

namespace {

std::string option(const Station& st, const char* key, const std::string& otherwise) {
  auto it = st.s.options.find(key);
  return it == st.s.options.end() || it->second.empty() ? otherwise : it->second;
}

}  // namespace

WriterMode::WriterMode(Station& st, DocumentService& embedded, Hooks hooks)
    : st_(st), embedded_(embedded), hooks_(std::move(hooks)) {}

WriterMode::~WriterMode() {
  if (on()) st_.doc = &embedded_;
}

bool WriterMode::startOffice(std::string& error) {
  // One start at a time: an office still coming up is waited for again.
  if (office_.running()) return true;
  OfficeLaunch launch;
  launch.program = option(st_, kWriterProgramOption, "soffice");
  launch.connection = option(st_, kWriterConnectionOption, defaultWriterConnection());
  return office_.start(launch, error);
}

bool WriterMode::switchOn(const std::string& scriptPath) {
  const std::string connection = option(st_, kWriterConnectionOption, defaultWriterConnection());
  if (on()) return true;
  if (!service_ || service_->options().connection != connection) {
    WriterOptions o;
    o.connection = connection;
    o.startOffice = [this](std::string& error) { return startOffice(error); };
    o.whileWaiting = hooks_.whileWaiting;
    service_ = std::make_unique<WriterDocumentService>(o);
  }
  st_.ui.setPointer(Pointer::Hourglass);
  std::string path = scriptPath;
  if (path.empty() && hooks_.embeddedScriptFile) path = hooks_.embeddedScriptFile();
  std::string error;
  bool ok = service_->connect();
  if (!ok) error = service_->lastError();
  if (ok && !path.empty()) ok = service_->openFile(path, error);
  st_.ui.setPointer(Pointer::Default);
  if (!ok) {
    warning(st_.ui, u"LibreOffice Writer could not be reached or started (" + fromUtf8(connection) + u"): " +
                        fromUtf8(error) + u". The script stays in the station's own window.");
    return false;
  }
  st_.doc = service_.get();
  st_.s.g_docAttached = false;  // the next command names the Writer document
  st_.view.menu(kWriterMenuItem).checked = true;
  if (hooks_.showEmbedded) hooks_.showEmbedded(false);
  remember(true);
  return true;
}

void WriterMode::switchOff() {
  st_.doc = &embedded_;
  st_.s.g_docAttached = false;
  st_.view.menu(kWriterMenuItem).checked = false;
  if (hooks_.showEmbedded) hooks_.showEmbedded(true);
  remember(false);
}

void WriterMode::toggle() {
  if (on()) switchOff();
  else switchOn();
}

void WriterMode::applySetting(const std::string& scriptPath) {
  if (option(st_, kWriterOption, "off") == "on") switchOn(scriptPath);
}

void WriterMode::remember(bool on) { st_.s.options[kWriterOption] = on ? "on" : "off"; }

}  // namespace quillon
