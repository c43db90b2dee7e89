#include "app/qt_ui.h"

#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QFileDialog>
#include <QInputDialog>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QStringList>
#include <QTime>

#include "core/station.h"

namespace quillon {

QString qtFileFilter(const u16& filter) {
  const QStringList parts = toQString(filter).split(u'|');
  QStringList out;
  for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
    QString patterns = parts[i + 1];
    patterns.replace(u';', u' ');
    out << parts[i] + " (" + patterns + ")";
  }
  if (parts.size() % 2 == 1 && !parts.back().isEmpty()) out << parts.back();
  return out.join(";;");
}

namespace {

QMessageBox::Icon qtIcon(Icon i) {
  switch (i) {
    case Icon::Critical: return QMessageBox::Critical;
    case Icon::Question: return QMessageBox::Question;
    case Icon::Exclamation: return QMessageBox::Warning;
    case Icon::Information: return QMessageBox::Information;
    case Icon::None: break;
  }
  return QMessageBox::NoIcon;
}

struct ButtonSpec {
  QMessageBox::StandardButton qt;
  Answer answer;
};

std::vector<ButtonSpec> buttonsOf(Buttons b) {
  using M = QMessageBox;
  switch (b) {
    case Buttons::OK: return {{M::Ok, Answer::OK}};
    case Buttons::OKCancel: return {{M::Ok, Answer::OK}, {M::Cancel, Answer::Cancel}};
    case Buttons::YesNo: return {{M::Yes, Answer::Yes}, {M::No, Answer::No}};
    case Buttons::YesNoCancel: return {{M::Yes, Answer::Yes}, {M::No, Answer::No}, {M::Cancel, Answer::Cancel}};
    case Buttons::RetryCancel: return {{M::Retry, Answer::Retry}, {M::Cancel, Answer::Cancel}};
    case Buttons::AbortRetryIgnore:
      return {{M::Abort, Answer::Abort}, {M::Retry, Answer::Retry}, {M::Ignore, Answer::Ignore}};
  }
  return {{M::Ok, Answer::OK}};
}

// The answer a box gives when closed without a button: its Cancel, else
// the only button there is.
Answer closedAnswer(const std::vector<ButtonSpec>& specs) {
  for (const auto& s : specs)
    if (s.answer == Answer::Cancel) return Answer::Cancel;
  return specs.size() == 1 ? specs.front().answer : specs.back().answer;
}

QString titleOf(const u16& title) { return toQString(title.empty() ? g_appTitle : title); }

QString startPath(const FileDialogRequest& req) {
  QString dir = toQString(req.initialDir);
  QString name = toQString(req.defaultName);
  if (dir.isEmpty()) return name;
  return name.isEmpty() ? dir : QDir(dir).filePath(name);
}

}  // namespace

QWidget* QtUi::prepareDialog() const {
  if (beforeDialog) beforeDialog();
  return dialogParent ? dialogParent() : nullptr;
}

Answer QtUi::messageBox(const MessageBoxRequest& box) {
  const auto specs = buttonsOf(box.buttons);
  QMessageBox mb(qtIcon(box.icon), titleOf(box.title), toQString(box.text), QMessageBox::NoButton, prepareDialog());
  QString text = toQString(box.text);
  text.replace(u'\r', u'\n');
  // A subtitle's own text may start like markup (an imported "<I>"): the
  // box shows the characters, never formatting.
  mb.setTextFormat(Qt::PlainText);
  mb.setText(text);
  std::vector<QAbstractButton*> made;
  for (const auto& s : specs) made.push_back(mb.addButton(s.qt));
  const size_t def = static_cast<size_t>(box.defaultButton >= 1 ? box.defaultButton : 1) - 1;
  if (def < made.size()) mb.setDefaultButton(static_cast<QPushButton*>(made[def]));
  // The box waits with the hourglass off, as the operator must click.
  const bool busy = QApplication::overrideCursor() != nullptr;
  if (busy) QApplication::setOverrideCursor(Qt::ArrowCursor);
  mb.exec();
  if (busy) QApplication::restoreOverrideCursor();
  QAbstractButton* clicked = mb.clickedButton();
  for (size_t i = 0; i < made.size(); ++i)
    if (made[i] == clicked) return specs[i].answer;
  return closedAnswer(specs);
}

std::optional<u16> QtUi::inputBox(const u16& prompt, const u16& title, const u16& defaultText) {
  bool ok = false;
  QString prompted = toQString(prompt);
  prompted.replace(u'\r', u'\n');
  QInputDialog dialog(prepareDialog());
  dialog.setWindowTitle(titleOf(title));
  dialog.setInputMode(QInputDialog::TextInput);
  dialog.setLabelText(prompted);
  dialog.setTextValue(toQString(defaultText));
  for (QLabel* label : dialog.findChildren<QLabel*>()) label->setTextFormat(Qt::PlainText);
  ok = dialog.exec() == QDialog::Accepted;
  if (!ok) return std::nullopt;
  return fromQString(dialog.textValue());
}

std::optional<std::string> QtUi::openFileDialog(const FileDialogRequest& req) {
  QString path = QFileDialog::getOpenFileName(prepareDialog(), toQString(req.title), startPath(req), qtFileFilter(req.filter));
  if (path.isEmpty()) return std::nullopt;
  return path.toStdString();
}

std::optional<std::string> QtUi::saveFileDialog(const FileDialogRequest& req) {
  QString path = QFileDialog::getSaveFileName(prepareDialog(), toQString(req.title), startPath(req), qtFileFilter(req.filter));
  if (path.isEmpty()) return std::nullopt;
  return path.toStdString();
}

void QtUi::setClipboard(const u16& text) { QGuiApplication::clipboard()->setText(toQString(text)); }

u16 QtUi::clipboard() { return fromQString(QGuiApplication::clipboard()->text()); }

void QtUi::clearClipboard() { QGuiApplication::clipboard()->clear(); }

void QtUi::setPointer(Pointer p) {
  if (p == pointer_) return;
  pointer_ = p;
  if (p == Pointer::Hourglass)
    QApplication::setOverrideCursor(Qt::WaitCursor);
  else
    while (QApplication::overrideCursor()) QApplication::restoreOverrideCursor();
}

void QtUi::pumpEvents() {
  ++pumps_;
  if (beforePump) beforePump();
  QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

double QtUi::timeOfDay() { return QTime::currentTime().msecsSinceStartOfDay() / 1000.0; }

}  // namespace quillon
