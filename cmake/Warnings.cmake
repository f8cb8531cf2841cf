# -Wnull-dereference is left out: with optimisation, g++ 12 reports the standard library's own containers.
# Every target of ours links pellar_options: warnings are errors, and sanitizers reach all of them or none.
add_library(pellar_options INTERFACE)
target_compile_options(pellar_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor
  -Woverloaded-virtual -Werror)
target_include_directories(pellar_options INTERFACE ${PROJECT_SOURCE_DIR})

if(PELLAR_ASAN)
  target_compile_options(pellar_options INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  # A check of the pointer before each use of a member makes tests a quarter slower to compile. They do without:
  # what they test has the checks, and AddressSanitizer sees a bad pointer when it is used.
  define_property(TARGET PROPERTY PELLAR_UNCHECKED_POINTERS INITIALIZE_FROM_VARIABLE PELLAR_UNCHECKED_POINTERS
    BRIEF_DOCS "Compiled without checks of pointers before they are used")
  target_compile_options(pellar_options INTERFACE
    $<$<BOOL:$<TARGET_PROPERTY:PELLAR_UNCHECKED_POINTERS>>:-fno-sanitize=null,alignment,object-size,vptr>)
  target_link_options(pellar_options INTERFACE -fsanitize=address,undefined)
endif()
if(PELLAR_TSAN)
  target_compile_options(pellar_options INTERFACE -fsanitize=thread -fno-omit-frame-pointer)
  target_link_options(pellar_options INTERFACE -fsanitize=thread)
endif()
if(PELLAR_COVERAGE)
  # Regions and conditions of the source: what the compiler makes besides, for exceptions above all, is not counted.
  target_compile_options(pellar_options INTERFACE -fprofile-instr-generate -fcoverage-mapping)
  target_link_options(pellar_options INTERFACE -fprofile-instr-generate)
endif()
if(PELLAR_FUZZ)
  # The fuzzer looks for inputs that reach new places in the code it is built into.
  target_compile_options(pellar_options INTERFACE -fsanitize=fuzzer-no-link)
  target_link_options(pellar_options INTERFACE -fsanitize=fuzzer-no-link)
endif()
