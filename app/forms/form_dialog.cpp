#include "app/forms/form_dialog.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QCoreApplication>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/qt_text.h"

namespace quillon {

namespace {

constexpr int kPumpEveryMs = 30;

// Controls the form shows without a caption of their own get a plain one.
QString captionFor(const FormControl& c) {
  if (!c.label.empty()) return toQString(c.label);
  static const std::map<std::string, QString> fallback = {{"ComboHorzAlign", "HorzAlign"},
                                                          {"TextXOffset", "XOffset"},
                                                          {"TextCommentArea", "Comment"},
                                                          {"ComboQC", "QC:"}};
  auto it = fallback.find(c.name);
  return it != fallback.end() ? it->second : QString::fromStdString(c.name);
}

bool isPositionBox(const std::string& name) { return name.rfind("Text_vpos", 0) == 0; }

}  // namespace

u16 widgetText(const QWidget* w) {
  if (auto* e = qobject_cast<const QLineEdit*>(w)) return fromQString(e->text());
  if (auto* c = qobject_cast<const QComboBox*>(w)) return fromQString(c->currentText());
  if (auto* p = qobject_cast<const QPlainTextEdit*>(w)) {
    // A line break in a multi-line box is CR LF, as the form always held it.
    QString t = p->toPlainText();
    t.replace(QChar('\n'), QStringLiteral("\r\n"));
    return fromQString(t);
  }
  return {};
}

void setWidgetText(QWidget* w, const u16& text) {
  if (auto* e = qobject_cast<QLineEdit*>(w)) {
    e->setText(toQString(text));
    e->setCursorPosition(0);
  } else if (auto* c = qobject_cast<QComboBox*>(w)) {
    c->setCurrentText(toQString(text));
  } else if (auto* p = qobject_cast<QPlainTextEdit*>(w)) {
    QString t = toQString(text);
    t.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    t.replace(QChar('\r'), QChar('\n'));
    p->setPlainText(t);
  }
}

FormDialog::FormDialog(FormModel& model, std::function<bool()> press, bool modal, QWidget* parent)
    : QDialog(parent), model_(model), press_(std::move(press)) {
  setWindowTitle(toQString(model_.windowTitle));
  setModal(modal);
  build();
  model_.progressMoved = [this] { showProgress(); };
  loadFromModel();
}

FormDialog::~FormDialog() { model_.progressMoved = nullptr; }

void FormDialog::build() {
  auto* outer = new QVBoxLayout(this);
  auto* grid = new QGridLayout;
  outer->addLayout(grid);
  QGroupBox* frame = nullptr;
  QGridLayout* frameGrid = nullptr;

  int plain = 0;
  for (const auto& c : model_.controls)
    if (!isPositionBox(c.name)) ++plain;
  const int rowsPerColumn = plain > 14 ? (plain + 1) / 2 : plain;

  int index = 0, positions = 0;
  for (const auto& c : model_.controls) {
    QWidget* w = nullptr;
    if (!c.list.empty()) {
      auto* combo = new QComboBox;
      // A combo also takes typed text, which its code table judges, unless
      // its list is closed.
      combo->setEditable(!c.listOnly);
      for (const auto& item : c.list) combo->addItem(toQString(item));
      w = combo;
    } else if (c.multiLine) {
      auto* box = new QPlainTextEdit;
      box->setTabChangesFocus(true);
      box->setFixedHeight(c.maxLength > 100 ? 90 : 60);
      w = box;
    } else {
      auto* line = new QLineEdit;
      if (c.maxLength > 0) line->setMaxLength(c.maxLength);
      if (c.maxLength > 0 && c.maxLength <= 8) line->setMaximumWidth(c.maxLength <= 2 ? 40 : 90);
      w = line;
    }
    w->setObjectName(QString::fromStdString(c.name));
    controls_[c.name] = w;
    auto* label = new QLabel(captionFor(c));
    label->setBuddy(w);
    if (isPositionBox(c.name)) {
      if (!frame) {
        frame = new QGroupBox(tr("Position mapping"));
        frame->setObjectName("Frame1");
        frameGrid = new QGridLayout(frame);
      }
      frameGrid->addWidget(label, positions / 5 * 2, positions % 5);
      frameGrid->addWidget(w, positions / 5 * 2 + 1, positions % 5);
      ++positions;
      continue;
    }
    const int col = index / rowsPerColumn * 2, row = index % rowsPerColumn;
    grid->addWidget(label, row, col);
    grid->addWidget(w, row, col + 1);
    ++index;
  }
  if (frame) outer->addWidget(frame);

  progress_ = new QProgressBar;
  progress_->setObjectName("ProgressBar1");
  progress_->setTextVisible(false);
  outer->addWidget(progress_);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  proximo_ = new QPushButton(tr("OK"));
  proximo_->setObjectName("CommandProximo");
  buttons->addWidget(proximo_);
  outer->addLayout(buttons);
  connect(proximo_, &QPushButton::clicked, this, &FormDialog::onProximo);
}

QWidget* FormDialog::control(const std::string& name) const {
  auto it = controls_.find(name);
  return it == controls_.end() ? nullptr : it->second;
}

void FormDialog::loadFromModel() {
  for (const auto& c : model_.controls)
    if (QWidget* w = control(c.name)) setWidgetText(w, c.text);
  proximo_->setText(toQString(model_.commandCaption));
  proximo_->setDefault(model_.commandIsDefault);
  progress_->setMaximum(std::max(1, model_.progressMax));
  progress_->setValue(std::min(model_.progressValue, progress_->maximum()));
  if (model_.visible && !isVisible()) {
    show();
    raise();
    activateWindow();
  } else if (!model_.visible && isVisible()) {
    hide();
  }
}

void FormDialog::storeToModel() {
  for (const auto& c : model_.controls)
    if (const QWidget* w = control(c.name)) model_.setByOperator(c.name, widgetText(w));
}

void FormDialog::showProgress() {
  // The generator calls this once a row: show the bar and let the window
  // breathe now and then, so that Cancel can be pressed.
  if (sincePump_.isValid() && sincePump_.elapsed() < kPumpEveryMs) return;
  progress_->setMaximum(std::max(1, model_.progressMax));
  progress_->setValue(std::min(model_.progressValue, progress_->maximum()));
  QCoreApplication::processEvents();
  sincePump_.restart();
}

void FormDialog::onProximo() {
  if (running_) {
    // Pressed during the run: the model's Cancel sets its flag and hides the
    // form; the run ends at its next row and writes nothing.
    press_();
    loadFromModel();
    return;
  }
  storeToModel();
  running_ = true;
  proximo_->setText(tr("Cancel"));
  sincePump_.invalidate();
  const bool written = press_();
  running_ = false;
  loadFromModel();
  emit runEnded(written);
}

void FormDialog::closeEvent(QCloseEvent* e) {
  if (running_) press_();
  model_.hide();
  e->accept();
}

void FormDialog::reject() {
  if (running_) press_();
  model_.hide();
  QDialog::reject();
}

}  // namespace quillon
