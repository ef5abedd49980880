# Run by CPack when the files of a package are laid out: signs what is a program or a library. The command is that of the
# environment variable VANTOR_SIGN, which gets the file as its last argument; without it nothing is signed.
if(NOT DEFINED ENV{VANTOR_SIGN})
  return()
endif()
separate_arguments(SIGN UNIX_COMMAND "$ENV{VANTOR_SIGN}")
file(GLOB_RECURSE PROGRAMS "${CPACK_TEMPORARY_DIRECTORY}/*.dll" "${CPACK_TEMPORARY_DIRECTORY}/*.exe")
foreach(PROGRAM IN LISTS PROGRAMS)
  execute_process(COMMAND ${SIGN} ${PROGRAM} COMMAND_ERROR_IS_FATAL ANY)
endforeach()
