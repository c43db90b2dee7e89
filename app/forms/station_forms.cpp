#include "app/forms/station_forms.h"

#include <QWidget>

#include "app/forms/character_forms.h"
#include "app/forms/form_dialog.h"
#include "app/forms/reading_speed_dialog.h"
#include "app/forms/ult_dialog.h"

namespace quillon {

namespace {
// How often the picking form looks at the session: it appears when the
// dubbing command that wants it returns.
constexpr int kWatchMs = 40;
}  // namespace

StationForms::StationForms(Station& st, QWidget* parent) : QObject(parent), st_(st), parent_(parent) {
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

FormDialog& StationForms::listDialog(std::unique_ptr<FormDialog>& d, FormModel& m, std::function<bool()> press) {
  if (!d) {
    d = std::make_unique<FormDialog>(m, std::move(press), parent_);
    connect(d.get(), &FormDialog::runEnded, this, [this] {
      if (afterCommand) afterCommand();
    });
  }
  return *d;
}

FormDialog& StationForms::dialogSTL() {
  return listDialog(stlDialog_, stl_, [this] { return commandProximoSTL(st_, stl_).written; });
}
FormDialog& StationForms::dialogDVDMaestro() {
  return listDialog(dvdmDialog_, dvdm_, [this] { return commandProximoDVDM(st_, dvdm_).written; });
}
FormDialog& StationForms::dialogCPC() {
  return listDialog(cpcDialog_, cpc_, [this] { return commandProximoCPC(st_, cpc_).written; });
}
FormDialog& StationForms::dialogSUB() {
  return listDialog(subDialog_, sub_, [this] { return commandProximoSUB(st_, sub_).written; });
}

UltDialog& StationForms::dialogCCult() {
  if (!ultDialog_) {
    ultDialog_ = std::make_unique<UltDialog>(st_, ult_, parent_);
    connect(ultDialog_.get(), &UltDialog::runEnded, this, [this] {
      if (afterCommand) afterCommand();
    });
  }
  return *ultDialog_;
}

FormaPerDialog& StationForms::dialogFormaPer() {
  if (!formaPer_) {
    formaPer_ = std::make_unique<FormaPerDialog>(st_, parent_);
    formaPer_->afterCommand = [this] {
      syncCharacterForms();
      if (afterCommand) afterCommand();
    };
  }
  return *formaPer_;
}

FrmNewCharDialog& StationForms::dialogFrmNewChar() {
  if (!frmNewChar_) {
    frmNewChar_ = std::make_unique<FrmNewCharDialog>(st_, parent_);
    frmNewChar_->afterCommand = [this] {
      syncCharacterForms();
      if (afterCommand) afterCommand();
    };
  }
  return *frmNewChar_;
}

ReadingSpeedDialog& StationForms::dialogReadingSpeed() {
  if (!readingSpeed_) readingSpeed_ = std::make_unique<ReadingSpeedDialog>(st_, parent_);
  return *readingSpeed_;
}

void StationForms::showDialog(FormDialog& d) {
  d.loadFromModel();
  d.show();
  d.raise();
  d.activateWindow();
}

bool StationForms::open(std::string_view item) {
  if (item == "mnu_sub_ebu") {
    if (mnuSubEbu(st_, stl_)) showDialog(dialogSTL());
  } else if (item == "mnu_sub_dvdm") {
    if (mnuSubDvdm(st_, dvdm_)) showDialog(dialogDVDMaestro());
  } else if (item == "mnu_sub_cpc") {
    if (mnuSubCpc(st_, cpc_)) showDialog(dialogCPC());
  } else if (item == "mnu_sub_sub") {
    if (mnuSubSub(st_, sub_)) showDialog(dialogSUB());
  } else if (item == "mnu_cc_ult") {
    if (mnu_cc_ult(st_, ult_)) {
      UltDialog& d = dialogCCult();
      d.loadFromModel();
      d.show();
      d.raise();
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
