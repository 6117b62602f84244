#include "barra_busqueda.h"

#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QShortcut>
#include <QToolButton>

#include "lista_qt.h"
#include "pintura.h"
#include "taller.h"

namespace morvane {
namespace {

constexpr int limite_texto = 255;
constexpr int margen = 2, hueco = 4;

QWidget* en_fila(QWidget* padre) {
  auto* forma = new QWidget(padre);
  auto* fila = new QHBoxLayout(forma);
  fila->setContentsMargins(0, 0, 0, 0);
  fila->setSpacing(hueco);
  return forma;
}

QLineEdit* campo(QWidget* padre, const char* rotulo) {
  auto* texto = new QLineEdit(padre);
  auto* delante = new QLabel(QString::fromUtf8(rotulo), padre);
  delante->setBuddy(texto);
  texto->setAccessibleName(QString(delante->text()).remove(QLatin1Char('&')));
  padre->layout()->addWidget(delante);
  padre->layout()->addWidget(texto);
  return texto;
}

QToolButton* boton(QWidget* padre, const char* ayuda) {
  auto* nuevo = new QToolButton(padre);
  nuevo->setToolTip(QString::fromUtf8(ayuda));
  nuevo->setAccessibleName(nuevo->toolTip().section(QLatin1String(" ("), 0, 0));
  nuevo->setFocusPolicy(Qt::TabFocus);
  return nuevo;
}

}  // namespace

barra_busqueda::barra_busqueda(lista_filas& lista, frm_buffer& vista)
    : QWidget(lista.parentWidget()),
      lista_(lista),
      vista_(vista),
      busca_(vista.busca),
      rejilla_(new QGridLayout(this)),
      mensaje_(new QLabel(this)) {
  hide();
  setObjectName(QStringLiteral("barra_busqueda"));
  setAutoFillBackground(true);
  rejilla_->setContentsMargins(margen, margen, margen, margen);
  rejilla_->setSpacing(hueco);
  rejilla_->addWidget(de_direccion_ = hacer_direccion(), 0, 0);
  rejilla_->addWidget(de_busqueda_ = hacer_busqueda(), 0, 0);
  rejilla_->setColumnStretch(1, 1);
  mensaje_->setObjectName(QStringLiteral("mensaje"));
  mensaje_->setTextFormat(Qt::PlainText);
  mensaje_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  auto* salida = boton(this, "Cerrar (Esc)");
  salida->setText(QStringLiteral("×"));
  rejilla_->addWidget(salida, 0, 2);
  connect(salida, &QToolButton::clicked, this, [this] { cerrar(); });
  atajo(Qt::Key_Escape, this, [this] { cerrar(); });
  lista_.senalado = [this](std::size_t cual) {
    return partes_en_fila(busca_.hallado().value_or(tramo{}), cual, realce::hallado);
  };
  connect(lista_.model(), &QAbstractItemModel::modelReset, this, [this] { olvidar(); });
  lista_.viewport()->installEventFilter(this);
}

void barra_busqueda::atajo(const QKeySequence& tecla, QWidget* donde, std::function<void()> accion) {
  auto* nuevo = new QShortcut(tecla, donde);
  if (donde != this) nuevo->setContext(Qt::WidgetShortcut);
  connect(nuevo, &QShortcut::activated, this, std::move(accion));
}

QWidget* barra_busqueda::hacer_direccion() {
  QWidget* forma = en_fila(this);
  direccion_ = campo(forma, "&Ir a la dirección:");
  direccion_->setObjectName(QStringLiteral("direccion"));
  connect(direccion_, &QLineEdit::returnPressed, this, [this] { ir(); });
  return forma;
}

QWidget* barra_busqueda::hacer_busqueda() {
  QWidget* forma = en_fila(this);
  que_ = campo(forma, "B&uscar:");
  forma->layout()->addWidget(bytes_ = new QRadioButton(QStringLiteral("&Bytes"), forma));
  forma->layout()->addWidget(texto_ = new QRadioButton(QStringLiteral("&Texto"), forma));
  que_->setObjectName(QStringLiteral("que"));
  bytes_->setObjectName(QStringLiteral("bytes"));
  texto_->setObjectName(QStringLiteral("texto"));
  bytes_->setToolTip(QStringLiteral("Dos cifras hexadecimales por byte: 4E 75"));
  texto_->setToolTip(QStringLiteral("Mayúsculas y minúsculas valen lo mismo"));
  auto* atras = boton(forma, "Buscar anterior (Mayús+F3)");
  auto* adelante = boton(forma, "Buscar siguiente (F3)");
  forma->layout()->addWidget(atras);
  forma->layout()->addWidget(adelante);
  atras->setArrowType(Qt::UpArrow);
  adelante->setArrowType(Qt::DownArrow);
  que_->setMaxLength(limite_texto);
  connect(atras, &QToolButton::clicked, this, [this] { buscar(sentido::atras); });
  connect(adelante, &QToolButton::clicked, this, [this] { buscar(sentido::adelante); });
  connect(que_, &QLineEdit::returnPressed, this, [this] { buscar(sentido::adelante); });
  connect(bytes_, &QRadioButton::clicked, this, [this] { cambiar_clase(clase_busqueda::bytes); });
  connect(texto_, &QRadioButton::clicked, this, [this] { cambiar_clase(clase_busqueda::texto); });
  for (const int tecla : {Qt::Key_Return, Qt::Key_Enter}) {
    atajo(QKeySequence(int{Qt::SHIFT} | tecla), que_, [this] { buscar(sentido::atras); });
  }
  bytes_->setChecked(true);
  return forma;
}

void barra_busqueda::cambiar_clase(clase_busqueda nueva) {
  if (nueva == clase_) return;
  clase_ = nueva;
  const QString antes = que_->text();
  que_->setText(otro_);
  otro_ = antes;
  mensaje_->clear();
  que_->setFocus();
}

void barra_busqueda::pedir_direccion() {
  abrir(de_direccion_);
  direccion_->setFocus();
  direccion_->selectAll();
}

void barra_busqueda::pedir_busqueda() {
  abrir(de_busqueda_);
  que_->setFocus();
  que_->selectAll();
}

void barra_busqueda::repetir(sentido hacia) {
  if (que_->text().isEmpty()) return pedir_busqueda();
  abrir(de_busqueda_);
  buscar(hacia);
}

void barra_busqueda::abrir(QWidget* forma) {
  de_direccion_->setVisible(forma == de_direccion_);
  de_busqueda_->setVisible(forma == de_busqueda_);
  mensaje_->clear();
  show();
  raise();
  colocar();
}

void barra_busqueda::cerrar() {
  if (isHidden()) return;
  lista_.setFocus();
  hide();
  lista_.reservar(0);
}

void barra_busqueda::olvidar() {
  hide();
  lista_.reservar(0);
}

bool barra_busqueda::eventFilter(QObject* quien, QEvent* suceso) {
  if (suceso->type() == QEvent::Resize || suceso->type() == QEvent::Move) colocar();
  return QWidget::eventFilter(quien, suceso);
}

// Where there is no room for what the bar has to say beside its fields, that stands below them.
void barra_busqueda::colocar() {
  if (isHidden()) return;
  const QRect filas = lista_.viewport()->geometry().translated(lista_.pos());
  const int dicho = fontMetrics().horizontalAdvance(QStringLiteral("En 000000, vuelta al principio "));
  const bool debajo = de_busqueda_->isVisible() && sizeHint().width() + dicho > filas.width();
  rejilla_->addWidget(mensaje_, debajo ? 1 : 0, debajo ? 0 : 1, 1, debajo ? 3 : 1);
  const int alto = sizeHint().height();
  lista_.reservar(alto);
  setGeometry(filas.left(), lista_.y() + lista_.viewport()->geometry().bottom() + 1, filas.width(),
              lista_.libre_abajo());
}

void barra_busqueda::ir() {
  const bool bien = busca_.ir(direccion_->text().toStdString());
  decir(bien);
  if (!bien) return direccion_->selectAll();
  cerrar();
  ir_a_fila(*window(), vista_.lst_buf_salida, fila_hallada());
}

int barra_busqueda::fila_hallada() const {
  return busca_.hallado()->desde / static_cast<int>(bytes_por_fila);
}

void barra_busqueda::buscar(sentido hacia) {
  const int actual = lista_.currentIndex().row();
  const bool bien =
      busca_.buscar(que_->text().toStdString(), clase_, hacia, static_cast<std::size_t>(std::max(0, actual)));
  if (bien) lista_.elegir(fila_hallada());
  decir(bien);
}

void barra_busqueda::decir(bool bien) {
  lista_.viewport()->update();
  QPalette tinta = mensaje_->parentWidget()->palette();
  if (!bien) tinta.setColor(QPalette::WindowText, color_de_aviso(tinta));
  mensaje_->setPalette(tinta);
  mensaje_->setText(qt(busca_.mensaje()));
  mensaje_->setToolTip(mensaje_->text());
}

}  // namespace morvane
