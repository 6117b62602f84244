#include "dialogos.h"

#include <QClipboard>
#include <QCloseEvent>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QGridLayout>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QStringList>
#include <QStyle>
#include <span>

#include "conversiones.h"
#include "desktop/plataforma_qt.h"
#include "imagenes.h"
#include "platform/rutas.h"

namespace morvane {
namespace {

struct tecla_caja {
  const char* rotulo;
  respuesta_caja valor;
  QMessageBox::ButtonRole papel;
};

constexpr tecla_caja teclas[] = {
    {"Aceptar", vbOK, QMessageBox::AcceptRole},
    {"Cancelar", vbCancel, QMessageBox::RejectRole},
    {"Sí", vbYes, QMessageBox::YesRole},
    {"No", vbNo, QMessageBox::NoRole},
};

/// Only the question after a missing reply has three buttons, and its text tells of one alone what it does.
const char* ayuda_de(respuesta_caja valor) {
  switch (valor) {
    case vbYes:
      return "Envía otra vez «A», que abre el chip, y espera la respuesta";
    case vbNo:
      return "Cierra el programa en el acto";
    case vbCancel:
      return "Deja esta orden y vuelve al programa";
    default:
      return "";
  }
}

const tecla_caja& tecla_de(respuesta_caja valor) {
  for (const tecla_caja& una : teclas) {
    if (una.valor == valor) return una;
  }
  return teclas[0];
}

std::span<const respuesta_caja> juego_de(botones cuales) {
  static constexpr respuesta_caja aceptar[] = {vbOK, vbCancel};
  static constexpr respuesta_caja preguntar[] = {vbYes, vbNo, vbCancel};
  switch (cuales) {
    case botones::Aceptar:
      return std::span(aceptar).first(1);
    case botones::AceptarCancelar:
      return aceptar;
    case botones::SiNo:
      return std::span(preguntar).first(2);
    case botones::SiNoCancelar:
      return preguntar;
  }
  return std::span(aceptar).first(1);
}

QMessageBox::Icon dibujo_de(icono cual) {
  switch (cual) {
    case icono::critico:
      return QMessageBox::Critical;
    case icono::exclamacion:
      return QMessageBox::Warning;
    case icono::informacion:
      return QMessageBox::Information;
    case icono::ninguno:
      break;
  }
  return QMessageBox::NoIcon;
}

/// The patterns of one of Qt's filters, "A (*.s19)".
QStringList formas_de(const QString& filtro) {
  const QString dentro = filtro.section(QLatin1Char('('), -1).section(QLatin1Char(')'), 0, 0);
  return dentro.split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

/// "A (*.s19)|*.s19|B (*.bin)|*.bin" as Qt's list of filters, which put the patterns into brackets.
QStringList filtros_de(const std::string& filtro) {
  const QStringList partes = QString::fromStdString(filtro).split(QLatin1Char('|'));
  QStringList filtros;
  for (qsizetype i = 0; i + 1 < partes.size(); i += 2) {
    const QString descripcion = partes[i].section(QLatin1Char('('), 0, 0).trimmed();
    const QString patrones = QString(partes[i + 1]).replace(QLatin1Char(';'), QLatin1Char(' '));
    filtros << QStringLiteral("%1 (%2)").arg(descripcion, patrones);
  }
  return filtros;
}

const char* nombre_de(QMessageBox::Icon dibujo) {
  switch (dibujo) {
    case QMessageBox::Critical:
      return "Error";
    case QMessageBox::Warning:
      return "Advertencia";
    case QMessageBox::Information:
      return "Información";
    default:
      return "";
  }
}

/// Its file among the program's images.
const char* imagen_de(QMessageBox::Icon dibujo) {
  switch (dibujo) {
    case QMessageBox::Critical:
      return "caja_error";
    case QMessageBox::Warning:
      return "caja_advertencia";
    case QMessageBox::Information:
      return "caja_informacion";
    case QMessageBox::Question:
      return "caja_pregunta";
    default:
      return "";
  }
}

/// Qt's own picture is of one size, and blurred on a fine screen.
void dibujar_icono(QLabel& rotulo, const QMessageBox& caja) {
  const int lado = caja.style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, &caja);
  rotulo.setPixmap(imagen(imagen_de(caja.icon())).pixmap(QSize(lado, lado), caja.devicePixelRatioF()));
  rotulo.setAccessibleName(QString::fromUtf8(nombre_de(caja.icon())));
}

/// Names what Qt leaves nameless, and lets the keyboard reach the text, to mark and copy parts of it.
void nombrar_partes(QMessageBox& caja) {
  for (auto* rotulo : caja.findChildren<QLabel*>()) {
    if (!rotulo->pixmap().isNull()) dibujar_icono(*rotulo, caja);
    const bool texto = rotulo->text() == caja.text(), causa = rotulo->text() == caja.informativeText();
    if (!rotulo->text().isEmpty() && (texto || causa)) rotulo->setFocusPolicy(Qt::StrongFocus);
    if (causa) rotulo->setTextFormat(Qt::PlainText);
  }
  for (auto* respuestas : caja.findChildren<QDialogButtonBox*>()) {
    respuestas->setAccessibleName(QStringLiteral("Respuestas"));
  }
}

/// Boxes are as wide as their text; the title, which stands above it, may be longer. The room is for what else a window
/// manager puts there.
void dar_ancho_al_titulo(QMessageBox& caja) {
  const int botones_de_la_ventana = 6 * caja.fontMetrics().height();
  const int ancho = caja.fontMetrics().horizontalAdvance(caja.windowTitle()) + botones_de_la_ventana;
  auto* rejilla = qobject_cast<QGridLayout*>(caja.layout());
  if (rejilla == nullptr) return;
  rejilla->addItem(new QSpacerItem(ancho, 0), rejilla->rowCount(), 0, 1, rejilla->columnCount());
}

}  // namespace

ventana_caja::ventana_caja(const caja& mensaje, const std::string& explicacion, QWidget* duena) : QMessageBox(duena) {
  setWindowTitle(QString::fromStdString(mensaje.titulo.empty() ? titulo_aplicacion : mensaje.titulo));
  setTextFormat(Qt::PlainText);
  setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  setText(QString::fromStdString(mensaje.texto).replace(QLatin1String("\r\n"), QLatin1String("\n")));
  setIcon(dibujo_de(mensaje.dibujo));
  const auto juego = juego_de(mensaje.teclas);
  for (const respuesta_caja una : juego) {
    QPushButton* boton = anadir(una);
    if (mensaje.teclas == botones::SiNoCancelar) boton->setToolTip(QString::fromUtf8(ayuda_de(una)));
  }
  if (juego.size() == 1) escape_ = buttons().first();
  if (!explicacion.empty()) setInformativeText(QString::fromStdString(explicacion));
  nombrar_partes(*this);
  dar_ancho_al_titulo(*this);
}

QPushButton* ventana_caja::anadir(respuesta_caja valor) {
  const tecla_caja& tecla = tecla_de(valor);
  QPushButton* boton = addButton(QString::fromUtf8(tecla.rotulo), tecla.papel);
  if (buttons().size() == 1) setDefaultButton(boton);
  if (valor == vbCancel) escape_ = boton;
  connect(boton, &QPushButton::clicked, this, [this, valor] { respuesta_ = valor; });
  return boton;
}

void ventana_caja::keyPressEvent(QKeyEvent* tecla) {
  if (tecla->matches(QKeySequence::Copy)) return QGuiApplication::clipboard()->setText(todo());
  const bool escapar = tecla->key() == Qt::Key_Escape;
  const bool sola = (tecla->modifiers() & ~(Qt::AltModifier | Qt::ShiftModifier | Qt::KeypadModifier)) == 0;
  QAbstractButton* boton = escapar ? escape_ : con_inicial(sola ? tecla->text() : QString());
  if (boton != nullptr) boton->click();
  if (boton == nullptr && !escapar) QMessageBox::keyPressEvent(tecla);
}

QString ventana_caja::todo() const {
  const QString explicacion = informativeText().isEmpty() ? QString() : QLatin1String("\n\n") + informativeText();
  return windowTitle() + QLatin1String("\n\n") + text() + explicacion;
}

QAbstractButton* ventana_caja::con_inicial(const QString& letra) const {
  if (letra.isEmpty()) return nullptr;
  for (QAbstractButton* boton : buttons()) {
    if (boton->text().startsWith(letra, Qt::CaseInsensitive)) return boton;
  }
  return nullptr;
}

// QMessageBox would press a button of its own choice, No among them.
void ventana_caja::closeEvent(QCloseEvent* suceso) {
  suceso->accept();
}

dialogo_abrir::dialogo_abrir(const CommonDialog& descripcion, QWidget* duena, std::function<void(const caja&)> avisar)
    : QFileDialog(duena, QStringLiteral("Abrir")), avisar_(std::move(avisar)) {
  setObjectName(QString::fromStdString(descripcion.Name));
  setOption(QFileDialog::DontUseNativeDialog);
  setFileMode(QFileDialog::ExistingFile);
  setNameFilters(filtros_de(descripcion.Filter));
  if (!descripcion.InitDir.empty()) setDirectory(qt(ruta_de(descripcion.InitDir)));
  setLabelText(QFileDialog::LookIn, QStringLiteral("Buscar en:"));
  setLabelText(QFileDialog::FileName, QStringLiteral("&Nombre de archivo:"));
  setLabelText(QFileDialog::FileType, QStringLiteral("Archivos de tipo:"));
  setLabelText(QFileDialog::Accept, QStringLiteral("&Abrir"));
  setLabelText(QFileDialog::Reject, QStringLiteral("Cancelar"));
  for (auto* respuestas : findChildren<QDialogButtonBox*>()) {
    respuestas->setAccessibleName(QStringLiteral("Respuestas"));
  }
  for (auto* columnas : findChildren<QHeaderView*>()) columnas->setSectionResizeMode(QHeaderView::ResizeToContents);
  // Qt's own size is that of a small font.
  const int renglon = fontMetrics().height();
  resize(QSize(44 * renglon, 30 * renglon).boundedTo(screen()->availableSize() * 9 / 10));
}

void dialogo_abrir::accept() {
  const QFileInfo elegido(selectedFiles().value(0));
  QStringList formas;
  for (const QString& filtro : nameFilters()) formas += formas_de(filtro);
  if (!elegido.isFile() || QDir::match(formas, elegido.fileName())) return QFileDialog::accept();
  const std::string texto = elegido.fileName().toStdString() +
                            " no es de un tipo que se pueda abrir: " + formas.join(QStringLiteral(", ")).toStdString();
  avisar_({.titulo = "Abrir", .texto = texto, .teclas = botones::Aceptar, .dibujo = icono::exclamacion});
}

std::string dialogo_abrir::ruta() const {
  if (result() != QDialog::Accepted || selectedFiles().isEmpty()) return {};
  return texto_de(ruta_qt(selectedFiles().first()));
}

}  // namespace morvane
