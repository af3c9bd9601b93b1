# Fails when LIBRARY needs a symbol that is neither of the platform interface, which FUNCTIONS lists,
# nor of the libraries that it names itself, or when it names another library than those. Needs NM
# and READELF.
cmake_minimum_required(VERSION 3.25)
file(STRINGS ${FUNCTIONS} platform_interface REGEX "^PLATFORM_FUNCTION")
list(TRANSFORM platform_interface REPLACE "^[^,]*, [^,]*, ([^,]*),.*" "\\1")
set(glib g_timeout_add_seconds g_source_remove)
# Symbols that the compiler adds, and jsoncpp's.
set(others "^(_ITM_|__gmon_start__)|Json::")
set(libraries "^(libjsoncpp|libglib-2\\.0|libstdc\\+\\+|libm|libgcc_s|libc|ld-linux)[-.]")

# Symbols of libc, libstdc++ and libgcc carry their version behind an "@".
execute_process(COMMAND ${NM} -D --undefined-only --demangle --format=bsd ${LIBRARY}
  OUTPUT_VARIABLE lines COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "[^\n]+" lines "${lines}")
set(platform_symbols)
set(foreign)
foreach(line IN LISTS lines)
  string(REGEX REPLACE "^ *[Uwv] " "" symbol "${line}")
  string(REGEX REPLACE "\\(.*" "" name "${symbol}")
  if(name IN_LIST platform_interface)
    list(APPEND platform_symbols ${name})
  elseif(NOT symbol MATCHES "@" AND NOT symbol MATCHES "${others}" AND NOT name IN_LIST glib)
    list(APPEND foreign ${symbol})
  endif()
endforeach()
if(foreign)
  message(FATAL_ERROR "not of the platform interface: ${foreign}")
endif()

# None of them may be missing either: the library would then contain a replacement.
foreach(name IN LISTS platform_interface)
  if(NOT name IN_LIST platform_symbols)
    message(FATAL_ERROR "not taken from the platform: ${name}")
  endif()
endforeach()

execute_process(COMMAND ${READELF} -d ${LIBRARY} OUTPUT_VARIABLE dynamic COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "NEEDED[^\n]*" lines "${dynamic}")
foreach(line IN LISTS lines)
  string(REGEX REPLACE ".*\\[(.*)\\].*" "\\1" needed "${line}")
  if(NOT needed MATCHES "${libraries}")
    message(FATAL_ERROR "names a library that is not its own: ${needed}")
  endif()
endforeach()
