#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "job/ordenes.h"
#include "job/plan.h"

/// What jobs find and how they end, in Spanish.
namespace morvane::console {

/// A sentence with a capital and a full stop.
std::string en_frase(std::string texto);
/// With the full stop alone: what begins with a name keeps it as it is.
std::string con_punto(std::string texto);
/// An address as people read it: six hexadecimal digits; a range with its last address.
std::string direccion(std::int32_t dir);
std::string rango(tramo t);

/// Why a job ended as it did, one sentence; what can be done about it, empty if nothing is known.
std::string frase(const job::fin& fin);
std::string remedio(const job::fin& fin);
/// What a refusal's digit says.
std::string_view significado_de(char codigo);

/// What happened on the way.
std::string frase(job::suceso que, char codigo);
/// What is being done, for the bar.
std::string_view nombre_para_persona(job::fase cual);

/// The shape of a difference, for programs and for people: "bit a 0", "movido 3 bytes hacia arriba".
std::string_view nombre_de(job::aspecto clase);
std::string frase(const job::diferencia& d);

std::string_view nombre_de(job::duda d);
std::string frase(job::duda d, const job::plan& p);

/// What a proof by sums cannot see.
std::string_view lo_que_no_ven_las_sumas();

}  // namespace morvane::console
