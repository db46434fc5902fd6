# quom_warnings: what every target is built with; quom_strict adds what the core is held to.
add_library(quom_warnings INTERFACE)
# -Wrestrict: false alarms of GCC 12 on strings (its bug 105651).
target_compile_options(quom_warnings INTERFACE -Wall -Wextra -Werror $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
add_library(quom_strict INTERFACE)
target_compile_options(quom_strict INTERFACE -Wconversion -Wshadow)
target_link_libraries(quom_strict INTERFACE quom_warnings)
