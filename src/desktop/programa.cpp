#include "desktop/programa.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QTranslator>
#include <exception>

#include "desktop/manual_qt.h"
#include "desktop/puertos_qt.h"
#include "desktop/recepcion_qt.h"
#include "desktop/seguimiento.h"
#include "desktop/vistas_qt.h"
#include "frases/frases.h"
#include "imagenes.h"
#include "lista_qt.h"
#include "platform/proceso.h"
#include "rango_qt.h"
#include "shell/proyecto.h"
#include "textos_es.h"

namespace morvane {

namespace {

void poner_textos() {
  auto propios = std::make_unique<textos_es>();
  propios->setParent(qApp);
  QCoreApplication::installTranslator(propios.release());
  // The last one that is installed is asked first.
  auto* de_qt = new QTranslator(qApp);
  const bool hay = de_qt->load(QStringLiteral("qtbase_es"), QLibraryInfo::path(QLibraryInfo::TranslationsPath));
  if (hay) QCoreApplication::installTranslator(de_qt);
}

/// Of the port as the settings name it, by `decir`.
std::string puerto_en_palabras(const placa_simulada& placa, const std::string& puerto,
                               std::string (*decir)(const descripcion_puerto&)) {
  constexpr std::size_t largo = 4;
  if (puerto.size() != largo || puerto.back() < '0' || puerto.back() > '9') return puerto;
  return decir(placa.describir(puerto.back() - '0'));
}

}  // namespace

void preparar_aplicacion() {
  QCoreApplication::setApplicationName(QStringLiteral("morvane"));
  QGuiApplication::setDesktopFileName(QStringLiteral("morvane"));
  QGuiApplication::setQuitOnLastWindowClosed(false);
  // That of Windows writes what a bar says beside it, and knows no dark desktop.
  if (QGuiApplication::platformName() == QLatin1String("windows")) QApplication::setStyle(QStringLiteral("Fusion"));
  QGuiApplication::setWindowIcon(imagen("morvane"));
  poner_textos();
}

programa::programa(const std::filesystem::path& directorio)
    : directorio_(directorio),
      ficheros_(directorio),
      linea_(directorio),
      placa_(directorio),
      principal_(std::make_unique<frm_principal>(plat_, ficheros_, placa_.entre(linea_), v_)),
      ventana_(std::make_unique<ventana_qt>(principal_->ventana, [this] { despues_de_orden(); })),
      seguimiento_(std::make_unique<seguimiento>(
          *principal_, plat_, *ventana_,
          [this] { return puerto_en_palabras(placa_, principal_->link.valores.puerto, rotulo); })),
      recepcion_(std::make_unique<recepcion_qt>(*ventana_,
                                                [this](const std::string& ruta) { abrir_soltado(*principal_, ruta); })),
      ayuda_(std::make_unique<ayuda_f1>(*ventana_)),
      otras_(
          principal_->otras_ventanas(), [this] { despues_de_orden(); },
          [this](const std::string& motivo) { avisar_fallo(motivo); }) {
  fin_.setSingleShot(true);
  QObject::connect(&fin_, &QTimer::timeout, [] { QCoreApplication::exit(0); });
  otras_.al_hacer = [this](const Form& forma, ventana_qt& ventana) { completar_vista(forma, ventana); };
  plat_.sincronizar = [this] { sincronizar(); };
  linea_.al_fallar = [this](const causa_puerto& causa) {
    decir_por_errores("morvane: " + frase(causa));
    principal_->link.fallo_de_puerto = causa;
  };
  principal_->describir_puerto = [this] {
    return puerto_en_palabras(placa_, principal_->link.valores.puerto, frase_breve);
  };
  completar(*ventana_, principal_->rango);
  ventana_->al_empezar = [this] { seguimiento_->al_empezar(); };
  seguimiento_->mapa().al_abrir = [this](std::int32_t dir) { abrir_volcado(principal_->buffer_out, dir); };
  ventana_->puede_cerrarse = [this] { return puede_cerrarse(); };
  ventana_->al_fallar = [this](const std::string& motivo) { avisar_fallo(motivo); };
}

programa::~programa() = default;

void programa::sincronizar() {
  ventana_->sincronizar();
  otras_.sincronizar();
}

void programa::abrir_volcado(frm_buffer& vista, std::int32_t dir) {
  ventana_->atender([&vista] { vista.ventana.Show(); });
  ventana_qt* ventana = otras_.ventana_de(vista.ventana);
  if (ventana != nullptr) senalar_direccion(*ventana, vista, dir);
}

void programa::completar_vista(const Form& forma, ventana_qt& ventana) {
  frm_principal& f = *principal_;
  for (frm_buffer* vista : {&f.buffer_out, &f.buffer_in}) {
    if (&vista->ventana != &forma) continue;
    completar(ventana, *vista);
    poner_en_su_mitad(ventana, vista == &f.buffer_out ? mitad::izquierda : mitad::derecha);
  }
  if (&f.buffer_comp.ventana == &forma) {
    completar(ventana, f.buffer_comp, [this](std::int32_t dir) {
      for (frm_buffer* vista : {&principal_->buffer_out, &principal_->buffer_in}) abrir_volcado(*vista, dir);
    });
  }
  if (&f.cfg_pto_serial.ventana == &forma) {
    new puertos_qt(ventana, f.cfg_pto_serial, directorio_, placa_, plat_,
                   [this] { seguimiento_->letrero().preguntar(); });
  }
}

void programa::avisar_fallo(const std::string& motivo) {
  plat_.MsgBox({"", "Error interno: " + motivo, botones::Aceptar, icono::critico});
}

void programa::empezar() {
  empezando_ = true;
  placa_.reanudar();
  try {
    Form_Load(*principal_);
  } catch (const std::exception& fallo) {
    avisar_fallo(fallo.what());
  }
  empezando_ = false;
  ventana_->sincronizar();
  seguimiento_->al_volver();
  if (fin_pendiente_) {
    acabar();
    return;
  }
  ventana_->show();
  plat_.duena = ventana_.get();
}

void programa::pedir_fin() {
  plat_.abandonar_cajas();
  fin_pendiente_ = true;
  if (pedir_cierre(*principal_) && !ocupado()) acabar();
}

bool programa::puede_cerrarse() {
  if (!desea_cerrar(*principal_)) return false;
  const bool libre = pedir_cierre(*principal_);
  if (libre && !ocupado()) {
    acabar();
    return true;
  }
  // A handler that is no command may be running; the shell does not know of it.
  fin_pendiente_ = fin_pendiente_ || libre;
  return false;
}

void programa::despues_de_orden() {
  sincronizar();
  seguimiento_->al_volver();
  if (ocupado()) return;
  if (fin_pendiente_ || debe_cerrarse(*principal_)) acabar();
}

// By a timer, since the event loop may not have started yet. Not `quit`, which asks the windows once more.
void programa::acabar() {
  otras_.ocultar();
  ayuda_->cerrar();
  ventana_->hide();
  fin_.start(0);
}

}  // namespace morvane
