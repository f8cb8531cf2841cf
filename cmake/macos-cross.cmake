# Compiles and links the macOS edition on Linux: clang, ld64.lld and a folder of public macOS headers and stubs.
#   PELLAR_MACOS_SYSROOT  that folder (System/Library/Frameworks, usr/include with libc++'s headers, usr/lib)
#   PELLAR_MACOS_ARCH     arm64 or x86_64
# What comes out is a proof that everything compiles and that every framework name exists; it is not shipped, and its
# tests are not run.
foreach(name PELLAR_MACOS_SYSROOT PELLAR_MACOS_ARCH)
  if(NOT ${name})
    set(${name} "$ENV{${name}}")
  endif()
  if(NOT ${name})
    message(FATAL_ERROR "${name} is not set; see docs/mac-verification.md")
  endif()
  set(${name} "${${name}}" CACHE STRING "" FORCE)
  list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES ${name})
endforeach()
if(NOT EXISTS "${PELLAR_MACOS_SYSROOT}/System/Library/Frameworks/AppKit.framework")
  message(FATAL_ERROR "no macOS frameworks in ${PELLAR_MACOS_SYSROOT}; see docs/mac-verification.md")
endif()
if(NOT EXISTS "${PELLAR_MACOS_SYSROOT}/usr/include/c++/v1/__config")
  message(FATAL_ERROR "no libc++ headers in ${PELLAR_MACOS_SYSROOT}/usr/include/c++/v1; see docs/mac-verification.md")
endif()

set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_VERSION 22)
set(CMAKE_SYSTEM_PROCESSOR ${PELLAR_MACOS_ARCH})
set(CMAKE_OSX_SYSROOT "${PELLAR_MACOS_SYSROOT}" CACHE PATH "" FORCE)
set(CMAKE_OSX_ARCHITECTURES ${PELLAR_MACOS_ARCH} CACHE STRING "" FORCE)
set(CMAKE_OSX_DEPLOYMENT_TARGET 13.0 CACHE STRING "" FORCE)

foreach(language C CXX OBJC OBJCXX)
  set(CMAKE_${language}_COMPILER_TARGET ${PELLAR_MACOS_ARCH}-apple-macos13.0)
endforeach()
find_program(PELLAR_CLANG clang-19 REQUIRED)
find_program(PELLAR_CLANGXX clang++-19 REQUIRED)
set(CMAKE_C_COMPILER ${PELLAR_CLANG})
set(CMAKE_OBJC_COMPILER ${PELLAR_CLANG})
set(CMAKE_CXX_COMPILER ${PELLAR_CLANGXX})
set(CMAKE_OBJCXX_COMPILER ${PELLAR_CLANGXX})
find_program(PELLAR_LD64 ld64.lld-19 REQUIRED)
find_program(CMAKE_AR llvm-ar-19 REQUIRED)
find_program(CMAKE_RANLIB llvm-ranlib-19 REQUIRED)
find_program(CMAKE_NM llvm-nm-19 REQUIRED)
find_program(CMAKE_STRIP llvm-strip-19 REQUIRED)
find_program(CMAKE_INSTALL_NAME_TOOL llvm-install-name-tool-19 REQUIRED)
find_program(CMAKE_OTOOL llvm-otool-19 REQUIRED)
mark_as_advanced(PELLAR_CLANG PELLAR_CLANGXX PELLAR_LD64)
# The sysroot knows the names of the frameworks, not of the C and C++ runtimes; scripts/check-macos sees to it
# that no other name is left to be looked up when the program starts.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-fuse-ld=lld --ld-path=${PELLAR_LD64} -Wl,-undefined,dynamic_lookup")

# Nothing of the building machine is to be found by accident.
set(CMAKE_FIND_ROOT_PATH "${PELLAR_MACOS_SYSROOT}")
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE NEVER)
set(CMAKE_FIND_USE_CMAKE_SYSTEM_PATH OFF)

# The libraries that are no part of macOS come from Homebrew on a Mac. Here their headers are used, linked into a
# folder of their own so that no header of this machine's C library comes along, and the names that they define.
get_property(pellar_in_try_compile GLOBAL PROPERTY IN_TRY_COMPILE)
if(NOT pellar_in_try_compile)
  include("${CMAKE_CURRENT_LIST_DIR}/MacStubLibrary.cmake")
  set(pellar_packages "${CMAKE_BINARY_DIR}/packages")
  file(MAKE_DIRECTORY "${pellar_packages}/include")
  foreach(header nlohmann plist rapidcheck rapidcheck.h re2 utf8proc.h)
    if(NOT EXISTS "/usr/include/${header}")
      message(FATAL_ERROR "/usr/include/${header} is missing: scripts/setup installs it")
    endif()
    file(CREATE_LINK "/usr/include/${header}" "${pellar_packages}/include/${header}" SYMBOLIC)
  endforeach()
  foreach(package re2:re2 libutf8proc:utf8proc libplist-2.0:plist-2.0)
    string(REGEX REPLACE ":.*" "" module ${package})
    string(REGEX REPLACE ".*:" "" library ${package})
    pellar_write_stub(${library} "${pellar_packages}")
    file(WRITE "${pellar_packages}/${module}.pc"
      "Name: ${module}\nDescription: headers and names only\nVersion: 0\n"
      "Cflags: -I${pellar_packages}/include\nLibs: -L${pellar_packages} -l${library}\n")
  endforeach()
  file(WRITE "${pellar_packages}/nlohmann_jsonConfig.cmake"
    "if(NOT TARGET nlohmann_json::nlohmann_json)\n"
    "  add_library(nlohmann_json::nlohmann_json INTERFACE IMPORTED)\n"
    "  target_include_directories(nlohmann_json::nlohmann_json INTERFACE \"${pellar_packages}/include\")\n"
    "endif()\n")
  set(nlohmann_json_DIR "${pellar_packages}")
  # Its names are left to the start of the tests, which never comes.
  file(WRITE "${pellar_packages}/rapidcheckConfig.cmake"
    "if(NOT TARGET rapidcheck)\n"
    "  add_library(rapidcheck INTERFACE IMPORTED)\n"
    "  target_include_directories(rapidcheck INTERFACE \"${pellar_packages}/include\")\n"
    "endif()\n")
  set(rapidcheck_DIR "${pellar_packages}")
  # GoogleTest comes as sources and is built like ours.
  if(NOT EXISTS /usr/src/googletest/CMakeLists.txt)
    message(FATAL_ERROR "/usr/src/googletest is missing: scripts/setup installs it")
  endif()
  file(WRITE "${pellar_packages}/GTestConfig.cmake"
    "if(NOT TARGET GTest::gtest)\n"
    "  set(BUILD_GMOCK OFF CACHE BOOL \"\" FORCE)\n"
    "  set(INSTALL_GTEST OFF CACHE BOOL \"\" FORCE)\n"
    "  add_subdirectory(/usr/src/googletest \"${CMAKE_BINARY_DIR}/googletest\" EXCLUDE_FROM_ALL)\n"
    "endif()\n")
  set(GTest_DIR "${pellar_packages}")
  # Nobody here can ask a test program for its tests.
  set(CMAKE_GTEST_DISCOVER_TESTS_DISCOVERY_MODE PRE_TEST)
  list(APPEND CMAKE_FIND_ROOT_PATH "${pellar_packages}")
  set(ENV{PKG_CONFIG_LIBDIR} "${pellar_packages}")
  set(ENV{PKG_CONFIG_PATH} "")
endif()
