// A settings form of the list exports on screen: every control of its model
// with its label, default, input limit and combo list in order, the
// `CommandProximo` button and `ProgressBar1`. Non-modal: the operator
// corrects the fields, presses OK, and the same button reads "Cancel" while
// the file is built; the window stays responsive and a Cancel stops the run
// with no file written.
#pragma once

#include <QDialog>
#include <QElapsedTimer>
#include <functional>
#include <map>
#include <string>

#include "formats/form_model.h"

class QPushButton;
class QProgressBar;
class QBoxLayout;

namespace quillon {

// The foot every export form has under its fields: `ProgressBar1` and the
// `CommandProximo` button, added to `outer`.
void addFormFoot(QBoxLayout* outer, QProgressBar*& progress, QPushButton*& proximo);

class FormDialog : public QDialog {
  Q_OBJECT

 public:
  // `press` is the form's `CommandProximo` on the model; true when it wrote
  // the file.
  FormDialog(FormModel& model, std::function<bool()> press, QWidget* parent = nullptr);
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
