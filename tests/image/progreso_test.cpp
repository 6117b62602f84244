#include "mundo_carga.h"

namespace morvane {
namespace {

TEST(progreso, rounds_to_whole_steps_with_halves_to_the_even_one) {
  constexpr std::int64_t grande = 90'000'000;
  const struct {
    std::int64_t total, acumulado, paso;
    int valor;
  } casos[] = {
      {50, 0, 1, 0},
      {50, 2, 1, 2},
      {50, 4, 1, 2},
      {50, 6, 1, 4},
      {50, 48, 1, 24},
      {1000, 0, 20, 0},
      {1000, 0, 21, 1},
      {1000, 0, 979, 24},
      {1000, 0, 980, 24},
      {3, 0, 1, 8},
      {3, 0, 2, 17},
      {grande, grande - 4'000'000, 1, 24},
      {grande, 0, grande / 2, 12},
  };
  for (const auto& caso : casos) {
    SCOPED_TRACE(testing::Message() << caso.acumulado << " + " << caso.paso << " of " << caso.total);
    mundo_carga m;
    std::int64_t acumulado = caso.acumulado;
    avanzar_progreso(m.a, caso.total, caso.paso, acumulado);
    EXPECT_EQ(m.a.Progress.Value, caso.valor);
    EXPECT_EQ(acumulado, caso.acumulado + caso.paso);
  }
}

TEST(progreso, the_bar_stays_where_there_is_no_step_for_it) {
  mundo_carga m;
  m.a.Progress.Value = 5;
  std::int64_t acumulado = 0;
  for (const std::int64_t total : {0, 4, 1}) {
    acumulado = 0;
    avanzar_progreso(m.a, total, 4, acumulado);
    EXPECT_EQ(m.a.Progress.Value, 5) << total;
    EXPECT_EQ(acumulado, 4);
  }
}

TEST(progreso, the_window_is_only_told_of_steps) {
  mundo_carga m;
  const auto antes = m.cambios.valor();
  std::int64_t acumulado = 0;
  for (int i = 0; i < 10'000; ++i) avanzar_progreso(m.a, 10'000, 1, acumulado);
  EXPECT_EQ(m.cambios.valor() - antes, 24U);
}

}  // namespace
}  // namespace morvane
