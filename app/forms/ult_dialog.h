// `FormCCult`, the ULT caption file form: its fields with their lists, the
// `CommandProximo` button and `ProgressBar1`. Modal; the writing pumps the
// event loop, so the bar moves and Cancel stops it.
#pragma once

#include <QDialog>
#include <QTimer>
#include <functional>
#include <map>
#include <string>

#include "captions/ult_export.h"

class QPushButton;
class QProgressBar;

namespace quillon {

class UltDialog : public QDialog {
  Q_OBJECT

 public:
  UltDialog(Station& st, FormCCult& form, QWidget* parent = nullptr);

  void loadFromModel();
  void storeToModel();
  QWidget* control(const std::string& name) const;
  QPushButton* commandProximo() const { return proximo_; }
  QProgressBar* progressBar() const { return progress_; }

 signals:
  void runEnded(bool written);

 protected:
  void reject() override;

 private:
  void onProximo();
  void showProgress();

  Station& st_;
  FormCCult& form_;
  std::map<std::string, QWidget*> controls_;
  QPushButton* proximo_ = nullptr;
  QProgressBar* progress_ = nullptr;
  QTimer progressTimer_;
  bool running_ = false;
};

}  // namespace quillon
