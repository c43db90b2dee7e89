#include "app/forms/station_forms.h"

#include <QWidget>

#include "app/forms/character_forms.h"
#include "app/forms/form_dialog.h"
#include "app/forms/reading_speed_dialog.h"

namespace quillon {

namespace {
// How often the picking form looks at the session: it appears when the
// dubbing command that wants it returns.
constexpr int kWatchMs = 40;
}  // namespace

StationForms::StationForms(Station& st, QWidget* parent) : QObject(parent), st_(st), parent_(parent) {
  auto add = [&](const char* item, FormModel& model, std::function<bool()> open, std::function<WriteResult()> press,
                 bool modal = false) {
    exportForms_.push_back({item, model, std::move(open), std::move(press), modal, nullptr});
  };
  add("mnu_sub_ebu", stl_, [this] { return mnuSubEbu(st_, stl_); }, [this] { return commandProximoSTL(st_, stl_); });
  add("mnu_sub_dvdm", dvdm_, [this] { return mnuSubDvdm(st_, dvdm_); },
      [this] { return commandProximoDVDM(st_, dvdm_); });
  add("mnu_sub_cpc", cpc_, [this] { return mnuSubCpc(st_, cpc_); }, [this] { return commandProximoCPC(st_, cpc_); });
  add("mnu_sub_sub", sub_, [this] { return mnuSubSub(st_, sub_); }, [this] { return commandProximoSUB(st_, sub_); });
  add("mnu_cc_ult", ult_, [this] { return mnu_cc_ult(st_, ult_); }, [this] { return formCCultProximo(st_, ult_); },
      true);

  watch_.setInterval(kWatchMs);
  connect(&watch_, &QTimer::timeout, this, [this] {
    if (st_.s.pickingFormVisible || formaPer_) syncCharacterForms();
  });
  watch_.start();
}

StationForms::~StationForms() = default;

const std::vector<std::string>& StationForms::items() {
  static const std::vector<std::string> names = {"mnu_sub_ebu", "mnu_sub_dvdm", "mnu_sub_cpc",      "mnu_sub_sub",
                                                 "mnu_cc_ult",  "mnu_sub_par_read", "FrmNewChar"};
  return names;
}

StationForms::ExportForm* StationForms::exportForm(std::string_view item) {
  for (auto& f : exportForms_)
    if (f.item == item) return &f;
  return nullptr;
}

FormDialog& StationForms::exportDialog(std::string_view item) {
  ExportForm& f = *exportForm(item);
  if (!f.window) {
    f.window = std::make_unique<FormDialog>(f.model, [press = f.press] { return press().written; }, f.modal, parent_);
    connect(f.window.get(), &FormDialog::runEnded, this, [this] {
      if (afterCommand) afterCommand();
    });
  }
  return *f.window;
}

template <typename Dialog>
Dialog& StationForms::characterForm(std::unique_ptr<Dialog>& d) {
  if (!d) {
    d = std::make_unique<Dialog>(st_, parent_);
    d->afterCommand = [this] {
      syncCharacterForms();
      if (afterCommand) afterCommand();
    };
  }
  return *d;
}

FormaPerDialog& StationForms::dialogFormaPer() { return characterForm(formaPer_); }
FrmNewCharDialog& StationForms::dialogFrmNewChar() { return characterForm(frmNewChar_); }

ReadingSpeedDialog& StationForms::dialogReadingSpeed() {
  if (!readingSpeed_) readingSpeed_ = std::make_unique<ReadingSpeedDialog>(st_, parent_);
  return *readingSpeed_;
}

bool StationForms::open(std::string_view item) {
  if (ExportForm* f = exportForm(item)) {
    if (f->open()) {
      FormDialog& d = exportDialog(item);
      d.loadFromModel();
      d.show();
      d.raise();
      d.activateWindow();
    }
  } else if (item == "mnu_sub_par_read") {
    ReadingSpeedDialog& d = dialogReadingSpeed();
    d.refresh();
    d.show();
    d.raise();
  } else if (item == "FrmNewChar") {
    FrmNewCharDialog& d = dialogFrmNewChar();
    d.syncFromSession();
    d.show();
    d.raise();
  } else {
    return false;
  }
  return true;
}

void StationForms::syncCharacterForms() {
  dialogFormaPer().syncFromSession();
  if (frmNewChar_) frmNewChar_->syncFromSession();
}

StationForms* installForms(Station& st, QWidget* parent,
                           const std::function<void(std::string_view, std::function<void(Station&)>)>& setMenuCommand) {
  auto* forms = new StationForms(st, parent);
  for (const auto& item : StationForms::items())
    setMenuCommand(item, [forms, item](Station&) { forms->open(item); });
  return forms;
}

}  // namespace quillon
