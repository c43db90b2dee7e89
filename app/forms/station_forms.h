// The forms of the station and the menu items that open them. The list
// exports run their export frame, fill their model and show the form; the
// form's `CommandProximo` writes the file. The picking form `FormaPer`
// follows the session, which the dubbing commands show and hide.
#pragma once

#include <QObject>
#include <QTimer>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "captions/ult_export.h"
#include "core/station.h"
#include "formats/cpc_export.h"
#include "formats/dvdm_export.h"
#include "formats/stl_export.h"
#include "formats/sub_export.h"

class QWidget;

namespace quillon {

class FormDialog;
class FormaPerDialog;
class FrmNewCharDialog;
class ReadingSpeedDialog;

class StationForms : public QObject {
  Q_OBJECT

 public:
  // `parent` owns the dialogs' windows (they stay above it).
  StationForms(Station& st, QWidget* parent);
  ~StationForms() override;

  // The menu items with a form: mnu_sub_ebu, mnu_sub_dvdm, mnu_sub_cpc,
  // mnu_sub_sub, mnu_cc_ult, mnu_sub_par_read; and FrmNewChar by its name.
  static const std::vector<std::string>& items();
  // Runs the item's command up to its form; false for an item without one.
  bool open(std::string_view item);
  // FormaPer and FrmNewChar after the session changed.
  void syncCharacterForms();

  // Run after a form's button changed the station, so the main window can
  // show it (status bar, menus).
  std::function<void()> afterCommand;

  FormaSTL& formaSTL() { return stl_; }
  FormDVDMaestro& formDVDMaestro() { return dvdm_; }
  FormCPC& formCPC() { return cpc_; }
  FormSUB& formSUB() { return sub_; }
  FormCCult& formCCult() { return ult_; }
  // The window of an export form by its menu item (mnu_sub_ebu ...
  // mnu_cc_ult), made on first use.
  FormDialog& exportDialog(std::string_view item);
  FormaPerDialog& dialogFormaPer();
  FrmNewCharDialog& dialogFrmNewChar();
  ReadingSpeedDialog& dialogReadingSpeed();

 private:
  // An export form: its menu item's command up to the form, and its
  // `CommandProximo`.
  struct ExportForm {
    std::string item;
    FormModel& model;
    std::function<bool()> open;
    std::function<WriteResult()> press;
    bool modal = false;
    std::unique_ptr<FormDialog> window;
  };
  ExportForm* exportForm(std::string_view item);
  template <typename Dialog>
  Dialog& characterForm(std::unique_ptr<Dialog>& d);

  Station& st_;
  QWidget* parent_;
  FormaSTL stl_;
  FormDVDMaestro dvdm_;
  FormCPC cpc_;
  FormSUB sub_;
  FormCCult ult_;
  std::vector<ExportForm> exportForms_;
  std::unique_ptr<FormaPerDialog> formaPer_;
  std::unique_ptr<FrmNewCharDialog> frmNewChar_;
  std::unique_ptr<ReadingSpeedDialog> readingSpeed_;
  QTimer watch_;
};

// The desktop's one line: the forms, owned by `parent`, with each item's
// command handed to the main window's menu through `setMenuCommand`.
StationForms* installForms(Station& st, QWidget* parent,
                           const std::function<void(std::string_view, std::function<void(Station&)>)>& setMenuCommand);

}  // namespace quillon
