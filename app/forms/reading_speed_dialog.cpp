#include "app/forms/reading_speed_dialog.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include "app/qt_text.h"
#include "core/timecode.h"
#include "script/timing_helpers.h"

namespace quillon {

namespace {
QString seconds(double v) { return toQString(formatNumber(v, "0.00")); }
}  // namespace

ReadingSpeedDialog::ReadingSpeedDialog(Station& st, QWidget* parent) : QDialog(parent), st_(st) {
  setObjectName("ReadingSpeed");
  setWindowTitle(tr("Reading speed table"));
  setModal(false);
  auto* outer = new QVBoxLayout(this);
  for (QLabel** l : {&speed_, &fast_, &slow_, &limits_}) {
    *l = new QLabel;
    outer->addWidget(*l);
  }
  speed_->setObjectName("LabelSpeed");
  table_ = new QTableWidget(0, 4);
  table_->setObjectName("TableReadingSpeed");
  table_->setHorizontalHeaderLabels(
      {tr("Characters"), tr("On air (s)"), tr("On air (SS:FF)"), tr("Shortest accepted (s)")});
  table_->verticalHeader()->setVisible(false);
  table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  table_->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
  outer->addWidget(table_);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  auto* close = new QPushButton(tr("&Close"));
  close->setObjectName("CommandClose");
  close->setDefault(true);
  buttons->addWidget(close);
  outer->addLayout(buttons);
  connect(close, &QPushButton::clicked, this, &QDialog::hide);
  resize(520, 560);
  refresh();
}

void ReadingSpeedDialog::refresh() {
  const Session& s = st_.s;
  const double speed = s.readingSpeed;
  const double fastCps = (s.fastThreshold / 100 + 1) * speed;
  speed_->setText(tr("Reading speed: %1 characters per second").arg(toQString(formatNumber(speed, "00"))));
  fast_->setText(tr("Too fast above %1 characters per second (%2% over)")
                     .arg(seconds(fastCps))
                     .arg(toQString(numberText(s.fastThreshold))));
  slow_->setText(s.slowThreshold == 0 ? tr("Slow subtitles are not checked")
                                      : tr("Too slow below %1 characters per second (%2% under)")
                                            .arg(seconds((1 - s.slowThreshold / 100) * speed))
                                            .arg(toQString(numberText(s.slowThreshold))));
  limits_->setText(tr("On air from %1 to %2 seconds; %3 characters per row. Checks %4.")
                       .arg(seconds(s.minOnAir1), seconds(s.maxOnAir), toQString(numberText(s.maxCharsRow)),
                            s.readingSpeedCheck ? tr("on") : tr("off")));
  // Two full rows and the line break between them.
  const int rows = std::max(1, 2 * s.maxCharsRow + 1);
  table_->setRowCount(rows);
  for (int chars = 1; chars <= rows; ++chars) {
    const double onAir = autoDuration(s, chars);
    const QString cells[] = {QString::number(chars), seconds(onAir), toQString(right(SEGaTC(onAir, st_.fps()), 5)),
                             seconds(fastCps > 0 ? chars / fastCps : 0)};
    for (int c = 0; c < 4; ++c) {
      auto* item = new QTableWidgetItem(cells[c]);
      item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
      table_->setItem(chars - 1, c, item);
    }
  }
}

}  // namespace quillon
