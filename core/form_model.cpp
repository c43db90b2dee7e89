#include "core/form_model.h"

#include <stdexcept>

namespace quillon {

FormControl* FormModel::find(std::string_view name) {
  for (auto& c : controls)
    if (c.name == name) return &c;
  return nullptr;
}

const FormControl* FormModel::find(std::string_view name) const {
  for (const auto& c : controls)
    if (c.name == name) return &c;
  return nullptr;
}

u16& FormModel::operator[](std::string_view name) {
  FormControl* c = find(name);
  if (!c) throw std::out_of_range("form has no control " + std::string(name));
  return c->text;
}

const u16& FormModel::operator[](std::string_view name) const {
  const FormControl* c = find(name);
  if (!c) throw std::out_of_range("form has no control " + std::string(name));
  return c->text;
}

bool FormModel::setByOperator(std::string_view name, const u16& value) {
  FormControl* c = find(name);
  if (!c) return false;
  c->text = c->maxLength > 0 ? left(value, c->maxLength) : value;
  return true;
}

void FormModel::resetControls() {
  for (auto& c : controls) c.text = c.defaultText;
}

bool FormModel::show() {
  bool loading = !loaded;
  if (loading) {
    resetControls();
    loaded = true;
  }
  visible = true;
  return loading;
}

void FormModel::readyToRun() {
  cancelRequested = false;
  commandCaption = u"OK";
  commandIsDefault = true;
  progressValue = 0;
}

WriteResult FormModel::pressCommand(const std::function<WriteResult()>& generate) {
  if (commandCaption == u"OK") {
    commandCaption = u"Cancel";
    return generate();
  }
  cancelRequested = true;
  hide();
  return {};
}

WriteResult FormModel::finishRun(const std::function<WriteResult()>& write) {
  progressValue = 0;
  WriteResult written;
  if (!cancelRequested) written = write();
  cancelRequested = false;
  hide();
  return written;
}

FormControl& FormModel::add(std::string name, u16 label, u16 defaultText, int maxLength, std::vector<u16> list) {
  FormControl c;
  c.name = std::move(name);
  c.label = std::move(label);
  c.defaultText = std::move(defaultText);
  c.maxLength = maxLength;
  c.list = std::move(list);
  c.text = c.defaultText;
  controls.push_back(std::move(c));
  return controls.back();
}

}  // namespace quillon
