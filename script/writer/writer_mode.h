// "Script in LibreOffice Writer": where the station holds its script. Off
// (the default), the embedded document serves; on, the script is the one
// open in LibreOffice Writer, which the station reaches over the pipe named
// for the operator, starting LibreOffice when it does not answer. The choice
// lives in options.conf as `script.writer` (on or off); `script.writer.connection`
// and `script.writer.program` may name another connection and soffice.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "core/station.h"
#include "script/writer/office_process.h"
#include "script/writer/writer_document_service.h"

namespace quillon {

inline constexpr const char* kWriterOption = "script.writer";
inline constexpr const char* kWriterConnectionOption = "script.writer.connection";
inline constexpr const char* kWriterProgramOption = "script.writer.program";
inline constexpr const char* kWriterMenuItem = "mnu_herr_writer";

class WriterMode {
 public:
  struct Hooks {
    // Keeps the window alive while LibreOffice starts.
    std::function<void()> whileWaiting;
    // The file of the script the embedded document holds, saved first when
    // it has changes; empty when it has no file.
    std::function<std::string()> embeddedScriptFile;
    // The embedded script's window shown (off) or put away (on).
    std::function<void(bool)> showEmbedded;
  };

  WriterMode(Station& st, DocumentService& embedded, Hooks hooks = {});
  ~WriterMode();

  bool on() const { return st_.doc == service_.get() && service_; }
  WriterDocumentService* service() { return service_.get(); }

  // Reaches or starts LibreOffice and opens `scriptPath` there (or the
  // embedded script's file when empty). False after one box saying why;
  // the embedded document then stays.
  bool switchOn(const std::string& scriptPath = {});
  void switchOff();
  // The menu item.
  void toggle();
  // At start: on when the setting says so.
  void applySetting(const std::string& scriptPath);

 private:
  bool startOffice(std::string& error);
  void remember(bool on);

  Station& st_;
  DocumentService& embedded_;
  Hooks hooks_;
  std::unique_ptr<WriterDocumentService> service_;
  OfficeProcess office_;
};

}  // namespace quillon
