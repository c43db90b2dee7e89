// `ReadingSpeed`: the reading speed table. For each length of subtitle text
// up to two full rows it shows how long the subtitle stays on air at the
// session's reading speed (within the on-air limits), and the shortest time
// the fast-subtitle check lets pass; above it the speed and both thresholds.
#pragma once

#include <QDialog>

#include "core/station.h"

class QLabel;
class QTableWidget;

namespace quillon {

class ReadingSpeedDialog : public QDialog {
  Q_OBJECT

 public:
  ReadingSpeedDialog(Station& st, QWidget* parent = nullptr);
  // Rebuilds the table from the current parameters.
  void refresh();
  QTableWidget* table() const { return table_; }

 private:
  Station& st_;
  QLabel* speed_ = nullptr;
  QLabel* fast_ = nullptr;
  QLabel* slow_ = nullptr;
  QLabel* limits_ = nullptr;
  QTableWidget* table_ = nullptr;
};

}  // namespace quillon
