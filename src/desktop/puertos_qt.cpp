#include "desktop/puertos_qt.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>

#include "frases/frases.h"
#include "pintura.h"
#include "serial/puertos.h"
#include "taller.h"

namespace morvane {

namespace {

/// "COM1" to "COM9", in either case.
int numero_de(const QString& texto) {
  const bool puerto = texto.size() == 4 && texto.startsWith(QLatin1String("COM"), Qt::CaseInsensitive);
  return puerto ? std::max(0, texto.right(1).toInt()) : 0;
}

QString rotulo_de(const aparato& uno) {
  const QString ruta = qt(uno.dispositivo);
  return uno.nombre.empty() ? ruta : ruta + QStringLiteral("  —  ") + qt(uno.nombre);
}

/// Entries show an ampersand where it is written twice.
QString literal(QString texto) {
  return texto.replace(QLatin1Char('&'), QLatin1String("&&"));
}

/// Empty if nothing went wrong.
std::string frase_de(const std::optional<causa_puerto>& fallo) {
  return fallo ? frase_sin_puerto(*fallo) : std::string();
}

}  // namespace

puertos_qt::puertos_qt(ventana_qt& ventana, frm_cfg_pto_serial& f, std::filesystem::path directorio,
                       placa_simulada& placa, plataforma& plat, std::function<void()> al_cambiar)
    : QObject(&ventana),
      ventana_(ventana),
      f_(f),
      directorio_(std::move(directorio)),
      placa_(placa),
      plat_(plat),
      al_cambiar_(std::move(al_cambiar)),
      lista_(ventana.findChild<QComboBox*>(qt(f.cmb_s_puerto.Name))),
      linea_(new QLabel(ventana.centralWidget())) {
  // The menu of the dialog, here as everywhere else on it.
  lista_->setContextMenuPolicy(Qt::NoContextMenu);
  lista_->lineEdit()->setContextMenuPolicy(Qt::NoContextMenu);
  ventana_.installEventFilter(this);
  lista_->view()->installEventFilter(this);
  connect(lista_, &QComboBox::currentTextChanged, this, [this] { explicar(); });
  connect(&ventana_.contextual(), &QMenu::aboutToShow, this, [this] { llenar_menu(); });
  llenar_menu();
  poner_linea();
  poner_boton();
}

/// Between the lists and the buttons.
void puertos_qt::poner_linea() {
  const QRect lista = lista_->geometry(), salir = hijo(f_.btn_salir)->geometry(), rotulo = hijo(f_.Label2)->geometry();
  linea_->setObjectName(QStringLiteral("en_vigor"));
  linea_->setTextFormat(Qt::PlainText);
  linea_->setWordWrap(true);
  linea_->setGeometry(rotulo.left(), lista.bottom() + 1, lista.right() + 1 - rotulo.left(),
                      salir.top() - lista.bottom() - 1);
  for (const auto* combo : ventana_.findChildren<QComboBox*>()) {
    connect(combo, &QComboBox::editTextChanged, this, [this] { situar(); });
  }
  ventana_.al_cambiar([this] { situar(); });
  // Behind the handler, which changes nothing that is shown.
  connect(ventana_.findChild<QPushButton*>(qt(f_.btn_guardar.Name)), &QPushButton::clicked, this, [this] { situar(); });
}

void puertos_qt::poner_boton() {
  const QRect guardar = hijo(f_.btn_guardar)->geometry();
  const int izquierda = hijo(f_.Label2)->x();
  auto* mas = new QPushButton(QStringLiteral("&Más"), ventana_.centralWidget());
  mas->setObjectName(QStringLiteral("btn_mas"));
  mas->setAccessibleName(QStringLiteral("Más"));
  mas->setToolTip(QStringLiteral("Enlazar un adaptador, poner la placa simulada"));
  mas->setGeometry(izquierda, guardar.top(), guardar.left() - izquierda - guardar.height() / 3, guardar.height());
  mas->setMenu(&ventana_.contextual());
}

QWidget* puertos_qt::hijo(const control& cual) const {
  return ventana_.findChild<QWidget*>(qt(cual.Name));
}

void puertos_qt::situar() {
  const frm_cfg_pto_serial::situacion dicho = f_.describir();
  QPalette tinta = ventana_.centralWidget()->palette();
  if (dicho.aviso) tinta.setColor(QPalette::WindowText, color_de_aviso(tinta));
  linea_->setPalette(tinta);
  linea_->setText((dicho.aviso ? QStringLiteral("⚠ ") : QString()) + qt(dicho.texto));
  QFont letra = letra_menor(ventana_.font());
  linea_->setFont(letra);
  while (linea_->heightForWidth(linea_->width()) > linea_->height() && letra.pixelSize() > 6) {
    letra.setPixelSize(letra.pixelSize() - 1);
    linea_->setFont(letra);
  }
}

bool puertos_qt::eventFilter(QObject* quien, QEvent* suceso) {
  if (suceso->type() == QEvent::Show) explicar();
  if (suceso->type() == QEvent::WindowActivate) situar();
  return QObject::eventFilter(quien, suceso);
}

int puertos_qt::elegido() const {
  return numero_de(lista_->currentText());
}

void puertos_qt::explicar() {
  for (int i = 0; i < lista_->count(); ++i) {
    const QString que = qt(frase(placa_.describir(numero_de(lista_->itemText(i)))));
    lista_->setItemData(i, ayuda_literal(que), Qt::ToolTipRole);
  }
  const int numero = elegido();
  const QString ayuda = numero == 0 ? QString() : qt(frase(placa_.describir(numero)));
  lista_->setToolTip(ayuda_literal(ayuda));
  lista_->setAccessibleDescription(ayuda);
  situar();
}

void puertos_qt::llenar_menu() {
  QMenu& menu = ventana_.contextual();
  menu.clear();
  if (f_.sin_fichero()) {
    connect(menu.addAction(QStringLiteral("&Crear SETTINGS.TXT")), &QAction::triggered, this, [this] {
      ventana_.atender([this] { f_.crear_fichero(); });
      explicar();
    });
  }
  const int numero = elegido();
  const QString puerto = QStringLiteral("COM%1").arg(numero);
  if (numero == 0) {
    menu.addAction(QStringLiteral("Elija antes un puerto de la lista"))->setEnabled(false);
    return;
  }
  llenar_enlaces(*menu.addMenu(QStringLiteral("&Enlazar %1 con").arg(puerto)), numero);
  QAction* simulada = menu.addAction(QStringLiteral("&Placa simulada en %1").arg(puerto));
  simulada->setCheckable(true);
  simulada->setChecked(placa_.puerto() == numero);
  connect(simulada, &QAction::triggered, this, [this, numero](bool poner) {
    hacer([this, numero, poner] {
      if (poner) return placa_.poner(numero);
      placa_.quitar();
      return std::string();
    });
  });
  QAction* quitar = menu.addAction(QStringLiteral("&Quitar el enlace de %1").arg(puerto));
  quitar->setEnabled(tiene_enlace(directorio_, numero) && placa_.puerto() != numero);
  connect(quitar, &QAction::triggered, this,
          [this, numero] { hacer([this, numero] { return frase_de(quitar_enlace(directorio_, numero)); }); });
}

void puertos_qt::llenar_enlaces(QMenu& menu, int numero) {
  const std::vector<aparato> todos = aparatos();
  if (todos.empty()) menu.addAction(QStringLiteral("No hay ningún adaptador conectado"))->setEnabled(false);
  for (const aparato& uno : todos) {
    connect(menu.addAction(literal(rotulo_de(uno))), &QAction::triggered, this, [this, numero, uno] {
      hacer([this, numero, &uno] {
        if (placa_.puerto() == numero) placa_.quitar();
        return frase_de(enlazar_puerto(directorio_, numero, uno.estable));
      });
    });
  }
}

void puertos_qt::hacer(const std::function<std::string()>& cambio) {
  ventana_.atender([this, &cambio] {
    const std::string fallo = cambio();
    if (!fallo.empty()) plat_.MsgBox({"Atención", fallo, botones::Aceptar, icono::critico});
  });
  explicar();
  if (al_cambiar_) al_cambiar_();
}

}  // namespace morvane
