#include "desktop/vistas_qt.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QMenu>

#include "barra_busqueda.h"
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

}  // namespace

void completar(ventana_qt& ventana, frm_buffer& vista) {
  lista_filas* lista = lista_de(ventana, vista.lst_buf_salida);
  poner_copia(ventana.contextual(), *lista);
  poner_busqueda(ventana.contextual(), *lista, new barra_busqueda(*lista, vista));
}

void completar(ventana_qt& ventana, frm_buffer_comp& vista) {
  poner_copia(ventana.contextual(), *lista_de(ventana, vista.lst_compara));
}

}  // namespace morvane
