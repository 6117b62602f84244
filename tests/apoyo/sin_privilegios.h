#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

namespace morvane {

/// Takes the rights of root away, for as long as it lives, so that permissions count.
struct sin_privilegios {
  sin_privilegios() { EXPECT_EQ(root ? ::seteuid(65534) : 0, 0); }
  ~sin_privilegios() { EXPECT_EQ(root ? ::seteuid(0) : 0, 0); }

  const bool root = ::geteuid() == 0;
};

}  // namespace morvane
