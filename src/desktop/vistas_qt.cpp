#include "desktop/vistas_qt.h"

#include <QAction>
#include <QClipboard>
#include <QEvent>
#include <QGuiApplication>
#include <QMenu>
#include <QScreen>
#include <algorithm>

#include "barra_busqueda.h"
#include "conversiones.h"
#include "files/texto.h"
#include "lista_qt.h"

namespace morvane {
namespace {

QAction* entrada(QMenu& menu, lista_filas& lista, const char* texto, const QKeySequence& tecla,
                 std::function<void()> accion) {
  QAction* nueva = menu.addAction(QString::fromUtf8(texto));
  nueva->setShortcut(tecla);
  nueva->setShortcutVisibleInContextMenu(true);
  QObject::connect(nueva, &QAction::triggered, &lista, std::move(accion));
  // Only what stands in a widget of the window hears its key.
  lista.addAction(nueva);
  return nueva;
}

void al_portapapeles(const QString& filas) {
  if (!filas.isEmpty()) QGuiApplication::clipboard()->setText(filas);
}

void poner_copia(QMenu& menu, lista_filas& lista) {
  if (!menu.isEmpty()) menu.addSeparator();
  QAction* copiar =
      entrada(menu, lista, "&Copiar", QKeySequence::Copy, [&lista] { al_portapapeles(lista.copia_elegidas()); });
  // A field beside the list has a copy of its own.
  copiar->setShortcutContext(Qt::WidgetShortcut);
  entrada(menu, lista, "Copiar &todo", {}, [&lista] { al_portapapeles(lista.copia_todas()); });
}

void poner_busqueda(QMenu& menu, lista_filas& lista, barra_busqueda* barra) {
  menu.addSeparator();
  entrada(menu, lista, "&Ir a la dirección...", Qt::CTRL | Qt::Key_G, [barra] { barra->pedir_direccion(); });
  entrada(menu, lista, "&Buscar...", QKeySequence::Find, [barra] { barra->pedir_busqueda(); });
  entrada(menu, lista, "Buscar &siguiente", Qt::Key_F3, [barra] { barra->repetir(sentido::adelante); });
  entrada(menu, lista, "Buscar &anterior", Qt::SHIFT | Qt::Key_F3, [barra] { barra->repetir(sentido::atras); });
}

/// Sees to it that a list begins, each time that it appears, with what is known.
class apertura final : public QObject {
 public:
  /// `primera` gives the row.
  apertura(lista_filas& lista, std::function<std::size_t()> primera)
      : QObject(&lista), lista_(lista), primera_(std::move(primera)) {
    lista.installEventFilter(this);
  }

 protected:
  bool eventFilter(QObject* quien, QEvent* suceso) override {
    const bool aparece = suceso->type() == QEvent::Show && !suceso->spontaneous();
    if (const auto fila = static_cast<int>(aparece ? primera_() : 0); fila > 0) lista_.ir_a(fila);
    return QObject::eventFilter(quien, suceso);
  }

 private:
  lista_filas& lista_;
  std::function<std::size_t()> primera_;
};

/// Shows now, and whenever the list has got other rows, what `motivo` gives.
void decir_si_vacia(lista_filas& lista, std::function<std::string()> motivo) {
  const auto decir = [&lista, motivo = std::move(motivo)] { lista.decir_vacia(qt(motivo())); };
  QObject::connect(lista.model(), &QAbstractItemModel::modelReset, &lista, decir);
  decir();
}

}  // namespace

void completar(ventana_qt& ventana, frm_buffer& vista) {
  lista_filas* lista = lista_de(ventana, vista.lst_buf_salida);
  new apertura(*lista, [&vista] { return vista.primera_fila; });
  decir_si_vacia(*lista, [&vista] { return vista.si_vacio; });
  poner_copia(ventana.contextual(), *lista);
  poner_busqueda(ventana.contextual(), *lista, new barra_busqueda(*lista, vista));
}

void completar(ventana_qt& ventana, frm_buffer_comp& vista, std::function<void(std::int32_t dir)> al_ver) {
  lista_filas* lista = lista_de(ventana, vista.lst_compara);
  const auto ver = [lista, &vista, al_ver = std::move(al_ver)] {
    const int fila = lista->currentIndex().row();
    if (fila >= 0 && vista.filas) al_ver(vista.filas->direccion(static_cast<std::size_t>(fila)));
  };
  new apertura(*lista, [&vista] { return vista.filas ? vista.filas->primera_conocida() : 0; });
  decir_si_vacia(*lista, [&vista] {
    return vista.filas && vista.filas->cuantas() == 0 ? std::string("Ninguna diferencia") : std::string();
  });
  entrada(ventana.contextual(), *lista, "&Ver en los dos buffer", Qt::Key_Return, ver);
  QObject::connect(lista, &QListView::doubleClicked, lista, ver);
  poner_copia(ventana.contextual(), *lista);
}

void poner_en_su_mitad(ventana_qt& ventana, mitad cual) {
  constexpr int marco = 8;
  const QRect pantalla = ventana.screen()->availableGeometry();
  const int titulo = 2 * ventana.fontMetrics().height();
  const bool segunda = cual == mitad::derecha;
  QPoint esquina = pantalla.center() - ventana.rect().center();
  if (2 * ventana.width() + marco <= pantalla.width()) {
    esquina.setX(pantalla.center().x() + (segunda ? marco / 2 : -ventana.width() - marco / 2));
  } else if (2 * (ventana.height() + titulo) <= pantalla.height()) {
    esquina.setY(pantalla.center().y() + (segunda ? titulo : -ventana.height()));
  } else if (segunda) {
    esquina += QPoint(titulo, titulo);
  }
  ventana.move(std::max(esquina.x(), pantalla.left()), std::max(esquina.y(), pantalla.top()));
}

void senalar_direccion(ventana_qt& ventana, frm_buffer& vista, std::int32_t dir) {
  vista.busca.ir(hex(static_cast<std::uint32_t>(dir), 6));
  ir_a_fila(ventana, vista.lst_buf_salida, dir / static_cast<std::int32_t>(bytes_por_fila));
}

}  // namespace morvane
