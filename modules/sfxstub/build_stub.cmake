# Builds the program of self-extracting packages with the Windows tool chain, and copies it to STUB. One build at a time
# works in the shared folder BUILD.
cmake_minimum_required(VERSION 3.25)
file(MAKE_DIRECTORY ${BUILD})
file(LOCK ${BUILD}/lock GUARD PROCESS)
if(NOT EXISTS ${BUILD}/build.ninja)
  execute_process(COMMAND ${CMAKE_COMMAND} --preset windows-release -B ${BUILD} WORKING_DIRECTORY ${SOURCE}
                  OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
endif()
execute_process(COMMAND ${CMAKE_COMMAND} --build ${BUILD} --target sfxstub COMMAND_ERROR_IS_FATAL ANY)
get_filename_component(folder ${STUB} DIRECTORY)
file(MAKE_DIRECTORY ${folder})
file(COPY_FILE ${BUILD}/bin/package.stub ${STUB})
