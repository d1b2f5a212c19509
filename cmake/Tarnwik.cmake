# What all of the project's own targets share.

# tarnwik_options(TARGET): our warnings, as errors, and the sanitizers where they are wanted.
function(tarnwik_options target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Werror)
  target_compile_definitions(${target} PRIVATE QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII)
  if(APPLE)
    # Homebrew's Qt is always the newest: what it calls deprecated is no reason not to build with it.
    target_compile_definitions(${target} PRIVATE QT_WARN_DEPRECATED_UP_TO=0x060400)
  endif()
  target_include_directories(${target} PRIVATE ${CMAKE_SOURCE_DIR}/src)
  # What links a library of another language would be linked by that one's compiler, which takes other options.
  set_target_properties(${target} PROPERTIES LINKER_LANGUAGE CXX)
  if(TARNWIK_SANITIZE)
    target_compile_options(${target} PRIVATE -fsanitize=address,undefined -fno-sanitize-recover=all
                                             -fno-omit-frame-pointer)
    target_link_options(${target} PRIVATE -fsanitize=address,undefined)
  endif()
endfunction()

# tarnwik_library(NAME SOURCES … LINK …): one folder of src as a static library.
function(tarnwik_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_link_libraries(${name} PUBLIC ${ARG_LINK})
  tarnwik_options(${name})
endfunction()

# tarnwik_program(NAME SOURCES … LINK …): an executable.
function(tarnwik_program name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_LINK})
  if(TARNWIK_SANITIZE)
    target_link_libraries(${name} PRIVATE tarnwik_leak_suppressions)
  endif()
  tarnwik_options(${name})
endfunction()
