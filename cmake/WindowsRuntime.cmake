# The shared run-time library of the compiler, without its symbols, beside the program and beside the tests.
set(runtime_files)
foreach(name libstdc++-6.dll libgcc_s_dw2-1.dll libwinpthread-1.dll)
  execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${name} OUTPUT_VARIABLE source
                  OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  if(NOT EXISTS ${source})
    message(FATAL_ERROR "The compiler's ${name} is not found")
  endif()
  foreach(folder bin tests)
    set(file ${CMAKE_BINARY_DIR}/${folder}/${name})
    add_custom_command(OUTPUT ${file} COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_BINARY_DIR}/${folder}
                       COMMAND ${CMAKE_STRIP} -o ${file} ${source} DEPENDS ${source})
    list(APPEND runtime_files ${file})
  endforeach()
endforeach()
add_custom_target(windows_runtime ALL DEPENDS ${runtime_files})
