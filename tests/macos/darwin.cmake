# Included by project() when the build for macOS is configured where there is neither its SDK nor a compiler for it: what
# CMake and Qt would have found out by compiling. Nothing can be built of the result; it shows that the build files for
# macOS are sound.
if(NOT TARGET WrapOpenGL::WrapOpenGL)
  add_library(WrapOpenGL::WrapOpenGL INTERFACE IMPORTED GLOBAL)
endif()
set(CMAKE_CXX_COMPILE_FEATURES cxx_std_98 cxx_std_11 cxx_std_14 cxx_std_17 cxx_std_20 cxx_decltype)
set(CMAKE_CXX_STANDARD_DEFAULT 17)
set(CMAKE_CXX20_STANDARD_COMPILE_OPTION -std=c++20)
