# What a build for macOS needs beyond a build for Linux.

# std::stop_token is among the experimental parts of libc++. It lies in headers alone: the programs link nothing for it,
# and so not what clang would look for, in vain, where Homebrew has it.
add_compile_options("$<$<COMPILE_LANGUAGE:CXX,OBJCXX>:-fexperimental-library>")

# CMake tells Swift's compiler neither, and that would take this machine's architecture and release.
set(architecture ${CMAKE_OSX_ARCHITECTURES})
if(NOT architecture)
  set(architecture ${CMAKE_HOST_SYSTEM_PROCESSOR})
endif()
list(LENGTH architecture architecture_count)
if(architecture_count GREATER 1)
  message(FATAL_ERROR "Swift is compiled for one architecture at a time, not for ${architecture}: build for each.")
endif()
set(CMAKE_Swift_COMPILER_TARGET ${architecture}-apple-macosx${CMAKE_OSX_DEPLOYMENT_TARGET})

# Here rather than where they are used: CMake wants to know them wherever something links what is written in them.
set(CMAKE_OBJCXX_STANDARD 20)
set(CMAKE_OBJCXX_STANDARD_REQUIRED ON)
set(CMAKE_OBJCXX_EXTENSIONS OFF)
enable_language(OBJCXX)
enable_language(Swift)
