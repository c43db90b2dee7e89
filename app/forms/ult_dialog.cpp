#include "app/forms/ult_dialog.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/forms/form_dialog.h"
#include "app/qt_text.h"

namespace quillon {

UltDialog::UltDialog(Station& st, FormCCult& form, QWidget* parent) : QDialog(parent), st_(st), form_(form) {
  setWindowTitle(toQString(form_.title));
  setWindowModality(Qt::ApplicationModal);
  auto* outer = new QVBoxLayout(this);
  auto* fields = new QFormLayout;
  outer->addLayout(fields);
  for (const auto& f : form_.fields) {
    QWidget* w = nullptr;
    if (!f.list.empty()) {
      auto* combo = new QComboBox;
      for (const auto& item : f.list) combo->addItem(toQString(item));
      w = combo;
    } else {
      w = new QLineEdit;
    }
    w->setObjectName(QString::fromStdString(f.control));
    controls_[f.control] = w;
    fields->addRow(toQString(f.label), w);
  }
  addFormFoot(outer, progress_, proximo_);
  proximo_->setDefault(true);
  connect(proximo_, &QPushButton::clicked, this, &UltDialog::onProximo);
  progressTimer_.setInterval(30);
  connect(&progressTimer_, &QTimer::timeout, this, &UltDialog::showProgress);
  loadFromModel();
}

QWidget* UltDialog::control(const std::string& name) const {
  auto it = controls_.find(name);
  return it == controls_.end() ? nullptr : it->second;
}

void UltDialog::loadFromModel() {
  for (const auto& f : form_.fields)
    if (QWidget* w = control(f.control)) setWidgetText(w, f.value);
  proximo_->setText(toQString(form_.commandProximoCaption));
  showProgress();
  if (form_.visible && !isVisible()) show();
  else if (!form_.visible && isVisible()) hide();
}

void UltDialog::storeToModel() {
  for (auto& f : form_.fields)
    if (const QWidget* w = control(f.control)) f.value = widgetText(w);
}

void UltDialog::showProgress() {
  progress_->setMaximum(static_cast<int>(std::max(1L, form_.progressMax)));
  progress_->setValue(static_cast<int>(std::min<long>(form_.progressValue, progress_->maximum())));
}

void UltDialog::onProximo() {
  if (running_) {
    formCCultProximo(st_, form_);
    return;
  }
  storeToModel();
  running_ = true;
  proximo_->setText(tr("Cancel"));
  progressTimer_.start();
  const bool written = formCCultProximo(st_, form_).written;
  progressTimer_.stop();
  running_ = false;
  loadFromModel();
  emit runEnded(written);
}

void UltDialog::reject() {
  if (running_) formCCultProximo(st_, form_);
  form_.visible = false;
  QDialog::reject();
}

}  // namespace quillon
