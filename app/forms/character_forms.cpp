#include "app/forms/character_forms.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "app/qt_text.h"
#include "dubbing/roster.h"

namespace quillon {

namespace {

void fillList(QListWidget* list, const Session::CharacterList& from) {
  QStringList names;
  for (const auto& n : from.items) names << toQString(n);
  QStringList shown;
  for (int i = 0; i < list->count(); ++i) shown << list->item(i)->text();
  if (names != shown) {
    list->clear();
    list->addItems(names);
  }
  list->setCurrentRow(from.listIndex >= 0 && from.listIndex < list->count() ? from.listIndex : -1);
}

QPushButton* button(const QString& text, const char* name) {
  auto* b = new QPushButton(text);
  b->setObjectName(name);
  return b;
}

}  // namespace

// ---- FormaPer ----------------------------------------------------------------

FormaPerDialog::FormaPerDialog(Station& st, QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint), st_(st) {
  setObjectName("FormaPer");
  setWindowTitle(tr("Character"));
  setModal(false);
  auto* outer = new QVBoxLayout(this);
  auto* label1 = new QLabel(tr("Who speaks in this block?"));
  label1->setObjectName("Label1");
  outer->addWidget(label1);
  // Qt lists hold Unicode, so names in any script show as typed.
  list_ = new QListWidget;
  list_->setObjectName("List1Unicode");
  outer->addWidget(list_);
  auto* options = new QHBoxLayout;
  option1_ = new QRadioButton(tr("Voice on"));
  option1_->setObjectName("Option1");
  option2_ = new QRadioButton(tr("Voice off"));
  option2_->setObjectName("Option2");
  options->addWidget(option1_);
  options->addWidget(option2_);
  outer->addLayout(options);
  auto* buttons = new QHBoxLayout;
  QPushButton* aceptar = button(tr("&Accept"), "Aceptar");
  aceptar->setDefault(true);
  QPushButton* nuevo = button(tr("&New"), "Nuevo");
  QPushButton* borrar = button(tr("&Delete"), "Borrar");
  QPushButton* salir = button(tr("E&xit"), "Salir");
  for (auto* b : {aceptar, nuevo, borrar, salir}) buttons->addWidget(b);
  outer->addLayout(buttons);

  connect(list_, &QListWidget::currentRowChanged, this, [this](int row) {
    if (!syncing_) st_.s.pickingList.listIndex = row;
  });
  connect(list_, &QListWidget::itemActivated, this, [this] { run(formaPerAceptar); });
  connect(aceptar, &QPushButton::clicked, this, [this] { run(formaPerAceptar); });
  connect(nuevo, &QPushButton::clicked, this, [this] { run(formaPerNuevo); });
  connect(borrar, &QPushButton::clicked, this, [this] { run(formaPerBorrar); });
  connect(salir, &QPushButton::clicked, this, [this] { run(formaPerSalir); });
  connect(option1_, &QRadioButton::clicked, this, [this] { run(formaPerOption1); });
  connect(option2_, &QRadioButton::clicked, this, [this] { run(formaPerOption2); });
}

void FormaPerDialog::run(void (*command)(Station&)) {
  st_.s.pickingList.listIndex = list_->currentRow();
  command(st_);
  syncFromSession();
  if (afterCommand) afterCommand();
}

void FormaPerDialog::syncFromSession() {
  syncing_ = true;
  fillList(list_, st_.s.pickingList);
  option1_->setChecked(st_.s.dub_voz_on);
  option2_->setChecked(!st_.s.dub_voz_on);
  syncing_ = false;
  if (st_.s.pickingFormVisible && !isVisible()) {
    show();
    raise();
    activateWindow();
    list_->setFocus();
  } else if (!st_.s.pickingFormVisible && isVisible()) {
    hide();
  }
}

void FormaPerDialog::closeEvent(QCloseEvent* e) { e->ignore(); }

void FormaPerDialog::reject() { run(formaPerSalir); }

// ---- FrmNewChar ---------------------------------------------------------------

FrmNewCharDialog::FrmNewCharDialog(Station& st, QWidget* parent) : QDialog(parent), st_(st) {
  setObjectName("FrmNewChar");
  setWindowTitle(tr("Characters"));
  setModal(false);
  auto* grid = new QGridLayout(this);
  auto* label1 = new QLabel(tr("Characters of the script:"));
  label1->setObjectName("Label1");
  list_ = new QListWidget;
  list_->setObjectName("List1");
  auto* label2 = new QLabel(tr("New character:"));
  label2->setObjectName("Label2");
  text1_ = new QLineEdit;
  text1_->setObjectName("Text1");
  label2->setBuddy(text1_);
  label3_ = new QLabel;
  label3_->setObjectName("Label3");
  QPushButton* createButton = button(tr("C&reate"), "CommandCreate");
  createButton->setDefault(true);
  QPushButton* closeButton = button(tr("&Close"), "CommandClose");
  grid->addWidget(label1, 0, 0, 1, 2);
  grid->addWidget(list_, 1, 0, 1, 2);
  grid->addWidget(label3_, 2, 0, 1, 2);
  grid->addWidget(label2, 3, 0);
  grid->addWidget(text1_, 3, 1);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(createButton);
  buttons->addWidget(closeButton);
  grid->addLayout(buttons, 4, 0, 1, 2);
  connect(createButton, &QPushButton::clicked, this, &FrmNewCharDialog::create);
  connect(text1_, &QLineEdit::returnPressed, this, &FrmNewCharDialog::create);
  connect(closeButton, &QPushButton::clicked, this, &QDialog::hide);
  syncFromSession();
}

void FrmNewCharDialog::create() {
  frmNewCharCreate(st_, fromQString(text1_->text()));
  text1_->clear();
  syncFromSession();
  if (afterCommand) afterCommand();
}

void FrmNewCharDialog::syncFromSession() {
  fillList(list_, st_.s.rosterFormList);
  label3_->setText(tr("%1 characters.").arg(st_.s.roster.numvoces));
}

}  // namespace quillon
