#include "app/overlay_windows.h"

#include <algorithm>

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QTextBlock>
#include <QTextCursor>
#include <QVBoxLayout>

#include "app/qt_ui.h"
#include "app/vk_keys.h"
#include "simulation/overlay_windows.h"
#include "transport/keys.h"

namespace quillon {

QColor bgrColor(uint32_t c) { return QColor(int(c & 0xFF), int((c >> 8) & 0xFF), int((c >> 16) & 0xFF)); }

namespace {

Qt::Alignment qtAlignment(int a) {
  switch (a) {
    case kAlignLeft: return Qt::AlignLeft | Qt::AlignVCenter;
    case kAlignRight: return Qt::AlignRight | Qt::AlignVCenter;
    default: return Qt::AlignHCenter | Qt::AlignVCenter;
  }
}

int buttonOf(Qt::MouseButton b) {
  switch (b) {
    case Qt::RightButton: return kRightButton;
    case Qt::MiddleButton: return 4;
    default: return kLeftButton;
  }
}

bool isTab(QEvent* e) {
  if (e->type() != QEvent::KeyPress) return false;
  const int k = static_cast<QKeyEvent*>(e)->key();
  return k == Qt::Key_Tab || k == Qt::Key_Backtab;
}

int vkOf(QKeyEvent* e) { return virtualKey(e->key(), (e->modifiers() & Qt::KeypadModifier) != 0); }

void setBackground(QWidget* w, uint32_t colour) {
  QPalette p = w->palette();
  p.setColor(QPalette::Window, bgrColor(colour));
  w->setPalette(p);
  w->setAutoFillBackground(true);
}

// Renders one overlay label: caption, colour, italics, alignment.
void renderLine(QLabel* l, const OverlayLine& line, const QFont& base) {
  const QString text = toQString(line.caption).remove(u'\r').remove(u'\n');
  if (l->text() != text) l->setText(text);
  QFont f = base;
  f.setItalic(line.italic);
  if (l->font() != f) l->setFont(f);
  const QColor c = bgrColor(line.foreColor);
  if (l->palette().color(QPalette::WindowText) != c) {
    QPalette p = l->palette();
    p.setColor(QPalette::WindowText, c);
    l->setPalette(p);
  }
  if (l->alignment() != qtAlignment(line.alignment)) l->setAlignment(qtAlignment(line.alignment));
}

QLabel* overlayLabel(QWidget* parent) {
  auto* l = new QLabel(parent);
  l->setTextFormat(Qt::PlainText);
  l->setContentsMargins(4, 0, 4, 0);
  return l;
}

}  // namespace

OverlayWindow::OverlayWindow(Station& st, QWidget* owner) : QWidget(owner), st_(st) {
  setFocusPolicy(Qt::StrongFocus);
  setBackground(this, 0x000000);
  hide();
}

bool OverlayWindow::event(QEvent* e) {
  if (e->type() == QEvent::ShortcutOverride) {
    e->accept();
    return true;
  }
  return QWidget::event(e);
}

TimingOverlayWindow::TimingOverlayWindow(Station& st, QWidget* owner, const char* name, const Handlers& handlers)
    : OverlayWindow(st, owner), handlers_(handlers), layout_(new QVBoxLayout(this)) {
  setObjectName(name);
  setWindowTitle(name);
  layout_->setContentsMargins(0, 0, 0, 0);
  layout_->setSpacing(0);
}

QLabel* TimingOverlayWindow::addLabel(const QString& name) {
  QLabel* label = overlayLabel(this);
  label->setObjectName(name);
  label->installEventFilter(this);
  labels_.push_back(label);
  layout_->addWidget(label);
  return label;
}

bool TimingOverlayWindow::event(QEvent* e) {
  if (isTab(e)) {
    keyPressEvent(static_cast<QKeyEvent*>(e));
    return true;
  }
  return OverlayWindow::event(e);
}

void TimingOverlayWindow::keyPressEvent(QKeyEvent* e) {
  starting();
  handlers_.keyDown(st_, vkOf(e), shiftMask(e->modifiers()));
  done();
}

void TimingOverlayWindow::mousePressEvent(QMouseEvent* e) {
  starting();
  handlers_.mouseDown(st_, buttonOf(e->button()));
  done();
}

void TimingOverlayWindow::mouseReleaseEvent(QMouseEvent*) {
  handlers_.click(st_);
  done();
}

bool TimingOverlayWindow::eventFilter(QObject* watched, QEvent* e) {
  const bool onLabel = std::find(labels_.begin(), labels_.end(), watched) != labels_.end();
  if (onLabel && e->type() == QEvent::MouseButtonPress) {
    starting();
    handlers_.mouseDown(st_, buttonOf(static_cast<QMouseEvent*>(e)->button()));
    done();
    return true;
  }
  if (onLabel && e->type() == QEvent::MouseButtonRelease) return true;
  return OverlayWindow::eventFilter(watched, e);
}

// ---- FormaSub --------------------------------------------------------------

FormaSubWindow::FormaSubWindow(Station& st, QWidget* owner)
    : TimingOverlayWindow(st, owner, "FormaSub", {formaSubKeyDown, formaSubMouseDown, formaSubClick}) {
  lines_[0] = addLabel("Line1");
  lines_[1] = addLabel("Line2");
}

void FormaSubWindow::render(const FormaSubState& f, int fontPoints) {
  QFont base = font();
  base.setBold(true);
  base.setPointSize(fontPoints > 0 ? fontPoints : 11);
  renderLine(lines_[0], f.Line1, base);
  renderLine(lines_[1], f.Line2, base);
  // One line fills the window; two share it.
  lines_[1]->setVisible(!f.Line2.caption.empty());
  if (palette().color(QPalette::Window) != bgrColor(f.BackColor)) setBackground(this, f.BackColor);
}

// ---- FormaCC ---------------------------------------------------------------

FormaCCWindow::FormaCCWindow(Station& st, QWidget* owner)
    : TimingOverlayWindow(st, owner, "FormaCC", {formaCCKeyDown, formaCCMouseDown, formaCCClick}) {
  for (size_t i = 0; i < rows_.size(); ++i) {
    rows_[i] = addLabel(i < 4 ? QString("Labline%1").arg(i + 1) : QString("Line%1").arg(i - 3));
    rows_[i]->setContentsMargins(0, 0, 0, 0);
  }
}

void FormaCCWindow::render(const FormaCCState& f) {
  // A caption character is 150 twips wide: a fixed-pitch face of 10 pixels.
  QFont base("Monospace");
  base.setStyleHint(QFont::TypeWriter);
  base.setPixelSize(15);
  // The window is as high as its rows down to the last one written, 250
  // twips each; the empty rows under that are not drawn at all.
  int last = 0;
  for (int r = 1; r <= 4; ++r)
    if (!f.labline(r).caption.empty()) last = r;
  const bool anyRow = last > 0;
  for (int r = 1; r <= 4; ++r) {
    renderLine(rows_[static_cast<size_t>(r - 1)], f.labline(r), base);
    rows_[static_cast<size_t>(r - 1)]->setVisible(r <= last);
  }
  renderLine(rows_[4], f.Line1, base);
  renderLine(rows_[5], f.Line2, base);
  rows_[4]->setVisible(!anyRow);
  rows_[5]->setVisible(!anyRow && !f.Line2.caption.empty());
  if (palette().color(QPalette::Window) != bgrColor(f.BackColor)) setBackground(this, f.BackColor);
}

// ---- Text1 -----------------------------------------------------------------

Text1Window::Text1Window(Station& st, QWidget* owner) : OverlayWindow(st, owner), box_(new QPlainTextEdit(this)) {
  setObjectName("Text1");
  setWindowTitle("Text1");
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(box_);
  box_->setObjectName("Text1Box");
  box_->setReadOnly(true);
  box_->setTextInteractionFlags(Qt::NoTextInteraction);
  box_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  box_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  box_->setFrameStyle(0);
  QPalette p = box_->palette();
  p.setColor(QPalette::Base, QColor(0, 0, 0));
  p.setColor(QPalette::Text, QColor(255, 255, 255));
  // The part the actor should have spoken stands out in the dubbing yellow.
  p.setColor(QPalette::Highlight, QColor(255, 220, 0));
  p.setColor(QPalette::HighlightedText, QColor(0, 0, 0));
  p.setColor(QPalette::Inactive, QPalette::Highlight, QColor(255, 220, 0));
  p.setColor(QPalette::Inactive, QPalette::HighlightedText, QColor(0, 0, 0));
  box_->setPalette(p);
  QFont f = box_->font();
  f.setPointSize(11);
  f.setBold(true);
  box_->setFont(f);
  box_->installEventFilter(this);
  setFocusProxy(box_);
}

void Text1Window::render(const Text1State& t) {
  if (t.Text != shownText_) {
    // The paragraph marks of the block stay characters of the text, so
    // that the highlight's length counts them as the sweep does.
    QString text = toQString(t.Text);
    text.replace(u'\r', QChar(0x2029));
    box_->setPlainText(text);
    shownText_ = t.Text;
    shownStart_ = shownLength_ = shownAlignment_ = -1;
  }
  if (t.Alignment != shownAlignment_) {
    shownAlignment_ = t.Alignment;
    for (QTextBlock b = box_->document()->begin(); b.isValid(); b = b.next()) {
      QTextCursor c(b);
      QTextBlockFormat bf = b.blockFormat();
      bf.setAlignment(qtAlignment(t.Alignment) & Qt::AlignHorizontal_Mask);
      c.setBlockFormat(bf);
    }
  }
  if (t.SelStart != shownStart_ || t.SelLength != shownLength_) {
    shownStart_ = t.SelStart;
    shownLength_ = t.SelLength;
    const int end = box_->document()->characterCount() - 1;
    QTextCursor c(box_->document());
    c.setPosition(std::clamp(t.SelStart, 0, end));
    c.setPosition(std::clamp(t.SelStart + std::max(t.SelLength, 0), 0, end), QTextCursor::KeepAnchor);
    box_->setTextCursor(c);
  }
}

bool Text1Window::eventFilter(QObject* watched, QEvent* e) {
  if (watched == box_ && e->type() == QEvent::ShortcutOverride) {
    e->accept();
    return true;
  }
  if (watched == box_ && (e->type() == QEvent::KeyPress || isTab(e))) {
    auto* k = static_cast<QKeyEvent*>(e);
    starting();
    text1KeyDown(st_, vkOf(k), shiftMask(k->modifiers()));
    done();
    return true;
  }
  return OverlayWindow::eventFilter(watched, e);
}

// ---- frminicio -------------------------------------------------------------

SplashWindow::SplashWindow() : QWidget(nullptr, Qt::SplashScreen | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint) {
  setObjectName("frminicio");
  setWindowTitle("frminicio");
  setFixedSize(360, 200);
}

void SplashWindow::paintEvent(QPaintEvent*) {
  QPainter p(this);
  p.setRenderHint(QPainter::Antialiasing);
  QLinearGradient g(0, 0, 0, height());
  g.setColorAt(0, QColor(24, 32, 56));
  g.setColorAt(1, QColor(8, 10, 18));
  p.fillRect(rect(), g);
  p.setPen(QColor(240, 240, 240));
  QFont title = font();
  title.setPixelSize(44);
  title.setBold(true);
  title.setLetterSpacing(QFont::AbsoluteSpacing, 6);
  p.setFont(title);
  p.drawText(rect().adjusted(0, 0, 0, -50), Qt::AlignCenter, toQString(g_appTitle));
  QFont sub = font();
  sub.setPixelSize(13);
  p.setFont(sub);
  p.setPen(QColor(190, 200, 220));
  p.drawText(rect().adjusted(0, 70, 0, 0), Qt::AlignCenter, "Dubbing · Subtitling · Closed captioning");
  p.setPen(QColor(255, 210, 0));
  p.drawRect(rect().adjusted(0, 0, -1, -1));
}

}  // namespace quillon
