# Stops the configuration when a file of the core includes a header of the window system.
file(GLOB_RECURSE core_files src/*.h src/*.cpp)
list(FILTER core_files EXCLUDE REGEX "/src/(ui|console)/")
foreach(core_file ${core_files})
  file(STRINGS ${core_file} qt_lines REGEX "#include *[<\"](Q[A-Z]|qt|qcustomplot)")
  if(qt_lines)
    message(FATAL_ERROR "${core_file} includes the window system: ${qt_lines}")
  endif()
endforeach()
