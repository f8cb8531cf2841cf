# pellar_write_stub(NAME FOLDER): writes FOLDER/libNAME.tbd, which tells ld64.lld what the library NAME defines on a
# Mac: what this machine's libNAME.so defines, by the names that clang gives it there. Names with a std::string
# in them differ, since the two C++ libraries call it differently.
function(pellar_write_stub name folder)
  file(GLOB library "/usr/lib/*/lib${name}.so" "/usr/lib/lib${name}.so")
  if(NOT library)
    message(FATAL_ERROR "lib${name}.so is missing: scripts/setup installs it")
  endif()
  list(GET library 0 library)
  execute_process(
    COMMAND ${CMAKE_NM} --dynamic --defined-only --format=just-symbols ${library}
    OUTPUT_VARIABLE symbols OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  string(REPLACE "\n" ";" symbols "${symbols}")
  set(stub "--- !tapi-tbd\ntbd-version: 4\ntargets: [ arm64-macos, x86_64-macos ]\n")
  string(APPEND stub "install-name: '@rpath/lib${name}.dylib'\nexports:\n")
  string(APPEND stub "  - targets: [ arm64-macos, x86_64-macos ]\n    symbols:\n")
  foreach(symbol IN LISTS symbols)
    string(REGEX REPLACE "@.*$" "" symbol "${symbol}")
    string(REPLACE "B5cxx11" "" symbol "${symbol}")
    if(symbol MATCHES "NSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEE")
      # Inside the name, the namespace is named by its number among what came before.
      foreach(number "" 0 1 2 3 4 5)
        string(REPLACE "NSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEE"
          "NSt3__112basic_stringIcNS${number}_11char_traitsIcEENS${number}_9allocatorIcEEEE" on_mac "${symbol}")
        string(APPEND stub "      - '_${on_mac}'\n")
      endforeach()
    elseif(NOT symbol MATCHES "cxx11")
      string(APPEND stub "      - '_${symbol}'\n")
    endif()
  endforeach()
  file(WRITE "${folder}/lib${name}.tbd" "${stub}...\n")
endfunction()
