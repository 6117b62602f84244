#pragma once

#include <string>
#include <vector>

#include "files/causa_archivo.h"
#include "image/fallo_carga.h"
#include "image/informe_carga.h"
#include "serial/causa_puerto.h"
#include "serial/puertos.h"

/// What the causes that come up from below are called in Spanish: no line end at the end, no capital, no full stop.
namespace morvane {

/// The port, what it leads to, the cause, and what the user can do about it, in one line: "COM1: …".
std::string frase(const causa_puerto& causa);
/// The same without the port in front.
std::string frase_sin_puerto(const causa_puerto& causa);

/// What is at a port and whether it could be opened, in one to three short lines.
std::string frase(const descripcion_puerto& puerto);

/// The port and what is at it, in one line.
std::string frase_breve(const descripcion_puerto& puerto);
/// The same in as few words as a label has room for: "COM1 · FT232R USB UART (FTDI)", "COM1 · placa simulada",
/// "COM1 · nada conectado".
std::string rotulo(const descripcion_puerto& puerto);

/// Without the file's name: "el archivo no existe".
std::string frase(const causa_archivo& causa);
/// The same of a file that could not be written.
std::string frase_de_escritura(const causa_archivo& causa);

/// "Línea 3: …", or "Motivo: …" where it is the file itself.
std::string frase(const fallo_carga& fallo);

/// What a load has brought, in a few words for a narrow place: "5.044 B, 000000–0013B3", "Nada cargado: …".
std::string frase_breve(const informe_carga& informe);
/// The same with the counts, in one line.
std::string frase(const informe_carga& informe);
/// What makes it doubtful that the image is what the file means, a line each with the line's number; none if nothing.
std::vector<std::string> avisos_de(const informe_carga& informe);

}  // namespace morvane
