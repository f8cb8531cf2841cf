# Included into the mutated program's project: the library's own checks, in what is broken, so that a mutant that reads what
# is not there is caught by them and not spared by chance.
cmake_language(DEFER CALL target_compile_definitions pellar_core PRIVATE _GLIBCXX_ASSERTIONS)
cmake_language(DEFER CALL target_compile_definitions pellar_app PRIVATE _GLIBCXX_ASSERTIONS)
