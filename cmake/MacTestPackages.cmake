# RapidCheck is no package of Homebrew's, so the tests build it themselves where it is missing.
find_package(rapidcheck QUIET)
if(NOT rapidcheck_FOUND)
  # Its own build file asks for a CMake so old that CMake 4 refuses to play it.
  set(CMAKE_POLICY_VERSION_MINIMUM 3.5)
  include(FetchContent)
  FetchContent_Declare(rapidcheck
    GIT_REPOSITORY https://github.com/emil-e/rapidcheck.git
    GIT_TAG ff6af6fc683159deb51c543b065eba14dfcf329b
    GIT_SUBMODULES ""
    SYSTEM
    OVERRIDE_FIND_PACKAGE)
endif()
