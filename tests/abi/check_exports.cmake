# Fails unless LIBRARY exports exactly these. Needs NM.
cmake_minimum_required(VERSION 3.25)
set(expected
  check_enable_bool
  check_enable_double
  check_enable_int
  check_enable_string
  check_visibility_bool
  check_visibility_double
  check_visibility_int
  check_visibility_string
  create_provider
  delete_provider)

execute_process(COMMAND ${NM} -D --defined-only --format=posix ${LIBRARY}
  OUTPUT_VARIABLE lines COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "[^\n]+" lines "${lines}")
set(exported)
foreach(line IN LISTS lines)
  string(REGEX REPLACE " .*" "" name "${line}")
  list(APPEND exported ${name})
endforeach()
list(SORT exported)

if(NOT exported STREQUAL expected)
  message(FATAL_ERROR "exported:\n  ${exported}\nexpected:\n  ${expected}")
endif()
