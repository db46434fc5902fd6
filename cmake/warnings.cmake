# quom_warnings: what every target is built with; quom_strict adds what the core is held to.
add_library(quom_warnings INTERFACE)
target_compile_options(quom_warnings INTERFACE -Wall -Wextra -Werror)
add_library(quom_strict INTERFACE)
target_compile_options(quom_strict INTERFACE -Wconversion -Wshadow)
target_link_libraries(quom_strict INTERFACE quom_warnings)
