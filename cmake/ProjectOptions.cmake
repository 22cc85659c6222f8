# What all targets of the project share: language level, warnings, sanitizers, compiler cache.

option(ELEVENFIVE_WINDOW "Build the window (needs Qt6 Widgets)" ON)
option(ELEVENFIVE_WEB "Build the page process (needs Qt6 WebEngineCore)" ON)
option(ELEVENFIVE_TESTS "Build the tests" ON)
option(ELEVENFIVE_BENCH "Build the benchmarks" OFF)
option(ELEVENFIVE_FUZZ "Build the fuzz targets (needs clang)" OFF)
option(ELEVENFIVE_PRECOMPILE "Precompile the headers of the libraries built upon" ON)
option(ELEVENFIVE_WERROR "Treat warnings as errors" OFF)
option(ELEVENFIVE_SANITIZE "Build with the address and undefined behaviour sanitizers" OFF)

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")

find_program(ELEVENFIVE_CCACHE ccache)
if(ELEVENFIVE_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  # Paths are made relative to the checkout, so that a second checkout finds what the first one built. What is precompiled
  # is known by its content; our sources do not ask for the time.
  set(CMAKE_CXX_COMPILER_LAUNCHER
      ${CMAKE_COMMAND} -E env CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1
      CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime ${ELEVENFIVE_CCACHE})
endif()

find_program(ELEVENFIVE_MOLD mold)

add_library(elevenfive_options INTERFACE)
target_include_directories(elevenfive_options INTERFACE "${CMAKE_SOURCE_DIR}")
target_compile_definitions(
  elevenfive_options
  INTERFACE QT_NO_CAST_FROM_ASCII
            QT_NO_CAST_TO_ASCII
            QT_NO_CAST_FROM_BYTEARRAY
            QT_NO_URL_CAST_FROM_STRING
            QT_NO_FOREACH
            QT_NO_KEYWORDS
            QT_DISABLE_DEPRECATED_BEFORE=0x060400) # the oldest Qt supported
target_compile_options(elevenfive_options INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
if(ELEVENFIVE_WERROR)
  target_compile_options(elevenfive_options INTERFACE -Werror)
endif()
if(ELEVENFIVE_MOLD)
  target_link_options(elevenfive_options INTERFACE -fuse-ld=mold)
endif()
if(ELEVENFIVE_SANITIZE)
  # All targets but those whose property UNSANITIZED is set.
  set(sanitized "$<NOT:$<BOOL:$<TARGET_PROPERTY:UNSANITIZED>>>")
  target_compile_options(elevenfive_options INTERFACE "$<${sanitized}:-fsanitize=address,undefined>"
                                                      "$<${sanitized}:-fno-sanitize-recover=undefined>"
                                                      -fno-omit-frame-pointer)
  target_link_options(elevenfive_options INTERFACE "$<${sanitized}:-fsanitize=address,undefined>")
endif()
if(ELEVENFIVE_FUZZ)
  target_compile_options(elevenfive_options INTERFACE -fsanitize=fuzzer-no-link)
  target_link_options(elevenfive_options INTERFACE -fsanitize=address,undefined)
endif()

# Reading the headers of the libraries takes more than half of a build, so they are read once a kind of program. Each source
# still includes what it uses: the fuzz targets are built without.
#   elevenfive_precompile(TARGET headers...)      reads these headers once for the target
#   elevenfive_precompiled(TARGET OTHER)          has the target use what was read for the other, whose flags are the same
function(elevenfive_precompile target)
  if(ELEVENFIVE_PRECOMPILE)
    target_precompile_headers(${target} PRIVATE ${ARGN})
  endif()
endfunction()
function(elevenfive_precompiled target other)
  if(ELEVENFIVE_PRECOMPILE)
    target_precompile_headers(${target} REUSE_FROM ${other})
  endif()
endfunction()

# elevenfive_subsystem(NAME SOURCES files... LINK libraries...) adds the headless static library elevenfive_NAME, known to
# others as elevenfive::NAME.
function(elevenfive_subsystem name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
  add_library(elevenfive_${name} STATIC ${ARG_SOURCES})
  add_library(elevenfive::${name} ALIAS elevenfive_${name})
  target_link_libraries(elevenfive_${name} PUBLIC elevenfive_options Qt6::Core ${ARG_LINK})
  if(name STREQUAL "model") # which all others use
    elevenfive_precompile(elevenfive_model <QDate> <QDir> <QFile> <QStringList> <algorithm> <array> <functional> <memory>
                          <optional> <string> <utility> <vector>)
  else()
    elevenfive_precompiled(elevenfive_${name} elevenfive_model)
  endif()
endfunction()
