# Every target of the project compiles warning-clean at this level.
add_library(quorvex_warnings INTERFACE)
target_compile_options(quorvex_warnings INTERFACE -Wall -Wextra -Wpedantic)
