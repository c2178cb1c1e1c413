# The asan preset turns this on: the whole tree, tests included, runs under both sanitizers.
if(QUORVEX_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-omit-frame-pointer -fno-sanitize-recover=undefined)
  add_link_options(-fsanitize=address,undefined)
endif()

# Fuzz builds instrument the whole engine for coverage; the targets themselves link libFuzzer.
if(QUORVEX_FUZZ)
  # Undefined behaviour stops the run, so that the input is kept as a finding (printed and passed
  # over, it was easy to miss in a long log).
  add_compile_options(-fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=undefined
                      -fno-omit-frame-pointer
                      -fsanitize-coverage-ignorelist=${CMAKE_SOURCE_DIR}/fuzz/coverage_ignorelist.txt)
  add_link_options(-fsanitize=address,undefined)
endif()
