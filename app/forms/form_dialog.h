// A settings form of the exports on screen: every control of its model with
// its label, default, input limit and combo list in order, the
// `CommandProximo` button and `ProgressBar1`. The operator corrects the
// fields, presses OK, and the same button reads "Cancel" while the file is
// built; the window stays responsive and a Cancel stops the run. The list
// exports' forms leave the station usable beside them; the ULT form is
// modal.
#pragma once

#include <QDialog>
#include <QElapsedTimer>
#include <functional>
#include <map>
#include <string>

#include "core/form_model.h"

class QPushButton;
class QProgressBar;

namespace quillon {

class FormDialog : public QDialog {
  Q_OBJECT

 public:
  // `press` is the form's `CommandProximo` on the model; true when it wrote
  // the file.
  FormDialog(FormModel& model, std::function<bool()> press, bool modal, QWidget* parent = nullptr);
  ~FormDialog() override;

  // Shows the model: texts, caption, progress, and the window when visible.
  void loadFromModel();
  // The operator's texts into the model, cut at their limits.
  void storeToModel();

  // The widget of a control by its name (a QLineEdit, QComboBox or
  // QPlainTextEdit), nullptr for a name the form lacks.
  QWidget* control(const std::string& name) const;
  QPushButton* commandProximo() const { return proximo_; }
  QProgressBar* progressBar() const { return progress_; }
  bool running() const { return running_; }

 signals:
  // After each press that ended a run: whether a file was written.
  void runEnded(bool written);

 protected:
  void closeEvent(QCloseEvent* e) override;
  void reject() override;

 private:
  void build();
  void onProximo();
  void showProgress();

  FormModel& model_;
  std::function<bool()> press_;
  std::map<std::string, QWidget*> controls_;
  QPushButton* proximo_ = nullptr;
  QProgressBar* progress_ = nullptr;
  QElapsedTimer sincePump_;
  bool running_ = false;
};

// Widget text in the model's terms (CR LF line ends) and back.
u16 widgetText(const QWidget* w);
void setWidgetText(QWidget* w, const u16& text);

}  // namespace quillon
