# Fails when LIBRARY needs a symbol that is neither of the platform interface nor of the libraries
# that it names itself, or when it names another library than those. Needs NM and READELF.
cmake_minimum_required(VERSION 3.25)
set(platform_interface
  # configuration store
  vconf_get_int vconf_set_int vconf_get_str vconf_set_str vconf_get_bool vconf_notify_key_changed
  # feature flags
  system_info_get_custom_bool system_info_get_custom_int system_info_get_custom_string
  # Wi-Fi
  wifi_initialize wifi_get_connected_ap wifi_ap_get_frequency wifi_ap_destroy wifi_get_enable_qx
  wifi_set_enable_qx
  # connections
  connection_create connection_destroy connection_get_profile_iterator
  connection_profile_iterator_has_next connection_profile_iterator_next
  connection_profile_get_type connection_profile_enable_ethernet_eap
  # application utilities
  util_get_wakeOnMobile_mode util_set_wakeOnMobile_mode "CStringUtil::CombinateStrings"
  # markup, paths, logs
  evas_textblock_text_utf8_to_markup platform_mkpath __dlog_print "ht::TSLoggerHelper::Log")
set(glib g_timeout_add_seconds g_source_remove)
# What a compiler adds, and jsoncpp.
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

# Nor may one of them be missing: then something else stands in for it inside the library.
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
