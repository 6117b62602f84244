#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>
#include <map>

#include "job/campana_job.h"

namespace {

// Random jobs on boards with random faults. JOB_SEED and JOB_WORLDS run other ones; then the ends are told by fault.
TEST(job_campaign, no_claim_is_false_and_no_passing_fault_ends_a_run) {
  const char *semilla = std::getenv("JOB_SEED"), *mundos = std::getenv("JOB_WORLDS");
  const std::uint64_t desde = semilla != nullptr ? std::strtoull(semilla, nullptr, 10) : 1;
  const std::uint64_t cuantos = mundos != nullptr ? std::strtoull(mundos, nullptr, 10) : 800;
  std::map<std::string, std::map<int, int>> fines;
  int malos = 0;
  for (std::uint64_t s = desde; s < desde + cuantos && malos < 20; ++s) {
    const apoyo::mundo_juzgado m = apoyo::juzgar_mundo(s);
    ++fines[(m.pasajera ? "passing " : "lasting ") + m.averia][m.fin];
    if (m.error.empty()) continue;
    ++malos;
    ADD_FAILURE() << "seed " << s << ", " << m.averia << ", " << m.orden << ": " << m.error;
  }
  if (mundos == nullptr) return;
  for (const auto& [averia, cuenta] : fines) {
    std::cout << averia;
    for (const auto& [fin, veces] : cuenta) std::cout << "  " << fin << ":" << veces;
    std::cout << "\n";
  }
}

}  // namespace
