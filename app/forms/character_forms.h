// The two character forms of dubbing work over the roster in the session:
// `FormaPer`, offered at the end of each block to pick who spoke, and
// `FrmNewChar`, the roster form that adds names. Their lists show names in
// any script.
#pragma once

#include <QDialog>
#include <functional>

#include "core/station.h"

class QListWidget;
class QLineEdit;
class QLabel;
class QPushButton;
class QRadioButton;

namespace quillon {

class FormaPerDialog : public QDialog {
  Q_OBJECT

 public:
  FormaPerDialog(Station& st, QWidget* parent = nullptr);
  // Lists, option and visibility from the session.
  void syncFromSession();
  // Run after each button: the station's window refreshes its view.
  std::function<void()> afterCommand;

  QListWidget* list() const { return list_; }

 protected:
  // The form has no close entry: the window's close does nothing, and
  // Escape is `Salir`.
  void closeEvent(QCloseEvent* e) override;
  void reject() override;

 private:
  void run(void (*command)(Station&));

  Station& st_;
  QListWidget* list_ = nullptr;
  QRadioButton* option1_ = nullptr;
  QRadioButton* option2_ = nullptr;
  bool syncing_ = false;
};

class FrmNewCharDialog : public QDialog {
  Q_OBJECT

 public:
  FrmNewCharDialog(Station& st, QWidget* parent = nullptr);
  void syncFromSession();
  std::function<void()> afterCommand;

 private:
  void create();

  Station& st_;
  QListWidget* list_ = nullptr;
  QLineEdit* text1_ = nullptr;
  QLabel* label3_ = nullptr;
};

}  // namespace quillon
