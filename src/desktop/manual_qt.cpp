#include "desktop/manual_qt.h"

#include <QApplication>
#include <QDesktopServices>
#include <QFileDialog>
#include <QGroupBox>
#include <QKeyEvent>
#include <QMessageBox>
#include <QScreen>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextBrowser>
#include <QVBoxLayout>
#include <QWindow>
#include <algorithm>
#include <array>
#include <string_view>

#include "desktop/mapa_qt.h"

// The resources lie in a static library, whose initializers the linker would leave out. Must stand in no namespace.
static void cargar_manual() {
  Q_INIT_RESOURCE(manual);
}

namespace morvane {
namespace {

constexpr const char* titulo_mensajes = "10. Los mensajes: causa y remedio";

/// The heading for each window, by its name.
constexpr std::array<std::pair<const char*, const char*>, 6> titulos{{
    {"frm_principal", "2. La ventana"},
    {"frm_cfg_pto_serial", "3. El puerto y la placa"},
    {"frm_buffer_out", "6. Ver y comparar"},
    {"frm_buffer_in", "6. Ver y comparar"},
    {"frm_buffer_comp", "6. Ver y comparar"},
    {"frmAbout", "13. Dónde guarda el programa sus archivos"},
}};

/// What a link to a heading is made of: letters, digits and hyphens alone.
QString ancla_de(const QString& titulo) {
  QString ancla;
  for (const QChar c : titulo.toLower()) {
    if (c.isLetterOrNumber() || c == QLatin1Char('-')) ancla += c;
    if (c == QLatin1Char(' ')) ancla += QLatin1Char('-');
  }
  return ancla;
}

/// The place of a box: its text, as far as its first line goes.
lugar_del_manual lugar_de_caja(const QMessageBox& caja) {
  return {QString::fromUtf8(titulo_mensajes), caja.text().section(QLatin1Char('\n'), 0, 0).trimmed()};
}

lugar_del_manual lugar_de_ventana(const QWidget& ventana) {
  const QString nombre = ventana.objectName();
  const auto* rango = ventana.findChild<QGroupBox*>(QStringLiteral("fra_rango"));
  if (rango != nullptr && rango->isVisible()) return {QStringLiteral("Upload > Leer de la flash (Rango)"), {}};
  if (dynamic_cast<mapa_qt*>(ventana.focusWidget()) != nullptr) return {QStringLiteral("7. El mapa de la flash"), {}};
  for (const auto& [suya, titulo] : titulos) {
    if (nombre == QLatin1String(suya)) return {QString::fromUtf8(titulo), {}};
  }
  return {};
}

}  // namespace

manual_qt::manual_qt() : hoja_(new QTextBrowser(this)) {
  cargar_manual();
  setObjectName(QStringLiteral("manual"));
  setWindowTitle(QStringLiteral("Manual de Morvane"));
  hoja_->setAccessibleName(QStringLiteral("Manual"));
  hoja_->setOpenLinks(false);
  hoja_->setSource(QUrl(QStringLiteral("qrc:/manual/manual.md")), QTextDocument::MarkdownResource);
  connect(hoja_, &QTextBrowser::anchorClicked, this, [this](const QUrl& enlace) { seguir(enlace); });
  auto* todo = new QVBoxLayout(this);
  todo->setContentsMargins(0, 0, 0, 0);
  todo->addWidget(hoja_);
  const int renglon = fontMetrics().height();
  resize(QSize(60 * renglon, 44 * renglon).boundedTo(screen()->availableSize() * 9 / 10));
}

bool manual_qt::abrir(const lugar_del_manual& donde, QWidget* encima) {
  // What belongs to a box is not blocked by it.
  const bool visible = isVisible();
  if (encima != nullptr && parentWidget() != encima) {
    const QRect sitio = geometry();
    setParent(encima, Qt::Window);
    if (visible) setGeometry(sitio);
    encima->installEventFilter(this);
  }
  show();
  raise();
  activateWindow();
  if (hoja_->source().fileName() != QLatin1String("manual.md")) seguir(QUrl(QStringLiteral("manual.md")));
  const bool hay = ir_a(donde.titulo);
  if (hay && !donde.texto.isEmpty()) buscar(donde.texto);
  return hay;
}

bool manual_qt::ir_a(const QString& titulo) {
  QTextCursor sitio(hoja_->document());
  bool hay = false;
  for (QTextBlock uno = hoja_->document()->begin(); uno.isValid() && !hay; uno = uno.next()) {
    hay =
        uno.blockFormat().headingLevel() > 0 && ancla_de(uno.text()).startsWith(ancla_de(titulo)) && !titulo.isEmpty();
    if (hay) sitio = QTextCursor(uno);
  }
  // From the end upwards the view comes to rest with the place at its upper edge.
  hoja_->moveCursor(QTextCursor::End);
  hoja_->setTextCursor(sitio);
  return hay;
}

void manual_qt::buscar(const QString& texto) {
  const QTextCursor hallado = hoja_->document()->find(texto, hoja_->textCursor());
  if (hallado.isNull()) return;
  hoja_->moveCursor(QTextCursor::End);
  hoja_->setTextCursor(hallado);
  constexpr int renglones_de_una_casilla = 4;
  QScrollBar& barra = *hoja_->verticalScrollBar();
  barra.setValue(barra.value() - renglones_de_una_casilla * fontMetrics().height());
}

void manual_qt::seguir(const QUrl& enlace) {
  if (!enlace.isRelative()) {
    QDesktopServices::openUrl(enlace);
    return;
  }
  QUrl destino = hoja_->source().resolved(enlace);
  const QString ancla = destino.fragment(QUrl::FullyDecoded);
  destino.setFragment({});
  if (destino != hoja_->source()) hoja_->setSource(destino, QTextDocument::MarkdownResource);
  if (!ancla.isEmpty()) ir_a(ancla);
}

void manual_qt::keyPressEvent(QKeyEvent* tecla) {
  if (tecla->key() == Qt::Key_Escape) close();
}

/// A box takes what belongs to it along when it goes.
void manual_qt::soltar() {
  const QRect sitio = geometry();
  const bool visible = isVisible();
  parentWidget()->removeEventFilter(this);
  setParent(nullptr, Qt::Window);
  setGeometry(sitio);
  setVisible(visible);
}

bool manual_qt::eventFilter(QObject* quien, QEvent* suceso) {
  if (suceso->type() == QEvent::Hide && quien == parentWidget()) soltar();
  return QWidget::eventFilter(quien, suceso);
}

lugar_del_manual lugar_para_lo_de_delante(const QWidget& ventana) {
  if (const auto* caja = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) return lugar_de_caja(*caja);
  if (qobject_cast<QFileDialog*>(QApplication::activeModalWidget()) != nullptr) {
    return {QStringLiteral("4. Los archivos de firmware"), {}};
  }
  return lugar_de_ventana(ventana);
}

ayuda_f1::ayuda_f1(QWidget& principal) : principal_(principal) {
  qApp->installEventFilter(this);
}

ayuda_f1::~ayuda_f1() = default;

void ayuda_f1::cerrar() {
  manual_.reset();
}

bool ayuda_f1::eventFilter(QObject* quien, QEvent* suceso) {
  if (suceso->type() != QEvent::KeyPress || !quien->isWindowType() || !principal_.isVisible()) return false;
  const auto& tecla = *static_cast<QKeyEvent*>(suceso);
  if (tecla.key() != Qt::Key_F1 || tecla.modifiers() != Qt::NoModifier || tecla.isAutoRepeat()) return false;
  const auto ventanas = QApplication::topLevelWidgets();
  const auto suya = std::ranges::find(ventanas, quien, [](const QWidget* una) { return una->windowHandle(); });
  if (suya == ventanas.end() || *suya == manual_.get()) return false;
  if (!manual_) manual_ = std::make_unique<manual_qt>();
  manual_->abrir(lugar_para_lo_de_delante(**suya), QApplication::activeModalWidget());
  return true;
}

}  // namespace morvane
