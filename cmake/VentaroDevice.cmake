# The provider for a device: libventaro.so alone, linked against the device's own platform libraries.
# docs/porting.md tells how to bring it there.

if(NOT VENTARO_DEVICE_LIBRARIES)
  message(FATAL_ERROR
    "VENTARO_DEVICE_LIBRARIES is empty; name the device's libraries that have the platform symbols")
endif()

add_subdirectory(src)
# It finds the device's libraries as everything on the device does, not where the SDK has them.
set_target_properties(ventaro_provider PROPERTIES SKIP_BUILD_RPATH ON)
target_link_libraries(ventaro_provider PRIVATE ${VENTARO_DEVICE_LIBRARIES})
# A symbol that the device lacks is an error here, not when the TV loads the library.
target_link_options(ventaro_provider PRIVATE -Wl,--no-undefined)

# The catalogues, for those who package the device's files: cmake --build ... --target catalogues
find_program(MSGFMT msgfmt)
find_program(VENTARO_PYTHON python3)
if(MSGFMT AND VENTARO_PYTHON)
  add_subdirectory(res EXCLUDE_FROM_ALL)
else()
  message(STATUS "No target catalogues: that needs msgfmt (gettext) and python3")
endif()
