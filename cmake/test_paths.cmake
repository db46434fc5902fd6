# The library test_paths: what belongs to this checkout alone, for tests and benchmarks.
include_guard(GLOBAL)

add_library(test_paths STATIC ${PROJECT_SOURCE_DIR}/tests/support/test_paths.cpp)
target_include_directories(test_paths PUBLIC ${PROJECT_SOURCE_DIR}/tests)
set(PROGRAM "")
set(CONSOLE "")
set(FAULT_SHIM "")
if(TARGET quom)
  set(PROGRAM $<TARGET_FILE:quom>)
endif()
if(TARGET quomc)
  set(CONSOLE $<TARGET_FILE:quomc>)
endif()
if(BUILD_TESTING AND TARGET quomc AND CMAKE_SYSTEM_NAME STREQUAL "Linux")
  set(FAULT_SHIM $<TARGET_FILE:fault_shim>)
endif()
target_compile_definitions(test_paths PRIVATE
  QUOM_TEST_DATA="${PROJECT_SOURCE_DIR}/tests"
  QUOM_STARTER_DATA="${CMAKE_BINARY_DIR}/data"
  QUOM_PROGRAM="${PROGRAM}"
  QUOM_CONSOLE="${CONSOLE}"
  QUOM_FAULT_SHIM="${FAULT_SHIM}")
