#include "desktop/placa_simulada.h"

#include <QCoreApplication>
#include <QFile>
#include <system_error>

#include "conversiones.h"
#include "files/archivos.h"
#include "platform/rutas.h"

namespace morvane {

namespace {

constexpr int plazo_ms = 2000;

}  // namespace

placa_simulada::placa_simulada(std::filesystem::path directorio) : directorio_(std::move(directorio)) {}

placa_simulada::~placa_simulada() {
  parar();
}

std::filesystem::path placa_simulada::nota() const {
  return directorio_ / "puertos" / "simulada.txt";
}

int placa_simulada::puerto() const {
  return proceso_.state() == QProcess::Running ? puerto_ : 0;
}

std::string placa_simulada::poner(int numero) {
  quitar();
  std::string fallo = arrancar(numero);
  if (!fallo.empty()) return fallo;
  const std::string puerto = "COM" + std::to_string(numero);
  const int error = archivos(directorio_).guardar(texto_de(nota()), puerto + "\n");
  if (error == 0) return {};
  return "La placa simulada está en " + puerto +
         ", pero no se ha podido anotar para la próxima vez: " + std::generic_category().message(error);
}

std::string placa_simulada::arrancar(int numero) {
  const std::string puerto = "COM" + std::to_string(numero);
  const auto dentro = [this](const std::string& nombre) { return qt(directorio_ / nombre); };
  // It ends by itself when its input closes, however this program ends.
  proceso_.start(QCoreApplication::applicationDirPath() + QStringLiteral("/puente"),
                 {QStringLiteral("--ligada"), QStringLiteral("--enlace"), dentro("puertos/" + puerto),
                  QStringLiteral("--flash"), dentro("placa_" + puerto + ".flash")});
  puerto_ = numero;
  // It writes a line when it is there.
  if (proceso_.waitForStarted(plazo_ms) && proceso_.waitForReadyRead(plazo_ms)) return {};
  const std::string dicho = proceso_.readAllStandardError().trimmed().toStdString();
  const std::string motivo = dicho.empty() ? proceso_.errorString().toStdString() : dicho;
  parar();
  return "La placa simulada no puede ser " + puerto + ": " + motivo;
}

void placa_simulada::quitar() {
  parar();
  QFile::remove(qt(nota()));
}

void placa_simulada::parar() {
  if (proceso_.state() == QProcess::NotRunning) return;
  proceso_.closeWriteChannel();
  if (proceso_.waitForFinished(plazo_ms)) return;
  proceso_.kill();
  proceso_.waitForFinished(plazo_ms);
}

void placa_simulada::reanudar() {
  constexpr std::size_t maximo = 16;
  const QByteArray texto =
      QByteArray::fromStdString(archivos(directorio_).leer(texto_de(nota()), maximo).value_or("")).trimmed();
  const int numero = texto.startsWith("COM") ? texto.mid(3).toInt() : 0;
  if (numero >= 1 && numero <= 9) arrancar(numero);
}

}  // namespace morvane
