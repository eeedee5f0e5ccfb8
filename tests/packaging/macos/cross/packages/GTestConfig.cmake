foreach(part gtest gtest_main gmock)
  add_library(GTest::${part} INTERFACE IMPORTED GLOBAL)
endforeach()
