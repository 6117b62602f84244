#include "barra_busqueda.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QRegularExpressionValidator>
#include <QShortcut>
#include <QToolButton>

#include "lista_qt.h"
#include "taller.h"

namespace morvane {
namespace {

constexpr QRgb rojo = 0xFFA00000;
constexpr int cifras_direccion = 6, limite_texto = 255;

QHBoxLayout* en_fila(QWidget* donde, int margen) {
  auto* fila = new QHBoxLayout(donde);
  fila->setContentsMargins(margen, margen, margen, margen);
  fila->setSpacing(4);
  return fila;
}

QLineEdit* campo(QWidget* padre, const char* rotulo, const QString& admitido) {
  auto* texto = new QLineEdit(padre);
  auto* delante = new QLabel(QString::fromUtf8(rotulo), padre);
  delante->setBuddy(texto);
  texto->setAccessibleName(QString(delante->text()).remove(QLatin1Char('&')));
  texto->setValidator(new QRegularExpressionValidator(QRegularExpression(admitido), texto));
  padre->layout()->addWidget(delante);
  padre->layout()->addWidget(texto);
  return texto;
}

QToolButton* boton(QWidget* padre, const char* ayuda) {
  auto* nuevo = new QToolButton(padre);
  nuevo->setToolTip(QString::fromUtf8(ayuda));
  nuevo->setAccessibleName(nuevo->toolTip().section(QLatin1String(" ("), 0, 0));
  nuevo->setFocusPolicy(Qt::TabFocus);
  padre->layout()->addWidget(nuevo);
  return nuevo;
}

}  // namespace

barra_busqueda::barra_busqueda(lista_filas& lista, frm_buffer& vista)
    : QWidget(lista.parentWidget()), lista_(lista), vista_(vista), busca_(vista.busca), mensaje_(new QLabel) {
  hide();
  setObjectName(QStringLiteral("barra_busqueda"));
  setAutoFillBackground(true);
  QHBoxLayout* fila = en_fila(this, 2);
  fila->addWidget(de_direccion_ = hacer_direccion());
  fila->addWidget(de_busqueda_ = hacer_busqueda(), 1);
  fila->addWidget(mensaje_, 1);
  mensaje_->setObjectName(QStringLiteral("mensaje"));
  mensaje_->setTextFormat(Qt::PlainText);
  mensaje_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  mensaje_->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("En 000000, vuelta al principio.")));
  auto* salida = boton(this, "Cerrar (Esc)");
  salida->setText(QStringLiteral("×"));
  connect(salida, &QToolButton::clicked, this, [this] { cerrar(); });
  atajo(Qt::Key_Escape, this, [this] { cerrar(); });
  lista_.senalado = [this](std::size_t cual) {
    return partes_en_fila(busca_.hallado().value_or(trecho{}), cual, realce::hallado);
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
  auto* forma = new QWidget(this);
  en_fila(forma, 0);
  direccion_ = campo(forma, "&Ir a la dirección:", QStringLiteral("(0[xX])?[0-9A-Fa-f]{0,%1}").arg(cifras_direccion));
  direccion_->setObjectName(QStringLiteral("direccion"));
  connect(direccion_, &QLineEdit::returnPressed, this, [this] { ir(); });
  return forma;
}

QWidget* barra_busqueda::hacer_busqueda() {
  auto* forma = new QWidget(this);
  en_fila(forma, 0);
  que_ = campo(forma, "B&uscar:", QStringLiteral(".*"));
  forma->layout()->addWidget(bytes_ = new QRadioButton(QStringLiteral("&Bytes"), forma));
  forma->layout()->addWidget(texto_ = new QRadioButton(QStringLiteral("&Texto"), forma));
  que_->setObjectName(QStringLiteral("que"));
  bytes_->setObjectName(QStringLiteral("bytes"));
  texto_->setObjectName(QStringLiteral("texto"));
  bytes_->setToolTip(QStringLiteral("Dos cifras hexadecimales por byte: 4E 75"));
  texto_->setToolTip(QStringLiteral("Mayúsculas y minúsculas valen lo mismo"));
  auto* atras = boton(forma, "Buscar anterior (Mayús+F3)");
  auto* adelante = boton(forma, "Buscar siguiente (F3)");
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
  lista_.reservar(sizeHint().height());
  colocar();
  show();
  raise();
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

void barra_busqueda::colocar() {
  const QRect filas = lista_.viewport()->geometry().translated(lista_.pos());
  setGeometry(filas.left(), filas.bottom() + 1, filas.width(), sizeHint().height());
}

void barra_busqueda::ir() {
  const bool bien = busca_.ir(direccion_->text().toStdString());
  decir(bien);
  if (!bien) return direccion_->selectAll();
  const int fila = static_cast<int>(busca_.hallado()->dir / bytes_por_fila);
  cerrar();
  ir_a_fila(*window(), vista_.lst_buf_salida, fila);
}

void barra_busqueda::buscar(sentido hacia) {
  const int actual = lista_.currentIndex().row();
  const bool bien =
      busca_.buscar(que_->text().toStdString(), clase_, hacia, static_cast<std::size_t>(std::max(0, actual)));
  if (bien) lista_.setCurrentIndex(lista_.model()->index(static_cast<int>(busca_.hallado()->dir / bytes_por_fila), 0));
  decir(bien);
}

void barra_busqueda::decir(bool bien) {
  lista_.viewport()->update();
  QPalette tinta = mensaje_->parentWidget()->palette();
  if (!bien) tinta.setColor(QPalette::WindowText, QColor(rojo));
  mensaje_->setPalette(tinta);
  mensaje_->setText(qt(busca_.mensaje()));
  mensaje_->setToolTip(mensaje_->text());
}

}  // namespace morvane
