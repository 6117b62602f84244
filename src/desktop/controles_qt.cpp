#include <QAbstractItemView>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <algorithm>

#include "imagenes.h"
#include "taller.h"

namespace morvane {
namespace {

/// Names a control after its label, which then leads to it.
void etiquetar(QWidget& padre, QWidget* destino, const Label* etiqueta, const std::string& nombre) {
  const std::string rotulo = etiqueta != nullptr ? etiqueta->Caption.valor() : std::string();
  destino->setAccessibleName(nombre_accesible(rotulo, {}, nombre));
  if (etiqueta == nullptr) return;
  if (auto* su_etiqueta = padre.findChild<QLabel*>(qt(etiqueta->Name))) su_etiqueta->setBuddy(destino);
}

void hacer(QWidget& padre, TextBox& origen, taller& t) {
  auto* destino = new QLineEdit(&padre);
  mantener(destino, origen, t);
  etiquetar(padre, destino, origen.etiqueta, origen.Name);
  t.al_cambiar([destino, &origen] {
    const QString texto = qt(origen.Text);
    if (destino->text() != texto) destino->setText(texto);
  });
  QObject::connect(destino, &QLineEdit::textChanged, destino,
                   [&origen](const QString& texto) { origen.Text = texto.toStdString(); });
}

/// A combo box takes a typed text that equals an entry for a choice, on Enter and when the focus leaves. Here what is
/// typed chooses nothing.
void no_elegir_por_texto(QComboBox& combo) {
  QObject::disconnect(combo.lineEdit(), &QLineEdit::returnPressed, &combo, nullptr);
  QObject::disconnect(combo.lineEdit(), &QLineEdit::editingFinished, &combo, nullptr);
}

void poner_texto(QComboBox& destino, const QString& texto) {
  if (destino.currentText() == texto) return;
  const int entrada = destino.findText(texto, Qt::MatchExactly | Qt::MatchCaseSensitive);
  destino.setCurrentIndex(entrada);
  destino.setEditText(texto);
}

void hacer(QWidget& padre, ComboBox& origen, taller& t) {
  auto* destino = new QComboBox(&padre);
  destino->setEditable(true);
  destino->setInsertPolicy(QComboBox::NoInsert);
  destino->setCompleter(nullptr);
  mantener(destino, origen, t);
  etiquetar(padre, destino, origen.etiqueta, origen.Name);
  for (const std::string& entrada : origen.List) destino->addItem(qt(entrada));
  destino->lineEdit()->setAccessibleName(destino->accessibleName());
  destino->view()->setAccessibleName(destino->accessibleName());
  no_elegir_por_texto(*destino);
  t.al_cambiar([destino, &origen] { poner_texto(*destino, qt(origen.Text)); });
  QObject::connect(destino->lineEdit(), &QLineEdit::textEdited, destino,
                   [&origen](const QString& texto) { origen.Text = texto.toStdString(); });
  QObject::connect(destino, &QComboBox::activated, destino, [&origen, destino, atender = t.atender] {
    origen.Text = destino->currentText().toStdString();
    atender(origen.Click);
  });
}

void hacer(QWidget& padre, CommandButton& origen, taller& t) {
  auto* destino = new QPushButton(&padre);
  mantener(destino, origen, t);
  destino->setToolTip(qt(origen.ToolTipText));
  if (!origen.Picture.empty()) {
    const int lado = std::min({destino->width() - 8, destino->height() - 8, t.imagen(32)});
    destino->setIcon(imagen(origen.Picture));
    destino->setIconSize({lado, lado});
  }
  t.al_cambiar([destino, &origen] {
    destino->setText(qt(origen.Caption));
    destino->setAccessibleName(nombre_accesible(origen.Caption, origen.ToolTipText, origen.Name));
  });
  QObject::connect(destino, &QPushButton::clicked, destino, [&origen, atender = t.atender] { atender(origen.Click); });
}

void hacer(QWidget& padre, ProgressBar& origen, taller& t) {
  hacer_progreso(padre, origen, t);
}

/// A panel that appears is there to be filled in.
void enfocar_primero(const QWidget& panel) {
  for (auto* control : panel.findChildren<QWidget*>()) {
    if (control->focusPolicy() & Qt::TabFocus) return control->setFocus();
  }
}

void hacer(QWidget& padre, Frame& origen, taller& t) {
  auto* destino = new QGroupBox(&padre);
  mantener(destino, origen, t);
  t.al_cambiar([destino, &origen] { destino->setTitle(qt(origen.Caption)); });
  hacer_controles(*destino, origen.Controls, t);
  t.al_cambiar([destino, estaba = true]() mutable {
    const bool esta = !destino->isHidden();
    if (esta && !estaba) enfocar_primero(*destino);
    estaba = esta;
  });
}

}  // namespace

QWidget* hacer_progreso(QWidget& padre, ProgressBar& origen, taller& t) {
  auto* destino = new QProgressBar(&padre);
  destino->setRange(origen.Min, origen.Max);
  destino->setTextVisible(false);
  destino->setAccessibleName(qt(origen.Name));
  destino->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
  mantener(destino, origen, t);
  t.al_cambiar([destino, &origen] { destino->setValue(origen.Value); });
  return destino;
}

void hacer_controles(QWidget& padre, const std::vector<cualquier_control>& controles, taller& t) {
  for (const cualquier_control& uno : controles) {
    std::visit([&](auto* origen) { hacer(padre, *origen, t); }, uno);
  }
}

}  // namespace morvane
